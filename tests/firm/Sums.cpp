#include "tests/firm/Sums.h"

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

#include "cli/BalanceBooks.h"
#include "cli/Options.h"
#include "platform/Value.h"

namespace twqb {
namespace {

// By what it is of, such as "employee, project".
using Sums = std::map<std::string, std::int64_t>;

std::int64_t Cents(std::string_view amount) { return amount.empty() ? 0 : std::llround(TextToNumber(amount) * 100); }

// The keys of a table by their links.
std::map<std::string, std::string> KeysOf(FirmHouse& house, const std::string& table, const std::string& key) {
  std::map<std::string, std::string> keys;
  for (const auto& row : house.RowsOf(fmt::format("SELECT {0}, QBLinkID FROM {1} WHERE QBLinkID <> ''", key, table))) {
    keys.emplace(row.at("QBLinkID").value(), row.at(key).value());
  }
  return keys;
}

void ExpectTheSame(Sums here, Sums there) {
  const auto isNothing = [](const auto& sum) { return sum.second == 0; };
  std::erase_if(here, isNothing);
  std::erase_if(there, isNothing);
  EXPECT_EQ(here, there);
}

// "PT7H30M0S", in seconds.
std::int64_t SecondsOf(const std::string& duration) {
  std::int64_t seconds = 0;
  std::int64_t number = 0;
  for (const char c : duration) {
    if (c >= '0' && c <= '9') {
      number = number * 10 + (c - '0');
      continue;
    }
    if (c == 'H') seconds += number * 3600;
    if (c == 'M') seconds += number * 60;
    if (c == 'S') seconds += number;
    number = 0;
  }
  return seconds;
}

// What goes is cut to hours, minutes and seconds, as floating point has them: 4.35 hours are 4:20:59. More than a day
// is a day.
std::int64_t SecondsThatGo(double hours) {
  const auto minutes = (hours - std::trunc(hours)) * 60;
  const auto seconds = (minutes - std::trunc(minutes)) * 60;
  if (hours > 24) return 24 * 3'600;
  return static_cast<std::int64_t>(hours) * 3'600 + static_cast<std::int64_t>(minutes) * 60 +
         static_cast<std::int64_t>(seconds);
}

void CompareHours(FirmHouse& house, const std::set<std::string>& own) {
  Sums here;
  for (const auto& row :
       house.RowsOf("SELECT EmployeeID, ProjectID, ActivityID, TEHours, QBLinkID FROM TimeEntry WHERE "
                    "TEPosted <> 0 AND TEHours >= 0 AND ActivityID IS NOT NULL AND VendorBillID IS NULL")) {
    const auto hours = TextToNumber(row.at("TEHours").value());
    const bool cameIn = own.contains(row.at("QBLinkID").value_or(""));
    here[fmt::format("{}, {}", row.at("EmployeeID").value(), row.at("ProjectID").value())] +=
        cameIn ? std::llround(hours * 60) * 60 : SecondsThatGo(hours);
  }
  auto people = KeysOf(house, "Employee", "EmployeeID");
  auto projects = KeysOf(house, "Project", "ProjectID");
  Sums there;
  house.ForEachRecord("TimeTracking", "", [&](const pugi::xml_node& record) {
    if (!record.child("CustomerRef")) return;
    const auto seconds = SecondsOf(record.child_value("Duration"));
    // Of QuickBooks' own the seconds are dropped.
    const bool cameIn = own.contains(record.child_value("TxnID"));
    there[fmt::format("{}, {}", people[record.child("EntityRef").child_value("ListID")],
                      projects[record.child("CustomerRef").child_value("ListID")])] +=
        cameIn ? seconds / 60 * 60 : seconds;
  });
  ExpectTheSame(here, there);
}

// Why the two balances of anybody may differ in a firm in which everything goes that can.
bool MayDiffer(const cli::BalanceRecord& record) {
  switch (record.cause) {
    case cli::Cause::BelowNothing:  // never goes
    case cli::Cause::NotInBilling:  // without a number, or pending
    case cli::Cause::NotApplied:    // adds nothing
      return true;
    default:
      return false;
  }
}

void CompareWhatClientsOwe(FirmHouse& house) {
  const auto connection = house.database.CreateConnection();
  connection->SetConnectionString(house.ConnectString());
  connection->Open();
  const auto payers = cli::ReadPayers(*connection);
  const auto booked = cli::ReadBookedSide(cli::WorkplaceIn(house.Folder()), house.machine, payers);
  for (const auto& balance : cli::CompareBalances(cli::ReadBilledSide(*connection, payers), booked)) {
    Currency difference;
    for (const auto& record : balance.records) {
      EXPECT_TRUE(MayDiffer(record)) << cli::CauseName(record.cause) << " " << balance.payer.project << " "
                                     << record.invoice << " " << record.payment;
      difference = difference + record.Difference();
    }
    EXPECT_EQ(balance.Difference(), difference);
  }
  EXPECT_FALSE(booked.documents.empty());
}

void CompareInvoices(FirmHouse& house) {
  Sums here;
  for (const auto& row :
       house.RowsOf("SELECT ProjectID, TransactionInvBillAmt FROM TransactionTable WHERE PayID IS NULL AND "
                    "IsDraft = 0 AND (TransactionInvBillAmt >= 0 OR TransactionInvNum LIKE 'CM%')")) {
    here[row.at("ProjectID").value()] += Cents(row.at("TransactionInvBillAmt").value());
  }
  auto projects = KeysOf(house, "Project", "ProjectID");
  Sums there;
  const auto add = [&](const pugi::xml_node& record, std::int64_t amount) {
    const std::string number = record.child_value("RefNumber");
    if (number.empty() || std::string(record.child_value("IsPending")) == "true") return;
    there[projects[record.child("CustomerRef").child_value("ListID")]] += amount;
  };
  house.ForEachRecord("Invoice", "", [&](const pugi::xml_node& record) {
    add(record, Cents(record.child_value("BalanceRemaining")) - Cents(record.child_value("AppliedAmount")));
  });
  house.ForEachRecord("CreditMemo", "",
                      [&](const pugi::xml_node& record) { add(record, -Cents(record.child_value("TotalAmount"))); });
  ExpectTheSame(here, there);
}

void CompareBills(FirmHouse& house) {
  Sums here;
  for (const auto& row : house.RowsOf(
           "SELECT v.VendorID, t.ProjectID, t.TEHours, t.TECostRate FROM TimeExpense AS t JOIN VendorBill AS v ON "
           "v.VendorBillID = t.VendorBillID WHERE t.TEHours <> 0")) {
    // Each line is rounded to cents.
    const auto units = std::llround(TextToNumber(row.at("TEHours").value()) * 100);
    const auto cost = std::llround(TextToNumber(row.at("TECostRate").value()) * 10'000);
    here[fmt::format("{}, {}", row.at("VendorID").value(), row.at("ProjectID").value())] +=
        (units * cost + 5'000) / 10'000;
  }
  auto people = KeysOf(house, "Employee", "EmployeeID");
  auto projects = KeysOf(house, "Project", "ProjectID");
  Sums there;
  house.ForEachRecord("Bill", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& record) {
    const auto vendor = people[record.child("VendorRef").child_value("ListID")];
    // Lines on accounts come without units.
    for (const auto line : record.children("ItemLineRet")) {
      there[fmt::format("{}, {}", vendor, projects[line.child("CustomerRef").child_value("ListID")])] +=
          Cents(line.child_value("Amount"));
    }
  });
  ExpectTheSame(here, there);
}

}  // namespace

std::set<std::string> TimeOfQuickBooks(FirmHouse& house) {
  std::set<std::string> own;
  house.ForEachRecord("TimeTracking", "", [&](const auto& record) { own.insert(record.child_value("TxnID")); });
  return own;
}

void ExpectThatSumsAgree(FirmHouse& house, const std::set<std::string>& ownTime) {
  CompareHours(house, ownTime);
  CompareInvoices(house);
  CompareWhatClientsOwe(house);
  CompareBills(house);
}

}  // namespace twqb
