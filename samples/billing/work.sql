-- What the sample firm works with, beside its clients: its people and vendors, projects, and the time, expenses, bills, invoices
-- and payments of the first weeks of 2008. It goes in behind the clients; the codes and accounts stand in codes.sql.
--
-- No row has been sent to QuickBooks yet. Every key that a row names is there, and amounts add up. Dates are UTC. Of keys, those
-- of projects, activities and expense codes have a colon: code, colon, phase or sub-code.


-- Employees: at work, with an apostrophe, without a number, and one who has left

INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName, EmpMI, EmpSalt, EmpCompany, EmpStreet, EmpCity, EmpState, EmpZip,
    EmpHPhone, MobileNumber, EmpEmail, EmpDateHired, EmpDateReleased, EmpSSN, EmpBillRate, EmpCostRate, Status, LastUpdated)
VALUES
    ('MHALE', 0, 'Marlow', 'Hale', 'T', 'Mr.', NULL, '9 Beacon Court', 'Portsmouth', 'NH', '03801', '(603) 555-0201',
     '603-555-0202', 'mhale@marlowhale.example', '2003-01-06 00:00:00', NULL, '987-65-4320', 145, 62.5, 'Active',
     '2007-12-28 15:00:00'),
    ('JPARK', 0, 'Ji-won', 'Park', NULL, 'Ms.', NULL, '40 Islington Street', 'Portsmouth', 'NH', '03801', '603 555 0203', NULL,
     'jpark@marlowhale.example', '2004-05-03 00:00:00', NULL, '987-65-4321', 110, 44, 'Active', '2008-02-18 20:11:40'),
    ('TOBRIEN', 0, 'Tess', 'O''Brien', 'M', 'Mrs.', NULL, '6 Saint John''s Street', 'Dover', 'NH', '03820', '603.555.0204',
     NULL, NULL, '2005-09-19 00:00:00', NULL, '987-65-4322', 95, 36.25, NULL, NULL),
    ('RSANTOS', 0, 'Rui', 'Santos', 'D', '', NULL, '212 State Road', 'Kittery', 'ME', '03904', '2075550205', '207-555-0206',
     'rsantos@marlowhale.example', '2006-06-12 00:00:00', NULL, '', 80, 28, 'Active', NULL),
    ('KLUND', 0, 'Karin', 'Lund', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, '2003-03-10 00:00:00',
     '2006-10-31 00:00:00', '987-65-4324', 90, 35, 'Inactive', '2006-11-01 14:30:00');


-- More of them, for what their rows are like: names that are the same, long, unknown or missing; numbers of every shape;
-- states, phones and dates that are blank or odd; and who has left

INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName, EmpMI, EmpSalt, EmpStreet, EmpStreet2, EmpCity, EmpState, EmpZip,
    EmpHPhone, EmpContactPhone, MobileNumber, EmpHFax, EmpEmail, EmpDateHired, EmpDateReleased, EmpSSN, EmpBillRate, EmpCostRate,
    Status, LastUpdated)
