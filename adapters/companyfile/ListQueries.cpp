#include <algorithm>
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
  std::vector<ListRecord> records;
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

void AnswerNamed(Named named, ListOrder order, RecordWriter& writer, Response& response) {
  std::ranges::sort(named.records, {}, [order](const ListRecord& record) {
    return std::pair(order == ListOrder::FullName ? std::string{} : NameKey(record.name), record.fullKey);
  });
  const auto same = [](const ListRecord& a, const ListRecord& b) { return a.listId == b.listId; };
  named.records.erase(std::unique(named.records.begin(), named.records.end(), same), named.records.end());
  response.Begin(named.missing ? status::QueryIncomplete(*named.missing) : Status{});
  for (const auto& record : named.records) writer.Append(response.Content(), record);
  response.End();
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
  RecordWriter writer(store, kind, request.message->response.front(), context.form, context.clock);
  for (const auto field : WithheldFields(context)) writer.LeaveOut(field);

  Named named;
  CollectNamed(query, "ListID", named, [&](std::string_view id) { return store.FindById(kind, id); });
  CollectNamed(query, "FullName", named,
               [&](std::string_view name) { return store.FindByFullKey(kind, FullNameKey(name)); });
  if (!named.records.empty() || named.missing) return AnswerNamed(std::move(named), kind.order, writer, response);

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

}  // namespace twqb::company
