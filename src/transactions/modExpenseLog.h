// The expense log and QuickBooks' checks, credit card charges and bills. Its reads and its selection are here; this
// version moves none of it.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kExpenseLogTable;

}  // namespace twqb
