// commdlg.h leans on the system's first header.
// clang-format off
#include <windows.h>
#include <commdlg.h>
// clang-format on

#include "adapters/windows/desk/WindowsDesk.h"

#include <array>
#include <filesystem>

#include "adapters/windows/desk/Help.h"
#include "adapters/windows/desk/ProgressForm.h"
#include "adapters/windows/desk/VendorForm.h"
#include "adapters/windows/late/Owned.h"

namespace twqb::windows {

namespace {

UINT StyleOf(const MessageBox& box) {
  UINT style = box.help ? MB_HELP : 0;
  switch (box.buttons) {
    case BoxButtons::Ok:
      break;
    case BoxButtons::YesNo:
      style |= MB_YESNO;
      break;
    case BoxButtons::RetryCancel:
      style |= MB_RETRYCANCEL;
      break;
  }
  switch (box.icon) {
    case BoxIcon::None:
      break;
    case BoxIcon::Information:
      style |= MB_ICONINFORMATION;
      break;
    case BoxIcon::Question:
      style |= MB_ICONQUESTION;
      break;
    case BoxIcon::Warning:
      style |= MB_ICONWARNING;
      break;
    case BoxIcon::Error:
      style |= MB_ICONERROR;
      break;
  }
  if (box.modality == BoxModality::System) style |= MB_SYSTEMMODAL;
  return style;
}

// What no button tells, a box that can't be shown, takes what does the least.
BoxAnswer AnswerOf(int pressed, BoxButtons buttons) {
  switch (pressed) {
    case IDOK:
      return BoxAnswer::Ok;
    case IDYES:
      return BoxAnswer::Yes;
    case IDNO:
      return BoxAnswer::No;
    case IDRETRY:
      return BoxAnswer::Retry;
    default:
      break;
  }
  if (buttons == BoxButtons::YesNo) return BoxAnswer::No;
  return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
}

// Of a path whose folder is meant.
std::wstring FolderOf(const std::string& path) {
  std::error_code ignored;
  const std::filesystem::path given(Wide(path));
  return (std::filesystem::is_directory(given, ignored) ? given : given.parent_path()).wstring();
}

// The help of the box in hand; there is one thread, and one box at a time.
const MessageBox* helped = nullptr;

void CALLBACK ShowHelp(HELPINFO* /*asked*/) {
  if (helped != nullptr) ShowHelpTopic(helped->helpFile, helped->helpId);
}

}  // namespace

WindowsDesk::WindowsDesk() = default;
WindowsDesk::~WindowsDesk() = default;

BoxAnswer WindowsDesk::ShowMessageBox(const MessageBox& box) {
  const auto text = Wide(box.text);
  const auto title = Wide(box.title.empty() ? kDefaultBoxTitle : box.title);
  MSGBOXPARAMSW parameters = {};
  parameters.cbSize = sizeof parameters;
  parameters.hwndOwner = GetActiveWindow();
  parameters.lpszText = text.c_str();
  parameters.lpszCaption = title.c_str();  // without one, Windows puts "Error"
  parameters.dwStyle = StyleOf(box);
  parameters.lpfnMsgBoxCallback = box.help ? ShowHelp : nullptr;
  helped = &box;
  const int pressed = MessageBoxIndirectW(&parameters);
  helped = nullptr;
  return AnswerOf(pressed, box.buttons);
}

void WindowsDesk::ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) {
  if (!progress_) progress_ = std::make_unique<ProgressForm>();
  progress_->Begin(state, std::move(onCancel));
}

void WindowsDesk::UpdateMsgForm(const MsgFormState& state) {
  if (progress_) progress_->Update(state);
}

void WindowsDesk::UnloadMsgForm() { progress_.reset(); }

std::optional<std::string> WindowsDesk::PickVendor(const std::string& message,
                                                   const std::vector<std::string>& choices) {
  return AskForVendor(message, choices);
}

std::string WindowsDesk::OpenFileDialog(const FileDialog& dialog) {
  const auto title = Wide(dialog.title);
  const auto folder = FolderOf(dialog.folder);
  // Pairs of a name and a pattern, each ended by a zero, and the list by another one.
  const auto filter = Wide(dialog.filterName) + L'\0' + Wide(dialog.pattern) + L'\0';
  std::array<wchar_t, 32'768> path = {};
  OPENFILENAMEW asked = {};
  asked.lStructSize = sizeof asked;
  asked.hwndOwner = GetActiveWindow();
  asked.lpstrFilter = filter.c_str();
  asked.lpstrFile = path.data();
  asked.nMaxFile = static_cast<DWORD>(path.size());
  asked.lpstrInitialDir = folder.c_str();
  asked.lpstrTitle = title.c_str();
  // The host's own folder stays its own.
  asked.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return GetOpenFileNameW(&asked) != 0 ? Utf8(path.data()) : std::string();
}

void WindowsDesk::SetPointer(Pointer pointer) {
  constexpr int kArrow = 32512;
  constexpr int kWait = 32514;
  SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(pointer == Pointer::Wait ? kWait : kArrow)));
}

void WindowsDesk::Beep() { MessageBeep(MB_OK); }

void WindowsDesk::PumpMessages() {
  MSG next = {};
  while (PeekMessageW(&next, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (next.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(next.wParam));  // the host's to hear
      break;
    }
    // Keys that move within the form, and that press its button.
    if (progress_ && IsDialogMessageW(progress_->Window(), &next) != 0) continue;
    TranslateMessage(&next);
    DispatchMessageW(&next);
  }
  // It may take the form down, and with it the routine itself: this one is a copy.
  const auto press = progress_ ? progress_->TakePress() : std::function<void()>();
  if (press) press();
}

}  // namespace twqb::windows
