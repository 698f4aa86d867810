// QuickBooks' estimates, which come as budgets. They are only ever read; this version does not read them yet.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kEstimatesTable;

}  // namespace twqb
