#include "transactions/CostGet.h"

#include "engine/Mapping.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/TxnTable.h"

namespace twqb {

void CostGet::TakeAll() {
  const GetTexts texts = {.routine = table_.routine,
                          .shown = table_.shown,
                          .errors = ErrorReport::OwnBox,
                          .afterError = AfterError::EndsTheRun};
  constexpr std::size_t kAlways = 1;
  RecordWalk(texts, table_.table, call_).Walk(kAlways, *this);
}

std::optional<std::string> CostGet::ShownOf(const Record& record) const {
  const auto number = record["RefNumber"];
  return number.IsNothing() ? std::nullopt : std::optional(std::string(table_.numbers) + number.GetValue());
}

RecordEnd CostGet::TakeRecord(RecordWalk& walk, const Record& record) {
  CostDocument document = {.record = record, .connection = walk.Connection(), .txnId = record["TxnID"].GetValue()};
  NoteIdentifier(document.txnId);
  if (!Begin(document) || !WriteHeader(walk.Rows(), document)) return RecordEnd::Done;
  NoteFate(document.before == Before::New ? Fate::Added : Fate::Changed);
  NoteKey(document.key);
  TakeLines(document);
  if (document.before == Before::Known) return RecordEnd::Done;
  if (!document.hasLines) {
    document.connection.Execute(Sql("DELETE FROM {} WHERE {} = '{}';", table_.table, table_.keyColumn, document.key),
                                nullptr);
    NoteFate(Fate::PassedOver, kWithoutLines);
  }
  EndNew(document);
  return RecordEnd::Done;
}

// False: the document is here and stays as it is.
bool CostGet::WriteHeader(ado::Recordset& rows, CostDocument& document) {
  if (IsLinkedTo(document.connection, table_.table, document.txnId)) {
    document.before = Before::Known;
    if (!MayBeChanged(rows, table_.keyColumn, document.txnId, call_.rule, document.record)) return false;
    document.key = ColumnText(rows, table_.keyColumn);
  } else {
    rows.AddNew();
  }
  FillHeader(rows, document);
  rows.Update();
  if (document.before == Before::New) document.key = ColumnText(rows, table_.keyColumn);
  return true;
}

}  // namespace twqb
