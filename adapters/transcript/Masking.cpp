#include "adapters/transcript/Masking.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "platform/Text.h"

namespace twqb {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::array<std::string_view, 1> kColumns = {"EmpSSN"};
// Upper and lower case differ between countries (Sin, SIN), so names compare without case.
constexpr std::array<std::string_view, 5> kElements = {"SSN", "SIN", "NiNumber", "SocialInsuranceNumber",
                                                       "VendorTaxIdent"};
constexpr std::array<std::string_view, 2> kPasswordKeys = {"Password", "Pwd"};

bool IsNameCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsIdentityElement(std::string_view name) {
  return std::ranges::any_of(kElements, [&](auto known) { return SameName(known, name); });
}

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  return std::min(text.find_first_not_of(kBlanks, at), text.size());
}

// Where a literal in quotes that begins at `at` ends: behind its closing quote, doubled quotes being part of it.
std::size_t EndOfQuoted(std::string_view text, std::size_t at) {
  const char quote = text[at];
  for (auto end = at + 1; end < text.size(); ++end) {
    if (text[end] != quote) continue;
    if (end + 1 < text.size() && text[end + 1] == quote) {
      ++end;
    } else {
      return end + 1;
    }
  }
  return text.size();
}

bool IsQuote(char c) { return c == '\'' || c == '"'; }

// Parts of one text, to be replaced by ***.
class Masker {
 public:
  explicit Masker(std::string_view text) : text_(text) {}
  // From first to end; an empty part is none.
  void Add(std::size_t first, std::size_t end) {
    if (first < end) parts_.push_back({first, end});
  }
  // A literal: inside its quotes when it has some.
  void AddLiteral(std::size_t first, std::size_t end) {
    const bool quoted = first < end && IsQuote(text_[first]);
    const bool closed = quoted && end - first >= 2 && text_[end - 1] == text_[first];
    Add(first + (quoted ? 1 : 0), end - (closed ? 1 : 0));
  }
  [[nodiscard]] std::string Result() {
    std::ranges::sort(parts_, {}, &Part::first);
    std::string result;
    std::size_t from = 0;
    for (const auto& part : parts_) {
      if (part.first < from) continue;
      result.append(text_.substr(from, part.first - from)).append(kMasked);
      from = part.end;
    }
    return result.append(text_.substr(from));
  }

 private:
  struct Part {
    std::size_t first;
    std::size_t end;
  };
  std::string_view text_;
  std::vector<Part> parts_;
};

// Masks X of every QUOTE X QUOTE that stands before `phrase` (which begins with the closing quote).
void MaskBefore(std::string_view text, std::string_view quote, std::string_view phrase, Masker& masker) {
  for (auto at = text.find(phrase); at != kNone; at = text.find(phrase, at + 1)) {
    const auto open = at == 0 ? kNone : text.rfind(quote, at - 1);
    if (open != kNone) masker.Add(open + quote.size(), at);
  }
}

void MaskFieldQuotes(std::string_view text, std::string_view quote, Masker& masker) {
  const std::string q(quote);
  const auto behind = q + " in the field " + q;
  for (auto at = text.find(behind); at != kNone; at = text.find(behind, at + 1)) {
    const auto name = text.substr(at + behind.size());
    if (!IsIdentityElement(name.substr(0, name.find(quote))) || at == 0) continue;
    const auto open = text.rfind(quote, at - 1);
    if (open != kNone) masker.Add(open + quote.size(), at);
  }
}

// The items of a list in parentheses that begins at `at`, each from its first to behind its last character; and in `at`
// the place behind the list. Nothing when there is no such list.
struct Item {
  std::size_t first;
  std::size_t end;
};
std::optional<std::vector<Item>> ListAt(std::string_view text, std::size_t& at) {
  at = SkipBlanks(text, at);
  if (at >= text.size() || text[at] != '(') return std::nullopt;
  std::vector<Item> items;
  int depth = 1;
  auto first = SkipBlanks(text, at + 1);
  for (auto i = first; i < text.size();) {
    if (IsQuote(text[i])) {
      i = EndOfQuoted(text, i);
      continue;
    }
    if (text[i] == '(') ++depth;
    if (text[i] == ')') --depth;
    if (depth == 0 || (depth == 1 && text[i] == ',')) {
      const auto item = text.substr(first, i - first);
      items.push_back({first, first + item.find_last_not_of(kBlanks) + 1});
      if (depth == 0) {
        at = i + 1;
        return items;
      }
      first = SkipBlanks(text, i + 1);
      i = first;
      continue;
    }
    ++i;
  }
  return std::nullopt;
}

std::string_view WithoutEnclosure(std::string_view name) {
  if (name.size() >= 2 && (name.front() == '[' || name.front() == '"')) return name.substr(1, name.size() - 2);
  return name;
}

