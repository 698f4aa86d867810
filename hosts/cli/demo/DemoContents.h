// What both books of the demonstration say, record by record, but for when something was changed: to tell whether
// transfers have changed anything.
//
// It reads the two sides by itself, not by the link.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "cli/options/Options.h"
#include "platform/machine.h"

namespace twqb::cli {

// "Client ABBOTT", "Invoice 5B2E-1201823999": what the row or record has.
using DemoContents = std::map<std::string, std::string>;

[[nodiscard]] DemoContents ContentsOf(const Workplace& place, Machine& machine);

// The names of those that came, went or say something else.
[[nodiscard]] std::vector<std::string> Differing(const DemoContents& before, const DemoContents& after);

}  // namespace twqb::cli
