-- The lists of the sample firm: what its people do (activities), what it spends (expense codes), and its chart of accounts. They
-- go in behind what it works with.
--
-- Activities and expense codes become items of QuickBooks, which share one list of names there. So some codes are here for the names
-- that come of them: those that are one name without their colon, those that QuickBooks uses already, and those that are
-- longer than a name may be. None has an account of its own: accounts are known by what QuickBooks calls them.


-- Activities: with and without a sub-activity, the general ones of time off, and one that is used no more

INSERT INTO Activity (ActivityID, ActivityCode, ActivitySub, ActivityDescription, AC_CostRate, AC_BillRate, ActivityBillable,
    IsInActive, LastUpdated)
VALUES
    ('SURVEY:FIELD', 'SURVEY', 'FIELD', 'Field survey, crew of two', 75, 165, -1, 0, '2007-06-04 12:00:00'),
    ('SURVEY:DRAFT', 'SURVEY', 'DRAFT', 'Drafting of plans', 40, 85, -1, 0, NULL),
    ('HYDRO:', 'HYDRO', '', 'Hydrology and drainage', 60, 125, -1, 0, '2008-02-01 17:45:00'),
    ('STRUCT:CALC', 'STRUCT', 'CALC', 'Structural calculations', 62.5, 145, -1, 0, NULL),
    ('STRUCT:SITE', 'STRUCT', 'SITE', 'Site visit at the owner''s request', 62.5, 135, -1, 0, NULL),
    ('GEN:ADMIN', 'GEN', 'ADMIN', 'Office and administration', 30, 0, 0, 0, NULL),
    ('GEN:VAC', 'GEN', 'VAC', 'Vacation', 0, 0, 0, 0, NULL),
    ('GEN:SICK', 'GEN', 'SICK', 'Sick leave', 0, 0, 0, 0, NULL),
    ('GEN:HOL', 'GEN', 'HOL', 'Holiday', 0, 0, 0, 0, NULL),
    ('GEN:COMP', 'GEN', 'COMP', 'Comp time', 0, 0, 0, 0, NULL),
    ('PHOTO:', 'PHOTO', '', 'Aerial photography', 200, 320, -1, -1, '2005-01-03 10:00:00');


-- More of what is done in the field and in the office; rates and descriptions that are nothing, and rates with many decimals

INSERT INTO Activity (ActivityID, ActivityCode, ActivitySub, ActivityDescription, AC_CostRate, AC_BillRate, AC_MinHours,
    ActivityBillable, Tax1_Rate, IsInActive, LastUpdated)
VALUES
    ('SURVEY:BOUNDARY', 'SURVEY', 'BOUNDARY', 'Boundary retracement', 75, 165, 0.25, -1, 0, 0, '2007-11-19 13:20:00'),
    ('SURVEY:TOPO', 'SURVEY', 'TOPO', 'Topographic survey', 75, 160, 0.25, -1, 0, 0, NULL),
    ('SURVEY:STAKEOUT', 'SURVEY', 'STAKEOUT', 'Construction stakeout', 80, 170, 2, -1, 0, 0, '2008-01-08 09:15:00'),
    ('SURVEY:DEEDS', 'SURVEY', 'DEEDS', 'Research at the registry', 41.66667, 88.33333, NULL, -1, NULL, 0, NULL),
    ('SURVEY:MONUMENT', 'SURVEY', 'MONUMENT', 'Setting of bounds & pins', 75, 165, NULL, -1, 0, NULL, NULL),
    ('HYDRO:MODEL', 'HYDRO', 'MODEL', 'Flood model', 68.125, 150, 0, -1, 0, 0, '2007-12-10 20:00:00'),
    ('HYDRO:GAUGE', 'HYDRO', 'GAUGE', 'Reading of gauges', 35, NULL, 0, -1, 0, 0, NULL),
    ('HYDRO:PERMIT', 'HYDRO', 'PERMIT', NULL, 55, 120, 0, -1, 0, 0, '2007-10-01 12:34:56'),
    ('STRUCT:DOCK', 'STRUCT', 'DOCK', 'Docks, piers and floats', 65, 150, 0, -1, 0, 0, NULL),
    ('STRUCT:BRIDGE', 'STRUCT', 'BRIDGE', 'Bridge rating', 70, 160, 0, -1, 5, 0, '2008-02-27 16:10:00'),
    ('STRUCT:FRAME', 'STRUCT', 'FRAME', 'Timber frames: joints, pegs & braces', 62.5, 140, 0, -1, 0, 0, NULL),
    ('STRUCT:REVIEW', 'STRUCT', 'REVIEW', '', NULL, 155, 0, -1, 0, 0, NULL),
    ('DIVE:', 'DIVE', '', 'Inspection under water', 140, 290, 4, -1, 0, 0, '2006-08-08 08:08:08'),
    ('TESTIMONY:PREP', 'TESTIMONY', 'PREP', 'Expert''s preparation', 90, 225, 1, -1, 0, 0, NULL),
    ('TESTIMONY:COURT', 'TESTIMONY', 'COURT', 'Expert''s day in court', 90, 275.5, 4, -1, 0, 0, '2007-05-30 14:00:00'),
    ('GEN:TRAIN', 'GEN', 'TRAIN', 'Courses and conferences', 0, 0, 0, 0, 0, 0, NULL),
    ('GEN:BID', 'GEN', 'BID', 'Proposals', 30, 0, 0, 0, 0, 0, '2008-02-14 11:00:00'),
    ('GEN:IT', 'GEN', 'IT', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),
    ('GEN:MOVE', 'GEN', 'MOVE', 'Move of the office in 2004', 0, 0, 0, 0, 0, -1, '2004-09-20 07:00:00'),
    ('PHOTO:SCAN', 'PHOTO', 'SCAN', 'Scans of old plates', 25, 60, 0, -1, 0, -1, NULL);


