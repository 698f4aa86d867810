#include "bridge/modTWQBBridge.h"

#include <fmt/format.h>

#include "bridge/BillReview.h"
#include "bridge/TableRoutines.h"
#include "engine/RecordReader.h"
#include "engine/SelectionQueries.h"
#include "events/modSubscribe.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/Session.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

// Sending estimates is a regular run that does nothing: they are only ever read.
bool IsBuilt(Direction direction, std::int32_t table) {
  const auto* routines = FindTableRoutines(table);
  if (direction == Direction::Send && table == enEstimates) return true;
  return routines != nullptr && (direction == Direction::Send ? routines->send != nullptr : routines->get != nullptr);
}

void RefuseTable(Direction direction, std::int32_t table) {
  TheDesk().ShowMessageBox(
      {.text = fmt::format("\"{}\" can't be transferred {} QuickBooks: this version does not "
                           "include that table.",
                           GetTableName(direction, table), direction == Direction::Send ? "to" : "from"),
       .title = "Error",
       .icon = BoxIcon::Information});
}

// Reads the keys of one table.
class FilterReader {
 public:
  FilterReader(std::string_view section, std::string_view table) : section_(section), table_(table) {}

  [[nodiscard]] std::string Text(std::string_view suffix, std::string_view fallback = {}) const {
    return gf_ReadSettings(section_, fmt::format("{}{}", table_, suffix), Vars().g_TWSettingsPath, fallback);
  }
  [[nodiscard]] bool Flag(std::string_view suffix, std::string_view fallback = "False") const {
    return TextToBoolean(Text(suffix, fallback));
  }
  // A pair of values behind an option; off leaves both as they were.
  void Pair(std::string_view option, std::string_view keyA, std::string_view keyB, std::string& a, std::string& b,
            Date (*turn)(Date)) const {
    if (!Flag(option)) return;
    Vars().g_FiltersActive = true;
    a = turn == nullptr ? Text(keyA) : GeneralDate(turn(TextToDate(Text(keyA))));
    b = turn == nullptr ? Text(keyB) : GeneralDate(turn(TextToDate(Text(keyB))));
  }

 private:
  std::string section_;
  std::string table_;
};

Date AsItIs(Date date) { return date; }

void ReadSettings(const FilterReader& settings, SavedFilters& filters) {
  if (settings.Flag("_ChkSkip")) {
    filters.Date1a = kSkipTable;
    Vars().g_FiltersActive = true;
    return;
  }
  filters.IgnoreLastSync = settings.Flag("_chkIgnoreLastSync", "0");
  filters.ActiveOnly = settings.Flag("_chkActiveOnly", "0");
  const auto mostRecent = settings.Text("_OptMostRecent");
  filters.MostRecent = mostRecent.empty() || TextToBoolean(mostRecent);
  filters.Never = settings.Flag("_OptNever");
  settings.Pair("_OptDate1b", "_cmbDate1a", "_cmbDate1b", filters.Date1a, filters.Date1b, LocalToUTC);
  settings.Pair("_OptFilter1b", "_cmbFilter1a", "_cmbFilter1b", filters.Filter1a, filters.Filter1b, nullptr);
  settings.Pair("_OptFilter2b", "_cmbFilter2a", "_cmbFilter2b", filters.Filter2a, filters.Filter2b, nullptr);
  settings.Pair("_OptFilter3b", "_cmbFilter3a", "_cmbFilter3b", filters.Filter3a, filters.Filter3b, nullptr);
  settings.Pair("_optFromDate", "_ssdtFrom", "_ssdtTo", filters.From, filters.To, AsItIs);
}

// What differs between the two transfers.
struct Transfer {
  Direction direction;
  std::string_view section;
  bool (*runTable)(std::int32_t table, const SavedFilters& filters);
  void (*passId)(SavedFilters& filters);  // without saved filters: the one record
};

bool SendOne(std::int32_t table, const SavedFilters& filters) { return SendTableToQB(table, filters); }
bool GetOne(std::int32_t table, const SavedFilters& filters) {
  return GetTableFromQB(table, filters, filters.ActiveOnly ? ActiveOnly::True : ActiveOnly::False, false, nullptr);
}

constexpr Transfer kSend = {
    .direction = Direction::Send, .section = "QBSEND_", .runTable = SendOne, .passId = [](SavedFilters& filters) {
      filters.Filter1a = Vars().g_PassedID;
      filters.Filter1b = Vars().g_PassedID;
    }};
constexpr Transfer kGet = {
    .direction = Direction::Get, .section = "QBGET_", .runTable = GetOne, .passId = [](SavedFilters& filters) {
      filters.Filter2a = Vars().g_PassedID;
    }};

