// The requests of the three subscriptions: who subscribes, to what, and where QuickBooks calls back.
//
// Fills message sets only; sending them is modSubscribe's.
#pragma once

#include <string_view>

#include "quickbooks/RequestModel.h"

namespace twqb {

// Who this product is in every subscription.
inline constexpr std::string_view kSubscriberId = "{587B27F0-273E-46fd-BBDF-B5E79696FC3E}";

// Appends the subscriptions to data, to the company file's coming and going, and to the menu items, in this order.
void AppendSubscriptions(MsgSetRequest& set);

}  // namespace twqb
