#include <fmt/core.h>

#include <memory>
#include <string>
#include <vector>

#include "adapters/terminal/EndSignals.h"
#include "bridge/Tables.h"
#include "cli/commands/Commands.h"
#include "cli/links/TwinNames.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/TableArgument.h"
#include "cli/runs/Operations.h"
#include "cli/runs/RunAccount.h"
#include "cli/screen/Output.h"
#include "cli/workplace/Surroundings.h"

namespace twqb::cli {

namespace {

struct DeletionArguments {
  std::string table;
  std::string id;
};

// The two deletions: the command, the operation behind it, and how they are explained.
struct Deletion {
  const char* command;
  const char* text;
  const char* operation;
  bool (CTWQBBridge::*run)(enTables table, const std::string& id);
  const char* footer;
};

constexpr Deletion kDeletions[] = {
    {.command = "delete-billing",
     .text = "Delete the record of BillingDb that is linked to a record in QuickBooks",
     .operation = "DeleteTWRecord",
     .run = &CTWQBBridge::DeleteTWRecord,
     .footer =
         "It asks first. Invoices are not deleted in BillingDb: they have to be reversed there. A record that is\n"
         "not there, or can't be deleted, is not noticed.\n\n"
         "Example:\n  twqb delete-billing clients 80000001-1204731000"},
    {.command = "delete-quickbooks",
     .text = "Delete a record in QuickBooks",
     .operation = "DeleteQBRecord",
     .run = &CTWQBBridge::DeleteQBRecord,
     .footer = "It asks first. Only an invoice may be gone already.\n\n"
               "Example:\n  twqb delete-quickbooks clients 80000001-1204731000"},
};

// Ahead of a question that knows the identifier alone.
void TellName(Composition& composition, OpenMode mode, const Table& table, const std::string& id) {
  const auto row = NameOfLinkedRow(composition.Place(), table, id);
  const auto record = NameOfRecord(composition.RealQuickBooks(), mode, table, id);
  const auto word = WordForRow(table);
  const auto inBilling = row.empty() ? fmt::format("no {} of BillingDb", word) : fmt::format("the {} {}", word, row);
  const auto inQuickBooks = record.empty() ? std::string() : fmt::format(", in QuickBooks \"{}\"", record);
  Tell(fmt::format("{} belongs to {}{}.", id, inBilling, inQuickBooks));
}

ExitStatus Delete(const Options& options, const Deletion& deletion, const DeletionArguments& arguments) {
  const auto table = TableFromName(arguments.table);
  if (table == enAll) throw UsageError("A record is deleted in one table: name the table instead of all.");
  // Rows that were never linked may have an empty link.
  if (arguments.id.empty()) throw UsageError("ID is the identifier of a record in QuickBooks; it can't be empty.");
  const auto label = fmt::format("{} {} {}", deletion.command, TypedName(table), arguments.id);
  const auto machine = MakeMachine(WorkplaceOf(options), options.clock);
  const auto mode = options.singleUser ? OpenMode::SingleUser : OpenMode::DoNotCare;
  RunAccount account(*machine);
  auto observed = options;
  observed.observer = &account;
  observed.label = label;
  return RunOperation(observed,
                      {.name = deletion.operation,
                       .arguments = {DeclaredName(table), arguments.id},
                       .run = [&](CTWQBBridge& bridge) { return (bridge.*deletion.run)(table, arguments.id); },
                       .prepare =
                           [&](Composition& composition) {
                             TellName(composition, mode, *FindTable(table), arguments.id);
                             // The question has its answer from a file, maybe: nobody could say No to it then.
                             if (EndSignals::Came() != 0) throw EndedBySignal();
                           }},
                      [&](bool done) {
                        const auto troubles = account.Troubles();
                        if (done && troubles.empty()) return Ending{.text = label + ": done"};
                        return Ending{
                            .text = label + ": not done" + (troubles.empty() ? "" : "; " + troubles + ": see the log"),
                            .status = ExitStatus::Failed};
                      });
}

CommandSyntax SyntaxOf(const Deletion& deletion) {
  const auto arguments = std::make_shared<DeletionArguments>();
  return {.name = deletion.command,
          .text = deletion.text,
          .arguments = {{.name = "TABLE",
                         .text = "The record's table, see below",
                         .target = &arguments->table,
                         .required = true},
                        {.name = "ID", .text = "Its ListID or TxnID", .target = &arguments->id, .required = true}},
          .footer = TableHelpText(AllTables::No) + deletion.footer,
          .run = [arguments, &deletion](const Options& options) { return Delete(options, deletion, *arguments); }};
}

}  // namespace

std::vector<CommandSyntax> DeletionCommands() {
  std::vector<CommandSyntax> commands;
  for (const auto& deletion : kDeletions) commands.push_back(SyntaxOf(deletion));
  return commands;
}

}  // namespace twqb::cli
