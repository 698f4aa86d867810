#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include "TestPipe.h"
#include "adapters/terminal/TerminalDesk.h"

namespace twqb {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const MessageBox kNotice{.text = "Operation cancelled!", .title = "Error", .icon = BoxIcon::Information};
const MessageBox kYesNo{
    .text = "Continue?", .title = "Question", .icon = BoxIcon::Question, .buttons = BoxButtons::YesNo};
const MessageBox kRetryCancel{.text = "Busy.", .title = "WARNING", .buttons = BoxButtons::RetryCancel};

constexpr std::string_view kClearLine = "\r\x1b[K";

using Position = ProgressPosition;
constexpr auto kNone = std::nullopt;
using std::chrono::seconds;

MsgFormState Progress(std::optional<Position> position, int percent, std::string record = "") {
  return {.action = "Sending Clients to QuickBooks...",
          .record = std::move(record),
          .percent = percent,
          .position = position};
}

std::size_t CountOf(std::string_view text, char c) { return static_cast<std::size_t>(std::ranges::count(text, c)); }

enum class Person { There, Absent };
enum class Output { Terminal, File };

// Answers SIGINT so for as long as it lives: a test run in the background may have been started with it ignored.
class InterruptsAre {
 public:
  using Handler = void (*)(int);
  explicit InterruptsAre(Handler handler) : before_(std::signal(SIGINT, handler)) {}
  ~InterruptsAre() { std::signal(SIGINT, before_); }
  InterruptsAre(const InterruptsAre&) = delete;
  InterruptsAre& operator=(const InterruptsAre&) = delete;

 private:
  Handler before_;
};

class TerminalDeskTest : public testing::Test {
 protected:
  TerminalDesk& Open(Person person, Output output = Output::Terminal) {
    return desk_.emplace(TerminalOptions{.inputFd = in_.ReadEnd(),
                                         .outputFd = out_.WriteEnd(),
                                         .interactive = person == Person::There,
                                         .outputIsTerminal = output == Output::Terminal,
                                         .width = 120});
  }
  void Type(std::string_view text) { ASSERT_TRUE(in_.Type(text)); }
  void EndInput() { in_.CloseWriting(); }
  [[nodiscard]] std::string Shown() const { return out_.Drain(); }

 private:
  InterruptsAre usual_{SIG_DFL};
  TestPipe in_;
  TestPipe out_;
  std::optional<TerminalDesk> desk_;
};

TEST_F(TerminalDeskTest, A_question_is_shown_and_answered_by_a_typed_line) {
  auto& desk = Open(Person::There);
  Type("y\nN\nretry\r\nc\n");
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes);
  EXPECT_THAT(Shown(),
              AllOf(StartsWith("---- [?] Question ---"), HasSubstr("Continue?\n"), EndsWith("\n[Y]es / [N]o: ")));
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::No);
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Retry);
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Cancel);
}

TEST_F(TerminalDeskTest, A_line_that_is_no_answer_is_asked_again) {
  auto& desk = Open(Person::There);
  Type("\nwhat\ny\n");
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes);
  EXPECT_THAT(Shown(), EndsWith("[Y]es / [N]o: [Y]es / [N]o: [Y]es / [N]o: "));
}

TEST_F(TerminalDeskTest, A_box_with_only_OK_waits_for_a_line) {
  auto& desk = Open(Person::There);
  Type("\ny\n");
  EXPECT_EQ(desk.ShowMessageBox(kNotice), BoxAnswer::Ok);
  EXPECT_THAT(Shown(), EndsWith("Press Enter: "));
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes) << "the first line alone belonged to the notice";
}

TEST_F(TerminalDeskTest, An_h_names_the_help_topic_and_asks_again) {
  auto& desk = Open(Person::There);
  Type("h\nn\n");
  auto box = kYesNo;
  box.help = true;
  box.helpFile = "TW.chm";
  box.helpId = 512;
  EXPECT_EQ(desk.ShowMessageBox(box), BoxAnswer::No);
  EXPECT_THAT(Shown(), EndsWith("(help: TW.chm, topic 512)\n" + std::string(80, '-') +
                                "\n[Y]es / [N]o / [H]elp: See topic 512 of TW.chm.\n[Y]es / [N]o / [H]elp: "));
}

TEST_F(TerminalDeskTest, The_end_of_input_counts_as_No_Cancel_and_OK) {
  auto& desk = Open(Person::There);
  EndInput();
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::No);
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Cancel);
  EXPECT_EQ(desk.ShowMessageBox(kNotice), BoxAnswer::Ok);
  EXPECT_EQ(desk.PickVendor("Which?", {"V1"}), std::nullopt);
  EXPECT_EQ(desk.OpenFileDialog({.title = "Open"}), "");
}

