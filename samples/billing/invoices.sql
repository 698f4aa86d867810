-- The invoices of the sample firm for the first two months of 2008, beside those of work.sql: one of every form that goes to QuickBooks
-- in its own way, and those that stay. They go in behind the hours, which they are made of.
--
-- Every total is the sum of its parts to the cent. What is billed by the hour is hours times rate; a fee that was agreed on
-- is not, and neither is the hours' account when the entries are told one by one, so that a line has to make up for it.


-- By the hour; a fee with a limit, twice; a fixed fee; a percentage of the building costs, for no hours; by the month, and with a
-- limit; by the month with expenses; expenses alone, on a project whose contract is none of these

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, TransactionInvSendBillFlag,
    TransactionInvBillAmt, ServiceAmt, ExpAmt, ServiceTaxAmt, ExpTaxAmt, MainServiceTaxAmt, MainExpenseTaxAmt,
    TransactionInvDiscount, InvRetainerAmtApplied, LastUpdated)
VALUES
    ('{1A2B0004-6C3D-4E5F-8A90-0B1C2D3E4F04}', '1044', 'RIVERSIDE', 'PARK:SURVEY', '2008-01-31 00:00:00', 'P',
     3906.17, 3671.25, 48.91, 183.56, 2.45, 0, 0, 0, 0, NULL),
    ('{1A2B0005-6C3D-4E5F-8A90-0B1C2D3E4F05}', '1045', 'EASTON', 'CULVERT:', '2008-01-31 00:00:00', 'B',
     2500, 2500, 0, 0, 0, 0, 0, 0, 0, NULL),
    ('{1A2B0006-6C3D-4E5F-8A90-0B1C2D3E4F06}', '1046', 'CEDAR', 'BRIDGE:', '2008-02-29 00:00:00', 'P',
     10500, 10000, 0, 0, 0, 500, 0, 0, 0, '2008-02-29 17:10:00'),
    ('{1A2B0007-6C3D-4E5F-8A90-0B1C2D3E4F07}', '1047', 'REGENT', 'VAULT:', '2008-02-04 00:00:00', 'P',
     3313.72, 3200, 108.3, 0, 0, 0, 5.42, 0, 0, NULL),
    ('{1A2B0008-6C3D-4E5F-8A90-0B1C2D3E4F08}', '1048', 'WINSLOW', 'MILL:DESIGN', '2008-01-31 00:00:00', NULL,
     8550, 9000, 0, 0, 0, 0, 0, 450, 0, '2008-02-01 13:00:00'),
    ('{1A2B0009-6C3D-4E5F-8A90-0B1C2D3E4F09}', '1049', 'PALISADE', 'DEPOT:SURVEY', '2008-02-29 00:00:00', 'P',
     5500, 5500, 0, 0, 0, 0, 0, 0, 0, NULL),
    ('{1A2B0010-6C3D-4E5F-8A90-0B1C2D3E4F10}', '1050', 'PALISADE', 'DEPOT:', '2008-02-29 00:00:00', 'P',
     1597.77, 1500, 97.77, 0, 0, 0, 0, 0, 0, NULL),
    ('{1A2B0011-6C3D-4E5F-8A90-0B1C2D3E4F11}', '1051', 'BAYVIEW', 'MARINA:', '2008-01-31 00:00:00', 'P',
     5191.25, 7455, 236.25, 0, 0, 0, 0, 0, 2500, '2008-01-31 21:20:00'),
    ('{1A2B0013-6C3D-4E5F-8A90-0B1C2D3E4F13}', '1053', 'RIVERSIDE', 'PARK:DESIGN', '2008-01-31 00:00:00', 'B',
     2444.01, 2276.67, 29, 113.83, 1.45, 22.77, 0.29, 0, 0, NULL),
    ('{1A2B0018-6C3D-4E5F-8A90-0B1C2D3E4F18}', '1058', 'REGENT', 'LOBBY:', '2008-02-15 00:00:00', 'P',
     298.52, 0, 298.52, 0, 0, 0, 0, 0, 0, NULL);


