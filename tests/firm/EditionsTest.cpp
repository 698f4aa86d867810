// The same firm with a company file of the United States and with one of another country: the same rows in the end, and
// the same amounts on both sides, but for differences that are named here.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

#include "platform/Value.h"
#include "tests/firm/FirmHouse.h"

namespace twqb {
namespace {

using messages::Country;

std::string DigitsOf(std::string_view text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
  return digits;
}
bool AreWithin(double least, std::string_view one, std::string_view other) {
  return std::abs(TextToNumber(one) - TextToNumber(other)) <= least;
}

// What may differ, in a column of one country or of several; the first value is that of the United States.
struct Difference {
  std::string_view column;
  messages::Countries countries;
  bool (*isSo)(const std::string& american, const std::string& other);
};
constexpr auto kAustralia = static_cast<messages::Countries>(Country::AU);
constexpr auto kElsewhere = static_cast<messages::Countries>(messages::kCanada | messages::kBritain | kAustralia);
constexpr auto kWithoutMobiles = static_cast<messages::Countries>(messages::kCanada | messages::kBritain);
constexpr std::array kDifferences = {
    // Faxes are American: elsewhere they do not go, and a vendor's is blank behind the get.
    Difference{"Employee.EmpHFax", kElsewhere, [](const auto&, const auto& other) { return other.empty(); }},
    // Two countries know no mobiles, and leave the row's as it was written.
    Difference{"Employee.MobileNumber", kWithoutMobiles,
               [](const auto& american, const auto& other) { return american.empty() || american == DigitsOf(other); }},
    // A number of one of them is none of the other; which Canada takes is compared beside the rows.
    Difference{"Employee.EmpSSN", messages::kCanada,
               [](const auto& american, const auto& other) { return other.empty() || american.empty(); }},
    // Britain asks for a number, and takes one of its own or the form of one.
    Difference{"Employee.EmpSSN", messages::kBritain,
               [](const auto&, const auto& other) { return other == "AA000000A"; }},
    // It takes no final dot, and no Ms.
    Difference{"Employee.EmpSalt", messages::kBritain,
               [](const auto& american, const auto& other) {
                 return other + "." == american || (other.empty() && american.starts_with("Ms"));
               }},
    // It takes three decimals of a price, and a markup is worked out of prices.
    Difference{"Expense.ExpCost", messages::kBritain,
               [](const auto& american, const auto& other) { return AreWithin(0.00051, american, other); }},
    Difference{"Expense.ExpMarkup", messages::kBritain,
               [](const auto& american, const auto& other) { return AreWithin(1, american, other); }},
    // The items that invoices need come in, and have a price there.
    Difference{"Activity.AC_BillRate", messages::kCanada,
               [](const auto& american, const auto& other) { return american.empty() && other == "1"; }},
    Difference{"Activity.AC_CostRate", messages::kCanada,
               [](const auto& american, const auto& other) { return american.empty() && other == "1"; }},
};

using Met = std::set<const Difference*>;

bool MayDiffer(const std::string& column, Country country, const std::string& american, const std::string& other,
               Met& met) {
  const auto* found = std::ranges::find_if(kDifferences, [&](const Difference& difference) {
    return difference.column == column && (difference.countries & static_cast<messages::Countries>(country)) != 0 &&
           difference.isSo(american, other);
  });
  if (found == kDifferences.end()) return false;
  met.insert(found);
  return true;
}

// In the order in which the rows were written, so that two runs can be compared row by row.
void CompareRows(FirmHouse& american, FirmHouse& other, Country country, Met& met) {
  EXPECT_EQ(american.CountRows(), other.CountRows());
  for (const auto& [table, count] : american.CountRows()) {
    const auto statement = "SELECT * FROM " + table + " ORDER BY rowid";
    const auto rows = american.RowsOf(statement);
    const auto others = other.RowsOf(statement);
    for (std::size_t i = 0; i < std::min(rows.size(), others.size()); ++i) {
      for (const auto& [column, value] : rows[i]) {
        const auto& there = others[i].at(column);
        if (value == there) continue;
        EXPECT_TRUE(MayDiffer(table + "." + column, country, value.value_or(""), there.value_or(""), met))
            << table << "." << column << ": " << value.value_or("NULL") << ", " << there.value_or("NULL");
      }
    }
  }
}

// Digits of which every other one counts double, so that the digits of all come to tens.
bool IsSocialInsurance(std::string_view digits) {
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (digits[i] < '0' || digits[i] > '9') return false;
    const int value = (digits[i] - '0') * (i % 2 == 0 ? 1 : 2);
    sum += value / 10 + value % 10;
  }
  return digits.size() == 9 && sum % 10 == 0;
}

std::map<std::string, std::string> NumbersOfEmployees(FirmHouse& house) {
  std::map<std::string, std::string> numbers;
  for (const auto& row : house.RowsOf("SELECT EmployeeID, EmpSSN FROM Employee WHERE IsSub = 0")) {
    numbers[row.at("EmployeeID").value()] = row.at("EmpSSN").value_or("");
  }
  return numbers;
}

// The sixth of eight digits counts twice. What makes no number so does not go, and is blank behind the get.
void ExpectCanadianNumbers(const std::map<std::string, std::string>& before,
                           const std::map<std::string, std::string>& after) {
  for (const auto& [employee, number] : before) {
    const auto twice = number.size() == 8 ? number.substr(0, 6) + number.substr(5) : "";
    EXPECT_EQ(after.at(employee), IsSocialInsurance(twice) ? twice : "") << employee << " " << number;
  }
}

// Who owes how much and is owed, and what documents come to.
std::map<std::string, std::string> AmountsOf(FirmHouse& house) {
  std::map<std::string, std::string> amounts;
  const auto add = [&](const std::string& kind, const char* name, const char* amount) {
    house.ForEachRecord(kind, "", [&](const pugi::xml_node& record) {
      amounts[kind + " " + record.child_value(name)] = record.child_value(amount);
    });
  };
  add("Customer", "FullName", "TotalBalance");
  add("Vendor", "Name", "Balance");
  add("Invoice", "TxnID", "Subtotal");
  add("CreditMemo", "TxnID", "TotalAmount");
  add("ReceivePayment", "TxnID", "TotalAmount");
  add("Bill", "TxnID", "AmountDue");
  return amounts;
}

// How many records there are, but for what each country has of its own in a new file.
Counts RecordsOf(FirmHouse& house) {
  auto counts = house.CountRecords();
  for (const auto* kind : {"PaymentMethod", "SalesTaxCode", "TaxCode"}) counts.erase(kind);
  return counts;
}

void Compare(const firm::FirmPlan& plan, Country country, Met& met) {
  FirmHouse american(plan);
  FirmHouse other(plan, HouseOptions{.company = {.country = country}});
  const auto numbers = NumbersOfEmployees(other);
  for (auto* house : {&american, &other}) {
    house->Send();
    house->Get();
    EXPECT_TRUE(house->BoxTexts().empty()) << house->BoxTexts().front();
  }
  CompareRows(american, other, country, met);
  if (country == Country::CA) ExpectCanadianNumbers(numbers, NumbersOfEmployees(other));
  EXPECT_EQ(AmountsOf(american), AmountsOf(other));
  EXPECT_EQ(RecordsOf(american), RecordsOf(other));
}

constexpr std::array kCountries = {Country::CA, Country::UK, Country::AU};

class FirmEditions : public AnyFirm {};

TEST_P(FirmEditions, End_alike_but_for_named_differences) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    Met met;
    Compare(plan, kCountries[plan.seed % kCountries.size()], met);
  });
}

