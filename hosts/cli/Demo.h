// The demonstration: a sample firm is sent to QuickBooks, both sides change, and the link brings them together again.
//
// It asks nothing, tells each step on standard output, and checks the outcome itself.
#pragma once

#include <filesystem>

#include "cli/ExitStatus.h"
#include "cli/Options.h"
#include "cli/Surroundings.h"

namespace twqb::cli {

// Works in `folder`, which must have none of the four files. `Failed` when a transfer fails, a client stays without a
// link, or a change is not where the rule of the newer record puts it; what differs is told then.
[[nodiscard]] ExitStatus RunDemo(const std::filesystem::path& folder, const Options& options,
                                 Surroundings surroundings);

}  // namespace twqb::cli
