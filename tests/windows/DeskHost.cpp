// What a transfer of the sample firm does not bring up: forms and dialogs of the desk, and settings between the
// library's machine and Windows' own calls. Prints what came of it:
//   desk_host vendor        which vendor was chosen
//   desk_host progress      stands with a progress form until somebody closes it, or a minute is over
//   desk_host box           whether a box has a help button, as one that is told of help does, and one that is not
//   desk_host help FILE     the system's help on a topic of the file
//   desk_host file FOLDER   which file was chosen there
//   desk_host profile FILE  settings that one wrote and the other read, both ways: a line for each that came out
//                           otherwise, and how many came as they went

#include <cstdio>
#include <string>
#include <string_view>

#include "adapters/windows/desk/Help.h"
#include "adapters/windows/desk/WindowsDesk.h"
#include "adapters/windows/machine/WindowsMachine.h"

// The system's header, behind ours: it has names of its own for some of theirs.
#include "adapters/windows/late/Owned.h"
#undef GetPrivateProfileString
#undef MessageBox
#undef WritePrivateProfileString

namespace {

int ShowBox(twqb::Desk& desk) {
  twqb::MessageBox box{.text = "Would you like help?", .title = "Help", .buttons = twqb::BoxButtons::YesNo};
  for (const bool hasHelp : {false, true}) {
    box.help = hasHelp;
    const auto answer = desk.ShowMessageBox(box);
    std::printf("%s\n", answer == twqb::BoxAnswer::Yes ? "yes" : "something else");
  }
  return 0;
}

int ShowFileDialog(twqb::Desk& desk, const std::string& folder) {
  const auto file = desk.OpenFileDialog(
      {.title = "Open a file", .folder = folder, .filterName = "Company files", .pattern = "*.twq"});
  std::printf("%s\n", file.empty() ? "(none)" : file.c_str());
  return 0;
}

int CompareProfiles(const std::string& file) {
  twqb::windows::WindowsMachine machine(".");
  constexpr DWORD kSize = 256;
  const auto path = twqb::windows::Wide(file);
  int same = 0;
  for (const std::string value :
       {"plain", "with blanks in it", "\"in quotes\"", "a = b; c", "3.50", "", "[no section]", "B\xC3\xBCro"}) {
    const auto expect = [&](const char* by, const std::string& got, const std::string& wanted) {
      if (got == wanted) {
        ++same;
      } else {
        std::printf("%s: <%s> for <%s>\n", by, got.c_str(), wanted.c_str());
      }
    };
    // Windows drops quotes around a value when it reads, and writes none; the machine writes so that they come back.
    // A file without a mark of its order of bytes is in the machine's own code page by either kind of call.
    wchar_t theirs[kSize] = {};
    WritePrivateProfileStringW(L"THEIRS", L"Key", twqb::windows::Wide(value).c_str(), path.c_str());
    WritePrivateProfileStringW(nullptr, nullptr, nullptr, path.c_str());
    GetPrivateProfileStringW(L"THEIRS", L"Key", L"nothing", theirs, kSize, path.c_str());
    expect("read here", machine.GetPrivateProfileString("THEIRS", "Key", "nothing", kSize, file),
           twqb::windows::Utf8(theirs));

    machine.WritePrivateProfileString("OURS", "Key", value, file);
    wchar_t ours[kSize] = {};
    GetPrivateProfileStringW(L"OURS", L"Key", L"nothing", ours, kSize, path.c_str());
    expect("written here", twqb::windows::Utf8(ours), value);
  }
  std::printf("%d came as they went\n", same);
  return 0;
}

}  // namespace

int main(int count, char** given) {
  twqb::windows::WindowsDesk desk;
  const std::string_view what = count > 1 ? given[1] : "";
  if (what == "vendor") {
    const auto picked = desk.PickVendor("Which vendor stands for the employee\r\n\"KLEIN, Anna\"?",
                                        {"Ahlberg Surveying", "Böhm & Söhne", "Cloutier"});
    std::printf("%s\n", picked ? picked->c_str() : "(none)");
    return 0;
  }
  if (what == "box") return ShowBox(desk);
  if (what == "help") {
    twqb::windows::ShowHelpTopic(count > 2 ? given[2] : "", 4711);
    return 0;
  }
  if (what == "file") return ShowFileDialog(desk, count > 2 ? given[2] : "");
  if (what == "profile") return CompareProfiles(count > 2 ? given[2] : "");
  bool isPressed = false;
  twqb::MsgFormState state;
  state.caption = " Tallywick";
  state.action = "Sending Clients to QuickBooks...";
  desk.ShowMsgForm(state, [&] { isPressed = true; });
  state.record = "Mühlenbau";
  state.percent = 50;
  state.position = {.done = 32, .total = 64, .timeLeft = std::chrono::seconds(7)};
  desk.UpdateMsgForm(state);
  constexpr int kMostPumps = 600;
  for (int i = 0; i < kMostPumps && !isPressed; ++i) {
    desk.PumpMessages();
    Sleep(100);
  }
  desk.UnloadMsgForm();
  std::printf("%s\n", isPressed ? "pressed" : "left alone");
  return 0;
}