enum class StepResult : std::uint8_t { Done, FiltersFailed, TableFailed, StampFailed };

// Steps a to e of one table.
StepResult RunTable(const Transfer& transfer, std::int32_t table, const TransferOptions& options,
                    SavedFilters& filters) {
  // a.
  if (!options.usePreferencesTW) {
    transfer.passId(filters);
  } else if (!GetSavedFilters(transfer.section, table, filters)) {
    return StepResult::FiltersFailed;
  }
  // b.
  if (options.isSync) filters.MostRecent = true;
  // c.
  if (filters.Date1a == kSkipTable) return StepResult::Done;
  // d.
  if (!transfer.runTable(table, filters)) return StepResult::TableFailed;
  // e. A full run that went well is remembered.
  if (Vars().g_TableOk != TableOk::False && !Vars().g_FiltersActive) {
    const auto key = std::string(GetTableName(transfer.direction, table)) + "_LastSendAt";
    if (!gf_WriteSettings(transfer.section, key, GeneralDate(TheMachine().Now()), Vars().g_TWSettingsPath)) {
      return StepResult::StampFailed;
    }
  }
  return StepResult::Done;
}

void TakeFormDown() { CloseObjects(FormToo::Unload, nullptr, nullptr, nullptr); }

void HoldCallback(int& modeBefore) {
  modeBefore = TheCallback().Mode();
  TheCallback().SetMode(kCallbackTransfer);
  Vars().g_CallbackHeld = true;
}

// Step 6.
void ReleaseCallback(int modeBefore) {
  if (!Vars().g_IsSubscribed) return;
  IgnoreErrors([&] { Vars().g_QBCallback->SetMode(modeBefore); });
  Vars().g_CallbackHeld = false;
}

// How a transfer leaves: whether step 6 is still done.
struct Outcome {
  bool result = false;
  bool releasesCallback = true;
};

// Step 4.
Outcome TransferOne(const Transfer& transfer, std::int32_t table, const TransferOptions& options) {
  SavedFilters filters;
  switch (RunTable(transfer, table, options, filters)) {
    case StepResult::Done:
      break;
    case StepResult::FiltersFailed:
      return {};
    case StepResult::TableFailed:
      if (transfer.direction == Direction::Send) return {};
      UnloadMsgForm();
      return {.releasesCallback = false};
    case StepResult::StampFailed:
      return {.releasesCallback = transfer.direction == Direction::Send};
  }
  if (transfer.direction == Direction::Get) IgnoreErrors([] { UnloadMsgForm(); });
  return {.result = true};
}

// Step 5. The filter values carry over from table to table; Date1a alone is emptied.
Outcome TransferAll(const Transfer& transfer, const TransferOptions& options) {
  const bool sends = transfer.direction == Direction::Send;
  Vars().g_AllTablesRun = true;
  SavedFilters filters;
  for (std::int32_t table = enEmployees; table < enAll; ++table) {
    if (sends && table == enExpenseLog) continue;  // only ever sent by name
    if (!IsBuilt(transfer.direction, table)) continue;
    const auto step = RunTable(transfer, table, options, filters);
    filters.Date1a.clear();
    if (step == StepResult::Done) continue;
    // The form stays open, and the next table run of the process finds the flag set.
    if (step == StepResult::FiltersFailed) return {};
    Vars().g_AllTablesRun = false;
    TakeFormDown();
    // A form that is to be left open goes all the same where a table failed; not where its time could not be written.
    if (!sends && step == StepResult::TableFailed) UnloadMsgForm();
    // After a failed table the call-back stays held; the next transfer overwrites it.
    return {.releasesCallback = sends && step == StepResult::StampFailed};
  }
  Vars().g_AllTablesRun = false;
  TakeFormDown();
  if (!sends) IgnoreErrors([] { UnloadMsgForm(); });
  return {.result = true};
}

bool RunTransfer(const Transfer& transfer, std::int32_t table, const TransferOptions& options) {
  // 1.
  if (!CheckQBSession(true, options.isQBSingleMode)) return false;
  // 2.
  Vars().g_IsSubscribed = HasEvents() && IsSubscribed();
  // 3.
  int modeBefore = 0;
  if (Vars().g_IsSubscribed) HoldCallback(modeBefore);
  // 4., 5.
  const auto outcome = table == enAll ? TransferAll(transfer, options) : TransferOne(transfer, table, options);
  // 6.
  if (outcome.releasesCallback) ReleaseCallback(modeBefore);
  return outcome.result;
}

