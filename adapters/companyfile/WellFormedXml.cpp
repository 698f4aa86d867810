#include "adapters/companyfile/WellFormedXml.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <vector>

#include "platform/Text.h"

namespace twqb::company {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::array<std::string_view, 5> kEntities = {"lt", "gt", "amp", "quot", "apos"};

constexpr const char* kForeignType =
    "Document type declarations are not accepted unless they name a published type alone.";

struct Fault {
  std::string text;
};

[[noreturn]] void Fail(std::string text) { throw Fault{std::move(text)}; }

bool IsWhiteSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// What a byte may be.
enum ByteKind : std::uint8_t { kNone = 0, kNameStart = 1, kNameCharacter = 2, kNeedsALook = 4 };
constexpr std::uint8_t KindOf(unsigned char c) {
  // Beyond ASCII every character is taken: no published name has one.
  const bool starts = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || c >= 0x80;
  const bool goesOn = starts || (c >= '0' && c <= '9') || c == '-' || c == '.';
  // Of more than one byte, or a control character that may not be there.
  const bool isPlain = (c >= 0x20 && c < 0x80) || c == '\t' || c == '\r' || c == '\n';
  return (starts ? kNameStart : kNone) | (goesOn ? kNameCharacter : kNone) | (isPlain ? kNone : kNeedsALook);
}
constexpr auto kByteKinds = [] {
  std::array<std::uint8_t, 256> kinds{};
  for (std::size_t i = 0; i < kinds.size(); ++i) kinds[i] = KindOf(static_cast<unsigned char>(i));
  return kinds;
}();
bool Is(char c, ByteKind kind) { return (kByteKinds[static_cast<unsigned char>(c)] & kind) != 0; }

bool IsXmlCharacter(std::uint32_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

class Scanner {
 public:
  Scanner(std::string_view text, const XmlBounds& bounds) : text_(text), bounds_(bounds) {
    open_.reserve(bounds.depth);
  }

  [[nodiscard]] const std::optional<DocumentType>& Type() const { return documentType_; }

  void ScanDocument() {
    if (text_.size() > bounds_.bytes) Fail(fmt::format("The text has more than {} bytes.", bounds_.bytes));
    CheckCharacters();
    if (text_.starts_with(kByteOrderMark)) text_.remove_prefix(kByteOrderMark.size());
    if (text_.starts_with("<?xml") && text_.size() > 5 && IsWhiteSpace(text_[5])) ScanDeclaration();
    while (at_ < text_.size()) {
      ScanText();
      if (at_ < text_.size()) ScanMarkup();
    }
    if (!open_.empty()) Fail(fmt::format("The element {} is not closed.", open_.back()));
    if (!rootSeen_) Fail("There is no root element.");
  }

 private:
  void CheckCharacters() const {
    std::uint8_t all = kNone;
    for (const char c : text_) all |= kByteKinds[static_cast<unsigned char>(c)];
    if ((all & kNeedsALook) == 0) return;
    if (!IsUtf8(text_)) Fail("The text is not well-formed UTF-8.");
    for (const char c : text_) {
      if (static_cast<unsigned char>(c) < 0x20 && !IsWhiteSpace(c)) Fail("There is a control character in the text.");
    }
    if (text_.find("\xEF\xBF\xBE") != std::string_view::npos || text_.find("\xEF\xBF\xBF") != std::string_view::npos) {
      Fail("There is a character in the text that XML does not have.");
    }
  }

  void ScanDeclaration() {
    Skip("<?xml");
    const auto& attributes = ScanAttributes();
    if (!Skip("?>")) Fail("The XML declaration is not closed.");
    if (attributes.empty() || attributes[0].name != "version" || attributes[0].value != "1.0") {
      Fail("The XML declaration does not name version 1.0.");
    }
    for (std::size_t i = 1; i < attributes.size(); ++i) {
      if (attributes[i].name != "encoding" && attributes[i].name != "standalone") {
        Fail(fmt::format("The XML declaration does not know {}.", attributes[i].name));
      }
      if (attributes[i].name == "encoding" && !IsReadable(attributes[i].value)) {
        Fail(fmt::format("The encoding {} is not read here: the text must be UTF-8.", Left(attributes[i].value, 40)));
      }
    }
  }

  // UTF-8, or what is the same as long as the text keeps to ASCII.
  [[nodiscard]] bool IsReadable(std::string_view encoding) const {
    constexpr std::array<std::string_view, 3> kAsciiAlike = {"us-ascii", "iso-8859-1", "windows-1252"};
    if (SameName(encoding, "utf-8")) return true;
    return std::ranges::any_of(kAsciiAlike, [encoding](auto name) { return SameName(name, encoding); }) &&
           std::ranges::all_of(text_, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  }

  // Up to the next markup.
  void ScanText() {
    const auto text = Take(std::min(text_.find('<', at_), text_.size()) - at_);
    if (open_.empty()) {
      if (!std::ranges::all_of(text, IsWhiteSpace)) Fail("There is text outside the root element.");
      return;
    }
    if (text.find("]]>") != std::string_view::npos) Fail("The text holds \"]]>\".");
    CheckReferences(text);
  }

  void ScanMarkup() {
    if (Skip("<!--")) {
      static_cast<void>(TakeUpTo("--", "A comment"));
      if (!Skip(">")) Fail("A comment holds \"--\".");
    } else if (Skip("<![CDATA[")) {
      if (open_.empty()) Fail("There is text outside the root element.");
      static_cast<void>(TakeUpTo("]]>", "A CDATA section"));
    } else if (Skip("<!DOCTYPE")) {
      ScanDocumentType();
    } else if (text_.substr(at_).starts_with("<!")) {
      Fail("Declarations are not accepted.");
    } else if (Skip("<?")) {
      const auto name = ScanName();
      if (SameName(name, "xml")) Fail("The XML declaration does not stand at the beginning.");
      if (!AtWhiteSpace() && !text_.substr(at_).starts_with("?>")) Fail("A processing instruction has no name.");
      static_cast<void>(TakeUpTo("?>", "A processing instruction"));
    } else if (Skip("</")) {
      const auto name = ScanName();
      SkipWhiteSpace();
      if (!Skip(">")) Fail(fmt::format("The end tag {} is not closed.", name));
      if (open_.empty() || open_.back() != name) Fail(fmt::format("The end tag {} has no start tag.", name));
      open_.pop_back();
    } else {
      ScanStartTag();
    }
  }

  void ScanStartTag() {
    Skip("<");
    const auto name = ScanName();
    if (open_.empty() && rootSeen_) Fail("There is more than one root element.");
    rootSeen_ = true;
    static_cast<void>(ScanAttributes());
    if (open_.size() >= bounds_.depth) Fail("The elements are nested too deep.");
    if (++elements_ > bounds_.elements) Fail(fmt::format("There are more than {} elements.", bounds_.elements));
    if (Skip("/>")) return;
    if (!Skip(">")) Fail(fmt::format("The start tag {} is not closed.", name));
    open_.push_back(name);
  }

  // <!DOCTYPE name PUBLIC "identifier" "address">, in front of the root.
  void ScanDocumentType() {
    if (rootSeen_ || documentType_) Fail("The document type is declared where none can be.");
    DocumentType type;
    RequireWhiteSpace();
    type.root = ScanName();
    RequireWhiteSpace();
    if (!Skip("PUBLIC")) Fail(kForeignType);
    RequireWhiteSpace();
    type.publicId = ScanQuoted("The public identifier");
    RequireWhiteSpace();
    static_cast<void>(ScanQuoted("The address of the document type"));
    SkipWhiteSpace();
    if (!Skip(">")) Fail(kForeignType);
    documentType_ = type;
  }

  void RequireWhiteSpace() {
    if (!AtWhiteSpace()) Fail("The document type declaration is not well-formed.");
    SkipWhiteSpace();
  }

  struct Attribute {
    std::string_view name;
    std::string_view value;
  };
  // Until the next tag's are.
  const std::vector<Attribute>& ScanAttributes() {
    auto& attributes = attributes_;
    attributes.clear();
    while (AtWhiteSpace()) {
      SkipWhiteSpace();
      if (at_ >= text_.size() || !Is(text_[at_], kNameStart)) break;
      const auto name = ScanName();
      SkipWhiteSpace();
      if (!Skip("=")) Fail(fmt::format("The attribute {} has no value.", name));
      SkipWhiteSpace();
      const auto value = ScanQuoted("The value of the attribute ", name);
      if (value.find('<') != std::string_view::npos) Fail(fmt::format("The attribute {} holds a \"<\".", name));
      CheckReferences(value);
      if (std::ranges::any_of(attributes, [name](const Attribute& other) { return other.name == name; })) {
        Fail(fmt::format("The attribute {} is there twice.", name));
      }
      if (attributes.size() >= bounds_.attributes) Fail("There are too many attributes on one tag.");
      attributes.push_back({name, value});
    }
    return attributes;
  }

  // What it is called, in two parts, of which the second may be empty.
  std::string_view ScanQuoted(std::string_view what, std::string_view name = {}) {
    const auto quote = text_.substr(at_, 1);
    if (quote != "\"" && quote != "'") Fail(fmt::format("{}{} has no quotes.", what, name));
    ++at_;
    return TakeUpTo(quote, what, name);
  }

  static void CheckReferences(std::string_view text) {
    for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
      const auto end = text.find(';', at);
      if (end == std::string_view::npos || !IsReference(text.substr(at + 1, end - at - 1))) {
        Fail("There is a \"&\" that begins no known reference.");
      }
    }
  }

  static bool IsReference(std::string_view name) {
    if (!name.starts_with('#')) return std::ranges::find(kEntities, name) != kEntities.end();
    name.remove_prefix(1);
    const int base = name.starts_with('x') ? 16 : 10;
    if (base == 16) name.remove_prefix(1);
    std::uint32_t character = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), character, base);
    return read.ec == std::errc{} && read.ptr == name.data() + name.size() && IsXmlCharacter(character);
  }

