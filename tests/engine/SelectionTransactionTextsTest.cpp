// The statements that select time entries, expenses, invoices, payments and vendor bills to send: their texts byte for
// byte, each taken by a real database.

#include "tests/engine/SelectionBases.h"
#include "tests/engine/SelectionHouse.h"

namespace twqb {
namespace {

const SelectionCorner kExpenses[] = {
    {.what = "the list comes quoted",
     .passed = "'{E-1}','{E-2}'",
     .filters = {.Filter1a = "'{E-1}','{E-2}'"},
     .statement = "WHERE (ELID IN('{E-1}','{E-2}')) AND (ELPosted = -1) ORDER BY EmployeeID;"},
    {.what = "the same in the other dialect, with a literal of its own",
     .provider = kJet,
     .passed = "any",
     .filters = {.Filter1a = "{guid {E-1}}"},
     .statement = "WHERE (ELID IN({guid {E-1}})) AND (ELPosted = -1) ORDER BY EmployeeID;"},
    {.what = "no other filter has a clause",
     .sentAt = "3/4/2008",
     .passed = "any",
     .filters = {.Date1a = "1/2/2008",
                 .Date1b = "2/3/2008",
                 .Filter1a = "'E'",
                 .Filter2a = "G",
                 .Filter3a = "P",
                 .Filter1b = "M",
                 .Filter2b = "H",
                 .Filter3b = "Q",
                 .From = "3/1/2008",
                 .To = "3/31/2008",
                 .ActiveOnly = true},
     .statement = "WHERE (ELID IN('E')) AND (ELPosted = -1) ORDER BY EmployeeID;"},
};

TEST(ExpenseLogSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enExpenseLog, "Expense Log", kExpenseLogBase, kExpenses);
}

TEST(ExpenseLogSelection, Without_both_PassedID_and_the_list_there_is_no_statement) {
  SelectionHouse house(kNewYork);
  EXPECT_EQ(BuildSelectSQL(enExpenseLog, {}), "");
  EXPECT_EQ(BuildSelectSQL(enExpenseLog, {.Filter1a = "'E'", .Filter1b = "'E'"}), "");
  Vars().g_PassedID = "'E'";
  EXPECT_EQ(BuildSelectSQL(enExpenseLog, {.Filter1b = "'E'", .ActiveOnly = true}), "");
}

// Always last.
const std::string kUnlinked = " AND ((TimeEntry.QBLinkID IS NULL) OR (TimeEntry.QBLinkID = '')) ;";

const SelectionCorner kTimeEntries[] = {
    {.what = "all that is not linked", .statement = kUnlinked},
    {.what = "second dates",
     .provider = kJet,
     .filters = {.From = "3/1/2008", .To = "3/31/2008 11:59:59 PM"},
     .statement = " AND ((TimeEntry.TEDate BETWEEN #03/01/2008 00:00:00# AND #03/31/2008 23:59:59#)) " + kUnlinked},
    {.what = "one second date alone", .filters = {.From = "3/1/2008"}, .statement = kUnlinked},
    {.what = "the other second date alone", .filters = {.To = "3/1/2008"}, .statement = kUnlinked},
    {.what = "last send, with every test in parentheses",
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " AND ((TimeEntry.LastUpdated > '03/04/2008 21:05:06') OR (TimeEntry.QBLinkID IS NULL) OR "
                  "(TimeEntry.QBLinkID = '') OR (TimeEntry.LastUpdated IS NULL)) " +
                  kUnlinked},
    {.what = "an ignored last send does not select linked entries",
     .sentAt = "3/4/2008",
     .filters = {.IgnoreLastSync = true},
     .statement = kUnlinked},
    {.what = "range",
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " AND (TimeEntry.LastUpdated BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00')" + kUnlinked},
    {.what = "employees",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " AND ((TimeEntry.EmployeeID BETWEEN 'A' AND 'M')) " + kUnlinked},
    {.what = "projects",
     .filters = {.Filter2a = "G", .Filter2b = "H"},
     .statement = " AND (TimeEntry.ProjectID BETWEEN 'G' AND 'H') " + kUnlinked},
    {.what = "activities",
     .filters = {.Filter3a = "P", .Filter3b = "Q"},
     .statement = " AND (TimeEntry.ActivityID BETWEEN 'P' AND 'Q') " + kUnlinked},
    {.what = "active only has no clause", .filters = {.ActiveOnly = true}, .statement = kUnlinked},
    {.what = "all together, the second dates first",
     .provider = kJet,
     .sentAt = "3/4/2008",
     .filters = {.Filter1a = "A",
                 .Filter2a = "G",
                 .Filter3a = "P",
                 .Filter1b = "M",
                 .Filter2b = "H",
                 .Filter3b = "Q",
                 .From = "3/1/2008",
                 .To = "3/2/2008"},
     .statement = " AND ((TimeEntry.TEDate BETWEEN #03/01/2008 00:00:00# AND #03/02/2008 00:00:00#)) "
                  " AND ((TimeEntry.LastUpdated > #03/04/2008 00:00:00#) OR (TimeEntry.QBLinkID IS NULL) OR "
                  "(TimeEntry.QBLinkID = '') OR (TimeEntry.LastUpdated IS NULL)) "
                  " AND ((TimeEntry.EmployeeID BETWEEN 'A' AND 'M')) "
                  " AND (TimeEntry.ProjectID BETWEEN 'G' AND 'H') "
                  " AND (TimeEntry.ActivityID BETWEEN 'P' AND 'Q') " +
                  kUnlinked},
    {.what = "one passed entry, whether it is linked or not",
     .sentAt = "3/4/2008",
     .passed = "1A2B",
     .filters = {.Filter1a = "1A2B", .Filter1b = "1A2B"},
     .statement = " AND (TimeEntry.TEID IN ('{1A2B}')) ;"},
    {.what = "several passed entries",
     .provider = kJet,
     .passed = "1A2B,3C4D,5E6F",
     .statement = " AND (TimeEntry.TEID IN ('{1A2B}','{3C4D}','{5E6F}')) ;"},
};

TEST(TimeEntrySelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enTimeEntries, "Time Entries", kTimeEntryBase, kTimeEntries);
}

