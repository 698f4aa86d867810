#include "tests/support/TerminalSession.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace twqb {

namespace {

constexpr unsigned kPatience = 20;  // seconds

}  // namespace

TerminalSession::TerminalSession(const std::function<int()>& body, unsigned short columns) {
  const winsize size{.ws_row = 24, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
  child_ = forkpty(&terminal_, nullptr, nullptr, &size);
  if (child_ != 0) return;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, SIG_DFL);
  alarm(kPatience);
  _exit(body());
}

TerminalSession::~TerminalSession() {
  if (child_ > 0) {
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
  }
  close(terminal_);
}

bool TerminalSession::See(std::string_view text) {
  for (;;) {
    if (const auto at = all_.find(text, seen_); at != std::string::npos) {
      seen_ = at + text.size();
      return true;
    }
    std::array<char, 4096> chunk = {};
    const auto got = read(terminal_, chunk.data(), chunk.size());
    if (got <= 0) return false;
    all_.append(chunk.data(), static_cast<std::size_t>(got));
  }
}

bool TerminalSession::Type(std::string_view keys) const {
  return write(terminal_, keys.data(), keys.size()) == static_cast<ssize_t>(keys.size());
}

void TerminalSession::Signal(int signal) const { kill(child_, signal); }

int TerminalSession::ExitStatus() {
  while (See("\x01never written")) {
  }
  int status = 0;
  waitpid(child_, &status, 0);
  child_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace twqb
