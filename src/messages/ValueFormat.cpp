#include "messages/ValueFormat.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "platform/Text.h"

namespace twqb::messages {

namespace {

bool AreDigits(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool AreHexDigits(std::string_view text, bool upperOnly) {
  return !text.empty() && std::ranges::all_of(text, [upperOnly](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (!upperOnly && c >= 'a' && c <= 'f');
  });
}

std::string_view WithoutSign(std::string_view text) {
  if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
  return text;
}

// [+-]?d*[.d{0,decimals}] with at least one digit in it.
bool IsDecimal(std::string_view text, std::size_t decimals) {
  text = WithoutSign(text);
  const auto point = text.find('.');
  if (point == std::string_view::npos) return AreDigits(text);
  const auto whole = text.substr(0, point);
  const auto fraction = text.substr(point + 1);
  return (whole.empty() || AreDigits(whole)) && (fraction.empty() || AreDigits(fraction)) &&
         fraction.size() <= decimals && !(whole.empty() && fraction.empty());
}

// An identifier: an upper-case hexadecimal counter, "-", seconds.
bool IsIdentifier(std::string_view text) {
  constexpr std::size_t kMaxLength = 36;
  const auto dash = text.find('-');
  return dash != std::string_view::npos && text.size() <= kMaxLength && AreHexDigits(text.substr(0, dash), true) &&
         AreDigits(text.substr(dash + 1));
}

// {8-4-4-4-12}; a bare 0 stands for "no owner".
bool IsGuid(std::string_view text) {
  if (text == "0") return true;
  if (text.size() != 38 || text.front() != '{' || text.back() != '}') return false;
  constexpr std::size_t kGroups[] = {8, 4, 4, 4, 12};
  std::size_t at = 1;
  for (const auto length : kGroups) {
    if (at > 1 && text[at++] != '-') return false;
    if (!AreHexDigits(text.substr(at, length), false)) return false;
    at += length;
  }
  return true;
}

// Two digits at `at`, or -1.
int TwoDigits(std::string_view text, std::size_t at) {
  if (at + 2 > text.size() || !AreDigits(text.substr(at, 2))) return -1;
  return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

constexpr double kManyUnits = 1e15;  // whole numbers below it have fifteen digits at most

// Fifteen digits make 1.005, which is a little less in binary, the half that it prints as.
double InFifteenDigits(double value) {
  if (std::fabs(value) < kManyUnits && std::trunc(value) == value) return value;
  const auto printed = fmt::format("{:.15g}", value);
  double exact = 0;
  std::from_chars(printed.data(), printed.data() + printed.size(), exact);
  return exact;
}

std::int64_t PowerOfTen(int exponent) {
  constexpr std::int64_t kTen = 10;
  std::int64_t power = 1;
  for (; exponent > 0; --exponent) power *= kTen;
  return power;
}

// So many units of the last decimal place; there is at least one.
std::string UnitsText(std::int64_t units, int decimals) {
  const auto scale = PowerOfTen(decimals);
  const auto places = std::to_string(std::abs(units % scale));
  std::string text(units < 0 ? "-" : "");
  text.append(std::to_string(std::abs(units / scale))) += '.';
  text.append(static_cast<std::size_t>(decimals) - places.size(), '0').append(places);
  return text;
}

// Rounds halves away from zero.
std::string FixedText(double value, int decimals) {
  const double scale = std::pow(10, decimals);
  const double units = std::round(InFifteenDigits(value * scale));
  if (std::fabs(units) < kManyUnits) return UnitsText(static_cast<std::int64_t>(units), decimals);
  return fmt::format("{:.{}f}", units / scale, decimals);
}

constexpr std::size_t kDateLength = 10;  // yyyy-mm-dd
constexpr std::size_t kDateTimeLength = 19;
constexpr int kMinutesPerHour = 60;

}  // namespace

std::string BoolText(bool value) { return value ? "true" : "false"; }

std::optional<bool> ParseBool(std::string_view text) {
  if (text == "true" || text == "1") return true;
  if (text == "false" || text == "0") return false;
  return std::nullopt;
}

std::string AmountText(double value) { return FixedText(value, 2); }

std::string AmountText(Currency amount) {
  constexpr std::int64_t kCent = 100;
  const auto units = amount.TenThousandths();
  // Away from zero, and without a sum that could leave the range.
  const auto rest = units % kCent;
  const auto cents = units / kCent + (rest >= kCent / 2 ? 1 : rest <= -kCent / 2 ? -1 : 0);
  return UnitsText(cents, 2);
}

std::string DecimalText(double value, int decimals) {
  auto text = FixedText(value, decimals);
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text;
}

std::optional<Currency> ParseAmount(std::string_view text) {
  constexpr std::size_t kMaxWhole = 13;
  const bool negative = text.starts_with('-');
  const auto digits = WithoutSign(text);
  const auto point = digits.find('.');
  if (point == std::string_view::npos || point > kMaxWhole || digits.size() - point != 3) return std::nullopt;
  if (!AreDigits(digits.substr(0, point)) || !AreDigits(digits.substr(point + 1))) return std::nullopt;
  std::int64_t whole = 0;
  int cents = 0;
  std::from_chars(digits.data(), digits.data() + point, whole);
  std::from_chars(digits.data() + point + 1, digits.data() + digits.size(), cents);
  const std::int64_t units = whole * 10'000 + static_cast<std::int64_t>(cents) * 100;
  return Currency::FromTenThousandths(negative ? -units : units);
}

std::string DateText(Date date) { return IsoDate(date).substr(0, kDateLength); }

std::optional<Date> ParseDateText(std::string_view text) {
  if (text.size() != kDateLength || text[4] != '-' || text[7] != '-' || TwoDigits(text, 8) < 0) return std::nullopt;
  return ParseDate(text);
}

std::string DateTimeText(Date local, std::optional<int> offsetMinutes) {
  auto text = IsoDate(local);
  text.resize(kDateTimeLength);
  if (offsetMinutes) {
    const int minutes = std::abs(*offsetMinutes);
    AppendPadded(text += *offsetMinutes < 0 ? '-' : '+', minutes / kMinutesPerHour, 2);
    AppendPadded(text += ':', minutes % kMinutesPerHour, 2);
  }
  return text;
}

std::optional<DateTime> ParseDateTime(std::string_view text) {
  if (text.size() == kDateLength) {
    if (const auto date = ParseDateText(text)) return DateTime{*date, std::nullopt};
    return std::nullopt;
  }
  if (text.size() < kDateTimeLength || text[kDateLength] != 'T' || text[13] != ':' || text[16] != ':') {
    return std::nullopt;
  }
  const auto day = ParseDateText(text.substr(0, kDateLength));
  const int hour = TwoDigits(text, 11);
  const int minute = TwoDigits(text, 14);
  const int second = TwoDigits(text, 17);
  if (!day || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return std::nullopt;
  const Date local = day->PlusMinutes(hour * kMinutesPerHour + minute).PlusMilliseconds(second * Date::kSecond);
  const auto offset = text.substr(kDateTimeLength);
  if (offset.empty()) return DateTime{local, std::nullopt};
  if (offset == "Z") return DateTime{local, 0};
  const int hours = TwoDigits(offset, 1);
  const int minutes = TwoDigits(offset, 4);
  if (offset.size() != 6 || (offset[0] != '+' && offset[0] != '-') || offset[3] != ':' || hours < 0 || hours > 14 ||
      minutes < 0 || minutes >= kMinutesPerHour) {
    return std::nullopt;
  }
  const int total = hours * kMinutesPerHour + minutes;
  return DateTime{local, offset[0] == '-' ? -total : total};
}

bool IsWellFormed(const Element& element, std::string_view text) {
  switch (element.type) {
    case Type::Id:
      return IsIdentifier(text);
    case Type::Bool:
      return ParseBool(text).has_value();
    case Type::Int: {
      const auto digits = WithoutSign(text);
      return AreDigits(digits) && digits.size() <= 10;
    }
    case Type::Amt:
      return ParseAmount(text).has_value();
    case Type::Price:
    case Type::Quan:
      return IsDecimal(text, 5);
    case Type::Percent:
    case Type::Float:
      return IsDecimal(text, 15);
    case Type::Date:
      return ParseDateText(text).has_value();
    case Type::DateTime:
      return ParseDateTime(text).has_value();
    case Type::TimeInterval:
      return ParseTimeInterval(text).has_value();
    case Type::Enum:
      return std::ranges::any_of(element.Values(), [text](const EnumValue& value) { return value.name == text; });
    case Type::Guid:
      return IsGuid(text);
    case Type::Aggregate:
    case Type::Choice:
    case Type::Step:
    case Type::Str:
    case Type::Macro:
      return true;
  }
  return true;
}

bool IsWellFormed(const Element& element, std::string_view text, const Form& form) {
  if (element.type != Type::Enum) return IsWellFormed(element, text);
  return std::ranges::any_of(element.Values(),
                             [&](const EnumValue& value) { return value.name == text && value.KnownIn(form); });
}

std::string TimeIntervalText(const TimeInterval& span) {
  return fmt::format("PT{}H{}M{}S", span.hours, span.minutes, span.seconds);
}

std::optional<TimeInterval> ParseTimeInterval(std::string_view text) {
  constexpr std::size_t kMaxDigits = 9;
  if (!text.starts_with("PT")) return std::nullopt;
  text.remove_prefix(2);
  if (text.empty()) return std::nullopt;
  TimeInterval span;
  for (const auto& [unit, part] : {std::pair{'H', &span.hours}, {'M', &span.minutes}, {'S', &span.seconds}}) {
    const auto at = text.find(unit);
    if (at == std::string_view::npos) continue;
    if (at > kMaxDigits || !AreDigits(text.substr(0, at))) return std::nullopt;
    std::from_chars(text.data(), text.data() + at, *part);
    text.remove_prefix(at + 1);
  }
  if (!text.empty()) return std::nullopt;
  return span;
}

}  // namespace twqb::messages
