#include "cli/commands/LookupKinds.h"

#include <fmt/core.h>

#include <array>
#include <type_traits>
#include <vector>

#include "cli/options/ExitStatus.h"
#include "cli/options/NearestName.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kPrefix = "Get";

constexpr std::string_view kAccount[] = {"ListID", "FullName", "AccountType", "Balance", "IsActive"};
constexpr std::string_view kEmployee[] = {"ListID", "Name", "Phone", "IsActive"};
constexpr std::string_view kCustomer[] = {"ListID", "FullName", "CompanyName", "Sublevel", "IsActive"};
constexpr std::string_view kVendor[] = {"ListID", "Name", "CompanyName", "IsActive"};
constexpr std::string_view kInvoice[] = {"TxnID",    "TxnDate",          "RefNumber", "CustomerRef",
                                         "Subtotal", "BalanceRemaining", "IsPaid"};
constexpr std::string_view kPayment[] = {"TxnID", "TxnDate", "RefNumber", "CustomerRef", "TotalAmount"};
constexpr std::string_view kTreeItem[] = {"ListID", "FullName", "IsActive"};
constexpr std::string_view kTimeEntry[] = {"TxnID",       "TxnDate",        "EntityRef",
                                           "CustomerRef", "ItemServiceRef", "Duration"};
constexpr std::string_view kCheck[] = {"TxnID", "TxnDate", "RefNumber", "PayeeEntityRef", "AccountRef", "Amount"};
constexpr std::string_view kBill[] = {"TxnID", "TxnDate", "RefNumber", "VendorRef", "DueDate", "AmountDue"};
constexpr std::string_view kPayrollItem[] = {"ListID", "Name", "WageType", "IsActive"};

template <auto kOperation>
constexpr LookupKind KindOf(std::string_view operation, std::span<const std::string_view> columns) {
  constexpr bool kTakesAll = std::is_invocable_v<decltype(kOperation), CTWQBBridge&, bool>;
  return {.operation = operation,
          .takesAll = kTakesAll,
          .look =
              [](CTWQBBridge& bridge, [[maybe_unused]] bool all) {
                if constexpr (kTakesAll) {
                  return (bridge.*kOperation)(all);
                } else {
                  return (bridge.*kOperation)();
                }
              },
          .columns = columns};
}

constexpr std::array kKinds = {
    KindOf<&CTWQBBridge::GetAccounts>("GetAccounts", kAccount),
    KindOf<&CTWQBBridge::GetEmployees>("GetEmployees", kEmployee),
    KindOf<&CTWQBBridge::GetCustomers>("GetCustomers", kCustomer),
    KindOf<&CTWQBBridge::GetVendors>("GetVendors", kVendor),
    KindOf<&CTWQBBridge::GetInvoices>("GetInvoices", kInvoice),
    KindOf<&CTWQBBridge::GetPayments>("GetPayments", kPayment),
    KindOf<&CTWQBBridge::GetExpCodes>("GetExpCodes", kTreeItem),
    KindOf<&CTWQBBridge::GetActivities>("GetActivities", kTreeItem),
    KindOf<&CTWQBBridge::GetTimeEntries>("GetTimeEntries", kTimeEntry),
    KindOf<&CTWQBBridge::GetChecks>("GetChecks", kCheck),
    KindOf<&CTWQBBridge::GetBills>("GetBills", kBill),
    KindOf<&CTWQBBridge::GetClassItems>("GetClassItems", kTreeItem),
    KindOf<&CTWQBBridge::GetPayrollItems>("GetPayrollItems", kPayrollItem),
};

std::vector<std::string> TypedNames() {
  std::vector<std::string> names;
  names.reserve(kKinds.size());
  for (const auto& kind : kKinds) names.push_back(kind.TypedName());
  return names;
}

}  // namespace

std::string LookupKind::TypedName() const { return FoldCase(operation.substr(kPrefix.size())); }

const LookupKind& LookupKindFromName(std::string_view name) {
  for (const auto& kind : kKinds) {
    if (SameName(name, kind.operation) || SameName(name, kind.operation.substr(kPrefix.size()))) return kind;
  }
  throw UsageError(fmt::format("There is no list \"{}\".{}\nThe lists are: {}.", name, DidYouMean(name, TypedNames()),
                               LookupKindList()));
}

std::string LookupKindList() { return Join(TypedNames(), ", "); }

}  // namespace twqb::cli
