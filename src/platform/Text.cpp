#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "platform/CaseMapping.h"

namespace twqb {

namespace {

char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + ('a' - 'A')) : c; }

constexpr std::size_t kLongestCharacter = 4;  // bytes
constexpr unsigned kTailBits = 6;
constexpr char32_t kNoCharacter = 0xFFFFFFFF;
constexpr char32_t kFirstOfThreeBytes = 0x800;
constexpr char32_t kFirstOfFourBytes = 0x10000;
constexpr char32_t kLast = 0x10FFFF;

bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

// How many bytes follow the one that a character of several bytes begins with; none for a byte that begins none.
std::size_t BytesBehind(unsigned char lead) {
  if (lead >= 0xC2 && lead < 0xE0) return 1;
  if (lead >= 0xE0 && lead < 0xF0) return 2;
  return lead >= 0xF0 && lead < 0xF5 ? 3 : 0;
}

// The code point at `index`, which moves behind it; kNoCharacter, and behind one byte, for bytes that are no UTF-8.
char32_t NextCodePoint(std::string_view text, std::size_t& index) {
  const auto lead = static_cast<unsigned char>(text[index++]);
  if (lead < 0x80) return lead;
  const auto behind = BytesBehind(lead);
  if (behind == 0 || text.size() - index < behind) return kNoCharacter;
  char32_t c = lead & (0x3FU >> behind);
  for (std::size_t i = 0; i < behind; ++i) {
    const auto next = static_cast<unsigned char>(text[index + i]);
    if ((next & 0xC0U) != 0x80) return kNoCharacter;
    c = (c << kTailBits) | (next & 0x3FU);
  }
  // Longer than it need be, or of a kind that has no place in a text.
  const bool isOverlong = (behind == 2 && c < kFirstOfThreeBytes) || (behind == 3 && c < kFirstOfFourBytes);
  if (isOverlong || IsSurrogate(c) || c > kLast) return kNoCharacter;
  index += behind;
  return c;
}

// What Windows-1252 has in the place of the control characters 0x80 to 0x9F; the five that it leaves open stay those.
constexpr unsigned kFirstOfWindows = 0x80;
constexpr std::array<char32_t, 32> kWindows1252 = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char32_t InWindows1252(char byte) {
  const unsigned code = static_cast<unsigned char>(byte);
  const auto place = code - kFirstOfWindows;
  return place < kWindows1252.size() ? kWindows1252[place] : static_cast<char32_t>(code);
}

bool XmlBars(char32_t c) {
  constexpr char32_t kFirstPrintable = 0x20;
  constexpr char32_t kFirstNoncharacter = 0xFFFE;
  constexpr char32_t kLastNoncharacter = 0xFFFF;
  if (c < kFirstPrintable) return c != '\t' && c != '\n' && c != '\r';
  return c == kFirstNoncharacter || c == kLastNoncharacter;
}

// How many characters at the front are ASCII.
std::size_t AsciiLength(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t eight = 0;
  std::size_t length = 0;
  for (; length + sizeof eight <= text.size(); length += sizeof eight) {
    std::memcpy(&eight, text.data() + length, sizeof eight);
    if ((eight & kHighBits) != 0) break;
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
  return length;
}

void AppendCharacter(std::string& text, char32_t c) {
  const auto tail = [&](unsigned shift) { return static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < kFirstOfThreeBytes) {
    text += {static_cast<char>(0xC0U | (c >> kTailBits)), tail(0)};
  } else if (c < kFirstOfFourBytes) {
    text += {static_cast<char>(0xE0U | (c >> (2 * kTailBits))), tail(kTailBits), tail(0)};
  } else {
    text += {static_cast<char>(0xF0U | (c >> (3 * kTailBits))), tail(2 * kTailBits), tail(kTailBits), tail(0)};
  }
}

char UpperAscii(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - ('a' - 'A')) : c; }

// Applies a one-to-one mapping of code points; bytes that are no UTF-8 stay as they are. `ofAscii` is the same mapping
// for what most texts consist of.
template <typename AsciiMapping, typename Mapping>
std::string MapCharacters(std::string_view text, AsciiMapping ofAscii, Mapping mapping) {
  std::string result(text.substr(0, AsciiLength(text)));
  const auto ascii = result.size();
  for (char& c : result) c = ofAscii(c);
  if (ascii == text.size()) return result;
  CharacterWalk walk(text.substr(ascii));
  for (auto bytes = walk.Next(); !bytes.empty(); bytes = walk.Next()) {
    std::size_t index = 0;
    const char32_t c = NextCodePoint(bytes, index);
    if (c == kNoCharacter) {
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
  std::size_t index = 0;
  static_cast<void>(NextCodePoint(rest_.substr(0, kLongestCharacter), index));
  const auto bytes = rest_.substr(0, index);
  rest_.remove_prefix(index);
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
  return MapCharacters(
      text, [](char c) { return UpperAscii(c); }, UpperCaseOf);
}

std::string FoldCase(std::string_view text) {
  return MapCharacters(
      text, [](char c) { return LowerAscii(c); }, FoldedCaseOf);
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
  if (width == 2 && value >= 0 && value < 100) {
    const std::array<char, 2> digits = {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
    text.append(digits.data(), digits.size());
    return;
  }
  if (width == 4 && value >= 1000 && value < 10000) {
    const std::array<char, 4> digits = {static_cast<char>('0' + value / 1000),
                                        static_cast<char>('0' + value / 100 % 10),
                                        static_cast<char>('0' + value / 10 % 10), static_cast<char>('0' + value % 10)};
    text.append(digits.data(), digits.size());
    return;
  }
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
  for (std::size_t index = 0; index < text.size();) {
    if (NextCodePoint(text, index) == kNoCharacter) return false;
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
  for (std::size_t index = 0; index < text.size();) {
    const auto c = NextCodePoint(text, index);
    if (c == kNoCharacter || XmlBars(c)) return false;
  }
  return true;
}

std::string XmlText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  CharacterWalk walk(text);
  for (auto bytes = walk.Next(); !bytes.empty(); bytes = walk.Next()) {
    std::size_t index = 0;
    const auto c = NextCodePoint(bytes, index);
    if (c == kNoCharacter) {
      AppendCharacter(result, InWindows1252(bytes[0]));
    } else if (!XmlBars(c)) {
      result.append(bytes);
    }
  }
  return result;
}

}  // namespace twqb
