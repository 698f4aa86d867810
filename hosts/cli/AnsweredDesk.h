// The desk of an answers file, showing each question with what it was answered, on the terminal and in the log.
//
// There is nobody who would know of it otherwise: not of a record that was refused in a box that an answer took away.
// It asks nothing itself. The log is a host's line, of which neither transcript nor faults know.
#pragma once

#include <fmt/core.h>

#include <string>

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
    if (box.buttons == BoxButtons::Ok) return answer;
    auto shown = box;
    shown.text = fmt::format("{}\r\n\r\nAnswered from the file: {}", Trim(box.text), ButtonLabel(answer));
    shown.buttons = BoxButtons::Ok;
    display_.ShowMessageBox(shown);
    const auto line = fmt::format("Answered {}: {}", ButtonLabel(answer), Trim(ReplaceAll(box.text, "\r\n", " ")));
    IgnoreErrors([&] { machine_.AppendLine(LogFile(machine_), line); });
    return answer;
  }

 private:
  Desk& display_;
  Machine& machine_;
};

}  // namespace twqb::cli
