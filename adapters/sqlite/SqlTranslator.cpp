#include "adapters/sqlite/SqlTranslator.h"

#include <fmt/core.h>

#include <map>
#include <vector>

#include "adapters/sqlite/Collations.h"
#include "adapters/sqlite/SqlTokens.h"

namespace twqb::sqlite {

namespace {

// Texts to write behind tokens, by the address of the token's text.
using Suffixes = std::map<const char*, std::string>;

class ColumnTypes {
 public:
  explicit ColumnTypes(const std::vector<Token>& significant) : tokens_(significant) {}

  [[nodiscard]] Suffixes Suffix() const {
    Suffixes suffixes;
    if (!IsCreateTable()) return suffixes;
    int depth = 0;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      if (depth == 0 && tokens_[i].IsWord("AS")) return {};  // the columns come from a SELECT
      const bool startsColumn = depth == 1 && (tokens_[i - 1].IsSymbol('(') || tokens_[i - 1].IsSymbol(','));
      if (startsColumn && tokens_[i].IsName()) AddColumn(i, suffixes);
      if (tokens_[i].IsSymbol('(')) ++depth;
      if (tokens_[i].IsSymbol(')')) --depth;
    }
    return suffixes;
  }

 private:
  [[nodiscard]] bool WordAt(std::size_t i, std::string_view word) const {
    return i < tokens_.size() && tokens_[i].IsWord(word);
  }
  [[nodiscard]] bool SymbolAt(std::size_t i, char c) const { return i < tokens_.size() && tokens_[i].IsSymbol(c); }

  [[nodiscard]] bool IsCreateTable() const {
    const bool isTemporary = WordAt(1, "TEMP") || WordAt(1, "TEMPORARY");
    return WordAt(0, "CREATE") && WordAt(isTemporary ? 2 : 1, "TABLE");
  }

  void AddColumn(std::size_t name, Suffixes& suffixes) const {
    const std::size_t type = name + 1;
    const bool hasLength = SymbolAt(type + 1, '(') && type + 2 < tokens_.size() &&
                           tokens_[type + 2].kind == TokenKind::Number && SymbolAt(type + 3, ')');
    const bool isText = WordAt(type, "TEXT");
    if (hasLength && (isText || WordAt(type, "VARCHAR"))) {
      suffixes[tokens_[type + 3].text.data()] = fmt::format(" COLLATE {} CHECK (length({}) <= {})", kTextCollation,
                                                            tokens_[name].text, tokens_[type + 2].text);
    } else if (isText) {
      suffixes[tokens_[type].text.data()] = fmt::format(" COLLATE {}", kTextCollation);
    } else if (WordAt(type, "DATETIME")) {
      suffixes[tokens_[type].text.data()] = fmt::format(" COLLATE {}", kDateCollation);
    }
  }

  const std::vector<Token>& tokens_;
};

bool IsOperandEnd(const Token& token) { return token.kind != TokenKind::Symbol || token.IsSymbol(')'); }

// A sign between operands of which one is a text literal. One that opens an operand ("= +'x'") is no concatenation.
bool IsConcatenation(const Token* before, const Token& token, const Token* behind) {
  if (!token.IsSymbol('+') || before == nullptr || behind == nullptr || !IsOperandEnd(*before)) return false;
  return before->kind == TokenKind::Literal || behind->kind == TokenKind::Literal;
}

std::string Translated(const Token* before, const Token& token, const Token* behind) {
  if (token.kind == TokenKind::DateLiteral) return QuoteText(token.text.substr(1, token.text.size() - 2));
  if (token.kind == TokenKind::GuidLiteral) return QuoteText(GuidOf(token));
  if (IsConcatenation(before, token, behind)) return "||";
  const bool isQualified = before != nullptr && before->IsSymbol('.');
  // A blank keeps the sign away from a minus in front: two of them would begin a comment.
  if (token.IsWord("True") && !isQualified) return before != nullptr && before->IsSymbol('-') ? " -1" : "-1";
  if (token.IsWord("False") && !isQualified) return "0";
  return std::string(token.text);
}

}  // namespace

std::string TranslateSql(std::string_view statement) {
  const auto significant = SignificantTokens(statement);
  const auto suffixes = ColumnTypes(significant).Suffix();

  std::string result;
  result.reserve(statement.size());
  std::size_t next = 0;  // of the significant tokens
  for (const auto& token : Tokenize(statement)) {
    if (next == significant.size() || token.text.data() != significant[next].text.data()) {
      result += token.text;
      continue;
    }
    const Token* before = next > 0 ? &significant[next - 1] : nullptr;
    const Token* behind = next + 1 < significant.size() ? &significant[next + 1] : nullptr;
    result += Translated(before, token, behind);
    if (const auto found = suffixes.find(token.text.data()); found != suffixes.end()) result += found->second;
    ++next;
  }
  return result;
}

}  // namespace twqb::sqlite
