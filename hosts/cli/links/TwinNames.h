// What people know a row or a record by, for questions that would name its identifier alone.
//
// It looks at BillingDb and at QuickBooks through their seams, beneath faults and transcript of a run, which are about
// the run's own calls. What can't be found or asked has no name, and that is never an error.
#pragma once

#include <string>
#include <string_view>

#include "cli/options/Options.h"
#include "engine/Table.h"
#include "platform/transport.h"

namespace twqb::cli {

// "client", as people call a row of the table.
[[nodiscard]] std::string WordForRow(const Table& table);
// The current row's key, or where that is a number of the program's what stands behind it.
[[nodiscard]] std::string WordsOfRow(const ado::Recordset& row);

// Of the row that is linked to the identifier; empty when there is none.
[[nodiscard]] std::string NameOfLinkedRow(const Workplace& place, const Table& table, std::string_view id);
// Of the record with that identifier in the company that QuickBooks has open; empty when it is not there, or can't be
// asked. A session of its own begins for that, and has ended when this is back: the library must have none.
[[nodiscard]] std::string NameOfRecord(TransportFactory& quickBooks, OpenMode mode, const Table& table,
                                       std::string_view id);

}  // namespace twqb::cli
