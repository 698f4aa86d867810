#include <fmt/core.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "adapters/terminal/EndSignals.h"
#include "adapters/transcript/TranscriptWriter.h"
#include "bridge/Linking.h"
#include "bridge/Tables.h"
#include "bridge/modTWQBBridge.h"
#include "cli/commands/Commands.h"
#include "cli/options/NearestName.h"
#include "cli/options/TableArgument.h"
#include "cli/runs/BridgeRun.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "engine/TwinFinder.h"
#include "platform/Text.h"
#include "platform/desk.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb::cli {

namespace {

struct LinkArguments {
  std::string table = "all";
  bool apply = false;
  std::optional<std::string> keep;
  bool json = false;
};

constexpr std::string_view EndName(PairEnd end) {
  switch (end) {
    case PairEnd::Shown:
      return "shown";
    case PairEnd::Linked:
      return "linked";
    case PairEnd::Declined:
      return "declined";
    case PairEnd::Failed:
      break;
  }
  return "failed";
}

Newer NewerFromName(const std::optional<std::string>& typed) {
  static const std::vector<std::string> kNames = {"billing", "quickbooks"};
  if (!typed) return Newer::AsDated;
  const auto& name = *typed;
  const auto folded = FoldCase(name);
  if (folded == kNames[0]) return Newer::BillingDb;
  if (folded == kNames[1]) return Newer::QuickBooks;
  const auto nearest = NearestName(name, kNames);
  throw UsageError(fmt::format("--keep is the side that counts as newer, billing or quickbooks; it can't be \"{}\".{}",
                               name, nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : ""));
}

// --- For people ------------------------------------------------------------------------------------------------------

std::string ValueOrNothing(const std::string& text) { return text.empty() ? "(nothing)" : "\"" + text + "\""; }

std::string AgreementText(const LikelyPair& pair, std::string_view indent, std::string_view end) {
  std::string text;
  if (!pair.agreeing.empty()) text += fmt::format("{}The same in both: {}.{}", indent, Join(pair.agreeing, ", "), end);
  for (const auto& field : pair.differing) {
    text += fmt::format("{}{}: {} in BillingDb, {} in QuickBooks.{}", indent, field.field,
                        ValueOrNothing(field.billing), ValueOrNothing(field.quickBooks), end);
  }
  return text;
}

std::string PairText(const Table& table, const PairTold& told) {
  const auto& pair = told.pair;
  std::string text;
  switch (told.end) {
    case PairEnd::Shown:
      text = pair.likeness.isExact ? "exact" : "near";
      break;
    case PairEnd::Linked:
    case PairEnd::Declined:
      text = EndName(told.end);
      break;
    case PairEnd::Failed:
      text = fmt::format("not linked, for {}", told.why);
      break;
  }
  return fmt::format("{} {} \"{}\" - {} \"{}\" ({}): {} of 100, {}; {}\n{}", table.lostLink.row, pair.key, pair.row,
                     table.lostLink.record, pair.recordName, pair.identifier, pair.likeness.score, pair.likeness.how,
                     text, AgreementText(pair, "    ", "\n"));
}

std::string Count(std::size_t count, std::string_view what) { return fmt::format("{} {}", count, what); }

// What the last line says of a table; "" where there is nothing to say.
std::string SummaryOf(const TablePairs& told, bool applied) {
  if (told.unlinked == 0) return {};
  std::size_t exact = 0;
  std::set<std::string> nearRows;
  std::size_t linked = 0;
  std::size_t declined = 0;
  std::size_t failed = 0;
  std::size_t left = 0;
  for (const auto& pair : told.pairs) {
    if (pair.end == PairEnd::Shown) ++left;
    if (pair.end == PairEnd::Linked) ++linked;
    if (pair.end == PairEnd::Declined) ++declined;
    if (pair.end == PairEnd::Failed) ++failed;
    if (pair.pair.likeness.isExact) {
      ++exact;
    } else {
      nearRows.insert(pair.pair.key);
    }
  }
  std::vector<std::string> parts;
  const auto add = [&](std::size_t count, std::string_view what) {
    if (count > 0) parts.push_back(Count(count, what));
  };
  if (applied) {
    add(linked, "linked");
    add(declined, declined == 1 ? "pair declined" : "pairs declined");
    add(failed, "could not be linked");
    add(left, left == 1 ? "pair not come to" : "pairs not come to");
  } else {
    add(exact, "with an exact twin");
    add(nearRows.size(), "with one that is like it");
  }
  if (parts.empty()) parts.emplace_back("nothing in QuickBooks looks like them");
  if (told.staying > 0) parts.push_back(Count(told.staying, "can't go yet, for what they belong to has no link"));
  const auto name = TypedName(told.table->number);
  if (told.unreadable > 0) {
    parts.push_back(Count(told.unreadable, fmt::format("can't be read: see \"twqb check {}\"", name)));
  }
  return fmt::format("{}: {} without a link; {}\n", name, told.unlinked, Join(parts, ", "));
}

// --- For programs ----------------------------------------------------------------------------------------------------

std::string JsonOf(const Table& table, const PairTold& told) {
  const auto& pair = told.pair;
  EventList agreeing;
  for (const auto& field : pair.agreeing) agreeing.emplace_back(field);
  EventList differing;
  for (const auto& field : pair.differing) {
    differing.emplace_back(
        EventFields{{"field", field.field},
                    {"billing", field.billing},
                    {"quickBooks", field.quickBooks.empty() ? EventValue(nullptr) : EventValue(field.quickBooks)}});
  }
  return JsonLine({{"table", TypedName(table.number)},
                   {"key", pair.key},
                   {"name", pair.row},
                   {"identifier", pair.identifier},
                   {"record", pair.recordName},
                   {"score", static_cast<std::int64_t>(pair.likeness.score)},
                   {"exact", pair.likeness.isExact},
                   {"how", pair.likeness.how},
                   {"agree", std::move(agreeing)},
                   {"differ", std::move(differing)},
                   {"outcome", EndName(told.end)},
                   {"why", told.why.empty() ? EventValue(nullptr) : EventValue(told.why)}}) +
         "\n";
}

// --- The links -------------------------------------------------------------------------------------------------------

bool Confirms(const Table& table, const LikelyPair& pair) {
  const auto text = fmt::format(
      "The {} {}, \"{}\", looks like the {} \"{}\" in QuickBooks: {} of 100, {}.\r\n\r\n{}\r\nAre they the same, and "
      "shall they be linked?",
      table.lostLink.row, pair.key, pair.row, table.lostLink.record, pair.recordName, pair.likeness.score,
      pair.likeness.how, AgreementText(pair, "", "\r\n"));
  return TheDesk().ShowMessageBox(
             {.text = text, .title = "Link", .icon = BoxIcon::Question, .buttons = BoxButtons::YesNo}) ==
         BoxAnswer::Yes;
}

std::vector<const Table*> TablesFrom(const std::string& name) {
  const auto number = TableFromName(name);
  std::vector<const Table*> tables;
  for (const auto* table : Tables()) {
    if (table->lostLink.takeUp != nullptr && (number == enAll || table->number == number)) tables.push_back(table);
  }
  if (tables.empty()) {
    throw UsageError(fmt::format("The rows of {} never go to QuickBooks, and so are not linked by name.", name));
  }
  return tables;
}

void PrintTold(const std::vector<TablePairs>& told, const LinkArguments& arguments) {
  for (const auto& table : told) {
    for (const auto& pair : table.pairs) {
      Print(arguments.json ? JsonOf(*table.table, pair) : PairText(*table.table, pair));
    }
  }
  if (arguments.json) return;
  std::string summary;
  for (const auto& table : told) summary += SummaryOf(table, arguments.apply);
  Print(summary);
  if (!arguments.apply) Print("link: nothing was changed\n");
}

ExitStatus Link(const Options& options, const LinkArguments& arguments) {
  const auto newer = NewerFromName(arguments.keep);
  if (newer != Newer::AsDated && !arguments.apply) {
    throw UsageError("--keep settles which side of new links is newer: it goes with --apply.");
  }
  std::vector<TablePairs> told;
  bool done = false;
  bool ended = false;
  const auto work = [&](Composition& composition) {
    for (const auto* table : TablesFrom(arguments.table)) told.push_back({.table = table});
    CTWQBBridge bridge;
    SetUp(bridge, composition, options);
    done = composition.Run("Link", {DeclaredName(TableFromName(arguments.table))}, [&] {
      if (!arguments.apply) {
        if (!bridge.ConnectToQB(true)) return false;
        return RunAs("ShowPairs", false, [&] {
          const auto session = Vars().g_QBSession;
          for (auto& table : told) ShowPairs(table, *session);
          return true;
        });
      }
      return LinkRows(options.singleUser, [&](QBSessionManager& session) {
        const auto link = [&](TablePairs& table) {
          return LinkPairs(table, newer, session, [&](const LikelyPair& pair) { return Confirms(*table.table, pair); });
        };
        ended = !std::ranges::all_of(told, link);
      });
    });
  };
  bool recorded = true;
  try {
    recorded = RunComposed(options, arguments.apply ? Sides::Written : Sides::Looked, work, [&] {
      return std::ranges::any_of(told, [](const TablePairs& table) {
        return std::ranges::find(table.pairs, PairEnd::Linked, &PairTold::end) != table.pairs.end();
      });
    });
  } catch (const DeskGaveUp&) {
    PrintTold(told, arguments);
    if (!arguments.json) Print("link: ended at a question without an answer\n");
    FlushOutput();
    throw;
  }
  PrintTold(told, arguments);
  bool failed = !done;
  for (const auto& table : told) {
    for (const auto& pair : table.pairs) failed = failed || pair.end == PairEnd::Failed;
  }
  if (!arguments.json && arguments.apply) {
    Print(ended    ? fmt::format("link: ended by {}\n", SignalName(EndSignals::Came()))
          : failed ? "link: failed\n"
                   : "link: done\n");
  }
  FlushOutput();
  if (!recorded) RefuseTranscript(options);
  return failed || ended ? ExitStatus::Failed : ExitStatus::Done;
}

}  // namespace

