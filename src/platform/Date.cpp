#include "platform/Date.h"

#include <fmt/core.h>

#include <array>
#include <chrono>
#include <cmath>
#include <utility>

#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb {

namespace {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

// Days from 30 December 1899 to 1 January 1970.
constexpr std::int64_t kUnixEpochDays = 25569;
constexpr std::int64_t kUnixEpoch = kUnixEpochDays * Date::kDay;

std::int64_t FloorDivide(std::int64_t value, std::int64_t by) {
  const std::int64_t quotient = value / by;
  return (value % by < 0) ? quotient - 1 : quotient;
}

std::int64_t DaysOf(int y, int m, int d) {
  return sys_days(year{y} / month{static_cast<unsigned>(m)} / 1).time_since_epoch().count() + (d - 1) + kUnixEpochDays;
}

// A reader over one text; every step answers whether it could be taken.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }
  void SkipBlanks() {
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
  }
  bool Literal(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool Number(int& value, int& digits) {
    std::size_t n = 0;
    int read = 0;
    for (; n < rest_.size() && n < 4 && rest_[n] >= '0' && rest_[n] <= '9'; ++n) read = read * 10 + (rest_[n] - '0');
    if (n == 0) return false;
    value = read;
    digits = static_cast<int>(n);
    rest_.remove_prefix(n);
    return true;
  }
  bool Number(int& value) {
    int digits = 0;
    return Number(value, digits);
  }
  // AM or PM, in any case.
  bool Word(char first) {
    if (rest_.size() < 2 || (rest_[0] | 0x20) != (first | 0x20) || (rest_[1] | 0x20) != 'm') return false;
    rest_.remove_prefix(2);
    return true;
  }

 private:
  std::string_view rest_;
};

// h:mm[:ss[.mmm]] [AM|PM]; `hour` has been read already.
bool ReadTime(Scanner& scan, int hour, Date::Civil& civil) {
  civil.hour = hour;
  if (!scan.Literal(':') || !scan.Number(civil.minute)) return false;
  if (scan.Literal(':')) {
    if (!scan.Number(civil.second)) return false;
    if (scan.Literal('.')) {
      int digits = 0;
      if (!scan.Number(civil.millisecond, digits)) return false;
      for (; digits < 3; ++digits) civil.millisecond *= 10;
      if (digits > 3) return false;
    }
  }
  scan.SkipBlanks();
  const bool am = scan.Word('a');
  const bool pm = !am && scan.Word('p');
  if (am || pm) {
    if (civil.hour < 1 || civil.hour > 12) return false;
    civil.hour = civil.hour % 12 + (pm ? 12 : 0);
  }
  return civil.hour < 24 && civil.minute < 60 && civil.second < 60;
}

// A year of two digits falls into 1930 to 2029.
int FullYear(int value, int digits) {
  if (digits > 2) return value;
  return value < 30 ? 2000 + value : 1900 + value;
}

}  // namespace

Date Date::FromCivil(const Civil& c) {
  const int months = c.year * 12 + (c.month - 1);
  const int y = static_cast<int>(FloorDivide(months, 12));
  const int m = months - y * 12 + 1;
  return Date(DaysOf(y, m, c.day) * kDay + c.hour * kHour + c.minute * kMinute + c.second * kSecond + c.millisecond);
}

Date Date::FromSerial(double serial) {
  constexpr double kFirst = -657434;  // 1 January 100
  constexpr double kLast = 2958466;   // the day after 31 December 9999
  if (!(serial >= kFirst && serial < kLast)) throw PlatformError(error::kConversion);
  // Before day zero the fraction still counts forward: -1.25 is 6:00 of 29 December 1899.
  const double whole = std::trunc(serial);
  const double fraction = std::fabs(serial - whole);
  return Date(static_cast<std::int64_t>(whole) * kDay + std::llround(fraction * static_cast<double>(kDay)));
}

Date Date::FromUnixSeconds(std::int64_t seconds) { return Date(kUnixEpoch + seconds * kSecond); }

double Date::Serial() const {
  const std::int64_t days = FloorDivide(milliseconds_, kDay);
  const double fraction = static_cast<double>(milliseconds_ - days * kDay) / static_cast<double>(kDay);
  return days < 0 ? static_cast<double>(days) - fraction : static_cast<double>(days) + fraction;
}

