// Invoices, and QuickBooks' invoices and credit memos. A send only ever adds, in the form that InvoiceLines.h tells.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kInvoicesTable;

// Adds the invoices of the call that QuickBooks lacks, having made sure of the items that their lines refer to. The end
// of the run tells of invoices that lack a link, and lists those that came out without any line.
void MoveInvoicesToQB(const SendCall& call);

}  // namespace twqb
