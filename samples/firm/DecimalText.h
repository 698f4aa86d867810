// Numbers with a fixed count of decimals, as whole digits: their text, and the one division that rounds.
//
// Nothing here is floating point, so that no machine differs.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>

namespace twqb::firm {

// 1234 with two decimals is "12.34".
[[nodiscard]] inline std::string DecimalText(std::int64_t digits, int decimals) {
  if (decimals == 0) return fmt::format("{}", digits);
  std::int64_t unit = 1;
  for (int i = 0; i < decimals; ++i) unit *= 10;
  const auto magnitude = digits < 0 ? -digits : digits;
  return fmt::format("{}{}.{:0{}}", digits < 0 ? "-" : "", magnitude / unit, magnitude % unit, decimals);
}

// To the nearest, halves away from nothing, as both sides round.
[[nodiscard]] constexpr std::int64_t Divided(std::int64_t value, std::int64_t by) {
  return (value + (value < 0 ? -by : by) / 2) / by;
}

}  // namespace twqb::firm
