// What retainers are booked with in QuickBooks: a liability account, a payment item and an other-charge item.
//
// QuickBooks knows no retainers. Each is an invoice that comes to nothing: a charge credits the liability, and a
// payment takes the money in. Each routine asks QuickBooks to add what it is about, whatever is there already; what is
// refused for another reason is told in a box.
#pragma once

#include "quickbooks/QBSessionManager.h"

namespace twqb {

// All three, up to the first that is neither added nor there.
[[nodiscard]] bool AddRetainerItems(QBSessionManager& session);

[[nodiscard]] bool AddAccount(QBSessionManager& session);
[[nodiscard]] bool AddPaymentItem(QBSessionManager& session);
[[nodiscard]] bool AddItemOtherCharge(QBSessionManager& session);

}  // namespace twqb
