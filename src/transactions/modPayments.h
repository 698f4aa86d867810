// Payments and QuickBooks' received payments. Their read and their selection are here; this version moves none of them.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kPaymentsTable;

}  // namespace twqb
