#include "cli/commands/CommandLine.h"

#include <fmt/core.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <utility>
#include <variant>
#include <vector>

#include "cli/commands/Commands.h"
#include "cli/commands/HelpText.h"
#include "cli/options/NearestName.h"
#include "cli/screen/HelpLayout.h"
#include "cli/screen/Screen.h"
#include "platform/Text.h"

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

std::string UnknownWord(const Reached& reached, const std::string& word) {
  if (word.starts_with('-') && word.size() > 1) {
    return fmt::format("There is no option \"{}\".{}", word, DidYouMean(word, OptionNames(*reached.app)));
  }
  const auto names = CommandNames(*reached.app);
  if (names.empty()) return fmt::format("\"{}\" is more than \"{}\" takes.", word, reached.name);
  return fmt::format("There is no command \"{} {}\".{}\nThe commands are: {}.", reached.name, word,
                     DidYouMean(word, names), Join(names, ", "));
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
    text = fmt::format("\"{}\" needs a command: {}.", reached.name, Join(names, ", "));
  } else {
    text = fmt::format("{}.", failure.what());
  }
  return fmt::format("{}\nSee \"{} --help\".", text, reached.name);
}

// Adds an argument that goes to a variable or a function; as the parser has them, flags are another kind.
class ArgumentAdder {
 public:
  ArgumentAdder(CLI::App& app, const Argument& argument)
      : app_(app), name_(argument.name), text_(argument.text), value_(argument.value) {}

  CLI::Option* operator()(bool* flag) const { return app_.add_flag(name_, *flag, text_); }
  CLI::Option* operator()(const TakesNothing& take) const { return app_.add_flag_callback(name_, take, text_); }
  template <typename Variable>
  CLI::Option* operator()(Variable* variable) const {
    return app_.add_option(name_, *variable, text_)->type_name(value_);
  }
  CLI::Option* operator()(const TakesText& take) const {
    return Function<std::string>([take, name = name_](const std::string& text) {
      try {
        take(text);
      } catch (const ValueError& failure) {
        throw CLI::ValidationError(name, failure.what());
      }
    });
  }
  CLI::Option* operator()(const TakesNumber& take) const { return Function<int>(take); }
  CLI::Option* operator()(const TakesSeed& take) const { return Function<std::uint64_t>(take); }

 private:
  template <typename Taken>
  CLI::Option* Function(const std::function<void(const Taken&)>& take) const {
    return app_.add_option_function<Taken>(name_, take, text_)->type_name(value_);
  }

  CLI::App& app_;
  std::string name_;
  std::string text_;
  std::string value_;
};

void AddArgument(CLI::App& app, const Argument& argument) {
  auto* option = std::visit(ArgumentAdder(app, argument), argument.target);
  option->required(argument.required);
  if (!argument.group.empty()) option->group(std::string(argument.group));
  // The help tells what the value is, and not its bounds.
  if (argument.range) option->check(CLI::Range(argument.range->least, argument.range->greatest).description(""));
  if (!argument.needs.empty()) option->needs(app.get_option(std::string(argument.needs)));
  if (!argument.excludes.empty()) option->excludes(app.get_option(std::string(argument.excludes)));
}

void AddCommand(CLI::App& above, const CommandSyntax& syntax, ParsedLine& line) {
  auto* command = above.add_subcommand(std::string(syntax.name), std::string(syntax.text));
  for (const auto& argument : syntax.arguments) AddArgument(*command, argument);
  // One without a footer of its own ends its help with that of the command above.
  if (!syntax.footer.empty()) command->footer(syntax.footer);
  if (syntax.run) {
    command->callback([&line, run = syntax.run, restore = syntax.restore] {
      line.command = run;
      line.restore = restore;
    });
  }
  if (!syntax.commands.empty()) command->require_subcommand(1);
  for (const auto& below : syntax.commands) AddCommand(*command, below, line);
}

// In the order in which a mistyped word's answer names them.
std::vector<CommandSyntax> AllCommands() {
  std::vector<CommandSyntax> all = {InitCommand()};
  const auto add = [&](std::vector<CommandSyntax> commands) {
    for (auto& command : commands) all.push_back(std::move(command));
  };
  add(TransferCommands());
  add(DeletionCommands());
  add({DeletionsCommand()});
  add(BackupCommands());
  add({EventsCommand(), StatusCommand(), BalancesCommand(), DiffCommand(), LinkCommand(), CheckCommand()});
  add(LookupCommands());
  add({SettingsCommand(), CompanyCommand(), BillingCommand(), ImportCommand(), DemoCommand()});
  return all;
}

}  // namespace

ParsedLine ParseCommandLine(int argc, const char* const* argv) {
  ParsedLine line;
  CLI::App app("", "twqb");
  app.fallthrough();
  app.require_subcommand(1);
  app.set_help_flag("-h,--help", "Print this help");
  app.set_version_flag("--version", "twqb " TWQB_VERSION "\n", "Print the version");
  for (const auto& argument : OptionArguments(line.options)) AddArgument(app, argument);
  for (const auto& command : AllCommands()) AddCommand(app, command, line);
  try {
    app.parse(argc, argv);
    line.options.command = DeepestCommand(app).name;
  } catch (const CLI::CallForHelp&) {
    line.text = LaidOutHelp(app.get_subcommands().empty() ? std::string(HelpText()) : app.help(), ProseWidth());
  } catch (const CLI::CallForVersion& version) {
    line.text = version.what();
  } catch (const CLI::ParseError& failure) {
    throw UsageError(Explain(app, failure));
  }
  return line;
}

}  // namespace twqb::cli
