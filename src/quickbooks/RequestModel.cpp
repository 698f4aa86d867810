#include "quickbooks/RequestModel.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"

namespace twqb {

using messages::Element;
using messages::Form;
using messages::Type;

namespace detail {

// One element, or one step of a path. The children of one row stand together, in the order in which they were added.
struct RequestNode {
  RequestNode(RequestNode* parentNode, const Element* rowOfNode) : parent(parentNode), row(rowOfNode) {}

  RequestNode* parent;
  const Element* row;                          // nullptr: a request
  const messages::Message* message = nullptr;  // of a request
  std::string value;
  bool hasValue = false;
  std::vector<std::unique_ptr<RequestNode>> children;

  [[nodiscard]] std::span<const Element> Rows() const {
    return message != nullptr ? message->request : row->Children();
  }
  [[nodiscard]] RequestNode* Child(const Element* of, std::size_t item) const {
    for (const auto& child : children) {
      if (child->row == of && item-- == 0) return child.get();
    }
    return nullptr;
  }
  RequestNode& AddChild(const Element* of) { return *children.emplace_back(std::make_unique<RequestNode>(this, of)); }
  // Whether anything of it would go on the wire.
  [[nodiscard]] bool IsFilled() const {
    return hasValue ||
           std::ranges::any_of(children, [](const std::unique_ptr<RequestNode>& child) { return child->IsFilled(); });
  }
};

}  // namespace detail

namespace {

using detail::RequestNode;

// Something below `node` was set: of every choice above it, the other branches go.
void KeepToThisBranch(RequestNode& node) {
  for (RequestNode* at = &node; at->parent != nullptr; at = at->parent) {
    auto& above = *at->parent;
    if (above.row == nullptr || above.row->type != Type::Choice) continue;
    std::erase_if(above.children, [at](const std::unique_ptr<RequestNode>& child) { return child->row != at->row; });
  }
}

void AppendEscaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\r':
        out += "&#13;";
        break;
      default:
        out += c;
    }
  }
}

// Writes what is set, in the schema's order, and raises when a required choice of what is there is empty.
class Writer {
 public:
  // `mended` becomes true for a text that can't go as it is.
  Writer(const Form& form, std::string& out, bool* mended) : form_(form), out_(out), mended_(mended) {}

  void WriteChildren(const RequestNode& node) {
    for (const auto& row : node.Rows()) {
      if (!row.KnownIn(form_)) continue;
      bool any = false;
      for (const auto& child : node.children) {
        if (child->row != &row || !child->IsFilled() || !IsValueKnown(*child)) continue;
        any = true;
        WriteNode(*child);
      }
      if (!any && row.type == Type::Choice && !row.optional) {
        throw PlatformError(error::kRequestIncomplete,
                            fmt::format("{} ({})", ErrorText(error::kRequestIncomplete), row.name));
      }
    }
  }

 private:
  // Of an enumeration the form may have the field, but not the value.
  [[nodiscard]] bool IsValueKnown(const RequestNode& node) const {
    return node.row->type != Type::Enum || messages::IsWellFormed(*node.row, node.value, form_);
  }

  void WriteNode(const RequestNode& node) {
    if (node.row->LeavesNoElement()) {
      WriteChildren(node);
      return;
    }
    out_.append("<").append(node.row->name).append(">");
    if (node.row->type == Type::Aggregate) {
      WriteChildren(node);
    } else {
      WriteValue(node);
    }
    out_.append("</").append(node.row->name).append(">");
  }

  void WriteValue(const RequestNode& node) {
    if (IsXmlText(node.value)) return AppendEscaped(out_, node.value);
    AppendEscaped(out_, XmlText(node.value));
    if (mended_ != nullptr) *mended_ = true;
  }

  const Form& form_;
  std::string& out_;
  bool* mended_;
};

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

}  // namespace

RequestNode* RequestField::FindNode() const { return row_ == nullptr ? parent_ : parent_->Child(row_, item_); }

