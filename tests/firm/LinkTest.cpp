// Links by name over made firms: what was sent gets its own links again, no record is the twin of two rows, and a
// second time there is nothing to do.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "bridge/Linking.h"
#include "bridge/Tables.h"
#include "bridge/modTWQBBridge.h"
#include "tests/firm/FirmHouse.h"
#include "tests/support/Bridge.h"

namespace twqb {
namespace {

struct Linked {
  const char* table;
  const char* key;
};
constexpr std::array kLinked = {
    Linked{"Employee", "EmployeeID"},    Linked{"Client", "ClientID"}, Linked{"Project", "ProjectID"},
    Linked{"Activity", "ActivityID"},    Linked{"Expense", "ExpID"},   Linked{"AccountList", "AccountID"},
    Linked{"TimeEntry", "TEID"},         Linked{"ExpenseLog", "ELID"}, Linked{"TransactionTable", "TransactionID"},
    Linked{"VendorBill", "VendorBillID"}};

using Links = std::map<std::string, std::string>;  // by table and key

bool IsOf(const Links& links, const std::string& key, const std::string& identifier) {
  return std::ranges::any_of(
      links, [&](const auto& link) { return link.first.ends_with(" " + key) && link.second == identifier; });
}

class LinkingHouse : public FirmHouse {
 public:
  using FirmHouse::FirmHouse;

  // What items are booked on, and what hours are paid by, under names that no row has.
  void AddAccounts() {
    const auto account = [](const std::string& name, const std::string& type) {
      return "<AccountAddRq><AccountAdd><Name>" + name + "</Name><AccountType>" + type +
             "</AccountType></AccountAdd></AccountAddRq>";
    };
    static_cast<void>(
        Company(account("Other Income", "OtherIncome") + account("Payroll Expenses", "Expense") +
                "<PayrollItemWageAddRq><PayrollItemWageAdd><Name>Hourly Wage</Name>"
                "<WageType>HourlyRegular</WageType><ExpenseAccountRef><FullName>Payroll Expenses</FullName>"
                "</ExpenseAccountRef></PayrollItemWageAdd></PayrollItemWageAddRq>"));
  }
  Links LinksOf() {
    Links links;
    for (const auto& [table, key] : kLinked) {
      for (const auto& row :
           RowsOf(fmt::format("SELECT {} AS RowKey, QBLinkID FROM {} WHERE QBLinkID <> ''", key, table))) {
        links[fmt::format("{} {}", table, row.at("RowKey").value_or(""))] = row.at("QBLinkID").value();
      }
    }
    return links;
  }
  std::set<std::string> LinksOfRetainers() {
    std::set<std::string> links;
    for (const auto& row : RowsOf("SELECT QBLinkID FROM Payment WHERE PayRetainer <> 0 AND QBLinkID <> ''")) {
      links.insert(row.at("QBLinkID").value());
    }
    return links;
  }
  bool IsUnderCountedName(const std::string& listId) {
    std::set<std::string> names;
    std::string own;
    for (const std::string kind : {"Employee", "Vendor", "Customer", "ItemService", "ItemOtherCharge"}) {
      ForEachRecord(kind, "<ActiveStatus>All</ActiveStatus>", [&](const pugi::xml_node& record) {
        names.insert(record.child_value("Name"));
        if (record.child_value("ListID") == listId) own = record.child_value("Name");
      });
    }
    // The counter of a person stands behind the first name.
    for (std::size_t begin = 0; begin < own.size(); ++begin) {
      for (std::size_t end = begin; end < own.size() && own[end] >= '0' && own[end] <= '9'; ++end) {
        if (names.contains(own.substr(0, begin) + own.substr(end + 1))) return true;
      }
    }
    return false;
  }
  void Wipe() {
    for (const auto& place : kLinked) Sql(fmt::format("UPDATE {} SET QBLinkID = NULL", place.table));
    Sql("UPDATE Payment SET QBLinkID = NULL");
  }
  // How many pairs were linked.
  std::size_t Link(const std::function<bool(const LikelyPair& pair)>& confirms) {
    Enter();
    machine.Advance(Date::kMinute);
    std::size_t linked = 0;
    Bridge bridge(*this);
    EXPECT_TRUE(LinkRows(false, [&](QBSessionManager& session) {
      for (const auto* table : Tables()) {
        if (table->lostLink.takeUp == nullptr) continue;
        TablePairs told = {.table = table};
        LinkPairs(told, Newer::AsDated, session, confirms);
        for (const auto& pair : told.pairs) {
          EXPECT_NE(pair.end, PairEnd::Failed) << table->name << ' ' << pair.pair.key << ": " << pair.why;
          if (pair.end == PairEnd::Linked) ++linked;
        }
      }
    }));
    return linked;
  }
};

class LinksOfAnyFirm : public AnyFirm {};

TEST_P(LinksOfAnyFirm, Are_the_same_again_when_they_were_wiped) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    // Without records of its own, QuickBooks has each name free.
    LinkingHouse house(plan, {}, FirmHouse::Books::BillingAlone);
    house.AddAccounts();
    house.Send();
    const auto before = house.LinksOf();
    const auto retainers = house.LinksOfRetainers();
    house.Wipe();
    // Credits and retainers without a number have no amount in common with their rows: they are asked for.
    static_cast<void>(house.Link([&](const LikelyPair& pair) {
      return retainers.contains(pair.identifier) || IsOf(before, pair.key, pair.identifier);
    }));
    const auto after = house.LinksOf();
    for (const auto& [row, link] : after) {
      const auto found = before.find(row);
      EXPECT_TRUE(found != before.end() && found->second == link) << row << " is linked to " << link;
    }
    // A name that was in use went under a counted one: the row is not known by it, nor is what was done for it.
    bool hasCounted = false;
    for (const auto& [row, link] : before) {
      if (after.contains(row) || !house.IsUnderCountedName(link)) continue;
      hasCounted = true;
    }
    for (const auto& [row, link] : before) {
      const bool isList = row.find('{') == std::string::npos;
      if (hasCounted && (!isList || house.IsUnderCountedName(link))) continue;
      EXPECT_TRUE(after.contains(row)) << row << " was linked to " << link;
    }
  });
}

TEST_P(LinksOfAnyFirm, Never_lead_from_two_rows_to_one_record_whatever_is_answered) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    LinkingHouse house(plan);
    const auto yes = [](const LikelyPair& /*pair*/) { return true; };
    static_cast<void>(house.Link(yes));
    for (const auto& [table, key] : kLinked) {
      EXPECT_EQ(
          house.Scalar(fmt::format("SELECT COUNT(*) - COUNT(DISTINCT QBLinkID) FROM {} WHERE QBLinkID <> ''", table)),
          "0")
          << table;
    }
    const auto links = house.LinksOf();
    EXPECT_EQ(house.Link(yes), 0U);
    EXPECT_EQ(house.LinksOf(), links);
  });
}

INSTANTIATE_TEST_SUITE_P(Firms, LinksOfAnyFirm, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
