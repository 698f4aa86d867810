#include "adapters/companyfile/XmlText.h"

namespace twqb::company {

namespace {

// A carriage return in content, and any white space in an attribute, would be folded by whoever reads it.
constexpr std::string_view kSpecialInContent = "&<>\r";
constexpr std::string_view kSpecialInAttribute = "&<>\"\r\n\t";

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

void AppendEscaped(std::string& out, std::string_view text, std::string_view special) {
  std::size_t from = 0;
  for (auto at = text.find_first_of(special); at != std::string_view::npos; at = text.find_first_of(special, from)) {
    out.append(text, from, at - from).append(Escaped(text[at]));
    from = at + 1;
  }
  out.append(text, from);
}

}  // namespace

void AppendOpenTag(std::string& out, std::string_view name) { out.append("<").append(name).append(">"); }

void AppendCloseTag(std::string& out, std::string_view name) { out.append("</").append(name).append(">"); }

void AppendLeaf(std::string& out, std::string_view name, std::string_view text) {
  if (text.empty()) return;
  AppendOpenTag(out, name);
  AppendEscaped(out, text, kSpecialInContent);
  AppendCloseTag(out, name);
}

void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
  out.append(" ").append(name).append("=\"");
  AppendEscaped(out, value, kSpecialInAttribute);
  out.append("\"");
}

}  // namespace twqb::company
