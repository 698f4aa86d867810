#include "adapters/companyfile/TxnAmounts.h"

#include <fmt/core.h>

#include <algorithm>

#include "platform/Wide.h"

namespace twqb::company {

namespace {

constexpr std::int64_t kCent = 100;                           // in ten-thousandths
constexpr std::int64_t kMostCents = 999'999'999'999'999;      // thirteen digits before the point
constexpr std::int64_t kMostUnits = 999'999'999'999'999'999;  // of a Decimal: the same
constexpr std::int64_t kUnitsPerTenThousandth = 10;           // a Decimal has one digit more than a Currency
constexpr std::size_t kDecimals = 5;
constexpr std::size_t kMostWholeDigits = 13;

Wide DivideRounded(Wide value, Wide by) {
  if (by < 0) {
    value = -value;
    by = -by;
  }
  return (value < 0 ? value - by / 2 : value + by / 2) / by;
}

std::optional<Currency> FromCents(Wide cents) {
  if (cents > kMostCents || cents < -kMostCents) return std::nullopt;
  return Currency::FromTenThousandths(static_cast<std::int64_t>(cents) * kCent);
}

std::optional<Decimal> FromWide(Wide units) {
  if (units > kMostUnits || units < -kMostUnits) return std::nullopt;
  return Decimal::FromUnits(static_cast<std::int64_t>(units));
}

bool AreDigits(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::optional<Decimal> Decimal::Parse(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const auto point = std::min(text.find('.'), text.size());
  auto whole = text.substr(0, point);
  const auto fraction = text.substr(std::min(point + 1, text.size()));
  whole.remove_prefix(std::min(whole.find_first_not_of('0'), whole.size()));
  if (text.empty() || text == "." || whole.size() > kMostWholeDigits || fraction.size() > kDecimals) {
    return std::nullopt;
  }
  if (!AreDigits(whole) || !AreDigits(fraction)) return std::nullopt;
  std::int64_t units = 0;
  for (const char digit : whole) units = units * 10 + (digit - '0');
  for (std::size_t i = 0; i < kDecimals; ++i) units = units * 10 + (i < fraction.size() ? fraction[i] - '0' : 0);
  return Decimal(negative ? -units : units);
}

std::string Decimal::Text() const {
  const auto positive = units_ < 0 ? -units_ : units_;
  auto text = fmt::format("{}{}.{:05}", units_ < 0 ? "-" : "", positive / kScale, positive % kScale);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string Decimal::TextToCents() const {
  constexpr std::size_t kCents = 2;
  auto text = Text();
  if (text.find('.') == std::string::npos) text += '.';
  const auto decimals = text.size() - text.find('.') - 1;
  return text.append(kCents - std::min(kCents, decimals), '0');
}

std::optional<Currency> AmountOf(Decimal quantity, Decimal rate) {
  constexpr Wide kUnitsPerCent = Wide{Decimal::kScale} * Decimal::kScale / 100;
  return FromCents(DivideRounded(Wide{quantity.Units()} * rate.Units(), kUnitsPerCent));
}

std::optional<Currency> PercentOf(Currency base, Decimal percent) {
  constexpr Wide kPerCent = Wide{Decimal::kScale} * 100 * kCent;
  return FromCents(DivideRounded(Wide{base.TenThousandths()} * percent.Units(), kPerCent));
}

std::optional<Decimal> RateOf(Currency amount, Decimal quantity) {
  if (quantity == Decimal{}) return std::nullopt;
  const auto units = Wide{amount.TenThousandths()} * kUnitsPerTenThousandth * Decimal::kScale;
  return FromWide(DivideRounded(units, quantity.Units()));
}

std::optional<Decimal> Product(Decimal a, Decimal b) {
  return FromWide(DivideRounded(Wide{a.Units()} * b.Units(), Decimal::kScale));
}

std::string MoneyText(Currency amount) {
  const auto cents = static_cast<std::int64_t>(DivideRounded(amount.TenThousandths(), kCent));
  const auto positive = cents < 0 ? -cents : cents;
  return fmt::format("{}{}.{:02}", cents < 0 ? "-" : "", positive / 100, positive % 100);
}

std::optional<LineTerms> CompleteLine(LineTerms given, const ItemTerms& item, Currency base) {
  auto line = given;
  if (!line.amount && !line.rate && !line.percent) {
    line.rate = item.rate;
    line.percent = item.percent;
  }
  if (line.amount) {
    if (line.quantity && *line.quantity != Decimal{} && !line.rate && !line.percent) {
      line.rate = RateOf(*line.amount, *line.quantity);
      if (!line.rate) return std::nullopt;
    }
  } else if (line.rate || line.percent) {
    line.amount =
        line.rate ? AmountOf(line.quantity.value_or(Decimal::Whole(1)), *line.rate) : PercentOf(base, *line.percent);
    if (!line.amount) return std::nullopt;
  }
  if (line.amount && item.effect == ItemTerms::Effect::Subtracts) line.amount = Negated(*line.amount);
  return line;
}

}  // namespace twqb::company
