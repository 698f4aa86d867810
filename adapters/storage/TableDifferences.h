// What differs between two states of a database, table by table: how many rows, and how many of them are new, changed,
// gone.
//
// Rows are the same row by their number or their key, and equal when every column of both states is. A table whose rows
// are of kinds, told in a column of that name in both states, counts as one table for each kind where that is asked
// for. It only reads, and compares no words: rules of order that a database has of its own need not be known. What
// tables, views, triggers and indexes are like counts as a table of its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace twqb::storage {

struct TableDifference {
  std::string table;
  std::string kind;  // empty for a table without
  std::int64_t before = 0;
  std::int64_t now = 0;
  std::int64_t added = 0;
  std::int64_t changed = 0;
  std::int64_t gone = 0;

  [[nodiscard]] bool IsNone() const { return added == 0 && changed == 0 && gone == 0; }
};

// Whether a column `kind` tells what a row is, or is a column as any other.
enum class Kinds : std::uint8_t { Apart, Ignored };

// The name that definitions go by, one for each row.
inline constexpr std::string_view kStructure = "structure";

// Of every table of either state, in the order of their names, and of the structure behind them. `before` must stand
// still. Nothing when one of them can't be read.
[[nodiscard]] std::optional<std::vector<TableDifference>> TableDifferences(const std::string& now,
                                                                           const std::string& before, Kinds kinds);

}  // namespace twqb::storage