TEST_F(TerminalDeskTest, A_last_line_without_an_end_is_a_line) {
  auto& desk = Open(Person::There);
  Type("yes");
  EndInput();
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes);
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::No);
}

TEST_F(TerminalDeskTest, With_nobody_to_ask_questions_are_printed_and_take_No_or_Cancel) {
  auto& desk = Open(Person::Absent, Output::File);
  Type("y\nr\n");
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::No);
  EXPECT_THAT(Shown(), AllOf(HasSubstr("Continue?\n"), HasSubstr("[Y]es / [N]o: No (taken")));
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Cancel);
  EXPECT_THAT(Shown(), HasSubstr("[R]etry / [C]ancel: Cancel (taken"));
  EXPECT_EQ(desk.ShowMessageBox(kNotice), BoxAnswer::Ok);
  EXPECT_THAT(Shown(), AllOf(HasSubstr("Operation cancelled!\n"), Not(HasSubstr("Press Enter"))));
  EXPECT_EQ(desk.PickVendor("Which?", {"V1"}), std::nullopt);
  EXPECT_THAT(Shown(), HasSubstr("Skip (taken"));
  EXPECT_EQ(desk.OpenFileDialog({.title = "Open"}), "");
  EXPECT_THAT(Shown(), HasSubstr("Cancel (taken"));
}

TEST_F(TerminalDeskTest, A_vendor_is_picked_by_its_number) {
  auto& desk = Open(Person::There);
  Type("0\n3\nX\n 2 \n\n");
  EXPECT_EQ(desk.PickVendor("Which vendor for E1?", {"V1",
                                                     "V\x1b"
                                                     "2"}),
            "V\x1b"
            "2");
  EXPECT_THAT(Shown(), AllOf(HasSubstr("Which vendor for E1?\n   1  V1\n   2  V?2\n"),
                             HasSubstr("Vendor (1 to 2, or how it begins; empty: skip): ")));
  EXPECT_EQ(desk.PickVendor("Which vendor for E1?", {"V1"}), std::nullopt);
}

TEST_F(TerminalDeskTest, A_vendor_is_picked_by_how_it_begins_in_any_case_once_that_is_plain) {
  auto& desk = Open(Person::There);
  Type("q\nsm\nsmi\n");
  const std::vector<std::string> vendors = {"SMALL", "SMITH", "2ND HAND"};
  EXPECT_EQ(desk.PickVendor("Which?", vendors), "SMITH");
  EXPECT_THAT(Shown(),
              AllOf(HasSubstr("No vendor begins with q.\n"), HasSubstr("Several begin with sm: SMALL, SMITH.\n")));
  // A number is one of the list, and a whole name is no beginning of a longer one.
  Type("2\n2n\nab\n");
  EXPECT_EQ(desk.PickVendor("Which?", vendors), "SMITH");
  EXPECT_EQ(desk.PickVendor("Which?", vendors), "2ND HAND");
  EXPECT_EQ(desk.PickVendor("Which?", {"ABC", "AB"}), "AB");
}

TEST_F(TerminalDeskTest, With_no_vendor_to_choose_nothing_is_asked) {
  auto& desk = Open(Person::There);
  EXPECT_EQ(desk.PickVendor("Which?", {}), std::nullopt);
  EXPECT_THAT(Shown(), HasSubstr("no vendor to choose from"));
}

TEST_F(TerminalDeskTest, A_file_is_asked_for_until_it_exists_and_starts_at_the_folder) {
  const auto folder = fs::path(testing::TempDir()) / ("desk-files-" + std::to_string(getpid()));
  fs::create_directories(folder / "sub");
  std::ofstream(folder / "firm.qbw") << "x";
  auto& desk = Open(Person::There);
  Type("none.qbw\nsub\nsub/../firm.qbw\n" + (folder / "firm.qbw").string() + "\nfirm.qbw\n\n");
  const auto file = (folder / "firm.qbw").string();

  const FileDialog dialog{.title = "Open QuickBooks File", .folder = folder.string()};
  EXPECT_EQ(desk.OpenFileDialog(dialog), file);
  const auto shown = Shown();
  EXPECT_THAT(shown, AllOf(HasSubstr("Open QuickBooks File"), HasSubstr("There is no file"),
                           HasSubstr("QuickBooks company file (empty: cancel): ")));
  EXPECT_EQ(desk.OpenFileDialog(dialog), file) << "an absolute path is taken as it is";
  EXPECT_EQ(desk.OpenFileDialog({.title = "Open", .folder = (folder / "gone.qbw").string()}), file)
      << "of a path the folder is meant";
  EXPECT_EQ(desk.OpenFileDialog(dialog), "");
  fs::remove_all(folder);
}

