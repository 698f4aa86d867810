// Activities, expense codes and the chart of accounts.
#include <fmt/format.h>

#include <algorithm>

#include "platform/Text.h"
#include "samples/firm/Parts.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

struct Halves {
  std::string code;
  std::string sub;
};
Halves HalvesOf(const std::string& key) {
  const auto parts = Split(key, ':');
  return {.code = parts[0], .sub = parts[1]};
}

// Taxes and flags that both kinds have.
void PutCommon(Dice& dice, Row& row) {
  for (const std::string_view tax : {"Tax1_Rate", "Tax2_Rate", "Tax3_Rate"}) {
    row.Number(tax, dice.OnceIn(3) ? std::nullopt : std::optional(AnyTaxRate(dice)), 2);
  }
  row.Number("IsInActive", dice.OnceIn(9) ? std::nullopt : std::optional<std::int64_t>(dice.OnceIn(9) ? -1 : 0));
  row.Put("QBAccountID1", dice.OnceIn(2) ? Text("") : Text()).Moment("LastUpdated", AnyMoment(dice));
}

void AddActivity(Dice& dice, const std::string& key, Rows& rows) {
  const auto [code, sub] = HalvesOf(key);
  const auto cost = dice.Of(0, 300) * 25;
  Row row;
  row.Put("ActivityID", key).Put("ActivityCode", code).Put("ActivitySub", sub);
  row.Put("ActivityDescription", AnyText(dice, Task(dice), 255));
  row.Number("AC_CostRate", dice.OnceIn(8) ? std::nullopt : std::optional(cost), 2);
  row.Number("AC_BillRate", dice.OnceIn(8) ? std::nullopt : std::optional(cost * 2 + dice.Of(0, 99)), 2);
  row.Number("AC_MinHours", dice.OnceIn(3) ? std::nullopt : std::optional<std::int64_t>(25), 2);
  row.Flag("ActivityBillable", !dice.OnceIn(6));
  PutCommon(dice, row);
  rows.Add("Activity", row);
  if (dice.OnceIn(5)) rows.Add("ActivityGroupDetail", Row().Put("AGID", "FIELD").Put("ActivityID", key));
}

void AddExpenseCode(Dice& dice, const std::string& key, Rows& rows) {
  const auto [code, sub] = HalvesOf(key);
  Row row;
  row.Put("ExpID", key).Put("ExpCode", code).Put("ExpSub", sub);
  row.Put("ExpDescription", AnyText(dice, Task(dice), 255)).Put("Exp_Memo", AnyMemo(dice, "Receipts above 25 dollars"));
  // With more decimals than cents, now and then.
  const auto cost = dice.OnceIn(6) ? 1'233 : 2'500;
  const auto markup = dice.OnceIn(6) ? 333 : 500;
  row.Number("ExpCost", dice.OnceIn(8) ? std::nullopt : std::optional(dice.Of(0, 90) * cost), 4);
  row.Number("ExpMarkup", dice.OnceIn(8) ? std::nullopt : std::optional(dice.Of(0, 8) * markup), 2);
  row.Flag("ExpBillable", !dice.OnceIn(6)).Flag("Reimbursable", dice.OnceIn(2)).Flag("IsProduct", false);
  PutCommon(dice, row);
  rows.Add("Expense", row);
  if (dice.OnceIn(5)) rows.Add("ExpenseGroupDetail", Row().Put("XGID", "TRAVEL").Put("ExpID", key));
}

// Types of QuickBooks that an account may have without more: bank, cost of goods, credit card, expense, fixed asset,
// income, other current asset and liability, other expense.
constexpr int kTypes[] = {2, 3, 4, 6, 7, 8, 12, 13, 14};

void AddAccount(Dice& dice, std::int64_t number, Rows& rows) {
  // Two below each top account, in its type.
  const auto top = (number - 1) / 3 * 3 + 1;
  const bool isChild = number != top;
  const auto type = kTypes[static_cast<std::size_t>(top / 3) % std::size(kTypes)];
  // Some names are in use in QuickBooks, and some are there twice.
  auto name = SomeText(dice, fmt::format("{} {}", Place(dice), number), 31);
  if (dice.OnceIn(10)) name = dice.OnceIn(2) ? "Travel" : "CHECKING";
  Row row;
  row.Put("AccountID", fmt::format("{}", 7000 + number)).Put("AccountName", ReplaceAll(name, ":", " "));
  row.Number("AccountTypeID", type).Put("ParentAccountID", isChild ? Text(fmt::format("{}", 7000 + top)) : Text());
  row.Put("AccountDesc", AnyText(dice, Task(dice), 255));
  // Income and expense accounts have no balance to begin with.
  const bool hasBalance = type == 2 || type == 7 || type == 12;
  row.Number("OpenBalance", hasBalance && dice.OnceIn(2) ? std::optional(dice.Of(-90'000, 90'000)) : std::nullopt, 2);
  row.Moment("OpenBalanceDate", dice.OnceIn(2) ? std::optional<Date>() : DayOf(0, 0));
  row.Flag("IsInActive", dice.OnceIn(9)).Moment("LastUpdated", AnyMoment(dice));
  rows.Add("AccountList", row);
}

}  // namespace

void AddCodes(const Model& model, Rows& rows) {
  auto dice = DiceFor(model.plan, Purpose::Codes);
  for (const auto& key : model.activities) AddActivity(dice, key, rows);
  for (const auto& key : model.expenseCodes) AddExpenseCode(dice, key, rows);
  const auto accounts = std::min<std::int64_t>(3 + model.plan.clients / 4, 120);
  for (std::int64_t i = 1; i <= accounts; ++i) AddAccount(dice, i, rows);
}

}  // namespace twqb::firm
