// How single values are written on the wire, and whether a text is one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "messages/Schema.h"
#include "platform/Currency.h"
#include "platform/Date.h"

namespace twqb::messages {

// Whether `text` is a well-formed value of the element's type (an enumeration's: one of its names). Lengths of texts
// are not looked at.
[[nodiscard]] bool IsWellFormed(const Element& element, std::string_view text);
// The same, with the names of an enumeration that a message set of that form knows.
[[nodiscard]] bool IsWellFormed(const Element& element, std::string_view text, const Form& form);

[[nodiscard]] std::string BoolText(bool value);                      // "true", "false"
[[nodiscard]] std::optional<bool> ParseBool(std::string_view text);  // also "1", "0"

// Two decimals, halves away from zero.
[[nodiscard]] std::string AmountText(double value);
[[nodiscard]] std::string AmountText(Currency amount);
// At most that many decimals, rounded so, without trailing zeros.
[[nodiscard]] std::string DecimalText(double value, int decimals = 5);
// [+-]?d{1,13}.dd
[[nodiscard]] std::optional<Currency> ParseAmount(std::string_view text);

[[nodiscard]] std::string DateText(Date date);  // yyyy-mm-dd
[[nodiscard]] std::optional<Date> ParseDateText(std::string_view text);

// yyyy-mm-ddThh:mm:ss and, with an offset (minutes east of Greenwich), ±hh:mm behind it. Milliseconds are dropped.
[[nodiscard]] std::string DateTimeText(Date local, std::optional<int> offsetMinutes);
struct DateTime {
  Date local;                        // as written
  std::optional<int> offsetMinutes;  // nothing: no offset stood there
};
[[nodiscard]] std::optional<DateTime> ParseDateTime(std::string_view text);

// A span of time; minutes and seconds are 0 to 59 in what is written, and any number in what is read.
struct TimeInterval {
  std::int64_t hours = 0;
  std::int64_t minutes = 0;
  std::int64_t seconds = 0;
  friend constexpr bool operator==(const TimeInterval&, const TimeInterval&) = default;
};
[[nodiscard]] std::string TimeIntervalText(const TimeInterval& span);  // PTnHnMnS
// Each part may be missing, but not all. Nothing for what is no span, or has a number of more than nine digits.
[[nodiscard]] std::optional<TimeInterval> ParseTimeInterval(std::string_view text);

}  // namespace twqb::messages
