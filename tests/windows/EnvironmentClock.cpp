#include "tests/windows/EnvironmentClock.h"

#include <windows.h>

#include <array>
#include <sstream>

namespace twqb {

namespace {

constexpr const char* kVariable = "TWQB_DOUBLE_CLOCK";

}  // namespace

std::string FromEnvironment(const char* name) {
  std::array<char, 32'768> text = {};
  const auto size = GetEnvironmentVariableA(name, text.data(), static_cast<DWORD>(text.size()));
  return {text.data(), size};
}

std::optional<FrozenOptions> EnvironmentClock() {
  std::istringstream words(FromEnvironment(kVariable));
  std::string now;
  std::string daylight;
  FrozenOptions clock{.zone = {.state = TimeZoneState::Standard}};
  if (!(words >> now >> clock.zone.bias)) return std::nullopt;
  words >> daylight;
  clock.now = TextToDate(now);
  if (daylight == "daylight") clock.zone.state = TimeZoneState::Daylight;
  return clock;
}

void SetEnvironmentClock(const FrozenOptions& clock) {
  const auto* const daylight = clock.zone.state == TimeZoneState::Daylight ? " daylight" : "";
  const auto text = IsoDate(clock.now) + " " + std::to_string(clock.zone.bias) + daylight;
  SetEnvironmentVariableA(kVariable, text.c_str());
}

}  // namespace twqb
