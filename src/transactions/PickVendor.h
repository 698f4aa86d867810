// The form frmPickVendor: which vendor stands for an employee whose expenses go to QuickBooks as a bill.
//
// The desk shows it; what it was closed with travels through a module variable, as with any form of the host's.
#pragma once

#include <string>
#include <string_view>

namespace twqb {

// Shows the form with the vendors that are in QuickBooks; what was picked is in `g_PickedVendor`, "" for none. Nothing
// is remembered: the same employee is asked about again.
void ShowPickVendor(std::string_view EmployeeID);

// Shows it, and takes what was picked out of `g_PickedVendor`.
[[nodiscard]] std::string PickVendorFor(std::string_view EmployeeID);

}  // namespace twqb
