#include "cli/demo/DemoPage.h"

#include <fmt/core.h>

#include <algorithm>
#include <vector>

#include "adapters/terminal/TextLayout.h"
#include "cli/screen/Output.h"
#include "cli/screen/Screen.h"
#include "messages/ValueFormat.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kIndent = "   ";

// A report is as wide as it reads well, and on a terminal fits that.
std::size_t PageWidth() {
  constexpr std::size_t kWidth = 96;
  return OutputIsTerminal() ? std::min(kWidth, ScreenWidth()) : kWidth;
}

void PrintUnderlined(std::string_view text, char line) {
  Print(fmt::format("\n{}\n{}\n", text, std::string(ColumnCount(text), line)));
}

// The digits of a whole number in threes.
std::string Grouped(std::string_view digits) {
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const bool isBehindDigit = i > 0 && digits[i - 1] != '-';
    if (isBehindDigit && (digits.size() - i) % 3 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

}  // namespace

void PrintTitle(std::string_view text) { PrintUnderlined(text, '='); }
void PrintHeading(std::string_view text) { PrintUnderlined(text, '-'); }

void PrintParagraph(std::string_view text) {
  Print("\n");
  for (const auto& line : WrapText(text, PageWidth())) Print(line + "\n");
}

void PrintItem(std::string_view text) {
  std::string_view before = "   - ";
  for (const auto& line : WrapText(text, PageWidth() - before.size())) {
    Print(fmt::format("{}{}\n", before, line));
    before = "     ";
  }
}

void PrintLines(const std::string& lines) {
  Print("\n");
  for (const auto& line : Split(lines, '\n')) {
    if (!line.empty()) Print(fmt::format("{}{}\n", kIndent, line));
  }
}

void PrintTable(std::span<const TableLine> lines, std::span<const Align> alignments, std::size_t cutColumn) {
  constexpr std::size_t kBetween = 2;
  std::vector<std::size_t> widths;
  for (const auto& line : lines) {
    widths.resize(std::max(widths.size(), line.size()));
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], ColumnCount(OneLine(line[i])));
  }
  std::size_t others = kIndent.size();
  for (std::size_t i = 0; i < widths.size(); ++i) others += kBetween + (i == cutColumn ? 0 : widths[i]);
  std::vector<TableLine> cut(lines.begin(), lines.end());
  constexpr std::size_t kLeastCut = 8;
  const auto room = std::max(PageWidth() - std::min(PageWidth(), others), kLeastCut);
  for (auto& line : cut) line.at(cutColumn) = CutToColumns(OneLine(line.at(cutColumn)), room);
  PrintLines(FitTable(cut, alignments, PageWidth() - kIndent.size()).text);
}

std::string Money(Currency amount) {
  const auto text = messages::AmountText(amount);
  const auto point = text.find('.');
  return Grouped(text.substr(0, point)) + text.substr(point);
}

std::string Number(std::int64_t count) { return Grouped(std::to_string(count)); }

std::string Counted(std::int64_t count, std::string_view one, std::string_view many) {
  if (count == 1) return fmt::format("one {}", one);
  return fmt::format("{} {}", count == 0 ? "no" : Number(count), many);
}

std::string Listed(std::span<const std::string> parts) {
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += i + 1 == parts.size() ? " and " : ", ";
    text += parts[i];
  }
  return text;
}

}  // namespace twqb::cli
