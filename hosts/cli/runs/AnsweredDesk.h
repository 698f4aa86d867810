// The desk of an answers file, showing each question with what it was answered, on the terminal and in the log.
//
// There is nobody who would know of it otherwise: not of a record that was refused in a box that an answer took away.
// It asks nothing itself. The log is a host's line, of which neither transcript nor faults know.
#pragma once

#include <fmt/core.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/terminal/BoxFormat.h"
#include "platform/Forwarding.h"
#include "platform/Text.h"
#include "platform/machine.h"
#include "services/Errors.h"

namespace twqb::cli {

class AnsweredDesk : public ForwardingDesk {
 public:
  // All three must outlive the object.
  AnsweredDesk(Desk& script, Desk& display, Machine& machine)
      : ForwardingDesk(script), display_(display), machine_(machine) {}

  BoxAnswer ShowMessageBox(const MessageBox& box) override {
    const auto answer = ForwardingDesk::ShowMessageBox(box);
    // A box with only OK is shown by the script.
    if (box.buttons != BoxButtons::Ok) Show(box, ButtonLabel(answer));
    return answer;
  }

  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override {
    auto picked = ForwardingDesk::PickVendor(message, choices);
    Show({.text = message}, picked ? *picked : kNothing);
    return picked;
  }

  std::string OpenFileDialog(const FileDialog& dialog) override {
    auto path = ForwardingDesk::OpenFileDialog(dialog);
    Show({.text = dialog.title}, path.empty() ? kNothing : path);
    return path;
  }

 private:
  static constexpr const char* kNothing = "nothing";

  void Show(MessageBox box, std::string_view answer) {
    const auto text = Trim(box.text);
    box.text = fmt::format("{}\r\n\r\nAnswered from the file: {}", text, answer);
    box.buttons = BoxButtons::Ok;
    display_.ShowMessageBox(box);
    const auto line = fmt::format("Answered {}: {}", answer, ReplaceAll(text, "\r\n", " "));
    IgnoreErrors([&] { machine_.AppendLine(LogFile(machine_), line); });
  }

  Desk& display_;
  Machine& machine_;
};

}  // namespace twqb::cli
