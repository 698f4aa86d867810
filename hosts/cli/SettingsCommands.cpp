#include <fmt/format.h>

#include <memory>
#include <string>

#include "cli/Commands.h"
#include "cli/Output.h"
#include "cli/SettingsStore.h"

namespace twqb::cli {

namespace {

struct SettingsArguments {
  std::string section;
  std::string key;
  std::string value;
};

ExitStatus Get(const Options& options, const SettingsArguments& entry) {
  const auto value = SettingsStore(options).Read(entry.section, entry.key);
  if (!value) {
    Tell(fmt::format("[{}] {} is not set.", entry.section, entry.key));
    return ExitStatus::Failed;
  }
  Print(*value + "\n");
  return ExitStatus::Done;
}

ExitStatus Set(const Options& options, const SettingsArguments& entry) {
  const SettingsStore store(options);
  if (!store.Write(entry.section, entry.key, entry.value)) return ExitStatus::Failed;  // the desk has told why
  // What the store gives back is what a transfer will go by: it trims values, and a file's have 254 characters at most.
  const auto kept = store.Read(entry.section, entry.key).value_or("");
  if (kept == entry.value) return ExitStatus::Done;
  throw UsageError(
      fmt::format("[{}] {} can't hold that value: it reads back as \"{}\".", entry.section, entry.key, kept));
}

ExitStatus List(const Options& options) {
  const auto entries = SettingsStore(options).Entries();
  for (const auto& entry : entries) Print(fmt::format("{}={}\n", entry.name, entry.value));
  if (entries.empty()) Tell("Nothing is set.");
  return ExitStatus::Done;
}

CLI::App* AddEntryCommand(CLI::App& group, const char* name, const char* text, SettingsArguments& entry) {
  auto* command = group.add_subcommand(name, text);
  command->add_option("SECTION", entry.section, "Such as GENERAL, QBSEND_ or QBGET_")->required()->type_name("");
  command->add_option("KEY", entry.key, "Such as Clients_OptMostRecent")->required()->type_name("");
  return command;
}

}  // namespace

void AddSettingsCommands(CLI::App& app, Command& chosen) {
  auto* group = app.add_subcommand("settings", "Read and change the settings of the link");
  group->require_subcommand(1);
  group->footer("They stand in twqb.ini, or with --settings-table in the table TWSTable.");

  const auto entry = std::make_shared<SettingsArguments>();
  auto* get = AddEntryCommand(*group, "get", "Print a value; status 1 when it is not set", *entry);
  get->footer("Example:\n  twqb settings get QBSEND_ Clients_LastSendAt");
  get->callback([entry, &chosen] { chosen = [entry](const Options& options) { return Get(options, *entry); }; });

  auto* set = AddEntryCommand(*group, "set", "Change a value", *entry);
  set->add_option("VALUE", entry->value, "The value; behind \"--\" where it begins with a dash")
      ->required()
      ->type_name("");
  set->footer("Example:\n  twqb settings set QBGET_ Customers_OptNever True");
  set->callback([entry, &chosen] { chosen = [entry](const Options& options) { return Set(options, *entry); }; });

  auto* list = group->add_subcommand("list", "Print every value that is set");
  list->callback([&chosen] { chosen = List; });
}

}  // namespace twqb::cli
