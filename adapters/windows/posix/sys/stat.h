// The part of POSIX that the adapters and the command line ask of their system, on Windows: what is known of a file,
// with a number that tells it from every other. See fcntl.h beside it.
#pragma once
#pragma GCC system_header
#include_next <sys/stat.h>

#include <cstdint>
#include <ctime>

struct FileStatus {
  std::uint64_t st_dev = 0;
  std::uint64_t st_ino = 0;
  unsigned st_mode = 0;
  unsigned st_nlink = 0;
  unsigned st_uid = 0;
  unsigned st_gid = 0;
  std::int64_t st_size = 0;
  timespec st_mtim = {};
};

// The runtime's own has no room for a file's number.
#undef stat
#undef fstat
#define stat FileStatus
#define fstat FileStatusOf
#define lstat FileStatusOfLink

int FileStatus(const char* path, struct FileStatus* status);
int FileStatusOf(int descriptor, struct FileStatus* status);
int FileStatusOfLink(const char* path, struct FileStatus* status);

#ifndef S_IFLNK
inline constexpr unsigned S_IFLNK = 0xA000;
#endif
#undef S_ISLNK
inline bool S_ISLNK(unsigned mode) { return (mode & S_IFMT) == S_IFLNK; }
#ifndef S_IWGRP
inline constexpr unsigned S_IWGRP = 0020;
inline constexpr unsigned S_IWOTH = 0002;
#endif

// Whether the file may be written at all; nothing else of the rights.
int fchmod(int descriptor, unsigned mode);
