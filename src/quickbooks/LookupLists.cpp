#include "quickbooks/LookupLists.h"

#include <algorithm>
#include <array>

#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Countries.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

constexpr int kAllRecords = 2;  // of the query's ActiveStatus

struct LookupDescription {
  LookupList list;
  std::string_view request;
  std::string_view routine;  // for ErrorHandler
  // The choice group that the query has its ActiveStatus in; empty: its caller has no say in that.
  std::string_view choice = {};
  bool tellsNone = true;
};

constexpr std::array kLookups = {
    LookupDescription{.list = LookupList::Accounts, .request = "AccountQueryRq", .routine = "GetAccounts()"},
    LookupDescription{.list = LookupList::Employees,
                      .request = "EmployeeQueryRq",
                      .routine = "GetEmployees()",
                      .choice = "ORListQuery"},
    LookupDescription{.list = LookupList::Customers,
                      .request = "CustomerQueryRq",
                      .routine = "GetCustomers()",
                      .choice = "ORCustomerListQuery"},
    LookupDescription{.list = LookupList::Vendors,
                      .request = "VendorQueryRq",
                      .routine = "GetVendors()",
                      .choice = "ORVendorListQuery"},
    LookupDescription{.list = LookupList::Invoices, .request = "InvoiceQueryRq", .routine = "GetInvoices()"},
    LookupDescription{.list = LookupList::Payments, .request = "ReceivePaymentQueryRq", .routine = "GetPayments()"},
    LookupDescription{.list = LookupList::ExpCodes,
                      .request = "ItemOtherChargeQueryRq",
                      .routine = "GetExpCodes()",
                      .choice = "ORListQuery"},
    LookupDescription{.list = LookupList::Activities,
                      .request = "ItemServiceQueryRq",
                      .routine = "GetActivities()",
                      .choice = "ORListQuery"},
    LookupDescription{.list = LookupList::TimeEntries, .request = "TimeTrackingQueryRq", .routine = "GetTimeEntries()"},
    LookupDescription{.list = LookupList::Checks, .request = "CheckQueryRq", .routine = "GetChecks()"},
    LookupDescription{.list = LookupList::Bills, .request = "BillQueryRq", .routine = "GetBills()"},
    // These were written for the library's own use, and have never told an empty list from a failure.
    LookupDescription{
        .list = LookupList::ClassItems, .request = "ClassQueryRq", .routine = "GetClassItems2()", .tellsNone = false},
    LookupDescription{.list = LookupList::PayrollItems,
                      .request = "PayrollItemWageQueryRq",
                      .routine = "GetPayrollItems2()",
                      .tellsNone = false},
    LookupDescription{.list = LookupList::SalesTaxItems,
                      .request = "ItemSalesTaxQueryRq",
                      .routine = "GetSalesTaxItems()",
                      .tellsNone = false},
};

// Each list has its description in the place of its number.
static_assert([] {
  for (std::size_t place = 0; place < kLookups.size(); ++place) {
    if (kLookups[place].list != static_cast<LookupList>(place)) return false;
  }
  return kLookups.back().list == kLastLookupList;
}());

const LookupDescription& DescriptionOf(LookupList list) { return kLookups.at(static_cast<std::size_t>(list)); }

// The answer to one request, filled by `fill`.
template <typename Fill>
Response Ask(std::string_view request, Fill fill) {
  const auto session = TheSession();
  auto messageSet = RequireMsgSetRequest(*session);
  fill(messageSet.Append(request));
  return session->DoRequests(messageSet).GetAt(0);
}

}  // namespace

std::string_view LookupName(LookupList list) { return DescriptionOf(list).routine; }

LookupResult LookUp(LookupList list, LookupScope scope) {
  const auto& lookup = DescriptionOf(list);
  return RunAs(lookup.routine, LookupResult{}, [&]() -> LookupResult {
    const auto response = Ask(lookup.request, [&](const RequestField& query) {
      if (scope == LookupScope::Plain || lookup.choice.empty()) return;
      query[lookup.choice]["ListFilter"]["ActiveStatus"].SetValue(kAllRecords);
    });
    switch (response.StatusCode()) {
      case status::kOk:
        return {.list = response.DetailList()};
      case status::kFoundNothing:
        return {.foundNone = lookup.tellsNone};
      default:
        ShowQBError(response);
        return {};
    }
  });
}

bool FillAccountArray(AccountArray& strAccounts, AccountTypes types) {
  const auto response = Ask("AccountQueryRq", [](const RequestField&) {});
  const auto code = response.StatusCode();
  if (code != status::kOk && code != status::kFoundNothing) return false;
  const auto accounts = response.DetailList();
  // A company without accounts has no list to count, and fails here.
  strAccounts.assign(accounts.Count(), {});
  const bool hasType = types == AccountTypes::Filled && !IsCanadianOrBritish(FileCountry());
  for (std::size_t column = 0; column < strAccounts.size(); ++column) {
    const auto& account = accounts.GetAt(column);
    auto& rows = strAccounts[column];
    rows[enAccountListID] = account["ListID"].GetValue();
    rows[enAccountFullName] = account["FullName"].GetValue();
    rows[enAccountName] = account["Name"].GetValue();
    if (hasType) rows[enAccountType] = account["AccountType"].GetAsString();
  }
  return true;
}

bool IsJobInQuickBooks(std::string_view strListID) {
  const auto response = Ask(
      "CustomerQueryRq", [&](const RequestField& query) { query["ORCustomerListQuery"]["ListIDList"].Add(strListID); });
  switch (response.StatusCode()) {
    case status::kOk:
      return response.DetailList().GetAt(0)["Sublevel"].GetInteger() > 0;
    case status::kFoundNothing:
    case status::kIncomplete:
      return false;
    default:
      ShowQBError(response);
      return false;
  }
}

}  // namespace twqb