CommandSyntax LinkCommand() {
  const auto arguments = std::make_shared<LinkArguments>();
  return {
      .name = "link",
      .text = "Find rows and records that are the same, and link them",
      .arguments = {{.name = "TABLE", .text = "Which rows, see below (all)", .target = &arguments->table},
                    {.name = "--apply",
                     .text = "Write the links of exact pairs, and ask for each that is near",
                     .target = &arguments->apply},
                    {.name = "--keep",
                     .text = "Which side of the new pairs counts as newer from then on: billing or quickbooks",
                     .target = &arguments->keep,
                     .value = "SIDE"},
                    {.name = "--json", .text = "Print each pair as a JSON object", .target = &arguments->json}},
      .footer =
          TableHelpText(AllTables::Yes) +
          "Rows without a link beside records of QuickBooks that nothing is linked to. Exact: the same name, full "
          "name or\naccount number; of transactions the same number and date, or without a number the same day, "
          "person and amount.\nNear: the same but for capital letters, punctuation, marks on letters, the kind of "
          "company, a title\nor a small word, words cut short, the order of words, a slip of the pen or an initial, or "
          "exact more than once.\nWithout --apply nothing is changed.\n\nExamples:\n  twqb link clients\n  twqb link "
          "--apply --keep quickbooks --answers "
          "answers.txt",
      .run = [arguments](const Options& options) { return Link(options, *arguments); }};
}

}  // namespace twqb::cli