VALUES
    ('ALEE', 0, 'Ann', 'Lee', NULL, 'Ms.', '1 Bow Street', NULL, 'Portsmouth', 'NH', '03801', '6035550220', NULL, NULL, NULL,
     'alee@marlowhale.example', '2002-04-01 00:00:00', NULL, '987654330', 90, 36, 'Active', '2007-11-05 14:00:00'),
    ('ALEE2', 0, 'Ann', 'Lee', '', 'Mrs.', '77 Court Street', 'Apartment 4', 'Dover', 'NH', '03820', '603-555-0221', NULL, NULL,
     NULL, 'ann.lee@marlowhale.example', '2005-01-17 00:00:00', NULL, '987654331', 85, 34, 'Active', NULL),
    ('ALEE3', 0, 'Ann', 'Lee', 'R', NULL, NULL, NULL, 'Eliot', 'ME', '03903', NULL, NULL, NULL, NULL, NULL,
     '2007-08-06 00:00:00', NULL, '111111111', 60, 22.5, NULL, NULL),
    ('BWESTERVELT', 0, 'Bartholomew-Christopher', 'van Westervelt', NULL, 'Mr.', '5 Pleasant Point Drive', NULL, 'Portsmouth',
     'New Hampshire', '03801-4455', '(603) 555-0222 ext. 17', '603/555/0223', '603 555 0224', '603.555.0225',
     'bart@marlowhale.example', '2001-10-15 00:00:00', NULL, '987654332', 130, 55, 'Active', '2008-01-02 13:15:00'),
    ('CDUBOIS', 0, 'Céline', 'Dubois', 'É', 'Mlle', '3, rue des Érables', NULL, 'Lévis', 'QC', 'G6V 3A1', '418 555-0226', NULL,
     NULL, NULL, 'cdubois@marlowhale.example', '2006-03-20 00:00:00', NULL, '04645419', 95, 40, 'Active', NULL),
    ('DKANE', 0, 'Dermot', 'Kane', 'P', 'Dr.', '19 Elwyn Road', '', 'Portsmouth', '', '', '', '', '', '', '',
     '1999-09-01 00:00:00', NULL, '333333333', 150, 70, 'Active', '2006-02-14 17:30:00'),
    ('EFOSS', 0, 'Missing Data', 'Foss', NULL, '', '8 Mechanic Street', NULL, 'Kittery', 'ME', '03904', NULL, NULL, NULL, NULL,
     NULL, '2004-11-29 00:00:00', '2005-03-31 00:00:00', '', 45, 18, 'Inactive', '2005-04-01 09:00:00'),
    ('FRANK', 0, 'Frank', 'Missing Data', NULL, NULL, NULL, NULL, NULL, NULL, NULL, '555-0227', NULL, NULL, NULL, NULL, NULL, NULL,
     NULL, 40, 16, 'Active', NULL),
    ('GSTILES', 0, 'Gwen', 'Stiles', 'A', 'Ms', '2 Love Lane', NULL, 'Kittery', 'ME', '03904', '207 555 0228', NULL, NULL, NULL,
     'gwen@marlowhale.example', '2007-02-05 00:00:00', NULL, 'AB123456C', 70, 27, 'Active', '2008-02-01 12:00:00'),
    ('HNGUYEN', 0, 'Hà', 'Nguyễn', NULL, NULL, '60 Maplewood Avenue', NULL, 'Portsmouth', 'NH', '03801', '603.555.0229', NULL,
     '603.555.0230', NULL, 'ha@marlowhale.example', '2007-06-18 00:00:00', NULL, '987-65-4333', 75, 29.75, 'Active', NULL),
    ('IROSS', 0, 'Ian', 'Ross', NULL, '   ', '11 Gates Street', NULL, 'Portsmouth', '   ', '03801', '4', NULL, NULL, NULL, NULL,
     '2003-05-12 00:00:00', NULL, '98765433', 88, 35, '', '2007-07-09 18:20:00'),
    ('JOSTROM', 0, 'Jens', 'Öström', NULL, 'Herr', 'Åvägen 4', NULL, 'Göteborg', NULL, '412 50', '+46 31 555 02 31', NULL, NULL,
     NULL, 'jens@marlowhale.example', '2007-09-03 00:00:00', '2007-12-21 00:00:00', NULL, 100, 45, 'Inactive',
     '2007-12-22 10:00:00'),
    ('K.MORI', 0, 'Kenji', 'Mori', NULL, 'Mr', '200 Lafayette Road, Unit #12', 'c/o Sato; rear', 'Portsmouth', 'NH', '03801',
     '603 555 0232', NULL, NULL, NULL, 'kmori@marlowhale.example', '2006-01-09 00:00:00', NULL, '987654334', 92, 37, 'Active', NULL),
    ('LADAMS', 0, 'Lou', 'Adams', 'Jr.', 'Mr.', '4 Brackett Lane', NULL, 'Rye', 'NH', '03870', '1-603-555-0233', NULL, NULL, NULL,
     NULL, '1998-03-02 00:00:00', '2002-06-28 00:00:00', '987654335', NULL, NULL, 'Inactive', NULL),
    ('MBELL', 0, ' Maud ', 'Bell', NULL, NULL, '31 Union Street', NULL, 'Portsmouth', 'NH', '03801', 'call the office', NULL,
     NULL, NULL, NULL, '2004-08-23 00:00:00', NULL, '222222222', 65, 25, 'Active', '2004-08-23 14:00:00'),
    ('NCOTE', 0, 'Noël', 'Côté', NULL, 'M.', '9, chemin du Lac', NULL, 'Magog', 'QC', 'J1X 3W5', '819 555 0234', NULL, NULL, NULL,
     NULL, '2005-05-30 00:00:00', NULL, '046454286', 82, 33, 'Active', NULL),
    ('OPIKE', 0, 'Orla', 'Pike', NULL, 'Ms.', NULL, 'Rural Route 2', NULL, 'VT', NULL, NULL, '802-555-0235', NULL, NULL,
     'orla@marlowhale.example', '2008-01-02 00:00:00', NULL, '987654336', 55, 20, 'Active', '2008-01-02 15:00:00'),
    ('PQUINN', 0, 'Pat', 'Quinn', NULL, 'Rev.', '14 Austin Street', NULL, 'Portsmouth', 'NH', '03801', '603 555 0236', NULL, NULL,
     NULL, NULL, NULL, NULL, '9876543371', 70, 1000, 'Active', '2007-10-10 10:10:10'),
    ('RTHORNE', 0, 'Ruth', 'Thorne & Daughter', NULL, NULL, '23 <Rear> Daniel Street', NULL, 'Portsmouth', 'NH', '03801',
     '603 555 0237', NULL, NULL, NULL, NULL, '2003-12-01 00:00:00', NULL, '987654338', 77, 30.125, 'Active', NULL),
    ('SVOSS', 0, 'Sven', 'Voss', NULL, 'Mr.', '80 Hanover Street', NULL, 'Portsmouth', 'NH', '03801', '603 555 0238', NULL, NULL,
     NULL, 'sven@marlowhale.example', '2007-11-12 00:00:00', NULL, '987654339', 68, 26, 'Leave', '2008-02-04 11:45:00'),
    ('UWEBB', 0, 'Una', 'Webb', NULL, 'Ms.', '16 Dennett Street', NULL, 'Portsmouth', 'NH', '03801', '603 555 0239', NULL, NULL,
     NULL, NULL, '2000-02-29 00:00:00', NULL, '987654340', 1, 1, 'Active', '2000-02-29 23:59:59');


