#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <sstream>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// Each of them stands on a line of its own, with blanks before it as a table or a list has.
void ExpectLines(const std::string& out, std::initializer_list<const char*> lines) {
  for (const auto* line : lines) EXPECT_THAT(out, testing::ContainsRegex(std::string("\n *") + line + "\n"));
}

// That the page is about.
std::filesystem::path FolderOf(const std::string& out) {
  const std::string intro = "nothing else is touched:\n\n   ";
  const auto begin = out.find(intro) + intro.size();
  return out.substr(begin, out.find('\n', begin) - begin);
}

// The page between two of its headings.
std::string Part(const std::string& out, const std::string& from, const std::string& to) {
  const auto begin = out.find("\n" + from + "\n");
  const auto end = out.find("\n" + to + "\n", begin);
  EXPECT_LT(begin, end) << out;
  return out.substr(begin, end - begin);
}

TEST(Demo, Links_both_sides_in_december) {
  const WorkFolder folder;
  const auto month = Part(folder.Done({"demo", "-C", "."}), "December 2007", "January 2008");
  EXPECT_THAT(month, AllOf(HasSubstr("26 employees, 14 vendors,\n64 clients with 122 projects"),
                           HasSubstr("11 customers with 4 jobs"), HasSubstr("491 hours of work, in 82 entries")));
  ExpectLines(month, {"employees +26 +- +6 +26", "vendors +14 +- +14 +14", "clients +64 +- +11 +66",
                      "projects +122 +- +5 +123", "activities +43 +- +15 +43", "expense codes +33 +- +20 +33",
                      "accounts +44 +- +70 +44", "time entries +82 +- +5 +-"});
  EXPECT_THAT(month, HasSubstr("6 of the accounts: QuickBooks has that name already (Accounts Payable, "));
}

TEST(Demo, Lets_the_later_change_win_in_january) {
  const WorkFolder folder;
  const auto month = Part(folder.Done({"demo", "-C", "."}), "January 2008", "February 2008");
  ExpectLines(month, {"1041 +Abbott Land Survey +HARBOR:SURVEY +2,845.37", "time entries +100 +- +4 +-",
                      "invoices +7 +- +2 +-", "payments +2 +- +- +-", "estimates +- +- +1 +-",
                      "EASTON +billing@ +books@ +billing@ +BillingDb .changed later.",
                      "HALLORAN +billing@ +books@ +books@ +QuickBooks .changed later."});
  EXPECT_THAT(month, AllOf(HasSubstr("3309 of Bayview Marina Partners (5,000.00)"),
                           HasSubstr("invoices: 2001 to Hollis Brothers:Warehouse (2,970.00)")));
  EXPECT_EQ(folder.Scalar("SELECT ClientEmail FROM Client WHERE ClientID = 'EASTON'"), "billing@easton.example");
  EXPECT_EQ(folder.Scalar("SELECT ClientEmail FROM Client WHERE ClientID = 'GRANITE'"), "books@granite.example");
}

TEST(Demo, Bills_pays_and_spends_on_both_sides_in_february) {
  const WorkFolder folder;
  const auto month = Part(folder.Done({"demo", "-C", "."}), "February 2008", "March 2008: the quarter is closed");
  ExpectLines(
      month, {"2008-02-0117-A +Abbott Land Survey +HARBOR:SURVEY +10,766.25",
              "Winslow County Highway Department +8,550.00 +bank transfer, for 1048", "expenses +- +- +3 +12",
              "time entries +105 +- +4 +-", "invoices +9 +- +6 +-", "payments +10 +- +4 +-", "vendor bills +5 +- +3 +5",
              "estimates +- +- +2 +1", "- 14 of the time entries: it is not posted, or has comp time that stays here"});
  EXPECT_THAT(month, AllOf(HasSubstr("2008-017 of Arpentage Cloutier (502.29)"), HasSubstr("E-303 for")));
}

TEST(Demo, Moves_nothing_new_once_the_quarter_is_closed) {
  const WorkFolder folder;
  const auto closing =
      Part(folder.Done({"demo", "-C", "."}), "March 2008: the quarter is closed", "The two books, side by side");
  ExpectLines(closing, {"payments +5 +- +- +-",
                        "- March 6: 0 new and 380 changed records go to QuickBooks; 0 new and 396 "
                        "changed ones come.",
                        "- March 7: 0 new and 380 changed records go to QuickBooks; 0 new and 396 changed ones come."});
  EXPECT_THAT(closing, HasSubstr("none has been added, and none has gone."));
}