-- With a number that is longer than QuickBooks takes; sent once, and thrown away there by hand; all of it given as a discount

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, TransactionInvSendBillFlag,
    TransactionInvBillAmt, ServiceAmt, ExpAmt, TransactionInvDiscount, QBLinkID, LastUpdated)
VALUES
    ('{1A2B0014-6C3D-4E5F-8A90-0B1C2D3E4F14}', '2008-02-0117-A', 'ABBOTT', 'HARBOR:SURVEY', '2008-02-29 00:00:00', 'P',
     10766.25, 10766.25, 0, 0, NULL, NULL),
    ('{1A2B0015-6C3D-4E5F-8A90-0B1C2D3E4F15}', '1055', 'ABBOTT', 'HARBOR:', '2008-01-31 00:00:00', 'P',
     2827.5, 2827.5, 0, 0, '5B2E-1201823999', '2008-01-31 21:30:00'),
    ('{1A2B0016-6C3D-4E5F-8A90-0B1C2D3E4F16}', '1056', 'CHATEAU', 'ÉCOLE:', '2008-02-29 00:00:00', 'B',
     0, 520, 0, 520, NULL, NULL);


-- Written by hand: hours and prints under one heading each, with an amount for postage; and one that takes back what was too much,
-- which never goes

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, TransactionManInv,
    TransactionInvSendBillFlag, TransactionInvBillAmt, ServiceAmt, ExpAmt, TransactionManInvMiscAmt, TransactionInvDiscount,
    LastUpdated)
VALUES
    ('{1A2B0012-6C3D-4E5F-8A90-0B1C2D3E4F12}', '1052', 'ODWYER', 'STAIR:', '2008-02-29 00:00:00', -1, 'P',
     1111.73, 1091.25, 11.73, 35.5, 26.75, NULL),
    ('{1A2B0017-6C3D-4E5F-8A90-0B1C2D3E4F17}', '1057', 'ABBOTT', 'HARBOR:PLANS', '2008-02-29 00:00:00', -1, 'B',
     -180, -180, 0, 0, 0, '2008-02-29 17:30:00');

INSERT INTO ManInvDetail (ManInvDetailID, TransactionID, ManInvDetailDesc, ManInvDetailAmt, ManInvDetailTaxPerc,
    ManInvDetailTaxAmt, ManInvDetailTot)
VALUES
    ('{9A8B0003-1C2D-4E3F-B450-6D7E8F9A0B03}', '{1A2B0012-6C3D-4E5F-8A90-0B1C2D3E4F12}', 'Drawings of the stair', 892.5, 0, 0,
     892.5),
    ('{9A8B0004-1C2D-4E3F-B450-6D7E8F9A0B04}', '{1A2B0012-6C3D-4E5F-8A90-0B1C2D3E4F12}', 'At the registry', 198.75, 0, 0, 198.75),
    ('{9A8B0005-1C2D-4E3F-B450-6D7E8F9A0B05}', '{1A2B0017-6C3D-4E5F-8A90-0B1C2D3E4F17}', 'Sheet 2, billed twice', -180, 0, 0,
     -180);


-- Begun, with nothing on it yet: a draft, like the one in work.sql

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, IsDraft,
    TransactionInvSendBillFlag, TransactionInvBillAmt, ServiceAmt, ExpAmt)
VALUES
    ('{1A2B0019-6C3D-4E5F-8A90-0B1C2D3E4F19}', '1059', 'JUNIPER', 'TWIN:', '2008-02-29 00:00:00', -1, 'P', 0, 0, 0);


-- What the invoices have in common

UPDATE TransactionTable SET TransactionDate = InvoiceDate,
    ServiceTaxAmt = COALESCE(ServiceTaxAmt, 0), ExpTaxAmt = COALESCE(ExpTaxAmt, 0),
    MainServiceTaxAmt = COALESCE(MainServiceTaxAmt, 0), MainExpenseTaxAmt = COALESCE(MainExpenseTaxAmt, 0),
    TransactionManInvMiscAmt = COALESCE(TransactionManInvMiscAmt, 0), TransactionManInvPaidToday = 0,
    TransactionInvDiscount = COALESCE(TransactionInvDiscount, 0), InvRetainerAmtApplied = COALESCE(InvRetainerAmtApplied, 0)
