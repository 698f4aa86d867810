// What the send of payments and the search for their lost links have in common: how a payment goes to its invoice, what
// its request says, and the links that are written behind it.
//
// What is held back, and what is told, is PaymentsOut's.
#pragma once

#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/ado.h"
#include "quickbooks/RequestModel.h"
#include "services/Sql.h"

namespace twqb {

// How a payment goes to its invoice.
enum class Applied : std::uint8_t {
  Money,
  Discount,         // credits and write-offs
  AppliedRetainer,  // the money came in with the retainer
};

inline constexpr std::string_view kPaymentRequest = "ReceivePaymentAddRq";

// The rows of TransactionTable, ahead of what says which, and those of a payment.
inline constexpr const char kAllocations[] =
    "SELECT ProjectID, ClientID, TransactionPayLateFeeRecd, "
    "TransactionDate,TransactionInvNum,TransactionPayAmtApplied, "
    "LastUpdated, TransactionID, InvRetainerAmtApplied FROM TransactionTable";
[[nodiscard]] Sql RowsOfPayment(std::string_view payId);

// Today, where it has none.
[[nodiscard]] Date PaymentDate(const ado::Recordset& payment);

// The link of the project that a retainer is for, or of the client that it is for as a whole; "" without one.
[[nodiscard]] std::string PayerOfRetainer(std::string_view payId);

// Fills what does not hang on the invoice and its project; answers how the payment goes to its invoice.
[[nodiscard]] Applied FillPayment(const RequestField& request, const ado::Recordset& payment,
                                  const ado::Recordset& allocation);
// What a retainer has brought is not brought again.
void AssignNoMoney(const RequestField& request);

// The link of the invoice of that number; "" without one, and on any error.
[[nodiscard]] std::string LinkOfInvoice(std::string_view number, std::string_view project);
// Whether an allocation has a twin; whether one of a payment's has none.
[[nodiscard]] bool AllocationHasLink(std::string_view transactionId);
[[nodiscard]] bool PaymentLacksLinks(std::string_view payId);

void WriteRetainerLinks(ado::Connection& connection, std::string_view payId, const std::string& txnId);
// Of several allocations the last one's payment is the row's; each keeps its own.
void WriteAllocationLinks(ado::Connection& connection, std::string_view payId, const ado::Recordset& allocation,
                          const std::string& txnId, bool lastUpdatedIsNull);

}  // namespace twqb
