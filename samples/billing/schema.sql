-- BillingDb: the tables of the billing product that the link with QuickBooks reads and writes.
--
-- This is the whole schema in one file: plain DDL, one column a line, no constraint beyond the primary keys. Rows come in with
-- partial columns from the product and from the link alike, so what a writer leaves out must be NULL or have a default here.
--
-- Conventions
--   keys and codes    VARCHAR, compared without case. Row keys made by the link are GUID text in braces (38 characters).
--   booleans          SMALLINT, True is -1 and False is 0. A default of 0 stands where the product takes a missing flag for False.
--   money and rates   DECIMAL(19,4), 64-bit currency. Rates that are floating point (employees, activities), hours, quantities
--                     and percentages are DOUBLE.
--   QBLinkID          ListID, TxnID or TxnLineID of the twin in QuickBooks. NULL or empty: no twin yet. Not unique: a project may
--                     share the link of its client, and one QuickBooks payment may stand behind two rows of Payment.
--   LastUpdated       time of the last change of the row, UTC.
--   memo columns      TEXT, without limit. QuickBooks memos and descriptions have up to 4095 characters.


-- ---------------------------------------------------------------------------------------------------------------------------------
-- Settings
-- ---------------------------------------------------------------------------------------------------------------------------------

CREATE TABLE TWSTable (
    ParamName                   VARCHAR(100) NOT NULL PRIMARY KEY,  -- section, underscore, key
    ParamValue                  TEXT
);


-- ---------------------------------------------------------------------------------------------------------------------------------
-- Master data
-- ---------------------------------------------------------------------------------------------------------------------------------

CREATE TABLE Client (
    ClientID                    VARCHAR(65) NOT NULL PRIMARY KEY,
    ClientCompany               VARCHAR(80),
    ClientFName                 VARCHAR(30),
    ClientLName                 VARCHAR(30),
    ClientMI                    VARCHAR(5),
    ClientMainSalt              VARCHAR(15),        -- salutation of the main contact
    ClientStreet                VARCHAR(60),
    ClientStreet2               VARCHAR(60),
    ClientCity                  VARCHAR(35),
    ClientState                 VARCHAR(25),        -- state, province or county, as the country has it
    ClientZip                   VARCHAR(15),
    ClientPhone                 VARCHAR(30),
    ClientMainPhone             VARCHAR(30),
    ClientFax                   VARCHAR(30),
    ClientEmail                 VARCHAR(99),
    ClientSince                 DATETIME,           -- stands in for LastUpdated where that is NULL
    Status                      VARCHAR(10),        -- Active, InActive, NULL counts as active
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME,
    LastUpdate                  DATETIME            -- stamped by the link on the first send of a row without LastUpdated
);

CREATE INDEX IX_Client_QBLinkID ON Client (QBLinkID);


