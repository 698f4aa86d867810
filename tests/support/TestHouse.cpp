#include "tests/support/TestHouse.h"

#include <fmt/core.h>

#include <filesystem>
#include <sstream>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/companyfile/CompanyTransport.h"
#include "services/ModuleVariables.h"
#include "tests/support/BillingSchema.h"

namespace twqb {

TestHouse::TestHouse(HouseOptions options)
    : ownFolder_(options.folder.empty() ? std::optional<TemporaryFolder>(std::in_place) : std::nullopt),
      folder_(ownFolder_ ? ownFolder_->Path() : options.folder),
      machine({.libraryFolder = folder_, .registryFile = folder_ + "/registry.ini"},
              {.now = options.now, .zone = options.zone, .seed = 1}),
      desk(ParseAnswers(options.answers)),
      findsLostLinks_(options.findsLostLinks),
      provider_(options.provider) {
  const bool makesBilling = !std::filesystem::exists(Path("billing.db"));
  if (makesBilling) CreateSqliteDatabase(Path("billing.db"));
  if (!std::filesystem::exists(Path("company.twq"))) {
    company::CreateCompanyFile(Path("company.twq"), options.company, machine);
  }
  quickbooks = std::make_unique<company::CompanyTransportFactory>(Path("company.twq"), machine);
  connection_ = database.CreateConnection();
  connection_->SetConnectionString(ConnectString());
  connection_->Open();
  if (!makesBilling) return;
  MakeBillingSchema(*connection_);
}

TestHouse::~TestHouse() {
  // The library lets go of the seams before they go.
  Vars() = ModuleVariables{};
  connection_.reset();
}

Platform TestHouse::Seams() {
  return {
      .database = &database, .quickbooks = quickbooks.get(), .desk = &desk, .machine = &machine, .callback = &callback};
}

void TestHouse::Enter() { Enter(Seams()); }

void TestHouse::Enter(const Platform& platform) {
  Vars() = ModuleVariables{};
  Vars().platform = platform;
  Vars().tables = tables;
  Vars().pull = pull;
  Vars().findsLostLinks = findsLostLinks_;
  Vars().g_ConnectString = ConnectString();
  Vars().g_TWSettingsPath = Path("twqb.ini");
}

std::string TestHouse::ConnectString() const {
  return fmt::format("Provider={};Data Source={}", provider_, Path("billing.db"));
}

void TestHouse::Sql(std::string_view statement) { connection_->Execute(statement, nullptr); }

std::string TestHouse::Scalar(std::string_view statement) {
  const auto rows = connection_->Execute(statement, nullptr);
  if (rows->Eof()) return "(no row)";
  const auto value = rows->FieldAt(0);
  return IsNull(value) ? "NULL" : ToText(value);
}

std::string TestHouse::Company(std::string_view requests, std::string_view tag) {
  company::CompanyFile file(Path("company.twq"), machine);
  return file.Process(
      fmt::format("<?xml version=\"1.0\" encoding=\"utf-8\"?><?qbxml version=\"{}\"?><QBXML>"
                  "<QBXMLMsgsRq onError=\"continueOnError\">{}</QBXMLMsgsRq></QBXML>",
                  tag, requests));
}

std::string TestHouse::ListIdOf(std::string_view fullName) {
  const auto answer = Company(fmt::format("<CustomerQueryRq><FullName>{}</FullName></CustomerQueryRq>", fullName));
  const auto begin = answer.find("<ListID>");
  if (begin == std::string::npos) return {};
  const auto from = begin + std::string_view("<ListID>").size();
  return answer.substr(from, answer.find('<', from) - from);
}

std::vector<std::string> TestHouse::Log() const {
  std::vector<std::string> lines;
  for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
    if (!entry.path().filename().string().starts_with("TWQBLog")) continue;
    std::istringstream text(ReadWholeFile(entry.path().string()));
    for (std::string line; std::getline(text, line);) {
      if (line.ends_with('\r')) line.pop_back();
      lines.push_back(line);
    }
  }
  return lines;
}

std::vector<std::string> TestHouse::BoxTexts() const {
  std::vector<std::string> texts;
  for (const auto& shown : desk.Boxes()) texts.push_back(shown.box.text);
  return texts;
}

}  // namespace twqb
