// Payroll items of time entries: the four that a send makes sure of, and the choice of one for an entry.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/transactions/TimeEntriesHouse.h"
#include "transactions/PayrollItems.h"

namespace twqb {
namespace {

std::string WageItem(std::string_view name, std::string_view type, std::string_view account) {
  return fmt::format(
      "<PayrollItemWageAdd><Name>{}</Name><IsActive>true</IsActive><WageType>{}</"
      "WageType><ExpenseAccountRef><FullName>{}"
      "</FullName></ExpenseAccountRef></PayrollItemWageAdd>",
      name, type, account);
}

Texts FourItems(std::string_view account = "Payroll Expenses") {
  return {WageItem("Vacation Hourly", "HourlyVacation", account), WageItem("Regular Pay", "SalaryRegular", account),
          WageItem("Overtime Pay", "HourlyRegular", account), WageItem("Sick Hourly", "HourlySick", account)};
}

std::string RefusedItem(int status) {
  return fmt::format("Error adding Payroll Item Wage : \r\nError code = {}\r\nError Message = No.", status);
}
// The lines of the log, joined again where one text has several.
std::string LogText(const TimeEntriesHouse& house) {
  std::string text;
  for (const auto& line : house.Log()) text += text.empty() ? line : "\r\n" + line;
  return text;
}

// The names of the wage items that are in the company file, as it lists them.
Texts ItemsIn(TimeEntriesHouse& house) {
  const auto answer = house.Company("<PayrollItemWageQueryRq></PayrollItemWageQueryRq>", ListHouse::Tag());
  Texts names;
  for (auto at = answer.find("<Name>"); at != std::string::npos; at = answer.find("<Name>", at + 1)) {
    names.push_back(SpiedHouse::TextOf(std::string_view(answer).substr(at), "Name"));
  }
  std::ranges::sort(names);
  return names;
}

// --- The four items --------------------------------------------------------------------------------------------------

TEST(WageItems, Are_secured_ahead_of_the_first_entry_in_one_set_of_four) {
  TimeEntriesHouse house;
  house.Entry("T1");
  house.Send();
  ASSERT_FALSE(house.traffic.documents.empty());
  EXPECT_EQ(SpiedHouse::RequestsOf(house.traffic.documents[0], "PayrollItemWageAddRq"), FourItems());
  EXPECT_EQ(house.Requests("PayrollItemWageAddRq").size(), 4U);
  EXPECT_EQ(ItemsIn(house), (Texts{"Overtime Pay", "Regular Pay", "Sick Hourly", "Vacation Hourly"}));
}

TEST(WageItems, That_are_there_already_are_no_trouble) {
  TimeEntriesHouse house;
  house.Entry("T1");
  house.Send();
  house.Entry("T2");
  house.Send();
  EXPECT_TRUE(house.IsSent("T2"));
  EXPECT_EQ(house.Requests("PayrollItemWageAddRq").size(), 8U);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(WageItems, Are_not_secured_for_a_selection_without_rows) {
  TimeEntriesHouse house;
  house.Send();
  EXPECT_TRUE(house.traffic.documents.empty());
}

struct VersionCase {
  std::int16_t version;
  std::size_t items;
};

class WageItemVersions : public testing::TestWithParam<VersionCase> {};

TEST_P(WageItemVersions, Begin_with_2) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"TEBillRate", "95.5"}});
  Vars().g_QBMajorVer = GetParam().version;
  house.Send();
  EXPECT_EQ(house.Requests("PayrollItemWageAddRq").size(), GetParam().items);
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(WageItems, WageItemVersions,
                         testing::Values(VersionCase{1, 0}, VersionCase{2, 4}, VersionCase{3, 4}),
                         [](const auto& test) { return "Version" + std::to_string(test.param.version); });

struct Country {
  std::string name;
  std::string file;
  std::string host;
  std::string vacation;
  std::size_t items;  // that come into being
};

