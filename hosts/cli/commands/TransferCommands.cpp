#include <fmt/core.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commands/Commands.h"
#include "cli/options/TableArgument.h"
#include "cli/preview/Preview.h"
#include "cli/preview/PreviewReport.h"
#include "cli/runs/Checks.h"
#include "cli/runs/ReportFile.h"
#include "cli/runs/RunAccount.h"
#include "cli/runs/Transfers.h"
#include "cli/screen/Output.h"
#include "cli/workplace/Surroundings.h"
#include "platform/Text.h"
#include "platform/desk.h"

namespace twqb::cli {

namespace {

struct TransferArguments {
  std::string table;
  std::optional<std::string> id;
  bool sync = false;
  bool strict = false;
  std::string report;
  bool preview = false;
  bool json = false;
};

// An invoice is named by its project and its number. Without the number all invoices would go.
void RequireProjectAndNumber(std::string_view id) {
  const auto parts = Split(id, ',');
  if (parts.size() == 2 && !parts[0].empty() && !parts[1].empty()) return;
  throw UsageError("--id of invoices is a project and an invoice number with a comma between, as HARBOR:SURVEY,1041.");
}

// The record of a run, and faults that are counted, are about the transfer's own calls: nobody looks beside it then,
// but for who wants to stop.
LikelyTwins LikelyTwinsOf(const Options& options, const TransferArguments& arguments) {
  if (arguments.strict) return LikelyTwins::Stop;
  return options.transcript.empty() && options.faults.empty() ? LikelyTwins::Told : LikelyTwins::NotLookedFor;
}

TransferRequest RequestOf(Direction direction, const Options& options, const TransferArguments& arguments) {
  const auto table = TableFromName(arguments.table);
  if (arguments.id && table == enAll) throw UsageError("--id is a record of one table: name the table instead of all.");
  // An empty one would be no filter at all.
  if (arguments.id && arguments.id->empty()) throw UsageError("--id needs the identifier of a record.");
  if (arguments.id && table == enInvoices && direction == Direction::Send) RequireProjectAndNumber(*arguments.id);
  return {.direction = direction,
          .table = table,
          .id = arguments.id,
          .sync = arguments.sync,
          .likelyTwins = LikelyTwinsOf(options, arguments)};
}

// What the last line says of a transfer.
std::string VerdictOf(bool done, const std::string& troubles, LogOfRun log) {
  std::string verdict = done ? "done" : "failed";
  if (troubles.empty()) return verdict;
  return fmt::format("{}{} {}{}", verdict, done ? ", but" : ";", troubles,
                     log == LogOfRun::Whole ? ": see the log" : ", and the log could not be written");
}

std::string LabelOf(const TransferRequest& request) {
  return fmt::format("{} {}", request.direction == Direction::Send ? "send" : "get", TypedName(request.table));
}

ExitStatus Transfer(const Options& options, const TransferRequest& request, const TransferArguments& arguments) {
  const auto machine = MakeMachine(WorkplaceOf(options), options.clock);
  std::optional<ReportFile> report;
  RunAccount account(*machine);
  auto observed = options;
  observed.observer = &account;
  observed.log = &account.Log();
  observed.label = fmt::format("{} {}", request.direction == Direction::Send ? "send" : "get",
                               RecordName(request.table, request.id.value_or("")));
  bool returnedTrue = false;
  auto operation = TransferOperation(request);
  // Behind the lock: what stands in the file may be the report of a transfer at work.
  operation.prepare = [&](Composition& /*composition*/) {
    account.Expect(TablesOf(request));
    if (!arguments.report.empty()) account.ReportTo(report.emplace(arguments.report, options, *machine));
  };
  const auto label = LabelOf(request);
  const auto endingOf = [&](bool done) {
    returnedTrue = done;
    const auto troubles = account.Troubles();
    const bool clean = done && (!arguments.strict || troubles.empty());
    return Ending{
        .text = fmt::format("{}{}: {}", account.Summary(request), label, VerdictOf(done, troubles, account.Log())),
        .status = clean ? ExitStatus::Done : ExitStatus::Failed};
  };
  auto status = ExitStatus::Failed;
  try {
    status = RunOperation(observed, operation, endingOf);
  } catch (const DeskGaveUp&) {
    // What was done by then is done. Ahead of all tables there is nothing to tell.
    if (const auto lines = account.Summary(request); !lines.empty()) {
      Print(fmt::format("{}{}: ended at a question without an answer\n", lines, label));
      FlushOutput();
    }
    throw;
  }
  if (report) report->Flush();
  if (report && !report->IsWhole()) {
    throw UsageError(fmt::format("The report {} could not be written to its end.", arguments.report));
  }
  if (returnedTrue) return status;
  const auto missing = MissingTables(WorkplaceOf(options), BillingTablesOf(request.table));
  if (!missing.empty()) Tell(MissingText(missing));
  return status;
}

// The same, on copies of everything.
ExitStatus ShowPreview(const Options& options, const TransferRequest& request, const TransferArguments& arguments) {
  const auto preview = RunPreview(options, request);
  const auto ends = preview.unanswered ? std::string("it would end at a question without an answer")
                    : preview.troubles.empty()
                        ? std::string(preview.done ? "it would be done" : "it would fail")
                        : fmt::format("it would {} {}", preview.done ? "be done, but" : "fail;", preview.troubles);
  const auto verdict = fmt::format("preview of {}: {}{}; nothing has been changed", LabelOf(request), ends,
                                   HangsOnUnknown(preview) ? fmt::format(", which {}", kHangsOnUnknown) : "");
  Print(arguments.json ? PreviewJson(preview, verdict) : fmt::format("{}{}\n", PreviewText(preview), verdict));
  FlushOutput();
  if (preview.unanswered) throw DeskGaveUp(*preview.unanswered);
  const bool clean = preview.done && (!arguments.strict || preview.troubles.empty());
  return clean ? ExitStatus::Done : ExitStatus::Failed;
}

CommandSyntax SyntaxOf(Direction direction) {
  const bool sends = direction == Direction::Send;
  const auto arguments = std::make_shared<TransferArguments>();
  return {
      .name = sends ? "send" : "get",
      .text = sends ? "Send a table to QuickBooks" : "Get a table from QuickBooks",
      .arguments =
          {{.name = "TABLE", .text = "What to transfer, see below", .target = &arguments->table, .required = true},
           {.name = "--id",
            .text = sends ? "Only the record with this key in BillingDb, whatever the saved filters say"
                          : "Only the record with this identifier in QuickBooks, whatever the saved "
                            "filters say",
            .target = &arguments->id,
            .value = "ID"},
           {.name = "--sync",
            .text = "Of two linked records the newer one wins, whatever the settings say",
            .target = &arguments->sync},
           {.name = "--strict",
            .text = sends
                        ? "Exit status 1 when an error was told, or a record refused, though the transfer went on; and "
                          "nothing is sent when rows look like records that QuickBooks has"
                        : "Exit status 1 when an error was told, or a record refused, though the transfer went on",
            .target = &arguments->strict},
           {.name = "--report",
            .text = "Write what became of each record to FILE, and why, as JSON Lines",
            .target = TakesFileName(arguments->report),
            .value = "FILE"},
           {.name = "--preview",
            .text = "Show what would be done, record by record and field by field, and change nothing",
            .target = &arguments->preview,
            .excludes = "--report"},
           {.name = "--json",
            .text = "Of a preview: print each record as a JSON object",
            .target = &arguments->json,
            .needs = "--preview"}},
      .footer = TableHelpText(AllTables::Yes) +
                (sends ? "ID of timeentries is a list of identifiers without their braces, with commas between; ID of "
                         "invoices is a\nproject and an invoice number with a comma between.\n\n"
                         "Examples:\n  twqb send clients --preview\n  twqb send clients\n"
                         "  twqb send clients --id ABBOTT\n"
                         "  twqb send invoices --id HARBOR:SURVEY,1041\n"
                         "  twqb send clients --answers answers.txt --transcript run.jsonl"
                       : "Examples:\n  twqb get clients --preview\n  twqb get clients\n  twqb get clients --sync"),
      .run = [arguments, direction](const Options& options) {
        const auto request = RequestOf(direction, options, *arguments);
        return arguments->preview ? ShowPreview(options, request, *arguments) : Transfer(options, request, *arguments);
      }};
}

}  // namespace

std::vector<CommandSyntax> TransferCommands() { return {SyntaxOf(Direction::Send), SyntaxOf(Direction::Get)}; }

}  // namespace twqb::cli
