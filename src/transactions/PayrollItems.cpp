#include "transactions/PayrollItems.h"

#include <fmt/core.h>

#include <array>
#include <string_view>

#include "engine/Mapping.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/Requests.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Settings.h"
#include "services/Sql.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

constexpr std::string_view kRegularPay = "Regular Pay";
constexpr std::string_view kVacation = "Vacation Hourly";
constexpr std::string_view kOvertime = "Overtime Pay";
constexpr std::string_view kSick = "Sick Hourly";
constexpr std::string_view kUsualAccount = "Payroll Expenses";

// Of `WageType`.
constexpr int kHourlyRegular = 5;
constexpr int kHourlySick = 6;
constexpr int kHourlyVacation = 7;
constexpr int kSalaryRegular = 8;

struct WageItem {
  std::string_view name;
  int wageType;
};

// A Canadian file knows no vacation by the hour.
std::array<WageItem, 4> WageItems() {
  const bool canadian = Vars().g_QBCountry == "CA" || Vars().g_HostCountry == "CA";
  return {WageItem{kVacation, canadian ? kHourlyRegular : kHourlyVacation}, WageItem{kRegularPay, kSalaryRegular},
          WageItem{kOvertime, kHourlyRegular}, WageItem{kSick, kHourlySick}};
}

std::string Setting(std::string_view key, std::string_view fallback = {}) {
  return gf_ReadSettings("GENERAL", key, Vars().g_TWSettingsPath, fallback);
}

// What an employee's row of QBPayroll holds for a kind of time.
enum class EntryType : int {
  RegularBillable = 1,
  Regular = 2,
  OvertimeBillable = 3,
  Overtime = 4,
  Vacation = 5,
  Sick = 6,
  Holiday = 7,
  Flagged = 8,
  FlagName = 81,  // not an item, but which of the three flags marks the employee's special entries
};

std::string ChoiceOf(std::string_view employeeId, EntryType type) {
  return GetScalarFromSQL(Sql("SELECT PayrollItem FROM QBPayroll WHERE (EmployeeID = '{}') AND (EntryType = {});",
                              employeeId, static_cast<int>(type)));
}

// "" where the entry is none of the employee's special ones, or these have no item.
std::string ItemByFlag(const ado::Recordset& row, std::string_view employeeId) {
  const auto flag = ChoiceOf(employeeId, EntryType::FlagName);
  if (flag != "Flag1" && flag != "Flag2" && flag != "Flag3") return {};
  return IsTrueFlag(row, "TE" + flag) ? ChoiceOf(employeeId, EntryType::Flagged) : std::string();
}

// A kind of time, and the item of an employee who has none of their own for it.
struct KindOfTime {
  EntryType type;
  std::string_view otherwise;
};

KindOfTime KindOf(const ado::Recordset& row, std::string_view defaultItem) {
  const auto activity = ColumnText(row, "ActivityID");
  if (activity == Vars().g_ActivityVac) return {EntryType::Vacation, kVacation};
  if (activity == Vars().g_ActivitySick) return {EntryType::Sick, kSick};
  if (activity == Vars().g_ActivityHol) return {EntryType::Holiday, defaultItem};
  const bool billable = IsTrueFlag(row, "TEBill");
  if (IsTrueFlag(row, "TEOT")) return {billable ? EntryType::OvertimeBillable : EntryType::Overtime, kOvertime};
  return {billable ? EntryType::RegularBillable : EntryType::Regular, defaultItem};
}

}  // namespace

namespace {

// Whether another account is tried behind this one.
enum class Try : std::uint8_t { First, Last };

bool AddWageItems(QBSessionManager& session, const std::string& expenseAccount, Try which) {
  return RunAs("AddPayrollItemWage", false, [&] {
    auto messageSet = RequireMsgSetRequest(session);
    for (const auto& item : WageItems()) {
      const auto request = messageSet.Append("PayrollItemWageAddRq");
      request["Name"].SetValue(item.name);
      request["IsActive"].SetValue(true);
      request["WageType"].SetValue(item.wageType);
      request["ExpenseAccountRef"]["FullName"].SetValue(expenseAccount.empty() ? kUsualAccount : expenseAccount);
    }
    // The other three answers have never been looked at.
    const auto answer = session.DoRequests(messageSet);
    const auto& response = answer.GetAt(0);
    const auto code = response.StatusCode();
    if (code == status::kOk || code == status::kNameInUse) return true;
    const auto line = fmt::format("Error adding Payroll Item Wage : \r\nError code = {}\r\nError Message = {}", code,
                                  response.StatusMessage());
    // What the next account may yet mend is no error.
    if (which == Try::Last) {
      LogError("SecureWageItems", line);
    } else {
      WriteLog(line);
    }
    return false;
  });
}

}  // namespace

bool AddPayrollItemWage(QBSessionManager& session, const std::string& expenseAccount) {
  return AddWageItems(session, expenseAccount, Try::Last);
}

bool SecureWageItems(QBSessionManager& session) {
  if (AddWageItems(session, std::string(kUsualAccount), Try::First)) return true;
  auto account = Setting("PayrollExpAcct");
  if (Trim(account).empty()) account = Setting("AC_EXPENSE_ACCOUNT");
  if (!Trim(account).empty()) return AddPayrollItemWage(session, account);
  TellErrorToObserver("SecureWageItems", 0, "no account for payroll item wages");
  TheDesk().ShowMessageBox({.text = "Please Select An Account For Payroll Item Wages From the Sync Settings Screen",
                            .title = "Error",
                            .icon = BoxIcon::Information});
  return false;
}

std::vector<std::string> WageItemNames() {
  std::vector<std::string> names;
  for (const auto& item : WageItems()) names.emplace_back(item.name);
  return names;
}

std::string PayrollItemFor(const ado::Recordset& row) {
  // What can't be read counts as not there.
  std::string defaultItem;
  IgnoreErrors([&] { defaultItem = Setting("DefaultPayrollItem", kRegularPay); });
  if (Trim(defaultItem).empty()) defaultItem = kRegularPay;
  std::string employeeId;
  IgnoreErrors([&] { employeeId = ColumnText(row, "EmployeeID"); });
  std::string special;
  IgnoreErrors([&] { special = ItemByFlag(row, employeeId); });
  if (!special.empty()) return special;
  auto item = defaultItem;
  IgnoreErrors([&] {
    const auto kind = KindOf(row, defaultItem);
    item = ChoiceOf(employeeId, kind.type);
    if (item.empty()) item = kind.otherwise;
  });
  return item;
}

}  // namespace twqb
