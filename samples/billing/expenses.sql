-- What the sample firm has spent for its projects in February, beside the expenses of work.sql and those on its invoices: expenses of
-- employees and of vendors, and vendors' bills of one line and of many. They go in behind the payments.
--
-- None of it is billed to a client yet. Rows of a bill are its vendor's, and only they name a bill. An expense that is not posted
-- stays where it is, and so do the rows of a code or a project that QuickBooks does not have; there is one without a code.


-- Of employees, who are asked about when they go: for several projects, at no charge, of many decimals, with a date alone, and one
-- that waits to be posted

INSERT INTO ExpenseLog (ELID, ELDate, EmployeeID, ProjectID, ExpID, ELDescription, ELUnits, ELCost, ELMarkup, ELChgAmt,
    ELBillable, ELBilled, ELPosted, isSub, LastUpdated)
VALUES
    ('{5E6F0019-8A7B-4C9D-AE10-2F3A4B5C6D19}', '2008-02-04 00:00:00', 'JPARK', 'PIER:', 'TRAVEL:MILE',
     'Portsmouth to the pier and back', 36, 0.505, 0, 18.18, -1, 'N', -1, 0, NULL),
    ('{5E6F0020-8A7B-4C9D-AE10-2F3A4B5C6D20}', '2008-02-05 00:00:00', 'JPARK', 'PIER:', 'TRAVEL:MEALS',
     'Lunch with the harbor master', 1, 27.6, 0, 27.6, 0, 'N', -1, 0, '2008-02-06 13:30:00'),
    ('{5E6F0021-8A7B-4C9D-AE10-2F3A4B5C6D21}', '2008-02-05 00:00:00', 'JPARK', 'CULVERT:', 'PERMIT:TOWN',
     'Filing fee, town of Easton', 1, 100, 0, 100, -1, 'N', -1, 0, NULL),
    ('{5E6F0022-8A7B-4C9D-AE10-2F3A4B5C6D22}', '2008-02-12 00:00:00', 'TOBRIEN', 'ORCHARD:', 'BOUND:PIN',
     'Iron pins', 14, 4.9, 180, 192.08, -1, 'N', -1, 0, '2008-02-13 09:00:00'),
    ('{5E6F0023-8A7B-4C9D-AE10-2F3A4B5C6D23}', '2008-02-12 00:00:00', 'TOBRIEN', 'ORCHARD:', 'REPRO:COLOR',
     'Plots, 75 square feet', 75, 0.3333, 33.3333, 33.33, -1, 'N', -1, 0, NULL),
    ('{5E6F0024-8A7B-4C9D-AE10-2F3A4B5C6D24}', '2008-02-20 00:00:00', 'HNGUYEN', 'BRIDGE:', 'TRAVEL:HOTEL', NULL, 1.5, 94, 0,
     141, -1, 'N', -1, 0, NULL),
    ('{5E6F0025-8A7B-4C9D-AE10-2F3A4B5C6D25}', '2008-02-28 00:00:00', 'HNGUYEN', 'BRIDGE:', 'TRAVEL:PARK', 'Garage, two days', 2,
     11.25, 10, 24.75, -1, 'N', 0, 0, NULL);


-- Of vendors, of whom several rows are one bill: units with more decimals than QuickBooks takes, of no charge, and one of a code that
-- no item stands for

INSERT INTO ExpenseLog (ELID, ELDate, EmployeeID, ProjectID, ExpID, ELDescription, ELUnits, ELCost, ELMarkup, ELChgAmt,
    ELBillable, ELBilled, ELPosted, isSub, LastUpdated)
VALUES
    ('{5E6F0026-8A7B-4C9D-AE10-2F3A4B5C6D26}', '2008-02-07 00:00:00', 'DOCUPRINT', 'MILL:DESIGN', 'REPRO:', 'Bond, 24 sheets', 24,
     0.85, 15, 23.46, -1, 'N', -1, -1, NULL),
    ('{5E6F0027-8A7B-4C9D-AE10-2F3A4B5C6D27}', '2008-02-14 00:00:00', 'DOCUPRINT', 'PARK:DESIGN', 'REPRO:BIND', 'Six copies', 6,
     7.25, 0, 43.5, -1, 'N', -1, -1, '2008-02-15 12:00:00'),
    ('{5E6F0028-8A7B-4C9D-AE10-2F3A4B5C6D28}', '2008-02-21 00:00:00', 'DOCUPRINT', 'PARK:DESIGN', 'REPRO:MYLAR', 'Spoiled sheets',
     3.333, 1.2345, 0, 4.11, 0, 'N', -1, -1, NULL),
    ('{5E6F0029-8A7B-4C9D-AE10-2F3A4B5C6D29}', '2008-02-15 00:00:00', 'GEO-TECH', 'DEPOT:', 'LAB:SOIL', 'Sieve & hydrometer', 4, 48,
     10, 211.2, -1, 'N', -1, -1, NULL),
    ('{5E6F0030-8A7B-4C9D-AE10-2F3A4B5C6D30}', '2008-02-26 00:00:00', 'GEO-TECH', 'CULVERT:', 'LAB:WATER', 'Outfall, low water', 2,
     62.4, 10, 137.28, -1, 'N', -1, -1, NULL),
    ('{5E6F0031-8A7B-4C9D-AE10-2F3A4B5C6D31}', '2008-02-18 00:00:00', 'FLYNN', 'LIGHT:', 'FROMQB:', 'Ladder, hired', 1, 35, 0, 35,
     -1, 'N', -1, -1, NULL);


-- The lines of the bills below: hours, which are not posted, and expenses

