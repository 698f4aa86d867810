#include "adapters/scripted/ScriptedDesk.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "platform/Flagged.h"
#include "platform/Text.h"

namespace twqb {

namespace {

using Word = Answer::Word;

std::vector<Word> WordsOf(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::Ok:
      return {Word::Ok};
    case BoxButtons::YesNo:
      return {Word::Yes, Word::No};
    case BoxButtons::RetryCancel:
      return {Word::Retry, Word::Cancel};
  }
  return {};
}

BoxAnswer ToBoxAnswer(Word word) {
  switch (word) {
    case Word::Yes:
      return BoxAnswer::Yes;
    case Word::No:
      return BoxAnswer::No;
    case Word::Retry:
      return BoxAnswer::Retry;
    case Word::Cancel:
      return BoxAnswer::Cancel;
    default:
      return BoxAnswer::Ok;
  }
}

// A text of several lines in one.
std::string Quoted(std::string_view text) { return fmt::format("\"{}\"", Trim(ReplaceAll(text, kCrLf, " "))); }

// The record that the form has come to. A bar that moves while QuickBooks is read counts steps of the reading: no
// record is in hand yet.
std::int64_t CounterOf(const MsgFormState& state) {
  const bool countsRecords = !state.action.starts_with("Reading ");
  return countsRecords && state.position ? state.position->done : 0;
}

}  // namespace

// What TakeAnswer needs to know of a question.
struct ScriptedDesk::Question {
  std::string name;
  std::vector<Word> words;
  std::vector<std::string> vendors = {};  // the ones to choose from

  [[nodiscard]] bool Offers(Word word) const { return std::ranges::find(words, word) != words.end(); }
  [[nodiscard]] bool Offers(const Answer& answer) const {
    if (!Offers(answer.word)) return false;
    return answer.word != Word::Vendor || std::ranges::find(vendors, answer.text) != vendors.end();
  }
  [[nodiscard]] std::string Offered() const {
    std::string list;
    for (const auto word : words) {
      if (!list.empty()) list += ", ";
      switch (word) {
        case Word::File:
          list += "file PATH";
          break;
        case Word::Vendor:
          list += "vendor with one of " + Join(vendors, ", ");
          break;
        default:
          list += ToText(Answer{.word = word});
      }
    }
    return list;
  }
};

ScriptedDesk::ScriptedDesk(Answers answers, Desk* display) : answers_(std::move(answers)), display_(display) {}

Answer ScriptedDesk::TakeAnswer(const Question& question) {
  if (Remaining() > 0) {
    const auto& next = answers_.inOrder[taken_];
    if (!question.Offers(next)) {
      throw DeskGaveUp(fmt::format("The answer \"{}\" is none that this question offers: {}. It offers {}.",
                                   ToText(next), question.name, question.Offered()));
    }
    ++taken_;
    return next;
  }
  for (const auto& answer : answers_.defaults) {
    if (question.Offers(answer)) return answer;
  }
  throw DeskGaveUp(
      fmt::format("No answer is left for this question: {}. It offers {}.", question.name, question.Offered()));
}

BoxAnswer ScriptedDesk::ShowMessageBox(const MessageBox& box) {
  auto answer = BoxAnswer::Ok;
  if (box.buttons == BoxButtons::Ok) {
    if (display_ != nullptr) display_->ShowMessageBox(box);
  } else {
    const auto name = fmt::format("{} (title {})", Quoted(box.text), Quoted(box.title));
    answer = ToBoxAnswer(TakeAnswer({.name = name, .words = WordsOf(box.buttons)}).word);
  }
  boxes_.push_back({.box = box, .answer = answer});
  return answer;
}

std::optional<std::string> ScriptedDesk::PickVendor(const std::string& message,
                                                    const std::vector<std::string>& choices) {
  const auto answer = TakeAnswer({.name = Quoted(message), .words = {Word::Vendor, Word::Skip}, .vendors = choices});
  std::optional<std::string> vendor;
  if (answer.word == Word::Vendor) vendor = answer.text;
  vendorForms_.push_back({.message = message, .choices = choices, .answer = vendor});
  return vendor;
}

std::string ScriptedDesk::OpenFileDialog(const FileDialog& dialog) {
  const auto name = fmt::format("the file dialog {} (folder {})", Quoted(dialog.title), Quoted(dialog.folder));
  auto path = TakeAnswer({.name = name, .words = {Word::File, Word::Cancel, Word::Skip}}).text;
  fileDialogs_.push_back({.dialog = dialog, .answer = path});
  return path;
}

void ScriptedDesk::ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) {
  onCancel_ = std::move(onCancel);
  form_ = state;
  stalePosition_ = state.position;
  counter_ = 0;
  KeepFormEvent(FormEventKind::Show, state);
  // Without a way to cancel: the answers press Cancel, not the person who watches.
  if (display_ != nullptr) display_->ShowMsgForm(state, nullptr);
}

void ScriptedDesk::UpdateMsgForm(const MsgFormState& state) {
  if (!form_) return;
  form_ = state;
  if (state.position != stalePosition_) {
    stalePosition_.reset();
    counter_ = CounterOf(state);
  }
  KeepFormEvent(FormEventKind::Update, state);
  if (display_ != nullptr) display_->UpdateMsgForm(state);
}

void ScriptedDesk::UnloadMsgForm() {
  if (!form_) return;
  KeepFormEvent(FormEventKind::Unload, *form_);
  form_.reset();
  onCancel_ = nullptr;
  counter_ = 0;
  if (display_ != nullptr) display_->UnloadMsgForm();
}

void ScriptedDesk::PumpMessages() {
  if (display_ != nullptr) display_->PumpMessages();
  if (!onCancel_ || pressing_ || !TakeDuePress()) return;
  const Flagged inside(pressing_);
  const auto press = onCancel_;  // it may unload the form, and so itself
  press();
}

bool ScriptedDesk::TakeDuePress() {
  const auto due = std::ranges::find_if(answers_.cancelAfter, [this](int after) { return counter_ >= after; });
  if (due == answers_.cancelAfter.end()) return false;
  answers_.cancelAfter.erase(due);
  return true;
}

void ScriptedDesk::KeepFormEvent(FormEventKind kind, const MsgFormState& state) {
  if (formEvents_.size() < kKeptFormEvents) {
    formEvents_.push_back({.kind = kind, .state = state});
    return;
  }
  // The oldest one gives its memory to the newest.
  auto event = std::move(formEvents_.front());
  formEvents_.pop_front();
  event.kind = kind;
  event.state = state;
  formEvents_.push_back(std::move(event));
}

}  // namespace twqb
