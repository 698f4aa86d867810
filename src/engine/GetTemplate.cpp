#include <fmt/format.h>

#include <memory>

#include "engine/ConflictRule.h"
#include "engine/FreeKey.h"
#include "engine/Template.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

class GetRun {
 public:
  GetRun(const TableDescription& table, bool optNever, bool optMostRecent, Dependent dependent,
         ado::Connection* connection)
      : table_(table), rule_(TwinRuleOf(optNever, optMostRecent)), dependent_(dependent), connection_(connection) {}

  void Run(const RecordList& records) {
    if (const auto raised = CatchError([&] { TakeAll(records); })) {
      // Ahead of the records, or at their end: there is nothing to go on with.
      Vars().g_TableOk = TableOk::False;
      ErrorHandler(raised->number(), raised->description(), table_.getRoutine);
      WriteLog(std::string(table_.getLogText) + name_);
    }
    // 6. The caller's connection stays the caller's; the form stays for the dispatcher to take down.
    CloseObjects(FormToo::Leave, &lookup_, &rows_, &ownConnection_);
  }

 private:
  void TakeAll(const RecordList& records) {
    // 1. Nothing to do is a good end.
    if (records.Count() == 0) {
      Vars().g_TableOk = TableOk::True;
      return;
    }
    // 2. The connection: the caller's, or one of our own.
    if (dependent_ == Dependent::Yes && connection_ == nullptr && !table_.missingConnectionText.empty()) {
      TheDesk().ShowMessageBox({.text = std::string(table_.missingConnectionText)});
      return;
    }
    if (connection_ == nullptr) {
      ownConnection_ = Vars().platform.database->CreateConnection();
      connection_ = ownConnection_.get();
    }
    // 3. All writes go through this recordset.
    OpenConnection(*connection_, &rows_, table_.tableName);
    // 4.
    showsProgress_ = dependent_ == Dependent::No && records.Count() >= table_.progressFrom && !Vars().g_NoProgressBar;
    if (showsProgress_) ShowMsgForm(table_.gettingText);
    if (table_.beginGet != nullptr) state_ = table_.beginGet();
    // 5.
    const auto total = static_cast<std::int64_t>(records.Count());
    std::int64_t counter = 0;
    for (const auto& record : records) {
      name_.clear();
      if (const auto raised = CatchError([&] { TakeRecord(record, total, ++counter); })) AskAfterError(*raised);
      if (!EndRecord()) break;
    }
    if (lacking_) TellLacking(table_.getLackingText);
  }

  // 5.1 to 5.8. Returning early passes the record over.
  void TakeRecord(const Record& record, std::int64_t total, std::int64_t counter) {
    // 5.1
    TheDesk().PumpMessages();
    Vars().g_TableOk = TableOk::False;
    if (showsProgress_) {
      UpdateProgressBar(total, counter);
      SetProgressText(record[table_.progressField].GetValueOrEmpty());
      TheDesk().PumpMessages();
    }
    // 5.2
    if (table_.belongs != nullptr && !table_.belongs(record)) return;
    GetRecord inHand{.record = record, .dependent = dependent_, .connection = *connection_, .ownerKey = {}};
    if (!IsAdmitted(inHand)) return;
    // 5.3
    const auto listId = record["ListID"].GetValue();
    OpenLookup(listId);
    const bool known = !lookup_->Eof();
    // 5.4 or 5.5, up to a row to write to.
    if (known ? !FindRow(record, listId) : !AddRow(inHand)) return;
    // 5.6
    WriteFields(table_, *rows_, record);
    // 5.7, 5.8
    rows_->SetField("QBLinkID", listId);
    rows_->SetField("LastUpdated", LocalToUTC(TheMachine().Now()));
    rows_->Update();
    if (table_.afterUpdate != nullptr) table_.afterUpdate();
  }

  bool IsAdmitted(GetRecord& record) {
    if (table_.admit == nullptr) return true;
    const auto admission = table_.admit(record);
    lacking_ = lacking_ || admission == Admission::Lacking;
    return admission == Admission::Admitted;
  }

