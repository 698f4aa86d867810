#include "tests/firm/MadeLinks.h"

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "bridge/Tables.h"
#include "bridge/modTWQBBridge.h"
#include "tests/support/Bridge.h"

namespace twqb {

void LinkingHouse::AddAccounts() {
  const auto account = [](const std::string& name, const std::string& type) {
    return "<AccountAddRq><AccountAdd><Name>" + name + "</Name><AccountType>" + type +
           "</AccountType></AccountAdd></AccountAddRq>";
  };
  static_cast<void>(Company(account("Other Income", "OtherIncome") + account("Payroll Expenses", "Expense") +
                            "<PayrollItemWageAddRq><PayrollItemWageAdd><Name>Hourly Wage</Name>"
                            "<WageType>HourlyRegular</WageType><ExpenseAccountRef><FullName>Payroll Expenses</FullName>"
                            "</ExpenseAccountRef></PayrollItemWageAdd></PayrollItemWageAddRq>"));
}

Links LinkingHouse::LinksOf() {
  Links links;
  for (const auto& [table, key] : kLinkedRows) {
    for (const auto& row :
         RowsOf(fmt::format("SELECT {} AS RowKey, QBLinkID FROM {} WHERE QBLinkID <> ''", key, table))) {
      links[fmt::format("{} {}", table, row.at("RowKey").value_or(""))] = row.at("QBLinkID").value();
    }
  }
  return links;
}

std::set<std::string> LinkingHouse::LinksOfRetainers() {
  std::set<std::string> links;
  for (const auto& row : RowsOf("SELECT QBLinkID FROM Payment WHERE PayRetainer <> 0 AND QBLinkID <> ''")) {
    links.insert(row.at("QBLinkID").value());
  }
  return links;
}

bool LinkingHouse::IsUnderCountedName(const std::string& listId) {
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

void LinkingHouse::Wipe() {
  for (const auto& place : kLinkedRows) Sql(fmt::format("UPDATE {} SET QBLinkID = NULL", place.table));
}

std::vector<LikelyPair> LinkingHouse::Link(const Confirms& confirms, Newer newer) {
  return LinkThrough(Seams(), confirms, newer);
}

std::vector<LikelyPair> LinkingHouse::LinkThrough(const Platform& seams, const Confirms& confirms, Newer newer) {
  Enter(seams);
  machine.Advance(Date::kMinute);
  std::vector<LikelyPair> linked;
  Bridge bridge(*this);
  EXPECT_TRUE(LinkRows(false, [&](QBSessionManager& session) {
    for (const auto* table : Tables()) {
      if (table->lostLink.takeUp == nullptr) continue;
      TablePairs told = {.table = table};
      EXPECT_TRUE(LinkPairs(told, newer, session, confirms));
      for (auto& pair : told.pairs) {
        EXPECT_NE(pair.end, PairEnd::Failed) << table->name << ' ' << pair.pair.key << ": " << pair.why;
        if (pair.end == PairEnd::Linked) linked.push_back(std::move(pair.pair));
      }
    }
  }));
  return linked;
}

}  // namespace twqb
