#include "engine/SelectionTables.h"

#include <fmt/format.h>

#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

// Changed since the last send, never linked, or without a date.
constexpr std::string_view kLastSend =
    "{K}(({P}LastUpdated > {a}) OR {P}QBLinkID IS NULL OR {P}QBLinkID = '' OR {P}LastUpdated IS NULL) ";
constexpr std::string_view kRange = "{K}({P}LastUpdated BETWEEN {a} AND {b})";

// Employees and vendors live in one table; a flag tells them apart.
constexpr std::string_view kEmployeeBase =
    "SELECT EmpCity, EmpContactPhone, EmpDateHired, EmpDateReleased, EmpEmail, EmpFName, EmpHPhone, EmpHFax, EmpLName, "
    "EmployeeID, EmpMI, EmpSSN, EmpSalt, EmpState, EmpStreet, EmpStreet2, EmpZip, LastUpdated, QBLinkID, EmpCompany, "
    "Status, MobileNumber FROM Employee ";
constexpr Clause kEmployeeClauses[] = {
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, "{K}({P}LastUpdated BETWEEN {a} AND {b}) "},
    {ClauseOn::Filter1, "{K}(EmployeeID BETWEEN '{a}' AND '{b}') "},
    {ClauseOn::Filter2,
     "{K}(EmployeeID IN (SELECT EmployeeID FROM EmployeeGroupDetail  WHERE EGID BETWEEN '{a}' AND '{b}')) "},
};
constexpr std::string_view kActiveEmployees = " AND (Employee.Status IS NULL OR Employee.Status = 'Active') ";

constexpr Clause kClientClauses[] = {
    {ClauseOn::LastSend,
     "{K}(({P}LastUpdated > {a})  OR {P}QBLinkID IS NULL OR {P}QBLinkID = '' OR {P}LastUpdated IS NULL) "},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}ClientID BETWEEN '{a}' AND '{b}' "},
    {ClauseOn::Filter2,
     "{K}(ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr Clause kProjectClauses[] = {
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}Project.ProjectID BETWEEN '{a}' AND '{b}' "},
    {ClauseOn::Filter2,
     "{K}(Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN '{a}' AND '{b}')) "},
    {ClauseOn::Filter3, "{K}Project.EmployeeID BETWEEN '{a}' AND '{b}' "},
};

constexpr Clause kActivityClauses[] = {
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}(Activity.ActivityID BETWEEN '{a}' AND '{b}') "},
    {ClauseOn::Filter2,
     "{K}(Activity.ActivityID IN(SELECT ActivityID FROM ActivityGroupDetail  WHERE AGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr Clause kExpenseCodeClauses[] = {
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}(Expense.ExpID BETWEEN '{a}' AND '{b}') "},
    {ClauseOn::Filter2,
     "{K}(Expense.ExpID IN(SELECT ExpID FROM ExpenseGroupDetail  WHERE XGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr Clause kAccountClauses[] = {
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}(AccountName BETWEEN '{a}' AND '{b}') "},
};

constexpr Clause kTimeEntryClauses[] = {
    {ClauseOn::FromTo, "{K}((TimeEntry.TEDate BETWEEN {a} AND {b})) "},
    {ClauseOn::LastSend,
     "{K}(({P}LastUpdated > {a}) OR ({P}QBLinkID IS NULL) OR ({P}QBLinkID = '') OR ({P}LastUpdated IS NULL)) "},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}((TimeEntry.EmployeeID BETWEEN '{a}' AND '{b}')) "},
    {ClauseOn::Filter2, "{K}(TimeEntry.ProjectID BETWEEN '{a}' AND '{b}') "},
    {ClauseOn::Filter3, "{K}(TimeEntry.ActivityID BETWEEN '{a}' AND '{b}') "},
};

constexpr Clause kInvoiceClauses[] = {
    {ClauseOn::FromTo, "{K}(TransactionTable.InvoiceDate BETWEEN {a} AND {b}) "},
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}(TransactionTable.ProjectID BETWEEN '{a}' AND '{b}') "},
    {ClauseOn::Filter2, "{K}(TransactionTable.ClientID BETWEEN '{a}' AND '{b}') "},
    {ClauseOn::Filter3,
     "{K}(Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr Clause kPaymentClauses[] = {
    {ClauseOn::FromTo, "{K}(Payment.PayDate BETWEEN {a} AND {b}) "},
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}(Payment.ClientID BETWEEN '{a}' AND '{b}') "},
    // "PAyment": names are compared without case.
    {ClauseOn::Filter2,
     "{K}(PAyment.ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr Clause kVendorBillClauses[] = {
    {ClauseOn::LastSend, kLastSend},
    {ClauseOn::Range, kRange},
    {ClauseOn::Filter1, "{K}(VendorID BETWEEN '{a}' AND '{b}') "},
    {ClauseOn::RangeOnFromTo, "{K}(BillDate BETWEEN {a} AND {b})"},
};

