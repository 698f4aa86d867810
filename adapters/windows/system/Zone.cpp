// The time zone as Windows keeps it, with its rules by date, in the place of the adapter's own file.

#include "adapters/system/Zone.h"

#include <windows.h>

namespace twqb {

namespace {

Date DateOf(const SYSTEMTIME& time) {
  return Date::FromCivil({.year = time.wYear,
                          .month = time.wMonth,
                          .day = time.wDay,
                          .hour = time.wHour,
                          .minute = time.wMinute,
                          .second = time.wSecond});
}

SYSTEMTIME SystemTimeOf(Date date) {
  const auto civil = date.ToCivil();
  SYSTEMTIME time = {};
  time.wYear = static_cast<WORD>(civil.year);
  time.wMonth = static_cast<WORD>(civil.month);
  time.wDay = static_cast<WORD>(civil.day);
  time.wHour = static_cast<WORD>(civil.hour);
  time.wMinute = static_cast<WORD>(civil.minute);
  time.wSecond = static_cast<WORD>(civil.second);
  return time;
}

}  // namespace

// Windows tells it anew at each call.
void ReadZone() {}

Date WallClockNow() {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  return DateOf(now);
}

TimeZoneInformation ZoneNow() {
  TIME_ZONE_INFORMATION zone = {};
  const auto state = ::GetTimeZoneInformation(&zone);
  // The zone's own shift of standard time is left out, as in all that hosts write.
  const int bias = static_cast<int>(zone.Bias);
  const bool hasDaylight = zone.DaylightDate.wMonth != 0;
  if (!hasDaylight) return {.bias = bias, .daylightBias = 0, .state = TimeZoneState::Standard};
  return {.bias = bias,
          .daylightBias = static_cast<int>(zone.DaylightBias),
          .state = state == TIME_ZONE_ID_DAYLIGHT ? TimeZoneState::Daylight : TimeZoneState::Standard};
}

int MinutesAheadAt(Date utc) {
  const auto there = SystemTimeOf(utc);
  SYSTEMTIME wall = {};
  if (SystemTimeToTzSpecificLocalTime(nullptr, &there, &wall) == 0) return -ZoneNow().bias;
  constexpr std::int64_t kSecondsPerMinute = 60;
  return static_cast<int>((DateOf(wall).UnixSeconds() - utc.UnixSeconds()) / kSecondsPerMinute);
}

}  // namespace twqb
