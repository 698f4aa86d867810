#include "engine/RecordReader.h"

#include <fmt/core.h>

#include "engine/ReadQueries.h"
#include "messages/StatusCodes.h"
#include "quickbooks/Requests.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

constexpr std::string_view kRoutine = "ApplyQBFiltersAndReadRecords";

// Takes the answer to one query over, if it has records.
bool TakeOver(const QuickBooksRead& read, const ReadFilters& filters, const MsgSetResponse& answer, std::size_t index,
              RecordList& records, const Run& run) {
  const auto& response = answer.GetAt(index);
  if (response.StatusCode() != status::kOk) return false;
  GetQBRecordsInCollectionObject(read, filters, response, Into::ListInHand, records, run);
  return true;
}

// Records of several kinds in one list. Called with a first answer of records or of an identifier that is not there.
bool TakeOverKinds(const QuickBooksRead& read, const ReadFilters& filters, const MsgSetResponse& answer,
                   RecordList& records, const Run& run) {
  const bool hasFirst = TakeOver(read, filters, answer, 0, records, run);
  if (hasFirst && !filters.strID.empty()) return true;
  // Without the first kind, the one record is of one of the others.
  for (std::size_t kind = 1; kind < read.requests.size(); ++kind) {
    if (TakeOver(read, filters, answer, kind, records, run) && !hasFirst) return true;
  }
  return hasFirst;
}

void ShowReading(std::string_view name) {
  constexpr int kSteps = 10;
  constexpr int kStepWhileReading = 8;
  TheDesk().PumpMessages();
  // No blanks stand between the three.
  ShowMsgForm(fmt::format("Reading ...{}(may take some time)", name));
  UpdateProgressBar(kSteps, kStepWhileReading);
  TheDesk().PumpMessages();
}

std::string_view ShownName(const Table& table, const QuickBooksRead& read) {
  return read.shownAs.empty() ? table.names.get : read.shownAs;
}

bool ReadRecords(const Table& table, const QuickBooksRead& read, RecordList& records, QBSessionManager& session,
                 const ReadFilters& filters, Run& run) {
  run.g_NoQBRecords = false;
  auto messageSet = RequireMsgSetRequest(session);
  ApplyQBFilters(read, filters, messageSet);
  // A whole table may take a while.
  if (filters.strID.empty() && run.ShowsProgress()) ShowReading(ShownName(table, read));
  const auto answer = session.DoRequests(messageSet);
  const auto& response = answer.GetAt(0);
  switch (response.StatusCode()) {
    case status::kOk:
      break;
    case status::kFoundNothing:
      run.g_NoQBRecords = true;
      return false;
    case status::kIncomplete:
      return read.AsksForSeveralKinds() && TakeOverKinds(read, filters, answer, records, run);
    default:
      ShowQBError(response);
      return false;
  }
  if (read.AsksForSeveralKinds()) return TakeOverKinds(read, filters, answer, records, run);
  GetQBRecordsInCollectionObject(read, filters, response, Into::NewList, records, run);
  return true;
}

}  // namespace

ActiveOnly LookUpActiveOnly(std::string_view getName, ActiveOnly activeOnly) {
  if (activeOnly != ActiveOnly::LookUp) return activeOnly;
  const bool wanted =
      TextToBoolean(gf_ReadSettings("QBGET_", fmt::format("{}_chkActiveOnly", getName), Vars().g_TWSettingsPath, "0"));
  return wanted ? ActiveOnly::True : ActiveOnly::False;
}

bool ApplyQBFiltersAndReadRecords(const Table& table, const QuickBooksRead& read, RecordList& records,
                                  QBSessionManager& session, const ReadFilters& filters, Run& run) {
  bool result = false;
  const bool went = RunAs(kRoutine, [&] {
    if (filters.activeOnly != ActiveOnly::LookUp) {
      result = ReadRecords(table, read, records, session, filters, run);
      return;
    }
    // A copy for this alone: most reads are of one record, and many.
    auto narrowed = filters;
    narrowed.activeOnly = LookUpActiveOnly(ShownName(table, read), filters.activeOnly);
    result = ReadRecords(table, read, records, session, narrowed, run);
  });
  if (!went && run.ShowsProgress()) IgnoreErrors([] { UnloadMsgForm(); });
  return went && result;
}

}  // namespace twqb