TEST(TimeEntrySelection, The_note_is_selected_only_while_notes_are_mapped) {
  SelectionHouse house;
  for (const std::string_view on : {"1", "2", "0.5", " 1 "}) {
    house.Setting("QBSEND", "_Time Entries_MapTENotes", on);
    EXPECT_EQ(BuildSelectSQL(enTimeEntries, {}), kNotedTimeEntryBase + kUnlinked) << on;
  }
  house.Run(BuildSelectSQL(enTimeEntries, {}));
  Vars().g_PassedID = "1A2B";
  EXPECT_EQ(BuildSelectSQL(enTimeEntries, {}), kNotedTimeEntryBase + " AND (TimeEntry.TEID IN ('{1A2B}')) ;");
  for (const std::string_view off : {"0", "-1", "", "False", "True"}) {
    house.Setting("QBSEND", "_Time Entries_MapTENotes", off);
    EXPECT_EQ(BuildSelectSQL(enTimeEntries, {}), kTimeEntryBase + " AND (TimeEntry.TEID IN ('{1A2B}')) ;") << off;
  }
}

TEST(TimeEntrySelection, The_key_of_the_notes_lies_in_the_section_without_an_underscore) {
  SelectionHouse house;
  house.Setting("QBSEND_", "Time Entries_MapTENotes", "1");
  EXPECT_EQ(BuildSelectSQL(enTimeEntries, {}), kTimeEntryBase + kUnlinked);
  // In the table both spellings are one row.
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBSEND__Time Entries_MapTENotes', '1')");
  Vars().g_UseTWSTable = true;
  EXPECT_EQ(BuildSelectSQL(enTimeEntries, {}), kNotedTimeEntryBase + kUnlinked);
}

