#include "transactions/InvoiceItems.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engine/InvalidReference.h"
#include "engine/Mapping.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "quickbooks/LookupLists.h"
#include "quickbooks/Requests.h"
#include "services/Countries.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Settings.h"
#include "services/WaitPointer.h"
#include "transactions/SpecialItems.h"

namespace twqb {

namespace {

enum class Fallback : std::uint8_t { Service, Expense };
enum class Kind : std::uint8_t { Service, MayBeSalesTax, NamedFirst };

struct InvoiceItem {
  std::string_view name;
  std::string_view description;
  int number;  // of its settings
  Fallback fallback;
  Kind kind = Kind::Service;
};

constexpr std::array kItems = {
    InvoiceItem{kDiscountItem, "Tallywick Invoice Discount Amount", 1, Fallback::Service},
    // No line refers to this one, nor to the amount paid.
    InvoiceItem{"TWInvRetainerAmtApplied", "Tallywick Retainer Amount Applied", 2, Fallback::Service},
    InvoiceItem{kMiscItem, "Tallywick Misc Amount", 3, Fallback::Service},
    InvoiceItem{"TWManInvPaidToday", "Tallywick Amount Paid", 4, Fallback::Service},
    InvoiceItem{kServiceItem, "Tallywick Service Amount", 5, Fallback::Service},
    InvoiceItem{kServiceTaxItem, "Tallywick Service Tax Amount", 6, Fallback::Service, Kind::MayBeSalesTax},
    InvoiceItem{kExpenseItem, "Tallywick Expense Amount", 7, Fallback::Expense},
    InvoiceItem{kExpenseTaxItem, "Tallywick Expense Tax Amount", 8, Fallback::Expense, Kind::MayBeSalesTax},
    InvoiceItem{kMainServiceTaxItem, "Tallywick Main Service Tax Amount", 9, Fallback::Service, Kind::MayBeSalesTax},
    InvoiceItem{kMainExpenseTaxItem, "Tallywick Main Expense Tax Amount", 10, Fallback::Expense, Kind::MayBeSalesTax},
    // These book where services do, and fall back on another account than those.
    InvoiceItem{kAdjustmentItem, "Write Up / Down Adjustments", 5, Fallback::Expense, Kind::NamedFirst},
    InvoiceItem{kCatchAllItem, "Standard Services", 5, Fallback::Expense, Kind::NamedFirst},
};

constexpr std::size_t kSalesTaxItems = 4;
constexpr std::size_t kHighestNumber = 10;

std::string Setting(std::string_view key, std::string_view fallback = {}) {
  return gf_ReadSettings("GENERAL", key, Vars().g_TWSettingsPath, fallback);
}

std::string NumberedSetting(std::string_view key, int number) { return Setting(fmt::format("{}_No{}", key, number)); }

struct FallbackAccounts {
  std::string service;
  std::string expense;

  [[nodiscard]] const std::string& Of(Fallback fallback) const {
    return fallback == Fallback::Service ? service : expense;
  }
};

// The tax agencies of the items that go as sales tax, by the number of their settings; of the others "".
using TaxAgencies = std::array<std::string, kHighestNumber + 1>;

// An item is a sales tax where its income goes to a liability and somebody is to be paid.
TaxAgencies ReadTaxAgencies() {
  AccountArray accounts;
  if (!FillAccountArray(accounts, AccountTypes::Filled)) return {};
  TaxAgencies incomeAccounts;
  for (const auto& item : kItems) {
    if (item.kind != Kind::MayBeSalesTax) continue;
    incomeAccounts.at(static_cast<std::size_t>(item.number)) = NumberedSetting("InvIncomeAcct", item.number);
  }
  TaxAgencies agencies;
  std::size_t matches = 0;
  for (const auto& account : accounts) {
    for (const auto& item : kItems) {
      if (item.kind != Kind::MayBeSalesTax) continue;
      const auto number = static_cast<std::size_t>(item.number);
      if (account[enAccountListID] != incomeAccounts.at(number)) continue;
      if (account[enAccountType] != "OtherCurrentLiability") continue;
      agencies.at(number) = NumberedSetting("InvVendorID", item.number);
      if (++matches == kSalesTaxItems) return agencies;
    }
  }
  return agencies;
}

void AppendItem(MsgSetRequest& messageSet, const InvoiceItem& item, const FallbackAccounts& fallbacks) {
  const auto request = messageSet.Append("ItemServiceAddRq");
  request["Name"].SetValue(item.name);
  const auto both = FieldAtPath(request, "ORSalesPurchase.SalesAndPurchase");
  const auto& fallback = fallbacks.Of(item.fallback);
  // The name stays beside an identifier, which wins.
  if (item.kind == Kind::NamedFirst) both["ExpenseAccountRef"]["FullName"].SetValue(item.name);
  AssignReference(both["ExpenseAccountRef"], NumberedSetting("InvExpenseAcct", item.number), fallback);
  AssignReference(both["IncomeAccountRef"], NumberedSetting("InvIncomeAcct", item.number), fallback);
  both["SalesDesc"].SetValue(item.description);
  if (FileCountry() != "CA") return;
  both["PurchaseCost"].SetValue(1.0);
  both["SalesPrice"].SetValue(1.0);
}

// Its rate is of no account: the lines carry ready amounts.
void AppendSalesTax(MsgSetRequest& messageSet, const InvoiceItem& item, std::string_view agency) {
  const auto request = messageSet.Append("ItemSalesTaxAddRq");
  request["Name"].SetValue(item.name);
  request["ItemDesc"].SetValue(item.description);
  request["TaxVendorRef"]["ListID"].SetValue(agency);
  request["TaxRate"].SetValue(0.0);
}

bool Accept(const Response& response) {
  switch (response.StatusCode()) {
    case status::kOk:
    case status::kNameInUse:
      return true;
    case status::kInvalidReference:
      TellErrorToObserver("QuickBooks", static_cast<ErrorNumber>(response.StatusCode()), response.StatusMessage());
      TheDesk().ShowMessageBox(InvalidReference(response,
                                                "If this table needs an account, please choose a valid account from "
                                                "the\r\n\"Sync Settings \"  Screen."));
      return false;
    default:
      ShowQBError(response);
      return false;
  }
}

}  // namespace

bool ValidateInvRelatedItems(QBSessionManager& session) {
  return WithWaitPointer([&] {
    return RunAs("ValidateInvRelatedItems", false, [&] {
      auto messageSet = RequireMsgSetRequest(session);
      const FallbackAccounts fallbacks = {.service = Setting("INVOICE_SERVICE_ACCOUNT", "Other Income"),
                                          .expense = Setting("INVOICE_EXP_ACCOUNT", "Other Income")};
      std::optional<TaxAgencies> agencies;
      for (const auto& item : kItems) {
        if (item.kind == Kind::MayBeSalesTax && !agencies) agencies = ReadTaxAgencies();
        const auto agency =
            item.kind == Kind::MayBeSalesTax ? agencies->at(static_cast<std::size_t>(item.number)) : std::string();
        if (agency.empty()) {
          AppendItem(messageSet, item, fallbacks);
        } else {
          AppendSalesTax(messageSet, item, agency);
        }
      }
      return Accept(session.DoRequests(messageSet).GetAt(0));
    });
  });
}

}  // namespace twqb
