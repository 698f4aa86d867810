#include "adapters/companyfile/FileLock.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "adapters/companyfile/CompanyErrors.h"

namespace twqb::company {

namespace {

constexpr int kNone = -1;
constexpr mode_t kLockFileRights = 0666;  // less what the process masks out

}  // namespace

std::optional<FileLock> FileLock::TryTake(const std::string& path, LockKind kind) {
  FileLock lock(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kLockFileRights));
  const auto fail = [&path](int reason) {
    Raise(kUnexpected, fmt::format("The lock file \"{}\": {}.", path, std::generic_category().message(reason)));
  };
  if (lock.descriptor_ == kNone) fail(errno);
  if (flock(lock.descriptor_, (kind == LockKind::Exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return std::nullopt;
    fail(errno);
  }
  return lock;
}

FileLock::~FileLock() {
  if (descriptor_ != kNone) close(descriptor_);
}

FileLock::FileLock(FileLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, kNone)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

}  // namespace twqb::company
