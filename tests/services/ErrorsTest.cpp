// The error box, the log and the guards.

#include <fmt/core.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/Forwarding.h"
#include "services/Errors.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

std::string BoxOf(ErrorNumber number) {
  TestHouse house;
  house.Enter();
  ErrorHandler(number, "Something broke.", "SomeRoutine");
  EXPECT_EQ(house.desk.Boxes().size(), 1U);
  return house.BoxTexts().at(0);
}

std::string Bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(ErrorHandler, Tells_of_failed_communication_and_prints_the_number_signed) {
  EXPECT_EQ(BoxOf(0x8004040C),
            "There was a problem in establishing communication with your\r\n"
            "QuickBooks data file. Please make sure you have opened the correct\r\n"
            "file in QuickBooks and assigned proper permission for this application\r\n"
            "to access the data. If the problem continues, please call your \r\n"
            "software vendor.\r\n"
            "\r\n"
            "Error Number: -2147220468\r\n");
}

TEST(ErrorHandler, Tells_that_QuickBooks_is_not_installed_with_the_words_that_were_meant_as_a_line_break) {
  EXPECT_EQ(BoxOf(0x8007007E),
            "There was a problem in establishing communication with your\r\n"
            "QuickBooks data file. It appears that QuickBooks is not installed properly & vbCrLfon this computer.\r\n"
            "\r\n"
            "Error Number: -2147024770\r\n");
}

struct NumberForms {
  ErrorNumber number;
  std::string_view printed;
};

class OtherNumbers : public testing::TestWithParam<NumberForms> {};

TEST_P(OtherNumbers, Show_the_decimal_and_the_hexadecimal_form_of_the_same_number) {
  EXPECT_EQ(BoxOf(GetParam().number), fmt::format("Error #: {} -- \r\n\r\nSomething broke. has occurred in the "
                                                  "following procedure: SomeRoutine. Please contact Technical "
                                                  "Support for assistance.",
                                                  GetParam().printed));
}

INSTANTIATE_TEST_SUITE_P(ErrorHandler, OtherNumbers,
                         testing::Values(NumberForms{0, "0(0)"}, NumberForms{13, "13(D)"}, NumberForms{91, "91(5B)"},
                                         NumberForms{457, "457(1C9)"}, NumberForms{0x7FFFFFFF, "2147483647(7FFFFFFF)"},
                                         NumberForms{0x80000000, "-2147483648(80000000)"},
                                         NumberForms{0x8004040B, "-2147220469(8004040B)"},
                                         NumberForms{0x80040E14, "-2147217900(80040E14)"},
                                         NumberForms{0xFFFFFFFF, "-1(FFFFFFFF)"}));

TEST(ShowErrorIn, Tells_routine_description_and_signed_number_in_a_plain_box) {
  TestHouse house;
  house.Enter();
  ShowErrorIn("SomeRoutine", PlatformError(0x80040307, "Something {} broke."));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, "Error in 'SomeRoutine()' :- Something {} broke.\r\nError No = -2147220729");
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.icon, BoxIcon::None);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}

TEST(ErrorHandler, Keeps_braces_in_a_description) {
  TestHouse house;
  house.Enter();
  ErrorHandler(13, "{0} and {", "A");
  EXPECT_NE(house.BoxTexts().at(0).find("{0} and { has occurred"), std::string::npos);
}

TEST(ErrorHandler, Shows_a_warning_with_OK_alone_then_pumps_messages_and_beeps) {
  NotingHouse house;
  ErrorHandler(13, "Type mismatch", "A");
  const auto& box = house.desk.Boxes().at(0).box;
  EXPECT_EQ(box.title, "WARNING");
  EXPECT_EQ(box.icon, BoxIcon::Warning);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  EXPECT_FALSE(box.help);
  EXPECT_EQ(house.notes, (Notes{"box WARNING", "pump", "beep"}));
}

TEST(ErrorHandler, Is_not_suppressed_by_the_silent_mode) {
  NotingHouse house;
  Vars().g_IsSilentMode = true;
  ErrorHandler(13, "Type mismatch", "A");
  EXPECT_EQ(house.notes, (Notes{"box WARNING", "pump", "beep"}));
}

TEST(ErrorHandler, Beeps_even_when_its_box_fails) {
  NotingHouse house({}, "box 1 raise 0x80004005");
  EXPECT_NO_THROW(ErrorHandler(13, "Type mismatch", "A"));
  EXPECT_EQ(house.desk.Beeps(), 1);
}

TEST(ErrorHandler, Lets_a_desk_that_gives_up_through) {
  class TiredDesk : public ForwardingDesk {
   public:
    using ForwardingDesk::ForwardingDesk;
    BoxAnswer ShowMessageBox(const MessageBox& box) override { throw DeskGaveUp(box.title); }
  };
  TestHouse house;
  TiredDesk desk(house.desk);
  auto seams = house.Seams();
  seams.desk = &desk;
  house.Enter(seams);
  EXPECT_THROW(ErrorHandler(13, "Type mismatch", "A"), DeskGaveUp);
}

struct MonthName {
  std::string_view date;
  std::string_view name;
};

