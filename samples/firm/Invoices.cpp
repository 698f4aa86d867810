// Invoices over the months of work: their total is what their columns add up to, to the cent. Fees that are none of the
// hours, taxes, discounts; drafts, invoices by hand, and some below nothing.
#include <fmt/format.h>

#include "samples/firm/DecimalText.h"
#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

constexpr std::uint32_t kDetailKeys = 0x9A000000;
constexpr std::uint32_t kByHandKeys = 0x1B000000;
constexpr std::int64_t kFirstNumber = 1'000;

struct Invoice {
  std::string key;
  std::string number;
  std::size_t job = 0;
  int month = 0;
  std::int64_t services = 0;
  std::int64_t expenses = 0;
  std::int64_t serviceTax = 0;
  std::int64_t expenseTax = 0;
  std::int64_t mainServiceTax = 0;
  std::int64_t mainExpenseTax = 0;
  std::int64_t miscellaneous = 0;
  std::int64_t discount = 0;
  std::int64_t retainer = 0;  // used up
  bool isDraft = false;
  bool isByHand = false;

  [[nodiscard]] std::int64_t Total() const {
    return services + expenses + serviceTax + expenseTax + mainServiceTax + mainExpenseTax + miscellaneous - discount -
           retainer;
  }
};

class InvoicesOfAFirm {
 public:
  InvoicesOfAFirm(const Model& model, Rows& rows)
      : model_(model), rows_(rows), dice_(DiceFor(model.plan, Purpose::Invoices)) {}

  std::vector<Open> Add(const std::vector<Billed>& months) {
    for (const auto& month : months) {
      AddOver(month);
      if (dice_.OnceIn(12)) AddByHand(month);
    }
    return std::move(open_);
  }

 private:
  void AddOver(const Billed& month) {
    const auto& contract = model_.jobs[month.job].contract;
    Invoice invoice = {.key = month.key,
                       .job = month.job,
                       .month = month.month,
                       .services = month.services,
                       .expenses = month.expenses};
    // What was agreed on, whatever was worked for it.
    if (!contract.starts_with("Hourly")) invoice.services = dice_.Of(5, 200) * 5'000;
    // One without any amount would be told by the send.
    if (invoice.services == 0 && invoice.expenses == 0) invoice.services = 15'000;
    if (dice_.OnceIn(4)) invoice.serviceTax = Divided(invoice.services, 20);
    if (dice_.OnceIn(6)) invoice.expenseTax = Divided(invoice.expenses, 20);
    if (dice_.OnceIn(9)) invoice.mainServiceTax = Divided(invoice.services, 100);
    if (dice_.OnceIn(9)) invoice.mainExpenseTax = Divided(invoice.expenses, 100);
    if (dice_.OnceIn(9)) invoice.miscellaneous = dice_.Of(1, 5'000);
    if (dice_.OnceIn(9)) invoice.discount = Divided(invoice.services, 10);
    if (dice_.OnceIn(9)) invoice.retainer = Divided(invoice.Total(), 4);
    if (dice_.OnceIn(60)) invoice.discount = invoice.Total();
    invoice.isDraft = dice_.OnceIn(30) && numbers_ > 0;
    Write(std::move(invoice));
  }

  // With details of its own.
  void AddByHand(const Billed& month) {
    Invoice invoice = {.key = RowKey(kByHandKeys, ++byHand_), .job = month.job, .month = month.month, .isByHand = true};
    // One that takes back what was too much never goes.
    const auto sign = dice_.OnceIn(5) ? -1 : 1;
    for (auto left = dice_.Of(1, 3); left > 0; --left) {
      const auto amount = sign * dice_.Of(1'000, 90'000);
      const auto percent = dice_.OnceIn(4) ? dice_.Of(1, 20) : 0;
      const auto tax = Divided(amount * percent, 100);
      invoice.services += amount;
      invoice.serviceTax += tax;
      Row row;
      row.Put("ManInvDetailID", RowKey(kDetailKeys, ++details_)).Put("TransactionID", invoice.key);
      row.Put("ManInvDetailDesc", AnyMemo(dice_, Task(dice_))).Money("ManInvDetailAmt", amount);
      row.Number("ManInvDetailTaxPerc", percent)
          .Money("ManInvDetailTaxAmt", tax)
          .Money("ManInvDetailTot", amount + tax);
      rows_.Add("ManInvDetail", row);
    }
    if (sign > 0) invoice.expenses = dice_.OnceIn(2) ? dice_.Of(100, 5'000) : 0;
    Write(std::move(invoice));
  }

  void Write(Invoice invoice) {
    const auto& job = model_.jobs[invoice.job];
    invoice.number = fmt::format("{}", kFirstNumber + ++numbers_);
    // Longer than QuickBooks takes.
    if (dice_.OnceIn(40)) invoice.number = fmt::format("{}-OF-2007-A", invoice.number);
    const auto day = DayOf(invoice.month + 1, -1);
    Row row;
    row.Put("TransactionID", invoice.key).Put("TransactionInvNum", invoice.number);
    row.Put("ClientID", model_.clients[job.client].key).Put("ProjectID", job.key);
    row.Moment("TransactionDate", day).Moment("InvoiceDate", day);
    row.Moment("TransactionInvDateFrom", DayOf(invoice.month, 0)).Moment("TransactionInvDateTo", day);
    row.Flag("IsDraft", invoice.isDraft).Flag("TransactionManInv", invoice.isByHand);
    row.Put("TransactionInvSendBillFlag", dice_.OnceIn(5) ? Text() : Text(dice_.OnceIn(3) ? "B" : "P"));
    row.Money("TransactionInvBillAmt", invoice.Total()).Money("ServiceAmt", invoice.services);
    row.Money("ServiceTaxAmt", invoice.serviceTax)
        .Money("ExpAmt", invoice.expenses)
        .Money("ExpTaxAmt", invoice.expenseTax);
    row.Money("MainServiceTaxAmt", invoice.mainServiceTax).Money("MainExpenseTaxAmt", invoice.mainExpenseTax);
    row.Money("TransactionManInvMiscAmt", invoice.miscellaneous).Money("TransactionInvDiscount", invoice.discount);
    row.Money("InvRetainerAmtApplied", invoice.retainer)
        .Put("TransactionMemo", AnyMemo(dice_, "With the bounds as set"));
    row.Moment("LastUpdated", dice_.OnceIn(3) ? std::optional<Date>() : day.PlusHours(21));
    rows_.Add("TransactionTable", row);
    if (invoice.isDraft || invoice.Total() <= 0) return;
    open_.push_back({.number = invoice.number, .job = invoice.job, .month = invoice.month, .amount = invoice.Total()});
  }

  const Model& model_;
  Rows& rows_;
  Dice dice_;
  std::int64_t numbers_ = 0;
  std::int64_t byHand_ = 0;
  std::int64_t details_ = 0;
  std::vector<Open> open_;
};

}  // namespace

std::vector<Open> AddInvoices(const Model& model, const std::vector<Billed>& months, Rows& rows) {
  return InvoicesOfAFirm(model, rows).Add(months);
}

}  // namespace twqb::firm
