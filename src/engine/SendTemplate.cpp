#include <fmt/format.h>

#include <memory>
#include <optional>
#include <set>

#include "engine/ConflictRule.h"
#include "engine/RecordReader.h"
#include "engine/Template.h"
#include "platform/Text.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"

namespace twqb {

namespace {

// Tells the call-back object about the record in hand.
void TellRecordStarts() {
  if (!TalksToCallback()) return;
  TheCallback().SetMode(kCallbackRecord);
  TheCallback().SetText("");
}
void TellRecordId(std::string_view id) {
  if (TalksToCallback()) TheCallback().SetText(id);
}

class SendRun {
 public:
  SendRun(const TableDescription& table, bool optNever, bool optMostRecent, QBSessionManager& session)
      : table_(table), rule_(TwinRuleOf(optNever, optMostRecent)), session_(session) {}

  void Run(const std::string& strSQL) {
    const auto raised = CatchError([&] { SendRows(strSQL); });
    if (raised) {
      // The rest of the rows is not attempted.
      Vars().g_TableOk = TableOk::False;
      ReportError(table_.sendErrors, table_.sendRoutine, *raised);
      if (!table_.sendLogText.empty()) WriteLog(std::string(table_.sendLogText) + record_.key);
    }
    // 5. Recordset, connection and form.
    CloseObjects(Vars().g_NoProgressBar ? FormToo::Leave : FormToo::Unload, &rows_, nullptr, &connection_);
  }

 private:
  void SendRows(const std::string& strSQL) {
    // 1. The connection and the selection, fetched whole.
    connection_ = Vars().platform.database->CreateConnection();
    OpenConnection(*connection_, nullptr, "");
    rows_ = connection_->OpenRecordset(strSQL, ado::CursorType::Static, ado::LockType::ReadOnly);
    // 2. Nothing to do is a good end.
    const auto total = rows_->RecordCount();
    if (total == 0) {
      Vars().g_TableOk = TableOk::True;
      return;
    }
    // 3.
    if (!Vars().g_NoProgressBar) ShowMsgForm(table_.sendingText);
    // 4.
    while (!rows_->Eof()) {
      if (const auto raised = CatchError([&] { SendRow(total); })) {
        if (raised->number() != table_.sendPassesOver) throw *raised;
        ReportError(table_.sendErrors, table_.sendRoutine, *raised);
      }
      if (leaves_) return;
      if (!EndRecord()) break;
    }
    if (lacking_) TellLacking(table_.sendLackingText);
  }

  // 4.1 to 4.9 for the current row. Returning early is a skip.
  void SendRow(std::int64_t total) {
    record_ = {};
    tried_.clear();
    if (const auto admission = table_.admitRow == nullptr ? Admission::Admitted : table_.admitRow(*rows_);
        admission != Admission::Admitted) {
      lacking_ = lacking_ || admission == Admission::Lacking;
      return;
    }
    // 4.1, 4.2
    TellRecordStarts();
    TheDesk().PumpMessages();
    Vars().g_TableOk = TableOk::False;
    // 4.3
    record_.key = ColumnText(*rows_, table_.keyColumn);
    ++counter_;
    if (!Vars().g_NoProgressBar) {
      UpdateProgressBar(total, counter_);
      SetProgressText(table_.progressColumn.empty() ? record_.key : ColumnText(*rows_, table_.progressColumn));
      TheDesk().PumpMessages();
    }
    // 4.4, 4.5
    record_.linkId = ColumnText(*rows_, table_.selectedLinkColumn);
    record_.qbName = record_.key;
    if (table_.readRow != nullptr) table_.readRow(*rows_, record_);
    if (record_.passedOver) return;
    record_.lastUpdatedIsNull = IsNull(rows_->Field("LastUpdated"));
    if (table_.rowDate == RowDate::AheadOfTheTwin) {
      rowDate_ = GetTWDateOfUpdation(*rows_, "LastUpdated", table_.fallbackDateColumn);
    }
    // 4.6
    auto messageSet = RequireMsgSetRequest(session_);
    // 4.7 The twin. A dead link goes down the Add path.
    RecordList twins;
    if (!record_.linkId.empty()) {
      if (!ApplyQBFiltersAndReadRecords(table_.table, twins, session_, {.strID = record_.linkId})) {
        record_.linkId.clear();
      } else if (twins.Count() != 1) {
        return;
      } else {
        record_.twin = twins.At(0);
      }
    }
    if (const auto way = WayOf(); way == InVersion1::AddAnew) {
      AddRecord(messageSet, 0);
    } else if (way == InVersion1::Modify) {
      ModifyTwin(messageSet);
    }
  }

