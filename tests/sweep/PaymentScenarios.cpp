// Payments to QuickBooks: those that settle their invoice, those that pay a part of it, of one invoice and of several,
// and retainers.
//
// Of several invoices one may stay for good, once the payment is linked for the other's sake.

#include <fmt/core.h>

#include <algorithm>
#include <map>
#include <utility>

#include "Books.h"
#include "Scenarios.h"
#include "platform/Text.h"

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

// An invoice that both sides have.
void AddInvoice(TestHouse& house, std::string_view number, std::string_view amount) {
  const auto invoice = AddTransaction(
      house, "Invoice",
      fmt::format(
          "<CustomerRef><FullName>Acme:Yard</FullName></CustomerRef><RefNumber>{}</RefNumber>"
          "<InvoiceLineAdd><ItemRef><FullName>Drafting</FullName></ItemRef><Amount>{}</Amount></InvoiceLineAdd>",
          number, amount));
  house.Sql(fmt::format(
      "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ProjectID, ClientID, QBLinkID) VALUES ('{0}', "
      "'{0}', 'YARD:', 'ACME', '{1}')",
      number, invoice));
}

void AddPaymentRow(TestHouse& house, const Payment& payment, std::string_view retainer) {
  house.Sql(fmt::format(
      "INSERT INTO Payment (PayID, PayRetainer, PayDate, PayAmt, PayMethod, PayRef, ClientID, QBLinkID) VALUES ('{0}', "
      "{1}, '2008-03-04', {2}, '{3}', '{0}', 'ACME', {4})",
      payment.key, retainer, payment.amount, payment.method, payment.link));
}

// What of it goes to an invoice.
void AddPart(TestHouse& house, const Payment& payment, std::string_view project, std::string_view invoice,
             std::string_view amount) {
  house.Sql(fmt::format(
      "INSERT INTO TransactionTable (TransactionID, PayID, TransactionInvNum, ProjectID, ClientID, "
      "TransactionPayAmtApplied, QBLinkID, LastUpdated) VALUES ('{0} to {1}', '{0}', '{1}', '{2}', 'ACME', {3}, {4}, "
      "{5})",
      payment.key, invoice, project, amount, payment.link, payment.lastUpdated));
}

void AddRetainer(TestHouse& house, const Payment& payment, std::string_view project) {
  AddPaymentRow(house, payment, "-1");
  AddPart(house, payment, project, "0", payment.amount);
}

// It goes to an invoice of its own, on both sides, that is settled by it.
void AddPayment(TestHouse& house, const Payment& payment) {
  const auto invoice = fmt::format("i {}", payment.key);
  AddInvoice(house, invoice, payment.amount);
  AddPaymentRow(house, payment, "0");
  AddPart(house, payment, "YARD:", invoice, payment.amount);
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
  AddRetainer(house, {.key = "R-YARD", .amount = "500.00"}, "YARD:");
  AddRetainer(house, {.key = "R-ACME", .amount = "200.00"}, "{CLIENT RETAINER}");
}

void PrepareSecondRetainers(TestHouse& house, const Scenario& scenario) {
  PrepareFirstRetainers(house, scenario);
  TransferNow(house, scenario);
  AddRetainer(house, {.key = "R-NEW", .amount = "70.00"}, "YARD:");
}

// --- Of several invoices, and in part --------------------------------------------------------------------------------

// One settles its first invoice and pays a part of the second; the next one, and what comes out of a retainer beside
// it, are parts; and the retainer.
void PrepareParts(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareFirm(house);
  const Payment split = {.key = "SPLIT", .amount = "120.00"};
  AddInvoice(house, "i A", "70.00");
  AddInvoice(house, "i B", "80.00");
  AddPaymentRow(house, split, "0");
  AddPart(house, split, "YARD:", "i A", "70.00");
  AddPart(house, split, "YARD:", "i B", "50.00");
  AddRetainer(house, {.key = "RETAINER", .amount = "200.00"}, "YARD:");
  for (const Payment& part :
       {Payment{.key = "PART", .amount = "40.00"}, Payment{.key = "APPLIED", .method = "A", .amount = "60.00"}}) {
    const auto invoice = fmt::format("i {}", part.key);
    AddInvoice(house, invoice, "300.00");
    AddPaymentRow(house, part, "0");
    AddPart(house, part, "YARD:", invoice, part.amount);
  }
}

// The rows of one payment, of which one may stay: the other one's link is the payment's, which then never goes again.
constexpr std::string_view kOneOfSeveral = "TransactionTable/SPLIT ";

// What a clean run makes of a row: a payment of QuickBooks, or an invoice for the retainer, and what is paid by it.
struct Booked {
  Fields record;
  std::string paid;  // the invoice; "" for the retainer
};

