// Invoices, credit memos and payments that come in. Each record becomes several rows, which are written one by one.

#include <fmt/core.h>

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

// Documents and their details, told apart by the document's number.
const std::vector<LinkedTable> kDocuments = {
    {.name = "TransactionTable",
     .keyColumn = "TransactionInvNum",
     .stampColumn = "LastUpdated",
     .madeKeyColumn = "TransactionID"},
    {.name = "ManInvDetail",
     .keyColumn = "Name",
     .stampColumn = "LastUpdated",
     .madeKeyColumn = "ManInvDetailID",
     .select = "SELECT t.TransactionInvNum || '/' || d.ManInvDetailDesc AS Name, d.ManInvDetailID, d.ManInvDetailAmt, "
               "d.ManInvDetailTot, t.QBLinkID, t.LastUpdated FROM ManInvDetail d LEFT JOIN TransactionTable t ON "
               "t.TransactionID = d.TransactionID ORDER BY d.rowid",
     .perRecord = RowsOfARecord::Several}};

// Payments, the marks of those that are retainers, and where they go, told apart by number and method. The invoices
// that are paid are among the last.
const std::vector<LinkedTable> kPayments = {
    {.name = "Payment",
     .keyColumn = "Name",
     .stampColumn = "LastUpdated",
     .madeKeyColumn = "PayID",
     .select = "SELECT PayRef || '/' || PayMethod AS Name, PayID, ClientID, PayDate, PayAmt, PayMemo, PayEnteredBy, "
               "PayLastModifiedOn, QBLinkID, LastUpdated FROM Payment ORDER BY rowid",
     .perRecord = RowsOfARecord::Several},
    {.name = "Retainer",
     .keyColumn = "PayRef",
     .stampColumn = "LastUpdated",
     .select = "SELECT PayRef, QBLinkID, LastUpdated FROM Payment WHERE PayRetainer <> 0 ORDER BY rowid",
     .perRecord = RowsOfARecord::Several},
    {.name = "TransactionTable",
     .keyColumn = "Name",
     .stampColumn = "LastUpdated",
     .madeKeyColumn = "TransactionID",
     .select =
         "SELECT coalesce(p.PayRef || '/' || p.PayMethod || '/', '') || t.TransactionInvNum AS Name, "
         "t.TransactionID, t.ClientID, t.ProjectID, t.TransactionDate, t.InvoiceDate, t.TransactionPayAmtApplied, "
         "t.QBLinkID, t.LastUpdated FROM TransactionTable t LEFT JOIN Payment p ON p.PayID = t.PayID ORDER BY "
         "t.rowid",
     .perRecord = RowsOfARecord::Several}};

