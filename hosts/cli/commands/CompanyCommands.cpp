#include <fmt/core.h>

#include <memory>
#include <string>
#include <vector>

#include "adapters/companyfile/CompanyConditions.h"
#include "adapters/companyfile/CompanyFile.h"
#include "adapters/companyfile/LineBilling.h"
#include "adapters/companyfile/RefusedDocument.h"
#include "cli/commands/Commands.h"
#include "cli/options/NearestName.h"
#include "cli/runs/Checks.h"
#include "cli/screen/Output.h"
#include "cli/screen/TextFile.h"
#include "cli/workplace/Surroundings.h"
#include "messages/ValueFormat.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

ExitStatus Run(const Options& options, const std::string& file) {
  const auto place = WorkplaceOf(options);
  RequireCompany(place);
  const auto document = ReadTextFile(file);
  const auto machine = MakeMachine(place, options.clock);
  company::CompanyFile companyFile(place.company, *machine,
                                   options.singleUser ? company::FileMode::SingleUser : company::FileMode::MultiUser);
  std::string answer;
  try {
    answer = companyFile.ProcessAny(document);
  } catch (const company::RefusedDocument& refused) {
    Tell(fmt::format("{} {} {}", HexNumber(refused.number()), refused.description(), refused.detail()));
    return ExitStatus::Failed;
  } catch (const PlatformError& refused) {
    Tell(fmt::format("{} {}", HexNumber(refused.number()), refused.description()));
    return ExitStatus::Failed;
  }
  Print(ReplaceControls(answer, [](unsigned control) { return fmt::format("&#{};", control); }));
  if (!answer.ends_with('\n')) Print("\n");
  return ExitStatus::Done;
}

std::vector<std::string> ConditionNames() {
  std::vector<std::string> names;
  for (const auto& condition : company::Conditions()) names.emplace_back(condition.name);
  return names;
}

const company::Condition& ConditionOf(const std::string& name) {
  if (const auto* condition = company::FindCondition(name)) return *condition;
  const auto names = ConditionNames();
  throw UsageError(fmt::format("There is no \"{}\" of a company file to set.{}\nThe names are: {}.", name,
                               DidYouMean(name, names), Join(names, ", ")));
}

ExitStatus Set(const Options& options, const std::string& name, const std::string& value) {
  const auto& condition = ConditionOf(name);
  company::CompanyConditions conditions;
  const auto change = [&] {
    if (condition.set(conditions, value)) return;
    throw UsageError(fmt::format("\"{}\" is no value of {}: take {}.", value, condition.name, condition.allowed));
  };
  change();  // a wrong value is told before anything about the file
  const auto place = WorkplaceOf(options);
  RequireCompany(place);
  const auto machine = MakeMachine(place, options.clock);
  company::CompanyFile file(place.company, *machine);
  conditions = file.GetConditions();
  change();
  file.SetConditions(conditions);
  return ExitStatus::Done;
}

std::string WordsFor(company::LineBilling outcome) {
  using enum company::LineBilling;
  switch (outcome) {
    case Done:
      return {};
    case NoSuchInvoice:
      return "There is no such invoice.";
    case NoSuchLine:
      return "There is no such line.";
    case NotBillable:
      return "The line is not billable.";
    case AlreadyBilled:
      return "The line has been billed already.";
    case OtherCustomer:
      return "The invoice is for another customer or job than the line.";
  }
  return {};
}

ExitStatus Bill(const Options& options, const std::string& invoice, const std::string& line) {
  const auto place = WorkplaceOf(options);
  RequireCompany(place);
  const auto machine = MakeMachine(place, options.clock);
  const auto outcome = company::CompanyFile(place.company, *machine).BillLine(invoice, line);
  if (outcome == company::LineBilling::Done) return ExitStatus::Done;
  Tell(WordsFor(outcome));
  return ExitStatus::Failed;
}

