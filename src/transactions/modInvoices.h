// Invoices, and QuickBooks' invoices and credit memos: which rows a send selects, what a get reads, and deletion.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kInvoicesTable;

}  // namespace twqb
