#include <fmt/core.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "cli/commands/Commands.h"
#include "cli/screen/Output.h"
#include "cli/workplace/FolderMaker.h"
#include "cli/workplace/Surroundings.h"
#include "platform/Text.h"
#include "samples/firm/FirmPlan.h"

namespace twqb::cli {

namespace {

struct InitArguments {
  bool sample = false;
  int size = 0;  // none is told
  std::uint64_t seed = 1;
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
  if (arguments.size != 0) {
    plan.content = Content::Firm;
    plan.firm = {.clients = arguments.size, .seed = arguments.seed};
  }
  if (!arguments.accepts.empty()) {
    for (const auto& name : Split(arguments.accepts, ',')) plan.company.accepts.push_back(CountryOf(name));
  }
  return plan;
}

std::string FirmIn(const InitArguments& arguments) {
  if (!arguments.sample) return {};
  if (arguments.size == 0) return ", with the sample firm";
  return fmt::format(", with a firm of {} client{}", arguments.size, arguments.size == 1 ? "" : "s");
}

ExitStatus Init(const Options& options, const InitArguments& arguments) {
  const auto folder = std::filesystem::current_path();
  const auto machine = MakeMachine(WorkplaceIn(folder.string()), options.clock);
  MakeFolder(folder, PlanOf(arguments), *machine);
  Print(fmt::format("Made {}, {}, {} and {} in {}{}.\n", kBillingFile, kCompanyFile, kSettingsFile, kRegistryFile,
                    folder.string(), FirmIn(arguments)));
  return ExitStatus::Done;
}

}  // namespace

CommandSyntax InitCommand() {
  constexpr Range kSizes = {.least = 1, .greatest = firm::kMostClients};
  constexpr Range kHostVersions = {.least = 1, .greatest = 99};
  const auto arguments = std::make_shared<InitArguments>();
  return {
      .name = "init",
      .text = "Make billing.db, company.twq, twqb.ini and registry.ini in this folder",
      .arguments = {{.name = "--sample", .text = "Fill both sides with the sample firm", .target = &arguments->sample},
                    {.name = "--size",
                     .text = "Or with a year of a firm of so many clients, 1 to 10000",
                     .target = &arguments->size,
                     .value = "N",
                     .range = kSizes,
                     .needs = "--sample"},
                    {.name = "--seed",
                     .text = "Which firm of that size (1)",
                     .target = TakesSeed([arguments](std::uint64_t seed) { arguments->seed = seed; }),
                     .value = "S",
                     .needs = "--size"},
                    {.name = "--country",
                     .text = "Country of the company file: US, CA, UK or AU (US)",
                     .target = &arguments->country,
                     .value = "COUNTRY"},
                    {.name = "--host-version",
                     .text = "Version that QuickBooks reports (16)",
                     .target = &arguments->hostVersion,
                     .value = "N",
                     .range = kHostVersions},
                    {.name = "--accepts",
                     .text = "Countries whose message forms are answered, with commas between (the country's own)",
                     .target = &arguments->accepts,
                     .value = "LIST"}},
      .footer =
          "The tables of billing.db are made in any case; without --sample they stay empty.\n"
          "A file that is there already is never overwritten: init then makes nothing at all.",
      .run = [arguments](const Options& options) { return Init(options, *arguments); }};
}

}  // namespace twqb::cli
