// Accounts in both directions.

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kAccountTable = {
    {.name = "AccountList", .keyColumn = "AccountID", .stampColumn = "LastUpdated"}};

constexpr Transfer kSendAccounts = {.direction = Direction::Send, .table = enAccounts};
constexpr Transfer kGetAccounts = {.direction = Direction::Get, .table = enAccounts};

// One without a date, one under a parent that is there already, and one whose twin was deleted in QuickBooks.
void PrepareFirstSend(TestHouse& house, const Scenario& scenario) {
  AddRecord(house, "Account",
            "<Name>Travel</Name><AccountType>Expense</AccountType><AccountNumber>6000</AccountNumber>");
  TransferNow(house, {.tables = scenario.tables, .transfers = {kGetAccounts}});
  house.machine.Advance(20 * Date::kMinute);
  house.Sql("UPDATE AccountList SET LastUpdated = '2008-02-01 09:00:00'");
  house.Sql(
      "INSERT INTO AccountList (AccountID, AccountName, AccountTypeID, OpenBalance) VALUES ('1010', 'Till', 2, 5)");
  house.Sql(
      "INSERT INTO AccountList (AccountID, AccountName, AccountTypeID, ParentAccountID, LastUpdated) "
      "VALUES ('6010', 'Fares', 6, '6000', '2008-02-01 09:00:00')");
  house.Sql(
      "INSERT INTO AccountList (AccountID, AccountName, QBLinkID, LastUpdated) "
      "VALUES ('6200', 'Tolls', '800000AA-1', '2008-02-01 09:00:00')");
}

// Everything is linked by now, and one was changed here, which stays here.
void PrepareSecondSend(TestHouse& house, const Scenario& scenario) {
  PrepareFirstSend(house, scenario);
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  house.Sql("UPDATE AccountList SET AccountName = 'Journeys', LastUpdated = '2030-01-01' WHERE AccountID = '6000'");
}

// Three accounts, each under the one before, and one without a number.
void PrepareFirstGet(TestHouse& house, const Scenario& /*scenario*/) {
  AddRecord(house, "Account",
            "<Name>Travel</Name><AccountType>Expense</AccountType><AccountNumber>6000</AccountNumber>");
  AddRecord(house, "Account",
            "<Name>Fares</Name><ParentRef><FullName>Travel</FullName></ParentRef><AccountType>Expense</AccountType>"
            "<AccountNumber>6010</AccountNumber>");
  AddRecord(house, "Account",
            "<Name>Rail</Name><IsActive>false</IsActive><ParentRef><FullName>Travel:Fares</FullName></ParentRef>"
            "<AccountType>Expense</AccountType><AccountNumber>6011</AccountNumber>");
  AddRecord(house, "Account", "<Name>Yard</Name><AccountType>Bank</AccountType>");
}

// One account was changed here later than its twin, one before.
void PrepareSecondGet(TestHouse& house, const Scenario& scenario) {
  PrepareFirstGet(house, scenario);
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  house.Sql(
      "UPDATE AccountList SET AccountName = 'Journeys', LastUpdated = '2008-03-05 15:40:00' WHERE AccountID = '6000'");
  house.Sql(
      "UPDATE AccountList SET AccountName = 'Tickets', LastUpdated = '2008-02-01 09:00:00' WHERE AccountID = '6010'");
}

}  // namespace

std::vector<Scenario> AccountScenarios() {
  return {
      {.name = "first_send",
       .tables = kAccountTable,
       .nameInUse = NameInUse::PassesOver,
       .prepare = PrepareFirstSend,
       .transfers = {kSendAccounts}},
      {.name = "second_send",
       .tables = kAccountTable,
       .nameInUse = NameInUse::PassesOver,
       .prepare = PrepareSecondSend,
       .transfers = {kSendAccounts}},
      {.name = "first_get", .tables = kAccountTable, .prepare = PrepareFirstGet, .transfers = {kGetAccounts}},
      {.name = "second_get", .tables = kAccountTable, .prepare = PrepareSecondGet, .transfers = {kGetAccounts}},
  };
}

}  // namespace twqb::sweep
