// The accounts of GetQBAccounts as arrays of COM: four rows, a column for each account, both from 0.
//
// Programs give an array of texts, scripts a variable, which gets an array of variants with texts: that is all they
// read. Nothing is asked of QuickBooks here.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include "twqb/AccountArray.h"

namespace twqb::com {

// Puts an array with the accounts in the place of what is there, which goes. False, and what is there as it was, where
// it may not go: an array that is locked, one of a fixed size, one that does not lie on the heap. The same where there
// is no memory for all of them.
[[nodiscard]] bool Replace(SAFEARRAY** array, const AccountArray& accounts);
[[nodiscard]] bool Replace(VARIANT& variable, const AccountArray& accounts);

}  // namespace twqb::com
