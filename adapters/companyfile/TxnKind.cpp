#include "adapters/companyfile/TxnKind.h"

#include <algorithm>

namespace twqb::company {

namespace {

constexpr std::string_view kReceivable[] = {"AccountsReceivable"};
constexpr std::string_view kPayable[] = {"AccountsPayable"};
constexpr std::string_view kBank[] = {"Bank"};
constexpr std::string_view kCreditCard[] = {"CreditCard"};

constexpr TxnLineKind kInvoiceLines[] = {{"InvoiceLine", LineRole::Item}, {"InvoiceLineGroup", LineRole::ItemGroup}};
constexpr TxnLineKind kCreditMemoLines[] = {{"CreditMemoLine", LineRole::Item},
                                            {"CreditMemoLineGroup", LineRole::ItemGroup}};
constexpr TxnLineKind kEstimateLines[] = {{"EstimateLine", LineRole::Item}, {"EstimateLineGroup", LineRole::ItemGroup}};
constexpr TxnLineKind kPurchaseLines[] = {
    {"ExpenseLine", LineRole::Account}, {"ItemLine", LineRole::Item}, {"ItemGroupLine", LineRole::ItemGroup}};
constexpr TxnLineKind kPaymentLines[] = {{"AppliedToTxn", LineRole::Application}};

constexpr FieldDefault kTimeDefaults[] = {{"IsBillable", "false"}, {"IsBilled", "false"}};
constexpr FieldDefault kInvoiceDefaults[] = {
    {"IsPending", "false"}, {"IsFinanceCharge", "false"}, {"IsToBePrinted", "false"}};
constexpr FieldDefault kCreditMemoDefaults[] = {{"IsPending", "false"}, {"IsToBePrinted", "false"}};
constexpr FieldDefault kEstimateDefaults[] = {{"IsActive", "true"}};
constexpr FieldDefault kCheckDefaults[] = {{"IsToBePrinted", "false"}};

// Invoices and credit memos are numbered together.
constexpr std::string_view kSalesNumbers = "sales";

constexpr TxnKind kTxnKinds[] = {
    {.name = "TimeTracking",
     .entity = "EntityRef",
     .account = {},
     .defaults = kTimeDefaults,
     .feature = &CompanyConditions::timeTracking},
    {.name = "Invoice",
     .entity = "CustomerRef",
     .account = "ARAccountRef",
     .accountTypes = kReceivable,
     .lines = kInvoiceLines,
     .settlement = Settlement::Charge,
     .entityBalance = BalanceEffect::Raises,
     .accountBalance = BalanceEffect::Raises,
     .defaults = kInvoiceDefaults,
     .numbers = kSalesNumbers},
    {.name = "CreditMemo",
     .entity = "CustomerRef",
     .account = "ARAccountRef",
     .accountTypes = kReceivable,
     .lines = kCreditMemoLines,
     .settlement = Settlement::Credit,
     .entityBalance = BalanceEffect::Lowers,
     .accountBalance = BalanceEffect::Lowers,
     .defaults = kCreditMemoDefaults,
     .numbers = kSalesNumbers},
    {.name = "Estimate",
     .entity = "CustomerRef",
     .account = {},
     .lines = kEstimateLines,
     .defaults = kEstimateDefaults,
     .numbers = "estimates"},
    {.name = "ReceivePayment",
     .entity = "CustomerRef",
     .account = "ARAccountRef",
     .accountTypes = kReceivable,
     .lines = kPaymentLines,
     .settlement = Settlement::Payment,
     .entityBalance = BalanceEffect::Lowers,
     .accountBalance = BalanceEffect::Lowers},
    {.name = "Bill",
     .entity = "VendorRef",
     .account = "APAccountRef",
     .accountTypes = kPayable,
     .lines = kPurchaseLines,
     .side = ItemSide::Purchase,
     .settlement = Settlement::Charge,
     .entityBalance = BalanceEffect::Raises,
     .accountBalance = BalanceEffect::Raises,
     .zeroTotal = ZeroTotal::Refused},
    {.name = "Check",
     .entity = "PayeeEntityRef",
     .account = "AccountRef",
     .accountTypes = kBank,
     .lines = kPurchaseLines,
     .side = ItemSide::Purchase,
     .accountBalance = BalanceEffect::Lowers,
     .defaults = kCheckDefaults},
    {.name = "CreditCardCharge",
     .entity = "PayeeEntityRef",
     .account = "AccountRef",
     .accountTypes = kCreditCard,
     .lines = kPurchaseLines,
     .side = ItemSide::Purchase,
     .accountBalance = BalanceEffect::Raises},
};

}  // namespace

std::span<const TxnKind> TxnKinds() { return kTxnKinds; }

const TxnKind* FindTxnKind(std::string_view name) {
  const auto* const found = std::ranges::find(kTxnKinds, name, &TxnKind::name);
  return found == std::end(kTxnKinds) ? nullptr : found;
}

const TxnLineKind* FindLineKind(const TxnKind& kind, std::string_view name) {
  const auto found = std::ranges::find(kind.lines, name, &TxnLineKind::name);
  return found == kind.lines.end() ? nullptr : &*found;
}

}  // namespace twqb::company
