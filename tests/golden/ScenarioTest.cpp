// Scenarios that can't come to their end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/golden/Expectation.h"
#include "tests/golden/LibraryHost.h"
#include "tests/golden/Scenario.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

const auto kNamesTheQuestionOfTheFirstRun =
    AllOf(HasSubstr("Would you like to backup your data files Now?"), HasSubstr("(title \"Backup QB Data file?\")"),
          HasSubstr("It offers yes, no."));

std::string RunSteps(const std::string& steps) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "scenario", steps);
  return RunScenario(folder.Path());
}

TEST(Scenario, A_transfer_whose_question_has_no_answer_ends_the_run_and_names_it) {
  EXPECT_THAT([] { (void)RunSteps("first run\nsend clients\n"); },
              ThrowsMessage<std::runtime_error>(AllOf(StartsWith("send clients\n"), kNamesTheQuestionOfTheFirstRun)));
}

TEST(Scenario, A_call_whose_question_has_no_answer_ends_the_run_and_names_it) {
  EXPECT_THAT(
      [] { (void)RunSteps("first run\nobject\ncall ConnectToQB True\n"); },
      ThrowsMessage<std::runtime_error>(AllOf(StartsWith("call ConnectToQB True\n"), kNamesTheQuestionOfTheFirstRun)));
}

TEST(Scenario, A_transfer_that_can_not_be_run_ends_the_run_and_says_why) {
  EXPECT_THAT([] { (void)RunSteps("answer perhaps\nsend clients\n"); },
              ThrowsMessage<std::runtime_error>(AllOf(StartsWith("send clients\n"), HasSubstr("perhaps"))));
}

TEST(Scenario, A_subject_that_is_not_known_can_not_be_kept) {
  EXPECT_THAT([] { (void)RunSteps("keep boxes\n"); }, ThrowsMessage<std::runtime_error>(HasSubstr("keep boxes")));
}

TEST(Scenario, Progress_and_settings_are_in_the_record_where_they_are_kept) {
  const std::string steps = "sql INSERT INTO Client (ClientID, Status) VALUES ('A', 'Active')\nsend clients\n";
  const auto contains = [](const char* kind) { return HasSubstr(std::string("\"kind\":\"") + kind + "\""); };
  using testing::Not;
  EXPECT_THAT(RunSteps(steps), AllOf(contains("request"), Not(contains("form")), Not(contains("setting"))));
  EXPECT_THAT(RunSteps("keep progress\n" + steps), AllOf(contains("form"), Not(contains("setting"))));
  EXPECT_THAT(RunSteps("keep settings\n" + steps),
              AllOf(contains("setting"), contains("registry"), Not(contains("form"))));
}

TEST(Scenario, Steps_that_are_shared_are_taken_from_beside_the_scenario) {
  const TemporaryFolder folder;
  const auto scenario = folder / "of_two";
  std::filesystem::create_directory(scenario);
  WriteWholeFile(scenario + "/scenario", "take firm\nshow SELECT ClientID FROM Client\n");
  EXPECT_THAT([&] { (void)RunScenario(scenario); }, ThrowsMessage<std::runtime_error>(HasSubstr("firm")));
  WriteWholeFile(folder / "firm", "sql INSERT INTO Client (ClientID) VALUES ('SHARED')\n");
  EXPECT_THAT(RunScenario(scenario), HasSubstr("SHARED"));
}

// As through COM, but inside the test.
TEST(Scenario, A_host_takes_the_command_lines_place_with_the_same_record) {
  for (const auto* name :
       {"clients/one_client_by_its_key", "all_tables/sync_lets_the_newer_side_win_in_both_tables",
        "connection/settings_in_the_table", "lookups/list_of_customers", "lookups/accounts_as_an_array",
        "lookups/is_job_of_a_job", "deletion/client_goes_in_billing", "events/american_file"}) {
    const auto folder = std::string(TWQB_SOURCE_DIR "/tests/transcripts/") + name;
    const auto record = RunScenario(
        folder, {.makeHost = [](const HostOptions& options) { return std::make_unique<LibraryHost>(options); }});
    EXPECT_EQ(LinesThroughCom(record), LinesThroughCom(ReadWholeFile(folder + "/transcript.jsonl"))) << name;
  }
}

TEST(Scenario, A_company_that_is_subscribed_to_says_so) {
  EXPECT_THAT(RunSteps("object\ncall IsSubscribedToQBEvents\n"),
              HasSubstr(R"("operation":"IsSubscribedToQBEvents","value":false)"));
  EXPECT_THAT(RunSteps("subscribed\nobject\ncall IsSubscribedToQBEvents\n"),
              HasSubstr(R"("operation":"IsSubscribedToQBEvents","value":true)"));
}

}  // namespace
}  // namespace twqb