-- Vendors: companies, a person, and one that is used no more

INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName, EmpCompany, EmpStreet, EmpCity, EmpState, EmpZip, EmpContactPhone,
    EmpHFax, EmpEmail, EmpDateHired, EmpSSN, EmpBillRate, EmpCostRate, Status, LastUpdated)
VALUES
    ('SOUNDINGS', -1, 'Amos', 'Reade', 'Coastal Soundings, LLC', '2 Commercial Wharf', 'Portland', 'ME', '04101',
     '(207) 555-0210', '(207) 555-0211', 'office@coastalsoundings.example', '2004-02-02 00:00:00', '98-7654320', 120, 85,
     'Active', '2008-01-09 13:20:00'),
    ('DRILLCO', -1, 'Wade', 'Fenn', 'Drill & Core Company', 'Route 125', 'Epping', 'NH', '03042', '603-555-0212', NULL,
     'dispatch@drillcore.example', '2005-07-11 00:00:00', '98-7654321', NULL, 150, 'Active', NULL),
    ('YTRAN', -1, 'Yen', 'Tran', NULL, '18 Middle Street', 'Newburyport', 'MA', '01950', '978 555 0213', NULL, NULL,
     '2007-04-16 00:00:00', NULL, 70, 45, NULL, '2007-10-22 09:05:00'),
    ('OLDLAB', -1, '', '', 'Merrimack Soil Laboratory', NULL, 'Lowell', 'MA', NULL, NULL, NULL, NULL, '2003-02-24 00:00:00', '',
     NULL, 60, 'Inactive', '2005-05-31 12:00:00');


-- More of them: a name that is an employee's as well, a long company, one without any name, and addresses of every shape

INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName, EmpMI, EmpSalt, EmpCompany, EmpStreet, EmpStreet2, EmpCity, EmpState,
    EmpZip, EmpHPhone, EmpContactPhone, MobileNumber, EmpHFax, EmpEmail, EmpDateHired, EmpSSN, EmpBillRate, EmpCostRate, Status,
    LastUpdated)
