#include "bridge/modTWQBBridge.h"

#include <fmt/core.h>

#include <set>

#include "bridge/Tables.h"
#include "engine/LostAdditions.h"
#include "engine/RecordReader.h"
#include "engine/SelectionQueries.h"
#include "engine/TwinFinder.h"
#include "events/modSubscribe.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/Session.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Settings.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

// Whether this version moves the table that way.
bool IsBuilt(Direction direction, const Table* table) {
  if (table == nullptr) return false;
  return direction == Direction::Send ? table->send != nullptr : table->get != nullptr;
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
  FilterReader(std::string_view section, std::string_view table, Run& run)
      : section_(section), table_(table), run_(run) {}

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
    run_.g_FiltersActive = true;
    a = turn == nullptr ? Text(keyA) : GeneralDate(turn(TextToDate(Text(keyA))));
    b = turn == nullptr ? Text(keyB) : GeneralDate(turn(TextToDate(Text(keyB))));
  }

 private:
  std::string section_;
  std::string table_;
  Run& run_;
};

Date AsItIs(Date date) { return date; }

void ReadSettings(const FilterReader& settings, SavedFilters& filters, Run& run) {
  filters.skipsTable = settings.Flag("_ChkSkip");
  if (filters.skipsTable) {
    run.g_FiltersActive = true;
    return;
  }
  filters.IgnoreLastSync = settings.Flag("_chkIgnoreLastSync", "0");
  filters.ActiveOnly = settings.Flag("_chkActiveOnly", "0");
  const auto mostRecent = settings.Text("_OptMostRecent");
  const bool wantsNewer = mostRecent.empty() || TextToBoolean(mostRecent);
  filters.rule = TwinRuleOf(settings.Flag("_OptNever"), wantsNewer);
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

bool GetOne(std::int32_t table, const SavedFilters& filters) {
  return GetTableFromQB(table, filters, filters.ActiveOnly ? ActiveOnly::True : ActiveOnly::False, false, nullptr);
}

constexpr Transfer kSend = {
    .direction = Direction::Send, .section = "QBSEND_", .runTable = SendTableToQB, .passId = [](SavedFilters& filters) {
      filters.Filter1a = Vars().g_PassedID;
      filters.Filter1b = Vars().g_PassedID;
    }};
constexpr Transfer kGet = {
    .direction = Direction::Get, .section = "QBGET_", .runTable = GetOne, .passId = [](SavedFilters& filters) {
      filters.Filter2a = Vars().g_PassedID;
    }};

enum class StepResult : std::uint8_t { Done, FiltersFailed, TableFailed, StampFailed };

// A full run that went well is remembered. False: that could not be written.
bool StampRun(const Transfer& transfer, std::int32_t table, const Run& run) {
  if (run.g_TableOk == TableOk::False || run.g_FiltersActive) return true;
  const auto key = std::string(GetTableName(transfer.direction, table)) + "_LastSendAt";
  return gf_WriteSettings(transfer.section, key, GeneralDate(TheMachine().Now()), Vars().g_TWSettingsPath);
}

StepResult RunTable(const Transfer& transfer, std::int32_t table, const TransferOptions& options, SavedFilters& filters,
                    Run& run) {
  if (!options.usePreferencesTW) {
    transfer.passId(filters);
  } else if (!GetSavedFilters(transfer.section, table, filters)) {
    return StepResult::FiltersFailed;
  }
  if (options.isSync && filters.rule == TwinRule::Overwrite) filters.rule = TwinRule::NewerWins;
  if (filters.skipsTable) {
    TellSkipped({.number = table, .direction = transfer.direction});
    return StepResult::Done;
  }
  if (!transfer.runTable(table, filters)) return StepResult::TableFailed;
  return StampRun(transfer, table, run) ? StepResult::Done : StepResult::StampFailed;
}

void TakeFormDown(const Run& run) { CloseObjects(run, FormToo::Unload, nullptr, nullptr, nullptr); }

void HoldCallback(int& modeBefore) {
  modeBefore = TheCallback().Mode();
  TheCallback().SetMode(kCallbackTransfer);
  Vars().g_CallbackHeld = true;
}

void ReleaseCallback(int modeBefore) {
  if (!Vars().g_IsSubscribed) return;
  IgnoreErrors([&] { Vars().g_QBCallback->SetMode(modeBefore); });
  Vars().g_CallbackHeld = false;
}

// How a transfer leaves.
struct Outcome {
  bool result = false;
  bool releasesCallback = true;
};

Outcome TransferOne(const Transfer& transfer, std::int32_t table, const TransferOptions& options, Run& run) {
  SavedFilters filters;
  switch (RunTable(transfer, table, options, filters, run)) {
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

// The filter values carry over from table to table; Date1a alone is emptied.
Outcome TransferAll(const Transfer& transfer, const TransferOptions& options, Run& run) {
  const bool sends = transfer.direction == Direction::Send;
  run.g_AllTablesRun = true;
  SavedFilters filters;
  for (const auto* table : Tables()) {
    if (!GoesWithAll(*table, transfer.direction)) continue;
    const auto step = RunTable(transfer, table->number, options, filters, run);
    filters.Date1a.clear();
    if (step == StepResult::Done) continue;
    // The form stays open, and the next table run of the process finds the flag set.
    if (step == StepResult::FiltersFailed) return {};
    run.g_AllTablesRun = false;
    TakeFormDown(run);
    // A form that is to be left open goes all the same where a table failed; not where its time could not be written.
    if (!sends && step == StepResult::TableFailed) UnloadMsgForm();
    // After a failed table the call-back stays held; the next transfer overwrites it.
    return {.releasesCallback = sends && step == StepResult::StampFailed};
  }
  run.g_AllTablesRun = false;
  TakeFormDown(run);
  if (!sends) IgnoreErrors([] { UnloadMsgForm(); });
  return {.result = true};
}

// The same in every process of this workstation that works on this BillingDb.
void BeginRecovery(QBSessionManager& session) {
  if (!Vars().findsLostLinks || session.Recovery().HasBegun()) return;
  if (!TextToBoolean(gf_ReadSettings("GENERAL", "FindLostLinks", Vars().g_TWSettingsPath, "True"))) return;
  auto& machine = TheMachine();
  session.Recovery().Begin(Recovery::OwnerOf(kApplicationId, machine.ComputerName(), Vars().g_ConnectString),
                           StandardTimeOf(machine, machine.Now()));
}

// What an earlier send left, ahead of the first row. False: it can't be asked for, which has been told, and nothing may
// go.
bool TakeUpLostLinks(QBSessionManager& session) {
  return RunAs("TakeUpLostLinks", false, [&] {
    BeginRecovery(session);
    TakeUpWhatWasLeft(session, FindTable);
    return true;
  });
}

// Runs `work` in a session, with the call-back held and lost links taken up.
template <typename Work>
bool InSession(bool isQBSingleMode, Work&& work) {
  if (!CheckQBSession(true, isQBSingleMode)) return false;
  Vars().g_IsSubscribed = HasEvents() && IsSubscribed();
  int modeBefore = 0;
  if (Vars().g_IsSubscribed) HoldCallback(modeBefore);
  // Held here: a table may end the session.
  const auto session = Vars().g_QBSession;
  Outcome outcome;
  // Ahead of a get, too: it would bring in as a new row what a row has lost the link to.
  if (TakeUpLostLinks(*session)) outcome = std::forward<Work>(work)(*session);
  DropWhatIsSettled(*session);
  if (outcome.releasesCallback) ReleaseCallback(modeBefore);
  return outcome.result;
}

bool IsSkipped(const Transfer& transfer, const Table& table, Run& run) {
  return FilterReader(transfer.section, table.names.Of(transfer.direction), run).Flag("_ChkSkip");
}

// Ahead of a send: whether it goes, now that it was told which rows would be in QuickBooks twice.
bool GoesBesideTwins(const Transfer& transfer, std::int32_t number, const TransferOptions& options,
                     QBSessionManager& session) {
  Run& run = Vars();
  const auto wish = Vars().likelyTwins;
  if (wish == LikelyTwins::NotLookedFor || transfer.direction != Direction::Send) return true;
  bool goes = true;
  for (const auto* table : Tables()) {
    if (number == enAll ? !GoesWithAll(*table, Direction::Send) : table->number != number) continue;
    PairSearch search;
    if (!options.usePreferencesTW) {
      // A transaction is named otherwise than by its key.
      if (table->reads.front().transaction) continue;
      search.key = Vars().g_PassedID;
    } else if (IsSkipped(transfer, *table, run)) {
      continue;
    }
    std::set<std::string> rows;
    const auto raised = CatchError([&] {
      for (const auto& pair : FindLikelyPairs(*table, Tables(), session, search).pairs) rows.insert(pair.key);
    });
    // What can't be read is the send's to tell of; but who wants to stop must not go on blindly.
    if (raised && wish == LikelyTwins::Stop) throw PlatformError(*raised);
    if (rows.empty()) continue;
    if (wish == LikelyTwins::Stop) goes = false;
    if (auto* observer = Vars().observer) {
      observer->LikelyTwinsTold({.table = {.number = table->number, .direction = Direction::Send},
                                 .rows = rows.size(),
                                 .stops = wish == LikelyTwins::Stop});
    }
  }
  return goes;
}

bool RunTransfer(const Transfer& transfer, std::int32_t table, const TransferOptions& options) {
  Run& run = Vars();
  return InSession(options.isQBSingleMode, [&](QBSessionManager& session) {
    if (!GoesBesideTwins(transfer, table, options, session)) return Outcome();
    return table == enAll ? TransferAll(transfer, options, run) : TransferOne(transfer, table, options, run);
  });
}

// The filters of a get, as the reader takes them.
ReadFilters ReadFiltersOf(const QuickBooksRead& read, const SavedFilters& filters, ActiveOnly activeOnly,
                          bool blnByID) {
  const bool taken = read.ofTheRun == OfTheRun::Taken;
  return {.strID = filters.Filter2a,
          .strFromDate = filters.Date1a,
          .strToDate = filters.Date1b,
          .strNameFrom = filters.Filter1a,
          .strNameTo = filters.Filter1b,
          .IsDependent = blnByID,
          .activeOnly = taken ? activeOnly : ActiveOnly::LookUp,
          .strTxnFrom = taken ? filters.From : std::string(),
          .strTxnTo = taken ? filters.To : std::string()};
}

// What kept records out, in words.
std::string LeftOut(const std::optional<Date>& changedSince, const SavedFilters& filters, const Run& run) {
  std::string text;
  const auto also = [&](const std::string& what) { text += (text.empty() ? "what " : ", or ") + what; };
  if (changedSince)
    also(fmt::format("has not changed since the last send, {} ({})", GeneralDate(*changedSince),
                     ZoneName(TheMachine())));
  if (run.g_FiltersActive) also("the saved filters leave out");
  if (filters.ActiveOnly) also("is not active");
  return text;
}

void DispatchSend(const Table& table, const SendCall& call) {
  if (table.sends == SentRows::Selected) {
    table.send(call);
    return;
  }
  if (!call.sql.IsEmpty()) {
    table.send(call);
    if (table.afterSend != nullptr) table.afterSend(call.session);
  }
  call.run.g_TableOk = TableOk::True;
}

}  // namespace

bool SendData(std::int32_t table, const TransferOptions& options) {
  return RunAs("SendDataToQB", false, [&] { return RunTransfer(kSend, table, options); });
}

bool GetData(std::int32_t table, const TransferOptions& options) {
  return RunAs("GetDataFromQB", false, [&] { return RunTransfer(kGet, table, options); });
}

bool LinkRows(bool isQBSingleMode, const std::function<void(QBSessionManager& session)>& work) {
  return RunAs("LinkRows", false, [&] {
    return InSession(isQBSingleMode, [&](QBSessionManager& session) {
      work(session);
      return Outcome{.result = true};
    });
  });
}

bool GetSavedFilters(std::string_view strPrefix, std::int32_t table, SavedFilters& filters) {
  Run& run = Vars();
  return RunAs("GetSavedFilters", [&] {
    run.g_FiltersActive = false;
    const auto direction = UpperCase(strPrefix) == "QBSEND_" ? Direction::Send : Direction::Get;
    ReadSettings(FilterReader(strPrefix, GetTableName(direction, table), run), filters, run);
  });
}

bool SendTableToQB(std::int32_t number, const SavedFilters& filters) {
  Run& run = Vars();
  const auto* table = FindTable(number);
  if (table == nullptr && number >= enAll) return true;
  if (!IsBuilt(Direction::Send, table)) {
    RefuseTable(Direction::Send, number);
    return false;
  }
  TableScope scope({.number = number, .direction = Direction::Send});
  return RunAs("SendTableToQB", false, [&] {
    // The connection is released on every way out.
    return WithGlobalConnection([&] {
      Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
      std::optional<Date> changedSince;
      const auto sql = BuildSelectSQL(*table, filters, changedSince);
      scope.NoteNarrowed([&] { return LeftOut(changedSince, filters, run); });
      run.g_TableOk = TableOk::False;
      const auto session = TheSession();
      DispatchSend(*table, {.sql = sql, .rule = filters.rule, .session = *session, .run = run});
      SettleOpenAddition(*session);
      return run.g_TableOk == TableOk::True;
    });
  });
}

bool GetTableFromQB(std::int32_t number, const SavedFilters& filters, ActiveOnly activeOnly, bool blnByID,
                    ado::Connection* connection) {
  if (number == enAll) return true;
  const auto* table = FindTable(number);
  if (!IsBuilt(Direction::Get, table)) {
    RefuseTable(Direction::Get, number);
    return false;
  }
  // A pull is a part of the run that needs it, and its outcome overwrites that run's.
  Run& run = Vars();
  TableScope scope({.number = number, .direction = Direction::Get});
  if (!blnByID) scope.NoteNarrowed([&] { return LeftOut({}, filters, run); });
  return RunAs("GetTableFromQB", false, [&] {
    return WithGlobalConnection([&] {
      Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
      run.g_TableOk = TableOk::False;
      activeOnly = LookUpActiveOnly(table->names.get, activeOnly);
      if (table->beforeReads != nullptr) table->beforeReads();
      std::int16_t part = 0;
      for (const auto& read : table->reads) {
        RecordList records;
        const auto session = TheSession();
        if (ApplyQBFiltersAndReadRecords(*table, read, records, *session,
                                         ReadFiltersOf(read, filters, activeOnly, blnByID), run)) {
          table->get({.records = records,
                      .rule = filters.rule,
                      .run = run,
                      .dependent = blnByID ? Dependent::Yes : Dependent::No,
                      .connection = connection,
                      .part = part});
        }
        ++part;
      }
      return run.g_NoQBRecords || run.g_TableOk != TableOk::False;
    });
  });
}

}  // namespace twqb
