// The sample firm: every statement finds rows in it, what its rows name is there, and its amounts add up.

#include <fmt/core.h>

#include "tests/engine/SelectionHouse.h"
#include "tests/support/BillingSchema.h"

namespace twqb {
namespace {

class SampleFirm : public testing::Test {
 protected:
  SampleFirm() { FillSampleFirm(house_.Connection()); }
  [[nodiscard]] std::string Select(enTables table, std::string_view column, const SavedFilters& filters = {}) {
    return house_.Keys(BuildSelectSQL(table, filters), column);
  }

  SelectionHouse house_;
};

TEST_F(SampleFirm, Each_statement_without_filters_selects_rows) {
  EXPECT_EQ(
      Select(enEmployees, "EmployeeID"),
      "MHALE JPARK TOBRIEN RSANTOS KLUND ALEE ALEE2 ALEE3 BWESTERVELT CDUBOIS DKANE EFOSS FRANK GSTILES HNGUYEN IROSS "
      "JOSTROM K.MORI LADAMS MBELL NCOTE OPIKE PQUINN RTHORNE SVOSS UWEBB ");
  EXPECT_EQ(
      Select(enVendors, "EmployeeID"),
      "SOUNDINGS DRILLCO YTRAN OLDLAB ALEEDRAFT BOATWORKS CLOUTIER DOCUPRINT FLYNN GEO-TECH OMALLEYS RENTALS TOWER9 "
      "ZHANG ");
  EXPECT_NE(Select(enClients, "ClientID"), "");
  EXPECT_TRUE(Select(enProjects, "ProjectID").starts_with("HARBOR: MARINA: CULVERT: STAIR: PLANT2: BRIDGE: "));
  EXPECT_TRUE(Select(enActivities, "ActivityID").starts_with("SURVEY:FIELD SURVEY:DRAFT HYDRO: "));
  EXPECT_TRUE(Select(enExpenseCodes, "ExpID").starts_with("TRAVEL:MILE TRAVEL:FARE REPRO: "));
  EXPECT_NE(Select(enExpenseCodes, "ExpID").find("FROMQB: "), std::string::npos) << "the table itself leaves it out";
  const auto accounts = Select(enAccounts, "AccountID");
  EXPECT_LT(accounts.find("4000 "), accounts.find("4010 "));
  EXPECT_GT(accounts.find("6100 "), accounts.find("6110 ")) << "a child ahead of its parent";
  EXPECT_NE(Select(enTimeEntries, "TEID"), "");
  EXPECT_EQ(Sorted(Select(enInvoices, "TransactionInvNum")),
            "1041 1042 1044 1045 1046 1047 1048 1049 1050 1051 1052 1053 1055 1056 1057 1058 2008-02-0117-A ");
  EXPECT_EQ(Select(enPayments, "PayMethod"), "1 8 1 1 2 7 3 5 4 9 8 a 1 8 1 A ");
  EXPECT_EQ(Select(enVendorBill, "BillNumber"), "CS-2208 7714 T9-0219 2008-017  ") << "the last one has no number";
  Vars().g_PassedID = "all";
  EXPECT_EQ(
      Select(enExpenseLog, "EmployeeID", {.Filter1a = "SELECT ELID FROM ExpenseLog"}),
      "ALEE ALEE BOATWORKS CLOUTIER CLOUTIER CLOUTIER DOCUPRINT DOCUPRINT DOCUPRINT DRILLCO FLYNN GEO-TECH GEO-TECH "
      "HNGUYEN JPARK JPARK JPARK JPARK JPARK JPARK JPARK MHALE RSANTOS RSANTOS RSANTOS SOUNDINGS TOBRIEN TOBRIEN "
      "TOBRIEN TOBRIEN TOBRIEN TOBRIEN TOWER9 YTRAN ");
}

TEST_F(SampleFirm, Groups_and_activity_narrow_it) {
  const auto group = [this](enTables table, std::string_view column, const std::string& name, bool activeOnly) {
    return Sorted(Select(table, column, {.Filter2a = name, .Filter2b = name, .ActiveOnly = activeOnly}));
  };
  EXPECT_EQ(group(enEmployees, "EmployeeID", "FIELD", false), "JPARK RSANTOS ");
  EXPECT_EQ(group(enVendors, "EmployeeID", "FIELD", true), "DRILLCO SOUNDINGS ");
  EXPECT_EQ(group(enProjects, "ProjectID", "WATER", false), "CULVERT: CULVERT:DESIGN MARINA: ");
  EXPECT_EQ(group(enProjects, "ProjectID", "WATER", true), "CULVERT: MARINA: ");
  EXPECT_EQ(group(enActivities, "ActivityID", "TIMEOFF", true), "GEN:COMP GEN:HOL GEN:SICK GEN:VAC ");
  EXPECT_EQ(group(enExpenseCodes, "ExpID", "PAPER", true), "FILING: REPRO: ");
  EXPECT_EQ(group(enPayments, "ClientID", "RETAINER", false), "ABBOTT FARROW REGENT REGENT REGENT ");
  EXPECT_EQ(Select(enInvoices, "TransactionInvNum", {.Filter3a = "LAND", .Filter3b = "LAND"}),
            "1041 2008-02-0117-A 1055 1057 ");
}

TEST_F(SampleFirm, Its_projects_stand_in_three_levels) {
  EXPECT_EQ(house_.Scalar("SELECT COUNT(*) >= 120 FROM Project"), "1");
  EXPECT_EQ(house_.Scalar("SELECT COUNT(*) >= 30 FROM Project a, Project b WHERE a.ParentProjectID = b.ProjectID AND "
                          "b.ProjectIsPhase = -1"),
            "1");
}

TEST_F(SampleFirm, Its_codes_and_accounts_are_of_every_kind) {
  const auto count = [this](const std::string& rows) {
    return std::stoi(house_.Scalar("SELECT COUNT(*) FROM " + rows));
  };
  EXPECT_GE(count("Activity"), 40);
  EXPECT_GE(count("Expense"), 30);
  EXPECT_GE(count("AccountList"), 40);
  for (const std::string rows :
       {"Activity WHERE ActivitySub = ''",
        "Activity WHERE ActivityDescription IS NULL",
        "Activity WHERE IsInActive = -1",
        "Activity WHERE IsInActive IS NULL",
        "Activity WHERE AC_CostRate IS NULL AND AC_BillRate IS NOT NULL",
        "Activity WHERE AC_BillRate IS NULL",
        "Activity WHERE LastUpdated IS NULL",
        "Activity WHERE LENGTH(ActivityID) = 31",
        "Activity WHERE LENGTH(ActivityID) > 31",
        "Activity WHERE AC_CostRate * 10000 <> ROUND(AC_CostRate * 10000)",
        "Activity a, Activity b WHERE a.ActivityID < b.ActivityID AND TRIM(REPLACE(a.ActivityID, ':', ' ')) = "
        "TRIM(REPLACE(b.ActivityID, ':', ' '))",
        "Activity a, Expense x WHERE a.ActivityID = x.ExpID",
        "Expense WHERE ExpID = 'FROMQB:'",
        "Expense WHERE ExpMarkup IS NULL AND ExpCost > 0",
        "Expense WHERE ExpMarkup = 0 AND ExpCost > 0",
        "Expense WHERE ExpMarkup < 0",
        "Expense WHERE ExpCost IS NULL",
        "Expense WHERE ExpCost = 0 AND ExpMarkup > 0",
        "Expense WHERE ExpCost * 1000 <> ROUND(ExpCost * 1000)",
        "Expense WHERE LENGTH(ExpID) > 31",
        "Expense WHERE ExpSub = ''",
        "Expense WHERE IsInActive = -1",
        "AccountList WHERE AccountTypeID IS NULL",
        "AccountList WHERE OpenBalance <> 0 AND OpenBalanceDate IS NULL",
        "AccountList WHERE OpenBalance IS NULL AND OpenBalanceDate IS NOT NULL",
        "AccountList WHERE IsInActive = -1",
        "AccountList WHERE LENGTH(AccountName) > 31",
        "AccountList WHERE LENGTH(AccountID) > 7",
        "AccountList a, AccountList b WHERE a.ParentAccountID = b.AccountID AND b.ParentAccountID IS NOT NULL"}) {
    EXPECT_GE(count(rows), 1) << rows;
  }
}

TEST_F(SampleFirm, A_sub_account_has_the_type_of_its_parent) {
  EXPECT_EQ(house_.Scalar("SELECT COUNT(*) FROM AccountList a, AccountList b WHERE a.ParentAccountID = b.AccountID AND "
                          "a.AccountTypeID <> b.AccountTypeID"),
            "0");
}

// A column whose values are keys of another table.
struct Reference {
  std::string_view table;
  std::string_view column;
  std::string_view target;
  std::string_view key;
};

constexpr Reference kReferences[] = {
    {"Project", "ClientID", "Client", "ClientID"},
    {"Project", "EmployeeID", "Employee", "EmployeeID"},
    {"Project", "ParentProjectID", "Project", "ProjectID"},
    {"AccountList", "ParentAccountID", "AccountList", "AccountID"},
    {"TimeEntry", "EmployeeID", "Employee", "EmployeeID"},
    {"TimeEntry", "ProjectID", "Project", "ProjectID"},
    {"TimeEntry", "ActivityID", "Activity", "ActivityID"},
    {"TimeEntry", "TransactionID", "TransactionTable", "TransactionID"},
    {"TimeEntry", "VendorBillID", "VendorBill", "VendorBillID"},
    {"ExpenseLog", "EmployeeID", "Employee", "EmployeeID"},
    {"ExpenseLog", "ProjectID", "Project", "ProjectID"},
    {"ExpenseLog", "ExpID", "Expense", "ExpID"},
    {"ExpenseLog", "TransactionID", "TransactionTable", "TransactionID"},
    {"ExpenseLog", "VendorBillID", "VendorBill", "VendorBillID"},
    {"VendorBill", "VendorID", "Employee", "EmployeeID"},
    {"TransactionTable", "ClientID", "Client", "ClientID"},
    {"TransactionTable", "ProjectID", "(SELECT ProjectID FROM Project UNION SELECT '{CLIENT RETAINER}')", "ProjectID"},
    {"TransactionTable", "PayID", "Payment", "PayID"},
    {"ManInvDetail", "TransactionID", "TransactionTable", "TransactionID"},
    {"Payment", "ClientID", "Client", "ClientID"},
    {"Payment", "PayEnteredBy", "Employee", "EmployeeID"},
    {"EmployeeGroupDetail", "EmployeeID", "Employee", "EmployeeID"},
    {"ClientGroupDetail", "ClientID", "Client", "ClientID"},
    {"ProjectGroupDetail", "ProjectID", "Project", "ProjectID"},
    {"ActivityGroupDetail", "ActivityID", "Activity", "ActivityID"},
    {"ExpenseGroupDetail", "ExpID", "Expense", "ExpID"},
};

TEST_F(SampleFirm, Every_key_that_a_row_names_is_there) {
  for (const auto& r : kReferences) {
    const auto named = fmt::format("SELECT COUNT(*) FROM {} WHERE {} IS NOT NULL", r.table, r.column);
    EXPECT_NE(house_.Scalar(named), "0") << named;
    const auto lost = fmt::format("{} AND {} NOT IN (SELECT {} FROM {})", named, r.column, r.key, r.target);
    EXPECT_EQ(house_.Scalar(lost), "0") << lost;
  }
}

// Each selects the rows that contradict one another.
constexpr std::string_view kContradictions[] = {
    // keys are made of their parts
    "Project WHERE ProjectID <> ProjectCode || ':' || ProjectPhase",
    "Activity WHERE ActivityID <> ActivityCode || ':' || ActivitySub",
    "Expense WHERE ExpID <> ExpCode || ':' || ExpSub",
    // a phase has a parent, of the same client
    "Project WHERE (ProjectIsPhase = -1) <> (ParentProjectID IS NOT NULL)",
    "Project a, Project b WHERE a.ParentProjectID = b.ProjectID AND a.ClientID <> b.ClientID",
    // a row belongs to its project's client
    "TransactionTable t, Project p WHERE t.ProjectID = p.ProjectID AND t.ClientID <> p.ClientID",
    "TransactionTable t, Payment y WHERE t.PayID = y.PayID AND t.ClientID <> y.ClientID",
    // vendors' work is marked as such, and a bill is its vendor's
    "TimeEntry t, Employee e WHERE t.EmployeeID = e.EmployeeID AND t.isSub <> e.IsSub",
    "ExpenseLog x, Employee e WHERE x.EmployeeID = e.EmployeeID AND x.isSub <> e.IsSub",
    "VendorBill b, Employee e WHERE b.VendorID = e.EmployeeID AND e.IsSub <> -1",
    "TimeEntry t, VendorBill b WHERE t.VendorBillID = b.VendorBillID AND t.EmployeeID <> b.VendorID",
    "ExpenseLog x, VendorBill b WHERE x.VendorBillID = b.VendorBillID AND x.EmployeeID <> b.VendorID",
    "VendorBill b WHERE NOT EXISTS (SELECT * FROM TimeExpense l WHERE l.VendorBillID = b.VendorBillID)",
    // amounts
    "ExpenseLog WHERE ABS(ELUnits * ELCost * (1 + ELMarkup / 100) - ELChgAmt) > 0.00501",
    // what is billed by the hour is hours times rate, written down and up; a fee that was agreed on is not
    "TransactionTable t, Project p WHERE t.ProjectID = p.ProjectID AND ProjectConType = 'Hourly' AND PayID IS NULL AND "
    "TransactionManInv = 0 AND IsDraft = 0 AND ABS(ServiceAmt - (SELECT SUM(TEHours * COALESCE(WUD, 1) * TEBillRate) "
    "FROM TimeEntry e WHERE e.TransactionID = t.TransactionID)) > 0.005",
    "TransactionTable t WHERE PayID IS NULL AND IsDraft = 0 AND ABS(ExpAmt - "
    "(SELECT SUM(ELChgAmt) FROM ExpenseLog e WHERE e.TransactionID = t.TransactionID AND ELBillable = -1)) > 0.005",
    "TransactionTable t WHERE PayID IS NULL AND ExpAmt <> 0 AND "
    "NOT EXISTS (SELECT * FROM ExpenseLog e WHERE e.TransactionID = t.TransactionID)",
    // what is on an invoice is of its project, and billed
    "TimeEntry e, TransactionTable t WHERE e.TransactionID = t.TransactionID AND e.ProjectID <> t.ProjectID",
    "ExpenseLog e, TransactionTable t WHERE e.TransactionID = t.TransactionID AND e.ProjectID <> t.ProjectID",
    "TimeEntry WHERE (TransactionID IS NOT NULL) <> (TEBillStatus = 'B')",
    "ExpenseLog WHERE (TransactionID IS NOT NULL) <> (ELBilled = 'B')",
    "TransactionTable t WHERE TransactionManInv = -1 AND ABS(ServiceAmt - "
    "(SELECT SUM(ManInvDetailTot) FROM ManInvDetail d WHERE d.TransactionID = t.TransactionID)) > 0.005",
    "TransactionTable WHERE PayID IS NULL AND ABS(ServiceAmt + ExpAmt + TransactionManInvMiscAmt + ServiceTaxAmt + "
    "ExpTaxAmt "
    "+ MainServiceTaxAmt + MainExpenseTaxAmt - TransactionInvDiscount - InvRetainerAmtApplied - TransactionInvBillAmt) "
    "> "
    "0.0005",
    "Payment y WHERE ABS(PayAmt - "
    "(SELECT SUM(TransactionPayAmtApplied) FROM TransactionTable t WHERE t.PayID = y.PayID)) > 0.005",
    // money goes to an invoice of the same project that has room for it, and a retainer to none
    "TransactionTable a, Payment y WHERE a.PayID = y.PayID AND (PayRetainer = -1) <> (TransactionInvNum = '0')",
    "TransactionTable a WHERE PayID IS NOT NULL AND TransactionInvNum <> '0' AND NOT EXISTS (SELECT * FROM "
    "TransactionTable i WHERE i.PayID IS NULL AND i.IsDraft = 0 AND i.TransactionInvNum = a.TransactionInvNum AND "
    "i.ProjectID = a.ProjectID)",
    "TransactionTable i WHERE PayID IS NULL AND TransactionInvBillAmt >= 0 AND 0.0005 + TransactionInvBillAmt < "
    "(SELECT SUM(TransactionPayAmtApplied) FROM TransactionTable a WHERE a.PayID IS NOT NULL AND "
    "a.TransactionInvNum = i.TransactionInvNum AND a.ProjectID = i.ProjectID)",
    // no more comes out of retainers than went in
    "Client c WHERE "
    "(SELECT COALESCE(SUM(PayAmt), 0) FROM Payment y WHERE y.ClientID = c.ClientID AND PayRetainer = -1) < "
    "(SELECT COALESCE(SUM(PayAmt), 0) FROM Payment y WHERE y.ClientID = c.ClientID AND UNICODE(PayMethod) = 65) + "
    "(SELECT COALESCE(SUM(InvRetainerAmtApplied), 0) FROM TransactionTable t WHERE t.ClientID = c.ClientID AND "
    "PayID IS NULL)",
    // nothing has been sent but an invoice that is gone
    "TransactionTable WHERE QBLinkID <> '' AND TransactionInvNum <> '1055'",
    "TimeEntry WHERE QBLinkID <> ''",
    "ExpenseLog WHERE QBLinkID <> ''",
    "VendorBill WHERE QBLinkID <> ''",
    "Project WHERE QBLinkID <> ''",
    "Activity WHERE QBLinkID <> ''",
    "Expense WHERE QBLinkID <> ''",
    "AccountList WHERE QBLinkID <> ''",
};

TEST_F(SampleFirm, Its_rows_do_not_contradict_one_another) {
  for (const auto contradiction : kContradictions) {
    EXPECT_EQ(house_.Scalar("SELECT COUNT(*) FROM " + std::string(contradiction)), "0") << contradiction;
  }
}

}  // namespace
}  // namespace twqb
