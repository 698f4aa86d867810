#include <fmt/core.h>

#include <optional>
#include <set>

#include "engine/AddedRecords.h"
#include "engine/ListTable.h"
#include "engine/LostAdditions.h"
#include "engine/PairMoves.h"
#include "engine/RecordReader.h"
#include "engine/RowLook.h"
#include "engine/SelectionQueries.h"
#include "engine/WriteBack.h"
#include "messages/StatusCodes.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"

namespace twqb {

namespace {

// What is read of a row beside its key.
void ReadSendRecord(const ListSend& send, const ado::Recordset& row, SendRecord& record) {
  record.linkId = ColumnText(row, send.linkColumn);
  record.countedName = record.key;
  record.lastUpdatedIsNull = IsNull(row.Field("LastUpdated"));
  if (send.readRow != nullptr) send.readRow(row, record);
}

std::string CountedName(std::string_view name, std::size_t attempt) {
  return attempt == 0 ? std::string(name) : fmt::format("{}{}", name, attempt);
}

std::string NameOf(const ListSend& send, const RequestField& request) {
  return send.nameOf != nullptr ? send.nameOf(request) : request["Name"].GetValue();
}

void StampRow(const ListTable& list, const RowPlace& place, std::string_view key, ado::Connection& connection) {
  if (list.send.lastUpdatedStatement == nullptr) return WriteStamp(connection, place);
  connection.Execute(list.send.lastUpdatedStatement(key, LocalToUTC(TheMachine().Now())), nullptr);
}

// What follows the addition of a row in BillingDb.
void WriteListLink(const ListTable& list, const SendRecord& record, const std::string& listId,
                   ado::Connection& connection) {
  TellRecordId(record.key);
  const RowPlace place = {.table = list.tableName, .condition = KeyCondition(list.keyColumn, record.key)};
  WriteLink(connection, place, listId);
  Vars().g_NewQBLinkID = listId;
  if (record.lastUpdatedIsNull) StampRow(list, place, record.key, connection);
}

// --- A look at a row -------------------------------------------------------------------------------------------------

void NoteAdmission(const ListSend& send, const ado::Recordset& row, RowLook& look) {
  look.NoteRow(row);
  const auto admission = send.admit == nullptr ? Admission::Admitted : send.admit(row);
  if (admission == Admission::PassedOver) look.NoteStays(Stays::Never, {});
  if (admission == Admission::Lacking) look.NoteStays(Stays::Lacking, "what it belongs to has no link yet");
}

void NoteRead(const ListTable& list, const ado::Recordset& row, const SendRecord& record, RowLook& look) {
  if (record.passedOver) look.NoteStays(Stays::Never, {});
  if (record.isAtTop) look.NoteAtTop();
  const auto date = record.date ? *record.date : RowDate(list, row);
  if (!date) look.NoteUnreadableDate();
}

class ListSendWork final : public RowWork {
 public:
  ListSendWork(const Table& table, const ListTable& list, const SendCall& call)
      : table_(table), list_(list), send_(list.send), rule_(call.rule), session_(call.session), run_(call.run) {}

  RowEnd TakeRow(RowWalk& walk) override {
    walk_ = &walk;
    record_ = {};
    tried_.clear();
    leavesTwin_ = false;
    end_ = RowEnd::Done;
    if (const auto admission = send_.admit == nullptr ? Admission::Admitted : send_.admit(Row());
        admission != Admission::Admitted) {
      if (admission == Admission::PassedOver) NoteFateAtLast(Fate::PassedOver, "the table does not send such rows");
      return admission == Admission::Lacking ? RowEnd::Lacking : RowEnd::Done;
    }
    walk.BeginRow(kCallbackRecord);
    ReadRow();
    NoteIdentifier(record_.linkId);
    if (WasTakenUp(table_, record_.key, session_)) {
      // What was written of it just now does not make it newer than its twin.
      NoteFate(Fate::LeftAsItWas, "it was found again in QuickBooks");
    } else if (record_.passedOver) {
      NoteFateAtLast(Fate::PassedOver, "the table does not send such rows");
    } else {
      SendRow();
    }
    return end_;
  }

