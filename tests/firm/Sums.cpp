#include "tests/firm/Sums.h"

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

#include "platform/Text.h"
#include "platform/Value.h"
#include "tests/firm/Amounts.h"
#include "tests/support/Chance.h"

namespace twqb {
namespace {

// By what it is of, such as "employee, project".
using Sums = std::map<std::string, std::int64_t>;

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

// Without a number, or pending: it stays in QuickBooks.
bool IsUnfinished(const pugi::xml_node& record) {
  return std::string(record.child_value("RefNumber")).empty() || std::string(record.child_value("IsPending")) == "true";
}

void CompareInvoices(FirmHouse& house) {
  Sums here;
  for (const auto& row :
       house.RowsOf("SELECT ProjectID, TransactionInvBillAmt FROM TransactionTable WHERE PayID IS NULL AND "
                    "IsDraft = 0 AND (TransactionInvBillAmt >= 0 OR TransactionInvNum LIKE 'CM%')")) {
    here[row.at("ProjectID").value()] += InCents(row.at("TransactionInvBillAmt").value());
  }
  auto projects = KeysOf(house, "Project", "ProjectID");
  Sums there;
  const auto add = [&](const pugi::xml_node& record, std::int64_t amount) {
    if (IsUnfinished(record)) return;
    there[projects[record.child("CustomerRef").child_value("ListID")]] += amount;
  };
  house.ForEachRecord("Invoice", "", [&](const pugi::xml_node& record) {
    add(record, InCents(record.child_value("BalanceRemaining")) - InCents(record.child_value("AppliedAmount")));
  });
  house.ForEachRecord("CreditMemo", "",
                      [&](const pugi::xml_node& record) { add(record, -InCents(record.child_value("TotalAmount"))); });
  ExpectTheSame(here, there);
}

// Whose a customer of QuickBooks is: of its project, or its own.
std::map<std::string, std::string> ClientsOfCustomers(FirmHouse& house) {
  auto clients = KeysOf(house, "Client", "ClientID");
  clients.merge(KeysOf(house, "Project", "ClientID"));
  return clients;
}

// The customers of invoices that have a number and are not pending: no others come.
std::map<std::string, std::string> CustomersOfInvoices(FirmHouse& house) {
  std::map<std::string, std::string> customers;
  house.ForEachRecord("Invoice", "", [&](const pugi::xml_node& record) {
    if (IsUnfinished(record)) return;
    customers[record.child_value("TxnID")] = record.child("CustomerRef").child_value("ListID");
  });
  return customers;
}

constexpr const char* kLines = "<IncludeLineItems>true</IncludeLineItems>";

// What payments and discounts have settled, by the project whose invoices they were applied to.
void CompareWhatWasApplied(FirmHouse& house) {
  Sums here;
  for (const auto& row : house.RowsOf("SELECT t.ProjectID, t.TransactionPayAmtApplied FROM TransactionTable AS t JOIN "
                                      "Payment AS p ON p.PayID = t.PayID WHERE p.PayRetainer = 0")) {
    here[row.at("ProjectID").value()] += InCents(row.at("TransactionPayAmtApplied").value());
  }
  auto projects = KeysOf(house, "Project", "ProjectID");
  auto customers = CustomersOfInvoices(house);
  Sums there;
  house.ForEachRecord("ReceivePayment", kLines, [&](const pugi::xml_node& record) {
    for (const auto applied : record.children("AppliedToTxnRet")) {
      const auto customer = customers.find(applied.child_value("TxnID"));
      ASSERT_NE(customer, customers.end()) << "a payment of an invoice that does not come";
      there[projects[customer->second]] +=
          InCents(applied.child_value("Amount")) + InCents(applied.child_value("DiscountAmount"));
    }
  });
  ExpectTheSame(here, there);
}

// What clients have paid, discounts with it. A retainer of BillingDb is an invoice of nothing in QuickBooks, with the
// money as one of its lines, taken off; one of QuickBooks' own is a payment of nothing yet.
void CompareWhatClientsPaid(FirmHouse& house) {
  Sums here;
  Sums retainersHere;
  for (const auto& row : house.RowsOf("SELECT ClientID, PayAmt, PayRetainer FROM Payment")) {
    auto& sums = row.at("PayRetainer") == "0" ? here : retainersHere;
    sums[row.at("ClientID").value()] += InCents(row.at("PayAmt").value());
  }
  auto clients = ClientsOfCustomers(house);
  const auto clientOf = [&](const pugi::xml_node& record) {
    return clients[record.child("CustomerRef").child_value("ListID")];
  };
  Sums there;
  Sums retainersThere;
  house.ForEachRecord("ReceivePayment", kLines, [&](const pugi::xml_node& record) {
    auto& sums = record.child("AppliedToTxnRet") ? there : retainersThere;
    sums[clientOf(record)] += InCents(record.child_value("TotalAmount"));
    for (const auto applied : record.children("AppliedToTxnRet")) {
      sums[clientOf(record)] += InCents(applied.child_value("DiscountAmount"));
    }
  });
  house.ForEachRecord("Invoice", kLines, [&](const pugi::xml_node& record) {
    for (const auto line : record.children("InvoiceLineRet")) {
      if (std::string(line.child("ItemRef").child_value("FullName")) == "TWRetainerPayment") {
        retainersThere[clientOf(record)] -= InCents(line.child_value("Amount"));
      }
    }
  });
  ExpectTheSame(here, there);
  ExpectTheSame(retainersHere, retainersThere);
}

// What was spent, by person and project: lines of checks, charges and bills that are for a project.
void CompareExpenses(FirmHouse& house) {
  Sums here;
  for (const auto& row : house.RowsOf("SELECT EmployeeID, ProjectID, ELUnits, ELCost, ELChgAmt FROM ExpenseLog WHERE "
                                      "QBLinkID <> ''")) {
    const auto units = TextToNumber(row.at("ELUnits").value());
    // What is on an account has an amount alone.
    here[fmt::format("{}, {}", row.at("EmployeeID").value(), row.at("ProjectID").value())] +=
        units == 0 ? InCents(row.at("ELChgAmt").value()) : LineInCents(units, TextToNumber(row.at("ELCost").value()));
  }
  auto people = KeysOf(house, "Employee", "EmployeeID");
  auto projects = KeysOf(house, "Project", "ProjectID");
  auto codes = KeysOf(house, "Expense", "ExpID");
  Sums there;
  for (const auto& [kind, payee] : {std::pair("Check", "PayeeEntityRef"),
                                    std::pair("CreditCardCharge", "PayeeEntityRef"), std::pair("Bill", "VendorRef")}) {
    house.ForEachRecord(kind, kLines, [&, payee = payee](const pugi::xml_node& record) {
      // A key without blanks at its ends.
      const auto person = Trim(people[record.child(payee).child_value("ListID")]);
      const auto add = [&](const pugi::xml_node& line, std::int64_t amount) {
        if (!line.child("CustomerRef")) return;
        there[fmt::format("{}, {}", person, projects[line.child("CustomerRef").child_value("ListID")])] += amount;
      };
      for (const auto line : record.children("ItemLineRet")) {
        // Hours are told apart by their items.
        if (codes.contains(line.child("ItemRef").child_value("ListID"))) add(line, InCents(line.child_value("Amount")));
      }
      for (const auto line : record.children("ExpenseLineRet")) {
        // Comes at no charge.
        const bool isBillable = std::string(line.child_value("BillableStatus")) != "NotBillable";
        add(line, isBillable ? InCents(line.child_value("Amount")) : 0);
      }
    });
  }
  ExpectTheSame(here, there);
}

void CompareBills(FirmHouse& house) {
  Sums here;
  for (const auto& row : house.RowsOf(
           "SELECT v.VendorID, t.ProjectID, t.TEHours, t.TECostRate FROM TimeExpense AS t JOIN VendorBill AS v ON "
           "v.VendorBillID = t.VendorBillID WHERE t.TEHours <> 0")) {
    here[fmt::format("{}, {}", row.at("VendorID").value(), row.at("ProjectID").value())] +=
        LineInCents(TextToNumber(row.at("TEHours").value()), TextToNumber(row.at("TECostRate").value()));
  }
  auto people = KeysOf(house, "Employee", "EmployeeID");
  auto projects = KeysOf(house, "Project", "ProjectID");
  Sums there;
  house.ForEachRecord("Bill", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& record) {
    const auto vendor = people[record.child("VendorRef").child_value("ListID")];
    // Lines on accounts come without units.
    for (const auto line : record.children("ItemLineRet")) {
      there[fmt::format("{}, {}", vendor, projects[line.child("CustomerRef").child_value("ListID")])] +=
          InCents(line.child_value("Amount"));
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
  CompareWhatWasApplied(house);
  CompareWhatClientsPaid(house);
  CompareExpenses(house);
  CompareBills(house);
}

}  // namespace twqb
