#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/terminal/EndSignals.h"
#include "bridge/Tables.h"
#include "cli/commands/Commands.h"
#include "cli/links/LostTwins.h"
#include "cli/links/TwinNames.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/TableArgument.h"
#include "cli/runs/BridgeRun.h"
#include "cli/runs/RunBackup.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"
#include "platform/Text.h"
#include "platform/desk.h"
#include "quickbooks/Session.h"
#include "services/Conversions.h"
#include "services/Database.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kFailed = "failed";

struct DeletionsArguments {
  std::string table = "all";
  bool list = false;
  bool json = false;
};

std::vector<const Table*> TablesNamed(const std::string& name) {
  const auto number = TableFromName(name);
  if (number != enAll) return {FindTable(number)};
  const auto all = Tables();
  return {all.begin(), all.end()};
}

std::string Told(const LostTwin& twin) {
  if (twin.gone == Gone::Record) {
    return fmt::format("The {} {} is linked to {}, which QuickBooks does not have any more.", WordForRow(*twin.table),
                       twin.name, twin.id);
  }
  return fmt::format("The {} {} is gone in BillingDb; the set {} still has it. QuickBooks has its {} {} ({}).",
                     WordForRow(*twin.table), twin.name, twin.set,
                     twin.table->lostLink.record.empty() ? "record" : twin.table->lostLink.record,
                     twin.record.empty() ? twin.id : twin.record, twin.id);
}

// What is done about one twin after the other, each as its user says.
class Settling {
 public:
  Settling(Composition& composition, CTWQBBridge& bridge) : composition_(composition), bridge_(bridge) {}

  // "deleted", "unlinked", "left", or "failed" where a deletion that was wished did not come to be.
  std::string_view Settle(const LostTwin& twin) {
    Tell(Told(twin));
    return twin.gone == Gone::Record ? SettleRow(twin) : SettleRecord(twin);
  }

 private:
  std::string_view SettleRow(const LostTwin& twin) {
    const auto& deletion = twin.table->billingDeletion;
    std::string_view left = "left";
    if (!deletion.rows.empty() || !deletion.instead.empty()) {
      const bool isWished = composition_.Run("DeleteTWRecord", {DeclaredName(twin.table->number), twin.id},
                                             [&] { return bridge_.DeleteTWRecord(twin.table->number, twin.id); });
      if (!IsLinked(twin)) return "deleted";
      if (isWished && deletion.instead.empty()) left = kFailed;
    }
    const auto answer = composition_.Seams().desk->ShowMessageBox(
        {.text = fmt::format("Do you want to unlink the {} {}?\r\n\r\nIt then counts as never sent, and the next send "
                             "adds it to QuickBooks again.",
                             WordForRow(*twin.table), twin.name),
         .title = "Confirm",
         .icon = BoxIcon::Question,
         .buttons = BoxButtons::YesNo});
    if (answer != BoxAnswer::Yes) return left;
    WithGlobalConnection([&] {
      GlobalConnection().Execute(Sql("UPDATE {} SET QBLinkID = NULL WHERE QBLinkID = '{}' AND {}",
                                     twin.table->rows.table, twin.id, Sql::Own(twin.table->rows.condition)),
                                 nullptr);
    });
    return "unlinked";
  }

  std::string_view SettleRecord(const LostTwin& twin) {
    if (twin.table->quickBooksDeletion.kind == QuickBooksKind::None) return "left";
    const int before = composition_.BoxesShown();
    const bool isDeleted = composition_.Run("DeleteQBRecord", {DeclaredName(twin.table->number), twin.id},
                                            [&] { return bridge_.DeleteQBRecord(twin.table->number, twin.id); });
    if (isDeleted) return "deleted";
    // A No ends with the question's own box; what was refused is told in another one.
    return composition_.BoxesShown() - before > 1 ? kFailed : "left";
  }

  static bool IsLinked(const LostTwin& twin) {
    return GetScalarFromSQL(Sql("SELECT COUNT(*) FROM {} WHERE QBLinkID = '{}' AND {}", twin.table->rows.table, twin.id,
                                Sql::Own(twin.table->rows.condition))) != "0";
  }