// The first filter value is the list, quoted as the database wants it.
std::string PassedExpenses(std::string_view base, const SavedFilters& filters) {
  if (filters.Filter1a.empty()) return {};
  return fmt::format("{}WHERE (ELID IN({})) AND (ELPosted = -1) ORDER BY EmployeeID", base, filters.Filter1a);
}

// PassedID is a list of identifiers without their braces. Linked entries are selected too.
std::string PassedTimeEntries(std::string_view base, const SavedFilters& /*filters*/) {
  std::string list;
  for (const auto& id : Split(Vars().g_PassedID, ',')) {
    if (!list.empty()) list += ',';
    list += fmt::format("'{{{}}}'", id);
  }
  return fmt::format("{} AND (TimeEntry.TEID IN ({})) ", base, list);
}

// PassedID is a project and an invoice number. Without the number all invoices are selected.
std::string PassedInvoice(std::string_view base, const SavedFilters& /*filters*/) {
  const auto parts = Split(Vars().g_PassedID, ',');
  if (parts.size() < 2) return std::string(base);
  return fmt::format("{}AND (TransactionTable.ProjectID = '{}') AND (TransactionTable.TransactionInvNum = '{}')", base,
                     FixQuote(parts[0]), FixQuote(parts[1]));
}

// The first filter value is the identifier; Jet gets a literal that brings its own marks.
std::string PassedVendorBill(std::string_view base, const SavedFilters& filters) {
  if (filters.Filter1a.empty()) return {};
  const std::string_view quote = UpperCase(Vars().g_DbKind) == "SQL" ? "'" : "";
  return fmt::format("{0}WHERE (VendorBillID IN({1}{2}{1})) ORDER BY BillNumber", base, quote, filters.Filter1a);
}