std::int64_t Date::UnixSeconds() const { return FloorDivide(milliseconds_ - kUnixEpoch, kSecond); }

Date::Civil Date::ToCivil() const {
  const std::int64_t days = FloorDivide(milliseconds_, kDay);
  std::int64_t rest = milliseconds_ - days * kDay;
  const year_month_day ymd{sys_days{std::chrono::days{days - kUnixEpochDays}}};
  Civil c;
  c.year = static_cast<int>(ymd.year());
  c.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
  c.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
  c.hour = static_cast<int>(rest / kHour);
  rest %= kHour;
  c.minute = static_cast<int>(rest / kMinute);
  rest %= kMinute;
  c.second = static_cast<int>(rest / kSecond);
  c.millisecond = static_cast<int>(rest % kSecond);
  return c;
}

Date Date::Midnight() const { return Date(FloorDivide(milliseconds_, kDay) * kDay); }

std::string ShortDate(Date date) {
  const auto c = date.ToCivil();
  return fmt::format("{}/{}/{:04}", c.month, c.day, c.year);
}

std::string GeneralDate(Date date) {
  const auto c = date.ToCivil();
  if (date == date.Midnight() && date != Date()) return ShortDate(date);
  const int hour = c.hour % 12 == 0 ? 12 : c.hour % 12;
  auto time = fmt::format("{}:{:02}:{:02} {}", hour, c.minute, c.second, c.hour < 12 ? "AM" : "PM");
  if (date.Midnight() == Date()) return time;
  return ShortDate(date) + " " + time;
}

std::string IsoDate(Date date) {
  constexpr std::size_t kLongest = 32;  // with the zone that may come behind it
  const auto c = date.ToCivil();
  std::string text;
  text.reserve(kLongest);
  AppendPadded(text, c.year, 4);
  const auto tens = [](int part) { return static_cast<char>('0' + part / 10); };
  const auto ones = [](int part) { return static_cast<char>('0' + part % 10); };
  const std::array rest = {'-', tens(c.month),  ones(c.month), '-', tens(c.day),    ones(c.day),
                           'T', tens(c.hour),   ones(c.hour),  ':', tens(c.minute), ones(c.minute),
                           ':', tens(c.second), ones(c.second)};
  text.append(rest.data(), rest.size());
  if (c.millisecond != 0) AppendPadded(text += '.', c.millisecond, 3);
  return text;
}

std::optional<Date> ParseDate(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  Scanner scan(text);
  scan.SkipBlanks();
  Date::Civil c;
  int first = 0;
  int firstDigits = 0;
  if (!scan.Number(first, firstDigits)) return std::nullopt;

  bool timeOnly = false;
  if (scan.Literal('/')) {
    int digits = 0;
    c.month = first;
    if (!scan.Number(c.day) || !scan.Literal('/') || !scan.Number(c.year, digits)) return std::nullopt;
    c.year = FullYear(c.year, digits);
  } else if (firstDigits == 4 && scan.Literal('-')) {
    c.year = first;
    if (!scan.Number(c.month) || !scan.Literal('-') || !scan.Number(c.day)) return std::nullopt;
  } else {
    timeOnly = true;
    if (!ReadTime(scan, first, c)) return std::nullopt;
  }
  if (!timeOnly) {
    const bool timeFollows = scan.Literal('T');
    if (!timeFollows && !scan.AtEnd()) {
      if (!scan.Literal(' ')) return std::nullopt;
      scan.SkipBlanks();
    }
    int hour = 0;
    if ((timeFollows || !scan.AtEnd()) && (!scan.Number(hour) || !ReadTime(scan, hour, c))) return std::nullopt;
  }
  scan.SkipBlanks();
  if (!scan.AtEnd()) return std::nullopt;
  const year_month_day ymd{year{c.year}, month{static_cast<unsigned>(c.month)}, day{static_cast<unsigned>(c.day)}};
  if (!ymd.ok() || c.year < 100) return std::nullopt;
  return Date::FromCivil(c);
}

Date TextToDate(std::string_view text) {
  if (const auto date = ParseDate(text)) return *date;
  throw PlatformError(error::kConversion);
}

}  // namespace twqb
