#include "samples/firm/Model.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/Text.h"
#include "samples/firm/Shapes.h"

namespace twqb::firm {

namespace {

constexpr int kYear = 2007;
constexpr std::array kContracts = {std::string_view("Hourly"),
                                   std::string_view("Hourly"),
                                   std::string_view("Fixed"),
                                   std::string_view("Percentage"),
                                   std::string_view("Recurring"),
                                   std::string_view("Hourly Not To Exceed"),
                                   std::string_view("Recurring With Cap"),
                                   std::string_view("Recurring + Expense")};

std::vector<Worker> Workers(Dice& dice, std::string_view prefix, std::int64_t count) {
  std::vector<Worker> workers;
  for (std::int64_t i = 1; i <= count; ++i) {
    const auto cost = dice.Of(80, 400) * 25;
    workers.push_back({.key = fmt::format("{}.{}", prefix, KeyOf(LastName(dice), i)),
                       .billRate = cost * dice.Of(18, 30) / 10,
                       .costRate = cost});
  }
  return workers;
}

// One in twenty is big, three are middling: of three clients there is one of each size.
ClientSize SizeOf(std::int64_t number) {
  if (number % 20 == 3) return ClientSize::Big;
  return number % 7 == 2 ? ClientSize::Middling : ClientSize::Small;
}

// Companies need not be the only ones of their name; a colon QuickBooks would not take in one.
Text CompanyOf(Dice& dice) {
  if (dice.OnceIn(10)) return std::nullopt;
  auto company = AnyText(dice, CompanyWords(dice), 80);
  if (company) *company = ReplaceAll(*company, ":", ";");
  return company;
}

void SetWork(Job& job, ClientSize size, const Model& model, Dice& dice) {
  const int longest = model.plan.months;
  const auto months = size == ClientSize::Big ? 12 : size == ClientSize::Middling ? dice.Of(6, 9) : dice.Of(2, 5);
  job.months = static_cast<int>(std::min<std::int64_t>(months, longest));
  job.firstMonth = static_cast<int>(dice.Of(0, longest - job.months));
  const auto people = std::min<std::size_t>(model.employees.size(), dice.Place(3) + 1);
  for (std::size_t i = 0; i < people; ++i) job.team.push_back(dice.Place(model.employees.size()));
}

void AddJobs(Model& model, std::size_t client, Dice& dice) {
  const auto size = model.clients[client].size;
  const auto tops = size == ClientSize::Big ? dice.Of(2, 3) : size == ClientSize::Middling ? dice.Of(1, 2) : 1;
  for (std::int64_t i = 0; i < tops; ++i) {
    const auto number = model.jobs.size() + 1;
    Job top = {.code = KeyOf(Place(dice), static_cast<std::int64_t>(number)), .client = client};
    // Codes that leave no room for a name in QuickBooks, and some of other scripts.
    if (dice.OnceIn(12)) top.code = fmt::format("CONSORTIUM-OF-THE-UPPER-VALLEY-WATERSHEDS-{}", number);
    if (dice.OnceIn(12)) top.code = fmt::format("ÉCOLE {}", number);
    top.key = top.code + ":";
    top.contract = dice.OneOf(kContracts);
    // There is work at least on the first one.
    if (!dice.OnceIn(10) || number == 1) SetWork(top, size, model, dice);
    model.jobs.push_back(top);
    if (size == ClientSize::Small && !dice.OnceIn(5)) continue;
    const auto phases = dice.Of(1, size == ClientSize::Big ? 3 : 2);
    std::string above = top.key;
    for (std::int64_t phase = 1; phase <= phases; ++phase) {
      Job part = {
          .code = top.code,
          .phase = dice.OnceIn(6) ? fmt::format("PRELIMINARY INVESTIGATION NO.{}", phase) : fmt::format("{}", phase),
          .parent = above,
          .client = client};
      part.key = fmt::format("{}:{}", part.code, part.phase);
      part.contract = dice.OneOf(kContracts);
      SetWork(part, size, model, dice);
      // One below the other, now and then.
      if (dice.OnceIn(4)) above = part.key;
      model.jobs.push_back(std::move(part));
    }
  }
}

std::vector<std::string> Codes(Dice& dice, std::int64_t count) {
  std::vector<std::string> codes;
  for (std::int64_t i = 1; i <= count; ++i) {
    const auto code = KeyOf(Task(dice), (i + 1) / 2);
    codes.push_back(fmt::format("{}:{}", code, i % 2 == 0 ? fmt::format("SUB {}", i) : ""));
  }
  return codes;
}

}  // namespace

Model MakeModel(const FirmPlan& plan) {
  auto dice = DiceFor(plan, Purpose::Model);
  Model model = {.plan = plan};
  model.employees = Workers(dice, "E", 2 + plan.clients * 2 / 5);
  model.vendors = Workers(dice, "V", 1 + plan.clients / 8);
  for (std::int64_t i = 1; i <= plan.clients; ++i) {
    auto key = KeyOf(LastName(dice), i);
    if (dice.OnceIn(15)) key = fmt::format("{} OFFICE OF THE COUNTY ENGINEER AND SURVEYOR", i);
    if (dice.OnceIn(15)) key = fmt::format("ÅS & CIE. {}", i);
    model.clients.push_back({.key = std::move(key), .company = CompanyOf(dice), .size = SizeOf(i)});
  }
  for (std::size_t i = 0; i < model.clients.size(); ++i) AddJobs(model, i, dice);
  model.activities = Codes(dice, std::min<std::int64_t>(3 + plan.clients / 5, 80));
  model.expenseCodes = Codes(dice, std::min<std::int64_t>(2 + plan.clients / 5, 60));
  return model;
}

Date DayOf(int month, std::int64_t day) {
  return Date::FromCivil({.year = kYear + month / 12, .month = month % 12 + 1, .day = 1}).PlusDays(day);
}

bool IsWorkday(Date day) {
  // 30 December 1899, from which days count, was a Saturday.
  const auto ofWeek = day.Milliseconds() / Date::kDay % 7;
  return ofWeek > 1;
}

std::optional<Date> AnyMoment(Dice& dice) {
  if (dice.OnceIn(4)) return std::nullopt;
  return DayOf(0, dice.Of(-900, 360)).PlusMinutes(dice.Of(8 * 60, 18 * 60));
}

}  // namespace twqb::firm
