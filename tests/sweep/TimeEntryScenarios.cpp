// Time entries in both directions.
//
// None has a class, a payroll item or a rate of its own: what can't be looked up of those counts as not there, by
// design, and the entry goes without.

#include <fmt/core.h>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kSentEntries = {
    {.name = "TimeEntry", .keyColumn = "TEID", .stampColumn = "LastUpdated"}};
// Rows that a get makes are told apart by what QuickBooks says of them.
const std::vector<LinkedTable> kReceivedEntries = {
    {.name = "TimeEntry", .keyColumn = "TEDescription", .stampColumn = "LastUpdated", .madeKeyColumn = "TEID"}};

// What an entry refers to, on both sides and linked: an employee, a job, an item.
void PrepareWork(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Other Income</Name><AccountType>OtherIncome</AccountType>");
  AddRecord(house, "Account", "<Name>Payroll Expenses</Name><AccountType>Expense</AccountType>");
  AddRecord(house, "Employee",
            "<FirstName>Ann</FirstName><LastName>Lee</LastName><EmployeePayrollInfo><UseTimeDataToCreatePaychecks>"
            "UseTimeData</UseTimeDataToCreatePaychecks></EmployeePayrollInfo>");
  AddRecord(house, "Customer", "<Name>Acme</Name>");
  AddRecord(house, "Customer", "<Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddItem(house, "ItemService", "Drafting", "Other Income");
  house.Sql(
      fmt::format("INSERT INTO Employee (EmployeeID, IsSub, EmpBillRate, EmpCostRate, QBLinkID) VALUES ('ALEE', "
                  "0, 1, 1, '{}')",
                  IdOf(house, "Employee", "Ann Lee")));
  house.Sql(fmt::format("INSERT INTO Project (ProjectID, ProjectName, QBLinkID) VALUES ('YARD:', 'Yard', '{}')",
                        IdOf(house, "Customer", "Acme:Yard")));
  house.Sql(fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DRAFT:', '{}')",
                        IdOf(house, "ItemService", "Drafting")));
}

void AddRow(TestHouse& house, std::string_view key, std::string_view text, std::string_view hours,
            std::string_view date) {
  house.Sql(fmt::format(
      "INSERT INTO TimeEntry (TEID, TEDate, EmployeeID, ProjectID, ActivityID, TEHours, TEBill, TEBillRate, "
      "TEPosted, TEDescription, LastUpdated) VALUES ('{{{}}}', '2008-03-04 00:00:00', 'ALEE', 'YARD:', "
      "'DRAFT:', {}, -1, 90, -1, '{}', {})",
      key, hours, text, date));
}

// One knows when it was last changed, and one never goes: for its sake every send has a row to look at.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareWork(house);
  AddRow(house, "E1", "Plans", "7.75", "NULL");
  AddRow(house, "E2", "Sections", "30", "'2008-03-04 22:00:00'");
  AddRow(house, "E0", "Not posted", "4", "NULL");
  house.Sql("UPDATE TimeEntry SET TEPosted = 0 WHERE TEID = '{E0}'");
}

// One is new, one that is linked was changed, and QuickBooks has the four payroll items.
void PrepareSecondSend(TestHouse& house, const Scenario& scenario) {
  PrepareFirstSend(house, scenario);
  TransferNow(house, scenario);
  house.Sql("UPDATE TimeEntry SET TEHours = 8, LastUpdated = '2008-03-05 15:30:00' WHERE TEID = '{E1}'");
  AddRow(house, "E3", "Details", "1.5", "NULL");
}

void AddThere(TestHouse& house, std::string_view customer, std::string_view rest, std::string_view notes) {
  AddRecord(house, "TimeTracking",
            fmt::format("<TxnDate>2008-03-04</TxnDate><EntityRef><FullName>Ann Lee</FullName></EntityRef><CustomerRef>"
                        "<FullName>{}</FullName></CustomerRef>{}<Notes>{}</Notes><IsBillable>true</IsBillable>",
                        customer, rest, notes));
}

constexpr std::string_view kTimeOfDrafting =
    "<ItemServiceRef><FullName>Drafting</FullName></ItemServiceRef><Duration>PT7H45M0S</Duration>";
constexpr std::string_view kTimeOfNoItem = "<Duration>PT2H30M59S</Duration>";

void PrepareFirstGet(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareWork(house);
  AddThere(house, "Acme:Yard", kTimeOfDrafting, "Plans");
  AddThere(house, "Acme:Yard", kTimeOfNoItem, "Sections");
}

// A new one, and one whose row was changed here.
void PrepareSecondGet(TestHouse& house, const Scenario& scenario) {
  PrepareFirstGet(house, scenario);
  // Not the keys that the sweep's own house makes.
  for (int i = 0; i < 10; ++i) (void)house.machine.CreateGuid();
  TransferNow(house, scenario);
  AddThere(house, "Acme:Yard", kTimeOfDrafting, "Details");
  house.Sql("UPDATE TimeEntry SET TEHours = 8, LastUpdated = '2008-03-05 15:40:00' WHERE TEDescription = 'Plans'");
}

// Time on a customer, who comes in as a client and as a project first.
void PrepareGetOfCustomer(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareWork(house);
  AddThere(house, "Acme", kTimeOfDrafting, "Plans");
}

constexpr Transfer kSendEntries = {.direction = Direction::Send, .table = enTimeEntries};
constexpr Transfer kGetEntries = {.direction = Direction::Get, .table = enTimeEntries};

}  // namespace

std::vector<Scenario> TimeEntryScenarios() {
  return {
      {.name = "first_send",
       .tables = kSentEntries,
       .display = RowDisplay::Ignored,
       .prepare = PrepareFirstSend,
       .transfers = {kSendEntries}},
      {.name = "second_send",
       .tables = kSentEntries,
       .display = RowDisplay::Ignored,
       .prepare = PrepareSecondSend,
       .transfers = {kSendEntries}},
      {.name = "first_get", .tables = kReceivedEntries, .prepare = PrepareFirstGet, .transfers = {kGetEntries}},
      {.name = "second_get", .tables = kReceivedEntries, .prepare = PrepareSecondGet, .transfers = {kGetEntries}},
      {.name = "get_of_a_customer",
       .tables = kReceivedEntries,
       .prepare = PrepareGetOfCustomer,
       .transfers = {kGetEntries}},
  };
}

}  // namespace twqb::sweep
