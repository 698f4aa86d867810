// The items that the lines of invoices are made of. QuickBooks is asked to add all twelve on every run, whatever is
// there; what the settings say of their accounts takes effect when one is first made.
#pragma once

#include "quickbooks/QBSessionManager.h"

namespace twqb {

// True when the first of them, the discount, was added or is there; what became of the others shows when an invoice
// refers to them. A refusal has been told.
[[nodiscard]] bool ValidateInvRelatedItems(QBSessionManager& session);

}  // namespace twqb
