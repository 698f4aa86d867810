#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Demo, Links_every_client_and_lets_the_later_change_win) {
  const WorkFolder folder;
  const auto out = folder.Done({"demo", "-C", "."});
  EXPECT_THAT(out, AllOf(HasSubstr("64 of 64 clients are linked"), HasSubstr("75 of 75 clients are linked")));
  for (const auto* line :
       {"employees +0 of 26 +26 of 26 +32 of 33 +6 +32 +32", "vendors +0 of 14 +14 of 14 +28 of 28 +14 +28 +28",
        "clients +75 of 75 +75 of 75 +75 of 75 +75 +75 +75", "projects +0 of 122 +122 of 122 +130 of 130 +4 +126 +126",
        "activities +0 of 43 +43 of 43 +70 of 70 +15 +70 +70", "expense codes +0 of 34 +33 of 34 +54 of 55 +20 +54 +54",
        "accounts +0 of 50 +44 of 50 +115 of 121 +70 +115 +115",
        "time entries +0 of 303 +292 of 303 +306 of 317 +14 +301 +301",
        "invoices +1 of 19 +16 of 19 +24 of 27 +6 +25 +25", "payments +0 of 17 +16 of 17 +22 of 23 +5 +20 +20",
        "vendor bills +0 of 5 +5 of 5 +7 of 7 +3 +8 +8"}) {
    EXPECT_THAT(out, testing::ContainsRegex(std::string("\n   ") + line + "\n"));
  }
  EXPECT_EQ(folder.Scalar("SELECT ClientEmail FROM Client WHERE ClientID = 'EASTON'"), "billing@easton.example");
  EXPECT_EQ(folder.Scalar("SELECT ClientEmail FROM Client WHERE ClientID = 'GRANITE'"), "books@granite.example");
}

TEST(Demo, Shows_what_a_second_and_a_third_send_still_move) {
  const WorkFolder folder;
  const auto out = folder.Done({"demo", "-C", "."});
  for (const auto* line : {"employees +1 +32 +0 +0 +0", "vendors +0 +28 +0 +0 +0", "clients +0 +75 +0 +0 +0",
                           "projects +0 +126 +0 +0 +0", "activities +0 +67 +0 +0 +0", "expense codes +0 +51 +0 +0 +1",
                           "accounts +0 +0 +0 +0 +6", "time entries +0 +0 +0 +0 +11", "invoices +1 +0 +0 +0 +3",
                           "payments +0 +0 +0 +0 +1", "vendor bills +0 +0 +0 +0 +0"}) {
    EXPECT_THAT(out, testing::ContainsRegex(std::string("\n   ") + line + "\n"));
  }
}

TEST(Demo, Ends_with_payments_that_are_held_back_and_told) {
  const WorkFolder folder;
  const auto ended = folder.Twqb({"demo", "-C", "."});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, HasSubstr("   3 payments are held back"));
  EXPECT_THAT(ended.err, AllOf(HasSubstr("which you have"), HasSubstr("for which the payment amount"),
                               HasSubstr("that did tranfer because")));
  EXPECT_THAT(folder.Done({"balances"}), AllOf(HasSubstr("1048 "), HasSubstr("1055 "), HasSubstr("1043 ")));
}

TEST(Demo, Ends_with_1_when_a_transfer_asks) {
  const WorkFolder folder;
  folder.Write("faults.txt", "AccountAddRq 10 status 3180 Error \"scripted\"\n");
  const auto ended = folder.Twqb({"demo", "-C", ".", "--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("shown 2 message boxes"));
  EXPECT_THAT(ended.out, HasSubstr("Without a link: 7 accounts"));
}

TEST(Demo, Takes_a_folder_of_its_own_when_none_is_named) {
  const WorkFolder folder;
  const auto out = folder.Done({"demo", "--no-progress"});
  EXPECT_THAT(folder.Names(), testing::IsEmpty());
  const std::string intro = "on both sides: ";
  const auto begin = out.find(intro) + intro.size();
  const std::filesystem::path made = out.substr(begin, out.find('\n') - begin);
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
