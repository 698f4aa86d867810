#include "platform/Value.h"

#include <fmt/core.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb {

namespace {

struct TextOf {
  std::string operator()(Null /*null*/) const { return {}; }
  std::string operator()(bool value) const { return value ? "True" : "False"; }
  std::string operator()(std::int64_t value) const { return fmt::format("{}", value); }
  std::string operator()(double value) const { return NumberToText(value); }
  std::string operator()(Currency value) const { return twqb::ToText(value); }
  std::string operator()(Date value) const { return GeneralDate(value); }
  std::string operator()(const std::string& value) const { return value; }
};

// The number at the front of a text, and whether it is all of it.
struct FrontNumber {
  std::optional<double> value;
  bool isWhole = false;
};

FrontNumber ReadNumber(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc{} || !std::isfinite(value)) return {};
  return {.value = value, .isWhole = end == text.data() + text.size()};
}

// Fifteen significant digits, as the platform prints a double.
constexpr int kDigits = 15;

// The text of a number that fifteen digits name exactly, as those that people write do: its shortest one. Nothing for
// any other, and for one that prints with an exponent.
std::optional<std::string> ShortText(double value) {
  constexpr double kLargest = 1e15;
  constexpr double kSmallest = 1e-5;
  constexpr std::size_t kRoom = 32;
  if (!(std::fabs(value) < kLargest && std::fabs(value) > kSmallest)) return std::nullopt;
  std::array<char, kRoom> text{};
  const auto written = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  const std::string_view shortest(text.data(), written.ptr);
  const auto first = shortest.find_first_of("123456789");
  const auto digits = shortest.size() - first - (shortest.find('.', first) == std::string_view::npos ? 0 : 1);
  if (written.ec != std::errc{} || digits > std::size_t{kDigits}) return std::nullopt;
  return std::string(shortest);
}

}  // namespace

std::string NumberToText(double value) {
  if (value == 0) return "0";
  if (auto text = ShortText(value)) return std::move(*text);
  if (!std::isfinite(value)) return fmt::format("{:G}", value);
  const auto scientific = fmt::format("{:.{}e}", value, kDigits - 1);  // rounded, so 999999999999999.9 is 1E+15
  const auto exponent = std::atoi(scientific.c_str() + scientific.find('e') + 1);
  if (exponent >= kDigits || exponent < -kDigits) return fmt::format("{:.{}G}", value, kDigits);
  auto text = fmt::format("{:.{}f}", value, kDigits - 1 - exponent);
  if (text.find('.') != std::string::npos) {
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
  }
  return text;
}

std::string ToText(Value value) {
  if (auto* text = std::get_if<std::string>(&value)) return std::move(*text);
  return std::visit(TextOf{}, value);
}

double TextToNumber(std::string_view text) {
  const auto number = ReadNumber(Trim(text));
  if (!number.value || !number.isWhole) throw PlatformError(error::kConversion);
  return *number.value;
}

double LeadingNumber(std::string_view text) { return ReadNumber(Trim(text)).value.value_or(0); }

std::int64_t TextToInteger(std::string_view text) {
  constexpr std::size_t kExactDigits = 15;  // of a number that passes through floating point
  std::int64_t whole = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, whole);
  if (read.ec == std::errc{} && read.ptr == end && text.size() <= kExactDigits) return whole;
  const double value = TextToNumber(text);
  constexpr double kLimit = 9.2e18;
  if (std::fabs(value) > kLimit) throw PlatformError(error::kConversion);
  return std::llrint(value);  // halves to even
}

bool TextToBoolean(std::string_view text) {
  const auto trimmed = Trim(text);
  if (SameName(trimmed, "true")) return true;
  if (SameName(trimmed, "false")) return false;
  return TextToNumber(trimmed) != 0;
}

Date ToDate(const Value& value) {
  if (const auto* date = std::get_if<Date>(&value)) return *date;
  if (const auto* text = std::get_if<std::string>(&value)) return TextToDate(*text);
  if (const auto* number = std::get_if<double>(&value)) return Date::FromSerial(*number);
  if (IsNull(value)) throw PlatformError(error::kInvalidNull);
  throw PlatformError(error::kConversion);
}

}  // namespace twqb
