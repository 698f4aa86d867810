// The row files of this folder, each one family of messages. AllMessages joins them.
#pragma once

#include <span>

#include "messages/Schema.h"

namespace twqb::messages {

[[nodiscard]] std::span<const Message> HostMessages();
[[nodiscard]] std::span<const Message> CustomerMessages();
[[nodiscard]] std::span<const Message> SubscriptionMessages();

}  // namespace twqb::messages
