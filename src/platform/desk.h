// The seam to the person at the desk: message boxes, the two forms, the file dialog, the pointer, the beep, and the
// message pump at which a press of Cancel is delivered.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace twqb {

enum class BoxIcon : std::uint8_t { None, Information, Question, Warning, Error };
enum class BoxButtons : std::uint8_t { Ok, YesNo, RetryCancel };
// What waits until a box is answered: this program, or every program on the screen.
enum class BoxModality : std::uint8_t { Application, System };
enum class BoxAnswer : std::uint8_t { Ok, Yes, No, Retry, Cancel };

struct MessageBox {
  std::string text;   // lines end with CR LF
  std::string title;  // empty: the system's default
  BoxIcon icon = BoxIcon::None;
  BoxButtons buttons = BoxButtons::Ok;
  bool help = false;  // a help button, with the two fields below
  std::string helpFile = {};
  int helpId = 0;
  BoxModality modality = BoxModality::Application;
};

// What `msgForm` shows at a moment, each field named after its control.
struct MsgFormState {
  std::string caption;
  std::string lblItem;  // the action
  std::string Text1;    // the record in hand
  int pbconv = 0;       // per cent, 0 to 100
  std::string txtProg;  // position and time left
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

  // Shows the progress form without blocking. `onCancel` runs, inside a later PumpMessages, each time Cancel is
  // pressed, until the form is unloaded.
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