-- Scripts and signs of all kinds; names that are just long enough or too long; and names that are in use: STRUCT WIND twice, and
-- QuickBooks has a Design

INSERT INTO Activity (ActivityID, ActivityCode, ActivitySub, ActivityDescription, AC_CostRate, AC_BillRate, ActivityBillable,
    IsInActive, LastUpdated)
VALUES
    ('ARPENTAGE:BORNAGE', 'ARPENTAGE', 'BORNAGE', 'Délimitation à l''amiable', 70, 150, -1, 0, NULL),
    ('PRÜFUNG:BRÜCKE', 'PRÜFUNG', 'BRÜCKE', 'Prüfung nach DIN 1076 (Brücken über 20 m)', 70, 150, -1, 0, '2007-09-03 07:45:00'),
    ('測量:', '測量', '', '現地測量', 70, 150, -1, 0, NULL),
    ('R&D:<NEW>', 'R&D', '<NEW>', 'Trials with "robotic" instruments', 45, 0, 0, 0, NULL),
    ('STORMWATER:POLLUTION PREVENTION', 'STORMWATER', 'POLLUTION PREVENTION', 'Pollution prevention plan', 58, 130, -1, 0,
     '2007-08-15 15:15:00'),
    ('GEOTECHNICAL:SUBSURFACE INVESTIGATION', 'GEOTECHNICAL', 'SUBSURFACE INVESTIGATION', 'Logging of borings', 64, 142, -1, 0, NULL),
    ('CONSTRUCTION ADMINISTRATION:RFI', 'CONSTRUCTION ADMINISTRATION', 'RFI', 'Answers to the contractor', 66, 148, -1, 0, NULL),
    ('CONSTRUCTION ADMINISTRATION:SHOP DRAWINGS', 'CONSTRUCTION ADMINISTRATION', 'SHOP DRAWINGS', 'Review of shop drawings', 66, 148,
     -1, 0, '2008-01-30 18:00:00'),
    ('ENVIRONMENTAL IMPACT STATEMENTS:', 'ENVIRONMENTAL IMPACT STATEMENTS', '', 'Impact statements', 60, 135, -1, -1, NULL),
    ('STRUCT:WIND', 'STRUCT', 'WIND', 'Wind loads', 62.5, 145, -1, 0, NULL),
    ('STRUCT WIND:', 'STRUCT WIND', '', 'Wind loads, as the code was once', 60, 140, -1, 0, '2006-03-03 10:30:00'),
    ('DESIGN:', 'DESIGN', '', 'Design, unspecified', 55, 115, -1, 0, NULL);


-- Expense codes

INSERT INTO Expense (ExpID, ExpCode, ExpSub, ExpDescription, ExpCost, ExpMarkup, ExpBillable, IsInActive, LastUpdated)
VALUES
    ('TRAVEL:MILE', 'TRAVEL', 'MILE', 'Mileage', 0.505, 0, -1, 0, '2008-01-02 08:00:00'),
    ('TRAVEL:FARE', 'TRAVEL', 'FARE', 'Fares and tolls', 0, 0, -1, 0, NULL),
    ('REPRO:', 'REPRO', '', 'Prints and copies', 0.85, 15, -1, 0, '2007-03-12 16:00:00'),
    ('LAB:SOIL', 'LAB', 'SOIL', 'Soil analysis, per sample', 48, 10, -1, 0, NULL),
    ('FILING:', 'FILING', '', 'Filing at the registry of deeds', 75, 0, -1, 0, NULL),
    ('TELEX:', 'TELEX', '', 'Telex', 1.2, 25, 0, -1, '2003-08-01 09:00:00');


