#include "adapters/companyfile/RequestSet.h"

#include <fmt/core.h>

#include <algorithm>
#include <sstream>

#include "adapters/companyfile/CompanyErrors.h"
#include "adapters/companyfile/Forms.h"
#include "adapters/companyfile/Macros.h"
#include "adapters/companyfile/PublishedRequests.h"
#include "adapters/companyfile/RefusedDocument.h"
#include "adapters/companyfile/RequestChecks.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

using messages::Country;
using messages::MessageSet;

// The published messages are a fourth of this deep. A document of a hundred thousand records stays well within the
// rest, and a parser within a gigabyte.
constexpr XmlBounds kBounds = {.bytes = std::size_t{256} << 20U, .elements = 4'000'000, .depth = 32, .attributes = 16};
constexpr std::size_t kMaxQuoted = 80;  // characters of a document in the text of its refusal
constexpr std::string_view kRoot = "QBXML";
constexpr std::string_view kRequestSuffix = "Rq";
constexpr std::string_view kBlanks = " \t\r\n";

bool IsBlank(std::string_view text) { return text.find_first_not_of(kBlanks) == std::string_view::npos; }

bool IsElement(pugi::xml_node node) { return node.type() == pugi::node_element; }
bool IsText(pugi::xml_node node) { return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata; }

bool HasElements(pugi::xml_node node) { return static_cast<bool>(node.find_child(IsElement)); }

// Text where only elements may stand.
void RefuseStrayText(pugi::xml_node node) {
  for (const auto child : node.children()) {
    if (IsText(child) && !IsBlank(child.value())) RefuseDocument(fmt::format("There is text inside {}.", node.name()));
  }
}

// Comments and CDATA cut the text of an element in pieces: makes one of them, so that it reads as a whole.
void JoinText(pugi::xml_node leaf) {
  if (!leaf.first_child().next_sibling()) return;
  std::string text;
  for (const auto child : leaf.children()) {
    if (IsText(child)) text += child.value();
  }
  leaf.remove_children();
  leaf.append_child(pugi::node_pcdata).set_value(text.c_str());
}

// An element has no attributes beside those of macros, where its row (nullptr: it has none) knows them.
void CheckAttributes(pugi::xml_node element, const messages::Element* row, const messages::Form& form) {
  for (const auto attribute : element.attributes()) {
    const std::string_view name = attribute.name();
    const bool isKnown = row != nullptr && row->attribute == name && KnowsMacros(form);
    const bool uses = name == kUsesMacro;
    const bool hasContent = HasElements(element) || !IsBlank(element.text().get());
    if (!isKnown || IsBlank(attribute.value()) || (uses && hasContent)) {
      RefuseDocument(fmt::format("The element {} has an attribute {}.", element.name(), name));
    }
    if (uses) element.text().set(kUnknownIdentity);
  }
}

void TidyContent(pugi::xml_node node, std::span<const messages::Element> rows, const messages::Form& form) {
  for (auto child : node.children()) {
    if (!IsElement(child)) continue;
    const auto* row = FindRow(rows, child.name());
    const bool isLeaf = !HasElements(child);
    // Whole ahead of the attributes, which ask for the text.
    if (isLeaf) JoinText(child);
    CheckAttributes(child, row, form);
    if (!isLeaf) TidyContent(child, row == nullptr ? std::span<const messages::Element>{} : row->Children(), form);
  }
  RefuseStrayText(node);
}

// An aggregate that holds text and no elements is not seen by the check of elements.
void RefuseTextInAggregates(pugi::xml_node node, std::span<const messages::Element> rows) {
  for (const auto child : node.children()) {
    const auto* row = IsElement(child) ? FindRow(rows, child.name()) : nullptr;
    if (row == nullptr || row->type != messages::Type::Aggregate) continue;
    RefuseStrayText(child);
    RefuseTextInAggregates(child, row->Children());
  }
}

// The tag in `version="3.0"`; empty when the text is not that.
std::string_view VersionTag(std::string_view text) {
  const auto skipBlanks = [&text] { text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size())); };
  const auto skip = [&text](std::string_view expected) {
    const bool there = text.starts_with(expected);
    if (there) text.remove_prefix(expected.size());
    return there;
  };
  skipBlanks();
  if (!skip("version")) return {};
  skipBlanks();
  if (!skip("=")) return {};
  skipBlanks();
  const auto quote = text.substr(0, 1);
  if ((quote != "\"" && quote != "'") || !skip(quote)) return {};
  const auto end = text.find(quote);
  if (end == std::string_view::npos || !IsBlank(text.substr(end + 1))) return {};
  return text.substr(0, end);
}

