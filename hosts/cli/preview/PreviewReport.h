// What a preview tells, as text for people and as JSON Lines for programs.
//
// Both go over the same values; nothing is worked out here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/transcript/EventValue.h"
#include "cli/preview/Preview.h"

namespace twqb::cli {

// Of a record, and of the run: what would become of it is said as if unknown amounts were those of the copy.
inline constexpr std::string_view kHangsOnUnknown = "hangs on amounts that are not known";

// "would be added": as people read it.
[[nodiscard]] std::string_view DoingText(Doing doing);
// "add": as programs do.
[[nodiscard]] std::string_view DoingWord(Doing doing);

// "(none)", or the value on one line.
[[nodiscard]] std::string FieldText(const std::optional<std::string>& value);
// The row or record in a line, and each field in one of its own below it, behind `indent`.
[[nodiscard]] std::string ChangeText(const RecordChange& change, std::string_view indent);
// Each with "field", "before" and "after", null for what is not there.
[[nodiscard]] EventList FieldList(const std::vector<FieldChange>& fields);
[[nodiscard]] EventFields ChangeFields(const RecordChange& change);

// All but how it ends, which is the command's: a record with its changes after the other, what changes beside them,
// errors, boxes, settings, and the account of the tables. Each line comes with its end.
[[nodiscard]] std::string PreviewText(const Preview& preview);
// One object a line, the last one with the sums; `verdict` stands in it.
[[nodiscard]] std::string PreviewJson(const Preview& preview, std::string_view verdict);

}  // namespace twqb::cli
