// The part of POSIX that the adapters and the command line ask of their system, on Windows: waiting for input, of one
// descriptor, until a signal comes. See ../fcntl.h.
#pragma once
#pragma GCC system_header

#include <csignal>
#include <ctime>

struct fd_set {
  int descriptor = -1;
};

inline void FD_ZERO(fd_set* set) { set->descriptor = -1; }
inline void FD_SET(int descriptor, fd_set* set) { set->descriptor = descriptor; }

int pselect(int count, fd_set* readable, fd_set* writable, fd_set* failed, const timespec* timeout,
            const SignalSet* mask);
