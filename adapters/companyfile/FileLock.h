// The lock that tells sessions of a company file apart: many at once, or one alone.
//
// It is held on a file of its own beside the company file, through the system, so that a process that dies lets go of
// it. It does not guard the company file's content.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace twqb::company {

enum class LockKind : std::uint8_t { Shared, Exclusive };

class FileLock {
 public:
  // Takes the lock at `path`, making the file when it is missing. Nothing when someone holds it in the way. Raises
  // `kUnexpected` when the file can't be made.
  [[nodiscard]] static std::optional<FileLock> TryTake(const std::string& path, LockKind kind);

  ~FileLock();
  FileLock(FileLock&& other) noexcept;
  FileLock& operator=(FileLock&& other) noexcept;

 private:
  explicit FileLock(int descriptor) : descriptor_(descriptor) {}
  int descriptor_;
};

}  // namespace twqb::company
