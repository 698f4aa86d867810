// The desk of a person at a screen: message boxes, both forms, the file dialog, the pointer and the beep of the system.
//
// Behind the seam platform/desk. One thread, the one that made it: its message queue is pumped.
#pragma once

#include <memory>

#include "platform/desk.h"

namespace twqb::windows {

class ProgressForm;

class WindowsDesk : public Desk {
 public:
  WindowsDesk();
  // Takes a form that still stands down.
  ~WindowsDesk() override;
  WindowsDesk(const WindowsDesk&) = delete;
  WindowsDesk& operator=(const WindowsDesk&) = delete;

  BoxAnswer ShowMessageBox(const MessageBox& box) override;
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override;
  void UpdateMsgForm(const MsgFormState& state) override;
  void UnloadMsgForm() override;
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override;
  std::string OpenFileDialog(const FileDialog& dialog) override;
  void SetPointer(Pointer pointer) override;
  void Beep() override;
  void PumpMessages() override;

 private:
  std::unique_ptr<ProgressForm> progress_;
};

}  // namespace twqb::windows
