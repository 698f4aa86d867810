#include "adapters/companyfile/CompanyClock.h"

#include "messages/ValueFormat.h"

namespace twqb::company {

ClockReading ReadClock(Machine& machine) {
  const auto zone = machine.GetTimeZoneInformation();
  const int bias = zone.bias + (zone.state == TimeZoneState::Daylight ? zone.daylightBias : 0);
  const auto now = machine.Now();
  return {.now = now.PlusMinutes(bias).UnixSeconds(), .standardBias = zone.bias, .today = now.Midnight()};
}

std::string TimeText(std::int64_t unixSeconds, const ClockReading& clock) {
  return messages::DateTimeText(Date::FromUnixSeconds(unixSeconds).PlusMinutes(-clock.standardBias),
                                -clock.standardBias);
}

std::int64_t FromStandardTime(Date standard, const ClockReading& clock) {
  return standard.PlusMinutes(clock.standardBias).UnixSeconds();
}

}  // namespace twqb::company
