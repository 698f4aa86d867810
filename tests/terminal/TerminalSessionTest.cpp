// The desk at a real terminal: a child process under a pseudo-terminal of its own, keys typed from here.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <thread>

#include "adapters/terminal/EndSignals.h"
#include "adapters/terminal/TerminalDesk.h"
#include "tests/support/TerminalSession.h"

namespace twqb {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::string_view kCtrlD = "\x04";

const MessageBox kConfirmation{
    .text = "Are you sure you want to Cancel?", .title = "Cancel Confirmation", .buttons = BoxButtons::YesNo};
constexpr std::string_view kPrompt = "[Y]es / [N]o: ";

class DeskSession : public TerminalSession {
 public:
  explicit DeskSession(const std::function<int(TerminalDesk&)>& body)
      : TerminalSession([&] {
          TerminalDesk desk;
          return body(desk);
        }) {}
};

enum Outcome : int { kCancelled = 10, kRanToTheEnd = 11 };

// A transfer that asks, as the library does, when Cancel is pressed. Its records do not end before that; after a No
// there is a last one.
int Transfer(TerminalDesk& desk) {
  bool asked = false;
  bool cancelled = false;
  desk.ShowMsgForm({.action = "Sending Clients to QuickBooks..."}, [&] {
    cancelled = desk.ShowMessageBox(kConfirmation) == BoxAnswer::Yes;
    asked = true;
  });
  for (int i = 1; !asked; ++i) {
    desk.UpdateMsgForm({.action = "Sending Clients to QuickBooks...", .position = ProgressPosition{i, 9999}});
    desk.PumpMessages();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  if (!cancelled) {
    desk.UpdateMsgForm(
        {.action = "Sending Clients to QuickBooks...", .percent = 100, .position = ProgressPosition{9999, 9999}});
    desk.PumpMessages();
  }
  desk.UnloadMsgForm();
  return cancelled ? kCancelled : kRanToTheEnd;
}

TEST(TerminalSession, A_question_at_a_terminal_is_answered_by_keys) {
  DeskSession session([](TerminalDesk& desk) {
    const auto first = desk.ShowMessageBox(kConfirmation);
    const auto second = desk.ShowMessageBox({.text = "Done.", .title = "Note"});
    return first == BoxAnswer::Yes && second == BoxAnswer::Ok ? 0 : 1;
  });
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type("y\n"));
  ASSERT_TRUE(session.See("Press Enter: "));
  ASSERT_TRUE(session.Type("\n"));
  EXPECT_EQ(session.ExitStatus(), 0);
}

TEST(TerminalSession, Ctrl_C_asks_whether_to_cancel_and_Yes_ends_the_transfer) {
  DeskSession session([](TerminalDesk& desk) { return Transfer(desk); });
  ASSERT_TRUE(session.See("/9999"));
  ASSERT_TRUE(session.Type(kCtrlC));
  ASSERT_TRUE(session.See("Are you sure you want to Cancel?"));
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type("y\n"));
  EXPECT_EQ(session.ExitStatus(), kCancelled);
}

TEST(TerminalSession, No_lets_the_transfer_go_on) {
  DeskSession session([](TerminalDesk& desk) { return Transfer(desk); });
  ASSERT_TRUE(session.See("/9999"));
  ASSERT_TRUE(session.Type(kCtrlC));
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type("n\n"));
  ASSERT_TRUE(session.See("9999/9999"));
  EXPECT_EQ(session.ExitStatus(), kRanToTheEnd);
}

TEST(TerminalSession, Ctrl_C_at_the_confirmation_asks_once_more_and_then_is_a_No) {
  DeskSession session([](TerminalDesk& desk) { return Transfer(desk); });
  ASSERT_TRUE(session.See("/9999"));
  ASSERT_TRUE(session.Type(kCtrlC));
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type(kCtrlC));
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type(kCtrlC));
  ASSERT_TRUE(session.See("9999/9999"));
  EXPECT_EQ(session.ExitStatus(), kRanToTheEnd);
  EXPECT_EQ(session.All().find("Are you sure"), session.All().rfind("Are you sure")) << "asked in one box only";
}

TEST(TerminalSession, After_one_Ctrl_C_at_the_confirmation_it_can_still_be_answered) {
  DeskSession session([](TerminalDesk& desk) { return Transfer(desk); });
  ASSERT_TRUE(session.See("/9999"));
  ASSERT_TRUE(session.Type(kCtrlC));
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type(kCtrlC));
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type("y\n"));
  EXPECT_EQ(session.ExitStatus(), kCancelled);
}

TEST(TerminalSession, The_end_of_file_key_is_a_No) {
  DeskSession session([](TerminalDesk& desk) { return desk.ShowMessageBox(kConfirmation) == BoxAnswer::No ? 0 : 1; });
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type(kCtrlD));
  EXPECT_EQ(session.ExitStatus(), 0);
}

TEST(TerminalSession, Without_the_form_Ctrl_C_ends_the_process) {
  DeskSession session([](TerminalDesk& desk) {
    desk.ShowMessageBox(kConfirmation);
    return 0;
  });
  ASSERT_TRUE(session.See(kPrompt));
  ASSERT_TRUE(session.Type(kCtrlC));
  EXPECT_EQ(session.ExitStatus(), -SIGINT);
}

class EndedQuestion : public testing::TestWithParam<int> {};

TEST_P(EndedQuestion, Takes_No_when_the_process_is_to_end) {
  DeskSession session([](TerminalDesk& desk) {
    const EndSignals signals;
    const bool isNo = desk.ShowMessageBox(kConfirmation) == BoxAnswer::No;
    const bool isOk = desk.ShowMessageBox({.text = "Done.", .title = "Note"}) == BoxAnswer::Ok;
    return isNo && isOk && EndSignals::Came() == GetParam() ? 0 : 1;
  });
  ASSERT_TRUE(session.See(kPrompt));
  session.Signal(GetParam());
  EXPECT_EQ(session.ExitStatus(), 0);
}

TEST_P(EndedQuestion, Is_left_at_once_by_a_second_signal_while_the_person_is_asked_what_the_first_meant) {
  DeskSession session([](TerminalDesk& desk) {
    const EndSignals signals;
    raise(SIGINT);
    const EndSignals::Asking asking;
    return desk.ShowMessageBox(kConfirmation) == BoxAnswer::No ? 0 : 1;
  });
  ASSERT_TRUE(session.See(kPrompt));
  session.Signal(GetParam());
  EXPECT_EQ(session.ExitStatus(), EndSignals::ExitStatusOf(SIGINT));
}

INSTANTIATE_TEST_SUITE_P(TerminalSession, EndedQuestion, testing::ValuesIn(EndSignals::kSignals),
                         [](const auto& suite) { return std::string(SignalName(suite.param)); });

TEST(TerminalSession, No_line_of_progress_is_as_wide_as_the_terminal) {
  DeskSession session([](TerminalDesk& desk) {
    desk.ShowMsgForm({.action = std::string(200, 'x')}, nullptr);
    desk.UnloadMsgForm();
    return 0;
  });
  EXPECT_EQ(session.ExitStatus(), 0);
  EXPECT_THAT(session.All(), HasSubstr(std::string(78, 'x') + "\u2026"));
  EXPECT_THAT(session.All(), Not(HasSubstr(std::string(80, 'x'))));
}

}  // namespace
}  // namespace twqb
