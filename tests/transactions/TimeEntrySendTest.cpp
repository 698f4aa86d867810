// The send of time entries: which go, links of what they refer to, write-back, progress, call-back, errors.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/transactions/TimeEntriesHouse.h"

namespace twqb {
namespace {

// --- What goes -------------------------------------------------------------------------------------------------------

TEST(TimeEntrySend, A_new_entry_is_added_in_a_document_of_its_own_and_its_link_and_date_are_written_back) {
  TimeEntriesHouse house;
  house.Entry("T1");
  house.Entry("T2", {{"TEDate", "'2008-03-05'"}});
  house.Send();
  const auto sent = house.Requests("TimeTrackingAddRq");
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_EQ(sent[0], "<TimeTrackingAdd><TxnDate>2008-03-04</TxnDate><EntityRef><ListID>" + house.employee +
                         "</ListID></EntityRef><CustomerRef><ListID>" + house.job +
                         "</ListID></CustomerRef><ItemServiceRef><ListID>" + house.item +
                         "</ListID></ItemServiceRef><Duration>PT1H0M0S</Duration><PayrollItemWageRef><FullName>Regular "
                         "Pay</FullName></PayrollItemWageRef><Notes>Drawing</Notes><IsBillable>true</IsBillable>"
                         "</TimeTrackingAdd>");
  for (const auto& document : house.traffic.documents) {
    EXPECT_LE(SpiedHouse::RequestsOf(document, "TimeTrackingAddRq").size(), 1U);
  }
  const auto link = house.LinkOf("T1");
  EXPECT_NE(link, house.LinkOf("T2"));
  EXPECT_EQ(house.Statements("UPDATE "),
            (Texts{"UPDATE TimeEntry SET QBLinkID = '" + link + "' WHERE TEID = 'T1';",
                   "UPDATE TimeEntry SET LastUpdated = '03/05/2008 15:00:00' WHERE TEID = 'T1';",
                   "UPDATE TimeEntry SET QBLinkID = '" + house.LinkOf("T2") + "' WHERE TEID = 'T2';",
                   "UPDATE TimeEntry SET LastUpdated = '03/05/2008 15:00:00' WHERE TEID = 'T2';"}));
  EXPECT_EQ(Vars().g_NewQBLinkID, house.LinkOf("T2"));
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(TimeEntrySend, An_entry_that_has_a_date_keeps_it) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"LastUpdated", "'2008-01-02 03:04:05'"}});
  house.Send();
  EXPECT_EQ(house.Statements("UPDATE "),
            Texts{"UPDATE TimeEntry SET QBLinkID = '" + house.LinkOf("T1") + "' WHERE TEID = 'T1';"});
  EXPECT_EQ(house.ColumnOf("T1", "LastUpdated"), "1/2/2008 3:04:05 AM");
}

TEST(TimeEntrySend, With_no_selected_rows_it_ends_well_and_shows_nothing) {
  TimeEntriesHouse house;
  house.Send();
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.traffic.documents.empty());
}

class Posted : public testing::TestWithParam<std::pair<std::string, bool>> {};

TEST_P(Posted, Entries_alone_go_and_the_others_stay_without_any_mark) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"TEPosted", GetParam().first}});
  house.Send();
  EXPECT_EQ(house.IsSent("T1"), GetParam().second);
  EXPECT_EQ(house.ColumnOf("T1", "LastUpdated") != "NULL", GetParam().second);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

INSTANTIATE_TEST_SUITE_P(TimeEntrySend, Posted,
                         testing::Values(std::pair{"-1", true}, std::pair{"0", false}, std::pair{"1", false},
                                         std::pair{"NULL", false}),
                         [](const auto& test) {
                           const auto& value = test.param.first;
                           return value == "-1" ? std::string("MinusOne") : "Value_" + value;
                         });

struct CompTime {
  std::string name;
  std::string setting;
  std::string amount;
  bool goes;
};

class CompTimeEntries : public testing::TestWithParam<CompTime> {};

TEST_P(CompTimeEntries, Stay_where_the_setting_is_on_and_are_sent_like_any_other_where_it_is_off) {
  TimeEntriesHouse house;
  house.Switch("_chkCompTime", GetParam().setting);
  house.Entry("T1", {{"TECompTime", GetParam().amount}});
  house.Send();
  EXPECT_EQ(house.IsSent("T1"), GetParam().goes);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.desk.FormEvents().back().state.record, GetParam().goes ? "AL, 3/4/2008" : "Label1");
}

