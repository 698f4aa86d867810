// The program that the build calls: files in, files out.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/Process.h"

namespace twqb {
namespace {

class MessageGenerator : public testing::Test {
 protected:
  ProcessResult Run() { return RunProcess({TWQB_MESSAGEGEN, "BoxMessages", folder_ / "out", boxes_, colours_}); }
  void Write(const std::string& colours) {
    WriteWholeFile(boxes_, "message Box @1.0 {\n  request { Colour }\n}\n");
    WriteWholeFile(colours_, colours);
  }
  // As if they had been made long ago.
  void MakeOld(const std::string& path) {
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) - std::chrono::hours(1));
  }

  TemporaryFolder folder_;
  std::string boxes_ = folder_ / "Boxes.messages";
  std::string colours_ = folder_ / "Colours.messages";
  std::string boxRows_ = folder_ / "out/Boxes.rows.cpp";
  std::string colourRows_ = folder_ / "out/Colours.rows.cpp";
  std::string table_ = folder_ / "out/BoxMessages.cpp";
};

TEST_F(MessageGenerator, Makes_a_file_of_each_text_and_one_of_the_table) {
  Write("enum Colour { Red, Blue=5 }\n");
  const auto run = Run();
  EXPECT_EQ(run.exitStatus, 0) << run.errors;
  EXPECT_EQ(run.output + run.errors, "");
  EXPECT_THAT(ReadWholeFile(colourRows_), testing::HasSubstr("{.name = \"Blue\", .number = 5}"));
  EXPECT_THAT(ReadWholeFile(boxRows_), testing::HasSubstr("{.name = \"Colour\", .type = Type::Enum"));
  EXPECT_THAT(ReadWholeFile(table_), testing::HasSubstr("std::span<const Message> BoxMessages()"));
}

TEST_F(MessageGenerator, Leaves_a_file_alone_that_says_so_already) {
  Write("enum Colour { Red }\n");
  ASSERT_EQ(Run().exitStatus, 0);
  for (const auto& path : {boxRows_, colourRows_, table_}) MakeOld(path);
  const auto boxTime = std::filesystem::last_write_time(boxRows_);
  const auto colourTime = std::filesystem::last_write_time(colourRows_);
  const auto tableTime = std::filesystem::last_write_time(table_);
  Write("enum Colour { Blue }\n");
  ASSERT_EQ(Run().exitStatus, 0);
  EXPECT_EQ(std::filesystem::last_write_time(boxRows_), boxTime);
  EXPECT_EQ(std::filesystem::last_write_time(table_), tableTime);
  EXPECT_GT(std::filesystem::last_write_time(colourRows_), colourTime);
  EXPECT_THAT(ReadWholeFile(colourRows_), testing::HasSubstr("Blue"));
}

TEST_F(MessageGenerator, Ends_with_one_line_for_a_fault_and_writes_nothing) {
  Write("enum Colour {\n  Red, Red\n}\n");
  const auto run = Run();
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(run.errors, colours_ + ":2: Colour has two values Red\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "out"));
}

TEST_F(MessageGenerator, Names_a_file_that_is_not_there) {
  const auto run = Run();
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(run.errors, boxes_ + ": can't be read\n");
}

TEST_F(MessageGenerator, Tells_how_to_call_it) {
  EXPECT_EQ(RunProcess({TWQB_MESSAGEGEN}).exitStatus, 1);
  EXPECT_THAT(RunProcess({TWQB_MESSAGEGEN, "BoxMessages"}).errors, testing::StartsWith("usage: "));
}

}  // namespace
}  // namespace twqb
