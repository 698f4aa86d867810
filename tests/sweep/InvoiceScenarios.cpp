// Invoices to QuickBooks, with the items that they need.
//
// Whatever decides the form of their lines (contract, item, class) is there to be found or not there at all, so that
// each look-up of it that fails makes a difference or none.

#include <fmt/format.h>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kInvoices = {
    {.name = "TransactionTable", .keyColumn = "TransactionID", .stampColumn = "LastUpdated"}};

// What an invoice refers to, on both sides and linked, and the account of the items.
void PrepareFirm(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Other Income</Name><AccountType>OtherIncome</AccountType>");
  AddRecord(house, "Customer", "<Name>Acme</Name>");
  AddRecord(house, "Customer", "<Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddRecord(house, "Customer", "<Name>Roof</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddRecord(house, "Class", "<Name>East</Name>");
  AddItem(house, "ItemService", "Drafting", "Other Income");
  AddItem(house, "ItemOtherCharge", "Travel", "Other Income");
  house.Sql(
      fmt::format("INSERT INTO Client (ClientID, ClientCompany, ClientState, QBLinkID) VALUES ('ACME', 'Acme', "
                  "'IL', '{}')",
                  IdOf(house, "Customer", "Acme")));
  house.Sql(fmt::format("INSERT INTO Project (ProjectID, ClientID, QBLinkID) VALUES ('YARD:', 'ACME', '{}')",
                        IdOf(house, "Customer", "Acme:Yard")));
  house.Sql(
      fmt::format("INSERT INTO Project (ProjectID, ClientID, ProjectConType, QBClassID, QBLinkID) VALUES "
                  "('ROOF:', 'ACME', 'Fixed', '{}', '{}')",
                  IdOf(house, "Class", "East"), IdOf(house, "Customer", "Acme:Roof")));
  house.machine.WritePrivateProfileString("GENERAL", "_chkFixed", "1", house.Path("twqb.ini"));
  house.Sql(fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DRAFT:', '{}')",
                        IdOf(house, "ItemService", "Drafting")));
  house.Sql(fmt::format("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('TRAVEL:', '{}')",
                        IdOf(house, "ItemOtherCharge", "Travel")));
}

// An invoice over services and expenses. Its number is its key: the name of its record in a snapshot.
struct Invoice {
  std::string_view key;
  std::string_view project = "YARD:";
  std::string_view services;
  std::string_view expenses = "0";
  std::string_view discount = "0";
  std::string_view total;
  std::string_view link = "NULL";
  std::string_view lastUpdated = "NULL";
};

void AddInvoice(TestHouse& house, const Invoice& invoice) {
  house.Sql(fmt::format(
      "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, ServiceAmt, "
      "ExpAmt, TransactionInvDiscount, TransactionInvBillAmt, QBLinkID, LastUpdated) VALUES ('{0}', '{0}', 'ACME', "
      "'{1}', '2008-03-04 00:00:00', {2}, {3}, {4}, {5}, {6}, {7})",
      invoice.key, invoice.project, invoice.services, invoice.expenses, invoice.discount, invoice.total, invoice.link,
      invoice.lastUpdated));
}

// Two hours at 90, and a trip at 40.
void AddWork(TestHouse& house, std::string_view key) {
  house.Sql(
      fmt::format("INSERT INTO TimeEntry (TEID, TransactionID, ActivityID, TEHours, TEBillRate, TEBill, "
                  "TEDescription) VALUES ('{{T-{0}}}', '{0}', 'DRAFT:', 2, 90, -1, 'Plans')",
                  key));
  house.Sql(
      fmt::format("INSERT INTO ExpenseLog (ELID, TransactionID, ExpID, ELUnits, ELCost, ELBillable, "
                  "ELDescription) VALUES ('{{E-{0}}}', '{0}', 'TRAVEL:', 2, 20, -1, 'There and back')",
                  key));
}

// One in detail that is written down, one in summary that knows when it was last changed, and one that is negative and
// never goes: for its sake every send has a row to look at.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddInvoice(house, {.key = "DETAIL", .services = "170", .expenses = "40", .total = "210"});
  AddWork(house, "DETAIL");
  AddInvoice(house, {.key = "SUMMARY",
                     .project = "ROOF:",
                     .services = "180",
                     .expenses = "40",
                     .discount = "5",
                     .total = "215",
                     .lastUpdated = "'2008-03-04 22:00:00'"});
  AddWork(house, "SUMMARY");
  AddInvoice(house, {.key = "NEVER", .services = "-1", .total = "-1"});
}

// QuickBooks has the items and an invoice that was changed here; one is new, and one knows a record that is gone.
void PrepareSecondSend(TestHouse& house, const Scenario& scenario) {
  PrepareFirstSend(house, scenario);
  TransferNow(house, scenario);
  house.Sql(
      "UPDATE TransactionTable SET ServiceAmt = 180, LastUpdated = '2008-03-05 15:30:00' WHERE TransactionID = "
      "'DETAIL'");
  AddInvoice(house, {.key = "NEW", .services = "55.5", .total = "55.5"});
  AddInvoice(house, {.key = "STALE", .services = "60", .total = "60", .link = "'FFF-1'"});
}

constexpr Transfer kSendInvoices = {.direction = Direction::Send, .table = enInvoices};

}  // namespace

std::vector<Scenario> InvoiceScenarios() {
  return {
      {.name = "first_send", .tables = kInvoices, .prepare = PrepareFirstSend, .transfers = {kSendInvoices}},
      {.name = "second_send", .tables = kInvoices, .prepare = PrepareSecondSend, .transfers = {kSendInvoices}},
  };
}

}  // namespace twqb::sweep
