// Standard output for results, standard error for what is told about the run.
//
// Results are for other programs to read, so that a result which can't be written is an error and no loss.
#pragma once

#include <cstdint>
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
// Whether it shows colours, too, and the person has not switched them off with NO_COLOR. A terminal that does not tell
// its kind in TERM is taken for one that shows none.
[[nodiscard]] bool OutputHasColor();

// How a text looks where there are colours; it says the same without.
enum class Look : std::uint8_t { Plain, Heading, Warning };

// Writes to standard output; on a terminal without what could steer it, and nowhere a control character but tabs and
// line ends: what needs them writes them in its own way. Raises OutputError once something could not be
// written.
void Print(std::string_view text);
void Print(std::string_view text, Look look);
// Hands everything on that was printed; before the screen is written to by another way, and at the end. Raises
// OutputError.
void FlushOutput();

// One message on standard error, behind "twqb: "; lines behind the first are indented. What could steer a terminal is
// taken out. Never fails.
void Tell(std::string_view message);

}  // namespace twqb::cli
