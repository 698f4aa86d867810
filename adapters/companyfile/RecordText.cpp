#include "adapters/companyfile/RecordText.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/XmlText.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

using messages::Element;
using messages::Type;

constexpr unsigned kBodyFlags =
    pugi::parse_minimal | pugi::parse_escapes | pugi::parse_fragment | pugi::parse_ws_pcdata_single;

// The fields that are columns of the storage.
struct ColumnField {
  std::string_view name;
  std::string (*text)(const ListRecord&, const ClockReading&);
};
constexpr std::array kColumnFields = {
    ColumnField{"ListID", [](const ListRecord& r, const ClockReading&) { return r.listId; }},
    ColumnField{"TimeCreated", [](const ListRecord& r, const ClockReading& c) { return TimeText(r.created, c); }},
    ColumnField{"TimeModified", [](const ListRecord& r, const ClockReading& c) { return TimeText(r.modified, c); }},
    ColumnField{"EditSequence",
                [](const ListRecord& r, const ClockReading&) { return std::to_string(r.editSequence); }},
    ColumnField{"Name", [](const ListRecord& r, const ClockReading&) { return r.name; }},
    ColumnField{"FullName", [](const ListRecord& r, const ClockReading&) { return r.fullName; }},
    ColumnField{"IsActive", [](const ListRecord& r, const ClockReading&) { return messages::BoolText(r.active); }},
    ColumnField{"Sublevel", [](const ListRecord& r, const ClockReading&) { return std::to_string(r.sublevel); }},
    ColumnField{"Balance",
                [](const ListRecord& r, const ClockReading&) { return messages::AmountText(r.balance.ToDouble()); }},
    ColumnField{"TotalBalance", [](const ListRecord& r,
                                   const ClockReading&) { return messages::AmountText(r.totalBalance.ToDouble()); }},
};
constexpr std::string_view kParent = "ParentRef";

const ColumnField* FindColumn(std::string_view name) {
  const auto* found = std::ranges::find(kColumnFields, name, &ColumnField::name);
  return found == kColumnFields.end() ? nullptr : found;
}

// A value as QuickBooks writes it: it reads "1" and "+5.00" and answers "true" and "5.00".
std::string AnswerText(const Element& row, std::string_view text) {
  switch (row.type) {
    case Type::Bool:
      if (const auto value = messages::ParseBool(text)) return messages::BoolText(*value);
      break;
    case Type::Amt:
      if (const auto value = messages::ParseAmount(text)) return messages::AmountText(value->ToDouble());
      break;
    case Type::Int: {
      std::int64_t value = 0;
      const auto digits = text.substr(text.starts_with('+') ? 1 : 0);
      const auto* end = digits.data() + digits.size();
      if (const auto read = std::from_chars(digits.data(), end, value); read.ptr == end && !digits.empty()) {
        return std::to_string(value);
      }
      break;
    }
    default:
      break;
  }
  return std::string(text);
}

// Writes `node` as `row` says, without what `form` does not know (null: it knows all). Nothing is written for what has
// no content.
void AppendElement(std::string& out, pugi::xml_node node, const Element& row, const messages::Form* form) {
  if (row.type != Type::Aggregate) {
    AppendLeaf(out, row.name, AnswerText(row, node.text().get()));
    return;
  }
  const auto start = out.size();
  AppendOpenTag(out, row.name);
  const auto content = out.size();
  ForEachElementRow(row.Children(), [&](const Element& child) {
    if (form != nullptr && !child.KnownIn(*form)) return;
    for (const auto element : node.children()) {
      if (child.name == element.name()) AppendElement(out, element, child, form);
    }
  });
  if (out.size() == content) {
    out.resize(start);
  } else {
    AppendCloseTag(out, row.name);
  }
}

void AppendNamed(std::string& out, pugi::xml_node parent, const Element& row, const messages::Form* form) {
  for (const auto element : parent.children()) {
    if (row.name == element.name()) AppendElement(out, element, row, form);
  }
}

void AppendParent(std::string& out, const ListRecord& record) {
  if (record.parentId.empty()) return;
  AppendOpenTag(out, kParent);
  AppendLeaf(out, "ListID", record.parentId);
  AppendLeaf(out, "FullName", record.parentFullName);
  AppendCloseTag(out, kParent);
}

}  // namespace

std::string BuildBody(pugi::xml_node given, const std::string& previous, std::span<const Element> rows) {
  pugi::xml_document earlier;
  earlier.load_buffer(previous.data(), previous.size(), kBodyFlags, pugi::encoding_utf8);
  std::string body;
  ForEachElementRow(rows, [&](const Element& row) {
    if (row.name == kParent || FindColumn(row.name) != nullptr) return;
    AppendNamed(body, ChildElement(given, row.name) ? given : earlier, row, nullptr);
  });
  return body;
}

void RecordWriter::Append(std::string& out, const ListRecord& record) {
  body_.load_buffer(record.body.data(), record.body.size(), kBodyFlags, pugi::encoding_utf8);
  AppendOpenTag(out, record_.name);
  ForEachElementRow(record_.Children(), [&](const Element& row) {
    if (!row.KnownIn(form_)) return;
    if (row.name == kParent) {
      AppendParent(out, record);
    } else if (const auto* column = FindColumn(row.name)) {
      AppendLeaf(out, row.name, column->text(record, clock_));
    } else if (ChildElement(body_, row.name)) {
      AppendNamed(out, body_, row, &form_);
    } else if (const auto value = std::ranges::find(kind_.defaults, row.name, &FieldDefault::field);
               value != kind_.defaults.end()) {
      AppendLeaf(out, row.name, value->value);
    }
  });
  AppendCloseTag(out, record_.name);
}

}  // namespace twqb::company
