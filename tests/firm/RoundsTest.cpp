// Transfers of all tables, again and again: what goes and comes the first time, that both sides come to the same, and
// that nothing is added from then on.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <set>
#include <span>

#include "tests/firm/Books.h"
#include "tests/firm/Sums.h"

namespace twqb {
namespace {

using Names = std::set<std::string>;

constexpr const char* kTransactions[] = {"TimeTracking", "Invoice", "CreditMemo", "ReceivePayment", "Bill", "Estimate"};

Names IdentifiersOf(FirmHouse& house, std::span<const char* const> kinds) {
  Names found;
  for (const std::string kind : kinds) {
    house.ForEachRecord(kind, "", [&](const pugi::xml_node& record) { found.insert(record.child_value("TxnID")); });
  }
  return found;
}

// What has no link behind a send of all.
void ExpectThatAllWentThatGoes(FirmHouse& house) {
  EXPECT_TRUE(house.BoxTexts().empty()) << house.BoxTexts().front();
  const std::string noLink = " WHERE (QBLinkID IS NULL OR QBLinkID = '') ";
  const auto expectNone = [&](const std::string& rows) {
    EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM " + rows), "0") << rows;
  };
  for (const std::string table : {"Employee", "Client", "Project", "Activity", "Expense", "VendorBill", "Payment"}) {
    expectNone(table + noLink);
  }
  const std::string stays = "(TEPosted = 0 OR TEHours < 0 OR ActivityID IS NULL)";
  expectNone("TimeEntry" + noLink + "AND (VendorBillID IS NOT NULL OR NOT " + stays + ")");
  expectNone("TimeEntry WHERE QBLinkID <> '' AND VendorBillID IS NULL AND " + stays);
  expectNone("ExpenseLog" + noLink + "AND VendorBillID IS NOT NULL");
  expectNone("ExpenseLog WHERE QBLinkID <> '' AND VendorBillID IS NULL");
  expectNone("TransactionTable" + noLink + "AND PayID IS NOT NULL");
  expectNone("TransactionTable" + noLink + "AND IsDraft = 0 AND TransactionInvBillAmt >= 0");
  expectNone("TransactionTable WHERE QBLinkID <> '' AND (IsDraft <> 0 OR TransactionInvBillAmt < 0)");
  // Of accounts those whose name is in use stay: those of the firm that are called so have no other name.
  expectNone("AccountList" + noLink + "AND AccountName NOT IN ('Travel', 'CHECKING')");
}

// What no row is linked to behind a get of all.
void ExpectThatAllCameThatComes(FirmHouse& house, const Names& own) {
  EXPECT_TRUE(house.BoxTexts().empty()) << house.BoxTexts().front();
  Names links;
  for (const std::string table : {"Employee", "Client", "Project", "Activity", "Expense", "AccountList", "TimeEntry",
                                  "VendorBill", "TransactionTable", "Payment"}) {
    for (const auto& row : house.RowsOf("SELECT QBLinkID FROM " + table + " WHERE QBLinkID <> ''")) {
      links.insert(row.at("QBLinkID").value());
    }
  }
  for (const auto& row : house.RowsOf("SELECT BudgetID FROM Budget")) links.insert(row.at("BudgetID").value());
  for (const std::string kind : {"Employee", "Vendor", "Customer", "ItemService", "ItemOtherCharge", "ItemNonInventory",
                                 "ItemInventory", "Account"}) {
    house.ForEachRecord(kind, "<ActiveStatus>All</ActiveStatus>", [&](const pugi::xml_node& record) {
      EXPECT_TRUE(links.contains(record.child_value("ListID"))) << kind << " " << record.child_value("Name");
    });
  }
  for (const std::string kind : kTransactions) {
    house.ForEachRecord(kind, "", [&](const pugi::xml_node& record) {
      const std::string number = record.child_value("RefNumber");
      const bool isOwn = own.contains(record.child_value("TxnID"));
      const bool forNobody = kind == "TimeTracking" && !record.child("CustomerRef");
      const bool isUnfinished =
          kind == "Invoice" && (number.empty() || std::string(record.child_value("IsPending")) == "true");
      const bool isHere = links.contains(kind == "Estimate" ? number : record.child_value("TxnID"));
      EXPECT_EQ(isHere, !isOwn || (!forNobody && !isUnfinished)) << kind << " " << number;
    });
  }
}

Counts With(Counts counts, const Counts& more) {
  for (const auto& [name, count] : more) counts[name] += count;
  return counts;
}

// What QuickBooks received for nothing yet.
std::int64_t RetainersOf(FirmHouse& house) {
  std::int64_t retainers = 0;
  house.ForEachRecord("ReceivePayment", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& record) {
    if (!record.child("AppliedToTxnRet")) ++retainers;
  });
  return retainers;
}

// What moves for one more round, or with each: the company of a vendor goes on down the lines of the street; a job that
// has come in as closed is in progress behind the next change; an item without words of its own has its name for them,
// and that grows the blank of a key without a sub-code.
const std::set<std::string> kMoving = {"VendorAddress.Addr1",   "VendorAddress.Addr2",        "VendorAddress.Addr3",
                                       "Vendor.EmpStreet",      "Vendor.EmpStreet2",          "CustomerRet.JobStatus",
                                       "Project.ProjectStatus", "ItemInventoryRet.SalesDesc", "Expense.ExpDescription",
                                       "Expense.Exp_Memo"};

// What the second get brings in the form that QuickBooks has got it in: telephones as digits alone.
const std::set<std::string> kMovingOnce = {"Client.ClientPhone", "Client.ClientMainPhone",   "Client.ClientFax",
                                           "Employee.EmpHPhone", "Employee.EmpContactPhone", "Employee.MobileNumber",
                                           "Vendor.EmpHPhone",   "Vendor.EmpContactPhone",   "Vendor.EmpHFax"};

enum class Settled : std::uint8_t { InRecords, InAll };

// All of both sides that a further round leaves as it is: without retainers, which come and go once more, and without
// the manager of jobs, whose row is filled by the get behind the addition.
Books SettledBooks(FirmHouse& house, Settled settled) {
  auto without = kMoving;
  if (settled == Settled::InRecords) without.insert(kMovingOnce.begin(), kMovingOnce.end());
  auto books = ReadBooks(house, without);
  std::erase_if(books.records, [](const std::string& record) {
    return record.starts_with("<Invoice") && record.find("TWRetainerPayment") != std::string::npos;
  });
  std::erase_if(books.rows, [](const std::string& row) {
    return row.find(" PayRetainer=-1") != std::string::npos || row.find(" TransactionInvNum=0 ") != std::string::npos ||
           row.find(" EmployeeID=From QuickBooks IsSub=0 ") != std::string::npos;
  });
  return books;
}

class FirmRounds : public AnyFirm {};

TEST_P(FirmRounds, Move_all_that_moves_to_the_same_sums_and_add_nothing_from_the_second_on_but_retainers_that_came_in) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    FirmHouse house(plan);
    const auto own = IdentifiersOf(house, kTransactions);
    const auto ownTime = TimeOfQuickBooks(house);
    const auto retainers = RetainersOf(house);
    house.Send();
    ExpectThatAllWentThatGoes(house);
    house.Get();
    ExpectThatAllCameThatComes(house, own);
    ExpectThatSumsAgree(house, ownTime);
    auto records = house.CountRecords();
    auto rows = house.CountRows();
    // The manager of jobs who came in is added once.
    const bool hasManager = house.Scalar("SELECT COUNT(*) FROM Employee WHERE EmployeeID = 'From QuickBooks'") == "1";
    const auto expectOnSend = [&](const Counts& more) {
      house.Send();
      // A retainer that came in goes back as an invoice of nothing, and so comes once more with each get.
      records = With(records, With(more, {{"Invoice", retainers}}));
      EXPECT_EQ(house.CountRecords(), records);
      EXPECT_EQ(house.CountRows(), rows);
    };
    expectOnSend({{"Employee", hasManager ? 1 : 0}});
    auto settled = SettledBooks(house, Settled::InRecords);
    const int rounds = plan.seed % 5 == 0 ? 3 : 2;
    for (int round = 2; round <= rounds; ++round) {
      house.Get();
      rows = With(rows, {{"Payment", retainers}, {"TransactionTable", retainers}});
      EXPECT_EQ(house.CountRows(), rows);
      EXPECT_EQ(house.CountRecords(), records);
      expectOnSend({});
      const auto books = SettledBooks(house, round == 2 ? Settled::InRecords : Settled::InAll);
      EXPECT_TRUE(books.records == settled.records) << DifferenceOf(settled.records, books.records);
      EXPECT_TRUE(books.rows == settled.rows) << DifferenceOf(settled.rows, books.rows);
      if (round < rounds) settled = SettledBooks(house, Settled::InAll);
    }
    EXPECT_TRUE(house.BoxTexts().empty()) << house.BoxTexts().front();
  });
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmRounds, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
