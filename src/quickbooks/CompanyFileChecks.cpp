#include "quickbooks/CompanyFileChecks.h"

#include <fmt/core.h>

#include <cstdint>
#include <optional>

#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Session.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Settings.h"

namespace twqb {

namespace {

constexpr ErrorNumber kCannotOpenPreviousFile = 0x80040406;
constexpr ErrorNumber kWaitingForInput = 0x80040414;
constexpr ErrorNumber kNeedsFileName = 0x80040416;
constexpr ErrorNumber kNeedsFileNameToo = 0x80040417;
constexpr ErrorNumber kNoPermission = 0x80040418;
constexpr ErrorNumber kNoAutoLogon = 0x8004041D;

constexpr std::string_view kGeneral = "GENERAL";
constexpr std::string_view kCompanyFileKey = "QBDBPath";
constexpr std::string_view kFirstTimeKey = "FIRST_TIME";
constexpr std::string_view kApplicationKey = "TW80";
constexpr std::string_view kBackupSuffix = "_TWB.bak";

std::string StoredCompanyFile() { return gf_ReadSettings(kGeneral, kCompanyFileKey, Vars().g_TWSettingsPath); }
// Inside the retry loop errors are collected, not raised.
std::string StoredCompanyFileOrEmpty() {
  std::string file;
  IgnoreErrors([&] { file = StoredCompanyFile(); });
  return file;
}

int withoutTrace = 0;  // those of SessionWithoutTrace that live

[[nodiscard]] bool StoreCompanyFile(std::string_view file) {
  if (withoutTrace > 0) return true;
  return gf_WriteSettings(kGeneral, kCompanyFileKey, file, Vars().g_TWSettingsPath);
}

// The user said No: CloseConnection without EndSession, a shortcut that QuickBooks takes as both.
bool GiveUp() {
  TheSession()->CloseConnection();
  DropSession();
  return false;
}

// A setting could not be written, and the user has been told: no session is left behind.
bool TakeDown() {
  IgnoreErrors([] { TheSession()->EndSession(); });
  IgnoreErrors([] { TheSession()->CloseConnection(); });
  DropSession();
  return false;
}

std::string ProblemText(const PlatformError& raised, std::string_view file) {
  constexpr std::string_view kSupport =
      "\r\nIf you are unable to resolve this problem, please\r\ncontact technical support.\r\n";
  switch (raised.number()) {
    case kCannotOpenPreviousFile:
      // No line break stands between the closing quote and "Click".
      return fmt::format(
          "Can't open the previously opened QuickBooks Company File,\r\n\"{}\"Click \"Retry\" to use the currently "
          "opened QuickBooks Company File\r\n{}",
          file, kSupport);
    case kWaitingForInput:
      return "QuickBooks is waiting for an input from you.\r\n"
             "Please respond to the QuickBooks application before continuing.\r\n";
    case kNoPermission:
      return fmt::format(
          "You have not given permission to access the QuickBooks Company file,\r\n\"{}\"\r\n"
          "Please run QuickBooks, open this company file and give the permission for\r\n"
          "this application to access this Company file.\r\n{}",
          file, kSupport);
    case kNoAutoLogon:
      return fmt::format(
          "The application was unable to log on to QuickBooks, because you have not\r\n"
          "given it \"Auto-Logon\" permission.\r\n"
          "Please open QuickBooks and make sure you have allowed this application to\r\n"
          "log on automatically.\r\n{}",
          kSupport);
    default:
      return fmt::format(
          "Unable to establish connection with your QuickBooks\r\n"
          "database. Please make sure that you have started\r\n"
          "QuickBooks and opened your Company file.\r\n\r\n"
          "The following error has occured: -\r\n"
          "Error # {}\r\n{}\r\n{}",
          static_cast<std::int32_t>(raised.number()), raised.description(), kSupport);
  }
}

// The connection was started from the QuickBooks menu: no box may ask for a retry. A value that is none counts as no.
bool StartedFromMenu() {
  bool started = false;
  IgnoreErrors([&] { started = TextToBoolean(RegGetSetting(kApplicationKey, kGeneral, "QB_MNUSUBSCRIBE", "0")); });
  return started;
}

BoxAnswer AskForRetry(std::string text) {
  if (StartedFromMenu()) return BoxAnswer::Cancel;
  return TheDesk().ShowMessageBox({.text = std::move(text),
                                   .title = "Problem",
                                   .icon = BoxIcon::Information,
                                   .buttons = BoxButtons::RetryCancel,
                                   .help = true,
                                   .helpFile = Vars().g_HelpFilePath,
                                   .helpId = Vars().g_HelpID});
}

// Asks for a company file, beginning at the stored one; "" when the user cancelled.
std::string PickCompanyFile() {
  const auto stored = StoredCompanyFileOrEmpty();
  return gf_OpenFile(stored.empty() ? TheMachine().LibraryFolder() : stored);
}

bool AskForChangedFile(std::string_view currentFile, std::string_view lastFile) {
  const auto answer = TheDesk().ShowMessageBox(
      {.text = fmt::format("The QuickBooks data file you are currently trying to Sync\r\n"
                           "data with is different than the one you synced with last time.\r\n\r\n"
                           "Current File:\r\n{}\r\n\r\n"
                           "Last time you synced with this file:\r\n{}\r\n\r\n"
                           "Are you sure you want to Sync with this data file?\r\n",
                           currentFile, lastFile),
       .title = "Warning",
       .icon = BoxIcon::Question,
       .buttons = BoxButtons::YesNo});
  return answer == BoxAnswer::Yes;
}

// A copy that fails is no error of the run and changes nothing of what is shown; the log alone knows.
void CopyToBackup(const std::string& file, const std::string& copy, std::string_view ofWhat) {
  const auto raised = CatchError([&] { TheMachine().CopyFile(file, copy); });
  if (!raised) return;
  WriteLog(file.empty() ? fmt::format("There is no backup of the {}: its path is not known.", ofWhat)
                        : fmt::format("There is no backup of the {} \"{}\": {}", ofWhat, file, raised->description()));
}

void BackUp(const std::string& companyFile, const std::string& databaseFile) {
  const auto companyCopy = companyFile + std::string(kBackupSuffix);
  const auto databaseCopy = databaseFile + std::string(kBackupSuffix);
  IgnoreErrors([] { TheDesk().SetPointer(Pointer::Wait); });
  CopyToBackup(companyFile, companyCopy, "company file");
  CopyToBackup(databaseFile, databaseCopy, "database");
  IgnoreErrors([] { TheDesk().SetPointer(Pointer::Default); });
  // The copies' results are not looked at.
  IgnoreErrors([&] {
    TheDesk().ShowMessageBox(
        {.text = fmt::format("Backup completed! File Locations:\r\n\r\n{}\r\n{}\r\n", companyCopy, databaseCopy),
         .title = "Back Complete",
         .icon = BoxIcon::Information});
  });
}

[[nodiscard]] bool OfferFirstBackup(const std::string& companyFile, const std::string& databaseFile) {
  const auto& path = Vars().g_TWSettingsPath;
  if (withoutTrace > 0) return true;
  if (UpperCase(gf_ReadSettings(kGeneral, kFirstTimeKey, path, "True")) != "TRUE") return true;
  const auto answer =
      TheDesk().ShowMessageBox({.text = "It appears you are using QuickBooks data integration for the\r\n"
                                        "first time. It is recommended that you backup your QuickBooks\r\n"
                                        "and Tallywick data files.\r\n\r\n"
                                        "Would you like to backup your data files Now?\r\n",
                                .title = "Backup QB Data file?",
                                .icon = BoxIcon::Question,
                                .buttons = BoxButtons::YesNo,
                                .help = true,
                                .helpFile = Vars().g_HelpFilePath,
                                .helpId = Vars().g_HelpID});
  if (answer == BoxAnswer::Yes) BackUp(companyFile, databaseFile);
  return gf_WriteSettings(kGeneral, kFirstTimeKey, "False", path);
}

}  // namespace

SessionWithoutTrace::SessionWithoutTrace() { ++withoutTrace; }
SessionWithoutTrace::~SessionWithoutTrace() { --withoutTrace; }

std::string gf_OpenFile(std::string_view strInitialFolder) {
  constexpr std::size_t kFileBuffer = 255;  // characters, the closing NUL included
  std::string chosen;
  const auto raised = CatchError([&] {
    chosen = TheDesk().OpenFileDialog({.title = "Open QuickBooks File",
                                       .folder = std::string(strInitialFolder),
                                       .filterName = "QuickBooks Files (*.qbw)",
                                       .pattern = "*.qbw"});
    if (CharacterCount(chosen) >= kFileBuffer) chosen.clear();  // the dialog can't hand it over
    TheDesk().PumpMessages();
  });
  if (!raised) return chosen;
  TheDesk().ShowMessageBox(
      {.text = fmt::format("An unknown Error occurred in gf_OpenFile.\n Please contact software vendor.  Error Num: "
                           "{} \n{}",
                           static_cast<std::int32_t>(raised->number()), raised->description())});
  return {};
}

bool RetryBeginSession(OpenMode mode) {
  // The company file of the last session.
  auto file = StoredCompanyFileOrEmpty();
  const auto giveUp = [] {
    IgnoreErrors([] { TheSession()->CloseConnection(); });
    DropSession();
    return false;
  };
  while (true) {
    // Try it.
    const auto raised = CatchError([&] { TheSession()->BeginSession(file, mode); });
    if (!raised) return CheckCompanyFile();
    // QuickBooks wants a file name: pick one and go round without a box.
    if (raised->number() == kNeedsFileName || raised->number() == kNeedsFileNameToo) {
      file = PickCompanyFile();
      if (file.empty()) return giveUp();
      continue;
    }
    // Anything else is told, and retried as often as the user likes.
    if (AskForRetry(ProblemText(*raised, file)) != BoxAnswer::Retry) return giveUp();
    if (raised->number() == kCannotOpenPreviousFile) file.clear();
  }
}

bool CheckCompanyFile() {
  // The file of last time, and the one that is open.
  const auto lastFile = StoredCompanyFile();
  const auto currentFile = TheSession()->GetCurrentCompanyFileName();
  // Another one needs the user's word.
  if (Trim(lastFile).empty()) {
    if (!StoreCompanyFile(currentFile)) return TakeDown();
  } else if (UpperCase(Trim(lastFile)) != UpperCase(Trim(currentFile))) {
    if (!AskForChangedFile(currentFile, lastFile)) return GiveUp();
    if (!StoreCompanyFile(currentFile)) return TakeDown();
  }
  // The host's database file, for the backup.
  const auto databaseFile = RegGetSetting(kApplicationKey, "", "Database", "");
  // The first run.
  if (!OfferFirstBackup(currentFile, databaseFile)) return TakeDown();
  return StoreCompanyFile(currentFile) || TakeDown();
}

}  // namespace twqb
