// What holds of whatever costs go: by vendor and project they come to the same on both sides, to the cent, after a send
// and after a get behind it.

#include <gtest/gtest.h>

#include <map>
#include <pugixml.hpp>
#include <utility>

#include "tests/bridge/BridgeHouse.h"
#include "tests/support/Chance.h"

namespace twqb {
namespace {

using Cents = std::int64_t;
// By vendor, or the person who is one, and project.
using Sums = std::map<std::pair<std::string, std::string>, Cents>;

constexpr std::string_view kVendors[] = {"ADAMS", "BURNS", "COLE"};
constexpr std::string_view kJobs[] = {"PIER", "ROOF", "YARD"};

// Vendors, projects, an activity and an expense code that are on both sides; in QuickBooks the vendors have the names
// of their keys, and the jobs those of their projects.
class CostsOfAFirm : public BridgeHouse {
 public:
  CostsOfAFirm() : BridgeHouse({.answers = "default yes\n"}) {
    Add("Account", "<Name>Costs</Name><AccountType>Expense</AccountType>");
    const auto client = Add("Customer", "<Name>Acme</Name>");
    for (const auto vendor : kVendors) {
      Sql(fmt::format("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('{}', -1, '{}')", vendor,
                      Add("Vendor", fmt::format("<Name>{}</Name>", vendor))));
    }
    for (const auto job : kJobs) {
      Sql(
          fmt::format("INSERT INTO Project (ProjectID, ProjectName, EmployeeID, QBLinkID) VALUES ('{0}:', '{0}', "
                      "'BOSS', '{1}')",
                      job, AddJob(job, client)));
    }
    Sql(fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DESIGN:', '{}')", Item("Service", "Design")));
    Sql(fmt::format("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('TRAVEL:', '{}')", Item("OtherCharge", "Travel")));
  }

  // What the bills of QuickBooks come to, by line.
  [[nodiscard]] Sums InQuickBooks() {
    Sums sums;
    pugi::xml_document document;
    const auto answer = Company("<BillQueryRq><IncludeLineItems>true</IncludeLineItems></BillQueryRq>");
    EXPECT_TRUE(document.load_string(answer.c_str()));
    for (const auto bill : document.select_node("//BillQueryRs").node().children("BillRet")) {
      Cents inAll = 0;
      for (const auto line : bill.children("ItemLineRet")) {
        const std::string job = line.child("CustomerRef").child("FullName").text().get();
        const auto amount = InCents(line.child("Amount").text().get());
        sums[{bill.child("VendorRef").child("FullName").text().get(), job.substr(job.find(':') + 1)}] += amount;
        inAll += amount;
      }
      EXPECT_EQ(InCents(bill.child("AmountDue").text().get()), inAll);
    }
    return sums;
  }
  // What rows of time or of expenses come to, added to what there is.
  void AddRows(Sums& sums, const std::string& columns, const std::string& table) {
    const auto cn = database.CreateConnection();
    cn->SetConnectionString(ConnectString());
    cn->Open();
    const auto rows = cn->OpenRecordset(fmt::format("SELECT EmployeeID, ProjectID, {} FROM {}", columns, table),
                                        ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
      auto project = ToText(rows->FieldAt(1));
      project.pop_back();
      sums[{ToText(rows->FieldAt(0)), project}] +=
          std::llround(TextToNumber(ToText(rows->FieldAt(2))) * TextToNumber(ToText(rows->FieldAt(3))) * 100);
    }
  }
  [[nodiscard]] Sums InExpenses() {
    Sums sums;
    AddRows(sums, "ELUnits, ELCost", "ExpenseLog");
    return sums;
  }
  [[nodiscard]] Sums InVendorBills() {
    Sums sums;
    AddRows(sums, "TEHours, TECostRate", "TimeEntry WHERE VendorBillID IS NOT NULL");
    AddRows(sums, "ELUnits, ELCost", "ExpenseLog WHERE VendorBillID IS NOT NULL");
    return sums;
  }

 private:
  std::string Add(std::string_view kind, std::string_view fields) {
    return TextOf(Company(fmt::format("<{0}AddRq><{0}Add>{1}</{0}Add></{0}AddRq>", kind, fields)), "ListID");
  }
  std::string Item(std::string_view kind, std::string_view name) {
    return Add(fmt::format("Item{}", kind),
               fmt::format("<Name>{}</Name><SalesOrPurchase><AccountRef><FullName>Costs</FullName></AccountRef>"
                           "</SalesOrPurchase>",
                           name));
  }
};

class RandomCosts : public testing::TestWithParam<unsigned> {
 protected:
  Cents Any(Cents from, Cents to) { return chance_.Of(from, to); }
  template <std::size_t kCount>
  std::string OneOf(const std::string_view (&names)[kCount]) {
    return std::string(names[static_cast<std::size_t>(Any(0, kCount - 1))]);
  }

