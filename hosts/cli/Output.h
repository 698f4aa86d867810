// Standard output for results, standard error for what is told about the run.
//
// Results are for other programs to read, so that a result which can't be written is an error and no loss.
#pragma once

#include <stdexcept>
#include <string_view>

namespace twqb::cli {

// Standard output is closed, or its disk is full.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Whether standard output is one.
[[nodiscard]] bool OutputIsTerminal();
// Writes to standard output; on a terminal without what could steer it, and nowhere a control character but tabs and
// line ends: what needs them writes them in its own way. Raises OutputError once something could not be
// written.
void Print(std::string_view text);
// Hands everything on that was printed; before the screen is written to by another way, and at the end. Raises
// OutputError.
void FlushOutput();

// One message on standard error, behind "twqb: "; lines behind the first are indented. What could steer a terminal is
// taken out. Never fails.
void Tell(std::string_view message);

}  // namespace twqb::cli
