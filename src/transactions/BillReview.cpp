#include "transactions/BillReview.h"

#include "platform/Text.h"
#include "quickbooks/Requests.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

constexpr int kBill = 0;  // of TxnDisplayModType

}  // namespace

void ReviewTransferredBill(QBSessionManager& session) {
  if (Vars().g_PassedID.empty()) return;
  IgnoreErrors([&] {
    const auto bills = Split(Vars().g_PassedID, ',');
    auto messageSet = RequireMsgSetRequest(session);
    const auto answer = TheDesk().ShowMessageBox({.text = "Would you like to review the transferred Bill?",
                                                  .title = "Review Bill in QuickBooks",
                                                  .icon = BoxIcon::Question,
                                                  .buttons = BoxButtons::YesNo});
    if (answer != BoxAnswer::Yes) return;
    const auto request = messageSet.Append("TxnDisplayModRq");
    request["TxnDisplayModType"].SetValue(kBill);
    request["TxnID"].SetValue(ReplaceAll(bills.front(), "'", ""));
    (void)session.DoRequests(messageSet);
  });
}

}  // namespace twqb
