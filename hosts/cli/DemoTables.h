// What the demonstration shows of all tables at once: how much of each is linked, how much of it QuickBooks has, and
// what a transfer has moved.
//
// It counts and prints. It transfers nothing, and judges nothing but whether a count is the one that the sample firm
// leads to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "cli/DemoBooks.h"

namespace twqb::cli {

inline constexpr std::size_t kDemoTables = 11;

// A table on both sides at one moment.
struct TableState {
  DemoBooks::RowCount rows;
  DemoBooks::Records records;
};
// The tables that have records of their own in QuickBooks, in the order in which they are transferred.
using TableStates = std::array<TableState, kDemoTables>;

[[nodiscard]] TableStates StatesOf(DemoBooks& books);

// How many records a transfer to QuickBooks has made and changed.
struct Moved {
  std::int64_t added = 0;
  std::int64_t changed = 0;
};
[[nodiscard]] Moved MovedBetween(const TableState& before, const TableState& after);

// Each table before a send, behind it, and behind the get that followed.
void PrintFirstRound(const TableStates& before, const TableStates& sent, const TableStates& got);
// What two more sends have moved: one behind the get, and one behind that.
void PrintMoreSends(const TableStates& got, const TableStates& second, const TableStates& third);

// What is not as the sample firm leads to: rows without a link at the end, and records that the third send has moved.
[[nodiscard]] std::vector<std::string> Unexpected(const TableStates& second, const TableStates& third);

}  // namespace twqb::cli
