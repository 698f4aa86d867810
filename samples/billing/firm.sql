-- The sample firm: Marlow Hale, a small consultancy for surveys, water and structures in New England, with its clients as they stand in
-- its billing database in February 2008. None of them has been sent to QuickBooks yet, and QuickBooks is in use already: see
-- the customers of the sample company file.
--
-- The rows have on purpose what the data of real firms has: apostrophes, commas and scripts of all kinds, names and addresses longer
-- than QuickBooks takes, fields that are empty beside fields that are NULL, and telephone numbers as people write them.
-- Dates are UTC. A key never has an apostrophe, a comma, a number sign, a semicolon or a colon. What the
-- firm works with beside its clients stands in work.sql, projects.sql, codes.sql, hours.sql, invoices.sql, payments.sql and
-- expenses.sql.


-- Plain clients: a company, a contact, an address

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('ABBOTT', 'Abbott Land Survey', 'Karen', 'Abbott', 'J', 'Ms.',
    '14 Harbor Road', 'Suite 200', 'Portland', 'ME', '04101',
    '(207) 555-0114', '207-555-0115', '207.555.0116', 'kabbott@abbottland.example', '2003-02-10 00:00:00', 'Active', NULL, '2007-11-05 16:20:11');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('BAYVIEW', 'Bayview Marina Partners', 'Thomas', 'Lindqvist', 'A', 'Mr.',
    '1 Quay Street', NULL, 'Camden', 'ME', '04843',
    '207 555 0120', NULL, '207 555 0121', 'tom@bayviewmarina.example', '2003-03-17 00:00:00', 'Active', NULL, '2008-01-14 09:02:45');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('CEDAR', 'Cedar Hill Retirement Community', 'Joan', 'Pratt', NULL, 'Mrs.',
    '900 Cedar Hill Lane', NULL, 'Concord', 'NH', '03301',
    '6035550132', NULL, NULL, 'jpratt@cedarhill.example', '2003-04-02 00:00:00', 'Active', NULL, '2006-08-21 13:44:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('DELMAR', 'Delmar Concrete Products, Inc.', 'Victor', 'Reyes', 'R', 'Mr.',
    '2200 Industrial Parkway', 'Building C', 'Worcester', 'MA', '01608',
    '(508)555-0147', '(508)555-0148', '(508)555-0149', 'vreyes@delmarconcrete.example', '2003-05-19 00:00:00', 'Active', '', '2007-03-30 21:15:08');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('EASTON', 'Town of Easton', 'Margaret', 'Doyle', NULL, 'Ms.',
    'Town Hall', '136 Elm Street', 'Easton', 'MA', '02356',
    '508.555.0151', NULL, '508.555.0152', 'publicworks@easton.example', '2003-06-01 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('FARROW', 'Farrow & Finch Architects', 'Neil', 'Farrow', 'P', 'Mr.',
    '77 Bank Street', '3rd Floor', 'New Haven', 'CT', '06511',
    '203-555-0166 x12', '203-555-0166', '203-555-0167', 'nfarrow@farrowfinch.example', '2003-07-22 00:00:00', 'Active', NULL, '2008-02-11 18:30:27');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('GRANITE', 'Granite State Bottling Co.', 'Louise', 'Marchetti', 'M', 'Ms.',
    '45 Spring Water Road', NULL, 'Manchester', 'NH', '03103-2211',
    '1-603-555-0171', NULL, NULL, 'lmarchetti@granitebottling.example', '2003-09-08 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('HALLORAN', 'Halloran Title Company', 'Sean', 'Halloran', 'T', 'Mr.',
    '18 Court Square', NULL, 'Springfield', 'MA', '01103',
    '[413] 555_0180', NULL, '[413] 555_0181', 'sean@hallorantitle.example', '2003-10-15 00:00:00', 'Active', NULL, '2005-12-02 08:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('IRONWOOD', 'Ironwood Timber Frames', 'Dale', 'Yoder', NULL, 'Mr.',
    'RR 2', 'Box 118', 'St. Johnsbury', 'VT', '05819',
    '802/555/0186', NULL, NULL, 'dale@ironwoodframes.example', '2003-11-03 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('JUNIPER', 'Juniper Street Condominium Trust', 'Alice', 'Okafor', 'N', 'Dr.',
    '210 Juniper Street', 'c/o Management Office', 'Cambridge', 'MA', '02139',
    '617-555-0190', '617-555-0191', NULL, 'trustees@juniperstreet.example', '2004-01-12 00:00:00', 'Active', NULL, '2007-07-19 11:25:36');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('KESTREL', 'Kestrel Aviation Services', 'Bruce', 'Tanaka', NULL, 'Capt.',
    'Hangar 7, Municipal Airport', NULL, 'Keene', 'NH', '03431',
    '(603) 555-0193 ext. 4', '(603) 555-0193', '(603) 555-0194', 'bruce.tanaka@kestrelaviation.example', '2004-02-20 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('LOCKHART', 'Lockhart School District No. 4', 'Ellen', 'Brandt', 'S', 'Ms.',
    '500 Learning Way', NULL, 'Brattleboro', 'VT', '05301',
    '8025550198', NULL, '8025550199', 'ebrandt@lockhartschools.example', '2004-03-29 00:00:00', 'Active', NULL, '2008-02-22 15:10:05');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('WINSLOW', 'Winslow County Highway Department', 'Frank', 'Delgado', NULL, 'Mr.',
    'County Garage', '1200 Route 9', 'Hudson', 'NY', '12534',
    '518-555-0102', NULL, '518-555-0103', 'fdelgado@winslowcounty.example', '2004-05-10 00:00:00', 'Active', NULL, '2006-01-30 19:45:50');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('YARROW', 'Yarrow Landscape & Irrigation', 'Simone', 'Beck', 'E', 'Ms.',
    '33 Garden Row', NULL, 'Saratoga Springs', 'NY', '12866',
    '518 555 0108', NULL, NULL, 'simone@yarrowlandscape.example', '2004-06-07 00:00:00', 'Active', NULL, NULL);

