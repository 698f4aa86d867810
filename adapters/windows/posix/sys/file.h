// The part of POSIX that the adapters and the command line ask of their system, on Windows: locks on whole files. They
// stand far behind any content, so that those who do not ask for one read on. See ../fcntl.h.
#pragma once
#pragma GCC system_header

inline constexpr int LOCK_SH = 1;
inline constexpr int LOCK_EX = 2;
inline constexpr int LOCK_NB = 4;

// A folder can't be locked: that fails.
int flock(int descriptor, int operation);
