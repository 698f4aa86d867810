// What stands beside the two databases while a transfer writes, and after it ended, well or not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <ostream>

#include "HeldTransfer.h"

namespace twqb::cli {
namespace {

using testing::Contains;

const std::vector<std::string> kSend = {"send", "clients", "--answers", "yes.txt", "--no-progress"};
// Behind the first link: both files have been written by then.
constexpr std::string_view kAtWork = "SET QBLinkID";
constexpr std::string_view kLinked = "SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''";

class WrittenFiles : public testing::Test {
 protected:
  WrittenFiles() {
    folder_.Done({"init", "--sample"});
    folder_.Write("yes.txt", "default yes\n");
  }

  // Of the logs beside the databases.
  [[nodiscard]] std::vector<std::string> Beside() const {
    auto names = folder_.Names();
    std::erase_if(names, [](const std::string& name) { return !name.ends_with("-wal") && !name.ends_with("-shm"); });
    return names;
  }
  [[nodiscard]] int Linked() const { return std::stoi(folder_.Scalar(std::string(kLinked))); }
  WorkFolder folder_;
};

TEST_F(WrittenFiles, Have_their_logs_beside_them_while_a_transfer_writes_and_nothing_behind_it) {
  EXPECT_THAT(Beside(), testing::IsEmpty()) << "of init";
  HeldTransfer transfer(folder_, kSend, kAtWork);
  EXPECT_THAT(Beside(), Contains("company.twq-wal"));
  folder_.Done({"status"});
  folder_.Done({"balances"});
  EXPECT_EQ(transfer.Finish().exitStatus, 0);
  EXPECT_THAT(Beside(), testing::IsEmpty());
}

struct Look {
  std::string name;
  std::vector<std::string> command;
};
std::ostream& operator<<(std::ostream& out, const Look& look) { return out << look.name; }

class LeftFiles : public WrittenFiles, public testing::WithParamInterface<Look> {};

TEST_P(LeftFiles, Of_a_killed_transfer_are_taken_up_whole_by_whoever_looks_first) {
  {
    HeldTransfer transfer(folder_, kSend, kAtWork);
    ASSERT_THAT(Beside(), Contains("company.twq-wal"));
    transfer.Process().Signal(SIGKILL);
    ASSERT_EQ(transfer.Process().Wait().signal, SIGKILL);
  }
  ASSERT_THAT(Beside(), Contains("company.twq-wal"));
  folder_.Done(GetParam().command);
  EXPECT_GE(Linked(), 1);
  folder_.Done({"company", "show"});
  EXPECT_THAT(Beside(), testing::IsEmpty());
  folder_.Done(kSend);
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID IS NULL OR QBLinkID = ''"), "0");
  EXPECT_THAT(Beside(), testing::IsEmpty());
}

const std::vector<Look> kLooks = {
    {"status", {"status"}},
    {"balances", {"balances"}},
    {"billing_show", {"billing", "show"}},
    {"company_show", {"company", "show"}},
    {"list", {"list", "customers", "--answers", "yes.txt"}},
    {"get", {"get", "clients", "--answers", "yes.txt", "--no-progress"}},
};
INSTANTIATE_TEST_SUITE_P(First, LeftFiles, testing::ValuesIn(kLooks), [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace twqb::cli
