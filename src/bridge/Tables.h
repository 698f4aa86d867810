// The tables that the link knows, in the order in which a run over all of them goes.
//
// Everything that goes over tables, or finds one by its number, asks here: the dispatch, deletion, and the hosts. A new
// table is its module and one line in Tables.cpp.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "engine/Table.h"
#include "services/Direction.h"

namespace twqb {

[[nodiscard]] std::span<const Table* const> BuiltInTables();

// Those in use: the built-in ones, unless the host brought a list of its own.
[[nodiscard]] std::span<const Table* const> Tables();

// Whether a run over all tables moves it that way.
[[nodiscard]] bool GoesWithAll(const Table& table, Direction direction);

// nullptr for a number that none of them has.
[[nodiscard]] const Table* FindTable(std::int32_t number);

// The name that the filter keys of a table begin with; "All Tables" for a number that none of them has.
[[nodiscard]] std::string_view GetTableName(Direction direction, std::int32_t number);

}  // namespace twqb
