#include "engine/RecordReader.h"

#include <fmt/format.h>

#include "engine/ReaderMembers.h"
#include "quickbooks/Requests.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"
#include "services/TableNames.h"
#include "services/msgForm.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

constexpr std::string_view kRoutine = "ApplyQBFiltersAndReadRecords";
constexpr std::int32_t kStatusFoundNothing = 1;
constexpr std::int32_t kStatusIncomplete = 500;

// The answers on expense codes, by the place of their queries in the set.
constexpr std::size_t kOtherChargeItems = 0;
constexpr std::size_t kInventoryItems = 1;
constexpr std::size_t kNonInventoryItems = 2;

// Takes the answer to one query over, if it has records.
bool TakeOver(const ReaderMember& member, const ReadFilters& filters, const MsgSetResponse& answer, std::size_t index,
              RecordList& records) {
  const auto& response = answer.GetAt(index);
  if (response.StatusCode() != 0) return false;
  GetQBRecordsInCollectionObject(member, filters, response, Into::ListInHand, records);
  return true;
}

// Expense codes are items of three kinds in one list. Called with a first answer of records or of status 500.
bool TakeOverItems(const ReaderMember& member, const ReadFilters& filters, const MsgSetResponse& answer,
                   RecordList& records) {
  if (TakeOver(member, filters, answer, kOtherChargeItems, records)) {
    if (!filters.strID.empty()) return true;
    TakeOver(member, filters, answer, kInventoryItems, records);
    TakeOver(member, filters, answer, kNonInventoryItems, records);
    return true;
  }
  // Without the first kind, the one record is of one of the others.
  return TakeOver(member, filters, answer, kInventoryItems, records) ||
         TakeOver(member, filters, answer, kNonInventoryItems, records);
}

bool ReadRecords(std::int32_t tableKind, RecordList& records, QBSessionManager& session, ReadFilters filters) {
  // 1. The table's text; 2. whether inactive records are wanted.
  const auto text = GetTableName(Direction::Get, tableKind);
  filters.activeOnly = LookUpActiveOnly(tableKind, filters.activeOnly);
  // 3.
  Vars().g_NoQBRecords = false;
  // 4. The query.
  const auto* member = FindReaderMember(tableKind, filters.ExpenseLogKind);
  if (member == nullptr) return false;
  auto messageSet = RequireMsgSetRequest(session);
  ApplyQBFilters(*member, filters, messageSet);
  // 5. A whole table may take a while.
  if (filters.strID.empty() && !Vars().g_NoProgressBar) {
    constexpr int kSteps = 10;
    constexpr int kStepWhileReading = 8;
    TheDesk().PumpMessages();
    // No blanks stand between the three.
    ShowMsgForm(fmt::format("Reading ...{}(may take some time)", text));
    UpdateProgressBar(kSteps, kStepWhileReading);
    TheDesk().PumpMessages();
  }
  // 6. and 7. The answer and its status.
  const auto answer = session.DoRequests(messageSet);
  const auto& response = answer.GetAt(0);
  switch (response.StatusCode()) {
    case 0:
      break;
    case kStatusFoundNothing:
      Vars().g_NoQBRecords = true;
      return false;
    case kStatusIncomplete:
      return tableKind == enExpenseCodes && TakeOverItems(*member, filters, answer, records);
    default:
      ShowQBError(response);
      return false;
  }
  // 8.
  if (tableKind == enExpenseCodes) return TakeOverItems(*member, filters, answer, records);
  GetQBRecordsInCollectionObject(*member, filters, response, Into::NewList, records);
  return true;
}

}  // namespace

ActiveOnly LookUpActiveOnly(std::int32_t tableKind, ActiveOnly activeOnly) {
  if (activeOnly != ActiveOnly::LookUp) return activeOnly;
  const auto key = std::string(GetTableName(Direction::Get, tableKind)) + "_chkActiveOnly";
  const bool wanted = TextToBoolean(gf_ReadSettings("QBGET_", key, Vars().g_TWSettingsPath, "0"));
  return wanted ? ActiveOnly::True : ActiveOnly::False;
}

bool ApplyQBFiltersAndReadRecords(std::int32_t tableKind, RecordList& records, QBSessionManager& session,
                                  const ReadFilters& filters) {
  bool result = false;
  const bool went = RunAs(kRoutine, [&] { result = ReadRecords(tableKind, records, session, filters); });
  if (!went && !Vars().g_NoProgressBar) IgnoreErrors([] { UnloadMsgForm(); });
  return went && result;
}

}  // namespace twqb
