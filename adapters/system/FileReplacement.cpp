#include "adapters/system/FileReplacement.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string_view>

#include "adapters/system/FileIdentity.h"

namespace twqb {

namespace {

constexpr mode_t kNewFileMode = 0666;  // less what the process masks
constexpr mode_t kPermissions = 0777;

constexpr std::string_view kTemporarySuffix = ".tmp";

// The file behind symbolic links, so that a rename replaces the file and not the link.
std::string FileBehind(const std::string& path) {
  std::error_code failure;
  const auto resolved = std::filesystem::canonical(path, failure);
  return failure ? path : resolved.string();
}

std::string TemporaryName(const std::string& target, unsigned number) {
  return fmt::format("{}.{}-{}{}", target, ::getpid(), number, kTemporarySuffix);
}

// The process in the name of a temporary file of `target`; nothing for a name that is none.
std::optional<pid_t> MakerOf(std::string_view name, std::string_view target) {
  if (!name.starts_with(target) || !name.ends_with(kTemporarySuffix)) return std::nullopt;
  name.remove_prefix(target.size());
  name.remove_suffix(kTemporarySuffix.size());
  if (!name.starts_with('.')) return std::nullopt;
  const auto dash = name.find('-');
  if (dash == std::string_view::npos) return std::nullopt;
  const auto process = name.substr(1, dash - 1);
  const auto count = name.substr(dash + 1);
  const auto isNumber = [](std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
  };
  pid_t maker = 0;
  if (!isNumber(process) || !isNumber(count)) return std::nullopt;
  if (std::from_chars(process.data(), process.data() + process.size(), maker).ec != std::errc()) return std::nullopt;
  return maker;
}

bool IsDead(pid_t process) { return ::kill(process, 0) != 0 && errno == ESRCH; }

// Removes the file if nobody is writing it any more: whoever writes one holds its lock, from another machine too.
void RemoveAbandoned(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat status = {};
  if (!file || ::fstat(file.Get(), &status) != 0) return;
  if (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid()) return;
  if (::flock(file.Get(), LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
}

// A file that nobody may write is protected on purpose, from an administrator too.
bool MayBeReplaced(const std::string& path, const struct stat& status) {
  constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
  if (!S_ISREG(status.st_mode) || (status.st_mode & kAnyWrite) == 0) {
    errno = EACCES;
    return false;
  }
  return ::access(path.c_str(), W_OK) == 0;
}

}  // namespace

// What is done in the folder is in place already, so a failure has nothing left to undo.
void SynchroniseFolderOf(const std::string& file) {
  const auto folder = std::filesystem::path(file).parent_path().string();
  const FileDescriptor handle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (handle) ::fsync(handle.Get());
}

std::optional<FileReplacement> FileReplacement::Begin(const std::string& target, Links links) {
  static std::atomic<unsigned> counter = 0;
  const auto path = links == Links::Followed ? FileBehind(target) : target;
  struct stat status = {};
  bool exists = ::lstat(path.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) return std::nullopt;
  // A link that is not followed is replaced itself. One that was followed to here leads nowhere, or in a circle.
  if (exists && S_ISLNK(status.st_mode)) {
    exists = links == Links::Followed && ::stat(path.c_str(), &status) == 0;
    if (!exists && links == Links::Followed && errno != ENOENT) return std::nullopt;
  }
  if (exists && !MayBeReplaced(path, status)) return std::nullopt;

  for (;;) {
    auto temporary = TemporaryName(path, counter++);
    FileDescriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
    if (file) {
      // The lock tells others that the file is in work. A file system without locks keeps what a kill leaves.
      const bool isOthers = ::flock(file.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
      struct stat made = {};
      if (isOthers || (::fstat(file.Get(), &made) == 0 && made.st_nlink == 0)) continue;
      FileReplacement replacement(path, std::move(temporary), std::move(file));
      if (exists && ::fchmod(replacement.file_.Get(), status.st_mode & kPermissions) != 0) return std::nullopt;
      return replacement;
    }
    if (errno != EEXIST) return std::nullopt;
  }
}

FileReplacement::~FileReplacement() {
  if (temporary_.empty()) return;
  const int failure = errno;
  ::unlink(temporary_.c_str());
  errno = failure;
}

bool FileReplacement::Commit() {
  if (::fsync(file_.Get()) != 0) return false;
  // Renamed while it is open, and so locked: nobody takes it for abandoned.
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) return false;
  temporary_.clear();
  file_.Close();  // what is on the disk already can't fail any more
  SynchroniseFolderOf(target_);
  return true;
}

void RemoveAbandonedReplacements(const std::string& target) {
  namespace fs = std::filesystem;
  for (const auto& path : {fs::path(target), fs::path(FileBehind(target))}) {
    const auto name = path.filename().string();
    std::error_code failure;
    fs::directory_iterator entry(path.has_parent_path() ? path.parent_path() : fs::path("."), failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
      const auto maker = MakerOf(entry->path().filename().string(), name);
      if (maker && IsDead(*maker)) RemoveAbandoned(entry->path().string());
    }
  }
}

bool ReplaceFile(const std::string& target, std::string_view bytes) {
  auto replacement = FileReplacement::Begin(target);
  return replacement && WriteAll(replacement->File(), bytes) && replacement->Commit();
}

}  // namespace twqb
