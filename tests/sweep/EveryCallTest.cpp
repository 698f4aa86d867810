// Every scenario, broken at every call.

#include <fmt/core.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "Scenarios.h"

namespace twqb::sweep {
namespace {

class EveryCall : public testing::TestWithParam<Scenario> {
 protected:
  using BreakAt = Problems (Sweep::*)(std::size_t k, FaultTiming timing);
  using PassesOver = bool (*)(std::string_view callName);

  static void BreakEveryCall(BreakAt breakAt, FaultTiming timing, PassesOver passesOver) {
    Sweep sweep(GetParam());
    const auto& names = sweep.CleanTrace().names;
    ASSERT_FALSE(names.empty());
    for (std::size_t k = 1; k <= names.size(); ++k) {
      if (!passesOver(names[k - 1])) BreakCall(sweep, k, breakAt, timing);
    }
  }

  static void BreakCall(Sweep& sweep, std::size_t k, BreakAt breakAt, FaultTiming timing) {
    const auto& names = sweep.CleanTrace().names;
    SCOPED_TRACE(fmt::format("call {} of {}: {}", k, names.size(), names[k - 1]));
    for (const auto& problem : (sweep.*breakAt)(k, timing)) ADD_FAILURE() << problem;
  }
};

TEST_P(EveryCall, An_error_before_any_call_is_told_and_the_next_run_brings_both_sides_in_step) {
  BreakEveryCall(&Sweep::RaiseAt, FaultTiming::Before, [](std::string_view) { return false; });
}

// A read that fails has changed nothing, whether it was made or not.
TEST_P(EveryCall, An_error_after_any_call_is_told_and_the_next_run_brings_both_sides_in_step) {
  BreakEveryCall(&Sweep::RaiseAt, FaultTiming::After, OnlyReads);
}

// One behind each call: nothing reaches out between it and the next, so that a kill in front of the next is the same.
TEST_P(EveryCall, A_kill_between_any_two_calls_harms_no_file_and_the_next_run_brings_both_sides_in_step) {
  Sweep sweep(GetParam());
  BreakCall(sweep, 1, &Sweep::KillAt, FaultTiming::Before);
  BreakEveryCall(&Sweep::KillAt, FaultTiming::After, LeavesNoTrace);
}

class EveryFileCall : public testing::TestWithParam<Scenario> {};

TEST_P(EveryFileCall,
       A_kill_in_a_statement_a_checkpoint_or_a_close_harms_no_file_and_the_next_run_brings_both_in_step) {
  Sweep sweep(GetParam());
  const auto calls = sweep.FileCalls();
  ASSERT_FALSE(calls.empty());
  for (std::size_t n = 1; n <= calls.size(); ++n) {
    const auto k = calls[n - 1];
    SCOPED_TRACE(fmt::format("file call {} of {}, behind call {}", n, calls.size(), k));
    for (const auto& problem : sweep.KillInFiles(n, k)) ADD_FAILURE() << problem;
  }
}

// One in each direction: what the file layer does, all tables do alike.
std::vector<Scenario> FileScenarios() {
  auto scenarios = ClientScenarios();
  std::erase_if(scenarios,
                [](const Scenario& scenario) { return scenario.name != "first_send" && scenario.name != "first_get"; });
  return scenarios;
}
INSTANTIATE_TEST_SUITE_P(Clients, EveryFileCall, testing::ValuesIn(FileScenarios()),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(People, EveryCall, testing::ValuesIn(PeopleScenarios()),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(AllTables, EveryCall, testing::ValuesIn(AllTablesScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Clients, EveryCall, testing::ValuesIn(ClientScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Projects, EveryCall, testing::ValuesIn(ProjectScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Activities, EveryCall, testing::ValuesIn(ActivityScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(ExpenseCodes, EveryCall, testing::ValuesIn(ExpenseCodeScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Accounts, EveryCall, testing::ValuesIn(AccountScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(TimeEntries, EveryCall, testing::ValuesIn(TimeEntryScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Invoices, EveryCall, testing::ValuesIn(InvoiceScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Payments, EveryCall, testing::ValuesIn(PaymentScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Bills, EveryCall, testing::ValuesIn(BillScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Costs, EveryCall, testing::ValuesIn(CostScenarios()),
                         [](const auto& test) { return test.param.name; });
INSTANTIATE_TEST_SUITE_P(Money, EveryCall, testing::ValuesIn(MoneyScenarios()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace twqb::sweep
