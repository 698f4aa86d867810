// The expense log and QuickBooks' checks, credit card charges and bills. Which rows a send selects, what
// a get reads, and deletion; ExpenseLogOut moves it.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kExpenseLogTable;

}  // namespace twqb
