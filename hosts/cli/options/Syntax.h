// What may stand on a command line, as values: commands, their arguments and options, and what each of these fills.
//
// Every command describes itself in these. What they come to is CommandLine.cpp's affair, the one file that knows the
// parser: a parser that stands in headers alone would otherwise be compiled with every command.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/options/ExitStatus.h"

namespace twqb::cli {

struct Options;

// Carries out what was asked for, in the current folder. Raises UsageError, OutputError, DeskGaveUp, and PlatformError
// for a file that fails under it.
using Command = std::function<ExitStatus(const Options&)>;

// Raised by a function that takes a value which it can't read.
class ValueError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Where an argument goes: to a variable, which keeps what it holds when the argument is not there, or to a function,
// called when it is. One that goes to a bool, or to a function that takes nothing, is a flag. What is pointed to must
// outlive the parsing.
using TakesText = std::function<void(const std::string&)>;
using TakesNumber = std::function<void(int)>;
using TakesSeed = std::function<void(std::uint64_t)>;
using TakesNothing = std::function<void()>;
using Target = std::variant<std::string*, std::optional<std::string>*, int*, bool*, TakesText, TakesNumber, TakesSeed,
                            TakesNothing>;

// Fills `path`, which must be of something: an empty one would record nothing without a word.
[[nodiscard]] TakesText TakesFileName(std::string& path);

struct Range {
  int least = 0;
  int greatest = 0;
};

// An option "--id" or "-e", a flag, or by a name without dashes an argument that is known by its place. Texts are
// literals.
struct Argument {
  std::string_view name;
  std::string_view text;  // what the help says of it
  Target target;
  std::string_view value = {};  // what the help calls an option's value
  std::string_view group = {};  // the heading that the help puts it under; empty: that of all options
  bool required = false;
  std::optional<Range> range = {};
  std::string_view needs = {};     // an option without which it can't stand
  std::string_view excludes = {};  // an argument beside which it can't stand
};

// What becomes of a restore that was broken off: it is completed ahead of the command, which does not run where that
// can't be, or the command sees to it.
enum class BrokenOffRestore : std::uint8_t { Completed, LeftToCommand };

// Name and text are literals.
struct CommandSyntax {
  std::string_view name;
  std::string_view text;
  std::vector<Argument> arguments = {};
  std::string footer = {};                   // ends its help
  Command run = {};                          // nothing: one of `commands` must follow
  std::vector<CommandSyntax> commands = {};  // under this one
  BrokenOffRestore restore = BrokenOffRestore::Completed;
};

}  // namespace twqb::cli
