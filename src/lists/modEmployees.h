// Employees and vendors. BillingDb keeps both in the table Employee, told apart by IsSub; QuickBooks has a list of
// each. One code serves both, told which by `IsVendor`.
#pragma once

#include <cstdint>
#include <string>

#include "engine/ListTable.h"

namespace twqb {

enum class IsVendor : bool { No, Yes };

extern const Table kEmployeesTable;
extern const Table kVendorsTable;

// Sends the employees or vendors of the call. The outcome is `g_TableOk`; the result tells whether it is True.
bool MoveEmployeesToQB(const SendCall& call, IsVendor isVendor);

// Takes employees or vendors over.
void MoveEmployeesToTW(const GetCall& call, IsVendor isVendor);

// Fills an Add or a Mod from the row. The name of the record in hand is the first name, with a counter behind it where
// the names were in use. A number that is no social insurance number is logged and left out.
void AssignEmployeeFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                             const SendRecord& record, IsVendor isVendor);

// The columns of a row from a record, but for link, date and a new row's key and rates.
void AssignTWEmployeeFldValues(ado::Recordset& row, const Record& record, IsVendor isVendor);

}  // namespace twqb
