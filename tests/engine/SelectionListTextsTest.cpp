// The statements that select employees, vendors, projects, activities, expense codes and accounts to send: their texts
// byte for byte, each taken by a real database.

#include "tests/engine/SelectionBases.h"
#include "tests/engine/SelectionHouse.h"

namespace twqb {
namespace {

// What employees and vendors have in common stands behind the test that tells them apart.
const SelectionCorner kPeople[] = {
    {.what = "all", .statement = ";"},
    {.what = "last send",
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " AND ((LastUpdated > '03/04/2008 21:05:06') OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS "
                  "NULL) ;"},
    {.what = "last send with number signs",
     .provider = kJet,
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " AND ((LastUpdated > #03/04/2008 21:05:06#) OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS "
                  "NULL) ;"},
    {.what = "a range closes with a blank here alone",
     .sentAt = "3/4/2008",
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " AND (LastUpdated BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00') ;"},
    {.what = "keys",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " AND (EmployeeID BETWEEN 'A' AND 'M') ;"},
    {.what = "groups",
     .filters = {.Filter2a = "G", .Filter2b = "H"},
     .statement =
         " AND (EmployeeID IN (SELECT EmployeeID FROM EmployeeGroupDetail  WHERE EGID BETWEEN 'G' AND 'H')) ;"},
    {.what = "the third pair and the second dates have no clause",
     .filters = {.Filter3a = "P", .Filter3b = "Q", .From = "1/1/2008", .To = "1/2/2008"},
     .statement = ";"},
    {.what = "active only",
     .filters = {.ActiveOnly = true},
     .statement = " AND (Employee.Status IS NULL OR Employee.Status = 'Active') ;"},
    {.what = "all together",
     .provider = kJet,
     .filters = {.Date1a = "1/2/2008",
                 .Date1b = "2/3/2008",
                 .Filter1a = "A",
                 .Filter2a = "G",
                 .Filter1b = "M",
                 .Filter2b = "H",
                 .ActiveOnly = true},
     .statement = " AND (LastUpdated BETWEEN #01/02/2008 00:00:00# AND #02/04/2008 00:00:00#) "
                  " AND (EmployeeID BETWEEN 'A' AND 'M') "
                  " AND (EmployeeID IN (SELECT EmployeeID FROM EmployeeGroupDetail  WHERE EGID BETWEEN 'G' AND 'H')) "
                  " AND (Employee.Status IS NULL OR Employee.Status = 'Active') ;"},
};

TEST(EmployeeSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enEmployees, "Employees", kEmployeeBase, kPeople);
}

TEST(VendorSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enVendors, "Vendors", kVendorBase, kPeople);
}

const SelectionCorner kProjects[] = {
    {.what = "all, parents first", .statement = " ORDER BY Project.ProjectIsPhase DESC ;"},
    {.what = "last send",
     .provider = kJet,
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " AND ((Project.LastUpdated > #03/04/2008 21:05:06#) OR Project.QBLinkID IS NULL OR "
                  "Project.QBLinkID = '' OR Project.LastUpdated IS NULL)  ORDER BY Project.ProjectIsPhase DESC ;"},
    {.what = "range",
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " AND (Project.LastUpdated BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00') ORDER BY "
                  "Project.ProjectIsPhase DESC ;"},
    {.what = "keys, without parentheses",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " AND Project.ProjectID BETWEEN 'A' AND 'M'  ORDER BY Project.ProjectIsPhase DESC ;"},
    {.what = "groups",
     .filters = {.Filter2a = "G", .Filter2b = "H"},
     .statement = " AND (Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN 'G' AND "
                  "'H'))  ORDER BY Project.ProjectIsPhase DESC ;"},
    {.what = "managers",
     .filters = {.Filter3a = "P", .Filter3b = "Q"},
     .statement = " AND Project.EmployeeID BETWEEN 'P' AND 'Q'  ORDER BY Project.ProjectIsPhase DESC ;"},
    {.what = "active only",
     .filters = {.ActiveOnly = true},
     .statement = " AND (Project.ProjectStatus IS NULL OR Project.ProjectStatus = 'Active' OR Project.ProjectStatus = "
                  "'Main')  ORDER BY Project.ProjectIsPhase DESC ;"},
    {.what = "the second dates have no clause",
     .filters = {.From = "1/1/2008", .To = "1/2/2008"},
     .statement = " ORDER BY Project.ProjectIsPhase DESC ;"},
    {.what = "all together",
     .sentAt = "3/4/2008",
     .filters = {.Filter1a = "A",
                 .Filter2a = "G",
                 .Filter3a = "P",
                 .Filter1b = "M",
                 .Filter2b = "H",
                 .Filter3b = "Q",
                 .ActiveOnly = true},
     .statement = " AND ((Project.LastUpdated > '03/04/2008 00:00:00') OR Project.QBLinkID IS NULL OR "
                  "Project.QBLinkID = '' OR Project.LastUpdated IS NULL) "
                  " AND Project.ProjectID BETWEEN 'A' AND 'M' "
                  " AND (Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN 'G' AND "
                  "'H')) "
                  " AND Project.EmployeeID BETWEEN 'P' AND 'Q' "
                  " AND (Project.ProjectStatus IS NULL OR Project.ProjectStatus = 'Active' OR Project.ProjectStatus = "
                  "'Main') "
                  " ORDER BY Project.ProjectIsPhase DESC ;"},
};

