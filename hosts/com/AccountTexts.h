// The accounts of GetQBAccounts as arrays of COM: four rows, a column for each account, both from 0.
#pragma once

#include <oaidl.h>
#include <windows.h>

#include "twqb/AccountArray.h"

namespace twqb::com {

// An array of texts, or of variants with texts, which is all that scripts read. The caller's to destroy; nothing when
// there is no memory for it.
[[nodiscard]] SAFEARRAY* ArrayOf(const AccountArray& accounts, VARTYPE type);

// Puts an array of texts in the place of what `array` leads to, which goes. False, and the array as it was, where that
// may not go.
[[nodiscard]] bool Replace(SAFEARRAY** array, const AccountArray& accounts);

}  // namespace twqb::com
