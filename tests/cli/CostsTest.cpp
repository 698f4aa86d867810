// The costs of the sample firm on both sides: every row that a rule lets travel has its twin, by vendor and project
// they come to the same to the cent, and a second round moves nothing.
//
// The two sides are joined by links alone. An employee's expenses are billed by the vendor who is picked for them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "Firm.h"

namespace twqb::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Cents = std::int64_t;
// By the keys of vendor and project.
using Sums = std::map<std::pair<std::string, std::string>, Cents>;

// The vendors that are picked, in the order of the employees: one question for each.
const std::map<std::string, std::string> kPicked = {{"ALEE", "ALEEDRAFT"}, {"HNGUYEN", "RENTALS"},
                                                    {"JPARK", "OMALLEYS"}, {"MHALE", "ZHANG"},
                                                    {"RSANTOS", "OLDLAB"}, {"TOBRIEN", "RENTALS"}};

// What the bills of the firm come to, out of units and costs of the sample's own text.
const Sums kOfBills = {
    {{"BOATWORKS", "MARINA:"}, 350'00 + 900'00},        {{"CLOUTIER", "HARBOR:SURVEY"}, 250'00 + 309'06 + 1'23},
    {{"CLOUTIER", "ÉCOLE:"}, 525'00 + 297'50 + 192'00}, {{"DRILLCO", "MARINA:"}, 288'00},
    {{"SOUNDINGS", "MARINA:"}, 850'00 + 210'00},        {{"TOWER9", "LIGHT:"}, 192'50}};
// The same of its expenses; what QuickBooks has is rounded line by line.
const Sums kOfExpenses = {{{"ALEEDRAFT", "DEPOT:"}, 44'44 + 40'00},
                          {{"DOCUPRINT", "MILL:DESIGN"}, 20'40},
                          {{"DOCUPRINT", "PARK:DESIGN"}, 43'50 + 4'11},
                          {{"GEO-TECH", "CULVERT:"}, 124'80},
                          {{"GEO-TECH", "DEPOT:"}, 192'00},
                          {{"OLDLAB", "PARK:SURVEY"}, 31'31 + 15'30 + 8'00},
                          {{"OMALLEYS", "CULVERT:"}, 100'00},
                          {{"OMALLEYS", "HARBOR:SURVEY"}, 52'52},
                          {{"OMALLEYS", "LOBBY:"}, 15'43 + 238'00},
                          {{"OMALLEYS", "PIER:"}, 18'18 + 27'60},
                          {{"RENTALS", "BRIDGE:"}, 141'00},
                          {{"RENTALS", "HARBOR:SURVEY"}, 34'00},
                          {{"RENTALS", "ORCHARD:"}, 68'60 + 25'00},
                          {{"RENTALS", "PARK:DESIGN"}, 29'00},
                          {{"RENTALS", "VAULT:"}, 75'00 + 37'00},
                          {{"YTRAN", "STAIR:"}, 10'20},
                          {{"ZHANG", "MARINA:"}, 210'00}};

Sums Together(Sums sums, const Sums& more) {
  for (const auto& [who, cents] : more) sums[who] += cents;
  return sums;
}

class Costs : public Firm, public testing::WithParamInterface<std::string> {
 protected:
  Costs() : Firm(GetParam()) {
    std::string answers;
    for (const auto& [employee, vendor] : kPicked) answers += "vendor " + vendor + "\n";
    folder_.Write("picks.txt", answers + "default yes\n");
  }

  // Expenses that a rule lets travel: posted, of no bill, and of a project and a code that QuickBooks has.
  std::vector<std::string> ExpensesToSend() const {
    std::vector<std::string> keys;
    for (const auto& row : Rows(
             "SELECT ELID FROM ExpenseLog l WHERE ELPosted = -1 AND VendorBillID IS NULL AND l.QBLinkID IS NULL AND "
             "EXISTS "
             "(SELECT * FROM Project p WHERE p.ProjectID = l.ProjectID AND p.QBLinkID <> '') AND EXISTS (SELECT * FROM "
             "Expense x WHERE x.ExpID = l.ExpID AND x.QBLinkID <> '')")) {
      keys.push_back(row.front());
    }
    return keys;
  }
  void SendExpenses(int hour) const {
    std::string named;
    for (const auto& key : ExpensesToSend()) named += (named.empty() ? "'" : ",'") + key + "'";
    const auto ended =
        folder_.Twqb({"send", "expenselog", "--id", named, "--no-progress", "--answers", "picks.txt", "--transcript",
                      "expenses.jsonl", "--clock", "2008-03-05T" + std::to_string(hour) + ":00:00"});
    EXPECT_EQ(ended.status, 0) << ended.err;
  }

  // Identifiers of vendors and jobs as keys of BillingDb.
  std::map<std::string, std::string> KeysByLink(const std::string& key, const std::string& table) const {
    std::map<std::string, std::string> keys;
    for (const auto& row : Rows("SELECT QBLinkID, " + key + " FROM " + table + " WHERE QBLinkID <> ''")) {
      keys.emplace(row.at(0), row.at(1));
    }
    return keys;
  }
  // Of the lines of bills that a row here is linked with; those of nobody are `alone`.
  Sums There(std::set<std::string>& alone) const {
    std::set<std::string> links;
    for (const auto& row : Rows("SELECT QBLinkID FROM ExpenseLog WHERE QBLinkID <> '' UNION SELECT QBLinkID FROM "
                                "TimeEntry WHERE QBLinkID <> ''")) {
      links.insert(row.front());
    }
    const auto vendors = KeysByLink("EmployeeID", "Employee");
    const auto projects = KeysByLink("ProjectID", "Project");
    Sums sums;
    ForEachRecord("Bill", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& bill) {
      for (const auto& line : bill.children()) {
        const auto* id = line.child_value("TxnLineID");
        if (*id == '\0') continue;
        if (!links.contains(id)) {
          alone.insert(std::string(bill.child_value("RefNumber")) + " " + line.child_value("Memo"));
          continue;
        }
        sums[{vendors.at(bill.child("VendorRef").child_value("ListID")),
              projects.at(line.child("CustomerRef").child_value("ListID"))}] +=
            std::llround(std::stod(line.child_value("Amount")) * 100);
      }
    });
    return sums;
  }
  // Of the rows that are lines of bills there. What came from an account has no units: its cost is its charge.
  Sums Here() const {
    std::set<std::string> lines;
    ForEachRecord("Bill", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& bill) {
      for (const auto& line : bill.children()) lines.insert(line.child_value("TxnLineID"));
    });
    Sums sums;
    for (const auto& row :
         Rows("SELECT QBLinkID, EmployeeID, ProjectID, CASE WHEN ELUnits <> 0 THEN ELUnits * ELCost ELSE ELChgAmt END "
              "FROM ExpenseLog WHERE QBLinkID <> '' UNION ALL SELECT QBLinkID, EmployeeID, ProjectID, TEHours * "
              "TECostRate FROM TimeEntry WHERE QBLinkID <> ''")) {
      if (!lines.contains(row.at(0))) continue;
      const auto picked = kPicked.find(row.at(1));
      const auto& vendor = picked == kPicked.end() ? row.at(1) : picked->second;
      sums[{vendor, row.at(2)}] += std::llround(std::stod(row.at(3)) * 100);
    }
    return sums;
  }
  std::string Counts() const {
    std::string counts;
    for (const auto* table : {"ExpenseLog", "TimeEntry", "VendorBill", "Budget", "BudgetActivity", "BudgetExpense"}) {
      counts += Scalar(std::string("SELECT COUNT(*) || '/' || COUNT(QBLinkID) FROM ") + table) + " ";
    }
    return counts;
  }
  int Bills() const {
    int bills = 0;
    ForEachRecord("Bill", "", [&](const pugi::xml_node&) { ++bills; });
    return bills;
  }
};

TEST_P(Costs, Come_to_the_same_by_vendor_and_project_once_all_that_can_travel_has_its_twin) {
  Transfer("send", 11);
  std::set<std::string> alone;
  EXPECT_EQ(There(alone), kOfBills);
  EXPECT_EQ(Here(), kOfBills);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM VendorBill WHERE QBLinkID IS NULL"), "0");

  SendExpenses(12);
  alone.clear();
  EXPECT_EQ(There(alone), Together(kOfBills, kOfExpenses));
  EXPECT_EQ(Here(), Together(kOfBills, kOfExpenses));
  EXPECT_THAT(ExpensesToSend(), IsEmpty());
  EXPECT_EQ(
      Scalar("SELECT group_concat(ExpID || ELPosted) FROM (SELECT ExpID, ELPosted FROM ExpenseLog WHERE QBLinkID IS "
             "NULL ORDER BY ELID)"),
      "FILING:0,FROMQB:-1,TRAVEL:PARK0,FROMQB:-1")
      << "not posted, or of the code without an item";

  // What the bookkeeper entered comes in: bills of two vendors for two jobs.
  Transfer("get", 13);
  alone.clear();
  const auto there = There(alone);
  EXPECT_EQ(there, Here());
  EXPECT_EQ(there.size(), kOfBills.size() + kOfExpenses.size() + 3);
  for (const auto& [who, cents] : Together(kOfBills, kOfExpenses)) {
    EXPECT_EQ(there.contains(who) ? there.at(who) : 0, cents) << who.first << " " << who.second;
  }
  EXPECT_THAT(alone, ElementsAre("FEB-08 February")) << "of no job";
}

TEST_P(Costs, Do_not_move_in_a_second_round) {
  Transfer("send", 11);
  SendExpenses(12);
  Transfer("get", 13);
  const auto counts = Counts();
  const auto bills = Bills();
  const auto sums = Here();
  Transfer("send", 14);
  EXPECT_EQ(Bills(), bills);
  Transfer("get", 15);
  EXPECT_EQ(Bills(), bills);
  EXPECT_EQ(Counts(), counts);
  EXPECT_EQ(Here(), sums);
}

TEST_P(Costs, That_were_billed_in_QuickBooks_come_as_billed_and_are_never_written_over) {
  Transfer("send", 11);
  SendExpenses(12);
  const std::string expense = " FROM ExpenseLog WHERE ELID = '{5E6F0026-8A7B-4C9D-AE10-2F3A4B5C6D26}'";
  const auto invoice =
      Scalar("SELECT QBLinkID FROM TransactionTable WHERE TransactionInvNum = '1048' AND PayID IS NULL");
  EXPECT_THAT(
      folder_.Done({"company", "bill", invoice, Scalar("SELECT QBLinkID" + expense), "--clock", "2008-03-05T12:30:00"}),
      IsEmpty());
  Transfer("get", 13);
  EXPECT_EQ(Scalar("SELECT ELBilled || ' ' || ELCost" + expense), "P 0.85");
  Sql("UPDATE ExpenseLog SET ELCost = 7, LastUpdated = '2008-01-01 10:00:00' WHERE ELBilled = 'P'");
  Transfer("get", 14);
  EXPECT_EQ(Scalar("SELECT ELBilled || ' ' || ELCost" + expense), "P 7");
}

INSTANTIATE_TEST_SUITE_P(Costs, Costs, testing::Values("US", "CA", "UK", "AU"),
                         [](const auto& suite) { return suite.param; });

}  // namespace
}  // namespace twqb::cli
