// The query of every table as it goes on the wire: identifier, no filter, dates, names, halves of pairs.

#include <gtest/gtest.h>

#include "bridge/Tables.h"
#include "tests/engine/ReaderHouse.h"
#include "tests/support/TablesByNumber.h"

namespace twqb {
namespace {

// --- Lists -----------------------------------------------------------------------------------------------------------

constexpr ReadCase kLists[] = {
    {.name = "Employees", .table = enEmployees, .message = "EmployeeQuery", .record = "EmployeeRet"},
    {.name = "Vendors", .table = enVendors, .message = "VendorQuery", .record = "VendorRet"},
    {.name = "Clients", .table = enClients, .message = "CustomerQuery", .record = "CustomerRet"},
    {.name = "Projects", .table = enProjects, .message = "CustomerQuery", .record = "CustomerRet"},
    {.name = "Activities", .table = enActivities, .message = "ItemServiceQuery", .record = "ItemServiceRet"},
    {.name = "Accounts", .table = enAccounts, .message = "AccountQuery", .record = "AccountRet"},
};

constexpr std::string_view kActive = "<ActiveStatus>ActiveOnly</ActiveStatus>";
constexpr std::string_view kAll = "<ActiveStatus>All</ActiveStatus>";
// Identifiers are never narrowed: these are what must be ignored beside one.
const ReadFilters kEveryFilter = {.strFromDate = "3/4/2008",
                                  .strToDate = "3/5/2008",
                                  .strNameFrom = "A",
                                  .strNameTo = "B",
                                  .activeOnly = ActiveOnly::True,
                                  .strTxnFrom = "1/1/2008",
                                  .strTxnTo = "2/1/2008"};

ReadFilters WithId(ReadFilters filters) {
  filters.strID = "80000001-1";
  return filters;
}

class ListQueries : public testing::TestWithParam<ReadCase> {
 protected:
  // Reads with these filters and expects one request with these insides.
  void Expect(const ReadFilters& filters, std::string_view insides) {
    EXPECT_EQ(house.DocumentOf(filters), house.Document(insides));
    EXPECT_TRUE(house.BoxTexts().empty());
  }

