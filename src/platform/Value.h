// Value: what a database field holds, and the en-US conversions between it, text, numbers and booleans.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/Currency.h"
#include "platform/Date.h"

namespace twqb {

struct Null {
  friend constexpr bool operator==(Null, Null) = default;
};

using Value = std::variant<Null, bool, std::int64_t, double, Currency, Date, std::string>;

[[nodiscard]] inline bool IsNull(const Value& value) { return std::holds_alternative<Null>(value); }
// The value with an empty text appended: NULL is "", a date its general form, True "True".
[[nodiscard]] std::string ToText(Value value);
// A number as it prints: no exponent below 1E15, no trailing zeros, decimal point.
[[nodiscard]] std::string NumberToText(double value);

// "True", "False" in any case, or a number (0 is False). Raises 13 for anything else.
[[nodiscard]] bool TextToBoolean(std::string_view text);
// A whole number, halves rounded to even. Raises 13 for what is no number.
[[nodiscard]] std::int64_t TextToInteger(std::string_view text);
[[nodiscard]] double TextToNumber(std::string_view text);
// The number that the text begins with, behind blanks; 0 when it begins with none. Never raises.
[[nodiscard]] double LeadingNumber(std::string_view text);
// A date value, a date serial, or a text that reads as a date. Raises 94 for NULL and 13 for anything else.
[[nodiscard]] Date ToDate(const Value& value);

}  // namespace twqb
