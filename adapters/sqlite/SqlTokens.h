// Cuts statement text into tokens, of either dialect that the provider names stand for.
//
// The tokens cover the text without a gap, so joining them gives the text again. Nothing is judged here: what is no SQL
// comes out as symbols, and the engine refuses it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace twqb::sqlite {

enum class TokenKind : std::uint8_t {
  Blank,
  Comment,     // -- to the end of the line, or /* */
  Literal,     // 'text'
  QuotedName,  // "name", [name] or `name`
  Word,
  Number,
  DateLiteral,  // #1/31/2008 10:15:00#, when what it holds is a date
  GuidLiteral,  // {guid {...}}
  Symbol,       // any other character
  Unfinished,   // a literal, a name or a comment that is not closed, with all that follows
};

struct Token {
  TokenKind kind = TokenKind::Symbol;
  std::string_view text;  // in the statement, which must live as long

  [[nodiscard]] bool IsSymbol(char c) const { return kind == TokenKind::Symbol && text.front() == c; }
  // Whether it is this word, in any case.
  [[nodiscard]] bool IsWord(std::string_view word) const;
  [[nodiscard]] bool IsName() const { return kind == TokenKind::Word || kind == TokenKind::QuotedName; }
};

[[nodiscard]] std::vector<Token> Tokenize(std::string_view statement);
// The same without blanks and comments.
[[nodiscard]] std::vector<Token> SignificantTokens(std::string_view statement);

// The name that a Word or QuotedName token stands for.
[[nodiscard]] std::string NameOf(const Token& token);
// The text that a Literal token stands for.
[[nodiscard]] std::string TextOf(const Token& token);
// What a GuidLiteral stands for, with its inner braces.
[[nodiscard]] std::string GuidOf(const Token& token);

// 'text', with quotes inside doubled.
[[nodiscard]] std::string QuoteText(std::string_view text);
// "name", with quotes inside doubled.
[[nodiscard]] std::string QuoteName(std::string_view name);

}  // namespace twqb::sqlite
