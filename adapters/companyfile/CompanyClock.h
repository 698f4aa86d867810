// Time as QuickBooks writes it: standard time with the standard offset, so an hour behind the wall clock while daylight
// time is on. Inside the file a time is Unix seconds.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Date.h"
#include "platform/machine.h"

namespace twqb::company {

// The machine's clock and zone at one moment.
struct ClockReading {
  std::int64_t now = 0;  // Unix seconds, UTC
  int standardBias = 0;  // minutes: UTC = standard time + bias
  Date today = {};       // the day on the wall, at midnight
};

[[nodiscard]] ClockReading ReadClock(Machine& machine);
// 2008-02-26T10:00:00-05:00, by the zone of `clock`.
[[nodiscard]] std::string TimeText(std::int64_t unixSeconds, const ClockReading& clock);
// A standard time in that zone, as Unix seconds.
[[nodiscard]] std::int64_t FromStandardTime(Date standard, const ClockReading& clock);

}  // namespace twqb::company