-- Names with apostrophes, commas, ampersands and quotation marks (never in a key)

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('ODWYER', 'O''Dwyer & Sons, Builders', 'Patrick', 'O''Dwyer', 'F', 'Mr.',
    '12 St. Mary''s Road', NULL, 'Quincy', 'MA', '02169',
    '617-555-0111', NULL, NULL, 'office@odwyerbuilders.example', '2003-08-11 00:00:00', 'Active', NULL, '2007-05-14 10:12:13');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('BLUEDOOR', 'The "Blue Door" Gallery', 'Rosa', 'D''Amico', NULL, 'Ms.',
    '5 Painter''s Alley', 'Rear Door', 'Provincetown', 'MA', '02657',
    '(508) 555-0112', NULL, NULL, 'hello@bluedoor.example', '2004-07-01 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('REGENT', 'King''s Regent Hotel, Ltd.', 'Harold', 'Whitby-Jones', 'Q', 'Sir',
    '1 Queen''s Walk', NULL, 'Newport', 'RI', '02840',
    '401-555-0117', '401-555-0118', '401-555-0119', 'h.o''whitby@regenthotel.example', '2004-08-16 00:00:00', 'Active', NULL, '2008-01-29 22:05:19');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('SMYTHE', 'Smythe, Carver, Holt & Lane', 'Geoffrey', 'Smythe', 'L', 'Atty.',
    '88 Federal Street', 'Floors 4, 5 and 6', 'Boston', 'MA', '02110',
    '6175550123', NULL, '6175550124', 'gsmythe@smythecarver.example', '2004-09-13 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('RIVERSIDE', 'Riverside Farmers'' Co-op; Mill #2', 'Ida', 'Nystrom', NULL, 'Mrs.',
    'Mill Road #2', NULL, 'Peck''s Corner', 'VT', '05444',
    '802-555-0127', NULL, NULL, 'mill2@riversidecoop.example', '2004-10-04 00:00:00', 'Active', NULL, '2006-11-11 11:11:11');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('TESTA', 'Testa <Structural> & Civil, P.C.', 'Anthony', 'Testa', 'G', 'Mr.',
    '400 Atwells Avenue', NULL, 'Providence', 'RI', '02909',
    '401.555.0129', NULL, '401.555.0130', 'atesta@testapc.example', '2004-11-22 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('HAIRPIN', 'Hairpin Turn Cycle Works (& Café)', 'Jacques', 'L''Écuyer', NULL, 'M.',
    'Route de l''Anse', 'RR #3', 'Newport', 'VT', '05855',
    '802-555-0131', NULL, NULL, 'jacques@hairpinturn.example', '2007-11-19 00:00:00', 'Active', NULL, '2008-01-03 13:13:13');

