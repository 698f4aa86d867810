// Bills of vendors on their way to QuickBooks: each is one there, with the hours and the expenses that were booked on
// it as its lines.
#pragma once

#include "engine/Table.h"

namespace twqb {

// Adds the bills of the call that QuickBooks lacks. A bill ends with the first row that lacks something, whose line is
// as far as it got.
void MoveVendorBillToQB(const SendCall& call);

// Gives a bill and its rows the links and dates that the send did not get to write.
[[nodiscard]] TakenUp TakeUpVendorBillLinks(const LostAddition& lost);

}  // namespace twqb
