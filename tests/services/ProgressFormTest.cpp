// The progress form: what it shows, the estimate, Cancel, and how long it lives.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/MsgFormTexts.h"
#include "services/Errors.h"
#include "services/msgForm.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(ProgressForm, Is_shown_with_its_drawn_texts_and_the_action) {
  NotingHouse house;
  ShowMsgForm("Sending Clients to QuickBooks...");
  ASSERT_TRUE(house.desk.Form());
  EXPECT_EQ(house.desk.Form()->caption, " Tallywick");
  EXPECT_EQ(house.desk.Form()->action, "Sending Clients to QuickBooks...");
  EXPECT_EQ(house.desk.Form()->record, "Label1");
  EXPECT_EQ(house.desk.Form()->percent, 0);
  EXPECT_EQ(house.desk.Form()->position, (ProgressPosition{.done = 1, .total = 1}));
  EXPECT_EQ(house.notes, (Notes{"show Sending Clients to QuickBooks...", "pump"}));
}

TEST(ProgressForm, Is_shown_and_updated_whatever_NoProgressBar_says_for_its_callers_test_that) {
  TestHouse house;
  house.Enter();
  Vars().g_NoProgressBar = true;
  ShowMsgForm("Reading");
  UpdateProgressBar(2, 1);
  ASSERT_TRUE(house.desk.Form());
  EXPECT_EQ(house.desk.Form()->percent, 50);
}

struct Progress {
  std::int64_t total;
  std::int64_t done;
  std::int64_t elapsedSeconds;
  int percent;
  std::optional<milliseconds> timeLeft;
};

class Estimates : public testing::TestWithParam<Progress> {};

TEST_P(Estimates, Are_the_time_gone_per_record_times_the_records_left) {
  const auto& [total, done, elapsed, percent, timeLeft] = GetParam();
  TestHouse house;
  house.Enter();
  ShowMsgForm("Sending");
  house.machine.Advance(elapsed * Date::kSecond);
  UpdateProgressBar(total, done);
  EXPECT_EQ(house.desk.Form()->percent, percent);
  EXPECT_EQ(house.desk.Form()->position, (ProgressPosition{.done = done, .total = total, .timeLeft = timeLeft}));
}

INSTANTIATE_TEST_SUITE_P(ProgressForm, Estimates,
                         testing::Values(Progress{4, 1, 10, 25, seconds(30)}, Progress{4, 2, 10, 50, seconds(10)},
                                         Progress{4, 3, 10, 75, milliseconds(3333)},
                                         Progress{10, 6, 10, 60, milliseconds(6666)},
                                         Progress{4, 4, 10, 100, seconds(0)},      // nothing left
                                         Progress{4, 1, 0, 25, seconds(0)},        // no time gone
                                         Progress{3, 1, 3600, 33, seconds(7200)},  //
                                         Progress{3, 2, 7384, 67, seconds(3692)},  //
                                         Progress{14, 1, 7200, 7, seconds(93600)},
                                         Progress{8, 1, 0, 12, seconds(0)},  // halves to the even number
                                         Progress{8, 3, 0, 38, seconds(0)},  //
                                         Progress{200, 1, 0, 0, seconds(0)},
                                         Progress{5, 0, 10, 0, std::nullopt},  // nothing to estimate from
                                         Progress{10000, 9999, 9999, 100, seconds(1)}));

TEST(ProgressForm, Is_only_refreshed_when_there_are_no_records) {
  NotingHouse house;
  ShowMsgForm("Sending");
  const auto before = *house.desk.Form();
  house.notes.clear();
  UpdateProgressBar(0, 0);
  EXPECT_EQ(house.notes, (Notes{"refresh 1/1"}));
  EXPECT_EQ(house.desk.Form()->percent, before.percent);
  EXPECT_EQ(house.desk.Form()->position, before.position);
}

TEST(ProgressForm, Takes_no_notice_of_a_record_behind_the_last) {
  NotingHouse house;
  ShowMsgForm("Sending");
  UpdateProgressBar(4, 4);
  house.notes.clear();
  UpdateProgressBar(4, 5);
  UpdateProgressBar(0, 1);
  EXPECT_TRUE(house.notes.empty());
  EXPECT_EQ(house.desk.Form()->position, (ProgressPosition{.done = 4, .total = 4, .timeLeft = seconds(0)}));
}

TEST(ProgressForm, Pumps_messages_behind_the_position_and_behind_the_estimate) {
  NotingHouse house;
  ShowMsgForm("Sending");
  house.notes.clear();
  UpdateProgressBar(4, 1);
  EXPECT_EQ(house.notes, (Notes{"refresh 1/4", "pump", "refresh 1/4 --> 00:00:00", "pump"}));
}

TEST(ProgressForm, Estimates_a_time_below_nothing_when_the_clock_is_put_back) {
  TestHouse house;
  house.Enter();
  ShowMsgForm("Sending");
  house.machine.Advance(-Date::kHour);
  UpdateProgressBar(2, 1);
  EXPECT_EQ(house.desk.Form()->position->timeLeft, -std::chrono::hours(1));
}

