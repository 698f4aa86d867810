#include "messages/Rows.h"
#include "messages/Tables.h"

namespace twqb::messages {

namespace {

using namespace rows;

constexpr EnumValue kAccountTypes[] = {{"AccountsPayable", 0},
                                       {"AccountsReceivable", 1},
                                       {"Bank", 2},
                                       {"CostOfGoodsSold", 3},
                                       {"CreditCard", 4},
                                       {"Equity", 5},
                                       {"Expense", 6},
                                       {"FixedAsset", 7},
                                       {"Income", 8},
                                       {"LongTermLiability", 9},
                                       {"OtherAsset", 11},
                                       {"OtherCurrentAsset", 12},
                                       {"OtherCurrentLiability", 13},
                                       {"OtherExpense", 14},
                                       {"OtherIncome", 15},
                                       {"NonPosting", 10}};
constexpr EnumValue kSpecialAccountTypes[] = {{.name = "AccountsPayable", .number = 0},
                                              {.name = "AccountsReceivable", .number = 1},
                                              {.name = "CondenseItemAdjustmentExpenses", .number = 2},
                                              {.name = "CostOfGoodsSold", .number = 3},
                                              {.name = "CurrencyExchangeExpenses", .number = 4, .countries = kCanada},
                                              {.name = "DirectDepositLiabilities", .number = 5},
                                              {.name = "Estimates", .number = 6},
                                              {.name = "InventoryAssets", .number = 7},
                                              {.name = "MASCollectables", .number = 8, .countries = kCanada},
                                              {.name = "OpeningBalanceEquity", .number = 9},
                                              {.name = "PayrollDirectDeposit", .number = 10, .countries = kCanada},
                                              {.name = "PayrollExpenses", .number = 11},
                                              {.name = "PayrollLiabilities", .number = 12},
                                              {.name = "PurchaseOrders", .number = 13},
                                              {.name = "RetainedEarnings", .number = 14},
                                              {.name = "SalesOrders", .number = 15},
                                              {.name = "SalesTaxPayable", .number = 16},
                                              {.name = "Tax1Expenses", .number = 17, .countries = kCanada},
                                              {.name = "Tax1Payable", .number = 18, .countries = kCanada},
                                              {.name = "Tax2Expenses", .number = 19, .countries = kCanada},
                                              {.name = "Tax2Payable", .number = 20, .countries = kCanada},
                                              {.name = "UncategorizedExpenses", .number = 21},
                                              {.name = "UncategorizedIncome", .number = 22},
                                              {.name = "UndepositedFunds", .number = 23}};
constexpr EnumValue kCashFlowClasses[] = {
    {"None", 0}, {"Operating", 1}, {"Investing", 2}, {"Financing", 3}, {"NotApplicable", 4}};

constexpr Element kAccountAdd[] = {
    Text("Name", 31),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Enumeration("AccountType", kAccountTypes),
    Text("AccountNumber", 7).Opt(),
    Text("BankNumber", 25).Opt(),
    Text("Desc", 29).Opt(),
    Leaf("OpenBalance", Type::Amt).Opt(),
    Leaf("OpenBalanceDate", Type::Date).Opt(),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
};

constexpr Element kAccountAddRequest[] = {
    Aggregate("AccountAdd", kAccountAdd),
};

constexpr Element kAccountListFilter[] = {
    Leaf("MaxReturned", Type::Int).Opt(),
    Enumeration("ActiveStatus", kActiveStatuses).Opt(),
    Leaf("FromModifiedDate", Type::DateTime).Opt(),
    Leaf("ToModifiedDate", Type::DateTime).Opt(),
    Choice("ORNameFilter", kNameFilterBranches).Opt(),
    Enumeration("AccountType", kAccountTypes).Opt().Rep(),
};

constexpr Element kAccountQueryBranches[] = {
    Leaf("ListID", Type::Id).Rep(),
    Text("FullName").Rep(),
    Step("ListFilter", kAccountListFilter),
};

constexpr Element kAccountQueryRequest[] = {
    Choice("ORAccountListQuery", kAccountQueryBranches).Opt(),
    Leaf("OwnerID", Type::Guid).Opt().Rep().Since(2, 0),
};

constexpr Element kTaxLineInfoRet[] = {
    Leaf("TaxLineID", Type::Int),
    Text("TaxLineName", 256).Opt(),
};

constexpr Element kAccountRet[] = {
    Leaf("ListID", Type::Id),
    Leaf("TimeCreated", Type::DateTime),
    Leaf("TimeModified", Type::DateTime),
    Text("EditSequence", 16),
    Text("Name", 31),
    Text("FullName", 159),
    Leaf("IsActive", Type::Bool).Opt(),
    Ref<0>("ParentRef").Opt(),
    Leaf("Sublevel", Type::Int),
    Enumeration("AccountType", kAccountTypes),
    Enumeration("SpecialAccountType", kSpecialAccountTypes).Opt().Since(2, 1),
    Text("AccountNumber", 7).Opt(),
    Text("BankNumber", 25).Opt(),
    Text("Desc", 29).Opt(),
    Leaf("Balance", Type::Amt).Opt(),
    Leaf("TotalBalance", Type::Amt).Opt(),
    Aggregate("TaxLineInfoRet", kTaxLineInfoRet).Opt().Since(2, 1),
    Enumeration("CashFlowClassification", kCashFlowClasses).Opt().Since(2, 1),
    Ref<100>("CurrencyRef").Opt().Since(2, 0).In(kCanada),
    Ref<3>("TaxCodeRef").Opt().Since(2, 0).In(kCanada | kBritain),
    Aggregate("DataExtRet", kDataExt).Opt().Rep().Since(2, 0),
};

constexpr Element kAccountQueryResponse[] = {
    Aggregate("AccountRet", kAccountRet).Opt().Rep(),
};

constexpr Element kOneAccount[] = {Aggregate("AccountRet", kAccountRet).Opt()};

constexpr Message kMessages[] = {
    {.name = "AccountAdd", .request = kAccountAddRequest, .response = kOneAccount},
    {.name = "AccountQuery", .request = kAccountQueryRequest, .response = kAccountQueryResponse},
};

}  // namespace

std::span<const Message> AccountMessages() { return kMessages; }

}  // namespace twqb::messages
