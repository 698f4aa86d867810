// Money of rows and records in whole cents, worked out apart from the library.
#pragma once

#include <cmath>
#include <cstdint>

namespace twqb {

// What a line comes to, rounded as both sides round: of units in hundredths and a cost in ten-thousandths.
[[nodiscard]] inline std::int64_t LineInCents(double units, double cost) {
  constexpr std::int64_t kOfACent = 10'000;
  const auto exact = std::llround(units * 100) * std::llround(cost * 10'000);
  return (exact + kOfACent / 2) / kOfACent;
}

}  // namespace twqb
