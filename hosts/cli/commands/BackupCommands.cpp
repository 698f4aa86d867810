#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "adapters/backup/BackupError.h"
#include "adapters/system/FileIdentity.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/backup/PuttingBack.h"
#include "cli/commands/Commands.h"
#include "cli/options/NearestName.h"
#include "cli/runs/Checks.h"
#include "cli/runs/Composition.h"
#include "cli/runs/RunBackup.h"
#include "cli/screen/Output.h"
#include "cli/screen/RowText.h"
#include "cli/screen/Screen.h"
#include "cli/workplace/Surroundings.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

namespace fs = std::filesystem;

using backup::MadeBy;
using backup::Part;
using backup::Set;

struct BackupArguments {
  bool list = false;
  bool json = false;
};

struct RestoreArguments {
  std::string set;
  std::string only;
  std::string to;
  bool json = false;
};

// "before send clients", as a list says what a set was made for.
std::string MadeFor(const Set& set) {
  if (set.manifest.by != MadeBy::Hand) return fmt::format("before {}", set.manifest.before);
  return set.manifest.before.empty() ? "by hand" : set.manifest.before;
}

std::uint64_t SizeOf(const Set& set) {
  std::uint64_t sum = 0;
  for (const auto& file : set.manifest.files) sum += file.content.size;
  return sum;
}

std::string InMegabytes(std::uint64_t bytes) {
  constexpr double kMegabyte = 1024 * 1024;
  return fmt::format("{:.1f} MB", static_cast<double>(bytes) / kMegabyte);
}

std::string StateOf(const Set& set) {
  if (set.manifest.condition == backup::Condition::InPart) return "put back in part";
  if (set.isUndone) return "taken back";
  if (set.IsAutomatic() && !set.end) return "broken off";
  return {};
}

std::string JsonOf(const Set& set) {
  static const std::vector<std::string> kNames = {"set",     "made",  "by",     "before",  "bytes", "billing",
                                                  "company", "ended", "undone", "lacking", "twqb",  "inPart"};
  const auto has = [&](Part part) {
    const auto* file = set.Find(part);
    return file != nullptr && file->isThere;
  };
  return JsonValues(
      kNames,
      std::vector<Value>{set.name, set.manifest.made, std::string(backup::NameOf(set.manifest.by)),
                         set.manifest.before.empty() ? Value(Null()) : Value(set.manifest.before),
                         static_cast<std::int64_t>(SizeOf(set)), has(Part::Billing), has(Part::Company),
                         set.end ? Value(set.end->at) : Value(Null()), set.isUndone, Join(set.manifest.lacking, " "),
                         set.manifest.version, set.manifest.condition == backup::Condition::InPart});
}

ExitStatus List(const Options& options, const BackupArguments& arguments) {
  const auto folder = BackupsOf(WorkplaceOf(options));
  const auto sets = folder.Sets();
  for (const auto& name : folder.UnreadableSets()) {
    Tell(
        fmt::format("The set {0} can't be read: {1}/{0}/manifest.json is damaged, or of a later twqb. As long as it "
                    "stands there no set gives its room back.",
                    name, backup::kBackupFolder));
  }
  if (arguments.json) {
    for (const auto& set : sets) Print(JsonOf(set));
    return ExitStatus::Done;
  }
  if (sets.empty()) {
    Tell("There is no set in this folder. \"twqb backup\" makes one.");
    return ExitStatus::Done;
  }
  std::vector<TableLine> lines = {{"SET", "MADE", "FOR", "SIZE", ""}};
  for (const auto& set : sets) {
    lines.push_back({set.name, set.manifest.made, MadeFor(set), InMegabytes(SizeOf(set)), StateOf(set)});
  }
  PrintTable(options, lines, std::array{Align::Whole, Align::Left, Align::Left, Align::Right, Align::Left});
  return ExitStatus::Done;
}

