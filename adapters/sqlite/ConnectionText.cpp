#include "adapters/sqlite/ConnectionText.h"

#include <algorithm>

#include "platform/Text.h"

namespace twqb::sqlite {

namespace {

// Takes the value off the front of `rest`, with the semicolon behind it.
std::string TakeValue(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  std::string quoted;
  const bool isQuoted = rest.starts_with('"');
  while (isQuoted && rest.starts_with('"')) {
    const auto close = rest.find('"', 1);
    quoted += rest.substr(1, close == std::string_view::npos ? close : close - 1);
    rest.remove_prefix(close == std::string_view::npos ? rest.size() : close + 1);
    if (rest.starts_with('"')) quoted += '"';
  }
  const auto end = std::min(rest.find(';'), rest.size());
  auto plain = Trim(rest.substr(0, end));
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return isQuoted ? quoted : plain;
}

}  // namespace

ConnectionText ParseConnectionText(std::string_view text) {
  ConnectionText result;
  while (!text.empty()) {
    const auto keyEnd = text.find_first_of("=;");
    if (keyEnd == std::string_view::npos) break;
    const auto key = Trim(text.substr(0, keyEnd));
    const bool hasValue = text[keyEnd] == '=';
    text.remove_prefix(keyEnd + 1);
    if (!hasValue) continue;
    auto value = TakeValue(text);
    if (SameName(key, "Provider")) {
      result.provider = std::move(value);
    } else if (SameName(key, "Data Source")) {
      result.dataSource = std::move(value);
    } else if (SameName(key, "Mode")) {
      result.mode = std::move(value);
    }
  }
  return result;
}

bool NamesEmbeddedEngine(std::string_view text) {
  const auto provider = ParseConnectionText(text).provider;
  return SameName(provider, "SQLITE") || SameName(provider, "JETLITE");
}

}  // namespace twqb::sqlite
