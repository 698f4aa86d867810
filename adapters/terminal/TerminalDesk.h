// The desk of a person at a terminal: boxes and questions as text, the progress form as one line, Ctrl-C as its Cancel.
//
// Behind the seam platform/desk. Where nobody can be asked (input or output is no terminal) it prints the question and
// takes No, Cancel or, for a box with nothing else, OK. It writes to one descriptor, standard error by default:
// standard output belongs to results.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "adapters/terminal/Console.h"
#include "adapters/terminal/InterruptGuard.h"
#include "adapters/terminal/ProgressLine.h"
#include "platform/desk.h"

namespace twqb {

// Who takes Ctrl-C while the progress form is shown: this desk, or the host, which presses Cancel itself.
enum class Interrupts : std::uint8_t { PressCancel, AreTheHosts };

struct TerminalOptions {
  int inputFd = 0;
  int outputFd = 2;
  bool interactive = false;  // questions are asked; set when input and output are both terminals
  Interrupts interrupts = Interrupts::PressCancel;
  bool outputIsTerminal = false;                                   // the progress line may be rewritten in place
  std::chrono::milliseconds plainEvery = std::chrono::seconds(5);  // between lines of progress elsewhere; 0: none
  std::size_t width = 0;  // in columns; 0: as wide as the terminal, 80 where it does not tell

  // Options for two descriptors as the system describes them.
  [[nodiscard]] static TerminalOptions Detect(int inputFd = 0, int outputFd = 2);
};

class TerminalDesk : public Desk {
 public:
  // Descriptors are borrowed for the desk's life.
  explicit TerminalDesk(const TerminalOptions& options = TerminalOptions::Detect());
  // Ends a progress line that is still shown.
  ~TerminalDesk() override;
  TerminalDesk(const TerminalDesk&) = delete;
  TerminalDesk& operator=(const TerminalDesk&) = delete;

  // End of input counts as No or Cancel, and so does a second Ctrl-C at the same prompt while the progress form is
  // shown.
  BoxAnswer ShowMessageBox(const MessageBox& box) override;

  // While the form is shown with an `onCancel`, Ctrl-C on an interactive terminal presses Cancel; else it ends the
  // process as usual.
  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override;
  void UpdateMsgForm(const MsgFormState& state) override;
  void UnloadMsgForm() override;

  // A numbered list; an empty line skips.
  std::optional<std::string> PickVendor(const std::string& message, const std::vector<std::string>& choices) override;
  // Asks until an existing file is named; a relative path starts at the dialog's folder. An empty line cancels.
  std::string OpenFileDialog(const FileDialog& dialog) override;

  // A terminal has no pointer of ours: nothing happens.
  void SetPointer(Pointer pointer) override;
  void Beep() override;
  void PumpMessages() override;

 private:
  class ProgressAside;

  [[nodiscard]] std::size_t BoxWidth() const;
  void TakeUnasked(std::string_view prompt, std::string_view taken);

  TerminalOptions options_;
  Console console_;
  ProgressPainter progress_;
  std::optional<std::string> staleRecord_;  // named by the form since before it was shown
  std::function<void()> onCancel_;
  std::optional<InterruptGuard> interrupts_;
  bool pressing_ = false;  // inside onCancel_: it pumps messages itself
};

}  // namespace twqb
