// Where a name stands in a list of rows: slots that tools/messagegen fills and messages/Schema reads.
//
// A name's slot follows from a few of its characters, without regard to case; one that is taken sends on to the next.
// So a slot says no more than which row to compare. A list has at least twice as many slots as rows.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace twqb::messages {

// 0: nothing, and no name went beyond it; otherwise the number of a row, counted from 1.
using NameSlot = std::uint16_t;

[[nodiscard]] constexpr std::size_t SlotCount(std::size_t rows) { return std::bit_ceil(rows * 2); }

// Where the search for a name begins; the names that only differ in case begin together.
[[nodiscard]] constexpr std::size_t FirstSlot(std::string_view name, std::size_t slots) {
  if (name.empty()) return 0;
  constexpr std::uint32_t kLower = 0x20;
  constexpr std::uint32_t kSpread = 0x9E3779B1;  // the golden ratio, as a fraction of all numbers of 32 bits
  constexpr int kUpperHalf = 16;
  const auto at = [name](std::size_t index) { return static_cast<unsigned char>(name[index]) | kLower; };
  const auto size = name.size();
  const auto key = at(0) | at(size / 2) << 8 | at(size - 1) << 16 | at(size - 1 - size / 4) << 24;
  return ((key ^ static_cast<std::uint32_t>(size)) * kSpread >> kUpperHalf) & (slots - 1);
}

[[nodiscard]] constexpr std::size_t NextSlot(std::size_t slot, std::size_t slots) { return (slot + 1) & (slots - 1); }

}  // namespace twqb::messages
