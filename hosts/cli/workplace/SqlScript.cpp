#include "cli/workplace/SqlScript.h"

#include <utility>

#include "adapters/sqlite/SqlTokens.h"

namespace twqb::cli {

std::vector<std::string> SplitStatements(std::string_view script) {
  using sqlite::TokenKind;
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (script.starts_with(kByteOrderMark)) script.remove_prefix(kByteOrderMark.size());

  std::vector<std::string> statements;
  std::string statement;  // empty until something of it has been met
  const auto end = [&] {
    if (!statement.empty()) statements.push_back(std::exchange(statement, {}));
  };
  for (const auto& token : sqlite::Tokenize(script)) {
    if (token.IsSymbol(';')) {
      end();
    } else if (!statement.empty() || (token.kind != TokenKind::Blank && token.kind != TokenKind::Comment)) {
      statement += token.text;
    }
  }
  end();
  return statements;
}

}  // namespace twqb::cli