class PartsJudge {
 public:
  PartsJudge(const Snapshot& now, const Expectation& expected) : now_(now), expected_(expected), problems_(now.damage) {
    for (const auto& [key, row] : expected.after.rows) {
      const auto record = RecordOf(row.at(std::string(kLinkColumn)));
      if (!key.starts_with("TransactionTable/") || expected.before.records.contains(record)) continue;
      const auto& number = row.at("TransactionInvNum");
      booked_[key] = {.record = Timeless(expected.after.records.at(record)),
                      .paid = number == "0" ? std::string() : "Invoice/" + number};
    }
  }

  Problems Run(Moment moment) {
    moment_ = moment;
    CheckRecords();
    CheckRows();
    CheckBalances();
    if (moment == Moment::CleanRunBehind) CheckComplete();
    return problems_;
  }

 private:
  [[nodiscard]] Fields Timeless(const Fields& fields) const { return WithoutTimes(fields, expected_.tables); }

  // How often what the row goes as is in the books.
  [[nodiscard]] long Times(const std::string& row) const {
    return std::ranges::count_if(now_.records,
                                 [&](const auto& record) { return Timeless(record.second) == booked_.at(row).record; });
  }

  // None is lost or changed, but for what is open; all new ones are those of a clean run; one has no row at most.
  void CheckRecords() {
    for (const auto& [name, fields] : expected_.before.records) {
      if (!now_.records.contains(name)) problems_.push_back(fmt::format("The record {} is gone.", name));
    }
    std::vector<std::string> withoutRow;
    for (const auto& [name, fields] : now_.records) {
      if (expected_.before.records.contains(name)) continue;
      const auto isSame = [&](const auto& other) { return Timeless(other.second) == Timeless(fields); };
      if (std::ranges::none_of(expected_.after.records, isSame)) {
        problems_.push_back(fmt::format("The record {} is none of a clean run.", name));
      }
      const bool isBooked =
          std::ranges::any_of(booked_, [&](const auto& booked) { return booked.second.record == Timeless(fields); });
      const auto rows = RowsOf(now_, name);
      if (isBooked && std::ranges::none_of(rows, [&](const auto& row) { return booked_.contains(row); })) {
        withoutRow.push_back(name);
      }
    }
    const std::size_t most = moment_ == Moment::Broken ? 1 : 0;
    if (withoutRow.size() > most) problems_.push_back("Records without a row: " + Join(withoutRow, ", "));
  }

  // As before, but for a link to what the row went as, and the time.
  void CheckRows() {
    for (const auto& [key, before] : expected_.before.rows) {
      const auto found = now_.rows.find(key);
      if (found == now_.rows.end()) {
        problems_.push_back(fmt::format("The row {} is gone.", key));
        continue;
      }
      auto fields = Timeless(found->second);
      auto wanted = Timeless(before);
      const auto link = std::exchange(fields[std::string(kLinkColumn)], {});
      const auto linkBefore = std::exchange(wanted[std::string(kLinkColumn)], {});
      if (fields != wanted) problems_.push_back(fmt::format("The row {} was changed.", key));
      if (link == linkBefore) continue;
      const auto record = now_.records.find(RecordOf(link));
      if (record == now_.records.end()) {
        problems_.push_back(fmt::format("The row {} has the link {}.", key, link));
      } else if (booked_.contains(key) && Timeless(record->second) != booked_.at(key).record) {
        problems_.push_back(fmt::format("The row {} is linked to {}.", key, record->first));
      }
    }
  }

  // Each invoice is less open by what its payment has paid as often as that is in the books.
  void CheckBalances() {
    for (const auto& [row, booked] : booked_) {
      if (booked.paid.empty()) continue;
      const auto open = [&](const Snapshot& snapshot) {
        return std::stoll(snapshot.records.at(booked.paid).at("open"));
      };
      const auto before = open(expected_.before);
      const auto paid = Times(row) * (before - open(expected_.after));
      if (open(now_) != before - paid) problems_.push_back(fmt::format("{} is open by {}.", booked.paid, open(now_)));
    }
  }

  // All is in the books and nothing twice; nothing stays but one of several.
  void CheckComplete() {
    long twice = 0;
    int stay = 0;
    for (const auto& [row, booked] : booked_) {
      const auto times = Times(row);
      if (times > 1) twice += times - 1;
      if (times != 0) continue;
      ++stay;
      if (!row.starts_with(kOneOfSeveral)) problems_.push_back(fmt::format("{} has not gone.", row));
    }
    if (stay > 1) problems_.emplace_back("Of one payment nothing has gone.");
    if (twice > 0) problems_.push_back(fmt::format("{} things are in the books more than once.", twice));
  }

  const Snapshot& now_;
  const Expectation& expected_;
  Moment moment_ = Moment::Broken;
  Problems problems_;
  std::map<std::string, Booked> booked_;  // by row
};

Problems JudgeParts(const Snapshot& now, const Expectation& expected, Moment moment) {
  return PartsJudge(now, expected).Run(moment);
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
      {.name = "parts",
       .tables = kPayments,
       .display = RowDisplay::Ignored,
       .prepare = PrepareParts,
       .transfers = {kSendPayments},
       .judge = JudgeParts},
  };
}

}  // namespace twqb::sweep
