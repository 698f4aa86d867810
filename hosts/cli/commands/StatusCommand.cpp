#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "bridge/DeadLinks.h"
#include "bridge/Tables.h"
#include "cli/commands/Commands.h"
#include "cli/options/TableArgument.h"
#include "cli/runs/BridgeRun.h"
#include "cli/runs/Checks.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"
#include "cli/screen/TimeLimit.h"
#include "cli/settings/SettingsStore.h"
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
  bool deep = false;        // QuickBooks is asked, too
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
Align AlignmentOf(std::size_t column, std::size_t columns) {
  constexpr std::size_t kTimes = 2;
  return column == 0 || column + kTimes >= columns ? Align::Whole : Align::Right;
}

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

// Rows that name a parent which is not there; nothing where the table, or one of its parents, can't be read.
Value CountWithoutParent(const Table& table) {
  std::string lacks;
  for (const auto& parent : table.parents) {
    lacks += fmt::format("{}({}.{} <> '' AND NOT EXISTS (SELECT 1 FROM {} AS parent WHERE parent.{} = {}.{}))",
                         lacks.empty() ? "" : " OR ", table.rows.table, parent.column, parent.table, parent.key,
                         table.rows.table, parent.column);
  }
  return CountOf(table.rows, lacks.empty() ? "1 = 0" : fmt::format("({})", lacks));
}

// How far a table is; what can't be told is NULL.
struct TableStatus {
  std::string table;
  std::array<Value, 6> counts;                     // rows, linked, never linked, changed, without parent, dead links
  std::array<std::optional<std::string>, 2> runs;  // the last send and get, as stored
};

Value DeadLinksOf(const Table& table, const std::optional<Identifiers>& known) {
  if (!known) return Null();
  try {
    return CountDeadLinks(table, *known);
  } catch (const PlatformError&) {
    return Null();  // a table that is not there, or is another one
  }
}

// `known`: what QuickBooks has; nothing where it is not asked.
TableStatus StatusOf(const SettingsStore& settings, const Table& table, const std::optional<Identifiers>& known) {
  constexpr std::string_view kLinked = "QBLinkID <> ''";
  const auto& rows = table.rows;
  const auto lastSend = LastRun(settings, Direction::Send, table);
  return {
      .table = TypedName(table.number),
      .counts = {CountOf(rows, "1 = 1"), CountOf(rows, kLinked), CountOf(rows, "(QBLinkID IS NULL OR QBLinkID = '')"),
                 ChangedSince(rows, lastSend, kLinked), CountWithoutParent(table), DeadLinksOf(table, known)},
      .runs = {lastSend, LastRun(settings, Direction::Get, table)}};
}

enum class Deep : bool { No, Yes };

TableLine LineOf(const TableStatus& status, Deep deep) {
  TableLine line = {status.table};
  const auto shown = std::span(status.counts).first(status.counts.size() - (deep == Deep::Yes ? 0 : 1));
  for (const auto& count : shown) line.push_back(IsNull(count) ? std::string(kUnknown) : ToText(count));
  for (const auto& run : status.runs) line.push_back(run.value_or(std::string(kNever)));
  return line;
}

std::string JsonOf(const TableStatus& status) {
  static const std::vector<std::string> kNames = {"table",         "rows",      "linked",   "neverLinked", "changed",
                                                  "withoutParent", "deadLinks", "lastSend", "lastGet"};
  std::vector<Value> values = {status.table};
  values.insert(values.end(), status.counts.begin(), status.counts.end());
  for (const auto& run : status.runs) {
    const auto date = run ? ParseDate(*run) : std::nullopt;
    values.push_back(date ? Value(*date) : run ? Value(*run) : Value(Null()));
  }
  return JsonValues(kNames, values);
}

void PrintStatus(const Options& options, std::span<const TableStatus> tables, RowForm form, Deep deep,
                 const std::string& zone) {
  if (form == RowForm::Json) {
    for (const auto& table : tables) Print(JsonOf(table));
    return;
  }
  std::vector<TableLine> lines = {{"TABLE", "ROWS", "LINKED", "UNLINKED", "CHANGED", "ORPHANS"}};
  if (deep == Deep::Yes) lines.front().emplace_back("DEAD LINKS");
  for (const auto* run : {"LAST SEND", "LAST GET"}) lines.front().emplace_back(run);
  for (const auto& table : tables) lines.push_back(LineOf(table, deep));
  std::vector<Align> alignments;
  for (std::size_t i = 0; i < lines.front().size(); ++i) alignments.push_back(AlignmentOf(i, lines.front().size()));
  PrintTable(options, lines, alignments);
  const bool hasTimes = std::ranges::any_of(tables, [](const auto& table) { return table.runs[0] || table.runs[1]; });
  if (hasTimes) Print(fmt::format("Times are those of {}.\n", zone));
}

// Nothing when QuickBooks could not be asked, which has been told.
std::optional<Identifiers> AskQuickBooks(const Options& options) {
  std::optional<Identifiers> known;
  const bool recorded = RunComposed(options, Sides::Looked, [&](Composition& composition) {
    CTWQBBridge bridge;
    SetUp(bridge, composition, options);
    // Its form counts steps of reading, which at the end would look like records.
    bridge.SetNoProgressBar(true);
    known = composition.Run(
        "ReadIdentifiers", {},
        [&]() -> std::optional<Identifiers> {
          if (!bridge.ConnectToQB(true)) return std::nullopt;
          return ReadIdentifiers(*Vars().g_QBSession, Vars());
        },
        [](const std::optional<Identifiers>& found) -> EventValue {
          if (!found) return nullptr;
          return found->size();
        });
  });
  if (!recorded) RefuseTranscript(options);
  return known;
}

ExitStatus Status(const Options& options, const StatusArguments& arguments) {
  std::optional<Identifiers> known;
  if (arguments.deep) {
    known = AskQuickBooks(options);
    if (!known) return ExitStatus::Failed;
  }
  const SettingsStore settings(options, SettingsStore::Also::Billing);
  std::vector<TableStatus> tables;
  WithGlobalConnection([&] {
    Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
    for (const auto* table : Tables()) {
      const TimeLimit limit(std::chrono::seconds(arguments.limit), TooLong(*table, arguments.limit));
      tables.push_back(StatusOf(settings, *table, known));
    }
  });
  PrintStatus(options, tables, arguments.json ? RowForm::Json : RowForm::Readable,
              arguments.deep ? Deep::Yes : Deep::No, ZoneName(TheMachine()));
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
                    {.name = "--deep",
                     .text = "Ask QuickBooks, too, and count the links that lead nowhere",
                     .target = &arguments->deep},
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
          "is null. UNLINKED counts the rows that never were linked, ORPHANS the rows that name a client, project, "
          "employee, code or account that is not "
          "there. "
          "DEAD LINKS counts those whose twin QuickBooks does not have any more. Status 1: BillingDb lacks a table, or "
          "one could not be counted in time.",
      .run = [arguments](const Options& options) { return Status(options, *arguments); }};
}

}  // namespace twqb::cli
