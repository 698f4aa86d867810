#include "bridge/Lookups.h"

#include <algorithm>
#include <array>

#include "services/ModuleVariables.h"
#include "services/Settings.h"

namespace twqb {

namespace {

struct AccountSetting {
  std::string_view key;
  std::string_view account;
};

}  // namespace

bool SaveSettings(std::string_view ACIncAcct, std::string_view ACExpAcct, std::string_view InvServAcct,
                  std::string_view InvExpAcct) {
  // For good: transfers of any object of the process look for the accounts in the table.
  Vars().g_UseTWSTable = true;
  const std::array settings = {
      AccountSetting{.key = "AC_INCOME_ACCOUNT", .account = ACIncAcct},
      AccountSetting{.key = "AC_EXPENSE_ACCOUNT", .account = ACExpAcct},
      AccountSetting{.key = "INVOICE_SERVICE_ACCOUNT", .account = InvServAcct},
      AccountSetting{.key = "INVOICE_EXP_ACCOUNT", .account = InvExpAcct},
  };
  return std::ranges::all_of(settings, [](const AccountSetting& setting) {
    return gf_WriteSettings("GENERAL", setting.key, setting.account, Vars().g_TWSettingsPath);
  });
}

}  // namespace twqb
