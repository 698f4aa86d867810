// What the user is told when QuickBooks opens no session, and what a retry does.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <fstream>

#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Session.h"
#include "services/Settings.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

constexpr std::string_view kFirstFails = "BeginSession 1 raise 0x80040408 \"Not running\"\n";

class LoopHouse : public NotingHouse {
 public:
  LoopHouse(std::string_view faults, std::string answers, std::string_view stored = "C:\\QB\\Firm.qbw")
      : NotingHouse({.answers = std::move(answers)}, faults, std::make_unique<CannedQuickBooks>(Canned{})) {
    Vars().g_HelpFilePath = "C:\\TW\\tw.hlp";
    Vars().g_HelpID = 77;
    gf_WriteSettings("GENERAL", "FIRST_TIME", "False", Vars().g_TWSettingsPath);
    if (!stored.empty()) gf_WriteSettings("GENERAL", "QBDBPath", stored, Vars().g_TWSettingsPath);
    notes.clear();
  }
  void WriteRegistry(std::string_view menu) {
    std::ofstream(Path("registry.ini")) << "[TW80\\GENERAL]\nQB_MNUSUBSCRIBE=" << menu << "\n";
  }
};

struct Problem {
  std::string_view number;
  std::string_view text;
};

class Problems : public testing::TestWithParam<Problem> {};

TEST_P(Problems, Are_told_in_words_of_their_own) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise {} \"Reason\"", kFirstFails, GetParam().number), "cancel");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_FALSE(Vars().g_QBSession);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, GetParam().text);
  EXPECT_EQ(box.title, "Problem");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::RetryCancel);
  EXPECT_TRUE(box.help);
  EXPECT_EQ(box.helpFile, "C:\\TW\\tw.hlp");
  EXPECT_EQ(box.helpId, 77);
  // The connection is closed without ending a session that never began.
  EXPECT_EQ(house.NotesWithoutPumps(),
            (Notes{"CreateTransport", "OpenConnection TWCLIENT, Tallywick<->QuickBooks by Orrin Fields Inc.",
                   "BeginSession \"\" 2", "BeginSession \"C:\\QB\\Firm.qbw\" 2", "box Problem", "CloseConnection"}));
}

INSTANTIATE_TEST_SUITE_P(
    RetryLoop, Problems,
    testing::Values(
        Problem{"0x80040406",
                "Can't open the previously opened QuickBooks Company File,\r\n"
                "\"C:\\QB\\Firm.qbw\"Click \"Retry\" to use the currently opened QuickBooks Company File\r\n"
                "\r\n"
                "If you are unable to resolve this problem, please\r\n"
                "contact technical support.\r\n"},
        Problem{"0x80040414",
                "QuickBooks is waiting for an input from you.\r\n"
                "Please respond to the QuickBooks application before continuing.\r\n"},
        Problem{"0x80040418",
                "You have not given permission to access the QuickBooks Company file,\r\n"
                "\"C:\\QB\\Firm.qbw\"\r\n"
                "Please run QuickBooks, open this company file and give the permission for\r\n"
                "this application to access this Company file.\r\n"
                "\r\n"
                "If you are unable to resolve this problem, please\r\n"
                "contact technical support.\r\n"},
        Problem{"0x8004041D",
                "The application was unable to log on to QuickBooks, because you have not\r\n"
                "given it \"Auto-Logon\" permission.\r\n"
                "Please open QuickBooks and make sure you have allowed this application to\r\n"
                "log on automatically.\r\n"
                "\r\n"
                "If you are unable to resolve this problem, please\r\n"
                "contact technical support.\r\n"},
        Problem{"0x80040408",
                "Unable to establish connection with your QuickBooks\r\n"
                "database. Please make sure that you have started\r\n"
                "QuickBooks and opened your Company file.\r\n"
                "\r\n"
                "The following error has occured: -\r\n"
                "Error # -2147220472\r\n"
                "Reason\r\n"
                "\r\n"
                "If you are unable to resolve this problem, please\r\n"
                "contact technical support.\r\n"},
        Problem{"429",
                "Unable to establish connection with your QuickBooks\r\n"
                "database. Please make sure that you have started\r\n"
                "QuickBooks and opened your Company file.\r\n"
                "\r\n"
                "The following error has occured: -\r\n"
                "Error # 429\r\n"
                "Reason\r\n"
                "\r\n"
                "If you are unable to resolve this problem, please\r\n"
                "contact technical support.\r\n"}));

