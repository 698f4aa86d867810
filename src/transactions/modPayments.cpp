#include "transactions/modPayments.h"

#include <array>

#include "transactions/PaymentsIn.h"
#include "transactions/PaymentsOut.h"

namespace twqb {

namespace {

constexpr std::array kClauses = {
    Clause{ClauseOn::FromTo, "{K}(Payment.PayDate BETWEEN {a} AND {b}) "},
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}(Payment.ClientID BETWEEN '{a}' AND '{b}') "},
    // "PAyment": names are compared without case.
    Clause{ClauseOn::Filter2,
           "{K}(PAyment.ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBPaymentFilters",
    .copyRoutine = "GetQBPaymentRecordsInCollectionObject",
    .requests = {"ReceivePaymentQueryRq"},
    .choice = "ORTxnQuery",
    .transaction = TransactionQuery{.takesTransactionDates = true},
}};

constexpr std::array kParents = {RowParent{"ClientID", "Client", "ClientID", Orphan::IsPassedOver}};

}  // namespace

constinit const Table kPaymentsTable = {
    .number = enPayments,
    .name = "Payments",
    .names = {.send = "Payments", .get = "Payments(QB)"},
    .rows = {.table = "Payment", .madeKey = "PayID"},
    .parents = kParents,
    .selection = {.base = "SELECT PayID, PayRetainer, PayDate, PayAmt, PayMethod, PayMemo, Payment.ClientID,  "
                          "Client.ClientCompany, Payment.LastUpdated, Payment.QBLinkID, PayRef  FROM Payment, Client "
                          "WHERE (Client.ClientID = Payment.ClientID)  AND PayMethod <> '6' ",
                  .prefix = "Payment.",
                  .clauses = kClauses},
    .send = MovePaymentsToQB,
    // What goes to an invoice is named by its own row, a retainer by that of the payment.
    .lostLink =
        {.row = "payment",
         .record = "payment",
         .keys = {.table = "TransactionTable",
                  .column = "TransactionID",
                  .adds = "ReceivePaymentAdd",
                  .condition = "PayID IS NOT NULL"},
         .otherKeys = {.table = "Payment", .column = "PayID", .adds = "InvoiceAdd", .condition = "PayRetainer <> 0"},
         .takeUp = TakeUpPaymentLink},
    .reads = kReads,
    .get = MovePaymentsToTW,
    .billingDeletion = {.rows = "TransactionTable", .alsoRows = "Payment"},
    .quickBooksDeletion = {.kind = QuickBooksKind::Transaction, .type = 17},
};

}  // namespace twqb
