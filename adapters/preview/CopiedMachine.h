// The machine of a run that must change nothing: settings are written into their copy, the log is kept, and no other
// file is copied.
//
// Clock, luck and registry are the machine's own; but a sleep takes no time, and puts the clock forward instead.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/preview/ScratchFiles.h"
#include "platform/Forwarding.h"

namespace twqb::preview {

class CopiedMachine : public ForwardingMachine {
 public:
  // Both must outlive the object.
  CopiedMachine(Machine& inner, ScratchFiles& files) : ForwardingMachine(inner), files_(files) {}

  [[nodiscard]] Date Now() override {
    return Date::FromUnixSeconds(ForwardingMachine::Now().PlusMilliseconds(slept_).UnixSeconds());
  }
  void Sleep(std::int64_t milliseconds) override {
    if (milliseconds > 0) slept_ += milliseconds;
  }

  [[nodiscard]] std::string GetPrivateProfileString(std::string_view section, std::string_view key,
                                                    std::string_view fallback, int size,
                                                    std::string_view path) override {
    return ForwardingMachine::GetPrivateProfileString(section, key, fallback, size, Worked(path));
  }
  bool WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view path) override {
    const bool isWritten = ForwardingMachine::WritePrivateProfileString(section, key, value, Worked(path));
    if (!isWritten) files_.NoteFailure();
    return isWritten;
  }

  // Fails as a copy does whose source is missing.
  void CopyFile(const std::string& from, const std::string& to) override;
  void AppendLine(const std::string& path, std::string_view line) override;

  // The lines that the log would get.
  [[nodiscard]] const std::vector<std::string>& Log() const { return log_; }

 private:
  [[nodiscard]] std::string Worked(std::string_view path) { return files_.Of(std::string(path)).worked; }

  ScratchFiles& files_;
  std::vector<std::string> log_;
  std::int64_t slept_ = 0;
};

}  // namespace twqb::preview
