// Whole runs of the command line against their recorded transcripts. With TWQB_REBASELINE set they are written anew;
// with TWQB_COM_HOST, which names a program (tests/windows/golden.sh), the library is reached by COM instead.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "bridge/Tables.h"
#include "platform/Text.h"
#include "tests/golden/ComHost.h"
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

// The program that takes the place of objects inside the test, and its arguments; none unless TWQB_COM_HOST names it.
std::vector<std::string> ComHostCommand() {
  const char* const command = std::getenv("TWQB_COM_HOST");
  return command == nullptr ? std::vector<std::string>() : Split(command, ' ');
}

ScenarioOptions Through(const std::vector<std::string>& comHost) {
  return {.makeHost = [comHost](const HostOptions& options) { return std::make_unique<ComHost>(options, comHost); },
          .hold =
              [comHost](const HostOptions& options, OpenMode mode) {
                auto holder = std::make_shared<ComHost>(options, comHost);
                holder->Hold(mode);
                return holder;
              }};
}

// Those that can be taken on the road that is asked for; the others are named with the reason.
std::vector<std::string> TakenScenarios() {
  auto scenarios = Scenarios();
  if (ComHostCommand().empty()) return scenarios;
  std::erase_if(scenarios, [](const auto& folder) {
    const auto why = ComHost::WhyNot(ReadWholeFile(folder + "/scenario"));
    if (!why.empty()) std::printf("not through COM: %s: %s\n", folder.c_str(), why.c_str());
    return !why.empty();
  });
  return scenarios;
}

void ExpectSame(const std::vector<std::string>& expected, const std::vector<std::string>& actual,
                const std::string& file) {
  for (std::size_t i = 0; i < std::max(expected.size(), actual.size()); ++i) {
    ASSERT_LT(i, expected.size()) << file << " ends at line " << i << ", the run went on with\n" << actual[i];
    ASSERT_LT(i, actual.size()) << "The run ended before line " << i + 1 << " of " << file << "\n" << expected[i];
    ASSERT_EQ(expected[i], actual[i]) << file << ":" << i + 1;
  }
}

class GoldenRun : public testing::TestWithParam<std::string> {};

TEST_P(GoldenRun, Comes_out_as_recorded) {
  const auto file = GetParam() + "/transcript.jsonl";
  const auto expected = ReadWholeFile(file);
  if (const auto comHost = ComHostCommand(); !comHost.empty()) {
    ExpectSame(LinesThroughCom(expected), LinesThroughCom(RunScenario(GetParam(), Through(comHost))), file);
    return;
  }
  const auto actual = RunScenario(GetParam());
  const auto actualLines = ComparedLines(actual);
  const auto expectedLines = ComparedLines(expected);
  if (std::getenv("TWQB_REBASELINE") != nullptr) {
    // A file that holds still is left alone, whatever the numbers of its events would be by now.
    if (expectedLines != actualLines) WriteWholeFile(file, actual);
    return;
  }
  ExpectSame(expectedLines, actualLines, file);
}

INSTANTIATE_TEST_SUITE_P(Transcripts, GoldenRun, testing::ValuesIn(TakenScenarios()), TestName);

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
