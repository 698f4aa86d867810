#include "adapters/sqlite/Phrases.h"

#include <fmt/core.h>

#include <span>

#include "adapters/sqlite/Failure.h"
#include "adapters/sqlite/SqlTokens.h"

namespace twqb::sqlite {

namespace {

bool OpensTable(std::span<const Token> tokens) {
  return tokens[0].IsWord("SELECT") && tokens[1].IsSymbol('*') && tokens[2].IsWord("FROM") && tokens[3].IsName();
}

bool WantsFilled(std::span<const Token> tokens) {
  return tokens[0].IsWord("WHERE") && tokens[1].IsName() && tokens[2].IsWord("IS") && tokens[3].IsWord("NOT") &&
         tokens[4].IsWord("NULL");
}

}  // namespace

OpenedTable ParseOpening(std::string_view statement) {
  auto tokens = SignificantTokens(statement);
  if (!tokens.empty() && tokens.back().IsSymbol(';')) tokens.pop_back();
  constexpr std::size_t kOpening = 4;
  constexpr std::size_t kWithCondition = 9;
  const std::span<const Token> all(tokens);
  if (all.size() == kOpening && OpensTable(all)) return {.table = NameOf(tokens[3]), .filledColumn = {}};
  if (all.size() == kWithCondition && OpensTable(all) && WantsFilled(all.subspan(kOpening))) {
    return {.table = NameOf(tokens[3]), .filledColumn = NameOf(tokens[kOpening + 1])};
  }
  throw Failure(error::kBadSyntax,
                fmt::format("A table is opened for writing by \"SELECT * FROM table;\", with \"WHERE column IS NOT "
                            "NULL\" or without, not by \"{}\".",
                            statement));
}

Criterion ParseCriterion(std::string_view criterion) {
  const auto tokens = SignificantTokens(criterion);
  if (tokens.size() != 3 || !tokens[0].IsName() || !tokens[1].IsSymbol('=') || tokens[2].kind != TokenKind::Literal) {
    throw Failure(error::kBadArgument,
                  fmt::format("Find takes a criterion \"column = 'text'\", not \"{}\".", criterion));
  }
  return {.column = NameOf(tokens[0]), .text = TextOf(tokens[2])};
}

}  // namespace twqb::sqlite
