// Invoices to QuickBooks, with the items that they need.
//
// None has a class or a kind of contract that asks for a summary: what can't be looked up of those counts as not there,
// by design, and the invoice goes without.

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
  for (const std::string_view item : {"ItemService", "ItemOtherCharge"}) {
    AddRecord(house, item,
              fmt::format("<Name>{} of ours</Name><SalesOrPurchase><AccountRef><FullName>Other Income</FullName>"
                          "</AccountRef></SalesOrPurchase>",
                          item));
  }
  house.Sql(
      fmt::format("INSERT INTO Client (ClientID, ClientCompany, ClientState, QBLinkID) VALUES ('ACME', 'Acme', "
                  "'IL', '{}')",
                  IdOf(house, "Customer", "Acme")));
  house.Sql(fmt::format("INSERT INTO Project (ProjectID, ClientID, QBLinkID) VALUES ('YARD:', 'ACME', '{}')",
                        IdOf(house, "Customer", "Acme:Yard")));
  house.Sql(fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DRAFT:', '{}')",
                        IdOf(house, "ItemService", "ItemService of ours")));
  house.Sql(fmt::format("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('TRAVEL:', '{}')",
                        IdOf(house, "ItemOtherCharge", "ItemOtherCharge of ours")));
}

// An invoice over services and expenses. Its number is its key: the name of its record in a snapshot.
struct Invoice {
  std::string_view key;
  std::string_view services;
  std::string_view expenses = "0";
  std::string_view total;
  std::string_view isManual = "0";
  std::string_view discount = "NULL";
  std::string_view link = "NULL";
  std::string_view lastUpdated = "NULL";
};

void AddInvoice(TestHouse& house, const Invoice& invoice) {
  house.Sql(fmt::format(
      "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, "
      "TransactionManInv, ServiceAmt, ExpAmt, TransactionInvDiscount, TransactionInvBillAmt, QBLinkID, LastUpdated) "
      "VALUES ('{0}', '{0}', 'ACME', 'YARD:', '2008-03-04 00:00:00', {1}, {2}, {3}, {4}, {5}, {6}, {7})",
      invoice.key, invoice.isManual, invoice.services, invoice.expenses, invoice.discount, invoice.total, invoice.link,
      invoice.lastUpdated));
}

// Two hours at 90 less a write-down, and a trip at 40.
void AddInvoiceInDetail(TestHouse& house, std::string_view key) {
  AddInvoice(house, {.key = key, .services = "170", .expenses = "40", .total = "210"});
  house.Sql(
      fmt::format("INSERT INTO TimeEntry (TEID, TransactionID, ActivityID, TEHours, TEBillRate, TEBill, "
                  "TEDescription) VALUES ('{{T-{0}}}', '{0}', 'DRAFT:', 2, 90, -1, 'Plans')",
                  key));
  house.Sql(
      fmt::format("INSERT INTO ExpenseLog (ELID, TransactionID, ExpID, ELUnits, ELCost, ELBillable, "
                  "ELDescription) VALUES ('{{E-{0}}}', '{0}', 'TRAVEL:', 2, 20, -1, 'There and back')",
                  key));
}

// One in detail, one in summary that knows when it was last changed, and one that is negative and never goes: for its
// sake every send has a row to look at.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddInvoiceInDetail(house, "DETAIL");
  AddInvoice(house, {.key = "SUMMARY",
                     .services = "100",
                     .expenses = "30",
                     .total = "125",
                     .isManual = "-1",
                     .discount = "5",
                     .lastUpdated = "'2008-03-04 22:00:00'"});
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
