// What is asked of files that are open: what they are, locks, durability.

#include <fcntl.h>
#include <io.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <cstdint>

#include "Failure.h"

using twqb::posix::Fail;
using twqb::posix::HandleOf;
using twqb::posix::Wide;

namespace {

// File times count tenths of a microsecond from 1601.
constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
constexpr long kNanosecondsPerTick = 100;

constexpr unsigned kAllMayRead = 0444;
constexpr unsigned kAllMayWrite = 0222;
constexpr unsigned kAllMaySearch = 0111;

std::uint64_t Together(DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; }

timespec TimeOf(const FILETIME& time) {
  const auto ticks = static_cast<std::int64_t>(Together(time.dwHighDateTime, time.dwLowDateTime));
  return {.tv_sec = static_cast<time_t>(ticks / kTicksPerSecond - kSecondsTo1970),
          .tv_nsec = static_cast<long>(ticks % kTicksPerSecond) * kNanosecondsPerTick};
}

unsigned ModeOf(DWORD attributes, bool asLink) {
  const unsigned rights = kAllMayRead | ((attributes & FILE_ATTRIBUTE_READONLY) != 0 ? 0U : kAllMayWrite);
  if (asLink && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return S_IFLNK | rights;
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return S_IFDIR | kAllMayRead | kAllMayWrite | kAllMaySearch;
  return S_IFREG | rights;
}

int Describe(HANDLE handle, bool asLink, struct stat* status) {
  *status = {};
  BY_HANDLE_FILE_INFORMATION about = {};
  const DWORD type = GetFileType(handle);
  if (type == FILE_TYPE_PIPE || type == FILE_TYPE_CHAR) {
    status->st_mode = (type == FILE_TYPE_PIPE ? S_IFIFO : S_IFCHR) | kAllMayRead | kAllMayWrite;
    // Every stream is its own.
    status->st_ino = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handle));
    return 0;
  }
  if (GetFileInformationByHandle(handle, &about) == 0) return Fail();
  status->st_dev = about.dwVolumeSerialNumber;
  status->st_ino = Together(about.nFileIndexHigh, about.nFileIndexLow);
  status->st_mode = ModeOf(about.dwFileAttributes, asLink);
  status->st_nlink = about.nNumberOfLinks;
  status->st_size = static_cast<std::int64_t>(Together(about.nFileSizeHigh, about.nFileSizeLow));
  status->st_mtim = TimeOf(about.ftLastWriteTime);
  return 0;
}

int DescribePath(const char* path, DWORD flags, struct stat* status) {
  const HANDLE handle =
      CreateFileW(Wide(path).c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return Fail();
  const int result = Describe(handle, flags != 0, status);
  CloseHandle(handle);
  return result;
}

// Behind the end of any file, so that the lock bars nobody from the content.
OVERLAPPED LockedPlace() {
  OVERLAPPED place = {};
  place.OffsetHigh = 0x4000'0000;
  return place;
}

}  // namespace

int stat(const char* path, struct stat* status) { return DescribePath(path, 0, status); }
int lstat(const char* path, struct stat* status) { return DescribePath(path, FILE_FLAG_OPEN_REPARSE_POINT, status); }

int fstat(int descriptor, struct stat* status) {
  const HANDLE handle = HandleOf(descriptor);
  return handle == INVALID_HANDLE_VALUE ? -1 : Describe(handle, false, status);
}

int fchmod(int descriptor, unsigned mode) {
  const HANDLE handle = HandleOf(descriptor);
  FILE_BASIC_INFO basics = {};
  if (handle == INVALID_HANDLE_VALUE) return -1;
  if (GetFileInformationByHandleEx(handle, FileBasicInfo, &basics, sizeof basics) == 0) return Fail();
  const bool isProtected = (basics.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
  const bool protects = (mode & kAllMayWrite) == 0;
  if (protects == isProtected) return 0;
  basics.FileAttributes = (basics.FileAttributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY)) |
                          static_cast<DWORD>(protects ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
  return SetFileInformationByHandle(handle, FileBasicInfo, &basics, sizeof basics) != 0 ? 0 : Fail();
}

int flock(int descriptor, int operation) {
  const HANDLE handle = HandleOf(descriptor);
  if (handle == INVALID_HANDLE_VALUE) return -1;
  const DWORD kind = ((operation & LOCK_EX) != 0 ? LOCKFILE_EXCLUSIVE_LOCK : 0U) |
                     ((operation & LOCK_NB) != 0 ? LOCKFILE_FAIL_IMMEDIATELY : 0U);
  auto place = LockedPlace();
  if (LockFileEx(handle, kind, 0, 1, 0, &place) != 0) return 0;
  // Asked not to wait, the system says that it would have to.
  return GetLastError() == ERROR_IO_PENDING ? Fail(EWOULDBLOCK) : Fail();
}

int fcntl(int descriptor, int command, int /*argument*/) { return command == F_SETFL ? 0 : _dup(descriptor); }

int fsync(int descriptor) {
  const HANDLE handle = HandleOf(descriptor);
  if (handle == INVALID_HANDLE_VALUE) return -1;
  return FlushFileBuffers(handle) != 0 ? 0 : Fail();
}

ssize_t pread(int descriptor, void* buffer, std::size_t count, long long offset) {
  const HANDLE handle = HandleOf(descriptor);
  if (handle == INVALID_HANDLE_VALUE) return -1;
  const auto before = _telli64(descriptor);
  OVERLAPPED place = {};
  place.Offset = static_cast<DWORD>(offset & 0xFFFF'FFFF);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  DWORD got = 0;
  const bool done = ReadFile(handle, buffer, static_cast<DWORD>(count), &got, &place) != 0;
  const bool isAtEnd = !done && GetLastError() == ERROR_HANDLE_EOF;
  if (!done && !isAtEnd) return Fail();
  if (before >= 0) _lseeki64(descriptor, before, SEEK_SET);
  return static_cast<ssize_t>(got);
}
