#include "cli/demo/DemoStays.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <map>

#include "cli/demo/DemoPage.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::array<std::string_view, 13> kWords = {
    "employees", "vendors",      "clients",  "projects", "activities",   "expense codes", "accounts",
    "expenses",  "time entries", "invoices", "payments", "vendor bills", "estimates"};

// A key that somebody gave, other than one that a program made: those say nothing to anybody.
bool IsGiven(const std::string& key) { return !key.empty() && key.front() != '{'; }

// The reason, and the name that it is about where the reason has one of its own.
struct Reason {
  std::string words;
  std::string name;
};

Reason ReasonOf(const std::string& why, const std::string& key, Direction direction) {
  if (why.starts_with(fmt::format("status {}", status::kNameInUse))) {
    const auto from = why.find('"') + 1;
    return {.words = "QuickBooks has that name already", .name = Trim(why.substr(from, why.find('"', from) - from))};
  }
  return {.words = why, .name = direction == Direction::Send && IsGiven(key) ? key : std::string()};
}

}  // namespace

std::string_view TableWords(std::int32_t table) {
  return table >= 0 && static_cast<std::size_t>(table) < kWords.size() ? kWords.at(static_cast<std::size_t>(table))
                                                                       : "records";
}

std::vector<std::string> DemoStays::News(Direction direction, const DemoMoves::Tables& tables) {
  struct Group {
    std::int64_t count = 0;
    std::vector<std::string> names;
  };
  std::vector<std::string> lines;
  for (const auto& [number, table] : tables) {
    std::map<std::string, Group> groups;
    for (const auto& [why, keys] : table.stayed) {
      for (const auto& key : keys) {
        const auto reason = ReasonOf(why, key, direction);
        // A row that is made and taken back with each get has another key each time.
        const auto& told = direction == Direction::Get && !IsGiven(key) ? reason.words : key;
        if (!told_.insert(fmt::format("{} {} {} {}", static_cast<int>(direction), number, reason.words, told)).second) {
          continue;
        }
        auto& group = groups[reason.words];
        ++group.count;
        if (!reason.name.empty()) group.names.push_back(reason.name);
      }
    }
    for (const auto& [words, group] : groups) {
      auto line = fmt::format("{} of the {}: {}", Number(group.count), TableWords(number), words);
      if (!group.names.empty()) line += fmt::format(" ({})", Listed(group.names));
      lines.push_back(std::move(line));
    }
  }
  return lines;
}

}  // namespace twqb::cli
