// Links by name over made firms: what was sent gets its own links again, no record is the twin of two rows, and a
// second time there is nothing to do.

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

bool IsOf(const Links& links, const std::string& key, const std::string& identifier) {
  return std::ranges::any_of(
      links, [&](const auto& link) { return link.first.ends_with(" " + key) && link.second == identifier; });
}

// What a row needs to be known by: the rows that it refers to.
struct Reference {
  const char* table;
  const char* key;
  const char* statement;  // of the keys, {} is the row's own
};
constexpr std::array kReferences = {
    Reference{"Project", "Client", "SELECT ClientID FROM Project WHERE ProjectID = '{}'"},
    Reference{"Project", "Project", "SELECT ParentProjectID FROM Project WHERE ProjectID = '{}'"},
    Reference{"TimeEntry", "Employee", "SELECT EmployeeID FROM TimeEntry WHERE TEID = '{}'"},
    Reference{"TimeEntry", "Project", "SELECT ProjectID FROM TimeEntry WHERE TEID = '{}'"},
    Reference{"TimeEntry", "Activity", "SELECT ActivityID FROM TimeEntry WHERE TEID = '{}'"},
    Reference{"ExpenseLog", "Employee", "SELECT EmployeeID FROM ExpenseLog WHERE ELID = '{}'"},
    Reference{"ExpenseLog", "Project", "SELECT ProjectID FROM ExpenseLog WHERE ELID = '{}'"},
    Reference{"ExpenseLog", "Expense", "SELECT ExpID FROM ExpenseLog WHERE ELID = '{}'"},
    Reference{"TransactionTable", "Project", "SELECT ProjectID FROM TransactionTable WHERE TransactionID = '{}'"},
    Reference{"TransactionTable", "Client", "SELECT ClientID FROM TransactionTable WHERE TransactionID = '{}'"},
    Reference{
        "TransactionTable", "TransactionTable",
        "SELECT i.TransactionID FROM TransactionTable AS i, TransactionTable AS p WHERE p.TransactionID = '{}' AND "
        "p.PayID IS NOT NULL AND i.PayID IS NULL AND i.TransactionInvNum = p.TransactionInvNum AND i.ProjectID = "
        "p.ProjectID"},
    Reference{"Payment", "TransactionTable", "SELECT TransactionID FROM TransactionTable WHERE PayID = '{}'"},
    Reference{"Payment", "Client", "SELECT ClientID FROM Payment WHERE PayID = '{}'"},
    Reference{"VendorBill", "Employee", "SELECT VendorID FROM VendorBill WHERE VendorBillID = '{}'"},
    Reference{"TimeEntry", "VendorBill", "SELECT VendorBillID FROM TimeEntry WHERE TEID = '{}'"},
    Reference{"ExpenseLog", "VendorBill", "SELECT VendorBillID FROM ExpenseLog WHERE ELID = '{}'"},
    Reference{"VendorBill", "Activity", "SELECT ActivityID FROM TimeEntry WHERE VendorBillID = '{}'"},
    Reference{"VendorBill", "Expense", "SELECT ExpID FROM ExpenseLog WHERE VendorBillID = '{}'"},
    Reference{"VendorBill", "Project", "SELECT ProjectID FROM TimeExpense WHERE VendorBillID = '{}'"},
};

// Whether a row that has no link again has a reason: it went under a counted name, and is not known by it, or what it
// refers to did.
bool HasReason(LinkingHouse& house, const Links& before, const Links& after, const std::string& row) {
  const auto table = row.substr(0, row.find(' '));
  const auto key = row.substr(table.size() + 1);
  if (house.IsUnderCountedName(before.at(row))) return true;
  return std::ranges::any_of(kReferences, [&](const Reference& reference) {
    if (table != reference.table) return false;
    const auto found = house.RowsOf(fmt::format(fmt::runtime(reference.statement), key));
    return std::ranges::any_of(found, [&](const Fields& fields) {
      const auto other = fmt::format("{} {}", reference.key, fields.begin()->second.value_or(""));
      return before.contains(other) && !after.contains(other);
    });
  });
}

// Over all tables, since several may be linked to one kind of record: customers are clients and projects, and invoices
// are retainers, too. A payment is a row of its own and one for each invoice.
void ExpectOneOwnerOfEachRecord(LinkingHouse& house) {
  std::map<std::string, std::set<std::string>> owners;
  std::map<std::string, int> allocations;
  for (const auto& [row, link] : house.LinksOf()) {
    const auto table = row.substr(0, row.find(' '));
    const auto key = row.substr(table.size() + 1);
    auto owner = row;
    if (table == "TransactionTable") {
      const auto payment =
          house.Scalar("SELECT COALESCE(PayID, '') FROM TransactionTable WHERE TransactionID = '" + key + "'");
      if (!payment.empty()) owner = "Payment " + payment;
      const auto retainer =
          house.Scalar("SELECT COALESCE(MAX(PayRetainer), 0) FROM Payment WHERE PayID = '" + payment + "'");
      if (retainer == "0") ++allocations[link];
    }
    owners[link].insert(owner);
  }
  for (const auto& [link, those] : owners) {
    EXPECT_EQ(those.size(), 1U) << link << " has " << *those.begin() << " and " << *those.rbegin();
  }
  for (const auto& [link, count] : allocations) EXPECT_EQ(count, 1) << link;
}

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
    for (const auto& [row, link] : before) {
      EXPECT_TRUE(after.contains(row) || HasReason(house, before, after, row)) << row << " was linked to " << link;
    }
  });
}

TEST_P(LinksOfAnyFirm, Never_lead_from_two_rows_to_one_record_whatever_is_answered) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    LinkingHouse house(plan);
    const auto yes = [](const LikelyPair& /*pair*/) { return true; };
    static_cast<void>(house.Link(yes));
    ExpectOneOwnerOfEachRecord(house);
    const auto links = house.LinksOf();
    EXPECT_TRUE(house.Link(yes).empty());
    EXPECT_EQ(house.LinksOf(), links);
  });
}

INSTANTIATE_TEST_SUITE_P(Firms, LinksOfAnyFirm, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
