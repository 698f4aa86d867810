// What of a run's record a golden expectation holds, and how a record is held against it.
//
// The record of a run is whole. Progress and settings are the same in most runs of a table and hide what the run is
// about: an expectation leaves them out, unless its scenario keeps them. A line that is held stays as it was recorded.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace twqb {

// What events tell of that expectations leave out: the progress form, or settings and registry values.
enum class Subject : std::uint8_t { Progress, Settings };

// "progress" or "settings"; nothing for another word.
[[nodiscard]] std::optional<Subject> SubjectNamed(std::string_view word);
// The subject of an event, a line of the record; nothing for an event of which every expectation tells.
[[nodiscard]] std::optional<Subject> SubjectOf(const std::string& event);

// The lines of a record or an expectation, one event each, as they are compared: without the number of the event in the
// whole record, which changes with every event that is left out in front of it.
[[nodiscard]] std::vector<std::string> ComparedLines(const std::string& text);

// The same of a record that came through COM, and of an expectation that it is held against: without exit statuses and
// screens, which are the command line's.
[[nodiscard]] std::vector<std::string> LinesThroughCom(const std::string& text);

}  // namespace twqb