WHERE PayID IS NULL AND TransactionDate IS NULL;


-- Written down by a tenth and up by a tenth, and written off

UPDATE TimeEntry SET WUD = 0.9 WHERE TEID = '{7E0B0095-5B1C-4D2E-8F30-9A6B5C4D0095}';
UPDATE TimeEntry SET WUD = 1.1 WHERE TEID = '{7E0B0140-5B1C-4D2E-8F30-9A6B5C4D0140}';
UPDATE TimeEntry SET WUD = 0 WHERE TEID = '{7E0B0135-5B1C-4D2E-8F30-9A6B5C4D0135}';


-- The hours that the invoices bill: all posted ones of a project and a month. Two invoices show what was done at no charge, the others
-- do not.

UPDATE TimeEntry SET TransactionID = (SELECT TransactionID FROM TransactionTable t WHERE t.ProjectID = TimeEntry.ProjectID AND
    PayID IS NULL AND IsDraft = 0 AND InvoiceDate = '2008-01-31 00:00:00')
WHERE TransactionID IS NULL AND TEPosted = -1 AND TEDate BETWEEN '2008-01-01 00:00:00' AND '2008-01-31 00:00:00' AND
    (TEBill = -1 OR ProjectID = 'PARK:SURVEY') AND
    ProjectID IN ('PARK:SURVEY', 'CULVERT:', 'MILL:DESIGN', 'MARINA:', 'PARK:DESIGN', 'HARBOR:');
UPDATE TimeEntry SET TransactionID = (SELECT TransactionID FROM TransactionTable t WHERE t.ProjectID = TimeEntry.ProjectID AND
    PayID IS NULL AND IsDraft = 0 AND InvoiceDate = '2008-02-29 00:00:00')
WHERE TransactionID IS NULL AND TEPosted = -1 AND TEDate BETWEEN '2008-01-31 00:00:00' AND '2008-02-29 00:00:00' AND
    (TEBill = -1 OR ProjectID = 'BRIDGE:') AND
    (ProjectID = 'HARBOR:SURVEY' OR TEDate >= '2008-02-01 00:00:00' AND
     ProjectID IN ('BRIDGE:', 'DEPOT:SURVEY', 'ÉCOLE:', 'STAIR:'));
UPDATE TimeEntry SET TEBillStatus = 'B' WHERE TransactionID IS NOT NULL;


-- The expenses: half cents, markups of many decimals and below nothing, one at no charge, and one of a code that QuickBooks has no item
-- for

INSERT INTO ExpenseLog (ELID, ELDate, EmployeeID, ProjectID, ExpID, ELDescription, ELUnits, ELCost, ELMarkup, ELChgAmt,
    ELBillable, ELPosted, TransactionID)
