// Vendor bills and QuickBooks' bills. Which rows a send selects, and what a get reads; VendorBillsOut and VendorBillsIn
// move them.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kVendorBillTable;

}  // namespace twqb
