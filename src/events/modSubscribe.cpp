#include "events/modSubscribe.h"

#include <fmt/core.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "events/SubscriptionSets.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

constexpr std::string_view kPlainVersion = "qbxml version=\"3.0\"";
constexpr std::string_view kProductTitle = "Tallywick<->QuickBooks";

// Statuses that say that a subscription is as it was to become.
constexpr std::int32_t kAlreadySubscribed = status::kCannotSave;
constexpr std::int32_t kNotSubscribed = status::kObjectNotFound;

void Tell(std::string text, std::string_view title) {
  TheDesk().ShowMessageBox({.text = std::move(text), .title = std::string(title), .icon = BoxIcon::Information});
}

// Outside the United States the set goes as text, with the country's tag. Australia has Canada's.
MsgSetResponse SendSubscriptionSet(QBSessionManager& session, const MsgSetRequest& set) {
  const auto& country = Vars().g_QBCountry;
  if (country == "UK") {
    return session.DoSubscriptionRequests(ReplaceAll(set.ToXMLString(), kPlainVersion, "qbxml version=\"UK3.0\""));
  }
  if (country == "CA" || country == "AU") {
    return session.DoSubscriptionRequests(ReplaceAll(set.ToXMLString(), kPlainVersion, "qbxml version=\"CA3.0\""));
  }
  return session.DoSubscriptionRequests(set);
}

// One paragraph for each response that is neither a success nor `accepted`.
std::string RefusalsIn(const MsgSetResponse& answer, std::int32_t accepted) {
  std::string text;
  for (std::size_t i = 0; i < answer.Count(); ++i) {
    const auto& response = answer.GetAt(i);
    const auto code = response.StatusCode();
    if (code == status::kOk || code == accepted) continue;
    text +=
        fmt::format("Request Number {} :-\r\nStatus Code = {}\r\nStatus Message = {}\r\nStatus Severity = {}\r\n\r\n",
                    i + 1, code, response.StatusMessage(), response.StatusSeverity());
  }
  return text;
}

// Carries a change out: sends it, reads every response, and ends the session, so that what comes next begins anew.
// `session` is gone afterwards.
bool CarryOut(QBSessionManager& session, const MsgSetRequest& set, std::int32_t accepted) {
  auto refusals = RefusalsIn(SendSubscriptionSet(session, set), accepted);
  if (!refusals.empty()) {
    Tell(std::move(refusals), "Error");
    CheckQBSession(false, false);
    return false;
  }
  if (!CheckQBSession(false, false)) return false;
  Vars().g_IsSubscribed = IsSubscribed();
  return true;
}

}  // namespace

bool fnSubscribe() {
  return RunAs("fnSubscribe", false, [] {
    if (!CheckQBSession(true, false)) return false;
    if (!HasEvents()) {
      Tell(
          "Only one-way automatic sync is available. You need to\r\n"
          "have QuickBooks 2004 or better to enable two-way real time\r\n"
          "data sync.",
          "Message");
      return false;
    }
    const auto session = TheSession();
    auto set = session->CreateSubscriptionMsgSetRequest(Vars().g_QBMajorVer, Vars().g_QBMinorVer);
    AppendSubscriptions(set);
    return CarryOut(*session, set, kAlreadySubscribed);
  });
}

bool fnUnsubscribe(SubscriptionType intType) {
  return RunAs("fnUnsubscribe", false, [&] {
    if (!CheckQBSession(true, false)) return false;
    if (!HasEvents()) {
      Tell(
          "To subscribe to Data and User Interface Events\r\n"
          "you need QuickBooks 2004 or a later Edition",
          kProductTitle);
      return false;
    }
    const auto session = TheSession();
    auto set = session->CreateSubscriptionMsgSetRequest(Vars().g_QBMajorVer, Vars().g_QBMinorVer);
    // The one to data goes with each of the others. Asked for alone it is there twice, and the second is not found.
    for (const auto type : {SubscriptionType::Data, intType}) {
      const auto request = set.Append("SubscriptionDelRq");
      request["SubscriberID"].SetValue(kSubscriberId);
      request["SubscriptionType"].SetValue(static_cast<int>(type));
    }
    return CarryOut(*session, set, kNotSubscribed);
  });
}

bool IsSubscribed() {
  return RunAs("IsSubscribed", false, [] {
    if (!CheckQBSession(true, false) || !HasEvents()) return false;
    const auto session = TheSession();
    auto set = session->CreateSubscriptionMsgSetRequest(3, 0);
    set.Append("SubscriptionQueryRq")["SubscriberID"].SetValue(kSubscriberId);
    const auto answer = SendSubscriptionSet(*session, set);
    const auto& response = answer.GetAt(0);
    const auto code = response.StatusCode();
    if (code != status::kOk && code != status::kFoundNothing) ShowQBError(response);
    return code == status::kOk;
  });
}

bool SubscribeToQBEvents(bool blnSubscribe) {
  return RunAs("SubscribeToQBEvents", false, [&] {
    const bool done = blnSubscribe ? fnSubscribe()
                                   : fnUnsubscribe(SubscriptionType::UI) && fnUnsubscribe(SubscriptionType::Data) &&
                                         fnUnsubscribe(SubscriptionType::UIExtension);
    if (done) Tell("Done! Please restart Tallywick and QuickBooks for the changes to take effect", kProductTitle);
    return done;
  });
}

}  // namespace twqb
