#include "adapters/system/SystemMachine.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <thread>

#include "adapters/storage/Replaceable.h"
#include "adapters/storage/StillDatabase.h"
#include "adapters/system/FileDescriptor.h"
#include "adapters/system/FileReplacement.h"
#include "adapters/system/RandomValues.h"
#include "adapters/system/Zone.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb {

namespace {

constexpr std::string_view kRegistryRoot = "SOFTWARE\\OFS\\";

[[noreturn]] void Raise(ErrorNumber number, const std::string& path) {
  throw PlatformError(number, fmt::format("{}: {}", ErrorText(number), path));
}

// For a file that was to be written, from `errno`.
[[noreturn]] void RaiseForTarget(const std::string& path) {
  Raise(errno == ENOENT || errno == ENOTDIR ? error::kPathNotFound : error::kFileAccess, path);
}

bool CopyBytes(const FileDescriptor& from, const FileDescriptor& to) {
  std::array<char, std::size_t{64} * 1024> buffer;
  for (;;) {
    const auto count = ::read(from.Get(), buffer.data(), buffer.size());
    if (count == 0) return true;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || !WriteAll(to, {buffer.data(), static_cast<std::size_t>(count)})) return false;
  }
}

}  // namespace

SystemMachine::SystemMachine(SystemMachineOptions options)
    : options_(std::move(options)), random_(std::random_device{}()) {
  ReadZone();
}

Date SystemMachine::Now() { return WallClockNow(); }

TimeZoneInformation SystemMachine::GetTimeZoneInformation() {
  const auto now = std::time(nullptr);
  if (zoneAt_ != now) {
    zone_ = ZoneNow();
    zoneAt_ = now;
  }
  return zone_;
}

int SystemMachine::DaylightMinutes(Date standardTime) {
  if (!standardBias_) standardBias_ = ZoneNow().bias;
  // A record that was never changed has the same moment twice, and what was made in one go has it many times.
  if (daylightAt_ != standardTime) {
    daylight_ = std::max(MinutesAheadAt(standardTime.PlusMinutes(*standardBias_)) + *standardBias_, 0);
    daylightAt_ = standardTime;
  }
  return daylight_;
}

void SystemMachine::Sleep(std::int64_t milliseconds) {
  if (milliseconds > 0) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

std::optional<GuidBytes> SystemMachine::CreateGuid() {
  GuidBytes bytes = {};
  if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) return std::nullopt;
  return AsRandomGuid(bytes);
}

double SystemMachine::Random() { return UnitInterval(random_); }

std::string SystemMachine::GetPrivateProfileString(std::string_view section, std::string_view key,
                                                   std::string_view fallback, int size, std::string_view path) {
  if (size < 1) return {};
  const auto limit = static_cast<std::size_t>(size) - 1;
  if (const auto value = Profile(path).Read(section, key)) return Left(*value, limit);
  // npos + 1 is 0: a default of blanks alone is empty.
  return Left(fallback.substr(0, fallback.find_last_not_of(' ') + 1), limit);
}

bool SystemMachine::WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                              std::string_view path) {
  return Profile(path).Write(section, key, value);
}

std::optional<std::string> SystemMachine::ReadRegistry(std::string_view key, std::string_view name) {
  if (key.ends_with('\\')) key.remove_suffix(1);
  if (!SameName(key.substr(0, kRegistryRoot.size()), kRegistryRoot)) return std::nullopt;
  return Profile(options_.registryFile).Read(key.substr(kRegistryRoot.size()), name);
}

void SystemMachine::CopyFile(const std::string& from, const std::string& to) {
  const storage::StillDatabase still(from);
  if (still.CouldNotBeHeld()) Raise(error::kFileAccess, from);
  const bool byPages = still.HasLog();
  const auto source = byPages ? FileDescriptor() : OpenForReading(from);
  if (!byPages && !source) Raise(errno == ENOENT || errno == ENOTDIR ? error::kFileNotFound : error::kFileAccess, from);
  // A backup must not reach, by a link that somebody has put in its place, what it was not made for.
  auto copy = FileReplacement::Begin(to, Links::Replaced);
  if (!copy) RaiseForTarget(to);
  struct stat status = {};
  constexpr mode_t kPermissions = 0777;
  constexpr mode_t kOwnersAlone = 0600;
  const auto allow = [&copy](mode_t rights) { return ::fchmod(copy->File().Get(), rights) == 0; };
  // Nobody reads the copy in work who may not read the original.
  const bool done = ::stat(from.c_str(), &status) == 0 && allow(kOwnersAlone) &&
                    (byPages ? still.CopyTo(copy->TemporaryPath()) : CopyBytes(source, copy->File())) &&
                    allow(status.st_mode & kPermissions) && (!still.IsHeld() || storage::MakeReplaceable(to)) &&
                    copy->Commit();
  if (!done) Raise(error::kFileAccess, to);
}

std::string SystemMachine::ComputerName() {
  constexpr std::size_t kLongest = 256;
  std::array<char, kLongest> name{};
  // A name that is cut needs no end.
  return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : std::string();
}
std::string SystemMachine::LibraryFolder() { return options_.libraryFolder; }

void SystemMachine::AppendLine(const std::string& path, std::string_view line) {
  constexpr mode_t kOwnersAlone = 0600;  // names and amounts are in it, as in the databases
  constexpr mode_t kOfOthers = 0077;
  FileDescriptor file(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, kOwnersAlone));
  if (!file) RaiseForTarget(path);
  // One that was made with more rights, unless somebody else owns it.
  struct stat status = {};
  if (::fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode) && (status.st_mode & kOfOthers) != 0 &&
      status.st_uid == ::geteuid()) {
    static_cast<void>(::fchmod(file.Get(), kOwnersAlone));
  }
  // What a record holds must not steer the terminal at which the file is read.
  const auto bytes = WithoutControls(line).append(kCrLf);
  ssize_t written = -1;
  do {
    written = ::write(file.Get(), bytes.data(), bytes.size());
  } while (written < 0 && errno == EINTR);
  if (written != static_cast<ssize_t>(bytes.size()) || !file.Close()) Raise(error::kFileAccess, path);
}

ProfileFile& SystemMachine::Profile(std::string_view path) {
  auto found = profiles_.find(path);
  if (found == profiles_.end()) found = profiles_.emplace(path, ProfileFile(std::string(path))).first;
  return found->second;
}

}  // namespace twqb
