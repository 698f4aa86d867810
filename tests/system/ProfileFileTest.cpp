#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "TestFiles.h"
#include "adapters/system/ProfileFile.h"

namespace twqb {
namespace {

using test::ReadFile;
using test::TemporaryFolder;
using test::WriteFile;

// Long enough for a file just written to count as settled.
void Settle() { std::this_thread::sleep_for(std::chrono::milliseconds(120)); }

TEST(ProfileFile, A_missing_file_is_an_empty_one) {
  const TemporaryFolder folder;
  ProfileFile file(folder / "none.ini");
  EXPECT_EQ(file.Read("A", "k"), std::nullopt);
  EXPECT_TRUE(file.Entries().empty());
  EXPECT_EQ(test::FileCount(folder), 0U);
}

TEST(ProfileFile, What_is_written_is_read_and_stands_in_the_file) {
  const TemporaryFolder folder;
  ProfileFile file(folder / "a.ini");
  EXPECT_TRUE(file.Write("A", "k", "1"));
  EXPECT_EQ(file.Read("a", "K"), "1");
  EXPECT_TRUE(file.Write("A", "k", "2"));
  EXPECT_EQ(file.Read("A", "k"), "2");
  EXPECT_TRUE(file.Write("A", "m", " "));
  EXPECT_EQ(file.Read("A", "m"), " ");
  EXPECT_EQ(ReadFile(folder / "a.ini"), "[A]\r\nk=2\r\nm=\" \"\r\n");
  EXPECT_EQ(test::FileCount(folder), 1U) << "no temporary file stays";
}

TEST(ProfileFile, A_change_by_somebody_else_is_seen_though_size_and_place_stay) {
  const TemporaryFolder folder;
  const auto path = folder / "a.ini";
  WriteFile(path, "[A]\nk=1\n");
  Settle();
  ProfileFile file(path);
  EXPECT_EQ(file.Read("A", "k"), "1");
  WriteFile(path, "[A]\nk=2\n");
  EXPECT_EQ(file.Read("A", "k"), "2");
  WriteFile(path, "[A]\nk=3\n");
  EXPECT_EQ(file.Read("A", "k"), "3");
  std::filesystem::remove(path);
  EXPECT_EQ(file.Read("A", "k"), std::nullopt);
}

TEST(ProfileFile, Two_writers_keep_each_others_entries) {
  const TemporaryFolder folder;
  const auto path = folder / "a.ini";
  WriteFile(path, "");
  constexpr int kWrites = 40;
  const auto write = [&path](const std::string& section) {
    ProfileFile file(path);
    for (int i = 0; i < kWrites; ++i) EXPECT_TRUE(file.Write(section, "k" + std::to_string(i), "v"));
  };
  std::thread other(write, "other");
  write("own");
  other.join();
  EXPECT_EQ(ProfileFile(path).Entries().size(), 2U * kWrites);
}

TEST(ProfileFile, A_write_into_a_missing_folder_fails) {
  const TemporaryFolder folder;
  EXPECT_FALSE(ProfileFile(folder / "none/a.ini").Write("A", "k", "v"));
  EXPECT_FALSE(ProfileFile("").Write("A", "k", "v"));
}

TEST(ProfileFile, A_read_only_file_is_read_and_never_written) {
  const TemporaryFolder folder;
  const auto path = folder / "a.ini";
  WriteFile(path, "[A]\nk=1\n");
  test::MakeReadOnly(path);
  ProfileFile file(path);
  EXPECT_EQ(file.Read("A", "k"), "1");
  EXPECT_FALSE(file.Write("A", "k", "2"));
  EXPECT_EQ(ReadFile(path), "[A]\nk=1\n");
  EXPECT_EQ(test::FileCount(folder), 1U);
}

TEST(ProfileFile, A_value_that_is_refused_leaves_the_file_as_it_was) {
  const TemporaryFolder folder;
  const auto path = folder / "a.ini";
  WriteFile(path, "[A]\nk=1\n");
  ProfileFile file(path);
  EXPECT_FALSE(file.Write("A", "k", "two\nlines"));
  EXPECT_EQ(ReadFile(path), "[A]\nk=1\n");
  EXPECT_EQ(file.Read("A", "k"), "1");
}

TEST(ProfileFile, A_folder_or_a_pipe_in_its_place_is_empty_and_can_not_be_written) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "folder");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  for (const auto* name : {"folder", "pipe"}) {
    ProfileFile file(folder / name);
    EXPECT_EQ(file.Read("A", "k"), std::nullopt) << name;
    EXPECT_FALSE(file.Write("A", "k", "v")) << name;
  }
  EXPECT_EQ(test::FileCount(folder), 2U);
}

TEST(ProfileFile, A_write_through_a_link_changes_the_file_behind_it) {
  const TemporaryFolder folder;
  WriteFile(folder / "a.ini", "[A]\nk=1\n");
  std::filesystem::create_symlink("a.ini", folder / "link.ini");
  EXPECT_TRUE(ProfileFile(folder / "link.ini").Write("A", "k", "2"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.ini"));
  EXPECT_EQ(ReadFile(folder / "a.ini"), "[A]\nk=2\n");
}

TEST(ProfileFile, A_write_keeps_the_permissions_of_the_file) {
  const TemporaryFolder folder;
  const auto path = folder / "a.ini";
  WriteFile(path, "[A]\nk=1\n");
  const auto permissions = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
  std::filesystem::permissions(path, permissions);
  EXPECT_TRUE(ProfileFile(path).Write("A", "k", "2"));
  EXPECT_EQ(std::filesystem::status(path).permissions(), permissions);
}

}  // namespace
}  // namespace twqb
