#include "adapters/companyfile/XmlText.h"

#include <algorithm>
#include <array>

namespace twqb::company {

namespace {

// By a byte's number: whether it can't stand there as it is.
using SpecialBytes = std::array<bool, 256>;
constexpr SpecialBytes Special(std::string_view characters) {
  SpecialBytes special{};
  for (const char c : characters) special[static_cast<unsigned char>(c)] = true;
  return special;
}
// A carriage return in content, and any white space in an attribute, would be folded by whoever reads it.
constexpr auto kSpecialInContent = Special("&<>\r");
constexpr auto kSpecialInAttribute = Special("&<>\"\r\n\t");

std::string_view Escaped(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\r':
      return "&#13;";
    case '\n':
      return "&#10;";
    default:
      return "&#9;";
  }
}

void AppendEscaped(std::string& out, std::string_view text, const SpecialBytes& special) {
  const auto isSpecial = [&special](char c) { return special[static_cast<unsigned char>(c)]; };
  while (!text.empty()) {
    const auto at = std::ranges::find_if(text, isSpecial);
    out.append(text.begin(), at);
    if (at == text.end()) return;
    out.append(Escaped(*at));
    text = {at + 1, text.end()};
  }
}

}  // namespace

void AppendOpenTag(std::string& out, std::string_view name) { (out += '<').append(name) += '>'; }

void AppendCloseTag(std::string& out, std::string_view name) { out.append("</").append(name) += '>'; }

void AppendLeaf(std::string& out, std::string_view name, std::string_view text) {
  if (text.empty()) return;
  if (std::ranges::any_of(text, [](char c) { return kSpecialInContent[static_cast<unsigned char>(c)]; })) {
    AppendOpenTag(out, name);
    AppendEscaped(out, text, kSpecialInContent);
    AppendCloseTag(out, name);
    return;
  }
  // In one piece: an answer is mostly leaves.
  constexpr std::size_t kMarks = std::string_view("<></>").size();
  const auto start = out.size();
  out.resize(start + 2 * name.size() + text.size() + kMarks);
  auto* at = out.data() + start;
  const auto put = [&at](std::string_view piece) { at += piece.copy(at, piece.size()); };
  *at++ = '<';
  put(name);
  *at++ = '>';
  put(text);
  *at++ = '<';
  *at++ = '/';
  put(name);
  *at = '>';
}

void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
  out.append(" ").append(name).append("=\"");
  AppendEscaped(out, value, kSpecialInAttribute);
  out.append("\"");
}

}  // namespace twqb::company
