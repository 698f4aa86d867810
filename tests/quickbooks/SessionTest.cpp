// When a session stands, and what is left of it after a failure.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Settings.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

constexpr bool kConnect = true;
constexpr bool kDisconnect = false;
constexpr bool kSingleUser = true;
constexpr bool kDoNotCare = false;

// A house in which the question of the first run has been asked already.
class SettledHouse : public NotingHouse {
 public:
  explicit SettledHouse(std::string_view faults = {}, Canned canned = {}, std::string answers = {})
      : NotingHouse({.answers = std::move(answers)}, faults, std::make_unique<CannedQuickBooks>(std::move(canned))) {
    gf_WriteSettings("GENERAL", "FIRST_TIME", "False", Vars().g_TWSettingsPath);
    notes.clear();
  }
};

std::string StartFailure(std::string_view number, std::string_view description) {
  return fmt::format(
      "Error #: {} -- \r\n\r\n{} has occurred in the following procedure: StartQBSession. Please contact Technical "
      "Support for assistance.",
      number, description);
}

TEST(CheckQBSession, Starts_a_session_and_finds_edition_and_version) {
  SettledHouse house;
  EXPECT_TRUE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_TRUE(Vars().g_QBSession);
  EXPECT_EQ(Vars().g_QBCountry, "US");
  EXPECT_EQ(Vars().g_QBHostVer, 16);
  auto notes = house.NotesWithoutPumps();
  ASSERT_EQ(notes.size(), 7U);
  EXPECT_TRUE(notes.back().starts_with("document "));
  notes.pop_back();
  EXPECT_EQ(notes, (Notes{"CreateTransport", "OpenConnection TWCLIENT, Tallywick<->QuickBooks by Orrin Fields Inc.",
                          "BeginSession \"\" 2", "GetCurrentCompanyFileName", "write GENERAL/QBDBPath=C:\\QB\\Firm.qbw",
                          "write GENERAL/QBDBPath=C:\\QB\\Firm.qbw"}));
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(CheckQBSession, Opens_the_file_for_a_single_user_when_asked_to) {
  SettledHouse house;
  EXPECT_TRUE(CheckQBSession(kConnect, kSingleUser));
  EXPECT_EQ(house.NotesOf("BeginSession"), Notes{"BeginSession \"\" 0"});
}

TEST(CheckQBSession, Does_nothing_and_is_False_without_a_session_to_end) {
  SettledHouse house;
  EXPECT_FALSE(CheckQBSession(kDisconnect, kDoNotCare));
  EXPECT_TRUE(house.notes.empty());
}

TEST(CheckQBSession, Does_not_touch_a_session_that_stands) {
  SettledHouse house;
  CheckQBSession(kConnect, kDoNotCare);
  const auto session = Vars().g_QBSession;
  house.notes.clear();
  EXPECT_TRUE(CheckQBSession(kConnect, kSingleUser));
  EXPECT_TRUE(house.notes.empty());
  EXPECT_EQ(Vars().g_QBSession, session);
}

TEST(CheckQBSession, Ends_a_session_that_stands) {
  SettledHouse house;
  CheckQBSession(kConnect, kDoNotCare);
  house.notes.clear();
  EXPECT_TRUE(CheckQBSession(kDisconnect, kDoNotCare));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_EQ(house.notes, (Notes{"EndSession", "CloseConnection"}));
  EXPECT_FALSE(CheckQBSession(kDisconnect, kDoNotCare));
}

TEST(CheckQBSession, Keeps_country_and_versions_when_the_session_ends) {
  SettledHouse house;
  CheckQBSession(kConnect, kDoNotCare);
  CheckQBSession(kDisconnect, kDoNotCare);
  EXPECT_EQ(Vars().g_QBCountry, "US");
  EXPECT_EQ(Vars().g_QBMajorVer, 3);
  EXPECT_EQ(Vars().g_QBHostVer, 16);
}

TEST(CheckQBSession, Forgets_a_session_that_cannot_be_ended_and_is_False) {
  for (const std::string_view operation : {"EndSession", "CloseConnection"}) {
    SettledHouse house(fmt::format("{} 1 raise 0x80040408 \"Busy\"", operation));
    CheckQBSession(kConnect, kDoNotCare);
    house.notes.clear();
    EXPECT_FALSE(CheckQBSession(kDisconnect, kDoNotCare));
    EXPECT_FALSE(Vars().g_QBSession);
    EXPECT_EQ(house.BoxTexts(), (std::vector{StartFailure("-2147220472(80040408)", "Busy")}));
    // Both are tried once more behind the box.
    EXPECT_EQ(house.notes.back(), "CloseConnection");
    EXPECT_EQ(*(house.notes.end() - 2), "EndSession");
  }
}

TEST(CheckQBSession, Leaves_the_session_open_when_the_edition_is_not_found_and_finds_it_at_the_next_call) {
  SettledHouse house({}, {.answer = [](std::string_view) -> std::string { throw PlatformError(0x80040400, "No"); }});
  EXPECT_FALSE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_TRUE(Vars().g_QBSession);
  EXPECT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_TRUE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_EQ(Vars().g_QBCountry, "");
  Vars().g_QBMajorVer = 3;
  const auto set = fnCreateMsgSetRequest(*Vars().g_QBSession);
  ASSERT_TRUE(set);
  EXPECT_NE(set->ToXMLString().find("<?qbxml version=\"3.0\"?>"), std::string::npos);
}

struct StartFault {
  std::string_view name;
  std::string_view fault;
  std::string_view number;
  bool sessionMade;
};

class FailedStarts : public testing::TestWithParam<StartFault> {};

TEST_P(FailedStarts, Are_reported_and_leave_no_session_behind) {
  SettledHouse house(GetParam().fault);
  EXPECT_FALSE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_EQ(house.BoxTexts(), (std::vector{StartFailure(GetParam().number, "Oops")}));
  const Notes ended = {"EndSession", "CloseConnection"};
  EXPECT_EQ(std::ranges::search(house.notes, ended).empty(), !GetParam().sessionMade);
  // The next attempt begins anew.
  EXPECT_TRUE(CheckQBSession(kConnect, kDoNotCare));
}

INSTANTIATE_TEST_SUITE_P(
    StartQBSession, FailedStarts,
    testing::Values(StartFault{"CreateTransport", "CreateTransport 1 raise 429 \"Oops\"", "429(1AD)", false},
                    StartFault{"GetVersion", "GetVersion 1 raise 0x80040408 \"Oops\"", "-2147220472(80040408)", true},
                    StartFault{"OpenConnection", "OpenConnection 1 raise 0x80040408 \"Oops\"", "-2147220472(80040408)",
                               true},
                    StartFault{"CurrentFile", "GetCurrentCompanyFileName 1 raise 0x80040408 \"Oops\"",
                               "-2147220472(80040408)", true},
                    StartFault{"SettingsRead", "settings 1 raise 75 \"Oops\" read QBDBPath", "75(4B)", true}),
    [](const auto& fault) { return std::string(fault.param.name); });

TEST(StartQBSession, Tells_with_the_words_of_the_error_box_that_QuickBooks_is_not_installed) {
  SettledHouse house("CreateTransport 1 raise 0x8007007E");
  EXPECT_FALSE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_NE(house.BoxTexts().at(0).find("It appears that QuickBooks is not installed properly"), std::string::npos);
}

class FailedSettings : public testing::TestWithParam<std::string_view> {};

TEST_P(FailedSettings, Leave_no_session_behind_when_the_store_is_the_table) {
  const std::string_view key = GetParam();
  NotingHouse house(
      {.answers = "default no"},
      fmt::format("sql 1 raise 0x80040E2F \"Refused\" INSERT INTO TWSTable (ParamValue ,ParamName) VALUES "
                  "('{}",
                  key == "FIRST_TIME" ? "False" : "C:"),
      std::make_unique<CannedQuickBooks>(Canned{}));
  Vars().g_UseTWSTable = true;
  EXPECT_FALSE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_FALSE(Vars().g_QBSession);
  const auto texts = house.BoxTexts();
  EXPECT_TRUE(std::ranges::any_of(texts, [](const std::string& text) {
    return text.find("Refused has occurred in the following procedure: gf_WriteSettings. ") != std::string::npos;
  }));
  EXPECT_TRUE(house.NotesOf("document").empty());
  const Notes ended = {"EndSession", "CloseConnection"};
  EXPECT_FALSE(std::ranges::search(house.notes, ended).empty());
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST_P(FailedSettings, Leave_no_session_behind_when_the_store_is_the_file) {
  NotingHouse house({.answers = "default no"}, fmt::format("settings 1 raise 75 \"Disk full\" write {}", GetParam()),
                    std::make_unique<CannedQuickBooks>(Canned{}));
  EXPECT_FALSE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_TRUE(house.NotesOf("document").empty());
}

INSTANTIATE_TEST_SUITE_P(StartQBSession, FailedSettings, testing::Values("QBDBPath", "FIRST_TIME"),
                         [](const auto& key) { return std::string(key.param); });

TEST(OldInterface, Is_told_and_refused_before_the_connection_is_opened) {
  SettledHouse house({}, {.version = {.major = 2, .minor = 9}});
  EXPECT_FALSE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_EQ(house.notes, (Notes{"CreateTransport", "box Message", "CloseConnection"}));
  const auto& box = house.desk.Boxes().at(0).box;
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  const std::string beginning =
      "You are using an older version of QuickBooks. This\r\n"
      "application requires QuickBooks 2002 Pro or better\r\n"
      "version. If you are using QuickBooks 2002 Pro,\r\n"
      "please make sure you have downloaded the latest free\r\n"
      "update from Intuit's web site at ";
  const std::string end =
      ", or\r\n"
      "simply click on the Update option on your QuickBook's\r\n"
      "File menu.\r\n"
      "\r\n";
  EXPECT_TRUE(box.text.starts_with(beginning)) << box.text;
  EXPECT_TRUE(box.text.ends_with(end)) << box.text;
  const auto address = box.text.substr(beginning.size(), box.text.size() - beginning.size() - end.size());
  const testing::Matcher<std::string> shape = testing::MatchesRegex("[a-z./]+");
  EXPECT_TRUE(shape.Matches(address)) << address;
}

TEST(OldInterface, Is_one_below_version_3) {
  struct Case {
    InterfaceVersion version;
    bool accepted;
  };
  for (const auto& [version, accepted] : {Case{{.major = 1, .minor = 9}, false}, Case{{.major = 2, .minor = 99}, false},
                                          Case{{.major = 3, .minor = -1}, false}, Case{{.major = 3, .minor = 0}, true},
                                          Case{{.major = 4, .minor = -1}, true}, Case{{.major = 13}, true}}) {
    SettledHouse house({}, {.version = version});
    EXPECT_EQ(StartQBSession(kConnect, kDoNotCare), accepted) << version.major << "." << version.minor;
    EXPECT_EQ(house.desk.Boxes().size(), accepted ? 0U : 1U);
  }
}

TEST(OldInterface, That_cannot_be_closed_is_reported) {
  SettledHouse house("CloseConnection 1 raise 0x8004040D \"Not open\"", {.version = {.major = 2}});
  EXPECT_FALSE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_FALSE(Vars().g_QBSession);
  ASSERT_EQ(house.desk.Boxes().size(), 2U);
  EXPECT_EQ(house.BoxTexts()[1], StartFailure("-2147220467(8004040D)", "Not open"));
}

// Every call through a seam fails once, in a start whose settings are in the table.
class CallSweep : public testing::TestWithParam<FaultTiming> {};

TEST_P(CallSweep, Lets_no_error_out_leaves_no_count_and_no_session_of_a_failed_start) {
  std::size_t k = 1;
  for (;; ++k) {
    NotingHouse house({.answers = "default no"}, {}, std::make_unique<CannedQuickBooks>(Canned{}));
    Vars().g_UseTWSTable = true;
    house.Faults().RaiseAt(k, GetParam(), 0x80004005);
    bool started = false;
    EXPECT_NO_THROW(started = StartQBSession(true, false)) << "call " << k;
    if (house.Faults().CallCount() < k) break;
    EXPECT_EQ(Vars().g_QBSession != nullptr, started) << "call " << k;
    EXPECT_EQ(Vars().g_CnRefCount, 0) << "call " << k << " " << house.Faults().CallNames().at(k - 1);
  }
  EXPECT_GT(k, 20U);
}

INSTANTIATE_TEST_SUITE_P(StartQBSession, CallSweep, testing::Values(FaultTiming::Before, FaultTiming::After));

TEST(EmbeddedCompanyFile, Carries_a_session_from_start_to_end) {
  NotingHouse house({.answers = "no"});
  EXPECT_TRUE(CheckQBSession(kConnect, kDoNotCare));
  EXPECT_EQ(gf_ReadSettings("GENERAL", "QBDBPath", Vars().g_TWSettingsPath), house.Path("company.twq"));
  EXPECT_TRUE(CheckQBSession(kDisconnect, kDoNotCare));
  EXPECT_TRUE(CheckQBSession(kConnect, kSingleUser));
  EXPECT_TRUE(CheckQBSession(kDisconnect, kSingleUser));
  EXPECT_EQ(house.desk.Boxes().size(), 1U);
}

}  // namespace
}  // namespace twqb
