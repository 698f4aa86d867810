#include <fmt/core.h>

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bridge/Tables.h"
#include "cli/Checks.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/RowText.h"
#include "cli/Screen.h"
#include "cli/SettingsStore.h"
#include "cli/TableArgument.h"
#include "cli/TimeLimit.h"
#include "platform/Value.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"

namespace twqb::cli {

namespace {

constexpr int kUsualLimit = 60;
constexpr int kLongestLimit = 24 * 60 * 60;

struct StatusArguments {
  bool json = false;
  int limit = kUsualLimit;  // seconds
};

// A view may stand in the place of a table, and one can be made that never ends.
std::string TooLong(const Table& table, int seconds) {
  return fmt::format(
      "The rows of {} could not be counted in {} s: is a view of BillingDb in the place of its table?\nAllow it more "
      "time with --limit, or see \"twqb billing show\".",
      TypedName(table.number), seconds);
}

constexpr std::string_view kNever = "never";
constexpr std::string_view kUnknown = "-";

// How the columns stand: numbers to the right.
constexpr std::array kAlignments = {Align::Left,  Align::Right, Align::Right, Align::Right,
                                    Align::Right, Align::Left,  Align::Left};

// A table that is not there, or is another one, can't be counted.
Value CountOf(const BillingRows& rows, std::string_view condition) {
  const auto count = GetScalarFromSQL(
      Sql("SELECT COUNT(*) FROM {} WHERE {} AND {}", rows.table, Sql::Own(rows.condition), Sql::Own(condition)));
  return count.empty() ? Value(Null()) : Value(TextToInteger(count));
}

// When the transfer of a table ended last; the text as it is stored.
std::optional<std::string> LastRun(const SettingsStore& settings, Direction direction, const Table& table) {
  const auto key = std::string(table.names.Of(direction)) + "_LastSendAt";
  return settings.Read(direction == Direction::Send ? "QBSEND_" : "QBGET_", key);
}

// Linked rows with a change behind the last send; without one, none can be told.
Value ChangedSince(const BillingRows& rows, const std::optional<std::string>& lastSend, std::string_view linked) {
  if (!lastSend) return Null();
  try {
    const auto since = FormatSQLDate(LocalToUTC(TextToDate(*lastSend)), DateForm::WithTime);
    const auto delimiter = Vars().g_DbKind == "SQL" ? '\'' : '#';
    return CountOf(rows, fmt::format("{0} AND LastUpdated > {1}{2}{1}", linked, delimiter, since));
  } catch (const PlatformError&) {
    return Null();  // what is stored there is no date
  }
}

// How far a table is; what can't be told is NULL.
struct TableStatus {
  std::string table;
  std::array<Value, 4> counts;                     // rows, linked, never linked, changed
  std::array<std::optional<std::string>, 2> runs;  // the last send and get, as stored
};

TableStatus StatusOf(const SettingsStore& settings, const Table& table) {
  constexpr std::string_view kLinked = "QBLinkID <> ''";
  const auto& rows = table.rows;
  const auto lastSend = LastRun(settings, Direction::Send, table);
  return {.table = TypedName(table.number),
          .counts = {CountOf(rows, "1 = 1"), CountOf(rows, kLinked),
                     CountOf(rows, "(QBLinkID IS NULL OR QBLinkID = '')"), ChangedSince(rows, lastSend, kLinked)},
          .runs = {lastSend, LastRun(settings, Direction::Get, table)}};
}

TableLine LineOf(const TableStatus& status) {
  TableLine line = {status.table};
  for (const auto& count : status.counts) line.push_back(IsNull(count) ? std::string(kUnknown) : ToText(count));
  for (const auto& run : status.runs) line.push_back(run.value_or(std::string(kNever)));
  return line;
}

std::string JsonOf(const TableStatus& status) {
  static const std::vector<std::string> kNames = {"table",   "rows",     "linked", "neverLinked",
                                                  "changed", "lastSend", "lastGet"};
  std::vector<Value> values = {status.table};
  values.insert(values.end(), status.counts.begin(), status.counts.end());
  for (const auto& run : status.runs) {
    const auto date = run ? ParseDate(*run) : std::nullopt;
    values.push_back(date ? Value(*date) : run ? Value(*run) : Value(Null()));
  }
  return JsonValues(kNames, values);
}

void PrintStatus(const Options& options, std::span<const TableStatus> tables, RowForm form) {
  if (form == RowForm::Json) {
    for (const auto& table : tables) Print(JsonOf(table));
    return;
  }
  std::vector<TableLine> lines = {{"TABLE", "ROWS", "LINKED", "NEVER LINKED", "CHANGED", "LAST SEND", "LAST GET"}};
  for (const auto& table : tables) lines.push_back(LineOf(table));
  PrintTable(options, lines, kAlignments);
}

ExitStatus Status(const Options& options, const StatusArguments& arguments) {
  const SettingsStore settings(options, SettingsStore::Also::Billing);
  std::vector<TableStatus> tables;
  WithGlobalConnection([&] {
    Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
    for (const auto* table : Tables()) {
      const TimeLimit limit(std::chrono::seconds(arguments.limit), TooLong(*table, arguments.limit));
      tables.push_back(StatusOf(settings, *table));
    }
  });
  PrintStatus(options, tables, arguments.json ? RowForm::Json : RowForm::Readable);
  FlushOutput();
  const auto missing = MissingTables(WorkplaceOf(options), BillingTablesOf(enAll));
  if (missing.empty()) return ExitStatus::Done;
  Tell(MissingText(missing));
  return ExitStatus::Failed;
}

}  // namespace

CommandSyntax StatusCommand() {
  const auto arguments = std::make_shared<StatusArguments>();
  return {
      .name = "status",
      .text = "Show for each table how far it is linked and when it went last",
      .arguments = {{.name = "--json", .text = "Print each table as a JSON object", .target = &arguments->json},
                    {.name = "--limit",
                     .text = "Give up when a table has not been counted in SECONDS (60)",
                     .target = &arguments->limit,
                     .value = "SECONDS",
                     .range = Range{.least = 1, .greatest = kLongestLimit}}},
      .footer =
          "CHANGED counts the linked rows with a change behind the last full send of their table, as far as their "
          "dates\n"
          "tell. LAST SEND and LAST GET are full runs without a filter; others leave no mark. In JSON what can't be "
          "told\n"
          "is null. Status 1: BillingDb lacks a table, or one could not be counted in time.",
      .run = [arguments](const Options& options) { return Status(options, *arguments); }};
}

}  // namespace twqb::cli