VALUES
    ('ALEEDRAFT', -1, 'Ann', 'Lee', NULL, NULL, 'Lee Drafting', '12 Pray Street', NULL, 'Portsmouth', 'NH', '03801', '6035550240',
     NULL, NULL, NULL, NULL, '2006-05-01 00:00:00', '98-7654330', 75, 50, 'Active', NULL),
    ('BOATWORKS', -1, 'Missing Data', 'Missing Data', NULL, NULL, 'Piscataqua River Boatworks & Marine Salv.', 'Foot of Ceres Street',
     'Pier 2', 'Portsmouth', 'NH', '03801', NULL, '(603) 555-0241', '603 555 0242', '603 555 0243', 'hire@boatworks.example',
     '2004-06-14 00:00:00', '98-7654331', 210, 160, 'Active', '2007-09-18 16:40:00'),
    ('CLOUTIER', -1, 'Guy', 'Cloutier', 'J', 'M.', 'Arpentage Cloutier', '410, rue King', 'Bureau 3', 'Sherbrooke', 'QC', 'J1H 1R4',
     '819 555-0244', NULL, NULL, NULL, 'guy@cloutier.example', '2007-01-22 00:00:00', NULL, 110, 80, 'Active', NULL),
    ('DOCUPRINT', -1, NULL, NULL, NULL, NULL, 'DocuPrint', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
     NULL, NULL, NULL),
    ('FLYNN', -1, 'Fergus', 'Flynn', NULL, 'Capt.', 'Fergus Flynn', 'Fergus Flynn', '7 Wentworth Road', 'New Castle', 'NH', '03854',
     '603 555 0245', NULL, NULL, NULL, NULL, '2005-10-10 00:00:00', '987-65-4350', 90, 65, 'Active', '2008-02-11 08:05:00'),
    ('GEO-TECH', -1, 'Hollis', 'Brandt', NULL, 'Dr.', 'Geo-Tech "North" Consultants', '1 Innovation Way', '', 'Durham', '', '03824', '',
     '', '', '', '', '2006-09-05 00:00:00', '', 140, 110, 'Active', NULL),
    ('OMALLEYS', -1, 'Siobhán', 'O''Malley', NULL, NULL, 'O''Malley''s Tree Service', '5 St. Mary''s Lane', NULL, 'York', 'ME', '03909',
     '207 555 0246', NULL, NULL, NULL, NULL, '2007-03-26 00:00:00', '98-7654333', NULL, 75, NULL, '2007-12-03 19:25:00'),
    ('RENTALS', -1, '', 'Missing Data', NULL, NULL, 'Seacoast Equipment Rentals', '900 Route 1 Bypass', NULL, 'Portsmouth', 'NH', '03801',
     '603-555-0247 x2', NULL, NULL, '603-555-0248', NULL, '2003-07-07 00:00:00', '98-7654334', NULL, 95, 'Inactive', NULL),
    ('TOWER9', -1, 'Mary Ann', 'Kowalczyk-Abernathy', 'T', 'Mrs.', NULL, 'Tower 9', NULL, 'Boston', 'MA', '02110', NULL, '617 555 0249',
     NULL, NULL, 'maryann@tower9.example', '2007-10-15 00:00:00', NULL, 125, 90, 'Active', '2007-10-15 12:00:00'),
    ('ZHANG', -1, '偉', '張', NULL, NULL, '張氏測量', '15 Edinboro Street', NULL, 'Boston', 'MA', '02111', '617 555 0250', NULL, NULL, NULL,
     NULL, '2007-05-14 00:00:00', NULL, 100, 72, 'Active', NULL);


-- Projects and their phases

INSERT INTO Project (ProjectID, ProjectCode, ProjectPhase, ProjectName, ClientID, EmployeeID, ProjectIsPhase, ParentProjectID,
    PhaseDescription, ProjectConType, ProjectStatus, ProjectStartDate, ProjectStreet, ProjectCity, ProjectState, ProjectZip,
    ProjectMemo, LastUpdated)
