// Whether a text is well-formed XML. The parser behind it is a forgiving one, so what QuickBooks refuses is found here.
//
// It checks the form alone: characters, references, tags, attributes, one root, depth. A document type declaration is a
// fault too, and with it every entity of one's own. It builds nothing and knows no element's meaning.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace twqb::company {

// The first fault as a sentence; nothing when there is none. `text` is UTF-8, with or without a byte order mark.
// `maxDepth` is the greatest number of elements within each other.
[[nodiscard]] std::optional<std::string> FindXmlFault(std::string_view text, std::size_t maxDepth);

}  // namespace twqb::company
