#include "engine/RowWalk.h"

#include <fmt/core.h>

#include <vector>

#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/QBSessionManager.h"
#include "services/Database.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"

namespace twqb {

void RowWalk::Walk(const Sql& sql, RowWork& work) {
  auto begun = Begun::Yes;
  const auto raised = CatchError([&] {
    begun = Begin(sql, work);
    if (begun == Begun::Yes) TakeAll(work);
  });
  if (raised) TellError(*raised, work);
  inHand_.reset();
  TellExtent({.found = total_, .taken = taken_});
  if (begun == Begun::NotSecured) return;
  const bool takesFormDown = run_.ShowsProgress() && (raised || total_ > 0 || work.ClosesWithoutRows());
  CloseObjects(run_, takesFormDown ? FormToo::Unload : FormToo::Leave, &rows_, nullptr, &connection_);
  if (begun == Begun::WithoutRows) return;
  const auto lastRaised = CatchError([&] {
    if (raised) return work.SummariseBroken(run_);
    if (lacking_ && texts_.lacking.when == LackingBox::When::BehindClosing) TellLacking(texts_.lacking, run_);
    work.Summarise(run_);
  });
  if (lastRaised) TellError(*lastRaised, work);
}

// The rest of the rows is not attempted.
void RowWalk::TellError(const PlatformError& raised, const RowWork& work) {
  run_.g_TableOk = TableOk::False;
  ReportError(texts_.errors, texts_.routine, raised);
  if (!texts_.log.empty()) WriteLog(std::string(texts_.log) + work.RowInHand());
}

RowWalk::Begun RowWalk::Begin(const Sql& sql, RowWork& work) {
  connection_ = Vars().platform.database->CreateConnection();
  OpenConnection(*connection_, nullptr, "");
  rows_ = connection_->OpenRecordset(sql, ado::CursorType::Static, ado::LockType::ReadOnly);
  total_ = rows_->RecordCount();
  // Nothing to do is a good end.
  if (total_ == 0) {
    run_.g_TableOk = TableOk::True;
    return Begun::WithoutRows;
  }
  // Of what went ahead of this walk.
  if (const auto& session = Vars().g_QBSession) static_cast<void>(session->TakeMended());
  return work.Secure() ? Begun::Yes : Begun::NotSecured;
}

void RowWalk::TakeAll(RowWork& work) {
  if (run_.ShowsProgress()) ShowMsgForm(texts_.shown);
  if (!work.Prepare(*this)) {
    run_.g_TableOk = TableOk::False;
    return;
  }
  while (!rows_->Eof()) {
    const auto end = TakeRowInHand(work);
    if (end == RowEnd::LeaveTable) {
      run_.g_TableOk = TableOk::False;
      break;
    }
    lacking_ = lacking_ || end == RowEnd::Lacking;
    if (!EndRow(work)) break;
  }
  if (lacking_ && texts_.lacking.when == LackingBox::When::AheadOfClosing) TellLacking(texts_.lacking, run_);
}

// The record of a row that an error ended stays in hand until that is told.
RowEnd RowWalk::TakeRowInHand(RowWork& work) {
  ++taken_;
  if (!IsObserved()) return TakeRow(work);
  inHand_.emplace(Standing::Record, [&work] { return work.KeyInHand(); });
  const auto end = TakeRow(work);
  if (end == RowEnd::Lacking) NoteFateAtLast(Fate::PassedOver, "what it belongs to has no link");
  inHand_.reset();
  return end;
}

RowEnd RowWalk::TakeRow(RowWork& work) {
  auto end = RowEnd::Done;
  const auto raised = CatchError([&] { end = work.TakeRow(*this); });
  TellMended(work);
  if (raised) {
    if (inHand_) inHand_->NoteFailure(*raised);
    if (!work.PassesOver(*raised)) throw *raised;
    ReportError(texts_.errors, texts_.routine, *raised);
  }
  return end;
}

// Texts of the row that could not go as they are, by their columns. Whoever reads texts elsewhere tells of those.
void RowWalk::TellMended(const RowWork& work) const {
  const auto& session = Vars().g_QBSession;
  if (!session || !session->TakeMended()) return;
  std::vector<std::string> columns;
  for (int i = 0; i < rows_->FieldCount(); ++i) {
    if (!IsXmlText(ToText(rows_->FieldAt(i)))) columns.push_back(rows_->FieldName(i));
  }
  if (!columns.empty()) LogMended(texts_.routine, Join(columns, ", "), work.RowInHand());
}

void RowWalk::BeginRow(int callbackMode) {
  if (TalksToCallback()) {
    TheCallback().SetMode(callbackMode);
    TheCallback().SetText("");
  }
  TheDesk().PumpMessages();
  run_.g_TableOk = TableOk::False;
}

void RowWalk::ShowRow(const std::string& text) const {
  UpdateProgressBar(total_, counter_);
  SetProgressText(text);
  TheDesk().PumpMessages();
}

// False: the user wants no more.
bool RowWalk::EndRow(RowWork& work) {
  rows_->MoveNext();
  if (work.BehindRow(*this) == RowEnd::LeaveTable) {
    run_.g_TableOk = TableOk::False;
    return false;
  }
  run_.g_TableOk = TableOk::True;
  if (!run_.g_Cancelled) return true;
  EndCancelled(run_);
  return false;
}

void TellRecordId(std::string_view id) {
  if (TalksToCallback()) TheCallback().SetText(id);
}

void EndCancelled(Run& run) {
  run.g_Cancelled = false;
  TheDesk().SetPointer(Pointer::Default);
  TheDesk().ShowMessageBox({.text = "Operation cancelled!"});
  run.g_TableOk = TableOk::False;
}

void TellLacking(const LackingBox& box, Run& run) {
  TheDesk().ShowMessageBox(
      {.text = std::string(box.text), .title = std::string(box.title), .icon = BoxIcon::Information});
  if (box.failsTheTable) run.g_TableOk = TableOk::False;
}

}  // namespace twqb
