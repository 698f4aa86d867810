#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "adapters/system/FileReplacement.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

namespace fs = std::filesystem;

// Above the greatest number that a process can have.
constexpr auto kDead = "4194305";

TEST(FileReplacementTest, A_link_is_followed_unless_it_is_to_be_replaced) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "target", "old");
  fs::create_symlink("target", folder / "link");
  ASSERT_TRUE(ReplaceFile(folder / "link", "new"));
  EXPECT_EQ(ReadWholeFile(folder / "target"), "new");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));

  auto replacement = FileReplacement::Begin(folder / "link", Links::Replaced);
  ASSERT_TRUE(replacement);
  ASSERT_TRUE(WriteAll(replacement->File(), "newest") && replacement->Commit());
  EXPECT_FALSE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(ReadWholeFile(folder / "link"), "newest");
  EXPECT_EQ(ReadWholeFile(folder / "target"), "new");
}

TEST(FileReplacementTest, What_dead_processes_have_left_is_removed_and_nothing_else) {
  const TemporaryFolder folder;
  const auto dead = folder / "a.ini." + kDead + "-0.tmp";
  WriteWholeFile(dead, "half");
  const std::vector<std::string> others = {
      folder / "a.ini",
      folder / "a.ini." + std::to_string(getpid()) + "-0.tmp",  // of a process that lives
      folder / "b.ini." + kDead + "-0.tmp",                     // of another file
      folder / "a.ini." + kDead + "-x.tmp",
      folder / "a.ini." + kDead + "-0.tmp.old",
      folder / "a.ini.tmp",
  };
  for (const auto& other : others) WriteWholeFile(other, "kept");
  RemoveAbandonedReplacements(folder / "a.ini");
  EXPECT_FALSE(fs::exists(dead));
  for (const auto& other : others) EXPECT_TRUE(fs::exists(other)) << other;
}

TEST(FileReplacementTest, What_is_in_work_is_not_taken_for_abandoned) {
  const TemporaryFolder folder;
  auto replacement = FileReplacement::Begin(folder / "a.ini");
  ASSERT_TRUE(replacement);
  // As it would look to a machine on which this process is none.
  const auto renamed = folder / "a.ini." + kDead + "-0.tmp";
  for (const auto& entry : fs::directory_iterator(folder.Path())) fs::rename(entry.path(), renamed);
  RemoveAbandonedReplacements(folder / "a.ini");
  EXPECT_TRUE(fs::exists(renamed));
}

}  // namespace
}  // namespace twqb
