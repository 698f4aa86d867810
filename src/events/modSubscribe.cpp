#include "events/modSubscribe.h"

#include <string>
#include <string_view>

#include "platform/Text.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

constexpr std::string_view kSubscriberId = "{587B27F0-273E-46fd-BBDF-B5E79696FC3E}";
constexpr std::string_view kPlainVersion = "qbxml version=\"3.0\"";

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

}  // namespace

bool IsSubscribed() {
  return RunAs("IsSubscribed", false, [] {
    if (!CheckQBSession(true, false) || !HasEvents()) return false;
    auto& session = *Vars().g_QBSession;
    auto set = session.CreateSubscriptionMsgSetRequest(3, 0);
    set.Append("SubscriptionQueryRq")["SubscriberID"].SetValue(kSubscriberId);
    const auto answer = SendSubscriptionSet(session, set);
    const auto& response = answer.GetAt(0);
    const auto status = response.StatusCode();
    if (status != 0 && status != 1) ShowQBError(response);
    return status == 0;
  });
}

}  // namespace twqb