class LogNames : public testing::TestWithParam<MonthName> {};

TEST_P(LogNames, Have_the_year_and_the_month_without_a_leading_zero) {
  TestHouse house({.now = TextToDate(GetParam().date)});
  house.Enter();
  WriteLog("a line");
  EXPECT_EQ(Bytes(house.Path(GetParam().name)), "a line\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    WriteLog, LogNames,
    testing::Values(MonthName{"2008-01-01", "TWQBLog20081.txt"}, MonthName{"2008-01-31T23:59:59", "TWQBLog20081.txt"},
                    MonthName{"2008-03-05T10:00:00", "TWQBLog20083.txt"}, MonthName{"2008-09-30", "TWQBLog20089.txt"},
                    MonthName{"2008-10-01", "TWQBLog200810.txt"}, MonthName{"2008-12-31T23:59:59", "TWQBLog200812.txt"},
                    MonthName{"2009-01-01", "TWQBLog20091.txt"}));

TEST(WriteLog, Appends_lines_without_a_time_stamp) {
  TestHouse house;
  house.Enter();
  WriteLog("one");
  WriteLog("");
  WriteLog("two \xC3\xA9");
  EXPECT_EQ(Bytes(house.Path("TWQBLog20083.txt")), "one\r\n\r\ntwo \xC3\xA9\r\n");
}

TEST(WriteLog, Begins_a_new_file_each_month_and_leaves_the_old_one) {
  TestHouse house({.now = TextToDate("2008-12-31T23:59:59")});
  house.Enter();
  WriteLog("old");
  house.machine.Advance(Date::kSecond);
  WriteLog("new");
  EXPECT_EQ(Bytes(house.Path("TWQBLog200812.txt")), "old\r\n");
  EXPECT_EQ(Bytes(house.Path("TWQBLog20091.txt")), "new\r\n");
}

TEST(WriteLog, Loses_a_line_that_cannot_be_written_without_a_word) {
  NotingHouse house;
  // A folder of the log's name: no file can be opened there, whatever the permissions of this process.
  std::filesystem::create_directory(house.Path("TWQBLog20083.txt"));
  EXPECT_NO_THROW(WriteLog("lost"));
  EXPECT_TRUE(house.notes.empty());
}

TEST(WriteLog, Does_nothing_in_a_read_only_folder) {
  NotingHouse house;
  if (::geteuid() == 0) {
    // Permissions do not bind the superuser; the failed write is brought about at the seam.
    NotingHouse failing({}, "log 1 raise 75");
    EXPECT_NO_THROW(WriteLog("lost"));
    EXPECT_TRUE(failing.notes.empty());
    EXPECT_TRUE(failing.Log().empty());
    return;
  }
  std::filesystem::permissions(house.Folder(), std::filesystem::perms(0500));
  EXPECT_NO_THROW(WriteLog("lost"));
  std::filesystem::permissions(house.Folder(), std::filesystem::perms(0700));
  EXPECT_TRUE(house.notes.empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(Guards, Give_back_the_error_that_a_body_raised) {
  const auto raised = CatchError([] { throw PlatformError(13); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->number(), 13U);
  EXPECT_EQ(raised->description(), "Type mismatch");
  EXPECT_FALSE(CatchError([] {}));
}

TEST(Guards, Tell_whether_an_ignored_section_went_through) {
  EXPECT_TRUE(IgnoreErrors([] {}));
  EXPECT_FALSE(IgnoreErrors([] { throw PlatformError(91); }));
}

TEST(Guards, Give_the_result_of_a_body_that_goes_through) {
  NotingHouse house;
  EXPECT_EQ(RunAs("Routine", std::string("failed"), [] { return std::string("done"); }), "done");
  EXPECT_TRUE(RunAs("Routine", [] {}));
  EXPECT_TRUE(house.notes.empty());
}

TEST(Guards, Report_an_error_under_the_routines_name_and_give_its_failure_value) {
  NotingHouse house;
  const auto fail = []() -> int { throw PlatformError(0x80040E37, "No such table."); };
  EXPECT_EQ(RunAs("MoveThings", -7, fail), -7);
  EXPECT_EQ(house.BoxTexts().at(0),
            "Error #: -2147217865(80040E37) -- \r\n\r\nNo such table. has occurred in the following procedure: "
            "MoveThings. Please contact Technical Support for assistance.");
  EXPECT_FALSE(RunAs("MoveThings", [] { throw PlatformError(13); }));
  EXPECT_EQ(house.desk.Boxes().size(), 2U);
}

TEST(Guards, Let_a_desk_that_gives_up_through) {
  EXPECT_THROW(IgnoreErrors([] { throw DeskGaveUp("a question"); }), DeskGaveUp);
  EXPECT_THROW((void)RunAs("Routine", 0, []() -> int { throw DeskGaveUp("a question"); }), DeskGaveUp);
}

TEST(Guards, Leave_a_mistake_in_the_program_alone) {
  EXPECT_THROW(IgnoreErrors([] { throw std::logic_error("a mistake"); }), std::logic_error);
}

}  // namespace
}  // namespace twqb
