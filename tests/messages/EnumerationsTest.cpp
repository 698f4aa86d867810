// The numbers that the object model has for the names on the wire.

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "messages/Schema.h"

namespace twqb::messages {
namespace {

// The first row of that name anywhere below; nullptr when there is none.
const Element* FindAnywhere(std::span<const Element> rows, std::string_view name) {
  for (const auto& row : rows) {
    if (row.name == name) return &row;
    if (const auto* inner = FindAnywhere(row.Children(), name)) return inner;
  }
  return nullptr;
}

struct Numbers {
  std::string_view message;
  std::string_view field;
  std::vector<std::pair<std::string_view, int>> values;
};

class EnumerationNumbers : public testing::TestWithParam<Numbers> {};

TEST_P(EnumerationNumbers, Are_those_of_the_object_model) {
  const auto& [message, field, values] = GetParam();
  const auto* found = FindMessage(message);
  ASSERT_NE(found, nullptr) << message;
  const auto* row = FindAnywhere(message.ends_with("Rs") ? found->response : found->request, field);
  ASSERT_NE(row, nullptr) << message << " " << field;
  for (const auto& [name, number] : values) {
    const auto value = std::ranges::find(row->Values(), name, &EnumValue::name);
    const bool known = value != row->Values().end();
    ASSERT_TRUE(known) << field << " " << name;
    EXPECT_EQ(value->number, number) << field << " " << name;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lists, EnumerationNumbers,
    testing::Values(
        Numbers{"CustomerQueryRq", "ActiveStatus", {{"ActiveOnly", 0}, {"InactiveOnly", 1}, {"All", 2}}},
        Numbers{"AccountAddRq",
                "AccountType",
                {{"AccountsPayable", 0},
                 {"AccountsReceivable", 1},
                 {"Bank", 2},
                 {"CostOfGoodsSold", 3},
                 {"CreditCard", 4},
                 {"Equity", 5},
                 {"Expense", 6},
                 {"FixedAsset", 7},
                 {"Income", 8},
                 {"LongTermLiability", 9},
                 {"NonPosting", 10},
                 {"OtherAsset", 11},
                 {"OtherCurrentAsset", 12},
                 {"OtherCurrentLiability", 13},
                 {"OtherExpense", 14},
                 {"OtherIncome", 15}}},
        Numbers{"CustomerAddRq",
                "JobStatus",
                {{"Awarded", 0}, {"Closed", 1}, {"InProgress", 2}, {"None", 3}, {"NotAwarded", 4}, {"Pending", 5}}},
        Numbers{"PayrollItemWageAddRq",
                "WageType",
                {{"Hourly", 0},
                 {"Salary", 1},
                 {"Bonus", 2},
                 {"Commission", 3},
                 {"HourlyOvertime", 4},
                 {"HourlyRegular", 5},
                 {"HourlySick", 6},
                 {"HourlyVacation", 7},
                 {"SalaryRegular", 8},
                 {"SalarySick", 9},
                 {"SalaryVacation", 10}}},
        Numbers{"EmployeeAddRq",
                "UseTimeDataToCreatePaychecks",
                {{"NotSet", 0}, {"UseTimeData", 1}, {"DoNotUseTimeData", 2}}},
        Numbers{"ListDelRq",
                "ListDelType",
                {{"Customer", 2}, {"Employee", 6}, {"ItemOtherCharge", 13}, {"ItemService", 17}, {"Vendor", 30}}}));

INSTANTIATE_TEST_SUITE_P(
    Transactions, EnumerationNumbers,
    testing::Values(
        Numbers{"BillAddRq", "BillableStatus", {{"Billable", 0}, {"NotBillable", 1}, {"HasBeenBilled", 2}}},
        Numbers{"CheckQueryRs", "BillableStatus", {{"Billable", 0}, {"NotBillable", 1}, {"HasBeenBilled", 2}}},
        Numbers{"TxnDelRq", "TxnDelType", {{"Bill", 1}, {"Invoice", 13}, {"ReceivePayment", 17}, {"TimeTracking", 21}}},
        Numbers{"TxnDisplayModRq", "TxnDisplayModType", {{"Bill", 0}}}));

INSTANTIATE_TEST_SUITE_P(
    Subscriptions, EnumerationNumbers,
    testing::Values(
        Numbers{"DataEventSubscriptionAddRq",
                "ListEventType",
                {{"Employee", 6}, {"Customer", 2}, {"Vendor", 28}, {"ItemOtherCharge", 13}, {"ItemService", 17}}},
        Numbers{"DataEventSubscriptionAddRq",
                "ListEventOperation",
                {{"Add", 0}, {"Delete", 1}, {"Merge", 2}, {"Modify", 3}}},
        Numbers{"DataEventSubscriptionAddRq",
                "TxnEventType",
                {{"Bill", 1}, {"Check", 5}, {"Invoice", 12}, {"ReceivePayment", 16}, {"TimeTracking", 20}}},
        Numbers{"DataEventSubscriptionAddRq", "TxnEventOperation", {{"Add", 0}, {"Delete", 1}, {"Modify", 2}}},
        Numbers{"DataEventSubscriptionAddRq", "DeliveryPolicy", {{"DeliverAlways", 0}}},
        Numbers{"DataEventSubscriptionAddRq", "TrackLostEvents", {{"None", 0}}},
        Numbers{"UIEventSubscriptionAddRq", "CompanyFileEventOperation", {{"Open", 0}, {"Close", 1}}},
        Numbers{"UIEventSubscriptionAddRq", "DeliveryPolicy", {{"DeliverAlways", 0}}},
        Numbers{"UIExtensionSubscriptionAddRq", "AddToMenu", {{"File", 0}}},
        Numbers{"SubscriptionDelRq", "SubscriptionType", {{"Data", 0}, {"UI", 1}, {"UIExtension", 2}}}));

TEST(Enumerations, Of_account_types_stand_in_the_order_of_the_alphabet) {
  const auto* row = FindAnywhere(FindMessage("AccountAdd")->request, "AccountType");
  for (const auto& one : row->Values()) {
    for (const auto& other : row->Values()) EXPECT_EQ(one.name < other.name, one.number < other.number) << one.name;
  }
}

TEST(Enumerations, The_kind_of_a_sales_item_is_the_branch_of_its_choice) {
  for (const auto* message : {"ItemServiceQueryRs", "ItemOtherChargeQueryRs", "ItemNonInventoryQueryRs"}) {
    const auto* choice = FindAnywhere(FindMessage(message)->response, "ORSalesPurchase");
    ASSERT_EQ(choice->Children().size(), 2U) << message;
    EXPECT_EQ(choice->Children()[0].name, "SalesOrPurchase") << message;
    EXPECT_EQ(choice->Children()[1].name, "SalesAndPurchase") << message;
  }
}

}  // namespace
}  // namespace twqb::messages
