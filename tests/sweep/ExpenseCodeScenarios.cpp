// Expense codes in both directions, with items of all three kinds.

#include <fmt/core.h>

#include <string>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kExpenseTable = {
    {.name = "Expense", .keyColumn = "ExpID", .stampColumn = "LastUpdated"}};

constexpr std::string_view kBoth =
    "<SalesAndPurchase><SalesPrice>12</SalesPrice><IncomeAccountRef><FullName>Other Income</FullName>"
    "</IncomeAccountRef><PurchaseDesc>Changed here</PurchaseDesc><PurchaseCost>10</PurchaseCost><ExpenseAccountRef>"
    "<FullName>Other Income</FullName></ExpenseAccountRef></SalesAndPurchase>";
constexpr std::string_view kEither =
    "<SalesOrPurchase><Price>12</Price><AccountRef><FullName>Other Income</FullName></AccountRef></SalesOrPurchase>";
constexpr std::string_view kStock =
    "<SalesPrice>12</SalesPrice><IncomeAccountRef><FullName>Other Income</FullName></IncomeAccountRef><PurchaseCost>10"
    "</PurchaseCost><COGSAccountRef><FullName>Goods</FullName></COGSAccountRef><AssetAccountRef><FullName>Stock"
    "</FullName></AssetAccountRef>";

// Accounts, and an item of each kind under the name that a code would give it.
void PrepareItems(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Other Income</Name><AccountType>OtherIncome</AccountType>");
  AddRecord(house, "Account", "<Name>Goods</Name><AccountType>CostOfGoodsSold</AccountType>");
  AddRecord(house, "Account", "<Name>Stock</Name><AccountType>OtherCurrentAsset</AccountType>");
  AddRecord(house, "ItemOtherCharge", fmt::format("<Name>Travel Air</Name>{}", kBoth));
  AddRecord(house, "ItemNonInventory", fmt::format("<Name>Office Paper</Name>{}", kEither));
  AddRecord(house, "ItemInventory", fmt::format("<Name>Site Rods</Name>{}", kStock));
}

void Insert(TestHouse& house, std::string_view key, std::string_view link, std::string_view date) {
  house.Sql(
      fmt::format("INSERT INTO Expense (ExpID, ExpDescription, ExpCost, ExpMarkup, QBLinkID, LastUpdated) VALUES "
                  "('{}', 'Changed here', 7, 20, '{}', {})",
                  key, link, date));
}

// One without a date, and one whose name is in use and whose date sends it every time.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareItems(house);
  AddRecord(house, "ItemService", fmt::format("<Name>Hotel Room</Name>{}", kEither));
  Insert(house, "Travel:Taxi", "", "NULL");
  Insert(house, "Hotel:Room", "", "'2030-01-01 09:00:00'");
}

// Two that always go over their items, whichever is later: one that could not be filled is told and passed over, and
// the run counts as a good one, so that only a date that is still to come sends it again. The items are of the kind,
// and have what a Mod leaves alone, as an Add would make them: one that can't be read is added again.
void PrepareSecondSend(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareItems(house);
  AddRecord(house, "ItemOtherCharge", fmt::format("<Name>Travel Rail</Name>{}", kBoth));
  house.machine.WritePrivateProfileString("QBSEND_", "Expense Codes_OptMostRecent", "False", house.Path("twqb.ini"));
  for (const std::string_view item : {"Air", "Rail"}) {
    Insert(house, fmt::format("Travel:{}", item), IdOf(house, "ItemOtherCharge", fmt::format("Travel {}", item)),
           "'2030-01-01 09:00:00'");
  }
}

void PrepareFirstGet(TestHouse& house, const Scenario& /*scenario*/) { PrepareItems(house); }

// One item was changed in QuickBooks, one code here and later than its item.
void PrepareSecondGet(TestHouse& house, const Scenario& scenario) {
  PrepareFirstGet(house, scenario);
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  ChangeRecord(house, "ItemInventory", "Site Rods", "<SalesDesc>Rods of iron</SalesDesc>");
  ChangeRecord(house, "ItemNonInventory", "Office Paper",
               "<SalesOrPurchaseMod><Desc>Drawing paper</Desc></SalesOrPurchaseMod>");
  house.Sql(
      "UPDATE Expense SET ExpDescription = 'Plain', LastUpdated = '2008-03-05 15:40:00' WHERE ExpID = 'Office Paper:'");
}

constexpr Transfer kSendCodes = {.direction = Direction::Send, .table = enExpenseCodes};
constexpr Transfer kGetItems = {.direction = Direction::Get, .table = enExpenseCodes};

}  // namespace

std::vector<Scenario> ExpenseCodeScenarios() {
  return {
      {.name = "first_send", .tables = kExpenseTable, .prepare = PrepareFirstSend, .transfers = {kSendCodes}},
      {.name = "second_send", .tables = kExpenseTable, .prepare = PrepareSecondSend, .transfers = {kSendCodes}},
      {.name = "first_get", .tables = kExpenseTable, .prepare = PrepareFirstGet, .transfers = {kGetItems}},
      {.name = "second_get", .tables = kExpenseTable, .prepare = PrepareSecondGet, .transfers = {kGetItems}},
  };
}

}  // namespace twqb::sweep
