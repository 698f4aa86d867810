#include "transactions/TxnRow.h"

#include <fmt/format.h>

#include "engine/RecordReader.h"
#include "engine/RowWalk.h"
#include "quickbooks/Requests.h"
#include "services/ModuleVariables.h"

namespace twqb {

bool IsInQuickBooks(const Table& table, SendRecord& record, QBSessionManager& session, Run& run) {
  if (record.linkId.empty()) return false;
  RecordList twins;
  if (ApplyQBFiltersAndReadRecords(table, table.reads.front(), twins, session, {.strID = record.linkId}, run)) {
    return true;
  }
  record.linkId.clear();
  return false;
}

void WriteLinkBack(ado::Connection& connection, const RowPlace& place, const SendRecord& record,
                   const std::string& txnId) {
  TellRecordId(txnId);
  WriteLink(connection, place, txnId);
  Vars().g_NewQBLinkID = txnId;
  if (record.lastUpdatedIsNull) WriteStamp(connection, place);
}

MessageBox AskToGoOn(const RefusedRequest& refused) {
  return {.text = QBErrorText(refused.response) + "\r\n\r\nDo you want to continue?",
          .title = "Error",
          .icon = BoxIcon::Question,
          .buttons = BoxButtons::YesNo};
}

}  // namespace twqb
