// The expense log and QuickBooks' checks, credit card charges and bills. Which rows a send selects, what a get reads,
// and deletion; ExpenseLogOut and ExpenseLogIn move it.
#pragma once

#include <string_view>

#include "engine/Table.h"

namespace twqb {

// What a get tells in a QuickBooks that gives too little of them.
inline constexpr std::string_view kNoExpensesInVersion1 =
    "QuickBooks 2002 Does not provide complete support for Transferring the Expense Log";

extern const Table kExpenseLogTable;

}  // namespace twqb
