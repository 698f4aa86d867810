#include "cli/workplace/FolderMaker.h"

#include <fmt/core.h>

#include <array>
#include <pugixml.hpp>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/ProfileText.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/Options.h"
#include "cli/screen/TextFile.h"
#include "cli/workplace/CompanyAnswer.h"
#include "cli/workplace/MakingFolder.h"
#include "cli/workplace/SampleTexts.h"
#include "cli/workplace/SqlScript.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "samples/firm/Firm.h"

namespace twqb::cli {

namespace fs = std::filesystem;

namespace {

constexpr std::array kFileNames = {kBillingFile, kCompanyFile, kSettingsFile, kRegistryFile};

constexpr std::string_view kSettingsText =
    "; Settings of the link with QuickBooks. The link itself keeps the company file and the times of the last\r\n"
    "; transfers here; the filters of a table are keys such as Clients_OptMostRecent in [QBSEND_] and\r\n"
    "; Customers_OptMostRecent in [QBGET_]. \"twqb settings describe\" tells all of them.\r\n"
    "\r\n"
    "[GENERAL]\r\n";
constexpr std::string_view kRegistryText =
    "; What the billing product keeps in the registry of the user: the database file that the first transfer offers\r\n"
    "; to back up, and whether the link was started from the menu of QuickBooks.\r\n"
    "\r\n";

// Between the steps, each of which is short: what is made so far goes, and nothing is in place.
void EndWhereAsked() {
  if (EndSignals::Came() != 0) throw EndedBySignal();
}

void MakeBilling(const Workplace& made, const FolderPlan& plan) {
  CreateSqliteDatabase((fs::path(made.folder) / kBillingFile).string());
  const auto connection = SqliteProvider().CreateConnection();
  connection->SetConnectionString(made.billing);
  connection->Open();
  connection->Execute("BEGIN", nullptr);
  for (const auto& statement : SplitStatements(BillingSchema())) connection->Execute(statement, nullptr);
  if (plan.content == Content::Sample || plan.content == Content::SampleWithoutBookings) {
    for (const auto script : {SampleFirm(), SampleWork(), SampleProjects(), SampleCodes(), SampleHours(),
                              SampleInvoices(), SamplePayments(), SampleExpenses()}) {
      for (const auto& statement : SplitStatements(script)) connection->Execute(statement, nullptr);
    }
  }
  if (plan.content == Content::Firm) {
    firm::WriteBilling(plan.firm, [&](const std::string& statement) {
      EndWhereAsked();
      connection->Execute(statement, nullptr);
    });
  }
  connection->Execute("COMMIT", nullptr);
  connection->Close();
}

// One document of the sample, and the company files that it goes into.
enum class Holds : bool { Lists, Bookings };
struct SampleDocument {
  std::string_view (*text)();
  Holds holds = Holds::Lists;
  messages::Countries editions = messages::kEverywhere;
  messages::Countries forms = messages::kEverywhere;
};
// In the order of their references. The customers, which refer to nothing, keep the first identifiers.
constexpr SampleDocument kSampleDocuments[] = {
    {.text = SampleCustomers},
    {.text = SampleAccounts},
    {.text = SamplePlainLists},
    {.text = SampleVendors},
    {.text = SampleEmployees},
    {.text = SampleItems},
    {.text = SampleTime, .holds = Holds::Bookings},
    {.text = SampleMoney, .holds = Holds::Bookings},
    {.text = SampleCosts, .holds = Holds::Bookings},
    {.text = SampleSalesTaxItems, .editions = messages::kUnitedStates, .forms = messages::kUnitedStates},
    {.text = SampleTaxedMoney,
     .holds = Holds::Bookings,
     .editions = messages::kUnitedStates,
     .forms = messages::kUnitedStates},
};

// A form that the company file answers in.
messages::Form FormFor(const company::CompanyOptions& options) {
  using messages::Country;
  const auto accepted = options.accepts.empty() ? options.country : options.accepts.front();
  // An Australian file answers everything but the host query in the form of the United States.
  return {.country = accepted == Country::AU ? Country::US : accepted};
}

void RequireSuccess(const std::string& answer) {
  pugi::xml_document document;
  if (!document.load_string(answer.c_str())) throw std::runtime_error("The company file gave no answer: " + answer);
  for (const auto& response : document.child("QBXML").child("QBXMLMsgsRs")) RequireTaken(response);
}

void MakeCompany(const Workplace& made, const FolderPlan& plan, Machine& machine) {
  company::CreateCompanyFile(made.company, plan.company, machine);
  if (plan.content == Content::Empty) return;
  company::CompanyFile file(made.company, machine);
  const auto form = FormFor(plan.company);
  const auto versionLine = fmt::format("<?qbxml version=\"{}\"?>", messages::FormTag(form));
  const auto process = [&](std::string_view document) {
    EndWhereAsked();
    // No other field of the documents is known to some forms alone.
    RequireSuccess(file.Process(ReplaceAll(document, "<?qbxml version=\"3.0\"?>", versionLine)));
  };
  if (plan.content == Content::Firm) return firm::WriteCompany(plan.firm, process);
  const auto isIn = [](messages::Country country, messages::Countries countries) {
    return (static_cast<messages::Countries>(country) & countries) != 0;
  };
  for (const auto& sample : kSampleDocuments) {
    if (plan.content == Content::SampleWithoutBookings && sample.holds == Holds::Bookings) continue;
    if (!isIn(plan.company.country, sample.editions) || !isIn(form.country, sample.forms)) continue;
    process(sample.text());
  }
}

std::string RegistryText(const fs::path& folder) {
  const auto file = (folder / kBillingFile).string();
  auto text = ProfileText(std::string(kRegistryText)).With("TW80", "Database", file);
  if (text) text = ProfileText(*text).With("TW80\\GENERAL", "QB_MNUSUBSCRIBE", "0");
  if (!text) throw UsageError(fmt::format("A settings file can't hold the path {}.", file));
  return *text;
}

// A text about a file, as it will be called once it is in place: the folder of the making is nobody's to look for.
std::string InPlace(std::string_view text, const MakingFolder& making, const fs::path& folder) {
  return ReplaceAll(text, making.Path().string(), folder.string());
}

[[noreturn]] void RefuseFolder(const fs::path& folder, std::string_view why) {
  throw UsageError(fmt::format("The files can't be made in the folder {}: {}", folder.string(), why));
}

void MakeIn(const MakingFolder& making, const fs::path& folder, const FolderPlan& plan, Machine& machine) {
  const auto made = WorkplaceIn(making.Path().string());
  MakeBilling(made, plan);
  EndWhereAsked();
  MakeCompany(made, plan, machine);
  EndWhereAsked();
  WriteTextFile(made.settings, kSettingsText);
  WriteTextFile(made.registry, RegistryText(folder));
  // The databases are their owner's, as all is that is recorded of them.
  for (const auto* name : {kBillingFile, kCompanyFile}) {
    fs::permissions(making.Path() / name, fs::perms::owner_read | fs::perms::owner_write);
  }
  making.PutInPlace();
}

}  // namespace

void MakeFolder(const fs::path& folder, const FolderPlan& plan, Machine& machine) {
  const EndSignals signals;
  RemoveUnfinished(folder, kFileNames);
  for (const auto* name : kFileNames) {
    std::error_code ignored;
    if (fs::exists(fs::symlink_status(folder / name, ignored))) RefuseExisting(folder / name);
  }
  const MakingFolder making(folder, kFileNames);
  try {
    MakeIn(making, folder, plan, machine);
  } catch (const EndedBySignal&) {
    throw;
  } catch (const UsageError& failure) {
    throw UsageError(InPlace(failure.what(), making, folder));
  } catch (const PlatformError& failure) {
    RefuseFolder(folder, InPlace(failure.description(), making, folder));
  } catch (const fs::filesystem_error& failure) {
    RefuseFolder(folder, failure.code().message());
  }
}

}  // namespace twqb::cli
