// Desk, machine and call-back behind the gate.
#pragma once

#include <memory>

#include "adapters/faults/FaultGate.h"
#include "platform/Forwarding.h"

namespace twqb::faults {

class FaultDesk : public ForwardingDesk {
 public:
  FaultDesk(Desk& inner, FaultGate& gate) : ForwardingDesk(inner), gate_(gate) {}

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
  FaultGate& gate_;
};

class FaultMachine : public ForwardingMachine {
 public:
  FaultMachine(Machine& inner, FaultGate& gate) : ForwardingMachine(inner), gate_(gate) {}

  Date Now() override;
  TimeZoneInformation GetTimeZoneInformation() override;
  void Sleep(std::int64_t milliseconds) override;
  std::optional<GuidBytes> CreateGuid() override;
  double Random() override;
  std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                      int size, std::string_view path) override;
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override;
  std::optional<std::string> ReadRegistry(std::string_view key, std::string_view name) override;
  void CopyFile(const std::string& from, const std::string& to) override;
  std::string LibraryFolder() override;
  void AppendLine(const std::string& path, std::string_view line) override;

 private:
  FaultGate& gate_;
};

class FaultCallbackFactory : public CallbackFactory {
 public:
  // Both must outlive the factory and every object of it.
  FaultCallbackFactory(CallbackFactory& inner, FaultGate& gate) : inner_(inner), gate_(gate) {}
  std::unique_ptr<Callback> CreateCallback() override;

 private:
  CallbackFactory& inner_;
  FaultGate& gate_;
};

}  // namespace twqb::faults
