// The part of POSIX that the adapters and the command line ask of their system, on Windows: signals, which are events
// of the console. Ctrl-C is SIGINT, Ctrl-Break SIGTERM, and the closing of the console or the end of the session
// SIGHUP. A handler runs on a thread of the system's. See fcntl.h beside it.
#pragma once
#pragma GCC system_header
#include <pthread.h>  // SIG_BLOCK and its like
#include_next <signal.h>
#include <sys/types.h>

inline constexpr int SIGHUP = 1;
inline constexpr int SIGPIPE = 13;

using SignalSet = unsigned;

struct sigaction {
  void (*sa_handler)(int) = SIG_DFL;
  int sa_flags = 0;
  SignalSet sa_mask = 0;
};

inline constexpr int SA_RESTART = 1;
int sigaction(int signal, const struct sigaction* action, struct sigaction* before);

#define sigset_t SignalSet
inline int sigemptyset(SignalSet* set) { return static_cast<int>(*set = 0); }
inline int sigaddset(SignalSet* set, int signal) {
  *set |= 1U << static_cast<unsigned>(signal);
  return 0;
}

// No signal breaks anything off here, so none is held back.
#undef pthread_sigmask
inline int pthread_sigmask(int /*how*/, const SignalSet* /*set*/, SignalSet* /*before*/) { return 0; }

// Only whether the process is there (signal 0).
int kill(pid_t process, int signal);