TEST(Demo, Ends_with_the_two_books_side_by_side_as_balances_shows_them) {
  const WorkFolder folder;
  const auto ended = folder.Twqb({"demo", "-C", "."});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("which you have"), HasSubstr("for which the payment amount"),
                               HasSubstr("that did tranfer because")));
  ExpectLines(ended.out, {"CEDAR +BRIDGE: +4000.00 +4000.00 +0.00", "TOTAL +16838.50 +28443.87 +-11605.37"});
  const auto words = ended.out.substr(ended.out.find("What differs, and why:"));
  EXPECT_THAT(words, AllOf(HasSubstr("invoice 1055, HARBOR: of ABBOTT, -2,830.00"),
                           HasSubstr("invoice 1057, HARBOR:PLANS of ABBOTT, -180.00"),
                           HasSubstr("invoice 1041, HARBOR:SURVEY of ABBOTT, -45.37"),
                           HasSubstr("invoice 1043, MARINA: of BAYVIEW, no difference"),
                           HasSubstr("invoice 1048, MILL:DESIGN of WINSLOW, -8,550.00")));
  std::istringstream balances(folder.Done({"balances"}));
  for (std::string line; std::getline(balances, line) && !line.empty();) {
    EXPECT_THAT(ended.out, HasSubstr("\n   " + line + "\n"));
  }
}

TEST(Demo, Has_no_line_of_more_than_a_hundred_characters_and_no_progress) {
  const WorkFolder folder;
  const auto ended = folder.Twqb({"demo"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, Not(HasSubstr("Sending")));
  const auto page = ended.out.substr(0, ended.out.find("\nThe folder stays"));
  constexpr std::size_t kWidest = 100;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    const auto characters = std::ranges::count_if(line, [](unsigned char c) { return (c & 0xC0U) != 0x80U; });
    EXPECT_LE(characters, kWidest) << line;
  }
  std::filesystem::remove_all(FolderOf(ended.out));
}

TEST(Demo, Ends_with_1_when_a_transfer_asks) {
  const WorkFolder folder;
  folder.Write("faults.txt", "AccountAddRq 10 status 3180 Error \"scripted\"\n");
  const auto ended = folder.Twqb({"demo", "-C", ".", "--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("shown 2 message boxes"));
}

TEST(Demo, Ends_with_1_when_a_second_round_moves_something_new) {
  const WorkFolder folder;
  // An employee's twin can't be read in the second round: it counts as deleted, and is added once more.
  folder.Write("faults.txt", "EmployeeQueryRq 110 status 500 Warn \"scripted\"\n");
  const auto ended = folder.Twqb({"demo", "-C", ".", "--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("On March 6 something new has moved."),
                               HasSubstr("A transfer of what nobody changed has changed QuickBooks' Employee")));
  EXPECT_THAT(ended.out, Not(HasSubstr("none has been added")));
}

TEST(Demo, Takes_a_folder_of_its_own_when_none_is_named) {
  const WorkFolder folder;
  const auto out = folder.Done({"demo", "--no-progress"});
  EXPECT_THAT(folder.Names(), testing::IsEmpty());
  const auto made = FolderOf(out);
  EXPECT_TRUE(std::filesystem::exists(made / "billing.db")) << out;
  std::filesystem::remove_all(made);
}

TEST(Demo, Does_not_touch_a_folder_that_is_in_use) {
  const WorkFolder folder;
  folder.Write("company.twq", "mine");
  EXPECT_EQ(folder.Twqb({"demo", "-C", "."}).status, 2);
  EXPECT_THAT(folder.Names(), ElementsAre("company.twq"));
}

TEST(Demo, Makes_nothing_when_its_record_is_refused) {
  const WorkFolder folder;
  folder.Write("mine.txt", "mine");
  for (const std::string name : {"mine.txt", "billing.db", "none/run.jsonl", "."}) {
    EXPECT_EQ(folder.Twqb({"demo", "-C", ".", "--transcript", name}).status, 2) << name;
    EXPECT_THAT(folder.Names(), ElementsAre("mine.txt")) << name;
  }
  EXPECT_EQ(folder.Read("mine.txt"), "mine");
  std::filesystem::create_directory(folder.Path() / "tmp");
  EXPECT_EQ(folder.Shell("TMPDIR=\"$PWD/tmp\" \"$0\" demo --transcript mine.txt").status, 2);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path() / "tmp"));
}

TEST(Demo, Comes_out_right_in_daylight_time_and_another_zone) {
  const WorkFolder folder;
  folder.Done({"demo", "-C", ".", "--clock", "2008-07-05T10:00:00", "--bias", "300", "--daylight"});
}

TEST(Demo, Ends_with_1_when_a_change_does_not_arrive) {
  const WorkFolder folder;
  folder.Write("faults.txt", "CustomerModRq 1 status 3170 Error \"scripted\"\n");
  const auto ended = folder.Twqb({"demo", "-C", ".", "--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("scripted"), HasSubstr("ABBOTT")));
}

}  // namespace
}  // namespace twqb::cli
