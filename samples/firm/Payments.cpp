// Payments of the invoices: in full, in parts, several invoices with one check, by every method; and retainers, out of
// which some is paid. What is applied never comes to more than the invoice.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

constexpr std::uint32_t kPaymentKeys = 0x4D000000;
constexpr std::uint32_t kRowKeys = 0x6F000000;

// Check, cash, credit, write-off, barter, card, transfer, money order; debits (6) never go, and A is out of a retainer.
constexpr std::array kMethods = {"1", "1", "1", "1", "2", "3", "4", "5", "7", "8", "9"};

class PaymentsOfAFirm {
 public:
  PaymentsOfAFirm(const Model& model, Rows& rows)
      : model_(model), rows_(rows), dice_(DiceFor(model.plan, Purpose::Payments)) {}

  void Add(const std::vector<Open>& invoices) {
    std::vector<std::vector<Open>> ofClients(model_.clients.size());
    for (const auto& invoice : invoices) ofClients[model_.jobs[invoice.job].client].push_back(invoice);
    for (std::size_t i = 0; i < ofClients.size(); ++i) PayAll(i, ofClients[i]);
  }

 private:
  struct Payment {
    std::string key;
    std::size_t client = 0;
    Date day;
    std::int64_t amount = 0;
    std::string method;
    bool isRetainer = false;
  };

  void PayAll(std::size_t client, std::vector<Open>& invoices) {
    std::ranges::stable_sort(invoices, {}, &Open::month);
    // What came in ahead of any invoice.
    if (dice_.OnceIn(6) && !invoices.empty()) AddRetainer(client, invoices.front());
    std::vector<Open> together;
    for (const auto& invoice : invoices) {
      if (dice_.OnceIn(10)) continue;  // not paid yet
      if (dice_.OnceIn(6)) {
        InParts(client, invoice);
        continue;
      }
      together.push_back(invoice);
      if (together.size() == 3 || !dice_.OnceIn(4)) Together(client, std::exchange(together, {}));
    }
    if (!together.empty()) Together(client, together);
  }

  void Together(std::size_t client, const std::vector<Open>& invoices) {
    std::int64_t amount = 0;
    for (const auto& invoice : invoices) amount += invoice.amount;
    const auto payment = Begin(client, invoices.back(), amount, dice_.OneOf(kMethods));
    for (const auto& invoice : invoices) Apply(payment, invoice.number, model_.jobs[invoice.job].key, invoice.amount);
  }

  // The second part does not always come.
  void InParts(std::size_t client, const Open& invoice) {
    const auto first = std::max<std::int64_t>(1, invoice.amount * dice_.Of(1, 9) / 10);
    const auto& job = model_.jobs[invoice.job].key;
    Apply(Begin(client, invoice, first, dice_.OneOf(kMethods)), invoice.number, job, first);
    if (first == invoice.amount || dice_.OnceIn(3)) return;
    const auto rest = invoice.amount - first;
    Apply(Begin(client, invoice, rest, retainer_ >= rest ? "A" : dice_.OneOf(kMethods)), invoice.number, job, rest);
    if (retainer_ >= rest) retainer_ -= rest;
  }

  void AddRetainer(std::size_t client, const Open& first) {
    const auto amount = dice_.Of(4, 40) * 25'000;
    auto payment = Begin(client, first, amount, "1", true);
    // One for the client as a whole makes the customer a project, which one with an apostrophe can't become.
    const bool mayBeProject = model_.clients[client].company.value_or("").find('\'') == std::string::npos;
    const bool isForAll = dice_.OnceIn(2) && mayBeProject;
    Apply(payment, "0", isForAll ? "{CLIENT RETAINER}" : model_.jobs[first.job].key, amount);
    retainer_ = amount;
    retainerOf_ = client;
  }

  Payment Begin(std::size_t client, const Open& last, std::int64_t amount, std::string method,
                bool isRetainer = false) {
    if (client != retainerOf_) retainer_ = 0;
    Payment payment = {.key = RowKey(kPaymentKeys, ++payments_),
                       .client = client,
                       .day = DayOf(last.month + 1, dice_.Of(3, 35)),
                       .amount = amount,
                       .method = std::move(method),
                       .isRetainer = isRetainer};
    const auto reference = fmt::format("{}", 5'000 + payments_);
    Row row;
    row.Put("PayID", payment.key).Put("ClientID", model_.clients[client].key).Moment("PayDate", payment.day);
    row.Money("PayAmt", amount).Put("PayMethod", payment.method).Flag("PayRetainer", isRetainer);
    row.Put("PayRef", AnyText(dice_, reference, 30)).Put("PayMemo", AnyText(dice_, "With thanks", 255));
    row.Put("PayEnteredBy", model_.employees.front().key);
    row.Moment("LastUpdated", dice_.OnceIn(3) ? std::optional<Date>() : payment.day.PlusHours(16));
    rows_.Add("Payment", row);
    return payment;
  }

  void Apply(const Payment& payment, const std::string& number, const std::string& project, std::int64_t amount) {
    Row row;
    row.Put("TransactionID", RowKey(kRowKeys, ++applied_)).Put("TransactionInvNum", number);
    row.Put("ClientID", model_.clients[payment.client].key).Put("ProjectID", project).Put("PayID", payment.key);
    row.Moment("TransactionDate", payment.day)
        .Money("TransactionPayAmtApplied", amount)
        .Money("TransactionPayLateFeeRecd", dice_.OnceIn(12) ? dice_.Of(1, 20) * 250 : 0);
    row.Moment("LastUpdated", dice_.OnceIn(3) ? std::optional<Date>() : payment.day.PlusHours(16));
    rows_.Add("TransactionTable", row);
  }

  const Model& model_;
  Rows& rows_;
  Dice dice_;
  std::int64_t payments_ = 0;
  std::int64_t applied_ = 0;
  std::int64_t retainer_ = 0;  // what is left of the client's
  std::size_t retainerOf_ = 0;
};

}  // namespace

void AddPayments(const Model& model, const std::vector<Open>& invoices, Rows& rows) {
  PaymentsOfAFirm(model, rows).Add(invoices);
}

}  // namespace twqb::firm
