#include "transactions/PaymentParts.h"

#include <fmt/format.h>

#include <array>

#include "engine/Mapping.h"
#include "engine/WriteBack.h"
#include "platform/Decimal.h"
#include "platform/Value.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "transactions/PaymentMethods.h"
#include "transactions/TxnRow.h"

namespace twqb {

namespace {

using When = SendField::When;
constexpr std::array kFields = {
    SendField{.path = "Memo", .column = "PayMemo", .when = When::NotBlank},
    SendField{.path = "RefNumber", .column = "PayRef", .when = When::NotNull},
};

Applied HowApplied(std::string_view method) {
  if (method == "3" || method == "4") return Applied::Discount;
  return method == "A" ? Applied::AppliedRetainer : Applied::Money;
}

RowPlace PaymentRow(std::string_view payId) { return {.table = "Payment", .condition = KeyCondition("PayID", payId)}; }

}  // namespace

Date PaymentDate(const ado::Recordset& payment) {
  const auto date = payment.Field("PayDate");
  return IsNull(date) ? TheMachine().Now().Midnight() : ToDate(date);
}

Sql RowsOfPayment(std::string_view payId) { return Sql("(PayID = '{}')", payId); }

std::string PayerOfRetainer(std::string_view payId) {
  const auto rows = RowsOfPayment(payId);
  std::string_view kind = "PROJECT";
  auto key = RequireScalarFromSQL(Sql("SELECT ProjectID FROM TransactionTable WHERE {};", rows));
  if (key == "{CLIENT RETAINER}") {
    kind = "CLIENT";
    key = RequireScalarFromSQL(Sql("SELECT ClientID FROM TransactionTable WHERE {};", rows));
  }
  if (!key.empty()) return GetQBLinkIDOf(kind, key);
  LogError("MovePaymentsToQB", fmt::format("Error transferring Payment to QB. Pay ID = {}", payId));
  return {};
}

Applied FillPayment(const RequestField& request, const ado::Recordset& payment, const ado::Recordset& allocation) {
  const auto method = ColumnText(payment, "PayMethod");
  const auto how = HowApplied(method);
  SetCut(request["PaymentMethodRef"]["FullName"], PaymentMethodName(method));
  request["TxnDate"].SetValue(DateFloor(PaymentDate(payment)));
  if (how != Applied::Discount && !IsNull(allocation.Field("TransactionPayAmtApplied"))) {
    request["TotalAmount"].SetValue(NumberIn(allocation, "TransactionPayAmtApplied").ToCents());
  }
  SendFields(request, payment, kFields);
  return how;
}

bool AllocationHasLink(std::string_view transactionId) {
  return !GetScalarFromSQL(Sql("SELECT QBLinkID FROM TransactionTable WHERE TransactionID = '{}';", transactionId))
              .empty();
}

bool PaymentLacksLinks(std::string_view payId) {
  const auto count = GetScalarFromSQL(Sql(
      "SELECT COUNT(*) FROM TransactionTable WHERE {} AND (QBLinkID IS NULL OR QBLinkID = '');", RowsOfPayment(payId)));
  return count != "0";
}

// What a retainer has brought is not brought again.
void AssignNoMoney(const RequestField& request) { request["TotalAmount"].SetValue(0.0); }

std::string LinkOfInvoice(std::string_view number, std::string_view project) {
  return GetScalarFromSQL(
      Sql("SELECT QBLinkID FROM TransactionTable WHERE TransactionInvNum = '{}' AND ProjectID = '{}' AND "
          "(PayID IS NULL);",
          number, project));
}

void WriteRetainerLinks(ado::Connection& connection, std::string_view payId, const std::string& txnId) {
  WriteLink(connection, PaymentRow(payId), txnId);
  WriteLink(connection, {.table = "TransactionTable", .condition = RowsOfPayment(payId)}, txnId, Linked::AnyRows);
  Vars().g_NewQBLinkID = txnId;
}

void WriteAllocationLinks(ado::Connection& connection, std::string_view payId, const ado::Recordset& allocation,
                          const std::string& txnId, bool lastUpdatedIsNull) {
  WriteLink(connection, PaymentRow(payId), txnId);
  const RowPlace row = {.table = "TransactionTable",
                        .condition = Sql("(TransactionID = '{}')", ColumnText(allocation, "TransactionID"))};
  WriteLink(connection, row, txnId);
  Vars().g_NewQBLinkID = txnId;
  if (lastUpdatedIsNull) WriteStamp(connection, row);
}

}  // namespace twqb
