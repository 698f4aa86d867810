// Whole runs of the command line against their recorded transcripts. With TWQB_REBASELINE set they are written anew.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>

#include "tests/golden/Expectation.h"
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
  const auto actualLines = ComparedLines(actual);
  const auto expectedLines = ComparedLines(ReadWholeFile(file));
  if (std::getenv("TWQB_REBASELINE") != nullptr) {
    // A file that holds still is left alone, whatever the numbers of its events would be by now.
    if (expectedLines != actualLines) WriteWholeFile(file, actual);
    return;
  }
  for (std::size_t i = 0; i < std::max(expectedLines.size(), actualLines.size()); ++i) {
    ASSERT_LT(i, expectedLines.size()) << file << " ends at line " << i << ", the run went on with\n" << actualLines[i];
    ASSERT_LT(i, actualLines.size()) << "The run ended before line " << i + 1 << " of " << file << "\n"
                                     << expectedLines[i];
    ASSERT_EQ(expectedLines[i], actualLines[i]) << file << ":" << i + 1;
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

bool HasStep(const std::string& scenario, const std::string& step) {
  return ("\n" + scenario).find("\n" + step) != std::string::npos;
}

// Most runs leave progress and settings out: one for each table and direction has to tell what they are there.
TEST(GoldenRuns, Cover_every_table_in_every_direction_that_is_built_once_with_progress_and_settings) {
  std::vector<std::string> scenarios;
  for (const auto& folder : Scenarios()) scenarios.push_back(ReadWholeFile(folder + "/scenario"));
  for (const auto table : kTables) {
    for (const std::string verb : {"send", "get"}) {
      if (!IsBuilt(verb, table)) continue;
      const auto step = verb + " " + std::string(table);
      const auto covers = [&](const std::string& scenario) {
        return HasStep(scenario, step) && HasStep(scenario, "keep progress settings\n");
      };
      EXPECT_TRUE(std::ranges::any_of(scenarios, covers))
          << "no golden run with the step `keep progress settings` for: " << step;
    }
  }
}

}  // namespace
}  // namespace twqb
