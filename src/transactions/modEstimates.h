// QuickBooks' estimates, which come as budgets (EstimatesIn). They are only ever read: a send is a run that does
// nothing.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kEstimatesTable;

}  // namespace twqb
