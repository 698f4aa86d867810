-- Fifty clients of a small engineering office as its billing database has them, and the work of three of them. Twenty-five
-- are in QuickBooks already, under names that somebody typed there years ago: see company.xml. Nothing is linked yet.

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('ALDEN', 'Alden Public Library', 'Ruth', 'Carver',
    '12 Main Street', 'Alden', 'NY', '14004',
    '716-555-0101', 'desk@aldenlibrary.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('ASHGROVE', 'Ashgrove Dairy Inc.', 'Peter', 'Lang',
    '880 Ashgrove Road', 'Cambridge', 'NY', '12816',
    '518-555-0102', 'plang@ashgrove.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('BARTON', 'Barton & Wells Architects', 'Helen', 'Barton',
    '5 Canal Place', 'Troy', 'NY', '12180',
    '518-555-0103', 'hb@bartonwells.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('BEACON', 'Beacon Street Dental Group', 'Nadia', 'Rahman',
    '41 Beacon Street', 'Albany', 'NY', '12207',
    '518-555-0104', 'office@beacondental.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('BIRCH', 'Birch Hill Nursery', 'Tom', 'Oberlin',
    '300 Birch Hill Road', 'Saratoga Springs', 'NY', '12866',
    '518-555-0105', 'tom@birchhill.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('CALLOWAY', 'Calloway Trucking LLC', 'Dean', 'Calloway',
    '17 Depot Road', 'Glens Falls', 'NY', '12801',
    '518-555-0106', 'dispatch@calloway.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('CARDINAL', 'Cardinal Self Storage', 'Joyce', 'Webb',
    '2100 Western Avenue', 'Guilderland', 'NY', '12084',
    '518-555-0107', 'jwebb@cardinal.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('CEDARCT', 'Cedar Court Condominiums', 'Alan', 'Fisk',
    '1 Cedar Court', 'Clifton Park', 'NY', '12065',
    '518-555-0108', 'board@cedarcourt.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('COHOES', 'City of Cohoes, Water Department', 'Maria', 'Santos',
    '97 Mohawk Street', 'Cohoes', 'NY', '12047',
    '518-555-0109', 'water@cohoes.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('DUNMORE', 'Dunmore Brothers Roofing', 'Frank', 'Dunmore',
    '66 Railroad Avenue', 'Schenectady', 'NY', '12305',
    '518-555-0110', 'frank@dunmore.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('EASTSIDE', 'Eastside Veterinary Clinic', 'Laura', 'Kim',
    '409 Third Street', 'Rensselaer', 'NY', '12144',
    '518-555-0111', 'lkim@eastsidevet.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('ELMWOOD', 'Elmwood Cemetery Association', 'Gordon', 'Platt',
    'Elmwood Drive', 'Schaghticoke', 'NY', '12154',
    '518-555-0112', 'gplatt@elmwood.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('FAIRVIEW', 'Fairview Golf Club', 'Steve', 'Morrow',
    '77 Fairview Lane', 'Latham', 'NY', '12110',
    '518-555-0113', 'pro@fairviewgolf.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('FINCH', 'Finch Paper Supply Co.', 'Irene', 'Finch',
    '8 Mill Street', 'Mechanicville', 'NY', '12118',
    '518-555-0114', 'irene@finch.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('GATES', 'Gates-Hudson Properties', 'Carl', 'Hudson',
    '150 State Street', 'Albany', 'NY', '12207',
    '518-555-0115', 'chudson@gateshudson.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('GRANGER', 'Granger, Walter', 'Walter', 'Granger',
    '31 Orchard Lane', 'Ballston Spa', 'NY', '12020',
    '518-555-0116', 'wgranger@mail.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('HARBOR', 'Harbor Light Cafe', 'Sofia', 'Rossi',
    '2 Harbor Walk', 'Hudson', 'NY', '12534',
    '518-555-0117', 'ciao@harborlight.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('HOOSICK', 'Hoosick Valley Feed and Grain', 'Ned', 'Babcock',
    '25 Church Street', 'Hoosick Falls', 'NY', '12090',
    '518-555-0118', 'ned@hvfeed.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('IRONWORK', 'Ironwork Studio', 'Anya', 'Petrova',
    '18 River Street', 'Troy', 'NY', '12180',
    '518-555-0119', 'anya@ironwork.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('KESTREL', 'Kestrel Aviation, Inc.', 'Bill', 'Hart',
    'Hangar 4, County Airport', 'Albany', 'NY', '12211',
    '518-555-0120', 'bhart@kestrel.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('LANSING', 'Lansing Street Bakery', 'Mei', 'Chen',
    '52 Lansing Street', 'Cohoes', 'NY', '12047',
    '518-555-0121', 'mei@lansingbakery.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('MAPLE', 'Maple Ridge Homeowners', 'Doug', 'Early',
    'P.O. Box 118', 'Malta', 'NY', '12020',
    '518-555-0122', 'board@mapleridge.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('NORTHCO', 'Northcountry Solar', 'Greta', 'Nilsson',
    '700 Route 9', 'Queensbury', 'NY', '12804',
    '518-555-0123', 'greta@ncsolar.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('ODELL', 'Odell Machine Works', 'Russ', 'Odell',
    '14 Foundry Row', 'Watervliet', 'NY', '12189',
    '518-555-0124', 'russ@odell.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('PINEBUSH', 'Pine Bush Montessori School', 'Clare', 'Bennett',
    '230 Pine Avenue', 'Albany', 'NY', '12205',
    '518-555-0125', 'clare@pinebush.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('QUAIL', 'Quail Street Hardware', 'Hank', 'Moss',
    '300 Quail Street', 'Albany', 'NY', '12208',
    '518-555-0126', 'hank@quail.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('RAVENNA', 'Ravenna Marble and Tile', 'Luca', 'Ferri',
    '9 Stone Row', 'Rotterdam', 'NY', '12303',
    '518-555-0127', 'luca@ravenna.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('REDBARN', 'Red Barn Antiques', 'Dot', 'Miller',
    '1420 Route 20', 'Sharon Springs', 'NY', '13459',
    '518-555-0128', 'dot@redbarn.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('RENSS', 'Rensselaer Rowing Club', 'Paul', 'Ives',
    '1 Boathouse Lane', 'Rensselaer', 'NY', '12144',
    '518-555-0129', 'paul@rowing.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('ROUND', 'Round Lake Music Hall', 'Vera', 'Stone',
    '5 Wesley Avenue', 'Round Lake', 'NY', '12151',
    '518-555-0130', 'vera@roundlake.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('SAINTS', 'All Saints Parish', 'Father', 'Doyle',
    '12 Rosemont Street', 'Albany', 'NY', '12206',
    '518-555-0131', 'office@allsaints.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('SARATOGA', 'Saratoga Print Shop', 'Kit', 'Larson',
    '61 Caroline Street', 'Saratoga Springs', 'NY', '12866',
    '518-555-0132', 'kit@sarprint.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('SCOTIA', 'Scotia Glen Apartments', 'Rita', 'Vance',
    '220 Vley Road', 'Scotia', 'NY', '12302',
    '518-555-0133', 'rvance@scotiaglen.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('SHAKER', 'Shaker Heritage Museum', 'Ann', 'Wright',
    '25 Meeting House Road', 'Colonie', 'NY', '12211',
    '518-555-0134', 'ann@shaker.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('STILL', 'Stillwater Marina', 'Gus', 'Hahn',
    '44 River Road', 'Stillwater', 'NY', '12170',
    '518-555-0135', 'gus@stillwater.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('SUNRISE', 'Sunrise Child Care', 'Tina', 'Alvarez',
    '86 Hackett Boulevard', 'Albany', 'NY', '12209',
    '518-555-0136', 'tina@sunrise.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('TANNERY', 'Tannery Row Lofts', 'Eli', 'Katz',
    '3 Tannery Row', 'Gloversville', 'NY', '12078',
    '518-555-0137', 'eli@tannery.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('TIVOLI', 'Tivoli Books', 'Noor', 'Haddad',
    '71 Broadway', 'Tivoli', 'NY', '12583',
    '845-555-0138', 'noor@tivolibooks.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('TOWNMALT', 'Town of Malta', 'Sue', 'Park',
    '2540 Route 9', 'Malta', 'NY', '12020',
    '518-555-0139', 'clerk@townmalta.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('TROYFARM', 'Troy Farmers Market', 'Ben', 'Abbot',
    '49 Fourth Street', 'Troy', 'NY', '12180',
    '518-555-0140', 'ben@troyfarm.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('UNION', 'Union Station Parking', 'Jim', 'Roach',
    '1 Union Plaza', 'Albany', 'NY', '12207',
    '518-555-0141', 'jim@unionpark.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('UPLAND', 'Upland Orchards', 'Fern', 'Gale',
    '600 Upland Road', 'Valatie', 'NY', '12184',
    '518-555-0142', 'fern@upland.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('VALLEY', 'Valley Oil and Propane', 'Chuck', 'Ames',
    '38 Dock Street', 'Fort Edward', 'NY', '12828',
    '518-555-0143', 'chuck@valleyoil.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('VISCHER', 'Vischer Ferry Inn', 'Lena', 'Bloom',
    '350 Riverview Road', 'Rexford', 'NY', '12148',
    '518-555-0144', 'lena@vischer.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('VOORHEES', 'Voorhees Village Green', 'Mark', 'Tully',
    '1 Village Square', 'Voorheesville', 'NY', '12186',
    '518-555-0145', 'mayor@voorhees.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('WATERVL', 'Watervliet Arsenal Housing', 'Deb', 'Crane',
    '1 Buffington Street', 'Watervliet', 'NY', '12189',
    '518-555-0146', 'dcrane@wah.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('WESTMERE', 'Westmere Fire District', 'Art', 'Quinn',
    '1741 Western Avenue', 'Albany', 'NY', '12203',
    '518-555-0147', 'chief@westmere.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('WHEELER', 'Wheeler Pharmacy', 'Gail', 'Wheeler',
    '19 Remsen Street', 'Cohoes', 'NY', '12047',
    '518-555-0148', 'gail@wheeler.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('YATES', 'Yates Street Co-op', 'Ivy', 'Lopez',
    '77 Yates Street', 'Albany', 'NY', '12208',
    '518-555-0149', 'ivy@yatescoop.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, ClientState, ClientZip,
    ClientPhone, ClientEmail, ClientSince, Status, LastUpdated)
