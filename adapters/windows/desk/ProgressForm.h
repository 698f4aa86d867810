// `msgForm`: what a transfer does and how far it is, with a Cancel button.
//
// A press is kept until the desk asks for it at its next pump, so that nothing is interrupted in between.
#pragma once

#include <functional>

#include "adapters/windows/desk/Form.h"
#include "platform/desk.h"

namespace twqb::windows {

class ProgressForm {
 public:
  ProgressForm();

  void Begin(const MsgFormState& state, std::function<void()> onCancel);
  void Update(const MsgFormState& state);
  // What Cancel runs, if it has been pressed since the last call; else nothing.
  [[nodiscard]] std::function<void()> TakePress();
  [[nodiscard]] HWND Window() const { return form_.Window(); }

 private:
  void Tell(const MsgFormState& state);

  Form form_;
  std::function<void()> onCancel_;
  bool isPressed_ = false;
};

}  // namespace twqb::windows
