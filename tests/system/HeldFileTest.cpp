#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "adapters/system/FileIdentity.h"
#include "adapters/system/HeldFile.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

using Outcome = HeldFile::Outcome;

class HeldFileTest : public testing::Test {
 protected:
  HeldFileTest() { WriteWholeFile(data_, "data"); }
  HeldFile::Answer Claim(const std::string& command = "a") {
    return HeldFile::Claim(lock_, data_, ThisHolder(command, "2008-03-05T10:00:00"));
  }

  TemporaryFolder folder_;
  std::string data_ = folder_ / "data";
  std::string lock_ = folder_ / "data.held";
};

TEST_F(HeldFileTest, Is_claimed_once_and_tells_by_whom) {
  const auto first = Claim("twqb send");
  ASSERT_EQ(first.outcome, Outcome::Held);
  const auto second = Claim();
  EXPECT_EQ(second.outcome, Outcome::HeldByOther);
  EXPECT_EQ(second.holder.process, std::to_string(getpid()));
  EXPECT_EQ(second.holder.command, "twqb send");
  EXPECT_EQ(second.holder.since, "2008-03-05T10:00:00");
  EXPECT_NE(second.holder.host, "");
}

TEST_F(HeldFileTest, Is_free_and_gone_with_its_holder) {
  { EXPECT_EQ(Claim().outcome, Outcome::Held); }
  EXPECT_FALSE(std::filesystem::exists(lock_));
  EXPECT_EQ(Claim().outcome, Outcome::Held);
}

TEST_F(HeldFileTest, What_a_dead_process_has_left_is_no_claim) {
  { WriteWholeFile(lock_, "Held by a transfer of twqb\nprocess 1\ncommand a much longer one than the next\n"); }
  const auto next = Claim("b");
  ASSERT_EQ(next.outcome, Outcome::Held);
  EXPECT_EQ(Claim().holder.command, "b");
}

TEST_F(HeldFileTest, Something_else_of_its_name_stays_as_it_is) {
  WriteWholeFile(lock_, "mine");
  EXPECT_EQ(Claim().outcome, Outcome::NotOurs);
  EXPECT_EQ(ReadWholeFile(lock_), "mine");
  std::filesystem::remove(lock_);
  std::filesystem::create_symlink("data", lock_);
  EXPECT_EQ(Claim().outcome, Outcome::NotOurs) << "a link is not followed";
  EXPECT_EQ(ReadWholeFile(data_), "data");
}

TEST_F(HeldFileTest, A_folder_or_a_link_to_itself_of_its_name_is_something_else) {
  std::filesystem::create_directory(lock_);
  EXPECT_EQ(Claim().outcome, Outcome::NotOurs);
  std::filesystem::remove(lock_);
  std::filesystem::create_symlink("data.held", lock_);
  EXPECT_EQ(Claim().outcome, Outcome::NotOurs);
}

TEST_F(HeldFileTest, What_has_come_into_its_place_meanwhile_stays) {
  {
    const auto held = Claim();
    ASSERT_EQ(held.outcome, Outcome::Held);
    std::filesystem::rename(lock_, folder_ / "moved");
    WriteWholeFile(lock_, "mine");
  }
  EXPECT_EQ(ReadWholeFile(lock_), "mine");
  std::filesystem::remove(lock_);
  {
    const auto held = Claim();
    ASSERT_EQ(held.outcome, Outcome::Held);
    std::filesystem::rename(lock_, folder_ / "moved");
    std::filesystem::create_symlink("moved", lock_);
  }
  EXPECT_TRUE(std::filesystem::is_symlink(lock_)) << "a link to it is not it";
}

// Each one adds to a counter that it reads first, so that two at once would lose some.
TEST_F(HeldFileTest, Excludes_all_others_however_fast_they_come_and_go) {
  constexpr int kThreads = 4;
  constexpr int kTimes = 400;
  WriteWholeFile(data_, "0");
  const auto work = [this] {
    for (int done = 0; done < kTimes;) {
      const auto held = Claim();
      if (held.outcome == Outcome::Failed || held.outcome == Outcome::NotOurs) return;
      if (held.outcome != Outcome::Held) continue;
      WriteWholeFile(data_, std::to_string(std::stoi(ReadWholeFile(data_)) + 1));
      ++done;
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(work);
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(ReadWholeFile(data_), std::to_string(kThreads * kTimes));
  EXPECT_FALSE(std::filesystem::exists(lock_));
}

TEST_F(HeldFileTest, Has_the_rights_of_what_is_claimed) {
  ASSERT_EQ(chmod(data_.c_str(), 0664), 0);
  const auto held = Claim();
  ASSERT_EQ(held.outcome, Outcome::Held);
  struct stat status = {};
  ASSERT_EQ(stat(lock_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0664U);
}

TEST_F(HeldFileTest, A_folder_that_is_not_there_takes_no_claim) {
  const auto answer = HeldFile::Claim(folder_ / "none/data.held", data_, {});
  EXPECT_EQ(answer.outcome, Outcome::NoFileHere);
}

TEST(FileIdentityTest, Spellings_and_links_lead_to_one_file) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "a", "");
  WriteWholeFile(folder / "b", "");
  std::filesystem::create_symlink("a", folder / "soft");
  std::filesystem::create_hard_link(folder / "a", folder / "hard");
  for (const std::string name : {"a", "soft", "hard", "./a", "x/../a"}) {
    std::filesystem::create_directories(folder / "x");
    EXPECT_TRUE(AreOneFile(folder / "a", folder / name)) << name;
  }
  EXPECT_FALSE(AreOneFile(folder / "a", folder / "b"));
  EXPECT_FALSE(AreOneFile(folder / "a", folder / "none"));
  EXPECT_TRUE(AreOneFile(folder / "none", folder / "x/../none")) << "one that is still to be made";
  EXPECT_FALSE(AreOneFile(folder / "none", folder / "nothing"));
}

}  // namespace
}  // namespace twqb
