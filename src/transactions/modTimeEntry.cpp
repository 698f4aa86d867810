#include "transactions/modTimeEntry.h"

#include <fmt/format.h>

#include <array>

#include "platform/Text.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

constexpr std::array kClauses = {
    Clause{ClauseOn::FromTo, "{K}((TimeEntry.TEDate BETWEEN {a} AND {b})) "},
    Clause{ClauseOn::LastSend,
           "{K}(({P}LastUpdated > {a}) OR ({P}QBLinkID IS NULL) OR ({P}QBLinkID = '') OR ({P}LastUpdated IS NULL)) "},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}((TimeEntry.EmployeeID BETWEEN '{a}' AND '{b}')) "},
    Clause{ClauseOn::Filter2, "{K}(TimeEntry.ProjectID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::Filter3, "{K}(TimeEntry.ActivityID BETWEEN '{a}' AND '{b}') "},
};

// PassedID is a list of identifiers without their braces. Linked entries are selected too.
std::string Passed(std::string_view base, const SavedFilters& /*filters*/) {
  std::string list;
  for (const auto& id : Split(Vars().g_PassedID, ',')) {
    if (!list.empty()) list += ',';
    list += fmt::format("'{{{}}}'", id);
  }
  return fmt::format("{} AND (TimeEntry.TEID IN ({})) ", base, list);
}

// Time entries have no lines, and their query nothing to ask for them with.
constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBTimeEntryFilters",
    .copyRoutine = "GetQBTEInCollectionObject",
    .requests = {"TimeTrackingQueryRq"},
    .choice = "ORTimeTrackingTxnQuery",
    .transaction = TransactionQuery{.includesLineItems = false, .takesTransactionDates = true},
    .readingText = "Reading Time Records from QuickBooks ...",
    .readingFrom = 2,
}};

}  // namespace

constinit const Table kTimeEntriesTable = {
    .number = enTimeEntries,
    .name = "TimeEntries",
    .names = {.send = "Time Entries", .get = "Time Entries(QB)"},
    .rows = {.table = "TimeEntry"},
    .selection =
        {
            // An entry goes to QuickBooks only once: a linked one is not selected again, even if it changed.
            .base = "SELECT TEID, TEDate, TEHours, aHours, TEBill, TEBillRate, TEDescription, TimeEntry.QBLinkID, "
                    "TECompTime, TimeEntry.ProjectID, TimeEntry.EmployeeID, TimeEntry.ActivityID, TEOT, TEPosted, "
                    "TimeEntry.LastUpdated, TEMemo, TimeEntry.TEFlag1, TimeEntry.TEFlag2, TimeEntry.TEFlag3 FROM "
                    "TimeEntry,Project, Employee,Activity WHERE (TimeEntry.ProjectID = Project.ProjectID) AND "
                    "(TimeEntry.EmployeeID =Employee.EmployeeID) AND (TimeEntry.ActivityID =Activity.ActivityID) ",
            .noteColumn = "TEMemo, ",
            .prefix = "TimeEntry.",
            .clauses = kClauses,
            .tail = " AND ((TimeEntry.QBLinkID IS NULL) OR (TimeEntry.QBLinkID = '')) ",
            .passed = Passed,
        },
    .reads = kReads,
    .billingDeletion = {.rows = "TimeEntry"},
    .quickBooksDeletion = {.kind = QuickBooksKind::Transaction, .type = 21},
};

}  // namespace twqb