TEST(ProjectSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enProjects, "Projects", kProjectBase, kProjects);
}

const SelectionCorner kActivities[] = {
    {.what = "all", .statement = ";"},
    {.what = "last send",
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " WHERE ((Activity.LastUpdated > '03/04/2008 21:05:06') OR Activity.QBLinkID IS NULL OR "
                  "Activity.QBLinkID = '' OR Activity.LastUpdated IS NULL) ;"},
    {.what = "range",
     .provider = kJet,
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " WHERE (Activity.LastUpdated BETWEEN #01/02/2008 00:00:00# AND #02/04/2008 00:00:00#);"},
    {.what = "keys",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " WHERE (Activity.ActivityID BETWEEN 'A' AND 'M') ;"},
    {.what = "groups",
     .filters = {.Filter2a = "G", .Filter2b = "H"},
     .statement = " WHERE (Activity.ActivityID IN(SELECT ActivityID FROM ActivityGroupDetail  WHERE AGID BETWEEN 'G' "
                  "AND 'H')) ;"},
    {.what = "the third pair and the second dates have no clause",
     .filters = {.Filter3a = "P", .Filter3b = "Q", .From = "1/1/2008", .To = "1/2/2008"},
     .statement = ";"},
    {.what = "active only behind keys",
     .filters = {.Filter1a = "A", .Filter1b = "M", .ActiveOnly = true},
     .statement = " WHERE (Activity.ActivityID BETWEEN 'A' AND 'M')  AND (Activity.IsInActive IS NULL OR "
                  "Activity.IsInActive = 0) ;"},
    {.what = "all together",
     .sentAt = "3/4/2008",
     .filters = {.Filter1a = "A", .Filter2a = "G", .Filter1b = "M", .Filter2b = "H", .ActiveOnly = true},
     .statement = " WHERE ((Activity.LastUpdated > '03/04/2008 00:00:00') OR Activity.QBLinkID IS NULL OR "
                  "Activity.QBLinkID = '' OR Activity.LastUpdated IS NULL) "
                  " AND (Activity.ActivityID BETWEEN 'A' AND 'M') "
                  " AND (Activity.ActivityID IN(SELECT ActivityID FROM ActivityGroupDetail  WHERE AGID BETWEEN 'G' "
                  "AND 'H')) "
                  " AND (Activity.IsInActive IS NULL OR Activity.IsInActive = 0) ;"},
};

TEST(ActivitySelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enActivities, "Activities", kActivityBase, kActivities);
}

