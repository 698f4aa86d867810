// Which rows the statements select from a real database, in both dialects: what a table leaves out, and in what order.

#include "tests/engine/SelectionHouse.h"

namespace twqb {
namespace {

class SelectedRows : public testing::TestWithParam<std::string_view> {
 protected:
  void Insert(std::string_view table, std::string_view columns, const std::vector<std::string_view>& rows) {
    for (const auto row : rows) {
      house_.Sql("INSERT INTO " + std::string(table) + " (" + std::string(columns) + ") VALUES (" + std::string(row) +
                 ")");
    }
  }
  [[nodiscard]] std::string Select(enTables table, std::string_view column, const SavedFilters& filters = {}) {
    return house_.Keys(BuildSelectSQL(table, filters), column);
  }

  SelectionHouse house_{kGreenwich, GetParam()};
};

TEST_P(SelectedRows, Employees_and_vendors_are_told_apart) {
  Insert("Employee", "EmployeeID, IsSub, Status",
         {"'ANN', 0, 'Active'", "'BIRCH', -1, 'Active'", "'CARL', 0, 'Inactive'", "'DEWEY', -1, NULL",
          "'OAK', -1, 'Inactive'"});
  EXPECT_EQ(Select(enEmployees, "EmployeeID"), "ANN CARL ");
  EXPECT_EQ(Select(enVendors, "EmployeeID"), "BIRCH DEWEY OAK ");
  EXPECT_EQ(Select(enEmployees, "EmployeeID", {.ActiveOnly = true}), "ANN ");
  EXPECT_EQ(Select(enVendors, "EmployeeID", {.Filter1a = "C", .Filter1b = "P", .ActiveOnly = true}), "DEWEY ");
}

TEST_P(SelectedRows, A_project_that_shares_its_clients_link_is_left_out_and_parents_come_first) {
  Insert("Client", "ClientID, QBLinkID", {"'LINKED', '1-1'", "'NEW', NULL"});
  Insert("Project", "ProjectID, ClientID, QBLinkID, ProjectIsPhase",
         {"'A:PHASE', 'LINKED', NULL, -1", "'A:', 'LINKED', '', 0", "'DEFAULT:', 'LINKED', '1-1', 0",
          "'JOB:', 'LINKED', '1-2', 0", "'N:', 'NEW', NULL, 0", "'NOBODY:', 'GONE', NULL, 0"});
  EXPECT_EQ(Select(enProjects, "ProjectID"), "A: JOB: N: A:PHASE ");
  // A link cannot differ from one that is NULL.
  Insert("Project", "ProjectID, ClientID, QBLinkID", {"'O:', 'NEW', '1-3'"});
  EXPECT_EQ(Select(enProjects, "ProjectID"), "A: JOB: N: A:PHASE ");
}

TEST_P(SelectedRows, An_active_project_is_one_without_status_too_or_a_main_one) {
  Insert("Client", "ClientID", {"'C'"});
  Insert(
      "Project", "ProjectID, ClientID, ProjectStatus",
      {"'A:', 'C', 'Active'", "'B:', 'C', 'Main'", "'C:', 'C', NULL", "'D:', 'C', 'Hold'", "'E:', 'C', 'Completed'"});
  EXPECT_EQ(Select(enProjects, "ProjectID", {.ActiveOnly = true}), "A: B: C: ");
}

TEST_P(SelectedRows, A_linked_time_entry_is_selected_by_name_alone) {
  Insert("Project", "ProjectID", {"'P:'"});
  Insert("Employee", "EmployeeID", {"'ANN'"});
  Insert("Activity", "ActivityID", {"'DRAW:'"});
  Insert("TimeEntry", "TEID, ProjectID, EmployeeID, ActivityID, QBLinkID, LastUpdated",
         {"'{T-1}', 'P:', 'ANN', 'DRAW:', NULL, '2008-03-01'", "'{T-2}', 'P:', 'ANN', 'DRAW:', '', '2008-03-01'",
          "'{T-3}', 'P:', 'ANN', 'DRAW:', '9-1', '2008-03-05'", "'{T-4}', 'P:', 'ANN', 'GONE:', NULL, NULL"});
  house_.SentAt("Time Entries", "3/4/2008");
  EXPECT_EQ(Select(enTimeEntries, "TEID"), "{T-1} {T-2} ");
  Vars().g_PassedID = "T-3,T-1";
  EXPECT_EQ(Sorted(Select(enTimeEntries, "TEID")), "{T-1} {T-3} ");
}

TEST_P(SelectedRows, Time_entries_of_a_period_are_those_of_its_days) {
  Insert("Project", "ProjectID", {"'P:'"});
  Insert("Employee", "EmployeeID", {"'ANN'"});
  Insert("Activity", "ActivityID", {"'DRAW:'"});
  Insert("TimeEntry", "TEID, ProjectID, EmployeeID, ActivityID, TEDate",
         {"'{T-1}', 'P:', 'ANN', 'DRAW:', '2008-02-29'", "'{T-2}', 'P:', 'ANN', 'DRAW:', '2008-03-01'",
          "'{T-3}', 'P:', 'ANN', 'DRAW:', '2008-03-02'", "'{T-4}', 'P:', 'ANN', 'DRAW:', '2008-03-02 00:00:01'"});
  EXPECT_EQ(Select(enTimeEntries, "TEID", {.From = "3/1/2008", .To = "3/2/2008"}), "{T-2} {T-3} ");
}

TEST_P(SelectedRows, Drafts_retainers_and_allocations_are_no_invoices) {
  Insert("Client", "ClientID", {"'C'"});
  Insert("Project", "ProjectID, ClientID", {"'P:', 'C'", "'O''P:', 'C'"});
  Insert("TransactionTable", "TransactionID, ProjectID, TransactionInvNum, IsDraft, PayID",
         {"'{I-1}', 'P:', '1041', 0, NULL", "'{I-2}', 'P:', '1042', -1, NULL", "'{I-3}', 'P:', '0', 0, NULL",
          "'{I-4}', 'P:', '1041', 0, '{Y-1}'", "'{I-5}', 'O''P:', '1041', 0, NULL"});
  EXPECT_EQ(Select(enInvoices, "TransactionID"), "{I-1} {I-5} ");
  Vars().g_PassedID = "O'P:,1041";
  EXPECT_EQ(Select(enInvoices, "TransactionID"), "{I-5} ");
  Vars().g_PassedID = "O'P:";
  EXPECT_EQ(Select(enInvoices, "TransactionID"), "{I-1} {I-5} ");
}

TEST_P(SelectedRows, Payments_of_the_sixth_method_are_left_out) {
  Insert("Client", "ClientID", {"'C'"});
  Insert("Payment", "PayID, ClientID, PayMethod",
         {"'{Y-1}', 'C', '1'", "'{Y-2}', 'C', '6'", "'{Y-3}', 'C', 'A'", "'{Y-4}', 'GONE', '1'"});
  Insert("ClientGroupDetail", "CGID, ClientID", {"'G', 'C'"});
  EXPECT_EQ(Select(enPayments, "PayID"), "{Y-1} {Y-3} ");
  EXPECT_EQ(Sorted(Select(enPayments, "PayID", {.Filter2a = "G", .Filter2b = "G"})), "{Y-1} {Y-3} ");
  EXPECT_EQ(Select(enPayments, "PayID", {.Filter2a = "H", .Filter2b = "H"}), "");
}

TEST_P(SelectedRows, Named_expenses_come_posted_alone_and_by_person) {
  Insert("ExpenseLog", "ELID, EmployeeID, ELPosted",
         {"'{E-1}', 'DEWEY', -1", "'{E-2}', 'BIRCH', -1", "'{E-3}', 'BIRCH', 0", "'{E-4}', 'ASH', -1"});
  Vars().g_PassedID = "any";
  EXPECT_EQ(Select(enExpenseLog, "ELID", {.Filter1a = "'{E-1}','{E-2}','{E-3}'"}), "{E-2} {E-1} ");
}

TEST_P(SelectedRows, A_named_vendor_bill_is_selected_alone) {
  Insert("VendorBill", "VendorBillID", {"'{B-1}'", "'{B-2}'"});
  Vars().g_PassedID = "any";
  const std::string name = GetParam() == kSql ? "{B-2}" : "{guid {B-2}}";
  EXPECT_EQ(Select(enVendorBill, "VendorBillID", {.Filter1a = name}), "{B-2} ");
}

TEST_P(SelectedRows, Bill_dates_without_the_first_dates_leave_no_bill) {
  Insert("VendorBill", "VendorBillID, BillDate, LastUpdated",
         {"'{B-1}', '2008-03-01', '2008-03-01'", "'{B-2}', '2008-04-01', '2008-03-01'"});
  EXPECT_EQ(Select(enVendorBill, "VendorBillID", {.From = "3/1/2008", .To = "3/31/2008"}), "");
  const SavedFilters both{.Date1a = "3/1/2008", .Date1b = "3/31/2008", .From = "1/1/2000", .To = "1/1/2001"};
  EXPECT_EQ(Select(enVendorBill, "VendorBillID", both), "{B-1} {B-2} ");
}

INSTANTIATE_TEST_SUITE_P(BothDialects, SelectedRows, testing::Values(kSql, kJet),
                         [](const auto& provider) { return std::string(provider.param); });

}  // namespace
}  // namespace twqb
