#include "transactions/modInvoices.h"

#include <fmt/core.h>

#include <array>

#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/ModuleVariables.h"
#include "transactions/InvoicesIn.h"
#include "transactions/InvoicesOut.h"

namespace twqb {

namespace {

constexpr std::array kClauses = {
    Clause{ClauseOn::FromTo, "{K}(TransactionTable.InvoiceDate BETWEEN {a} AND {b}) "},
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}(TransactionTable.ProjectID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::Filter2, "{K}(TransactionTable.ClientID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::Filter3,
           "{K}(Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN '{a}' AND '{b}')) "},
};

// PassedID is a project and an invoice number. Without the number all invoices are selected.
Sql Passed(std::string_view base, const SavedFilters& /*filters*/) {
  const auto parts = Split(Vars().g_PassedID, ',');
  if (parts.size() < 2) return Sql::Own(base);
  return Sql("{}AND (TransactionTable.ProjectID = '{}') AND (TransactionTable.TransactionInvNum = '{}')",
             Sql::Own(base), Doubled{FixQuote(parts[0])}, Doubled{FixQuote(parts[1])});
}

constexpr std::array kReads = {
    QuickBooksRead{
        .filterRoutine = "ApplyQBInvoiceFilters",
        .copyRoutine = "GetQBInvoiceRecordsInCollectionObject",
        .requests = {"InvoiceQueryRq"},
        .choice = "ORInvoiceQuery",
        .transaction = TransactionQuery{.takesTransactionDates = true, .names = NamePair::ReferenceNumbers},
        .readingText = "Reading Invoices from QuickBooks ...",
    },
    // The identifier goes where an invoice query has it. A credit memo query has no such place: the read of one by its
    // identifier is told as an error, and goes out without it. A get of one invoice by its identifier ends in that box.
    QuickBooksRead{
        .filterRoutine = "ApplyQBInvoiceFilters",
        .copyRoutine = "GetQBCMRecordsInCollectionObject",
        .requests = {"CreditMemoQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{.takesTransactionDates = true, .identifierChoice = "ORInvoiceQuery"},
        .readingText = "Reading Credit Memos from QuickBooks ...",
        // Credit memos are no table of their own, and go by the name of none.
        .shownAs = kNoTableName,
    },
};

constexpr std::array kParents = {RowParent{"ProjectID", "Project", "ProjectID", Orphan::IsPassedOver},
                                 RowParent{"ClientID", "Client", "ClientID"}};

}  // namespace

constinit const Table kInvoicesTable = {
    .number = enInvoices,
    .name = "Invoices",
    .names = {.send = "Invoices", .get = "Invoices(QB)"},
    // Allocations of payments stand in the same table.
    .rows = {.table = "TransactionTable", .condition = "PayID IS NULL", .madeKey = "TransactionID"},
    .parents = kParents,
    .selection =
        {
            // Neither drafts, nor the rows of retainers, nor the allocations of payments.
            .base = "SELECT TransactionID, TransactionTable.QBLinkID as TransactionTableQBLinkID, "
                    "TransactionTable.LastUpdated, TransactionTable.ClientID, TransactionInvNum, "
                    "TransactionTable.ProjectID, TransactionInvBillAmt, InvoiceDate, TransactionTable.TransactionDate, "
                    "TransactionInvDiscount,InvRetainerAmtApplied, TransactionManInvMiscAmt,TransactionManInvPaidToday,"
                    "ServiceAmt, ServiceTaxAmt, ExpAmt,ExpTaxAmt,MainServiceTaxAmt, MainExpenseTaxAmt,TransactionMemo, "
                    "TransactionManInv, Client.QBLinkID as ClientQBLinkID, Client.ClientCompany, Client.ClientStreet, "
                    "Client.ClientStreet2, Client.ClientCity, Client.ClientState, Client.ClientZip, Project.QBLinkID "
                    "as ProjectQBLInkID, TransactionTable.TransactionInvSendBillFlag FROM "
                    "TransactionTable,Client,Project WHERE ((TransactionTable.ProjectID=Project.ProjectID) AND "
                    "(TransactionTable.IsDraft<> -1) AND (TransactionTable.TransactionInvNum <>'0') AND "
                    "(TransactionTable.PayID IS NULL) AND (Project.ClientID = Client.ClientID)) ",
            .prefix = "TransactionTable.",
            .clauses = kClauses,
            .passed = Passed,
        },
    .send = MoveInvoicesToQB,
    .lostLink = {.row = "invoice",
                 .record = "invoice",
                 .keys = {.table = "TransactionTable",
                          .column = "TransactionID",
                          .adds = "InvoiceAdd",
                          .condition = "PayID IS NULL"},
                 .takeUp = TakeUpInvoiceLink},
    .reads = kReads,
    .get = MoveInvoicesOrCreditMemosToTW,
    .billingDeletion = {.instead = "The associated Invoice in Tallywick can not be automatically\r\n"
                                   "deleted. Please reverse it from the Invoice Review screen in\r\n"
                                   "Tallywick\r\n"},
    // One that is gone already is as good as deleted.
    .quickBooksDeletion = {.kind = QuickBooksKind::Transaction, .type = 13, .accepted = status::kObjectNotFound},
};

}  // namespace twqb
