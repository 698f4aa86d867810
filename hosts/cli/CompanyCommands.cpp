#include <fmt/format.h>
#include <fmt/ranges.h>

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "cli/Checks.h"
#include "cli/Commands.h"
#include "cli/Composition.h"
#include "cli/Output.h"
#include "cli/TextFile.h"
#include "platform/PlatformError.h"

namespace twqb::cli {

namespace {

bool IsSubscription(const std::string& text) {
  pugi::xml_document document;
  // What can't be read is refused by the company file.
  return document.load_buffer(text.data(), text.size()) &&
         document.child("QBXML").child("QBXMLSubscriptionMsgsRq") != nullptr;
}

ExitStatus Run(const Options& options, const std::string& file) {
  const auto place = WorkplaceOf(options);
  RequireCompany(place);
  const auto document = ReadTextFile(file);
  const auto machine = MakeMachine(place, options.clock);
  company::CompanyFile companyFile(place.company, *machine,
                                   options.singleUser ? company::FileMode::SingleUser : company::FileMode::MultiUser);
  std::string answer;
  try {
    answer = IsSubscription(document) ? companyFile.ProcessSubscription(document) : companyFile.Process(document);
  } catch (const PlatformError& refused) {
    Tell(fmt::format("{} {}", HexNumber(refused.number()), refused.description()));
    return ExitStatus::Failed;
  }
  Print(answer);
  if (!answer.ends_with('\n')) Print("\n");
  return ExitStatus::Done;
}

ExitStatus Show(const Options& options) {
  const auto place = WorkplaceOf(options);
  RequireCompany(place);
  const auto machine = MakeMachine(place, options.clock);
  const auto summary = company::CompanyFile(place.company, *machine).Summary();
  std::vector<std::string_view> accepts;
  for (const auto country : summary.options.accepts) accepts.push_back(messages::CountryName(country));

  const auto line = [](std::string_view name, const auto& value) { Print(fmt::format("{:<14}  {}\n", name, value)); };
  line("File", place.company);
  line("Country", messages::CountryName(summary.options.country));
  line("Host version", summary.options.hostVersion);
  line("Message forms", fmt::format("{}", fmt::join(accepts, ",")));
  line("Made", IsoDate(Date::FromUnixSeconds(summary.created)) + "Z");
  for (const auto& kind : summary.kinds) line(kind.name, kind.records);
  return ExitStatus::Done;
}

}  // namespace

void AddCompanyCommands(CLI::App& app, Command& chosen) {
  auto* group = app.add_subcommand("company", "Work on the company file itself");
  group->require_subcommand(1);

  const auto file = std::make_shared<std::string>();
  auto* run = group->add_subcommand("run", "Answer a qbXML document");
  run->add_option("FILE", *file, "The document; \"-\" is standard input")->required()->type_name("");
  run->footer(
      "The answer goes to standard output, and the status is 0 whatever the answer says of single requests.\n"
      "A document that is refused as a whole gives 1, with number and text on standard error.");
  run->callback([file, &chosen] { chosen = [file](const Options& options) { return Run(options, *file); }; });

  auto* show = group->add_subcommand("show", "Print what the company file holds");
  show->callback([&chosen] { chosen = Show; });
}

}  // namespace twqb::cli
