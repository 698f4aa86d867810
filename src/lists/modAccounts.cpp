#include "lists/modAccounts.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>

#include "engine/DependentPull.h"
#include "lists/ActiveFlag.h"
#include "lists/InvalidReference.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

void ReadAccountRow(const ado::Recordset& row, SendRecord& record);
void AssignAccountFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                            const SendRecord& record);
Refusal OnRefusedAccount(const RefusedRequest& refused);
void AddAccountRow(ado::Recordset& rows, GetRecord& account);
void WriteAccountFields(ado::Recordset& row, const Record& account);
void ShowRowToOthers();

// --- Description -----------------------------------------------------------------------------------------------------

// Errors are reported under the names of the activities' routines; support knows the reports by them.
constexpr TableDescription kAccounts = {
    .table = enAccounts,
    .tableName = "AccountList",
    .keyColumn = "AccountID",
    .fallbackDateColumn = "LastUpdated",
    .addRequest = "AccountAddRq",
    .sendRoutine = "MoveActivityToQB",
    .getRoutine = "MoveActivitiesToTW",
    .sendingText = "Sending Accounts to QuickBooks...",
    .gettingText = "Getting Accounts from QuickBooks...",
    .recordLabel = "Account ID",
    .sendLogText = "Error in Account transfer to QB. Account ID = ",
    .getLogText = "Error in Accounts transfer to Tallywick. Account = ",
    .progressColumn = "AccountName",
    .nameField = "FullName",
    .progressFrom = 1,
    .addQuestion = AddQuestion::InItsOwnBox,
    .readRow = ReadAccountRow,
    .assign = Fill<AssignAccountFldValues>,
    .onRefusal = OnRefusedAccount,
    .addRow = AddAccountRow,
    .writeFields = WriteAccountFields,
    .afterUpdate = ShowRowToOthers,
};

// --- Field mapping ---------------------------------------------------------------------------------------------------

// The numbers of `AccountType` are the same on both sides.
constexpr std::int64_t kLastAccountType = 15;
constexpr std::int64_t kUnknownAccountType = 0;

std::string TypeOrLast(std::string_view type) {
  return type.empty() ? fmt::format("{}", kLastAccountType) : std::string(type);
}
std::string BalanceOrZero(std::string_view balance) { return balance.empty() ? "0" : std::string(balance); }
std::string DateOrToday(std::string_view date) {
  return date.empty() ? ShortDate(TheMachine().Now()) : std::string(date);
}
std::string ActiveUnlessTrue(std::string_view isInActive) {
  return !isInActive.empty() && TextToBoolean(isInActive) ? "False" : "True";
}

constexpr std::array kSendAccount = {
    SendField{.path = "AccountNumber", .column = "AccountID"},
    SendField{.path = "AccountType", .column = "AccountTypeID", .convert = TypeOrLast},
    SendField{.path = "Desc", .column = "AccountDesc", .when = SendField::When::NotNull},
    SendField{.path = "OpenBalance", .column = "OpenBalance", .convert = BalanceOrZero},
    SendField{.path = "OpenBalanceDate", .column = "OpenBalanceDate", .convert = DateOrToday},
    SendField{.path = "IsActive", .column = "IsInActive", .convert = ActiveUnlessTrue},
};

constexpr std::array kGetAccount = {GetField{.path = "Desc", .column = "AccountDesc"}};

// --- Hooks of the send -----------------------------------------------------------------------------------------------

void ReadAccountRow(const ado::Recordset& row, SendRecord& record) { record.qbName = ColumnText(row, "AccountName"); }

// An account whose parent has no link goes to the top level.
void AssignParent(const RequestField& request, const ado::Recordset& row) {
  // The parent may have been added a moment ago, and takes its time to become readable.
  constexpr std::int64_t kPause = 500;
  const auto parent = row.Field("ParentAccountID");
  if (IsNull(parent)) return;
  TheMachine().Sleep(kPause);
  const auto link =
      RequireScalarFromSQL(fmt::format("SELECT QBLINKID FROM AccountList WHERE AccountID = '{}';", ToText(parent)));
  if (!link.empty()) request["ParentRef"]["ListID"].SetValue(link);
}

void AssignAccountFldValues(const RequestField& request, const ado::Recordset& row, RequestKind /*kind*/,
                            const SendRecord& record) {
  SetCut(request["Name"], record.qbName);
  SendFields(request, row, kSendAccount);
  AssignParent(request, row);
}

// A name in use is no reason for a second account under another name: the row stays without a link.
Refusal OnRefusedAccount(const RefusedRequest& refused) {
  switch (refused.response.StatusCode()) {
    case kStatusNameInUse:
      WriteLog(fmt::format("Adding Account : '{}' already exists in QB", refused.record.qbName));
      return Refusal::PassOver;
    case kStatusInvalidReference:
      TellInvalidReference(refused.response,
                           "If this table needs an account, please choose a valid account in the\r\n"
                           "Sync Settings Form.");
      return Refusal::LeaveTable;
    default:
      return Refusal::AskUser;
  }
}

// --- Hooks of the get ------------------------------------------------------------------------------------------------

void AddAccountRow(ado::Recordset& rows, GetRecord& account) {
  const auto number = account.record["AccountNumber"].GetValueOrEmpty();
  rows.AddNew();
  WriteCut(rows, "AccountID", number.empty() ? account.record["ListID"].GetValue() : number);
}

// The key of the account's parent, which is pulled where BillingDb lacks it; "" when QuickBooks did not give it either.
std::string ParentKeyOf(const Record& account) {
  const auto listID = account["ParentRef"]["ListID"].GetValue();
  const auto lookup = fmt::format("SELECT AccountID FROM AccountList WHERE QBLinkID = '{}';", listID);
  auto parent = RequireScalarFromSQL(lookup);
  if (!parent.empty()) return parent;
  // On a connection of its own: the row in hand is pending on the caller's. What goes wrong has been told.
  (void)PullRecordFromQB(enAccounts, listID, nullptr);
  return RequireScalarFromSQL(lookup);
}

void WriteAccountFields(ado::Recordset& row, const Record& account) {
  const auto names = Split(account["FullName"].GetValue(), ':');
  const auto parent = names.size() > 1 ? ParentKeyOf(account) : std::string();
  WriteCut(row, "AccountName", ReplaceJunkChars(names.back()));
  if (!parent.empty()) WriteCut(row, "ParentAccountID", parent);
  if (const auto type = account["AccountType"]; !type.IsNothing()) {
    const auto number = type.GetInteger();
    row.SetField("AccountTypeID", number < 0 || number > kLastAccountType ? kUnknownAccountType : number);
  }
  GetFields(row, account, kGetAccount);
  WriteInactive(row, account);
}

// To the dependent pull of a further record, too.
void ShowRowToOthers() {
  ReopenGlobalConnection();
  TheDesk().PumpMessages();
}

}  // namespace

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveAccountsToQB(const std::string& strSQL, bool /*optNever*/, bool /*optMostRecent*/, QBSessionManager& session) {
  SendTable(kAccounts, strSQL, /*optNever=*/true, /*optMostRecent=*/false, session);
}

void MoveAccountsToTW(const RecordList& records, bool optNever, bool optMostRecent, Dependent isDependent) {
  GetTable(kAccounts, records, optNever, optMostRecent, isDependent, nullptr);
}

}  // namespace twqb
