#include <gtest/gtest.h>

#include "platform/MsgFormTexts.h"

namespace twqb {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

TEST(MsgFormTexts, Each_control_has_its_text) {
  const auto texts = TextsOf({.caption = " Tallywick",
                              .action = "Sending Clients to QuickBooks...",
                              .record = "ACME1",
                              .percent = 19,
                              .position = ProgressPosition{.done = 12, .total = 64, .timeLeft = seconds(3)}});
  EXPECT_EQ(texts.lblItem, "Sending Clients to QuickBooks...");
  EXPECT_EQ(texts.Text1, "ACME1");
  EXPECT_EQ(texts.pbconv, 19);
  EXPECT_EQ(texts.txtProg, "12/64 --> 00:00:03");
}

TEST(MsgFormTexts, A_position_ahead_of_its_estimate_stands_alone) {
  EXPECT_EQ(TextsOf({.position = ProgressPosition{.done = 12, .total = 64}}).txtProg, "12/64");
}

TEST(MsgFormTexts, Without_a_position_there_is_no_text_of_it) { EXPECT_EQ(TextsOf({}).txtProg, ""); }

TEST(MsgFormTexts, A_count_is_a_position_without_its_estimate) {
  EXPECT_EQ(CountText({.done = 12, .total = 64, .timeLeft = seconds(3)}), "12/64");
}

struct TimeLeft {
  milliseconds time;
  std::string_view text;
};

class TimesLeft : public testing::TestWithParam<TimeLeft> {};

TEST_P(TimesLeft, Are_told_in_hours_minutes_and_seconds) {
  EXPECT_EQ(PositionText({.done = 1, .total = 2, .timeLeft = GetParam().time}),
            "1/2 --> " + std::string(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(MsgFormTexts, TimesLeft,
                         testing::Values(TimeLeft{seconds(0), "00:00:00"}, TimeLeft{seconds(30), "00:00:30"},
                                         TimeLeft{hours(1) + minutes(1) + seconds(32), "01:01:32"},  //
                                         TimeLeft{milliseconds(499), "00:00:00"},    // to the nearest second
                                         TimeLeft{milliseconds(500), "00:00:01"},    //
                                         TimeLeft{milliseconds(3333), "00:00:03"},   //
                                         TimeLeft{milliseconds(6666), "00:00:07"},   //
                                         TimeLeft{milliseconds(59500), "00:01:00"},  //
                                         TimeLeft{hours(23) + minutes(59) + seconds(59), "23:59:59"},
                                         TimeLeft{hours(26), "02:00:00"},    // whole days fall away
                                         TimeLeft{-hours(1), "01:00:00"}));  // a clock put back

}  // namespace
}  // namespace twqb
