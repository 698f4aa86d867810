#include "adapters/sqlite/Collations.h"

#include <sqlite3.h>

#include <algorithm>

#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::sqlite {

namespace {

std::string_view WithoutTrailingBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

unsigned char LowerAscii(char c) { return static_cast<unsigned char>((c >= 'A' && c <= 'Z') ? c + ('a' - 'A') : c); }

int ToInt(std::strong_ordering order) { return order < 0 ? -1 : (order > 0 ? 1 : 0); }

std::string_view TextOfArgument(int size, const void* data) {
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

int TextCallback(void* /*context*/, int sizeA, const void* a, int sizeB, const void* b) {
  return ToInt(CompareTexts(TextOfArgument(sizeA, a), TextOfArgument(sizeB, b)));
}

int DateCallback(void* /*context*/, int sizeA, const void* a, int sizeB, const void* b) {
  return ToInt(CompareDates(TextOfArgument(sizeA, a), TextOfArgument(sizeB, b)));
}

}  // namespace

std::strong_ordering CompareTexts(std::string_view a, std::string_view b) {
  a = WithoutTrailingBlanks(a);
  b = WithoutTrailingBlanks(b);
  // As long as both are ASCII no text is built. Folding goes character by character, so the rest of the texts can be
  // folded on its own.
  const auto common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (!IsAscii(a[i]) || !IsAscii(b[i])) return FoldCase(a.substr(i)).compare(FoldCase(b.substr(i))) <=> 0;
    if (const auto order = LowerAscii(a[i]) <=> LowerAscii(b[i]); order != 0) return order;
  }
  return a.size() <=> b.size();
}

std::strong_ordering CompareDates(std::string_view a, std::string_view b) {
  if (a == b) return std::strong_ordering::equal;
  const auto dateA = ParseDate(a);
  const auto dateB = ParseDate(b);
  if (dateA && dateB) return *dateA <=> *dateB;
  if (dateA) return std::strong_ordering::less;
  if (dateB) return std::strong_ordering::greater;
  return CompareTexts(a, b);
}

int RegisterCollations(sqlite3* handle) {
  const int code =
      sqlite3_create_collation_v2(handle, kTextCollation.data(), SQLITE_UTF8, nullptr, TextCallback, nullptr);
  if (code != SQLITE_OK) return code;
  return sqlite3_create_collation_v2(handle, kDateCollation.data(), SQLITE_UTF8, nullptr, DateCallback, nullptr);
}

}  // namespace twqb::sqlite
