#include "adapters/companyfile/CompanyClock.h"

#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

// The first second behind `before` in which the clock differs from standard time otherwise than then; at `after` it
// does.
Date ChangeBetween(Date before, Date after, Machine& machine) {
  const auto was = machine.DaylightMinutes(before);
  while (after.Milliseconds() - before.Milliseconds() > Date::kSecond) {
    const auto seconds = (after.Milliseconds() - before.Milliseconds()) / Date::kSecond;
    const auto middle = before.PlusMilliseconds(seconds / 2 * Date::kSecond);
    (machine.DaylightMinutes(middle) == was ? before : after) = middle;
  }
  return after;
}

}  // namespace

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
  if (standard.PlusMinutes(clock.machine->DaylightMinutes(standard)) != wall) {
    const auto change = ChangeBetween(standard, wall, *clock.machine);
    standard = occurrence == Occurrence::First ? change : change.PlusMilliseconds(-Date::kSecond);
  }
  return standard.PlusMinutes(clock.standardBias).UnixSeconds();
}

}  // namespace twqb::company
