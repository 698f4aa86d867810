#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr Element kSubscriber[] = {Leaf("SubscriberID", Type::Guid)};

constexpr Message kMessages[] = {
    // Answers with its status alone: 0 subscribed, 1 not.
    {.name = "SubscriptionQuery",
     .request = kSubscriber,
     .response = {},
     .since = {3, 0},
     .set = MessageSet::Subscription},
};

}  // namespace

std::span<const Message> SubscriptionMessages() { return kMessages; }

}  // namespace twqb::messages
