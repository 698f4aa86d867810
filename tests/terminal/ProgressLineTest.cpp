#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "TestPipe.h"
#include "adapters/terminal/ProgressLine.h"
#include "adapters/terminal/TextLayout.h"

namespace twqb {
namespace {

const MsgFormState kState{.action = "Sending Clients to QuickBooks...",
                          .record = "ACME1",
                          .percent = 45,
                          .position = ProgressPosition{.done = 12, .total = 64, .timeLeft = std::chrono::seconds(3)}};

TEST(ProgressLine, Shows_action_bar_per_cent_position_and_record) {
  EXPECT_EQ(FormatProgressLine(kState, 100),
            "Sending Clients to QuickBooks...  [#########-----------]  45%  12/64 --> 00:00:03  ACME1");
}

TEST(ProgressLine, Has_the_label_of_the_position_where_the_bar_need_not_shrink_for_it) {
  EXPECT_EQ(FormatProgressLine(kState, 120),
            "Sending Clients to QuickBooks...  [#########-----------]  45%  "
            "Records Processed: 12/64 --> 00:00:03  ACME1");
  auto begun = kState;
  begun.position.reset();
  EXPECT_EQ(FormatProgressLine(begun, 120), "Sending Clients to QuickBooks...  [#########-----------]  45%  ACME1");
  for (std::size_t width = 60; width < 140; ++width) {
    const auto line = FormatProgressLine(kState, width);
    if (line.find("Records") == std::string::npos) continue;
    EXPECT_NE(line.find("[#########-----------]"), std::string::npos) << line;
  }
}

TEST(ProgressLine, Shrinks_the_bar_and_cuts_the_end_on_a_narrow_terminal) {
  EXPECT_EQ(FormatProgressLine(kState, 79),
            "Sending Clients to QuickBooks...  [##---]  45%  12/64 --> 00:00:03  ACME1");
  EXPECT_EQ(FormatProgressLine(kState, 40), "Sending Clients to QuickBooks...  [##--\u2026");
}

TEST(ProgressLine, The_bar_does_not_move_with_the_record_in_hand) {
  auto other = kState;
  other.record = "A much longer name of a client than the one before";
  other.position->timeLeft.reset();
  EXPECT_EQ(FormatProgressLine(kState, 90).find(']'), FormatProgressLine(other, 90).find(']'));
  EXPECT_LE(ColumnCount(FormatProgressLine(other, 90)), 90U);
}

TEST(ProgressLine, Leaves_empty_parts_out) {
  EXPECT_EQ(FormatProgressLine({.action = "Reading..."}, 120), "Reading...  [--------------------]   0%");
  EXPECT_EQ(FormatProgressLine({.percent = 100}, 120), "[####################] 100%");
}

TEST(ProgressLine, Texts_of_records_can_not_steer_the_terminal) {
  auto state = kState;
  state.record = "x\x1b[2J\r\ny";
  EXPECT_TRUE(FormatProgressLine(state, 120).ends_with("  x?[2J y"));
}

TEST(ProgressLine, A_per_cent_outside_the_bar_is_held_at_its_ends) {
  EXPECT_EQ(FormatProgressLine({.percent = 250}, 120), "[####################] 100%");
  EXPECT_EQ(FormatProgressLine({.percent = -1}, 120), "[--------------------]   0%");
}

TEST(ProgressLine, In_a_pipe_an_action_that_lasts_says_how_far_it_is) {
  const TestPipe pipe;
  Console console(-1, pipe.WriteEnd(), 80);
  ProgressPainter painter(console, ProgressStyle::Plain, std::chrono::milliseconds(20));
  painter.Begin(kState);
  painter.Update(kState);
  EXPECT_EQ(pipe.Drain(), "Sending Clients to QuickBooks...\n");
  std::this_thread::sleep_for(std::chrono::milliseconds(25));
  painter.PaintIfDue();
  painter.PaintIfDue();
  EXPECT_EQ(pipe.Drain(), "Sending Clients to QuickBooks...  12/64 --> 00:00:03\n");
}

TEST(ProgressLine, In_a_pipe_it_says_no_more_than_the_action_where_that_is_off) {
  const TestPipe pipe;
  Console console(-1, pipe.WriteEnd(), 80);
  ProgressPainter painter(console, ProgressStyle::Plain);
  painter.Begin(kState);
  std::this_thread::sleep_for(std::chrono::milliseconds(5));
  painter.PaintIfDue();
  EXPECT_EQ(pipe.Drain(), "Sending Clients to QuickBooks...\n");
}

}  // namespace
}  // namespace twqb
