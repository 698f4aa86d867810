// The subscription of this product to QuickBooks events: data, company file and menu. Its state lives in QuickBooks.
//
// Registers the host's call-back class and takes it out again; the class itself is the host's. No routine here needs a
// session to stand: each starts one, and the two that change the subscription end it.
#pragma once

#include <cstdint>

namespace twqb {

// As QuickBooks numbers them.
enum class SubscriptionType : std::int16_t { Data = 0, UI = 1, UIExtension = 2 };

// Subscribes to all events; what is subscribed to already is fine. False after a box: no session, a message version
// before 3, a refusal, or a call that failed. After a refusal no session stands; after success a new one does, in which
// g_IsSubscribed was asked for anew.
bool fnSubscribe();

// Takes the subscription to data away, and the one of `intType`; what is not there is fine. Otherwise as above.
bool fnUnsubscribe(SubscriptionType intType);

// Asks QuickBooks whether this product is subscribed; may open the session. False, without a box, before message
// version 3; False after a box when QuickBooks refuses or the call fails.
[[nodiscard]] bool IsSubscribed();

// The host's operation: subscribes, or takes all three subscriptions away until one can't be. Says so when it is done.
bool SubscribeToQBEvents(bool blnSubscribe);

}  // namespace twqb
