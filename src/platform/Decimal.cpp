#include "platform/Decimal.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "platform/PlatformError.h"
#include "platform/Wide.h"

namespace twqb {

namespace {

constexpr Wide kMostDigits = 999'999'999'999'999'999;
constexpr int kTen = 10;
// Nothing that is counted or paid reaches further; a number beyond it is 0, or more than any amount holds.
constexpr int kFarthest = 40;

Wide Magnitude(Wide value) { return value < 0 ? -value : value; }

// Without its last digit, halves away from zero.
Wide WithoutLastDigit(Wide value) {
  const Wide half = kTen / 2;
  return (value + (value < 0 ? -half : half)) / kTen;
}

// The value times ten, `times` over. Raises 6 when it gets too long.
Wide Scaled(Wide value, int times) {
  constexpr Wide kLimit = kMostDigits * kMostDigits / kTen;
  for (; times > 0 && value != 0; --times) {
    if (Magnitude(value) > kLimit) throw PlatformError(error::kOverflow);
    value *= kTen;
  }
  return value;
}

struct Shortened {
  std::int64_t digits;
  int decimals;
};

// In eighteen digits. Cutting rounds once, on the digits that are cut off together.
Shortened Shorten(Wide value, int decimals) {
  while (decimals > 0 && value != 0 && value % kTen == 0) {
    value /= kTen;
    --decimals;
  }
  int cut = 0;
  for (Wide rest = Magnitude(value); rest > kMostDigits; rest /= kTen) ++cut;
  for (; cut > 1; --cut, --decimals) value /= kTen;
  if (cut == 1) {
    value = WithoutLastDigit(value);
    --decimals;
  }
  return {static_cast<std::int64_t>(value), decimals};
}

}  // namespace

Decimal Decimal::FromDouble(double value) {
  if (!std::isfinite(value)) throw PlatformError(error::kConversion);
  // "-1.23456789012345e+02": a sign, a digit, a point, fourteen more, and the power of ten.
  constexpr int kBehindPoint = 14;
  auto text = fmt::format("{:.{}e}", value, kBehindPoint);
  const auto mantissaEnd = text.find('e');
  int power = 0;
  const auto* sign = text.data() + mantissaEnd + 1;
  std::from_chars(*sign == '+' ? sign + 1 : sign, text.data() + text.size(), power);
  text.resize(mantissaEnd);
  text.erase(text.find('.'), 1);
  std::int64_t digits = 0;
  std::from_chars(text.data(), text.data() + text.size(), digits);
  if (digits == 0 || power < -kFarthest) return {};
  const auto [shortened, decimals] = Shorten(digits, kBehindPoint - power);
  return {shortened, decimals};
}

Decimal Decimal::FromCurrency(Currency amount) {
  constexpr int kDecimals = 4;
  const auto [digits, decimals] = Shorten(amount.TenThousandths(), kDecimals);
  return {digits, decimals};
}

Decimal Decimal::PerCent() const { return digits_ == 0 ? Decimal() : Decimal(digits_, decimals_ + 2); }

std::int64_t Decimal::Units(int decimals) const {
  Wide value = digits_;
  if (decimals_ <= decimals) {
    value = Scaled(value, decimals - decimals_);
  } else {
    for (int more = decimals_ - decimals; more > 1 && value != 0; --more) value /= kTen;
    value = WithoutLastDigit(value);
  }
  if (Magnitude(value) > std::numeric_limits<std::int64_t>::max()) throw PlatformError(error::kOverflow);
  return static_cast<std::int64_t>(value);
}

Currency Decimal::ToCents() const {
  constexpr std::int64_t kOfACent = 100;
  const auto cents = Units(2);
  if (Magnitude(cents) > std::numeric_limits<std::int64_t>::max() / kOfACent) throw PlatformError(error::kOverflow);
  return Currency::FromTenThousandths(cents * kOfACent);
}

Currency Decimal::ToCurrency() const { return Currency::FromTenThousandths(Units(4)); }

double Decimal::ToDouble() const {
  // Powers of ten are whole, so that one rounding is all: 0.1 is 1 / 10 and not 1 * 0.1.
  const auto digits = static_cast<double>(digits_);
  return decimals_ < 0 ? digits * std::pow(kTen, -decimals_) : digits / std::pow(kTen, decimals_);
}

Decimal operator*(Decimal a, Decimal b) {
  const auto [digits, decimals] = Shorten(static_cast<Wide>(a.digits_) * b.digits_, a.decimals_ + b.decimals_);
  return {digits, decimals};
}

Decimal operator/(Decimal a, Decimal b) {
  if (b.digits_ == 0) throw PlatformError(error::kDivisionByZero);
  // As many more digits as the quotient needs to fill eighteen, and one to round on.
  constexpr Wide kLongest = kMostDigits * kMostDigits / kTen;
  Wide dividend = a.digits_;
  int decimals = a.decimals_;
  for (; dividend != 0 && Magnitude(dividend) < kLongest; dividend *= kTen) ++decimals;
  const auto [digits, shortened] = Shorten(dividend / b.digits_, decimals - b.decimals_);
  return {digits, shortened};
}

Decimal operator+(Decimal a, Decimal b) {
  if (a.digits_ == 0) return b;
  if (b.digits_ == 0) return a;
  if (a.decimals_ < b.decimals_) std::swap(a, b);
  // The finer one is rounded to where the other, brought to as many decimals, still fits.
  constexpr int kReach = 18;
  Wide fine = a.digits_;
  int decimals = a.decimals_;
  for (; decimals - b.decimals_ > kReach + 1; --decimals) fine /= kTen;
  if (decimals - b.decimals_ > kReach) {
    fine = WithoutLastDigit(fine);
    --decimals;
  }
  const auto [digits, shortened] = Shorten(fine + Scaled(b.digits_, decimals - b.decimals_), decimals);
  return {digits, shortened};
}

Decimal ToDecimal(const Value& value) {
  if (IsNull(value)) throw PlatformError(error::kInvalidNull);
  if (const auto* flag = std::get_if<bool>(&value)) return Decimal(*flag ? -1 : 0);
  if (const auto* amount = std::get_if<Currency>(&value)) return Decimal::FromCurrency(*amount);
  if (const auto* number = std::get_if<double>(&value)) return Decimal::FromDouble(*number);
  if (const auto* date = std::get_if<Date>(&value)) return Decimal::FromDouble(date->Serial());
  if (const auto* text = std::get_if<std::string>(&value)) return Decimal::FromDouble(TextToNumber(*text));
  return Decimal::FromDouble(static_cast<double>(std::get<std::int64_t>(value)));
}

}  // namespace twqb
