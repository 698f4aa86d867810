#include "adapters/terminal/TextLayout.h"

#include "adapters/terminal/CharacterKinds.h"
#include "platform/Text.h"

namespace twqb {

namespace {

constexpr char32_t kNoUtf8 = 0xFFFFFFFF;

// `bytes` is one character as CharacterWalk gives it: well-formed, or a single byte that is no UTF-8.
char32_t CodePoint(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  if (bytes.size() == 1) return lead < 0x80 ? lead : kNoUtf8;
  char32_t c = lead & (0x7FU >> bytes.size());
  for (const char next : bytes.substr(1)) c = (c << 6U) | (static_cast<unsigned char>(next) & 0x3FU);
  return c;
}

bool MayNotBeShown(char32_t c) { return c == kNoUtf8 || SteersTerminal(c); }

std::size_t CharacterColumns(std::string_view bytes) {
  const auto c = CodePoint(bytes);
  return c == kNoUtf8 ? 1 : ColumnsOf(c);
}

// Bytes of the longest beginning that takes at most `columns`.
std::size_t FittingBytes(std::string_view text, std::size_t columns) {
  std::size_t bytes = 0;
  std::size_t used = 0;
  CharacterWalk walk(text);
  for (auto next = walk.Next(); !next.empty(); next = walk.Next()) {
    used += CharacterColumns(next);
    if (used > columns) break;
    bytes += next.size();
  }
  return bytes;
}

// Where a line that goes on behind its first `fitting` bytes breaks.
std::size_t BreakBefore(std::string_view line, std::size_t fitting) {
  if (line[fitting] == ' ') return fitting;
  const auto blank = line.substr(0, fitting).rfind(' ');
  const bool breaksBehindAWord = blank != std::string_view::npos && line.find_first_not_of(' ') < blank;
  return breaksBehindAWord ? blank : fitting;
}

void AppendWrapped(std::string_view line, std::size_t columns, std::vector<std::string>& lines) {
  for (auto fitting = FittingBytes(line, columns); fitting < line.size(); fitting = FittingBytes(line, columns)) {
    const auto at = BreakBefore(line, fitting);
    const auto head = line.substr(0, at);
    lines.emplace_back(head.substr(0, head.find_last_not_of(' ') + 1));
    const auto rest = line.find_first_not_of(' ', at);
    if (rest == std::string_view::npos) return;
    line.remove_prefix(rest);
  }
  lines.emplace_back(line);
}

std::vector<std::string> LinesOf(std::string_view text) {
  auto lines = Split(ReplaceAll(ReplaceAll(text, kCrLf, "\n"), "\r", "\n"), '\n');
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  CharacterWalk walk(text);
  for (auto bytes = walk.Next(); !bytes.empty(); bytes = walk.Next()) {
    if (bytes == "\t") {
      result += ' ';
    } else if (MayNotBeShown(CodePoint(bytes))) {
      result += '?';
    } else {
      result += bytes;
    }
  }
  return result;
}

std::string OneLine(std::string_view text) {
  std::string result;
  for (const auto& line : LinesOf(text)) {
    if (!result.empty()) result += ' ';
    result += Printable(line);
  }
  return result;
}

std::size_t ColumnCount(std::string_view text) {
  std::size_t columns = 0;
  CharacterWalk walk(text);
  for (auto bytes = walk.Next(); !bytes.empty(); bytes = walk.Next()) columns += CharacterColumns(bytes);
  return columns;
}

std::string TrimToColumns(std::string_view text, std::size_t columns) {
  return std::string(text.substr(0, FittingBytes(text, columns)));
}

std::string CutToColumns(std::string_view text, std::size_t columns) {
  constexpr std::string_view kEllipsis = "\u2026";
  constexpr std::string_view kJoiner = "\u200D";
  if (FittingBytes(text, columns) == text.size()) return std::string(text);
  auto kept = text.substr(0, FittingBytes(text, columns - 1));
  // What follows a joiner, or begins with one, is a part of the character before.
  while (kept.ends_with(kJoiner) || (!kept.empty() && text.substr(kept.size()).starts_with(kJoiner))) {
    std::size_t last = 0;
    CharacterWalk walk(kept);
    std::size_t at = 0;
    for (auto next = walk.Next(); !next.empty(); next = walk.Next()) {
      if (CharacterColumns(next) > 0) last = at;
      at += next.size();
    }
    kept = kept.substr(0, last);
  }
  return std::string(kept.substr(0, kept.find_last_not_of(' ') + 1)).append(kEllipsis);
}

std::vector<std::string> WrapText(std::string_view text, std::size_t columns) {
  std::vector<std::string> lines;
  for (const auto& line : LinesOf(text)) AppendWrapped(Printable(line), columns, lines);
  return lines;
}

}  // namespace twqb