-- More of them: costs and markups that are nothing, with many decimals, and below nothing; and the code that stands for items of
-- QuickBooks that no code is known of, which never goes out

INSERT INTO Expense (ExpID, ExpCode, ExpSub, ExpDescription, Exp_Memo, ExpCost, ExpMarkup, ExpBillable, Reimbursable, IsProduct,
    IsInActive, LastUpdated)
VALUES
    ('TRAVEL:AIR', 'TRAVEL', 'AIR', 'Air fares', NULL, 0, NULL, -1, -1, 0, 0, NULL),
    ('TRAVEL:RAIL', 'TRAVEL', 'RAIL', 'Rail fares', NULL, NULL, 0, -1, -1, 0, 0, '2007-10-22 17:00:00'),
    ('TRAVEL:HOTEL', 'TRAVEL', 'HOTEL', 'Nights away', NULL, NULL, NULL, -1, -1, 0, 0, NULL),
    ('TRAVEL:MEALS', 'TRAVEL', 'MEALS', 'Meals on the road', 'Receipts above 25 dollars', 39, NULL, 0, -1, 0, 0,
     '2008-02-05 12:00:00'),
    ('TRAVEL:PARK', 'TRAVEL', 'PARK', NULL, NULL, 0, 10, -1, -1, 0, NULL, NULL),
    ('TRAVEL:LAUNCH', 'TRAVEL', 'LAUNCH', 'Hire of a launch & boatman', NULL, 210, 12.5, -1, 0, 0, 0, NULL),
    ('REPRO:MYLAR', 'REPRO', 'MYLAR', 'Mylar, per square foot', NULL, 1.2345, 20, -1, 0, 0, 0, '2007-07-02 15:45:00'),
    ('REPRO:COLOR', 'REPRO', 'COLOR', 'Color plots, per square foot', NULL, 0.3333, 33.3333, -1, 0, 0, 0, NULL),
    ('REPRO:BIND', 'REPRO', 'BIND', 'Binding of reports', NULL, 7.25, 0, -1, 0, 0, 0, NULL),
    ('LAB:WATER', 'LAB', 'WATER', 'Water analysis, per sample', NULL, 62.4, 10, -1, 0, 0, 0, '2007-09-27 13:13:00'),
    ('LAB:CONCRETE', 'LAB', 'CONCRETE', 'Cylinders, per set of three', NULL, 54, 7.25, -1, 0, 0, 0, NULL),
    ('LAB:COURIER', 'LAB', 'COURIER', 'Samples by courier', NULL, 18.5, -10, -1, 0, 0, 0, NULL),
    ('DRILL:DAY', 'DRILL', 'DAY', 'Drilling rig, per day', NULL, 1350, 8, -1, 0, 0, 0, '2008-02-21 10:00:00'),
    ('DRILL:MOBILIZE', 'DRILL', 'MOBILIZE', 'Rig to the site and back', '', 400, 0, -1, 0, 0, 0, NULL),
    ('BOUND:GRANITE', 'BOUND', 'GRANITE', 'Granite bound', NULL, 96, 85, -1, 0, -1, 0, NULL),
    ('BOUND:PIN', 'BOUND', 'PIN', 'Iron pin', NULL, 4.9, 180, -1, 0, -1, 0, '2007-04-16 09:30:00'),
    ('PERMIT:TOWN', 'PERMIT', 'TOWN', 'Permit of a town', NULL, 100, 0, -1, 0, 0, 0, NULL),
    ('PERMIT:STATE', 'PERMIT', 'STATE', 'Permit of the state''s wetlands bureau', NULL, 250, 0, -1, 0, 0, 0, '2006-12-18 14:20:00'),
    ('POST:', 'POST', '', '', NULL, 0.41, 0, -1, 0, 0, 0, NULL),
    ('PHONE:', 'PHONE', '', 'Calls to clients abroad', NULL, 0.1234, 50, 0, 0, 0, -1, '2005-06-30 16:00:00'),
    ('PENSIÓN:AGRIMENSOR', 'PENSIÓN', 'AGRIMENSOR', 'Alojamiento del agrimensor', NULL, 60, 0, -1, -1, 0, 0, NULL),
    ('MODEL:ARCHITECT', 'MODEL', 'ARCHITECT', 'Architect''s models', NULL, 300, 0, -1, 0, 0, -1, NULL),
    ('FROMQB:', 'FROMQB', '', 'Lines of QuickBooks without a code', NULL, 0, 0, 0, 0, 0, 0, NULL);


