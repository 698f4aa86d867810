#include "adapters/terminal/TerminalDesk.h"

#include <fmt/core.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <utility>

#include "adapters/terminal/BoxFormat.h"
#include "adapters/terminal/TextLayout.h"
#include "platform/Flagged.h"
#include "platform/Text.h"

namespace twqb {

namespace fs = std::filesystem;

namespace {

// The form's Cancel button.
constexpr std::string_view kCancelHint = " (Ctrl-C: Cancel)";

// The folder that a dialog starts in: its own, or that of the path that it was given, or the current one.
fs::path StartFolder(const FileDialog& dialog) {
  std::error_code ignored;
  fs::path folder = dialog.folder;
  if (!fs::is_directory(folder, ignored)) folder = folder.parent_path();
  return folder.empty() ? fs::current_path(ignored) : fs::absolute(folder, ignored);
}

// The whole text as a number from 1 to `greatest`, as the index that it stands for.
std::optional<std::size_t> ReadNumber(std::string_view text, std::size_t greatest) {
  std::size_t number = 0;
  const auto* end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end || number < 1 || number > greatest) return std::nullopt;
  return number - 1;
}

// Those that begin with the text, in any case; one that is the text alone.
std::vector<std::size_t> BeginningWith(std::string_view text, const std::vector<std::string>& choices) {
  std::vector<std::size_t> found;
  const auto beginning = UpperCase(text);
  for (std::size_t i = 0; i < choices.size(); ++i) {
    const auto choice = UpperCase(choices[i]);
    if (choice == beginning) return {i};
    if (choice.starts_with(beginning)) found.push_back(i);
  }
  return found;
}

}  // namespace

// Takes the progress line off the screen while something else is printed.
class TerminalDesk::ProgressAside {
 public:
  explicit ProgressAside(ProgressPainter& progress) : progress_(progress) { progress_.Clear(); }
  ~ProgressAside() { progress_.Redraw(); }
  ProgressAside(const ProgressAside&) = delete;
  ProgressAside& operator=(const ProgressAside&) = delete;

 private:
  ProgressPainter& progress_;
};

TerminalOptions TerminalOptions::Detect(int inputFd, int outputFd) {
  const bool outputIsTerminal = isatty(outputFd) == 1;
  return {.inputFd = inputFd,
          .outputFd = outputFd,
          .interactive = outputIsTerminal && isatty(inputFd) == 1,
          .outputIsTerminal = outputIsTerminal};
}

TerminalDesk::TerminalDesk(const TerminalOptions& options)
    : options_(options),
      console_(options.inputFd, options.outputFd, options.width),
      progress_(console_, options.outputIsTerminal ? ProgressStyle::Rewritten : ProgressStyle::Plain,
                options.plainEvery) {}

TerminalDesk::~TerminalDesk() { progress_.End(); }

BoxAnswer TerminalDesk::ShowMessageBox(const MessageBox& box) {
  const ProgressAside aside(progress_);
  console_.Write(FormatBox(box, BoxWidth()));
  auto answer = UnattendedAnswer(box.buttons);
  if (!options_.interactive) {
    if (box.buttons != BoxButtons::Ok) TakeUnasked(FormatPrompt(box), ButtonLabel(answer));
    return answer;
  }
  const auto accept = [&](const std::string& line) {
    if (OffersHelp(box) && IsHelpRequest(line)) {
      console_.Write(fmt::format("See topic {} of {}.\n", box.helpId, OneLine(box.helpFile)));
      return false;
    }
    const auto read = ReadBoxAnswer(box.buttons, line);
    answer = read.value_or(answer);
    return read.has_value();
  };
  // Nobody answering leaves the answer that an unattended box takes.
  static_cast<void>(console_.Ask(FormatPrompt(box), accept));
  return answer;
}

void TerminalDesk::ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) {
  onCancel_ = std::move(onCancel);
  // Where the confirmation can't be asked, Ctrl-C would be answered No for ever: there it keeps ending the process.
  const bool isTakenHere = options_.interrupts == Interrupts::PressCancel;
  if (!options_.interactive || !onCancel_ || !isTakenHere) {
    interrupts_.reset();
  } else if (!interrupts_) {
    console_.ForgetPresses();
    interrupts_.emplace();
  }
  if (!progress_.HasAction())
    console_.Write(fmt::format("{}{}\n", kFormHeading, options_.interactive && onCancel_ ? kCancelHint : ""));
  // A form that is shown begins an action: the record that it still names is that of the one before, or none at all.
  staleRecord_ = state.record;
  auto begun = state;
  begun.record.clear();
  begun.position.reset();
  progress_.Begin(begun);
}

