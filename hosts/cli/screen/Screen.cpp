#include "cli/screen/Screen.h"

#include <fmt/core.h>
#include <unistd.h>

#include <algorithm>

#include "adapters/terminal/Console.h"
#include "adapters/terminal/TextLayout.h"
#include "cli/options/Options.h"
#include "cli/screen/Output.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::size_t kLongestProse = 100;  // longer lines read badly

}  // namespace

std::size_t ScreenWidth() { return TerminalWidth(STDOUT_FILENO); }

std::size_t ProseWidth() { return std::min(ScreenWidth(), kLongestProse); }

void PrintTable(const Options& options, std::span<const TableLine> lines, std::span<const Align> alignments) {
  const auto fitted = OutputIsTerminal() && !options.wide
                          ? FitTable(lines, alignments, ScreenWidth())
                          : FittedTable{.text = TextTable(lines, alignments), .leftOut = {}};
  const auto heading = fitted.text.find('\n');
  if (heading == std::string::npos) return;
  Print(std::string_view(fitted.text).substr(0, heading), Look::Heading);
  Print(std::string_view(fitted.text).substr(heading));
  if (!fitted.isCut && fitted.leftOut.empty()) return;
  FlushOutput();
  std::string told;
  if (fitted.isCut) told = "Some texts are cut to fit the screen. ";
  if (!fitted.leftOut.empty()) told += fmt::format("There is no room for {}. ", Join(fitted.leftOut, ", "));
  Tell(told + "--wide shows all.");
}

std::string Paragraph(std::string_view text, std::size_t indent) {
  constexpr std::size_t kLeastRoom = 10;
  std::string paragraph;
  for (const auto& line : WrapText(text, std::max(ProseWidth() - std::min(ProseWidth(), indent), kLeastRoom))) {
    paragraph += std::string(indent, ' ') + line + "\n";
  }
  return paragraph;
}

}  // namespace twqb::cli
