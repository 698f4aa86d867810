// Hours and expenses: what each project's people did in each of its months, most of which is billed at the month's end.
#include <fmt/format.h>

#include "samples/firm/DecimalText.h"
#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

constexpr std::uint32_t kTimeKeys = 0x7E000000;
constexpr std::uint32_t kExpenseKeys = 0x5E000000;
constexpr std::uint32_t kInvoiceKeys = 0x1A000000;

constexpr std::int64_t kThousandths = 1'000;  // of an hour

// Mostly quarters; what a stopwatch says; more than a day; and hours that were taken back.
std::int64_t AnyHours(Dice& dice) {
  switch (dice.Of(0, 49)) {
    case 0:
      return -dice.Of(1, 8) * kThousandths;
    case 1:
      return 26 * kThousandths;
    case 2:
    case 3:
    case 4:
      return dice.Of(1, 9'999);
    default:
      return dice.Of(1, 36) * kThousandths / 4;
  }
}

std::optional<std::int64_t> AnyFactor(Dice& dice) {
  switch (dice.Of(0, 14)) {
    case 0:
      return 1'100;
    case 1:
      return 750;
    case 2:
      return 0;
    case 3:
      return 1'333;
    default:
      return dice.OnceIn(2) ? std::nullopt : std::optional<std::int64_t>(1'000);
  }
}

Date AnyWorkday(Dice& dice, int month) {
  auto day = DayOf(month, dice.Of(0, 26));
  while (!IsWorkday(day)) day = day.PlusDays(1);
  return day;
}

class WorkOfAFirm {
 public:
  WorkOfAFirm(const Model& model, Rows& rows)
      : model_(model),
        rows_(rows),
        hours_(DiceFor(model.plan, Purpose::Hours)),
        expenses_(DiceFor(model.plan, Purpose::Expenses)) {}

  std::vector<Billed> Add() {
    std::vector<Billed> months;
    for (std::size_t i = 0; i < model_.jobs.size(); ++i) {
      const auto& job = model_.jobs[i];
      for (int month = job.firstMonth; month < job.firstMonth + job.months; ++month) {
        // Not everything is billed yet, but something is.
        const bool isBilled = !hours_.OnceIn(8) || invoices_ == 0;
        Billed billed = {.key = isBilled ? RowKey(kInvoiceKeys, ++invoices_) : "", .job = i, .month = month};
        AddMonth(job, billed);
        if (isBilled) months.push_back(std::move(billed));
      }
    }
    return months;
  }

 private:
  void AddMonth(const Job& job, Billed& billed) {
    const auto least = (model_.plan.hours + 1) / 2;
    for (auto left = hours_.Of(least, model_.plan.hours * 3 / 2); left > 0; --left) AddHours(job, billed);
    const auto most = model_.plan.hours / 2 + 1;
    for (auto left = expenses_.Of(0, most); left > 0; --left) AddExpense(job, billed);
  }

  void AddHours(const Job& job, Billed& billed) {
    auto& dice = hours_;
    const bool isVendor = dice.OnceIn(25);
    const auto& person = isVendor ? dice.OneOf(model_.vendors) : model_.employees[dice.OneOf(job.team)];
    const auto hours = AnyHours(dice);
    const auto factor = AnyFactor(dice);
    const bool isPosted = !dice.OnceIn(25);
    const bool isBillable = !dice.OnceIn(10);
    const bool onInvoice = isPosted && hours > 0 && !billed.key.empty();
    const auto rate = dice.OnceIn(12) ? dice.Of(2'000, 20'000) : person.billRate;
    const auto day = AnyWorkday(dice, billed.month);
    const auto memo = AnyMemo(dice, Task(dice));
    const bool hasMemo = memo && dice.OnceIn(4);
    Row row;
    row.Put("TEID", RowKey(kTimeKeys, ++times_)).Moment("TEDate", day).Put("EmployeeID", person.key);
    row.Put("ProjectID", job.key).Put("ProjectName", job.code);
    // Those of no activity stay here.
    row.Put("ActivityID", dice.OnceIn(20) ? Text() : dice.OneOf(model_.activities));
    row.Number("TEHours", hours, 3).Number("aHours", hours, 3);
    row.Put("TEDescription", AnyText(dice, Task(dice), 255));
    row.Put("TEMemo", hasMemo ? memo : Text()).Flag("TEMemoExists", hasMemo).Flag("TEBill", isBillable);
    row.Money("TEBillRate", rate).Money("TECostRate", person.costRate);
    row.Put("TEBillStatus", onInvoice ? "B" : "N").Number("WUD", factor, 3);
    row.Flag("TEOT", dice.OnceIn(15)).Number("TECompTime", dice.OnceIn(20) ? 1 : 0).Flag("TEXtraWork", dice.OnceIn(30));
    row.Flag("TEPosted", isPosted).Flag("TEFlag1", dice.OnceIn(9)).Flag("TEFlag2", dice.OnceIn(9));
    for (const std::string_view tax : {"TETax1", "TETax2", "TETax3"}) row.Number(tax, AnyTaxRate(dice), 2);
    row.Flag("isSub", isVendor).Put("TransactionID", onInvoice ? Text(billed.key) : Text());
    row.Moment("LastUpdated", dice.OnceIn(3) ? std::optional<Date>() : day.PlusHours(22));
    rows_.Add("TimeEntry", row);
    if (!onInvoice || !isBillable) return;
    constexpr std::int64_t kOfBoth = kThousandths * kThousandths;
    billed.services += Divided(hours * factor.value_or(kThousandths) * rate, kOfBoth);
  }

  void AddExpense(const Job& job, Billed& billed) {
    auto& dice = expenses_;
    const bool onInvoice = !billed.key.empty() && !dice.OnceIn(6);
    const bool isVendor = !onInvoice && dice.OnceIn(2);
    const bool isBillable = !dice.OnceIn(10);
    const auto units = dice.OnceIn(2) ? dice.Of(1, 20) * 100 : dice.Of(1, 5'000);
    const auto cost = dice.OnceIn(6) ? dice.Of(1, 99'999) : dice.Of(1, 4'000) * 100;
    const auto markup = dice.OnceIn(2) ? 0 : dice.Of(1, 60) * 50;
    constexpr std::int64_t kHundredPerCent = 10'000;
    // Hundredths of units, ten-thousandths of money and hundredths of a percent; into cents.
    const auto charge = Divided(units * cost * (kHundredPerCent + markup), 100 * 100 * kHundredPerCent);
    const auto day = AnyWorkday(dice, billed.month);
    Row row;
    row.Put("ELID", RowKey(kExpenseKeys, ++costs_)).Moment("ELDate", day);
    row.Put("EmployeeID", isVendor ? dice.OneOf(model_.vendors).key : model_.employees[dice.OneOf(job.team)].key);
    row.Put("ProjectID", job.key).Put("ExpID", dice.OneOf(model_.expenseCodes));
    row.Put("ELDescription", AnyText(dice, Task(dice), 255));
    row.Number("ELUnits", units, 2).Number("ELCost", cost, 4).Number("ELMarkup", markup, 2);
    row.Money("ELChgAmt", isBillable ? charge : 0)
        .Flag("ELBillable", isBillable)
        .Put("ELBilled", onInvoice ? "P" : "N");
    row.Flag("ELPosted", !dice.OnceIn(20)).Flag("Reimbursable", dice.OnceIn(3)).Flag("isSub", isVendor);
    for (const std::string_view tax : {"ELTax1", "ELTax2", "ELTax3"}) row.Number(tax, AnyTaxRate(dice), 2);
    row.Put("TransactionID", onInvoice ? Text(billed.key) : Text());
    row.Moment("LastUpdated", dice.OnceIn(3) ? std::optional<Date>() : day.PlusHours(20));
    rows_.Add("ExpenseLog", row);
    if (onInvoice && isBillable) billed.expenses += charge;
  }

  const Model& model_;
  Rows& rows_;
  Dice hours_;
  Dice expenses_;
  std::int64_t invoices_ = 0;
  std::int64_t times_ = 0;
  std::int64_t costs_ = 0;
};

}  // namespace

std::vector<Billed> AddWork(const Model& model, Rows& rows) { return WorkOfAFirm(model, rows).Add(); }

}  // namespace twqb::firm
