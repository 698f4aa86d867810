// What is swept: the scenarios of each table, and of runs over all of them. A further table adds its function here and
// one line to the test.
#pragma once

#include <string>
#include <vector>

#include "Sweep.h"
#include "tests/support/Chance.h"

namespace twqb::sweep {

[[nodiscard]] std::vector<Scenario> ClientScenarios();
// Employees and vendors.
[[nodiscard]] std::vector<Scenario> PeopleScenarios();
[[nodiscard]] std::vector<Scenario> AllTablesScenarios();
[[nodiscard]] std::vector<Scenario> ProjectScenarios();
[[nodiscard]] std::vector<Scenario> ActivityScenarios();
[[nodiscard]] std::vector<Scenario> ExpenseCodeScenarios();
[[nodiscard]] std::vector<Scenario> AccountScenarios();
[[nodiscard]] std::vector<Scenario> TimeEntryScenarios();
[[nodiscard]] std::vector<Scenario> InvoiceScenarios();
// Payments, as they go out.
[[nodiscard]] std::vector<Scenario> PaymentScenarios();
// Expenses and vendor bills.
[[nodiscard]] std::vector<Scenario> BillScenarios();
// Invoices, credit memos and payments, as they come in.
[[nodiscard]] std::vector<Scenario> MoneyScenarios();
// Expenses, vendor bills and estimates, as they come in.
[[nodiscard]] std::vector<Scenario> CostScenarios();

// All of these that send.
[[nodiscard]] std::vector<Scenario> SendScenarios();

// A kill by chance in a run of that length, half of them at system calls, and how it is told.
[[nodiscard]] KillPlan PlanKill(const Length& length, Chance& chance);
[[nodiscard]] std::string Text(const KillPlan& plan);

}  // namespace twqb::sweep
