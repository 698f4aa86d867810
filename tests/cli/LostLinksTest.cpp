// What the program says of links that got lost, and how it sends without looking for them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class LostLinkRuns : public testing::Test {
 protected:
  LostLinkRuns() {
    folder_.Done({"init", "--sample", "--clock", "2008-03-05T10:00:00"});
    folder_.Write("yes.txt", "default yes\n");
    // Of a row of its own, so that each counts for itself.
    folder_.Write("once.txt", kFails);
    folder_.Write("twice.txt", std::string(kFails) + "sql 2 raise 0x80040E14 \"Broken.\" UPDATE Client SET QBLinkID\n");
  }

  [[nodiscard]] Ended Send(const std::string& hour, const std::vector<std::string>& options = {}) const {
    std::vector<std::string> arguments = {"send",      "clients", "--id", "ABBOTT", "--clock", "2008-03-05T" + hour,
                                          "--answers", "yes.txt"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return folder_.Twqb(arguments);
  }
  [[nodiscard]] std::string Link() const {
    return folder_.Scalar("SELECT QBLinkID FROM Client WHERE ClientID = 'ABBOTT'");
  }
  [[nodiscard]] std::string Company() const { return folder_.Done({"company", "show"}); }

  static constexpr auto kFails = "sql 1 raise 0x80040E14 \"Broken.\" UPDATE Client SET QBLinkID\n";
  WorkFolder folder_;
};

TEST_F(LostLinkRuns, One_that_is_found_again_is_told_on_standard_error_and_in_the_log) {
  const auto ended = Send("10:00:00", {"--faults", "once.txt"});
  const auto link = Link();
  EXPECT_THAT(link, testing::MatchesRegex("8[0-9A-F]+-[0-9]+"));
  const auto line = "Found again: client ABBOTT is customer " + link + ".";
  EXPECT_THAT(ended.err, HasSubstr(line));
  EXPECT_THAT(folder_.Read("TWQBLog20083.txt"), HasSubstr(line));
  const auto company = Company();
  const auto next = Send("11:00:00");
  EXPECT_EQ(next.status, 0) << next.err;
  EXPECT_THAT(next.err, Not(HasSubstr("Found again")));
  EXPECT_EQ(Company(), company);
}

TEST_F(LostLinkRuns, One_that_stays_open_ends_the_run_with_1_and_the_next_one_finds_it) {
  const auto ended = Send("10:00:00", {"--faults", "twice.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("The client ABBOTT may be in QuickBooks already, without a link: "),
                               Not(HasSubstr("Found again"))));
  const auto company = Company();
  const auto next = Send("11:00:00");
  EXPECT_EQ(next.status, 0) << next.err;
  EXPECT_THAT(next.err, HasSubstr("Found again: client ABBOTT is customer " + Link() + "."));
  EXPECT_EQ(Company(), company) << "nothing is added";
}

TEST_F(LostLinkRuns, One_that_a_preview_finds_in_its_copies_is_told_as_what_would_be) {
  static_cast<void>(Send("10:00:00", {"--faults", "twice.txt"}));
  const auto before = Link();
  const auto ended = Send("11:00:00", {"--preview"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.err, Not(HasSubstr("Found again")));
  EXPECT_THAT(ended.out,
              HasSubstr("Links that got lost, of which it would be told:\n  Found again: client ABBOTT is "));
  EXPECT_THAT(Send("11:00:00", {"--preview", "--json"}).out,
              HasSubstr("{\"preview\":\"told\",\"text\":\"Found again: client ABBOTT is "));
  EXPECT_EQ(Link(), before);
}

TEST_F(LostLinkRuns, Without_recovery_no_set_has_an_identifier_and_nothing_is_looked_for) {
  static_cast<void>(Send("10:00:00", {"--faults", "once.txt", "--no-recovery", "--transcript", "off.jsonl"}));
  EXPECT_THAT(folder_.Read("off.jsonl"), AllOf(HasSubstr("CustomerAddRq"), Not(HasSubstr("MessageSetID"))));
  EXPECT_THAT(Link(), Not(testing::MatchesRegex("8[0-9A-F]+-[0-9]+")));
  const auto company = Company();
  const auto next = Send("11:00:00", {"--transcript", "on.jsonl"});
  EXPECT_THAT(folder_.Read("on.jsonl"), HasSubstr("newMessageSetID"));
  EXPECT_THAT(next.err, Not(HasSubstr("Found again")));
  EXPECT_NE(Company(), company) << "what was lost is added again";
}

}  // namespace
}  // namespace twqb::cli
