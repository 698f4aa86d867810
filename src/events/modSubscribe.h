// The subscription to QuickBooks events, whose state lives in QuickBooks.
#pragma once

namespace twqb {

// Asks QuickBooks whether this product is subscribed; may open the session. False, without a box, before message
// version 3; False after a box when QuickBooks refuses or the call fails.
[[nodiscard]] bool IsSubscribed();

}  // namespace twqb