  ReaderHouse house{GetParam()};
};

TEST_P(ListQueries, Ask_for_one_record_by_its_identifier_whatever_the_filters) {
  Expect({.strID = "80000001-1"}, "<ListID>80000001-1</ListID>");
  Expect(WithId(kEveryFilter), "<ListID>80000001-1</ListID>");
}

TEST_P(ListQueries, Ask_for_all_records_without_filter) { Expect({}, kAll); }

TEST_P(ListQueries, Ask_for_active_records_alone_on_demand) {
  Expect({.activeOnly = ActiveOnly::True}, kActive);
  Expect({.activeOnly = ActiveOnly::False}, kAll);
}

TEST_P(ListQueries, Look_the_active_setting_up_under_the_get_name) {
  Expect({.activeOnly = ActiveOnly::LookUp}, kAll);
  house.Setting("QBGET_", std::string(GetTableName(Direction::Get, GetParam().table)) + "_chkActiveOnly", "True");
  Expect({.activeOnly = ActiveOnly::LookUp}, kActive);
}

TEST_P(ListQueries, Send_both_dates) {
  Expect({.strFromDate = "3/4/2008 1:02:03 PM", .strToDate = "3/5/2008"},
         std::string(kAll) +
             "<FromModifiedDate>2008-03-04T13:02:03</FromModifiedDate>"
             "<ToModifiedDate>2008-03-05T00:00:00</ToModifiedDate>");
}

TEST_P(ListQueries, Send_both_names) {
  Expect({.strNameFrom = "A & B", .strNameTo = "C"},
         std::string(kAll) + "<NameRangeFilter><FromName>A &amp; B</FromName><ToName>C</ToName></NameRangeFilter>");
}

TEST_P(ListQueries, Send_dates_ahead_of_names) {
  Expect(kEveryFilter, std::string(kActive) +
                           "<FromModifiedDate>2008-03-04T00:00:00</FromModifiedDate>"
                           "<ToModifiedDate>2008-03-05T00:00:00</ToModifiedDate>"
                           "<NameRangeFilter><FromName>A</FromName><ToName>B</ToName></NameRangeFilter>");
}

TEST_P(ListQueries, Ignore_half_of_a_pair) {
  Expect({.strFromDate = "3/4/2008"}, kAll);
  Expect({.strToDate = "3/4/2008"}, kAll);
  Expect({.strNameFrom = "A"}, kAll);
  Expect({.strNameTo = "A"}, kAll);
}

TEST_P(ListQueries, Know_no_transaction_dates) { Expect({.strTxnFrom = "1/1/2008", .strTxnTo = "2/1/2008"}, kAll); }

INSTANTIATE_TEST_SUITE_P(Reader, ListQueries, testing::ValuesIn(kLists), NameOfCase);

// --- Transactions ----------------------------------------------------------------------------------------------------

struct TransactionCase {
  ReadCase read;
  bool lines = true;
  bool transactionDates = false;
  NamePair names = NamePair::NotUsed;
};

const TransactionCase kTransactions[] = {
    {.read = {.name = "Checks", .table = enExpenseLog, .message = "CheckQuery", .record = "CheckRet"},
     .names = NamePair::Entities},
    {.read = {.name = "CreditCardCharges",
              .table = enExpenseLog,
              .expenseLogKind = enCreditCardCharges,
              .message = "CreditCardChargeQuery",
              .record = "CreditCardChargeRet"}},
    {.read = {.name = "Bills",
              .table = enExpenseLog,
              .expenseLogKind = enBills,
              .message = "BillQuery",
              .record = "BillRet"},
     .names = NamePair::Entities},
    {.read =
         {.name = "TimeEntries", .table = enTimeEntries, .message = "TimeTrackingQuery", .record = "TimeTrackingRet"},
     .lines = false,
     .transactionDates = true},
    {.read = {.name = "Invoices", .table = enInvoices, .message = "InvoiceQuery", .record = "InvoiceRet"},
     .transactionDates = true,
     .names = NamePair::ReferenceNumbers},
    {.read = {.name = "Payments", .table = enPayments, .message = "ReceivePaymentQuery", .record = "ReceivePaymentRet"},
     .transactionDates = true},
    {.read = {.name = "VendorBills", .table = enVendorBill, .message = "BillQuery", .record = "BillRet"},
     .transactionDates = true,
     .names = NamePair::Entities},
    {.read = {.name = "Estimates", .table = enEstimates, .message = "EstimateQuery", .record = "EstimateRet"},
     .transactionDates = true,
     .names = NamePair::Entities},
    {.read = {.name = "CreditMemos", .table = enCreditMemo, .message = "CreditMemoQuery", .record = "CreditMemoRet"},
     .transactionDates = true},
};

constexpr std::string_view kModifiedRange =
    "<ModifiedDateRangeFilter><FromModifiedDate>2008-03-04T13:02:03</FromModifiedDate>"
    "<ToModifiedDate>2008-03-05T00:00:00</ToModifiedDate></ModifiedDateRangeFilter>";
constexpr std::string_view kTransactionRange =
    "<TxnDateRangeFilter><FromTxnDate>2008-01-01</FromTxnDate><ToTxnDate>2008-02-01</ToTxnDate></TxnDateRangeFilter>";
const ReadFilters kModifiedDates = {.strFromDate = "3/4/2008 1:02:03 PM", .strToDate = "3/5/2008"};
const ReadFilters kTransactionDates = {.strTxnFrom = "1/1/2008", .strTxnTo = "2/1/2008"};

class TransactionQueries : public testing::TestWithParam<TransactionCase> {
 protected:
  // Reads with these filters and expects one request with these insides ahead of the wish for line items.
  void Expect(const ReadFilters& filters, std::string_view insides) {
    const std::string_view lines = GetParam().lines ? "<IncludeLineItems>true</IncludeLineItems>" : "";
    EXPECT_EQ(house.DocumentOf(filters), house.Document(std::string(insides) + std::string(lines)));
    EXPECT_TRUE(house.BoxTexts().empty());
  }