  [[nodiscard]] bool PassesOver(const PlatformError& raised) const override {
    return send_.passesOver != nullptr && send_.passesOver(raised);
  }
  [[nodiscard]] std::string RowInHand() const override { return record_.key; }
  [[nodiscard]] std::string KeyInHand() const override {
    return record_.key.empty() ? ColumnText(Row(), list_.keyColumn) : record_.key;
  }

 private:
  [[nodiscard]] const ado::Recordset& Row() const { return walk_->Row(); }

  void ReadRow() {
    record_.key = ColumnText(Row(), list_.keyColumn);
    walk_->CountRow(
        [&] { return send_.progressColumn.empty() ? record_.key : ColumnText(Row(), send_.progressColumn); });
    ReadSendRecord(send_, Row(), record_);
  }

  void SendRow() {
    if (!FindTwin()) return;
    switch (WayOf()) {
      case InVersion1::AddAnew: {
        auto messageSet = RequireMsgSetRequest(session_);
        AddRecord(messageSet, 0);
        break;
      }
      case InVersion1::Modify:
        ModifyTwin();
        break;
      case InVersion1::LeaveAlone:
        NoteFate(Fate::LeftAsItWas, "QuickBooks of this version can't modify such records");
        break;
    }
  }

  // A dead link goes down the way of an Add. False: the link names no single record, and the row stays as it is.
  bool FindTwin() {
    if (record_.linkId.empty()) return true;
    RecordList twins;
    if (!ApplyQBFiltersAndReadRecords(table_, table_.reads.front(), twins, session_, {.strID = record_.linkId}, run_)) {
      NoteLinkWithoutTwin(record_.linkId);
      record_.linkId.clear();
      return true;
    }
    if (twins.Count() != 1) {
      NoteFate(Fate::PassedOver, [&] { return fmt::format("its link names {} records", twins.Count()); });
      return false;
    }
    record_.twin = twins.At(0);
    return true;
  }

  // What is done with the row, now that its twin has been looked for.
  [[nodiscard]] InVersion1 WayOf() const {
    if (record_.linkId.empty()) return InVersion1::AddAnew;
    return Vars().g_QBMajorVer == 1 ? send_.inVersion1 : InVersion1::Modify;
  }

  void ModifyTwin() {
    const auto& twin = record_.twin;
    if (rule_ == TwinRule::LeaveAlone) {
      NoteFate(Fate::LeftAsItWas, kNeverChanged);
      return;
    }
    if (send_.announces == Announces::PairsThatGo && !TwinMoves(twin)) return;
    TellRecordId(record_.linkId);
    const auto requestName = send_.modRequestOf == nullptr ? send_.modRequest : send_.modRequestOf(twin);
    const auto listId = twin["ListID"].GetValue();
    const auto editSequence = twin["EditSequence"].GetValue();
    if (send_.announces == Announces::EveryPair && !TwinMoves(twin)) return;
    auto messageSet = RequireMsgSetRequest(session_);
    const auto request = messageSet.Append(requestName);
    NameTwin(messageSet, record_.linkId);
    request["ListID"].SetValue(listId);
    request["EditSequence"].SetValue(editSequence);
    if (!IsFilled(request, RequestKind::Mod)) return;
    const auto exchanged = Exchange(messageSet, request, RequestKind::Mod, 0);
    if (!exchanged) return;
    const auto& sent = *exchanged;
    // Nothing is written back after a Mod.
    if (!sent.refusal) {
      NoteFate(Fate::Changed);
      return;
    }
    if (*sent.refusal != Refusal::TryNextName) {
      EndRefused(*sent.refusal, sent.answer.GetAt(0));
      return;
    }
    // The name that the Mod would have given is in use: the record is added anew, in the same set.
    tried_.insert(NameOf(send_, request));
    leavesTwin_ = true;
    if (!AddRecord(messageSet, 1)) EndRefused(Refusal::AskInItsOwnBox, sent.answer.GetAt(0));
  }

  [[nodiscard]] bool TwinMoves(const Record& twin) const {
    return PairMoves(Direction::Send, rule_, twin,
                     [&] { return record_.date ? *record_.date : RowDate(list_, Row()); });
  }

