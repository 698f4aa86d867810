// The events of a transcript, for tests that look into one.
//
// Reads what the program wrote, and judges nothing.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace twqb::cli {

// The members by name: a text as it is, anything else as JSON without blanks: "true", "[\"enClients\"]".
using Event = std::map<std::string, std::string, std::less<>>;

// Each line of a text of JSON Lines. Throws for what is none.
[[nodiscard]] std::vector<Event> LinesOf(std::string_view text);
// Those of that kind, in their order. Throws for what is no transcript.
[[nodiscard]] std::vector<Event> EventsOf(std::string_view transcript, std::string_view kind);

}  // namespace twqb::cli
