// The part of POSIX that the adapters and the command line ask of their system, on Windows: files that are open,
// processes, the name of the computer. See fcntl.h beside it.
#pragma once
#pragma GCC system_header
#include_next <unistd.h>

#include <cstddef>

using uid_t = unsigned;
using gid_t = unsigned;

// There is one user: who owns a file is a matter of lists of rights, which files inherit from their folder.
inline uid_t geteuid() { return 0; }
inline int fchown(int /*descriptor*/, uid_t /*owner*/, gid_t /*group*/) { return 0; }

int fsync(int descriptor);
ssize_t pread(int descriptor, void* buffer, std::size_t count, long long offset);
int gethostname(char* name, std::size_t size);

// The runtime's own count in 32 bits.
inline constexpr std::size_t kMostAtOnce = 0x4000'0000;
inline ssize_t write(int descriptor, const void* bytes, unsigned long long count) {
  return write(descriptor, bytes, static_cast<unsigned>(count < kMostAtOnce ? count : kMostAtOnce));
}
inline ssize_t read(int descriptor, void* bytes, unsigned long long count) {
  return read(descriptor, bytes, static_cast<unsigned>(count < kMostAtOnce ? count : kMostAtOnce));
}

// Replaces the six last characters of the pattern. Nothing, with `errno` set, where no folder can be made.
char* mkdtemp(char* pattern);
