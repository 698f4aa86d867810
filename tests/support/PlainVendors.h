// A second table for tests: vendors, moved as plainly as a table can be. It follows the template without a difference,
// so it is a description and rows and nothing else; it also shows what the next such table costs.
#pragma once

#include <span>

#include "bridge/TableRoutines.h"

namespace twqb {

// To be handed to UseTableRoutines: these vendors, and no other table beside the clients, so that what a run over all
// tables does stays to be seen whatever tables there come to be.
[[nodiscard]] std::span<const TableRoutines> TwoTableRoutines();

}  // namespace twqb