const SelectionCorner kInvoices[] = {
    {.what = "all", .statement = ";"},
    {.what = "invoice dates",
     .provider = kJet,
     .filters = {.From = "3/1/2008", .To = "3/31/2008"},
     .statement = " AND (TransactionTable.InvoiceDate BETWEEN #03/01/2008 00:00:00# AND #03/31/2008 00:00:00#) ;"},
    {.what = "last send",
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " AND ((TransactionTable.LastUpdated > '03/04/2008 21:05:06') OR TransactionTable.QBLinkID IS NULL "
                  "OR TransactionTable.QBLinkID = '' OR TransactionTable.LastUpdated IS NULL) ;"},
    {.what = "range",
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " AND (TransactionTable.LastUpdated BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00');"},
    {.what = "projects",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " AND (TransactionTable.ProjectID BETWEEN 'A' AND 'M') ;"},
    {.what = "clients",
     .filters = {.Filter2a = "G", .Filter2b = "H"},
     .statement = " AND (TransactionTable.ClientID BETWEEN 'G' AND 'H') ;"},
    {.what = "project groups",
     .filters = {.Filter3a = "P", .Filter3b = "Q"},
     .statement = " AND (Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN 'P' AND "
                  "'Q')) ;"},
    {.what = "active only has no clause", .filters = {.ActiveOnly = true}, .statement = ";"},
    {.what = "all together, the invoice dates first",
     .provider = kJet,
     .filters = {.Date1a = "1/2/2008",
                 .Date1b = "2/3/2008",
                 .Filter1a = "A",
                 .Filter2a = "G",
                 .Filter3a = "P",
                 .Filter1b = "M",
                 .Filter2b = "H",
                 .Filter3b = "Q",
                 .From = "3/1/2008",
                 .To = "3/2/2008",
                 .ActiveOnly = true},
     .statement = " AND (TransactionTable.InvoiceDate BETWEEN #03/01/2008 00:00:00# AND #03/02/2008 00:00:00#) "
                  " AND (TransactionTable.LastUpdated BETWEEN #01/02/2008 00:00:00# AND #02/04/2008 00:00:00#)"
                  " AND (TransactionTable.ProjectID BETWEEN 'A' AND 'M') "
                  " AND (TransactionTable.ClientID BETWEEN 'G' AND 'H') "
                  " AND (Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN 'P' AND "
                  "'Q')) ;"},
    {.what = "a passed project and number, and no filter beside them",
     .sentAt = "3/4/2008",
     .passed = "BRIDGE:,1042",
     .filters = {.Filter1a = "BRIDGE:,1042", .Filter1b = "BRIDGE:,1042", .From = "3/1/2008", .To = "3/2/2008"},
     .statement = "AND (TransactionTable.ProjectID = 'BRIDGE:') AND (TransactionTable.TransactionInvNum = '1042');"},
    {.what = "quotes in them are protected",
     .provider = kJet,
     .passed = "O'DWYER:,10'42,more",
     .statement =
         "AND (TransactionTable.ProjectID = 'O''DWYER:') AND (TransactionTable.TransactionInvNum = '10''42');"},
    {.what = "an empty number is one all the same",
     .passed = "BRIDGE:,",
     .statement = "AND (TransactionTable.ProjectID = 'BRIDGE:') AND (TransactionTable.TransactionInvNum = '');"},
    {.what = "a project without a number selects all invoices", .passed = "BRIDGE:", .statement = ";"},
};

TEST(InvoiceSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enInvoices, "Invoices", kInvoiceBase, kInvoices);
}

const SelectionCorner kPayments[] = {
    {.what = "all", .statement = ";"},
    {.what = "payment dates",
     .provider = kJet,
     .filters = {.From = "3/1/2008", .To = "3/31/2008"},
     .statement = " AND (Payment.PayDate BETWEEN #03/01/2008 00:00:00# AND #03/31/2008 00:00:00#) ;"},
    {.what = "last send",
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " AND ((Payment.LastUpdated > '03/04/2008 21:05:06') OR Payment.QBLinkID IS NULL OR "
                  "Payment.QBLinkID = '' OR Payment.LastUpdated IS NULL) ;"},
    {.what = "range",
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " AND (Payment.LastUpdated BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00');"},
    {.what = "clients",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " AND (Payment.ClientID BETWEEN 'A' AND 'M') ;"},
    {.what = "client groups, in a spelling of their own",
     .filters = {.Filter2a = "G", .Filter2b = "H"},
     .statement = " AND (PAyment.ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN 'G' AND "
                  "'H')) ;"},
    {.what = "the third pair and active only have no clause",
     .filters = {.Filter3a = "P", .Filter3b = "Q", .ActiveOnly = true},
     .statement = ";"},
    {.what = "all together, the payment dates first",
     .sentAt = "3/4/2008",
     .filters =
         {.Filter1a = "A", .Filter2a = "G", .Filter1b = "M", .Filter2b = "H", .From = "3/1/2008", .To = "3/2/2008"},
     .statement = " AND (Payment.PayDate BETWEEN '03/01/2008 00:00:00' AND '03/02/2008 00:00:00') "
                  " AND ((Payment.LastUpdated > '03/04/2008 00:00:00') OR Payment.QBLinkID IS NULL OR "
                  "Payment.QBLinkID = '' OR Payment.LastUpdated IS NULL) "
                  " AND (Payment.ClientID BETWEEN 'A' AND 'M') "
                  " AND (PAyment.ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN 'G' AND "
                  "'H')) ;"},
    {.what = "PassedID alone has no clause", .passed = "P-1", .statement = ";"},
};

