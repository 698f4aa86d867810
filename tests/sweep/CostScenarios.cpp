// Expenses, vendor bills and estimates that come in, line by line.
//
// No item, person or word is looked up without which a line would become another row: such a look-up counts as one that
// found nothing, by design. Lines of bills whose items can't be looked up stay out until the next run.

#include <fmt/core.h>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const LinkedTable kExpenses = {
    .name = "ExpenseLog",
    .keyColumn = "ELDescription",
    .stampColumn = "LastUpdated",
    .madeKeyColumn = "ELID",
    .select =
        "SELECT ELDescription, ELID, EmployeeID, ProjectID, ExpID, ELDate, ELChgAmt, ELCost, ELUnits, ELMarkup, "
        "ELBilled, QBLinkID, LastUpdated FROM ExpenseLog ORDER BY rowid",
    .perRecord = RowsOfARecord::Several};
const LinkedTable kHours = {
    .name = "TimeEntry",
    .keyColumn = "TEDescription",
    .stampColumn = "LastUpdated",
    .madeKeyColumn = "TEID",
    .select =
        "SELECT TEDescription, TEID, EmployeeID, ProjectID, ProjectName, ActivityID, TEDate, TEHours, TECostRate, "
        "TEBillStatus, QBLinkID, LastUpdated FROM TimeEntry ORDER BY rowid",
    .perRecord = RowsOfARecord::Several};
const LinkedTable kBills = {.name = "VendorBill",
                            .keyColumn = "BillNumber",
                            .stampColumn = "LastUpdated",
                            .madeKeyColumn = "VendorBillID",
                            .perRecord = RowsOfARecord::Several};
const LinkedTable kBudgets = {
    .name = "Budget", .keyColumn = "BudgetID", .stampColumn = "LastUpdated", .perRecord = RowsOfARecord::Several};
const LinkedTable kBudgetExpenses = {.name = "BudgetExpense",
                                     .keyColumn = "BEDescription",
                                     .stampColumn = "LastUpdated",
                                     .madeKeyColumn = "BEID",
                                     .perRecord = RowsOfARecord::Several};

void PrepareFirm(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Consulting</Name><AccountType>Income</AccountType>");
  AddRecord(house, "Account", "<Name>Checking</Name><AccountType>Bank</AccountType>");
  AddRecord(house, "Account", "<Name>Automobile</Name><AccountType>Expense</AccountType>");
  AddRecord(house, "Customer", "<Name>Acme</Name>");
  AddRecord(house, "Customer", "<Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddRecord(house, "Vendor", "<Name>Smith</Name>");
  AddRecord(house, "Vendor", "<Name>Stranger</Name>");
  AddItem(house, "ItemService", "Drafting", "Consulting");
  AddItem(house, "ItemOtherCharge", "Travel", "Automobile");
  AddItem(house, "ItemOtherCharge", "Stamps", "Automobile");
  house.Sql(
      fmt::format("INSERT INTO Project (ProjectID, ProjectName, ClientID, EmployeeID, QBLinkID) VALUES ('YARD:', "
                  "'The yard', 'ACME', 'BOSS', '{}')",
                  IdOf(house, "Customer", "Acme:Yard")));
  house.Sql(fmt::format("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('SMITH', -1, '{}')",
                        IdOf(house, "Vendor", "Smith")));
  house.Sql(fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DRAFT:', '{}')",
                        IdOf(house, "ItemService", "Drafting")));
  house.Sql(fmt::format("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('TRAVEL:', '{}')",
                        IdOf(house, "ItemOtherCharge", "Travel")));
}

std::string Ref(std::string_view name, std::string_view fullName) {
  return fmt::format("<{0}><FullName>{1}</FullName></{0}>", name, fullName);
}

std::string ItemLine(std::string_view item, std::string_view text, std::string_view quantity, std::string_view cost) {
  return fmt::format("<ItemLineAdd>{}<Desc>{}</Desc><Quantity>{}</Quantity><Cost>{}</Cost>{}</ItemLineAdd>",
                     Ref("ItemRef", item), text, quantity, cost, Ref("CustomerRef", "Acme:Yard"));
}

std::string AccountLine(std::string_view text, std::string_view amount) {
  return fmt::format("<ExpenseLineAdd>{}<Amount>{}</Amount><Memo>{}</Memo>{}</ExpenseLineAdd>",
                     Ref("AccountRef", "Automobile"), amount, text, Ref("CustomerRef", "Acme:Yard"));
}

void AddCheck(TestHouse& house, std::string_view payee, std::string_view number, std::string_view lines) {
  AddRecord(house, "Check",
            fmt::format("{}{}<RefNumber>{}</RefNumber><TxnDate>2008-03-04</TxnDate><Memo>Whole</Memo>{}",
                        Ref("AccountRef", "Checking"), Ref("PayeeEntityRef", payee), number, lines));
}

void AddBill(TestHouse& house, std::string_view vendor, std::string_view number, std::string_view lines) {
  AddRecord(house, "Bill",
            fmt::format("{}<TxnDate>2008-03-04</TxnDate><DueDate>2008-04-04</DueDate><RefNumber>{}</RefNumber>{}",
                        Ref("VendorRef", vendor), number, lines));
}

// A check of both forms of lines, one that comes as a whole, and a bill; of nobody who is here.
void PrepareFirstGetOfExpenses(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddCheck(house, "Stranger", "1", AccountLine("Fuel", "10.00") + ItemLine("Travel", "There", "2", "12.50"));
  AddCheck(house, "Acme:Yard", "2",
           "<ExpenseLineAdd><AccountRef><FullName>Automobile</FullName></AccountRef><Amount>7.00</Amount>"
           "</ExpenseLineAdd>");
  AddBill(house, "Stranger", "3", ItemLine("Travel", "Back", "1", "12.50"));
}

