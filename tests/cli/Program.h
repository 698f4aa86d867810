// Runs the program in a folder of its own and keeps what it printed.
//
// For the tests of this folder. The program gets no terminal: a question without an answers file is taken as No.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/Process.h"

namespace twqb::cli {

// How a run ended, and all that it printed.
struct Ended {
  int status = -1;  // -1: it died of a signal
  std::string out;
  std::string err;
};

using Stdout = StandardOutput;

// What a question without an answer, which ends a run with 3, means to the test.
enum class Unanswered : std::uint8_t { Failure, Expected };

struct RunOptions {
  std::string input = {};
  Stdout out = Stdout::Captured;
  Unanswered unanswered = Unanswered::Failure;
};

// The terminal that a program is given: as it is usually, 80 columns wide and with colours.
struct TerminalKind {
  unsigned short columns = 80;
  std::vector<std::string> environment = {};  // "NAME=value", beside TERM=xterm
};

// A temporary folder that goes at the end.
class WorkFolder {
 public:
  [[nodiscard]] std::filesystem::path Path() const { return folder_.Path(); }
  // Runs the program with the folder as current folder. The test fails at a question without an answer, and names it,
  // unless it is expected.
  Ended Twqb(const std::vector<std::string>& arguments, const RunOptions& options = {}) const;
  // Runs a line of the shell there; "$0" in it is the program.
  [[nodiscard]] Ended Shell(const std::string& line) const;
  // What the program prints on a terminal of its own, to both streams; the test fails unless the status is 0.
  [[nodiscard]] std::string OnTerminal(const std::vector<std::string>& arguments, const TerminalKind& kind = {}) const;
  // Starts the program there, and lets it run.
  [[nodiscard]] std::unique_ptr<RunningProcess> Start(const std::vector<std::string>& arguments) const;
  // Runs it; the test fails unless the status is 0. Gives what it printed.
  std::string Done(const std::vector<std::string>& arguments, const RunOptions& options = {}) const;

  void Write(std::string_view name, std::string_view text) const;
  [[nodiscard]] std::string Read(std::string_view name) const;
  // Names of all that is in the folder, in order.
  [[nodiscard]] std::vector<std::string> Names() const;
  // The only value that a statement answers.
  [[nodiscard]] std::string Scalar(const std::string& statement) const;

 private:
  TemporaryFolder folder_;
};

}  // namespace twqb::cli
