#include "quickbooks/RequestModel.h"

#include <fmt/core.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/RequestNode.h"
#include "quickbooks/RequestWriter.h"

namespace twqb {

using messages::Element;
using messages::Form;
using messages::Type;

namespace {

using detail::RequestNode;

constexpr std::size_t kFirstMemory = 896;  // of a set, in bytes; a query of one record needs no more

// Something below `node` was set: of every choice above it, the other branches go.
void KeepToThisBranch(RequestNode& node) {
  for (auto* at = &node; at->Parent() != nullptr; at = at->Parent()) {
    auto& above = *at->Parent();
    if (above.Row() != nullptr && above.Row()->type == Type::Choice) above.KeepOnly(at->Row());
  }
}

std::string EnumText(const Element& row, double number) {
  for (const auto& value : row.Values()) {
    if (value.number == std::llrint(number)) return std::string(value.name);
  }
  throw PlatformError(error::kConversion);
}

std::string DateValueText(const Element& row, Date date) {
  if (row.type == Type::Date) return messages::DateText(date);
  // Without an offset: the workstation's local time.
  if (row.type == Type::DateTime) return messages::DateTimeText(date, std::nullopt);
  return GeneralDate(date);
}

std::string NumberText(const Element& row, double number) {
  switch (row.type) {
    case Type::Amt:
      return messages::AmountText(number);
    case Type::Price:
    case Type::Quan:
    case Type::Percent:
      return messages::DecimalText(number);
    case Type::TimeInterval:
      throw PlatformError(error::kConversion);
    case Type::Int:
      return fmt::format("{}", std::llrint(number));
    case Type::Bool:
      return messages::BoolText(number != 0);
    case Type::Enum:
      return EnumText(row, number);
    case Type::Date:
    case Type::DateTime:
      return DateValueText(row, Date::FromSerial(number));
    default:
      return NumberToText(number);
  }
}

// A text of a type that takes any.
bool GoesAsItIs(const Element& row) { return row.type == Type::Str || row.type == Type::Id; }

std::string TextValueText(const Element& row, std::string_view text) {
  switch (row.type) {
    case Type::Bool:
      return messages::BoolText(TextToBoolean(text));
    case Type::Enum:
      if (messages::IsWellFormed(row, text)) return std::string(text);
      return EnumText(row, TextToNumber(text));
    case Type::Int:
    case Type::Amt:
    case Type::Price:
    case Type::Quan:
    case Type::Percent:
      return NumberText(row, TextToNumber(text));
    case Type::Date:
    case Type::DateTime:
      return DateValueText(row, TextToDate(text));
    default:
      return std::string(text);
  }
}

void CollectValues(const RequestNode& node, const std::string& above, const Form& form,
                   std::vector<FieldText>& values) {
  for (const auto* child = node.FirstChild(); child != nullptr; child = child->Next()) {
    const auto& row = *child->Row();
    if (row.repeating || !row.KnownIn(form) || !child->IsFilled()) continue;
    const auto path = above.empty() ? std::string(row.name) : above + "." + std::string(row.name);
    if (row.HasChildren()) {
      CollectValues(*child, path, form, values);
    } else {
      values.push_back({.path = path,
                        .text = XmlText(child->Value()),
                        .isMended = !IsXmlText(child->Value()),
                        .maxLength = row.maxLength,
                        .type = row.type});
    }
  }
}

}  // namespace

RequestNode* RequestField::FindNode() const { return row_ == nullptr ? parent_ : parent_->Child(row_, item_); }

RequestNode& RequestField::Node() const {
  if (row_ == nullptr) return *parent_;
  auto* node = parent_->Child(row_, item_);
  return node != nullptr ? *node : parent_->AddChild(*row_);
}

RequestField RequestField::operator[](std::string_view name) const {
  auto& node = Node();
  const auto* child = messages::FindChild(node.Rows(), name);
  if (child == nullptr) {
    throw PlatformError(error::kNameUnknown, fmt::format("{}: {}", ErrorText(error::kNameUnknown), name));
  }
  return {&node, child, 0};
}

const Element& RequestField::ValueRow() const {
  if (row_ == nullptr || row_->HasChildren()) throw PlatformError(error::kNameUnknown);
  return *row_;
}

void RequestField::Store(std::string_view wireText) const {
  auto& node = Node();
  node.SetValue(wireText);
  KeepToThisBranch(node);
}

void RequestField::SetValue(std::string_view text) const {
  const auto& row = ValueRow();
  if (GoesAsItIs(row)) return Store(text);
  Store(TextValueText(row, text));
}
void RequestField::SetValue(bool value) const {
  const auto& row = ValueRow();
  Store(row.type == Type::Bool ? messages::BoolText(value) : TextValueText(row, value ? "True" : "False"));
}
void RequestField::SetValue(Date date) const { Store(DateValueText(ValueRow(), date)); }
void RequestField::SetValue(const messages::TimeInterval& span) const {
  if (ValueRow().type != Type::TimeInterval) throw PlatformError(error::kConversion);
  Store(messages::TimeIntervalText(span));
}
void RequestField::SetValue(Currency amount) const {
  const auto& row = ValueRow();
  switch (row.type) {
    case Type::Amt:
      return Store(messages::AmountText(amount));
    case Type::Price:
    case Type::Quan:
    case Type::Percent:
      return Store(ToText(amount));
    default:
      return SetNumber(amount.ToDouble());
  }
}
void RequestField::SetNumber(double number) const { Store(NumberText(ValueRow(), number)); }

void RequestField::Unset() const {
  auto* node = FindNode();
  if (node != nullptr) node->Clear();
}

void RequestField::Keep() const {
  if (row_ == nullptr || row_->type != Type::Aggregate) throw PlatformError(error::kNameUnknown);
  auto& node = Node();
  node.Keep();
  KeepToThisBranch(node);
}

void RequestField::Add(std::string_view text) const {
  if (row_ == nullptr || !row_->repeating) throw PlatformError(error::kNameUnknown);
  RequestField(parent_, row_, Count()).SetValue(text);
}

void RequestField::Add(int number) const {
  if (row_ == nullptr || !row_->repeating) throw PlatformError(error::kNameUnknown);
  RequestField(parent_, row_, Count()).SetValue(number);
}

RequestField RequestField::Append() const {
  if (row_ == nullptr || !row_->repeating) throw PlatformError(error::kNameUnknown);
  const RequestField added(parent_, row_, Count());
  KeepToThisBranch(added.Node());
  return added;
}

std::size_t RequestField::Count() const { return parent_->Count(row_); }

RequestField RequestField::GetAt(std::size_t index) const {
  if (index >= Count()) throw PlatformError(error::kBadArgument);
  return {parent_, row_, index};
}

std::vector<FieldText> RequestField::Values(const Form& form) const {
  std::vector<FieldText> values;
  if (const auto* node = FindNode()) CollectValues(*node, "", form, values);
  return values;
}

std::string RequestField::GetValue() const {
  const auto* node = FindNode();
  return node == nullptr ? std::string() : std::string(node->Value());
}

bool RequestField::IsSet() const {
  const auto* node = FindNode();
  return node != nullptr && node->IsFilled();
}

int RequestField::GetMaxLength() const {
  const int length = ValueRow().maxLength;
  return length > 0 ? length : std::numeric_limits<int>::max();
}

int RequestField::ORType() const {
  if (row_ == nullptr || row_->type != Type::Choice) throw PlatformError(error::kNameUnknown);
  const auto* node = FindNode();
  if (node == nullptr) return -1;
  const auto branches = row_->Children();
  for (std::size_t i = 0; i < branches.size(); ++i) {
    const auto* branch = node->Child(&branches[i], 0);
    if (branch != nullptr && branch->IsFilled()) return static_cast<int>(i);
  }
  return -1;
}

// The first part of it in one piece with what hands it out.
struct MsgSetRequest::Memory {
  std::array<std::byte, kFirstMemory> first;
  std::pmr::monotonic_buffer_resource resource{first.data(), first.size()};
};

MsgSetRequest::MsgSetRequest(Form form, messages::MessageSet kind) : form_(form), kind_(kind) {}
MsgSetRequest::~MsgSetRequest() = default;
MsgSetRequest::MsgSetRequest(MsgSetRequest&&) noexcept = default;
MsgSetRequest& MsgSetRequest::operator=(MsgSetRequest&&) noexcept = default;

RequestField MsgSetRequest::Append(std::string_view requestName) {
  const auto* message = messages::FindMessage(requestName);
  if (message == nullptr || message->set != kind_) {
    throw PlatformError(error::kNameUnknown, fmt::format("{}: {}", ErrorText(error::kNameUnknown), requestName));
  }
  if (!memory_) memory_ = std::make_unique_for_overwrite<Memory>();  // many a set stays empty
  auto* request =
      std::pmr::polymorphic_allocator<>(&memory_->resource).new_object<RequestNode>(memory_->resource, *message);
  requests_.push_back({.node = request, .name = {}});
  // Of most messages the fields stand in one aggregate of the message's own name: that is the request object.
  const auto rows = message->request;
  const bool wrapped = rows.size() == 1 && rows[0].type == Type::Aggregate && rows[0].name == message->name;
  return {request, wrapped ? rows.data() : nullptr, 0};
}

std::string_view MsgSetRequest::LastRequest() const { return requests_.back().node->Message()->name; }

std::string MsgSetRequest::ToXMLString(bool* mended, const MessageSetIds* ids) const {
  const bool company = kind_ == messages::MessageSet::Company;
  const std::string_view set = company ? "QBXMLMsgsRq" : "QBXMLSubscriptionMsgsRq";
  constexpr std::size_t kRoom = 1024;  // most sets need no more
  std::string xml;
  xml.reserve(kRoom);
  xml.append("<?xml version=\"1.0\"?><?qbxml version=\"");
  xml.append(messages::FormTag(form_)).append("\"?><QBXML><").append(set);
  if (company) xml.append(" onError=\"").append(onError_ == OnError::Continue ? "continueOnError\"" : "stopOnError\"");
  if (ids != nullptr && !ids->newId.empty()) xml.append(" newMessageSetID=\"").append(ids->newId).append("\"");
  if (ids != nullptr && !ids->oldId.empty()) xml.append(" oldMessageSetID=\"").append(ids->oldId).append("\"");
  xml += ">";
  for (std::size_t i = 0; i < requests_.size(); ++i) {
    const auto& request = requests_[i];
    const auto name = request.node->Message()->RequestName();
    xml.append("<").append(name).append(" requestID=\"");
    if (ids != nullptr && !request.name.empty()) {
      detail::AppendEscaped(xml, request.name);
    } else {
      xml.append(std::to_string(i + 1));
    }
    xml += "\">";
    detail::WriteRequest(*request.node, form_, xml, mended);
    xml.append("</").append(name).append(">");
  }
  xml.append("</").append(set).append("></QBXML>");
  return xml;
}

}  // namespace twqb
