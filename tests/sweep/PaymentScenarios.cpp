// Payments to QuickBooks: those that settle their invoice, and retainers.
//
// A payment whose link is lost is not booked a second time: nothing is open any more. A retainer has no such balance
// and is.

#include <fmt/core.h>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

// A payment, and the rows of the invoices that it goes to.
const std::vector<LinkedTable> kPayments = {
    {.name = "Payment", .keyColumn = "PayID", .stampColumn = "LastUpdated"},
    {.name = "TransactionTable", .keyColumn = "TransactionID", .stampColumn = "LastUpdated"}};

// A client and a project on both sides.
void PrepareFirm(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Other Income</Name><AccountType>OtherIncome</AccountType>");
  AddRecord(house, "Customer", "<Name>Acme</Name>");
  AddRecord(house, "Customer", "<Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddItem(house, "ItemService", "Drafting", "Other Income");
  house.Sql(
      fmt::format("INSERT INTO Client (ClientID, QBLinkID) VALUES ('ACME', '{}')", IdOf(house, "Customer", "Acme")));
  house.Sql(fmt::format("INSERT INTO Project (ProjectID, ClientID, QBLinkID) VALUES ('YARD:', 'ACME', '{}')",
                        IdOf(house, "Customer", "Acme:Yard")));
}

struct Payment {
  std::string_view key;  // also its number
  std::string_view method = "1";
  std::string_view amount;
  std::string_view link = "NULL";
  std::string_view lastUpdated = "NULL";  // of the row that it goes to
};

void AddRows(TestHouse& house, const Payment& payment, std::string_view retainer, std::string_view project) {
  house.Sql(fmt::format(
      "INSERT INTO Payment (PayID, PayRetainer, PayDate, PayAmt, PayMethod, PayRef, ClientID, QBLinkID) VALUES ('{0}', "
      "{1}, '2008-03-04', {2}, '{3}', '{0}', 'ACME', {4})",
      payment.key, retainer, payment.amount, payment.method, payment.link));
  house.Sql(fmt::format(
      "INSERT INTO TransactionTable (TransactionID, PayID, TransactionInvNum, ProjectID, ClientID, "
      "TransactionPayAmtApplied, QBLinkID, LastUpdated) VALUES ('to {0}', '{0}', 'i {0}', '{1}', 'ACME', {2}, {3}, "
      "{4})",
      payment.key, project, payment.amount, payment.link, payment.lastUpdated));
}

// It goes to an invoice of its own, on both sides, that is settled by it.
void AddPayment(TestHouse& house, const Payment& payment) {
  const auto invoice = AddTransaction(
      house, "Invoice",
      fmt::format(
          "<CustomerRef><FullName>Acme:Yard</FullName></CustomerRef><RefNumber>i {}</RefNumber>"
          "<InvoiceLineAdd><ItemRef><FullName>Drafting</FullName></ItemRef><Amount>{}</Amount></InvoiceLineAdd>",
          payment.key, payment.amount));
  house.Sql(fmt::format(
      "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ProjectID, ClientID, QBLinkID) VALUES ('{0}', "
      "'i {0}', 'YARD:', 'ACME', '{1}')",
      payment.key, invoice));
  AddRows(house, payment, "0", "YARD:");
}

// Money, a discount on an invoice whose row knows when it was last changed, and what a retainer has brought.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddPayment(house, {.key = "CHECK", .amount = "100.00"});
  AddPayment(house, {.key = "DISCOUNT", .method = "4", .amount = "20.50", .lastUpdated = "'2008-03-04 22:00:00'"});
  AddPayment(house, {.key = "APPLIED", .method = "A", .amount = "300.00"});
}

// QuickBooks has the methods, the items and a payment that was changed here; one is new, and one knows a record that is
// gone.
void PrepareSecondSend(TestHouse& house, const Scenario& scenario) {
  PrepareFirstSend(house, scenario);
  TransferNow(house, scenario);
  house.Sql("UPDATE Payment SET PayAmt = 90, LastUpdated = '2008-03-05 15:30:00' WHERE PayID = 'CHECK'");
  AddPayment(house, {.key = "NEW", .amount = "55.50"});
  AddPayment(house, {.key = "STALE", .amount = "60.00", .link = "'FFF-1'"});
}

// One of a project and one of the client as a whole.
void PrepareFirstRetainers(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  AddRows(house, {.key = "R-YARD", .amount = "500.00"}, "-1", "YARD:");
  AddRows(house, {.key = "R-ACME", .amount = "200.00"}, "-1", "{CLIENT RETAINER}");
}

void PrepareSecondRetainers(TestHouse& house, const Scenario& scenario) {
  PrepareFirstRetainers(house, scenario);
  TransferNow(house, scenario);
  AddRows(house, {.key = "R-NEW", .amount = "70.00"}, "-1", "YARD:");
}

constexpr Transfer kSendPayments = {.direction = Direction::Send, .table = enPayments};

}  // namespace

std::vector<Scenario> PaymentScenarios() {
  return {
      {.name = "first_send",
       .tables = kPayments,
       .nameInUse = NameInUse::PassesOver,
       .display = RowDisplay::Ignored,
       .prepare = PrepareFirstSend,
       .transfers = {kSendPayments}},
      {.name = "second_send",
       .tables = kPayments,
       .nameInUse = NameInUse::PassesOver,
       .display = RowDisplay::Ignored,
       .prepare = PrepareSecondSend,
       .transfers = {kSendPayments}},
      {.name = "first_retainers",
       .tables = kPayments,
       .display = RowDisplay::Ignored,
       .prepare = PrepareFirstRetainers,
       .transfers = {kSendPayments}},
      {.name = "second_retainers",
       .tables = kPayments,
       .display = RowDisplay::Ignored,
       .prepare = PrepareSecondRetainers,
       .transfers = {kSendPayments}},
  };
}

}  // namespace twqb::sweep