-- Names that are too long, and names that are in use: LAB SOIL twice, the activity PHOTO, and QuickBooks has a Mileage

INSERT INTO Expense (ExpID, ExpCode, ExpSub, ExpDescription, ExpCost, ExpMarkup, ExpBillable, IsInActive, LastUpdated)
VALUES
    ('SUBCONTRACTED WORK:UNDERWATER VIDEO', 'SUBCONTRACTED WORK', 'UNDERWATER VIDEO', 'Divers with a camera', 900, 10, -1, 0, NULL),
    ('SUBCONTRACTED WORK:TRAFFIC DETAIL', 'SUBCONTRACTED WORK', 'TRAFFIC DETAIL', 'Police at the road', 52, 0, -1, 0,
     '2007-11-28 21:00:00'),
    ('LAB SOIL:', 'LAB SOIL', '', 'Soil analysis, as the code was once', 44, 10, -1, 0, '2005-02-15 08:30:00'),
    ('PHOTO:', 'PHOTO', '', 'Films and prints', 12, 15, -1, 0, NULL),
    ('MILEAGE:', 'MILEAGE', '', 'Mileage, as the code was once', 0.485, 0, -1, 0, '2007-12-31 12:00:00');


-- The chart of accounts: parents with their sub-accounts. Of these ten QuickBooks has five by name, which stay without a link.

INSERT INTO AccountList (AccountID, AccountName, AccountTypeID, ParentAccountID, AccountDesc, OpenBalance, OpenBalanceDate,
    IsInActive, LastUpdated)
VALUES
    ('1010', 'Harbor Savings Checking', 2, NULL, 'Operating account', 18250.4, '2008-01-01 00:00:00', 0, '2008-01-02 14:00:00'),
    ('1200', 'Accounts Receivable', 1, NULL, NULL, NULL, NULL, 0, NULL),
    ('1500', 'Survey Equipment', 7, NULL, 'Instruments and vehicles', 42000, '2008-01-01 00:00:00', 0, NULL),
    ('1510', 'Total Stations', 7, '1500', NULL, NULL, NULL, 0, NULL),
    ('2000', 'Accounts Payable', 0, NULL, NULL, NULL, NULL, 0, NULL),
    ('4000', 'Professional Fees', 8, NULL, 'Income from services', NULL, NULL, 0, '2007-01-15 11:30:00'),
    ('4010', 'Survey Fees', 8, '4000', NULL, NULL, NULL, 0, NULL),
    ('4100', 'Reimbursed Expenses', 8, NULL, NULL, NULL, NULL, 0, NULL),
    ('6000', 'Travel', 6, NULL, 'Mileage, fares and tolls', NULL, NULL, 0, NULL),
    ('6900', 'Telex and Telegrams', 6, NULL, NULL, 0, NULL, -1, '2003-08-01 09:00:00');


-- More of them, to three levels: balances with and without their dates, types that are not known, names, numbers and descriptions
-- that are too long, one sub-account ahead of its parent, the same name below two parents, and a sixth name that
-- QuickBooks has, in another case

INSERT INTO AccountList (AccountID, AccountName, AccountTypeID, ParentAccountID, AccountDesc, OpenBalance, OpenBalanceDate,
    IsInActive, LastUpdated)
