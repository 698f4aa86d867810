// The wish of the system, or of the person, that the process ends: SIGINT, SIGTERM and SIGHUP while a guard lives.
//
// The first one is kept for whoever works to look at, so that work ends where it may; a second one ends the process at
// once, with the status of the first. Console events of another system belong behind the same functions. What an end
// means is not known here; InterruptGuard is for hosts that know Ctrl-C as Cancel alone.
#pragma once

#include <array>
#include <csignal>

namespace twqb {

class EndSignals {
 public:
  static constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

  // Leaves alone a signal that the process was started with ignored, as a job in the background has it.
  EndSignals();
  // Puts back what was installed before. What came stays known.
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  // The first signal that has come; 0 when none has.
  [[nodiscard]] static int Came();
  // The same, but 0 too while somebody is asked about it: then a question may wait.
  [[nodiscard]] static int Pending();
  // The person does not want the end after all.
  static void Forget();

  // While one lives the person is asked what the signal was to mean.
  class Asking {
   public:
    Asking();
    ~Asking();
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;
  };

  // The status of a process that ended by `signal`, as shells tell it.
  [[nodiscard]] static constexpr int ExitStatusOf(int signal) { return 128 + signal; }

 private:
  std::array<struct sigaction, kSignals.size()> before_ = {};
};

// SIGTERM for 15, and so on.
[[nodiscard]] const char* SignalName(int signal);

}  // namespace twqb
