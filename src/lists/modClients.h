// Clients and QuickBooks customers (the top level of the customer list).
#pragma once

#include <string>

#include "engine/ListTable.h"

namespace twqb {

extern const Table kClientsTable;

// Sends the clients of the call.
void MoveClientsToQB(const SendCall& call);

// Takes customers over; jobs among the records are passed over. A dependent call needs the caller's connection.
void MoveClientsToTW(const GetCall& call);

// The name under which a client goes to QuickBooks: its key, or "company (key)".
[[nodiscard]] std::string GetQBClientName(const ado::Recordset& row);

// Fills an Add or a Mod from the row. A Mod leaves the QuickBooks name as it is.
void AssignClientFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                           const SendRecord& record);

// The client of a job: True with its key in `clientID` when the job's customer, or the project that is its parent, is
// in BillingDb. False, after a box, for a record that is no job.
[[nodiscard]] bool QBCustomerExistsInTW(const Record& customerRet, std::string& clientID);

}  // namespace twqb