bool WordAt(std::string_view text, std::size_t at, std::string_view word) {
  const auto end = at + word.size();
  return end <= text.size() && SameName(text.substr(at, word.size()), word) &&
         (end == text.size() || !IsNameCharacter(text[end])) && (at == 0 || !IsNameCharacter(text[at - 1]));
}

void MaskInsertedValues(std::string_view statement, Masker& masker) {
  auto at = SkipBlanks(statement, 0);
  if (!WordAt(statement, at, "INSERT")) return;
  at = statement.find('(', at);
  const auto columns = ListAt(statement, at);
  if (!columns) return;
  at = SkipBlanks(statement, at);
  if (!WordAt(statement, at, "VALUES")) return;
  at += std::string_view("VALUES").size();
  while (const auto values = ListAt(statement, at)) {
    for (std::size_t i = 0; i < std::min(columns->size(), values->size()); ++i) {
      const auto [nameFirst, nameEnd] = (*columns)[i];
      const auto [first, end] = (*values)[i];
      const bool null = SameName(statement.substr(first, end - first), "NULL");
      if (!null && IsIdentityColumn(WithoutEnclosure(statement.substr(nameFirst, nameEnd - nameFirst)))) {
        masker.AddLiteral(first, end);
      }
    }
    at = SkipBlanks(statement, at);
    if (at >= statement.size() || statement[at] != ',') return;
    ++at;
  }
}

void MaskComparedLiterals(std::string_view statement, std::string_view column, Masker& masker) {
  for (std::size_t at = 0; at + column.size() < statement.size();) {
    if (statement[at] == '\'') {  // a literal that holds the column's name assigns nothing
      at = EndOfQuoted(statement, at);
      continue;
    }
    if (!WordAt(statement, at, column)) {
      ++at;
      continue;
    }
    at += column.size();
    if (at < statement.size() && (statement[at] == ']' || statement[at] == '"')) ++at;
    auto value = SkipBlanks(statement, at);
    const auto sign = value;
    value = std::min(statement.find_first_not_of("=<>!", value), statement.size());
    if (value == sign) {
      if (!WordAt(statement, value, "LIKE")) continue;
      value += std::string_view("LIKE").size();
    }
    value = SkipBlanks(statement, value);
    if (value >= statement.size()) return;
    if (statement[value] == '\'') {
      at = EndOfQuoted(statement, value);
      masker.AddLiteral(value, at);
    } else if (statement[value] >= '0' && statement[value] <= '9') {
      at = std::min(statement.find_first_not_of("0123456789", value), statement.size());
      masker.Add(value, at);
    }
  }
}

}  // namespace

bool IsIdentityColumn(std::string_view column) {
  return std::ranges::any_of(kColumns, [&](auto known) { return SameName(known, column); });
}

std::string MaskPasswords(std::string_view text) {
  Masker masker(text);
  for (auto at = text.find('='); at != kNone; at = text.find('=', at + 1)) {
    const auto lastOfKey = text.substr(0, at).find_last_not_of(' ');
    const auto before = text.substr(0, lastOfKey == kNone ? 0 : lastOfKey + 1);
    const bool isKey = std::ranges::any_of(kPasswordKeys, [&](auto key) {
      return before.size() >= key.size() && SameName(before.substr(before.size() - key.size()), key);
    });
    if (!isKey) continue;
    auto first = at + 1;
    while (first < text.size() && text[first] == ' ') ++first;
    if (first >= text.size()) break;
    const auto end =
        IsQuote(text[first]) ? EndOfQuoted(text, first) : std::min(text.find_first_of(";\r\n", first), text.size());
    masker.AddLiteral(first, end);
    at = std::max(at, end - 1);
  }
  return masker.Result();
}

std::string MaskIdentityElements(std::string_view document) {
  Masker masker(document);
  for (auto at = document.find('<'); at != kNone; at = document.find('<', at + 1)) {
    const auto tagEnd = document.find('>', at);
    if (tagEnd == kNone) break;
    const auto tag = document.substr(at + 1, tagEnd - at - 1);
    if (tag.ends_with('/') || !IsIdentityElement(tag.substr(0, tag.find_first_of(kBlanks)))) continue;
    masker.Add(tagEnd + 1, std::min(document.find("</", tagEnd), document.size()));
  }
  MaskFieldQuotes(document, "\"", masker);
  MaskFieldQuotes(document, "&quot;", masker);
  return masker.Result();
}

std::string MaskIdentityLiterals(std::string_view statement) {
  Masker masker(statement);
  for (const auto column : kColumns) MaskComparedLiterals(statement, column, masker);
  MaskInsertedValues(statement, masker);
  return masker.Result();
}

std::string MaskQuotedIdentity(std::string_view text) {
  Masker masker(text);
  MaskBefore(text, "\"", "\" is not a valid Social Insurance Number", masker);
  MaskFieldQuotes(text, "\"", masker);
  return masker.Result();
}

}  // namespace twqb
