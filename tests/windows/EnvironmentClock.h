// A clock that stands still, as the environment of the process tells it: TWQB_DOUBLE_CLOCK holds time and zone, as
// "2008-03-05T10:00:00 300", with "daylight" behind it where that is on.
//
// The doubles have no other road to the machine that a test works on. The system's own environment is asked, which all
// modules of a process share.
#pragma once

#include <optional>
#include <string>

#include "adapters/system/FrozenOptions.h"

namespace twqb {

// A variable of the environment; empty when it is not there.
[[nodiscard]] std::string FromEnvironment(const char* name);

// Nothing where the variable is not there.
[[nodiscard]] std::optional<FrozenOptions> EnvironmentClock();
void SetEnvironmentClock(const FrozenOptions& clock);

}  // namespace twqb
