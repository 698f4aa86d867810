#include "adapters/companyfile/PublishedRequests.h"

#include <algorithm>
#include <array>

namespace twqb::company {

namespace {

using Name = std::string_view;

// What can be done with a kind of record, as a row of letters: Add, Mod, Query, Del.
struct Family {
  Name name;
  Name verbs;
};
constexpr std::array kFamilies = {
    // lists
    Family{"CustomerMsg", "AQ"}, Family{"CustomerType", "AQ"}, Family{"DateDrivenTerms", "AQ"},
    Family{"ItemDiscount", "AQ"}, Family{"ItemFixedAsset", "AQ"}, Family{"ItemInventoryAssembly", "AQ"},
    Family{"ItemSalesTaxGroup", "AQ"}, Family{"ItemSubtotal", "AQ"}, Family{"OtherName", "AMQ"},
    Family{"PayrollItemNonWage", "Q"}, Family{"SalesRep", "AQ"}, Family{"ShipMethod", "AQ"},
    Family{"StandardTerms", "AQ"}, Family{"Template", "Q"}, Family{"Terms", "Q"}, Family{"ToDo", "AQ"},
    Family{"VendorType", "AQ"}, Family{"Entity", "Q"}, Family{"Item", "Q"}, Family{"ListDeleted", "Q"},
    // transactions
    Family{"BillPaymentCheck", "AQ"}, Family{"BillPaymentCreditCard", "AQ"}, Family{"BillToPay", "Q"},
    Family{"BuildAssembly", "AQ"}, Family{"Charge", "AQ"}, Family{"CreditCardCredit", "AQ"}, Family{"Deposit", "AQ"},
    Family{"InventoryAdjustment", "AQ"}, Family{"JournalEntry", "AQ"}, Family{"PurchaseOrder", "AMQ"},
    Family{"ReceivePaymentToDeposit", "Q"}, Family{"SalesOrder", "AMQ"}, Family{"SalesReceipt", "AQ"},
    Family{"VendorCredit", "AQ"}, Family{"TxnDeleted", "Q"}, Family{"Invoice", "M"}, Family{"Estimate", "M"},
    Family{"ClearedStatus", "M"}, Family{"TxnDisplay", "A"}, Family{"ListDisplay", "AM"},
    // the company, fields of one's own, reports
    Family{"Company", "Q"}, Family{"CompanyActivity", "Q"}, Family{"Preferences", "Q"}, Family{"DataExt", "AMD"},
    Family{"DataExtDef", "AMQD"}, Family{"GeneralSummaryReport", "Q"}, Family{"GeneralDetailReport", "Q"},
    Family{"AgingReport", "Q"}, Family{"BudgetSummaryReport", "Q"}, Family{"CustomDetailReport", "Q"},
    Family{"CustomSummaryReport", "Q"}, Family{"JobReport", "Q"}, Family{"PayrollDetailReport", "Q"},
    Family{"PayrollSummaryReport", "Q"}, Family{"TimeReport", "Q"}};
// What ends in none of these verbs.
constexpr std::array kOthers = {Name{"TxnVoidRq"}};

struct Verb {
  char letter;
  Name ending;
};
constexpr std::array kVerbs = {Verb{'A', "AddRq"}, Verb{'M', "ModRq"}, Verb{'Q', "QueryRq"}, Verb{'D', "DelRq"}};

}  // namespace

bool IsRequestOfOtherRecords(std::string_view element) {
  for (const auto& verb : kVerbs) {
    if (!element.ends_with(verb.ending)) continue;
    const auto* const family =
        std::ranges::find(kFamilies, element.substr(0, element.size() - verb.ending.size()), &Family::name);
    return family != kFamilies.end() && family->verbs.find(verb.letter) != Name::npos;
  }
  return std::ranges::find(kOthers, element) != kOthers.end();
}

}  // namespace twqb::company
