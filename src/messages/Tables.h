// The row files of this folder, each one family of messages. AllMessages joins them.
#pragma once

#include <span>

#include "messages/Schema.h"

namespace twqb::messages {

[[nodiscard]] std::span<const Message> HostMessages();
[[nodiscard]] std::span<const Message> AccountMessages();
[[nodiscard]] std::span<const Message> CustomerMessages();
[[nodiscard]] std::span<const Message> EmployeeMessages();
[[nodiscard]] std::span<const Message> VendorMessages();
[[nodiscard]] std::span<const Message> SalesItemMessages();
[[nodiscard]] std::span<const Message> OtherItemMessages();
[[nodiscard]] std::span<const Message> PlainListMessages();
[[nodiscard]] std::span<const Message> TimeTrackingMessages();
[[nodiscard]] std::span<const Message> PurchaseMessages();
[[nodiscard]] std::span<const Message> SalesMessages();
[[nodiscard]] std::span<const Message> PaymentMessages();
[[nodiscard]] std::span<const Message> DeletionMessages();
[[nodiscard]] std::span<const Message> SubscriptionMessages();

}  // namespace twqb::messages
