#include "engine/ReaderMembers.h"

#include <vector>

#include "quickbooks/IsCustomer.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

// Wire numbers of the query's ActiveStatus. Inactive records alone are never asked for.
constexpr int kActiveRecords = 0;
constexpr int kAllRecords = 2;

constexpr std::array kMembers = {
    ReaderMember{
        .table = enEmployees,
        .filterRoutine = "ApplyQBEmployeeFilters",
        .copyRoutine = "modEmployees GetQBEmployeeRecordsInCollectionObject",
        .requests = {"EmployeeQueryRq"},
        .choice = "ORListQuery",
        .readingText = "Reading Employees from QuickBooks...",
    },
    // Vendors go by the routines of the employees, errors too.
    ReaderMember{
        .table = enVendors,
        .filterRoutine = "ApplyQBEmployeeFilters",
        .copyRoutine = "modEmployees GetQBEmployeeRecordsInCollectionObject",
        .requests = {"VendorQueryRq"},
        .choice = "ORVendorListQuery",
        .readingText = "Reading Vendors from QuickBooks...",
    },
    ReaderMember{
        .table = enClients,
        .filterRoutine = "ApplyQBClientFilters",
        .copyRoutine = "GetQBClientRecordsInCollectionObject",
        .requests = {"CustomerQueryRq"},
        .choice = "ORCustomerListQuery",
        .readingText = "Reading Clients from QuickBooks...",
        .keeps = Keeps::Customers,
    },
    ReaderMember{
        .table = enProjects,
        .filterRoutine = "ApplyQBProjectFilters",
        .copyRoutine = "GetQBProjectRecordsInCollectionObject",
        .requests = {"CustomerQueryRq"},
        .choice = "ORCustomerListQuery",
        .readingText = "Reading Projects from QuickBooks...",
        .keeps = Keeps::Jobs,
    },
    // The text has always named projects.
    ReaderMember{
        .table = enActivities,
        .filterRoutine = "ApplyQBActivityFilters",
        .copyRoutine = "GetQBActivityRecordsInCollectionObject",
        .requests = {"ItemServiceQueryRq"},
        .choice = "ORListQuery",
        .readingText = "Reading Projects from QuickBooks...",
    },
    ReaderMember{
        .table = enExpenseCodes,
        .filterRoutine = "ApplyQBExpenseCodeFilters",
        .copyRoutine = "GetQBExpenseCodeRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"ItemOtherChargeQueryRq", "ItemInventoryQueryRq", "ItemNonInventoryQueryRq"},
        .choice = "ORListQuery",
    },
    // The names in the error reports are those of the activities; support knows the reports by them.
    ReaderMember{
        .table = enAccounts,
        .filterRoutine = "ApplyQBActivityFilters",
        .copyRoutine = "GetQBActivityRecordsInCollectionObject",
        .requests = {"AccountQueryRq"},
        .choice = "ORAccountListQuery",
        .readingText = "Reading Accounts from QuickBooks...",
        .readingFrom = 2,
    },
    ReaderMember{
        .table = enExpenseLog,
        .expenseLogKind = enChecks,
        .filterRoutine = "ApplyQBExpenseLogFilters",
        .copyRoutine = "GetQBExpenseLogRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"CheckQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{.names = NamePair::Entities},
    },
    ReaderMember{
        .table = enExpenseLog,
        .expenseLogKind = enCreditCardCharges,
        .filterRoutine = "ApplyQBExpenseLogFilters",
        .copyRoutine = "GetQBExpenseLogRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"CreditCardChargeQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{},
    },
    ReaderMember{
        .table = enExpenseLog,
        .expenseLogKind = enBills,
        .filterRoutine = "ApplyQBBillsFilters",
        .copyRoutine = "GetQBBillsRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"BillQueryRq"},
        .choice = "ORBillQuery",
        .transaction = TransactionQuery{.names = NamePair::Entities},
    },
    // Time entries have no lines, and their query nothing to ask for them with.
    ReaderMember{
        .table = enTimeEntries,
        .filterRoutine = "ApplyQBTimeEntryFilters",
        .copyRoutine = "GetQBTEInCollectionObject",
        .requests = {"TimeTrackingQueryRq"},
        .choice = "ORTimeTrackingTxnQuery",
        .transaction = TransactionQuery{.includesLineItems = false, .takesTransactionDates = true},
        .readingText = "Reading Time Records from QuickBooks ...",
        .readingFrom = 2,
    },
    ReaderMember{
        .table = enInvoices,
        .filterRoutine = "ApplyQBInvoiceFilters",
        .copyRoutine = "GetQBInvoiceRecordsInCollectionObject",
        .requests = {"InvoiceQueryRq"},
        .choice = "ORInvoiceQuery",
        .transaction = TransactionQuery{.takesTransactionDates = true, .names = NamePair::ReferenceNumbers},
        .readingText = "Reading Invoices from QuickBooks ...",
    },
    ReaderMember{
        .table = enPayments,
        .filterRoutine = "ApplyQBPaymentFilters",
        .copyRoutine = "GetQBPaymentRecordsInCollectionObject",
        .requests = {"ReceivePaymentQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{.takesTransactionDates = true},
    },
    ReaderMember{
        .table = enVendorBill,
        .filterRoutine = "ApplyQBBillsFilters",
        .copyRoutine = "GetQBBillsRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"BillQueryRq"},
        .choice = "ORBillQuery",
        .transaction = TransactionQuery{.takesTransactionDates = true, .names = NamePair::Entities},
    },
    ReaderMember{
        .table = enEstimates,
        .filterRoutine = "ApplyQBEstimateFilters",
        .copyRoutine = "GetQBEstimateRecordsInCollectionObject",
        .errors = ErrorReport::OwnBox,
        .requests = {"EstimateQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{.takesTransactionDates = true, .names = NamePair::Entities},
    },
    // The identifier goes where an invoice query has it. A credit memo query has no such place: the read of one by its
    // identifier is told as an error, and goes out without it. A get of one invoice by its identifier ends in that box.
    ReaderMember{
        .table = enCreditMemo,
        .filterRoutine = "ApplyQBInvoiceFilters",
        .copyRoutine = "GetQBCMRecordsInCollectionObject",
        .requests = {"CreditMemoQueryRq"},
        .choice = "ORTxnQuery",
        .transaction = TransactionQuery{.takesTransactionDates = true, .identifierChoice = "ORInvoiceQuery"},
        .readingText = "Reading Credit Memos from QuickBooks ...",
    },
};

bool BothGiven(std::string_view a, std::string_view b) { return !a.empty() && !b.empty(); }
bool NoneGiven(std::string_view a, std::string_view b) { return a.empty() && b.empty(); }

void FillListQuery(const ReaderMember& member, const ReadFilters& filters, const RequestField& query) {
  const auto choice = query[member.choice];
  if (!filters.strID.empty()) {
    choice["ListIDList"].Add(filters.strID);
    return;
  }
  const auto filter = choice["ListFilter"];
  filter["ActiveStatus"].SetValue(filters.activeOnly == ActiveOnly::True ? kActiveRecords : kAllRecords);
  if (BothGiven(filters.strFromDate, filters.strToDate)) {
    filter["FromModifiedDate"].SetValue(filters.strFromDate);
    filter["ToModifiedDate"].SetValue(filters.strToDate);
  }
  if (BothGiven(filters.strNameFrom, filters.strNameTo)) {
    const auto range = filter["ORNameFilter"]["NameRangeFilter"];
    range["FromName"].SetValue(filters.strNameFrom);
    range["ToName"].SetValue(filters.strNameTo);
  }
}

// One range of dates at most: the modified dates, or the transactions' own where no modified date is given at all. Half
// a range of modified dates narrows nothing, and keeps the other range out.
void FillDates(const TransactionQuery& shape, const ReadFilters& filters, const RequestField& filter) {
  if (BothGiven(filters.strFromDate, filters.strToDate)) {
    const auto range = filter["ORDateRangeFilter"]["ModifiedDateRangeFilter"];
    range["FromModifiedDate"].SetValue(filters.strFromDate);
    range["ToModifiedDate"].SetValue(filters.strToDate);
  } else if (shape.takesTransactionDates && NoneGiven(filters.strFromDate, filters.strToDate) &&
             BothGiven(filters.strTxnFrom, filters.strTxnTo)) {
    const auto range = filter["ORDateRangeFilter"]["TxnDateRangeFilter"]["ORTxnDateRangeFilter"]["TxnDateFilter"];
    range["FromTxnDate"].SetValue(filters.strTxnFrom);
    range["ToTxnDate"].SetValue(filters.strTxnTo);
  }
}

void FillNames(NamePair names, const ReadFilters& filters, const RequestField& filter) {
  if (!BothGiven(filters.strNameFrom, filters.strNameTo)) return;
  switch (names) {
    case NamePair::NotUsed:
      return;
    case NamePair::Entities: {
      const auto entities = filter["EntityFilter"]["OREntityFilter"]["FullNameList"];
      entities.Add(filters.strNameFrom);
      entities.Add(filters.strNameTo);
      return;
    }
    case NamePair::ReferenceNumbers: {
      const auto range = filter["ORRefNumberFilter"]["RefNumberRangeFilter"];
      range["FromRefNumber"].SetValue(filters.strNameFrom);
      range["ToRefNumber"].SetValue(filters.strNameTo);
      return;
    }
  }
}

void FillTransactionQuery(const ReaderMember& member, const ReadFilters& filters, const RequestField& query) {
  const auto& shape = *member.transaction;
  if (shape.includesLineItems) query["IncludeLineItems"].SetValue(true);
  if (!filters.strID.empty()) {
    const auto choice = shape.identifierChoice.empty() ? member.choice : shape.identifierChoice;
    query[choice]["TxnIDList"].Add(filters.strID);
    return;
  }
  const auto filter = query[member.choice]["TxnFilter"];
  FillDates(shape, filters, filter);
  FillNames(shape.names, filters, filter);
}

// Runs a member's routine under its name; answers whether it went through.
template <typename Body>
bool RunMember(const ReaderMember& member, std::string_view routine, Body&& body) {
  const auto raised = CatchError(std::forward<Body>(body));
  if (!raised) return true;
  ReportError(member.errors, routine, *raised);
  return false;
}

bool IsKept(Keeps keeps, const Record& record) {
  return keeps == Keeps::Everything || IsCustomer(record) == (keeps == Keeps::Customers);
}

}  // namespace

const ReaderMember* FindReaderMember(std::int32_t table, std::int16_t expenseLogKind) {
  for (const auto& member : kMembers) {
    if (member.table == table && member.expenseLogKind.value_or(expenseLogKind) == expenseLogKind) return &member;
  }
  return nullptr;
}

void ApplyQBFilters(const ReaderMember& member, const ReadFilters& filters, MsgSetRequest& messageSet) {
  RunMember(member, member.filterRoutine, [&] {
    std::vector<RequestField> queries;
    for (const auto request : member.requests) {
      if (!request.empty()) queries.push_back(messageSet.Append(request));
    }
    for (const auto& query : queries) {
      if (member.transaction) {
        FillTransactionQuery(member, filters, query);
      } else {
        FillListQuery(member, filters, query);
      }
    }
  });
}

void GetQBRecordsInCollectionObject(const ReaderMember& member, const ReadFilters& filters, const Response& response,
                                    Into into, RecordList& records) {
  // The pull of one job for another record's sake takes whatever came, a customer too, and shows nothing.
  const bool isPulledJob = member.keeps == Keeps::Jobs && filters.IsDependent;
  const auto keeps = isPulledJob ? Keeps::Everything : member.keeps;
  const auto key = member.transaction ? "TxnID" : "ListID";
  const bool went = RunMember(member, member.copyRoutine, [&] {
    if (into == Into::NewList) records = {};
    const auto details = response.Details();
    const auto last = static_cast<std::int64_t>(details.size()) - 1;
    const bool showsProgress =
        details.size() >= member.readingFrom && !member.readingText.empty() && !isPulledJob && !Vars().g_NoProgressBar;
    if (showsProgress) ShowMsgForm(member.readingText);
    TheDesk().PumpMessages();
    for (std::int64_t index = 0; index <= last; ++index) {
      if (showsProgress) {
        UpdateProgressBar(last, index);
        TheDesk().PumpMessages();
      }
      const auto& record = details[static_cast<std::size_t>(index)];
      if (IsKept(keeps, record)) records.Add(record, record[key].GetValue());
    }
  });
  if (!went && !Vars().g_NoProgressBar) IgnoreErrors([] { UnloadMsgForm(); });
}

}  // namespace twqb
