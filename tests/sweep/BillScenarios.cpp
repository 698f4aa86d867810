// Expenses and vendor bills to QuickBooks, with one line to each bill and with several.
//
// A bill that could not be read to its end goes with the lines that it has, by design: with one line it goes or stays.

#include <fmt/core.h>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kVendorBills = {
    {.name = "VendorBill", .keyColumn = "VendorBillID", .stampColumn = "LastUpdated"},
    {.name = "TimeEntry", .keyColumn = "TEID", .stampColumn = "LastUpdated"},
    {.name = "ExpenseLog", .keyColumn = "ELID", .stampColumn = "LastUpdated"}};
const std::vector<LinkedTable> kExpenses = {{.name = "ExpenseLog", .keyColumn = "ELID", .stampColumn = "LastUpdated"}};

// What a bill refers to, on both sides and linked: two vendors, a job, an item of each kind.
void PrepareFirm(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Costs</Name><AccountType>Expense</AccountType>");
  AddRecord(house, "Customer", "<Name>Acme</Name>");
  AddRecord(house, "Customer", "<Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddItem(house, "ItemService", "Drafting", "Costs");
  AddItem(house, "ItemOtherCharge", "Travel", "Costs");
  for (const std::string_view vendor : {"SMITH", "TAYLOR", "USHER"}) {
    AddRecord(house, "Vendor", fmt::format("<Name>{}</Name>", vendor));
    house.Sql(fmt::format("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('{}', -1, '{}')", vendor,
                          IdOf(house, "Vendor", vendor)));
  }
  house.Sql(fmt::format("INSERT INTO Project (ProjectID, QBLinkID) VALUES ('YARD:', '{}')",
                        IdOf(house, "Customer", "Acme:Yard")));
  house.Sql(fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DRAFT:', '{}')",
                        IdOf(house, "ItemService", "Drafting")));
  house.Sql(fmt::format("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('TRAVEL:', '{}')",
                        IdOf(house, "ItemOtherCharge", "Travel")));
}

// --- Vendor bills ----------------------------------------------------------------------------------------------------

void AddBill(TestHouse& house, std::string_view key, std::string_view link = "NULL",
             std::string_view lastUpdated = "NULL") {
  house.Sql(
      fmt::format("INSERT INTO VendorBill (VendorBillID, VendorID, BillNumber, BillDate, BillDueDate, QBLinkID, "
                  "LastUpdated) VALUES "
                  "('{0}', 'SMITH', '{0}', '2008-03-04', '2008-03-20', {1}, {2})",
                  key, link, lastUpdated));
}

void AddHours(TestHouse& house, std::string_view bill) {
  house.Sql(fmt::format(
      "INSERT INTO TimeEntry (TEID, VendorBillID, TEDate, EmployeeID, ProjectID, ActivityID, TEHours, TECostRate, "
      "TEBill, "
      "TEDescription) VALUES ('hours of {0}', '{0}', '2008-03-03', 'SMITH', 'YARD:', 'DRAFT:', 7.75, 40, -1, 'Plans')",
      bill));
}

void AddExpense(TestHouse& house, std::string_view key, std::string_view vendor, std::string_view bill,
                std::string_view lastUpdated = "NULL") {
  house.Sql(fmt::format(
      "INSERT INTO ExpenseLog (ELID, VendorBillID, ELDate, EmployeeID, isSub, ProjectID, ExpID, ELUnits, ELCost, "
      "ELBillable, ELDescription, ELPosted, LastUpdated) VALUES ('{0}', {1}, '2008-03-03', '{2}', -1, 'YARD:', "
      "'TRAVEL:', "
      "2, 10, 0, '{0}', -1, {3})",
      key, bill, vendor, lastUpdated));
}

// One over hours, and one over an expense that knows when it was last changed.
void PrepareFirstBills(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddBill(house, "BILL-A");
  AddHours(house, "BILL-A");
  AddBill(house, "BILL-B", "NULL", "'2008-03-04 22:00:00'");
  AddExpense(house, "train", "SMITH", "'BILL-B'", "'2008-03-04 22:00:00'");
}

