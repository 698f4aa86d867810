#include <fmt/core.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/commands/Commands.h"
#include "cli/screen/Output.h"
#include "cli/settings/SettingNames.h"
#include "cli/settings/SettingsDescribe.h"
#include "cli/settings/SettingsStore.h"

namespace twqb::cli {

namespace {

struct SettingsArguments {
  std::string section;
  std::string key;
  std::string value;
  bool force = false;
};

ExitStatus Get(const Options& options, const SettingsArguments& entry) {
  const auto value = SettingsStore(options).Read(entry.section, entry.key);
  if (!value) {
    Tell(fmt::format("{} is not set.{}", FullNameOf(entry.section, entry.key),
                     NearestSetting(entry.section, entry.key)));
    return ExitStatus::Failed;
  }
  Print(*value + "\n");
  return ExitStatus::Done;
}

ExitStatus Set(const Options& options, const SettingsArguments& entry) {
  if (!entry.force) CheckSetting(options, entry.section, entry.key, entry.value);
  const SettingsStore store(options);
  if (!store.Write(entry.section, entry.key, entry.value)) return ExitStatus::Failed;  // the desk has told why
  // What the store gives back is what a transfer will go by: it trims values, and a file's have 254 characters at most.
  const auto kept = store.Read(entry.section, entry.key).value_or("");
  if (kept == entry.value) return ExitStatus::Done;
  if (const auto why = store.WhyNotWritten(entry.section, entry.key, entry.value)) {
    throw UsageError(
        fmt::format("The settings file {} can't be written: {}. Nothing has been changed.", store.File(), *why));
  }
  throw UsageError(
      fmt::format("{} can't hold that value: it reads back as \"{}\".", FullNameOf(entry.section, entry.key), kept));
}

ExitStatus List(const Options& options) {
  const auto entries = SettingsStore(options).Entries();
  for (const auto& entry : entries) Print(fmt::format("{}={}\n", entry.name, entry.value));
  if (entries.empty()) Tell("Nothing is set.");
  return ExitStatus::Done;
}

std::vector<Argument> NameOf(const std::shared_ptr<SettingsArguments>& entry) {
  return {
      {.name = "SECTION", .text = "Such as GENERAL, QBSEND_ or QBGET_", .target = &entry->section, .required = true},
      {.name = "KEY", .text = "Such as Clients_OptMostRecent", .target = &entry->key, .required = true}};
}

CommandSyntax GetCommand() {
  const auto entry = std::make_shared<SettingsArguments>();
  return {.name = "get",
          .text = "Print a value; status 1 when it is not set",
          .arguments = NameOf(entry),
          .footer = "Example:\n  twqb settings get QBSEND_ Clients_LastSendAt",
          .run = [entry](const Options& options) { return Get(options, *entry); }};
}

CommandSyntax SetCommand() {
  const auto entry = std::make_shared<SettingsArguments>();
  auto arguments = NameOf(entry);
  arguments.push_back({.name = "VALUE",
                       .text = "The value; behind \"--\" where it begins with a dash",
                       .target = &entry->value,
                       .required = true});
  arguments.push_back({.name = "--force",
                       .text = "Set what the link does not read, too, or makes nothing of",
                       .target = &entry->force});
  return {.name = "set",
          .text = "Change a value",
          .arguments = std::move(arguments),
          .footer =
              "A setting that there is not, and a value that it does not take, are refused.\n\nExample:\n  twqb "
              "settings set QBGET_ Customers_OptNever True",
          .run = [entry](const Options& options) { return Set(options, *entry); }};
}

CommandSyntax DescribeCommand() {
  const auto word = std::make_shared<std::string>();
  const auto json = std::make_shared<bool>(false);
  return {.name = "describe",
          .text = "Print what settings there are, what they do, and what holds without them",
          .arguments = {{.name = "WORD", .text = "A table, a section, or a part of a key", .target = word.get()},
                        {.name = "--json", .text = "Print each setting as a JSON object", .target = json.get()}},
          .footer = "Examples:\n  twqb settings describe\n  twqb settings describe clients",
          .run = [word, json](const Options&) {
            return DescribeSettings(*word, *json ? RowForm::Json : RowForm::Readable);
          }};
}

}  // namespace

CommandSyntax SettingsCommand() {
  return {.name = "settings",
          .text = "Read and change the settings of the link",
          .footer = "They stand in twqb.ini, or with --settings-table in the table TWSTable.",
          .commands = {GetCommand(),
                       SetCommand(),
                       {.name = "list", .text = "Print every value that is set", .run = List},
                       DescribeCommand()}};
}

}  // namespace twqb::cli