TEST_F(TerminalDeskTest, Progress_is_one_line_rewritten_in_place_and_kept_at_the_end) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  EXPECT_THAT(Shown(), AllOf(HasSubstr("\n\rSending Clients to QuickBooks...  [-----"), EndsWith("  0%\x1b[K")));
  desk.UpdateMsgForm(Progress(Position{64, 64, seconds(0)}, 100, "ACME1"));
  EXPECT_EQ(Shown(),
            "\rSending Clients to QuickBooks...  [####################] 100%  "
            "Records Processed: 64/64 --> 00:00:00  ACME1\x1b[K");
  desk.UnloadMsgForm();
  EXPECT_EQ(Shown(), "\n");
}

TEST_F(TerminalDeskTest, The_forms_heading_stands_above_the_progress_once_and_tells_a_person_how_to_cancel) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  EXPECT_THAT(Shown(), StartsWith("Tallywick QuickBooks data Transfer (Ctrl-C: Cancel)\n"));
  desk.ShowMsgForm({.action = "Sending Projects..."}, [] {});
  EXPECT_THAT(Shown(), Not(HasSubstr("Transfer")));
  desk.UnloadMsgForm();
  static_cast<void>(Shown());
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  EXPECT_THAT(Shown(), StartsWith("Tallywick QuickBooks data Transfer"));
  auto& unattended = Open(Person::Absent);
  static_cast<void>(Shown());
  unattended.ShowMsgForm(Progress(kNone, 0), [] {});
  EXPECT_THAT(Shown(), StartsWith("Tallywick QuickBooks data Transfer\n"));
}

TEST_F(TerminalDeskTest, Progress_without_a_record_leaves_nothing_behind) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  EXPECT_NE(Shown(), "");
  desk.UnloadMsgForm();
  EXPECT_EQ(Shown(), kClearLine);
}

TEST_F(TerminalDeskTest, Progress_is_drawn_no_oftener_than_the_eye_follows) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  const auto start = std::chrono::steady_clock::now();
  for (int i = 1; i <= 2000; ++i) {
    desk.UpdateMsgForm(Progress(Position{i, 4000}, i / 40));
    desk.PumpMessages();
  }
  const auto spent = std::chrono::steady_clock::now() - start;
  const auto allowed = 2 + static_cast<std::size_t>(spent / std::chrono::milliseconds(50));
  EXPECT_LE(CountOf(Shown(), '\r'), allowed);
  desk.UnloadMsgForm();
  EXPECT_THAT(Shown(), AllOf(HasSubstr("2000/4000"), EndsWith("\n"))) << "the last state is drawn when the form goes";
}

TEST_F(TerminalDeskTest, What_the_form_still_names_from_before_is_not_drawn_for_a_new_action) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(Position{8, 10, seconds(1)}, 0, "OLDONE"), [] {});
  EXPECT_THAT(Shown(), EndsWith("  0%\x1b[K"));
  desk.UpdateMsgForm(Progress(Position{3, 3}, 100, "OLDONE"));
  EXPECT_THAT(Shown(), EndsWith("3/3\x1b[K"));
  desk.UpdateMsgForm(Progress(Position{3, 3}, 100, "ACME1"));
  EXPECT_THAT(Shown(), EndsWith("3/3  ACME1\x1b[K"));
}

TEST_F(TerminalDeskTest, An_unchanged_line_is_not_drawn_again) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  desk.UpdateMsgForm(Progress(Position{64, 64}, 100));
  EXPECT_NE(Shown(), "");
  desk.UpdateMsgForm(Progress(Position{64, 64}, 100));
  desk.UpdateMsgForm(Progress(Position{64, 64}, 100));
  EXPECT_EQ(Shown(), "");
}

TEST_F(TerminalDeskTest, The_estimate_stays_while_the_next_position_has_none_yet) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  desk.UpdateMsgForm(Progress(Position{1, 3, seconds(9)}, 33));
  desk.UpdateMsgForm(Progress(Position{2, 3}, 100));  // drawn at once
  EXPECT_THAT(Shown(), HasSubstr("2/3 --> 00:00:09"));
}

TEST_F(TerminalDeskTest, A_new_action_begins_a_new_line_when_the_one_before_counted_records) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  desk.UpdateMsgForm(Progress(Position{2, 2}, 100));
  static_cast<void>(Shown());
  desk.ShowMsgForm({.action = "Sending Projects..."}, [] {});
  EXPECT_THAT(Shown(), StartsWith("\n\rSending Projects..."));
}

TEST_F(TerminalDeskTest, A_box_takes_the_place_of_the_progress_line_and_the_line_comes_back) {
  auto& desk = Open(Person::There);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  desk.UpdateMsgForm(Progress(Position{12, 12}, 100));
  static_cast<void>(Shown());
  Type("y\n");
  desk.ShowMessageBox(kYesNo);
  EXPECT_THAT(Shown(), AllOf(StartsWith(std::string(kClearLine) + "---- [?]"),
                             HasSubstr("[Y]es / [N]o: \rSending Clients"), EndsWith("12/12\x1b[K")));
}

