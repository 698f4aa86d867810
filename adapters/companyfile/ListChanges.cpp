#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "adapters/companyfile/ListRequests.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/References.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/Terms.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

using messages::Element;

constexpr std::string_view kParentRef = "ParentRef";
constexpr std::string_view kName = "Name";

const Element& RecordRow(const Request& request) { return request.message->response.front(); }

// The element that carries the fields: CustomerAdd in CustomerAddRq.
pugi::xml_node Fields(const Request& request) { return ChildElement(request.node, request.message->name); }
std::span<const Element> FieldRows(const Request& request) { return request.message->request.front().Children(); }

void CheckName(const ListKind& kind, std::string_view name) {
  if (NameKey(name).empty()) Refuse(status::MissingElement(kName));
  if (name.find(kLevelSeparator) != std::string_view::npos) Refuse(status::ColonInName(name, kind.name));
}

// The texts of the name's parts, joined; of a part that is not given, what it was.
std::string JoinParts(const ListKind& kind, pugi::xml_node fields, const std::string& previousBody) {
  pugi::xml_document earlier;
  ParseBody(earlier, previousBody);
  std::string name;
  for (const auto part : kind.nameParts) {
    const auto text = ChildText(ChildElement(fields, part) ? fields : earlier, part);
    if (!text.empty()) name.append(name.empty() ? "" : " ").append(text);
  }
  return name;
}

// The name that a request leads to. Where its form has no Name, it is made of parts as soon as one of them is given.
std::string NewName(const ListContext& context, const Request& request, const ListRecord& before) {
  const auto& kind = context.kind;
  const auto fields = Fields(request);
  if (const auto name = ChildElement(fields, kName)) return name.text().get();
  const auto* row = FindRow(FieldRows(request), kName);
  const bool isMadeOfParts = row == nullptr || !row->KnownIn(context.form) || before.listId.empty();
  const bool anyPart =
      std::ranges::any_of(kind.nameParts, [&](auto part) { return static_cast<bool>(ChildElement(fields, part)); });
  return isMadeOfParts && anyPart ? JoinParts(kind, fields, before.body) : before.name;
}

// The parent that a request gives; nothing when it gives none.
std::optional<ListRecord> FindParent(const ListContext& context, pugi::xml_node fields) {
  const auto reference = ReadReference(ChildElement(fields, kParentRef));
  if (reference.Value().empty()) return std::nullopt;
  auto parent = reference.listId.empty() ? context.store.FindByFullKey(context.kind, FullNameKey(reference.fullName))
                                         : context.store.FindById(context.kind, reference.listId);
  if (parent) return parent;
  if (!reference.listId.empty() && context.store.FindById(reference.listId)) {
    Refuse(status::ReferenceOfWrongKind(kParentRef, reference.listId, context.kind.name));
  }
  if (context.store.WasDeleted(reference.listId)) {
    Refuse(status::ReferenceGone(kParentRef, reference.listId, context.kind.name));
  }
  Refuse(status::BadParent(reference.Value(), context.kind.name, kNoSuchRecord));
}

void CheckDepth(const ListContext& context, const ListRecord& parent, int levels) {
  if (parent.sublevel + levels >= context.kind.maxLevels) {
    Refuse(status::BadParent(parent.fullName, context.kind.name, "Records of this list cannot be nested any deeper."));
  }
}

void CheckType(const ListContext& context, const ListRecord& record, const std::optional<ListRecord>& parent) {
  if (parent && parent->type != record.type) {
    Refuse(status::BadParent(parent->fullName, context.kind.name, "A record has the type of its parent."));
  }
}

void CheckNameIsFree(const ListContext& context, const ListRecord& record) {
  const auto user = context.store.KindUsingName(context.kind, record.parentId, NameKey(record.name), record.listId);
  if (!user) return;
  if (*user == context.kind.name && context.kind.nameClash == NameClash::SavingError) {
    Refuse(status::CannotSave(context.kind.name, "The name of the list element is already in use."));
  }
  Refuse(status::NameInUse(record.name));
}

void CheckNumberIsFree(const ListContext& context, const ListRecord& record) {
  if (context.store.IsNumberInUse(context.kind, record.number, record.listId)) {
    Refuse(status::CannotSave(context.kind.name, "The number \"" + record.number + "\" is already in use."));
  }
}

void CheckPersonalData(const ListContext& context, pugi::xml_node fields) {
  for (const auto field : WithheldFields(context)) {
    if (ChildElement(fields, field)) Refuse(status::PersonalDataWithheld(field));
  }
}

