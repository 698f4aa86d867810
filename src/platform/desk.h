// The seam to the person at the desk: message boxes, the two forms, the file dialog, the pointer, the beep, and the
// message pump at which a press of Cancel is delivered.
#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace twqb {

enum class BoxIcon : std::uint8_t { None, Information, Question, Warning, Error };
enum class BoxButtons : std::uint8_t { Ok, YesNo, RetryCancel };
// What waits until a box is answered: this program, or every program on the screen.
enum class BoxModality : std::uint8_t { Application, System };
enum class BoxAnswer : std::uint8_t { Ok, Yes, No, Retry, Cancel };

// Title of a box that has none of its own.
inline constexpr std::string_view kDefaultBoxTitle = "TWQBClient90";

struct MessageBox {
  std::string text;   // lines end with CR LF
  std::string title;  // empty: the default one
  BoxIcon icon = BoxIcon::None;
  BoxButtons buttons = BoxButtons::Ok;
  bool help = false;  // a help button, with the two fields below
  std::string helpFile = {};
  int helpId = 0;
  BoxModality modality = BoxModality::Application;
};

// How many records, or steps, of an action are done.
struct ProgressPosition {
  std::int64_t done = 0;
  std::int64_t total = 0;
  // An estimate, below nothing when the clock was put back. Nothing while there is none: each position is shown a
  // moment ahead of its estimate, and at 0 records done there is nothing to estimate from.
  std::optional<std::chrono::milliseconds> timeLeft = {};

  friend bool operator==(const ProgressPosition&, const ProgressPosition&) = default;
};

// What `msgForm` tells at a moment. The texts that its controls show are made in MsgFormTexts.h.
struct MsgFormState {
  std::string caption;
  std::string action;
  std::string record;  // the one in hand
  int percent = 0;     // 0 to 100
  std::optional<ProgressPosition> position;
};

struct FileDialog {
  std::string title;
  std::string folder;  // a folder, or a path whose folder is meant
  std::string filterName;
  std::string pattern;
};

enum class Pointer : std::uint8_t { Default, Wait };

// Raised by a desk that has no answer to give: it passes through the library to the host, which ends the run.
class DeskGaveUp : public std::exception {
 public:
  explicit DeskGaveUp(std::string question) : question_(std::move(question)) {}
  [[nodiscard]] const std::string& question() const noexcept { return question_; }
  [[nodiscard]] const char* what() const noexcept override { return question_.c_str(); }

 private:
  std::string question_;
};

class Desk {
 public:
  virtual ~Desk() = default;

  // Blocks until answered, with an answer that `box.buttons` offers.
  virtual BoxAnswer ShowMessageBox(const MessageBox& box) = 0;

  // Shows the progress form without blocking: an action begins, at 0 per cent. Record and position are still those of
  // the action before, or as the form is drawn, until an update tells others. `onCancel` runs, inside a later
  // PumpMessages, each time Cancel is pressed, until the form is unloaded.
  virtual void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) = 0;
  virtual void UpdateMsgForm(const MsgFormState& state) = 0;
  virtual void UnloadMsgForm() = 0;

  // The vendor picked; nothing when the form was closed without a choice.
  virtual std::optional<std::string> PickVendor(const std::string& message,
                                                const std::vector<std::string>& choices) = 0;
  // The full path chosen; empty when cancelled.
  virtual std::string OpenFileDialog(const FileDialog& dialog) = 0;

  virtual void SetPointer(Pointer pointer) = 0;
  virtual void Beep() = 0;
  virtual void PumpMessages() = 0;
};

}  // namespace twqb
