#include "transactions/TxnRow.h"

#include <fmt/format.h>

#include "engine/AddedRecords.h"
#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/RecordReader.h"
#include "engine/RowWalk.h"
#include "quickbooks/Requests.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"

namespace twqb {

Decimal NumberIn(const ado::Recordset& row, std::string_view column, Decimal otherwise) {
  const auto value = row.Field(column);
  return IsNull(value) ? otherwise : ToDecimal(value);
}

std::string ClassOf(std::string_view table, std::string_view link) {
  return GetScalarFromSQL(Sql("SELECT QBClassID FROM {} WHERE QBLinkID = '{}';", table, link));
}

std::string ClassFor(std::string_view projectLink, std::string_view codes, std::string_view itemLink) {
  auto classId = ClassOf("Project", projectLink);
  return classId.empty() && !itemLink.empty() ? ClassOf(codes, itemLink) : classId;
}

bool IsInQuickBooks(const Table& table, SendRecord& record, QBSessionManager& session, Run& run) {
  if (record.linkId.empty()) return false;
  NoteIdentifier(record.linkId);
  RecordList twins;
  if (ApplyQBFiltersAndReadRecords(table, table.reads.front(), twins, session, {.strID = record.linkId}, run)) {
    NoteFate(Fate::LeftAsItWas, "QuickBooks has it, and it never goes twice");
    return true;
  }
  NoteLinkWithoutTwin(record.linkId);
  record.linkId.clear();
  return false;
}

void WriteLinkBack(ado::Connection& connection, const RowPlace& place, const SendRecord& record,
                   const std::string& txnId) {
  TellRecordId(txnId);
  NoteFate(Fate::Added);
  NoteIdentifier(txnId);
  WriteLink(connection, place, txnId);
  Vars().g_NewQBLinkID = txnId;
  if (record.lastUpdatedIsNull) WriteStamp(connection, place);
}

TakenUp TakeUpTxnLink(const LostAddition& lost, const RowPlace& place, const SendRecord& record,
                      std::string_view addRequest, const QuickBooksRead& read,
                      const std::function<void(const RequestField& request)>& fill) {
  auto added = FindAdded(lost, record.linkId, read, [&] {
    auto set = RequireMsgSetRequest(lost.session);
    const auto request = set.Append(addRequest);
    fill(request);
    return UnlinkedRecordsLike(lost, place.table, read, request);
  });
  if (!added.record.IsNothing()) {
    WriteLinkBack(lost.connection, place, record, added.taken.identifier);
  } else if (added.taken.end == TakenUp::End::KnewIt && record.lastUpdatedIsNull) {
    // The date goes behind the link, so that it can be missing alone.
    WriteStamp(lost.connection, place);
  }
  return added.taken;
}

void TellRowsBehind(ado::Recordset& rows, std::string_view keyColumn) {
  if (!IsObserved()) return;
  IgnoreErrors([&] {
    for (rows.MoveNext(); !rows.Eof(); rows.MoveNext()) {
      TellRecord({.standing = Standing::Line,
                  .key = ColumnText(rows, keyColumn),
                  .fate = Fate::PassedOver,
                  .why = "behind a line that could not go"});
    }
  });
}

bool EndsTheRun(std::span<const StatusRule> rules, const RefusedRequest& refused, Run& run) {
  bool wantsNoMore = false;
  const auto then = ApplyRule(RuleFor(rules, refused), refused, wantsNoMore);
  if (wantsNoMore) run.g_Cancelled = true;
  return wantsNoMore || then == Refusal::LeaveTable;
}

MessageBox AskToGoOn(const RefusedRequest& refused) {
  return {.text = QBErrorText(refused.response) + "\r\n\r\nDo you want to continue?",
          .title = "Error",
          .icon = BoxIcon::Question,
          .buttons = BoxButtons::YesNo};
}

}  // namespace twqb
