// Expenses as they come from QuickBooks: the lines of checks, of charges of credit cards and of bills that are for a
// project, and the whole of a check or charge that has none.
//
// The get of the table; modExpenseLog has its value. A line that is here is written over as the conflict rule says, but
// for one that was billed.
#pragma once

#include "engine/Table.h"

namespace twqb {

// The part of the call says which of the three it is about.
void MoveExpenseLogToTW(const GetCall& call);

}  // namespace twqb