// The filters of a get, as the reader takes them.
ReadFilters ReadFiltersOf(const TableRead& read, const SavedFilters& filters, ActiveOnly activeOnly, bool blnByID) {
  return {.strID = filters.Filter2a,
          .strFromDate = filters.Date1a,
          .strToDate = filters.Date1b,
          .strNameFrom = filters.Filter1a,
          .strNameTo = filters.Filter1b,
          .IsDependent = blnByID,
          .ExpenseLogKind = read.ExpenseLogKind,
          .activeOnly = read.looksUpActiveOnly ? ActiveOnly::LookUp : activeOnly,
          .strTxnFrom = read.takesTransactionDates ? filters.From : std::string(),
          .strTxnTo = read.takesTransactionDates ? filters.To : std::string()};
}

// Step 4 of a send. False: the table's run ends at once.
bool DispatchSend(std::int32_t table, const SendCall& call) {
  const auto* routines = FindTableRoutines(table);
  if (table == enEstimates) {
    Vars().g_TableOk = TableOk::True;
    return true;
  }
  if (table != enExpenseLog) return routines->send(call);
  // Expenses go only where a selection names them, and their outcome is not looked at.
  if (!call.sql.empty()) {
    (void)routines->send(call);
    ReviewTransferredBill(call.session);
  }
  Vars().g_TableOk = TableOk::True;
  return true;
}

void TellExpensesOfVersion1() {
  TheDesk().ShowMessageBox(
      {.text = "QuickBooks 2002 Does not provide complete support for Transferring the Expense Log", .title = "Error"});
}

}  // namespace

bool SendData(std::int32_t table, const TransferOptions& options) {
  return RunAs("SendDataToQB", false, [&] { return RunTransfer(kSend, table, options); });
}

bool GetData(std::int32_t table, const TransferOptions& options) {
  return RunAs("GetDataFromQB", false, [&] { return RunTransfer(kGet, table, options); });
}

bool GetSavedFilters(std::string_view strPrefix, std::int32_t table, SavedFilters& filters) {
  return RunAs("GetSavedFilters", [&] {
    Vars().g_FiltersActive = false;
    const auto direction = UpperCase(strPrefix) == "QBSEND_" ? Direction::Send : Direction::Get;
    ReadSettings(FilterReader(strPrefix, GetTableName(direction, table)), filters);
  });
}

bool SendTableToQB(std::int32_t table, const SavedFilters& filters) {
  if (table >= enAll) return true;
  if (!IsBuilt(Direction::Send, table)) {
    RefuseTable(Direction::Send, table);
    return false;
  }
  return RunAs("SendTableToQB", false, [&] {
    // 1. The connection is released on every way out.
    return WithGlobalConnection([&] {
      Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
      // 2., 3.
      const auto sql = BuildSelectSQL(table, filters);
      Vars().g_TableOk = TableOk::False;
      // 4.
      if (!DispatchSend(table, {.sql = sql, .filters = filters, .session = *Vars().g_QBSession})) return false;
      // 5.
      return Vars().g_TableOk == TableOk::True;
    });
  });
}

bool GetTableFromQB(std::int32_t table, const SavedFilters& filters, ActiveOnly activeOnly, bool blnByID,
                    ado::Connection* connection) {
  if (table == enAll) return true;
  if (!IsBuilt(Direction::Get, table)) {
    RefuseTable(Direction::Get, table);
    return false;
  }
  return RunAs("GetTableFromQB", false, [&] {
    return WithGlobalConnection([&] {
      // 1.
      Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
      Vars().g_TableOk = TableOk::False;
      activeOnly = LookUpActiveOnly(table, activeOnly);
      // 2.
      if (table == enExpenseLog && Vars().g_QBMajorVer == 1) TellExpensesOfVersion1();
      std::int16_t part = 0;
      for (const auto& read : ReadsOf(table)) {
        RecordList records;
        if (ApplyQBFiltersAndReadRecords(read.kind, records, *Vars().g_QBSession,
                                         ReadFiltersOf(read, filters, activeOnly, blnByID))) {
          FindTableRoutines(table)->get(
              {.records = records, .filters = filters, .blnByID = blnByID, .connection = connection, .part = part});
        }
        ++part;
      }
      // 3.
      return Vars().g_NoQBRecords || Vars().g_TableOk != TableOk::False;
    });
  });
}

void TransferCustomerOrJobFromQB(std::string_view listID, ado::Connection* connection, std::string_view kind) {
  const auto upper = UpperCase(kind);
  SavedFilters filters;
  filters.Filter2a = listID;
  if (upper != "PROJECT") (void)GetTableFromQB(enClients, filters, ActiveOnly::LookUp, true, connection);
  if (upper != "CLIENT") (void)GetTableFromQB(enProjects, filters, ActiveOnly::LookUp, true, connection);
}

}  // namespace twqb
