// Invoices and credit memos as they come from QuickBooks: each that is not here becomes a manual invoice with a detail
// row for each of its lines and one for the tax.
//
// The hooks and the description of the get; modInvoices has the table's value. A document that is here is left alone.
#pragma once

#include "engine/Table.h"

namespace twqb {

// Each of the two reads of the table has a routine.
void MoveInvoicesToTW(const GetCall& call);
void MoveCreditMemosToTW(const GetCall& call);

// The one of the two that the call's part is for.
void MoveInvoicesOrCreditMemosToTW(const GetCall& call);

}  // namespace twqb
