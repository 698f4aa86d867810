// Time entries and QuickBooks' time tracking. A send chooses the payroll item of each entry and turns decimal hours
// into a span of time; a get looks the keys up again, and takes rates from BillingDb's own tables.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "engine/Table.h"
#include "quickbooks/RequestModel.h"

namespace twqb {

extern const Table kTimeEntriesTable;

// Sends the entries of the call, having made sure of the payroll items. Entries that lack a link are told at the end.
void MoveTimeEntryToQB(const SendCall& call);

// Takes QuickBooks' entries over that have no row. One whose project, employee or activity is not here is passed over
// without a word.
void MoveTimeEntriesToTW(const GetCall& call);

// Fills the request from the row; `links` are the identifiers of project, employee and activity. A negative entry ends
// with an empty duration. An error is told, and leaves what was set until then.
void QBAssignTimeTrackingFldValues(const RequestField& request, const ado::Recordset& row,
                                   std::span<const std::string> links);

}  // namespace twqb