RequestNode& RequestField::Node() const {
  if (row_ == nullptr) return *parent_;
  auto* node = parent_->Child(row_, item_);
  return node != nullptr ? *node : parent_->AddChild(row_);
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

void RequestField::Store(std::string wireText) const {
  auto& node = Node();
  node.value = std::move(wireText);
  node.hasValue = true;
  KeepToThisBranch(node);
}

void RequestField::SetValue(std::string_view text) const { Store(TextValueText(ValueRow(), text)); }
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
  if (node == nullptr) return;
  node->value.clear();
  node->hasValue = false;
  node->children.clear();
}

void RequestField::Keep() const {
  if (row_ == nullptr || row_->type != Type::Aggregate) throw PlatformError(error::kNameUnknown);
  auto& node = Node();
  node.hasValue = true;
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

std::size_t RequestField::Count() const {
  return static_cast<std::size_t>(std::ranges::count_if(
      parent_->children, [this](const std::unique_ptr<RequestNode>& child) { return child->row == row_; }));
}

RequestField RequestField::GetAt(std::size_t index) const {
  if (index >= Count()) throw PlatformError(error::kBadArgument);
  return {parent_, row_, index};
}

std::string RequestField::GetValue() const {
  const auto* node = FindNode();
  return node == nullptr ? std::string() : node->value;
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

MsgSetRequest::MsgSetRequest(Form form, messages::MessageSet kind) : form_(form), kind_(kind) {}
MsgSetRequest::~MsgSetRequest() = default;
MsgSetRequest::MsgSetRequest(MsgSetRequest&&) noexcept = default;
MsgSetRequest& MsgSetRequest::operator=(MsgSetRequest&&) noexcept = default;

RequestField MsgSetRequest::Append(std::string_view requestName) {
  const auto* message = messages::FindMessage(requestName);
  if (message == nullptr || message->set != kind_) {
    throw PlatformError(error::kNameUnknown, fmt::format("{}: {}", ErrorText(error::kNameUnknown), requestName));
  }
  names_.emplace_back();
  auto& request = requests_.emplace_back(std::make_unique<RequestNode>(nullptr, nullptr));
  request->message = message;
  // Of most messages the fields stand in one aggregate of the message's own name: that is the request object.
  const auto rows = message->request;
  const bool wrapped = rows.size() == 1 && rows[0].type == Type::Aggregate && rows[0].name == message->name;
  return {request.get(), wrapped ? rows.data() : nullptr, 0};
}

std::string_view MsgSetRequest::LastRequest() const { return requests_.back()->message->name; }

std::string MsgSetRequest::ToXMLString(bool* mended, const MessageSetIds* ids) const {
  const bool company = kind_ == messages::MessageSet::Company;
  const std::string_view set = company ? "QBXMLMsgsRq" : "QBXMLSubscriptionMsgsRq";
  auto xml = fmt::format("<?xml version=\"1.0\"?><?qbxml version=\"{}\"?><QBXML><{}", messages::FormTag(form_), set);
  if (company) xml += fmt::format(" onError=\"{}\"", onError_ == OnError::Continue ? "continueOnError" : "stopOnError");
  if (ids != nullptr && !ids->newId.empty()) xml += fmt::format(" newMessageSetID=\"{}\"", ids->newId);
  if (ids != nullptr && !ids->oldId.empty()) xml += fmt::format(" oldMessageSetID=\"{}\"", ids->oldId);
  xml += ">";
  for (std::size_t i = 0; i < requests_.size(); ++i) {
    const auto name = requests_[i]->message->RequestName();
    xml += fmt::format("<{} requestID=\"", name);
    if (ids != nullptr && !names_[i].empty()) {
      AppendEscaped(xml, names_[i]);
    } else {
      xml += fmt::format("{}", i + 1);
    }
    xml += "\">";
    Writer(form_, xml, mended).WriteChildren(*requests_[i]);
    xml += fmt::format("</{}>", name);
  }
  return xml + fmt::format("</{}></QBXML>", set);
}

}  // namespace twqb
