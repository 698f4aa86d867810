// A second table for tests: vendors, moved as plainly as a table can be. It follows the template without a difference,
// so it is a description and rows and nothing else; it also shows what the next such table costs.
#pragma once

#include <span>

#include "bridge/TableRoutines.h"

namespace twqb {

// To be handed to UseTableRoutines.
[[nodiscard]] std::span<const TableRoutines> PlainVendorRoutines();

}  // namespace twqb
