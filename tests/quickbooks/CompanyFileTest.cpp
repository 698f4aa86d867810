// The checks on the company file once a session stands, and the file dialog.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "adapters/companyfile/CompanyFile.h"
#include "platform/Text.h"
#include "quickbooks/CompanyFileChecks.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Session.h"
#include "services/Errors.h"
#include "services/Settings.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

constexpr std::string_view kCurrent = "C:\\QB\\Firm.qbw";

std::string Setting(std::string_view key) { return gf_ReadSettings("GENERAL", key, Vars().g_TWSettingsPath, "(none)"); }

// A house with what an earlier run left in the settings; a text of "(none)" leaves a key out.
class CheckedHouse : public NotingHouse {
 public:
  CheckedHouse(std::string_view lastFile, std::string_view firstTime, std::string answers, std::string_view faults = {})
      : NotingHouse({.answers = std::move(answers)}, faults,
                    std::make_unique<CannedQuickBooks>(Canned{.currentFile = std::string(kCurrent)})) {
    Vars().g_HelpFilePath = "C:\\TW\\tw.hlp";
    Vars().g_HelpID = 77;
    Store("QBDBPath", lastFile);
    Store("FIRST_TIME", firstTime);
    notes.clear();
  }

 private:
  static void Store(std::string_view key, std::string_view value) {
    if (value != "(none)") gf_WriteSettings("GENERAL", key, value, Vars().g_TWSettingsPath);
  }
};

Notes Since(const Notes& notes, std::string_view note) {
  const auto at = std::ranges::find(notes, note);
  return at == notes.end() ? Notes{} : Notes(at + 1, notes.end());
}

TEST(CompanyFileCheck, Stores_the_file_without_a_box_when_nothing_was_stored) {
  CheckedHouse house("(none)", "False", "");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(Setting("QBDBPath"), kCurrent);
  EXPECT_TRUE(house.desk.Boxes().empty());
}

class SameFiles : public testing::TestWithParam<std::string_view> {};

TEST_P(SameFiles, Need_no_warning_and_are_stored_as_they_are_called_now) {
  CheckedHouse house(GetParam(), "False", "");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_EQ(Setting("QBDBPath"), kCurrent);
}

INSTANTIATE_TEST_SUITE_P(CompanyFileCheck, SameFiles,
                         testing::Values("C:\\QB\\Firm.qbw", "c:\\qb\\FIRM.QBW", "  C:\\QB\\Firm.qbw   ", "   ", ""));

TEST(CompanyFileCheck, Writes_a_file_that_is_the_same_once_and_any_other_twice) {
  CheckedHouse same("C:\\QB\\FIRM.qbw", "False", "");
  StartQBSession(true, false);
  EXPECT_EQ(same.NotesOf("write").size(), 1U);
  CheckedHouse none("(none)", "False", "");
  StartQBSession(true, false);
  EXPECT_EQ(none.NotesOf("write").size(), 2U);
}

TEST(ChangedCompanyFile, Is_asked_about_with_both_files) {
  CheckedHouse house("C:\\QB\\Old.qbw", "False", "yes");
  EXPECT_TRUE(StartQBSession(true, false));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text,
            "The QuickBooks data file you are currently trying to Sync\r\n"
            "data with is different than the one you synced with last time.\r\n"
            "\r\n"
            "Current File:\r\n"
            "C:\\QB\\Firm.qbw\r\n"
            "\r\n"
            "Last time you synced with this file:\r\n"
            "C:\\QB\\Old.qbw\r\n"
            "\r\n"
            "Are you sure you want to Sync with this data file?\r\n");
  EXPECT_EQ(box.title, "Warning");
  EXPECT_EQ(box.icon, BoxIcon::Question);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  EXPECT_FALSE(box.help);
}

TEST(ChangedCompanyFile, Is_stored_on_Yes) {
  CheckedHouse house("C:\\QB\\Old.qbw", "False", "yes");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(Setting("QBDBPath"), kCurrent);
  EXPECT_EQ(
      Since(house.NotesWithoutPumps(), "GetCurrentCompanyFileName"),
      (Notes{"box Warning", "write GENERAL/QBDBPath=C:\\QB\\Firm.qbw", "write GENERAL/QBDBPath=C:\\QB\\Firm.qbw"}));
}

