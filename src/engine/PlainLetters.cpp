#include "engine/PlainLetters.h"

#include <algorithm>
#include <array>

#include "platform/Text.h"

namespace twqb {

namespace {

struct MarkedLetter {
  std::string_view letter;
  std::string_view plain;
  std::string_view spelled;  // "": the same
};
constexpr std::array kLetters = {
    MarkedLetter{"à", "a", ""},   MarkedLetter{"á", "a", ""},       MarkedLetter{"â", "a", ""},
    MarkedLetter{"ã", "a", ""},   MarkedLetter{"ä", "a", "ae"},     MarkedLetter{"å", "a", "aa"},
    MarkedLetter{"æ", "ae", ""},  MarkedLetter{"ç", "c", ""},       MarkedLetter{"è", "e", ""},
    MarkedLetter{"é", "e", ""},   MarkedLetter{"ê", "e", ""},       MarkedLetter{"ë", "e", ""},
    MarkedLetter{"ì", "i", ""},   MarkedLetter{"í", "i", ""},       MarkedLetter{"î", "i", ""},
    MarkedLetter{"ï", "i", ""},   MarkedLetter{"ñ", "n", ""},       MarkedLetter{"ò", "o", ""},
    MarkedLetter{"ó", "o", ""},   MarkedLetter{"ô", "o", ""},       MarkedLetter{"õ", "o", ""},
    MarkedLetter{"ö", "o", "oe"}, MarkedLetter{"ø", "o", "oe"},     MarkedLetter{"œ", "oe", ""},
    MarkedLetter{"ß", "ss", ""},  MarkedLetter{"\u1E9E", "ss", ""}, MarkedLetter{"ù", "u", ""},
    MarkedLetter{"ú", "u", ""},   MarkedLetter{"û", "u", ""},       MarkedLetter{"ü", "u", "ue"},
    MarkedLetter{"ý", "y", ""},   MarkedLetter{"ÿ", "y", ""},       MarkedLetter{"ą", "a", ""},
    MarkedLetter{"ć", "c", ""},   MarkedLetter{"č", "c", ""},       MarkedLetter{"ď", "d", ""},
    MarkedLetter{"đ", "d", ""},   MarkedLetter{"ę", "e", ""},       MarkedLetter{"ě", "e", ""},
    MarkedLetter{"ğ", "g", ""},   MarkedLetter{"ı", "i", ""},       MarkedLetter{"ł", "l", ""},
    MarkedLetter{"ń", "n", ""},   MarkedLetter{"ň", "n", ""},       MarkedLetter{"ő", "o", ""},
    MarkedLetter{"ř", "r", ""},   MarkedLetter{"ś", "s", ""},       MarkedLetter{"ş", "s", ""},
    MarkedLetter{"š", "s", ""},   MarkedLetter{"ť", "t", ""},       MarkedLetter{"ů", "u", ""},
    MarkedLetter{"ű", "u", ""},   MarkedLetter{"ź", "z", ""},       MarkedLetter{"ż", "z", ""},
    MarkedLetter{"ž", "z", ""}};

// U+0300 to U+036F, which stand behind their letter: some systems write "ü" so.
bool IsMark(std::string_view character) { return character >= "\u0300" && character <= "\u036F"; }

enum class Write : bool { Plain, Spelled };

std::string Written(std::string_view folded, Write write) {
  std::string text;
  CharacterWalk walk(folded);
  for (auto character = walk.Next(); !character.empty(); character = walk.Next()) {
    if (character.size() == 1) {
      text += character;
      continue;
    }
    const auto* const found = std::ranges::find(kLetters, character, &MarkedLetter::letter);
    if (found != kLetters.end()) {
      text += write == Write::Spelled && !found->spelled.empty() ? found->spelled : found->plain;
    } else if (!IsMark(character)) {
      text += character;
    }
  }
  return text;
}

}  // namespace

bool HasMarkedLetters(std::string_view folded) {
  const auto isBeyond = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  return std::ranges::any_of(folded, isBeyond) && WithoutMarks(folded) != folded;
}
std::string WithoutMarks(std::string_view folded) { return Written(folded, Write::Plain); }
std::string WithMarksSpelled(std::string_view folded) { return Written(folded, Write::Spelled); }

}  // namespace twqb
