#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "adapters/scripted/ScriptedDesk.h"
#include "platform/MsgFormTexts.h"
#include "tests/support/GivenUp.h"

namespace twqb {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

const MessageBox kNotice{.text = "Operation cancelled!", .title = "Error", .icon = BoxIcon::Information};
const MessageBox kYesNo{
    .text = "Are you sure you want to Cancel?", .title = "Cancel Confirmation", .buttons = BoxButtons::YesNo};
const MessageBox kRetryCancel{.text = "Close the dialog\r\nin QuickBooks.",
                              .title = "WARNING",
                              .icon = BoxIcon::Warning,
                              .buttons = BoxButtons::RetryCancel};
const FileDialog kFile{.title = "Open QuickBooks File", .folder = "/books"};

ScriptedDesk DeskWith(std::string_view answers) { return ScriptedDesk(ParseAnswers(answers)); }

using Position = ProgressPosition;
constexpr std::chrono::seconds kTimeLeft{3};

MsgFormState Progress(std::optional<Position> position) {
  return {.action = "Sending Clients to QuickBooks...", .position = position};
}

TEST(ScriptedDesk, Questions_take_the_answers_in_their_order) {
  auto desk = DeskWith("yes\nretry\nfile b.qbw\nvendor V2\nno\ncancel\n");
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes);
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Retry);
  EXPECT_EQ(desk.OpenFileDialog(kFile), "b.qbw");
  EXPECT_EQ(desk.PickVendor("Which vendor?", {"V1", "V2"}), "V2");
  EXPECT_EQ(desk.Remaining(), 2U);
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::No);
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Cancel);
  EXPECT_EQ(desk.Remaining(), 0U);
}

TEST(ScriptedDesk, A_box_with_only_OK_needs_no_answer_and_takes_none) {
  auto desk = DeskWith("yes\n");
  EXPECT_EQ(desk.ShowMessageBox(kNotice), BoxAnswer::Ok);
  EXPECT_EQ(desk.Remaining(), 1U);
}

TEST(ScriptedDesk, An_ok_in_the_file_stands_in_the_way_of_no_question) {
  auto desk = DeskWith("ok\nyes\n");
  EXPECT_EQ(desk.ShowMessageBox(kNotice), BoxAnswer::Ok);
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes);
}

TEST(ScriptedDesk, A_skip_leaves_vendor_form_and_file_dialog_without_a_choice) {
  auto desk = DeskWith("skip\nskip\ncancel\n");
  EXPECT_EQ(desk.PickVendor("Which vendor?", {"V1"}), std::nullopt);
  EXPECT_EQ(desk.OpenFileDialog(kFile), "");
  EXPECT_EQ(desk.OpenFileDialog(kFile), "");
}

TEST(ScriptedDesk, A_question_without_an_answer_gives_up_naming_text_and_title) {
  auto desk = DeskWith("");
  EXPECT_THAT(GivenUpAt([&] { desk.ShowMessageBox(kYesNo); }),
              AllOf(HasSubstr("No answer is left"), HasSubstr("\"Are you sure you want to Cancel?\""),
                    HasSubstr("\"Cancel Confirmation\""), HasSubstr("yes, no")));
  EXPECT_THAT(GivenUpAt([&] { desk.ShowMessageBox(kRetryCancel); }),
              AllOf(HasSubstr("\"Close the dialog in QuickBooks.\""), HasSubstr("retry, cancel")));
  EXPECT_THAT(GivenUpAt([&] {
                desk.PickVendor("Which vendor?", {"V1", "V2"});
              }),
              AllOf(HasSubstr("\"Which vendor?\""), HasSubstr("V1, V2")));
  EXPECT_THAT(GivenUpAt([&] { desk.OpenFileDialog(kFile); }),
              AllOf(HasSubstr("\"Open QuickBooks File\""), HasSubstr("/books")));
  EXPECT_TRUE(desk.Boxes().empty());
}

TEST(ScriptedDesk, An_answer_that_the_question_does_not_offer_is_named_and_not_taken) {
  auto desk = DeskWith("retry\n");
  EXPECT_THAT(GivenUpAt([&] { desk.ShowMessageBox(kYesNo); }),
              AllOf(HasSubstr("\"retry\""), HasSubstr("\"Are you sure you want to Cancel?\"")));
  EXPECT_EQ(desk.Remaining(), 1U);
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Retry);
}

