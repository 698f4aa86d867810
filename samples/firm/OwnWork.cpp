// Transactions that QuickBooks has of its own: time, invoices with their payments, credit memos; checks, charges, bills
// and estimates. As many as there are customers and jobs that they are of.
#include <fmt/format.h>

#include <array>

#include "platform/Text.h"
#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

constexpr std::array kClasses = {"", "", "Surveys", "Water"};

std::string DayText(Dice& dice, const FirmPlan& plan) {
  const auto day = DayOf(0, dice.Of(0, plan.months * 30));
  return Left(IsoDate(day), 10);
}

// Customers as well as jobs.
std::vector<std::string> PayersOf(const OwnRecords& records) {
  auto payers = records.jobs;
  // Of the customers some have no transaction; one with an apostrophe could not come in as a project for it.
  for (std::size_t i = 0; i < records.customers.size(); i += 2) {
    if (records.customers[i].find('\'') == std::string::npos) payers.push_back(records.customers[i]);
  }
  return payers;
}

std::string Words(Dice& dice, std::size_t longest) {
  auto text = SomeText(dice, Task(dice), longest);
  return dice.OnceIn(4) ? std::string() : text;
}

}  // namespace

void AddOwnTime(const FirmPlan& plan, const OwnRecords& records, Requests& requests) {
  auto dice = DiceFor(plan, Purpose::OwnWork);
  for (const auto& payer : PayersOf(records)) {
    for (auto left = dice.Of(0, 2); left > 0; --left) {
      const auto& person = dice.OnceIn(5) ? dice.OneOf(records.vendors) : dice.OneOf(records.employees);
      const auto day = DayText(dice, plan);
      // Seconds are dropped on the way.
      const auto hours = dice.Of(0, 9);
      const auto minutes = dice.Of(1, 59);
      const auto seconds = dice.OnceIn(4) ? 30 : 0;
      requests.Add(Request("TimeTracking")
                       .Put("TxnDate", day)
                       .Ref("EntityRef", person)
                       .Ref("CustomerRef", dice.OnceIn(9) ? "" : payer)
                       .Ref("ItemServiceRef", dice.OneOf(records.services))
                       .Put("Duration", fmt::format("PT{}H{}M{}S", hours, minutes, seconds))
                       .Ref("ClassRef", dice.OneOf(kClasses))
                       .Put("Notes", Words(dice, 300))
                       .Put("IsBillable", "false"));
    }
  }
}

namespace {

// What both kinds of makers go by.
class OwnMaker {
 public:
  OwnMaker(const FirmPlan& plan, const OwnRecords& records, Requests& requests, Purpose purpose)
      : plan_(plan), records_(records), requests_(requests), dice_(DiceFor(plan, purpose)) {}

 protected:
  const FirmPlan& plan_;
  const OwnRecords& records_;
  Requests& requests_;
  Dice dice_;
  std::int64_t numbers_ = 0;
};

class OwnMoneyOfAFirm : OwnMaker {
 public:
  OwnMoneyOfAFirm(const FirmPlan& plan, const OwnRecords& records, Requests& requests)
      : OwnMaker(plan, records, requests, Purpose::OwnMoney) {}

  void Add() {
    for (const auto& payer : PayersOf(records_)) {
      for (auto left = dice_.Of(0, 2); left > 0; --left) AddInvoice(payer);
      if (dice_.OnceIn(5)) AddCreditMemo(payer);
      if (dice_.OnceIn(12)) AddRetainer(payer);
    }
  }

