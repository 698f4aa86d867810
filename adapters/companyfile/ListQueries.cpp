#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/companyfile/ListRequests.h"
#include "adapters/companyfile/QueryFields.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "messages/ValueFormat.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

using messages::Element;

std::optional<std::string> ReadNameKey(pugi::xml_node parent, std::string_view name) {
  const auto text = ChildText(parent, name);
  return text.empty() ? std::nullopt : std::optional(NameKey(text));
}

RecordFilter ReadFilter(const ListKind& kind, pugi::xml_node query, std::span<const Element> rows,
                        const ClockReading& clock) {
  RecordFilter filter;
  filter.maxReturned = ReadMaxReturned(query);
  filter.activeStatus = ReadEnumeration<ActiveStatus>(query, rows, "ActiveStatus").value_or(ActiveStatus::ActiveOnly);
  filter.modifiedFrom = ReadTime(query, "FromModifiedDate", Bound::Lower, clock);
  filter.modifiedTo = ReadTime(query, "ToModifiedDate", Bound::Upper, clock);

  const auto match = ChildElement(query, "NameFilter");
  const auto matchRows = RowsInside(rows, "NameFilter");
  if (const auto criterion = ReadEnumeration<MatchCriterion>(match, matchRows, "MatchCriterion")) {
    const auto text = ChildText(match, "Name");
    filter.nameMatch = {.criterion = *criterion,
                        .text = *criterion == MatchCriterion::EndsWith ? NameKey(text) : FoldCase(text)};
  }
  const auto range = ChildElement(query, "NameRangeFilter");
  filter.nameFrom = ReadNameKey(range, "FromName");
  filter.nameTo = ReadNameKey(range, "ToName");

  const auto balance = ChildElement(query, "TotalBalanceFilter");
  const auto balanceRows = RowsInside(rows, "TotalBalanceFilter");
  if (const auto comparison = ReadEnumeration<Comparison>(balance, balanceRows, "Operator")) {
    filter.totalBalance = {.comparison = *comparison,
                           .amount = messages::ParseAmount(ChildText(balance, "Amount")).value_or(Currency{})};
  }
  for (const auto node : query.children()) {
    if (!kind.typeField.empty() && kind.typeField == node.name()) filter.types.emplace_back(node.text().get());
  }
  return filter;
}

// The records that are named one by one, each once, in the order of the list.
struct Named {
  std::vector<FoundRecord> records;
  std::optional<std::string> missing;  // the first that is not there
};

template <typename Find>
void CollectNamed(pugi::xml_node query, std::string_view element, Named& named, const Find& find) {
  for (const auto node : query.children()) {
    if (element != node.name()) continue;
    const std::string_view value = node.text().get();
    if (auto record = find(value)) {
      named.records.push_back(std::move(*record));
    } else if (!named.missing) {
      named.missing = value;
    }
  }
}

using Kinds = std::span<const ListKind* const>;

// What `find` answers for the first of the kinds of which it answers anything.
template <typename Find>
std::optional<FoundRecord> FindIn(Kinds kinds, const Find& find) {
  for (const auto* kind : kinds) {
    if (auto record = find(*kind)) return FoundRecord{.kind = kind, .record = std::move(*record)};
  }
  return std::nullopt;
}

// Nothing for a query that names none.
std::optional<Named> FindNamed(CompanyStore& store, Kinds kinds, pugi::xml_node query) {
  Named named;
  CollectNamed(query, "ListID", named, [&](std::string_view id) {
    return FindIn(kinds, [&](const ListKind& kind) { return store.FindById(kind, id); });
  });
  CollectNamed(query, "FullName", named, [&](std::string_view name) {
    return FindIn(kinds, [&](const ListKind& kind) { return store.FindByFullKey(kind, FullNameKey(name)); });
  });
  if (named.records.empty() && !named.missing) return std::nullopt;
  return named;
}

void Sort(std::vector<FoundRecord>& records, ListOrder order) {
  std::ranges::sort(records, {}, [order](const FoundRecord& found) {
    return std::pair(order == ListOrder::FullName ? std::string{} : NameKey(found.record.name), found.record.fullKey);
  });
}

template <typename Append>
void AnswerNamed(Named named, ListOrder order, Response& response, const Append& append) {
  Sort(named.records, order);
  const auto same = [](const FoundRecord& a, const FoundRecord& b) { return a.record.listId == b.record.listId; };
  named.records.erase(std::unique(named.records.begin(), named.records.end(), same), named.records.end());
  response.Begin(named.missing ? status::QueryIncomplete(*named.missing) : Status{});
  for (const auto& found : named.records) append(found);
  response.End();
}

// The row of a kind's record, as its own query answers with it.
const Element& RecordRow(const ListKind& kind) {
  return messages::FindMessage(std::string(kind.name).append("Query"))->response.front();
}

}  // namespace

void QueryRecords(const ListContext& context, const Request& request, Response& response) {
  try {
    RequireEdition(context);
  } catch (const Refused& refused) {
    return response.Answer(refused.status);
  }
  auto& store = context.store;
  const auto& kind = context.kind;
  const auto query = request.node;
  RecordWriter writer(store, kind, RecordRow(kind), context.form, context.clock);
  for (const auto field : WithheldFields(context)) writer.LeaveOut(field);

  const auto* const only = &kind;
  if (auto named = FindNamed(store, {&only, 1}, query)) {
    return AnswerNamed(std::move(*named), kind.order, response,
                       [&](const FoundRecord& found) { writer.Append(response.Content(), found.record); });
  }
  store.ForEach(kind, ReadFilter(kind, query, request.message->request, context.clock), [&](const ListRecord& record) {
    if (!response.HasBegun()) response.Begin({});
    writer.Append(response.Content(), record);
  });
  if (response.HasBegun()) {
    response.End();
  } else {
    response.Answer(status::NothingFound());
  }
}

void QueryRecords(const JointContext& context, const Request& request, Response& response) {
  std::vector<const ListKind*> kinds;
  std::map<const ListKind*, RecordWriter> writers;
  for (const auto name : context.list.kinds) {
    const auto* kind = kinds.emplace_back(FindListKind(name));
    writers.try_emplace(kind, context.store, *kind, RecordRow(*kind), context.form, context.clock);
  }
  const auto append = [&](const FoundRecord& found) {
    writers.at(found.kind).Append(response.Content(), found.record);
  };
  if (auto named = FindNamed(context.store, kinds, request.node)) {
    return AnswerNamed(std::move(*named), ListOrder::Name, response, append);
  }

  std::vector<FoundRecord> records;
  for (const auto* kind : kinds) {
    const auto filter = ReadFilter(*kind, request.node, request.message->request, context.clock);
    context.store.ForEach(*kind, filter, [&](const ListRecord& record) { records.push_back({kind, record}); });
  }
  if (records.empty()) return response.Answer(status::NothingFound());
  Sort(records, ListOrder::Name);
  const auto most = ReadMaxReturned(request.node);
  if (most && static_cast<std::size_t>(*most) < records.size()) records.resize(static_cast<std::size_t>(*most));
  response.Begin({});
  for (const auto& found : records) append(found);
  response.End();
}

}  // namespace twqb::company
