#include <memory>
#include <optional>
#include <string>

#include "cli/commands/Commands.h"
#include "cli/options/TableArgument.h"
#include "cli/preview/Diff.h"
#include "cli/preview/DiffReport.h"
#include "cli/screen/Output.h"

namespace twqb::cli {

namespace {

struct DiffArguments {
  std::string table;
  std::optional<std::string> id;
  bool json = false;
};

// --- The command -----------------------------------------------------------------------------------------------------

ExitStatus Diff(const Options& options, const DiffArguments& arguments) {
  const auto table = arguments.table.empty() ? enAll : TableFromName(arguments.table);
  if (arguments.id && table == enAll) throw UsageError("ID is a record of one table: name the table instead of all.");
  if (arguments.id && arguments.id->empty()) throw UsageError("ID is empty: name a key of BillingDb, or a link.");
  const auto difference = FindDifference(options, table, arguments.id);
  Print(arguments.json ? DifferenceJson(difference)
                       : DifferenceText(difference, arguments.id ? Shown::Whole : Shown::InShort));
  FlushOutput();
  for (const auto& trouble : difference.troubles) Tell(trouble);
  return difference.troubles.empty() ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace

CommandSyntax DiffCommand() {
  const auto arguments = std::make_shared<DiffArguments>();
  return {.name = "diff",
          .text = "Show in what linked pairs differ, as transfers see them; changes nothing",
          .arguments = {{.name = "TABLE", .text = "Which table, see below; left out: all", .target = &arguments->table},
                        {.name = "ID",
                         .text = "Only the row with this key in BillingDb, or this link",
                         .target = &arguments->id},
                        {.name = "--json", .text = "Print each as a JSON object", .target = &arguments->json}},
          .footer = TableHelpText(AllTables::Yes) +
                    "Of each pair that differs: what QuickBooks has and what a send would make of it, what BillingDb "
                    "has and\n"
                    "what a get would make of it, and which side a send and a get take by their dates. Then the links "
                    "that lead\n"
                    "nowhere, and the rows that would come back as others once they are sent and got: texts that are "
                    "cut,\n"
                    "telephone numbers that lose their words. It is found by transfers on copies of both files.\n\n"
                    "Examples:\n  twqb diff\n  twqb diff clients ABBOTT",
          .run = [arguments](const Options& options) { return Diff(options, *arguments); }};
}

}  // namespace twqb::cli