INSTANTIATE_TEST_SUITE_P(
    TimeEntrySend, CompTimeEntries,
    testing::Values(CompTime{"OffAndSome", "0", "2.5", true}, CompTime{"OnAndNull", "1", "NULL", true},
                    CompTime{"OnAndZero", "1", "0", true}, CompTime{"OnAndSome", "1", "2.5", false},
                    CompTime{"OnAndALittle", "1", "0.25", false}, CompTime{"OnAndFlag", "1", "-1", false},
                    CompTime{"NegativeSetting", "-1", "2.5", true}, CompTime{"HalfASetting", "0.5", "2.5", false},
                    CompTime{"NoNumber", "True", "2.5", true}),
    [](const auto& test) { return test.param.name; });

TEST(TimeEntrySend, The_comp_activity_takes_no_part_in_what_goes) {
  TimeEntriesHouse house;
  house.Activity("GEN:COMP", house.item);
  house.Switch("_chkCompTime");
  house.Entry("T1", {{"ActivityID", "'GEN:COMP'"}});
  house.Send();
  EXPECT_TRUE(house.IsSent("T1"));
}

// --- Links of its own ------------------------------------------------------------------------------------------------

// The selection leaves linked entries out, unless they are named.
void SendNamed(TimeEntriesHouse& house) { house.SendSelection("SELECT * FROM TimeEntry ORDER BY TEID"); }

TEST(TimeEntrySend, An_entry_that_QuickBooks_holds_is_not_sent_again_and_is_no_failure) {
  TimeEntriesHouse house;
  const auto id = house.Track(house.job);
  house.Entry("T1", {{"QBLinkID", "'" + id + "'"}});
  house.Entry("T2");
  SendNamed(house);
  EXPECT_EQ(house.Requests("TimeTrackingQueryRq"), Texts{"<TxnID>" + id + "</TxnID>"});
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
  EXPECT_EQ(house.LinkOf("T1"), id);
  EXPECT_TRUE(house.IsSent("T2"));
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(TimeEntrySend, A_stale_link_is_overwritten_with_that_of_the_new_transaction) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"QBLinkID", "'FFF-1'"}, {"LastUpdated", "'2008-01-02 03:04:05'"}});
  SendNamed(house);
  EXPECT_EQ(house.Requests("TimeTrackingQueryRq"), Texts{"<TxnID>FFF-1</TxnID>"});
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
  EXPECT_NE(house.LinkOf("T1"), "FFF-1");
  EXPECT_EQ(house.ColumnOf("T1", "LastUpdated"), "1/2/2008 3:04:05 AM");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(TimeEntrySend, An_empty_link_is_none_and_nobody_asks_for_it) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"QBLinkID", "''"}});
  house.Send();
  EXPECT_TRUE(house.Requests("TimeTrackingQueryRq").empty());
  EXPECT_TRUE(house.IsSent("T1"));
}

TEST(TimeEntrySend, A_twin_that_can_not_be_read_counts_as_none) {
  TimeEntriesHouse house({}, Refuses("TimeTrackingQueryRq", 1, 3000));
  const auto id = house.Track(house.job);
  house.Entry("T1", {{"QBLinkID", "'" + id + "'"}});
  SendNamed(house);
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
  EXPECT_NE(house.LinkOf("T1"), id);
  EXPECT_EQ(house.BoxTexts().size(), 1U);  // the reader's own
}

// --- Links of what it refers to --------------------------------------------------------------------------------------

const std::string kProjectLook = "SELECT QBLinkID, ProjectID FROM Project WHERE ProjectID = 'ROOF:';";
const std::string kEmployeeLook = "SELECT QBLinkID, EmployeeID FROM Employee WHERE EmployeeID = 'AL';";
const std::string kActivityLook = "SELECT QBLinkID, ActivityID FROM Activity WHERE ActivityID = 'DESIGN:';";

TEST(TimeEntrySend, Links_are_looked_up_of_project_then_employee_then_activity) {
  TimeEntriesHouse house;
  house.Entry("T1");
  house.Send();
  EXPECT_EQ(house.Statements("SELECT QBLinkID, "), (Texts{kProjectLook, kEmployeeLook, kActivityLook}));
}

