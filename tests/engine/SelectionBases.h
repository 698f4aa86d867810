// The fronts of the selection statements, up to the first clause, as the tests expect them.
#pragma once

#include <string>

namespace twqb {

inline const std::string kEmployeeBase =
    "SELECT EmpCity, EmpContactPhone, EmpDateHired, EmpDateReleased, EmpEmail, EmpFName, EmpHPhone, EmpHFax, "
    "EmpLName, EmployeeID, EmpMI, EmpSSN, EmpSalt, EmpState, EmpStreet, EmpStreet2, EmpZip, LastUpdated, QBLinkID, "
    "EmpCompany, Status, MobileNumber FROM Employee  WHERE IsSub = 0 ";

inline const std::string kVendorBase =
    "SELECT EmpCity, EmpContactPhone, EmpDateHired, EmpDateReleased, EmpEmail, EmpFName, EmpHPhone, EmpHFax, "
    "EmpLName, EmployeeID, EmpMI, EmpSSN, EmpSalt, EmpState, EmpStreet, EmpStreet2, EmpZip, LastUpdated, QBLinkID, "
    "EmpCompany, Status, MobileNumber FROM Employee  WHERE IsSub = -1 ";

inline const std::string kClientBase =
    "SELECT ClientID, ClientFName, ClientLName, ClientMI, ClientCompany, ClientStreet, ClientStreet2, ClientCity, "
    "ClientState, ClientZip,ClientPhone, ClientMainPhone, ClientFax, ClientEmail, QBLinkID, LastUpdated, "
    "ClientSince, ClientMainSalt FROM Client ";

inline const std::string kProjectBase =
    "SELECT Client.QBLinkID AS ClientQBLinkID, Project.QBLinkID AS ProjectQBLInkID, Project.LastUpdated, "
    "ProjectCity, Project.EmployeeID, ProjectID, ProjectName, ProjectStartDate, ProjectState, ProjectStatus, "
    "ProjectStreet, ProjectStreet2, ProjectZip, ProjectMemo, Project.ClientID AS ProjClientID, ProjectIsPhase, "
    "ParentProjectID FROM Project, Client WHERE (Client.ClientID = Project.ClientID)  AND ((Client.QBLinkID <> "
    "Project.QBLinkID) OR (Project.QBLinkID = '' OR Project.QBLinkID Is NULL)) ";

inline const std::string kActivityBase =
    "SELECT ActivityID, QBLinkID, ActivityDescription,LastUpdated, AC_CostRate, AC_BillRate, IsInActive, "
    "QBAccountID1, QBAccountID2 FROM Activity ";

inline const std::string kExpenseCodeBase =
    "SELECT ExpID, ExpCode, ExpSub, ExpDescription, ExpCost, ExpMarkup,  LastUpdated, QBLinkID, IsInActive, "
    "QBAccountID1, QBAccountID2 FROM Expense ";

inline const std::string kAccountBase =
    "SELECT AccountID, AccountTypeID, AccountName, ParentAccountID, AccountDesc,IsInActive, OpenBalance, "
    "OpenBalanceDate, QBLinkID, LastUpdated FROM AccountList ";

inline const std::string kExpenseLogBase =
    "SELECT ELID, ExpID, ProjectID, EmployeeID, ELDescription,ELCost, ELMarkup, ELBillable, ELDate, ELUnits, "
    "ELPosted,isSub, QBLinkID, LastUpdated FROM ExpenseLOG ";

inline const std::string kTimeEntryBase =
    "SELECT TEID, TEDate, TEHours, aHours, TEBill, TEBillRate, TEDescription, TimeEntry.QBLinkID, TECompTime, "
    "TimeEntry.ProjectID, TimeEntry.EmployeeID, TimeEntry.ActivityID, TEOT, TEPosted, TimeEntry.LastUpdated, "
    "TimeEntry.TEFlag1, TimeEntry.TEFlag2, TimeEntry.TEFlag3 FROM TimeEntry,Project, Employee,Activity WHERE "
    "(TimeEntry.ProjectID = Project.ProjectID) AND (TimeEntry.EmployeeID =Employee.EmployeeID) AND "
    "(TimeEntry.ActivityID =Activity.ActivityID) ";

// While notes are mapped.
inline const std::string kNotedTimeEntryBase =
    "SELECT TEID, TEDate, TEHours, aHours, TEBill, TEBillRate, TEDescription, TimeEntry.QBLinkID, TECompTime, "
    "TimeEntry.ProjectID, TimeEntry.EmployeeID, TimeEntry.ActivityID, TEOT, TEPosted, TimeEntry.LastUpdated, "
    "TEMemo, TimeEntry.TEFlag1, TimeEntry.TEFlag2, TimeEntry.TEFlag3 FROM TimeEntry,Project, Employee,Activity "
    "WHERE (TimeEntry.ProjectID = Project.ProjectID) AND (TimeEntry.EmployeeID =Employee.EmployeeID) AND "
    "(TimeEntry.ActivityID =Activity.ActivityID) ";

inline const std::string kInvoiceBase =
    "SELECT TransactionID, TransactionTable.QBLinkID as TransactionTableQBLinkID, TransactionTable.LastUpdated, "
    "TransactionTable.ClientID, TransactionInvNum, TransactionTable.ProjectID, TransactionInvBillAmt, InvoiceDate, "
    "TransactionTable.TransactionDate, TransactionInvDiscount,InvRetainerAmtApplied, "
    "TransactionManInvMiscAmt,TransactionManInvPaidToday,ServiceAmt, ServiceTaxAmt, "
    "ExpAmt,ExpTaxAmt,MainServiceTaxAmt, MainExpenseTaxAmt,TransactionMemo, TransactionManInv, Client.QBLinkID as "
    "ClientQBLinkID, Client.ClientCompany, Client.ClientStreet, Client.ClientStreet2, Client.ClientCity, "
    "Client.ClientState, Client.ClientZip, Project.QBLinkID as ProjectQBLInkID, "
    "TransactionTable.TransactionInvSendBillFlag FROM TransactionTable,Client,Project WHERE "
    "((TransactionTable.ProjectID=Project.ProjectID) AND (TransactionTable.IsDraft<> -1) AND "
    "(TransactionTable.TransactionInvNum <>'0') AND (TransactionTable.PayID IS NULL) AND (Project.ClientID = "
    "Client.ClientID)) ";

inline const std::string kPaymentBase =
    "SELECT PayID, PayRetainer, PayDate, PayAmt, PayMethod, PayMemo, Payment.ClientID,  Client.ClientCompany, "
    "Payment.LastUpdated, Payment.QBLinkID, PayRef  FROM Payment, Client WHERE (Client.ClientID = "
    "Payment.ClientID)  AND PayMethod <> '6' ";

inline const std::string kVendorBillBase =
    "SELECT VendorBillID, BillNumber, BillDate, VendorID, BillMemo,BillDueDate, BillRef, QBLinkID, LastUpdated "
    "FROM VendorBill ";

}  // namespace twqb
