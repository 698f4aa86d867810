#include "adapters/system/ProfileFile.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <ctime>

#include "adapters/system/FileDescriptor.h"
#include "adapters/system/FileReplacement.h"
#include "adapters/system/ProfileBytes.h"

namespace twqb {

namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
// Two changes within one tick of the file system's clock leave the same time behind: 10 ms at most on a local disk
// under Linux. A file changed this recently is read again each time.
constexpr std::int64_t kSettledAfter = 32'000'000;

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * kNanosecondsPerSecond + std::int64_t{time.tv_nsec};
}

std::int64_t Now() {
  timespec now = {};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return Nanoseconds(now);
}

// The file as it stands, locked against other writers until the descriptor closes. A writer replaces the file, so the
// lock counts only while the path still leads to the file that was locked. Not open when there is no such file.
FileDescriptor OpenLocked(const std::string& path) {
  for (;;) {
    auto file = OpenForReading(path);
    if (!file) return file;
    while (::flock(file.Get(), LOCK_EX) != 0) {
      if (errno != EINTR) return file;  // a file system without locks
    }
    struct stat locked = {};
    struct stat present = {};
    if (::fstat(file.Get(), &locked) != 0 || ::stat(path.c_str(), &present) != 0) return file;
    if (locked.st_ino == present.st_ino && locked.st_dev == present.st_dev) return file;
  }
}

}  // namespace

std::optional<ProfileFile::Stamp> ProfileFile::StampOf(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return Stamp{
      .device = status.st_dev, .inode = status.st_ino, .size = status.st_size, .modified = Nanoseconds(status.st_mtim)};
}

const ProfileText& ProfileFile::Current() {
  // Both taken before the file is read: a change in between makes the stamp old, never the text, and no wait makes a
  // change look older than it was.
  const auto now = Now();
  const auto stamp = StampOf(path_);
  if (text_ && stamp && stamp == stamp_) return *text_;
  std::string bytes;
  if (const auto file = OpenForReading(path_); !file || !ReadRest(file, bytes)) bytes.clear();
  stamp_ = stamp && now - stamp->modified > kSettledAfter ? stamp : std::nullopt;
  return text_.emplace(std::move(bytes));
}

std::optional<std::string> ProfileFile::Read(std::string_view section, std::string_view key) {
  const auto bytes = Current().Find(BytesForProfile(section), BytesForProfile(key));
  return bytes ? std::optional(TextOfProfile(*bytes)) : std::nullopt;
}

std::vector<ProfileEntry> ProfileFile::Entries() {
  auto entries = Current().Entries();
  for (auto& [section, key, value] : entries) {
    for (auto* bytes : {&section, &key, &value}) *bytes = TextOfProfile(*bytes);
  }
  return entries;
}

std::vector<std::string> ProfileFile::OtherLines() {
  auto lines = Current().OtherLines();
  for (auto& line : lines) line = TextOfProfile(line);
  return lines;
}

bool ProfileFile::Write(std::string_view section, std::string_view key, std::string_view value) {
  stamp_.reset();
  const auto file = OpenLocked(path_);
  std::string bytes;
  // A file that is there and can't be read must not be replaced by one with this entry alone.
  if (file ? !ReadRest(file, bytes) : errno != ENOENT) return false;
  const auto changed =
      ProfileText(std::move(bytes)).With(BytesForProfile(section), BytesForProfile(key), BytesForProfile(value));
  return changed && ReplaceFile(path_, *changed);
}

}  // namespace twqb
