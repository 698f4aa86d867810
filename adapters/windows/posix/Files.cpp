// Opening, renaming and removing files, as POSIX has it.

#include <fcntl.h>
#include <io.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "Failure.h"

using twqb::posix::Fail;
using twqb::posix::Wide;

namespace {

// Others may read, write, rename and remove it meanwhile.
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

DWORD AccessOf(int flags) {
  const bool writes = (flags & (O_WRONLY | O_RDWR)) != 0;
  const DWORD writing = (flags & O_APPEND) != 0 ? FILE_APPEND_DATA | SYNCHRONIZE | FILE_READ_ATTRIBUTES : GENERIC_WRITE;
  if (!writes) return GENERIC_READ;
  // To be renamed by whoever writes it.
  return writing | ((flags & O_RDWR) != 0 ? GENERIC_READ : 0U);
}

DWORD DispositionOf(int flags) {
  if ((flags & O_CREAT) == 0) return (flags & O_TRUNC) != 0 ? TRUNCATE_EXISTING : OPEN_EXISTING;
  if ((flags & O_EXCL) != 0) return CREATE_NEW;
  return (flags & O_TRUNC) != 0 ? CREATE_ALWAYS : OPEN_ALWAYS;
}

int Open(const std::wstring& path, int flags) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
  const bool isFolder = exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (isFolder && (flags & O_DIRECTORY) == 0) {
    return Fail((flags & (O_CREAT | O_EXCL)) == (O_CREAT | O_EXCL) ? EEXIST : EISDIR);
  }
  if (exists && !isFolder && (flags & O_DIRECTORY) != 0) return Fail(ENOTDIR);
  if (exists && (flags & O_NOFOLLOW) != 0 && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return Fail(ELOOP);
  const HANDLE handle = CreateFileW(path.c_str(), AccessOf(flags), kShared, nullptr, DispositionOf(flags),
                                    isFolder ? FILE_FLAG_BACKUP_SEMANTICS : FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return Fail();
  const int descriptor =
      _open_osfhandle(reinterpret_cast<intptr_t>(handle), (flags & (O_APPEND | O_RDONLY)) | O_BINARY | O_NOINHERIT);
  if (descriptor < 0) CloseHandle(handle);
  return descriptor;
}

// What stands at `to` steps aside: it can't be replaced while somebody has it open, but it can be renamed then.
bool ReplaceOpenFile(const std::wstring& from, const std::wstring& to) {
  const auto aside =
      to + L".replaced-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(GetTickCount64());
  if (MoveFileExW(to.c_str(), aside.c_str(), 0) == 0) return false;
  if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) == 0) {
    const auto failure = GetLastError();
    MoveFileExW(aside.c_str(), to.c_str(), 0);
    SetLastError(failure);
    return false;
  }
  DeleteFileW(aside.c_str());
  return true;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) { return Open(Wide(path), flags); }

int unlink(const char* path) { return DeleteFileW(Wide(path).c_str()) != 0 ? 0 : Fail(); }

int access(const char* path, int mode) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return Fail();
  const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if ((mode & W_OK) != 0 && !isFolder && (attributes & FILE_ATTRIBUTE_READONLY) != 0) return Fail(EACCES);
  return 0;
}

int rename(const char* from, const char* to) {
  const auto source = Wide(from);
  const auto target = Wide(to);
  if (MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) return 0;
  const auto failure = GetLastError();
  if ((failure == ERROR_ACCESS_DENIED || failure == ERROR_SHARING_VIOLATION) && ReplaceOpenFile(source, target)) {
    return 0;
  }
  return Fail();
}

int isatty(int descriptor) {
  const HANDLE handle = twqb::posix::HandleOf(descriptor);
  DWORD mode = 0;
  if (handle != INVALID_HANDLE_VALUE && GetConsoleMode(handle, &mode) != 0) return 1;
  errno = ENOTTY;
  return 0;
}

}  // extern "C"

int renameat2(int /*fromFolder*/, const char* from, int /*toFolder*/, const char* to, unsigned flags) {
  if (flags != RENAME_NOREPLACE) return Fail(EINVAL);
  return MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), MOVEFILE_WRITE_THROUGH) != 0 ? 0 : Fail();
}
