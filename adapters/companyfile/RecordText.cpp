#include "adapters/companyfile/RecordText.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <tuple>
#include <utility>

#include "adapters/companyfile/Refused.h"
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
    ColumnField{"ListID", [](const ListRecord& r, const ClockReading&) { return std::string(ToldId(r.listId)); }},
    ColumnField{"TimeCreated", [](const ListRecord& r, const ClockReading& c) { return TimeText(r.created, c); }},
    ColumnField{"TimeModified", [](const ListRecord& r, const ClockReading& c) { return TimeText(r.modified, c); }},
    ColumnField{"EditSequence",
                [](const ListRecord& r, const ClockReading&) { return std::to_string(r.editSequence); }},
    ColumnField{"Name", [](const ListRecord& r, const ClockReading&) { return r.name; }},
    ColumnField{"FullName", [](const ListRecord& r, const ClockReading&) { return r.fullName; }},
    ColumnField{"IsActive", [](const ListRecord& r, const ClockReading&) { return messages::BoolText(r.active); }},
    ColumnField{"Sublevel", [](const ListRecord& r, const ClockReading&) { return std::to_string(r.sublevel); }},
    ColumnField{"Balance", [](const ListRecord& r, const ClockReading&) { return messages::AmountText(r.balance); }},
    ColumnField{"TotalBalance",
                [](const ListRecord& r, const ClockReading&) { return messages::AmountText(r.totalBalance); }},
};
constexpr std::string_view kParent = "ParentRef";
constexpr std::string_view kChange = "Mod";  // behind the name of an aggregate that is merged

const ColumnField* FindColumn(std::string_view name) {
  const auto* found = std::ranges::find(kColumnFields, name, &ColumnField::name);
  return found == kColumnFields.end() ? nullptr : found;
}

// A price has at least two decimals.
std::string PriceText(std::string_view text) {
  constexpr std::size_t kCents = 2;
  const bool negative = text.starts_with('-');
  text.remove_prefix(negative || text.starts_with('+') ? 1 : 0);
  const auto point = text.find('.');
  auto whole = text.substr(0, point);
  auto fraction = point == std::string_view::npos ? std::string_view{} : text.substr(point + 1);
  while (whole.size() > 1 && whole.front() == '0') whole.remove_prefix(1);
  while (fraction.size() > kCents && fraction.back() == '0') fraction.remove_suffix(1);
  std::string price(negative ? "-" : "");
  price.append(whole.empty() ? "0" : whole).append(".").append(fraction);
  return price.append(kCents - std::min(kCents, fraction.size()), '0');
}

// An interval has hours, minutes and seconds, the last two below sixty: "PT90M" is "PT1H30M0S". Nothing for one that is
// too long to be counted.
std::optional<std::string> IntervalText(std::string_view text) {
  constexpr std::int64_t kPerUnit = 60;
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max() / (kPerUnit * kPerUnit * 2);
  text.remove_prefix(std::string_view("PT").size());
  std::int64_t seconds = 0;
  for (const auto& [unit, length] : {std::pair{'H', kPerUnit * kPerUnit}, {'M', kPerUnit}, {'S', std::int64_t{1}}}) {
    const auto end = text.find(unit);
    if (end == std::string_view::npos) continue;
    std::int64_t count = 0;
    const auto read = std::from_chars(text.data(), text.data() + end, count);
    if (read.ec != std::errc{} || count > kMost || seconds > kMost) return std::nullopt;
    seconds += count * length;
    text.remove_prefix(end + 1);
  }
  const auto minutes = seconds / kPerUnit;
  return fmt::format("PT{}H{}M{}S", minutes / kPerUnit, minutes % kPerUnit, seconds % kPerUnit);
}

