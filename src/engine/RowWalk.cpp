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
  if (const auto raised = CatchError([&] { end = work.TakeRow(*this); })) {
    if (inHand_) inHand_->NoteFailure(*raised);
    if (!work.PassesOver(*raised)) throw *raised;
    ReportError(texts_.errors, texts_.routine, *raised);
  }
  TellMended(work, rows_.get());
  return end;
}

// Texts that could not go as they are, by the columns of the row that hold them; of lines that were read elsewhere, by
// the fields that they went into.
void RowWalk::TellMended(const RowWork& work, const ado::Recordset* row) const {
  const auto& session = Vars().g_QBSession;
  auto places = session ? session->TakeMendedFields() : std::vector<std::string>();
  if (places.empty()) return;
  std::vector<std::string> columns;
  for (int i = 0; row != nullptr && i < row->FieldCount(); ++i) {
    if (!IsXmlText(ToText(row->FieldAt(i)))) columns.push_back(row->FieldName(i));
  }
  WriteLog(fmt::format("{}: characters that can't go to QuickBooks were left out or read as Windows-1252: {}: {}",
                       texts_.routine, Join(columns.empty() ? places : columns, ", "), work.RowInHand()));
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
  const auto behind = work.BehindRow(*this);
  TellMended(work, nullptr);
  if (behind == RowEnd::LeaveTable) {
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