// The tag in the identifier of a published document type; empty for any other.
std::string_view TagOfDocumentType(std::string_view publicId) {
  constexpr std::string_view kBegin = "-//INTUIT//DTD QBXML QBD ";
  constexpr std::string_view kEnd = "//EN";
  if (!publicId.starts_with(kBegin) || !publicId.ends_with(kEnd)) return {};
  publicId.remove_prefix(kBegin.size());
  return publicId.substr(0, publicId.size() - std::min(publicId.size(), kEnd.size()));
}

}  // namespace

std::string_view SetName(MessageSet kind) {
  return kind == MessageSet::Company ? "QBXMLMsgs" : "QBXMLSubscriptionMsgs";
}

RequestSet::RequestSet(std::string_view document, std::optional<MessageSet> kind, std::span<const Country> forms)
    : text_(document) {
  const auto scan = ScanXml(document, kBounds);
  if (scan.fault) RefuseDocument(*scan.fault);
  constexpr unsigned kFlags = pugi::parse_minimal | pugi::parse_pi | pugi::parse_cdata | pugi::parse_escapes |
                              pugi::parse_eol | pugi::parse_wconv_attribute | pugi::parse_ws_pcdata_single;
  const auto parsed = document_.load_buffer(document.data(), document.size(), kFlags, pugi::encoding_utf8);
  if (!parsed) RefuseDocument(parsed.description());
  ReadForm(scan.documentType, forms);
  set_ = FindSet(kind);
  ReadAttributes();
  for (const auto node : set_.children()) {
    if (IsElement(node)) ReadRequest(node);
  }
}

void RequestSet::ReadForm(const std::optional<DocumentType>& type, std::span<const Country> forms) {
  std::optional<std::string_view> tag;
  for (const auto node : document_.children()) {
    if (IsElement(node)) break;
    if (node.type() != pugi::node_pi || node.name() != std::string_view("qbxml")) continue;
    if (tag) RefuseDocument("There is more than one line with the message version.");
    tag = VersionTag(node.value());
  }
  if (type) {
    const auto named = TagOfDocumentType(type->publicId);
    // The first documents had no line with the version: the document type said it, and is refused as such a line is.
    const bool isTaken = tag ? PublishedForm(named).has_value() : IsFormTag(named);
    if (type->root != kRoot || !isTaken) RefuseDocument("The document type is not one of the published ones.");
    if (!tag) tag = named;
  }
  if (!tag) RefuseDocument("The line with the message version is missing.");
  if (!IsFormTag(*tag)) RefuseDocument(fmt::format("The message version \"{}\" is none.", Left(*tag, kMaxQuoted)));

  const auto form = PublishedForm(*tag);
  if (!form) RefuseVersion(fmt::format("Requested: \"{}\".", *tag));
  if (std::ranges::find(forms, form->country) == forms.end()) {
    RefuseVersion(fmt::format("This company data file does not take \"{}\".", *tag));
  }
  form_ = *form;
}

pugi::xml_node RequestSet::FindSet(std::optional<MessageSet> kind) {
  const auto root = document_.document_element();
  const auto set = root.find_child(IsElement);
  const auto isSetOf = [name = std::string_view(set.name())](MessageSet of) {
    return name.starts_with(SetName(of)) && name.substr(SetName(of).size()) == kRequestSuffix;
  };
  const bool subscriptions = isSetOf(MessageSet::Subscription);
  kind_ = kind.value_or(subscriptions ? MessageSet::Subscription : MessageSet::Company);
  if (root.name() != kRoot || root.first_attribute()) RefuseDocument("The root element is not QBXML.");
  if (!isSetOf(kind_)) {
    RefuseDocument(fmt::format("There is no {}{} in the document.", SetName(kind_), kRequestSuffix));
  }
  for (auto next = set.next_sibling(); next; next = next.next_sibling()) {
    if (IsElement(next)) RefuseDocument(fmt::format("The element {} is not expected.", next.name()));
  }
  RefuseStrayText(root);
  RefuseStrayText(set);
  return set;
}

