// The part of POSIX that the adapters and the command line ask of their system, on Windows: opening files.
//
// This folder stands ahead of the compiler's own headers in a build for Windows, so that the same sources serve both
// systems. Names that the C runtime declares too (open, unlink, rename, access, isatty) are defined here anew, and the
// linker takes these: paths are UTF-8, open files may be renamed and removed, and `errno` is what POSIX says.
#pragma once
#pragma GCC system_header
#include_next <fcntl.h>

// Bits that the runtime's own flags leave free.
inline constexpr int O_CLOEXEC = 0x0100'0000;
inline constexpr int O_DIRECTORY = 0x0200'0000;
inline constexpr int O_NOFOLLOW = 0x0400'0000;
inline constexpr int O_NONBLOCK = 0x0800'0000;
inline constexpr int O_NOCTTY = 0x1000'0000;

inline constexpr int F_DUPFD_CLOEXEC = 1;
inline constexpr int F_SETFL = 2;
// The smallest descriptor that is asked for is not heeded; flags of an open file can't be changed, and need not be.
int fcntl(int descriptor, int command, int argument);

inline constexpr int AT_FDCWD = -100;
inline constexpr unsigned RENAME_NOREPLACE = 1;
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags);
