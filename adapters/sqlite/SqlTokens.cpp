#include "adapters/sqlite/SqlTokens.h"

#include <algorithm>

#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::sqlite {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\r\n\f\v";
constexpr std::string_view kGuidWord = "guid";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsWordStart(char c) {
  constexpr unsigned char kFirstBeyondAscii = 0x80;
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '@' || c == '$' ||
         static_cast<unsigned char>(c) >= kFirstBeyondAscii;
}

bool IsWordPart(char c) { return IsWordStart(c) || IsDigit(c); }

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  return std::min(text.find_first_not_of(kBlanks, at), text.size());
}

// The length of what starts at the front and runs to `close`, a doubled `close` being one inside; kNone if not closed.
std::size_t QuotedLength(std::string_view text, char close) {
  for (auto at = text.find(close, 1); at != kNone; at = text.find(close, at + 2)) {
    if (at + 1 >= text.size() || text[at + 1] != close) return at + 1;
  }
  return kNone;
}

std::size_t LengthThrough(std::string_view text, std::string_view close, std::size_t from) {
  const auto at = text.find(close, from);
  return at == kNone ? kNone : at + close.size();
}

// A sign belongs to the number behind the E of an exponent, but not in hexadecimal.
std::size_t NumberLength(std::string_view text) {
  const bool isHexadecimal = text.size() > 1 && text[0] == '0' && (text[1] | 0x20) == 'x';
  std::size_t n = 1;
  for (; n < text.size(); ++n) {
    const char c = text[n];
    const bool isExponentSign = (c == '+' || c == '-') && !isHexadecimal && (text[n - 1] | 0x20) == 'e' &&
                                n + 1 < text.size() && IsDigit(text[n + 1]);
    if (!IsWordPart(c) && c != '.' && !isExponentSign) break;
  }
  return n;
}

// Zero when no date literal starts here.
std::size_t DateLength(std::string_view text) {
  const auto close = text.find('#', 1);
  return close != kNone && ParseDate(text.substr(1, close - 1)) ? close + 1 : 0;
}

// Zero when no GUID literal starts here.
std::size_t GuidLength(std::string_view text) {
  auto at = SkipBlanks(text, 1);
  if (!SameName(text.substr(at, kGuidWord.size()), kGuidWord)) return 0;
  at = SkipBlanks(text, at + kGuidWord.size());
  if (at >= text.size() || text[at] != '{') return 0;
  const auto inner = text.find_first_of("{}", at + 1);
  if (inner == kNone || text[inner] != '}') return 0;
  at = SkipBlanks(text, inner + 1);
  return at < text.size() && text[at] == '}' ? at + 1 : 0;
}

struct Piece {
  TokenKind kind;
  std::size_t length;  // kNone: not closed
};

Piece FirstPiece(std::string_view text) {
  const char c = text.front();
  if (const auto blanks = SkipBlanks(text, 0); blanks > 0) return {TokenKind::Blank, blanks};
  if (text.starts_with("--")) return {TokenKind::Comment, std::min(text.find('\n'), text.size())};
  if (text.starts_with("/*")) return {TokenKind::Comment, LengthThrough(text, "*/", 2)};
  if (c == '\'') return {TokenKind::Literal, QuotedLength(text, c)};
  if (c == '"' || c == '`') return {TokenKind::QuotedName, QuotedLength(text, c)};
  if (c == '[') return {TokenKind::QuotedName, LengthThrough(text, "]", 1)};
  if (IsDigit(c) || (c == '.' && text.size() > 1 && IsDigit(text[1]))) return {TokenKind::Number, NumberLength(text)};
  if (IsWordStart(c)) {
    const auto end = std::ranges::find_if_not(text, IsWordPart);
    return {TokenKind::Word, static_cast<std::size_t>(end - text.begin())};
  }
  if (c == '#') {
    if (const auto length = DateLength(text); length > 0) return {TokenKind::DateLiteral, length};
  }
  if (c == '{') {
    if (const auto length = GuidLength(text); length > 0) return {TokenKind::GuidLiteral, length};
  }
  return {TokenKind::Symbol, 1};
}

std::string Quote(std::string_view text, std::string_view quote) {
  std::string result(quote);
  result += ReplaceAll(text, quote, std::string(quote).append(quote));
  return result.append(quote);
}

std::string WithoutQuotes(std::string_view text) {
  const std::string quote(1, text.front());
  return ReplaceAll(text.substr(1, text.size() - 2), quote + quote, quote);
}

}  // namespace

bool Token::IsWord(std::string_view word) const { return kind == TokenKind::Word && SameName(text, word); }

std::vector<Token> Tokenize(std::string_view statement) {
  std::vector<Token> tokens;
  while (!statement.empty()) {
    auto [kind, length] = FirstPiece(statement);
    if (length == kNone) kind = TokenKind::Unfinished;
    tokens.push_back({.kind = kind, .text = statement.substr(0, length)});
    statement.remove_prefix(tokens.back().text.size());
  }
  return tokens;
}

std::vector<Token> SignificantTokens(std::string_view statement) {
  auto tokens = Tokenize(statement);
  std::erase_if(tokens, [](const Token& t) { return t.kind == TokenKind::Blank || t.kind == TokenKind::Comment; });
  return tokens;
}

std::string NameOf(const Token& token) {
  if (token.kind != TokenKind::QuotedName) return std::string(token.text);
  if (token.text.front() == '[') return std::string(token.text.substr(1, token.text.size() - 2));
  return WithoutQuotes(token.text);
}

std::string TextOf(const Token& token) { return WithoutQuotes(token.text); }

std::string GuidOf(const Token& token) {
  const auto open = token.text.find('{', 1);
  return std::string(token.text.substr(open, token.text.find('}', open) - open + 1));
}

std::string QuoteText(std::string_view text) { return Quote(text, "'"); }

std::string QuoteName(std::string_view name) { return Quote(name, "\""); }

}  // namespace twqb::sqlite