// A change for one branch of a choice ("SalesAndPurchaseMod") does not fit a record that has the other.
void CheckBranches(const ListContext& context, pugi::xml_node fields, const ListRecord& before,
                   std::span<const Element> rows) {
  pugi::xml_document body;
  ParseBody(body, before.body);
  for (const auto& choice : rows) {
    if (choice.type != messages::Type::Choice) continue;
    for (const auto& held : choice.Children()) {
      if (!ChildElement(body, held.name)) continue;
      for (const auto& other : choice.Children()) {
        const auto change = std::string(other.name) + "Mod";
        if (other.name != held.name && ChildElement(fields, change)) {
          Refuse(status::CannotModify(context.kind.name,
                                      "It has " + std::string(held.name) + " and cannot take " + change + "."));
        }
      }
    }
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

std::string ReadText(pugi::xml_node fields, std::string_view name, const std::string& otherwise) {
  const auto field = name.empty() ? pugi::xml_node{} : ChildElement(fields, name);
  return field ? field.text().get() : otherwise;
}

bool ReadActive(pugi::xml_node fields, bool otherwise) {
  return messages::ParseBool(ChildText(fields, "IsActive")).value_or(otherwise);
}

// The fields that a request of either kind sets, as the record will have them.
void Fill(ListRecord& record, const ListContext& context, const Request& request) {
  const auto fields = Fields(request);
  record.type = ReadText(fields, context.kind.typeField, record.type);
  record.number = ReadText(fields, context.kind.numberField, record.number);
  record.active = ReadActive(fields, record.active);
}

std::vector<std::string> ReadUses(const ListRecord& record) {
  pugi::xml_document body;
  ParseBody(body, record.body);
  return UsesOf(body);
}

ListRecord Add(const ListContext& context, const Request& request) {
  const auto fields = Fields(request);
  CheckPersonalData(context, fields);
  CheckTerms(fields);
  ListRecord record;
  record.name = NewName(context, request, record);
  CheckName(context.kind, record.name);
  Fill(record, context, request);
  const auto parent = FindParent(context, fields);
  if (parent) CheckDepth(context, *parent, 1);
  CheckType(context, record, parent);
  record.body = BuildBody(fields, {}, RecordRow(request).Children(), context.store, context.kind.name);
  Place(record, parent);
  CheckNameIsFree(context, record);
  CheckNumberIsFree(context, record);

  record.listId = context.store.NewListId(context.clock.now);
  record.created = record.modified = record.editSequence = context.clock.now;
  record.balance = record.totalBalance = messages::ParseAmount(ChildText(fields, "OpenBalance")).value_or(Currency{});
  context.store.Insert(context.kind, record);
  if (const auto uses = ReadUses(record); !uses.empty()) context.store.SetUses(record.listId, uses);
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
  CheckPersonalData(context, fields);
  const auto listId = ChildText(fields, "ListID");
  const auto before = context.store.FindById(context.kind, listId);
  if (!before) Refuse(status::ObjectNotFound(listId));
  const auto sequence = ChildText(fields, "EditSequence");
  if (sequence != std::to_string(before->editSequence)) Refuse(status::EditSequenceOutOfDate(sequence));

  auto after = *before;
  after.name = NewName(context, request, *before);
  CheckName(context.kind, after.name);
  Fill(after, context, request);
  const auto parent = NewParent(context, fields, *before);
  CheckType(context, after, parent);
  const auto rows = RecordRow(request).Children();
  CheckBranches(context, fields, *before, rows);
  after.body = BuildBody(fields, before->body, rows, context.store, context.kind.name);
  Place(after, parent);
  CheckNameIsFree(context, after);
  CheckNumberIsFree(context, after);

  after.modified = context.clock.now;
  after.editSequence = std::max(context.clock.now, before->editSequence + 1);
  context.store.Update(context.kind, *before, after);
  context.store.SetUses(after.listId, ReadUses(after));
  return after;
}

void AnswerChange(const ListContext& context, const Request& request, Response& response,
                  ListRecord (*change)(const ListContext&, const Request&)) {
  try {
    RequireEdition(context);
    const auto record = change(context, request);
    RecordWriter writer(context.store, context.kind, RecordRow(request), context.form, context.clock);
    for (const auto field : WithheldFields(context)) writer.LeaveOut(field);
    response.Begin({});
    writer.Append(response.Content(), record);
    response.End();
  } catch (const Refused& refused) {
    response.Answer(refused.status);
  }
}

}  // namespace

void RequireEdition(const ListContext& context) {
  const auto country = static_cast<messages::Countries>(context.store.Options().country);
  if ((context.kind.editions & country) == 0) Refuse(status::FeatureNotEnabled(context.kind.name));
}

std::span<const std::string_view> WithheldFields(const ListContext& context) {
  const auto fields = context.kind.personalFields;
  if (fields.empty() || context.store.ReadConditions().personalData == Permission::Granted) return {};
  return fields;
}

void AddRecord(const ListContext& context, const Request& request, Response& response) {
  AnswerChange(context, request, response, Add);
}

void ModifyRecord(const ListContext& context, const Request& request, Response& response) {
  AnswerChange(context, request, response, Modify);
}

}  // namespace twqb::company
