-- Payments of the sample firm that QuickBooks has no room for: of more than the invoice comes to; of an invoice that is a draft and
-- so is not there; and of one that has been paid in full by then, as somebody does who overlooks a transfer.
--
-- The sample firm comes without them: a send of payments holds them back, tells so at its end and counts as failed, so that a run
-- over all tables ends there. The demonstration enters them at its end.


INSERT INTO Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRetainer, PayRef, PayMemo, PayEnteredBy, LastUpdated)
VALUES
    ('{4D5E0020-2F3A-4B6C-8D70-7E8F9A0B1C20}', 'ABBOTT', '2008-03-04 00:00:00', 2830, '1', 0, '20790', 'Rounded up', 'MHALE',
     '2008-03-04 15:00:00'),
    ('{4D5E0021-2F3A-4B6C-8D70-7E8F9A0B1C21}', 'BAYVIEW', '2008-03-04 00:00:00', 543.75, '1', 0, '3342', NULL, 'MHALE', NULL),
    ('{4D5E0022-2F3A-4B6C-8D70-7E8F9A0B1C22}', 'WINSLOW', '2008-03-04 00:00:00', 8550, '1', 0, '1180', 'Invoice 1048', 'MHALE',
     '2008-03-04 15:10:00');

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, TransactionDate,
    TransactionPayAmtApplied, TransactionPayLateFeeRecd, LastUpdated)
VALUES
    ('{6F7A0030-3B4C-4D5E-9F60-8A9B0C1D2E30}', '1055', 'ABBOTT', 'HARBOR:', '{4D5E0020-2F3A-4B6C-8D70-7E8F9A0B1C20}',
     '2008-03-04 00:00:00', 2830, 0, '2008-03-04 15:00:00'),
    ('{6F7A0031-3B4C-4D5E-9F60-8A9B0C1D2E31}', '1043', 'BAYVIEW', 'MARINA:', '{4D5E0021-2F3A-4B6C-8D70-7E8F9A0B1C21}',
     '2008-03-04 00:00:00', 543.75, 0, NULL),
    ('{6F7A0032-3B4C-4D5E-9F60-8A9B0C1D2E32}', '1048', 'WINSLOW', 'MILL:DESIGN', '{4D5E0022-2F3A-4B6C-8D70-7E8F9A0B1C22}',
     '2008-03-04 00:00:00', 8550, 0, '2008-03-04 15:10:00');
