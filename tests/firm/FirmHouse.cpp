#include "tests/firm/FirmHouse.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <span>
#include <utility>

#include "adapters/faults/Faults.h"
#include "bridge/modTWQBBridge.h"
#include "platform/Text.h"
#include "samples/firm/Firm.h"
#include "tests/support/Bridge.h"
#include "tests/support/Chance.h"

namespace twqb {

namespace {

// The tag of the version line that a company file takes.
std::string TagOf(const company::CompanyOptions& options) {
  // An Australian file answers everything but the host query in the form of the United States.
  const auto country = options.country == messages::Country::AU ? messages::Country::US : options.country;
  return std::string(messages::FormTag({.country = country}));
}

HouseOptions WithAnswers(HouseOptions options) {
  if (options.answers.empty()) options.answers = "default yes\n";
  return options;
}

}  // namespace

firm::FirmPlan TinyFirm(unsigned number) {
  return {.clients = 1 + static_cast<int>(number % 3),
          .seed = SeedOfRound(number),
          .months = number % 4 == 0 ? 2 : 1,
          .hours = 2};
}

FirmHouse::FirmHouse(const firm::FirmPlan& plan, HouseOptions options, Books books) : FirmHouse(options) {
  FillBilling(plan);
  if (books == Books::Both) FillCompany(plan);
}

FirmHouse::FirmHouse(HouseOptions options) : TestHouse(WithAnswers(options)), tag_(TagOf(options.company)) {
  pull = GetTableFromQB;
  std::ofstream(Path("twqb.ini")) << "[GENERAL]\r\nFIRST_TIME=False\r\n";
}

void FirmHouse::FillBilling(const firm::FirmPlan& plan) {
  Sql("BEGIN");
  firm::WriteBilling(plan, [&](const std::string& statement) { Sql(statement); });
  Sql("COMMIT");
}

void FirmHouse::FillCompany(const firm::FirmPlan& plan) {
  company::CompanyFile file(Path("company.twq"), machine);
  const auto versionLine = "version=\"" + tag_ + "\"?>\n<QBXML>";
  firm::WriteCompany(plan, [&](const std::string& document) {
    const auto answer = file.Process(ReplaceAll(document, "version=\"3.0\"?>\n<QBXML>", versionLine));
    EXPECT_EQ(answer.find("statusSeverity=\"Error\""), std::string::npos)
        << plan.seed << ": " << answer.substr(answer.rfind("statusCode"));
  });
}

void FirmHouse::Send(enTables table) {
  Enter();
  // One by one they are all done within the day, as a run over all is.
  machine.Advance(table == enAll ? Date::kHour : Date::kMinute);
  EXPECT_TRUE(Bridge(*this).SendDataToQB(table)) << table << ": " << (BoxTexts().empty() ? "" : BoxTexts().back());
}

std::vector<std::string> FirmHouse::SendAndName() {
  machine.Advance(Date::kHour);
  const FaultPlatform counted(Seams(), {});
  Enter(counted.Decorated());
  EXPECT_TRUE(Bridge(*this).SendDataToQB(enAll)) << (BoxTexts().empty() ? "" : BoxTexts().back());
  return {counted.CallNames().begin(), counted.CallNames().end()};
}

void FirmHouse::SendExpenses(const std::vector<std::string>& keys) {
  Enter();
  machine.Advance(Date::kMinute);
  Bridge bridge(*this);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("'" + Join(keys, "','") + "'");
  EXPECT_TRUE(bridge.SendDataToQB(enExpenseLog)) << (BoxTexts().empty() ? "" : BoxTexts().back());
}

void FirmHouse::TrySend(enTables table) {
  Enter();
  machine.Advance(Date::kMinute);
  Bridge(*this).SendDataToQB(table);
}

void FirmHouse::Get(enTables table) {
  Enter();
  machine.Advance(Date::kHour);
  EXPECT_TRUE(Bridge(*this).GetDataFromQB(table)) << table << ": " << (BoxTexts().empty() ? "" : BoxTexts().back());
}

pugi::xml_document FirmHouse::Ask(const std::string& request) {
  pugi::xml_document document;
  const auto answer = Company(request, tag_);
  EXPECT_TRUE(document.load_string(answer.c_str())) << answer;
  return document;
}

std::vector<Fields> FirmHouse::RowsOf(const std::string& statement) {
  const auto connection = database.CreateConnection();
  connection->SetConnectionString(ConnectString());
  connection->Open();
  const auto rows = connection->OpenRecordset(statement, ado::CursorType::Static, ado::LockType::ReadOnly);
  std::vector<Fields> found;
  for (; !rows->Eof(); rows->MoveNext()) {
    Fields fields;
    for (int i = 0; i < rows->FieldCount(); ++i) {
      const auto value = rows->FieldAt(i);
      fields[rows->FieldName(i)] = IsNull(value) ? std::nullopt : std::optional(ToText(value));
    }
    found.push_back(std::move(fields));
  }
  return found;
}

Counts FirmHouse::CountRows() {
  Counts counts;
  for (const auto* table :
       {"Employee", "Client", "Project", "Activity", "Expense", "AccountList", "TimeEntry", "ExpenseLog",
        "TransactionTable", "ManInvDetail", "Payment", "VendorBill", "Budget", "BudgetActivity", "BudgetExpense"}) {
    counts[table] = std::stoll(Scalar(std::string("SELECT COUNT(*) FROM ") + table));
  }
  return counts;
}

Counts FirmHouse::CountRecords() {
  Counts counts;
  for (const auto& kind : company::CompanyFile(Path("company.twq"), machine).Summary().kinds) {
    counts[kind.name] = kind.records;
  }
  return counts;
}

void CopyFiles(const std::string& from, const std::string& to, std::string_view beginning) {
  for (const auto& entry : std::filesystem::directory_iterator(from)) {
    const auto name = entry.path().filename().string();
    if (name.starts_with(beginning)) std::filesystem::copy_file(entry.path(), to + "/" + name);
  }
}

}  // namespace twqb
