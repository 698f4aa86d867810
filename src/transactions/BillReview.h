// After expenses have become bills in QuickBooks: whether the user wants to see the first of them there.
#pragma once

#include "quickbooks/QBSessionManager.h"

namespace twqb {

// `g_PassedID` holds the new bills' identifiers, each in single quotes, with commas between; nothing happens when it is
// empty. Errors are ignored: the bills are there.
void ReviewTransferredBill(QBSessionManager& session);

}  // namespace twqb
