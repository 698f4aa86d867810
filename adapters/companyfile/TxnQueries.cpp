#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/companyfile/QueryFields.h"
#include "adapters/companyfile/References.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/TxnDates.h"
#include "adapters/companyfile/TxnRequests.h"
#include "adapters/companyfile/TxnStore.h"
#include "adapters/companyfile/TxnText.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

using messages::Element;

bool ReadFlag(pugi::xml_node query, std::string_view name) {
  return messages::ParseBool(ChildText(query, name)).value_or(false);
}

std::optional<std::string> ReadText(pugi::xml_node parent, std::string_view name) {
  const auto text = ChildText(parent, name);
  return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

// The records that a filter names. One that is not there matches nothing, as nothing refers to it.
std::optional<TxnFilter::Records> ReadRecords(CompanyStore& store, pugi::xml_node filter, std::string_view field) {
  if (!filter) return std::nullopt;
  TxnFilter::Records records;
  for (const auto node : filter.children()) {
    const std::string_view name = node.name();
    const std::string value = node.text().get();
    if (name.ends_with("WithChildren")) records.reach = TxnFilter::Records::Reach::WithChildren;
    if (name.starts_with("ListID")) {
      records.ids.push_back(value);
    } else if (const auto found = FindNamed(store, field, value)) {
      records.ids.push_back(found->record.listId);
    }
  }
  return records;
}

void ReadDates(pugi::xml_node range, const ClockReading& clock, TxnFilter& filter) {
  DateRange dates;
  if (const auto macro = ChildText(range, "DateMacro"); !macro.empty()) {
    dates = RangeOfMacro(macro, clock.today).value_or(DateRange{});
  } else {
    dates.from = messages::ParseDateText(ChildText(range, "FromTxnDate"));
    dates.to = messages::ParseDateText(ChildText(range, "ToTxnDate"));
  }
  if (dates.from) filter.dateFrom = messages::DateText(*dates.from);
  if (dates.to) filter.dateTo = messages::DateText(*dates.to);
}

TxnFilter ReadFilter(const TxnContext& context, pugi::xml_node query, std::span<const Element> rows) {
  TxnFilter filter;
  filter.maxReturned = ReadMaxReturned(query);
  const auto modified = ChildElement(query, "ModifiedDateRangeFilter");
  filter.modifiedFrom = ReadTime(modified, "FromModifiedDate", Bound::Lower, context.clock);
  filter.modifiedTo = ReadTime(modified, "ToModifiedDate", Bound::Upper, context.clock);
  ReadDates(ChildElement(query, "TxnDateRangeFilter"), context.clock, filter);

  const auto entities = ChildElement(query, "EntityFilter");
  filter.entities = ReadRecords(context.store, entities ? entities : ChildElement(query, "TimeTrackingEntityFilter"),
                                context.kind.entity);
  filter.accounts = ReadRecords(context.store, ChildElement(query, "AccountFilter"), "AccountRef");

  const auto match = ChildElement(query, "RefNumberFilter");
  filter.refMatch = ReadEnumeration<MatchCriterion>(match, RowsInside(rows, "RefNumberFilter"), "MatchCriterion");
  filter.refText = ChildText(match, "RefNumber");
  const auto range = ChildElement(query, "RefNumberRangeFilter");
  filter.refFrom = ReadText(range, "FromRefNumber");
  filter.refTo = ReadText(range, "ToRefNumber");
  filter.paid = ReadEnumeration<TxnFilter::Paid>(query, rows, "PaidStatus").value_or(TxnFilter::Paid::All);
  return filter;
}

// The transactions that are named one by one, each once, in the order of answers.
struct Named {
  std::vector<TxnRecord> txns;
  std::optional<std::string> missing;  // the first that is not there
};

Named CollectNamed(TxnStore& txns, const TxnKind& kind, pugi::xml_node query, TxnParts parts) {
  Named named;
  for (const auto node : query.children()) {
    const std::string_view name = node.name();
    const std::string_view value = node.text().get();
    std::vector<TxnRecord> found;
    if (name == "TxnID") {
      if (auto txn = txns.Find(value, parts); txn && txn->kind == &kind) found.push_back(std::move(*txn));
    } else if (name == "RefNumber") {
      found = txns.FindByRefNumber(kind, value, parts);
    } else {
      continue;
    }
    if (found.empty() && !named.missing) named.missing = value;
    std::ranges::move(found, std::back_inserter(named.txns));
  }
  std::ranges::sort(named.txns, {}, [](const TxnRecord& txn) { return std::pair(txn.date, txn.number); });
  const auto same = [](const TxnRecord& a, const TxnRecord& b) { return a.txnId == b.txnId; };
  named.txns.erase(std::unique(named.txns.begin(), named.txns.end(), same), named.txns.end());
  return named;
}

}  // namespace

void QueryTxns(const TxnContext& context, const Request& request, Response& response) {
  try {
    RequireFeature(context);
  } catch (const Refused& refused) {
    return response.Answer(refused.status);
  }
  const auto query = request.node;
  TxnStore txns(context.store.Database());
  const auto parts = ReadFlag(query, "IncludeLineItems") ? TxnParts::HeaderAndLines : TxnParts::Header;
  const auto links = ReadFlag(query, "IncludeLinkedTxns") ? TxnDetail::Links::Included : TxnDetail::Links::LeftOut;
  TxnWriter writer(context, txns, request.message->response.front(), {.parts = parts, .links = links});

  const auto named = CollectNamed(txns, context.kind, query, parts);
  if (!named.txns.empty() || named.missing) {
    response.Begin(named.missing ? status::QueryIncomplete(*named.missing) : Status{});
    for (const auto& txn : named.txns) writer.Append(response.Content(), txn);
    return response.End();
  }
  txns.ForEach(context.kind, ReadFilter(context, query, request.message->request), parts, [&](const TxnRecord& txn) {
    if (!response.HasBegun()) response.Begin({});
    writer.Append(response.Content(), txn);
  });
  if (response.HasBegun()) {
    response.End();
  } else {
    response.Answer(status::NothingFound());
  }
}

}  // namespace twqb::company
