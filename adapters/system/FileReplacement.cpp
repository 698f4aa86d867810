#include "adapters/system/FileReplacement.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace twqb {

namespace {

constexpr mode_t kNewFileMode = 0666;  // less what the process masks
constexpr mode_t kPermissions = 0777;

// The file behind symbolic links, so that a rename replaces the file and not the link.
std::string ResolvedPath(const std::string& path) {
  std::error_code failure;
  const auto resolved = std::filesystem::canonical(path, failure);
  return failure ? path : resolved.string();
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

// Makes the rename itself durable. The file is in place already, so a failure has nothing left to undo.
void SynchroniseFolder(const std::string& file) {
  const auto folder = std::filesystem::path(file).parent_path().string();
  const FileDescriptor handle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (handle) ::fsync(handle.Get());
}

}  // namespace

std::optional<FileReplacement> FileReplacement::Begin(const std::string& target) {
  static std::atomic<unsigned> counter = 0;
  const auto path = ResolvedPath(target);
  struct stat status = {};
  const bool exists = ::stat(path.c_str(), &status) == 0;
  if (exists ? !MayBeReplaced(path, status) : errno != ENOENT) return std::nullopt;

  for (;;) {
    auto temporary = fmt::format("{}.{}-{}.tmp", path, ::getpid(), counter++);
    FileDescriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
    if (file) {
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
  if (::fsync(file_.Get()) != 0 || !file_.Close()) return false;
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) return false;
  temporary_.clear();
  SynchroniseFolder(target_);
  return true;
}

bool ReplaceFile(const std::string& target, std::string_view bytes) {
  auto replacement = FileReplacement::Begin(target);
  return replacement && WriteAll(replacement->File(), bytes) && replacement->Commit();
}

}  // namespace twqb
