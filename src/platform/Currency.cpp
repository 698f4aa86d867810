#include "platform/Currency.h"

#include <fmt/core.h>

#include <cmath>
#include <limits>

#include "platform/PlatformError.h"

namespace twqb {

namespace {
constexpr std::int64_t kUnit = 10'000;
}

Currency Currency::FromDouble(double value) {
  const double scaled = value * static_cast<double>(kUnit);
  constexpr double kLimit = 9.2233720368547e18;
  if (!(std::fabs(scaled) < kLimit)) throw PlatformError(error::kConversion);
  return Currency(std::llrint(scaled));
}

double Currency::ToDouble() const { return static_cast<double>(units_) / static_cast<double>(kUnit); }

std::string ToText(Currency amount) {
  const std::int64_t units = amount.TenThousandths();
  const auto magnitude = units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
  auto text = fmt::format("{}{}", units < 0 ? "-" : "", magnitude / kUnit);
  if (const auto fraction = magnitude % kUnit; fraction != 0) {
    text += fmt::format(".{:04}", fraction);
    while (text.back() == '0') text.pop_back();
  }
  return text;
}

}  // namespace twqb
