// The desk of a preview: no box waits for anybody. Each is noted, with the answer that the preview goes on with.
//
// That is the one of --answers; without such a file a question is taken as Yes, and what was to be tried again is left
// alone, for nothing would be otherwise in a copy. The progress form is the person's.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "adapters/scripted/ScriptedDesk.h"
#include "adapters/terminal/BoxFormat.h"
#include "cli/preview/Preview.h"
#include "platform/Forwarding.h"

namespace twqb::cli {

class PreviewDesk : public ForwardingDesk {
 public:
  // `display` shows the form. It must outlive the object.
  PreviewDesk(Desk& display, const std::optional<Answers>& answers) : ForwardingDesk(display) {
    if (answers) script_.emplace(*answers);
  }

  [[nodiscard]] const std::vector<PreviewedBox>& Boxes() const { return boxes_; }

  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    const auto answer = script_ ? script_->ShowMessageBox(box) : DefaultAnswer(box.buttons);
    Note(box.title, box.text, box.buttons == BoxButtons::Ok ? std::string() : std::string(ButtonLabel(answer)));
    return answer;
  }
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override {
    auto picked = script_ ? script_->PickVendor(message, choices) : std::nullopt;
    Note("", message, picked.value_or(kNothing));
    return picked;
  }
  std::string OpenFileDialog(const FileDialog& dialog) override {
    auto path = script_ ? script_->OpenFileDialog(dialog) : std::string();
    Note("", dialog.title, path.empty() ? kNothing : path);
    return path;
  }

  // A press of Cancel goes by the form, wherever it comes from. "Sending" alone would frighten.
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override {
    if (script_) script_->ShowMsgForm(state, onCancel);
    ForwardingDesk::ShowMsgForm(OnCopies(state), std::move(onCancel));
  }
  void UpdateMsgForm(const MsgFormState& state) override {
    if (script_) script_->UpdateMsgForm(state);
    ForwardingDesk::UpdateMsgForm(OnCopies(state));
  }
  void UnloadMsgForm() override {
    if (script_) script_->UnloadMsgForm();
    ForwardingDesk::UnloadMsgForm();
  }
  void PumpMessages() override {
    if (script_) script_->PumpMessages();
    ForwardingDesk::PumpMessages();
  }

 private:
  static constexpr const char* kNothing = "nothing";

  static MsgFormState OnCopies(MsgFormState state) {
    state.action = "On copies: " + state.action;
    return state;
  }

  static BoxAnswer DefaultAnswer(BoxButtons buttons) {
    switch (buttons) {
      case BoxButtons::Ok:
        break;
      case BoxButtons::YesNo:
        return BoxAnswer::Yes;
      case BoxButtons::RetryCancel:
        return BoxAnswer::Cancel;
    }
    return BoxAnswer::Ok;
  }

  void Note(std::string title, std::string text, std::string answer) {
    boxes_.push_back({.title = std::move(title),
                      .text = std::move(text),
                      .answer = std::move(answer),
                      .by = script_ ? AnsweredBy::File : AnsweredBy::Default});
  }

  std::optional<ScriptedDesk> script_;
  std::vector<PreviewedBox> boxes_;
};

}  // namespace twqb::cli