VALUES
    ('HARBOR:', 'HARBOR', '', 'Harbor Road subdivision', 'ABBOTT', 'MHALE', 0, NULL, NULL, 'Hourly', 'Main',
     '2007-09-04 00:00:00', '14 Harbor Road', 'Portland', 'ME', '04101',
     'The owner''s title is in dispute along the north line.', '2008-01-22 19:05:00'),
    ('HARBOR:SURVEY', 'HARBOR', 'SURVEY', 'Boundary survey', 'ABBOTT', 'JPARK', -1, 'HARBOR:', 'Boundary and topography',
     'Hourly', 'Active', '2007-09-10 00:00:00', NULL, NULL, NULL, NULL, NULL, NULL),
    ('HARBOR:PLANS', 'HARBOR', 'PLANS', 'Subdivision plans', 'ABBOTT', 'TOBRIEN', -1, 'HARBOR:', 'Plans for the planning board',
     'Fixed', 'Active', '2008-01-07 00:00:00', NULL, NULL, NULL, NULL, NULL, '2008-02-25 18:00:00'),
    ('MARINA:', 'MARINA', '', 'Dock replacement', 'BAYVIEW', 'MHALE', 0, NULL, NULL, 'Fixed', 'Active', '2008-01-14 00:00:00',
     '1 Quay Street', 'Camden', 'ME', '04843', NULL, '2008-02-20 15:40:12'),
    ('CULVERT:', 'CULVERT', '', 'Elm Street culvert', 'EASTON', 'JPARK', 0, NULL, NULL, 'Hourly Not To Exceed', 'Active',
     '2007-05-21 00:00:00', 'Elm Street', 'Easton', 'MA', '02356', 'Work at low water only.', NULL),
    ('CULVERT:DESIGN', 'CULVERT', 'DESIGN', 'Design and permits', 'EASTON', 'JPARK', -1, 'CULVERT:', 'Up to the permit',
     'Hourly Not To Exceed', 'Completed', '2007-05-21 00:00:00', NULL, NULL, NULL, NULL, NULL, '2007-12-14 22:00:00'),
    ('STAIR:', 'STAIR', '', 'Porch & outside stair', 'ODWYER', 'TOBRIEN', 0, NULL, NULL, 'Hourly', NULL, '2008-02-11 00:00:00',
     '12 St. Mary''s Road', 'Quincy', 'MA', '02169', NULL, NULL),
    ('PLANT2:', 'PLANT2', '', 'Second casting plant', 'DELMAR', 'MHALE', 0, NULL, NULL, 'Fixed', 'Hold', '2006-10-02 00:00:00',
     '2200 Industrial Parkway', 'Worcester', 'MA', '01608', NULL, '2007-03-30 21:20:00');


-- Time: billed and open, overtime, a note in rich text, an entry that is not posted, and the time of a vendor, which goes with the
-- vendor's bill and is not posted either

INSERT INTO TimeEntry (TEID, TEDate, EmployeeID, ProjectID, ProjectName, ActivityID, TEHours, aHours, TEDescription, TEMemo,
    TEMemoExists, TEBill, TEBillRate, TECostRate, TEBillStatus, TEOT, TECompTime, TEPosted, isSub, TransactionID, VendorBillID,
    LastUpdated)
