// Whole runs of the command line against their recorded transcripts. With TWQB_REBASELINE set they are written anew.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "bridge/Tables.h"
#include "platform/Text.h"
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

// A table that selects no rows is sent by doing nothing.
bool IsBuilt(const std::string& verb, const Table& table) {
  return verb == "send" ? table.send != nullptr && !table.selection.base.empty() : table.get != nullptr;
}

bool HasStep(const std::string& scenario, const std::string& step) {
  return ("\n" + scenario).find("\n" + step) != std::string::npos;
}

// Expects a golden run with what `covers` looks for, of each table in each direction.
template <typename Covers>
void ExpectRunOfEach(const Covers& covers, std::string_view what) {
  std::vector<std::string> scenarios;
  for (const auto& folder : Scenarios()) scenarios.push_back(ReadWholeFile(folder + "/scenario"));
  for (const auto* table : BuiltInTables()) {
    for (const std::string verb : {"send", "get"}) {
      if (!IsBuilt(verb, *table)) continue;
      EXPECT_TRUE(std::ranges::any_of(scenarios, [&](const auto& scenario) { return covers(scenario, verb, *table); }))
          << "no golden run " << what << " for: " << verb << " " << table->name;
    }
  }
}

// Most runs leave progress and settings out: one for each table and direction has to tell what they are there.
TEST(GoldenRuns, Cover_every_table_in_every_direction_that_is_built_once_with_progress_and_settings) {
  ExpectRunOfEach(
      [](const std::string& scenario, const std::string& verb, const Table& table) {
        return HasStep(scenario, verb + " " + FoldCase(table.name)) && HasStep(scenario, "keep progress settings\n");
      },
      "with the step `keep progress settings`");
}

// What the call-back hears depends on the table and on who runs it: once in a transfer, once outside of one.
TEST(GoldenRuns, Cover_every_table_in_every_direction_that_is_built_once_under_a_subscription) {
  ExpectRunOfEach(
      [](const std::string& scenario, const std::string& verb, const Table& table) {
        const auto argument = " en" + std::string(table.name);
        const bool sends = verb == "send";
        return (HasStep(scenario, "subscribed\n") || HasStep(scenario, "take firm\n")) &&
               HasStep(scenario, (sends ? "call SendDataToQB" : "call GetDataFromQB") + argument + "\n") &&
               HasStep(scenario, (sends ? "call SendTableToQB" : "call GetTableFromQB") + argument + " ");
      },
      "under a subscription");
}

}  // namespace
}  // namespace twqb
