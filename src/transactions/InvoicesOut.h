// Invoices on their way to QuickBooks: the run over the rows. What an invoice says there is InvoiceLines'.
#pragma once

#include "engine/Table.h"

namespace twqb {

// Adds the invoices of the call that QuickBooks lacks, having made sure of the items that their lines refer to; one
// that is there is left alone, whatever changed here. The end of the run tells of invoices that lack a link, and lists
// those that came out without any line.
void MoveInvoicesToQB(const SendCall& call);

// Gives the invoice of an addition the link and the date that the send did not get to write.
[[nodiscard]] TakenUp TakeUpInvoiceLink(const LostAddition& lost);

}  // namespace twqb
