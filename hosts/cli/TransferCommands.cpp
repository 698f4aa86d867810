#include <fmt/format.h>

#include <memory>
#include <string>

#include "cli/Checks.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/TableArgument.h"
#include "cli/Transfers.h"

namespace twqb::cli {

namespace {

struct TransferArguments {
  std::string table;
  std::optional<std::string> id;
  bool sync = false;
};

TransferRequest RequestOf(Direction direction, const TransferArguments& arguments) {
  const auto table = TableFromName(arguments.table);
  if (arguments.id && table == enAll) throw UsageError("--id is a record of one table: name the table instead of all.");
  // An empty one would be no filter at all.
  if (arguments.id && arguments.id->empty()) throw UsageError("--id needs the identifier of a record.");
  return {.direction = direction, .table = table, .id = arguments.id, .sync = arguments.sync};
}

ExitStatus Transfer(const Options& options, const TransferRequest& request) {
  const auto label =
      fmt::format("{} {}", request.direction == Direction::Send ? "send" : "get", TypedName(request.table));
  const auto status =
      RunOperation(options, TransferOperation(request), {.done = label + ": done", .failed = label + ": failed"});
  if (status == ExitStatus::Done) return status;
  const auto missing = MissingTables(WorkplaceOf(options), BillingTablesOf(request.table));
  if (!missing.empty()) Tell(MissingText(missing));
  return status;
}

void AddTransfer(CLI::App& app, Command& chosen, Direction direction) {
  const bool sends = direction == Direction::Send;
  const auto arguments = std::make_shared<TransferArguments>();
  auto* command = sends ? app.add_subcommand("send", "Send a table to QuickBooks")
                        : app.add_subcommand("get", "Get a table from QuickBooks");
  command->add_option("TABLE", arguments->table, "What to transfer, see below")->required()->type_name("");
  command
      ->add_option("--id", arguments->id,
                   sends ? "Only the record with this key in BillingDb, whatever the saved filters say"
                         : "Only the record with this identifier in QuickBooks, whatever the saved filters say")
      ->type_name("ID");
  command->add_flag("--sync", arguments->sync, "Of two linked records the newer one wins, whatever the settings say");
  command->footer(TableHelpText(AllTables::Yes) +
                  (sends ? "Examples:\n  twqb send clients\n  twqb send clients --id ABBOTT\n"
                           "  twqb send clients --answers answers.txt --transcript run.jsonl"
                         : "Examples:\n  twqb get clients\n  twqb get clients --sync"));
  command->callback([arguments, direction, &chosen] {
    chosen = [arguments, direction](const Options& options) {
      return Transfer(options, RequestOf(direction, *arguments));
    };
  });
}

}  // namespace

void AddTransferCommands(CLI::App& app, Command& chosen) {
  AddTransfer(app, chosen, Direction::Send);
  AddTransfer(app, chosen, Direction::Get);
}

}  // namespace twqb::cli
