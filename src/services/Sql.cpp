#include "services/Sql.h"

#include <algorithm>
#include <cctype>

#include "platform/PlatformError.h"

namespace twqb {

namespace {

bool IsOfName(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '{' || c == '}'; }

std::size_t PastBlanks(std::string_view text, std::size_t at) {
  return std::min(text.find_first_not_of(' ', at), text.size());
}

// Where the literal at `at` ends: '…', {…}, {guid {…}} or a word. `npos`: there is none.
std::size_t EndOfLiteral(std::string_view text, std::size_t at) {
  if (at == text.size()) return std::string_view::npos;
  if (text[at] == '\'') {
    // A quote inside is doubled.
    for (auto end = text.find('\'', at + 1); end != std::string_view::npos; end = text.find('\'', end + 2)) {
      if (text.substr(end + 1, 1) != "'") return end + 1;
    }
    return std::string_view::npos;
  }
  constexpr std::string_view kGuid = "{guid ";
  if (text.substr(at).starts_with(kGuid)) at += kGuid.size();
  const auto begin = at;
  while (at < text.size() && IsOfName(text[at])) ++at;
  return at == begin ? std::string_view::npos : at;
}

bool IsList(std::string_view text) {
  auto at = PastBlanks(text, 0);
  while (true) {
    at = EndOfLiteral(text, at);
    if (at == std::string_view::npos) return false;
    at = PastBlanks(text, at);
    if (at == text.size()) return true;
    if (text[at] != ',') return false;
    at = PastBlanks(text, at + 1);
  }
}

}  // namespace

Sql Sql::Own(std::string_view text) {
  Sql own;
  own.text_ = text;
  return own;
}

Sql Sql::Name(std::string_view name) {
  auto named = Own(name);
  if (!std::ranges::all_of(name, IsOfName)) named.unfit_ = name;
  return named;
}

Sql Sql::List(std::string_view list) {
  auto listed = Own(list);
  if (!IsList(list)) listed.unfit_ = list;
  return listed;
}

Sql& Sql::operator+=(const Sql& piece) {
  text_ += piece.text_;
  return HoldTo(piece);
}

Sql::operator std::string_view() const {
  if (unfit_.empty()) return text_;
  throw PlatformError(error::kBadSyntax, fmt::format("{} The value \"{}\" can't stand in a statement: {}",
                                                     ErrorText(error::kBadSyntax), unfit_, text_));
}

void Sql::WatchText(std::string_view value) {
  if (unfit_.empty() && value.find('\'') != std::string_view::npos) unfit_ = value;
}

Sql& Sql::HoldTo(const Sql& piece) {
  if (unfit_.empty()) unfit_ = piece.unfit_;
  return *this;
}

}  // namespace twqb