TEST(RetryLoop, Begins_with_no_file_when_nothing_is_stored) {
  LoopHouse house(kFirstFails, "", "");
  EXPECT_TRUE(StartQBSession(true, true));
  EXPECT_EQ(house.NotesOf("BeginSession"), (Notes{"BeginSession \"\" 0", "BeginSession \"\" 0"}));
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(RetryLoop, Opens_the_stored_file_at_its_first_round_without_a_box) {
  LoopHouse house(kFirstFails, "");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("BeginSession"), (Notes{"BeginSession \"\" 2", "BeginSession \"C:\\QB\\Firm.qbw\" 2"}));
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_EQ(house.NotesOf("write").size(), 1U);
}

TEST(RetryLoop, Tries_the_same_file_as_often_as_the_user_likes) {
  std::string faults(kFirstFails);
  for (int round = 2; round <= 6; ++round) faults += fmt::format("BeginSession {} raise 0x80040414\n", round);
  LoopHouse house(faults, "default retry");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.desk.Boxes().size(), 5U);
  const auto begun = house.NotesOf("BeginSession");
  ASSERT_EQ(begun.size(), 7U);
  for (std::size_t i = 1; i < begun.size(); ++i) EXPECT_EQ(begun[i], "BeginSession \"C:\\QB\\Firm.qbw\" 2");
}

TEST(RetryLoop, Asks_for_the_file_that_is_open_after_the_stored_one_could_not_be_opened) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise 0x80040406", kFirstFails), "retry");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("BeginSession"),
            (Notes{"BeginSession \"\" 2", "BeginSession \"C:\\QB\\Firm.qbw\" 2", "BeginSession \"\" 2"}));
}

TEST(RetryLoop, Shows_an_empty_name_when_the_open_file_cannot_be_opened_either) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise 0x80040406\nBeginSession 3 raise 0x80040406", kFirstFails),
                  "retry\ncancel");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_NE(house.BoxTexts().at(1).find("Company File,\r\n\"\"Click \"Retry\""), std::string::npos);
}

class MissingNames : public testing::TestWithParam<std::string_view> {};

TEST_P(MissingNames, Let_the_user_pick_a_file_from_the_librarys_folder_when_nothing_is_stored) {
  LoopHouse house(fmt::format("BeginSession 1 raise {0}\nBeginSession 2 raise {0}", GetParam()),
                  "file C:\\QB\\Firm.qbw", "");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("dialog"), Notes{"dialog " + house.Folder()});
  EXPECT_EQ(house.NotesOf("BeginSession"),
            (Notes{"BeginSession \"\" 2", "BeginSession \"\" 2", "BeginSession \"C:\\QB\\Firm.qbw\" 2"}));
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST_P(MissingNames, Begin_the_dialog_at_the_stored_file) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise {}", kFirstFails, GetParam()), "file C:\\QB\\Firm.qbw",
                  "C:\\Old\\Old.qbw");
  gf_WriteSettings("GENERAL", "QBDBPath", "C:\\QB\\Firm.qbw", Vars().g_TWSettingsPath);
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("dialog"), Notes{"dialog C:\\QB\\Firm.qbw"});
}