  // 5.4 Positions on the twin; False when it is to stay as it is.
  bool FindRow(const Record& record, const std::string& listId) {
    name_ = record[table_.nameField].GetValue();
    CloseLookup();
    if (rule_ == TwinRule::LeaveAlone) return false;
    Rows().MoveFirst();
    Rows().Find(fmt::format("QBLinkID = '{}'", listId));
    return PairMoves(table_, Direction::Get, rule_, record, *rows_);
  }

  // 5.5 A new row under a key that is free: the name, with a counter behind it where it is taken.
  bool AddRow(GetRecord& record) {
    CloseLookup();
    name_ = record.record[table_.nameField].GetValue();
    if (table_.addRow != nullptr) {
      table_.addRow(Rows(), record);
      return true;
    }
    const auto base = ReplaceJunkChars(name_);
    // The cut stands behind the appending and ahead of the lookup.
    const auto key =
        FreeKey(*connection_, {.table = table_.tableName, .column = table_.keyColumn}, name_, [&](int counter) {
          return CutTo(Rows(), table_.keyColumn, counter == 0 ? base : fmt::format("{}{}", base, counter));
        });
    rows_->AddNew();
    rows_->SetField(table_.keyColumn, key);
    if (table_.startRow != nullptr) table_.startRow(*rows_, record.record, state_.get());
    return true;
  }

  // Identifiers hold no quote.
  void OpenLookup(std::string_view listId) {
    lookup_ = connection_->OpenRecordset(
        fmt::format("SELECT QBLinkID from {} WHERE {}QBLinkID = '{}';", table_.tableName, table_.linkCondition, listId),
        ado::CursorType::Static, ado::LockType::ReadOnly);
  }
  void CloseLookup() {
    lookup_->Close();
    lookup_.reset();
  }

  // The table's recordset; raises 91 when it could not be opened, so that each record is told and asked about.
  ado::Recordset& Rows() const {
    if (!rows_) throw PlatformError(error::kObjectNothing);
    return *rows_;
  }

  void AskAfterError(const PlatformError& raised) {
    // A half-written row must not be in the way of the next record.
    IgnoreErrors([&] {
      if (rows_ && rows_->EditState() != ado::EditMode::None) rows_->CancelUpdate();
    });
    lookup_.reset();
    Vars().g_TableOk = TableOk::False;
    ErrorHandler(raised.number(), raised.description(), table_.getRoutine);
    WriteLog(std::string(table_.getLogText) + name_);
    const auto answer = TheDesk().ShowMessageBox({.text = "Do you want to continue transfering rest of the records?",
                                                  .title = "Question",
                                                  .buttons = BoxButtons::YesNo});
    if (answer == BoxAnswer::Yes) {
      Vars().g_TableOk = TableOk::GoOn;
      Vars().g_Cancelled = false;
    } else {
      Vars().g_Cancelled = true;
    }
  }

  // 5.9, 5.10. False: the user wants no more.
  bool EndRecord() const {
    if (Vars().g_TableOk != TableOk::GoOn) Vars().g_TableOk = TableOk::True;
    if (!Vars().g_Cancelled || dependent_ == Dependent::Yes) return true;
    EndCancelled();
    return false;
  }

  const TableDescription& table_;
  const TwinRule rule_;
  const Dependent dependent_;
  ado::Connection* connection_;
  std::unique_ptr<ado::Connection> ownConnection_;
  std::unique_ptr<ado::Recordset> rows_;
  std::unique_ptr<ado::Recordset> lookup_;
  std::unique_ptr<GetState> state_;
  std::string name_;  // of the record in hand, for the log
  bool showsProgress_ = false;
  bool lacking_ = false;  // a record was passed over for lack of what it belongs to
};

}  // namespace

void GetTable(const TableDescription& table, const RecordList& records, bool optNever, bool optMostRecent,
              Dependent dependent, ado::Connection* connection) {
  GetRun(table, optNever, optMostRecent, dependent, connection).Run(records);
}

}  // namespace twqb