TEST(ChangedCompanyFile, Leaves_no_session_and_the_stored_file_on_No) {
  CheckedHouse house("C:\\QB\\Old.qbw", "(none)", "no");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_EQ(Setting("QBDBPath"), "C:\\QB\\Old.qbw");
  EXPECT_EQ(Setting("FIRST_TIME"), "(none)");
  // The connection is closed without ending the session first.
  EXPECT_EQ(Since(house.NotesWithoutPumps(), "GetCurrentCompanyFileName"), (Notes{"box Warning", "CloseConnection"}));
}

TEST(ChangedCompanyFile, Refused_through_a_connection_that_cannot_be_closed_is_reported) {
  CheckedHouse house("C:\\QB\\Old.qbw", "False", "no", "CloseConnection 1 raise 0x80040408 \"Busy\"");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_FALSE(Vars().g_QBSession);
  ASSERT_EQ(house.desk.Boxes().size(), 2U);
  EXPECT_NE(house.BoxTexts()[1].find("procedure: StartQBSession. "), std::string::npos);
}

TEST(FirstRun, Is_asked_about_a_backup) {
  CheckedHouse house("(none)", "(none)", "no");
  EXPECT_TRUE(StartQBSession(true, false));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text,
            "It appears you are using QuickBooks data integration for the\r\n"
            "first time. It is recommended that you backup your QuickBooks\r\n"
            "and Tallywick data files.\r\n"
            "\r\n"
            "Would you like to backup your data files Now?\r\n");
  EXPECT_EQ(box.title, "Backup QB Data file?");
  EXPECT_EQ(box.icon, BoxIcon::Question);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  EXPECT_TRUE(box.help);
  EXPECT_EQ(box.helpFile, "C:\\TW\\tw.hlp");
  EXPECT_EQ(box.helpId, 77);
}

TEST(FirstRun, Is_over_after_No_too) {
  CheckedHouse house("(none)", "(none)", "no");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(Setting("FIRST_TIME"), "False");
  EXPECT_EQ(Since(house.NotesWithoutPumps(), "GetCurrentCompanyFileName"),
            (Notes{"write GENERAL/QBDBPath=C:\\QB\\Firm.qbw", "box Backup QB Data file?",
                   "write GENERAL/FIRST_TIME=False", "write GENERAL/QBDBPath=C:\\QB\\Firm.qbw"}));
  EXPECT_TRUE(house.NotesOf("copy").empty());
  CheckQBSession(false, false);
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.desk.Boxes().size(), 1U);
}

TEST(FirstRun, Is_told_by_the_word_true_alone) {
  for (const auto& [stored, asked] :
       {std::pair{"True", true}, std::pair{"true", true}, std::pair{"TRUE", true}, std::pair{"False", false},
        std::pair{"", false}, std::pair{"-1", false}, std::pair{"yes", false}}) {
    CheckedHouse house("(none)", stored, "default no");
    EXPECT_TRUE(StartQBSession(true, false));
    EXPECT_EQ(!house.desk.Boxes().empty(), asked) << stored;
    EXPECT_EQ(Setting("FIRST_TIME"), asked ? "False" : stored);
  }
}

TEST(FirstRun, Asks_behind_the_warning_of_a_changed_file) {
  CheckedHouse house("C:\\QB\\Old.qbw", "(none)", "yes\nno");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(Since(house.NotesWithoutPumps(), "GetCurrentCompanyFileName"),
            (Notes{"box Warning", "write GENERAL/QBDBPath=C:\\QB\\Firm.qbw", "box Backup QB Data file?",
                   "write GENERAL/FIRST_TIME=False", "write GENERAL/QBDBPath=C:\\QB\\Firm.qbw"}));
}

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The real company file and billing database, of whose paths the registry knows the latter.
class BackupHouse : public NotingHouse {
 public:
  explicit BackupHouse(std::string_view faults = {}) : NotingHouse({.answers = "yes"}, faults) {
    std::ofstream(Path("registry.ini")) << "[TW80]\nDatabase=" << Path("billing.db") << "\n";
  }
};