TEST(ScriptedDesk, A_vendor_that_is_no_choice_gives_up) {
  auto desk = DeskWith("vendor V3\n");
  EXPECT_THAT(GivenUpAt([&] { desk.PickVendor("Which vendor?", {"V1", "V2"}); }), HasSubstr("\"vendor V3\""));
}

TEST(ScriptedDesk, A_default_answers_only_when_no_answer_is_left) {
  auto desk = DeskWith("default yes\nno\n");
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::No);
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes);
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::Yes);
}

TEST(ScriptedDesk, A_default_answers_only_the_questions_that_offer_it) {
  auto desk = DeskWith("default yes\n");
  EXPECT_THAT(GivenUpAt([&] { desk.ShowMessageBox(kRetryCancel); }), HasSubstr("No answer is left"));
  EXPECT_NE(GivenUpAt([&] { desk.PickVendor("Which vendor?", {"yes"}); }), "");
  EXPECT_NE(GivenUpAt([&] { desk.OpenFileDialog(kFile); }), "");
}

TEST(ScriptedDesk, Several_defaults_answer_each_its_own_kind_of_question) {
  auto desk = DeskWith("default no\ndefault cancel\ndefault skip\ndefault ok\n");
  EXPECT_EQ(desk.ShowMessageBox(kYesNo), BoxAnswer::No);
  EXPECT_EQ(desk.ShowMessageBox(kRetryCancel), BoxAnswer::Cancel);
  EXPECT_EQ(desk.PickVendor("Which vendor?", {"V1"}), std::nullopt);
  EXPECT_EQ(desk.OpenFileDialog(kFile), "");
}

TEST(ScriptedDesk, A_default_vendor_is_picked_wherever_it_is_among_those_to_choose_from) {
  auto desk = DeskWith("default vendor V 1\n");
  EXPECT_EQ(desk.PickVendor("Which vendor?", {"V 1", "V 2"}), "V 1");
  EXPECT_EQ(desk.PickVendor("And now?", {"V 2", "V 1"}), "V 1");
  EXPECT_THAT(GivenUpAt([&] { desk.PickVendor("Which vendor?", {"V 2"}); }), HasSubstr("No answer is left"));
  auto skipping = DeskWith("default vendor V 1\ndefault skip\n");
  EXPECT_EQ(skipping.PickVendor("Which vendor?", {"V 1"}), "V 1");
  EXPECT_EQ(skipping.PickVendor("Which vendor?", {"V 2"}), std::nullopt);
}

TEST(ScriptedDesk, A_wrong_answer_is_not_passed_over_for_a_default) {
  auto desk = DeskWith("default yes\nretry\n");
  EXPECT_THAT(GivenUpAt([&] { desk.ShowMessageBox(kYesNo); }), HasSubstr("\"retry\""));
}

// A transfer's loop: the position is shown, then the position with the time left, messages being pumped after each.
void CountTo(ScriptedDesk& desk, int total, const std::function<bool()>& goesOn) {
  for (int i = 1; i <= total && goesOn(); ++i) {
    desk.UpdateMsgForm(Progress(Position{i, total}));
    desk.PumpMessages();
    desk.UpdateMsgForm(Progress(Position{i, total, kTimeLeft}));
    desk.PumpMessages();
  }
}

// The form as the library uses it: the press pumps messages itself, asks, and remembers a Yes.
class CancelledRun : public testing::Test {
 protected:
  void Start(std::string_view answers) { desk_ = std::make_unique<ScriptedDesk>(ParseAnswers(answers)); }
  void RunTable(int total, std::optional<Position> leftOver = std::nullopt) {
    cancelled_ = false;
    desk_->ShowMsgForm(Progress(leftOver), [this] {
      pressedAt_.push_back(PositionText(desk_->Form()->position.value()));
      desk_->PumpMessages();
      cancelled_ = desk_->ShowMessageBox(kYesNo) == BoxAnswer::Yes;
    });
    CountTo(*desk_, total, [this] { return !cancelled_; });
  }

  std::unique_ptr<ScriptedDesk> desk_;
  std::vector<std::string> pressedAt_;
  bool cancelled_ = false;
};

