#include <fmt/core.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/terminal/TextLayout.h"
#include "adapters/transcript/TranscriptWriter.h"
#include "bridge/Tables.h"
#include "cli/commands/Commands.h"
#include "cli/import/Import.h"
#include "cli/options/TableArgument.h"
#include "cli/runs/BillingDb.h"
#include "cli/runs/Checks.h"
#include "cli/runs/RunBackup.h"
#include "cli/screen/CsvText.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"
#include "cli/screen/TextFile.h"
#include "cli/workplace/TransferLock.h"
#include "platform/PlatformError.h"

namespace twqb::cli {

namespace {

// The screen shows the first ones alone.
constexpr std::size_t kShownRows = 5;
constexpr std::size_t kShownRefusals = 20;

struct ImportArguments {
  std::string table;
  std::string file;
  std::string map;
  bool apply = false;
  bool json = false;
};

// What becomes of the rows of a plan.
enum class Fate : std::uint8_t { WouldBeAdded, Added, Refused };

std::string Rows(std::size_t count) { return fmt::format("{} row{}", count, count == 1 ? "" : "s"); }

const Table& TableOf(std::string_view name) {
  const auto number = TableFromName(name);
  const auto* table = FindTable(number);
  if (table == nullptr) throw UsageError(fmt::format("A file goes into one table, and \"{}\" is all of them.", name));
  return *table;
}

std::vector<CsvRecord> ReadFile(const std::string& file) {
  try {
    auto records = ReadCsv(ReadTextFile(file));
    // Spreadsheets write lines of commas alone behind the data.
    const auto isEmpty = [](const CsvRecord& record) {
      return record.trouble.empty() &&
             std::ranges::all_of(record.fields, [](const auto& field) { return field.empty(); });
    };
    std::erase_if(records, isEmpty);
    return records;
  } catch (const CsvError& failure) {
    throw UsageError(fmt::format("{}: {}", file, failure.what()));
  }
}

// --- For people ------------------------------------------------------------------------------------------------------

void PrintFirstRows(const Options& options, const ImportPlan& plan) {
  std::vector<TableLine> lines = {{"LINE"}};
  lines.front().insert(lines.front().end(), plan.columns.begin(), plan.columns.end());
  for (const auto& row : plan.rows) {
    if (lines.size() > kShownRows) break;
    auto& line = lines.emplace_back(TableLine{std::to_string(row.line)});
    for (const auto& value : row.values) line.push_back(ToText(value));
  }
  std::vector<Align> alignments = {Align::Right};
  for (const auto& value : plan.rows.front().values) {
    const bool isText = IsNull(value) || std::holds_alternative<std::string>(value);
    alignments.push_back(isText ? Align::Left : Align::Whole);
  }
  PrintTable(options, lines, alignments);
  if (plan.rows.size() > kShownRows) Print(fmt::format("and {} more\n", Rows(plan.rows.size() - kShownRows)));
}

void PrintRefused(const ImportPlan& plan) {
  Print(fmt::format("{} refused:\n", Rows(plan.refusedRows)), Look::Warning);
  const auto shown = std::min(plan.refused.size(), kShownRefusals);
  for (std::size_t i = 0; i < shown; ++i) {
    const auto& refused = plan.refused[i];
    Print(Paragraph(fmt::format("line {}{}{}: {}", refused.line, refused.column.empty() ? "" : ", ", refused.column,
                                OneLine(refused.reason)),
                    2));
  }
  if (plan.refused.size() > shown) Print(fmt::format("  and {} more reasons\n", plan.refused.size() - shown));
}

std::string AddedText(const Table& table, const ImportPlan& plan) {
  return fmt::format("{} added to {}.", Rows(plan.rows.size()), TypedName(table.number));
}

void PrintPlan(const Options& options, const Table& table, const ImportPlan& plan, Fate fate) {
  if (plan.rows.empty() && plan.refusedRows == 0) {
    Print("The file has no row below the line that names its columns: there is nothing to add.\n");
    return;
  }
  if (fate == Fate::WouldBeAdded && !plan.rows.empty()) {
    PrintFirstRows(options, plan);
    Print("\n");
  }
  if (plan.refusedRows > 0) PrintRefused(plan);
  const auto rows = Rows(plan.rows.size());
  const auto name = TypedName(table.number);
  switch (fate) {
    case Fate::Added:
      Print(AddedText(table, plan) + "\n");
      return;
    case Fate::WouldBeAdded:
      Print(Paragraph(fmt::format("{} would be added to {}. Nothing has been written; --apply writes.", rows, name)));
      return;
    case Fate::Refused:
      Print(
          Paragraph(fmt::format("Nothing has been written to {}, and nothing is until every row can be: mend the file "
                                "first.{}",
                                name, plan.rows.empty() ? "" : fmt::format(" Of the others, {} can be added.", rows))));
      return;
  }
}

// --- For programs ----------------------------------------------------------------------------------------------------

void PrintJson(const Table& table, const ImportPlan& plan, Fate fate) {
  for (const auto& row : plan.rows) {
    std::vector<std::string> names = {"line"};
    names.insert(names.end(), plan.columns.begin(), plan.columns.end());
    std::vector<Value> values = {static_cast<std::int64_t>(row.line)};
    values.insert(values.end(), row.values.begin(), row.values.end());
    Print(JsonValues(names, values));
  }
  for (const auto& refused : plan.refused) {
    Print(JsonLine({{"refused", refused.line},
                    {"column", refused.column.empty() ? EventValue(nullptr) : EventValue(refused.column)},
                    {"reason", refused.reason}}) +
          "\n");
  }
  Print(JsonLine({{"table", TypedName(table.number)},
                  {"rows", plan.rows.size()},
                  {"refusedRows", plan.refusedRows},
                  {"written", fate == Fate::Added}}) +
        "\n");
}

// --- The command -----------------------------------------------------------------------------------------------------

// False when the database refused, which has been told; then no row is there.
bool Added(ado::Connection& connection, const Table& table, const ImportPlan& plan) {
  std::size_t line = 0;
  try {
    AddRows(connection, table, plan, line);
    return true;
  } catch (const PlatformError& failure) {
    Tell(fmt::format("{}{}\nNo row has been added.", line == 0 ? "" : fmt::format("Line {}: ", line),
                     failure.description()));
    return false;
  }
}

ExitStatus Import(const Options& options, const ImportArguments& arguments) {
  const auto& table = TableOf(arguments.table);
  const auto map = ReadColumnMap(arguments.map);
  const auto records = ReadFile(arguments.file);
  const auto place = WorkplaceOf(options);
  CheckBilling(place);
  if (const auto missing = MissingTables(place, BillingTablesOf(table.number)); !missing.empty()) {
    throw UsageError(MissingText(missing));
  }
  std::optional<TransferLock> held;
  if (arguments.apply) held.emplace(place, options);
  auto billing = std::make_optional<BillingDb>(options);
  const auto plan = PlanImport(billing->Connection(), table, records, map);
  auto fate = plan.refusedRows > 0 ? Fate::Refused : Fate::WouldBeAdded;
  const bool hasRows = !plan.rows.empty() || plan.refusedRows > 0;
  if (fate == Fate::WouldBeAdded && arguments.apply && hasRows) {
    auto labelled = options;
    labelled.label = "import " + arguments.table;
    RunBackup backup(place, labelled);
    const bool added = Added(billing->Connection(), table, plan);
    billing.reset();
    backup.NoteEnd();
    if (!added) return ExitStatus::Failed;
    fate = Fate::Added;
  }
  try {
    if (arguments.json) {
      PrintJson(table, plan, fate);
    } else {
      PrintPlan(options, table, plan, fate);
    }
    FlushOutput();
  } catch (const OutputError&) {
    // The status says no more than that something can't be used, and no log has the rows.
    if (fate == Fate::Added) Tell(AddedText(table, plan));
    throw;
  }
  return fate == Fate::Refused ? ExitStatus::Failed : ExitStatus::Done;
}

}  // namespace

CommandSyntax ImportCommand() {
  const auto arguments = std::make_shared<ImportArguments>();
  return {
      .name = "import",
      .text = "Add the rows of a CSV file to a table of BillingDb",
      .arguments =
          {{.name = "TABLE", .text = "Where they go, see below", .target = &arguments->table, .required = true},
           {.name = "FILE",
            .text = "The file; its first line names the columns. \"-\" is standard input",
            .target = &arguments->file,
            .required = true},
           {.name = "--map",
            .text = "Columns of other names, FILE-COLUMN=DB-COLUMN with commas between",
            .target = &arguments->map,
            .value = "NAMES"},
           {.name = "--apply", .text = "Write them, when none is refused", .target = &arguments->apply},
           {.name = "--json", .text = "Print each row and each reason as a JSON object", .target = &arguments->json}},
      .footer = TableHelpText(AllTables::No) +
                "Without --apply it shows what would be added, and which rows are refused and why; nothing is written. "
                "With it all rows are added, or none. Keys that are in BillingDb already are refused.\n\nExamples:\n"
                "  twqb import clients clients.csv\n"
                "  twqb import clients clients.csv --map \"No=ClientID,Company=ClientCompany\" --apply",
      .run = [arguments](const Options& options) { return Import(options, *arguments); }};
}

}  // namespace twqb::cli
