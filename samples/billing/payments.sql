-- The payments of the sample firm, beside those of work.sql: by every method, in parts, of several invoices at once, and retainers.
-- They go in behind the invoices that they pay.
--
-- What a payment applies adds up to it, and what is applied to an invoice never comes to more than its total: all of it finds
-- room in QuickBooks. What does not stands in held-payments.sql. Of {CLIENT RETAINER} there is no project: it is for the client.


-- Of one check two invoices of two projects, the second in part; the rest of that later, in cash

INSERT INTO Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRetainer, PayRef, PayMemo, PayEnteredBy, LastUpdated)
VALUES
    ('{4D5E0005-2F3A-4B6C-8D70-7E8F9A0B1C05}', 'RIVERSIDE', '2008-02-12 00:00:00', 4906.17, '1', 0, '5108',
     'Invoice 1044, and 1,000 on account of 1053', 'MHALE', '2008-02-12 16:20:00'),
    ('{4D5E0006-2F3A-4B6C-8D70-7E8F9A0B1C06}', 'RIVERSIDE', '2008-02-22 00:00:00', 444.01, '2', 0, NULL, 'Brought to the office',
     'MHALE', NULL);

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, TransactionDate,
    TransactionPayAmtApplied, TransactionPayLateFeeRecd, LastUpdated)
VALUES
    ('{6F7A0005-3B4C-4D5E-9F60-8A9B0C1D2E05}', '1044', 'RIVERSIDE', 'PARK:SURVEY', '{4D5E0005-2F3A-4B6C-8D70-7E8F9A0B1C05}',
     '2008-02-12 00:00:00', 3906.17, 0, '2008-02-12 16:20:00'),
    ('{6F7A0006-3B4C-4D5E-9F60-8A9B0C1D2E06}', '1053', 'RIVERSIDE', 'PARK:DESIGN', '{4D5E0005-2F3A-4B6C-8D70-7E8F9A0B1C05}',
     '2008-02-12 00:00:00', 1000, 0, '2008-02-12 16:20:00'),
    ('{6F7A0007-3B4C-4D5E-9F60-8A9B0C1D2E07}', '1053', 'RIVERSIDE', 'PARK:DESIGN', '{4D5E0006-2F3A-4B6C-8D70-7E8F9A0B1C06}',
     '2008-02-22 00:00:00', 444.01, 0, NULL);


-- In parts, by credit card and as a courtesy; in two parts that come to all of it, by barter and written off; and in full

INSERT INTO Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRetainer, PayRef, PayMemo, PayEnteredBy, LastUpdated)
VALUES
    ('{4D5E0007-2F3A-4B6C-8D70-7E8F9A0B1C07}', 'CEDAR', '2008-03-03 00:00:00', 6000, '7', 0, 'VISA 4417-0093-2208-5561', NULL,
     'MHALE', '2008-03-03 14:05:00'),
    ('{4D5E0008-2F3A-4B6C-8D70-7E8F9A0B1C08}', 'CEDAR', '2008-03-03 00:00:00', 500, '3', 0, '',
     'Courtesy for the delay at the east abutment', 'MHALE', '2008-03-03 14:10:00'),
    ('{4D5E0009-2F3A-4B6C-8D70-7E8F9A0B1C09}', 'REGENT', '2008-02-27 00:00:00', 298, '5', 0, NULL,
     'Marble of theirs for our own lobby', 'MHALE', '2008-02-27 18:45:00'),
    ('{4D5E0010-2F3A-4B6C-8D70-7E8F9A0B1C10}', 'REGENT', '2008-02-28 00:00:00', 0.52, '4', 0, NULL, 'Small balance', 'MHALE',
     '2008-02-28 18:00:00'),
    ('{4D5E0011-2F3A-4B6C-8D70-7E8F9A0B1C11}', 'REGENT', '2008-02-19 00:00:00', 3313.72, '9', 0, 'MO 77120', '   ', 'MHALE', NULL),
    ('{4D5E0012-2F3A-4B6C-8D70-7E8F9A0B1C12}', 'WINSLOW', '2008-02-29 00:00:00', 8550, '8', 0, 'W-131',
     'Invoice 1048 <fee for January> & thanks', 'MHALE', NULL),
    ('{4D5E0013-2F3A-4B6C-8D70-7E8F9A0B1C13}', 'ODWYER', '2008-03-04 00:00:00', 400, 'a', 0, '41',
     'With the method as it was once written', 'MHALE', NULL);

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, TransactionDate,
    TransactionPayAmtApplied, TransactionPayLateFeeRecd, LastUpdated)
