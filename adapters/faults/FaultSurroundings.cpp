#include "adapters/faults/FaultSurroundings.h"

#include <utility>

namespace twqb::faults {

namespace {

class FaultCallback : public ForwardingCallback {
 public:
  FaultCallback(std::unique_ptr<Callback> inner, FaultGate& gate) : ForwardingCallback(std::move(inner)), gate_(gate) {}

  int Mode() override {
    return gate_.Run({"Callback.Mode", FaultPoint::Callback, "mode"}, [&] { return ForwardingCallback::Mode(); });
  }
  void SetMode(int mode) override {
    gate_.Run({"Callback.SetMode", FaultPoint::Callback, "mode"}, [&] { ForwardingCallback::SetMode(mode); });
  }
  void SetText(std::string_view text) override {
    gate_.Run({"Callback.SetText", FaultPoint::Callback, "text"}, [&] { ForwardingCallback::SetText(text); });
  }

 private:
  FaultGate& gate_;
};

}  // namespace

// --- Desk

BoxAnswer FaultDesk::ShowMessageBox(const MessageBox& box) {
  return gate_.Run({"Desk.ShowMessageBox", FaultPoint::Box, box.text},
                   [&] { return ForwardingDesk::ShowMessageBox(box); });
}

void FaultDesk::ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) {
  gate_.Run({"Desk.ShowMsgForm", FaultPoint::Form, "show"},
            [&] { ForwardingDesk::ShowMsgForm(state, std::move(onCancel)); });
}

void FaultDesk::UpdateMsgForm(const MsgFormState& state) {
  gate_.Run({"Desk.UpdateMsgForm", FaultPoint::Form, "update"}, [&] { ForwardingDesk::UpdateMsgForm(state); });
}

void FaultDesk::UnloadMsgForm() {
  gate_.Run({"Desk.UnloadMsgForm", FaultPoint::Form, "unload"}, [&] { ForwardingDesk::UnloadMsgForm(); });
}

std::optional<std::string> FaultDesk::PickVendor(const std::string& message, const std::vector<std::string>& choices) {
  return gate_.Run({"Desk.PickVendor", FaultPoint::Form, "vendor"},
                   [&] { return ForwardingDesk::PickVendor(message, choices); });
}

std::string FaultDesk::OpenFileDialog(const FileDialog& dialog) {
  return gate_.Run({"Desk.OpenFileDialog", FaultPoint::File}, [&] { return ForwardingDesk::OpenFileDialog(dialog); });
}

void FaultDesk::SetPointer(Pointer pointer) {
  gate_.Run({"Desk.SetPointer"}, [&] { ForwardingDesk::SetPointer(pointer); });
}

void FaultDesk::Beep() {
  gate_.Run({"Desk.Beep"}, [&] { ForwardingDesk::Beep(); });
}

void FaultDesk::PumpMessages() {
  gate_.Run({"Desk.PumpMessages"}, [&] { ForwardingDesk::PumpMessages(); });
}

// --- Machine

Date FaultMachine::Now() {
  return gate_.Run({"Machine.Now"}, [&] { return ForwardingMachine::Now(); });
}

TimeZoneInformation FaultMachine::GetTimeZoneInformation() {
  return gate_.Run({"Machine.GetTimeZoneInformation"}, [&] { return ForwardingMachine::GetTimeZoneInformation(); });
}

void FaultMachine::Sleep(std::int64_t milliseconds) {
  gate_.Run({"Machine.Sleep"}, [&] { ForwardingMachine::Sleep(milliseconds); });
}

std::optional<GuidBytes> FaultMachine::CreateGuid() {
  return gate_.Run({"Machine.CreateGuid", FaultPoint::Guid}, [&] { return ForwardingMachine::CreateGuid(); });
}

double FaultMachine::Random() {
  return gate_.Run({"Machine.Random"}, [&] { return ForwardingMachine::Random(); });
}

std::string FaultMachine::GetPrivateProfileString(std::string_view section, std::string_view key,
                                                  std::string_view fallback, int size, std::string_view path) {
  return gate_.Run({"Machine.GetPrivateProfileString", FaultPoint::Settings, key, "read"},
                   [&] { return ForwardingMachine::GetPrivateProfileString(section, key, fallback, size, path); });
}

bool FaultMachine::WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                             std::string_view path) {
  return gate_.Run({"Machine.WritePrivateProfileString", FaultPoint::Settings, key, "write"},
                   [&] { return ForwardingMachine::WritePrivateProfileString(section, key, value, path); });
}

std::optional<std::string> FaultMachine::ReadRegistry(std::string_view key, std::string_view name) {
  return gate_.Run({"Machine.ReadRegistry"}, [&] { return ForwardingMachine::ReadRegistry(key, name); });
}

void FaultMachine::CopyFile(const std::string& from, const std::string& to) {
  gate_.Run({"Machine.CopyFile", FaultPoint::Copy}, [&] { ForwardingMachine::CopyFile(from, to); });
}

std::string FaultMachine::LibraryFolder() {
  return gate_.Run({"Machine.LibraryFolder"}, [&] { return ForwardingMachine::LibraryFolder(); });
}

void FaultMachine::AppendLine(const std::string& path, std::string_view line) {
  gate_.Run({"Machine.AppendLine", FaultPoint::Log, line}, [&] { ForwardingMachine::AppendLine(path, line); });
}

// --- Call-back

std::unique_ptr<Callback> FaultCallbackFactory::CreateCallback() {
  auto inner = gate_.Run({"CallbackFactory.CreateCallback", FaultPoint::Callback, "create"},
                         [&] { return inner_.CreateCallback(); });
  return std::make_unique<FaultCallback>(std::move(inner), gate_);
}

}  // namespace twqb::faults
