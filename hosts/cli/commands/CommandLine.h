// Reads the command line: what is to be done, with which options. Carries nothing out.
#pragma once

#include <string>

#include "cli/options/Options.h"
#include "cli/options/Syntax.h"

namespace twqb::cli {

struct ParsedLine {
  std::string text;  // asked for by --help or --version; then there is no command
  Command command;
  BrokenOffRestore restore = BrokenOffRestore::Completed;  // ahead of it
  Options options;
};

// Raises UsageError, with the nearest name where a command or an option is mistyped.
[[nodiscard]] ParsedLine ParseCommandLine(int argc, const char* const* argv);

}  // namespace twqb::cli