VALUES
    ('{5E6F0007-8A7B-4C9D-AE10-2F3A4B5C6D07}', '2008-01-10 00:00:00', 'RSANTOS', 'PARK:SURVEY', 'TRAVEL:MILE',
     'Kittery to Mansfield', 62, 0.505, 0, 31.31, -1, -1, '{1A2B0004-6C3D-4E5F-8A90-0B1C2D3E4F04}'),
    ('{5E6F0008-8A7B-4C9D-AE10-2F3A4B5C6D08}', '2008-01-11 00:00:00', 'RSANTOS', 'PARK:SURVEY', 'REPRO:',
     'Field sheets', 18, 0.85, 15, 17.6, -1, -1, '{1A2B0004-6C3D-4E5F-8A90-0B1C2D3E4F04}'),
    ('{5E6F0009-8A7B-4C9D-AE10-2F3A4B5C6D09}', '2008-01-12 00:00:00', 'RSANTOS', 'PARK:SURVEY', 'TRAVEL:FARE',
     'Toll, on the house', 1, 8, 0, 8, 0, -1, '{1A2B0004-6C3D-4E5F-8A90-0B1C2D3E4F04}'),
    ('{5E6F0010-8A7B-4C9D-AE10-2F3A4B5C6D10}', '2008-01-28 00:00:00', 'TOBRIEN', 'VAULT:', 'FILING:',
     'Plan of the vault', 1, 75, 0, 75, -1, -1, '{1A2B0007-6C3D-4E5F-8A90-0B1C2D3E4F07}'),
    ('{5E6F0011-8A7B-4C9D-AE10-2F3A4B5C6D11}', '2008-01-29 00:00:00', 'TOBRIEN', 'VAULT:', 'LAB:COURIER',
     NULL, 2, 18.5, -10, 33.3, -1, -1, '{1A2B0007-6C3D-4E5F-8A90-0B1C2D3E4F07}'),
    ('{5E6F0012-8A7B-4C9D-AE10-2F3A4B5C6D12}', '2008-02-13 00:00:00', 'ALEE', 'DEPOT:', 'TRAVEL:MILE',
     'Portsmouth to Worcester & back', 88, 0.505, 0, 44.44, -1, -1, '{1A2B0010-6C3D-4E5F-8A90-0B1C2D3E4F10}'),
    ('{5E6F0013-8A7B-4C9D-AE10-2F3A4B5C6D13}', '2008-02-14 00:00:00', 'ALEE', 'DEPOT:', 'REPRO:COLOR',
     'Plots of the depot', 120, 0.3333, 33.3333, 53.33, -1, -1, '{1A2B0010-6C3D-4E5F-8A90-0B1C2D3E4F10}'),
    ('{5E6F0014-8A7B-4C9D-AE10-2F3A4B5C6D14}', '2008-01-17 00:00:00', 'MHALE', 'MARINA:', 'TRAVEL:LAUNCH',
     'Launch for the second line', 1, 210, 12.5, 236.25, -1, -1, '{1A2B0011-6C3D-4E5F-8A90-0B1C2D3E4F11}'),
    ('{5E6F0015-8A7B-4C9D-AE10-2F3A4B5C6D15}', '2008-01-25 00:00:00', 'TOBRIEN', 'PARK:DESIGN', 'REPRO:BIND',
     'Four copies', 4, 7.25, 0, 29, -1, -1, '{1A2B0013-6C3D-4E5F-8A90-0B1C2D3E4F13}'),
    ('{5E6F0016-8A7B-4C9D-AE10-2F3A4B5C6D16}', '2008-02-06 00:00:00', 'JPARK', 'LOBBY:', 'FROMQB:',
     'Marble sample', 1, 42, 0, 42, -1, -1, '{1A2B0018-6C3D-4E5F-8A90-0B1C2D3E4F18}'),
    ('{5E6F0017-8A7B-4C9D-AE10-2F3A4B5C6D17}', '2008-02-07 00:00:00', 'JPARK', 'LOBBY:', 'REPRO:MYLAR',
     'Ceiling, true to scale', 12.5, 1.2345, 20, 18.52, -1, -1, '{1A2B0018-6C3D-4E5F-8A90-0B1C2D3E4F18}'),
    ('{5E6F0018-8A7B-4C9D-AE10-2F3A4B5C6D18}', '2008-02-07 00:00:00', 'JPARK', 'LOBBY:', 'TRAVEL:HOTEL',
     'Two nights in Newport', 2, 119, 0, 238, -1, -1, '{1A2B0018-6C3D-4E5F-8A90-0B1C2D3E4F18}');
UPDATE ExpenseLog SET TransactionID = '{1A2B0012-6C3D-4E5F-8A90-0B1C2D3E4F12}'
WHERE ELID = '{5E6F0005-8A7B-4C9D-AE10-2F3A4B5C6D05}';
UPDATE ExpenseLog SET ELBilled = CASE WHEN TransactionID IS NULL THEN 'N' ELSE 'B' END;
