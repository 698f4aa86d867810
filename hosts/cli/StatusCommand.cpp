#include <fmt/core.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "cli/Checks.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/SettingsStore.h"
#include "cli/TableArgument.h"
#include "cli/TextTable.h"
#include "platform/Value.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"
#include "services/TableNames.h"
#include "twqb/enTables.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kNever = "never";
constexpr std::string_view kUnknown = "-";

// How the columns stand: numbers to the right.
constexpr std::array kAlignments = {Align::Left,  Align::Right, Align::Right, Align::Right,
                                    Align::Right, Align::Left,  Align::Left};

// Which rows of which table of BillingDb a table of the link is. Employees and vendors share one.
struct Rows {
  std::string_view table;
  std::string_view condition = "1 = 1";
};

Rows RowsOf(enTables table) {
  switch (table) {
    case enEmployees:
      return {.table = "Employee", .condition = "IsSub = 0"};
    case enVendors:
      return {.table = "Employee", .condition = "IsSub = -1"};
    case enEstimates:
      return {.table = "Budget", .condition = "IsEstimate = -1"};
    default:
      return {.table = BillingTablesOf(table).front()};
  }
}

// A table that is not there, or is another one, can't be counted.
std::string CountOf(const Rows& rows, std::string_view condition) {
  const auto count =
      GetScalarFromSQL(fmt::format("SELECT COUNT(*) FROM {} WHERE {} AND {}", rows.table, rows.condition, condition));
  return count.empty() ? std::string(kUnknown) : count;
}

// When the transfer of a table ended last; the text as it is stored.
std::optional<std::string> LastRun(const SettingsStore& settings, Direction direction, enTables table) {
  const auto key = std::string(GetTableName(direction, table)) + "_LastSendAt";
  return settings.Read(direction == Direction::Send ? "QBSEND_" : "QBGET_", key);
}

// Linked rows with a change behind the last send; without one, none can be told.
std::string ChangedSince(const Rows& rows, const std::optional<std::string>& lastSend, std::string_view linked) {
  if (!lastSend) return std::string(kUnknown);
  try {
    const auto since = FormatSQLDate(LocalToUTC(TextToDate(*lastSend)), DateForm::WithTime);
    const auto delimiter = Vars().g_DbKind == "SQL" ? '\'' : '#';
    return CountOf(rows, fmt::format("{0} AND LastUpdated > {1}{2}{1}", linked, delimiter, since));
  } catch (const PlatformError&) {
    return std::string(kUnknown);  // what is stored there is no date
  }
}

TableLine LineOf(const SettingsStore& settings, enTables table) {
  constexpr std::string_view kLinked = "QBLinkID <> ''";
  const auto rows = RowsOf(table);
  const auto lastSend = LastRun(settings, Direction::Send, table);
  const auto lastGet = LastRun(settings, Direction::Get, table);
  return {TypedName(table),
          CountOf(rows, "1 = 1"),
          CountOf(rows, kLinked),
          CountOf(rows, "(QBLinkID IS NULL OR QBLinkID = '')"),
          ChangedSince(rows, lastSend, kLinked),
          lastSend.value_or(std::string(kNever)),
          lastGet.value_or(std::string(kNever))};
}

ExitStatus Status(const Options& options) {
  const SettingsStore settings(options, SettingsStore::Also::Billing);
  std::vector<TableLine> lines = {{"TABLE", "ROWS", "LINKED", "NEVER LINKED", "CHANGED", "LAST SEND", "LAST GET"}};
  WithGlobalConnection([&] {
    Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
    for (auto table = static_cast<int>(enEmployees); table < enAll; ++table) {
      lines.push_back(LineOf(settings, static_cast<enTables>(table)));
    }
  });
  Print(TextTable(lines, kAlignments));
  FlushOutput();
  const auto missing = MissingTables(WorkplaceOf(options), BillingTablesOf(enAll));
  if (missing.empty()) return ExitStatus::Done;
  Tell(MissingText(missing));
  return ExitStatus::Failed;
}

}  // namespace

CommandSyntax StatusCommand() {
  return {.name = "status",
          .text = "Show for each table how far it is linked and when it went last",
          .footer =
              "CHANGED counts the linked rows with a change behind the last full send of their table, as far as their "
              "dates\n"
              "tell. LAST SEND and LAST GET are full runs without a filter; others leave no mark. Status 1: BillingDb "
              "lacks a\n"
              "table.",
          .run = Status};
}

}  // namespace twqb::cli
