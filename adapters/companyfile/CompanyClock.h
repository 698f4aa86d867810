// Time as QuickBooks writes it: the wall clock, and behind it the zone's standard offset, in daylight time too. Inside
// the file a time is Unix seconds.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Date.h"
#include "platform/machine.h"

namespace twqb::company {

// The machine's clock and zone at one moment.
struct ClockReading {
  std::int64_t now = 0;        // Unix seconds, UTC
  int standardBias = 0;        // minutes: UTC = standard time + bias
  int daylightMinutes = 0;     // that daylight time is ahead of standard time, whether it is on or not
  Date today = {};             // the day on the wall, at midnight
  Machine* machine = nullptr;  // knows of other moments whether they lie in daylight time
};

[[nodiscard]] ClockReading ReadClock(Machine& machine);
// 2008-02-26T10:00:00-05:00, and in summer 2008-06-24T23:53:54-05:00 where the wall clock showed 23:53:54.
[[nodiscard]] std::string TimeText(std::int64_t unixSeconds, const ClockReading& clock);

// The moment at which the wall clock showed `wall`, as Unix seconds; of an hour that it showed twice, the one that is
// asked for. Of an hour that it passed over: the first moment behind that hour, or the last one before it.
enum class Occurrence : std::uint8_t { First, Last };
[[nodiscard]] std::int64_t FromWallClock(Date wall, Occurrence occurrence, const ClockReading& clock);

}  // namespace twqb::company