TEST(FirmDifferences, Are_all_met_in_one_larger_firm) {
  Met met;
  for (const auto country : kCountries) Compare({.clients = 30, .seed = 3, .months = 1, .hours = 1}, country, met);
  for (const auto& difference : kDifferences)
    EXPECT_TRUE(met.contains(&difference)) << difference.column << " is never met";
}

TEST(FirmEdition, Below_version_3_does_not_end_alike_for_the_hours_of_an_employee_who_was_sent_are_refused) {
  constexpr int kSpeaksVersion2 = 12;
  FirmHouse house({.clients = 3, .months = 1}, HouseOptions{.company = {.hostVersion = kSpeaksVersion2}});
  house.TrySend(enAll);
  ASSERT_FALSE(house.BoxTexts().empty());
  EXPECT_TRUE(house.BoxTexts().back().starts_with("Error: 3310\r\n")) << house.BoxTexts().back();
  const std::string sent =
      "SELECT COUNT(*) FROM TimeEntry AS t JOIN Employee AS e ON e.EmployeeID = t.EmployeeID WHERE t.QBLinkID <> '' ";
  EXPECT_EQ(house.Scalar(sent + "AND e.IsSub = 0"), "0");
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM TransactionTable WHERE QBLinkID <> ''"), "0") << "the run has ended";
}

INSTANTIATE_TEST_SUITE_P(Firm, FirmEditions, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
