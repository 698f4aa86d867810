// Bills of vendors, with hours and expenses as their lines; and budgets, which stay here.
#include <fmt/format.h>

#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

constexpr std::uint32_t kBillKeys = 0x3C000000;
constexpr std::uint32_t kTimeKeys = 0x7E0C0000;
constexpr std::uint32_t kExpenseKeys = 0x5E0C0000;
constexpr std::uint32_t kBudgetKeys = 0xB0000000;

class BillsOfAFirm {
 public:
  BillsOfAFirm(const Model& model, Rows& rows)
      : model_(model), rows_(rows), dice_(DiceFor(model.plan, Purpose::Bills)) {}

  void Add() {
    for (const auto& vendor : model_.vendors) {
      for (int month = 0; month < model_.plan.months; ++month) {
        if (!dice_.OnceIn(3)) AddBill(vendor, month);
      }
    }
  }

 private:
  void AddBill(const Worker& vendor, int month) {
    const auto key = RowKey(kBillKeys, ++bills_);
    const auto day = DayOf(month, dice_.Of(0, 27));
    Row row;
    row.Put("VendorBillID", key).Put("VendorID", vendor.key);
    row.Put("BillNumber", dice_.OnceIn(9) ? Text() : Text(fmt::format("N-{:04}", bills_)));
    row.Moment("BillDate", day).Moment("BillDueDate", dice_.OnceIn(3) ? std::optional<Date>() : day.PlusDays(20));
    row.Put("BillMemo", AnyMemo(dice_, Task(dice_))).Put("BillRef", AnyText(dice_, "Ref. 17", 50));
    row.Moment("LastUpdated", dice_.OnceIn(3) ? std::optional<Date>() : day.PlusHours(18));
    rows_.Add("VendorBill", row);
    for (auto left = dice_.Of(1, 4); left > 0; --left) {
      if (dice_.OnceIn(2)) {
        AddHours(vendor, key, day);
      } else {
        AddExpense(vendor, key, day);
      }
    }
  }

  // Not posted: hours of vendors go on their bills alone.
  void AddHours(const Worker& vendor, const std::string& bill, Date day) {
    const auto hours = dice_.Of(1, 32) * 25;
    const auto& job = dice_.OneOf(model_.jobs);
    Row row;
    row.Put("TEID", RowKey(kTimeKeys, ++times_)).Moment("TEDate", day).Put("EmployeeID", vendor.key);
    row.Put("ProjectID", job.key).Put("ProjectName", job.code).Put("ActivityID", dice_.OneOf(model_.activities));
    row.Number("TEHours", hours, 2).Number("aHours", hours, 2).Put("TEDescription", AnyText(dice_, Task(dice_), 255));
    row.Flag("TEBill", !dice_.OnceIn(5)).Money("TEBillRate", vendor.billRate);
    row.Number("TECostRate", dice_.OnceIn(5) ? 416'667 : vendor.costRate * 100, 4).Put("TEBillStatus", "N");
    row.Flag("TEPosted", false).Flag("isSub", true).Put("VendorBillID", bill);
    row.Moment("LastUpdated", dice_.OnceIn(3) ? std::optional<Date>() : day.PlusHours(18));
    rows_.Add("TimeEntry", row);
  }

  void AddExpense(const Worker& vendor, const std::string& bill, Date day) {
    Row row;
    row.Put("ELID", RowKey(kExpenseKeys, ++costs_)).Moment("ELDate", day).Put("EmployeeID", vendor.key);
    row.Put("ProjectID", dice_.OneOf(model_.jobs).key).Put("ExpID", dice_.OneOf(model_.expenseCodes));
    row.Put("ELDescription", AnyText(dice_, Task(dice_), 255));
    row.Number("ELUnits", dice_.Of(1, 40) * 25, 2).Number("ELCost", dice_.Of(2, 900) * 5'050, 4);
    row.Number("ELMarkup", dice_.Of(0, 4) * 5)
        .Money("ELChgAmt", dice_.Of(0, 90'000))
        .Flag("ELBillable", !dice_.OnceIn(5));
    row.Put("ELBilled", "N").Flag("ELPosted", true).Flag("isSub", true).Put("VendorBillID", bill);
    row.Flag("Reimbursable", dice_.OnceIn(3));
    for (const std::string_view tax : {"ELTax1", "ELTax2", "ELTax3"}) row.Number(tax, AnyTaxRate(dice_), 2);
    row.Moment("LastUpdated", dice_.OnceIn(3) ? std::optional<Date>() : day.PlusHours(18));
    rows_.Add("ExpenseLog", row);
  }

  const Model& model_;
  Rows& rows_;
  Dice dice_;
  std::int64_t bills_ = 0;
  std::int64_t times_ = 0;
  std::int64_t costs_ = 0;
};

}  // namespace

void AddBills(const Model& model, Rows& rows) { BillsOfAFirm(model, rows).Add(); }

void AddBudgets(const Model& model, Rows& rows) {
  auto dice = DiceFor(model.plan, Purpose::Budgets);
  const auto budgets = 1 + model.plan.clients / 10;
  for (std::int64_t i = 1; i <= budgets; ++i) {
    const auto number = fmt::format("B-{}", i);
    rows.Add("Budget", Row()
                           .Put("BudgetID", number)
                           .Put("BudgetGroupDesc", AnyText(dice, Task(dice), 255))
                           .Money("BudgetMiscAmt", dice.Of(0, 50'000))
                           .Flag("IsEstimate", true));
    rows.Add("BudgetActivity", Row()
                                   .Put("BAID", RowKey(kBudgetKeys, 2 * i))
                                   .Put("BudgetID", number)
                                   .Put("ActivityID", dice.OneOf(model.activities))
                                   .Put("BADescription", AnyText(dice, Task(dice), 255))
                                   .Money("BARate", dice.Of(2'000, 20'000))
                                   .Number("BAHours", dice.Of(1, 400), 1));
    rows.Add("BudgetExpense", Row()
                                  .Put("BEID", RowKey(kBudgetKeys, 2 * i + 1))
                                  .Put("BudgetID", number)
                                  .Put("ExpID", dice.OneOf(model.expenseCodes))
                                  .Money("BEAmt", dice.Of(100, 9'000))
                                  .Number("BEUnits", dice.Of(1, 400), 1));
  }
}

}  // namespace twqb::firm
