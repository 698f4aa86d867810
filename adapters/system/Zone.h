// The time zone of this computer: how far its wall clock is from UTC, at any moment.
//
// It stands under SystemMachine, which makes of it what the seam tells. The file beside this header asks the C library;
// a system that keeps its rules elsewhere brings its own. Nothing here raises.
#pragma once

#include "platform/Date.h"
#include "platform/machine.h"

namespace twqb {

// Reads the zone that the process was told. Ahead of the others.
void ReadZone();

// The wall clock, in whole seconds.
[[nodiscard]] Date WallClockNow();
// As SystemMachine::GetTimeZoneInformation tells it.
[[nodiscard]] TimeZoneInformation ZoneNow();
// How many minutes the wall clock is ahead of UTC at that moment, which is given in UTC.
[[nodiscard]] int MinutesAheadAt(Date utc);

}  // namespace twqb
