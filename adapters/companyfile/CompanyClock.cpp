#include "adapters/companyfile/CompanyClock.h"

#include "messages/ValueFormat.h"

namespace twqb::company {

ClockReading ReadClock(Machine& machine) {
  const auto zone = machine.GetTimeZoneInformation();
  const int bias = zone.bias + (zone.state == TimeZoneState::Daylight ? zone.daylightBias : 0);
  const auto now = machine.Now();
  return {.now = now.PlusMinutes(bias).UnixSeconds(),
          .standardBias = zone.bias,
          .daylightMinutes = -zone.daylightBias,
          .today = now.Midnight(),
          .machine = &machine};
}

std::string TimeText(std::int64_t unixSeconds, const ClockReading& clock) {
  const auto standard = Date::FromUnixSeconds(unixSeconds).PlusMinutes(-clock.standardBias);
  return messages::DateTimeText(standard.PlusMinutes(clock.machine->DaylightMinutes(standard)), -clock.standardBias);
}

std::int64_t FromWallClock(Date wall, Occurrence occurrence, const ClockReading& clock) {
  auto standard = StandardTimeOf(*clock.machine, wall);
  const auto inSummer = wall.PlusMinutes(-clock.daylightMinutes);
  const bool showsItThen = clock.machine->DaylightMinutes(inSummer) == clock.daylightMinutes;
  if (occurrence == Occurrence::First && showsItThen) standard = inSummer;
  return standard.PlusMinutes(clock.standardBias).UnixSeconds();
}

}  // namespace twqb::company