TEST_P(MissingNames, End_without_a_session_when_no_file_is_picked) {
  LoopHouse house(fmt::format("BeginSession 1 raise {0}\nBeginSession 2 raise {0}", GetParam()), "cancel", "");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_EQ(house.notes.back(), "CloseConnection");
  EXPECT_TRUE(house.NotesOf("EndSession").empty());
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST_P(MissingNames, Are_asked_for_though_the_connection_was_started_from_the_menu) {
  LoopHouse house(fmt::format("BeginSession 1 raise {0}\nBeginSession 2 raise {0}", GetParam()), "cancel", "");
  house.WriteRegistry("1");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("dialog").size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(RetryLoop, MissingNames, testing::Values("0x80040416", "0x80040417"));

TEST(RetryLoop, Names_the_file_that_was_picked_when_it_cannot_be_opened) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise 0x80040416\nBeginSession 3 raise 0x80040418", kFirstFails),
                  "file C:\\QB\\Picked.qbw\nretry\nyes");
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_NE(house.BoxTexts().at(0).find("\"C:\\QB\\Picked.qbw\""), std::string::npos);
  EXPECT_EQ(house.NotesOf("BeginSession").back(), "BeginSession \"C:\\QB\\Picked.qbw\" 2");
}

TEST(RetryLoop, Goes_on_to_the_file_checks) {
  LoopHouse house(kFirstFails, "yes\nno", "C:\\QB\\Old.qbw");
  gf_WriteSettings("GENERAL", "FIRST_TIME", "True", Vars().g_TWSettingsPath);
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("box"), (Notes{"box Warning", "box Backup QB Data file?"}));
}

TEST(RetryLoop, Reports_a_failure_of_the_file_checks_that_follow_it) {
  LoopHouse house(fmt::format("{}GetCurrentCompanyFileName 1 raise 0x80040402 \"Lost\"", kFirstFails), "");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_FALSE(Vars().g_QBSession);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("Lost has occurred in the following procedure: StartQBSession. "),
            std::string::npos);
}

class MenuStarts : public testing::TestWithParam<std::string_view> {};

TEST_P(MenuStarts, Fail_without_the_Problem_box) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise 0x80040414", kFirstFails), "");
  house.WriteRegistry(GetParam());
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_EQ(house.notes.back(), "CloseConnection");
}

TEST_P(MenuStarts, Still_warn_of_a_changed_file_and_offer_the_backup) {
  LoopHouse house(kFirstFails, "yes\nno", "C:\\QB\\Old.qbw");
  gf_WriteSettings("GENERAL", "FIRST_TIME", "True", Vars().g_TWSettingsPath);
  house.WriteRegistry(GetParam());
  EXPECT_TRUE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("box"), (Notes{"box Warning", "box Backup QB Data file?"}));
}

INSTANTIATE_TEST_SUITE_P(RetryLoop, MenuStarts, testing::Values("1", "-1", "True", "true"));

class DeskStarts : public testing::TestWithParam<std::string_view> {};

TEST_P(DeskStarts, Show_the_Problem_box) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise 0x80040414", kFirstFails), "cancel");
  house.WriteRegistry(GetParam());
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("box"), Notes{"box Problem"});
}

// Neither an empty value nor a word can be read as a truth value; the loop takes no notice of that.
INSTANTIATE_TEST_SUITE_P(RetryLoop, DeskStarts, testing::Values("0", "False", "", "perhaps"));

TEST(RetryLoop, Takes_no_notice_of_settings_that_cannot_be_read) {
  LoopHouse house(fmt::format("{}settings 1 raise 75 read QBDBPath\nBeginSession 2 raise 0x80040414", kFirstFails),
                  "cancel");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_EQ(house.NotesOf("BeginSession"), (Notes{"BeginSession \"\" 2", "BeginSession \"\" 2"}));
  EXPECT_EQ(house.NotesOf("box"), Notes{"box Problem"});
}

TEST(RetryLoop, Takes_no_notice_of_a_connection_that_cannot_be_closed) {
  LoopHouse house(fmt::format("{}BeginSession 2 raise 0x80040414\nCloseConnection 1 raise 0x80040408", kFirstFails),
                  "cancel");
  EXPECT_FALSE(StartQBSession(true, false));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_EQ(house.NotesOf("box"), Notes{"box Problem"});
}

}  // namespace
}  // namespace twqb
