#include "adapters/system/Zone.h"

#include <algorithm>
#include <ctime>
#include <optional>

namespace twqb {

namespace {

constexpr int kSecondsPerMinute = 60;

std::tm LocalTime(std::time_t at) {
  std::tm fields = {};
  ::localtime_r(&at, &fields);
  return fields;
}

int MinutesEast(const std::tm& fields) { return static_cast<int>(fields.tm_gmtoff / kSecondsPerMinute); }

// The nearest coming time in which the zone keeps the other of its two times; nothing when there is none in a year.
std::optional<std::tm> OtherSeason(std::time_t now, bool isDaylight) {
  constexpr std::time_t kStep = std::time_t{14} * 24 * 60 * 60;  // the shortest season is a month
  constexpr int kStepsInYear = 26;
  for (int step = 1; step <= kStepsInYear; ++step) {
    const auto fields = LocalTime(now + step * kStep);
    if ((fields.tm_isdst > 0) != isDaylight) return fields;
  }
  return std::nullopt;
}

}  // namespace

void ReadZone() { ::tzset(); }

Date WallClockNow() {
  const auto fields = LocalTime(std::time(nullptr));
  return Date::FromCivil({.year = fields.tm_year + 1900,
                          .month = fields.tm_mon + 1,
                          .day = fields.tm_mday,
                          .hour = fields.tm_hour,
                          .minute = fields.tm_min,
                          .second = fields.tm_sec});
}

TimeZoneInformation ZoneNow() {
  const auto now = std::time(nullptr);
  const auto present = LocalTime(now);
  const int offset = MinutesEast(present);
  const auto other = OtherSeason(now, present.tm_isdst > 0);
  if (!other) return {.bias = -offset, .daylightBias = 0, .state = TimeZoneState::Standard};
  const int standard = std::min(offset, MinutesEast(*other));
  const int daylight = std::max(offset, MinutesEast(*other));
  return {.bias = -standard,
          .daylightBias = standard - daylight,
          .state = offset > standard ? TimeZoneState::Daylight : TimeZoneState::Standard};
}

int MinutesAheadAt(Date utc) { return MinutesEast(LocalTime(static_cast<std::time_t>(utc.UnixSeconds()))); }

}  // namespace twqb
