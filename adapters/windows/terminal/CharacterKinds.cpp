// What single characters do at a console, as Windows knows it, in the place of the adapter's own file.

#include "adapters/terminal/CharacterKinds.h"

#include <windows.h>

#include <algorithm>
#include <array>

namespace twqb {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

bool IsAmong(char32_t character, const auto& ranges) {
  return std::ranges::any_of(ranges, [&](const Range& r) { return character >= r.first && character <= r.last; });
}

// Direction marks, and the separators of lines and paragraphs.
constexpr std::array kSteering = {Range{0x061C, 0x061C}, Range{0x200E, 0x200F}, Range{0x2028, 0x202E},
                                  Range{0x2066, 0x2069}};
// Characters of other formats, which take no room.
constexpr std::array kUnseen = {Range{0x200B, 0x200D}, Range{0x2060, 0x2064}, Range{0xFEFF, 0xFEFF},
                                Range{0xE0000, 0xE0FFF}};
// Scripts and signs that East Asian terminals show two columns wide.
constexpr std::array kWide = {Range{0x1100, 0x115F},   Range{0x2E80, 0x303E},   Range{0x3041, 0x33FF},
                              Range{0x3400, 0x4DBF},   Range{0x4E00, 0x9FFF},   Range{0xA000, 0xA4CF},
                              Range{0xA960, 0xA97F},   Range{0xAC00, 0xD7A3},   Range{0xF900, 0xFAFF},
                              Range{0xFE30, 0xFE6F},   Range{0xFF00, 0xFF60},   Range{0xFFE0, 0xFFE6},
                              Range{0x1F300, 0x1F64F}, Range{0x1F900, 0x1F9FF}, Range{0x20000, 0x3FFFD}};

constexpr char32_t kLastOfOneUnit = 0xFFFF;

bool IsOfKind(char32_t character, DWORD table, WORD kind) {
  if (character > kLastOfOneUnit) return false;
  const auto unit = static_cast<wchar_t>(character);
  WORD kinds = 0;
  return GetStringTypeW(table, &unit, 1, &kinds) != 0 && (kinds & kind) != 0;
}

}  // namespace

bool SteersTerminal(char32_t character) {
  if (character < 0x80) return character < ' ' || character == 0x7F;
  return IsAmong(character, kSteering) || IsOfKind(character, CT_CTYPE1, C1_CNTRL);
}

std::size_t ColumnsOf(char32_t character) {
  if (character < 0x300) return 1;
  if (IsAmong(character, kUnseen) || IsOfKind(character, CT_CTYPE3, C3_NONSPACING)) return 0;
  return IsAmong(character, kWide) ? 2 : 1;
}

}  // namespace twqb
