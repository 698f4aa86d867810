// The lists that a host's dialogs ask the public object for: the operation, its query, the records it answers with.
//
// A row for each; tests over the whole family go through them.
#pragma once

#include <fmt/core.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/bridge/BridgeHouse.h"
#include "tests/quickbooks/CannedQuickBooks.h"

namespace twqb {

struct LookupMember {
  std::string operation;
  std::string message;  // without Query, Rq and Rs
  std::string key = "ListID";
  ReturnedList (*call)(CTWQBBridge& bridge);
  ReturnedList (*callAll)(CTWQBBridge& bridge, bool all) = nullptr;
  std::string routine = {};  // that its errors are reported under; empty: the operation with its parentheses
  bool tellsNone = true;

  [[nodiscard]] std::string Routine() const { return routine.empty() ? operation + "()" : routine; }
  [[nodiscard]] std::string Request() const { return message + "QueryRq"; }
  // An answer with that status and a record for each identifier.
  [[nodiscard]] std::string Answer(std::string_view status, const std::vector<std::string>& identifiers) const {
    std::string records;
    for (const auto& id : identifiers) records += fmt::format("<{0}Ret><{1}>{2}</{1}></{0}Ret>", message, key, id);
    return CannedAnswer(message + "QueryRs", status, records);
  }
};

inline std::ostream& operator<<(std::ostream& out, const LookupMember& member) { return out << member.operation; }

template <auto kOperation>
constexpr auto kCall = [](CTWQBBridge& bridge) { return (bridge.*kOperation)(); };
template <auto kOperation>
constexpr auto kCallAll = [](CTWQBBridge& bridge, bool all) { return (bridge.*kOperation)(all); };

inline std::vector<LookupMember> LookupMembers() {
  using B = CTWQBBridge;
  // An argument left out can't be told from a pointer to the member, so those calls are written out.
  return {
      {.operation = "GetAccounts", .message = "Account", .call = kCall<&B::GetAccounts>},
      {.operation = "GetEmployees",
       .message = "Employee",
       .call = [](B& b) { return b.GetEmployees(); },
       .callAll = kCallAll<&B::GetEmployees>},
      {.operation = "GetCustomers",
       .message = "Customer",
       .call = [](B& b) { return b.GetCustomers(); },
       .callAll = kCallAll<&B::GetCustomers>},
      {.operation = "GetVendors",
       .message = "Vendor",
       .call = [](B& b) { return b.GetVendors(); },
       .callAll = kCallAll<&B::GetVendors>},
      {.operation = "GetInvoices", .message = "Invoice", .key = "TxnID", .call = kCall<&B::GetInvoices>},
      {.operation = "GetPayments", .message = "ReceivePayment", .key = "TxnID", .call = kCall<&B::GetPayments>},
      {.operation = "GetExpCodes",
       .message = "ItemOtherCharge",
       .call = [](B& b) { return b.GetExpCodes(); },
       .callAll = kCallAll<&B::GetExpCodes>},
      {.operation = "GetActivities",
       .message = "ItemService",
       .call = [](B& b) { return b.GetActivities(); },
       .callAll = kCallAll<&B::GetActivities>},
      {.operation = "GetTimeEntries", .message = "TimeTracking", .key = "TxnID", .call = kCall<&B::GetTimeEntries>},
      {.operation = "GetChecks", .message = "Check", .key = "TxnID", .call = kCall<&B::GetChecks>},
      {.operation = "GetBills", .message = "Bill", .key = "TxnID", .call = kCall<&B::GetBills>},
      {.operation = "GetClassItems",
       .message = "Class",
       .call = kCall<&B::GetClassItems>,
       .routine = "GetClassItems2()",
       .tellsNone = false},
      {.operation = "GetPayrollItems",
       .message = "PayrollItemWage",
       .call = kCall<&B::GetPayrollItems>,
       .routine = "GetPayrollItems2()",
       .tellsNone = false},
  };
}

inline std::vector<LookupMember> LookupMembersWithAll() {
  auto members = LookupMembers();
  std::erase_if(members, [](const auto& member) { return member.callAll == nullptr; });
  return members;
}

}  // namespace twqb