  ReaderHouse house{GetParam().read};
};

TEST_P(TransactionQueries, Ask_for_all_records_without_filter) {
  Expect({}, "");
  Expect({.activeOnly = ActiveOnly::True}, "");
}

TEST_P(TransactionQueries, Send_the_modified_dates) { Expect(kModifiedDates, kModifiedRange); }

TEST_P(TransactionQueries, Send_the_transaction_dates_where_they_are_taken) {
  Expect(kTransactionDates, GetParam().transactionDates ? kTransactionRange : "");
}

TEST_P(TransactionQueries, Prefer_the_modified_dates) {
  auto both = kModifiedDates;
  both.strTxnFrom = kTransactionDates.strTxnFrom;
  both.strTxnTo = kTransactionDates.strTxnTo;
  Expect(both, kModifiedRange);
}

TEST_P(TransactionQueries, Ignore_half_of_a_pair) {
  Expect({.strFromDate = "3/4/2008"}, "");
  Expect({.strToDate = "3/4/2008"}, "");
  Expect({.strTxnFrom = "3/4/2008"}, "");
  Expect({.strTxnTo = "3/4/2008"}, "");
  Expect({.strNameFrom = "A"}, "");
  Expect({.strNameTo = "A"}, "");
}

TEST_P(TransactionQueries, Send_no_transaction_dates_beside_one_modified_date) {
  auto filters = kTransactionDates;
  filters.strToDate = "3/5/2008";
  Expect(filters, "");
}

TEST_P(TransactionQueries, Send_both_names_as_the_table_takes_them) {
  const ReadFilters filters = {.strNameFrom = "A", .strNameTo = "B"};
  switch (GetParam().names) {
    case NamePair::NotUsed:
      Expect(filters, "");
      break;
    case NamePair::Entities:
      Expect(filters, "<EntityFilter><FullName>A</FullName><FullName>B</FullName></EntityFilter>");
      break;
    case NamePair::ReferenceNumbers:
      Expect(filters,
             "<RefNumberRangeFilter><FromRefNumber>A</FromRefNumber><ToRefNumber>B</ToRefNumber>"
             "</RefNumberRangeFilter>");
      break;
  }
}

// All but the credit memos, the last of them: those have a test of their own below.
class TransactionIdentifiers : public TransactionQueries {};

TEST_P(TransactionIdentifiers, Ask_for_one_record_whatever_the_filters) {
  Expect({.strID = "80000001-1"}, "<TxnID>80000001-1</TxnID>");
  Expect(WithId(kEveryFilter), "<TxnID>80000001-1</TxnID>");
}

std::string NameOfTransaction(const testing::TestParamInfo<TransactionCase>& tested) {
  return std::string(tested.param.read.name);
}

INSTANTIATE_TEST_SUITE_P(Reader, TransactionQueries, testing::ValuesIn(kTransactions), NameOfTransaction);
INSTANTIATE_TEST_SUITE_P(Reader, TransactionIdentifiers,
                         testing::ValuesIn(std::begin(kTransactions), std::end(kTransactions) - 1), NameOfTransaction);

// --- One by one ------------------------------------------------------------------------------------------------------

constexpr ReadCase kCreditMemos = {
    .name = "CreditMemos", .table = enCreditMemo, .message = "CreditMemoQuery", .record = "CreditMemoRet"};

TEST(CreditMemoReader, A_single_credit_memo_is_told_as_an_error_and_asked_for_without_its_identifier) {
  ReaderHouse house(kCreditMemos);
  EXPECT_EQ(house.DocumentOf({.strID = "80000001-1"}), house.Document("<IncludeLineItems>true</IncludeLineItems>"));
  EXPECT_EQ(house.BoxTexts(),
            std::vector<std::string>{
                "Error #: 438(1B6) -- \r\n\r\nObject doesn't support this property or method: ORInvoiceQuery" +
                ErrorBoxEnd("ApplyQBInvoiceFilters")});
}

// --- Expense codes ---------------------------------------------------------------------------------------------------

// Three requests with the same insides.
std::string ItemDocument(std::string_view insides) {
  return fmt::format(
      "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">"
      "<ItemOtherChargeQueryRq requestID=\"1\">{0}</ItemOtherChargeQueryRq>"
      "<ItemInventoryQueryRq requestID=\"2\">{0}</ItemInventoryQueryRq>"
      "<ItemNonInventoryQueryRq requestID=\"3\">{0}</ItemNonInventoryQueryRq></QBXMLMsgsRq></QBXML>",
      insides);
}

constexpr ReadCase kItems = {
    .name = "ExpenseCodes", .table = enExpenseCodes, .message = "ItemOtherChargeQuery", .record = "ItemOtherChargeRet"};

TEST(ExpenseCodeQueries, Ask_three_kinds_of_items_the_same) {
  ReaderHouse house(kItems);
  EXPECT_EQ(house.DocumentOf({}), ItemDocument(kAll));
  EXPECT_EQ(house.DocumentOf(WithId(kEveryFilter)), ItemDocument("<ListID>80000001-1</ListID>"));
  EXPECT_EQ(house.DocumentOf(kEveryFilter),
            ItemDocument("<ActiveStatus>ActiveOnly</ActiveStatus>"
                         "<FromModifiedDate>2008-03-04T00:00:00</FromModifiedDate>"
                         "<ToModifiedDate>2008-03-05T00:00:00</ToModifiedDate>"
                         "<NameRangeFilter><FromName>A</FromName><ToName>B</ToName></NameRangeFilter>"));
  EXPECT_EQ(house.DocumentOf({.strFromDate = "3/4/2008"}), ItemDocument(kAll));
  EXPECT_EQ(house.DocumentOf({.strNameTo = "A"}), ItemDocument(kAll));
}

TEST(ExpenseCodeQueries, Look_the_active_setting_up_under_the_get_name) {
  ReaderHouse house(kItems);
  house.Setting("QBGET_", "Expense Codes (QB)_chkActiveOnly", "1");
  EXPECT_EQ(house.DocumentOf({.activeOnly = ActiveOnly::LookUp}), ItemDocument(kActive));
}

}  // namespace
}  // namespace twqb