VALUES
    ('{6F7A0008-3B4C-4D5E-9F60-8A9B0C1D2E08}', '1046', 'CEDAR', 'BRIDGE:', '{4D5E0007-2F3A-4B6C-8D70-7E8F9A0B1C07}',
     '2008-03-03 00:00:00', 6000, 0, '2008-03-03 14:05:00'),
    ('{6F7A0009-3B4C-4D5E-9F60-8A9B0C1D2E09}', '1046', 'CEDAR', 'BRIDGE:', '{4D5E0008-2F3A-4B6C-8D70-7E8F9A0B1C08}',
     '2008-03-03 00:00:00', 500, 0, '2008-03-03 14:10:00'),
    ('{6F7A0010-3B4C-4D5E-9F60-8A9B0C1D2E10}', '1058', 'REGENT', 'LOBBY:', '{4D5E0009-2F3A-4B6C-8D70-7E8F9A0B1C09}',
     '2008-02-27 00:00:00', 298, 0, '2008-02-27 18:45:00'),
    ('{6F7A0011-3B4C-4D5E-9F60-8A9B0C1D2E11}', '1058', 'REGENT', 'LOBBY:', '{4D5E0010-2F3A-4B6C-8D70-7E8F9A0B1C10}',
     '2008-02-28 00:00:00', 0.52, 0, '2008-02-28 18:00:00'),
    ('{6F7A0012-3B4C-4D5E-9F60-8A9B0C1D2E12}', '1047', 'REGENT', 'VAULT:', '{4D5E0011-2F3A-4B6C-8D70-7E8F9A0B1C11}',
     '2008-02-19 00:00:00', 3313.72, 0, NULL),
    ('{6F7A0013-3B4C-4D5E-9F60-8A9B0C1D2E13}', '1048', 'WINSLOW', 'MILL:DESIGN', '{4D5E0012-2F3A-4B6C-8D70-7E8F9A0B1C12}',
     '2008-02-29 00:00:00', 8550, 0, NULL),
    ('{6F7A0014-3B4C-4D5E-9F60-8A9B0C1D2E14}', '1052', 'ODWYER', 'STAIR:', '{4D5E0013-2F3A-4B6C-8D70-7E8F9A0B1C13}',
     '2008-03-04 00:00:00', 400, 0, NULL);


-- Retainers of a project and of a client as a whole; and out of the first one, beside a check, what it has to give to an invoice

INSERT INTO Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRetainer, PayRef, PayMemo, PayEnteredBy, LastUpdated)
VALUES
    ('{4D5E0014-2F3A-4B6C-8D70-7E8F9A0B1C14}', 'PALISADE', '2008-01-22 00:00:00', 1500, '1', -1, '967', 'Retainer for the depot',
     'MHALE', '2008-01-22 19:30:00'),
    ('{4D5E0015-2F3A-4B6C-8D70-7E8F9A0B1C15}', 'FARROW', '2008-02-05 00:00:00', 2000, '8', -1, 'TR 2008 0205 118',
     'On whatever comes first', 'MHALE', NULL),
    ('{4D5E0016-2F3A-4B6C-8D70-7E8F9A0B1C16}', 'PALISADE', '2008-03-04 00:00:00', 6000.77, '1', 0, '990', NULL, 'MHALE',
     '2008-03-04 12:00:00'),
    ('{4D5E0017-2F3A-4B6C-8D70-7E8F9A0B1C17}', 'PALISADE', '2008-03-04 00:00:00', 1000, 'A', 0, NULL,
     'Out of the retainer of January 22', 'MHALE', '2008-03-04 12:01:00');

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, TransactionDate,
    TransactionPayAmtApplied, TransactionPayLateFeeRecd, LastUpdated)
VALUES
    ('{6F7A0015-3B4C-4D5E-9F60-8A9B0C1D2E15}', '0', 'PALISADE', 'DEPOT:', '{4D5E0014-2F3A-4B6C-8D70-7E8F9A0B1C14}',
     '2008-01-22 00:00:00', 1500, 0, '2008-01-22 19:30:00'),
    ('{6F7A0016-3B4C-4D5E-9F60-8A9B0C1D2E16}', '0', 'FARROW', '{CLIENT RETAINER}', '{4D5E0015-2F3A-4B6C-8D70-7E8F9A0B1C15}',
     '2008-02-05 00:00:00', 2000, 0, NULL),
    ('{6F7A0017-3B4C-4D5E-9F60-8A9B0C1D2E17}', '1049', 'PALISADE', 'DEPOT:SURVEY', '{4D5E0016-2F3A-4B6C-8D70-7E8F9A0B1C16}',
     '2008-03-04 00:00:00', 5500, 0, '2008-03-04 12:00:00'),
    ('{6F7A0018-3B4C-4D5E-9F60-8A9B0C1D2E18}', '1050', 'PALISADE', 'DEPOT:', '{4D5E0016-2F3A-4B6C-8D70-7E8F9A0B1C16}',
     '2008-03-04 00:00:00', 500.77, 0, NULL),
    ('{6F7A0019-3B4C-4D5E-9F60-8A9B0C1D2E19}', '1050', 'PALISADE', 'DEPOT:', '{4D5E0017-2F3A-4B6C-8D70-7E8F9A0B1C17}',
     '2008-03-04 00:00:00', 1000, 0, '2008-03-04 12:01:00');
