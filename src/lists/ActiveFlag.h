// Whether a record is in use: BillingDb keeps that it is not (`IsInActive`), QuickBooks that it is (`IsActive`).
//
// For the tables that have the column; people have a status in its place.
#pragma once

#include "platform/ado.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// A row that does not tell leaves the field out.
void AssignActive(const RequestField& request, const ado::Recordset& row);
// A record that does not tell leaves the column.
void WriteInactive(ado::Recordset& row, const Record& record);

}  // namespace twqb