TEST_F(TerminalDeskTest, Output_to_a_file_is_a_plain_line_an_action_and_the_last_position) {
  auto& desk = Open(Person::Absent, Output::File);
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  desk.UpdateMsgForm(Progress(Position{1, 64, seconds(10)}, 1, "A\x1b[1m"));
  desk.PumpMessages();
  desk.ShowMessageBox(kNotice);
  desk.UpdateMsgForm(Progress(Position{64, 64, seconds(0)}, 100));
  desk.UnloadMsgForm();
  desk.Beep();
  const auto shown = Shown();
  EXPECT_THAT(shown,
              AllOf(StartsWith("Tallywick QuickBooks data Transfer\nSending Clients to QuickBooks...\n---- [i] Error"),
                    EndsWith("-\nRecords Processed: 64/64\n")));
  for (const char c : shown) EXPECT_TRUE(c == '\n' || (c >= ' ' && c < 0x7f)) << static_cast<int>(c);
}

TEST_F(TerminalDeskTest, The_beep_rings_only_for_a_person) {
  Open(Person::There).Beep();
  EXPECT_EQ(Shown(), "\a");
  Open(Person::Absent).Beep();
  EXPECT_EQ(Shown(), "");
}

TEST_F(TerminalDeskTest, An_interrupt_presses_Cancel_in_the_next_pump_once) {
  auto& desk = Open(Person::There);
  int pressed = 0;
  desk.ShowMsgForm(Progress(kNone, 0), [&] {
    ++pressed;
    desk.PumpMessages();  // as the form's Cancel button does
  });
  raise(SIGINT);
  raise(SIGINT);
  EXPECT_EQ(pressed, 0);
  desk.PumpMessages();
  desk.PumpMessages();
  EXPECT_EQ(pressed, 1);
  raise(SIGINT);
  desk.PumpMessages();
  EXPECT_EQ(pressed, 2);
}

TEST_F(TerminalDeskTest, An_interrupt_while_Cancel_is_confirmed_is_no_further_press) {
  auto& desk = Open(Person::There);
  int pressed = 0;
  desk.ShowMsgForm(Progress(kNone, 0), [&] {
    ++pressed;
    raise(SIGINT);
  });
  raise(SIGINT);
  desk.PumpMessages();
  desk.PumpMessages();
  EXPECT_EQ(pressed, 1);
}

TEST_F(TerminalDeskTest, A_press_may_unload_the_form) {
  auto& desk = Open(Person::There);
  bool pressed = false;
  desk.ShowMsgForm(Progress(kNone, 0), [&] {
    desk.UnloadMsgForm();
    pressed = true;
  });
  raise(SIGINT);
  desk.PumpMessages();
  EXPECT_TRUE(pressed);
}

// The number of SIGINTs that reached this test's own handler.
volatile std::sig_atomic_t interruptsOfOurs = 0;
extern "C" void CountOurs(int) { interruptsOfOurs = interruptsOfOurs + 1; }

TEST_F(TerminalDeskTest, Interrupts_are_the_forms_only_while_it_is_shown_to_a_person) {
  const InterruptsAre ours(CountOurs);
  interruptsOfOurs = 0;
  auto& desk = Open(Person::There);
  raise(SIGINT);
  EXPECT_EQ(interruptsOfOurs, 1) << "no form yet";
  desk.ShowMsgForm(Progress(kNone, 0), [] {});
  raise(SIGINT);
  EXPECT_EQ(interruptsOfOurs, 1) << "the form's";
  desk.UnloadMsgForm();
  raise(SIGINT);
  EXPECT_EQ(interruptsOfOurs, 2) << "the form is gone";
  desk.ShowMsgForm(Progress(kNone, 0), nullptr);
  raise(SIGINT);
  EXPECT_EQ(interruptsOfOurs, 3) << "a form that can't be cancelled";
  auto& unattended = Open(Person::Absent);
  unattended.ShowMsgForm(Progress(kNone, 0), [] {});
  raise(SIGINT);
  EXPECT_EQ(interruptsOfOurs, 4) << "nobody to confirm a Cancel";
}

TEST_F(TerminalDeskTest, Interrupts_that_the_process_was_started_to_ignore_stay_ignored) {
  const InterruptsAre ignored(SIG_IGN);
  auto& desk = Open(Person::There);
  int pressed = 0;
  desk.ShowMsgForm(Progress(kNone, 0), [&] { ++pressed; });
  raise(SIGINT);
  desk.PumpMessages();
  EXPECT_EQ(pressed, 0);
  desk.UnloadMsgForm();
}

}  // namespace
}  // namespace twqb
