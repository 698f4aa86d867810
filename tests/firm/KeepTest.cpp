// Which side is kept, over made firms: behind links that settle it, the next send and the next get go that way for
// every table that moves, whatever the dates of its rows were.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>

#include "tests/firm/MadeLinks.h"

namespace twqb {
namespace {

constexpr const char* kMark = "Marked here";

// A text that a table sends and gets.
struct Marked {
  const char* table;
  const char* column;
};
constexpr std::array kMarkedLists = {Marked{"Employee", "EmpCity"},       Marked{"Client", "ClientCity"},
                                     Marked{"Project", "ProjectCity"},    Marked{"Activity", "ActivityDescription"},
                                     Marked{"Expense", "ExpDescription"}, Marked{"AccountList", "AccountDesc"}};
// What was spent and billed goes once, but a get writes over it. The texts of lines are what they are known by, so that
// they are marked behind the links.
constexpr std::array kMarkedCosts = {Marked{"ExpenseLog", "ELDescription"}, Marked{"VendorBill", "BillRef"},
                                     Marked{"TimeEntry", "TEDescription"}};
constexpr std::array kDated = {"Employee",    "Client",     "Project",    "Activity", "Expense",
                               "AccountList", "ExpenseLog", "VendorBill", "TimeEntry"};

class KeepingHouse : public LinkingHouse {
 public:
  using LinkingHouse::LinkingHouse;

  // Where there is a text at all: what QuickBooks has nothing of is not written over.
  template <typename List>
  void Mark(const List& list) {
    for (const auto& [table, column] : list) {
      for (const auto& row :
           RowsOf(fmt::format("SELECT {} AS RowKey FROM {} WHERE {} <> ''", KeyOf(table), table, column))) {
        marked_.insert(fmt::format("{} {}", table, row.at("RowKey").value_or("")));
      }
      Sql(fmt::format("UPDATE {0} SET {1} = '{2}' WHERE {1} <> ''", table, column, kMark));
    }
  }
  // Older than the records, newer than any, and none.
  void ScatterDates() {
    for (const auto* table : kDated) {
      Sql(
          fmt::format("UPDATE {} SET LastUpdated = CASE rowid % 3 WHEN 0 THEN '2001-02-03 04:05:06' WHEN 1 THEN "
                      "'2031-02-03 04:05:06' END",
                      table));
    }
  }
  // Of the rows that were linked each has the mark, or none.
  template <typename List>
  void ExpectRows(const List& list, const Links& rows, Newer kept) {
    for (const auto& [table, column] : list) {
      // Hours that were paid, and not billed, go once alone.
      const auto condition = std::string(table) == "TimeEntry" ? "VendorBillID <> ''" : "1 = 1";
      for (const auto& row : RowsOf(fmt::format("SELECT {} AS RowKey, {} AS Text FROM {} WHERE {}", KeyOf(table),
                                                column, table, condition))) {
        const auto name = fmt::format("{} {}", table, row.at("RowKey").value_or(""));
        if (!rows.contains(name) || !marked_.contains(name)) continue;
        ++looked;
        EXPECT_EQ(row.at("Text") == kMark, kept == Newer::BillingDb) << name << ": " << row.at("Text").value_or("NULL");
      }
    }
  }
  // Whether QuickBooks has the mark, by record.
  std::map<std::string, bool> RecordsMarked() {
    std::map<std::string, bool> marked;
    for (const std::string kind : {"Employee", "Vendor", "Customer", "ItemService", "ItemOtherCharge"}) {
      ForEachRecord(kind, "<ActiveStatus>All</ActiveStatus>", [&](const pugi::xml_node& record) {
        const auto isMark = [](const pugi::xml_node& node) { return node.child_value() == std::string(kMark); };
        marked[record.child_value("ListID")] = !record.find_node(isMark).empty();
      });
    }
    return marked;
  }

  [[nodiscard]] bool IsMarked(const std::string& row) const { return marked_.contains(row); }

  int looked = 0;  // rows

 private:
  static std::string KeyOf(const std::string& table) {
    return std::ranges::find(kLinkedRows, table, [](const LinkedRows& rows) { return std::string(rows.table); })->key;
  }
  std::set<std::string> marked_;  // by table and key
};

class KeptSides : public AnyFirm {
 protected:
  static void ExpectWhatIsKept(const firm::FirmPlan& plan, Newer kept) {
    KeepingHouse house(plan, {}, FirmHouse::Books::BillingAlone);
    house.AddAccounts();
    house.Send();
    std::set<std::string> before;
    for (const auto& [row, link] : house.LinksOf()) before.insert(link);
    house.Wipe();
    house.Mark(kMarkedLists);
    house.ScatterDates();
    const auto linked = house.Link([&](const LikelyPair& pair) { return before.contains(pair.identifier); }, kept);
    house.Mark(kMarkedCosts);
    EXPECT_FALSE(linked.empty());
    const auto rows = house.LinksOf();
    house.Send();
    const auto marked = house.RecordsMarked();
    int compared = 0;
    for (const auto& [row, link] : rows) {
      if (!house.IsMarked(row) || !marked.contains(link)) continue;
      ++compared;
      EXPECT_EQ(marked.at(link), kept == Newer::BillingDb) << row;
    }
    EXPECT_GT(compared, 0);
    house.Get();
    house.ExpectRows(kMarkedLists, rows, kept);
    house.ExpectRows(kMarkedCosts, rows, kept);
    EXPECT_GT(house.looked, 0);
  }
};

TEST_P(KeptSides, Of_billing_win_at_the_next_send_and_stay_at_the_next_get) {
  ForEachFirm([](const firm::FirmPlan& plan) { ExpectWhatIsKept(plan, Newer::BillingDb); });
}

TEST_P(KeptSides, Of_QuickBooks_stay_at_the_next_send_and_win_at_the_next_get) {
  ForEachFirm([](const firm::FirmPlan& plan) { ExpectWhatIsKept(plan, Newer::QuickBooks); });
}

INSTANTIATE_TEST_SUITE_P(Firms, KeptSides, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