constexpr Selection kSelections[] = {
    {
        .table = enEmployees,
        .base = kEmployeeBase,
        .where = " WHERE IsSub = 0 ",
        .clauses = kEmployeeClauses,
        .activeOnly = kActiveEmployees,
    },
    {
        .table = enVendors,
        .base = kEmployeeBase,
        .where = " WHERE IsSub = -1 ",
        .clauses = kEmployeeClauses,
        .activeOnly = kActiveEmployees,
    },
    {
        .table = enClients,
        .base = "SELECT ClientID, ClientFName, ClientLName, ClientMI, ClientCompany, ClientStreet, ClientStreet2, "
                "ClientCity, ClientState, ClientZip,ClientPhone, ClientMainPhone, ClientFax, ClientEmail, QBLinkID, "
                "LastUpdated, ClientSince, ClientMainSalt FROM Client ",
        .clauses = kClientClauses,
        .activeOnly = " AND (Client.Status IS NULL OR Client.Status = 'Active') ",
    },
    {
        // A project that shares its client's link is the client's default job and is not sent. Parents come before
        // their phases.
        .table = enProjects,
        .base = "SELECT Client.QBLinkID AS ClientQBLinkID, Project.QBLinkID AS ProjectQBLInkID, Project.LastUpdated, "
                "ProjectCity, Project.EmployeeID, ProjectID, ProjectName, ProjectStartDate, ProjectState, "
                "ProjectStatus, ProjectStreet, ProjectStreet2, ProjectZip, ProjectMemo, Project.ClientID AS "
                "ProjClientID, ProjectIsPhase, ParentProjectID FROM Project, Client WHERE (Client.ClientID = "
                "Project.ClientID)  AND ((Client.QBLinkID <> Project.QBLinkID) OR (Project.QBLinkID = '' OR "
                "Project.QBLinkID Is NULL)) ",
        .prefix = "Project.",
        .clauses = kProjectClauses,
        .activeOnly = " AND (Project.ProjectStatus IS NULL OR Project.ProjectStatus = 'Active' OR "
                      "Project.ProjectStatus = 'Main') ",
        .tail = " ORDER BY Project.ProjectIsPhase DESC ",
    },
    {
        .table = enActivities,
        .base = "SELECT ActivityID, QBLinkID, ActivityDescription,LastUpdated, AC_CostRate, AC_BillRate, IsInActive, "
                "QBAccountID1, QBAccountID2 FROM Activity ",
        .prefix = "Activity.",
        .clauses = kActivityClauses,
        .activeOnly = " AND (Activity.IsInActive IS NULL OR Activity.IsInActive = 0) ",
    },
    {
        .table = enExpenseCodes,
        .base = "SELECT ExpID, ExpCode, ExpSub, ExpDescription, ExpCost, ExpMarkup,  LastUpdated, QBLinkID, "
                "IsInActive, QBAccountID1, QBAccountID2 FROM Expense ",
        .clauses = kExpenseCodeClauses,
        .activeOnly = " AND (Expense.IsInActive IS NULL OR Expense.IsInActive = 0) ",
    },
    {
        .table = enAccounts,
        .base = "SELECT AccountID, AccountTypeID, AccountName, ParentAccountID, AccountDesc,IsInActive, OpenBalance, "
                "OpenBalanceDate, QBLinkID, LastUpdated FROM AccountList ",
        .clauses = kAccountClauses,
    },
    {
        .table = enExpenseLog,
        .onlyPassed = true,
        .base = "SELECT ELID, ExpID, ProjectID, EmployeeID, ELDescription,ELCost, ELMarkup, ELBillable, ELDate, "
                "ELUnits, ELPosted,isSub, QBLinkID, LastUpdated FROM ExpenseLOG ",
        .passed = PassedExpenses,
    },
    {
        // An entry goes to QuickBooks only once: a linked one is not selected again, even if it changed.
        .table = enTimeEntries,
        .base = "SELECT TEID, TEDate, TEHours, aHours, TEBill, TEBillRate, TEDescription, TimeEntry.QBLinkID, "
                "TECompTime, TimeEntry.ProjectID, TimeEntry.EmployeeID, TimeEntry.ActivityID, TEOT, TEPosted, "
                "TimeEntry.LastUpdated, TEMemo, TimeEntry.TEFlag1, TimeEntry.TEFlag2, TimeEntry.TEFlag3 FROM "
                "TimeEntry,Project, Employee,Activity WHERE (TimeEntry.ProjectID = Project.ProjectID) AND "
                "(TimeEntry.EmployeeID =Employee.EmployeeID) AND (TimeEntry.ActivityID =Activity.ActivityID) ",
        .noteColumn = "TEMemo, ",
        .prefix = "TimeEntry.",
        .clauses = kTimeEntryClauses,
        .tail = " AND ((TimeEntry.QBLinkID IS NULL) OR (TimeEntry.QBLinkID = '')) ",
        .passed = PassedTimeEntries,
    },
    {
        // Neither drafts, nor the rows of retainers, nor the allocations of payments.
        .table = enInvoices,
        .base = "SELECT TransactionID, TransactionTable.QBLinkID as TransactionTableQBLinkID, "
                "TransactionTable.LastUpdated, TransactionTable.ClientID, TransactionInvNum, "
                "TransactionTable.ProjectID, TransactionInvBillAmt, InvoiceDate, TransactionTable.TransactionDate, "
                "TransactionInvDiscount,InvRetainerAmtApplied, TransactionManInvMiscAmt,TransactionManInvPaidToday,"
                "ServiceAmt, ServiceTaxAmt, ExpAmt,ExpTaxAmt,MainServiceTaxAmt, MainExpenseTaxAmt,TransactionMemo, "
                "TransactionManInv, Client.QBLinkID as ClientQBLinkID, Client.ClientCompany, Client.ClientStreet, "
                "Client.ClientStreet2, Client.ClientCity, Client.ClientState, Client.ClientZip, Project.QBLinkID as "
                "ProjectQBLInkID, TransactionTable.TransactionInvSendBillFlag FROM TransactionTable,Client,Project "
                "WHERE ((TransactionTable.ProjectID=Project.ProjectID) AND (TransactionTable.IsDraft<> -1) AND "
                "(TransactionTable.TransactionInvNum <>'0') AND (TransactionTable.PayID IS NULL) AND "
                "(Project.ClientID = Client.ClientID)) ",
        .prefix = "TransactionTable.",
        .clauses = kInvoiceClauses,
        .passed = PassedInvoice,
    },
    {
        .table = enPayments,
        .base = "SELECT PayID, PayRetainer, PayDate, PayAmt, PayMethod, PayMemo, Payment.ClientID,  "
                "Client.ClientCompany, Payment.LastUpdated, Payment.QBLinkID, PayRef  FROM Payment, Client WHERE "
                "(Client.ClientID = Payment.ClientID)  AND PayMethod <> '6' ",
        .prefix = "Payment.",
        .clauses = kPaymentClauses,
    },
    {
        .table = enVendorBill,
        .base = "SELECT VendorBillID, BillNumber, BillDate, VendorID, BillMemo,BillDueDate, BillRef, QBLinkID, "
                "LastUpdated FROM VendorBill ",
        .clauses = kVendorBillClauses,
        .passed = PassedVendorBill,
    },
};

}  // namespace

const Selection* FindSelection(std::int32_t table) {
  for (const auto& selection : kSelections) {
    if (selection.table == table) return &selection;
  }
  return nullptr;
}

}  // namespace twqb
