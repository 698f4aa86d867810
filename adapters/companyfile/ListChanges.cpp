#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "adapters/companyfile/ListRequests.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

using messages::Element;

constexpr std::string_view kParentRef = "ParentRef";

// Ends a request with its status; caught where the request began.
struct Refused {
  Status status;
};

[[noreturn]] void Refuse(Status status) { throw Refused{std::move(status)}; }

const Element& RecordRow(const Request& request) { return request.message->response.front(); }

// The element that carries the fields: CustomerAdd in CustomerAddRq.
pugi::xml_node Fields(const Request& request) { return ChildElement(request.node, request.message->name); }

// What a reference names: its identifier, and only without one its full name. Empty: it names nothing.
struct Reference {
  std::string_view listId;
  std::string_view fullName;
  [[nodiscard]] std::string_view Value() const { return listId.empty() ? fullName : listId; }
};
Reference ReadReference(pugi::xml_node node) {
  return {.listId = ChildText(node, "ListID"), .fullName = ChildText(node, "FullName")};
}

void CheckName(std::string_view name) {
  if (NameKey(name).empty()) Refuse(status::MissingElement("Name"));
  if (name.find(kLevelSeparator) != std::string_view::npos) Refuse(status::ColonInName(name));
}

// The parent that a request gives; nothing when it gives none.
std::optional<ListRecord> FindParent(const ListContext& context, pugi::xml_node fields) {
  const auto reference = ReadReference(ChildElement(fields, kParentRef));
  if (reference.Value().empty()) return std::nullopt;
  auto parent = reference.listId.empty() ? context.store.FindByFullKey(context.kind, FullNameKey(reference.fullName))
                                         : context.store.FindById(context.kind, reference.listId);
  if (!parent) Refuse(status::BadParent(reference.Value(), context.kind.name, kNoSuchRecord));
  return parent;
}

void CheckDepth(const ListContext& context, const ListRecord& parent, int levels) {
  if (parent.sublevel + levels >= context.kind.maxLevels) {
    Refuse(status::BadParent(parent.fullName, context.kind.name, "Records of this list cannot be nested any deeper."));
  }
}

// No other list is kept in the file, so a reference to one names nothing that exists.
void CheckReferences(const ListContext& context, pugi::xml_node fields, std::span<const Element> rows) {
  for (const auto field : fields.children()) {
    const std::string_view name = field.name();
    const auto* row = FindRow(rows, name);
    if (row == nullptr || name == kParentRef || !name.ends_with("Ref")) continue;
    if (const auto value = ReadReference(field).Value(); !value.empty()) {
      Refuse(status::BadReference(name, value, context.kind.name));
    }
  }
}

void CheckNameIsFree(const ListContext& context, const ListRecord& record) {
  if (context.store.IsNameInUse(context.kind, record.parentId, NameKey(record.name), record.listId)) {
    Refuse(status::NameInUse(record.name));
  }
}

// Puts the record under a parent, or at the top, and forms the names that follow from it.
void Place(ListRecord& record, const std::optional<ListRecord>& parent) {
  const auto key = NameKey(record.name);
  record.parentId = parent ? parent->listId : std::string{};
  record.parentFullName = parent ? parent->fullName : std::string{};
  record.fullName = parent ? parent->fullName + kLevelSeparator + record.name : record.name;
  record.fullKey = parent ? ChildKey(parent->fullKey, key) : key;
  record.sublevel = parent ? parent->sublevel + 1 : 0;
}

bool ReadActive(pugi::xml_node fields, bool otherwise) {
  return messages::ParseBool(ChildText(fields, "IsActive")).value_or(otherwise);
}

ListRecord Add(const ListContext& context, const Request& request) {
  const auto fields = Fields(request);
  ListRecord record;
  record.name = ChildText(fields, "Name");
  CheckName(record.name);
  const auto parent = FindParent(context, fields);
  if (parent) CheckDepth(context, *parent, 1);
  CheckReferences(context, fields, request.message->request.front().Children());
  Place(record, parent);
  CheckNameIsFree(context, record);

  record.listId = context.store.NewListId(context.clock.now);
  record.active = ReadActive(fields, true);
  record.created = record.modified = record.editSequence = context.clock.now;
  record.balance = record.totalBalance = messages::ParseAmount(ChildText(fields, "OpenBalance")).value_or(Currency{});
  record.body = BuildBody(fields, {}, RecordRow(request).Children());
  context.store.Insert(context.kind, record);
  return record;
}

// The parent that the record will have: the one that the request gives, or, when it says nothing, the one it has.
std::optional<ListRecord> NewParent(const ListContext& context, pugi::xml_node fields, const ListRecord& record) {
  if (!ChildElement(fields, kParentRef)) {
    return record.parentId.empty() ? std::nullopt : context.store.FindById(context.kind, record.parentId);
  }
  auto parent = FindParent(context, fields);
  if (!parent || parent->listId == record.parentId) return parent;
  const auto below = KeysBelow(record.fullKey);
  if (parent->listId == record.listId || (below.from < parent->fullKey && parent->fullKey < below.to)) {
    Refuse(status::BadParent(parent->fullName, context.kind.name, "A record cannot be moved below itself."));
  }
  CheckDepth(context, *parent, context.store.DeepestSublevel(context.kind, record) - record.sublevel + 1);
  return parent;
}

ListRecord Modify(const ListContext& context, const Request& request) {
  const auto fields = Fields(request);
  const auto listId = ChildText(fields, "ListID");
  const auto before = context.store.FindById(context.kind, listId);
  if (!before) Refuse(status::ObjectNotFound(listId));
  const auto sequence = ChildText(fields, "EditSequence");
  if (sequence != std::to_string(before->editSequence)) Refuse(status::EditSequenceOutOfDate(sequence));

  auto after = *before;
  if (const auto name = ChildElement(fields, "Name")) {
    after.name = name.text().get();
    CheckName(after.name);
  }
  const auto parent = NewParent(context, fields, *before);
  CheckReferences(context, fields, request.message->request.front().Children());
  Place(after, parent);
  CheckNameIsFree(context, after);

  after.active = ReadActive(fields, before->active);
  after.modified = context.clock.now;
  after.editSequence = std::max(context.clock.now, before->editSequence + 1);
  after.body = BuildBody(fields, before->body, RecordRow(request).Children());
  context.store.Update(context.kind, *before, after);
  return after;
}

void AnswerChange(const ListContext& context, const Request& request, Response& response,
                  ListRecord (*change)(const ListContext&, const Request&)) {
  try {
    const auto record = change(context, request);
    response.Begin({});
    RecordWriter(context.kind, RecordRow(request), context.form, context.clock).Append(response.Content(), record);
    response.End();
  } catch (const Refused& refused) {
    response.Answer(refused.status);
  }
}

}  // namespace

void AddRecord(const ListContext& context, const Request& request, Response& response) {
  AnswerChange(context, request, response, Add);
}

void ModifyRecord(const ListContext& context, const Request& request, Response& response) {
  AnswerChange(context, request, response, Modify);
}

}  // namespace twqb::company
