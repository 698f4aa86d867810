// A machine whose clock and zone a test sets; the company file asks it for nothing else.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "platform/machine.h"

namespace twqb::company {

class TestMachine : public Machine {
 public:
  Date now = Date::FromCivil({.year = 2008, .month = 3, .day = 5, .hour = 10});
  TimeZoneInformation zone = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard};

  // Both changes of the clock, in standard time; without them the state of the zone holds for every time.
  std::optional<std::pair<Date, Date>> summer;

  void Pass(std::int64_t seconds) { now = now.PlusMilliseconds(seconds * Date::kSecond); }

  Date Now() override { return now; }
  TimeZoneInformation GetTimeZoneInformation() override { return zone; }
  int DaylightMinutes(Date standardTime) override {
    const bool inSummer =
        summer ? summer->first <= standardTime && standardTime < summer->second : zone.state == TimeZoneState::Daylight;
    return inSummer ? -zone.daylightBias : 0;
  }
  void Sleep(std::int64_t milliseconds) override { now = now.PlusMilliseconds(milliseconds); }
  std::optional<GuidBytes> CreateGuid() override { return std::nullopt; }
  double Random() override { return 0; }
  std::string GetPrivateProfileString(std::string_view, std::string_view, std::string_view fallback, int,
                                      std::string_view) override {
    return std::string(fallback);
  }
  bool WritePrivateProfileString(std::string_view, std::string_view, std::string_view, std::string_view) override {
    return false;
  }
  std::optional<std::string> ReadRegistry(std::string_view, std::string_view) override { return std::nullopt; }
  void CopyFile(const std::string&, const std::string&) override { throw std::logic_error("no file is copied here"); }
  std::string ComputerName() override { return {}; }
  std::string LibraryFolder() override { return {}; }
  void AppendLine(const std::string&, std::string_view) override { throw std::logic_error("no log is written here"); }
};

}  // namespace twqb::company