  // Quarters of a unit at so many times four cents: each quarter of a unit costs whole cents.
  struct Cost {
    Cents quarters = 0;
    Cents cents = 0;  // of a quarter
    [[nodiscard]] std::string Units() const { return fmt::format("{}.{:02}", quarters / 4, quarters % 4 * 25); }
    [[nodiscard]] std::string Each() const { return fmt::format("{}.{:02}", cents * 4 / 100, cents * 4 % 100); }
    [[nodiscard]] Cents Amount() const { return quarters * cents; }
  };
  Cost AnyCost() { return {.quarters = Any(1, 40), .cents = Any(1, 2'500)}; }

  void Expense(CostsOfAFirm& house, const std::string& key, const std::string& vendor, const std::string& bill) {
    const auto project = OneOf(kJobs);
    const auto cost = AnyCost();
    expected_[{vendor, project}] += cost.Amount();
    house.Sql(
        fmt::format("INSERT INTO ExpenseLog (ELID, VendorBillID, ELDate, EmployeeID, isSub, ProjectID, ExpID, ELUnits, "
                    "ELCost, ELMarkup, ELBillable, ELBilled, ELPosted, ELDescription, LastUpdated) VALUES ('{}', {}, "
                    "'2008-03-03', '{}', -1, '{}:', 'TRAVEL:', {}, {}, {}, {}, 'N', -1, 'Trip', '2008-03-01 10:00:00')",
                    key, bill, vendor, project, cost.Units(), cost.Each(), Any(0, 20), -Any(0, 1)));
  }
  void Hours(CostsOfAFirm& house, const std::string& key, const std::string& vendor, const std::string& bill) {
    const auto project = OneOf(kJobs);
    const auto cost = AnyCost();
    expected_[{vendor, project}] += cost.Amount();
    house.Sql(fmt::format(
        "INSERT INTO TimeEntry (TEID, VendorBillID, TEDate, EmployeeID, ProjectID, ActivityID, TEHours, TECostRate, "
        "TEBill, TEBillStatus, TEDescription, LastUpdated) VALUES ('{}', {}, '2008-03-03', '{}', '{}:', 'DESIGN:', {}, "
        "{}, {}, 'N', 'Plans', '2008-03-01 10:00:00')",
        key, bill, vendor, project, cost.Units(), cost.Each(), -Any(0, 1)));
  }
  static std::string Key(int number) { return fmt::format("{{00000000-0000-0000-0000-{:012}}}", number); }

  Sums expected_;  // of what goes, in whole cents

 private:
  Chance chance_{GetParam()};
};

constexpr int kRows = 60;

TEST_P(RandomCosts, Of_expenses_come_to_the_same_on_both_sides) {
  CostsOfAFirm house;
  std::string named;
  for (int i = 1; i <= kRows; ++i) {
    Expense(house, Key(i), OneOf(kVendors), "NULL");
    named += fmt::format("{}'{}'", named.empty() ? "" : ",", Key(i));
  }
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID(named);
  ASSERT_TRUE(bridge.SendDataToQB(enExpenseLog));
  EXPECT_EQ(house.Scalar("SELECT COUNT(DISTINCT QBLinkID) FROM ExpenseLog"), std::to_string(kRows));
  EXPECT_EQ(house.InQuickBooks(), expected_);
  EXPECT_EQ(house.InExpenses(), expected_);

  house.machine.Advance(Date::kHour);
  bridge.SetUsePreferencesTW(true);
  bridge.SetPassedID("");
  ASSERT_TRUE(bridge.GetDataFromQB(enExpenseLog));
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM ExpenseLog WHERE LastUpdated > '2008-03-05'"), std::to_string(kRows))
      << "QuickBooks is the later side of every row";
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM ExpenseLog"), std::to_string(kRows));
  EXPECT_EQ(house.InQuickBooks(), expected_);
  EXPECT_EQ(house.InExpenses(), expected_);
}

TEST_P(RandomCosts, Of_vendor_bills_come_to_the_same_on_both_sides) {
  CostsOfAFirm house;
  int lines = 0;
  for (int i = 1; i <= 12; ++i) {
    const auto vendor = OneOf(kVendors);
    const auto bill = fmt::format("'{}'", Key(1'000 + i));
    house.Sql(
        fmt::format("INSERT INTO VendorBill (VendorBillID, VendorID, BillNumber, BillDate, LastUpdated) VALUES "
                    "({}, '{}', 'N-{}', '2008-03-04', '2008-03-01 10:00:00')",
                    bill, vendor, i));
    for (auto left = Any(1, 9); left > 0; --left) {
      Any(0, 1) == 0 ? Hours(house, Key(++lines), vendor, bill) : Expense(house, Key(++lines), vendor, bill);
    }
  }
  Bridge bridge(house);
  ASSERT_TRUE(bridge.SendDataToQB(enVendorBill));
  EXPECT_EQ(house.InQuickBooks(), expected_);
  EXPECT_EQ(house.InVendorBills(), expected_);

  house.machine.Advance(Date::kHour);
  ASSERT_TRUE(bridge.GetDataFromQB(enVendorBill));
  EXPECT_EQ(house.Scalar("SELECT (SELECT COUNT(*) FROM ExpenseLog WHERE LastUpdated > '2008-03-05') + (SELECT COUNT(*) "
                         "FROM TimeEntry WHERE LastUpdated > '2008-03-05')"),
            std::to_string(lines))
      << "QuickBooks is the later side of every row";
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM VendorBill"), "12");
  EXPECT_EQ(house.InQuickBooks(), expected_);
  EXPECT_EQ(house.InVendorBills(), expected_);
}

INSTANTIATE_TEST_SUITE_P(Costs, RandomCosts, testing::Range(1U, 6U));

}  // namespace
}  // namespace twqb