TEST(ProgressForm, Keeps_its_start_time_when_it_is_shown_anew) {
  TestHouse house;
  house.Enter();
  ShowMsgForm("Sending Employees");
  UpdateProgressBar(2, 2);
  house.machine.Advance(Date::kMinute);
  ShowMsgForm("Sending Clients");
  EXPECT_EQ(house.desk.Form()->action, "Sending Clients");
  EXPECT_EQ(house.desk.Form()->percent, 0);
  EXPECT_EQ(CountText(house.desk.Form()->position.value()), "2/2") << "the position stays until another is told";
  UpdateProgressBar(2, 1);
  EXPECT_EQ(house.desk.Form()->position->timeLeft, seconds(60));
}

TEST(ProgressForm, Begins_anew_once_it_was_unloaded) {
  TestHouse house;
  house.Enter();
  ShowMsgForm("Sending Employees");
  SetProgressText("E1");
  house.machine.Advance(Date::kMinute);
  UnloadMsgForm();
  EXPECT_FALSE(house.desk.Form());
  ShowMsgForm("Sending Clients");
  EXPECT_EQ(house.desk.Form()->record, "Label1");
  house.machine.Advance(Date::kSecond);
  UpdateProgressBar(2, 1);
  EXPECT_EQ(house.desk.Form()->position->timeLeft, seconds(1));
}

TEST(ProgressForm, Is_not_unloaded_twice) {
  NotingHouse house;
  UnloadMsgForm();
  EXPECT_TRUE(house.notes.empty());
  ShowMsgForm("Sending");
  UnloadMsgForm();
  UnloadMsgForm();
  EXPECT_EQ(house.NotesOf("unload").size(), 1U);
}

TEST(ProgressForm, Shows_the_record_in_hand_only_while_it_is_loaded) {
  NotingHouse house;
  SetProgressText("nobody sees this");
  EXPECT_TRUE(house.notes.empty());
  ShowMsgForm("Sending");
  SetProgressText("Acme Tools");
  EXPECT_EQ(house.desk.Form()->record, "Acme Tools");
}

TEST(ProgressForm, Tells_its_title_and_takes_another) {
  TestHouse house;
  house.Enter();
  ShowMsgForm("Sending");
  EXPECT_EQ(MyCaption(), " Tallywick");
  SetMyCaption("Other");
  EXPECT_EQ(MyCaption(), "Other");
  EXPECT_EQ(house.desk.Form()->caption, "Other");
}

TEST(ProgressForm, Ignores_errors_of_an_update) {
  NotingHouse house({}, "form 1 raise 0x80004005 update");
  ShowMsgForm("Sending");
  EXPECT_NO_THROW(UpdateProgressBar(4, 1));
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(CancelButton, Pumps_messages_and_asks_without_an_icon) {
  NotingHouse house({.answers = "cancel after 1\nyes"});
  ShowMsgForm("Sending");
  house.notes.clear();
  UpdateProgressBar(2, 1);
  const auto& box = house.desk.Boxes().at(0).box;
  EXPECT_EQ(box.text, "Are you sure you want to Cancel?");
  EXPECT_EQ(box.title, "Cancel Confirmation");
  EXPECT_EQ(box.icon, BoxIcon::None);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  const auto asked = std::ranges::find(house.notes, "box Cancel Confirmation");
  ASSERT_NE(asked, house.notes.end());
  EXPECT_EQ(*(asked - 1), "pump");
  EXPECT_TRUE((asked + 1)->starts_with("refresh")) << "the form comes back in front";
}

TEST(CancelButton, Asks_the_run_to_stop_on_Yes) {
  TestHouse house({.answers = "cancel after 1\nyes"});
  house.Enter();
  ShowMsgForm("Sending");
  UpdateProgressBar(2, 1);
  EXPECT_TRUE(Vars().g_Cancelled);
  EXPECT_TRUE(house.desk.Form());
}

TEST(CancelButton, Leaves_the_run_going_on_No) {
  TestHouse house({.answers = "cancel after 1\nno"});
  house.Enter();
  Vars().g_Cancelled = true;
  ShowMsgForm("Sending");
  UpdateProgressBar(2, 1);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_TRUE(house.desk.Form());
}

TEST(CancelButton, Reports_an_error_under_its_own_name) {
  NotingHouse house({.answers = "cancel after 1\nyes"}, "box 1 raise 0x80004005 \"No screen\" Are you sure");
  ShowMsgForm("Sending");
  UpdateProgressBar(2, 1);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_EQ(house.BoxTexts()[0],
            "Error #: -2147467259(80004005) -- \r\n\r\nNo screen has occurred in the following procedure: "
            "msgForm_cmdCancel_Click. Please contact Technical Support for assistance.");
  EXPECT_FALSE(Vars().g_Cancelled);
}

}  // namespace
}  // namespace twqb
