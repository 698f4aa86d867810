#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <string>

#include "cli/Commands.h"
#include "cli/Composition.h"
#include "cli/FolderMaker.h"
#include "cli/Output.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

struct InitArguments {
  bool sample = false;
  std::string country = "US";
  int hostVersion = company::kDefaultHostVersion;
  std::string accepts;
};

messages::Country CountryOf(const std::string& name) {
  if (const auto country = messages::CountryFromName(Trim(name))) return *country;
  throw UsageError(fmt::format("There is no country \"{}\": take US, CA, UK or AU.", name));
}

FolderPlan PlanOf(const InitArguments& arguments) {
  FolderPlan plan{.company = {.country = CountryOf(arguments.country), .hostVersion = arguments.hostVersion},
                  .content = arguments.sample ? Content::Sample : Content::Empty};
  if (!arguments.accepts.empty()) {
    for (const auto& name : Split(arguments.accepts, ',')) plan.company.accepts.push_back(CountryOf(name));
  }
  return plan;
}

ExitStatus Init(const Options& options, const InitArguments& arguments) {
  const auto folder = std::filesystem::current_path();
  const auto machine = MakeMachine(WorkplaceIn(folder), options.clock);
  MakeFolder(folder, PlanOf(arguments), *machine);
  Print(fmt::format("Made {}, {}, {} and {} in {}{}.\n", kBillingFile, kCompanyFile, kSettingsFile, kRegistryFile,
                    folder.string(), arguments.sample ? ", with the sample firm" : ""));
  return ExitStatus::Done;
}

}  // namespace

void AddInitCommand(CLI::App& app, Command& chosen) {
  constexpr int kGreatestHostVersion = 99;
  const auto arguments = std::make_shared<InitArguments>();
  auto* command = app.add_subcommand("init", "Make billing.db, company.twq, twqb.ini and registry.ini in this folder");
  command->add_flag("--sample", arguments->sample, "Fill both sides with the sample firm");
  command->add_option("--country", arguments->country, "Country of the company file: US, CA, UK or AU (US)")
      ->type_name("COUNTRY");
  command->add_option("--host-version", arguments->hostVersion, "Version that QuickBooks reports (16)")
      ->type_name("N")
      ->check(CLI::Range(1, kGreatestHostVersion).description(""));
  command
      ->add_option("--accepts", arguments->accepts,
                   "Countries whose message forms are answered, with commas between (the country's own)")
      ->type_name("LIST");
  command->footer(
      "The tables of billing.db are made in any case; without --sample they stay empty.\n"
      "A file that is there already is never overwritten: init then makes nothing at all.");
  command->callback(
      [arguments, &chosen] { chosen = [arguments](const Options& options) { return Init(options, *arguments); }; });
}

}  // namespace twqb::cli
