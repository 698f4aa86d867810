// Estimates as they come from QuickBooks: a budget, and its lines as budgeted hours and expenses.
//
// The get of the table; modEstimates has its value. What is here is written over as the conflict rule says, line by
// line. A budget that is new never stays without lines, and a project keeps the first estimate that it got.
#pragma once

#include "engine/Table.h"

namespace twqb {

void MoveEstimatesToTW(const GetCall& call);

}  // namespace twqb