  // What is done with the row, now that its twin has been looked for.
  InVersion1 WayOf() const {
    if (record_.linkId.empty()) return InVersion1::AddAnew;
    return Vars().g_QBMajorVer == 1 ? table_.inVersion1 : InVersion1::Modify;
  }

  // 4.8
  void ModifyTwin(MsgSetRequest& messageSet) {
    const auto& twin = record_.twin;
    if (rule_ == TwinRule::LeaveAlone) return;
    if (table_.rulePlace == RulePlace::AheadOfRequest && !TwinMoves(twin)) return;
    TellRecordId(record_.linkId);
    const auto request =
        messageSet.Append(table_.modRequestOf == nullptr ? table_.modRequest : table_.modRequestOf(twin));
    request["ListID"].SetValue(twin["ListID"].GetValue());
    request["EditSequence"].SetValue(twin["EditSequence"].GetValue());
    if (table_.rulePlace == RulePlace::BehindIdentity && !TwinMoves(twin)) return;
    if (!IsFilled(request, RequestKind::Mod)) return;
    const auto sent = Exchange(messageSet, request, RequestKind::Mod, 0);
    // Nothing is written back after a Mod.
    if (!sent.refusal) return;
    if (*sent.refusal != Refusal::TryNextName) {
      EndRefused(*sent.refusal, RequestKind::Mod, sent.answer.GetAt(0));
      return;
    }
    // The name that the Mod would have given is in use: the record is added anew, in the same set.
    tried_.insert(NameOf(table_, request));
    if (!AddRecord(messageSet, 1)) AskAfterFailedMod(sent.answer.GetAt(0));
  }

  bool TwinMoves(const Record& twin) const {
    if (table_.rowDate == RowDate::AheadOfTheTwin) return PairMoves(Direction::Send, rule_, twin, rowDate_);
    return PairMoves(table_, Direction::Send, rule_, twin, *rows_);
  }

  // Fills the request; False: it is not to go.
  bool IsFilled(const RequestField& request, RequestKind kind) {
    const auto filling = AssignFields(table_, request, *rows_, kind, record_);
    leaves_ = filling == Filling::EndTable;
    return filling == Filling::Filled;
  }

  // The last answer to a set; without a refusal the request went through.
  struct Exchanged {
    MsgSetResponse answer;
    std::optional<Refusal> refusal;
  };

  // Sends the set, and again as long as the table mends the request, whose response is the one of that index.
  Exchanged Exchange(const MsgSetRequest& messageSet, const RequestField& request, RequestKind kind,
                     std::size_t index) {
    for (int resends = 0;; ++resends) {
      auto answer = session_.DoRequests(messageSet);
      const auto& response = answer.GetAt(index);
      if (response.StatusCode() == 0) return {std::move(answer), std::nullopt};
      const auto refusal = OnRefusal(table_, {.request = request,
                                              .response = response,
                                              .kind = kind,
                                              .record = record_,
                                              .row = *rows_,
                                              .resends = resends});
      if (refusal != Refusal::SendAgain) return {std::move(answer), refusal};
    }
  }

  // 4.9 A name in use is tried again with a counter behind it. The set is not made anew: every round sends the earlier
  // requests again, and only the response of the last one counts. False when the first name was tried before.
  bool AddRecord(MsgSetRequest& messageSet, std::size_t retryIndex) {
    const auto baseName = record_.qbName;
    std::optional<Exchanged> sent;
    for (;; ++retryIndex) {
      const auto lastName = record_.qbName;
      if (retryIndex > 0) record_.qbName = fmt::format("{}{}", baseName, retryIndex);
      const auto request = messageSet.Append(table_.addRequest);
      if (!IsFilled(request, RequestKind::Add)) return true;
      // A cut that takes the counter off again must end the rounds.
      if (!tried_.insert(NameOf(table_, request)).second) {
        record_.qbName = lastName;
        if (!sent) return false;
        EndNamesSpent(request, sent->answer.GetAt(retryIndex - 1));
        return true;
      }
      sent.emplace(Exchange(messageSet, request, RequestKind::Add, retryIndex));
      const auto& response = sent->answer.GetAt(retryIndex);
      if (!sent->refusal) {
        WriteLinkBack(response.Detail()["ListID"].GetValue());
        return true;
      }
      if (*sent->refusal != Refusal::TryNextName) {
        EndRefused(*sent->refusal, RequestKind::Add, response);
        return true;
      }
    }
  }