// Not the keys that the sweep's own house makes.
void TransferBeforehand(TestHouse& house, const Scenario& scenario) {
  constexpr int kKeysOfTheSweep = 20;
  for (int i = 0; i < kKeysOfTheSweep; ++i) (void)house.machine.CreateGuid();
  TransferNow(house, scenario);
}

// A new line beside one that is older here, and one that was billed.
void PrepareSecondGetOfExpenses(TestHouse& house, const Scenario& scenario) {
  PrepareFirm(house);
  AddBill(house, "Stranger", "3", ItemLine("Travel", "There", "2", "12.50") + ItemLine("Travel", "Billed", "1", "5"));
  TransferBeforehand(house, scenario);
  AddBill(house, "Stranger", "4", ItemLine("Travel", "Back", "1", "12.50"));
  house.Sql("UPDATE ExpenseLog SET ELCost = 1, ELMarkup = 10, LastUpdated = '2008-03-01 10:00:00'");
  house.Sql("UPDATE ExpenseLog SET ELBilled = 'B' WHERE ELDescription = 'Billed'");
}

// A bill that broke off is here, and would stay as it is where the later side wins.
void LetQuickBooksWin(TestHouse& house) {
  house.machine.WritePrivateProfileString("QBGET_", "Vendor Bill(QB)_OptMostRecent", "False", house.Path("twqb.ini"));
}

// Hours, an expense, and a line on an account; an item that is not here.
void PrepareFirstGetOfBills(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  LetQuickBooksWin(house);
  AddBill(house, "Smith", "S-77",
          AccountLine("Fuel", "10.00") + ItemLine("Drafting", "Details", "3", "40") +
              ItemLine("Travel", "There", "2", "12.50") + ItemLine("Stamps", "Unheard of", "2", "1"));
}

// A new bill beside one of which a line was changed here, and one was billed.
void PrepareSecondGetOfBills(TestHouse& house, const Scenario& scenario) {
  PrepareFirm(house);
  LetQuickBooksWin(house);
  AddBill(house, "Smith", "S-77",
          ItemLine("Drafting", "Details", "3", "40") + ItemLine("Travel", "There", "2", "12.50"));
  TransferBeforehand(house, scenario);
  AddBill(house, "Smith", "S-78", ItemLine("Travel", "Back", "1", "12.50"));
  house.Sql("UPDATE TimeEntry SET TEHours = 8");
  house.Sql("UPDATE ExpenseLog SET ELBilled = 'B', ELCost = 5");
}

std::string EstimateLine(std::string_view text, std::string_view quantity, std::string_view rate) {
  return fmt::format("<EstimateLineAdd>{}<Desc>{}</Desc><Quantity>{}</Quantity><Rate>{}</Rate></EstimateLineAdd>",
                     Ref("ItemRef", "Stamps"), text, quantity, rate);
}

void AddEstimate(TestHouse& house, std::string_view number, std::string_view lines) {
  AddRecord(house, "Estimate",
            fmt::format("{}<TxnDate>2008-03-04</TxnDate><RefNumber>{}</RefNumber>{}", Ref("CustomerRef", "Acme:Yard"),
                        number, lines));
}

void PrepareFirstGetOfEstimates(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddEstimate(house, "E-1", EstimateLine("Plans", "4", "25") + EstimateLine("Prints", "2", "5"));
  AddEstimate(house, "E-2", EstimateLine("More", "1", "25"));
}

// A new one beside one of which a line is older here.
void PrepareSecondGetOfEstimates(TestHouse& house, const Scenario& scenario) {
  PrepareFirm(house);
  AddEstimate(house, "E-1", EstimateLine("Plans", "4", "25") + EstimateLine("Prints", "2", "5"));
  TransferBeforehand(house, scenario);
  AddEstimate(house, "E-2", EstimateLine("More", "1", "25"));
  house.Sql("UPDATE BudgetExpense SET BEAmt = 1, LastUpdated = '2008-03-01 10:00:00' WHERE BEDescription = 'Plans'");
}

constexpr Transfer kGetExpenses = {.direction = Direction::Get, .table = enExpenseLog};
constexpr Transfer kGetBills = {.direction = Direction::Get, .table = enVendorBill};
constexpr Transfer kGetEstimates = {.direction = Direction::Get, .table = enEstimates};

}  // namespace

std::vector<Scenario> CostScenarios() {
  return {
      {.name = "first_get_of_expenses",
       .tables = {kExpenses},
       .prepare = PrepareFirstGetOfExpenses,
       .transfers = {kGetExpenses}},
      {.name = "second_get_of_expenses",
       .tables = {kExpenses},
       .prepare = PrepareSecondGetOfExpenses,
       .transfers = {kGetExpenses}},
      {.name = "first_get_of_bills",
       .tables = {kBills, kHours, kExpenses},
       .prepare = PrepareFirstGetOfBills,
       .transfers = {kGetBills}},
      {.name = "second_get_of_bills",
       .tables = {kBills, kHours, kExpenses},
       .prepare = PrepareSecondGetOfBills,
       .transfers = {kGetBills}},
      {.name = "first_get_of_estimates",
       .tables = {kBudgets, kBudgetExpenses},
       .prepare = PrepareFirstGetOfEstimates,
       .transfers = {kGetEstimates}},
      {.name = "second_get_of_estimates",
       .tables = {kBudgets, kBudgetExpenses},
       .prepare = PrepareSecondGetOfEstimates,
       .transfers = {kGetEstimates}},
  };
}

}  // namespace twqb::sweep
