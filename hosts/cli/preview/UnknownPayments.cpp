#include <algorithm>
#include <set>

#include "adapters/preview/CopiedDatabase.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "cli/preview/PreviewChanges.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Sql.h"
#include "twqb/enTables.h"

namespace twqb::cli {

void MarkPaymentsOf(const std::vector<std::string>& unknownInvoices, const std::string& connection,
                    const preview::ScratchFile& billing, Preview& preview) {
  if (unknownInvoices.empty()) return;
  std::set<std::string> keys;  // of payments, and of their parts that go to one invoice each
  const auto worked = SqliteProvider().CreateConnection();
  worked->SetConnectionString(preview::ConnectionTo(connection, billing.worked));
  worked->Open();
  for (const auto& invoice : unknownInvoices) {
    // As a send finds the invoice of a payment.
    const auto rows = worked->Execute(
        Sql("SELECT p.PayID, p.TransactionID FROM TransactionTable i JOIN TransactionTable p ON "
            "p.TransactionInvNum = i.TransactionInvNum AND p.ProjectID = i.ProjectID WHERE i.PayID IS NULL AND "
            "p.PayID IS NOT NULL AND i.QBLinkID = '{}'",
            invoice),
        nullptr);
    for (; !rows->Eof(); rows->MoveNext()) {
      for (int column = 0; column < 2; ++column) keys.insert(FoldCase(ToText(rows->FieldAt(column))));
    }
  }
  worked->Close();
  for (auto& record : preview.records) {
    record.hangsOnUnknown = record.account.table.number == enPayments && keys.contains(FoldCase(record.account.key));
  }
}

}  // namespace twqb::cli
