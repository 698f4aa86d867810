#include "Failure.h"

#include <io.h>
#include <windows.h>

#include <cerrno>

namespace twqb::posix {

namespace {

int ReasonOf(DWORD failure) {
  switch (failure) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_NAME:
      return ENOENT;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    case ERROR_LOCK_VIOLATION:
      return EWOULDBLOCK;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    case ERROR_WRITE_PROTECT:
      return EROFS;
    case ERROR_TOO_MANY_OPEN_FILES:
      return EMFILE;
    case ERROR_INVALID_HANDLE:
      return EBADF;
    case ERROR_DIRECTORY:
      return ENOTDIR;
    case ERROR_DIR_NOT_EMPTY:
      return ENOTEMPTY;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_DELETE_PENDING:
      return EACCES;
    default:
      return EIO;
  }
}

}  // namespace

int Fail(int reason) {
  errno = reason;
  return -1;
}

int Fail() { return Fail(ReasonOf(GetLastError())); }

void* HandleOf(int descriptor) {
  if (descriptor < 0) {
    errno = EBADF;
    return INVALID_HANDLE_VALUE;
  }
  return reinterpret_cast<void*>(_get_osfhandle(descriptor));
}

}  // namespace twqb::posix
