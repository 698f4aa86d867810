// SystemMachine: the machine seam on this (POSIX) system.
//
// Registry values stand in a profile file: the values of the key SOFTWARE\OFS\TW80\GENERAL are its section
// [TW80\GENERAL], those directly under the application key its section [TW80]. The clock is the system's, in the zone
// that TZ or the system names when the machine is made. Not for several threads at once.
#pragma once

#include <ctime>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "adapters/system/ProfileFile.h"
#include "platform/machine.h"

namespace twqb {

struct SystemMachineOptions {
  std::string libraryFolder;
  std::string registryFile;  // need not exist
};

class SystemMachine : public Machine {
 public:
  explicit SystemMachine(SystemMachineOptions options);

  [[nodiscard]] Date Now() override;
  // Daylight time is the greater of the zone's two offsets, wherever the zone's own law puts its standard. A zone that
  // knows no daylight time is always in standard time.
  [[nodiscard]] TimeZoneInformation GetTimeZoneInformation() override;
  [[nodiscard]] int DaylightMinutes(Date standardTime) override;
  void Sleep(std::int64_t milliseconds) override;
  [[nodiscard]] std::optional<GuidBytes> CreateGuid() override;
  [[nodiscard]] double Random() override;

  // See ProfileText for what the file may hold. The default loses its trailing blanks.
  [[nodiscard]] std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                                    std::string_view fallback, int size,
                                                    std::string_view path) override;
  // See ProfileFile::Write.
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override;
  // Nothing too for a key outside SOFTWARE\OFS. A backslash at the end of `key` makes no difference.
  [[nodiscard]] std::optional<std::string> ReadRegistry(std::string_view key, std::string_view name) override;

  // A copy that fails leaves `to` as it was. Raises 53 when `from` is missing, 76 when the folder of `to` is, else 75;
  // the text names the path. The copy has the permissions of `from`, and is durable. That of a SQLite database is one
  // state of it, in one file, whoever writes to it meanwhile; the database at `to` is not replaced, and 75 raised,
  // while somebody has written to that one and not closed it. Where `to` is a symbolic link the copy takes the link's
  // place, and what the link leads to stays as it is.
  void CopyFile(const std::string& from, const std::string& to) override;
  [[nodiscard]] std::string ComputerName() override;
  [[nodiscard]] std::string LibraryFolder() override;
  // The line is written in one step, so lines of several processes don't mix; its control characters, but tabs and line
  // ends, are written as "?". A new file is its owner's alone. Raises 76 when the folder is missing, else 75; the text
  // names the path.
  void AppendLine(const std::string& path, std::string_view line) override;

 private:
  [[nodiscard]] ProfileFile& Profile(std::string_view path);

  SystemMachineOptions options_;
  // What takes many looks at the calendar is found out when it is first asked for, and what it is in this second, once.
  std::optional<int> standardBias_;
  std::optional<Date> daylightAt_;  // of `daylight_`, in standard time
  int daylight_ = 0;
  std::time_t zoneAt_ = -1;
  TimeZoneInformation zone_;
  std::mt19937_64 random_;
  std::map<std::string, ProfileFile, std::less<>> profiles_;  // by path
};

}  // namespace twqb