TEST(PaymentSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enPayments, "Payments", kPaymentBase, kPayments);
}

const SelectionCorner kVendorBills[] = {
    {.what = "all", .statement = ";"},
    {.what = "last send",
     .sentAt = "3/4/2008 9:05:06 PM",
     .statement = " WHERE ((LastUpdated > '03/04/2008 21:05:06') OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated "
                  "IS NULL) ;"},
    {.what = "range",
     .provider = kJet,
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008"},
     .statement = " WHERE (LastUpdated BETWEEN #01/02/2008 00:00:00# AND #02/04/2008 00:00:00#);"},
    {.what = "vendors",
     .filters = {.Filter1a = "A", .Filter1b = "M"},
     .statement = " WHERE (VendorID BETWEEN 'A' AND 'M') ;"},
    {.what = "bill dates take the values of the first dates: zero dates without them",
     .filters = {.From = "3/1/2008", .To = "3/31/2008"},
     .statement = " WHERE (BillDate BETWEEN '12/30/1899 00:00:00' AND '12/30/1899 00:00:00');"},
    {.what = "half of the first dates is none",
     .provider = kJet,
     .filters = {.Date1a = "1/2/2008", .From = "3/1/2008", .To = "3/31/2008"},
     .statement = " WHERE (BillDate BETWEEN #12/30/1899 00:00:00# AND #12/30/1899 00:00:00#);"},
    {.what = "bill dates with the first dates",
     .filters = {.Date1a = "1/2/2008", .Date1b = "2/3/2008", .From = "3/1/2008", .To = "3/31/2008"},
     .statement = " WHERE (LastUpdated BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00')"
                  " AND (BillDate BETWEEN '01/02/2008 00:00:00' AND '02/04/2008 00:00:00');"},
    {.what = "the other pairs and active only have no clause",
     .filters = {.Filter2a = "G", .Filter3a = "P", .Filter2b = "H", .Filter3b = "Q", .ActiveOnly = true},
     .statement = ";"},
    {.what = "all together, the bill dates last",
     .provider = kJet,
     .sentAt = "3/4/2008",
     .filters = {.Filter1a = "A", .Filter1b = "M", .From = "3/1/2008", .To = "3/2/2008"},
     .statement = " WHERE ((LastUpdated > #03/04/2008 00:00:00#) OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated "
                  "IS NULL) "
                  " AND (VendorID BETWEEN 'A' AND 'M') "
                  " AND (BillDate BETWEEN #12/30/1899 00:00:00# AND #12/30/1899 00:00:00#);"},
    {.what = "a passed bill is quoted for a server",
     .sentAt = "3/4/2008",
     .passed = "{B-1}",
     .filters = {.Filter1a = "{B-1}", .Filter1b = "{B-1}", .From = "3/1/2008", .To = "3/2/2008"},
     .statement = "WHERE (VendorBillID IN('{B-1}')) ORDER BY BillNumber;"},
    {.what = "for Jet it comes with its own marks",
     .provider = kJet,
     .passed = "any",
     .filters = {.Filter1a = "{guid {B-1}}"},
     .statement = "WHERE (VendorBillID IN({guid {B-1}})) ORDER BY BillNumber;"},
};

TEST(VendorBillSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  ExpectSelections(enVendorBill, "Vendor Bill", kVendorBillBase, kVendorBills);
}

TEST(VendorBillSelection, With_PassedID_and_without_the_first_filter_there_is_no_statement) {
  SelectionHouse house;
  Vars().g_PassedID = "{B-1}";
  EXPECT_EQ(BuildSelectSQL(enVendorBill, {.Filter1b = "{B-1}", .From = "3/1/2008", .To = "3/2/2008"}), "");
}

TEST(VendorBillSelection, A_kind_of_database_in_small_letters_counts_for_the_passed_bill_and_not_for_dates) {
  SelectionHouse house;
  Vars().g_DbKind = "sql";
  EXPECT_EQ(BuildSelectSQL(enVendorBill, {.Date1a = "1/2/2008", .Date1b = "1/2/2008"}),
            kVendorBillBase + " WHERE (LastUpdated BETWEEN #01/02/2008 00:00:00# AND #01/03/2008 00:00:00#);");
  Vars().g_PassedID = "{B-1}";
  EXPECT_EQ(BuildSelectSQL(enVendorBill, {.Filter1a = "{B-1}"}),
            kVendorBillBase + "WHERE (VendorBillID IN('{B-1}')) ORDER BY BillNumber;");
}

}  // namespace
}  // namespace twqb
