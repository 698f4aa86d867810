// Presses what a person would: the Yes, or else the OK, of each message box that comes up, and writes its title and
// text down.
//   presser OUT STOP [cancel] [vendor NUMBER] [file PATH]
// Ends once the file STOP is there. With "cancel" it also presses Cancel on the progress form, once; with "vendor" it
// chooses that entry of the vendors' form and presses OK; with "file" it types that path where a file is asked for, and
// presses OK.

#include <windows.h>

#include <array>
#include <cstdio>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kCancel = 107;
constexpr int kVendors = 202;
constexpr int kVendorOk = 203;
constexpr int kFileName = 0x47C;  // in the system's file dialog

struct Orders {
  std::FILE* out = nullptr;
  bool cancels = false;
  int vendor = -1;
  std::string file;
  std::set<HWND> done;
};

std::string Utf8(const wchar_t* text) {
  std::array<char, 16'384> bytes = {};
  WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), static_cast<int>(bytes.size()) - 1, nullptr, nullptr);
  return bytes.data();
}

// Of a window of another program too.
std::string TextOf(HWND window) {
  std::array<wchar_t, 8'192> text = {};
  SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return Utf8(text.data());
}

std::string ClassOf(HWND window) {
  std::array<wchar_t, 64> name = {};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return Utf8(name.data());
}

BOOL CALLBACK TakeText(HWND child, LPARAM into) {
  auto& text = *reinterpret_cast<std::string*>(into);
  if (const auto own = TextOf(child); ClassOf(child) == "Static" && !own.empty()) text += own;
  return TRUE;
}

BOOL CALLBACK FindFileName(HWND child, LPARAM into) {
  if (GetDlgCtrlID(child) != kFileName || ClassOf(child) != "Edit") return TRUE;
  *reinterpret_cast<HWND*>(into) = child;
  return FALSE;
}

void Press(HWND window, int number) {
  const HWND button = GetDlgItem(window, number);
  PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(button));
}

BOOL CALLBACK LookAt(HWND window, LPARAM given) {
  auto& orders = *reinterpret_cast<Orders*>(given);
  if (!IsWindowVisible(window) || orders.done.contains(window)) return TRUE;
  const auto kind = ClassOf(window);
  HWND name = nullptr;
  if (kind == "#32770") EnumChildWindows(window, FindFileName, reinterpret_cast<LPARAM>(&name));
  if (name != nullptr) {
    SendMessageA(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(orders.file.c_str()));
    std::fprintf(orders.out, "file dialog [%s]\n", TextOf(window).c_str());
    Press(window, orders.file.empty() ? IDCANCEL : IDOK);
    orders.done.insert(window);
  } else if (kind == "#32770") {
    std::string text;
    EnumChildWindows(window, TakeText, reinterpret_cast<LPARAM>(&text));
    const char* const help = GetDlgItem(window, IDHELP) != nullptr ? " (with help)" : "";
    std::fprintf(orders.out, "[%s]%s %s\n", TextOf(window).c_str(), help, text.c_str());
    for (const int number : {IDYES, IDOK}) {
      if (GetDlgItem(window, number) == nullptr) continue;
      Press(window, number);
      break;
    }
    orders.done.insert(window);
  } else if (kind == "TWQBClient90Form" && orders.cancels && GetDlgItem(window, kCancel) != nullptr) {
    std::fprintf(orders.out, "form %s\n", TextOf(window).c_str());
    Press(window, kCancel);
    orders.done.insert(window);
  } else if (kind == "TWQBClient90Form" && orders.vendor >= 0 && GetDlgItem(window, kVendors) != nullptr) {
    SendMessageW(GetDlgItem(window, kVendors), CB_SETCURSEL, static_cast<WPARAM>(orders.vendor), 0);
    Press(window, kVendorOk);
    orders.done.insert(window);
  }
  std::fflush(orders.out);
  return TRUE;
}

}  // namespace

int main(int count, char** given) {
  if (count < 3) return 2;
  Orders orders;
  orders.out = std::fopen(given[1], "wb");
  if (orders.out == nullptr) return 2;
  for (int i = 3; i < count; ++i) {
    if (std::string_view(given[i]) == "cancel") orders.cancels = true;
    if (std::string_view(given[i]) == "vendor" && i + 1 < count) orders.vendor = std::atoi(given[i + 1]);
    if (std::string_view(given[i]) == "file" && i + 1 < count) orders.file = given[i + 1];
  }
  constexpr DWORD kPause = 20;
  while (GetFileAttributesA(given[2]) == INVALID_FILE_ATTRIBUTES) {
    EnumWindows(LookAt, reinterpret_cast<LPARAM>(&orders));
    // A window that is gone may leave its number to the next.
    std::erase_if(orders.done, [](HWND window) { return !IsWindow(window); });
    Sleep(kPause);
  }
  std::fclose(orders.out);
  return 0;
}