VALUES
    ('{7E0A0001-5B1C-4D2E-8F30-9A6B5C4D3E01}', '2008-01-15 00:00:00', 'JPARK', 'HARBOR:SURVEY', 'Boundary survey',
     'SURVEY:FIELD', 8, 8, 'North line, stations 1 to 14', NULL, 0, -1, 165, 75, 'B', 0, 0, -1, 0,
     '{1A2B0001-6C3D-4E5F-8A90-0B1C2D3E4F01}', NULL, '2008-01-31 21:00:00'),
    ('{7E0A0002-5B1C-4D2E-8F30-9A6B5C4D3E02}', '2008-01-16 00:00:00', 'JPARK', 'HARBOR:SURVEY', 'Boundary survey',
     'SURVEY:FIELD', 6.5, 6.5, 'South line', NULL, 0, -1, 165, 75, 'B', 0, 0, -1, 0, '{1A2B0001-6C3D-4E5F-8A90-0B1C2D3E4F01}',
     NULL, '2008-01-31 21:00:00'),
    ('{7E0A0003-5B1C-4D2E-8F30-9A6B5C4D3E03}', '2008-01-17 00:00:00', 'TOBRIEN', 'HARBOR:SURVEY', 'Boundary survey',
     'SURVEY:DRAFT', 4.25, 4.25, 'Plot of the boundary', '{\rtf1\ansi Monument 7 was not found; an iron pin was set.}', -1, -1,
     85, 40, 'B', 0, 0, -1, 0, '{1A2B0001-6C3D-4E5F-8A90-0B1C2D3E4F01}', NULL, '2008-01-31 21:00:00'),
    ('{7E0A0004-5B1C-4D2E-8F30-9A6B5C4D3E04}', '2008-02-19 00:00:00', 'TOBRIEN', 'HARBOR:PLANS', 'Subdivision plans',
     'SURVEY:DRAFT', 7.5, 7.5, 'Sheets 1 to 3', NULL, 0, -1, 85, 40, 'N', 0, 0, -1, 0, NULL, NULL, NULL),
    ('{7E0A0005-5B1C-4D2E-8F30-9A6B5C4D3E05}', '2008-02-20 00:00:00', 'JPARK', 'CULVERT:', 'Elm Street culvert', 'HYDRO:', 5, 5,
     'Design flow after the town''s new rainfall table', NULL, 0, -1, 125, 60, 'N', 0, 0, -1, 0, NULL, NULL,
     '2008-02-21 13:00:00'),
    ('{7E0A0006-5B1C-4D2E-8F30-9A6B5C4D3E06}', '2008-02-21 00:00:00', 'MHALE', 'MARINA:', 'Dock replacement', 'STRUCT:CALC',
     3.75, 3.75, 'Pile loads', NULL, 0, -1, 145, 62.5, 'N', 0, 0, -1, 0, NULL, NULL, '2008-02-21 23:30:00'),
    ('{7E0A0007-5B1C-4D2E-8F30-9A6B5C4D3E07}', '2008-02-22 00:00:00', 'RSANTOS', 'MARINA:', 'Dock replacement', 'STRUCT:SITE',
     2, 2, 'Second visit, after hours', NULL, 0, 0, 0, 28, 'N', -1, 0, -1, 0, NULL, NULL, NULL),
    ('{7E0A0008-5B1C-4D2E-8F30-9A6B5C4D3E08}', '2008-02-22 00:00:00', 'RSANTOS', 'HARBOR:', 'Harbor Road subdivision',
     'GEN:VAC', 8, 8, 'Vacation', NULL, 0, 0, 0, 0, 'N', 0, 0, 0, 0, NULL, NULL, NULL),
    ('{7E0A0009-5B1C-4D2E-8F30-9A6B5C4D3E09}', '2008-02-18 00:00:00', 'SOUNDINGS', 'MARINA:', 'Dock replacement', 'HYDRO:', 10,
     10, 'Soundings at low water', NULL, 0, -1, 120, 85, 'N', 0, 0, 0, -1, NULL, '{3C4D0001-7E5F-4A6B-9C80-1D2E3F4A5B01}',
     '2008-02-19 16:00:00');


-- Expenses: of employees and of vendors, billed and open

INSERT INTO ExpenseLog (ELID, ELDate, EmployeeID, ProjectID, ExpID, ELDescription, ELUnits, ELCost, ELMarkup, ELChgAmt,
    ELBillable, ELBilled, ELPosted, isSub, TransactionID, VendorBillID, LastUpdated)
VALUES
    ('{5E6F0001-8A7B-4C9D-AE10-2F3A4B5C6D01}', '2008-01-15 00:00:00', 'JPARK', 'HARBOR:SURVEY', 'TRAVEL:MILE',
     'Portsmouth to Portland and back', 104, 0.505, 0, 52.52, -1, 'B', -1, 0, '{1A2B0001-6C3D-4E5F-8A90-0B1C2D3E4F01}', NULL,
     '2008-01-31 21:00:00'),
    ('{5E6F0002-8A7B-4C9D-AE10-2F3A4B5C6D02}', '2008-01-18 00:00:00', 'TOBRIEN', 'HARBOR:SURVEY', 'REPRO:',
     'Prints for the abutters', 40, 0.85, 15, 39.1, -1, 'B', -1, 0, '{1A2B0001-6C3D-4E5F-8A90-0B1C2D3E4F01}', NULL,
     '2008-01-31 21:00:00'),
    ('{5E6F0003-8A7B-4C9D-AE10-2F3A4B5C6D03}', '2008-02-18 00:00:00', 'DRILLCO', 'MARINA:', 'LAB:SOIL',
     'Samples of the sea bed', 6, 48, 10, 316.8, -1, 'N', -1, -1, NULL, '{3C4D0002-7E5F-4A6B-9C80-1D2E3F4A5B02}', NULL),
    ('{5E6F0004-8A7B-4C9D-AE10-2F3A4B5C6D04}', '2008-02-19 00:00:00', 'SOUNDINGS', 'MARINA:', 'TRAVEL:FARE',
     'Launch and boatman''s hire', 1, 210, 0, 210, -1, 'N', -1, -1, NULL, '{3C4D0001-7E5F-4A6B-9C80-1D2E3F4A5B01}',
     '2008-02-19 16:05:00'),
    ('{5E6F0005-8A7B-4C9D-AE10-2F3A4B5C6D05}', '2008-02-25 00:00:00', 'YTRAN', 'STAIR:', 'REPRO:', 'Scans of the old drawings',
     12, 0.85, 15, 11.73, -1, 'N', -1, -1, NULL, NULL, NULL),
    ('{5E6F0006-8A7B-4C9D-AE10-2F3A4B5C6D06}', '2008-02-26 00:00:00', 'MHALE', 'CULVERT:', 'FILING:', 'Order of conditions', 1,
     75, 0, 75, 0, 'N', 0, 0, NULL, NULL, NULL);


