// A child process under a pseudo-terminal of its own: keys are typed from the test, and it sees what the child writes.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace twqb {

inline constexpr std::string_view kCtrlC = "\x03";

class TerminalSession {
 public:
  // Runs `body` in a child whose terminal this is; its result is the child's exit status. Signals do with it what they
  // usually do. A child that hangs is ended.
  explicit TerminalSession(const std::function<int()>& body, unsigned short columns = 80);
  // Kills the child, unless its end has been waited for.
  ~TerminalSession();
  TerminalSession(const TerminalSession&) = delete;
  TerminalSession& operator=(const TerminalSession&) = delete;

  // Reads until `text` has come up behind what was read before. False when the child ends without it.
  [[nodiscard]] bool See(std::string_view text);
  [[nodiscard]] bool Type(std::string_view keys) const;
  void Signal(int signal) const;
  // Everything up to the child's end; the exit status, or minus the signal that ended it.
  int ExitStatus();
  [[nodiscard]] const std::string& All() const { return all_; }

 private:
  int terminal_ = -1;
  pid_t child_ = -1;
  std::string all_;
  std::size_t seen_ = 0;
};

}  // namespace twqb
