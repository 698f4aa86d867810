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
  EXPECT_THAT(out, HasSubstr("26 of 26 employees, 14 of 14 vendors, 75 of 75 clients, 122 of 122 projects are linked"));
  EXPECT_EQ(folder.Scalar("SELECT ClientEmail FROM Client WHERE ClientID = 'EASTON'"), "billing@easton.example");
  EXPECT_EQ(folder.Scalar("SELECT ClientEmail FROM Client WHERE ClientID = 'GRANITE'"), "books@granite.example");
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
