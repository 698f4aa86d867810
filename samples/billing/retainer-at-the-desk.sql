-- A retainer of February 2008 that the sample firm's bookkeeper has in QuickBooks, entered at the billing desk in its place.
--
-- The sample firm comes without it: a retainer that comes in from QuickBooks goes back, and comes in again with each get, so that one
-- is entered on one side and not got from the other. The demonstration enters it here.


INSERT INTO Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRetainer, PayRef, PayMemo, PayEnteredBy, LastUpdated)
VALUES
    ('{4D5E0023-2F3A-4B6C-8D70-7E8F9A0B1C23}', 'O Dowd s Bakery', '2008-02-26 00:00:00', 250, '5', -1, NULL,
     'Bread for the field crew, ahead of the next visit', 'MHALE', '2008-02-26 15:00:00');

INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, TransactionDate,
    TransactionPayAmtApplied, TransactionPayLateFeeRecd, LastUpdated)
VALUES
    ('{6F7A0033-3B4C-4D5E-9F60-8A9B0C1D2E33}', '0', 'O Dowd s Bakery', 'Oven Room:', '{4D5E0023-2F3A-4B6C-8D70-7E8F9A0B1C23}',
     '2008-02-26 00:00:00', 250, 0, '2008-02-26 15:00:00');
