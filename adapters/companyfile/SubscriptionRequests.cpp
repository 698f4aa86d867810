#include "adapters/companyfile/SubscriptionRequests.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/SubscriptionStore.h"
#include "adapters/companyfile/XmlText.h"

namespace twqb::company {

namespace {

constexpr std::string_view kSubscriberId = "SubscriberID";

// One type of subscription.
struct Subscription {
  std::string_view request;  // the message that adds it
  std::string_view type;     // SubscriptionType
  std::string_view called;
};
constexpr std::array kSubscriptions = {
    Subscription{.request = "DataEventSubscriptionAdd", .type = "Data", .called = "data event subscription"},
    Subscription{.request = "UIEventSubscriptionAdd", .type = "UI", .called = "UI event subscription"},
    Subscription{.request = "UIExtensionSubscriptionAdd", .type = "UIExtension", .called = "UI extension subscription"},
};

// What was given of the subscription, in the order of the rows, and the subscriber and the time in their places.
std::string Body(CompanyStore& store, const ClockReading& clock, pugi::xml_node given,
                 std::span<const messages::Element> rows, std::string_view called) {
  std::string body;
  ForEachElementRow(rows, [&](const messages::Element& row) {
    if (row.name == "TimeCreated") return AppendLeaf(body, row.name, TimeText(clock.now, clock));
    bool any = false;
    for (const auto element : given.children()) {
      if (row.name != element.name()) continue;
      StoreElement(body, element, row, store, called);
      any = true;
    }
    if (!any && row.name == "TrackLostEvents") AppendLeaf(body, row.name, "None");
  });
  return body;
}

void AddSubscription(CompanyStore& store, const ClockReading& clock, const Subscription& subscription,
                     const Request& request, Response& response) {
  SubscriptionStore subscriptions(store);
  const auto given = ChildElement(request.node, subscription.request);
  const auto subscriber = ChildText(given, kSubscriberId);
  if (subscriptions.Has(subscriber, subscription.type)) {
    Refuse(status::CannotSave(subscription.called, "The subscriber has such a subscription already."));
  }
  // A subscription to data is answered with its record; the others have none, and are kept as they were given.
  const auto& answered = request.message->response;
  const auto rows = answered.empty() ? request.message->request.front().Children() : answered.front().Children();
  const auto body = Body(store, clock, given, rows, subscription.called);
  subscriptions.Insert(subscriber, subscription.type, body);
  response.Begin({});
  if (!answered.empty()) {
    AppendOpenTag(response.Content(), answered.front().name);
    response.Content() += body;
    AppendCloseTag(response.Content(), answered.front().name);
  }
  response.End();
}

void DeleteSubscription(CompanyStore& store, const Request& request, Response& response) {
  SubscriptionStore subscriptions(store);
  const auto subscriber = ChildText(request.node, kSubscriberId);
  const auto type = ChildText(request.node, "SubscriptionType");
  if (!subscriptions.Has(subscriber, type)) Refuse(status::ObjectNotFound(subscriber));
  subscriptions.Remove(subscriber, type);
  response.Answer({});
}

void QuerySubscription(CompanyStore& store, const Request& request, Response& response) {
  const bool found = SubscriptionStore(store).HasAny(ChildText(request.node, kSubscriberId));
  response.Answer(found ? Status{} : status::NothingFound());
}

}  // namespace

void CarrySubscription(CompanyStore& store, const ClockReading& clock, const Request& request, Response& response) {
  const auto* const adds = std::ranges::find(kSubscriptions, request.message->name, &Subscription::request);
  try {
    if (adds != kSubscriptions.end()) return AddSubscription(store, clock, *adds, request, response);
    if (request.message->name == "SubscriptionDel") return DeleteSubscription(store, request, response);
    QuerySubscription(store, request, response);
  } catch (const Refused& refused) {
    response.Answer(refused.status);
  }
}

}  // namespace twqb::company
