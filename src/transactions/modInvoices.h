// Invoices, and QuickBooks' invoices and credit memos. Their reads and their selection are here; this version moves
// none of them.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kInvoicesTable;

}  // namespace twqb
