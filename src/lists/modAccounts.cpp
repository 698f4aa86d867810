#include "lists/modAccounts.h"

#include <fmt/core.h>

#include <array>
#include <cstdint>
#include <vector>

#include "engine/DependentPull.h"
#include "engine/InvalidReference.h"
#include "lists/ActiveFlag.h"
#include "lists/SharedNames.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

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

constexpr std::array kSendFields = {
    SendField{.path = "AccountNumber", .column = "AccountID"},
    SendField{.path = "AccountType", .column = "AccountTypeID", .convert = TypeOrLast},
    SendField{.path = "Desc", .column = "AccountDesc", .when = SendField::When::NotNull},
    SendField{.path = "OpenBalance", .column = "OpenBalance", .convert = BalanceOrZero},
    SendField{.path = "OpenBalanceDate", .column = "OpenBalanceDate", .convert = DateOrToday},
    SendField{.path = "IsActive", .column = "IsInActive", .convert = ActiveUnlessTrue},
};

constexpr std::array kGetFields = {GetField{.path = "Desc", .column = "AccountDesc"}};

// --- Hooks of the send -----------------------------------------------------------------------------------------------

void ReadAccountRow(const ado::Recordset& row, SendRecord& record) {
  record.countedName = ColumnText(row, "AccountName");
}

// An account whose parent has no link goes to the top level.
void AssignParent(const RequestField& request, const ado::Recordset& row, RequestKind /*kind*/,
                  const SendRecord& /*record*/) {
  // The parent may have been added a moment ago, and takes its time to become readable.
  constexpr std::int64_t kPause = 500;
  const auto parent = row.Field("ParentAccountID");
  if (IsNull(parent)) return;
  TheMachine().Sleep(kPause);
  const auto link =
      RequireScalarFromSQL(Sql("SELECT QBLINKID FROM AccountList WHERE AccountID = '{}';", ToText(parent)));
  if (!link.empty()) request["ParentRef"]["ListID"].SetValue(link);
}

// A name in use is no reason for a second account under another name: the row stays without a link.
std::vector<std::string> NameInUse(const RefusedRequest& refused) {
  return {fmt::format("Adding Account : '{}' already exists in QB", refused.record.countedName)};
}

MessageBox InvalidAccount(const RefusedRequest& refused) {
  return InvalidReference(refused.response,
                          "If this table needs an account, please choose a valid account in the\r\n"
                          "Sync Settings Form.");
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
  const auto lookup = Sql("SELECT AccountID FROM AccountList WHERE QBLinkID = '{}';", listID);
  auto parent = RequireScalarFromSQL(lookup);
  if (!parent.empty()) return parent;
  // On a connection of its own: the row in hand is pending on the caller's. What goes wrong has been told.
  (void)PullRecordFromQB(enAccounts, listID, nullptr);
  return RequireScalarFromSQL(lookup);
}

void WriteNameAndType(ado::Recordset& row, const Record& account) {
  const auto names = Split(account["FullName"].GetValue(), ':');
  const auto parent = names.size() > 1 ? ParentKeyOf(account) : std::string();
  WriteCut(row, "AccountName", ReplaceJunkChars(names.back()));
  if (!parent.empty()) WriteCut(row, "ParentAccountID", parent);
  if (const auto type = account["AccountType"]; !type.IsNothing()) {
    const auto number = type.GetInteger();
    row.SetField("AccountTypeID", number < 0 || number > kLastAccountType ? kUnknownAccountType : number);
  }
}

// To the dependent pull of a further record, too.
void ShowRowToOthers() {
  ReopenGlobalConnection();
  TheDesk().PumpMessages();
}

// --- Description -----------------------------------------------------------------------------------------------------

constexpr std::array kRules = {
    StatusRule{.status = status::kNameInUse, .log = NameInUse},
    StatusRule{.status = status::kInvalidReference, .then = Refusal::LeaveTable, .box = InvalidAccount},
    StatusRule{.then = Refusal::AskInItsOwnBox},
};

// Errors are reported under the names of the activities' routines; support knows the reports by them.
constexpr ListTable kAccounts = {
    .tableName = "AccountList",
    .keyColumn = "AccountID",
    .fallbackDateColumn = "LastUpdated",
    .send =
        {
            .texts = {.routine = "MoveActivityToQB",
                      .shown = "Sending Accounts to QuickBooks...",
                      .log = "Error in Account transfer to QB. Account ID = "},
            .recordLabel = "Account ID",
            .addRequest = "AccountAddRq",
            .progressColumn = "AccountName",
            .fields = kSendFields,
            .rules = kRules,
            .readRow = ReadAccountRow,
            .fillMore = AssignParent,
        },
    .get =
        {
            .texts = {.routine = "MoveActivitiesToTW",
                      .shown = "Getting Accounts from QuickBooks...",
                      .log = "Error in Accounts transfer to Tallywick. Account = "},
            .nameField = "FullName",
            .progressFrom = 1,
            .fields = kGetFields,
            .addRow = AddAccountRow,
            .writeFirst = WriteNameAndType,
            .writeLast = WriteInactive,
            .afterUpdate = ShowRowToOthers,
        },
};

constexpr std::array kClauses = {
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}(AccountName BETWEEN '{a}' AND '{b}') "},
};

// The names in the error reports are those of the activities, as above.
constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBActivityFilters",
    .copyRoutine = "GetQBActivityRecordsInCollectionObject",
    .requests = {"AccountQueryRq"},
    .choice = "ORAccountListQuery",
    .readingText = "Reading Accounts from QuickBooks...",
    .readingFrom = 2,
}};

constexpr std::array kParents = {RowParent{"ParentAccountID", "AccountList", "AccountID"}};
constexpr std::array<std::string_view, 1> kAccountCalled = {"Name"};

}  // namespace

constinit const Table kAccountsTable = {
    .number = enAccounts,
    .name = "Accounts",
    .names = {.send = "Accounts", .get = "Accounts(QB)"},
    .rows = {.table = "AccountList"},
    .parents = kParents,
    .selection =
        {
            .base = "SELECT AccountID, AccountTypeID, AccountName, ParentAccountID, AccountDesc,IsInActive, "
                    "OpenBalance, OpenBalanceDate, QBLinkID, LastUpdated FROM AccountList ",
            .clauses = kClauses,
        },
    .send = MoveAccountsToQB,
    .lostLink = {.row = "account",
                 .record = "account",
                 .keys = {.table = "AccountList", .column = "AccountID", .adds = "AccountAdd"},
                 .called = {.elements = kAccountCalled, .sharing = kListsOfAccounts, .number = "AccountNumber"},
                 .takeUp = [](const LostAddition& lost) { return TakeUpListLink(kAccountsTable, kAccounts, lost); }},
    .reads = kReads,
    .get = MoveAccountsToTW,
};

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveAccountsToQB(const SendCall& call) {
  SendList(kAccountsTable, kAccounts,
           {.sql = call.sql, .rule = TwinRule::LeaveAlone, .session = call.session, .run = call.run});
}

void MoveAccountsToTW(const GetCall& call) {
  auto own = call;
  own.connection = nullptr;
  GetList(kAccounts, own);
}

}  // namespace twqb
