#include "adapters/backup/FileState.h"

#include <fmt/core.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>

#include "adapters/system/FileDescriptor.h"
#include "adapters/system/FileIdentity.h"

namespace twqb::backup {

namespace fs = std::filesystem;

namespace {

using FileClock = fs::file_time_type::clock;
using namespace std::chrono_literals;

// The clocks of file systems move by some milliseconds; of some by whole seconds, two on FAT.
constexpr auto kTick = 50ms;
constexpr auto kCoarseTick = 2500ms;

std::optional<fs::file_time_type> TimeOf(const std::string& path) {
  std::error_code failure;
  const auto time = fs::last_write_time(path, failure);
  if (failure) return std::nullopt;
  return time;
}

FileClock::duration TickOf(fs::file_time_type time) {
  return time.time_since_epoch() % 1s == FileClock::duration::zero() ? FileClock::duration(kCoarseTick)
                                                                     : FileClock::duration(kTick);
}

}  // namespace

std::string IdentityTextOf(const std::string& path) {
  const auto identity = IdentityOf(path);
  const auto time = TimeOf(path);
  std::error_code failure;
  // What was written ahead is not in the file. And while somebody in this process has it open so, nobody else may.
  if (fs::exists(path + "-wal", failure)) return {};
  const auto size = fs::file_size(path, failure);
  if (!identity || !time || failure || FileClock::now() - *time < TickOf(*time)) return {};
  constexpr std::size_t kHeader = 100;
  std::array<unsigned char, kHeader> header = {};
  const auto file = OpenForReading(path);
  if (!file || ::pread(file.Get(), header.data(), header.size(), 0) != static_cast<ssize_t>(header.size())) return {};
  auto text =
      fmt::format("{:x}-{:x}-{:x}-{:x}-", identity->device, identity->number, size, time->time_since_epoch().count());
  // The counter of changes, the number of pages, and the version for which they hold.
  constexpr std::array<std::size_t, 3> kCounters = {24, 28, 92};
  for (const auto at : kCounters) {
    for (std::size_t i = at; i < at + 4; ++i) text += fmt::format("{:02x}", header.at(i));
  }
  return text;
}

void WaitUntilSettled(const std::string& path) {
  constexpr std::uintmax_t kLarge = 16U * 1024 * 1024;
  std::error_code failure;
  const auto size = fs::file_size(path, failure);
  const auto time = TimeOf(path);
  if (failure || !time || size < kLarge || TickOf(*time) > FileClock::duration(kTick)) return;
  const auto age = FileClock::now() - *time;
  if (age < kTick && age > -kTick) std::this_thread::sleep_for(kTick - age);
}

}  // namespace twqb::backup
