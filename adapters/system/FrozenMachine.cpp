#include "adapters/system/FrozenMachine.h"

#include <utility>

#include "adapters/system/RandomValues.h"

namespace twqb {

FrozenMachine::FrozenMachine(SystemMachineOptions options, const FrozenOptions& frozen)
    : SystemMachine(std::move(options)),
      now_(frozen.now),
      zone_(frozen.zone),
      guids_(frozen.seed),
      numbers_(~frozen.seed) {}

Date FrozenMachine::Now() { return Date::FromUnixSeconds(now_.UnixSeconds()); }

TimeZoneInformation FrozenMachine::GetTimeZoneInformation() { return zone_; }

int FrozenMachine::DaylightMinutes(Date /*standardTime*/) {
  return zone_.state == TimeZoneState::Daylight ? -zone_.daylightBias : 0;
}

void FrozenMachine::Sleep(std::int64_t milliseconds) {
  if (milliseconds > 0) Advance(milliseconds);
}

std::optional<GuidBytes> FrozenMachine::CreateGuid() {
  GuidBytes bytes = {};
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>(guids_());
  return AsRandomGuid(bytes);
}

double FrozenMachine::Random() { return UnitInterval(numbers_); }

}  // namespace twqb
