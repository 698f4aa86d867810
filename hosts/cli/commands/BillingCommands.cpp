#include <fmt/core.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/sqlite/ConnectionText.h"
#include "adapters/transcript/Masking.h"
#include "cli/commands/Commands.h"
#include "cli/runs/BillingDb.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"
#include "cli/screen/TextFile.h"
#include "cli/workplace/SqlScript.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

struct RunArguments {
  std::string file;
  std::optional<std::string> statements;
  bool json = false;
};

void PrintRows(ado::Recordset& rows, RowForm form) {
  if (form == RowForm::Tabbed) Print(TabbedHeader(rows));
  for (; !rows.Eof(); rows.MoveNext()) Print(form == RowForm::Tabbed ? TabbedRow(rows) : JsonRow(rows));
}

std::string Counted(std::size_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

ExitStatus RunStatements(ado::Connection& connection, const std::vector<std::string>& statements, RowForm form) {
  std::size_t done = 0;
  std::size_t changes = 0;
  bool hasPrinted = false;
  for (const auto& statement : statements) {
    try {
      std::int64_t changed = 0;
      const auto rows = connection.Execute(statement, &changed);
      changes += static_cast<std::size_t>(changed);
      if (rows->State() == ado::ObjectState::Open) {
        // A header in the middle of the output stands behind an empty line.
        if (std::exchange(hasPrinted, true) && form == RowForm::Tabbed) Print("\n");
        PrintRows(*rows, form);
      }
    } catch (const PlatformError& failure) {
      FlushOutput();
      Tell(fmt::format("Statement {} of {} failed: {} {}\n{}", done + 1, statements.size(), HexNumber(failure.number()),
                       failure.description(), statement));
      return ExitStatus::Failed;
    }
    ++done;
  }
  if (!hasPrinted) Tell(fmt::format("{}, {} changed", Counted(done, "statement"), Counted(changes, "row")));
  return ExitStatus::Done;
}

ExitStatus Run(const Options& options, const RunArguments& arguments) {
  if (arguments.file.empty() && !arguments.statements) throw UsageError("Name a FILE, or give the SQL with -e.");
  const auto script = arguments.statements ? *arguments.statements : ReadTextFile(arguments.file);
  const auto statements = SplitStatements(script);
  if (statements.empty()) throw UsageError("There is no statement to run.");
  BillingDb billing(options);
  return RunStatements(billing.Connection(), statements, arguments.json ? RowForm::Json : RowForm::Tabbed);
}

ExitStatus Show(const Options& options) {
  if (!sqlite::NamesEmbeddedEngine(WorkplaceOf(options).billing)) {
    throw UsageError(
        "\"twqb billing show\" knows the tables of the embedded database alone.\nAsk this one with \"twqb billing run "
        "-e SQL\".");
  }
  BillingDb billing(options);
  auto& connection = billing.Connection();
  const auto tables = connection.Execute(
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite~_%' ESCAPE '~' ORDER BY name",
      nullptr);
  std::vector<TableLine> lines;
  for (; !tables->Eof(); tables->MoveNext()) {
    const auto name = ToText(tables->FieldAt(0));
    const auto count =
        connection.Execute(fmt::format("SELECT COUNT(*) FROM \"{}\"", ReplaceAll(name, "\"", "\"\"")), nullptr);
    lines.push_back({name, ToText(count->FieldAt(0))});
  }
  PrintTable(options, lines, std::array{Align::Left, Align::Right});
  if (lines.empty()) Tell("The database has no table.");
  return ExitStatus::Done;
}

}  // namespace

CommandSyntax BillingCommand() {
  const auto arguments = std::make_shared<RunArguments>();
  CommandSyntax run = {
      .name = "run",
      .text = "Run SQL statements, with semicolons between, and print their rows",
      .arguments = {{.name = "FILE", .text = "The statements; \"-\" is standard input", .target = &arguments->file},
                    {.name = "-e",
                     .text = "The statements themselves",
                     .target = &arguments->statements,
                     .value = "SQL",
                     .excludes = "FILE"},
                    {.name = "--json", .text = "Print each row as a JSON object", .target = &arguments->json}},
      .footer =
          "Rows are tab-separated behind a line with the names of the columns; NULL is \\N, dates are ISO, and CR, "
          "LF,\n"
          "tab and backslash are \\r, \\n, \\t and \\\\, other control characters \\x1b and so on. Every statement "
          "stands "
          "once\n"
          "it has run, unless the statements themselves say BEGIN and COMMIT. The first one that fails ends the run "
          "with\n"
          "status 1.\n\n"
          "Example:\n  twqb billing run -e \"SELECT ClientID, QBLinkID FROM Client WHERE Status = 'Active'\"",
      .run = [arguments](const Options& options) { return Run(options, *arguments); }};
  CommandSyntax show = {.name = "show", .text = "Print the tables with their numbers of rows", .run = Show};
  return {.name = "billing", .text = "Work on BillingDb itself", .commands = {std::move(run), std::move(show)}};
}

}  // namespace twqb::cli