void RequestSet::ReadAttributes() {
  const bool isCompany = kind_ == MessageSet::Company;
  // Subscriptions need not say it: they are carried out one by one, whatever the others come to.
  bool found = !isCompany;
  if (found) onError_ = OnError::Continue;
  for (const auto attribute : set_.attributes()) {
    const std::string_view name = attribute.name();
    const std::string_view value = attribute.value();
    if (name == "onError" && value == "rollbackOnError") Raise(kNoRollback);
    if (name == "onError" && (value == "stopOnError" || value == "continueOnError")) {
      onError_ = value == "continueOnError" ? OnError::Continue : OnError::Stop;
      found = true;
    } else if (isCompany && name == "newMessageSetID") {
      attributes_.newId = value;
      attributes_.written = true;
    } else if (isCompany && name == "oldMessageSetID") {
      attributes_.oldId = value;
      attributes_.written = true;
    } else if (isCompany && name == "responseData" && (value == "includeAll" || value == "includeNone")) {
      attributes_.data = value == "includeNone" ? ResponseData::IncludeNone : ResponseData::IncludeAll;
      attributes_.written = true;
    } else {
      RefuseDocument(fmt::format("{}=\"{}\" is not known on {}.", name, Left(value, kMaxQuoted), set_.name()));
    }
  }
  if (!found) RefuseDocument("The attribute onError is missing.");
}

std::string_view RequestSet::ContentText() const {
  auto text = text_.substr(static_cast<std::size_t>(set_.offset_debug()));
  // The end of the start tag: no attribute that the set can have needs a ">" in its value, but it may hold one.
  char quote = 0;
  std::size_t end = 0;
  for (; end < text.size() && (quote != 0 || text[end] != '>'); ++end) {
    if (quote != 0) {
      if (text[end] == quote) quote = 0;
    } else if (text[end] == '"' || text[end] == '\'') {
      quote = text[end];
    }
  }
  if (end > 0 && text[end - 1] == '/') return {};
  text.remove_prefix(std::min(end + 1, text.size()));
  return text.substr(0, text.rfind(std::string("</").append(set_.name())));
}

std::string RequestSet::ParsedContent() const {
  std::ostringstream content;
  for (const auto node : set_.children()) node.print(content, "", pugi::format_raw);
  return content.str();
}

void RequestSet::ReadRequest(pugi::xml_node node) {
  const std::string_view element = node.name();
  const auto* message = messages::FindMessage(element);
  const bool isKnown = message != nullptr && element.ends_with(kRequestSuffix) && message->set == kind_;
  const bool isKept = isKnown && message->KnownIn(form_);
  if (!isKept && (isKnown || kind_ != MessageSet::Company || !IsRequestOfOtherRecords(element, form_.version))) {
    RefuseDocument(fmt::format("The request {} is not known.", element));
  }
  for (const auto attribute : node.attributes()) {
    if (attribute.name() != std::string_view("requestID")) {
      RefuseDocument(fmt::format("The attribute {} is not known on {}.", attribute.name(), element));
    }
  }
  Request request{.name = element.substr(0, element.size() - kRequestSuffix.size()),
                  .message = isKept ? message : nullptr,
                  .node = node,
                  .refusal = CheckRequestId(node)};
  if (isKept) {
    CheckContent(request);
  } else if (!request.refusal) {
    request.refusal = status::UnsupportedMessage(element);
  }
  requests_.push_back(std::move(request));
}

void RequestSet::CheckContent(Request& request) const {
  const auto& message = *request.message;
  TidyContent(request.node, message.request, form_);
  for (auto& problem : messages::Validate(request.node, message.request, form_)) {
    if (!IsToldByStatus(problem)) {
      RefuseDocument(
          problem.value.empty()
              ? fmt::format("The element {} in {} is not expected or has no value.", problem.field, request.node.name())
              : fmt::format("The value \"{}\" of {} in {} is not valid.", Left(problem.value, kMaxQuoted),
                            problem.field, request.node.name()));
    }
    if (!request.refusal) request.refusal = status::OfProblem(problem);
  }
  RefuseTextInAggregates(request.node, message.request);
  if (!request.refusal) request.refusal = CheckConditions(request.node, message);
}

}  // namespace twqb::company
