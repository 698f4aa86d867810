// What a row made from QuickBooks is worth: the defaults, or the earnings of an employee.

#include <gtest/gtest.h>

#include "tests/lists/PeopleHouse.h"

namespace twqb {
namespace {

class RatesHouse : public PeopleHouse {
 public:
  explicit RatesHouse(IsVendor isVendor = IsVendor::No, const Edition& edition = {}, std::string_view faults = {})
      : PeopleHouse(isVendor, {.answers = "yes"}, faults, edition) {}
  void Rate(std::string_view key, std::string_view value) {
    Setting("QBGET_", "Employees(QB)" + std::string(key), value);
  }
  void UseEarnings(std::string_view multiplier = {}) {
    Rate("_chkBillRate", "1");
    if (!multiplier.empty()) Rate("_DefaultCRM", multiplier);
  }
  // The one record that the next get finds, with these earnings.
  void AnswerWithEarnings(std::string_view earnings) {
    traffic.canned.push_back(fmt::format(
        "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><EmployeeQueryRs requestID=\"1\" statusCode=\"0\" "
        "statusSeverity=\"Info\" statusMessage=\"Status OK\"><EmployeeRet><ListID>1-1</ListID><TimeModified>"
        "2008-03-05T10:00:00</TimeModified><Name>Ann</Name><EmployeePayrollInfo>{}</EmployeePayrollInfo></EmployeeRet>"
        "</EmployeeQueryRs></QBXMLMsgsRs></QBXML>",
        earnings));
  }
  std::string RatesOf(std::string_view key) {
    return ColumnOf(key, "EmpBillRate") + " " + ColumnOf(key, "EmpCostRate");
  }
};

std::string Earning(std::string_view rate) {
  return fmt::format("<Earnings><PayrollItemWageRef><FullName>Hourly</FullName></PayrollItemWageRef>{}</Earnings>",
                     rate);
}
std::string RateOf(std::string_view rate) { return Earning(fmt::format("<Rate>{}</Rate>", rate)); }

TEST(EmployeeRates, Are_1_without_a_setting) {
  RatesHouse house;
  house.Add("<FirstName>Ann</FirstName>");
  house.Get();
  EXPECT_EQ(house.RatesOf("Ann"), "1 1");
}

TEST(EmployeeRates, Are_those_of_the_settings_for_vendors_as_well) {
  for (const auto kind : {IsVendor::No, IsVendor::Yes}) {
    RatesHouse house(kind);
    house.Rate("_DefaultBR", "95.5");
    house.Rate("_DefaultCR", "40.25");
    house.Add(kind == IsVendor::Yes ? "<Name>Ann</Name>" : "<FirstName>Ann</FirstName>");
    house.Get();
    EXPECT_EQ(house.RatesOf("Ann"), "95.5 40.25");
  }
}

TEST(EmployeeRates, Of_an_existing_row_stay) {
  RatesHouse house;
  house.Rate("_DefaultBR", "95.5");
  const auto id = house.Add("<FirstName>Ann</FirstName>");
  house.Person({{"EmployeeID", "'A'"}, {"QBLinkID", Quoted(id)}, {"EmpBillRate", "7"}});
  house.Get();
  EXPECT_EQ(house.RatesOf("A"), "7 NULL");
}

struct EarningsCase {
  std::string_view name;
  std::string earnings;
  std::string_view rates;  // multiplier 2.5, defaults 9 and 8
};

class EmployeeEarnings : public testing::TestWithParam<EarningsCase> {};

TEST_P(EmployeeEarnings, Give_a_new_row_its_rates) {
  RatesHouse house;
  house.Rate("_DefaultBR", "9");
  house.Rate("_DefaultCR", "8");
  house.UseEarnings("2.5");
  house.AnswerWithEarnings(GetParam().earnings);
  house.Get();
  EXPECT_EQ(house.RatesOf("Ann"), GetParam().rates);
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(
    EmployeeRates, EmployeeEarnings,
    testing::Values(EarningsCase{"By_the_hour", RateOf("30"), "75 30"},
                    EarningsCase{"Exactly_1000_is_by_the_hour", RateOf("1000"), "2500 1000"},
                    EarningsCase{"A_salary_of_41600_is_20_an_hour", RateOf("41600.00"), "50 20"},
                    EarningsCase{"Just_above_1000_is_a_salary", RateOf("1040"), "1.25 0.5"},
                    EarningsCase{"Nothing_is_1", RateOf("0"), "2.5 1"},
                    EarningsCase{"The_first_that_has_a_rate", Earning("") + RateOf("12") + RateOf("99"), "30 12"},
                    EarningsCase{"A_percentage_is_no_rate", Earning("<RatePercent>50</RatePercent>") + RateOf("4"),
                                 "10 4"},
                    EarningsCase{"No_rate_in_any", Earning("") + Earning("<RatePercent>5</RatePercent>"), "9 8"},
                    EarningsCase{"No_earnings", "", "9 8"}, EarningsCase{"No_number", RateOf("plenty"), "9 8"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(EmployeeRates, Earnings_go_by_1_without_a_multiplier) {
  RatesHouse house;
  house.UseEarnings();
  house.AnswerWithEarnings(RateOf("30"));
  house.Get();
  EXPECT_EQ(house.RatesOf("Ann"), "30 30");
}

TEST(EmployeeRates, Earnings_are_not_looked_at_unless_it_is_set) {
  RatesHouse house;
  house.Rate("_DefaultCRM", "3");
  house.AnswerWithEarnings(RateOf("30"));
  house.Get();
  EXPECT_EQ(house.RatesOf("Ann"), "1 1");
}

TEST(EmployeeRates, Earnings_are_not_looked_at_outside_the_United_States) {
  for (const std::string_view country : {"CA", "UK", "AU"}) {
    RatesHouse house;
    Vars().g_QBCountry = country;
    house.UseEarnings("3");
    house.AnswerWithEarnings(RateOf("30"));
    house.Get();
    EXPECT_EQ(house.RatesOf("Ann"), "1 1") << country;
  }
}

TEST(EmployeeRates, A_vendor_has_no_earnings) {
  RatesHouse house(IsVendor::Yes);
  house.UseEarnings("3");
  house.Add("<Name>Ann</Name>");
  house.Get();
  EXPECT_EQ(house.RatesOf("Ann"), "1 1");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(EmployeeRates, A_setting_that_is_no_number_leaves_its_own_column_alone) {
  RatesHouse house;
  house.Rate("_DefaultBR", "plenty");
  house.Rate("_DefaultCR", "12");
  house.Add("<FirstName>Ann</FirstName>");
  house.Get();
  EXPECT_EQ(house.RatesOf("Ann"), "NULL 12");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(EmployeeRates, Settings_are_read_once_a_get_and_the_multiplier_only_where_it_counts) {
  for (const bool usesEarnings : {false, true}) {
    RatesHouse house;
    Vars().g_UseTWSTable = true;
    if (usesEarnings) {
      ASSERT_TRUE(gf_WriteSettings("QBGET_", "Employees(QB)_chkBillRate", "1", ""));
    }
    house.Add("<FirstName>Ann</FirstName>");
    house.Add("<FirstName>Bob</FirstName>");
    house.traffic.statements.clear();
    house.Get();
    int reads = 0;
    for (const auto& statement : house.traffic.statements) {
      if (statement.find("TWSTable") != std::string::npos) ++reads;
    }
    EXPECT_EQ(reads, usesEarnings ? 4 : 3);
  }
}

TEST(EmployeeRates, A_flag_that_is_none_ends_the_get_before_its_records) {
  RatesHouse house;
  house.Rate("_chkBillRate", "perhaps");
  house.Add("<FirstName>Ann</FirstName>");
  house.Get();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveEmployeesToTW")));
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Vars().g_TableOk, TableOk::False);
}

}  // namespace
}  // namespace twqb