  void EndNamesSpent(const RequestField& request, const Response& response) {
    const auto refusal = OnRefusal(table_, {.request = request,
                                            .response = response,
                                            .kind = RequestKind::Add,
                                            .record = record_,
                                            .row = *rows_,
                                            .namesSpent = true});
    EndRefused(refusal == Refusal::TryNextName ? Refusal::AskUser : refusal, RequestKind::Add, response);
  }

  void EndRefused(Refusal refusal, RequestKind kind, const Response& response) {
    if (refusal == Refusal::EndTable) Vars().g_Cancelled = true;
    if (refusal == Refusal::LeaveTable) leaves_ = true;
    if (refusal == Refusal::AskToGoOn) AskForTheRest();
    if (refusal != Refusal::AskUser) return;
    kind == RequestKind::Mod ? AskAfterFailedMod(response) : AskAfterFailedAdd(response);
  }

  // 4.9.5, 4.9.6
  void WriteLinkBack(const std::string& listId) {
    TellRecordId(record_.key);
    // The key goes in as it is: a key with a quote fails the statement and ends in the error path.
    connection_->Execute(fmt::format("UPDATE {} SET QBLinkID = '{}' WHERE {} = '{}';", table_.tableName, listId,
                                     table_.keyColumn, record_.key),
                         nullptr);
    Vars().g_NewQBLinkID = listId;
    if (record_.lastUpdatedIsNull) {
      connection_->Execute(LastUpdatedStatement(table_, record_.key, LocalToUTC(TheMachine().Now())), nullptr);
    }
  }

  // QuickBooks' message and the record line.
  std::string RefusedText(const Response& response) const {
    const auto line = RecordLine(table_, *rows_, record_);
    return QBErrorText(response) + (line.empty() ? "" : "\r\n\r\n" + line);
  }

  void AskAfterFailedMod(const Response& response) const {
    TheDesk().ShowMessageBox({.text = RefusedText(response), .title = "Error", .icon = BoxIcon::Information});
    AskForTheRest();
  }

  static void AskForTheRest() {
    const auto answer = TheDesk().ShowMessageBox(
        {.text = "Do you want to transfer rest of the records?", .buttons = BoxButtons::YesNo});
    if (answer == BoxAnswer::No) Vars().g_Cancelled = true;
  }

  void AskAfterFailedAdd(const Response& response) const {
    if (table_.addQuestion == AddQuestion::InItsOwnBox) {
      AskAfterFailedMod(response);
      return;
    }
    auto text = table_.refusedAddText == nullptr ? "" : table_.refusedAddText(response.StatusCode(), record_);
    if (text.empty()) text = RefusedText(response);
    const auto answer = TheDesk().ShowMessageBox({.text = text + "\r\n\r\nDo you want to continue?",
                                                  .title = "Error",
                                                  .icon = BoxIcon::Question,
                                                  .buttons = BoxButtons::YesNo});
    if (answer == BoxAnswer::No) Vars().g_Cancelled = true;
  }

  // 4.10 False: the user wants no more.
  bool EndRecord() {
    rows_->MoveNext();
    Vars().g_TableOk = TableOk::True;
    if (!Vars().g_Cancelled) return true;
    EndCancelled();
    return false;
  }

  const TableDescription& table_;
  const TwinRule rule_;
  QBSessionManager& session_;
  std::unique_ptr<ado::Connection> connection_;
  std::unique_ptr<ado::Recordset> rows_;
  SendRecord record_;
  std::optional<Date> rowDate_;  // only where the table wants it ahead of the twin
  std::set<std::string> tried_;  // names of the record in hand, as cut
  std::int64_t counter_ = 0;
  bool lacking_ = false;  // a row was passed over for lack of what it belongs to
  bool leaves_ = false;   // the table ends at once, unfinished
};

}  // namespace

void SendTable(const TableDescription& table, const std::string& strSQL, bool optNever, bool optMostRecent,
               QBSessionManager& session) {
  SendRun(table, optNever, optMostRecent, session).Run(strSQL);
}

}  // namespace twqb