// A value as QuickBooks writes it: it reads "1" and "+5.00" and answers "true" and "5.00".
std::string ValueText(const Element& row, std::string_view text) {
  if (text.empty()) return {};
  switch (row.type) {
    case Type::Bool:
      if (const auto value = messages::ParseBool(text)) return messages::BoolText(*value);
      break;
    case Type::Amt:
      if (const auto value = messages::ParseAmount(text)) return messages::AmountText(*value);
      break;
    case Type::Price:
      return PriceText(text);
    case Type::TimeInterval:
      if (const auto value = IntervalText(text)) return *value;
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

// An aggregate without content is not written.
template <typename Content>
void AppendAggregate(std::string& out, std::string_view name, const Content& append) {
  const auto start = out.size();
  AppendOpenTag(out, name);
  const auto content = out.size();
  append();
  if (out.size() == content) {
    out.resize(start);
  } else {
    AppendCloseTag(out, name);
  }
}

// Calls `visit` with each element of `parent` that has a row, and that row, in the order of the rows.
template <typename Visit>
void ForEachElement(pugi::xml_node parent, std::span<const Element> rows, const Visit& visit) {
  const NamedElements elements(parent);
  ForEachElementRow(rows, [&](const Element& row) {
    elements.ForEach(row.name, [&](pugi::xml_node element) { visit(element, row); });
  });
}

void AppendParent(std::string& out, const ListRecord& record) {
  if (!record.parentId.empty()) AppendReference(out, kParent, record.parentId, record.parentFullName);
}

// Puts a body together from what is given and what was there before.
class BodyMerge {
 public:
  BodyMerge(std::string& body, CompanyStore& store, std::string_view referrer)
      : body_(body), store_(store), referrer_(referrer) {}

  void Merge(pugi::xml_node given, pugi::xml_node earlier, std::span<const Element> rows) {
    ForEachElementRow(rows, [&](const Element& row) {
      if (IsListColumn(row.name)) return;
      if (ChildElement(given, row.name)) {
        for (const auto element : given.children()) {
          if (row.name == element.name()) StoreElement(body_, element, row, store_, referrer_);
        }
      } else if (const auto change = Change(given, row)) {
        AppendAggregate(body_, row.name, [&] { MergeChange(change, ChildElement(earlier, row.name), row.Children()); });
      } else if (!IsCleared(given, row)) {
        CopyNamed(earlier, row.name);
      }
    });
  }

 private:
  // The fields of a choice exclude each other: one that is given takes the place of the others.
  void MergeChange(pugi::xml_node given, pugi::xml_node earlier, std::span<const Element> rows) {
    for (const auto& row : rows) {
      if (row.type != Type::Choice) {
        Merge(given, earlier, {&row, 1});
        continue;
      }
      bool isGiven = false;
      ForEachElement(given, {&row, 1}, [&](pugi::xml_node, const Element&) { isGiven = true; });
      Merge(given, isGiven ? pugi::xml_node{} : earlier, {&row, 1});
    }
  }

  // What changes an aggregate: "SalesOrPurchaseMod" for SalesOrPurchase.
  [[nodiscard]] static pugi::xml_node Change(pugi::xml_node given, const Element& row) {
    if (row.type != Type::Aggregate) return {};
    return ChildElement(given, std::string(row.name).append(kChange));
  }

  // "ClearEarnings" takes away what is called Earnings.
  [[nodiscard]] static bool IsCleared(pugi::xml_node given, const Element& row) {
    if (row.type != Type::Aggregate) return false;
    const auto clear = ChildText(given, std::string("Clear").append(row.name));
    return messages::ParseBool(clear).value_or(false);
  }

  void CopyNamed(pugi::xml_node earlier, std::string_view name) {
    struct Writer : pugi::xml_writer {
      explicit Writer(std::string& text) : out(text) {}
      void write(const void* data, std::size_t size) override { out.append(static_cast<const char*>(data), size); }
      std::string& out;
    };
    Writer writer(body_);
    for (const auto element : earlier.children()) {
      if (name == element.name()) element.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
    }
  }

  std::string& body_;
  CompanyStore& store_;
  std::string_view referrer_;
};

}  // namespace

void ParseBody(pugi::xml_document& document, const std::string& body) {
  document.load_buffer(body.data(), body.size(), kBodyFlags, pugi::encoding_utf8);
}

void StoreElement(std::string& body, pugi::xml_node given, const Element& row, CompanyStore& store,
                  std::string_view referrer) {
  if (row.type != Type::Aggregate) return AppendLeaf(body, row.name, ValueText(row, given.text().get()));
  AppendAggregate(body, row.name, [&] {
    if (IsReference(row)) {
      if (const auto found = FindReferenced(store, given, referrer)) AppendLeaf(body, "ListID", found->record.listId);
      return;
    }
    // A line is told by its own name.
    const auto line = row.name.ends_with("Line") ? SpokenName(row.name) : std::string(referrer);
    ForEachElement(given, row.Children(), [&](pugi::xml_node element, const Element& child) {
      StoreElement(body, element, child, store, line);
    });
  });
}

bool IsListColumn(std::string_view field) { return field == kParent || FindColumn(field) != nullptr; }

void LayElement(std::string& body, pugi::xml_node told, const Element& row, const StoredId& storedId) {
  if (row.type != Type::Aggregate) return AppendLeaf(body, row.name, told.text().get());
  AppendAggregate(body, row.name, [&] {
    if (IsReference(row)) {
      const auto listId = storedId(row.name, ChildText(told, "ListID"));
      AppendLeaf(body, "ListID", listId);
      if (listId.ends_with(kIdOfKind)) AppendLeaf(body, "FullName", ChildText(told, "FullName"));
      return;
    }
    ForEachElement(told, row.Children(),
                   [&](pugi::xml_node element, const Element& child) { LayElement(body, element, child, storedId); });
  });
}

void AnswerElement(std::string& out, pugi::xml_node stored, const Element& row, const messages::Form& form,
                   NameCache& names) {
  if (!row.KnownIn(form)) return;
  if (row.type != Type::Aggregate) return AppendLeaf(out, row.name, stored.text().get());
  if (IsReference(row)) {
    const std::string listId(ChildText(stored, "ListID"));
    const std::string_view name = names.FullNameOf(listId);
    return AppendReference(out, row.name, listId, name.empty() ? ChildText(stored, "FullName") : name);
  }
  AppendAggregate(out, row.name, [&] {
    ForEachElement(stored, row.Children(), [&](pugi::xml_node element, const Element& child) {
      AnswerElement(out, element, child, form, names);
    });
  });
}

void AppendReference(std::string& out, std::string_view name, std::string_view listId, std::string_view fullName) {
  AppendOpenTag(out, name);
  AppendLeaf(out, "ListID", ToldId(listId));
  AppendLeaf(out, "FullName", fullName);
  AppendCloseTag(out, name);
}

std::string BuildBody(pugi::xml_node given, const std::string& previous, std::span<const Element> rows,
                      CompanyStore& store, std::string_view referrer) {
  pugi::xml_document earlier;
  ParseBody(earlier, previous);
  std::string body;
  BodyMerge(body, store, referrer).Merge(given, earlier, rows);
  return body;
}

struct RecordField {
  const Element* row;
  bool isParent = false;
  const ColumnField* column = nullptr;
  const FieldDefault* fallback = nullptr;  // where the body has nothing of it
};

std::span<const RecordField> FieldsOf(const ListKind& kind, const Element& record, const messages::Form& form) {
  // Found out once: it follows from tables that never change.
  using Key = std::tuple<const ListKind*, const Element*, messages::Country, messages::Version>;
  static std::mutex mutex;
  static std::map<Key, std::vector<RecordField>> known;
  const std::lock_guard lock(mutex);
  auto& fields = known[{&kind, &record, form.country, form.version}];
  if (!fields.empty()) return fields;
  ForEachElementRow(record.Children(), [&](const Element& row) {
    if (!row.KnownIn(form)) return;
    const auto fallback = std::ranges::find(kind.defaults, row.name, &FieldDefault::field);
    fields.push_back({.row = &row,
                      .isParent = row.name == kParent,
                      .column = FindColumn(row.name),
                      .fallback = fallback == kind.defaults.end() ? nullptr : &*fallback});
  });
  return fields;
}

void RecordWriter::Append(std::string& out, const ListRecord& record) {
  ParseBody(body_, record.body);
  elements_.Read(body_);
  constexpr std::size_t kRoom = 2048;  // most records need no more
  if (out.capacity() - out.size() < kRoom) out.reserve(std::max(out.size() + kRoom, out.capacity() * 2));
  AppendOpenTag(out, record_.name);
  for (const auto& field : fields_) {
    const bool leftOut = std::ranges::find(leftOut_, field.row->name) != leftOut_.end();
    if (!leftOut) AppendField(out, record, field);
  }
  AppendCloseTag(out, record_.name);
}

void RecordWriter::AppendField(std::string& out, const ListRecord& record, const RecordField& field) {
  const auto& row = *field.row;
  if (field.isParent) return AppendParent(out, record);
  if (field.column != nullptr) return AppendLeaf(out, row.name, field.column->text(record, clock_));
  bool isThere = false;
  elements_.ForEach(row.name, [&](pugi::xml_node element) {
    AnswerElement(out, element, row, form_, names_);
    isThere = true;
  });
  if (isThere) return;
  if (field.fallback != nullptr) AppendLeaf(out, row.name, field.fallback->value);
}

}  // namespace twqb::company
