// The one SELECT from which a send reads its rows. Each table's statement is a row of texts in the source file.
#pragma once

#include <cstdint>
#include <string>

#include "engine/SavedFilters.h"

namespace twqb {

// `table` is a value of enTables. Empty for a table that has no statement; otherwise it ends with ";". Reads the time
// of the table's last send from the settings; raises what they raise, and 13 for a date that is none.
[[nodiscard]] std::string BuildSelectSQL(std::int32_t table, const SavedFilters& filters);

}  // namespace twqb