ExitStatus Backup(const Options& options, const BackupArguments& arguments) {
  if (arguments.list) {
    if (const auto reason = WhyNotCompleted(options, WhenHeld::IsTold)) Tell(*reason);
    return List(options, arguments);
  }
  CompleteRestore(options);
  const auto place = WorkplaceOf(options);
  CheckBilling(place);
  const EndSignals signals;
  const TransferLock held(place, options);
  auto folder = BackupsOf(place);
  try {
    const auto set = MakeSet(folder, place, options, PartsOf(place), MadeBy::Hand, {});
    if (arguments.json) {
      Print(JsonOf(set));
    } else {
      Print(fmt::format("Made the set {} in {}: {} of files.\n", set.name, backup::kBackupFolder,
                        InMegabytes(SizeOf(set))));
    }
    for (const auto& sentence : set.manifest.lacking) Tell(sentence);
    return ExitStatus::Done;
  } catch (const backup::BackupEnded&) {
    throw EndedBySignal();
  } catch (const backup::BackupError& failure) {
    throw UsageError(fmt::format("No backup has been made. {}", failure.what()));
  }
}

// The set of that name, or of that beginning of one; without a name the newest one that is of one state.
Set FindSet(const backup::BackupFolder& folder, const std::string& name) {
  const auto sets = folder.Sets();
  if (sets.empty()) throw UsageError("There is no set in this folder to put back. \"twqb backup\" makes one.");
  if (name.empty()) {
    const auto newest = std::find_if(sets.rbegin(), sets.rend(),
                                     [](const Set& set) { return set.manifest.condition == backup::Condition::Whole; });
    return newest == sets.rend() ? sets.back() : *newest;
  }
  std::vector<Set> found;
  std::vector<std::string> names;
  for (const auto& set : sets) {
    names.push_back(set.name);
    if (set.name == name) return set;
    if (set.name.starts_with(name)) found.push_back(set);
  }
  if (found.size() == 1) return found.front();
  if (found.size() > 1) {
    throw UsageError(fmt::format("{} sets begin with \"{}\". See \"twqb backup --list\".", found.size(), name));
  }
  const auto nearest = NearestName(name, names);
  throw UsageError(fmt::format("There is no set \"{}\".{}\nSee \"twqb backup --list\".", name,
                               nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : ""));
}

std::optional<Part> PartOf(const std::string& name) {
  if (name.empty()) return std::nullopt;
  // As people call the other side.
  const auto part = backup::PartFrom(name == "quickbooks" ? "company" : name);
  if (part) return part;
  static const std::vector<std::string> kNames = {"billing", "quickbooks", "settings", "registry"};
  const auto nearest = NearestName(name, kNames);
  throw UsageError(fmt::format("--only takes billing, quickbooks, settings or registry, and not \"{}\".{}", name,
                               nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : ""));
}

bool Asks(const Options& options, const std::string& text) {
  Composition composition(WorkplaceOf(options), ReadSurroundings(options));
  return composition.Seams().desk->ShowMessageBox(
             {.text = text, .title = "Restore", .icon = BoxIcon::Warning, .buttons = BoxButtons::YesNo}) ==
         BoxAnswer::Yes;
}

struct CopiedOut {
  backup::KeptFile file;
  std::string copy;
};

// Two files of one name, from two folders, have that of their part ahead of it.
std::vector<CopiedOut> CopiesOf(const Set& set, std::optional<Part> only, const std::string& to) {
  std::error_code failure;
  if (!fs::is_directory(to, failure)) throw UsageError(fmt::format("There is no folder {}.", to));
  std::vector<CopiedOut> copies;
  std::map<std::string, int> names;
  for (const auto& file : set.manifest.files) {
    if (!file.isThere || (only && *only != file.part)) continue;
    ++names[fs::path(file.path).filename().string()];
    copies.push_back({.file = file});
  }
  for (auto& [file, copy] : copies) {
    auto name = fs::path(file.path).filename().string();
    if (names[name] > 1) name = fmt::format("{}-{}", backup::NameOf(file.part), name);
    copy = (fs::path(to) / name).string();
    if (fs::exists(copy, failure)) {
      throw UsageError(fmt::format("Nothing has been copied: {} is there already. Name an empty folder.", copy));
    }
  }
  if (copies.empty()) RaiseForNothing(set, only);
  return copies;
}

