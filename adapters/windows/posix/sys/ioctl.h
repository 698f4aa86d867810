// The part of POSIX that the adapters and the command line ask of their system, on Windows: how wide the console is.
// See
// ../fcntl.h.
#pragma once
#pragma GCC system_header

struct winsize {
  unsigned short ws_row = 0;
  unsigned short ws_col = 0;
};

inline constexpr int TIOCGWINSZ = 1;
int ioctl(int descriptor, int request, winsize* size);