VALUES
    ('1020', 'Harbor Savings Reserve', 2, NULL, 'For slow winters', 9000, NULL, 0, '2008-01-02 14:05:00'),
    ('1030', 'PETTY CASH', 2, NULL, 'In the desk', 75, '2008-01-01 00:00:00', 0, NULL),
    ('1310', 'Retainers Held for Subs', 12, NULL, NULL, NULL, '2008-01-01 00:00:00', 0, NULL),
    ('1511', 'Robotic Instruments', 7, '1510', 'Two, bought used', 14800, '2007-07-01 00:00:00', 0, '2007-07-02 12:00:00'),
    ('1512', 'Prisms & Tripods', 7, '1510', NULL, NULL, NULL, NULL, NULL),
    ('1520', 'GPS Receivers', 7, '1500', 'Base and two rovers', 22650.75, '2007-12-31 00:00:00', 0, NULL),
    ('1590', 'Accumulated Depreciation of Instruments', 7, '1500', 'What the instruments, boats and vehicles have lost', -31200,
     '2007-12-31 00:00:00', 0, '2008-01-31 22:00:00'),
    ('1600', 'Survey Launch', 7, NULL, 'The "Petrel"', 18000, '2004-05-01 00:00:00', 0, NULL),
    ('1610', 'Echo Sounder', 7, '1600', NULL, NULL, NULL, 0, '2006-04-03 09:00:00'),
    ('1611', 'Transducer of 1999', 7, '1610', NULL, 0, '2004-05-01 00:00:00', -1, '2006-04-03 09:01:00'),
    ('1900', 'Deposit at the Boatyard', 11, NULL, NULL, 600, '2004-05-01 00:00:00', 0, NULL),
    ('2150', 'Fuel Card', 4, NULL, 'Launch and vans', NULL, NULL, 0, '2007-02-28 16:30:00'),
    ('2300', 'Fees Collected in Advance', 13, NULL, NULL, -5000, '2008-01-14 00:00:00', 0, NULL),
    ('2310', 'Bayview Marina''s Retainer', 13, '2300', 'Docks', NULL, NULL, 0, '2008-01-14 18:10:00'),
    ('2600', 'Loan on the Launch', 9, NULL, 'Harbor Savings, to 2010', -7425.5, '2008-01-01 00:00:00', 0, NULL),
    ('3010', 'M. Hale, Capital', 5, NULL, NULL, NULL, NULL, 0, NULL),
    ('3020', 'M. Hale, Draws', 5, NULL, NULL, NULL, NULL, 0, '2007-01-15 11:31:00'),
    ('4200', 'Engineering Fees', 8, NULL, 'Water and structures', NULL, NULL, 0, NULL),
    ('4210', 'Structures', 8, '4200', NULL, NULL, NULL, 0, NULL),
    ('4211', 'Docks and Piers', 8, '4210', 'Since 2005', NULL, NULL, 0, '2007-01-15 11:32:00'),
    ('4212', 'Bridges', 8, '4210', '', NULL, NULL, 0, NULL),
    ('4220', 'Drainage', 8, '4200', NULL, NULL, NULL, 0, NULL),
    ('4300', 'Expert Testimony', 8, NULL, NULL, NULL, NULL, 0, '2006-10-09 13:00:00'),
    ('5010', 'Direct Costs', 3, NULL, 'Of projects', NULL, NULL, 0, NULL),
    ('5020', 'Outside Services', 3, '5010', NULL, NULL, NULL, 0, NULL),
    ('5021', 'Drilling & Borings', 3, '5020', NULL, NULL, NULL, 0, NULL),
    ('5022', 'Laboratories', 3, '5020', 'Soil, water, concrete', NULL, NULL, 0, '2007-09-27 13:20:00'),
    ('5030', 'Bounds, Pins and Stakes', 3, '5010', NULL, NULL, NULL, 0, NULL),
    ('6010', 'Ferries', 6, '6000', 'Islands', NULL, NULL, 0, NULL),
    ('6110', 'Coffee and Water', 6, '6100', NULL, NULL, NULL, 0, NULL),
    ('6100', 'House Expenses', 6, NULL, 'Beacon Court', NULL, NULL, 0, '2007-01-15 11:33:00'),
    ('6120', 'Heating Oil', 6, '6100', NULL, NULL, NULL, 0, NULL),
    ('6130', 'Repairs', 6, '6100', NULL, NULL, NULL, 0, NULL),
    ('6200', 'Launch Expenses', 6, NULL, NULL, NULL, NULL, 0, NULL),
    ('6210', 'Repairs', 6, '6200', 'Yard and engine', NULL, NULL, 0, '2007-05-05 05:05:05'),
    ('6220', 'Mooring', 6, '6200', NULL, NULL, NULL, 0, NULL),
    ('6800-ADM', 'Sundry', 6, NULL, NULL, NULL, NULL, 0, NULL),
    ('7100', 'Sale of Old Instruments', NULL, NULL, NULL, NULL, NULL, 0, NULL),
    ('7200', 'Prizes', 15, NULL, 'Best small bridge of 2006', NULL, NULL, NULL, '2006-11-30 20:00:00'),
    ('8100', 'Losses by Theft', 14, NULL, NULL, NULL, NULL, -1, NULL);
