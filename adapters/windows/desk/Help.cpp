#include "adapters/windows/desk/Help.h"

#include <windows.h>

#include "adapters/windows/late/Owned.h"
#include "platform/Text.h"

namespace twqb::windows {

namespace {

constexpr std::size_t kEndingSize = 4;

// The viewer's one entry; it is not linked, so that a system without it can load the library.
void ShowHtmlHelp(HWND owner, const std::wstring& file, int topic) {
  using HtmlHelp = HWND WINAPI(HWND, LPCWSTR, UINT, DWORD_PTR);
  constexpr UINT kContext = 0x000F;
  static const HMODULE viewer = LoadLibraryW(L"hhctrl.ocx");
  if (viewer == nullptr) return;
  auto* const show = reinterpret_cast<HtmlHelp*>(reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpW")));
  if (show != nullptr) show(owner, file.c_str(), kContext, static_cast<DWORD_PTR>(topic));
}

}  // namespace

void ShowHelpTopic(const std::string& file, int topic) {
  const HWND owner = GetActiveWindow();
  const auto path = Wide(file);
  if (SameName(Right(file, kEndingSize), ".chm")) {
    ShowHtmlHelp(owner, path, topic);
  } else {
    WinHelpW(owner, path.c_str(), HELP_CONTEXT, static_cast<ULONG_PTR>(topic));
  }
}

}  // namespace twqb::windows
