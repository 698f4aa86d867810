#include "cli/screen/Output.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

#include "adapters/terminal/Console.h"
#include "adapters/terminal/TextLayout.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kRed = "\x1b[31m";
constexpr std::string_view kUsual = "\x1b[0m";

[[noreturn]] void RaiseOutputError(int reason) {
  throw OutputError("Standard output can't be written: " + std::generic_category().message(reason) + ".");
}

// A tab or a line end, where it begins at `at`; else empty.
std::string_view LayoutAt(std::string_view text, std::size_t at) {
  if (text[at] == '\t' || text[at] == '\n') return text.substr(at, 1);
  return text.substr(at).starts_with(kCrLf) ? kCrLf : std::string_view();
}

// Tabs and line ends stay, and of the rest what may reach a terminal.
std::string ForTerminal(std::string_view text) {
  std::string shown;
  std::size_t begin = 0;
  for (std::size_t at = 0; at < text.size();) {
    const auto layout = LayoutAt(text, at);
    if (layout.empty()) {
      ++at;
      continue;
    }
    shown.append(Printable(text.substr(begin, at - begin))).append(layout);
    at += layout.size();
    begin = at;
  }
  return shown + Printable(text.substr(begin));
}

void Write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) RaiseOutputError(errno);
}

}  // namespace

bool OutputIsTerminal() {
  static const bool isTerminal = ::isatty(STDOUT_FILENO) == 1;
  return isTerminal;
}

void Print(std::string_view text) {
  if (OutputIsTerminal()) {
    Write(ForTerminal(text));
  } else {
    // Whoever reads it may be a terminal in the end.
    Write(WithoutControls(text));
  }
}

bool OutputHasColor() {
  static const bool hasColor = [] {
    const auto variable = [](const char* name) {
      const auto* value = std::getenv(name);
      return std::string_view(value == nullptr ? "" : value);
    };
    const auto kind = variable("TERM");
    return OutputIsTerminal() && variable("NO_COLOR").empty() && !kind.empty() && kind != "dumb";
  }();
  return hasColor;
}

void Print(std::string_view text, Look look) {
  const bool isColored = look != Look::Plain && OutputHasColor();
  if (isColored) Write(look == Look::Heading ? kBold : kRed);
  Print(text);
  if (isColored) Write(kUsual);
}

void FlushOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) RaiseOutputError(errno);
}

void Tell(std::string_view message) {
  constexpr std::string_view kIndent = "      ";
  static const bool isTerminal = ::isatty(STDERR_FILENO) == 1;
  std::string shown = "twqb: ";
  for (const auto& line : Split(message, '\n')) {
    const auto text = line.ends_with('\r') ? std::string_view(line).substr(0, line.size() - 1) : line;
    // Elsewhere a message is one line, for programs that look for it.
    const auto parts = isTerminal ? WrapText(text, TerminalWidth(STDERR_FILENO) - kIndent.size())
                                  : std::vector<std::string>{Printable(text)};
    for (const auto& part : parts) shown.append(shown.ends_with('\n') ? kIndent : "").append(part).append("\n");
  }
  std::fwrite(shown.data(), 1, shown.size(), stderr);
}

}  // namespace twqb::cli
