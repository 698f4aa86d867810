// A table for tests: vendors, moved as plainly as a table can be. It follows the engine without a difference, so it is
// rows, a description and a value, and nothing else; it also shows what the next such table costs.
#pragma once

#include <span>

#include "engine/Table.h"

namespace twqb {

extern const Table kPlainVendorsTable;

// These vendors, and no other table that moves beside the clients, so that what a run over all tables does stays to be
// seen whatever tables there come to be. To be handed to Compose.
[[nodiscard]] std::span<const Table* const> TwoTables();

}  // namespace twqb
