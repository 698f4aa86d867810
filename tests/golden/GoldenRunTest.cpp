// Whole runs of the command line against their recorded transcripts. With TWQB_REBASELINE set they are written anew.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "tests/golden/Scenario.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

namespace fs = std::filesystem;

const fs::path kTranscripts = fs::path(TWQB_SOURCE_DIR) / "tests/transcripts";

std::vector<std::string> Scenarios() {
  std::vector<std::string> found;
  for (const auto& entry : fs::recursive_directory_iterator(kTranscripts)) {
    if (entry.path().filename() == "scenario") found.push_back(entry.path().parent_path().string());
  }
  std::ranges::sort(found);
  return found;
}

std::string TestName(const testing::TestParamInfo<std::string>& info) {
  auto name = fs::relative(info.param, kTranscripts).string();
  std::ranges::replace_if(
      name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

class GoldenRun : public testing::TestWithParam<std::string> {};

TEST_P(GoldenRun, Comes_out_as_recorded) {
  const auto file = GetParam() + "/transcript.jsonl";
  const auto actual = RunScenario(GetParam());
  if (std::getenv("TWQB_REBASELINE") != nullptr) {
    WriteWholeFile(file, actual);
    return;
  }
  std::istringstream expectedLines(ReadWholeFile(file));
  std::istringstream actualLines(actual);
  std::string expectedLine;
  std::string actualLine;
  for (int line = 1;; ++line) {
    const bool moreExpected = static_cast<bool>(std::getline(expectedLines, expectedLine));
    const bool moreActual = static_cast<bool>(std::getline(actualLines, actualLine));
    if (!moreExpected && !moreActual) break;
    ASSERT_TRUE(moreExpected) << file << " ends at line " << line - 1 << ", the run went on with\n" << actualLine;
    ASSERT_TRUE(moreActual) << "The run ended before line " << line << " of " << file << "\n" << expectedLine;
    ASSERT_EQ(expectedLine, actualLine) << file << ":" << line;
  }
}

INSTANTIATE_TEST_SUITE_P(Transcripts, GoldenRun, testing::ValuesIn(Scenarios()), TestName);

// The tables of the command line, by the names it takes.
constexpr std::string_view kTables[] = {"employees",   "vendors",      "clients",  "projects",
                                        "activities",  "expensecodes", "accounts", "expenselog",
                                        "timeentries", "invoices",     "payments", "vendorbill"};

bool IsBuilt(const std::string& verb, std::string_view table) {
  const TemporaryFolder folder;
  const std::vector<std::string> common = {TWQB_PROGRAM, "-C", folder.Path()};
  auto arguments = common;
  arguments.emplace_back("init");
  EXPECT_EQ(RunProcess(arguments).exitStatus, 0);
  arguments = common;
  arguments.insert(arguments.end(), {verb, std::string(table)});
  return RunProcess(arguments).errors.find("this version does not") == std::string::npos;
}

TEST(GoldenRuns, Cover_every_table_in_every_direction_that_is_built) {
  std::string steps;
  for (const auto& folder : Scenarios()) steps += "\n" + ReadWholeFile(folder + "/scenario");
  for (const auto table : kTables) {
    for (const std::string verb : {"send", "get"}) {
      if (!IsBuilt(verb, table)) continue;
      EXPECT_NE(steps.find("\n" + verb + " " + std::string(table)), std::string::npos)
          << "no golden run for: " << verb << " " << table;
    }
  }
}

}  // namespace
}  // namespace twqb
