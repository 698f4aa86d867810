#include "transactions/modExpenseLog.h"

#include <fmt/core.h>

#include <array>

#include "services/ModuleVariables.h"
#include "transactions/BillReview.h"
#include "transactions/ExpenseLogIn.h"
#include "transactions/ExpenseLogOut.h"

namespace twqb {

namespace {

// The first filter value is the list, quoted as the database wants it.
Sql Passed(std::string_view base, const SavedFilters& filters) {
  if (filters.Filter1a.empty()) return {};
  return Sql("{}WHERE (ELID IN({})) AND (ELPosted = -1) ORDER BY EmployeeID", Sql::Own(base),
             Sql::List(filters.Filter1a));
}

void TellVersion1() {
  if (Vars().g_QBMajorVer != 1) return;
  TheDesk().ShowMessageBox({.text = std::string(kNoExpensesInVersion1), .title = "Error"});
}

constexpr std::array kReads = {
    QuickBooksRead{
        .filterRoutine = "ApplyQBExpenseLogFilters",
        .copyRoutine = "GetQBExpenseLogRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"CheckQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{.names = NamePair::Entities},
    },
    QuickBooksRead{
        .filterRoutine = "ApplyQBExpenseLogFilters",
        .copyRoutine = "GetQBExpenseLogRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"CreditCardChargeQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{},
    },
    QuickBooksRead{
        .filterRoutine = "ApplyQBBillsFilters",
        .copyRoutine = "GetQBBillsRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"BillQueryRq"},
        .choice = "ORBillQuery",
        .transaction = TransactionQuery{.names = NamePair::Entities},
        .ofTheRun = OfTheRun::ActiveLookedUp,
    },
};

constexpr std::array kParents = {RowParent{"ProjectID", "Project", "ProjectID"},
                                 RowParent{"EmployeeID", "Employee", "EmployeeID"},
                                 RowParent{"ExpID", "Expense", "ExpID"}};
constexpr std::array kLines = {KeyPlace{.table = "ExpenseLog", .column = "ELID"}};

}  // namespace

constinit const Table kExpenseLogTable = {
    .number = enExpenseLog,
    .name = "ExpenseLog",
    .names = {.send = "Expense Log", .get = "Expense Log (QB)"},
    .rows = {.table = "ExpenseLog", .madeKey = "ELID"},
    .parents = kParents,
    .selection = {.onlyPassed = true,
                  .base = "SELECT ELID, ExpID, ProjectID, EmployeeID, ELDescription,ELCost, ELMarkup, ELBillable, "
                          "ELDate, ELUnits, ELPosted,isSub, QBLinkID, LastUpdated FROM ExpenseLOG ",
                  .passed = Passed},
    .sends = SentRows::NamedAlone,
    .send = MoveExpenseLogToQB,
    .afterSend = ReviewTransferredBill,
    .lostLink = {.row = "expense",
                 .record = "bill",
                 .keys = {.table = "ExpenseLog", .column = "ELID", .adds = "BillAdd", .condition = "ELPosted = -1"},
                 .lines = kLines,
                 .takeUp = TakeUpExpenseLinks},
    .reads = kReads,
    .beforeReads = TellVersion1,
    .get = MoveExpenseLogToTW,
    .billingDeletion = {.rows = "ExpenseLog"},
    .quickBooksDeletion = {.kind = QuickBooksKind::Transaction, .type = 1},
};

}  // namespace twqb
