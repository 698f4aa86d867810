#include "cli/backup/Differences.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

#include "adapters/system/ProfileFile.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"

namespace twqb::cli {

namespace {

using backup::Part;
using storage::TableDifference;

constexpr std::string_view kOther = "other entries";
constexpr std::string_view kFileAlone = "no row, but the file";

std::map<std::string, std::string> EntriesOf(const std::string& path) {
  std::map<std::string, std::string> entries;
  if (path.empty()) return entries;
  for (const auto& entry : ProfileFile(path).Entries()) {
    entries.insert_or_assign(fmt::format("[{}] {}", entry.section, entry.key), entry.value);
  }
  return entries;
}

std::map<std::string, std::int64_t> OtherLinesOf(const std::string& path) {
  std::map<std::string, std::int64_t> lines;
  if (path.empty()) return lines;
  for (auto& line : ProfileFile(path).OtherLines()) ++lines[std::move(line)];
  return lines;
}

TableDifference OtherLineDifferences(const std::string& now, const std::string& before) {
  TableDifference sum{.table = "comments"};
  const auto present = OtherLinesOf(now);
  const auto past = OtherLinesOf(before);
  const auto count = [](const auto& lines, const auto& others, std::int64_t& all, std::int64_t& alone) {
    for (const auto& [line, times] : lines) {
      const auto other = others.find(line);
      all += times;
      alone += std::max<std::int64_t>(0, times - (other == others.end() ? 0 : other->second));
    }
  };
  count(present, past, sum.now, sum.added);
  count(past, present, sum.before, sum.gone);
  return sum;
}

SideDifferences SettingsDifferences(Part part, const std::string& now, const std::string& before) {
  SideDifferences side{.part = part};
  const auto present = EntriesOf(now);
  const auto past = EntriesOf(before);
  TableDifference sum{.table = "entries",
                      .before = static_cast<std::int64_t>(past.size()),
                      .now = static_cast<std::int64_t>(present.size())};
  for (const auto& [name, value] : present) {
    const auto was = past.find(name);
    if (was != past.end() && was->second == value) continue;
    ++(was == past.end() ? sum.added : sum.changed);
    side.entries.push_back(name);
  }
  for (const auto& [name, value] : past) {
    if (present.contains(name)) continue;
    ++sum.gone;
    side.entries.push_back(name);
  }
  for (const auto& table : {sum, OtherLineDifferences(now, before)}) {
    if (!table.IsNone()) side.tables.push_back(table);
  }
  return side;
}

// The company file counts its records by kinds. What else its tables hold says nothing to anybody.
std::string_view NameOf(Part part, const TableDifference& table) {
  if (part != Part::Company || table.table == storage::kStructure) return table.table;
  return table.kind.empty() ? kOther : table.kind;
}

// What goes by one name is told as one.
void Fold(SideDifferences& side, const TableDifference& table) {
  const auto name = NameOf(side.part, table);
  auto same = std::ranges::find(side.tables, name, &TableDifference::table);
  if (same == side.tables.end()) same = side.tables.insert(same, {.table = std::string(name)});
  for (auto field : {&TableDifference::before, &TableDifference::now, &TableDifference::added,
                     &TableDifference::changed, &TableDifference::gone}) {
    *same.*field += table.*field;
  }
}

// Names of kinds stand in the tables of records and of transactions; the others with a kind are about them.
bool IsOfRecords(const TableDifference& table) { return table.table == "record" || table.table == "txn"; }

}  // namespace

SideDifferences DifferencesOf(Part part, const std::string& now, const std::string& before) {
  std::error_code ignored;
  const auto present = std::filesystem::exists(now, ignored) ? now : std::string();
  if (!backup::IsDatabase(part)) return SettingsDifferences(part, present, before);
  SideDifferences side{.part = part};
  const auto kinds = part == Part::Company ? storage::Kinds::Apart : storage::Kinds::Ignored;
  const auto tables =
      present.empty() || before.empty() ? std::nullopt : storage::TableDifferences(present, before, kinds);
  if (!tables) {
    side.isUnreadable = !present.empty() || !before.empty();
    return side;
  }
  for (auto table : *tables) {
    if (table.IsNone()) continue;
    if (part == Part::Company && !IsOfRecords(table)) table.kind.clear();
    Fold(side, table);
  }
  // What is told as one stands last.
  std::stable_partition(side.tables.begin(), side.tables.end(),
                        [](const TableDifference& table) { return table.table != kOther; });
  return side;
}

void PrintDifferenceTable(const Options& options, const std::vector<SideDifferences>& sides) {
  constexpr std::array kAlignments = {Align::Left,  Align::Left,  Align::Right, Align::Right,
                                      Align::Right, Align::Right, Align::Right};
  std::vector<TableLine> lines = {{"WHERE", "WHAT", "THEN", "NOW", "NEW SINCE", "CHANGED", "GONE"}};
  for (const auto& side : sides) {
    const auto where = std::string(backup::NameOf(side.part));
    if (side.isUnreadable) lines.push_back({where, "can't be compared", "-", "-", "-", "-", "-"});
    if (side.isFileAlone) lines.push_back({where, std::string(kFileAlone), "-", "-", "-", "-", "-"});
    for (const auto& table : side.tables) {
      lines.push_back({where, table.table, std::to_string(table.before), std::to_string(table.now),
                       std::to_string(table.added), std::to_string(table.changed), std::to_string(table.gone)});
    }
  }
  if (lines.size() > 1) PrintTable(options, lines, kAlignments);
}

std::string DifferenceLines(const std::vector<SideDifferences>& sides) {
  static const std::vector<std::string> kNames = {"where", "what", "then", "now", "newSince", "changed", "gone"};
  std::string text;
  for (const auto& side : sides) {
    const auto where = std::string(backup::NameOf(side.part));
    if (side.isUnreadable || side.isFileAlone) {
      const auto what = side.isUnreadable ? Value(Null()) : Value(std::string(kFileAlone));
      text += JsonValues(kNames, std::vector<Value>{where, what, Null(), Null(), Null(), Null(), Null()});
    }
    for (const auto& table : side.tables) {
      std::vector<Value> values = {where, table.table};
      for (const auto count : {table.before, table.now, table.added, table.changed, table.gone}) {
        values.emplace_back(count);
      }
      text += JsonValues(kNames, values);
    }
  }
  return text;
}

}  // namespace twqb::cli