  Composition& composition_;
  CTWQBBridge& bridge_;
};

struct Settled {
  LostTwin twin;
  std::string done;
};

void PrintSettled(const Options& options, const std::vector<Settled>& all, bool json) {
  if (json) {
    static const std::vector<std::string> kNames = {"table", "name", "id", "gone", "record", "set", "done"};
    const auto orNull = [](const std::string& text) { return text.empty() ? Value(Null()) : Value(text); };
    for (const auto& [twin, done] : all) {
      Print(JsonValues(kNames, std::vector<Value>{TypedName(twin.table->number), twin.name, twin.id,
                                                  std::string(twin.gone == Gone::Record ? "record" : "row"),
                                                  orNull(twin.record), orNull(twin.set), orNull(done)}));
    }
    return;
  }
  std::vector<TableLine> lines = {{"TABLE", "NAME", "IDENTIFIER", "GONE", "DONE"}};
  for (const auto& [twin, done] : all) {
    lines.push_back({TypedName(twin.table->number), twin.name, twin.id,
                     twin.gone == Gone::Record ? "in QuickBooks" : "in BillingDb", done.empty() ? "-" : done});
  }
  // An identifier that is cut short leads nowhere.
  if (!all.empty()) {
    PrintTable(options, lines, std::array{Align::Left, Align::Left, Align::Whole, Align::Left, Align::Left});
  }
}

ExitStatus Deletions(const Options& options, const DeletionsArguments& arguments) {
  const auto tables = TablesNamed(arguments.table);
  auto labelled = options;
  labelled.label = "deletions " + arguments.table;
  std::vector<Settled> all;
  bool hasSession = false;
  const auto work = [&](Composition& composition) {
    CTWQBBridge bridge;
    SetUp(bridge, composition, options);
    hasSession = CheckQBSession(true, options.singleUser);
    if (!hasSession) return;
    const auto backups = BackupsOf(composition.Place());
    const auto twins = WithGlobalConnection([&] { return LostTwins(composition, backups).Find(tables); });
    Settling settling(composition, bridge);
    for (const auto& twin : twins) {
      // The questions have their answers from a file, maybe: nobody could say No to them then.
      if (EndSignals::Came() != 0) throw EndedBySignal();
      all.push_back({.twin = twin, .done = arguments.list ? "" : std::string(settling.Settle(twin))});
    }
  };
  const auto printSettled = [&] {
    PrintSettled(options, all, arguments.json);
    FlushOutput();
  };
  bool recorded = true;
  try {
    recorded = RunComposed(labelled, arguments.list ? Sides::Looked : Sides::Written, work);
  } catch (const DeskGaveUp&) {
    printSettled();
    throw;
  } catch (const EndedBySignal&) {
    printSettled();
    throw;
  }
  printSettled();
  if (!recorded) RefuseTranscript(options);
  if (hasSession && all.empty()) Tell("Nothing is gone on one side alone, as far as the links and the kept sets tell.");
  const bool failed = std::ranges::find(all, kFailed, &Settled::done) != all.end();
  return hasSession && !failed ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace

CommandSyntax DeletionsCommand() {
  const auto arguments = std::make_shared<DeletionsArguments>();
  return {
      .name = "deletions",
      .text = "Find what is gone on one side alone, and ask for each what is to happen",
      .arguments = {{.name = "TABLE", .text = "Which table, see below (all)", .target = &arguments->table},
                    {.name = "--list", .text = "Ask nothing and change nothing", .target = &arguments->list},
                    {.name = "--json", .text = "Print each as a JSON object", .target = &arguments->json}},
      .footer = TableHelpText(AllTables::Yes) +
                "A row whose record is gone in QuickBooks is deleted, unlinked or left; a record whose row is gone is "
                "deleted or\nleft. What can't be deleted is told as failed, with status 1. Which rows there were the "
                "kept sets tell (twqb backup --list): what went before the "
                "oldest of them, or\nwas never linked in one, is not found.",
      .run = [arguments](const Options& options) { return Deletions(options, *arguments); }};
}

}  // namespace twqb::cli
