#include "engine/ReadQueries.h"

#include <utility>
#include <vector>

#include "quickbooks/IsCustomer.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

// Wire numbers of the query's ActiveStatus. Inactive records alone are never asked for.
constexpr int kActiveRecords = 0;
constexpr int kAllRecords = 2;

bool BothGiven(std::string_view a, std::string_view b) { return !a.empty() && !b.empty(); }
bool NoneGiven(std::string_view a, std::string_view b) { return a.empty() && b.empty(); }

void FillListQuery(const QuickBooksRead& read, const ReadFilters& filters, const RequestField& query) {
  const auto choice = query[read.choice];
  if (!filters.strID.empty()) {
    choice["ListIDList"].Add(filters.strID);
    return;
  }
  const auto filter = choice["ListFilter"];
  filter["ActiveStatus"].SetValue(filters.activeOnly == ActiveOnly::True ? kActiveRecords : kAllRecords);
  if (BothGiven(filters.strFromDate, filters.strToDate)) {
    filter["FromModifiedDate"].SetValue(filters.strFromDate);
    filter["ToModifiedDate"].SetValue(filters.strToDate);
  }
  if (BothGiven(filters.strNameFrom, filters.strNameTo)) {
    const auto range = filter["ORNameFilter"]["NameRangeFilter"];
    range["FromName"].SetValue(filters.strNameFrom);
    range["ToName"].SetValue(filters.strNameTo);
  }
}

// One range of dates at most: the modified dates, or the transactions' own where no modified date is given at all. Half
// a range of modified dates narrows nothing, and keeps the other range out.
void FillDates(const TransactionQuery& shape, const ReadFilters& filters, const RequestField& filter) {
  if (BothGiven(filters.strFromDate, filters.strToDate)) {
    const auto range = filter["ORDateRangeFilter"]["ModifiedDateRangeFilter"];
    range["FromModifiedDate"].SetValue(filters.strFromDate);
    range["ToModifiedDate"].SetValue(filters.strToDate);
  } else if (shape.takesTransactionDates && NoneGiven(filters.strFromDate, filters.strToDate) &&
             BothGiven(filters.strTxnFrom, filters.strTxnTo)) {
    const auto range = filter["ORDateRangeFilter"]["TxnDateRangeFilter"]["ORTxnDateRangeFilter"]["TxnDateFilter"];
    range["FromTxnDate"].SetValue(filters.strTxnFrom);
    range["ToTxnDate"].SetValue(filters.strTxnTo);
  }
}

void FillNames(NamePair names, const ReadFilters& filters, const RequestField& filter) {
  if (!BothGiven(filters.strNameFrom, filters.strNameTo)) return;
  switch (names) {
    case NamePair::NotUsed:
      return;
    case NamePair::Entities: {
      const auto entities = filter["EntityFilter"]["OREntityFilter"]["FullNameList"];
      entities.Add(filters.strNameFrom);
      entities.Add(filters.strNameTo);
      return;
    }
    case NamePair::ReferenceNumbers: {
      const auto range = filter["ORRefNumberFilter"]["RefNumberRangeFilter"];
      range["FromRefNumber"].SetValue(filters.strNameFrom);
      range["ToRefNumber"].SetValue(filters.strNameTo);
      return;
    }
  }
}

void FillTransactionQuery(const QuickBooksRead& read, const ReadFilters& filters, const RequestField& query) {
  const auto& shape = *read.transaction;
  if (shape.includesLineItems) query["IncludeLineItems"].SetValue(true);
  if (!filters.strID.empty()) {
    const auto choice = shape.identifierChoice.empty() ? read.choice : shape.identifierChoice;
    query[choice]["TxnIDList"].Add(filters.strID);
    return;
  }
  const auto filter = query[read.choice]["TxnFilter"];
  FillDates(shape, filters, filter);
  FillNames(shape.names, filters, filter);
}

// Runs a read's routine under its name; answers whether it went through.
template <typename Body>
bool RunUnder(const QuickBooksRead& read, std::string_view routine, Body&& body) {
  const auto raised = CatchError(std::forward<Body>(body));
  if (!raised) return true;
  ReportError(read.errors, routine, *raised);
  return false;
}

bool IsKept(Keeps keeps, const Record& record) {
  return keeps == Keeps::Everything || IsCustomer(record) == (keeps == Keeps::Customers);
}

}  // namespace

void ApplyQBFilters(const QuickBooksRead& read, const ReadFilters& filters, MsgSetRequest& messageSet) {
  RunUnder(read, read.filterRoutine, [&] {
    std::vector<RequestField> queries;
    for (const auto request : read.requests) {
      if (!request.empty()) queries.push_back(messageSet.Append(request));
    }
    for (const auto& query : queries) {
      if (read.transaction) {
        FillTransactionQuery(read, filters, query);
      } else {
        FillListQuery(read, filters, query);
      }
    }
  });
}

void GetQBRecordsInCollectionObject(const QuickBooksRead& read, const ReadFilters& filters, const Response& response,
                                    Into into, RecordList& records, const Run& run) {
  // The pull of one job for another record's sake takes whatever came, a customer too, and shows nothing.
  const bool isPulledJob = read.keeps == Keeps::Jobs && filters.IsDependent;
  const auto keeps = isPulledJob ? Keeps::Everything : read.keeps;
  const auto key = read.transaction ? "TxnID" : "ListID";
  const bool went = RunUnder(read, read.copyRoutine, [&] {
    if (into == Into::NewList) records = {};
    auto details = response.Details();
    const auto last = static_cast<std::int64_t>(details.size()) - 1;
    const bool showsProgress =
        details.size() >= read.readingFrom && !read.readingText.empty() && !isPulledJob && run.ShowsProgress();
    if (showsProgress) ShowMsgForm(read.readingText);
    TheDesk().PumpMessages();
    for (std::int64_t index = 0; index <= last; ++index) {
      if (showsProgress) {
        UpdateProgressBar(last, index);
        TheDesk().PumpMessages();
      }
      auto& record = details[static_cast<std::size_t>(index)];
      if (!IsKept(keeps, record)) continue;
      const auto identifier = record[key].GetValue();
      records.Add(std::move(record), identifier);
    }
  });
  if (!went && run.ShowsProgress()) IgnoreErrors([] { UnloadMsgForm(); });
}

}  // namespace twqb
