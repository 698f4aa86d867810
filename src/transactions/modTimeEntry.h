// Time entries and QuickBooks' time tracking.
#pragma once

#include "engine/Table.h"

namespace twqb {

extern const Table kTimeEntriesTable;

}  // namespace twqb