 private:
  // What the lines come to.
  std::int64_t PutLines(Request& request, const char* line) {
    std::int64_t total = 0;
    for (auto left = dice_.Of(1, 3); left > 0; --left) {
      const auto quantity = dice_.Of(1, 12);
      const auto rate = dice_.Of(100, 9'000);
      total += quantity * rate;
      request.Open(line).Ref("ItemRef", dice_.OneOf(records_.services)).Put("Desc", Words(dice_, 300));
      request.Number("Quantity", quantity).Money("Rate", rate).Close();
    }
    if (dice_.OnceIn(5)) request.Open(line).Put("Desc", "Thank you").Close();
    return total;
  }

  void AddInvoice(const std::string& payer) {
    const auto macro = fmt::format("own{}", ++numbers_);
    Request request("Invoice", macro);
    request.Ref("CustomerRef", payer).Put("TxnDate", DayText(dice_, plan_));
    // One without a number, or pending, stays in QuickBooks.
    const bool comes = !dice_.OnceIn(9);
    const bool isPending = !comes && dice_.OnceIn(2);
    request.Put("RefNumber", comes || isPending ? fmt::format("{}", 20'000 + numbers_) : "");
    request.Put("IsPending", isPending ? "true" : "").Put("Memo", Words(dice_, 300));
    request.Put("IsToBePrinted", dice_.OnceIn(2) ? "true" : "false");
    const auto total = PutLines(request, "InvoiceLineAdd");
    requests_.Add(request);
    if (comes && !dice_.OnceIn(3)) AddPayment(payer, macro, total);
  }

  // In full or in part, with a discount, by a method that is known here or not.
  void AddPayment(const std::string& payer, const std::string& macro, std::int64_t total) {
    const auto discount = dice_.OnceIn(4) ? total / 50 : 0;
    const auto amount = dice_.OnceIn(3) ? (total - discount + 1) / 2 : total - discount;
    constexpr std::array kMethods = {"", "Cash", "Visa", "Bank Transfer"};
    Request request("ReceivePayment");
    request.Ref("CustomerRef", payer).Put("TxnDate", DayText(dice_, plan_));
    request.Put("RefNumber", dice_.OnceIn(4) ? "" : fmt::format("R{}", numbers_)).Money("TotalAmount", amount);
    request.Ref("PaymentMethodRef", dice_.OneOf(kMethods)).Put("Memo", Words(dice_, 200));
    request.Open("AppliedToTxnAdd").Use("TxnID", macro).Money("PaymentAmount", amount);
    if (discount > 0) request.Money("DiscountAmount", discount).Ref("DiscountAccountRef", "Discounts Given");
    requests_.Add(request.Close());
  }

  // Applied to nothing yet.
  void AddRetainer(const std::string& payer) {
    Request request("ReceivePayment");
    request.Ref("CustomerRef", payer).Put("TxnDate", DayText(dice_, plan_));
    request.Put("RefNumber", fmt::format("A{}", ++numbers_)).Money("TotalAmount", dice_.Of(4, 40) * 25'000);
    requests_.Add(request.Put("Memo", Words(dice_, 200)).Put("IsAutoApply", "false"));
  }

  void AddCreditMemo(const std::string& payer) {
    Request request("CreditMemo");
    request.Ref("CustomerRef", payer).Put("TxnDate", DayText(dice_, plan_));
    request.Put("RefNumber", fmt::format("{}", 30'000 + ++numbers_)).Put("Memo", Words(dice_, 300));
    PutLines(request, "CreditMemoLineAdd");
    requests_.Add(request);
  }
};

enum class Paid : std::uint8_t { Check, Card };

class OwnCostsOfAFirm : OwnMaker {
 public:
  OwnCostsOfAFirm(const FirmPlan& plan, const OwnRecords& records, Requests& requests)
      : OwnMaker(plan, records, requests, Purpose::OwnCosts) {}

  void Add() {
    for (const auto& job : records_.jobs) {
      if (dice_.OnceIn(2)) AddPaid(Paid::Check, job);
      if (dice_.OnceIn(3)) AddPaid(Paid::Card, job);
      if (dice_.OnceIn(2)) AddBill(job);
      if (dice_.OnceIn(2)) AddEstimate(job);
    }
  }

 private:
  void PutExpenseLine(Request& request, const std::string& job) {
    request.Open("ExpenseLineAdd").Ref("AccountRef", "Travel").Money("Amount", dice_.Of(100, 90'000));
    request.Put("Memo", Words(dice_, 200))
        .Ref("CustomerRef", job)
        .Put("BillableStatus", dice_.OnceIn(4) ? "NotBillable" : "");
    request.Close();
  }
  void PutItemLine(Request& request, const std::string& item, const std::string& job) {
    request.Open("ItemLineAdd").Ref("ItemRef", item).Put("Desc", Words(dice_, 200));
    request.Number("Quantity", dice_.Of(1, 40) * 25, 2).Money("Cost", dice_.Of(4, 4'000) * 4);
    request.Ref("CustomerRef", job).Close();
  }

  void AddPaid(Paid kind, const std::string& job) {
    Request request(kind == Paid::Check ? "Check" : "CreditCardCharge");
    request.Ref("AccountRef", kind == Paid::Check ? "Checking" : "Travel Card")
        .Ref("PayeeEntityRef", dice_.OneOf(records_.vendors));
    const auto number = fmt::format("{}", 3'100 + ++numbers_);
    const auto day = DayText(dice_, plan_);
    // The two kinds have these the other way round.
    if (kind == Paid::Check) request.Put("RefNumber", number).Put("TxnDate", day);
    if (kind == Paid::Card) request.Put("TxnDate", day).Put("RefNumber", number);
    // What is for no customer stays where it is.
    PutExpenseLine(request, dice_.OnceIn(4) ? "" : job);
    if (dice_.OnceIn(2)) PutItemLine(request, dice_.OneOf(records_.charges), job);
    requests_.Add(request);
  }

  void AddBill(const std::string& job) {
    Request request("Bill");
    request.Ref("VendorRef", dice_.OneOf(records_.vendors)).Put("TxnDate", DayText(dice_, plan_));
    request.Put("RefNumber", dice_.OnceIn(9) ? "" : fmt::format("QB-{}", ++numbers_)).Put("Memo", Words(dice_, 200));
    if (dice_.OnceIn(3)) PutExpenseLine(request, job);
    for (auto left = dice_.Of(1, 2); left > 0; --left) {
      PutItemLine(request, dice_.OnceIn(2) ? dice_.OneOf(records_.services) : dice_.OneOf(records_.charges), job);
    }
    requests_.Add(request);
  }

  void AddEstimate(const std::string& job) {
    Request request("Estimate");
    request.Ref("CustomerRef", job).Put("TxnDate", DayText(dice_, plan_));
    request.Put("RefNumber", fmt::format("E-{}", ++estimates_));
    for (auto left = dice_.Of(1, 3); left > 0; --left) {
      const auto& item = dice_.OnceIn(3) ? dice_.OneOf(records_.charges) : dice_.OneOf(records_.services);
      request.Open("EstimateLineAdd").Ref("ItemRef", item).Put("Desc", Words(dice_, 200));
      request.Number("Quantity", dice_.Of(1, 40)).Money("Rate", dice_.Of(100, 9'000)).Close();
    }
    if (dice_.OnceIn(4)) request.Open("EstimateLineAdd").Put("Desc", "SUBTOTAL").Close();
    requests_.Add(request);
  }

  std::int64_t estimates_ = 0;
};

}  // namespace

void AddOwnMoney(const FirmPlan& plan, const OwnRecords& records, Requests& requests) {
  OwnMoneyOfAFirm(plan, records, requests).Add();
}

void AddOwnCosts(const FirmPlan& plan, const OwnRecords& records, Requests& requests) {
  OwnCostsOfAFirm(plan, records, requests).Add();
}

}  // namespace twqb::firm
