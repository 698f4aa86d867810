// The send of activities: twins, the version that can't modify items, refusals, names in use, settings that fail.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/lists/ActivitiesHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kPrompt = "Do you want to transfer rest of the records?";
const std::string kCancelled = "Operation cancelled!";

std::string Refused(std::string_view message, int status) {
  return RefusalText(message, status, "Error") + "\r\n\r\n[Activity ID = \"DESIGN:\"]";
}
std::string Fault(std::string_view request, int which, int status) {
  return std::string(request) + " " + std::to_string(which) + " status " + std::to_string(status) + " Error \"No.\"\n";
}

// --- Adding ----------------------------------------------------------------------------------------------------------

TEST(ActivitySend, A_new_activity_becomes_an_item_and_its_link_and_date_are_written_back) {
  ActivitiesHouse house;
  house.Activity("DESIGN:Plans");
  house.traffic.statements.clear();
  house.Send();
  const auto id = house.ItemId("DESIGN Plans");
  ASSERT_EQ(house.traffic.statements.size(), 3U);
  EXPECT_EQ(house.traffic.statements[1],
            "UPDATE Activity SET QBLinkID = '" + id + "' WHERE ActivityID = 'DESIGN:Plans';");
  EXPECT_EQ(house.traffic.statements[2],
            "UPDATE Activity SET LastUpdated = '03/05/2008 15:00:00' WHERE ActivityID = 'DESIGN:Plans';");
  EXPECT_EQ(house.ColumnOf("DESIGN:Plans", "QBLinkID"), id);
  EXPECT_EQ(house.ColumnOf("DESIGN:Plans", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(Vars().g_NewQBLinkID, id);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Activities to QuickBooks..."});
  EXPECT_EQ(house.desk.FormEvents().back().state.record, "DESIGN:Plans");
}

TEST(ActivitySend, A_new_activity_that_has_a_date_keeps_it) {
  ActivitiesHouse house;
  house.Activity("DESIGN:", "LastUpdated", "'2008-01-02 03:04:05'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("DESIGN:", "LastUpdated"), "1/2/2008 3:04:05 AM");
}

TEST(ActivitySend, An_item_that_QuickBooks_deleted_is_added_again_under_a_new_link) {
  ActivitiesHouse house;
  house.Activity("DESIGN:", "QBLinkID", "'80000FFF-1'");
  house.Send();
  const auto id = house.ColumnOf("DESIGN:", "QBLinkID");
  EXPECT_EQ(house.ItemField(id, "Name"), "DESIGN ");
}

TEST(ActivitySend, An_activity_with_an_empty_link_is_new) {
  ActivitiesHouse house;
  house.Activity("DESIGN:", "QBLinkID", "''");
  house.Send();
  EXPECT_EQ(house.Requests("ItemServiceAddRq").size(), 1U);
  EXPECT_TRUE(house.Requests("ItemServiceQueryRq").empty());
}

// --- Twins -----------------------------------------------------------------------------------------------------------

TEST(ActivitySend, Nothing_is_written_back_after_a_Mod) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans");
  house.Activity("DESIGN:Plans", "QBLinkID, ActivityDescription", "'" + id + "', 'New'");
  house.traffic.statements.clear();
  house.Send();
  EXPECT_EQ(house.ItemField(id, "Desc"), "New");
  EXPECT_EQ(house.traffic.statements.size(), 1U);
  EXPECT_EQ(house.ColumnOf("DESIGN:Plans", "LastUpdated"), "NULL");
}

struct Meeting {
  std::string what;
  std::string lastUpdated;
  bool sends;
};

class ActivityMeetings : public testing::TestWithParam<Meeting> {};

// QuickBooks changed the item at three o'clock UTC.
TEST_P(ActivityMeetings, Go_to_the_later_side_and_a_row_without_a_date_loses) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans", "<Desc>Old</Desc>");
  house.Activity("DESIGN:Plans", "QBLinkID, ActivityDescription, LastUpdated",
                 "'" + id + "', 'New', " + GetParam().lastUpdated);
  house.Send({.mostRecent = true});
  EXPECT_EQ(house.ItemField(id, "Desc"), GetParam().sends ? "New" : "Old");
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(ActivitySend, ActivityMeetings,
                         testing::Values(Meeting{"Tie", "'2008-03-05 15:00:00'", true},
                                         Meeting{"BillingLater", "'2008-03-05 15:00:01'", true},
                                         Meeting{"BillingEarlier", "'2008-03-05 14:59:59'", false},
                                         Meeting{"NoDate", "NULL", false}),
                         [](const auto& test) { return test.param.what; });

TEST(ActivitySend, With_Never_a_linked_activity_stays_and_a_new_one_goes) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans", "<Desc>Old</Desc>");
  house.Activity("DESIGN:Plans", "QBLinkID, ActivityDescription", "'" + id + "', 'New'");
  house.Activity("NEW:");
  house.Send({.never = true});
  EXPECT_EQ(house.ItemField(id, "Desc"), "Old");
  EXPECT_NE(house.ColumnOf("NEW:", "QBLinkID"), "NULL");
}

TEST(ActivitySend, The_call_back_does_not_learn_of_an_item_that_wins) {
  for (const bool wins : {true, false}) {
    ActivitiesHouse house;
    Vars().g_IsSubscribed = true;
    const auto id = house.OneSided("Plans");
    house.Activity("DESIGN:Plans", "QBLinkID, LastUpdated", "'" + id + (wins ? "', '2000-01-01'" : "', '2030-01-01'"));
    house.Send({.mostRecent = true});
    const auto& events = house.callback.Events();
    EXPECT_EQ(std::ranges::count(events, CallbackEvent(id)), wins ? 0 : 1);
    EXPECT_FALSE(events.empty());
  }
}

// --- The version without a Mod ---------------------------------------------------------------------------------------

TEST(ActivitySend, In_version_1_a_linked_activity_goes_as_a_new_item_whatever_the_flags_and_is_linked_to_that) {
  for (const auto& flags : {MoveFlags{}, MoveFlags{.never = true}, MoveFlags{.mostRecent = true}}) {
    ActivitiesHouse house;
    const auto id = house.TwoSided("DESIGN Plans");
    house.Activity("DESIGN:Plans", "QBLinkID, LastUpdated", "'" + id + "', '2000-01-01'");
    Vars().g_QBMajorVer = 1;
    house.Send(flags);
    EXPECT_TRUE(house.Requests("ItemServiceModRq").empty());
    const auto added = house.ItemId("DESIGN Plans1");
    EXPECT_NE(added, "(none)");
    EXPECT_EQ(house.ColumnOf("DESIGN:Plans", "QBLinkID"), added);
    EXPECT_TRUE(house.BoxTexts().empty());
    EXPECT_TRUE(house.Log().empty());
  }
}

// --- Names in use ----------------------------------------------------------------------------------------------------

TEST(ActivitySend, A_name_in_use_gets_a_counter_behind_the_whole_key_which_nobody_is_told) {
  ActivitiesHouse house;
  house.OneSided("DESIGN ");
  house.OneSided("design 1");
  house.Activity("DESIGN:");
  house.Send();
  EXPECT_EQ(house.ColumnOf("DESIGN:", "QBLinkID"), house.ItemId("DESIGN 2"));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(ActivitySend, A_name_in_use_that_leaves_no_room_for_a_counter_is_logged_and_not_shown) {
  ActivitiesHouse house;
  const std::string code(30, 'x');
  house.OneSided(code + " ");
  house.Activity(code + ":");
  house.Activity("NEXT:");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Adding Activity : '" + code + ":' already exists in QB"});
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.ColumnOf(code + ":", "QBLinkID"), "NULL");
  EXPECT_NE(house.ColumnOf("NEXT:", "QBLinkID"), "NULL");
  EXPECT_EQ(house.Requests("ItemServiceAddRq").size(), 2U);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ActivitySend, A_last_counter_that_is_in_use_is_the_one_logged) {
  ActivitiesHouse house;
  const std::string code(29, 'x');
  house.OneSided(code + " ");
  for (int i = 1; i <= 9; ++i) house.OneSided(code + " " + std::to_string(i));
  house.Activity(code + ":");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Adding Activity : '" + code + ":9' already exists in QB"});
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ActivitySend, A_Mod_whose_name_is_in_use_is_logged_and_not_shown) {
  ActivitiesHouse house;
  house.OneSided("GEN COMP");
  const auto id = house.OneSided("Other", "<Desc>Old</Desc>");
  house.Activity("GEN:COMP", "QBLinkID, ActivityDescription", "'" + id + "', 'New'");
  house.Activity("NEXT:");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Modifying Activity : 'GEN:COMP' already exists in QB"});
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.ItemField(id, "Desc"), "Old");
  EXPECT_EQ(house.Requests("ItemServiceAddRq").size(), 1U);
  EXPECT_NE(house.ColumnOf("NEXT:", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- Refusals --------------------------------------------------------------------------------------------------------

class ActivityRefusals : public testing::TestWithParam<std::tuple<std::string, bool>> {};

TEST_P(ActivityRefusals, Are_told_and_then_asked_about_and_No_ends_the_table) {
  const auto& [request, goesOn] = GetParam();
  ActivitiesHouse house({.answers = goesOn ? "yes" : "no"}, Fault(request, 1, 3180));
  if (request == "ItemServiceModRq") {
    house.Activity("DESIGN:", "QBLinkID", "'" + house.OneSided("Old") + "'");
  } else {
    house.Activity("DESIGN:");
  }
  house.Activity("NEXT:");
  house.Send();
  Texts boxes = {Refused("No.", 3180), kPrompt};
  if (!goesOn) boxes.push_back(kCancelled);
  EXPECT_EQ(house.BoxTexts(), boxes);
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "");
  EXPECT_EQ(house.desk.Boxes()[1].box.icon, BoxIcon::None);
  EXPECT_EQ(house.desk.Boxes()[1].box.buttons, BoxButtons::YesNo);
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(house.ColumnOf("NEXT:", "QBLinkID") != "NULL", goesOn);
  EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

INSTANTIATE_TEST_SUITE_P(ActivitySend, ActivityRefusals,
                         testing::Combine(testing::Values("ItemServiceAddRq", "ItemServiceModRq"), testing::Bool()),
                         [](const auto& test) {
                           return std::get<0>(test.param) + (std::get<1>(test.param) ? "_Yes" : "_No");
                         });

TEST(ActivitySend, An_invalid_reference_of_a_Mod_is_a_refusal_like_any_other) {
  ActivitiesHouse house({.answers = "yes"}, Fault("ItemServiceModRq", 1, 3140));
  house.Activity("DESIGN:", "QBLinkID", "'" + house.OneSided("Old") + "'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{Refused("No.", 3140), kPrompt}));
}

TEST(ActivitySend, An_account_that_is_missing_has_its_own_box_and_No_ends_the_table) {
  for (const bool goesOn : {true, false}) {
    ActivitiesHouse house({.answers = goesOn ? "yes" : "no"});
    house.Setting("GENERAL", "AC_EXPENSE_ACCOUNT", "Nowhere");
    house.Activity("DESIGN:");
    house.Activity("NEXT:", "QBAccountID2", "'" + house.income + "'");
    house.Send();
    ASSERT_GE(house.BoxTexts().size(), 2U);
    EXPECT_TRUE(
        house.BoxTexts()[0].starts_with("Invalid Reference.\r\n\r\nQuickBooks has reported the following error: "
                                        "-\r\nThere is an invalid reference to QuickBooks "))
        << house.BoxTexts()[0];
    EXPECT_NE(house.BoxTexts()[0].find("Nowhere"), std::string::npos);
    EXPECT_EQ(house.desk.Boxes()[0].box.title, "");
    EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::None);
    EXPECT_EQ(house.BoxTexts()[1], kPrompt);
    EXPECT_EQ(house.desk.Boxes()[1].box.buttons, BoxButtons::YesNo);
    EXPECT_EQ(house.BoxTexts().size(), goesOn ? 2U : 3U);
    EXPECT_TRUE(house.Log().empty());
    EXPECT_EQ(house.ColumnOf("DESIGN:", "QBLinkID"), "NULL");
    EXPECT_EQ(house.ColumnOf("NEXT:", "QBLinkID") != "NULL", goesOn);
    EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
  }
}

struct LateRefusal {
  int status;
  std::string box;
};

class LateActivityRefusals : public testing::TestWithParam<LateRefusal> {};

TEST_P(LateActivityRefusals, Of_a_further_name_are_logged_as_the_name_in_use_and_told) {
  ActivitiesHouse house({.answers = "yes"},
                        Fault("ItemServiceAddRq", 1, 3100) + Fault("ItemServiceAddRq", 3, GetParam().status));
  house.Activity("DESIGN:");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Adding Activity : 'DESIGN:1' already exists in QB"});
  EXPECT_EQ(house.BoxTexts(), (Texts{GetParam().box, kPrompt}));
}

INSTANTIATE_TEST_SUITE_P(
    ActivitySend, LateActivityRefusals,
    testing::Values(LateRefusal{3180, Refused("No.", 3180)},
                    LateRefusal{3140,
                                "Invalid Reference.\r\n\r\nQuickBooks has reported the following error: -\r\nNo."}),
    [](const auto& test) { return std::to_string(test.param.status); });

// --- Errors ----------------------------------------------------------------------------------------------------------

class UnreadableSettings : public testing::TestWithParam<std::tuple<std::string, bool>> {};

// A Mod has no accounts, and still reads what they would be.
TEST_P(UnreadableSettings, End_the_table_on_an_Add_and_on_a_Mod) {
  const auto& [key, isMod] = GetParam();
  ActivitiesHouse house({},
                        "sql 1 raise 0x80040E14 \"Broken.\" SELECT ParamValue FROM TWSTable WHERE ParamName = "
                        "'GENERAL_" +
                            key + "'\n");
  Vars().g_UseTWSTable = true;
  house.Activity("DESIGN:", "QBLinkID", isMod ? "'" + house.OneSided("Old") + "'" : "NULL");
  house.Activity("NEXT:");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147217900(80040E14) -- \r\n\r\nBroken." + ErrorBoxEnd("QBAssignActivityFldValues")});
  EXPECT_TRUE(house.Requests("ItemServiceAddRq").empty());
  EXPECT_TRUE(house.Requests("ItemServiceModRq").empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(Outcome(), TableOk::False);
}

INSTANTIATE_TEST_SUITE_P(ActivitySend, UnreadableSettings,
                         testing::Combine(testing::Values("AC_INCOME_ACCOUNT", "AC_EXPENSE_ACCOUNT"), testing::Bool()),
                         [](const auto& test) {
                           return std::get<0>(test.param) + (std::get<1>(test.param) ? "_Mod" : "_Add");
                         });

TEST(ActivitySend, An_error_ends_the_run_with_its_box_and_leaves_no_line_in_the_log) {
  ActivitiesHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" UPDATE Activity");
  house.Activity("DESIGN:");
  house.Activity("NEXT:");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147217900(80040E14) -- \r\n\r\nBroken." + ErrorBoxEnd("MoveActivityToQB")});
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(house.Requests("ItemServiceAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
