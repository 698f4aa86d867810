// Which fields of a time entry go to QuickBooks, and in which shape.

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <random>

#include "tests/transactions/TimeEntriesHouse.h"

namespace twqb {
namespace {

TEST(TimeEntryFields, A_full_entry_has_every_field_at_its_place) {
  TimeEntriesHouse house;
  house.LinkAll();
  house.Sql("UPDATE Project SET QBClassID = 'C-1'");
  EXPECT_EQ(
      house.Fields({{"TEDate", "'2008-03-04'"},
                    {"TEHours", "1.5"},
                    {"aHours", "9"},
                    {"TEBill", "0"},
                    {"TEBillRate", "95.5"},
                    {"TEDescription", "'Plans & more'"},
                    {"TEMemo", "'Never sent'"},
                    {"EmployeeID", "'AL'"},
                    {"ProjectID", "'ROOF:'"},
                    {"ActivityID", "'DESIGN:'"}}),
      "<TxnDate>2008-03-04</TxnDate><EntityRef><ListID>E-1</ListID></EntityRef><CustomerRef><ListID>P-1</ListID>"
      "</CustomerRef><ItemServiceRef><ListID>A-1</ListID></ItemServiceRef><Duration>PT1H30M0S</Duration><ClassRef>"
      "<ListID>C-1</ListID></ClassRef><PayrollItemWageRef><FullName>Regular Pay</FullName></PayrollItemWageRef>"
      "<Notes>Plans &amp; more</Notes><IsBillable>false</IsBillable>");
}

TEST(TimeEntryFields, An_empty_entry_has_its_links_and_the_default_item_alone) {
  TimeEntriesHouse house;
  EXPECT_EQ(house.Fields({}),
            "<EntityRef><ListID>E-1</ListID></EntityRef><CustomerRef><ListID>P-1</ListID></CustomerRef><ItemServiceRef>"
            "<ListID>A-1</ListID></ItemServiceRef><PayrollItemWageRef><FullName>Regular Pay</FullName>"
            "</PayrollItemWageRef>");
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- Date ------------------------------------------------------------------------------------------------------------

class EntryDates : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(EntryDates, Before_1901_become_its_first_day) {
  TimeEntriesHouse house;
  EXPECT_EQ(house.Field({{"TEDate", GetParam().first}}, "TxnDate"), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(TimeEntryFields, EntryDates,
                         testing::Values(std::pair{"'1900-12-31'", "1901-01-01"},
                                         std::pair{"'1899-12-30'", "1901-01-01"},
                                         std::pair{"'1901-01-01'", "1901-01-01"},
                                         std::pair{"'1901-01-02'", "1901-01-02"},
                                         std::pair{"'2008-02-29 23:59:59'", "2008-02-29"}, std::pair{"NULL", "(none)"}),
                         [](const auto& test) { return "Case" + std::to_string(test.index); });

// --- Duration --------------------------------------------------------------------------------------------------------

class Durations : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(Durations, Are_truncated_and_never_longer_than_a_day) {
  TimeEntriesHouse house;
  EXPECT_EQ(house.Field({{"TEHours", GetParam().first}}, "Duration"), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(TimeEntryFields, Durations,
                         testing::Values(std::pair{"7.75", "PT7H45M0S"}, std::pair{"25", "PT24H0M0S"},
                                         std::pair{"24", "PT24H0M0S"}, std::pair{"24.001", "PT24H0M0S"},
                                         std::pair{"0", "PT0H0M0S"}, std::pair{"1000", "PT24H0M0S"},
                                         // As doubles have it: a second, or a minute, may be missing.
                                         std::pair{"1.1", "PT1H6M0S"}, std::pair{"3.3", "PT3H17M59S"},
                                         std::pair{"1.1 + 2.2", "PT3H18M0S"}, std::pair{"0.0002", "PT0H0M0S"},
                                         std::pair{"2.516389", "PT2H30M59S"}, std::pair{"NULL", "(none)"}),
                         [](const auto& test) { return "Case" + std::to_string(test.index); });

TEST(TimeEntryFields, Any_duration_is_what_its_double_says_and_has_no_minute_or_second_above_59) {
  TimeEntriesHouse house;
  std::mt19937_64 numbers(20080305);
  const auto check = [&](double hours) {
    char text[64];
    const auto end = std::to_chars(std::begin(text), std::end(text), hours, std::chars_format::scientific).ptr;
    const auto sent = messages::ParseTimeInterval(house.Field({{"TEHours", std::string(text, end)}}, "Duration"));
    ASSERT_TRUE(sent) << hours;
    const auto wholeHours = static_cast<std::int64_t>(hours);
    const double minutes = (hours - static_cast<double>(wholeHours)) * 60;
    const auto wholeMinutes = static_cast<std::int64_t>(minutes);
    const double seconds = (minutes - static_cast<double>(wholeMinutes)) * 60;
    EXPECT_EQ(sent->hours, wholeHours) << std::string(text, end);
    EXPECT_EQ(sent->minutes, wholeMinutes) << std::string(text, end);
    EXPECT_EQ(sent->seconds, static_cast<std::int64_t>(seconds)) << std::string(text, end);
    EXPECT_LE(sent->minutes, 59);
    EXPECT_LE(sent->seconds, 59);
  };
  std::uniform_real_distribution<double> anyHours(0, 24);
  for (int i = 0; i < 300; ++i) check(anyHours(numbers));
  // The neighbours of whole minutes, where truncation shows.
  for (int i = 0; i < 150; ++i) {
    const double minute = static_cast<double>(numbers() % 1440) / 60;
    check(minute);
    check(std::nextafter(minute, 24.0));
    if (minute > 0) check(std::nextafter(minute, 0.0));
  }
}

struct HoursColumn {
  std::string setting;
  std::string duration;
};

class HoursColumns : public testing::TestWithParam<HoursColumn> {};

TEST_P(HoursColumns, Are_chosen_by_the_setting_alone) {
  TimeEntriesHouse house;
  if (GetParam().setting != "absent") house.Switch("_chkAhrs", GetParam().setting);
  EXPECT_EQ(house.Field({{"TEHours", "2"}, {"aHours", "3"}}, "Duration"), GetParam().duration);
}

INSTANTIATE_TEST_SUITE_P(TimeEntryFields, HoursColumns,
                         testing::Values(HoursColumn{"absent", "PT2H0M0S"}, HoursColumn{"0", "PT2H0M0S"},
                                         HoursColumn{"1", "PT3H0M0S"}, HoursColumn{"True", "PT2H0M0S"}),
                         [](const auto& test) { return "Setting_" + test.param.setting; });

TEST(TimeEntryFields, Other_hours_that_are_missing_are_not_filled_from_the_usual_ones) {
  TimeEntriesHouse house;
  house.Switch("_chkAhrs");
  EXPECT_EQ(house.Field({{"TEHours", "2"}}, "Duration"), "(none)");
}

TEST(TimeEntryFields, Entries_without_hours_go_out_without_a_duration) {
  TimeEntriesHouse house({.answers = "yes"});
  house.Entry("T1", {{"TEHours", "NULL"}});
  house.Send();
  const auto sent = house.Requests("TimeTrackingAddRq");
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].find("Duration"), std::string::npos);
  EXPECT_TRUE(house.Log().empty());
  // QuickBooks wants one.
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("\"Duration\""), std::string::npos);
}

TEST(TimeEntryFields, Negative_hours_leave_an_empty_duration) {
  for (const std::string hours : {"-1", "-0.001", "-25"}) {
    TimeEntriesHouse house;
    EXPECT_EQ(house.Assigned({{"TEHours", hours}}, "Duration"), "") << hours;
  }
}

// --- Class -----------------------------------------------------------------------------------------------------------

struct Classes {
  std::string name;
  std::string ofProject;
  std::string ofActivity;
  std::string failing;
  std::string sent;
};

class EntryClasses : public testing::TestWithParam<Classes> {};

TEST_P(EntryClasses, Are_the_projects_and_else_the_activitys) {
  const auto& classes = GetParam();
  TimeEntriesHouse house({}, classes.failing.empty() ? "" : Breaks("SELECT QBClassID FROM " + classes.failing));
  house.LinkAll();
  house.Sql("UPDATE Project SET QBClassID = " + classes.ofProject);
  house.Sql("UPDATE Activity SET QBClassID = " + classes.ofActivity);
  const auto fields = house.Fields({{"TEHours", "1"}});
  const auto at = fields.find("<ClassRef>");
  EXPECT_EQ(at == std::string::npos ? "(none)" : SpiedHouse::TextOf(fields.substr(at), "ListID"), classes.sent);
  EXPECT_NE(fields.find("<PayrollItemWageRef>"), std::string::npos);
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(TimeEntryFields, EntryClasses,
                         testing::Values(Classes{"Both", "'C-P'", "'C-A'", "", "C-P"},
                                         Classes{"OfProject", "'C-P'", "NULL", "", "C-P"},
                                         Classes{"OfActivity", "NULL", "'C-A'", "", "C-A"},
                                         Classes{"EmptyOfProject", "''", "'C-A'", "", "C-A"},
                                         Classes{"Neither", "NULL", "''", "", "(none)"},
                                         Classes{"ProjectBroken", "'C-P'", "'C-A'", "Project", "C-A"},
                                         Classes{"ActivityBroken", "NULL", "'C-A'", "Activity", "(none)"}),
                         [](const auto& test) { return test.param.name; });

TEST(TimeEntryFields, Classes_are_asked_for_by_the_links) {
  TimeEntriesHouse house;
  (void)house.Fields({});
  EXPECT_EQ(house.Statements("SELECT QBClassID"), (Texts{"SELECT QBClassID FROM Project WHERE QBLinkID = 'P-1';",
                                                         "SELECT QBClassID FROM Activity WHERE QBLinkID = 'A-1';"}));
}

TEST(TimeEntryFields, The_activitys_class_is_not_asked_for_where_the_project_has_one) {
  TimeEntriesHouse house;
  house.LinkAll();
  house.Sql("UPDATE Project SET QBClassID = 'C-1'");
  (void)house.Fields({});
  EXPECT_EQ(house.Statements("SELECT QBClassID"), Texts{"SELECT QBClassID FROM Project WHERE QBLinkID = 'P-1';"});
}

// --- Billable and rate -----------------------------------------------------------------------------------------------

TEST(TimeEntryFields, The_billable_flag_goes_when_there_is_one) {
  TimeEntriesHouse house;
  EXPECT_EQ(house.Field({{"TEBill", "-1"}}, "IsBillable"), "true");
  EXPECT_EQ(house.Field({{"TEBill", "0"}}, "IsBillable"), "false");
  EXPECT_EQ(house.Field({}, "IsBillable"), "(none)");
}

struct RateCase {
  std::int16_t version;
  std::string rate;
  std::string set;
};

class EntryRates : public testing::TestWithParam<RateCase> {};

TEST_P(EntryRates, Are_set_from_version_3_on_and_never_on_the_wire) {
  TimeEntriesHouse house;
  Vars().g_QBMajorVer = GetParam().version;
  EXPECT_EQ(house.Assigned({{"TEBillRate", GetParam().rate}}, "Rate"), GetParam().set);
  EXPECT_EQ(house.Field({{"TEBillRate", GetParam().rate}}, "Rate"), "(none)");
}

INSTANTIATE_TEST_SUITE_P(TimeEntryFields, EntryRates,
                         testing::Values(RateCase{1, "95.5", "(none)"}, RateCase{2, "95.5", "(none)"},
                                         RateCase{3, "95.5", "95.5"}, RateCase{4, "0", "0"},
                                         RateCase{3, "NULL", "(none)"}),
                         [](const auto& test) {
                           return "Version" + std::to_string(test.param.version) + "_" + std::to_string(test.index);
                         });

// --- Notes -----------------------------------------------------------------------------------------------------------

struct Notes {
  std::string name;
  std::string setting;
  std::string memo;
  std::string description;
  std::string sent;
};

class EntryNotes : public testing::TestWithParam<Notes> {};

TEST_P(EntryNotes, Are_the_description_or_where_the_setting_is_on_the_memo_as_plain_text) {
  TimeEntriesHouse house;
  house.Switch("_MapTENotes", GetParam().setting);
  house.Entry("T1", {{"TEMemo", GetParam().memo}, {"TEDescription", GetParam().description}});
  house.Send();
  const auto sent = house.Requests("TimeTrackingAddRq");
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(SpiedHouse::TextOf(sent[0], "Notes"), GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(
    TimeEntryFields, EntryNotes,
    testing::Values(Notes{"Off", "0", "'Memo'", "'Text'", "Text"},
                    Notes{"OffWithoutText", "0", "'Memo'", "NULL", "(none)"},
                    Notes{"On", "1", "'Memo'", "'Text'", "Memo"}, Notes{"OnWithoutMemo", "1", "NULL", "'Text'", "Text"},
                    Notes{"OnWithEmptyMemo", "1", "''", "'Text'", ""},
                    Notes{"OffWithEmptyText", "0", "'Memo'", "''", ""},
                    Notes{"OnWithNeither", "1", "NULL", "NULL", "(none)"},
                    Notes{"OnRich", "1", R"('{\rtf1\ansi\b Long\b0  note}')", "'Text'", "Long note"},
                    Notes{"OffRich", "0", "NULL", R"('{\rtf1 Kept}')", R"({\rtf1 Kept})"}),
    [](const auto& test) { return test.param.name; });

TEST(TimeEntryFields, A_note_goes_uncut_and_one_that_is_too_long_is_for_QuickBooks_to_refuse) {
  TimeEntriesHouse house({.answers = "yes"});
  house.Switch("_MapTENotes");
  const std::string note(5000, 'x');
  house.Entry("T1", {{"TEMemo", "'" + note + "'"}});
  house.Send();
  const auto sent = house.Requests("TimeTrackingAddRq");
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(SpiedHouse::TextOf(sent[0], "Notes"), note);
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(
      house.BoxTexts()[0].starts_with("QuickBooks has reported the following error:\r\n\r\nError Code: 3070\r\n"));
}

TEST(TimeEntryFields, The_setting_of_notes_is_read_anew_for_every_run) {
  TimeEntriesHouse house;
  house.Switch("_MapTENotes");
  house.Entry("T1", {{"TEMemo", "'Memo'"}});
  house.Send();
  house.Switch("_MapTENotes", "0");
  house.Entry("T2", {{"TEMemo", "'Memo'"}});
  house.Send();
  const auto sent = house.Requests("TimeTrackingAddRq");
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_EQ(SpiedHouse::TextOf(sent[0], "Notes"), "Memo");
  EXPECT_EQ(SpiedHouse::TextOf(sent[1], "Notes"), "Drawing");
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(TimeEntryFields, A_value_that_can_not_be_read_is_told_and_leaves_what_was_set_until_then) {
  TimeEntriesHouse house;
  EXPECT_EQ(house.Fields({{"TEDate", "'2008-03-04'"}, {"TEHours", "'many'"}, {"TEBill", "-1"}}),
            "<TxnDate>2008-03-04</TxnDate><EntityRef><ListID>E-1</ListID></EntityRef><CustomerRef><ListID>P-1</ListID>"
            "</CustomerRef><ItemServiceRef><ListID>A-1</ListID></ItemServiceRef>");
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("QBAssignTimeTrackingFldValues"))) << house.BoxTexts()[0];
}

TEST(TimeEntryFields, A_setting_of_hours_that_can_not_be_read_is_told_under_the_name_of_the_routine) {
  TimeEntriesHouse house({},
                         Breaks("SELECT ParamValue FROM TWSTable WHERE ParamName = 'QBSEND__Time Entries_chkAhrs'"));
  Vars().g_UseTWSTable = true;
  EXPECT_EQ(house.Fields({{"TEHours", "1"}}), "");
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("QBAssignTimeTrackingFldValues")});
}

}  // namespace
}  // namespace twqb
