// Bills of vendors as they come from QuickBooks: a row for the bill, and its lines as hours and expenses of the vendor.
//
// The get of the table; modlVendorBills has its value. What is here is written over as the conflict rule says, line by
// line, but for what was billed. A bill never stays without lines.
#pragma once

#include "engine/Table.h"
#include "platform/Currency.h"

namespace twqb {

void MoveVendorBillToTW(const GetCall& call);

// What per cent of the amount the tax is, in two decimals; nothing of amounts below one.
[[nodiscard]] double TaxPercent(Currency tax, Currency amount);

}  // namespace twqb
