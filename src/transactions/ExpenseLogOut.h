// Expenses on their way to QuickBooks: the rows of one vendor that follow each other are one bill. An employee who is
// no vendor is billed as a vendor that the user picks.
#pragma once

#include "engine/Table.h"

namespace twqb {

// Adds the bills of the call; `g_PassedID` lists them afterwards, quoted. A row that lacks something is passed over,
// and what of its line was made goes out with the bill.
void MoveExpenseLogToQB(const SendCall& call);

// Gives the rows of a bill, of which the addition names the first, the links and dates that the send did not get to
// write.
[[nodiscard]] TakenUp TakeUpExpenseLinks(const LostAddition& lost);

}  // namespace twqb
