// Case of single characters as Windows knows it, in the place of the layer's own file.

#include "platform/CaseMapping.h"

#include <windows.h>

#include <array>

namespace twqb {

namespace {

constexpr char32_t kFirstOfTwoUnits = 0x10000;

// One character as UTF-16, mapped by the table that belongs to no language. One that has no counterpart stays.
char32_t Mapped(char32_t character, DWORD mapping) {
  std::array<wchar_t, 2> units = {static_cast<wchar_t>(character), 0};
  int count = 1;
  if (character >= kFirstOfTwoUnits) {
    const auto above = character - kFirstOfTwoUnits;
    units = {static_cast<wchar_t>(0xD800 + (above >> 10)), static_cast<wchar_t>(0xDC00 + (above & 0x3FF))};
    count = 2;
  }
  std::array<wchar_t, 2> mapped = {};
  const int made =
      LCMapStringEx(LOCALE_NAME_INVARIANT, mapping, units.data(), count, mapped.data(), count, nullptr, nullptr, 0);
  if (made != count) return character;
  if (count == 1) return mapped[0];
  return kFirstOfTwoUnits + ((static_cast<char32_t>(mapped[0]) - 0xD800) << 10) + (mapped[1] - 0xDC00U);
}

char32_t OfAscii(char32_t character, char32_t first, char32_t last, char32_t toFirst) {
  return character >= first && character <= last ? character - first + toFirst : character;
}

}  // namespace

char32_t UpperCaseOf(char32_t character) {
  if (character < 0x80) return OfAscii(character, 'a', 'z', 'A');
  return Mapped(character, LCMAP_UPPERCASE);
}

// By way of the upper case: letters with two lower ones (a sigma at the end of a word) become one.
char32_t FoldedCaseOf(char32_t character) {
  if (character < 0x80) return OfAscii(character, 'A', 'Z', 'a');
  return Mapped(UpperCaseOf(character), LCMAP_LOWERCASE);
}

}  // namespace twqb
