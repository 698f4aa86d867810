#include "quickbooks/Requests.h"

#include <fmt/core.h>

#include "platform/Text.h"
#include "services/Countries.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"

namespace twqb {

std::optional<MsgSetRequest> fnCreateMsgSetRequest(QBSessionManager& session) {
  return RunAs("fnCreateMsgSetRequest", std::optional<MsgSetRequest>{}, [&] {
    const auto country = FileCountry();
    // Canada and Britain have forms of their own; Australia talks in the US form.
    const std::string_view form = IsCanadianOrBritish(country) ? std::string_view(country) : "US";
    std::optional<MsgSetRequest> set = session.CreateMsgSetRequest(form, Vars().g_QBMajorVer, Vars().g_QBMinorVer);
    set->SetOnError(OnError::Continue);
    return set;
  });
}

MsgSetRequest RequireMsgSetRequest(QBSessionManager& session) {
  auto set = fnCreateMsgSetRequest(session);
  if (!set) throw PlatformError(error::kObjectNothing);
  return std::move(*set);
}

std::string QBErrorText(const Response& response, std::string_view prefix) {
  return fmt::format(
      "{}QuickBooks has reported the following error:\r\n\r\n{}\r\nError Code: {}\r\nSeverity: {}\r\n"
      "Please contact your software vendor.",
      prefix, response.StatusMessage(), response.StatusCode(), response.StatusSeverity());
}

void ShowQBError(const Response& response, std::string_view prefix) {
  TellErrorToObserver("QuickBooks", static_cast<ErrorNumber>(response.StatusCode()), response.StatusMessage());
  ShowRefusal(response, prefix);
}

void ShowRefusal(const Response& response, std::string_view prefix) {
  TheDesk().ShowMessageBox({.text = QBErrorText(response, prefix), .title = "Error", .icon = BoxIcon::Information});
}

}  // namespace twqb
