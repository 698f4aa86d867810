#include "engine/ReaderMembers.h"

#include <array>
#include <string_view>

#include "quickbooks/IsCustomer.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

// Wire numbers of the query's ActiveStatus. Inactive records alone are never asked for.
constexpr int kActiveRecords = 0;
constexpr int kAllRecords = 2;

// The query of a list table.
struct ListQuery {
  std::string_view routine;
  std::string_view request;
  std::string_view choice;
};

void ApplyListFilters(const ListQuery& query, const ReadFilters& filters, MsgSetRequest& messageSet) {
  // After an error the query goes out with what was set until then.
  RunAs(query.routine, [&] {
    const auto choice = messageSet.Append(query.request)[query.choice];
    if (!filters.strID.empty()) {
      choice["ListIDList"].Add(filters.strID);
      return;
    }
    const auto filter = choice["ListFilter"];
    filter["ActiveStatus"].SetValue(filters.activeOnly == ActiveOnly::True ? kActiveRecords : kAllRecords);
    if (!filters.strFromDate.empty() && !filters.strToDate.empty()) {
      filter["FromModifiedDate"].SetValue(filters.strFromDate);
      filter["ToModifiedDate"].SetValue(filters.strToDate);
    }
    if (!filters.strNameFrom.empty() && !filters.strNameTo.empty()) {
      const auto range = filter["ORNameFilter"]["NameRangeFilter"];
      range["FromName"].SetValue(filters.strNameFrom);
      range["ToName"].SetValue(filters.strNameTo);
    }
  });
}

// The copy of a list table.
struct ListCopy {
  std::string_view routine;
  std::string_view readingText;
  bool (*keeps)(const Record& record);
};

void CopyList(const ListCopy& copy, const Response& response, RecordList& records) {
  const bool went = RunAs(copy.routine, [&] {
    records = {};
    const auto details = response.Details();
    const auto last = static_cast<std::int64_t>(details.size()) - 1;
    // Two records show no text, three do.
    const bool showsProgress = last > 1 && !Vars().g_NoProgressBar;
    if (showsProgress) ShowMsgForm(copy.readingText);
    TheDesk().PumpMessages();
    for (std::int64_t index = 0; index <= last; ++index) {
      if (showsProgress) {
        UpdateProgressBar(last, index);
        TheDesk().PumpMessages();
      }
      const auto& record = details[static_cast<std::size_t>(index)];
      if (copy.keeps(record)) records.Add(record, record["ListID"].GetValue());
    }
  });
  if (!went && !Vars().g_NoProgressBar) IgnoreErrors([] { UnloadMsgForm(); });
}

constexpr std::array kMembers = {
    ReaderMember{enClients, ApplyQBClientFilters, GetQBClientRecordsInCollectionObject},
};

}  // namespace

const ReaderMember* FindReaderMember(std::int32_t table) {
  for (const auto& member : kMembers) {
    if (member.table == table) return &member;
  }
  return nullptr;
}

void ApplyQBClientFilters(const ReadFilters& filters, MsgSetRequest& messageSet) {
  ApplyListFilters({.routine = "ApplyQBClientFilters", .request = "CustomerQueryRq", .choice = "ORCustomerListQuery"},
                   filters, messageSet);
}

void GetQBClientRecordsInCollectionObject(const Response& response, RecordList& records) {
  CopyList({.routine = "GetQBClientRecordsInCollectionObject",
            .readingText = "Reading Clients from QuickBooks...",
            .keeps = IsCustomer},
           response, records);
}

}  // namespace twqb
