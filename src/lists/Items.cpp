#include "lists/Items.h"

#include <fmt/format.h>

#include "platform/Text.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"

namespace twqb {

namespace {

// The default of expenses sounds like income. Firms have booked by it ever since, so it stays.
std::string AccountSetting(std::string_view key) {
  return gf_ReadSettings("GENERAL", key, Vars().g_TWSettingsPath, "Other Income");
}

}  // namespace

ItemForm FormOf(const Record& item) {
  const auto form = item["ORSalesPurchase"];
  if (form.IsNothing() || form.ORType() < 0) return ItemForm::Neither;
  return form.ORType() == 0 ? ItemForm::SalesOrPurchase : ItemForm::SalesAndPurchase;
}

std::string ItemName(std::string_view key) { return ReplaceAll(key, ":", " "); }

std::string ItemKey(std::string_view code, std::string_view sub) { return fmt::format("{}:{}", code, sub); }

std::string DefaultIncomeAccount() { return AccountSetting("AC_INCOME_ACCOUNT"); }
std::string DefaultExpenseAccount() { return AccountSetting("AC_EXPENSE_ACCOUNT"); }

}  // namespace twqb