std::string SetFooter() {
  std::string text = "Values, the first one being that of a new file, and what another one leads to:\n";
  for (const auto& condition : company::Conditions()) {
    text += fmt::format("  {:<17}  {}: {}\n", condition.name, condition.allowed, condition.meaning);
  }
  return text +
         "They stand in the file; a session that has begun goes on. \"company run\" needs no session: it meets\n"
         "host-query, personal-data, time-tracking, recovery and closing-date alone.\n"
         "Example:\n  twqb company set permission withheld";
}

ExitStatus Show(const Options& options) {
  const auto place = WorkplaceOf(options);
  RequireCompany(place);
  const auto machine = MakeMachine(place, options.clock);
  company::CompanyFile opened(place.company, *machine);
  const auto summary = opened.Summary();
  const auto conditions = opened.GetConditions();
  std::vector<std::string_view> accepts;
  for (const auto country : summary.options.accepts) accepts.push_back(messages::CountryName(country));

  const auto line = [](std::string_view name, const auto& value) { Print(fmt::format("{:<23}  {}\n", name, value)); };
  line("File", place.company);
  line("Country", messages::CountryName(summary.options.country));
  line("Host version", summary.options.hostVersion);
  line("Message forms", Join(accepts, ","));
  line("Made", IsoDate(Date::FromUnixSeconds(summary.created)) + "Z");
  // By the names that "company set" takes.
  for (const auto& condition : company::Conditions()) line(condition.name, condition.text(conditions));
  for (const auto& kind : summary.kinds) {
    line(kind.name, kind.records);
    for (const auto& part : kind.balances) {
      const auto balance = messages::AmountText(part.balance.ToDouble());
      if (part.type.empty()) {
        line("  balance", balance);
      } else {
        line("  " + part.type, fmt::format("{}, balance {}", part.records, balance));
      }
    }
  }
  return ExitStatus::Done;
}

}  // namespace

CommandSyntax CompanyCommand() {
  const auto file = std::make_shared<std::string>();
  CommandSyntax run = {
      .name = "run",
      .text = "Answer a qbXML document",
      .arguments =
          {{.name = "FILE", .text = "The document; \"-\" is standard input", .target = file.get(), .required = true}},
      .footer =
          "The answer goes to standard output, and the status is 0 whatever the answer says of single requests.\n"
          "A document that is refused as a whole gives 1, with number and text on standard error.",
      .run = [file](const Options& options) { return Run(options, *file); }};

  struct SetArguments {
    std::string name;
    std::string value;
  };
  const auto arguments = std::make_shared<SetArguments>();
  CommandSyntax set = {
      .name = "set",
      .text = "Set how a connection to the company file is met",
      .arguments = {{.name = "NAME", .text = "One of the names below", .target = &arguments->name, .required = true},
                    {.name = "VALUE", .text = "One of its values", .target = &arguments->value, .required = true}},
      .footer = SetFooter(),
      .run = [arguments](const Options& options) { return Set(options, arguments->name, arguments->value); }};

  struct BillArguments {
    std::string invoice;
    std::string line;
  };
  const auto billed = std::make_shared<BillArguments>();
  CommandSyntax bill = {
      .name = "bill",
      .text = "Let an invoice take up a billable line",
      .arguments = {{.name = "INVOICE", .text = "TxnID of the invoice", .target = &billed->invoice, .required = true},
                    {.name = "LINE",
                     .text = "TxnLineID of the line of a check, charge or bill",
                     .target = &billed->line,
                     .required = true}},
      .footer =
          "As somebody at QuickBooks does with \"Time/Costs\": from then on the line is answered as HasBeenBilled, "
          "until the\ninvoice is deleted. No request does that. The lines of the invoice stay as they are.",
      .run = [billed](const Options& options) { return Bill(options, billed->invoice, billed->line); }};

  CommandSyntax show = {.name = "show",
                        .text = "Print what the company file holds",
                        .footer =
                            "How the file was made and how connections to it are met, then each list and each kind of "
                            "transaction with the\n"
                            "number of its records. A balance is the sum of the records' own.",
                        .run = Show};
  return {.name = "company",
          .text = "Work on the company file itself",
          .commands = {std::move(run), std::move(set), std::move(bill), std::move(show)}};
}

}  // namespace twqb::cli