void TerminalDesk::UpdateMsgForm(const MsgFormState& state) {
  if (staleRecord_ && *staleRecord_ == state.record) {
    auto withoutRecord = state;
    withoutRecord.record.clear();
    progress_.Update(withoutRecord);
    return;
  }
  staleRecord_.reset();
  progress_.Update(state);
}

void TerminalDesk::UnloadMsgForm() {
  progress_.End();
  interrupts_.reset();
  onCancel_ = nullptr;
}

std::optional<std::string> TerminalDesk::PickVendor(const std::string& message,
                                                    const std::vector<std::string>& choices) {
  const ProgressAside aside(progress_);
  std::string text = message + std::string(kCrLf);
  for (std::size_t i = 0; i < choices.size(); ++i) text += fmt::format("{:>4}  {}\r\n", i + 1, OneLine(choices[i]));
  if (choices.empty()) text += "(There is no vendor to choose from.)";
  console_.Write(FormatBox({.text = text, .title = "Vendor", .icon = BoxIcon::Question}, BoxWidth()));
  if (choices.empty()) return std::nullopt;

  const auto prompt = fmt::format("Vendor (1 to {}, or how it begins; empty: skip): ", choices.size());
  if (!options_.interactive) {
    TakeUnasked(prompt, "Skip");
    return std::nullopt;
  }
  std::optional<std::size_t> chosen;
  const auto accept = [&](const std::string& line) {
    const auto typed = Trim(line);
    if (typed.empty()) return true;
    chosen = ReadNumber(typed, choices.size());
    if (chosen) return true;
    const auto found = BeginningWith(typed, choices);
    if (found.size() == 1) chosen = found.front();
    if (found.empty()) console_.Write(fmt::format("No vendor begins with {}.\n", OneLine(typed)));
    if (found.size() > 1) {
      std::string several;
      for (const auto i : found) several += fmt::format("{}{}", several.empty() ? "" : ", ", OneLine(choices[i]));
      console_.Write(fmt::format("Several begin with {}: {}.\n", OneLine(typed), several));
    }
    return chosen.has_value();
  };
  if (!console_.Ask(prompt, accept) || !chosen) return std::nullopt;
  return choices[*chosen];
}

std::string TerminalDesk::OpenFileDialog(const FileDialog& dialog) {
  const ProgressAside aside(progress_);
  const auto folder = StartFolder(dialog);
  const auto text = fmt::format("Folder: {}\r\n{}", folder.string(), dialog.filterName);
  console_.Write(FormatBox({.text = text, .title = dialog.title, .icon = BoxIcon::Question}, BoxWidth()));

  constexpr std::string_view kPrompt = "QuickBooks company file (empty: cancel): ";
  if (!options_.interactive) {
    TakeUnasked(kPrompt, ButtonLabel(BoxAnswer::Cancel));
    return {};
  }
  std::string chosen;
  const auto accept = [&](const std::string& line) {
    const auto typed = Trim(line);
    if (typed.empty()) return true;
    const auto path = (folder / typed).lexically_normal();
    std::error_code failure;
    if (!fs::exists(path, failure) || fs::is_directory(path, failure)) {
      console_.Write(fmt::format("There is no file {}.\n", OneLine(path.string())));
      return false;
    }
    chosen = path.string();
    return true;
  };
  return console_.Ask(kPrompt, accept) ? chosen : std::string();
}

void TerminalDesk::SetPointer(Pointer) {}

void TerminalDesk::Beep() {
  if (options_.interactive) console_.Write("\a");
}

void TerminalDesk::PumpMessages() {
  if (interrupts_ && !pressing_ && console_.TakePress()) {
    const Flagged inside(pressing_);
    const auto press = onCancel_;  // it may unload the form, and so itself
    press();
    console_.ForgetPresses();  // those that came while it asked have been heard
  }
  progress_.PaintIfDue();
}

std::size_t TerminalDesk::BoxWidth() const { return std::min(console_.Width(), kWidestBox); }

void TerminalDesk::TakeUnasked(std::string_view prompt, std::string_view taken) {
  console_.Write(fmt::format("{}{} (taken: there is no terminal to ask at)\n", prompt, taken));
}

}  // namespace twqb
