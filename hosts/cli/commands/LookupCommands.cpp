#include <fmt/core.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/commands/Commands.h"
#include "cli/commands/LookupKinds.h"
#include "cli/runs/BridgeRun.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"

namespace twqb::cli {

namespace {

struct LookupArguments {
  std::string name;  // of a kind
  bool all = false;
  bool json = false;

  [[nodiscard]] RowForm Form() const { return json ? RowForm::Json : RowForm::Readable; }
};

struct Rows {
  std::vector<std::string> names;
  std::vector<std::vector<Value>> values;
};

// A field as QuickBooks wrote it; of a reference its FullName.
Value FieldOf(const Record& record, std::string_view name) {
  const auto field = record[name];
  if (field.IsNothing()) return Null();
  if (!name.ends_with("Ref")) return field.GetValue();
  const auto fullName = field["FullName"];
  return fullName.IsNothing() ? Value(Null()) : Value(fullName.GetValue());
}

Rows RowsOf(const LookupKind& kind, const ReturnedList& list) {
  Rows rows{.names = {kind.columns.begin(), kind.columns.end()}};
  for (std::size_t i = 0; !list.IsNothing() && i < list.Count(); ++i) {
    auto& row = rows.values.emplace_back();
    for (const auto column : kind.columns) row.push_back(FieldOf(list.GetAt(i), column));
  }
  return rows;
}

Rows RowsOf(const AccountArray& accounts) {
  // The array's fourth row is never filled for a host.
  Rows rows{.names = {"ListID", "FullName", "Name"}};
  for (const auto& account : accounts) {
    rows.values.push_back({account[enAccountListID], account[enAccountFullName], account[enAccountName]});
  }
  return rows;
}

void PrintAsTable(const Options& options, const Rows& rows) {
  if (rows.values.empty()) {
    Tell("QuickBooks has none.");
    return;
  }
  std::vector<TableLine> lines = {rows.names};
  for (const auto& row : rows.values) {
    auto& line = lines.emplace_back();
    for (const auto& value : row) line.push_back(ToText(value));
  }
  std::vector<Align> alignments;
  for (const auto& name : rows.names) alignments.push_back(name.ends_with("ID") ? Align::Whole : Align::Left);
  PrintTable(options, lines, alignments);
}

void PrintRows(const Options& options, const Rows& rows, RowForm form) {
  if (form == RowForm::Readable && OutputIsTerminal()) {
    PrintAsTable(options, rows);
    return;
  }
  if (form == RowForm::Readable) Print(TabbedNames(rows.names));
  for (const auto& row : rows.values) {
    Print(form == RowForm::Json ? JsonValues(rows.names, row) : TabbedValues(row));
  }
}

// A list with records, one without, or nothing because something failed.
std::optional<Rows> Look(Composition& composition, const Options& options, const LookupKind& kind, bool all) {
  CTWQBBridge bridge;
  SetUp(bridge, composition, options);
  bool failed = false;
  EventList arguments;
  if (kind.takesAll) arguments.emplace_back(all);
  const auto list = composition.Run(
      kind.operation, arguments,
      [&] {
        // An empty list and a failure look alike for some kinds; but a failure behind the connection is always told.
        if (!bridge.ConnectToQB(true)) {
          failed = true;
          return ReturnedList();
        }
        const int toldBefore = composition.BoxesShown();
        auto found = kind.look(bridge, all);
        failed = found.IsNothing() && composition.BoxesShown() > toldBefore;
        return found;
      },
      [](const ReturnedList& found) -> EventValue {
        if (found.IsNothing()) return nullptr;
        return found.Count();
      });
  if (failed) return std::nullopt;
  return RowsOf(kind, list);
}

ExitStatus Finish(const Options& options, bool recorded, const std::optional<Rows>& rows, RowForm form) {
  if (rows) PrintRows(options, *rows, form);
  FlushOutput();
  if (!recorded) RefuseTranscript(options);
  return rows ? ExitStatus::Done : ExitStatus::Failed;
}

ExitStatus List(const Options& options, const LookupArguments& arguments) {
  const auto& kind = LookupKindFromName(arguments.name);
  if (arguments.all && !kind.takesAll) {
    throw UsageError(
        fmt::format("\"{}\" has no --all: QuickBooks is asked for what it gives by itself.", kind.TypedName()));
  }
  std::optional<Rows> rows;
  const bool recorded = RunComposed(
      options, Sides::Read, [&](Composition& composition) { rows = Look(composition, options, kind, arguments.all); });
  return Finish(options, recorded, rows, arguments.Form());
}

ExitStatus Accounts(const Options& options, const LookupArguments& arguments) {
  std::optional<Rows> rows;
  const bool recorded = RunComposed(options, Sides::Read, [&](Composition& composition) {
    CTWQBBridge bridge;
    SetUp(bridge, composition, options);
    AccountArray accounts;
    if (composition.Run("GetQBAccounts", {}, [&] { return bridge.GetQBAccounts(accounts); })) {
      rows = RowsOf(accounts);
    }
  });
  return Finish(options, recorded, rows, arguments.Form());
}

ExitStatus IsJob(const Options& options, const std::string& id) {
  // An empty one would be no filter at all.
  if (id.empty()) throw UsageError("The ID of a customer or job is empty.");
  bool isJob = false;
  const bool recorded = RunComposed(options, Sides::Read, [&](Composition& composition) {
    CTWQBBridge bridge;
    SetUp(bridge, composition, options);
    isJob = composition.Run("IsJob", {id}, [&] { return bridge.IsJob(id); });
  });
  Print(fmt::format("{}\n", isJob));
  FlushOutput();
  if (!recorded) RefuseTranscript(options);
  return isJob ? ExitStatus::Done : ExitStatus::Failed;
}

constexpr std::string_view kRowsHelp =
    "On a terminal the rows are a table. Elsewhere they are tab-separated behind a line with the names of the fields;\n"
    "what a record does not have is \\N, CR, LF, tab and backslash are \\r, \\n, \\t and \\\\, other control "
    "characters\n"
    "\\x1b and so on. Values are as QuickBooks writes them; of a record that is referred to, its full name.\n";

std::string KindHelp() { return fmt::format("KIND is one of\n  {}\n\n", LookupKindList()); }

}  // namespace

std::vector<CommandSyntax> LookupCommands() {
  const auto json = [](const std::shared_ptr<LookupArguments>& arguments) {
    return Argument{.name = "--json", .text = "Print each row as a JSON object", .target = &arguments->json};
  };
  const auto listed = std::make_shared<LookupArguments>();
  const auto accounts = std::make_shared<LookupArguments>();
  const auto id = std::make_shared<std::string>();
  return {{.name = "list",
           .text = "Print a list of QuickBooks",
           .arguments = {{.name = "KIND", .text = "What to list, see below", .target = &listed->name, .required = true},
                         {.name = "--all",
                          .text = "Inactive records too; for lists that have such",
                          .target = &listed->all},
                         json(listed)},
           .footer = fmt::format("{}{}\nExamples:\n  twqb list customers --all\n  twqb list invoices --json",
                                 KindHelp(), kRowsHelp),
           .run = [listed](const Options& options) { return List(options, *listed); }},
          {.name = "accounts",
           .text = "Print the accounts of QuickBooks",
           .arguments = {json(accounts)},
           .footer =
               std::string(kRowsHelp) +
               "A refusal by QuickBooks ends with status 1, without a word. \"list accounts\" has types and balances.",
           .run = [accounts](const Options& options) { return Accounts(options, *accounts); }},
          {.name = "is-job",
           .text = "Tell whether a customer of QuickBooks is a job",
           .arguments = {{.name = "ID", .text = "Its ListID", .target = id.get(), .required = true}},
           .footer =
               "Prints true, or false with exit status 1: for a customer, for one that is not there, after a failure.",
           .run = [id](const Options& options) { return IsJob(options, *id); }}};
}

}  // namespace twqb::cli