ExitStatus CopyOut(const backup::BackupFolder& folder, const Set& set, std::optional<Part> only,
                   const RestoreArguments& arguments) {
  static const std::vector<std::string> kNames = {"what", "file"};
  const auto copies = CopiesOf(set, only, arguments.to);
  try {
    for (const auto& [file, copy] : copies) {
      folder.WriteTo(file, copy);
      Print(arguments.json ? JsonValues(kNames, std::vector<Value>{std::string(backup::NameOf(file.part)), copy})
                           : copy + "\n");
    }
  } catch (const backup::BackupError& reason) {
    throw UsageError(fmt::format("Not all of the set {} has been copied. {}", set.name, reason.what()));
  }
  return ExitStatus::Done;
}

void PrintDifferences(const Options& options, const std::vector<SideDifferences>& sides, bool json) {
  if (json) {
    Print(DifferenceLines(sides));
  } else {
    PrintDifferenceTable(options, sides);
  }
}

bool AreNone(const std::vector<SideDifferences>& sides) { return std::ranges::all_of(sides, &SideDifferences::IsNone); }

// `done`: what was, or nothing.
void PrintEnd(const Value& done, const Set& set, const std::string& kept) {
  static const std::vector<std::string> kNames = {"done", "set", "kept"};
  Print(JsonValues(kNames, std::vector<Value>{done, set.name, kept.empty() ? Value(Null()) : Value(kept)}));
}

void PrintNotDone(const std::string& what, const Set& set, bool json) {
  if (json) {
    PrintEnd(Null(), set, {});
  } else {
    Print(fmt::format("{}: not done\n", what));
  }
}

void PrintDone(const std::string& what, const Set& set, const std::string& kept, bool json,
               backup::Condition condition = backup::Condition::Whole) {
  const bool isInPart = !kept.empty() && condition == backup::Condition::InPart;
  const auto warning = fmt::format(
      "What was there before, put back in part, is kept as the set {}: to look into, for with both sides "
      "of it a transfer would double records. \"twqb undo\" does not bring it back.",
      kept);
  if (json) {
    PrintEnd(what, set, kept);
    if (isInPart) Tell(warning);
    return;
  }
  Print(fmt::format("{}: done\n", what));
  if (isInPart) {
    Print(warning + "\n");
  } else if (!kept.empty()) {
    Print(fmt::format("What was there before is kept: \"twqb restore {}\" brings it back.\n", kept));
  }
}

ExitStatus Restore(const Options& options, const RestoreArguments& arguments) {
  const auto only = PartOf(arguments.only);
  const auto brokenOff = WhyNotCompleted(options, arguments.to.empty() ? WhenHeld::Raises : WhenHeld::IsTold);
  const bool isInItsPlace = !arguments.set.empty() && !only;
  if (brokenOff && arguments.to.empty() && !isInItsPlace) throw UsageError(*brokenOff);
  if (brokenOff) Tell(*brokenOff);
  const auto place = WorkplaceOf(options);
  const auto set = FindSet(BackupsOf(place), arguments.set);
  if (!arguments.to.empty()) return CopyOut(BackupsOf(place), set, only, arguments);
  if (brokenOff) RequireInPlaceOfBrokenOff(set);
  const auto condition = brokenOff ? backup::Condition::InPart : backup::Condition::Whole;
  PuttingBack putting(options, set, only, condition);
  const auto differences = putting.Differences();
  const auto label = fmt::format("restore {}", set.name);
  if (AreNone(differences)) {
    Tell(fmt::format("Nothing has changed since the set {} was made, {}, {}.", set.name, set.manifest.made,
                     MadeFor(set)));
    if (arguments.json) PrintDone(label, set, {}, arguments.json);
    return ExitStatus::Done;
  }
  if (!arguments.json) {
    Print(fmt::format("The set {} was made {}, {}. Since then:\n\n", set.name, set.manifest.made, MadeFor(set)));
  }
  PrintDifferences(options, differences, arguments.json);
  FlushOutput();
  for (const auto& side : differences) {
    if (!side.isFileAlone) continue;
    Tell(fmt::format("No row of {} differs from the set, but the file does. It may be damaged where no row was read.",
                     backup::CalledOf(side.part)));
  }
  for (const auto& sentence : set.manifest.lacking) Tell(sentence);
  if (set.manifest.condition == backup::Condition::InPart) {
    Tell(fmt::format(
        "The set {} is what a restore had left that was broken off: some of its files were put back and some "
        "were not. With both sides of it a transfer would double records.",
        set.name));
  }
  const auto question = fmt::format(
      "Do you want to put back the set {}?\r\n\r\nWhat is new or was changed since {} goes; what is gone comes back.",
      set.name, set.manifest.made);
  if (!Asks(options, question)) {
    PrintNotDone(label, set, arguments.json);
    return ExitStatus::Failed;
  }
  PrintDone(label, set, putting.PutBack(MadeBy::Restore, label), arguments.json, condition);
  return ExitStatus::Done;
}