class WageItemCountries : public testing::TestWithParam<Country> {};

TEST_P(WageItemCountries, Have_a_vacation_item_of_their_own_kind_and_nobody_looks_at_the_last_item) {
  const auto& country = GetParam();
  TimeEntriesHouse house({}, {}, country.file);
  Vars().g_HostCountry = country.host;
  house.Entry("T1");
  house.Send();
  const auto sent = house.Requests("PayrollItemWageAddRq");
  ASSERT_EQ(sent.size(), 4U);
  EXPECT_EQ(sent[0], WageItem("Vacation Hourly", country.vacation, "Payroll Expenses"));
  EXPECT_EQ(sent[1], WageItem("Regular Pay", "SalaryRegular", "Payroll Expenses"));
  EXPECT_EQ(ItemsIn(house).size(), country.items);
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

INSTANTIATE_TEST_SUITE_P(WageItems, WageItemCountries,
                         testing::Values(Country{"American", "US", "US", "HourlyVacation", 4},
                                         Country{"British", "UK", "UK", "HourlyVacation", 4},
                                         Country{"Canadian", "CA", "CA", "HourlyRegular", 3},
                                         Country{"CanadianByFile", "CA", "US", "HourlyRegular", 3},
                                         Country{"CanadianByHost", "US", "CA", "HourlyRegular", 4}),
                         [](const auto& test) { return test.param.name; });

class WageItemAnswers : public testing::TestWithParam<std::pair<int, bool>> {};

TEST_P(WageItemAnswers, Of_the_first_item_alone_decide) {
  const auto [status, good] = GetParam();
  TimeEntriesHouse house({}, Refuses("PayrollItemWageAddRq", 1, status) + Refuses("PayrollItemWageAddRq", 2, 3140));
  EXPECT_EQ(AddPayrollItemWage(TimeEntriesHouse::Session(), ""), good);
  EXPECT_EQ(LogText(house), good ? "" : RefusedItem(status));
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(WageItems, WageItemAnswers,
                         testing::Values(std::pair{0, true}, std::pair{3100, true}, std::pair{3140, false},
                                         std::pair{3180, false}, std::pair{3250, false}),
                         [](const auto& test) { return std::to_string(test.param.first); });

TEST(WageItems, Without_an_account_pay_from_the_usual_one_and_else_from_the_one_given) {
  TimeEntriesHouse house;
  EXPECT_TRUE(AddPayrollItemWage(TimeEntriesHouse::Session(), ""));
  EXPECT_EQ(house.Requests("PayrollItemWageAddRq"), FourItems());
  house.Add("Account", "<Name>Wages &amp; Co</Name><AccountType>Expense</AccountType>");
  house.Clear();
  EXPECT_TRUE(AddPayrollItemWage(TimeEntriesHouse::Session(), "Wages & Co"));
  EXPECT_EQ(house.Requests("PayrollItemWageAddRq"), FourItems("Wages &amp; Co"));
}

// --- The account of the settings -------------------------------------------------------------------------------------

struct Accounts {
  std::string name;
  std::string first;
  std::string second;
  std::string used;  // empty: there is none
};

class WageAccounts : public testing::TestWithParam<Accounts> {};

TEST_P(WageAccounts, Of_the_settings_stand_in_where_the_usual_one_is_refused) {
  const auto& accounts = GetParam();
  TimeEntriesHouse house({}, Refuses("PayrollItemWageAddRq", 1, 3140));
  if (!accounts.first.empty()) house.Setting("GENERAL", "PayrollExpAcct", accounts.first);
  if (!accounts.second.empty()) house.Setting("GENERAL", "AC_EXPENSE_ACCOUNT", accounts.second);
  house.Add("Account", "<Name>Wages</Name><AccountType>Expense</AccountType>");
  house.Entry("T1");
  house.Entry("T2");
  house.Send();
  auto expected = FourItems();
  if (!accounts.used.empty()) {
    for (const auto& item : FourItems(accounts.used)) expected.push_back(item);
  }
  EXPECT_EQ(house.Requests("PayrollItemWageAddRq"), expected);
  EXPECT_EQ(LogText(house), RefusedItem(3140));
  EXPECT_EQ(house.IsSent("T1"), !accounts.used.empty());
  EXPECT_EQ(house.IsSent("T2"), !accounts.used.empty());
  EXPECT_EQ(Outcome(), accounts.used.empty() ? TableOk::False : TableOk::True);
  if (!accounts.used.empty()) {
    EXPECT_TRUE(house.BoxTexts().empty());
    return;
  }
  ASSERT_EQ(house.BoxTexts(), Texts{"Please Select An Account For Payroll Item Wages From the Sync Settings Screen"});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
}

INSTANTIATE_TEST_SUITE_P(WageItems, WageAccounts,
                         testing::Values(Accounts{"Absent", "", "", ""}, Accounts{"First", "Wages", "", "Wages"},
                                         Accounts{"Both", "Wages", "Rent", "Wages"},
                                         Accounts{"Second", "", "Wages", "Wages"},
                                         Accounts{"BlankFirst", "  ", "Wages", "Wages"},
                                         Accounts{"BlankBoth", "  ", " ", ""}),
                         [](const auto& test) { return test.param.name; });

TEST(WageItems, That_are_refused_a_second_time_end_the_table_without_a_box) {
  TimeEntriesHouse house({}, Refuses("PayrollItemWageAddRq", 1, 3140) + Refuses("PayrollItemWageAddRq", 5, 3180));
  house.Setting("GENERAL", "PayrollExpAcct", "Wages");
  house.Entry("T1");
  house.Send();
  EXPECT_EQ(LogText(house), RefusedItem(3140) + "\r\n" + RefusedItem(3180));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Requests("TimeTrackingAddRq").empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(WageItems, Whose_sending_fails_are_told_under_their_own_name_and_tried_with_the_other_account) {
  TimeEntriesHouse house({}, "DoRequests 1 raise 0x80040404 \"Broken.\"\n");
  house.Setting("GENERAL", "PayrollExpAcct", "Payroll Expenses");
  house.Entry("T1");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("Broken."), std::string::npos);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("AddPayrollItemWage"))) << house.BoxTexts()[0];
  EXPECT_EQ(house.Requests("PayrollItemWageAddRq").size(), 8U);
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- The item of an entry --------------------------------------------------------------------------------------------

// The kinds of time in the order in which the first that applies counts.
struct KindOfTime {
  std::string name;
  Columns columns;
  int entryType;
  std::string otherwise;
};

class KindsOfTime : public testing::TestWithParam<KindOfTime> {};

std::string ChoiceQuery(int entryType) {
  return fmt::format("SELECT PayrollItem FROM QBPayroll WHERE (EmployeeID = 'AL') AND (EntryType = {});", entryType);
}
Columns OfAnn(Columns columns) {
  columns["EmployeeID"] = "'AL'";
  return columns;
}

TEST_P(KindsOfTime, Have_the_employees_own_item_and_else_that_of_the_kind) {
  TimeEntriesHouse house;
  house.Setting("GENERAL", "DefaultPayrollItem", "Standard");
  const auto columns = OfAnn(GetParam().columns);
  EXPECT_EQ(house.ItemFor(columns), GetParam().otherwise);
  EXPECT_EQ(house.Statements("SELECT PayrollItem"), (Texts{ChoiceQuery(81), ChoiceQuery(GetParam().entryType)}));
  for (int type = 1; type <= 8; ++type) house.Choice(type, "Own" + std::to_string(type));
  EXPECT_EQ(house.ItemFor(columns), "Own" + std::to_string(GetParam().entryType));
}

TEST_P(KindsOfTime, Whose_choice_is_empty_or_can_not_be_read_have_the_item_of_the_kind) {
  TimeEntriesHouse house({}, Breaks(ChoiceQuery(GetParam().entryType), 2));
  house.Setting("GENERAL", "DefaultPayrollItem", "Standard");
  house.Choice(GetParam().entryType, "");
  EXPECT_EQ(house.ItemFor(OfAnn(GetParam().columns)), GetParam().otherwise);
  house.Sql("UPDATE QBPayroll SET PayrollItem = 'Own'");
  EXPECT_EQ(house.ItemFor(OfAnn(GetParam().columns)), GetParam().otherwise);
  EXPECT_EQ(house.ItemFor(OfAnn(GetParam().columns)), "Own");
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(
    PayrollItems, KindsOfTime,
    testing::Values(
        KindOfTime{"Vacation", {{"ActivityID", "'GEN:VAC'"}, {"TEOT", "-1"}, {"TEBill", "-1"}}, 5, "Vacation Hourly"},
        KindOfTime{"Sick", {{"ActivityID", "'GEN:SICK'"}, {"TEOT", "-1"}, {"TEBill", "-1"}}, 6, "Sick Hourly"},
        KindOfTime{"Holiday", {{"ActivityID", "'GEN:HOL'"}, {"TEOT", "-1"}, {"TEBill", "-1"}}, 7, "Standard"},
        KindOfTime{"CompIsNoKind", {{"ActivityID", "'GEN:COMP'"}, {"TEBill", "0"}}, 2, "Standard"},
        KindOfTime{"VacationInOtherCase", {{"ActivityID", "'Gen:Vac'"}, {"TEBill", "0"}}, 2, "Standard"},
        KindOfTime{"OvertimeBillable", {{"ActivityID", "'X:'"}, {"TEOT", "-1"}, {"TEBill", "-1"}}, 3, "Overtime Pay"},
        KindOfTime{"Overtime", {{"ActivityID", "'X:'"}, {"TEOT", "-1"}, {"TEBill", "0"}}, 4, "Overtime Pay"},
        KindOfTime{
            "OvertimeUndecided", {{"ActivityID", "'X:'"}, {"TEOT", "-1"}, {"TEBill", "NULL"}}, 4, "Overtime Pay"},
        KindOfTime{"RegularBillable", {{"ActivityID", "'X:'"}, {"TEOT", "0"}, {"TEBill", "-1"}}, 1, "Standard"},
        KindOfTime{"RegularBillableNoOvertime", {{"ActivityID", "'X:'"}, {"TEBill", "-1"}}, 1, "Standard"},
        KindOfTime{"Regular", {{"ActivityID", "'X:'"}, {"TEOT", "0"}, {"TEBill", "0"}}, 2, "Standard"},
        KindOfTime{"FlagOfOneIsNotTrue", {{"ActivityID", "'X:'"}, {"TEOT", "1"}, {"TEBill", "1"}}, 2, "Standard"},
        KindOfTime{"NothingKnown", {}, 2, "Standard"}),
    [](const auto& test) { return test.param.name; });

TEST(PayrollItems, Of_time_off_follow_the_codes_of_the_settings) {
  TimeEntriesHouse house;
  Vars().g_ActivityVac = "OFF:V";
  EXPECT_EQ(house.ItemFor(OfAnn({{"ActivityID", "'OFF:V'"}})), "Vacation Hourly");
  EXPECT_EQ(house.ItemFor(OfAnn({{"ActivityID", "'GEN:VAC'"}})), "Regular Pay");
}

class DefaultItems : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(DefaultItems, Are_Regular_Pay_unless_the_setting_names_one) {
  TimeEntriesHouse house;
  if (GetParam().first != "absent") house.Setting("GENERAL", "DefaultPayrollItem", GetParam().first);
  EXPECT_EQ(house.ItemFor(OfAnn({})), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(PayrollItems, DefaultItems,
                         testing::Values(std::pair{"absent", "Regular Pay"}, std::pair{"", "Regular Pay"},
                                         std::pair{"   ", "Regular Pay"}, std::pair{"Wages", "Wages"}),
                         [](const auto& test) { return "Case" + std::to_string(test.index); });

TEST(PayrollItems, A_default_that_can_not_be_read_is_Regular_Pay) {
  TimeEntriesHouse house({}, Breaks("SELECT ParamValue FROM TWSTable WHERE ParamName = 'GENERAL_DefaultPayrollItem'"));
  Vars().g_UseTWSTable = true;
  EXPECT_EQ(house.ItemFor(OfAnn({{"TEBill", "-1"}})), "Regular Pay");
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- Flags -----------------------------------------------------------------------------------------------------------

struct Flag {
  std::string name;
  std::string named;  // by the employee's row
  Columns columns;
  std::string special;  // the item of special entries; "-" for no row
  std::string item;
};

class FlaggedEntries : public testing::TestWithParam<Flag> {};

TEST_P(FlaggedEntries, Have_the_special_item_where_there_is_one) {
  TimeEntriesHouse house;
  if (GetParam().named != "-") house.Choice(81, GetParam().named);
  if (GetParam().special != "-") house.Choice(8, GetParam().special);
  house.Choice(3, "Own overtime");
  auto columns = OfAnn(GetParam().columns);
  columns["TEOT"] = "-1";
  columns["TEBill"] = "-1";
  EXPECT_EQ(house.ItemFor(columns), GetParam().item);
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(
    PayrollItems, FlaggedEntries,
    testing::Values(Flag{"First", "Flag1", {{"TEFlag1", "-1"}}, "Special", "Special"},
                    Flag{"Second", "Flag2", {{"TEFlag2", "-1"}}, "Special", "Special"},
                    Flag{"Third", "Flag3", {{"TEFlag3", "-1"}}, "Special", "Special"},
                    Flag{"AnotherFlag", "Flag1", {{"TEFlag2", "-1"}, {"TEFlag3", "-1"}}, "Special", "Own overtime"},
                    Flag{"NotTrue", "Flag2", {{"TEFlag2", "0"}}, "Special", "Own overtime"},
                    Flag{"One", "Flag2", {{"TEFlag2", "1"}}, "Special", "Own overtime"},
                    Flag{"Null", "Flag2", {{"TEFlag2", "NULL"}}, "Special", "Own overtime"},
                    Flag{"NoSpecialItem", "Flag2", {{"TEFlag2", "-1"}}, "-", "Own overtime"},
                    Flag{"EmptySpecialItem", "Flag2", {{"TEFlag2", "-1"}}, "", "Own overtime"},
                    Flag{"NoFlagNamed", "-", {{"TEFlag1", "-1"}}, "Special", "Own overtime"},
                    Flag{"FlagNotKnown", "Flag4", {{"TEFlag1", "-1"}}, "Special", "Own overtime"},
                    Flag{"FlagInOtherCase", "flag1", {{"TEFlag1", "-1"}}, "Special", "Own overtime"}),
    [](const auto& test) { return test.param.name; });

TEST(PayrollItems, A_flagged_entry_of_time_off_has_the_special_item_and_asks_no_further) {
  TimeEntriesHouse house;
  house.Choice(81, "Flag1");
  house.Choice(8, "Special");
  house.Choice(5, "Own vacation");
  EXPECT_EQ(house.ItemFor(OfAnn({{"ActivityID", "'GEN:VAC'"}, {"TEFlag1", "-1"}})), "Special");
  EXPECT_EQ(house.Statements("SELECT PayrollItem"), (Texts{ChoiceQuery(81), ChoiceQuery(8)}));
}

TEST(PayrollItems, The_choices_of_another_employee_do_not_count) {
  TimeEntriesHouse house;
  house.Choice(2, "Of Ann");
  EXPECT_EQ(house.ItemFor({{"EmployeeID", "'BOB'"}}), "Regular Pay");
}

}  // namespace
}  // namespace twqb
