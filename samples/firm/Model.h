// What the parts of a firm must know of each other: the keys that rows refer to, and what their amounts come from.
//
// Made once for a plan (MakeModel); the rows are written out of it, each part by itself. Money is whole cents.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Date.h"
#include "samples/firm/Dice.h"
#include "samples/firm/FirmPlan.h"
#include "samples/firm/Rows.h"

namespace twqb::firm {

// Whose dice are thrown.
enum class Purpose : std::uint8_t {
  Model,
  People,
  Clients,
  Projects,
  Codes,
  Hours,
  Expenses,
  Invoices,
  Payments,
  Bills,
  Budgets,
  OwnLists,
  OwnWork,
  OwnMoney,
  OwnCosts,
};

[[nodiscard]] inline Dice DiceFor(const FirmPlan& plan, Purpose purpose) {
  return {plan.seed, static_cast<std::uint64_t>(purpose)};
}

struct Worker {
  std::string key;
  std::int64_t billRate = 0;
  std::int64_t costRate = 0;
};

// How much a client has done, of which a firm has few of the big ones.
enum class ClientSize : std::uint8_t { Small, Middling, Big };

struct Payer {
  std::string key;
  Text company;
  ClientSize size = ClientSize::Small;
};

struct Job {
  std::string key;
  std::string code;
  std::string phase;   // "" of a top project
  std::string parent;  // key, "" of a top project
  std::size_t client = 0;
  std::string contract;
  int firstMonth = 0;  // of its work, of which there may be none
  int months = 0;
  std::vector<std::size_t> team;
};

struct Model {
  FirmPlan plan;
  std::vector<Worker> employees;  // those who work; some more are in the rows
  std::vector<Worker> vendors;
  std::vector<Payer> clients;
  std::vector<Job> jobs;  // parents ahead of their phases
  std::vector<std::string> activities;
  std::vector<std::string> expenseCodes;
};

[[nodiscard]] Model MakeModel(const FirmPlan& plan);

// A day of the year; months and days count from 0, and carry over into the next year.
[[nodiscard]] Date DayOf(int month, std::int64_t day);
[[nodiscard]] bool IsWorkday(Date day);
// A moment at which a row may have been changed last, long before any run; nothing for rows that have none.
[[nodiscard]] std::optional<Date> AnyMoment(Dice& dice);

}  // namespace twqb::firm