TEST_F(CancelledRun, Presses_Cancel_at_the_first_pump_at_which_the_counter_is_reached) {
  Start("cancel after 12\nyes\n");
  RunTable(64);
  EXPECT_TRUE(cancelled_);
  EXPECT_THAT(pressedAt_, ElementsAre("12/64"));
  EXPECT_EQ(desk_->Remaining(), 0U);
}

TEST_F(CancelledRun, Is_pressed_once_for_a_line_and_goes_on_after_No) {
  Start("cancel after 2\nno\nyes\n");
  RunTable(5);
  RunTable(5);
  EXPECT_FALSE(cancelled_);
  EXPECT_THAT(pressedAt_, ElementsAre("2/5"));
  EXPECT_EQ(desk_->Remaining(), 1U);
  EXPECT_EQ(desk_->RemainingPresses(), 0U);
}

TEST_F(CancelledRun, A_press_for_each_line_never_inside_another_one) {
  Start("cancel after 2\ncancel after 2\nno\nyes\n");
  RunTable(5);
  EXPECT_TRUE(cancelled_);
  EXPECT_THAT(pressedAt_, ElementsAre("2/5", "2/5 --> 00:00:03"));
}

TEST_F(CancelledRun, The_counter_of_a_new_table_starts_anew) {
  Start("cancel after 4\nyes\n");
  RunTable(3);
  EXPECT_TRUE(pressedAt_.empty());
  RunTable(6);
  EXPECT_THAT(pressedAt_, ElementsAre("4/6"));
}

TEST_F(CancelledRun, A_position_left_over_from_the_table_before_does_not_count) {
  Start("cancel after 2\nyes\n");
  desk_->ShowMsgForm(Progress(Position{64, 64, kTimeLeft}), [this] { pressedAt_.emplace_back("too early"); });
  desk_->PumpMessages();
  auto nextRecord = Progress(Position{64, 64, kTimeLeft});
  nextRecord.record = "ACME1";
  desk_->UpdateMsgForm(nextRecord);
  desk_->PumpMessages();
  EXPECT_TRUE(pressedAt_.empty());
  RunTable(3, Position{64, 64, kTimeLeft});
  EXPECT_THAT(pressedAt_, ElementsAre("2/3"));
}

TEST_F(CancelledRun, Steps_of_the_reading_do_not_count) {
  Start("cancel after 2\nyes\n");
  auto reading = Progress(Position{8, 10});
  reading.action = "Reading ...Customers(may take some time)";
  desk_->ShowMsgForm(Progress(std::nullopt), [this] { pressedAt_.emplace_back("too early"); });
  desk_->UpdateMsgForm(reading);
  desk_->PumpMessages();
  EXPECT_TRUE(pressedAt_.empty());
  RunTable(3, Position{8, 10});
  EXPECT_THAT(pressedAt_, ElementsAre("2/3"));
}

TEST_F(CancelledRun, Without_a_form_nothing_is_pressed) {
  Start("cancel after 1\nyes\n");
  RunTable(0);
  desk_->UnloadMsgForm();
  desk_->UpdateMsgForm(Progress(Position{5, 5}));
  desk_->PumpMessages();
  EXPECT_TRUE(pressedAt_.empty());
  EXPECT_EQ(desk_->RemainingPresses(), 1U);
}

TEST_F(CancelledRun, A_confirmation_without_an_answer_gives_up_out_of_the_pump) {
  Start("cancel after 1\n");
  EXPECT_THAT(GivenUpAt([this] { RunTable(2); }), HasSubstr("Cancel Confirmation"));
}

TEST(ScriptedDesk, A_press_may_unload_the_form) {
  auto desk = DeskWith("cancel after 1\n");
  bool pressed = false;
  desk.ShowMsgForm(Progress(std::nullopt), [&] {
    desk.UnloadMsgForm();
    pressed = true;
  });
  desk.UpdateMsgForm(Progress(Position{1, 1}));
  desk.PumpMessages();
  EXPECT_TRUE(pressed);
  EXPECT_FALSE(desk.Form().has_value());
}

