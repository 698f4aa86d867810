// Currency: money as 64-bit fixed point with four decimals. Sums of it are exact; nothing is ever rounded twice.
#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace twqb {

class Currency {
 public:
  constexpr Currency() = default;
  [[nodiscard]] static constexpr Currency FromTenThousandths(std::int64_t units) { return Currency(units); }
  // Rounds halves to even at the fourth decimal. Raises 13 for a value outside the range.
  [[nodiscard]] static Currency FromDouble(double value);

  [[nodiscard]] constexpr std::int64_t TenThousandths() const { return units_; }
  [[nodiscard]] double ToDouble() const;

  friend constexpr auto operator<=>(const Currency&, const Currency&) = default;
  friend constexpr Currency operator+(Currency a, Currency b) { return Currency(a.units_ + b.units_); }
  friend constexpr Currency operator-(Currency a, Currency b) { return Currency(a.units_ - b.units_); }

 private:
  explicit constexpr Currency(std::int64_t units) : units_(units) {}
  std::int64_t units_ = 0;
};

// Decimal point, no trailing zeros: "12.5".
[[nodiscard]] std::string ToText(Currency amount);

}  // namespace twqb
