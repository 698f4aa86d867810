#include "adapters/companyfile/PublishedRequests.h"

#include <algorithm>
#include <array>

namespace twqb::company {

namespace {

using Name = std::string_view;

// What can be done with a kind of record since a version, as a row of letters: Add, Mod, Query, Del.
struct Family {
  Name name;
  Name verbs;
  messages::Version since = {1, 0};
};
constexpr std::array kFamilies = {
    // lists
    Family{"CustomerMsg", "AQ"},
    Family{"ItemDiscount", "AQ"},
    Family{"ItemFixedAsset", "AQ", {3, 0}},
    Family{"ItemInventoryAssembly", "AQ", {2, 0}},
    Family{"ItemSalesTaxGroup", "AQ"},
    Family{"ItemSubtotal", "AQ"},
    Family{"OtherName", "AQ"},
    Family{"OtherName", "M", {1, 1}},
    Family{"PayrollItemNonWage", "Q", {2, 0}},
    Family{"SalesRep", "AQ"},
    Family{"ShipMethod", "AQ"},
    Family{"ToDo", "AQ"},
    Family{"Entity", "Q"},
    Family{"Item", "Q"},
    Family{"ListDeleted", "Q", {2, 0}},
    // transactions
    Family{"BillPaymentCheck", "AQ", {2, 0}},
    Family{"BillPaymentCreditCard", "AQ", {2, 0}},
    Family{"BillToPay", "Q", {2, 0}},
    Family{"BuildAssembly", "AQ", {3, 0}},
    Family{"Charge", "AQ", {2, 0}},
    Family{"CreditCardCredit", "AQ"},
    Family{"Deposit", "AQ", {2, 0}},
    Family{"InventoryAdjustment", "AQ", {2, 0}},
    Family{"JournalEntry", "AQ"},
    Family{"PurchaseOrder", "AQ"},
    Family{"PurchaseOrder", "M", {2, 1}},
    Family{"ReceivePaymentToDeposit", "Q", {2, 0}},
    Family{"SalesOrder", "AMQ", {2, 1}},
    Family{"SalesReceipt", "AQ"},
    Family{"VendorCredit", "AQ"},
    Family{"TxnDeleted", "Q", {2, 0}},
    Family{"Invoice", "M", {2, 1}},
    Family{"Estimate", "M", {2, 1}},
    Family{"ClearedStatus", "M", {2, 0}},
    Family{"TxnDisplay", "A", {3, 0}},
    Family{"ListDisplay", "AM", {3, 0}},
    // the company, fields of one's own, lost events, reports
    Family{"Company", "Q"},
    Family{"CompanyActivity", "Q", {2, 0}},
    Family{"Preferences", "Q"},
    Family{"DataExt", "AMD", {2, 0}},
    Family{"DataExtDef", "AMQD", {2, 0}},
    Family{"DataEventRecoveryInfo", "QD", {3, 0}},
    Family{"GeneralSummaryReport", "Q", {2, 0}},
    Family{"GeneralDetailReport", "Q", {2, 0}},
    Family{"AgingReport", "Q", {2, 0}},
    Family{"BudgetSummaryReport", "Q", {2, 0}},
    Family{"CustomDetailReport", "Q", {2, 0}},
    Family{"CustomSummaryReport", "Q", {2, 0}},
    Family{"JobReport", "Q", {2, 0}},
    Family{"PayrollDetailReport", "Q", {2, 0}},
    Family{"PayrollSummaryReport", "Q", {2, 0}},
    Family{"TimeReport", "Q", {2, 0}},
};

struct Verb {
  char letter;
  Name ending;
};
constexpr std::array kVerbs = {Verb{'A', "AddRq"}, Verb{'M', "ModRq"}, Verb{'Q', "QueryRq"}, Verb{'D', "DelRq"}};

}  // namespace

bool IsRequestOfOtherRecords(std::string_view element, messages::Version version) {
  // What ends in none of the verbs.
  if (element == "TxnVoidRq") return version >= messages::Version{1, 1};
  return std::ranges::any_of(kVerbs, [&](const Verb& verb) {
    if (!element.ends_with(verb.ending)) return false;
    const auto name = element.substr(0, element.size() - verb.ending.size());
    return std::ranges::any_of(kFamilies, [&](const Family& family) {
      return family.name == name && family.since <= version && family.verbs.find(verb.letter) != Name::npos;
    });
  });
}

}  // namespace twqb::company
