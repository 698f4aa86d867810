// A desk at which the answers were written down beforehand: for runs without a person, and for tests.
//
// Behind the seam platform/desk. Questions take the answers in their order. It keeps what it was shown; another desk
// may show it to a person as well, who is never asked anything of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/scripted/Answers.h"
#include "platform/desk.h"

namespace twqb {

struct ShownBox {
  MessageBox box;
  BoxAnswer answer = BoxAnswer::Ok;
};

struct ShownVendorForm {
  std::string message;
  std::vector<std::string> choices;
  std::optional<std::string> answer;
};

struct ShownFileDialog {
  FileDialog dialog;
  std::string answer;
};

enum class FormEventKind : std::uint8_t { Show, Update, Unload };

struct FormEvent {
  FormEventKind kind = FormEventKind::Show;
  MsgFormState state;  // of an unloading: the last one
};

class ScriptedDesk : public Desk {
 public:
  // Events of the form that are kept; older ones are dropped, so that a long run does not fill the memory.
  static constexpr std::size_t kKeptFormEvents = 4096;

  // `display` gets the form and the boxes with only OK; it is borrowed, and nullptr when nobody watches.
  explicit ScriptedDesk(Answers answers, Desk* display = nullptr);

  // A box with only OK is answered without an answer. Any other question takes the next answer, or once there is none
  // left the default that it offers. Raises DeskGaveUp, taking nothing, for a question without an answer and for an
  // answer that the question does not offer.
  BoxAnswer ShowMessageBox(const MessageBox& box) override;
  // Takes `vendor` with one of the choices, or `skip`. Raises DeskGaveUp.
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override;
  // Takes `file`, giving the path as it is written, or `cancel` or `skip`. Raises DeskGaveUp.
  std::string OpenFileDialog(const FileDialog& dialog) override;

  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override;
  void UpdateMsgForm(const MsgFormState& state) override;
  void UnloadMsgForm() override;
  // Presses Cancel, at most once in a call, where a `cancel after N` is due by the counter of the form: the records
  // done since ShowMsgForm, but for a form that tells of reading. Each such line is one press.
  void PumpMessages() override;

  void SetPointer(Pointer pointer) override { pointer_ = pointer; }
  void Beep() override { ++beeps_; }

  // Answers in order that no question has taken yet.
  [[nodiscard]] std::size_t Remaining() const { return answers_.inOrder.size() - taken_; }
  // Presses of Cancel that no counter has reached yet.
  [[nodiscard]] std::size_t RemainingPresses() const { return answers_.cancelAfter.size(); }
  [[nodiscard]] const std::vector<ShownBox>& Boxes() const { return boxes_; }
  [[nodiscard]] const std::vector<ShownVendorForm>& VendorForms() const { return vendorForms_; }
  [[nodiscard]] const std::vector<ShownFileDialog>& FileDialogs() const { return fileDialogs_; }
  [[nodiscard]] const std::deque<FormEvent>& FormEvents() const { return formEvents_; }
  // What the form shows; nothing when it is not shown.
  [[nodiscard]] const std::optional<MsgFormState>& Form() const { return form_; }
  [[nodiscard]] Pointer ShownPointer() const { return pointer_; }
  [[nodiscard]] int Beeps() const { return beeps_; }

 private:
  struct Question;

  Answer TakeAnswer(const Question& question);
  void KeepFormEvent(FormEventKind kind, const MsgFormState& state);
  [[nodiscard]] bool TakeDuePress();

  Answers answers_;
  Desk* display_;
  std::size_t taken_ = 0;

  std::optional<MsgFormState> form_;
  std::function<void()> onCancel_;
  std::optional<ProgressPosition> stalePosition_;  // left over from the table before
  std::int64_t counter_ = 0;
  bool pressing_ = false;  // inside onCancel_: it pumps messages itself

  std::vector<ShownBox> boxes_;
  std::vector<ShownVendorForm> vendorForms_;
  std::vector<ShownFileDialog> fileDialogs_;
  std::deque<FormEvent> formEvents_;
  Pointer pointer_ = Pointer::Default;
  int beeps_ = 0;
};

}  // namespace twqb