-- Accents and other scripts

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('MUELLER', 'Müller Brückenbau GmbH', 'Jürgen', 'Müller', NULL, 'Herr',
    'Lindenstraße 14', 'Hinterhaus', 'Köln', 'Nordrhein-Westfalen', '50674',
    '+49 221 5550133', NULL, '+49 221 5550134', 'j.mueller@muellerbruecken.example', '2005-01-17 00:00:00', 'Active', NULL, '2007-09-03 07:30:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('NUNEZ', 'Núñez y Compañía', 'María José', 'Núñez Peña', 'Á', 'Sra.',
    'Calle de la Peña 9', '2º izq.', 'Logroño', 'La Rioja', '26001',
    '+34 941 555 013', NULL, NULL, 'mj.nunez@nunezycia.example', '2005-02-14 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('FJORD', 'Fjordbro Rådgivning ApS', 'Søren', 'Ørsted', 'Å', 'Hr.',
    'Nørregade 21', '3. sal', 'Ålborg', 'Nordjylland', '9000',
    '+45 98 55 50 14', NULL, NULL, 'soren@fjordbro.example', '2005-03-08 00:00:00', 'Active', NULL, '2008-02-04 06:15:42');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('CHATEAU', 'Château d''Eau Ingénierie', 'Hélène', 'Lefèvre', 'É', 'Mme',
    '3, rue de l''Église', 'Bâtiment B', 'Besançon', 'Franche-Comté', '25000',
    '03.81.55.50.15', NULL, '03.81.55.50.16', 'helene.lefevre@chateaudeau.example', '2005-04-19 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('AOBA', '青葉橋梁設計株式会社', '健太郎', '高橋', NULL, '様',
    '青葉区一番町三丁目', '第二ビル八階', '仙台市', '宮城県', '980-0811',
    '+81 22-555-0135', NULL, '+81 22-555-0136', 'takahashi@aobabridge.example', '2005-05-23 00:00:00', 'Active', NULL, '2007-12-12 00:40:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('山水顧問', '山水環境顧問有限公司', '美玲', '陳', NULL, '女士',
    '中山北路二段15號', '3樓', '台北市', NULL, '10448',
    '+886 2 5555 0137', NULL, NULL, 'meiling.chen@shanshui.example', '2005-06-30 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('SAEBOM', '새봄건설기술 (Saebom E&C)', '지훈', '김', NULL, 'Mr.',
    '테헤란로 151', '12층', '서울특별시', '강남구', '135-080',
    '02-555-0139', '02-555-0140', NULL, 'jihoon.kim@saebom.example', '2005-08-01 00:00:00', 'Active', NULL, '2006-05-05 02:00:01');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('ZURAWSKI', 'Żurawski i Synowie Sp. z o.o.', 'Łukasz', 'Żurawski', 'Ś', 'Pan',
    'ul. Źródlana 7', 'm. 4', 'Łódź', 'łódzkie', '90-001',
    '(042) 555 01 41', NULL, NULL, 'l.zurawski@zurawski.example', '2005-09-12 00:00:00', 'Active', NULL, NULL);

-- The company is the key itself, but for its case: the QuickBooks name is the key alone

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('QUARRYSTONE', 'Quarrystone', 'Peter', 'Vance', NULL, 'Mr.',
    '60 Quarry Lane', NULL, 'Barre', 'VT', '05641',
    '802-555-0142', NULL, NULL, 'pvance@quarrystone.example', '2004-04-04 00:00:00', 'Active', NULL, '2007-01-08 17:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Meridian Rowing Club', 'MERIDIAN ROWING CLUB', 'Claire', 'Boyd', 'V', 'Ms.',
    'Boathouse Road', NULL, 'Hanover', 'NH', '03755',
    '603 555 0143', NULL, NULL, 'captain@meridianrowing.example', '2004-12-06 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Mühlenbau', 'MÜHLENBAU', 'Gisela', 'Vogt', NULL, 'Frau',
    'Am Mühlgraben 2', NULL, 'Görlitz', 'Sachsen', '02826',
    '03581 555014', NULL, NULL, 'info@muehlenbau.example', '2005-10-10 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Northgate Dental', 'Northgate Dental', 'Raj', 'Patel', NULL, 'Dr.',
    '71 Northgate Plaza', 'Unit 9', 'Nashua', 'NH', '03060',
    '603-555-0145', NULL, '603-555-0146', 'rpatel@northgatedental.example', '2005-11-07 00:00:00', 'Active', NULL, '2007-10-22 12:34:56');

