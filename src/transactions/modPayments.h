// Payments and QuickBooks' received payments. Which rows a send selects, what a get reads, and
// deletion; PaymentsOut moves them.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kPaymentsTable;

}  // namespace twqb
