// Desk, machine and call-back with their events: box, form, file, cursor; sleep, setting, registry, copy, log;
// callback.
#pragma once

#include <memory>

#include "platform/Forwarding.h"

namespace twqb {
class TranscriptWriter;
}

namespace twqb::transcript {

class TranscriptDesk : public ForwardingDesk {
 public:
  TranscriptDesk(Desk& inner, TranscriptWriter& writer) : ForwardingDesk(inner), writer_(writer) {}

  BoxAnswer ShowMessageBox(const MessageBox& box) override;
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override;
  void UpdateMsgForm(const MsgFormState& state) override;
  void UnloadMsgForm() override;
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override;
  std::string OpenFileDialog(const FileDialog& dialog) override;
  void SetPointer(Pointer pointer) override;

 private:
  TranscriptWriter& writer_;
  MsgFormState shown_;  // what the form shows when it is unloaded
};

class TranscriptMachine : public ForwardingMachine {
 public:
  TranscriptMachine(Machine& inner, TranscriptWriter& writer) : ForwardingMachine(inner), writer_(writer) {}

  void Sleep(std::int64_t milliseconds) override;
  std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                      int size, std::string_view path) override;
  // A write that the machine could not do has "result":false.
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override;
  std::optional<std::string> ReadRegistry(std::string_view key, std::string_view name) override;
  void CopyFile(const std::string& from, const std::string& to) override;
  void AppendLine(const std::string& path, std::string_view line) override;

 private:
  TranscriptWriter& writer_;
};

class TranscriptCallbackFactory : public CallbackFactory {
 public:
  // Both must outlive the factory and every object of it.
  TranscriptCallbackFactory(CallbackFactory& inner, TranscriptWriter& writer) : inner_(inner), writer_(writer) {}
  std::unique_ptr<Callback> CreateCallback() override;

 private:
  CallbackFactory& inner_;
  TranscriptWriter& writer_;
};

}  // namespace twqb::transcript
