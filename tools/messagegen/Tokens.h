// The words and signs of a text of messages, with the line of each. Knows nothing of what they mean.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "messagegen/Source.h"

namespace twqb::messagegen {

enum class TokenKind : std::uint8_t {
  Word,     // letters and digits, beginning with a letter
  Number,   // digits
  Sign,     // one of : ? * + = , | ( ) [ ] { }
  Since,    // @2.0, @CA2.0: the text is what stands behind the @
  Until,    // <3.0: the text is what stands behind the <
  LineEnd,  // of a line on which something stands
  End,
};

struct Token {
  TokenKind kind = TokenKind::End;
  std::string text;
  int line = 0;

  [[nodiscard]] bool Is(TokenKind wanted, std::string_view wantedText) const {
    return kind == wanted && text == wantedText;
  }
  [[nodiscard]] bool IsSign(std::string_view sign) const { return Is(TokenKind::Sign, sign); }
  [[nodiscard]] bool IsWord(std::string_view word) const { return Is(TokenKind::Word, word); }
};

// The tokens of the text, the last of which is its end. A # and what follows it on its line is passed over. Raises
// BadInput for a character that begins none.
[[nodiscard]] std::vector<Token> ReadTokens(const SourceFile& file);

}  // namespace twqb::messagegen
