// Kills at random moments, in every scenario that sends: at system calls and between them.
//
// TWQB_KILLS asks for so many in each scenario (./run kills), with a line that tells what the same kills leave where
// lost links are not looked for; TWQB_ROUND for other moments.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "Scenarios.h"
#include "platform/Text.h"
#include "tests/support/Chance.h"

namespace twqb::sweep {
namespace {

// How many are asked for; nothing in an ordinary run.
std::optional<int> AskedFor() {
  const char* count = std::getenv("TWQB_KILLS");
  if (count == nullptr) return std::nullopt;
  return std::atoi(count);
}

class RandomKills : public testing::TestWithParam<Scenario> {};

TEST_P(RandomKills, The_next_run_leaves_no_double_and_no_lost_link) {
  constexpr int kOrdinary = 3;
  const auto asked = AskedFor();
  Sweep sweep(GetParam());
  const auto length = sweep.Measure();
  Chance chance(static_cast<unsigned>(HashOf(GetParam().name)));
  int kills = 0;
  std::size_t found = 0;
  int wrong = 0;
  int wrongWithout = 0;
  const int wanted = asked.value_or(kOrdinary);
  // A run may be at its end before its kill.
  for (int i = 0; i < 2 * wanted && kills < wanted; ++i) {
    const auto plan = PlanKill(length, chance);
    const auto problems = sweep.KillAnywhere(plan, LostLinks::FindAgain);
    if (!problems) continue;
    ++kills;
    found += sweep.FoundAgain();
    if (!problems->empty()) ++wrong;
    SCOPED_TRACE(Text(plan));
    for (const auto& problem : *problems) ADD_FAILURE() << problem;
    if (!asked) continue;
    const auto without = sweep.KillAnywhere(plan, LostLinks::Leave);
    if (without && !without->empty()) ++wrongWithout;
  }
  EXPECT_GT(kills, 0);
  if (asked) {
    fmt::print("KILLS {} {} found {} wrong {} without {}\n", GetParam().name, kills, found, wrong, wrongWithout);
  }
}

std::string NameOf(const testing::TestParamInfo<Scenario>& test) {
  return fmt::format("{}_{}", test.index, test.param.name);
}
INSTANTIATE_TEST_SUITE_P(Sends, RandomKills, testing::ValuesIn(SendScenarios()), NameOf);

}  // namespace
}  // namespace twqb::sweep