struct Missing {
  std::string table;
  std::string key;
  std::string link;  // as an SQL expression; "raise" where the look-up itself fails
  Texts looks;
};

class MissingLinks : public testing::TestWithParam<Missing> {};

TEST_P(MissingLinks, Pass_the_entry_over_without_a_request_and_end_the_looking_up) {
  const auto& missing = GetParam();
  const bool fails = missing.link == "raise";
  TimeEntriesHouse house({}, fails ? Breaks("SELECT QBLinkID, " + missing.table + "ID") : "");
  if (!fails) {
    house.Sql("UPDATE " + missing.table + " SET QBLinkID = " + missing.link + " WHERE " + missing.table + "ID = '" +
              missing.key + "'");
  }
  house.Entry("T1");
  house.Send();
  EXPECT_EQ(house.Statements("SELECT QBLinkID, "), missing.looks);
  EXPECT_TRUE(house.Requests("TimeTrackingAddRq").empty());
  EXPECT_EQ(house.LinkOf("T1"), "NULL");
  EXPECT_EQ(house.ColumnOf("T1", "LastUpdated"), "NULL");
  EXPECT_EQ(house.BoxTexts(), Texts{kSomeLeftBehind});
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

INSTANTIATE_TEST_SUITE_P(
    TimeEntrySend, MissingLinks,
    testing::Values(Missing{"Project", "ROOF:", "NULL", {kProjectLook}},
                    Missing{"Project", "ROOF:", "''", {kProjectLook}},
                    Missing{"Project", "ROOF:", "raise", {kProjectLook}},
                    Missing{"Employee", "AL", "NULL", {kProjectLook, kEmployeeLook}},
                    Missing{"Employee", "AL", "''", {kProjectLook, kEmployeeLook}},
                    Missing{"Employee", "AL", "raise", {kProjectLook, kEmployeeLook}},
                    Missing{"Activity", "DESIGN:", "NULL", {kProjectLook, kEmployeeLook, kActivityLook}},
                    Missing{"Activity", "DESIGN:", "''", {kProjectLook, kEmployeeLook, kActivityLook}},
                    Missing{"Activity", "DESIGN:", "raise", {kProjectLook, kEmployeeLook, kActivityLook}}),
    [](const auto& test) {
      const auto& link = test.param.link;
      return test.param.table + "_" + (link == "NULL" ? "Null" : link == "raise" ? "Broken" : "Empty");
    });

// Keys stand in the statements as they are.
TEST(TimeEntrySend, An_employee_with_an_apostrophe_in_the_key_can_not_be_looked_up) {
  TimeEntriesHouse house;
  house.Sql("INSERT INTO Employee (EmployeeID, QBLinkID) VALUES ('O''NEIL', '" + house.employee + "')");
  house.Entry("T1", {{"EmployeeID", "'O''NEIL'"}});
  house.Entry("T2");
  house.Send();
  EXPECT_FALSE(house.IsSent("T1"));
  EXPECT_TRUE(house.IsSent("T2"));
  EXPECT_EQ(house.BoxTexts(), Texts{kSomeLeftBehind});
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(TimeEntrySend, Employees_without_a_link_are_told_once_at_the_end_whatever_their_number) {
  TimeEntriesHouse house;
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('BOB')");
  house.Entry("T1", {{"EmployeeID", "'BOB'"}});
  house.Entry("T2");
  house.Entry("T3", {{"EmployeeID", "'BOB'"}});
  house.Entry("T4");
  house.Send();
  EXPECT_TRUE(house.IsSent("T2"));
  EXPECT_TRUE(house.IsSent("T4"));
  EXPECT_FALSE(house.IsSent("T1") || house.IsSent("T3"));
  ASSERT_EQ(house.BoxTexts(), Texts{kSomeLeftBehind});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Message");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

// --- Negative hours --------------------------------------------------------------------------------------------------

TEST(TimeEntrySend, A_negative_entry_is_logged_and_passed_over_without_a_box_and_is_no_failure) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"TEHours", "-1"}});
  house.Entry("T2");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"QuickBooks does not support negative time entry. Data = ROOF:,DESIGN:,AL"});
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
  EXPECT_FALSE(house.IsSent("T1"));
  EXPECT_TRUE(house.IsSent("T2"));
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(TimeEntrySend, A_negative_entry_at_the_end_leaves_a_good_outcome) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"TEHours", "-0.01"}});
  house.Send();
  EXPECT_EQ(house.Log().size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- On the way ------------------------------------------------------------------------------------------------------

TEST(TimeEntrySend, The_form_shows_employee_and_date_of_each_entry_that_is_counted) {
  TimeEntriesHouse house;
  house.Entry("T1", {{"TEPosted", "0"}});
  house.Entry("T2", {{"TEHours", "-1"}});
  house.Entry("T3", {{"TEDate", "NULL"}});
  house.Send();
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Time Records to QuickBooks..."});
  Texts shown;
  for (const auto& event : house.desk.FormEvents()) {
    if (shown.empty() || shown.back() != event.state.record) shown.push_back(event.state.record);
  }
  EXPECT_EQ(shown, (Texts{"Label1", "AL, 3/4/2008", "AL, "}));
  EXPECT_EQ(house.desk.FormEvents().back().kind, FormEventKind::Unload);
}

TEST(TimeEntrySend, Without_a_bar_nothing_is_shown) {
  TimeEntriesHouse house;
  Vars().g_NoProgressBar = true;
  house.Entry("T1");
  house.Send();
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(TimeEntrySend, A_form_that_can_not_show_an_entry_is_in_nobodys_way) {
  TimeEntriesHouse house({}, "form 1 raise 5 \"No form.\" update");
  house.Entry("T1");
  house.Send();
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(TimeEntrySend, Cancel_ends_the_run_behind_the_entry_in_hand) {
  TimeEntriesHouse house({.answers = "cancel after 1\nyes"});
  house.Entry("T1");
  house.Entry("T2");
  house.Send();
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_FALSE(house.IsSent("T2"));
  ASSERT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_EQ(house.desk.Boxes()[1].box.icon, BoxIcon::None);
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_FALSE(house.desk.Form());
}

TEST(TimeEntrySend, A_cancelled_run_tells_what_was_left_behind_too) {
  TimeEntriesHouse house({.answers = "cancel after 1\nyes"});
  house.Sql("UPDATE Activity SET QBLinkID = NULL");
  house.Entry("T1");
  house.Entry("T2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled, kSomeLeftBehind}));
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- The call-back ---------------------------------------------------------------------------------------------------

TEST(TimeEntrySend, The_call_back_hears_mode_2_and_the_identifier_of_each_transaction) {
  TimeEntriesHouse house;
  Vars().g_IsSubscribed = true;
  house.Entry("T1");
  house.Entry("T2", {{"TEPosted", "0"}});
  house.Send();
  EXPECT_EQ(house.callback.Events(),
            (std::vector<CallbackEvent>{2, std::string(), house.LinkOf("T1"), 2, std::string()}));
}

enum class Silence : std::uint8_t { NotSubscribed, Held, Version2 };

class SilentCallback : public testing::TestWithParam<Silence> {};

TEST_P(SilentCallback, Hears_nothing) {
  TimeEntriesHouse house;
  Vars().g_IsSubscribed = GetParam() != Silence::NotSubscribed;
  Vars().g_CallbackHeld = GetParam() == Silence::Held;
  if (GetParam() == Silence::Version2) Vars().g_QBMajorVer = 2;
  house.Entry("T1");
  house.Send();
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_TRUE(house.callback.Events().empty());
}

std::string SilenceName(const testing::TestParamInfo<Silence>& test) {
  switch (test.param) {
    case Silence::NotSubscribed:
      return "NotSubscribed";
    case Silence::Held:
      return "Held";
    case Silence::Version2:
      return "Version2";
  }
  return {};
}

INSTANTIATE_TEST_SUITE_P(TimeEntrySend, SilentCallback,
                         testing::Values(Silence::NotSubscribed, Silence::Held, Silence::Version2), SilenceName);

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(TimeEntrySend, An_error_ends_the_run_with_its_box_and_the_entry_in_the_log) {
  TimeEntriesHouse house({}, Breaks("UPDATE TimeEntry SET QBLinkID"));
  house.Entry("T1");
  house.Entry("T2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MoveTimeEntryToQB")});
  EXPECT_EQ(house.Log(), Texts{"Error transfering time entry. Data = ROOF:,DESIGN:,AL"});
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST(TimeEntrySend, A_request_that_can_not_be_sent_is_an_error_and_the_entry_keeps_no_link) {
  TimeEntriesHouse house({}, "DoRequests 3 raise 0x80040404 \"Broken.\"\n");
  house.Entry("T1");
  house.Entry("T2");
  house.Entry("T3");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveTimeEntryToQB"))) << house.BoxTexts()[0];
  EXPECT_EQ(house.Log(), Texts{"Error transfering time entry. Data = ROOF:,DESIGN:,AL"});
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_FALSE(house.IsSent("T2") || house.IsSent("T3"));
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(TimeEntrySend, An_error_behind_entries_that_were_left_behind_does_not_tell_of_them) {
  TimeEntriesHouse house({}, Breaks("UPDATE TimeEntry SET QBLinkID"));
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('BOB')");
  house.Entry("T1", {{"EmployeeID", "'BOB'"}});
  house.Entry("T2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MoveTimeEntryToQB")});
  EXPECT_EQ(house.Log(), Texts{"Error transfering time entry. Data = ROOF:,DESIGN:,AL"});
}

TEST(TimeEntrySend, An_entry_whose_write_back_was_lost_is_added_twice) {
  TimeEntriesHouse house({}, Breaks("UPDATE TimeEntry SET QBLinkID"));
  house.Entry("T1");
  house.Send();
  EXPECT_FALSE(house.IsSent("T1"));
  house.Send();
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 2U);
  const auto all = house.Company("<TimeTrackingQueryRq></TimeTrackingQueryRq>");
  std::size_t count = 0;
  for (auto at = all.find("<TimeTrackingRet>"); at != std::string::npos; at = all.find("<TimeTrackingRet>", at + 1))
    ++count;
  EXPECT_EQ(count, 2U);
}

TEST(TimeEntrySend, An_error_ahead_of_the_first_row_has_no_entry_to_tell_of) {
  TimeEntriesHouse house({}, Breaks("SELECT TEID"));
  house.Entry("T1");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MoveTimeEntryToQB")});
  EXPECT_EQ(house.Log(), Texts{"Error transfering time entry. Data = ,,"});
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- Countries -------------------------------------------------------------------------------------------------------

class EntriesOfACountry : public testing::TestWithParam<std::string> {};

TEST_P(EntriesOfACountry, Go_and_are_linked) {
  TimeEntriesHouse house({}, {}, GetParam());
  house.Entry("T1", {{"TEHours", "7.75"}});
  house.Send();
  ASSERT_TRUE(house.IsSent("T1"));
  const auto record = house.Company(
      "<TimeTrackingQueryRq><TxnID>" + house.LinkOf("T1") + "</TxnID></TimeTrackingQueryRq>", ListHouse::Tag());
  EXPECT_EQ(SpiedHouse::TextOf(record, "Duration"), "PT7H45M0S");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(TimeEntrySend, EntriesOfACountry, testing::Values("US", "CA", "UK"),
                         [](const auto& test) { return test.param; });

// --- Activity codes --------------------------------------------------------------------------------------------------

TEST(TimeEntrySend, The_codes_of_time_off_are_read_anew_ahead_of_every_send) {
  TimeEntriesHouse house;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('ACTIVITY_VAC', 'OFF:')");
  house.Send();
  EXPECT_EQ(Vars().g_ActivityVac, "OFF:");
  EXPECT_EQ(Vars().g_ActivitySick, "GEN:SICK");
  EXPECT_EQ(house.Statements("SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_"),
            (Texts{"SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_COMP'",
                   "SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_HOL'",
                   "SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_SICK'",
                   "SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_VAC'"}));
  house.Sql("DELETE FROM TWSTable");
  house.Send();
  EXPECT_EQ(Vars().g_ActivityVac, "GEN:VAC");
}

TEST(TimeEntrySend, Codes_that_can_not_be_read_are_the_built_in_ones) {
  TimeEntriesHouse house({}, Breaks("SELECT ParamValue FROM TWSTable WHERE ParamName = 'ACTIVITY_HOL'"));
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('ACTIVITY_HOL', 'FREE:')");
  house.Entry("T1");
  house.Send();
  EXPECT_EQ(Vars().g_ActivityHol, "GEN:HOL");
  EXPECT_TRUE(house.IsSent("T1"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

}  // namespace
}  // namespace twqb