CREATE TABLE Project (
    ProjectID                   VARCHAR(100) NOT NULL PRIMARY KEY,  -- code, colon, phase (a top project ends in the colon)
    ProjectCode                 VARCHAR(65),
    ProjectPhase                VARCHAR(30),        -- empty for a top project
    ProjectName                 VARCHAR(100),
    ClientID                    VARCHAR(65),
    EmployeeID                  VARCHAR(65),        -- manager
    ProjectIsPhase              SMALLINT DEFAULT 0, -- the send sorts on it, parents ahead of phases: NULL would come last
    ParentProjectID             VARCHAR(100),       -- the project above a phase
    PhaseDescription            VARCHAR(120),
    ProjectConType              VARCHAR(30),        -- contract type: Fixed, Hourly, Hourly Not To Exceed, Recurring ...
    ProjectStatus               VARCHAR(15),        -- Active, Completed, Hold, Inactive, Main
    ProjectStartDate            DATETIME,           -- stands in for LastUpdated where that is NULL
    ProjectStreet               VARCHAR(60),
    ProjectStreet2              VARCHAR(60),
    ProjectCity                 VARCHAR(35),
    ProjectState                VARCHAR(25),
    ProjectZip                  VARCHAR(15),
    ProjectMemo                 TEXT,
    EstimateID                  VARCHAR(40),        -- the Budget that is the estimate of the project
    QBClassID                   VARCHAR(40),        -- ListID of a QuickBooks class
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_Project_QBLinkID ON Project (QBLinkID);
CREATE INDEX IX_Project_ClientID ON Project (ClientID);


-- Employees and outside vendors in one table, told apart by IsSub.
CREATE TABLE Employee (
    EmployeeID                  VARCHAR(65) NOT NULL PRIMARY KEY,
    IsSub                       SMALLINT DEFAULT 0, -- -1 vendor (subcontractor), 0 employee
    EmpFName                    VARCHAR(30),
    EmpLName                    VARCHAR(30),
    EmpMI                       VARCHAR(5),
    EmpSalt                     VARCHAR(15),        -- salutation
    EmpCompany                  VARCHAR(80),        -- company of a vendor
    EmpStreet                   VARCHAR(60),
    EmpStreet2                  VARCHAR(60),
    EmpCity                     VARCHAR(35),
    EmpState                    VARCHAR(25),
    EmpZip                      VARCHAR(15),
    EmpHPhone                   VARCHAR(30),
    EmpContactPhone             VARCHAR(30),
    MobileNumber                VARCHAR(30),
    EmpHFax                     VARCHAR(30),
    EmpEmail                    VARCHAR(99),
    EmpDateHired                DATETIME,           -- stands in for LastUpdated where that is NULL
    EmpDateReleased             DATETIME,
    EmpSSN                      VARCHAR(15),        -- social security, social insurance or national insurance number
    EmpBillRate                 DOUBLE,
    EmpCostRate                 DOUBLE,
    Status                      VARCHAR(10),        -- Active, Inactive, NULL counts as active
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_Employee_QBLinkID ON Employee (QBLinkID);


CREATE TABLE Activity (
    ActivityID                  VARCHAR(65) NOT NULL PRIMARY KEY,   -- code, colon, sub
    ActivityCode                VARCHAR(31),
    ActivitySub                 VARCHAR(31),
    ActivityDescription         VARCHAR(255),
    AC_CostRate                 DOUBLE,
    AC_BillRate                 DOUBLE,
    AC_MinHours                 DOUBLE,
    ActivityBillable            SMALLINT,
    Tax1_Rate                   DOUBLE,             -- percent
    Tax2_Rate                   DOUBLE,
    Tax3_Rate                   DOUBLE,
    IsInActive                  SMALLINT DEFAULT 0,
    QBAccountID1                VARCHAR(40),        -- ListID of the income account, empty for the default
    QBAccountID2                VARCHAR(40),        -- ListID of the expense account, empty for the default
    QBClassID                   VARCHAR(40),        -- ListID of a QuickBooks class
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_Activity_QBLinkID ON Activity (QBLinkID);


CREATE TABLE Expense (
    ExpID                       VARCHAR(65) NOT NULL PRIMARY KEY,   -- code, colon, sub
    ExpCode                     VARCHAR(31),
    ExpSub                      VARCHAR(31),
    ExpDescription              VARCHAR(255),
    Exp_Memo                    TEXT,               -- the long description, where ExpDescription could not hold it
    ExpCost                     DECIMAL(19,4),      -- unit cost
    ExpMarkup                   DOUBLE,             -- percent
    ExpBillable                 SMALLINT,
    Reimbursable                SMALLINT,
    IsProduct                   SMALLINT DEFAULT 0, -- an inventory or non-inventory item
    Tax1_Rate                   DOUBLE,             -- percent
    Tax2_Rate                   DOUBLE,
    Tax3_Rate                   DOUBLE,
    IsInActive                  SMALLINT DEFAULT 0,
    QBAccountID1                VARCHAR(40),        -- ListID of the income account, empty for the default
    QBAccountID2                VARCHAR(40),        -- ListID of the expense or cost-of-goods account, empty for the default
    QBClassID                   VARCHAR(40),        -- ListID of a QuickBooks class
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_Expense_QBLinkID ON Expense (QBLinkID);


-- The chart of accounts.
CREATE TABLE AccountList (
    AccountID                   VARCHAR(40) NOT NULL PRIMARY KEY,   -- account number, or the ListID of an account without one
    AccountName                 VARCHAR(50),        -- own name, without the parents
    AccountTypeID               SMALLINT,           -- account type of QuickBooks, 0 to 15
    ParentAccountID             VARCHAR(40),
    AccountDesc                 VARCHAR(255),
    OpenBalance                 DECIMAL(19,4),
    OpenBalanceDate             DATETIME,
    IsInActive                  SMALLINT DEFAULT 0,
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_AccountList_QBLinkID ON AccountList (QBLinkID);


-- Which payroll wage item stands for which kind of time of an employee.
CREATE TABLE QBPayroll (
    EmployeeID                  VARCHAR(65) NOT NULL,
    EntryType                   SMALLINT NOT NULL,  -- 1 to 8: kind of time. 81: PayrollItem names a flag column instead of an item
    PayrollItem                 VARCHAR(50),
    PRIMARY KEY (EmployeeID, EntryType)
);


-- ---------------------------------------------------------------------------------------------------------------------------------
-- Groups: which records belong to which named group
-- ---------------------------------------------------------------------------------------------------------------------------------

CREATE TABLE EmployeeGroupDetail (
    EGID                        VARCHAR(30) NOT NULL,
    EmployeeID                  VARCHAR(65) NOT NULL,
    PRIMARY KEY (EGID, EmployeeID)
);

CREATE TABLE ClientGroupDetail (
    CGID                        VARCHAR(30) NOT NULL,
    ClientID                    VARCHAR(65) NOT NULL,
    PRIMARY KEY (CGID, ClientID)
);

CREATE TABLE ProjectGroupDetail (
    PGID                        VARCHAR(30) NOT NULL,
    ProjectID                   VARCHAR(100) NOT NULL,
    PRIMARY KEY (PGID, ProjectID)
);

CREATE TABLE ActivityGroupDetail (
    AGID                        VARCHAR(30) NOT NULL,
    ActivityID                  VARCHAR(65) NOT NULL,
    PRIMARY KEY (AGID, ActivityID)
);

CREATE TABLE ExpenseGroupDetail (
    XGID                        VARCHAR(30) NOT NULL,
    ExpID                       VARCHAR(65) NOT NULL,
    PRIMARY KEY (XGID, ExpID)
);


-- ---------------------------------------------------------------------------------------------------------------------------------
-- Time and expenses
-- ---------------------------------------------------------------------------------------------------------------------------------

CREATE TABLE TimeEntry (
    TEID                        VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    TEDate                      DATETIME,
    EmployeeID                  VARCHAR(65),
    ProjectID                   VARCHAR(100),
    ProjectName                 VARCHAR(100),       -- copied from the project
    ActivityID                  VARCHAR(65),
    TEHours                     DOUBLE,
    aHours                      DOUBLE,             -- the other hours column: sent in place of TEHours when the settings say so
    TEDescription               VARCHAR(255),
    TEMemo                      TEXT,               -- the long note, rich text allowed
    TEMemoExists                SMALLINT DEFAULT 0,
    TEBill                      SMALLINT,           -- billable
    TEBillRate                  DECIMAL(19,4),
    TECostRate                  DECIMAL(19,4),
    TEBillStatus                VARCHAR(1),         -- N not billed. P and B: billed, the row may not be overwritten
    WUD                         DOUBLE,             -- write-up or write-down factor of the hours, NULL counts as 1
    TEOT                        SMALLINT DEFAULT 0, -- overtime
    TECompTime                  DOUBLE,             -- other than 0: comp time
    TEXtraWork                  SMALLINT DEFAULT 0,
    TEPosted                    SMALLINT DEFAULT 0, -- only posted entries are sent
    TEFlag1                     SMALLINT DEFAULT 0, -- flags of the user, one of them may select a payroll item
    TEFlag2                     SMALLINT DEFAULT 0,
    TEFlag3                     SMALLINT DEFAULT 0,
    TETax1                      DOUBLE,             -- percent
    TETax2                      DOUBLE,
    TETax3                      DOUBLE,
    isSub                       SMALLINT DEFAULT 0, -- the time of a vendor
    ApprovalStatus              SMALLINT,           -- 2 on rows that came in with a bill from QuickBooks
    ApprovedBy                  VARCHAR(65),
    ShowMemoOnInvoice           SMALLINT DEFAULT 0,
    ShowMemoOnJournal           SMALLINT DEFAULT 0,
    TransactionID               VARCHAR(40),        -- the invoice on which the entry was billed
    VendorBillID                VARCHAR(40),        -- the bill of the vendor who did the work
    QBLinkID                    VARCHAR(40),        -- a TxnID, or the TxnLineID of a line of a vendor bill
    LastUpdated                 DATETIME
);

CREATE INDEX IX_TimeEntry_QBLinkID ON TimeEntry (QBLinkID);
CREATE INDEX IX_TimeEntry_TransactionID ON TimeEntry (TransactionID);
CREATE INDEX IX_TimeEntry_VendorBillID ON TimeEntry (VendorBillID);
CREATE INDEX IX_TimeEntry_ProjectID ON TimeEntry (ProjectID);
CREATE INDEX IX_TimeEntry_EmployeeID ON TimeEntry (EmployeeID);


CREATE TABLE ExpenseLog (
    ELID                        VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    ELDate                      DATETIME,
    EmployeeID                  VARCHAR(65),
    ProjectID                   VARCHAR(100),
    ExpID                       VARCHAR(65),
    ELDescription               VARCHAR(255),
    ELMemoFlag                  SMALLINT DEFAULT 0,
    ELUnits                     DOUBLE,
    ELCost                      DECIMAL(19,4),      -- cost of one unit
    ELMarkup                    DOUBLE,             -- percent
    ELChgAmt                    DECIMAL(19,4),      -- charge with markup and tax
    ELBillable                  SMALLINT,
    ELBilled                    VARCHAR(1),         -- N not billed. P and B: billed, the row may not be overwritten
    WUD                         DOUBLE,
    ELPosted                    SMALLINT DEFAULT 0, -- only posted entries are sent
    ELPaid                      SMALLINT DEFAULT 0,
    Reimbursable                SMALLINT DEFAULT 0,
    ELFlag1                     SMALLINT DEFAULT 0,
    ELFlag2                     SMALLINT DEFAULT 0,
    ELFlag3                     SMALLINT DEFAULT 0,
    ELTax1                      DOUBLE,             -- percent
    ELTax2                      DOUBLE,
    ELTax3                      DOUBLE,
    ExpType                     SMALLINT DEFAULT 0,
    isProduct                   SMALLINT DEFAULT 0,
    isSub                       SMALLINT DEFAULT 0, -- the expense of a vendor: its bill goes to the vendor without asking
    ApprovalStatus              SMALLINT,           -- 2 on rows that came in with a bill from QuickBooks
    ApprovedBy                  VARCHAR(65),
    ShowMemoOnInvoice           SMALLINT DEFAULT 0,
    ShowMemoOnJournal           SMALLINT DEFAULT 0,
    TransactionID               VARCHAR(40),        -- the invoice on which the entry was billed
    VendorBillID                VARCHAR(40),        -- the bill of the vendor
    QBLinkID                    VARCHAR(40),        -- a TxnLineID, or the TxnID when one row stands for a whole transaction
    LastUpdated                 DATETIME
);

CREATE INDEX IX_ExpenseLog_QBLinkID ON ExpenseLog (QBLinkID);
CREATE INDEX IX_ExpenseLog_TransactionID ON ExpenseLog (TransactionID);
CREATE INDEX IX_ExpenseLog_VendorBillID ON ExpenseLog (VendorBillID);
CREATE INDEX IX_ExpenseLog_ProjectID ON ExpenseLog (ProjectID);
CREATE INDEX IX_ExpenseLog_EmployeeID ON ExpenseLog (EmployeeID);


-- Bills of vendors. The lines are the rows of TimeExpense with the same VendorBillID.
CREATE TABLE VendorBill (
    VendorBillID                VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    VendorID                    VARCHAR(65),        -- EmployeeID of a vendor
    BillNumber                  VARCHAR(40),
    BillDate                    DATETIME,
    BillDueDate                 DATETIME,
    BillMemo                    TEXT,
    BillRef                     VARCHAR(50),
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_VendorBill_QBLinkID ON VendorBill (QBLinkID);
CREATE INDEX IX_VendorBill_VendorID ON VendorBill (VendorID);


-- One row per line of a vendor bill, from either table. The columns carry the names of time entries: for an expense TEID is the
-- ELID, ActivityID the expense code, TEHours the units and TECostRate the unit cost.
CREATE VIEW TimeExpense AS
SELECT 'TE'          AS DataTbl,
       TEID          AS TEID,
       VendorBillID  AS VendorBillID,
       ProjectID     AS ProjectID,
       ActivityID    AS ActivityID,
       TEDate        AS TEDate,
       TEDescription AS TEDescription,
       TEHours       AS TEHours,
       TECostRate    AS TECostRate,
       0             AS ELMarkup,
       TEBill        AS TEBill
  FROM TimeEntry
 WHERE VendorBillID IS NOT NULL
UNION ALL
SELECT 'EL'          AS DataTbl,
       ELID          AS TEID,
       VendorBillID  AS VendorBillID,
       ProjectID     AS ProjectID,
       ExpID         AS ActivityID,
       ELDate        AS TEDate,
       ELDescription AS TEDescription,
       ELUnits       AS TEHours,
       ELCost        AS TECostRate,
       ELMarkup      AS ELMarkup,
       ELBillable    AS TEBill
  FROM ExpenseLog
 WHERE VendorBillID IS NOT NULL;


-- ---------------------------------------------------------------------------------------------------------------------------------
-- Invoices and payments
-- ---------------------------------------------------------------------------------------------------------------------------------

-- Three kinds of row: invoices and credit memos have no PayID. A row with a PayID is the allocation of that payment to one invoice,
-- whose number and project it repeats, or the row of a retainer, with the number 0.
CREATE TABLE TransactionTable (
    TransactionID               VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    TransactionInvNum           VARCHAR(25),        -- room for CM and a QuickBooks reference number
    ClientID                    VARCHAR(65),
    ProjectID                   VARCHAR(100),       -- {CLIENT RETAINER}: a retainer of the client as a whole
    PayID                       VARCHAR(40),        -- NULL on invoices
    TransactionDate             DATETIME,
    InvoiceDate                 DATETIME,
    TransactionInvDateFrom      DATETIME,           -- period that the invoice covers
    TransactionInvDateTo        DATETIME,
    IsDraft                     SMALLINT DEFAULT 0, -- drafts are not sent
    TransactionManInv           SMALLINT DEFAULT 0, -- a manual invoice, its lines are in ManInvDetail
    TransactionJointInv         SMALLINT DEFAULT 0,
    TransactionInvSendBillFlag  VARCHAR(1),         -- P to be printed, B not
    TransactionInvBillAmt       DECIMAL(19,4),      -- invoice total
    ServiceAmt                  DECIMAL(19,4),
    ServiceTaxAmt               DECIMAL(19,4),
    ExpAmt                      DECIMAL(19,4),
    ExpTaxAmt                   DECIMAL(19,4),
    MainServiceTaxAmt           DECIMAL(19,4),
    MainExpenseTaxAmt           DECIMAL(19,4),
    TransactionManInvMiscAmt    DECIMAL(19,4),
    TransactionManInvPaidToday  DECIMAL(19,4),
    TransactionInvDiscount      DECIMAL(19,4),      -- positive lowers the invoice
    InvRetainerAmtApplied       DECIMAL(19,4),      -- retainer used up by the invoice, positive lowers what is due
    calcAmtOwedToDate           DECIMAL(19,4),
    TransactionPayAmtApplied    DECIMAL(19,4),      -- on an allocation: what goes to the invoice
    TransactionPayLateFeeRecd   DECIMAL(19,4),      -- on an allocation: late fee received
    TransactionMemo             TEXT,
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_TransactionTable_QBLinkID ON TransactionTable (QBLinkID);
CREATE INDEX IX_TransactionTable_PayID ON TransactionTable (PayID);
CREATE INDEX IX_TransactionTable_InvNum ON TransactionTable (TransactionInvNum, ProjectID);
CREATE INDEX IX_TransactionTable_ProjectID ON TransactionTable (ProjectID);
CREATE INDEX IX_TransactionTable_ClientID ON TransactionTable (ClientID);


CREATE TABLE ManInvDetail (
    ManInvDetailID              VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    TransactionID               VARCHAR(40),
    ManInvDetailDesc            TEXT,
    ManInvDetailAmt             DECIMAL(19,4),
    ManInvDetailTaxPerc         DOUBLE,             -- percent
    ManInvDetailTaxAmt          DECIMAL(19,4),
    ManInvDetailTot             DECIMAL(19,4)       -- amount and tax
);

CREATE INDEX IX_ManInvDetail_TransactionID ON ManInvDetail (TransactionID);


CREATE TABLE Payment (
    PayID                       VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    ClientID                    VARCHAR(65),
    PayDate                     DATETIME,
    PayAmt                      DECIMAL(19,4),
    PayMethod                   VARCHAR(1),         -- 1 check, 2 cash, 3 credit ... 9 money order, A out of a retainer
    PayRetainer                 SMALLINT DEFAULT 0, -- money received ahead of any invoice
    PayRef                      VARCHAR(30),        -- check number or other reference
    PayMemo                     VARCHAR(255),
    PayEnteredBy                VARCHAR(65),
    PayLastModifiedOn           DATETIME,
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_Payment_QBLinkID ON Payment (QBLinkID);
CREATE INDEX IX_Payment_ClientID ON Payment (ClientID);


-- ---------------------------------------------------------------------------------------------------------------------------------
-- Budgets
-- ---------------------------------------------------------------------------------------------------------------------------------

CREATE TABLE Budget (
    BudgetID                    VARCHAR(40) NOT NULL PRIMARY KEY,   -- the number of the estimate
    BudgetGroupDesc             VARCHAR(255),
    BudgetMiscAmt               DECIMAL(19,4),
    IsLocked                    SMALLINT DEFAULT 0,
    IsEstimate                  SMALLINT DEFAULT 0,
    QBLinkID                    VARCHAR(40),
    LastUpdated                 DATETIME
);

CREATE INDEX IX_Budget_QBLinkID ON Budget (QBLinkID);


CREATE TABLE BudgetActivity (
    BAID                        VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    BudgetID                    VARCHAR(40),
    ActivityID                  VARCHAR(65),
    BADescription               VARCHAR(255),
    BARate                      DECIMAL(19,4),
    BAHours                     DOUBLE,
    QBLinkID                    VARCHAR(40),        -- a TxnLineID
    LastUpdated                 DATETIME
);

CREATE INDEX IX_BudgetActivity_QBLinkID ON BudgetActivity (QBLinkID);
CREATE INDEX IX_BudgetActivity_BudgetID ON BudgetActivity (BudgetID);


CREATE TABLE BudgetExpense (
    BEID                        VARCHAR(40) NOT NULL PRIMARY KEY,   -- GUID text in braces
    BudgetID                    VARCHAR(40),
    ExpID                       VARCHAR(65),
    BEDescription               VARCHAR(255),
    BEAmt                       DECIMAL(19,4),      -- amount of one unit
    BEUnits                     DOUBLE,
    BEMarkup                    DOUBLE,             -- percent
    BETax1_Rate                 DOUBLE,             -- percent
    BETax2_Rate                 DOUBLE,
    BETax3_Rate                 DOUBLE,
    PercentComplete             DOUBLE,
    QBLinkID                    VARCHAR(40),        -- a TxnLineID
    LastUpdated                 DATETIME
);

CREATE INDEX IX_BudgetExpense_QBLinkID ON BudgetExpense (QBLinkID);
CREATE INDEX IX_BudgetExpense_BudgetID ON BudgetExpense (BudgetID);
