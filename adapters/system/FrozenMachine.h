// FrozenMachine: this system with a clock that moves by sleeps alone and random values of a seed, for tests and
// reproducible runs.
//
// Two machines of the same options give the same dates, GUIDs and numbers. Files are the system's own. A sleep takes no
// time.
#pragma once

#include <cstdint>
#include <random>

#include "adapters/system/FrozenOptions.h"
#include "adapters/system/SystemMachine.h"

namespace twqb {

class FrozenMachine : public SystemMachine {
 public:
  FrozenMachine(SystemMachineOptions options, const FrozenOptions& frozen);

  // The clock, without the part of a second that sleeps have added up to.
  [[nodiscard]] Date Now() override;
  [[nodiscard]] TimeZoneInformation GetTimeZoneInformation() override;
  // Of every time the same, by the state of the zone.
  [[nodiscard]] int DaylightMinutes(Date standardTime) override;
  // Moves the clock.
  void Sleep(std::int64_t milliseconds) override;
  // GUIDs and numbers are two sequences: making the one does not change the other.
  [[nodiscard]] std::optional<GuidBytes> CreateGuid() override;
  [[nodiscard]] double Random() override;

  void SetNow(Date now) { now_ = now; }
  void Advance(std::int64_t milliseconds) { now_ = now_.PlusMilliseconds(milliseconds); }

 private:
  Date now_;
  TimeZoneInformation zone_;
  std::mt19937_64 guids_;
  std::mt19937_64 numbers_;
};

}  // namespace twqb
