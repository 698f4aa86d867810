// The two ends of a terminal as file descriptors: writing, asking for a line, and presses of Ctrl-C.
//
// It knows nothing of boxes and forms. Descriptors are borrowed, never closed. What can't be written is lost without an
// error: a run does not fail because nobody can watch it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace twqb {

// Columns for what goes to a descriptor: those that the variable COLUMNS names, those of the terminal, or 80; at least
// 20.
[[nodiscard]] std::size_t TerminalWidth(int fd);

class Console {
 public:
  // `width` in columns; 0 asks TerminalWidth each time.
  Console(int inputFd, int outputFd, std::size_t width) : inputFd_(inputFd), outputFd_(outputFd), width_(width) {}

  void Write(std::string_view text);
  // At least 20.
  [[nodiscard]] std::size_t Width() const;

  // Prints `prompt` and reads lines, each without its end, until `accept` takes one; prints the prompt again for one
  // that it does not take. False when there is no more input, or when Ctrl-C (counted by an InterruptGuard) was pressed
  // a second time: after the first the prompt is printed once more.
  [[nodiscard]] bool Ask(std::string_view prompt, const std::function<bool(const std::string&)>& accept);

  // Whether Ctrl-C was pressed since the last call, at a prompt not counting; all such presses are one.
  [[nodiscard]] bool TakePress();
  // Forgets presses that were not taken.
  void ForgetPresses();

 private:
  enum class Read { Line, End, Interrupted };
  Read ReadLine(std::string& line, unsigned pressesBefore);
  bool TakeBufferedLine(std::string& line);

  int inputFd_;
  int outputFd_;
  std::size_t width_;
  std::string buffered_;  // read behind the last line
  unsigned pressesTaken_ = 0;
};

}  // namespace twqb