  // Fills the request; False: it is not to go.
  bool IsFilled(const RequestField& request, RequestKind kind) {
    const auto filling = FillRequest(send_, request, Row(), kind, record_);
    if (filling == Filling::EndTable) end_ = RowEnd::LeaveTable;
    return filling == Filling::Filled;
  }

  // The last answer to a set; without a refusal the request went through.
  struct Exchanged {
    MsgSetResponse answer;
    std::optional<Refusal> refusal;
  };

  // Sends the set, and again as long as the table mends the request, whose response is the one of that index. Nothing:
  // the row must not go, which has been told.
  std::optional<Exchanged> Exchange(const MsgSetRequest& messageSet, const RequestField& request, RequestKind kind,
                                    std::size_t index) {
    for (int resends = 0;; ++resends) {
      auto sent = kind == RequestKind::Add ? SendAddition(table_, record_.key, session_, messageSet)
                                           : session_.DoRequests(messageSet);
      if (!sent) return std::nullopt;
      auto& answer = *sent;
      const auto& response = answer.GetAt(index);
      if (response.StatusCode() == status::kOk) {
        if (resends > 0) NoteWhy([] { return "without what QuickBooks refused at first"; });
        return Exchanged{std::move(answer), std::nullopt};
      }
      const auto refusal = Settle({.request = request,
                                   .response = response,
                                   .kind = kind,
                                   .record = record_,
                                   .row = Row(),
                                   .resends = resends});
      if (refusal != Refusal::SendAgain) return Exchanged{std::move(answer), refusal};
    }
  }

  Refusal Settle(const RefusedRequest& refused) {
    return ApplyRule(RuleFor(send_.rules, refused), refused, run_.g_Cancelled);
  }

  // A name in use is tried again with a counter behind it. The set is not made anew: every round sends the earlier
  // requests again, and only the response of the last one counts. False when the first name was tried before.
  bool AddRecord(MsgSetRequest& messageSet, std::size_t retryIndex) {
    const auto baseName = record_.countedName;
    std::optional<Exchanged> sent;
    for (;; ++retryIndex) {
      const auto lastName = record_.countedName;
      if (retryIndex > 0) record_.countedName = CountedName(baseName, retryIndex);
      const auto request = AppendAddition(messageSet, send_.addRequest, table_, record_.key);
      if (!IsFilled(request, RequestKind::Add)) return true;
      // A cut that takes the counter off again must end the rounds.
      if (!tried_.insert(NameOf(send_, request)).second) {
        record_.countedName = lastName;
        if (!sent) return false;
        EndNamesSpent(request, sent->answer.GetAt(retryIndex - 1));
        return true;
      }
      sent = Exchange(messageSet, request, RequestKind::Add, retryIndex);
      if (!sent) return true;
      const auto& response = sent->answer.GetAt(retryIndex);
      if (!sent->refusal) {
        EndAdded(response.Detail()["ListID"].GetValue(), retryIndex);
        return true;
      }
      if (*sent->refusal != Refusal::TryNextName) {
        EndRefused(*sent->refusal, response);
        return true;
      }
    }
  }

  void EndNamesSpent(const RequestField& request, const Response& response) {
    EndRefused(Settle({.request = request,
                       .response = response,
                       .kind = RequestKind::Add,
                       .record = record_,
                       .row = Row(),
                       .namesSpent = true}),
               response);
  }

  void EndRefused(Refusal refusal, const Response& response) {
    switch (refusal) {
      case Refusal::AskInTheBox:
        if (Asks({.text = RefusedText(response) + "\r\n\r\nDo you want to continue?",
                  .title = "Error",
                  .icon = BoxIcon::Question,
                  .buttons = BoxButtons::YesNo}) == BoxAnswer::No) {
          run_.g_Cancelled = true;
        }
        break;
      case Refusal::AskInItsOwnBox:
        Asks({.text = RefusedText(response), .title = "Error", .icon = BoxIcon::Information});
        AskForTheRest();
        break;
      case Refusal::AskToGoOn:
        AskForTheRest();
        break;
      case Refusal::EndTable:
        run_.g_Cancelled = true;
        break;
      case Refusal::LeaveTable:
        end_ = RowEnd::LeaveTable;
        break;
      case Refusal::PassOverLacking:
        end_ = RowEnd::Lacking;
        break;
      case Refusal::PassOver:
      case Refusal::TryNextName:
      case Refusal::SendAgain:
        break;
    }
  }