-- No company: private clients, with the company NULL or empty, and keys with blanks

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Hendricks Anna', NULL, 'Anna', 'Hendricks', 'B', 'Miss',
    '9 Orchard Street', NULL, 'Amherst', 'MA', '01002',
    '413-555-0150', NULL, NULL, 'anna.hendricks@mail.example', '2005-12-01 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Whitlock Estate', '', 'George', 'Whitlock', 'III', 'Mr.',
    'Whitlock House', 'Lower Farm Road', 'Lenox', 'MA', '01240',
    '4135550153', '4135550154', '', '', '2006-01-09 00:00:00', 'Active', NULL, '2008-02-01 20:20:20');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Quimby Residence', NULL, 'Dolores', 'Quimby', NULL, '',
    NULL, NULL, NULL, NULL, NULL,
    NULL, NULL, NULL, NULL, '2006-02-13 00:00:00', NULL, NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Estate of Josephine Archibald-Fairweather 2nd Trust', NULL, 'Miriam', 'Fairweather', NULL, 'Ms.',
    '2 Probate Court', NULL, 'Salem', 'MA', '01970',
    '978-555-0155', NULL, NULL, 'trustee@fairweather.example', '2006-03-06 00:00:00', 'Active', NULL, NULL);

-- At and beyond the lengths of QuickBooks: names, lines, places, numbers

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('BLACKWATER', 'Blackwater Creek Hydrology Associates LLC', 'Bartholomew Maximilian Jr', 'Featherstonehaugh-Carlyle', 'Wm. H', 'Dr. and Mrs.',
    '1200 Blackwater Creek Parkway, Building A', 'Research Annex, Second Floor, Room 204-BC', 'East Northfield Village Station', 'Hampden and Hampshire', '01060-1234-56',
    '+1 413 555 0156', '+1 413 555 0157', '+1 413 555 0158', 'bartholomew.featherstonehaugh-carlyle.hydrology.staff@blackwater-creek-hydrology-associates.example', '2006-04-03 00:00:00', 'Active', NULL, '2007-02-02 02:02:02');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('CONSORT42', 'Consortium for Navigable Waterways of Note', 'Anne', 'Petersen', NULL, 'The Hon. Madame',
    '10 Basin Street', NULL, 'Albany', 'NY', '12207',
    '518-555-0159', NULL, NULL, 'apetersen@consort.example', '2006-04-24 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('HARBORAUTH', 'Harbor and Inland Ports Authority, Rotterdam Liaison Offices', 'Christopher-Alexander Johnson', 'Van der Meersbergen-Oudenhoven', 'J. R.', 'Commissioner',
    'Administration Building of the Inner Harbor, Gate 12, Pier 7', 'Attention: Office of Capital Projects and Facilities Records', 'Nieuwerkerk aan den IJssel-Westhoek', 'Provincie Zuid-Holland NL', 'NL-3011 AB 0015',
    '011 31 10 5550160 0 ext 4421', '011 31 10 5550161 0 ext 4422', '011 31 10 5550162 0 ext 4423', 'cjohnson@harborauthority.example', '2006-05-15 00:00:00', 'Active', NULL, '2008-02-18 14:00:33');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('VALLEYREG', 'Valley Regional Planning Commission and Joint Water Supply Board, Western Office', 'Edith', 'Monroe', 'K', 'Ms.',
    'County Office Building', NULL, 'Northampton', 'MA', '01060',
    '413-555-0163', NULL, NULL, 'emonroe@valleyregional.example', '2006-06-05 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('PARENTH', 'Brookfield Parenthesis Publishing', 'Leon', 'Katz', NULL, 'Mr.',
    '16 Type Foundry Way', NULL, 'Holyoke', 'MA', '01040',
    '413-555-0164', NULL, NULL, 'lkatz@brookfieldpp.example', '2006-07-17 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('TOKAIDO', '東海道広域測量設計計画共同企業体中部地方河川道路橋梁上下水道環境調査部門名古屋統括事業本部', '浩二', '中村', NULL, '様',
    '中村区名駅南一丁目二十四番三十号名駅南第二共同事務所棟八階東側四十二号室環境調査部門資料課', '本館', '名古屋市', '愛知県', '450-0002',
    '+81 52-555-0165', NULL, NULL, 'nakamura@tokaidosurvey.example', '2006-08-07 00:00:00', 'Active', NULL, '2006-12-24 03:33:33');

