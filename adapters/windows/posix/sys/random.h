// The part of POSIX that the adapters and the command line ask of their system, on Windows: random bytes. See
// ../fcntl.h.
#pragma once
#pragma GCC system_header

#include <sys/types.h>

#include <cstddef>

ssize_t getrandom(void* bytes, std::size_t count, unsigned flags);
