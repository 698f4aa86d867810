// Date: an instant on the wall, without a zone, in whole milliseconds since 30 December 1899.
//
// The unit makes ties exact where a floating point serial would not. All texts are en-US, on every machine.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace twqb {

class Date {
 public:
  static constexpr std::int64_t kSecond = 1000;
  static constexpr std::int64_t kMinute = 60 * kSecond;
  static constexpr std::int64_t kHour = 60 * kMinute;
  static constexpr std::int64_t kDay = 24 * kHour;

  struct Civil {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
  };

  constexpr Date() = default;  // 30 December 1899, midnight
  [[nodiscard]] static constexpr Date FromMilliseconds(std::int64_t milliseconds) { return Date(milliseconds); }
  // Fields out of range carry over (minute 90 is an hour and a half).
  [[nodiscard]] static Date FromCivil(const Civil& civil);
  // The platform's date serial: days, the fraction being the time of day. Raises 13 outside the years 100 to 9999.
  [[nodiscard]] static Date FromSerial(double serial);
  [[nodiscard]] static Date FromUnixSeconds(std::int64_t seconds);

  [[nodiscard]] constexpr std::int64_t Milliseconds() const { return milliseconds_; }
  [[nodiscard]] double Serial() const;
  [[nodiscard]] std::int64_t UnixSeconds() const;  // rounded down
  [[nodiscard]] Civil ToCivil() const;
  [[nodiscard]] Date Midnight() const;

  [[nodiscard]] constexpr Date PlusMilliseconds(std::int64_t n) const { return Date(milliseconds_ + n); }
  [[nodiscard]] constexpr Date PlusMinutes(std::int64_t n) const { return Date(milliseconds_ + n * kMinute); }
  [[nodiscard]] constexpr Date PlusHours(std::int64_t n) const { return Date(milliseconds_ + n * kHour); }
  [[nodiscard]] constexpr Date PlusDays(std::int64_t n) const { return Date(milliseconds_ + n * kDay); }

  friend constexpr auto operator<=>(const Date&, const Date&) = default;

 private:
  explicit constexpr Date(std::int64_t milliseconds) : milliseconds_(milliseconds) {}
  std::int64_t milliseconds_ = 0;
};

// m/d/yyyy
[[nodiscard]] std::string ShortDate(Date date);
// m/d/yyyy h:mm:ss AM/PM; at midnight the date alone; on 30 December 1899 the time alone.
[[nodiscard]] std::string GeneralDate(Date date);
// yyyy-mm-ddThh:mm:ss, with .mmm behind it only when there are milliseconds.
[[nodiscard]] std::string IsoDate(Date date);

// Reads m/d/yyyy or yyyy-mm-dd, each with a time h:mm[:ss[.mmm]] [AM|PM] behind it or without, or a time alone.
// Nothing when the text is none of these or names no day of the calendar (2/30).
[[nodiscard]] std::optional<Date> ParseDate(std::string_view text);
// The same; raises 13 when the text is no date.
[[nodiscard]] Date TextToDate(std::string_view text);

}  // namespace twqb
