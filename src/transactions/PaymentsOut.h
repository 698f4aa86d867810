// Payments on their way to QuickBooks.
//
// A payment here has a row for each invoice that it goes to, and each of them is a payment of its own there. Nothing
// goes beyond what QuickBooks says is still open; a retainer, which goes to no invoice, is booked as one that comes to
// nothing.
#pragma once

#include "engine/Table.h"

namespace twqb {

// Adds what QuickBooks lacks, having made sure of methods and items. The end of the run tells how many payments were
// held back, by reason.
void MovePaymentsToQB(const SendCall& call);

// Gives the rows of a retainer, or of what a payment pays of an invoice, the links that the send did not get to write.
[[nodiscard]] TakenUp TakeUpPaymentLink(const LostAddition& lost);

// Asks QuickBooks to add the nine methods. False: the first is neither added nor there, which has been told.
[[nodiscard]] bool AddPaymentMethodNamesToQB(QBSessionManager& session);

}  // namespace twqb
