#include <fmt/core.h>

#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/RowLook.h"
#include "engine/SelectionQueries.h"
#include "engine/SendRecord.h"
#include "messages/StatusCodes.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "transactions/TxnRow.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

// "its project ROOF: is not in QuickBooks yet", of the column that names it.
std::string WhyUnlinked(std::string_view column, std::string_view key) {
  constexpr std::string_view kIdentifier = "ID";
  if (column.ends_with(kIdentifier)) column.remove_suffix(kIdentifier.size());
  return fmt::format("its {} {} is not in QuickBooks yet", FoldCase(column), key);
}

// The links of what the row refers to, up to the first that is missing.
std::vector<std::string> LinksOf(const TxnSend& send, const ado::Recordset& row) {
  std::vector<std::string> links;
  for (const auto& link : send.links) {
    const auto key = ColumnText(row, link.column);
    auto found = GetQBLinkIDOf(link.kind, key);
    if (found.empty()) {
      NoteFate(Fate::PassedOver, [&] { return WhyUnlinked(link.column, key); });
      break;
    }
    links.push_back(std::move(found));
  }
  return links;
}

RowPlace PlaceOf(const TxnTable& txn, std::string_view key) {
  return {.table = txn.tableName, .condition = KeyCondition(txn.keyColumn, key)};
}

class TxnSendWork final : public RowWork {
 public:
  TxnSendWork(const Table& table, const TxnTable& txn, const SendCall& call)
      : table_(table),
        txn_(txn),
        send_(txn.send),
        session_(call.session),
        run_(call.run),
        told_(txn.send.told(nullptr)) {}

  bool Prepare(RowWalk& /*walk*/) override { return send_.prepare == nullptr || send_.prepare(session_); }
  [[nodiscard]] bool ClosesWithoutRows() const override { return false; }

  RowEnd TakeRow(RowWalk& walk) override {
    const auto& row = walk.Row();
    walk_ = &walk;
    record_ = {};
    walk.BeginRow(kCallbackTransaction);
    told_ = send_.told(&row);
    if (send_.admit != nullptr && !send_.admit(row)) {
      NoteFate(Fate::PassedOver, send_.stays);
      return RowEnd::Done;
    }
    record_.key = ColumnText(row, txn_.keyColumn);
    record_.lastUpdatedIsNull = IsNull(row.Field("LastUpdated"));
    IgnoreErrors([&] { walk.CountRow([&] { return send_.shown == nullptr ? record_.key : send_.shown(row); }); });
    // A transaction that is in QuickBooks is not sent again.
    record_.linkId = ColumnText(row, "QBLinkID");
    if (IsInQuickBooks(table_, record_, session_, run_)) return RowEnd::Done;
    auto messageSet = RequireMsgSetRequest(session_);
    const auto links = LinksOf(send_, row);
    if (links.size() < send_.links.size()) return RowEnd::Lacking;
    const auto request = AppendAddition(messageSet, send_.addRequest, table_, record_.key);
    if (!send_.fill(request, row, links)) {
      NoteFateAtLast(Fate::PassedOver, "QuickBooks can't hold it");
      return RowEnd::Done;
    }
    return Exchange(walk, messageSet, request);
  }

  [[nodiscard]] std::string RowInHand() const override { return told_; }
  [[nodiscard]] std::string KeyInHand() const override {
    return record_.key.empty() && walk_ != nullptr ? ColumnText(walk_->Row(), txn_.keyColumn) : record_.key;
  }

 private:
  RowEnd Exchange(RowWalk& walk, const MsgSetRequest& messageSet, const RequestField& request) {
    const auto answer = SendAddition(table_, record_.key, session_, messageSet);
    if (!answer) return RowEnd::Done;
    const auto& response = answer->GetAt(0);
    if (response.StatusCode() == status::kOk) {
      WriteLinkBack(walk.Connection(), PlaceOf(txn_, record_.key), record_, response.Detail()["TxnID"].GetValue());
      CloseAddition(session_);
      return RowEnd::Done;
    }
    const RefusedRequest refused{
        .request = request, .response = response, .kind = RequestKind::Add, .record = record_, .row = walk.Row()};
    switch (ApplyRule(RuleFor(send_.rules, refused), refused, run_.g_Cancelled)) {
      case Refusal::PassOverLacking:
        return RowEnd::Lacking;
      case Refusal::LeaveTable:
        return RowEnd::LeaveTable;
      case Refusal::PassOver:
        return RowEnd::Done;
      // Ways of lists: a transaction's rules end with a row about any status, which has told of it.
      case Refusal::EndTable:
      case Refusal::AskInTheBox:
      case Refusal::AskInItsOwnBox:
      case Refusal::AskToGoOn:
      case Refusal::TryNextName:
      case Refusal::SendAgain:
        break;
    }
    throw PlatformError(error::kNameUnknown);
  }

  RowWalk* walk_ = nullptr;
  const Table& table_;
  const TxnTable& txn_;
  const TxnSend& send_;
  QBSessionManager& session_;
  Run& run_;
  SendRecord record_;
  std::string told_;  // of the row in hand
};

}  // namespace

void SendTransactions(const Table& table, const TxnTable& txn, const SendCall& call) {
  TxnSendWork work(table, txn, call);
  RowWalk(txn.send.texts, call.run).Walk(call.sql, work);
}

TakenUp TakeUpTransactionLink(const Table& table, const TxnTable& txn, const LostAddition& lost) {
  const auto row = lost.connection.OpenRecordset(SelectRows(table, txn.keyColumn, lost.key), ado::CursorType::Static,
                                                 ado::LockType::ReadOnly);
  if (row->Eof()) return {.end = TakenUp::End::RowGone};
  if (lost.look != nullptr && txn.send.admit != nullptr && !txn.send.admit(*row)) {
    lost.look->NoteStays(Stays::Never, {});
  }
  const auto links = LinksOf(txn.send, *row);
  const bool isLacking = links.size() < txn.send.links.size();
  if (isLacking && lost.look != nullptr) {
    const auto column = txn.send.links[links.size()].column;
    lost.look->NoteStays(Stays::Lacking, WhyUnlinked(column, ColumnText(*row, column)));
    return {.end = TakenUp::End::NotAdded};
  }
  SendRecord record;
  record.key = lost.key;
  record.linkId = ColumnText(*row, "QBLinkID");
  record.lastUpdatedIsNull = IsNull(row->Field("LastUpdated"));
  return TakeUpTxnLink(lost, PlaceOf(txn, record.key), record, txn.send.addRequest, table.reads.front(),
                       [&](const RequestField& request) {
                         // Without them it can't be looked for; an outcome that tells the record does without.
                         if (isLacking)
                           throw PlatformError(error::kObjectNothing, "what it belongs to has no link now");
                         static_cast<void>(txn.send.fill(request, *row, links));
                       });
}

void SetLinks(const RequestField& request, std::span<const TxnLink> links, std::span<const std::string> identifiers) {
  for (std::size_t i = 0; i < identifiers.size(); ++i) request[links[i].reference]["ListID"].SetValue(identifiers[i]);
}

bool IsTrueFlag(const ado::Recordset& row, std::string_view column) {
  const auto value = row.Field(column);
  if (IsNull(value)) return false;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  return TextToNumber(ToText(value)) == -1;
}

}  // namespace twqb