INSERT INTO TimeEntry (TEID, TEDate, EmployeeID, ProjectID, ProjectName, ActivityID, TEHours, aHours, TEDescription,
    TEMemoExists, TEBill, TEBillRate, TECostRate, TEBillStatus, TEOT, TECompTime, TEPosted, isSub, VendorBillID, LastUpdated)
VALUES
    ('{7E0C0001-5B1C-4D2E-8F30-9A6B5C4D3E01}', '2008-02-11 00:00:00', 'CLOUTIER', 'ÉCOLE:', 'École Sainte-Anne, réfection du toit',
     'ARPENTAGE:BORNAGE', 7.5, 7.5, 'Délimitation, deux bornes', 0, -1, 150, 70, 'N', 0, 0, 0, -1, '{3C4D0004-7E5F-4A6B-9C80-1D2E3F4A5B04}', NULL),
    ('{7E0C0002-5B1C-4D2E-8F30-9A6B5C4D3E02}', '2008-02-12 00:00:00', 'CLOUTIER', 'ÉCOLE:', 'École Sainte-Anne, réfection du toit',
     'ARPENTAGE:BORNAGE', 4.25, 4.25, 'Reprise, neige', 0, 0, 0, 70, 'N', 0, 0, 0, -1, '{3C4D0004-7E5F-4A6B-9C80-1D2E3F4A5B04}', NULL),
    ('{7E0C0003-5B1C-4D2E-8F30-9A6B5C4D3E03}', '2008-02-13 00:00:00', 'CLOUTIER', 'HARBOR:SURVEY', 'Boundary survey',
     'SURVEY:DRAFT', 6, 6, NULL, 0, -1, 85, 41.6667, 'N', 0, 0, 0, -1, '{3C4D0004-7E5F-4A6B-9C80-1D2E3F4A5B04}', NULL),
    ('{7E0C0004-5B1C-4D2E-8F30-9A6B5C4D3E04}', '2008-02-22 00:00:00', 'BOATWORKS', 'MARINA:', 'Dock replacement', 'DIVE:', 2.5, 2.5,
     'Piles 9 to 14', 0, -1, 290, 140, 'N', 0, 0, 0, -1, '{3C4D0005-7E5F-4A6B-9C80-1D2E3F4A5B05}', '2008-02-23 10:00:00');

INSERT INTO ExpenseLog (ELID, ELDate, EmployeeID, ProjectID, ExpID, ELDescription, ELUnits, ELCost, ELMarkup, ELChgAmt,
    ELBillable, ELBilled, ELPosted, isSub, VendorBillID, LastUpdated)
VALUES
    ('{5E6F0032-8A7B-4C9D-AE10-2F3A4B5C6D32}', '2008-02-19 00:00:00', 'TOWER9', 'LIGHT:', 'TRAVEL:LAUNCH', 'Lift, half a day', 0.5,
     385, 12.5, 216.56, -1, 'N', -1, -1, '{3C4D0003-7E5F-4A6B-9C80-1D2E3F4A5B03}', NULL),
    ('{5E6F0033-8A7B-4C9D-AE10-2F3A4B5C6D33}', '2008-02-12 00:00:00', 'CLOUTIER', 'ÉCOLE:', 'BOUND:GRANITE', 'Bornes de granit', 2,
     96, 85, 355.2, -1, 'N', -1, -1, '{3C4D0004-7E5F-4A6B-9C80-1D2E3F4A5B04}', NULL),
    ('{5E6F0034-8A7B-4C9D-AE10-2F3A4B5C6D34}', '2008-02-13 00:00:00', 'CLOUTIER', 'HARBOR:SURVEY', 'TRAVEL:MILE', 'Lévis et retour',
     612, 0.505, 0, 309.06, -1, 'N', -1, -1, '{3C4D0004-7E5F-4A6B-9C80-1D2E3F4A5B04}', NULL),
    ('{5E6F0035-8A7B-4C9D-AE10-2F3A4B5C6D35}', '2008-02-14 00:00:00', 'CLOUTIER', 'HARBOR:SURVEY', 'POST:', NULL, 3, 0.41, 0, 1.23,
     0, 'N', -1, -1, '{3C4D0004-7E5F-4A6B-9C80-1D2E3F4A5B04}', NULL),
    ('{5E6F0036-8A7B-4C9D-AE10-2F3A4B5C6D36}', '2008-02-22 00:00:00', 'BOATWORKS', 'MARINA:', 'SUBCONTRACTED WORK:UNDERWATER VIDEO',
     'Film of the piles', 1, 900, 10, 990, -1, 'N', -1, -1, '{3C4D0005-7E5F-4A6B-9C80-1D2E3F4A5B05}', '2008-02-23 10:05:00');


-- The bills: of one line, of many, one without a due date and one without a number

INSERT INTO VendorBill (VendorBillID, VendorID, BillNumber, BillDate, BillDueDate, BillMemo, BillRef, LastUpdated)
VALUES
    ('{3C4D0003-7E5F-4A6B-9C80-1D2E3F4A5B03}', 'TOWER9', 'T9-0219', '2008-02-19 00:00:00', NULL, NULL, NULL, NULL),
    ('{3C4D0004-7E5F-4A6B-9C80-1D2E3F4A5B04}', 'CLOUTIER', '2008-017', '2008-02-15 00:00:00', '2008-03-16 00:00:00',
     'Travaux de février', 'É-17', NULL),
    ('{3C4D0005-7E5F-4A6B-9C80-1D2E3F4A5B05}', 'BOATWORKS', NULL, '2008-02-25 00:00:00', '2008-03-10 00:00:00', NULL, '',
     '2008-02-25 17:20:00');
