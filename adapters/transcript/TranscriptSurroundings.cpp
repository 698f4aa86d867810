#include "adapters/transcript/TranscriptSurroundings.h"

#include <utility>

#include "adapters/transcript/Recorded.h"
#include "platform/MsgFormTexts.h"

namespace twqb::transcript {

namespace {

std::string_view Name(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return "none";
    case BoxIcon::Information:
      return "information";
    case BoxIcon::Question:
      return "question";
    case BoxIcon::Warning:
      return "warning";
    case BoxIcon::Error:
      return "error";
  }
  return {};
}

std::string_view Name(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::Ok:
      return "ok";
    case BoxButtons::YesNo:
      return "yesno";
    case BoxButtons::RetryCancel:
      return "retrycancel";
  }
  return {};
}

std::string_view Name(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::Ok:
      return "ok";
    case BoxAnswer::Yes:
      return "yes";
    case BoxAnswer::No:
      return "no";
    case BoxAnswer::Retry:
      return "retry";
    case BoxAnswer::Cancel:
      return "cancel";
  }
  return {};
}

std::string_view Name(Pointer pointer) { return pointer == Pointer::Wait ? "wait" : "default"; }

EventFields FormEvent(std::string_view event, const MsgFormState& state) {
  const auto texts = TextsOf(state);
  return {{"form", "msgForm"},    {"event", event},         {"lblItem", texts.lblItem},
          {"Text1", texts.Text1}, {"pbconv", texts.pbconv}, {"txtProg", texts.txtProg}};
}

EventValue OrNull(const std::optional<std::string>& text) { return text ? EventValue(*text) : EventValue(nullptr); }

class TranscriptCallback : public ForwardingCallback {
 public:
  TranscriptCallback(std::unique_ptr<Callback> inner, TranscriptWriter& writer)
      : ForwardingCallback(std::move(inner)), writer_(writer) {}

  int Mode() override {
    return RecordFailure(writer_, "callback", {}, [&] { return ForwardingCallback::Mode(); });
  }
  void SetMode(int mode) override {
    Record(writer_, "callback", {{"mode", mode}}, [&] { ForwardingCallback::SetMode(mode); });
  }
  void SetText(std::string_view text) override {
    Record(writer_, "callback", {{"text", text}}, [&] { ForwardingCallback::SetText(text); });
  }

 private:
  TranscriptWriter& writer_;
};

}  // namespace

// --- Desk

BoxAnswer TranscriptDesk::ShowMessageBox(const MessageBox& box) {
  return Record(
      writer_, "box",
      {{"text", box.text},
       {"title", box.title},
       {"icon", Name(box.icon)},
       {"buttons", Name(box.buttons)},
       {"help", box.help}},
      [&] { return ForwardingDesk::ShowMessageBox(box); },
      [](EventFields& event, BoxAnswer answer) { event["answer"] = Name(answer); });
}

void TranscriptDesk::ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) {
  shown_ = state;
  Record(writer_, "form", FormEvent("show", state), [&] { ForwardingDesk::ShowMsgForm(state, std::move(onCancel)); });
}

void TranscriptDesk::UpdateMsgForm(const MsgFormState& state) {
  shown_ = state;
  Record(writer_, "form", FormEvent("update", state), [&] { ForwardingDesk::UpdateMsgForm(state); });
}

void TranscriptDesk::UnloadMsgForm() {
  Record(writer_, "form", FormEvent("unload", shown_), [&] { ForwardingDesk::UnloadMsgForm(); });
  shown_ = {};
}

std::optional<std::string> TranscriptDesk::PickVendor(const std::string& message,
                                                      const std::vector<std::string>& choices) {
  return Record(
      writer_, "form", {{"form", "frmPickVendor"}, {"lblMsg", message}, {"choices", ListOf(choices)}},
      [&] { return ForwardingDesk::PickVendor(message, choices); },
      [](EventFields& event, const std::optional<std::string>& vendor) { event["answer"] = OrNull(vendor); });
}

std::string TranscriptDesk::OpenFileDialog(const FileDialog& dialog) {
  return Record(
      writer_, "file", {{"title", dialog.title}, {"folder", dialog.folder}},
      [&] { return ForwardingDesk::OpenFileDialog(dialog); },
      [](EventFields& event, const std::string& path) { event["answer"] = path; });
}

void TranscriptDesk::SetPointer(Pointer pointer) {
  Record(writer_, "cursor", {{"shape", Name(pointer)}}, [&] { ForwardingDesk::SetPointer(pointer); });
}

// --- Machine

void TranscriptMachine::Sleep(std::int64_t milliseconds) {
  Record(writer_, "sleep", {{"milliseconds", milliseconds}}, [&] { ForwardingMachine::Sleep(milliseconds); });
}

std::string TranscriptMachine::GetPrivateProfileString(std::string_view section, std::string_view key,
                                                       std::string_view fallback, int size, std::string_view path) {
  return Record(
      writer_, "setting", {{"operation", "read"}, {"section", section}, {"key", key}},
      [&] { return ForwardingMachine::GetPrivateProfileString(section, key, fallback, size, path); },
      [](EventFields& event, const std::string& value) { event["value"] = value; });
}

bool TranscriptMachine::WritePrivateProfileString(std::string_view section, std::string_view key,
                                                  std::string_view value, std::string_view path) {
  return Record(
      writer_, "setting", {{"operation", "write"}, {"section", section}, {"key", key}, {"value", value}},
      [&] { return ForwardingMachine::WritePrivateProfileString(section, key, value, path); },
      [](EventFields& event, bool written) {
        if (!written) event["result"] = false;
      });
}

std::optional<std::string> TranscriptMachine::ReadRegistry(std::string_view key, std::string_view name) {
  return Record(
      writer_, "registry", {{"key", key}, {"name", name}}, [&] { return ForwardingMachine::ReadRegistry(key, name); },
      [](EventFields& event, const std::optional<std::string>& value) { event["value"] = OrNull(value); });
}

void TranscriptMachine::CopyFile(const std::string& from, const std::string& to) {
  Record(writer_, "copy", {{"from", from}, {"to", to}}, [&] { ForwardingMachine::CopyFile(from, to); });
}

void TranscriptMachine::AppendLine(const std::string& path, std::string_view line) {
  Record(writer_, "log", {{"line", line}}, [&] { ForwardingMachine::AppendLine(path, line); });
}

// --- Call-back

std::unique_ptr<Callback> TranscriptCallbackFactory::CreateCallback() {
  auto callback = RecordFailure(writer_, "callback", {}, [&] { return inner_.CreateCallback(); });
  return std::make_unique<TranscriptCallback>(std::move(callback), writer_);
}

}  // namespace twqb::transcript
