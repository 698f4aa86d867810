#include <fmt/core.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "adapters/transcript/TranscriptWriter.h"
#include "bridge/RowChecks.h"
#include "bridge/Tables.h"
#include "cli/commands/Commands.h"
#include "cli/options/TableArgument.h"
#include "cli/preview/ForeseenRefusals.h"
#include "cli/runs/BridgeRun.h"
#include "cli/screen/Output.h"
#include "services/ModuleVariables.h"

namespace twqb::cli {

namespace {

struct CheckArguments {
  std::string table = "all";
  bool json = false;
};

EventValue TextValue(const std::string& text) { return text.empty() ? EventValue(nullptr) : EventValue(text); }

std::string JsonOf(const Table& table, const Finding& finding) {
  return JsonLine({{"table", TypedName(table.number)},
                   {"key", finding.key},
                   {"name", TextValue(finding.name)},
                   {"check", CheckName(finding.check)},
                   {"rule", finding.rule},
                   {"advice", finding.advice}}) +
         "\n";
}

std::string TextOf(const Table& table, const Finding& finding) {
  const auto name = finding.name.empty() || finding.name == finding.key ? "" : fmt::format(" \"{}\"", finding.name);
  return fmt::format("{} {}{}: {}\n    {}\n", table.lostLink.row, finding.key, name, finding.rule, finding.advice);
}

bool Waits(const Finding& finding) { return finding.check == Check::ParentUnlinked; }

// Among all tables, rows that only wait for another table are counted and not told one by one: of a firm that was never
// sent that is nearly every one.
std::string SummaryOf(const TableFindings& told, bool ofAll) {
  if (told.rows == 0) return {};
  const auto waiting = ofAll ? static_cast<std::size_t>(std::ranges::count_if(told.findings, Waits)) : 0;
  const auto count = told.findings.size() - waiting;
  const auto name = TypedName(told.table->number);
  auto text = fmt::format("{}: {} looked at, {}", name, told.rows == 1 ? "1 row" : fmt::format("{} rows", told.rows),
                          count == 0   ? "nothing found"
                          : count == 1 ? "1 finding"
                                       : fmt::format("{} findings", count));
  if (waiting > 0) {
    text += fmt::format("; {} can't go yet, for what they belong to has no link: see \"twqb check {}\"", waiting, name);
  }
  return text + "\n";
}

std::vector<TableFindings> TablesFrom(const std::string& name) {
  const auto number = TableFromName(name);
  std::vector<TableFindings> tables;
  for (const auto* table : Tables()) {
    if (table->lostLink.takeUp != nullptr && (number == enAll || table->number == number)) {
      tables.push_back({.table = table});
    }
  }
  if (tables.empty())
    throw UsageError(fmt::format("The rows of {} never go to QuickBooks: nothing of them can fail.", name));
  return tables;
}

void PrintTold(const std::vector<TableFindings>& told, bool json) {
  const bool ofAll = told.size() > 1;
  std::string summary;
  for (const auto& table : told) {
    for (const auto& finding : table.findings) {
      if (!json && ofAll && Waits(finding)) continue;
      Print(json ? JsonOf(*table.table, finding) : TextOf(*table.table, finding));
    }
    summary += SummaryOf(table, ofAll);
  }
  if (json) return;
  Print(summary.empty() ? "check: there are no rows to look at\n" : summary);
}

ExitStatus RunCheck(const Options& options, const CheckArguments& arguments) {
  std::vector<TableFindings> told;
  bool done = false;
  const bool recorded = RunComposed(options, Sides::Looked, [&](Composition& composition) {
    told = TablesFrom(arguments.table);
    CTWQBBridge bridge;
    SetUp(bridge, composition, options);
    done = composition.Run("Check", {DeclaredName(TableFromName(arguments.table))}, [&] {
      if (!bridge.ConnectToQB(true)) return false;
      const auto session = Vars().g_QBSession;
      std::vector<const Table*> checked;
      checked.reserve(told.size());
      for (const auto& table : told) checked.push_back(table.table);
      RowChecker checker(*session, std::move(checked));
      for (auto& table : told) checker.Check(table);
      return true;
    });
  });
  if (done) {
    AddWhatASendTells(options, told);
    PrintTold(told, arguments.json);
  }
  FlushOutput();
  if (!recorded) RefuseTranscript(options);
  return done ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace

CommandSyntax CheckCommand() {
  const auto arguments = std::make_shared<CheckArguments>();
  return {.name = "check",
          .text = "Find what would fail in a send, or be lost on the way, before it is",
          .arguments = {{.name = "TABLE", .text = "Which rows, see below (all)", .target = &arguments->table},
                        {.name = "--json", .text = "Print each finding as a JSON object", .target = &arguments->json}},
          .footer =
              TableHelpText(AllTables::Yes) +
              "Keys with quotation marks, names with colons or that others have already, texts that would be cut or "
              "refused,\ncharacters that no message can carry, dates that can't be read, rows whose client, project or "
              "employee has no link,\naccounts and payroll items that QuickBooks lacks, and what else a preview of the "
              "send has refused. Each with the row, the rule "
              "and what to do. Nothing is changed. The\nstatus is 0 whether something was found or not.\n\nExamples:\n"
              "  twqb check\n  twqb check clients --json",
          .run = [arguments](const Options& options) { return RunCheck(options, *arguments); }};
}

}  // namespace twqb::cli