TEST(FirstBackup, Copies_both_files_beside_themselves) {
  BackupHouse house;
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(Bytes(house.Path("company.twq_TWB.bak")), Bytes(house.Path("company.twq")));
  EXPECT_EQ(Bytes(house.Path("billing.db_TWB.bak")), Bytes(house.Path("billing.db")));
  EXPECT_NE(Bytes(house.Path("company.twq_TWB.bak")), "");
  const auto company = house.Path("company.twq");
  const auto billing = house.Path("billing.db");
  EXPECT_EQ(Since(house.NotesWithoutPumps(), "GetCurrentCompanyFileName"),
            (Notes{"write GENERAL/QBDBPath=" + company, "box Backup QB Data file?", "pointer wait",
                   fmt::format("copy {0} to {0}_TWB.bak", company), fmt::format("copy {0} to {0}_TWB.bak", billing),
                   "pointer default", "box Back Complete", "write GENERAL/FIRST_TIME=False",
                   "write GENERAL/QBDBPath=" + company}));
  const auto& box = house.desk.Boxes().at(1).box;
  EXPECT_EQ(box.text,
            fmt::format("Backup completed! File Locations:\r\n\r\n{}_TWB.bak\r\n{}_TWB.bak\r\n", company, billing));
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  EXPECT_FALSE(box.help);
}

TEST(FirstBackup, Copies_the_whole_of_files_that_are_being_written) {
  BackupHouse house;
  house.Sql("INSERT INTO Client (ClientID) VALUES ('ACME')");
  // Somebody else is at work in QuickBooks.
  company::CompanyFile inUse(house.Path("company.twq"), house.machine);
  const auto process = [](company::CompanyFile& file, std::string_view request) {
    return file.Process(
        fmt::format("<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML>"
                    "<QBXMLMsgsRq onError=\"stopOnError\">{}</QBXMLMsgsRq></QBXML>",
                    request));
  };
  constexpr int kRecords = 40;
  for (int i = 0; i < kRecords; ++i) {
    const auto answer = process(
        inUse, fmt::format("<CustomerAddRq><CustomerAdd><Name>Acme {}</Name></CustomerAdd></CustomerAddRq>", i));
    ASSERT_NE(answer.find("statusCode=\"0\""), std::string::npos);
  }
  for (const auto* name : {"company.twq", "billing.db"}) {
    ASSERT_TRUE(std::filesystem::exists(house.Path(name) + "-wal")) << "the file alone is not all of it";
  }
  EXPECT_TRUE(StartQBSession(true, false));

  constexpr std::string_view kAll = "<CustomerQueryRq><ActiveStatus>All</ActiveStatus></CustomerQueryRq>";
  company::CompanyFile copy(house.Path("company.twq_TWB.bak"), house.machine);
  const auto customers = process(copy, kAll);
  EXPECT_EQ(customers, process(inUse, kAll));
  EXPECT_NE(customers.find("<Name>Acme 39</Name>"), std::string::npos);
  const auto billing = house.database.CreateConnection();
  billing->SetConnectionString("Provider=SQLITE;Data Source=" + house.Path("billing.db_TWB.bak"));
  billing->Open();
  EXPECT_EQ(ToText(billing->Execute("SELECT ClientID FROM Client", nullptr)->FieldAt(0)), "ACME");
  EXPECT_EQ(ToText(billing->Execute("PRAGMA integrity_check", nullptr)->FieldAt(0)), "ok");
  for (const auto* name : {"company.twq_TWB.bak", "billing.db_TWB.bak"}) {
    EXPECT_FALSE(std::filesystem::exists(house.Path(name) + "-wal")) << "a copy is one file";
  }
}

TEST(FirstBackup, Overwrites_an_older_one) {
  BackupHouse house;
  std::ofstream(house.Path("company.twq_TWB.bak")) << "old";
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(Bytes(house.Path("company.twq_TWB.bak")), Bytes(house.Path("company.twq")));
}

TEST(FirstBackup, Goes_on_and_says_that_it_is_complete_whatever_fails) {
  BackupHouse house("copy 1 raise 75\ncopy 2 raise 75");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("copy").size(), 2U);
  EXPECT_EQ(house.NotesOf("box"), (Notes{"box Backup QB Data file?", "box Back Complete"}));
  EXPECT_EQ(house.desk.ShownPointer(), Pointer::Default);
  EXPECT_EQ(Setting("FIRST_TIME"), "False");
}