-- Bills of vendors; their lines are the time and the expenses that name them

INSERT INTO VendorBill (VendorBillID, VendorID, BillNumber, BillDate, BillDueDate, BillMemo, BillRef, LastUpdated)
VALUES
    ('{3C4D0001-7E5F-4A6B-9C80-1D2E3F4A5B01}', 'SOUNDINGS', 'CS-2208', '2008-02-20 00:00:00', '2008-03-21 00:00:00',
     'Soundings for the docks at Bayview', '', NULL),
    ('{3C4D0002-7E5F-4A6B-9C80-1D2E3F4A5B02}', 'DRILLCO', '7714', '2008-02-21 00:00:00', '2008-03-22 00:00:00', NULL, NULL,
     '2008-02-22 10:10:10');


-- Invoices: of time and expenses, a manual one with a discount, and a draft

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, TransactionDate, InvoiceDate,
    TransactionInvDateFrom, TransactionInvDateTo, IsDraft, TransactionManInv, TransactionInvSendBillFlag, TransactionInvBillAmt,
    ServiceAmt, ServiceTaxAmt, ExpAmt, ExpTaxAmt, MainServiceTaxAmt, MainExpenseTaxAmt, TransactionManInvMiscAmt,
    TransactionManInvPaidToday, TransactionInvDiscount, InvRetainerAmtApplied, TransactionMemo, LastUpdated)
VALUES
    ('{1A2B0001-6C3D-4E5F-8A90-0B1C2D3E4F01}', '1041', 'ABBOTT', 'HARBOR:SURVEY', '2008-01-31 00:00:00', '2008-01-31 00:00:00',
     '2008-01-01 00:00:00', '2008-01-31 00:00:00', 0, 0, 'P', 2845.37, 2753.75, 0, 91.62, 0, 0, 0, 0, 0, 0, 0,
     'Boundary survey in January', '2008-01-31 21:00:00'),
    ('{1A2B0002-6C3D-4E5F-8A90-0B1C2D3E4F02}', '1042', 'EASTON', 'CULVERT:DESIGN', '2008-02-04 00:00:00', '2008-02-04 00:00:00',
     NULL, NULL, 0, -1, 'B', 4400, 4500, 0, 0, 0, 0, 0, 0, 0, 100, 0, NULL, NULL),
    ('{1A2B0003-6C3D-4E5F-8A90-0B1C2D3E4F03}', '1043', 'BAYVIEW', 'MARINA:', '2008-02-29 00:00:00', '2008-02-29 00:00:00',
     '2008-02-01 00:00:00', '2008-02-29 00:00:00', -1, 0, 'P', 543.75, 543.75, 0, 0, 0, 0, 0, 0, 0, 0, 0, 'To be checked',
     '2008-02-29 17:00:00');


-- The lines of the manual invoice

INSERT INTO ManInvDetail (ManInvDetailID, TransactionID, ManInvDetailDesc, ManInvDetailAmt, ManInvDetailTaxPerc,
    ManInvDetailTaxAmt, ManInvDetailTot)
VALUES
    ('{9A8B0001-1C2D-4E3F-B450-6D7E8F9A0B01}', '{1A2B0002-6C3D-4E5F-8A90-0B1C2D3E4F02}', 'Design of the culvert', 3800, 0, 0,
     3800),
    ('{9A8B0002-1C2D-4E3F-B450-6D7E8F9A0B02}', '{1A2B0002-6C3D-4E5F-8A90-0B1C2D3E4F02}', 'Permit papers', 700, 0, 0, 700);