// One over hours and an expense, which has its own bill behind it.
void PrepareBillOfSeveralLines(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddBill(house, "BILL-A");
  AddHours(house, "BILL-A");
  AddExpense(house, "train", "SMITH", "'BILL-A'");
  AddExpense(house, "taxi", "SMITH", "'BILL-A'", "'2008-03-04 22:00:00'");
}

// QuickBooks has a bill that was changed here; one is new, and one knows a record that is gone.
void PrepareSecondBills(TestHouse& house, const Scenario& scenario) {
  PrepareFirstBills(house, scenario);
  TransferNow(house, scenario);
  house.Sql(
      "UPDATE VendorBill SET BillDate = '2008-03-05', LastUpdated = '2008-03-05 15:30:00' WHERE VendorBillID = "
      "'BILL-A'");
  AddBill(house, "BILL-NEW");
  AddHours(house, "BILL-NEW");
  AddBill(house, "BILL-STALE", "'FFF-1'");
  AddExpense(house, "taxi", "SMITH", "'BILL-STALE'");
}

// --- Expenses --------------------------------------------------------------------------------------------------------

// One knows when it was last changed, and one is of a vendor whom QuickBooks lacks and never goes: for its sake every
// send has a row to look at.
void PrepareFirstExpenses(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddExpense(house, "train", "SMITH", "NULL", "'2008-03-04 22:00:00'");
  AddExpense(house, "hotel", "TAYLOR", "NULL");
  AddExpense(house, "never", "NOBODY", "NULL");
}

// Two of one vendor are one bill.
void PrepareExpensesOfOneBill(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddExpense(house, "train", "SMITH", "NULL", "'2008-03-04 22:00:00'");
  AddExpense(house, "taxi", "SMITH", "NULL");
  AddExpense(house, "never", "NOBODY", "NULL");
}

// An employee's, who is no vendor: somebody is picked for it.
void PrepareExpensesOfAnEmployee(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  house.Sql("INSERT INTO Employee (EmployeeID, IsSub) VALUES ('AL', 0)");
  AddExpense(house, "fuel", "AL", "NULL", "'2008-03-04 22:00:00'");
  house.Sql("UPDATE ExpenseLog SET isSub = 0 WHERE EmployeeID = 'AL'");
  AddExpense(house, "never", "NOBODY", "NULL");
}

// Rows that are linked are not named again; one is new.
void PrepareSecondExpenses(TestHouse& house, const Scenario& scenario) {
  PrepareFirstExpenses(house, scenario);
  TransferNow(house, scenario);
  AddExpense(house, "taxi", "USHER", "NULL");
}

constexpr Transfer kSendBills = {.direction = Direction::Send, .table = enVendorBill};
// A host names what has no link: a row that is named a second time is billed a second time.
constexpr Transfer kSendExpenses = {
    .direction = Direction::Send,
    .table = enExpenseLog,
    .named = "SELECT ELID AS Named FROM ExpenseLog WHERE QBLinkID IS NULL ORDER BY ELID"};

}  // namespace

std::vector<Scenario> BillScenarios() {
  return {
      {.name = "first_bills", .tables = kVendorBills, .prepare = PrepareFirstBills, .transfers = {kSendBills}},
      {.name = "second_bills", .tables = kVendorBills, .prepare = PrepareSecondBills, .transfers = {kSendBills}},
      {.name = "bill_of_several_lines",
       .tables = kVendorBills,
       .prepare = PrepareBillOfSeveralLines,
       .transfers = {kSendBills}},
      {.name = "expenses_of_one_bill",
       .tables = kExpenses,
       .prepare = PrepareExpensesOfOneBill,
       .transfers = {kSendExpenses}},
      {.name = "first_expenses", .tables = kExpenses, .prepare = PrepareFirstExpenses, .transfers = {kSendExpenses}},
      {.name = "expenses_of_an_employee",
       .tables = kExpenses,
       .prepare = PrepareExpensesOfAnEmployee,
       .transfers = {kSendExpenses}},
      {.name = "second_expenses", .tables = kExpenses, .prepare = PrepareSecondExpenses, .transfers = {kSendExpenses}},
  };
}

}  // namespace twqb::sweep
