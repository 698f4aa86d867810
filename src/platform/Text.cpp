#include "platform/Text.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace twqb {

namespace {

char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + ('a' - 'A')) : c; }

// The code point at `index`, which moves behind it; negative for bytes that are no UTF-8.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"  // in the expansion of ICU's macro
#endif
UChar32 NextCodePoint(std::string_view text, int& index) {
  UChar32 c = 0;
  const char* bytes = text.data();
  U8_NEXT(bytes, index, static_cast<int>(text.size()), c);
  return c;
}
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

// What Windows-1252 has in the place of the control characters 0x80 to 0x9F; the five that it leaves open stay those.
constexpr unsigned kFirstOfWindows = 0x80;
constexpr std::array<UChar32, 32> kWindows1252 = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                  0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

UChar32 InWindows1252(char byte) {
  const unsigned code = static_cast<unsigned char>(byte);
  const auto place = code - kFirstOfWindows;
  return place < kWindows1252.size() ? kWindows1252[place] : static_cast<UChar32>(code);
}

bool XmlBars(UChar32 c) {
  constexpr UChar32 kFirstPrintable = 0x20;
  constexpr UChar32 kFirstNoncharacter = 0xFFFE;
  constexpr UChar32 kLastNoncharacter = 0xFFFF;
  if (c < kFirstPrintable) return c != '\t' && c != '\n' && c != '\r';
  return c == kFirstNoncharacter || c == kLastNoncharacter;
}

// How many characters at the front are ASCII, as far as can be told by eights.
std::size_t AsciiLength(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t eight = 0;
  std::size_t length = 0;
  for (; length + sizeof eight <= text.size(); length += sizeof eight) {
    std::memcpy(&eight, text.data() + length, sizeof eight);
    if ((eight & kHighBits) != 0) break;
  }
  return length;
}

void AppendCharacter(std::string& text, UChar32 c) {
  char buffer[U8_MAX_LENGTH];
  int length = 0;
  U8_APPEND_UNSAFE(buffer, length, c);
  text.append(buffer, static_cast<std::size_t>(length));
}

char UpperAscii(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - ('a' - 'A')) : c; }

// Applies a one-to-one mapping of code points; bytes that are no UTF-8 stay as they are. `ofAscii` is the same mapping
// for what most texts consist of.
template <typename Mapping>
std::string MapCharacters(std::string_view text, char (*ofAscii)(char), Mapping mapping) {
  std::string result;
  result.reserve(text.size());
  const auto ascii = AsciiLength(text);
  std::ranges::transform(text.substr(0, ascii), std::back_inserter(result), ofAscii);
  CharacterWalk walk(text.substr(ascii));
  for (auto bytes = walk.Next(); !bytes.empty(); bytes = walk.Next()) {
    int index = 0;
    const UChar32 c = NextCodePoint(bytes, index);
    if (c < 0) {
      result.append(bytes);
      continue;
    }
    AppendCharacter(result, mapping(c));
  }
  return result;
}

}  // namespace

std::string_view CharacterWalk::Next() {
  if (rest_.empty()) return {};
  int index = 0;
  if (NextCodePoint(rest_.substr(0, U8_MAX_LENGTH), index) < 0) index = 1;
  const auto bytes = rest_.substr(0, static_cast<std::size_t>(index));
  rest_.remove_prefix(static_cast<std::size_t>(index));
  return bytes;
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  CharacterWalk walk(text);
  while (!walk.Next().empty()) ++count;
  return count;
}

std::string Left(std::string_view text, std::size_t count) {
  CharacterWalk walk(text);
  std::size_t bytes = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const auto next = walk.Next();
    if (next.empty()) break;
    bytes += next.size();
  }
  return std::string(text.substr(0, bytes));
}

std::string Right(std::string_view text, std::size_t count) {
  const auto all = CharacterCount(text);
  return all <= count ? std::string(text) : std::string(text.substr(Left(text, all - count).size()));
}

std::string UpperCase(std::string_view text) {
  return MapCharacters(text, UpperAscii, [](UChar32 c) { return u_toupper(c); });
}

