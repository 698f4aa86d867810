// Firms of chance whose invoices, payments and retainers go to QuickBooks, where some money is received as well, and
// come back into a BillingDb that knows nothing of them: by invoice, by client and by method both sides agree to the
// cent, but for what a rule says.
//
// What is expected is worked out here in whole cents, payment by payment, without the library.

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <pugixml.hpp>

#include "tests/support/Chance.h"
#include "tests/transactions/PaymentsHouse.h"
#include "transactions/InvoicesOut.h"

namespace twqb {
namespace {

using Cents = std::int64_t;
using Sums = std::map<std::string, Cents>;

struct Job {
  std::string key;
  std::string client;
  std::string listId;
};

struct BilledInvoice {
  std::string key;
  std::string number;
  const Job* job;
  Cents total;
  bool isDraft;
  Cents open = 0;  // in QuickBooks
  std::string txnId = {};
};

struct Part {
  BilledInvoice* invoice;
  Cents cents;
};

struct PaymentHere {
  std::string key;
  std::string method;
  std::vector<Part> parts;
  bool wasSent = false;
};

// What QuickBooks calls a method, and as what it comes back: what is given and not paid has become a credit, and a code
// that is none a check.
struct Route {
  std::string name;
  std::string back;
  bool isDiscount = false;
};
const std::map<std::string, Route> kRoutes = {
    {"1", {.name = "Check", .back = "1"}}, {"2", {.name = "Cash", .back = "2"}},
    {"3", {"Credit", "3", true}},          {"4", {"WriteOff", "3", true}},
    {"5", {.name = "Other", .back = "5"}}, {"7", {.name = "Credit Card", .back = "7"}},
    {"8", {.name = "EFT", .back = "8"}},   {"9", {.name = "Money Order", .back = "9"}},
    {"A", {"Credit", "3", true}},          {"a", {.name = "Credit", .back = "3"}},
    {"x", {.name = "Check", .back = "1"}},
};
const std::string kDebit = "6";

class RandomFirm : public TransactionsHouse, public testing::TestWithParam<unsigned> {
 protected:
  RandomFirm() : TransactionsHouse(kTestedPayments, {}, {}, "US"), chance_(GetParam()) {
    Add("Account", "<Name>Other Income</Name><AccountType>Income</AccountType>");
    Add("PaymentMethod", "<Name>Barter</Name>");
    Vars().g_NoProgressBar = true;
    for (int i = 0; i < 3; ++i) AddClient(fmt::format("C{}", i));
  }

  // --- The firm ---

