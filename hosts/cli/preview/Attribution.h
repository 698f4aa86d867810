// Which change of a run belongs to which of the records that it told, and what that makes of the record.
//
// By links and keys alone: the tables say nothing here of what they write beside their own rows.
#pragma once

#include <string_view>
#include <vector>

#include "cli/preview/Preview.h"

namespace twqb::cli {

// Gives each change to one of the preview's records, or puts it beside them; then settles what would be done to each.
// What a record changes twice is told with the first time.
void Attribute(std::vector<RecordChange> changes, Preview& preview);

// Whether a column of BillingDb tells when its row was changed. Both names are in use.
[[nodiscard]] bool IsDateOfRow(std::string_view column);

}  // namespace twqb::cli