TEST(FirstBackup, Each_copy_that_fails_is_in_the_log) {
  BackupHouse house("copy 1 raise 75\ncopy 2 raise 75");
  EXPECT_TRUE(StartQBSession(true, false));
  const auto log = Bytes(LogFile(TheMachine()));
  EXPECT_NE(log.find("There is no backup of the company file \"" + house.Path("company.twq") + "\": "),
            std::string::npos)
      << log;
  EXPECT_NE(log.find("There is no backup of the database \"" + house.Path("billing.db") + "\": "), std::string::npos)
      << log;
}

TEST(FirstBackup, A_database_of_no_known_path_is_not_named_as_a_file_in_the_log) {
  BackupHouse house;
  std::ofstream(house.Path("registry.ini")) << "[TW80]\n";
  EXPECT_TRUE(StartQBSession(true, false));
  const auto log = Bytes(LogFile(TheMachine()));
  EXPECT_NE(log.find("There is no backup of the database: its path is not known."), std::string::npos) << log;
  EXPECT_EQ(log.find("_TWB.bak"), std::string::npos);
}

TEST(FirstBackup, Copies_the_second_file_when_the_first_fails) {
  BackupHouse house("copy 1 raise 75");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_FALSE(std::filesystem::exists(house.Path("company.twq_TWB.bak")));
  EXPECT_TRUE(std::filesystem::exists(house.Path("billing.db_TWB.bak")));
}

TEST(FirstBackup, Is_complete_without_a_known_database_file) {
  CheckedHouse house("(none)", "(none)", "yes");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.BoxTexts().at(1),
            "Backup completed! File Locations:\r\n\r\nC:\\QB\\Firm.qbw_TWB.bak\r\n_TWB.bak\r\n");
}

TEST(CompanyFileCheck, Keeps_its_memory_in_the_table_when_that_store_is_chosen) {
  CheckedHouse house("C:\\QB\\InTheFile.qbw", "False", "no");
  Vars().g_UseTWSTable = true;
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.Scalar("SELECT ParamValue FROM TWSTable WHERE ParamName = 'GENERAL_QBDBPath'"), kCurrent);
  EXPECT_EQ(house.Scalar("SELECT ParamValue FROM TWSTable WHERE ParamName = 'GENERAL_FIRST_TIME'"), "False");
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_TRUE(house.NotesOf("write").empty());
}

TEST(OpenFile, Asks_with_its_title_filter_and_folder_and_pumps_messages_behind_the_dialog) {
  CheckedHouse house("(none)", "False", "file C:\\QB\\Other.qbw");
  EXPECT_EQ(gf_OpenFile("C:\\QB"), "C:\\QB\\Other.qbw");
  const auto& dialog = house.desk.FileDialogs().at(0).dialog;
  EXPECT_EQ(dialog.title, "Open QuickBooks File");
  EXPECT_EQ(dialog.folder, "C:\\QB");
  EXPECT_EQ(dialog.filterName, "QuickBooks Files (*.qbw)");
  EXPECT_EQ(dialog.pattern, "*.qbw");
  EXPECT_EQ(house.notes, (Notes{"dialog C:\\QB", "pump"}));
}

TEST(OpenFile, Is_empty_when_it_is_cancelled) {
  CheckedHouse house("(none)", "False", "cancel");
  EXPECT_EQ(gf_OpenFile(""), "");
}

TEST(OpenFile, Tells_of_an_error_in_its_own_words) {
  CheckedHouse house("(none)", "False", "", "file 1 raise 0x80004005 \"No dialog\"");
  EXPECT_EQ(gf_OpenFile(""), "");
  const auto& box = house.desk.Boxes().at(0).box;
  EXPECT_EQ(box.text,
            "An unknown Error occurred in gf_OpenFile.\n Please contact software vendor.  Error Num: -2147467259 \n"
            "No dialog");
  EXPECT_EQ(box.title, "");
  EXPECT_EQ(box.icon, BoxIcon::None);
}

TEST(OpenFile, Has_room_for_a_path_of_254_characters_and_gives_no_part_of_a_longer_one) {
  for (const auto& [length, fits] : {std::pair{254U, true}, std::pair{255U, false}, std::pair{300U, false}}) {
    const std::string path(length, 'x');
    CheckedHouse house("(none)", "False", "file " + path);
    EXPECT_EQ(gf_OpenFile(""), fits ? path : "");
  }
}

}  // namespace
}  // namespace twqb
