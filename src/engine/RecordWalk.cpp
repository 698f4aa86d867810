#include "engine/RecordWalk.h"

#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"

namespace twqb {

void RecordWalk::Walk(std::size_t progressFrom, RecordWork& work) {
  const auto raised = CatchError([&] { TakeAll(progressFrom, work); });
  // Ahead of the records, at their end, or where a table goes on behind no error: there is nothing to go on with.
  if (raised) Tell(*raised);
  inHand_.reset();
  TellExtent({.found = static_cast<std::int64_t>(call_.records.Count()), .taken = counter_});
  work.Abandon();
  // The caller's connection stays the caller's.
  CloseObjects(run_, run_.ShowsProgress() ? texts_.form : FormToo::Leave, nullptr, &rows_, &ownConnection_);
  if (!raised) work.Summarise();
}

void RecordWalk::Tell(const PlatformError& raised) const {
  run_.g_TableOk = TableOk::False;
  ReportError(texts_.errors, texts_.routine, raised);
  if (!texts_.log.empty()) WriteLog(std::string(texts_.log) + name_);
}

void RecordWalk::TakeAll(std::size_t progressFrom, RecordWork& work) {
  const auto& records = call_.records;
  // Nothing to do is a good end.
  if (records.Count() == 0) {
    run_.g_TableOk = TableOk::True;
    return;
  }
  if (call_.dependent == Dependent::Yes && connection_ == nullptr && !texts_.missingConnection.empty()) {
    TheDesk().ShowMessageBox({.text = std::string(texts_.missingConnection)});
    return;
  }
  if (connection_ == nullptr) {
    ownConnection_ = Vars().platform.database->CreateConnection();
    connection_ = ownConnection_.get();
  }
  // All writes go through this recordset.
  OpenConnection(*connection_, &rows_, tableName_);
  work.Secure(*this);
  showsProgress_ = call_.dependent == Dependent::No && records.Count() >= progressFrom && run_.ShowsProgress();
  if (showsProgress_) ShowMsgForm(texts_.shown);
  work.Prepare(*this);
  bool lacking = false;
  for (const auto& record : records) {
    name_.clear();
    const auto end = TakeRecordInHand(work, record);
    if (end == RecordEnd::LeaveTable) break;
    lacking = end == RecordEnd::Lacking || lacking;
    if (!EndRecord()) break;
  }
  if (lacking) TellLacking(texts_.lacking, run_);
}

// One that an error ended stays in hand until that is told.
RecordEnd RecordWalk::TakeRecordInHand(RecordWork& work, const Record& record) {
  if (!IsObserved()) return TakeRecord(work, record);
  inHand_.emplace(Standing::Record);
  const auto end = TakeRecord(work, record);
  if (end == RecordEnd::Lacking) NoteFateAtLast(Fate::PassedOver, "what it belongs to is not here");
  inHand_.reset();
  return end;
}

RecordEnd RecordWalk::TakeRecord(RecordWork& work, const Record& record) {
  auto end = RecordEnd::Done;
  const auto raised = CatchError([&] {
    TheDesk().PumpMessages();
    run_.g_TableOk = TableOk::False;
    ++counter_;
    if (showsProgress_) {
      UpdateProgressBar(static_cast<std::int64_t>(call_.records.Count()), counter_);
      if (const auto shown = work.ShownOf(record)) SetProgressText(*shown);
      TheDesk().PumpMessages();
    }
    end = work.TakeRecord(*this, record);
  });
  if (!raised) return end;
  if (inHand_) inHand_->NoteFailure(*raised);
  if (texts_.afterError == AfterError::EndsTheRun) throw PlatformError(*raised);
  return AskAfterError(work, *raised);
}

ado::Recordset& RecordWalk::Rows() const {
  if (!rows_) throw PlatformError(error::kObjectNothing);
  return *rows_;
}

RecordEnd RecordWalk::AskAfterError(RecordWork& work, const PlatformError& raised) {
  // A half-written row must not be in the way of the next record.
  IgnoreErrors([&] {
    if (rows_ && rows_->EditState() != ado::EditMode::None) rows_->CancelUpdate();
  });
  work.Abandon();
  Tell(raised);
  const auto answer = TheDesk().ShowMessageBox({.text = "Do you want to continue transfering rest of the records?",
                                                .title = "Question",
                                                .icon = texts_.askedWith,
                                                .buttons = BoxButtons::YesNo});
  if (answer == BoxAnswer::Yes) {
    run_.g_TableOk = TableOk::GoOn;
    run_.g_Cancelled = false;
    return RecordEnd::Done;
  }
  if (texts_.afterError == AfterError::AsksAndLeaves) {
    EndCancelled(run_);
    run_.g_Cancelled = true;
    return RecordEnd::LeaveTable;
  }
  run_.g_Cancelled = true;
  return RecordEnd::Done;
}

// False: the user wants no more.
bool RecordWalk::EndRecord() const {
  if (run_.g_TableOk != TableOk::GoOn) run_.g_TableOk = TableOk::True;
  if (!run_.g_Cancelled || call_.dependent == Dependent::Yes) return true;
  EndCancelled(run_);
  return false;
}

}  // namespace twqb
