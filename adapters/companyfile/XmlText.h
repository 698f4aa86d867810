// Writes XML as text at the end of a string, which for large answers costs neither a tree nor a second copy.
#pragma once

#include <string>
#include <string_view>

namespace twqb::company {

void AppendOpenTag(std::string& out, std::string_view name);
void AppendCloseTag(std::string& out, std::string_view name);
// <name>text</name>; nothing at all for an empty text, as a field without a value is absent.
void AppendLeaf(std::string& out, std::string_view name, std::string_view text);
// A blank, name="value".
void AppendAttribute(std::string& out, std::string_view name, std::string_view value);

}  // namespace twqb::company