  void AddClient(const std::string& key) {
    const auto client = AddCustomer("<Name>" + key + "</Name>");
    clients_[key] = client;
    Insert("Client", {{"ClientID", Quoted(key)}, {"QBLinkID", Quoted(client)}});
    for (int i = 0; i < 2; ++i) {
      jobs_.push_back(std::make_unique<Job>(
          Job{.key = fmt::format("{}J{}:", key, i), .client = key, .listId = AddJob(fmt::format("J{}", i), client)}));
      Insert("Project", {{"ProjectID", Quoted(jobs_.back()->key)},
                         {"ClientID", Quoted(key)},
                         {"QBLinkID", Quoted(jobs_.back()->listId)}});
    }
  }
  // Of services, something besides, a tax, less a discount. Two projects may have invoices of one number.
  void BillInvoice() {
    const auto services = chance_.Of(1'00, 9'000'00);
    const auto besides = chance_.OnceIn(3) ? chance_.Of(1, 99'99) : 0;
    const auto tax = chance_.OnceIn(3) ? chance_.Of(1, 500'00) : 0;
    const auto discount = chance_.OnceIn(4) ? chance_.Of(1, services - 1) : 0;
    const auto total = services + besides + tax - discount;
    const auto n = invoices_.size();
    invoices_.push_back(std::make_unique<BilledInvoice>(
        BilledInvoice{.key = fmt::format("{{I{:02}}}", n),
                      .number = fmt::format("{}", 1000 + n - (chance_.OnceIn(4) && n % jobs_.size() != 0 ? 1 : 0)),
                      .job = jobs_[n % jobs_.size()].get(),
                      .total = total,
                      .isDraft = chance_.OnceIn(8)}));
    const auto& invoice = *invoices_.back();
    Insert("TransactionTable", {{"TransactionID", Quoted(invoice.key)},
                                {"TransactionInvNum", Quoted(invoice.number)},
                                {"ClientID", Quoted(invoice.job->client)},
                                {"ProjectID", Quoted(invoice.job->key)},
                                {"InvoiceDate", "'2008-02-29'"},
                                {"IsDraft", invoice.isDraft ? "-1" : "0"},
                                {"TransactionManInv", "-1"},
                                {"ServiceAmt", Amount(services)},
                                {"TransactionManInvMiscAmt", Amount(besides)},
                                {"MainServiceTaxAmt", Amount(tax)},
                                {"TransactionInvDiscount", Amount(discount)},
                                {"TransactionInvBillAmt", Amount(total)}});
  }
  void AddPayment(const std::string& key, const std::string& method, Cents cents, const std::string& client,
                  const Columns& more) {
    Columns columns = {{"PayID", Quoted(key)},
                       {"ClientID", Quoted(client)},
                       {"PayMethod", Quoted(method)},
                       {"PayAmt", Amount(cents)},
                       {"PayRef", chance_.OnceIn(3) ? "NULL" : Quoted("Ref " + key)}};
    for (const auto& [name, value] : more) columns[name] = value;
    Insert("Payment", columns);
  }
  void AddPart(const std::string& payment, std::size_t n, const std::string& number, const std::string& client,
               const std::string& project, Cents cents) {
    Insert("TransactionTable", {{"TransactionID", Quoted(fmt::format("{}/{}", payment, n))},
                                {"PayID", Quoted(payment)},
                                {"TransactionInvNum", Quoted(number)},
                                {"ClientID", Quoted(client)},
                                {"ProjectID", Quoted(project)},
                                {"TransactionPayAmtApplied", Amount(cents)}});
  }
  // Of one client's invoices: all that a bill comes to, less, or now and then a cent too much.
  void Pay() {
    auto method = std::next(kRoutes.begin(), static_cast<std::ptrdiff_t>(chance_.Place(kRoutes.size())))->first;
    if (chance_.OnceIn(12)) method = kDebit;
    PaymentHere payment = {.key = fmt::format("P{:02}", payments_.size()), .method = method};
    const auto client = fmt::format("C{}", chance_.Of(0, 2));
    Cents sum = 0;
    for (auto left = chance_.Of(1, 3); left > 0; --left) {
      auto& invoice = *invoices_[chance_.Place(invoices_.size())];
      if (invoice.job->client != client) continue;
      auto cents = invoice.total;
      if (!chance_.OnceIn(3)) cents = chance_.Of(1, invoice.total);
      if (chance_.OnceIn(10)) cents = invoice.total + 1;
      AddPart(payment.key, payment.parts.size(), invoice.number, client, invoice.job->key, cents);
      payment.parts.push_back({.invoice = &invoice, .cents = cents});
      sum += cents;
    }
    AddPayment(payment.key, method, sum, client, {{"PayDate", chance_.OnceIn(4) ? "NULL" : "'2008-03-03'"}});
    payments_.push_back(std::move(payment));
  }
  // Of a project, or of a client as a whole.
  void Retain() {
    const auto key = fmt::format("R{:02}", retainers_++);
    const auto& job = *jobs_[chance_.Place(jobs_.size())];
    const auto cents = chance_.Of(0, 5'000'00);
    const bool hasNumber = chance_.OnceIn(2);
    if (hasNumber) ++numberedRetainers_;
    AddPayment(key, "1", cents, job.client, {{"PayRetainer", "-1"}, {"PayRef", hasNumber ? Quoted(key) : "NULL"}});
    AddPart(key, 0, "0", job.client, chance_.OnceIn(3) ? "{CLIENT RETAINER}" : job.key, cents);
  }

  // --- What goes ---

  void SendTable(enTables table, void (*send)(const SendCall&)) {
    Vars().g_TableOk = TableOk::False;
    send({.sql = twqb::Sql::Own(BuildSelectSQL(table, {.IgnoreLastSync = true})),
          .rule = {},
          .session = Session(),
          .run = Vars()});
  }
  // As the books should take it: a draft is not there, what is settled takes nothing more, and no invoice takes more
  // than is open. The first part that stays keeps back all behind it, and what went in part never goes again.
  void ExpectToSend() {
    int settled = 0;
    int exceeding = 0;
    int missing = 0;
    for (auto& payment : payments_) {
      if (payment.method == kDebit || payment.wasSent) continue;
      for (const auto& part : payment.parts) {
        auto& invoice = *part.invoice;
        const bool isHeld = invoice.isDraft || part.cents > invoice.open;
        if (isHeld) {
          ++(invoice.isDraft ? missing : invoice.open == 0 ? settled : exceeding);
          break;
        }
        Take(invoice, part.cents);
        payment.wasSent = true;
        const auto& route = kRoutes.at(payment.method);
        (route.isDiscount ? discountsThere_ : moneyThere_)[route.name] += part.cents;
        backByMethod_[route.back] += part.cents;
        backByClient_[invoice.job->client] += part.cents;
      }
    }
    boxes_.clear();
    if (settled != 0) boxes_.push_back(ManualBox(settled));
    if (exceeding != 0) boxes_.push_back(ExceedingBox(exceeding));
    if (missing != 0) boxes_.push_back(MissingBox(missing));
  }
  void SendPaymentsAsExpected() {
    const auto before = BoxTexts().size();
    ExpectToSend();
    SendTable(enPayments, MovePaymentsToQB);
    const auto shown = BoxTexts();
    EXPECT_EQ(Texts(shown.begin() + static_cast<std::ptrdiff_t>(before), shown.end()), boxes_);
  }
  void Take(BilledInvoice& invoice, Cents cents) {
    invoice.open -= cents;
    backByInvoice_[invoice.key] += cents;
  }

  // --- What QuickBooks receives itself ---

  // By a method that has no code here, in part, with a discount, with money left over, or for nothing yet.
  void ReceiveThere() {
    const auto& job = *jobs_[chance_.Place(jobs_.size())];
    const auto spare = chance_.OnceIn(3) ? chance_.Of(1, 400'00) : 0;
    std::string method;
    if (chance_.OnceIn(2)) method = "<PaymentMethodRef><FullName>Barter</FullName></PaymentMethodRef>";
    const auto add = [&](Cents total, std::string_view applied) {
      Add("ReceivePayment",
          fmt::format("<CustomerRef><ListID>{}</ListID></CustomerRef><TotalAmount>{}</TotalAmount>{}{}", job.listId,
                      Amount(total), method, applied));
      moneyThere_[method.empty() ? "" : "Barter"] += total;
      backByMethod_["1"] += total;
      backByClient_[job.client] += total;
    };
    for (auto& invoice : invoices_) {
      if (invoice->job != &job || invoice->isDraft || invoice->open < 2 || chance_.OnceIn(2)) continue;
      const auto money = chance_.OnceIn(3) ? invoice->open : chance_.Of(1, invoice->open - 1);
      const auto discount = chance_.OnceIn(2) ? chance_.Of(0, invoice->open - money) : 0;
      std::string applied =
          fmt::format("<TxnID>{}</TxnID><PaymentAmount>{}</PaymentAmount>", invoice->txnId, Amount(money));
      if (discount != 0) {
        applied += fmt::format(
            "<DiscountAmount>{}</DiscountAmount><DiscountAccountRef><FullName>Other Income</FullName>"
            "</DiscountAccountRef>",
            Amount(discount));
        discountsThere_[method.empty() ? "" : "Barter"] += discount;
        backByMethod_["3"] += discount;
        backByClient_[job.client] += discount;
      }
      add(money + spare, "<AppliedToTxnAdd>" + applied + "</AppliedToTxnAdd>");
      Take(*invoice, money + discount);
      return;
    }
    if (spare != 0) add(spare, "<IsAutoApply>false</IsAutoApply>");
  }

  // --- What both sides have in the end ---

  template <typename Look>
  void ForEachThere(const std::string& kind, Look look) {
    pugi::xml_document document;
    const auto answer = Company("<" + kind + "QueryRq><IncludeLineItems>true</IncludeLineItems></" + kind + "QueryRq>");
    ASSERT_TRUE(document.load_string(answer.c_str()));
    for (const auto& record : document.child("QBXML").child("QBXMLMsgsRs").first_child().children()) look(record);
  }
  void ExpectTheBooks() {
    Sums open;
    ForEachThere("Invoice", [&](const pugi::xml_node& record) {
      open[record.child_value("TxnID")] = InCents(record.child_value("BalanceRemaining"));
    });
    for (const auto& invoice : invoices_) {
      if (invoice->isDraft) continue;
      EXPECT_EQ(open.at(invoice->txnId), invoice->open) << invoice->key;
    }
    Sums money;
    Sums discounts;
    ForEachThere("ReceivePayment", [&](const pugi::xml_node& record) {
      const std::string method = record.child("PaymentMethodRef").child_value("FullName");
      if (const auto total = InCents(record.child_value("TotalAmount")); total != 0) money[method] += total;
      for (const auto& applied : record.children("AppliedToTxnRet")) {
        if (const auto discount = InCents(applied.child_value("DiscountAmount")); discount != 0) {
          discounts[method] += discount;
        }
      }
    });
    EXPECT_EQ(money, moneyThere_);
    EXPECT_EQ(discounts, discountsThere_);
  }
  // Names and sums in cents; what comes to nothing is left out.
  [[nodiscard]] Sums SumsOf(const std::string& name, const std::string& amount, const std::string& rows) {
    Sums sums;
    const auto list =
        Scalar(fmt::format("SELECT group_concat(n || '|' || a, ' ') FROM (SELECT {0} AS n, SUM({1}) AS a FROM {2} "
                           "GROUP BY {0}) WHERE a <> 0",
                           name, amount, rows));
    if (list == "NULL") return sums;
    for (const auto& entry : Split(list, ' ')) {
      const auto bar = entry.find('|');
      sums[entry.substr(0, bar)] = InCents(entry.substr(bar + 1));
    }
    return sums;
  }
  void ExpectBilling() {
    Sums totals;
    for (const auto& invoice : invoices_) {
      if (!invoice->isDraft) totals[invoice->txnId] = invoice->total;
    }
    EXPECT_EQ(SumsOf("QBLinkID", "TransactionInvBillAmt", "TransactionTable WHERE PayID IS NULL"), totals);
    EXPECT_EQ(SumsOf("PayMethod", "PayAmt", "Payment"), backByMethod_);
    Sums byClient;
    for (const auto& [client, cents] : backByClient_) byClient[clients_.at(client)] = cents;
    EXPECT_EQ(SumsOf("Client.QBLinkID", "PayAmt", "Payment JOIN Client ON Client.ClientID = Payment.ClientID"),
              byClient);
    // What goes to an invoice has its number and project.
    Sums paid;
    for (const auto& invoice : invoices_) {
      const auto found = backByInvoice_.find(invoice->key);
      if (found != backByInvoice_.end() && found->second != 0) paid[invoice->txnId] = found->second;
    }
    EXPECT_EQ(SumsOf("i.QBLinkID", "a.TransactionPayAmtApplied",
                     "TransactionTable i JOIN TransactionTable a ON a.TransactionInvNum = i.TransactionInvNum AND "
                     "a.ProjectID = i.ProjectID AND a.PayID IS NOT NULL WHERE i.PayID IS NULL"),
              paid);
  }
  [[nodiscard]] std::string Counts() {
    return Scalar(
        "SELECT (SELECT COUNT(*) FROM Payment) || ' ' || (SELECT COUNT(*) FROM TransactionTable) || ' ' || "
        "(SELECT COUNT(*) FROM ManInvDetail)");
  }
  void GetIntoAnEmptyDatabase() {
    for (const std::string table : {"Client", "Project", "TransactionTable", "ManInvDetail", "Payment"}) {
      Sql("DELETE FROM " + table);
    }
    const auto before = BoxTexts().size();
    const auto get = [](enTables table) { return GetTableFromQB(table, {}, ActiveOnly::False, false, nullptr); };
    for (const auto table : {enClients, enProjects, enInvoices, enPayments}) EXPECT_TRUE(get(table)) << table;
    const auto rows = Counts();
    for (const auto table : {enInvoices, enPayments}) EXPECT_TRUE(get(table)) << table;
    EXPECT_EQ(Counts(), rows) << "a second get adds nothing";
    EXPECT_EQ(BoxTexts().size(), before);
  }

  static std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

  Chance chance_;
  std::map<std::string, std::string> clients_;  // keys and ListIDs
  std::vector<std::unique_ptr<Job>> jobs_;
  std::vector<std::unique_ptr<BilledInvoice>> invoices_;
  std::vector<PaymentHere> payments_;
  int retainers_ = 0;
  int numberedRetainers_ = 0;
  Texts boxes_;  // behind the next send
  Sums moneyThere_;
  Sums discountsThere_;
  Sums backByMethod_;
  Sums backByClient_;
  Sums backByInvoice_;
};

TEST_P(RandomFirm, Has_the_same_sums_on_both_sides_and_again_in_an_empty_database) {
  for (auto left = chance_.Of(6, 14); left > 0; --left) BillInvoice();
  for (auto left = chance_.Of(8, 20); left > 0; --left) Pay();
  for (auto left = chance_.Of(0, 4); left > 0; --left) Retain();
  SendTable(enInvoices, MoveInvoicesToQB);
  ASSERT_TRUE(BoxTexts().empty()) << BoxTexts()[0];
  for (auto& invoice : invoices_) {
    if (invoice->isDraft) continue;
    invoice->open = invoice->total;
    invoice->txnId = Scalar("SELECT QBLinkID FROM TransactionTable WHERE TransactionID = " + Quoted(invoice->key));
  }
  for (auto left = chance_.Of(0, 4); left > 0; --left) ReceiveThere();
  SendPaymentsAsExpected();
  ExpectTheBooks();
  SendPaymentsAsExpected();  // nothing that was held back finds room, and nothing goes twice
  ExpectTheBooks();
  GetIntoAnEmptyDatabase();
  ExpectBilling();
  ExpectTheBooks();
  // A retainer is no payment there: it is an invoice of nothing. Under a number it comes back as that; a document
  // without one is not taken.
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM TransactionTable WHERE PayID IS NULL AND TransactionInvBillAmt = 0"),
            std::to_string(numberedRetainers_));
}

INSTANTIATE_TEST_SUITE_P(Money, RandomFirm, testing::Range(1U, 41U));

}  // namespace
}  // namespace twqb
