// The one SELECT from which a send reads its rows. What each table's statement is made of stands in its module.
#pragma once

#include <optional>
#include <string>

#include "engine/Table.h"
#include "platform/Date.h"

namespace twqb {

// Empty for a table that has no statement, and where only named records are sent and
// none is named; otherwise it ends with ";". Reads PassedID, the kind of database, and from the settings the time of
// the table's last send; raises what they raise, and 13 for a date that is none.
//
// The values are not protected against quotes.
[[nodiscard]] Sql BuildSelectSQL(const Table& table, const SavedFilters& filters);
// The same; `changedSince` is the local time of the last send, where that keeps rows out.
[[nodiscard]] Sql BuildSelectSQL(const Table& table, const SavedFilters& filters, std::optional<Date>& changedSince);

// The rows of the table with that value in that column, of those that a send may select: the base of its statement,
// without what narrows a run.
[[nodiscard]] Sql SelectRows(const Table& table, std::string_view column, std::string_view value);

}  // namespace twqb