void PrepareBooks(TestHouse& house) {
  AddRecord(house, "Account", "<Name>Consulting</Name><AccountType>Income</AccountType>");
  AddRecord(house, "Account", "<Name>Allowances</Name><AccountType>Expense</AccountType>");
  AddRecord(house, "Vendor", "<Name>Revenue</Name>");
  AddRecord(house, "Customer", "<Name>Acme</Name>");
  AddRecord(house, "Customer", "<Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddItem(house, "ItemService", "Drafting", "Consulting");
  AddRecord(house, "ItemGroup",
            "<Name>Kit</Name><ItemDesc>Plans</ItemDesc><ItemGroupLine><ItemRef><FullName>Drafting"
            "</FullName></ItemRef></ItemGroupLine>");
  AddRecord(house, "ItemSalesTax",
            "<Name>County</Name><TaxRate>5</TaxRate><TaxVendorRef><FullName>Revenue</FullName></TaxVendorRef>");
  house.Sql(fmt::format("INSERT INTO Project (ProjectID, ClientID, QBLinkID) VALUES ('YARD:', 'ACME', '{}')",
                        IdOf(house, "Customer", "Acme:Yard")));
}

std::string LineOf(std::string_view kind, std::string_view text, std::string_view amount, std::string_view taxCode) {
  return fmt::format(
      "<{0}LineAdd><ItemRef><FullName>Drafting</FullName></ItemRef><Desc>{1}</Desc><Amount>{2}</Amount>"
      "<SalesTaxCodeRef><FullName>{3}</FullName></SalesTaxCodeRef></{0}LineAdd>",
      kind, text, amount, taxCode);
}

// Its TxnID.
std::string AddDocument(TestHouse& house, std::string_view kind, std::string_view customer, std::string_view number,
                        std::string_view lines) {
  return AddTransaction(
      house, kind,
      fmt::format("<CustomerRef><FullName>{}</FullName></CustomerRef><TxnDate>2008-03-04</TxnDate><RefNumber>{}"
                  "</RefNumber><ItemSalesTaxRef><FullName>County</FullName></ItemSalesTaxRef>{}",
                  customer, number, lines));
}

// An invoice of a line, a group and tax, and a credit memo of a line.
void PrepareFirstGetOfDocuments(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareBooks(house);
  AddDocument(house, "Invoice", "Acme:Yard", "1044",
              LineOf("Invoice", "Sections", "40.00", "Tax") +
                  "<InvoiceLineGroupAdd><ItemGroupRef><FullName>Kit</FullName></ItemGroupRef></InvoiceLineGroupAdd>");
  AddDocument(house, "CreditMemo", "Acme:Yard", "7", LineOf("CreditMemo", "Spoilt", "10.00", "Non"));
}

// Not the keys that the sweep's own house makes.
void TransferBeforehand(TestHouse& house, const Scenario& scenario) {
  constexpr int kKeysOfTheSweep = 20;
  for (int i = 0; i < kKeysOfTheSweep; ++i) (void)house.machine.CreateGuid();
  TransferNow(house, scenario);
}

// A new invoice beside one that is here and was changed here.
void PrepareSecondGetOfDocuments(TestHouse& house, const Scenario& scenario) {
  PrepareBooks(house);
  AddDocument(house, "Invoice", "Acme:Yard", "1044", LineOf("Invoice", "Sections", "40.00", "Non"));
  TransferBeforehand(house, scenario);
  AddDocument(house, "Invoice", "Acme:Yard", "1045", LineOf("Invoice", "Details", "60.00", "Tax"));
  house.Sql("UPDATE TransactionTable SET ServiceAmt = 45, LastUpdated = '2008-03-05 15:40:00'");
}

// An invoice of a customer, who is here as a client and comes in as a project first. (One who is not here at all stays
// a project without a client when the client can't be pulled, which is told.)
void PrepareDocumentOfCustomer(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareBooks(house);
  house.Sql(fmt::format("INSERT INTO Client (ClientID, ClientCompany, QBLinkID) VALUES ('ACME', 'Acme', '{}')",
                        IdOf(house, "Customer", "Acme")));
  AddDocument(house, "Invoice", "Acme", "1044", LineOf("Invoice", "Sections", "40.00", "Non"));
}

// An invoice that both sides have; its TxnID.
std::string ShareInvoice(TestHouse& house, std::string_view number = "1044") {
  auto txnId = AddDocument(house, "Invoice", "Acme:Yard", number, LineOf("Invoice", "Sections", "100.00", "Non"));
  house.Sql(
      fmt::format("INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, QBLinkID) "
                  "VALUES ('{{I {0}}}', '{0}', 'ACME', 'YARD:', '{1}')",
                  number, txnId));
  return txnId;
}

void AddPayment(TestHouse& house, std::string_view customer, std::string_view number, std::string_view total,
                std::string_view applied) {
  AddRecord(house, "ReceivePayment",
            fmt::format("<CustomerRef><FullName>{}</FullName></CustomerRef><TxnDate>2008-03-04</TxnDate><RefNumber>{}"
                        "</RefNumber><TotalAmount>{}</TotalAmount>{}",
                        customer, number, total, applied));
}

std::string AppliedTo(std::string_view txnId, std::string_view amount, std::string_view discount) {
  return fmt::format("<AppliedToTxnAdd><TxnID>{}</TxnID><PaymentAmount>{}</PaymentAmount>{}</AppliedToTxnAdd>", txnId,
                     amount, discount);
}

constexpr std::string_view kDiscount =
    "<DiscountAmount>5.00</DiscountAmount><DiscountAccountRef><FullName>Allowances</FullName></DiscountAccountRef>";
constexpr std::string_view kToNothing = "<IsAutoApply>false</IsAutoApply>";

// One with a discount, and a retainer.
void PrepareFirstGetOfPayments(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareBooks(house);
  const auto invoice = ShareInvoice(house);
  AddPayment(house, "Acme:Yard", "20771", "55.00", AppliedTo(invoice, "55.00", kDiscount));
  AddPayment(house, "Acme:Yard", "R-1", "300.00", kToNothing);
}

// A new one beside one that is here and was changed here.
void PrepareSecondGetOfPayments(TestHouse& house, const Scenario& scenario) {
  PrepareBooks(house);
  const auto invoice = ShareInvoice(house);
  AddPayment(house, "Acme:Yard", "20771", "55.00", AppliedTo(invoice, "55.00", ""));
  TransferBeforehand(house, scenario);
  AddPayment(house, "Acme:Yard", "20772", "20.00", AppliedTo(invoice, "20.00", ""));
  house.Sql("UPDATE Payment SET PayAmt = 50, LastUpdated = '2008-03-05 15:40:00'");
}

// One of two invoices, settling the first with a discount and the second in part, with money left over; and the next
// part of the second.
void PreparePaymentsInParts(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareBooks(house);
  const auto settled = ShareInvoice(house);
  const auto open = ShareInvoice(house, "1045");
  AddPayment(house, "Acme:Yard", "20771", "130.00",
             AppliedTo(settled, "95.00", kDiscount) + AppliedTo(open, "25.00", ""));
  AddPayment(house, "Acme:Yard", "20772", "30.00", AppliedTo(open, "30.00", ""));
}

// A payment of a customer, who comes in as a client first, on the invoice of its job.
void PreparePaymentOfCustomer(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareBooks(house);
  const auto invoice = ShareInvoice(house);
  AddPayment(house, "Acme", "20771", "55.00", AppliedTo(invoice, "55.00", ""));
}

constexpr Transfer kGetDocuments = {.direction = Direction::Get, .table = enInvoices};
constexpr Transfer kGetPayments = {.direction = Direction::Get, .table = enPayments};

}  // namespace

std::vector<Scenario> MoneyScenarios() {
  return {
      {.name = "first_get_of_documents",
       .tables = kDocuments,
       .prepare = PrepareFirstGetOfDocuments,
       .transfers = {kGetDocuments}},
      {.name = "second_get_of_documents",
       .tables = kDocuments,
       .prepare = PrepareSecondGetOfDocuments,
       .transfers = {kGetDocuments}},
      {.name = "document_of_a_customer",
       .tables = kDocuments,
       .prepare = PrepareDocumentOfCustomer,
       .transfers = {kGetDocuments}},
      {.name = "first_get_of_payments",
       .tables = kPayments,
       .prepare = PrepareFirstGetOfPayments,
       .transfers = {kGetPayments}},
      {.name = "second_get_of_payments",
       .tables = kPayments,
       .prepare = PrepareSecondGetOfPayments,
       .transfers = {kGetPayments}},
      {.name = "payments_in_parts",
       .tables = kPayments,
       .prepare = PreparePaymentsInParts,
       .transfers = {kGetPayments}},
      {.name = "payment_of_a_customer",
       .tables = kPayments,
       .prepare = PreparePaymentOfCustomer,
       .transfers = {kGetPayments}},
  };
}

}  // namespace twqb::sweep