  void EndAdded(const std::string& listId, std::size_t retryIndex) {
    NoteFate(Fate::Added);
    NoteIdentifier(listId);
    if (retryIndex > 0) {
      NoteWhy([&] { return fmt::format("its name is in use; it is \"{}\" there", record_.countedName); });
    }
    if (leavesTwin_) {
      // It will be so at each change: a Mod gives the name without its counter. Only who reads this can end it.
      WriteLog(
          fmt::format("The name of {} {} is in use in QuickBooks. It was added once more: {} is its link now, in the "
                      "place of {}, which stays in QuickBooks.",
                      list_.tableName, record_.key, listId, record_.linkId));
      NoteFormer(record_.linkId, Parting::NameInUse);
    }
    WriteListLink(list_, record_, listId, walk_->Connection());
    CloseAddition(session_);
  }

  // QuickBooks' message and the record line, where the table tells the record.
  [[nodiscard]] std::string RefusedText(const Response& response) const {
    const auto line = RecordLine();
    return QBErrorText(response) + (line.empty() ? "" : "\r\n\r\n" + line);
  }
  [[nodiscard]] std::string RecordLine() const {
    if (send_.recordLine != nullptr) return send_.recordLine(Row(), record_);
    return send_.recordLabel.empty() ? "" : fmt::format("[{} = \"{}\"]", send_.recordLabel, record_.key);
  }

  static BoxAnswer Asks(const MessageBox& box) { return TheDesk().ShowMessageBox(box); }
  void AskForTheRest() const {
    if (Asks({.text = "Do you want to transfer rest of the records?", .buttons = BoxButtons::YesNo}) == BoxAnswer::No) {
      run_.g_Cancelled = true;
    }
  }

  const Table& table_;
  const ListTable& list_;
  const ListSend& send_;
  const TwinRule rule_;
  QBSessionManager& session_;
  Run& run_;
  RowWalk* walk_ = nullptr;
  SendRecord record_;
  RowEnd end_ = RowEnd::Done;    // of the row in hand
  std::set<std::string> tried_;  // names of the record in hand, as cut
  bool leavesTwin_ = false;      // its twin can't be given its name
};

}  // namespace

TakenUp TakeUpListLink(const Table& table, const ListTable& list, const LostAddition& lost) {
  const auto row = lost.connection.OpenRecordset(SelectRows(table, list.keyColumn, lost.key), ado::CursorType::Static,
                                                 ado::LockType::ReadOnly);
  if (row->Eof()) return {.end = TakenUp::End::RowGone};
  const auto& send = list.send;
  SendRecord record;
  record.key = lost.key;
  if (lost.look != nullptr) NoteAdmission(send, *row, *lost.look);
  ReadSendRecord(send, *row, record);
  if (lost.look != nullptr) NoteRead(list, *row, record, *lost.look);
  const auto link = record.linkId;
  record.linkId.clear();
  record.countedName = CountedName(record.countedName, lost.attempt);
  const auto& read = table.reads.front();
  auto added = FindAdded(lost, link, read, [&] {
    auto set = RequireMsgSetRequest(lost.session);
    const auto request = set.Append(send.addRequest);
    static_cast<void>(FillRequest(send, request, *row, RequestKind::Add, record));
    return UnlinkedRecordsLike(lost, list.tableName, read, request, NameOf(send, request));
  });
  if (!added.record.IsNothing()) {
    WriteListLink(list, record, added.taken.identifier, lost.connection);
  } else if (added.taken.end == TakenUp::End::KnewIt && record.lastUpdatedIsNull) {
    // The date goes behind the link, so that it can be missing alone.
    StampRow(list, {.table = list.tableName, .condition = KeyCondition(list.keyColumn, record.key)}, record.key,
             lost.connection);
    // Which does not make it newer than its twin.
    NoteTakenUp(table, record.key, lost.session);
  }
  return added.taken;
}

void SendList(const Table& table, const ListTable& list, const SendCall& call) {
  ListSendWork work(table, list, call);
  RowWalk(list.send.texts, call.run).Walk(call.sql, work);
}

}  // namespace twqb
