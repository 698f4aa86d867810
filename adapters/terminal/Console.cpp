#include "adapters/terminal/Console.h"

#include <sys/ioctl.h>
#include <sys/select.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "adapters/terminal/EndSignals.h"
#include "adapters/terminal/InterruptGuard.h"

namespace twqb {

namespace {

constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kLeastWidth = 20;

// Holds signals back, so that none falls between looking at what came and waiting for input.
class InterruptsHeld {
 public:
  InterruptsHeld() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : EndSignals::kSignals) sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &before_);
  }
  ~InterruptsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  InterruptsHeld(const InterruptsHeld&) = delete;
  InterruptsHeld& operator=(const InterruptsHeld&) = delete;

  // Lets them through while it waits for input. False when a signal came first.
  [[nodiscard]] bool WaitForInput(int fd) const {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(fd, &readable);
    return pselect(fd + 1, &readable, nullptr, nullptr, nullptr, &before_) >= 0 || errno != EINTR;
  }

 private:
  sigset_t before_ = {};
};

}  // namespace

void Console::Write(std::string_view text) {
  while (!text.empty()) {
    const auto written = write(outputFd_, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::size_t TerminalWidth(int fd) {
  constexpr std::size_t kWidest = 9999;  // a mistyped number
  std::size_t width = 0;
  if (const auto* named = std::getenv("COLUMNS"); named != nullptr) {
    const auto* end = named + std::strlen(named);
    const auto read = std::from_chars(named, end, width);
    if (read.ec != std::errc() || read.ptr != end || width > kWidest) width = 0;
  }
  winsize size = {};
  if (width == 0 && ioctl(fd, TIOCGWINSZ, &size) == 0) width = size.ws_col;
  return std::max(width == 0 ? kUsualWidth : width, kLeastWidth);
}

std::size_t Console::Width() const { return width_ == 0 ? TerminalWidth(outputFd_) : std::max(width_, kLeastWidth); }

bool Console::Ask(std::string_view prompt, const std::function<bool(const std::string&)>& accept) {
  bool interruptedBefore = false;
  for (;;) {
    const auto pressesBefore = InterruptGuard::Presses();  // whoever sees the prompt may press at once
    Write(prompt);
    std::string line;
    switch (ReadLine(line, pressesBefore)) {
      case Read::Line:
        if (accept(line)) return true;
        break;
      case Read::Interrupted:
        Write("\n");
        if (interruptedBefore) return false;
        interruptedBefore = true;
        break;
      case Read::End:
        Write("\n");
        return false;
    }
  }
}

Console::Read Console::ReadLine(std::string& line, unsigned pressesBefore) {
  const InterruptsHeld held;
  for (;;) {
    if (TakeBufferedLine(line)) return Read::Line;
    if (const auto now = InterruptGuard::Presses(); now != pressesBefore) {
      pressesTaken_ += now - pressesBefore;
      buffered_.clear();
      return Read::Interrupted;
    }
    // A process that is to end waits for nobody.
    if (EndSignals::Pending() != 0) {
      buffered_.clear();
      return Read::End;
    }
    if (!held.WaitForInput(inputFd_)) continue;
    std::array<char, 512> chunk = {};
    const auto got = read(inputFd_, chunk.data(), chunk.size());
    if (got > 0) {
      buffered_.append(chunk.data(), static_cast<std::size_t>(got));
    } else if (got == 0 || errno != EINTR) {
      if (buffered_.empty()) return Read::End;
      buffered_ += '\n';  // the last line has no end
    }
  }
}

bool Console::TakeBufferedLine(std::string& line) {
  const auto end = buffered_.find('\n');
  if (end == std::string::npos) return false;
  line = buffered_.substr(0, end);
  if (line.ends_with('\r')) line.pop_back();
  buffered_.erase(0, end + 1);
  return true;
}

bool Console::TakePress() {
  const auto now = InterruptGuard::Presses();
  if (now == pressesTaken_) return false;
  pressesTaken_ = now;
  return true;
}

void Console::ForgetPresses() { pressesTaken_ = InterruptGuard::Presses(); }

}  // namespace twqb
