#include "tests/support/Killer.h"

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace twqb {

namespace {

constexpr unsigned kLongestRun = 120;  // seconds

enum class Watched : bool { No, Yes };

pid_t Start(const std::function<void()>& body, Watched watched) {
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child > 0) return child;
  alarm(kLongestRun);
  if (watched == Watched::Yes) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(1);
    static_cast<void>(std::raise(SIGSTOP));
  }
  body();
  _exit(0);
}

// Goes through the child's stops at system calls until `n` of them; their number. Behind it the child has ended, or
// stands at the n-th.
std::uint64_t PassSystemCalls(pid_t child, std::uint64_t n, int& status) {
  waitpid(child, &status, 0);
  if (!WIFSTOPPED(status)) throw std::runtime_error("a child process can't be watched here");
  ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL | PTRACE_O_TRACEEXEC);
  constexpr int kAtSystemCall = SIGTRAP | 0x80;
  std::uint64_t count = 0;
  int signal = 0;
  while (count < n) {
    ptrace(PTRACE_SYSCALL, child, nullptr, signal);
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) return count;
    const int stop = WSTOPSIG(status);
    if (stop == kAtSystemCall) {
      ++count;
      signal = 0;
    } else {
      signal = stop == SIGTRAP ? 0 : stop;  // it has become another program
    }
  }
  return count;
}

bool EndedBy(int status, int signal) { return WIFSIGNALED(status) && WTERMSIG(status) == signal; }

bool KillNow(pid_t child) {
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  return EndedBy(status, SIGKILL);
}

}  // namespace

Length MeasureInChild(const std::function<void()>& body) {
  using Clock = std::chrono::steady_clock;
  Length length;
  int status = 0;
  length.systemCalls = PassSystemCalls(Start(body, Watched::Yes), UINT64_MAX, status);
  const auto begin = Clock::now();
  waitpid(Start(body, Watched::No), &status, 0);
  length.microseconds =
      static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin).count());
  return length;
}

bool KillInChild(const std::function<void()>& body, const KillPlan& plan) {
  if (plan.at == KillPlan::At::Microsecond) {
    const pid_t child = Start(body, Watched::No);
    std::this_thread::sleep_for(std::chrono::microseconds(plan.n));
    return KillNow(child);
  }
  const pid_t child = Start(body, Watched::Yes);
  int status = 0;
  if (PassSystemCalls(child, plan.n, status) < plan.n) return EndedBy(status, SIGKILL);
  return KillNow(child);
}

}  // namespace twqb