std::string FoldCase(std::string_view text) {
  return MapCharacters(text, LowerAscii, [](UChar32 c) { return u_foldCase(c, U_FOLD_CASE_DEFAULT); });
}

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  if (what.empty()) return std::string(text);
  std::string result;
  std::size_t from = 0;
  for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what, from)) {
    result.append(text.substr(from, at - from)).append(with);
    from = at + what.size();
  }
  return result.append(text.substr(from));
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (auto at = text.find(separator); at != std::string_view::npos; at = text.find(separator, from)) {
    parts.emplace_back(text.substr(from, at - from));
    from = at + 1;
  }
  parts.emplace_back(text.substr(from));
  return parts;
}

std::string Join(const std::vector<std::string>& texts, std::string_view separator) {
  return Join(std::vector<std::string_view>(texts.begin(), texts.end()), separator);
}

std::string Join(const std::vector<std::string_view>& texts, std::string_view separator) {
  std::string joined;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) joined += separator;
    joined += texts[i];
  }
  return joined;
}

void AppendPadded(std::string& text, int value, std::size_t width) {
  std::array<char, 12> digits{};
  const auto* end = std::to_chars(digits.data(), digits.data() + digits.size(), std::abs(value)).ptr;
  const auto count = static_cast<std::size_t>(end - digits.data());
  if (value < 0) text += '-';
  const auto taken = count + (value < 0 ? 1 : 0);
  text.append(width > taken ? width - taken : 0, '0').append(digits.data(), count);
}

bool SameName(std::string_view a, std::string_view b) {
  return a == b || std::ranges::equal(a, b, [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

std::uint64_t HashOf(std::string_view text) {
  // FNV-1a.
  constexpr std::uint64_t kOffset = 14695981039346656037U;
  constexpr std::uint64_t kPrime = 1099511628211U;
  auto hash = kOffset;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * kPrime;
  return hash;
}

bool IsUtf8(std::string_view text) {
  text.remove_prefix(AsciiLength(text));
  int index = 0;
  const int size = static_cast<int>(text.size());
  while (index < size) {
    if (NextCodePoint(text, index) < 0) return false;
  }
  return true;
}

std::string ReplaceControls(std::string_view text, const std::function<std::string(unsigned)>& shown) {
  // DEL, and the second set of controls, behind those below the blank: as UTF-8, or as single bytes, which terminals of
  // eight bits obey.
  constexpr unsigned char kDelete = 0x7F;
  constexpr unsigned char kLeadOfSecondSet = 0xC2;
  constexpr unsigned char kSecondSet = 0x80;
  constexpr unsigned char kEndOfSecondSet = 0xA0;
  // Most texts have none, and are not taken apart.
  const auto mayBegin = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == kLeadOfSecondSet || (byte >= kDelete && byte < kEndOfSecondSet);
  };
  if (std::ranges::none_of(text, mayBegin)) return std::string(text);
  std::string replaced;
  replaced.reserve(text.size());
  CharacterWalk walk(text);
  for (auto next = walk.Next(); !next.empty(); next = walk.Next()) {
    const auto first = static_cast<unsigned char>(next.front());
    const auto last = static_cast<unsigned char>(next.back());
    const bool isLayout = first == '\t' || first == '\r' || first == '\n';
    const bool isInSecondSet = (next.size() == 2 && first == kLeadOfSecondSet && last < kEndOfSecondSet) ||
                               (next.size() == 1 && first >= kSecondSet && first < kEndOfSecondSet);
    const bool isInFirstSet = next.size() == 1 && ((first < ' ' && !isLayout) || first == kDelete);
    replaced += isInFirstSet || isInSecondSet ? shown(last) : std::string(next);
  }
  return replaced;
}

std::string WithoutControls(std::string_view text) {
  return ReplaceControls(text, [](unsigned) { return std::string("?"); });
}

bool IsXmlText(std::string_view text) {
  int index = 0;
  const int size = static_cast<int>(text.size());
  while (index < size) {
    const auto c = NextCodePoint(text, index);
    if (c < 0 || XmlBars(c)) return false;
  }
  return true;
}

std::string XmlText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  CharacterWalk walk(text);
  for (auto bytes = walk.Next(); !bytes.empty(); bytes = walk.Next()) {
    int index = 0;
    const auto c = NextCodePoint(bytes, index);
    if (c < 0) {
      AppendCharacter(result, InWindows1252(bytes[0]));
    } else if (!XmlBars(c)) {
      result.append(bytes);
    }
  }
  return result;
}

}  // namespace twqb