VALUES ('ZION', 'Zion Hill Cabinetry', 'Seth', 'Boone',
    '12 Zion Hill Road', 'Salem', 'NY', '12865',
    '518-555-0150', 'seth@zionhill.example', '2003-05-01 00:00:00', 'Active', '2007-10-01 12:00:00');


-- Two projects, one of them with phases

INSERT INTO Project (ProjectID, ProjectCode, ProjectPhase, ProjectName, ClientID, ProjectIsPhase, ParentProjectID, ProjectConType,
    ProjectStatus, ProjectStartDate, LastUpdated)
VALUES ('LIBRARY:', 'LIBRARY', '', 'Reading room', 'ALDEN', 0, NULL, 'Hourly',
    'Active', '2007-09-01 00:00:00', '2007-10-01 12:00:00');
INSERT INTO Project (ProjectID, ProjectCode, ProjectPhase, ProjectName, ClientID, ProjectIsPhase, ParentProjectID, ProjectConType,
    ProjectStatus, ProjectStartDate, LastUpdated)
VALUES ('LIBRARY:ROOF', 'LIBRARY', 'ROOF', 'Roof', 'ALDEN', -1, 'LIBRARY:', 'Hourly',
    'Active', '2007-09-01 00:00:00', '2007-10-01 12:00:00');
INSERT INTO Project (ProjectID, ProjectCode, ProjectPhase, ProjectName, ClientID, ProjectIsPhase, ParentProjectID, ProjectConType,
    ProjectStatus, ProjectStartDate, LastUpdated)
VALUES ('LIBRARY:PLANS', 'LIBRARY', 'PLANS', 'Plans', 'ALDEN', -1, 'LIBRARY:', 'Hourly',
    'Active', '2007-09-01 00:00:00', '2007-10-01 12:00:00');
INSERT INTO Project (ProjectID, ProjectCode, ProjectPhase, ProjectName, ClientID, ProjectIsPhase, ParentProjectID, ProjectConType,
    ProjectStatus, ProjectStartDate, LastUpdated)
VALUES ('MARINA:', 'MARINA', '', 'Docks', 'STILL', 0, NULL, 'Hourly',
    'Active', '2007-09-01 00:00:00', '2007-10-01 12:00:00');
