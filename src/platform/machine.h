// The seam to the machine: clock, time zone, sleep, GUIDs, random numbers, profile (INI) files, the per-user registry,
// file copies, the name of the workstation and the
// folder of the log.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Date.h"

namespace twqb {

enum class TimeZoneState : std::uint8_t { Unknown = 0, Standard = 1, Daylight = 2 };

// Minutes: UTC = local time + bias; in daylight time UTC = local time + bias + daylightBias.
struct TimeZoneInformation {
  int bias = 0;
  int daylightBias = -60;
  TimeZoneState state = TimeZoneState::Unknown;
};

using GuidBytes = std::array<std::uint8_t, 16>;  // in the order in which the text form prints them

class Machine {
 public:
  virtual ~Machine() = default;

  // The wall clock, in whole seconds.
  [[nodiscard]] virtual Date Now() = 0;
  [[nodiscard]] virtual TimeZoneInformation GetTimeZoneInformation() = 0;
  // How many minutes the wall clock is ahead of standard time at that moment, which is given in standard time: 0 where
  // it does not lie in daylight time, by the present rules of the zone. Never raises.
  [[nodiscard]] virtual int DaylightMinutes(Date standardTime) = 0;
  virtual void Sleep(std::int64_t milliseconds) = 0;
  // Nothing when the system can't make one.
  [[nodiscard]] virtual std::optional<GuidBytes> CreateGuid() = 0;
  // At least 0, below 1.
  [[nodiscard]] virtual double Random() = 0;

  // GetPrivateProfileStringA: the value without the quotes that enclose it and without outer blanks, at most `size` - 1
  // characters; `fallback` when the file, section or key is missing. Never raises.
  [[nodiscard]] virtual std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                                            std::string_view fallback, int size,
                                                            std::string_view path) = 0;
  // WritePrivateProfileStringA: False when it can't be written. The file is replaced as a whole or not at all.
  virtual bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                         std::string_view path) = 0;
  // A text value under HKEY_CURRENT_USER; nothing when key or value is missing.
  [[nodiscard]] virtual std::optional<std::string> ReadRegistry(std::string_view key, std::string_view name) = 0;

  // Overwrites `to`. Raises when it can't.
  virtual void CopyFile(const std::string& from, const std::string& to) = 0;
  // The name under which the workstation is known in its network; "" where it has none. Never raises.
  [[nodiscard]] virtual std::string ComputerName() = 0;
  // The folder that the library stands in, where its log goes.
  [[nodiscard]] virtual std::string LibraryFolder() = 0;
  // Opens for append (creating the file), writes `line` and CR LF, closes. Raises when it can't.
  virtual void AppendLine(const std::string& path, std::string_view line) = 0;
};

// The standard time at which the wall clock shows `wall`; of an hour that it shows twice, the later one.
[[nodiscard]] inline Date StandardTimeOf(Machine& machine, Date wall) {
  return wall.PlusMinutes(-machine.DaylightMinutes(wall));
}

}  // namespace twqb