// Whether the run was one on these two databases. A company file that is not there is none to ask for: QuickBooks had
// one open that was picked in the run.
bool IsOn(const Set& set, const std::vector<backup::PartFile>& parts) {
  for (const auto part : {Part::Billing, Part::Company}) {
    const auto own = std::ranges::find(parts, part, &backup::PartFile::part);
    const auto* kept = set.Find(part);
    std::error_code ignored;
    const auto path = own == parts.end() ? std::string() : own->path;
    const auto keptPath = kept == nullptr ? std::string() : ResolvedPath(kept->path);
    const bool isPicked = part == Part::Company && !path.empty() && !fs::exists(path, ignored);
    if (path != keptPath && !isPicked) return false;
  }
  return true;
}

std::string DatabasesOf(const Set& set) {
  std::vector<std::string> paths;
  for (const auto& file : set.manifest.files) {
    if (backup::IsDatabase(file.part)) paths.push_back(file.path);
  }
  return Join(paths, " and ");
}

// The last run on the two databases of the workplace, of those that wrote and have not been taken back.
Set LastRun(const backup::BackupFolder& folder, const Workplace& place) {
  auto sets = folder.Sets();
  std::erase_if(sets, [](const Set& set) {
    // A restore that was broken off is completed by now, with an end, or had put nothing back. One in the place of such
    // a restore has none.
    const bool hasNotBegun =
        set.manifest.by == MadeBy::Restore && !set.end && set.manifest.condition == backup::Condition::Whole;
    return !set.IsAutomatic() || set.isUndone || set.manifest.by == MadeBy::Undo || hasNotBegun;
  });
  if (sets.empty()) {
    throw UsageError("There is nothing to take back: no transfer with a set before it is known in this folder.");
  }
  const auto parts = PartsOf(place);
  const auto last = std::find_if(sets.rbegin(), sets.rend(), [&](const Set& set) { return IsOn(set, parts); });
  if (last != sets.rend()) return *last;
  throw UsageError(
      fmt::format("There is nothing to take back of the files that are meant. The last run here, \"{}\" of {}, was on "
                  "{}.\nName them with --billing and --company.",
                  sets.back().manifest.before, sets.back().manifest.made, DatabasesOf(sets.back())));
}

