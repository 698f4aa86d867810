#include "adapters/sqlite/Phrases.h"

#include <fmt/core.h>

#include "adapters/sqlite/Failure.h"
#include "adapters/sqlite/SqlTokens.h"

namespace twqb::sqlite {

std::string TableOfStatement(std::string_view statement) {
  const auto tokens = SignificantTokens(statement);
  constexpr std::size_t kLength = 4;
  const bool fits = tokens.size() == kLength || (tokens.size() == kLength + 1 && tokens.back().IsSymbol(';'));
  if (!fits || !tokens[0].IsWord("SELECT") || !tokens[1].IsSymbol('*') || !tokens[2].IsWord("FROM") ||
      !tokens[3].IsName()) {
    throw Failure(error::kBadSyntax,
                  fmt::format("A table is opened for writing by \"SELECT * FROM table;\", not by \"{}\".", statement));
  }
  return NameOf(tokens[3]);
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
