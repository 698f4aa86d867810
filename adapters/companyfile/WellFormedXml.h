// Whether a text is well-formed XML. The parser behind it is a forgiving one, so what QuickBooks refuses is found here.
//
// It checks the form alone: characters, references, tags, attributes, one root, and that nothing goes beyond the bounds
// that a parser is safe within. A document type declaration may name a published document type and nothing else: one
// with a subset of its own is a fault, and with it every entity of one's own. Nothing is fetched. It builds nothing,
// knows no element's meaning, and takes time by the length of the text alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace twqb::company {

struct XmlBounds {
  std::size_t bytes = 0;
  std::size_t elements = 0;
  std::size_t depth = 0;       // elements within each other
  std::size_t attributes = 0;  // of one tag
};

// A document type declaration; views into the text.
struct DocumentType {
  std::string_view root;      // the element that it is for
  std::string_view publicId;  // "-//…//EN"
};

struct XmlScan {
  std::optional<std::string> fault;  // the first one, as a sentence
  std::optional<DocumentType> documentType;
};

// `text` is UTF-8, with or without a byte order mark.
[[nodiscard]] XmlScan ScanXml(std::string_view text, const XmlBounds& bounds);

}  // namespace twqb::company
