// The tables' names, which are the stems of their filter keys and stand in the texts of the progress form.
#pragma once

#include <cstdint>
#include <string_view>

namespace twqb {

enum class Direction : std::uint8_t { Send, Get };  // to QuickBooks, from QuickBooks

// `table` is a value of enTables; any other than a single table's gives "All Tables".
[[nodiscard]] std::string_view GetTableName(Direction direction, std::int32_t table);

}  // namespace twqb