ExitStatus Undo(const Options& options, bool json) {
  const auto place = WorkplaceOf(options);
  const auto set = LastRun(BackupsOf(place), place);
  const auto label = fmt::format("undo {}", set.manifest.before);
  if (set.manifest.condition == backup::Condition::InPart) {
    throw UsageError(
        fmt::format("\"{}\" of {} is not taken back: before it the files were those of a restore that was broken off, "
                    "some put back and some not, and a transfer would double records.\n\"twqb restore SET\" puts back "
                    "another set, after showing what has changed.",
                    set.manifest.before, set.manifest.made));
  }
  if (!set.end) {
    throw UsageError(
        fmt::format("\"{}\" of {} was broken off, so what it did and what came later can't be told apart.\n\"twqb "
                    "restore {}\" puts back how everything was before it, after showing what has changed.",
                    set.manifest.before, set.manifest.made, set.name));
  }
  PuttingBack putting(options, set, std::nullopt);
  const auto since = putting.ChangedSince(*set.end);
  if (!since.empty()) {
    PrintDifferences(options, since, json);
    FlushOutput();
    std::string entries;
    for (const auto& side : since) {
      for (const auto& entry : side.entries) entries += fmt::format("\nchanged: {}", entry);
    }
    throw UsageError(
        fmt::format("\"{}\" is not taken back: something has changed since it ended, {}, and would be lost.{}\n\"twqb "
                    "restore {}\" puts back how everything was before it all the same, after asking.",
                    set.manifest.before, set.end->at, entries, set.name));
  }
  if (!json) {
    Print(fmt::format("\"{}\" of {} is taken back. It had done:\n\n", set.manifest.before, set.manifest.made));
  }
  // Whole on any screen: it can't be asked for again.
  auto whole = options;
  whole.wide = true;
  PrintDifferences(whole, putting.Differences(), json);
  FlushOutput();
  const auto kept = putting.PutBack(MadeBy::Undo, label);
  PrintDone(label, set, kept, json);
  return ExitStatus::Done;
}

CommandSyntax BackupSyntax() {
  const auto arguments = std::make_shared<BackupArguments>();
  return {
      .name = "backup",
      .text = "Keep both sides, the settings and the registry values as one set",
      .arguments = {{.name = "--list", .text = "List the sets instead, the oldest first", .target = &arguments->list},
                    {.name = "--json", .text = "Print each set as a JSON object", .target = &arguments->json}},
      .footer =
          "Sets stand in the folder backups. One is made before every run that writes both sides, and the last ten of\n"
          "these are kept for each pair of files; those made by this command stay until they are removed by hand. See\n"
          "restore and undo.",
      .run = [arguments](const Options& options) { return Backup(options, *arguments); },
      .restore = BrokenOffRestore::LeftToCommand};
}

CommandSyntax RestoreSyntax() {
  const auto arguments = std::make_shared<RestoreArguments>();
  return {
      .name = "restore",
      .text = "Put a set back, or one side of it, after showing what has changed since",
      .arguments = {{.name = "SET", .text = "Its name, or the beginning of it (the newest)", .target = &arguments->set},
                    {.name = "--only",
                     .text = "Put back one part alone: billing, quickbooks, settings or registry",
                     .target = &arguments->only,
                     .value = "PART"},
                    {.name = "--to",
                     .text = "Write the files of the set into DIR instead, and change nothing",
                     .target = TakesFileName(arguments->to),
                     .value = "DIR"},
                    {.name = "--json", .text = "Print what has changed as JSON objects", .target = &arguments->json}},
      .footer =
          "How everything was before is kept as a set, too. A restore that is broken off is completed by the next run\n"
          "of twqb in the folder.\n\nExamples:\n  twqb restore\n  twqb restore 2026-11-22-1430 --only billing",
      .run = [arguments](const Options& options) { return Restore(options, *arguments); },
      .restore = BrokenOffRestore::LeftToCommand};
}

CommandSyntax UndoSyntax() {
  const auto json = std::make_shared<bool>(false);
  return {.name = "undo",
          .text = "Take the last transfer back, from the set that was made before it",
          .arguments = {{.name = "--json", .text = "Print what it had done as JSON objects", .target = json.get()}},
          .footer =
              "It refuses when either side has changed since the transfer ended, and says where. Another undo takes "
              "back the\ntransfer before.",
          .run = [json](const Options& options) { return Undo(options, *json); }};
}

}  // namespace

std::vector<CommandSyntax> BackupCommands() { return {BackupSyntax(), RestoreSyntax(), UndoSyntax()}; }

}  // namespace twqb::cli
