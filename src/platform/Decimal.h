// Decimal: a number in the decimal digits that it prints with, so that products of hours, rates and percentages are
// those that a reader of the invoice works out, and halves of a cent are halves.
//
// A value of eighteen digits. What is exact within them stays exact; a longer product keeps its first eighteen.
#pragma once

#include <cstdint>

#include "platform/Currency.h"
#include "platform/Value.h"

namespace twqb {

class Decimal {
 public:
  constexpr Decimal() = default;
  constexpr explicit Decimal(int whole) : digits_(whole) {}
  // The number as it prints, in fifteen digits. Raises 13 for what is no finite number.
  [[nodiscard]] static Decimal FromDouble(double value);
  [[nodiscard]] static Decimal FromCurrency(Currency amount);

  [[nodiscard]] bool IsNegative() const { return digits_ < 0; }
  [[nodiscard]] bool IsZero() const { return digits_ == 0; }
  // A hundredth of it.
  [[nodiscard]] Decimal PerCent() const;
  // To cents, halves away from zero. Raises 6 for more than an amount can hold.
  [[nodiscard]] Currency ToCents() const;
  // To ten-thousandths, likewise.
  [[nodiscard]] Currency ToCurrency() const;
  [[nodiscard]] double ToDouble() const;

  friend Decimal operator*(Decimal a, Decimal b);
  // To eighteen digits. Raises 11 for a divisor of nothing.
  friend Decimal operator/(Decimal a, Decimal b);
  friend Decimal operator+(Decimal a, Decimal b);

 private:
  constexpr Decimal(std::int64_t digits, int decimals) : digits_(digits), decimals_(decimals) {}
  [[nodiscard]] std::int64_t Units(int decimals) const;

  std::int64_t digits_ = 0;  // the number without its point
  int decimals_ = 0;         // how many of them stand behind it; below 0: how many zeros follow
};

// What a column holds: True is -1, a date its serial. Raises 94 for NULL and 13 for a text that is no number.
[[nodiscard]] Decimal ToDecimal(const Value& value);

}  // namespace twqb
