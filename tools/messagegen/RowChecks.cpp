#include "messagegen/RowChecks.h"

#include <algorithm>
#include <array>
#include <vector>

namespace twqb::messagegen {

namespace {

using messages::Availability;
using messages::Country;

// Whether there is a form that knows both.
bool Meet(const Availability& a, const Availability& b) {
  const auto endsBefore = [](const Availability& ends, const Availability& begins, Country country) {
    return ends.until != messages::Version{} && ends.until <= begins.SinceIn(country);
  };
  return std::ranges::any_of(std::array{Country::US, Country::CA, Country::UK, Country::AU}, [&](Country country) {
    const auto bit = static_cast<messages::Countries>(country);
    return (a.countries & b.countries & bit) != 0 && !endsBefore(a, b, country) && !endsBefore(b, a, country);
  });
}

// The elements that what `row` stands for can begin with.
void CollectFirsts(const Table& table, const Row& row, std::vector<const Row*>& firsts) {
  if (row.type != messages::Type::Choice && row.type != messages::Type::Step) {
    firsts.push_back(&row);
    return;
  }
  for (const auto& child : table.rowLists[*row.children].rows) CollectFirsts(table, child, firsts);
}

}  // namespace

std::optional<RowFault> FaultOfSequence(std::span<const Row> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (rows[i].name == rows[j].name && Meet(rows[i].known, rows[j].known)) {
        return RowFault{.place = rows[i].place, .what = rows[i].name + " stands twice"};
      }
    }
  }
  return std::nullopt;
}

std::optional<RowFault> FaultOfBranches(const Table& table, std::span<const Row> branches) {
  if (auto fault = FaultOfSequence(branches)) return fault;
  std::vector<std::vector<const Row*>> firsts(branches.size());
  for (std::size_t i = 0; i < branches.size(); ++i) CollectFirsts(table, branches[i], firsts[i]);
  for (std::size_t i = 0; i < branches.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (!Meet(branches[i].known, branches[j].known)) continue;
      for (const auto* a : firsts[i]) {
        for (const auto* b : firsts[j]) {
          if (a->name == b->name && Meet(a->known, b->known)) {
            return RowFault{.place = a->place, .what = "two branches begin with " + a->name};
          }
        }
      }
    }
  }
  return std::nullopt;
}

}  // namespace twqb::messagegen
