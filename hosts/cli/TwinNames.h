// What people know a row or a record by, for questions that would name its identifier alone.
//
// It looks at BillingDb and at the embedded company file themselves: faults and transcript of a run do not see it. What
// can't be found has no name, and that is never an error.
#pragma once

#include <string>
#include <string_view>

#include "cli/Options.h"
#include "engine/Table.h"
#include "platform/machine.h"

namespace twqb::cli {

// "client", as people call a row of the table.
[[nodiscard]] std::string WordForRow(const Table& table);
// The current row's key, or where that is a number of the program's what stands behind it.
[[nodiscard]] std::string WordsOfRow(const ado::Recordset& row);

// Of the row that is linked to the identifier; empty when there is none.
[[nodiscard]] std::string NameOfLinkedRow(const Workplace& place, const Table& table, std::string_view id);
// Of the record with that identifier in the company file; empty when it is not there, or can't be asked.
[[nodiscard]] std::string NameOfRecord(const Workplace& place, Machine& machine, const Table& table,
                                       std::string_view id);

}  // namespace twqb::cli
