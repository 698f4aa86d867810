#include "lists/EmployeeRefusals.h"

#include <fmt/format.h>

#include <vector>

#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "services/Countries.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

// As about any refusal that the rows leave to the user.
Refusal AskAbout(const RefusedRequest& refused) {
  return refused.kind == RequestKind::Mod ? Refusal::AskInItsOwnBox : Refusal::AskInTheBox;
}

// Takes the state or province, which QuickBooks does not know, off the request. Once: what is refused again then is
// logged where the company is Canadian under another edition, and the user's to decide elsewhere.
Refusal MendState(const RefusedRequest& refused, IsVendor isVendor) {
  const auto address = refused.request[AddressField(isVendor)];
  const bool first = refused.resends == 0;
  if (FileCountry() == "CA") {
    if (first) address["Province"].SetValue(kNoState);
  } else if (UpperCase(Vars().g_HostCountry) == "CA") {
    if (!first) {
      WriteLog(
          fmt::format("The QB Record of the employee or vendor, ''{}...'' Could not be modified. The State or "
                      "Province field value is incorrect or blank.",
                      refused.record.countedName));
      return Refusal::PassOver;
    }
    address["State"].Unset();
  } else if (first) {
    address["State"].SetValue(kNoState);
  }
  return first ? Refusal::SendAgain : AskAbout(refused);
}

bool IsAboutState(const Response& response) {
  const auto message = UpperCase(response.StatusMessage());
  return message.find("PROVINCE") != std::string::npos || message.find("STATE") != std::string::npos;
}

std::vector<std::string> UnsentPayments(const RefusedRequest& refused) {
  return {fmt::format("The QB Record of the vendor, ''{}...'' Could not be modified.", refused.record.countedName),
          "There may be unsent online banking payments for this vendor. The information of this vendor can't be "
          "modified while you have unsent transactions"};
}

MessageBox MissingPermission(const RefusedRequest& refused) {
  return {.text = fmt::format("QuickBooks has reported the following error: -\r\n{}\r\n\r\n"
                              "Please open the company file in QuickBooks and using the "
                              "\"Integrated Applications\"\r\n"
                              "option [Company|Modify Service Access...]\r\n"
                              "Allow this application to automatically logon and access Social "
                              "Security Numbers",
                              refused.response.StatusMessage()),
          .title = "Error"};
}

template <IsVendor isVendor>
Refusal SettleInvalidField(const RefusedRequest& refused) {
  if (IsAboutState(refused.response)) return MendState(refused, isVendor);
  return AskAbout(refused);
}

constexpr StatusRule kNextName = {.status = status::kNameInUse, .then = Refusal::TryNextName};
constexpr StatusRule kNoPermission = {
    .status = status::kPersonalDataWithheld, .then = Refusal::EndTable, .box = MissingPermission};

}  // namespace

std::string_view AddressField(IsVendor isVendor) {
  return isVendor == IsVendor::Yes ? "VendorAddress" : "EmployeeAddress";
}

constinit const std::array<StatusRule, 3> kEmployeeRules = {
    kNextName,
    StatusRule{.status = status::kInvalidField, .decide = SettleInvalidField<IsVendor::No>},
    kNoPermission,
};
constinit const std::array<StatusRule, 4> kVendorRules = {
    kNextName,
    StatusRule{.status = status::kCannotModify, .on = OnRequest::Mod, .log = UnsentPayments},
    StatusRule{.status = status::kInvalidField, .decide = SettleInvalidField<IsVendor::Yes>},
    kNoPermission,
};

}  // namespace twqb