  std::string_view ScanName() {
    if (at_ >= text_.size() || !Is(text_[at_], kNameStart)) Fail("There is a tag without a name.");
    std::size_t end = at_ + 1;
    while (end < text_.size() && Is(text_[end], kNameCharacter)) ++end;
    return Take(end - at_);
  }

  std::string_view Take(std::size_t count) {
    const auto taken = text_.substr(at_, count);
    at_ += count;
    return taken;
  }

  // Moves behind `end`; answers what stood before it.
  std::string_view TakeUpTo(std::string_view end, std::string_view what, std::string_view name = {}) {
    const auto found = text_.find(end, at_);
    if (found == std::string_view::npos) Fail(fmt::format("{}{} is not closed.", what, name));
    const auto taken = Take(found - at_);
    at_ += end.size();
    return taken;
  }

  bool Skip(std::string_view expected) {
    if (!text_.substr(at_).starts_with(expected)) return false;
    at_ += expected.size();
    return true;
  }

  [[nodiscard]] bool AtWhiteSpace() const { return at_ < text_.size() && IsWhiteSpace(text_[at_]); }
  void SkipWhiteSpace() {
    while (AtWhiteSpace()) ++at_;
  }

  std::string_view text_;
  const XmlBounds& bounds_;
  std::size_t at_ = 0;
  std::size_t elements_ = 0;
  bool rootSeen_ = false;
  std::optional<DocumentType> documentType_;
  std::vector<std::string_view> open_;
  std::vector<Attribute> attributes_;
};

}  // namespace

XmlScan ScanXml(std::string_view text, const XmlBounds& bounds) {
  Scanner scanner(text, bounds);
  XmlScan scan;
  try {
    scanner.ScanDocument();
    scan.documentType = scanner.Type();
  } catch (const Fault& fault) {
    scan.fault = fault.text;
  }
  return scan;
}

}  // namespace twqb::company
