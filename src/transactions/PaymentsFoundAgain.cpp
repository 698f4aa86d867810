// The links of payments that got lost: what QuickBooks has of them, by the outcome or by what their requests say.
#include <memory>

#include "engine/AddedRecords.h"
#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/SelectionQueries.h"
#include "platform/Value.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "transactions/PaymentParts.h"
#include "transactions/PaymentsOut.h"
#include "transactions/RetainerItems.h"
#include "transactions/TxnRow.h"
#include "transactions/modInvoices.h"
#include "transactions/modPayments.h"

namespace twqb {

namespace {

std::unique_ptr<ado::Recordset> OpenPayment(const LostAddition& lost, std::string_view payId) {
  return lost.connection.OpenRecordset(SelectRows(kPaymentsTable, "PayID", payId), ado::CursorType::Static,
                                       ado::LockType::ReadOnly);
}

TakenUp TakeUpRetainerLink(const LostAddition& lost) {
  const auto payment = OpenPayment(lost, lost.key);
  if (payment->Eof()) return {.end = TakenUp::End::RowGone};
  const auto added = FindAdded(lost, ColumnText(*payment, "QBLinkID"), kInvoicesTable.reads.front(), [&] {
    auto set = RequireMsgSetRequest(lost.session);
    const auto request = set.Append(kRetainerRequest);
    AssignRetainerHeader(request, {.CustomerListID = PayerOfRetainer(lost.key),
                                   .TxnDate = PaymentDate(*payment),
                                   .RefNumber = ColumnText(*payment, "PayRef")});
    if (IsNull(payment->Field("PayDate"))) request["TxnDate"].Unset();
    return UnlinkedRecordsLike(lost, "Payment", kInvoicesTable.reads.front(), request);
  });
  if (added.taken.end == TakenUp::End::Linked || added.taken.end == TakenUp::End::KnewIt) {
    // The second of the two goes behind the first, so that it can be missing alone.
    WriteRetainerLinks(lost.connection, lost.key, added.taken.identifier);
  }
  return added.taken;
}

bool GoesTo(const Record& payment, std::string_view invoice) {
  const auto applied = payment["AppliedToTxnRetList"];
  for (std::size_t i = 0; !applied.IsNothing() && i < applied.Count(); ++i) {
    if (applied.GetAt(i)["TxnID"].GetValueOrEmpty() == invoice) return true;
  }
  return false;
}

TakenUp TakeUpAllocationLink(const LostAddition& lost) {
  const auto allocation =
      lost.connection.OpenRecordset(Sql("SELECT PayID, QBLinkID, {} WHERE (TransactionID = '{}');",
                                        Sql::Own(std::string_view(kAllocations).substr(std::size("SELECT"))), lost.key),
                                    ado::CursorType::Static, ado::LockType::ReadOnly);
  if (allocation->Eof()) return {.end = TakenUp::End::RowGone};
  const auto payId = ColumnText(*allocation, "PayID");
  const auto payment = OpenPayment(lost, payId);
  if (payment->Eof()) return {.end = TakenUp::End::RowGone};
  const auto& read = kPaymentsTable.reads.front();
  auto added = FindAdded(lost, ColumnText(*allocation, "QBLinkID"), read, [&] {
    auto set = RequireMsgSetRequest(lost.session);
    const auto request = set.Append(kPaymentRequest);
    if (FillPayment(request, *payment, *allocation) == Applied::AppliedRetainer) AssignNoMoney(request);
    const auto project = ColumnText(*allocation, "ProjectID");
    request["CustomerRef"]["ListID"].SetValue(GetQBLinkIDOf("PROJECT", project));
    if (IsNull(payment->Field("PayDate"))) request["TxnDate"].Unset();
    // The payment's own row may know it already.
    auto found = UnlinkedRecordsLike(lost, "TransactionTable", read, request);
    const auto invoice = LinkOfInvoice(ColumnText(*allocation, "TransactionInvNum"), project);
    std::erase_if(found, [&](const Record& record) { return !GoesTo(record, invoice); });
    return found;
  });
  if (added.taken.end == TakenUp::End::Linked || added.taken.end == TakenUp::End::KnewIt) {
    WriteAllocationLinks(lost.connection, payId, *allocation, added.taken.identifier,
                         IsNull(allocation->Field("LastUpdated")));
    // The payment's own link keeps it from being sent, and with it what did not get its turn.
    if (PaymentLacksLinks(payId)) {
      NoteTakenUp(kPaymentsTable, payId, lost.session);
      added.taken.rest = RestOfRow::Follows;
    }
  }
  return added.taken;
}

}  // namespace

TakenUp TakeUpPaymentLink(const LostAddition& lost) {
  return lost.request == "InvoiceAdd" ? TakeUpRetainerLink(lost) : TakeUpAllocationLink(lost);
}

}  // namespace twqb
