#include "transactions/modlVendorBills.h"

#include <fmt/core.h>

#include <array>

#include "platform/Text.h"
#include "services/ModuleVariables.h"
#include "transactions/VendorBillsIn.h"
#include "transactions/VendorBillsOut.h"

namespace twqb {

namespace {

constexpr std::array kClauses = {
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}(VendorID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::RangeOnFromTo, "{K}(BillDate BETWEEN {a} AND {b})"},
};

// The first filter value is the identifier; Jet gets literals that bring their own marks, a server what stands between
// the first mark and the last: {A}','{B} names two.
Sql Passed(std::string_view base, const SavedFilters& filters) {
  if (filters.Filter1a.empty()) return {};
  const auto& id = filters.Filter1a;
  return Sql("{}WHERE (VendorBillID IN({})) ORDER BY BillNumber", Sql::Own(base),
             Sql::List(UpperCase(Vars().g_DbKind) == "SQL" ? "'" + id + "'" : id));
}

constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBBillsFilters",
    .copyRoutine = "GetQBBillsRecordsInCollectionObject",
    .errors = ErrorReport::OwnBox,
    .requests = {"BillQueryRq"},
    .choice = "ORBillQuery",
    .transaction = TransactionQuery{.takesTransactionDates = true, .names = NamePair::Entities},
}};

constexpr std::array kParents = {RowParent{"VendorID", "Employee", "EmployeeID"}};
constexpr std::array kLines = {KeyPlace{.table = "TimeEntry", .column = "TEID"},
                               KeyPlace{.table = "ExpenseLog", .column = "ELID"}};

}  // namespace

constinit const Table kVendorBillTable = {
    .number = enVendorBill,
    .name = "VendorBill",
    .names = {.send = "Vendor Bill", .get = "Vendor Bill(QB)"},
    .rows = {.table = "VendorBill", .madeKey = "VendorBillID"},
    .parents = kParents,
    .selection = {.base = "SELECT VendorBillID, BillNumber, BillDate, VendorID, BillMemo,BillDueDate, BillRef, "
                          "QBLinkID, LastUpdated FROM VendorBill ",
                  .clauses = kClauses,
                  .passed = Passed},
    .send = MoveVendorBillToQB,
    .lostLink = {.row = "vendor bill",
                 .record = "bill",
                 .keys = {.table = "VendorBill", .column = "VendorBillID", .adds = "BillAdd"},
                 .lines = kLines,
                 .takeUp = TakeUpVendorBillLinks},
    .reads = kReads,
    .get = MoveVendorBillToTW,
};

}  // namespace twqb