-- Payments: two of invoices, a retainer, and one of the kind that is not sent

INSERT INTO Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRetainer, PayRef, PayMemo, PayEnteredBy, LastUpdated)
VALUES
    ('{4D5E0001-2F3A-4B6C-8D70-7E8F9A0B1C01}', 'ABBOTT', '2008-02-15 00:00:00', 2000, '1', 0, '20771', 'On account of 1041',
     'MHALE', '2008-02-15 15:30:00'),
    ('{4D5E0002-2F3A-4B6C-8D70-7E8F9A0B1C02}', 'EASTON', '2008-02-25 00:00:00', 4400, '8', 0, 'W-118', NULL, 'MHALE', NULL),
    ('{4D5E0003-2F3A-4B6C-8D70-7E8F9A0B1C03}', 'BAYVIEW', '2008-01-14 00:00:00', 5000, '1', -1, '3309',
     'Retainer for the docks, by Mr. Lindqvist''s check', 'MHALE', '2008-01-14 18:00:00'),
    ('{4D5E0004-2F3A-4B6C-8D70-7E8F9A0B1C04}', 'ABBOTT', '2008-02-28 00:00:00', 45.37, '6', 0, NULL, 'Written back', 'MHALE',
     '2008-02-28 18:00:00');


-- What the payments went to: one row for each invoice, and the row of the retainer

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, TransactionDate,
    TransactionPayAmtApplied, TransactionPayLateFeeRecd, LastUpdated)
VALUES
    ('{6F7A0001-3B4C-4D5E-9F60-8A9B0C1D2E01}', '1041', 'ABBOTT', 'HARBOR:SURVEY', '{4D5E0001-2F3A-4B6C-8D70-7E8F9A0B1C01}',
     '2008-02-15 00:00:00', 2000, 0, '2008-02-15 15:30:00'),
    ('{6F7A0002-3B4C-4D5E-9F60-8A9B0C1D2E02}', '1042', 'EASTON', 'CULVERT:DESIGN', '{4D5E0002-2F3A-4B6C-8D70-7E8F9A0B1C02}',
     '2008-02-25 00:00:00', 4400, 0, NULL),
    ('{6F7A0003-3B4C-4D5E-9F60-8A9B0C1D2E03}', '0', 'BAYVIEW', 'MARINA:', '{4D5E0003-2F3A-4B6C-8D70-7E8F9A0B1C03}',
     '2008-01-14 00:00:00', 5000, 0, '2008-01-14 18:00:00'),
    ('{6F7A0004-3B4C-4D5E-9F60-8A9B0C1D2E04}', '1041', 'ABBOTT', 'HARBOR:SURVEY', '{4D5E0004-2F3A-4B6C-8D70-7E8F9A0B1C04}',
     '2008-02-28 00:00:00', 45.37, 0, '2008-02-28 18:00:00');


-- Groups, for the filters of a transfer

INSERT INTO EmployeeGroupDetail (EGID, EmployeeID)
VALUES
    ('OFFICE', 'MHALE'),
    ('OFFICE', 'TOBRIEN'),
    ('FIELD', 'JPARK'),
    ('FIELD', 'RSANTOS'),
    ('FIELD', 'SOUNDINGS'),
    ('FIELD', 'DRILLCO');

INSERT INTO ProjectGroupDetail (PGID, ProjectID)
VALUES
    ('WATER', 'MARINA:'),
    ('WATER', 'CULVERT:'),
    ('WATER', 'CULVERT:DESIGN'),
    ('LAND', 'HARBOR:'),
    ('LAND', 'HARBOR:SURVEY'),
    ('LAND', 'HARBOR:PLANS');

INSERT INTO ActivityGroupDetail (AGID, ActivityID)
VALUES
    ('FIELDWORK', 'SURVEY:FIELD'),
    ('FIELDWORK', 'STRUCT:SITE'),
    ('TIMEOFF', 'GEN:VAC'),
    ('TIMEOFF', 'GEN:SICK'),
    ('TIMEOFF', 'GEN:HOL'),
    ('TIMEOFF', 'GEN:COMP');

INSERT INTO ExpenseGroupDetail (XGID, ExpID)
VALUES
    ('CAR', 'TRAVEL:MILE'),
    ('CAR', 'TRAVEL:FARE'),
    ('PAPER', 'REPRO:'),
    ('PAPER', 'FILING:');
