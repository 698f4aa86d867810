#include "quickbooks/ResponseModel.h"

#include <fmt/core.h>

#include <algorithm>

#include "platform/PlatformError.h"
#include "platform/Value.h"

namespace twqb {

using messages::Element;

struct AnswerDocument {
  std::string text;  // parsed in place: nodes point into it
  pugi::xml_document tree;
  Machine* machine = nullptr;
};

namespace {

// Values stay as QuickBooks wrote them, those of blanks alone too.
constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_wconv_attribute |
                                   pugi::parse_eol | pugi::parse_ws_pcdata_single | pugi::parse_embed_pcdata;

bool IsElement(pugi::xml_node node) { return node.type() == pugi::node_element; }

// Whether the element is that of `row` or, of a step without an element, of any row below it.
bool StandsFor(pugi::xml_node node, const Element& row) {
  if (!row.LeavesNoElement()) return row.name == node.name();
  return std::ranges::any_of(row.Children(), [node](const Element& child) { return StandsFor(node, child); });
}

}  // namespace

pugi::xml_node Record::FindElement(const Element& row) const {
  // A row's name has an end as the texts of C have it: made out of literals.
  if (!row.LeavesNoElement()) return node_.child(row.name.data());
  return node_.find_child([&row](pugi::xml_node child) { return StandsFor(child, row); });
}

bool Record::IsEntry() const { return row_->type == messages::Type::Choice && row_->repeating; }

Record Record::Member(std::shared_ptr<const AnswerDocument> document, std::string_view name) const {
  if (IsNothing()) throw PlatformError(error::kObjectNothing);
  const auto* child = messages::FindChild(row_->Children(), name);
  if (child == nullptr) {
    throw PlatformError(error::kNameUnknown, fmt::format("{}: {}", ErrorText(error::kNameUnknown), name));
  }
  if (IsEntry()) return StandsFor(node_, *child) ? Record(std::move(document), node_, child) : Record();
  const auto element = FindElement(*child);
  if (!element) return {};
  return {std::move(document), child->LeavesNoElement() && !child->repeating ? node_ : element, child};
}

std::string Record::GetValue() const {
  if (IsNothing()) throw PlatformError(error::kObjectNothing);
  return node_.child_value();
}

bool Record::GetBoolean() const {
  const auto value = messages::ParseBool(GetValue());
  if (!value) throw PlatformError(error::kConversion);
  return *value;
}

std::int64_t Record::GetInteger() const {
  const auto text = GetValue();
  for (const auto& value : row_->Values()) {
    if (value.name == text) return value.number;
  }
  return TextToInteger(text);
}
double Record::GetNumber() const { return TextToNumber(GetValue()); }

Currency Record::GetAmount() const {
  const auto value = messages::ParseAmount(GetValue());
  if (!value) throw PlatformError(error::kConversion);
  return *value;
}

Date Record::GetDate() const {
  const auto value = messages::ParseDateTime(GetValue());
  if (!value) throw PlatformError(error::kConversion);
  if (row_->type != messages::Type::DateTime) return value->local;
  if (document_->machine == nullptr) throw PlatformError(error::kObjectNothing);
  return StandardTimeOf(*document_->machine, value->local);
}

messages::TimeInterval Record::GetTimeInterval() const {
  const auto span = messages::ParseTimeInterval(GetValue());
  if (!span) throw PlatformError(error::kConversion);
  return *span;
}

messages::Type Record::ValueType() const {
  if (IsNothing()) throw PlatformError(error::kObjectNothing);
  return row_->type;
}

std::string Record::GetAsString() const {
  if (IsNothing()) throw PlatformError(error::kObjectNothing);
  return row_->HasChildren() ? std::string(row_->name) : GetValue();
}

std::size_t Record::Count() const {
  if (IsNothing()) return 0;
  return static_cast<std::size_t>(
      std::ranges::count_if(node_.parent().children(), [this](auto node) { return StandsFor(node, *row_); }));
}

Record Record::GetAt(std::size_t index) const {
  if (IsNothing()) throw PlatformError(error::kObjectNothing);
  for (const auto node : node_.parent().children()) {
    if (StandsFor(node, *row_) && index-- == 0) return {document_, node, row_};
  }
  throw PlatformError(error::kBadArgument);
}

int Record::ORType() const {
  if (IsNothing()) return -1;
  const auto branches = row_->Children();
  for (std::size_t i = 0; i < branches.size(); ++i) {
    if (IsEntry() ? StandsFor(node_, branches[i]) : static_cast<bool>(FindElement(branches[i]))) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

namespace {

void AddIdentifiers(const pugi::xml_node& node, std::vector<std::string>& identifiers) {
  for (const auto& child : node.children()) {
    const std::string_view name = child.name();
    if (name == "ListID" || name == "TxnID" || name == "TxnLineID") {
      identifiers.emplace_back(child.child_value());
    } else if (name.ends_with("LineRet") || name.ends_with("LineGroupRet")) {
      AddIdentifiers(child, identifiers);
    }
  }
}

}  // namespace

std::vector<std::string> Record::Identifiers() const {
  std::vector<std::string> identifiers;
  if (!IsNothing()) AddIdentifiers(node_, identifiers);
  return identifiers;
}

void RecordList::Add(Record record, const std::string& key) {
  if (records_.empty()) {
    firstKey_ = key;
  } else if (key == firstKey_ || !others_.insert(key).second) {
    throw PlatformError(error::kKeyInUse);
  }
  records_.push_back(std::move(record));
}

const std::vector<Record>& ReturnedList::Records() const {
  if (IsNothing()) throw PlatformError(error::kObjectNothing);
  return *records_;
}

std::size_t ReturnedList::Count() const { return Records().size(); }

const Record& ReturnedList::GetAt(std::size_t index) const {
  const auto& records = Records();
  if (index >= records.size()) throw PlatformError(error::kBadArgument);
  return records[index];
}

std::int32_t Response::StatusCode() const { return node_.attribute("statusCode").as_int(-1); }
std::string Response::StatusSeverity() const { return node_.attribute("statusSeverity").as_string(); }
std::string Response::StatusMessage() const { return node_.attribute("statusMessage").as_string(); }

std::string Response::RequestName() const {
  constexpr std::string_view kSuffix = "Rs";
  std::string_view name = node_.name();
  if (name.ends_with(kSuffix)) name.remove_suffix(kSuffix.size());
  return std::string(name);
}
std::string Response::RequestID() const { return node_.attribute("requestID").as_string(); }

std::size_t Response::DetailCount() const {
  return static_cast<std::size_t>(std::ranges::count_if(node_.children(), IsElement));
}

Record Response::DetailAt(std::size_t index) const {
  for (const auto node : node_.children()) {
    if (IsElement(node) && index-- == 0) {
      const auto* message = messages::FindMessage(node_.name());
      const auto* row = message == nullptr ? nullptr : messages::FindChild(message->response, node.name());
      if (row == nullptr) throw PlatformError(error::kParse);
      return {document_, node, row};
    }
  }
  throw PlatformError(error::kObjectNothing);
}

std::vector<Record> Response::Details() const {
  std::vector<Record> records;
  const auto* message = messages::FindMessage(node_.name());
  if (message == nullptr) return records;
  for (const auto node : node_.children()) {
    if (!IsElement(node)) continue;
    const auto* row = messages::FindChild(message->response, node.name());
    if (row == nullptr) throw PlatformError(error::kParse);
    records.push_back({document_, node, row});
  }
  return records;
}

ReturnedList Response::DetailList() const {
  auto records = Details();
  return records.empty() ? ReturnedList() : ReturnedList(std::move(records));
}

MsgSetResponse::MsgSetResponse(std::string answer, Machine* machine) {
  auto document = std::make_shared<AnswerDocument>();
  document->machine = machine;
  document->text = std::move(answer);
  const auto parsed = document->tree.load_buffer_inplace(document->text.data(), document->text.size(), kParseOptions,
                                                         pugi::encoding_utf8);
  const auto set = document->tree.child("QBXML").first_child();
  if (!parsed || !set) throw PlatformError(error::kParse);
  if (const auto code = set.attribute("messageSetStatusCode")) code_ = code.as_int();
  for (const auto node : set.children()) {
    if (IsElement(node)) responses_.push_back(Response(document, node));
  }
}

const Response& MsgSetResponse::GetAt(std::size_t index) const {
  if (index >= responses_.size()) throw PlatformError(error::kObjectNothing);
  return responses_[index];
}

}  // namespace twqb
