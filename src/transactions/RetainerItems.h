// What retainers are booked with in QuickBooks: a liability account, a payment item and an other-charge item.
//
// QuickBooks knows no retainers. Each is an invoice that comes to nothing: a charge credits the liability, and a
// payment takes the money in. Each routine asks QuickBooks to add what it is about, whatever is there already; what is
// refused for another reason is told in a box.
#pragma once

#include <string>
#include <string_view>

#include "platform/Currency.h"
#include "platform/Date.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// All three, up to the first that is neither added nor there.
[[nodiscard]] bool AddRetainerItems(QBSessionManager& session);

[[nodiscard]] bool AddAccount(QBSessionManager& session);
[[nodiscard]] bool AddPaymentItem(QBSessionManager& session);
[[nodiscard]] bool AddItemOtherCharge(QBSessionManager& session);

// A retainer of the customer's, to be booked.
struct Retainer {
  std::string CustomerListID;
  Date TxnDate;
  std::string RefNumber;
  Currency Amount;
  std::string PayID = {};  // the row of Payment that it is
};

// The request for it ahead of its lines. A reference that is too long loses its blanks, and what is then still too
// much.
inline constexpr std::string_view kRetainerRequest = "InvoiceAddRq";
void AssignRetainerHeader(const RequestField& invoice, const Retainer& retainer);

// Books it; answers the TxnID of the invoice that it is, "" when it could not be booked, which has been told. Nothing:
// it may be booked already, and must not go.
[[nodiscard]] std::optional<std::string> AddRetainerPayment(QBSessionManager& session, const Retainer& retainer);

}  // namespace twqb