-- Addresses and numbers that are missing, empty or half filled in

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('PALISADE', 'Palisade Web Works', 'Owen', 'Trask', NULL, 'Mr.',
    NULL, NULL, NULL, NULL, NULL,
    NULL, NULL, NULL, 'owen@palisadeweb.example', '2006-08-28 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('LANTERN', 'Lantern Media', '', '', '', '',
    '', '', '', '', '',
    '', '', '', '', '2006-09-11 00:00:00', 'Active', NULL, '2007-06-06 06:06:06');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('NOADDR', NULL, 'Fiona', 'Marsh', NULL, NULL,
    NULL, NULL, NULL, NULL, NULL,
    'call the office', 'n/a', 'none', NULL, '2006-09-25 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('STREET2', 'Second Line Storage', NULL, NULL, NULL, NULL,
    NULL, 'Gate 4', 'Troy', 'NY', '12180',
    '518-555-0168', NULL, NULL, NULL, '2006-10-16 00:00:00', 'Active', '', NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('CITYONLY', 'Cityside Parking Trust', NULL, 'Abernathy', NULL, 'Mr.',
    '', NULL, 'Hartford', 'CT', NULL,
    '860-555-0169', '', NULL, '', '2006-11-06 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('SHORTNUM', 'Front Desk Staffing', 'Grace', 'Oduya', NULL, 'Ms.',
    '22 Temple Street', NULL, 'New London', 'CT', '06320',
    'ext. 4', '5550', '911', 'goduya@frontdesk.example', '2006-11-27 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('LONGNUM', 'Longline Telecom', 'Hugh', 'Pember', NULL, '   ',
    '700 Exchange Place', NULL, 'Stamford', 'CT', '06901',
    '001 (203) 555-0172 / 0173', '203.555.0174 (after 5pm)', 'FAX: 203-555-0175', 'hpember@longline.example', '2006-12-18 00:00:00', 'Active', NULL, '2007-08-15 16:16:16');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('MOBILITY', 'Mobility Aids Exchange', 'Ruth', 'Sandoval', NULL, 'Ms.',
    '19 Ferry Landing', '', 'Norwich', 'CT', '06360',
    '860 555 0181', '', '', '', '2007-01-02 00:00:00', 'Active', NULL, '2006-12-29 10:00:00');

-- States of a client: inactive, unknown

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('OLDBRIDGE', 'Oldbridge Foundry', 'Walter', 'Stipe', NULL, 'Mr.',
    '3 Furnace Lane', NULL, 'Fall River', 'MA', '02720',
    '508-555-0176', NULL, NULL, 'wstipe@oldbridge.example', '2003-01-20 00:00:00', 'InActive', NULL, '2005-03-31 23:59:59');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('VERMEER', 'Vermeer Tulip Importers', 'Cornelis', 'Vermeer', NULL, 'Mr.',
    '64 Flower Market', NULL, 'Bristol', 'RI', '02809',
    '401-555-0177', NULL, '401-555-0178', 'cornelis@vermeertulips.example', '2003-12-08 00:00:00', 'InActive', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('UPLAND', 'Upland Ski Area', 'Heidi', 'Strasser', NULL, 'Ms.',
    'Base Lodge', 'Upland Access Road', 'Stowe', 'VT', '05672',
    '802-555-0179', NULL, NULL, 'heidi@uplandski.example', NULL, 'InActive', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('NULLSTAT', 'Ninth Street Ballet', 'Irina', 'Kovaleva', NULL, 'Mme.',
    '9 Ninth Street', 'Studio 2', 'Hoboken', 'NJ', '07030',
    '201-555-0182', NULL, NULL, 'irina@ninthstreetballet.example', '2007-01-15 00:00:00', NULL, NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('COOPER', 'Cooper Barrel Works', NULL, 'Cooper', NULL, NULL,
    '8 Stave Street', NULL, 'Gloucester', 'MA', '01930',
    '978-555-0183', NULL, NULL, NULL, '2007-02-05 00:00:00', NULL, NULL, '2007-04-04 04:04:04');

-- Dates: both missing, or a last change without a start

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('GASLIGHT', 'Gaslight Theater Guild', 'Phoebe', 'Arnaud', NULL, 'Ms.',
    '17 Gaslight Court', NULL, 'Troy', 'NY', '12180',
    '518-555-0184', NULL, NULL, 'guild@gaslight.example', NULL, 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('THIRDAVE', 'Third Avenue Deli', 'Sal', 'Bruno', NULL, 'Mr.',
    '301 Third Avenue', NULL, 'Albany', 'NY', '12206',
    '518-555-0185', NULL, NULL, NULL, NULL, 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('PENROSE', 'Penrose Stair & Rail', 'Escher', 'Hall', NULL, 'Mr.',
    '4 Landing Lane', NULL, 'Schenectady', 'NY', '12305',
    '518-555-0187', NULL, NULL, 'info@penrosestair.example', NULL, 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('KILN', 'Kiln & Clay Studio', 'Beatrix', 'Long', 'O', 'Ms.',
    '50 Kiln Road', NULL, 'Bennington', 'VT', '05201',
    '802-555-0188', NULL, NULL, 'beatrix@kilnandclay.example', NULL, 'Active', NULL, '2008-02-27 08:08:08');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('DUNMORE', 'Dunmore Wind Power, LLC', 'Ravi', 'Menon', NULL, 'Dr.',
    '1 Ridge Line', NULL, 'Lowville', 'NY', '13367',
    '315-555-0189', NULL, '315-555-0192', 'rmenon@dunmorewind.example', NULL, 'Active', NULL, '2008-02-28 23:45:00');

-- Clients whose name QuickBooks may hold already, for a customer entered there by hand

INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('Hartwell Farms', NULL, 'Jonas', 'Hartwell', 'E', 'Mr.',
    'Hartwell Farms', '812 Farm to Market Road', 'Hadley', 'MA', '01035',
    '413-555-0195', NULL, NULL, 'jonas@hartwellfarms.example', '2007-03-12 00:00:00', 'Active', NULL, NULL);
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('PIONEER', 'Pioneer Dental', 'Lydia', 'Cho', NULL, 'Dr.',
    '25 Pioneer Plaza', NULL, 'Deerfield', 'MA', '01342',
    '413-555-0196', NULL, '413-555-0197', 'lcho@pioneerdental.example', '2007-05-21 00:00:00', 'Active', NULL, '2007-12-31 12:00:00');
INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientMI, ClientMainSalt, ClientStreet, ClientStreet2, ClientCity,
    ClientState, ClientZip, ClientPhone, ClientMainPhone, ClientFax, ClientEmail, ClientSince, Status, QBLinkID, LastUpdated)
VALUES ('SOLANO', 'Solano', 'Carlos', 'Solano', NULL, 'Mr.',
    '90 Pump House Road', NULL, 'Greenfield', 'MA', '01301',
    '413-555-0200', NULL, NULL, 'carlos@solano.example', '2007-10-01 00:00:00', 'Active', NULL, NULL);


-- Groups of clients, for the filters of a transfer

INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('MUNICIPAL', 'EASTON');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('MUNICIPAL', 'LOCKHART');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('MUNICIPAL', 'WINSLOW');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('MUNICIPAL', 'HARBORAUTH');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('MUNICIPAL', 'VALLEYREG');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'MUELLER');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'NUNEZ');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'FJORD');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'CHATEAU');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'AOBA');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', '山水顧問');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'SAEBOM');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'ZURAWSKI');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'Mühlenbau');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('OVERSEAS', 'TOKAIDO');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('RETAINER', 'ABBOTT');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('RETAINER', 'FARROW');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('RETAINER', 'REGENT');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('RETAINER', 'SMYTHE');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('RETAINER', 'Hendricks Anna');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('RETAINER', 'Whitlock Estate');
INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES ('RETAINER', 'DUNMORE');


-- Settings as the product writes them for clients: neither direction is skipped, and of two linked records the newer one wins

INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBSEND__Clients_ChkSkip', 'False');
INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBSEND__Clients_OptMostRecent', 'True');
INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBSEND__Clients_OptNever', 'False');
INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBGET__Customers_ChkSkip', 'False');
INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBGET__Customers_OptMostRecent', 'True');
INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBGET__Customers_OptNever', 'False');
