#include "adapters/terminal/CharacterKinds.h"

#include <unicode/uchar.h>

namespace twqb {

bool SteersTerminal(char32_t character) {
  const auto c = static_cast<UChar32>(character);
  switch (u_charType(c)) {
    case U_CONTROL_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
      return true;
    default:
      return u_hasBinaryProperty(c, UCHAR_BIDI_CONTROL) != 0;
  }
}

std::size_t ColumnsOf(char32_t character) {
  constexpr UChar32 kSoftHyphen = 0xAD;
  const auto c = static_cast<UChar32>(character);
  if (c < 0x300) return 1;
  switch (u_charType(c)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
      return c == kSoftHyphen ? 1 : 0;
    default:
      break;
  }
  const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
  return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace twqb
