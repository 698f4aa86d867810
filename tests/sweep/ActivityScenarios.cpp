// Activities in both directions.

#include <fmt/core.h>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kActivityTable = {
    {.name = "Activity", .keyColumn = "ActivityID", .stampColumn = "LastUpdated"}};

constexpr std::string_view kAccount = "<FullName>Other Income</FullName>";

void AddAccount(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Other Income</Name><AccountType>OtherIncome</AccountType>");
}

// `ahead` stands ahead of the form.
void AddOneSided(TestHouse& house, std::string_view name, std::string_view ahead = {}) {
  AddRecord(house, "ItemService",
            fmt::format("<Name>{}</Name>{}<SalesOrPurchase><Desc>Made there</Desc><AccountRef>{}</AccountRef>"
                        "</SalesOrPurchase>",
                        name, ahead, kAccount));
}
void AddTwoSided(TestHouse& house, std::string_view name) {
  AddRecord(house, "ItemService",
            fmt::format("<Name>{0}</Name><SalesAndPurchase><SalesDesc>Made there</SalesDesc><IncomeAccountRef>{1}"
                        "</IncomeAccountRef><ExpenseAccountRef>{1}</ExpenseAccountRef></SalesAndPurchase>",
                        name, kAccount));
}
// An activity of that item.
void AddLinked(TestHouse& house, std::string_view key, std::string_view item, std::string_view date) {
  house.Sql(
      fmt::format("INSERT INTO Activity (ActivityID, ActivityDescription, QBLinkID, LastUpdated) "
                  "VALUES ('{}', 'Here', '{}', {})",
                  key, IdOf(house, "ItemService", item), date));
}

// One without a date, one whose name is in use, and one that was changed here after its item. One is linked and has no
// date, and so never goes; for its sake every send has a row to look at.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  AddAccount(house);
  AddOneSided(house, "DESIGN Plans");
  AddTwoSided(house, "GEN HOL");
  AddTwoSided(house, "GEN VAC");
  house.Sql(
      "INSERT INTO Activity (ActivityID, ActivityDescription, AC_CostRate, AC_BillRate) "
      "VALUES ('GEN:COMP', 'Compensation', 60.5, 120.25)");
  house.Sql(
      "INSERT INTO Activity (ActivityID, ActivityDescription, QBLinkID, LastUpdated) "
      "VALUES ('DESIGN:Plans', 'Drawing', '', '2008-02-01 09:00:00')");
  AddLinked(house, "GEN:HOL", "GEN HOL", "'2008-03-05 15:30:00'");
  AddLinked(house, "GEN:VAC", "GEN VAC", "NULL");
}

// One was changed here after the first send and one in QuickBooks.
void PrepareSecondSend(TestHouse& house, const Scenario& scenario) {
  AddAccount(house);
  house.Sql(
      "INSERT INTO Activity (ActivityID, ActivityDescription, LastUpdated) "
      "VALUES ('GEN:COMP', 'Compensation', '2008-02-01 09:00:00')");
  house.Sql(
      "INSERT INTO Activity (ActivityID, ActivityDescription, LastUpdated) "
      "VALUES ('GEN:HOL', 'Holidays', '2008-02-01 09:00:00')");
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  ChangeRecord(house, "ItemService", "GEN HOL",
               "<SalesAndPurchaseMod><SalesDesc>There</SalesDesc></SalesAndPurchaseMod>");
  house.Sql(
      "UPDATE Activity SET ActivityDescription = 'Here', LastUpdated = '2008-03-05 15:40:00' "
      "WHERE ActivityID = 'GEN:COMP'");
}

// Items of both forms, one below another. The key of one is in use by the activity of another, which is newer than its
// item.
void PrepareFirstGet(TestHouse& house, const Scenario& /*scenario*/) {
  AddAccount(house);
  AddTwoSided(house, "Design");
  AddOneSided(house, "Plans", "<ParentRef><FullName>Design</FullName></ParentRef>");
  AddOneSided(house, "Overhead");
  AddLinked(house, "Design:", "Overhead", "'2030-01-01 09:00:00'");
}

// One item was changed in QuickBooks, one activity here and later than its item.
void PrepareSecondGet(TestHouse& house, const Scenario& scenario) {
  PrepareFirstGet(house, scenario);
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  ChangeRecord(house, "ItemService", "Design",
               "<SalesAndPurchaseMod><SalesDesc>There</SalesDesc></SalesAndPurchaseMod>");
  ChangeRecord(house, "ItemService", "Design:Plans", "<SalesOrPurchaseMod><Desc>There</Desc></SalesOrPurchaseMod>");
  house.Sql(
      "UPDATE Activity SET ActivityDescription = 'Here', LastUpdated = '2008-03-05 15:40:00' "
      "WHERE ActivityID = 'Design:Plans'");
}

constexpr Transfer kSendActivities = {.direction = Direction::Send, .table = enActivities};
constexpr Transfer kGetActivities = {.direction = Direction::Get, .table = enActivities};

}  // namespace

std::vector<Scenario> ActivityScenarios() {
  return {
      {.name = "first_send", .tables = kActivityTable, .prepare = PrepareFirstSend, .transfers = {kSendActivities}},
      {.name = "second_send", .tables = kActivityTable, .prepare = PrepareSecondSend, .transfers = {kSendActivities}},
      {.name = "first_get", .tables = kActivityTable, .prepare = PrepareFirstGet, .transfers = {kGetActivities}},
      {.name = "second_get", .tables = kActivityTable, .prepare = PrepareSecondGet, .transfers = {kGetActivities}},
  };
}

}  // namespace twqb::sweep
