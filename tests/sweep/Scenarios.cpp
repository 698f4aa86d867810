#include "Scenarios.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>

namespace twqb::sweep {

std::vector<Scenario> SendScenarios() {
  std::vector<Scenario> all;
  for (auto* const scenarios :
       {PeopleScenarios, ClientScenarios, ProjectScenarios, ActivityScenarios, ExpenseCodeScenarios, AccountScenarios,
        TimeEntryScenarios, InvoiceScenarios, PaymentScenarios, BillScenarios, AllTablesScenarios}) {
    std::ranges::move(scenarios(), std::back_inserter(all));
  }
  std::erase_if(all, [](const Scenario& scenario) {
    return std::ranges::none_of(scenario.transfers,
                                [](const Transfer& transfer) { return transfer.direction == Direction::Send; });
  });
  return all;
}

KillPlan PlanKill(const Length& length, Chance& chance) {
  const bool atCall = chance.OnceIn(2);
  const auto last = static_cast<std::int64_t>(atCall ? length.systemCalls : length.microseconds);
  return {.at = atCall ? KillPlan::At::SystemCall : KillPlan::At::Microsecond,
          .n = static_cast<std::uint64_t>(chance.Of(1, std::max<std::int64_t>(last, 1)))};
}

std::string Text(const KillPlan& plan) {
  return fmt::format("killed at {} {}", plan.at == KillPlan::At::SystemCall ? "system call" : "microsecond", plan.n);
}

}  // namespace twqb::sweep
