// Text in this house is UTF-8, and a character is a code point: lengths, cuts and case all count those.
//
// Bytes that are no UTF-8 count as one character each and pass through unchanged. Case is Unicode's simple case,
// one code point to one code point, so no operation here but a cut changes the number of characters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace twqb {

inline constexpr std::string_view kCrLf = "\r\n";

[[nodiscard]] std::size_t CharacterCount(std::string_view text);
// The first `count` characters, or all of them.
[[nodiscard]] std::string Left(std::string_view text, std::size_t count);
// The last `count` characters, or all of them.
[[nodiscard]] std::string Right(std::string_view text, std::size_t count);
[[nodiscard]] std::string UpperCase(std::string_view text);
// Simple case folding: two texts that differ in case alone fold to one text.
[[nodiscard]] std::string FoldCase(std::string_view text);
// Without leading and trailing blanks (U+0020 alone).
[[nodiscard]] std::string Trim(std::string_view text);
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);
[[nodiscard]] std::vector<std::string> Split(std::string_view text, char separator);
// The texts one behind the other, with the separator between.
[[nodiscard]] std::string Join(const std::vector<std::string>& texts, std::string_view separator);
[[nodiscard]] std::string Join(const std::vector<std::string_view>& texts, std::string_view separator);
// Appends a number with zeros ahead of it; a sign counts for the width. It takes less than reading a format string,
// which shows where moments are written for each record.
void AppendPadded(std::string& text, int value, std::size_t width);
// Names of fields, columns, settings: ASCII letters compare without case.
[[nodiscard]] bool SameName(std::string_view a, std::string_view b);
// The same number for the same bytes on every machine. It need not withstand anybody who looks for a collision.
[[nodiscard]] std::uint64_t HashOf(std::string_view text);
// Whether every byte sequence is well-formed UTF-8.
[[nodiscard]] bool IsUtf8(std::string_view text);
// Whether XML can carry the text: well-formed UTF-8 without the control characters and noncharacters that XML bars.
[[nodiscard]] bool IsXmlText(std::string_view text);
// The same text as XML can carry it: bytes that are no UTF-8 are read as Windows-1252, in which old databases wrote,
// and what XML bars is left out.
[[nodiscard]] std::string XmlText(std::string_view text);

// The text with what `shown` makes of each control character in their places; a tab, CR and LF stay.
[[nodiscard]] std::string ReplaceControls(std::string_view text, const std::function<std::string(unsigned)>& shown);
// The same with "?" for each.
[[nodiscard]] std::string WithoutControls(std::string_view text);

// Walks the characters of a text. `Next` gives the next character's bytes; empty at the end.
class CharacterWalk {
 public:
  explicit CharacterWalk(std::string_view text) : rest_(text) {}
  [[nodiscard]] std::string_view Next();

 private:
  std::string_view rest_;
};

}  // namespace twqb