TEST(ScriptedDesk, What_was_shown_is_kept) {
  auto desk = DeskWith("yes\nvendor V1\nfile a.qbw\n");
  desk.ShowMessageBox(kYesNo);
  desk.ShowMessageBox(kNotice);
  desk.PickVendor("Which vendor?", {"V1", "V2"});
  desk.OpenFileDialog(kFile);
  desk.SetPointer(Pointer::Wait);
  desk.Beep();
  ASSERT_EQ(desk.Boxes().size(), 2U);
  EXPECT_EQ(desk.Boxes()[0].box.text, kYesNo.text);
  EXPECT_EQ(desk.Boxes()[0].answer, BoxAnswer::Yes);
  EXPECT_EQ(desk.Boxes()[1].answer, BoxAnswer::Ok);
  ASSERT_EQ(desk.VendorForms().size(), 1U);
  EXPECT_THAT(desk.VendorForms()[0].choices, ElementsAre("V1", "V2"));
  EXPECT_EQ(desk.VendorForms()[0].answer, "V1");
  ASSERT_EQ(desk.FileDialogs().size(), 1U);
  EXPECT_EQ(desk.FileDialogs()[0].dialog.folder, "/books");
  EXPECT_EQ(desk.FileDialogs()[0].answer, "a.qbw");
  EXPECT_EQ(desk.ShownPointer(), Pointer::Wait);
  EXPECT_EQ(desk.Beeps(), 1);
}

TEST(ScriptedDesk, The_forms_events_are_kept_in_order_with_what_it_showed) {
  auto desk = DeskWith("");
  desk.ShowMsgForm(Progress(std::nullopt), {});
  desk.UpdateMsgForm(Progress(Position{1, 1}));
  EXPECT_EQ(desk.Form()->position, (Position{1, 1}));
  desk.UnloadMsgForm();
  desk.UnloadMsgForm();
  ASSERT_EQ(desk.FormEvents().size(), 3U);
  EXPECT_EQ(desk.FormEvents()[0].kind, FormEventKind::Show);
  EXPECT_EQ(desk.FormEvents()[1].kind, FormEventKind::Update);
  EXPECT_EQ(desk.FormEvents()[2].kind, FormEventKind::Unload);
  EXPECT_EQ(desk.FormEvents()[2].state.position, (Position{1, 1}));
  EXPECT_FALSE(desk.Form().has_value());
}

TEST(ScriptedDesk, Of_a_long_run_the_last_events_of_the_form_are_kept) {
  auto desk = DeskWith("");
  desk.ShowMsgForm(Progress(std::nullopt), {});
  CountTo(desk, 5000, [] { return true; });
  EXPECT_EQ(desk.FormEvents().size(), ScriptedDesk::kKeptFormEvents);
  EXPECT_EQ(desk.FormEvents().back().state.position, (Position{5000, 5000, kTimeLeft}));
}

// Remembers what the display was told, one word each.
class RecordingDisplay : public Desk {
 public:
  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    shown.push_back("box " + box.text);
    return BoxAnswer::Ok;
  }
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override {
    shown.push_back("show " + state.action);
    canCancel = onCancel != nullptr;
  }
  void UpdateMsgForm(const MsgFormState& state) override { shown.push_back("update " + TextsOf(state).txtProg); }
  void UnloadMsgForm() override { shown.emplace_back("unload"); }
  std::optional<std::string> PickVendor(const std::string&, const std::vector<std::string>&) override {
    shown.emplace_back("vendor");
    return {};
  }
  std::string OpenFileDialog(const FileDialog&) override {
    shown.emplace_back("file");
    return {};
  }
  void SetPointer(Pointer) override { shown.emplace_back("pointer"); }
  void Beep() override { shown.emplace_back("beep"); }
  void PumpMessages() override { shown.emplace_back("pump"); }

  std::vector<std::string> shown;
  bool canCancel = true;
};

TEST(ScriptedDesk, The_display_gets_form_and_OK_boxes_and_is_never_asked) {
  RecordingDisplay display;
  ScriptedDesk desk(ParseAnswers("yes\nskip\nskip\n"), &display);
  desk.ShowMsgForm(Progress(std::nullopt), [] {});
  desk.UpdateMsgForm(Progress(Position{1, 1}));
  desk.PumpMessages();
  desk.ShowMessageBox(kYesNo);
  desk.ShowMessageBox(kNotice);
  desk.PickVendor("Which vendor?", {"V1"});
  desk.OpenFileDialog(kFile);
  desk.UnloadMsgForm();
  EXPECT_THAT(display.shown, ElementsAre("show Sending Clients to QuickBooks...", "update 1/1", "pump",
                                         "box Operation cancelled!", "unload"));
  EXPECT_FALSE(display.canCancel);
}

}  // namespace
}  // namespace twqb
