// Payments as they come from QuickBooks: each that is not here becomes a payment with a row for every invoice that it
// was applied to, a second payment for its discounts, or a retainer where it was applied to nothing.
//
// The hooks and the description of the get; modPayments has the table's value. A payment that is here is left alone.
#pragma once

#include "engine/Table.h"

namespace twqb {

void MovePaymentsToTW(const GetCall& call);

}  // namespace twqb
