#include "cli/CommandLine.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <vector>

#include "cli/HelpText.h"
#include "cli/NearestName.h"

namespace twqb::cli {

namespace {

// The command that the line got to, and how it is called.
struct Reached {
  const CLI::App* app = nullptr;
  std::string name;
};

Reached DeepestCommand(const CLI::App& app) {
  Reached reached{.app = &app, .name = app.get_name()};
  while (!reached.app->get_subcommands().empty()) {
    reached.app = reached.app->get_subcommands().front();
    reached.name += " " + reached.app->get_name();
  }
  return reached;
}

std::vector<std::string> CommandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const auto* command : app.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> OptionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* level = &app; level != nullptr; level = level->get_parent()) {
    for (const auto* option : level->get_options()) {
      for (const auto& name : option->get_lnames()) names.push_back("--" + name);
    }
  }
  return names;
}

std::string DidYouMean(std::string_view word, const std::vector<std::string>& names) {
  const auto nearest = NearestName(word, names);
  return nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : "";
}

std::string UnknownWord(const Reached& reached, const std::string& word) {
  if (word.starts_with('-') && word.size() > 1) {
    return fmt::format("There is no option \"{}\".{}", word, DidYouMean(word, OptionNames(*reached.app)));
  }
  const auto names = CommandNames(*reached.app);
  if (names.empty()) return fmt::format("\"{}\" is more than \"{}\" takes.", word, reached.name);
  return fmt::format("There is no command \"{} {}\".{}\nThe commands are: {}.", reached.name, word,
                     DidYouMean(word, names), fmt::join(names, ", "));
}

std::string Explain(const CLI::App& app, const CLI::ParseError& failure) {
  const auto reached = DeepestCommand(app);
  const auto kind = static_cast<CLI::ExitCodes>(failure.get_exit_code());
  const bool saysLittle = kind == CLI::ExitCodes::RequiredError || kind == CLI::ExitCodes::ExtrasError;
  const auto names = CommandNames(*reached.app);
  const auto rest = app.remaining(true);
  std::string text;
  if (saysLittle && !rest.empty()) {
    text = UnknownWord(reached, rest.front());
  } else if (kind == CLI::ExitCodes::RequiredError && !names.empty()) {
    text = fmt::format("\"{}\" needs a command: {}.", reached.name, fmt::join(names, ", "));
  } else {
    text = fmt::format("{}.", failure.what());
  }
  return fmt::format("{}\nSee \"{} --help\".", text, reached.name);
}

}  // namespace

ParsedLine ParseCommandLine(int argc, const char* const* argv) {
  ParsedLine line;
  CLI::App app("", "twqb");
  app.fallthrough();
  app.require_subcommand(1);
  app.set_help_flag("-h,--help", "Print this help");
  app.set_version_flag("--version", "twqb " TWQB_VERSION "\n", "Print the version");
  AddOptions(app, line.options);
  AddInitCommand(app, line.command);
  AddTransferCommands(app, line.command);
  AddDeletionCommands(app, line.command);
  AddEventsCommands(app, line.command);
  AddStatusCommand(app, line.command);
  AddLookupCommands(app, line.command);
  AddSettingsCommands(app, line.command);
  AddCompanyCommands(app, line.command);
  AddBillingCommands(app, line.command);
  AddDemoCommand(app, line.command);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    line.text = app.get_subcommands().empty() ? std::string(HelpText()) : app.help();
  } catch (const CLI::CallForVersion& version) {
    line.text = version.what();
  } catch (const CLI::ParseError& failure) {
    throw UsageError(Explain(app, failure));
  }
  return line;
}

}  // namespace twqb::cli
