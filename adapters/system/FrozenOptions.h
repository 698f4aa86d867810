// What a FrozenMachine starts with: its clock, its time zone and the seed of what is random.
//
// Plain values, for those that read or hand on the options of a machine and make none.
#pragma once

#include <cstdint>

#include "platform/Date.h"
#include "platform/machine.h"

namespace twqb {

struct FrozenOptions {
  Date now;  // local time
  TimeZoneInformation zone;
  std::uint64_t seed = 0;
};

}  // namespace twqb