const SelectionCorner kExpenseCodes[] = {
    {.what = "all", .statement = ";"},
    {.what = "last send",
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " WHERE ((LastUpdated > '03/04/2008 21:05:06') OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated "
                  "IS NULL) ;"},
    {.what = "range",
     .provider = kJet,
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " WHERE (LastUpdated BETWEEN #01/02/2008 00:00:00# AND #02/04/2008 00:00:00#);"},
    {.what = "keys",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " WHERE (Expense.ExpID BETWEEN 'A' AND 'M') ;"},
    {.what = "groups",
     .filters = {.Filter2a = "G", .Filter2b = "H"},
     .statement = " WHERE (Expense.ExpID IN(SELECT ExpID FROM ExpenseGroupDetail  WHERE XGID BETWEEN 'G' AND 'H')) ;"},
    {.what = "the third pair and the second dates have no clause",
     .filters = {.Filter3a = "P", .Filter3b = "Q", .From = "1/1/2008", .To = "1/2/2008"},
     .statement = ";"},
    {.what = "active only behind groups",
     .filters = {.Filter2a = "G", .Filter2b = "H", .ActiveOnly = true},
     .statement = " WHERE (Expense.ExpID IN(SELECT ExpID FROM ExpenseGroupDetail  WHERE XGID BETWEEN 'G' AND 'H')) "
                  " AND (Expense.IsInActive IS NULL OR Expense.IsInActive = 0) ;"},
    {.what = "all together",
     .provider = kJet,
     .sentAt = "3/4/2008",
     .filters = {.Filter1a = "A", .Filter2a = "G", .Filter1b = "M", .Filter2b = "H", .ActiveOnly = true},
     .statement = " WHERE ((LastUpdated > #03/04/2008 00:00:00#) OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated "
                  "IS NULL) "
                  " AND (Expense.ExpID BETWEEN 'A' AND 'M') "
                  " AND (Expense.ExpID IN(SELECT ExpID FROM ExpenseGroupDetail  WHERE XGID BETWEEN 'G' AND 'H')) "
                  " AND (Expense.IsInActive IS NULL OR Expense.IsInActive = 0) ;"},
};

TEST(ExpenseCodeSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enExpenseCodes, "Expense Codes", kExpenseCodeBase, kExpenseCodes);
}

const SelectionCorner kAccounts[] = {
    {.what = "all", .statement = ";"},
    {.what = "last send",
     .provider = kJet,
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " WHERE ((LastUpdated > #03/04/2008 21:05:06#) OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated "
                  "IS NULL) ;"},
    {.what = "range",
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " WHERE (LastUpdated BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00');"},
    {.what = "names",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " WHERE (AccountName BETWEEN 'A' AND 'M') ;"},
    {.what = "nothing else has a clause, active only neither",
     .filters = {.Filter2a = "G",
                 .Filter3a = "P",
                 .Filter2b = "H",
                 .Filter3b = "Q",
                 .From = "1/1/2008",
                 .To = "1/2/2008",
                 .ActiveOnly = true},
     .statement = ";"},
    {.what = "all together",
     .sentAt = "3/4/2008",
     .filters = {.Filter1a = "A", .Filter1b = "M", .ActiveOnly = true},
     .statement = " WHERE ((LastUpdated > '03/04/2008 00:00:00') OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated "
                  "IS NULL)  AND (AccountName BETWEEN 'A' AND 'M') ;"},
};

TEST(AccountSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enAccounts, "Accounts", kAccountBase, kAccounts);
}

TEST(Selection, Active_only_alone_on_a_table_without_WHERE_is_a_statement_that_no_database_takes) {
  const auto alone = [](std::string statement) {
    return std::array{
        SelectionCorner{.what = "SQL", .filters = {.ActiveOnly = true}, .statement = statement},
        SelectionCorner{.what = "JET", .provider = kJet, .filters = {.ActiveOnly = true}, .statement = statement}};
  };
  ExpectSelections(enClients, "Clients", kClientBase,
                   alone(" AND (Client.Status IS NULL OR Client.Status = 'Active') ;"), Taken::No);
  ExpectSelections(enActivities, "Activities", kActivityBase,
                   alone(" AND (Activity.IsInActive IS NULL OR Activity.IsInActive = 0) ;"), Taken::No);
  ExpectSelections(enExpenseCodes, "Expense Codes", kExpenseCodeBase,
                   alone(" AND (Expense.IsInActive IS NULL OR Expense.IsInActive = 0) ;"), Taken::No);
}

}  // namespace
}  // namespace twqb
