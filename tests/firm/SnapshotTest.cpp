// A snapshot of a side holds what the side holds: over made firms in each edition, behind transfers in both directions.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <vector>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/TxnKind.h"
#include "adapters/snapshot/BillingSnapshot.h"
#include "adapters/snapshot/CompanySnapshot.h"
#include "cli/workplace/SampleTexts.h"
#include "cli/workplace/SqlScript.h"
#include "platform/Text.h"
#include "tests/firm/FirmHouse.h"

namespace twqb {
namespace {

using messages::Country;

const snapshot::Watch kUnwatched = [](std::string_view /*next*/) {};

// What a company file answers of each kind, with lines and links, and of itself.
std::map<std::string, std::string> AnswersOf(const std::string& path, const std::string& tag, Machine& machine) {
  std::map<std::string, std::string> answers;
  const auto ask = [&](std::string_view kind, std::string_view fields) {
    return company::CompanyFile(path, machine)
        .Process(fmt::format("<?xml version=\"1.0\"?>\n<?qbxml version=\"{0}\"?>\n<QBXML><QBXMLMsgsRq "
                             "onError=\"stopOnError\"><{1}QueryRq>{2}</{1}QueryRq></QBXMLMsgsRq></QBXML>",
                             tag, kind, fields));
  };
  for (const auto& kind : company::ListKinds()) {
    const auto* message = messages::FindMessage(fmt::format("{}Query", kind.name));
    const auto form = messages::FormFromTag(tag).value_or(messages::Form{});
    if (!message->KnownIn(form)) continue;
    answers[std::string(kind.name)] = ask(kind.name, kind.name == "Template" ? "" : "<ActiveStatus>All</ActiveStatus>");
  }
  for (const auto& kind : company::TxnKinds()) {
    const std::set<std::string_view> plain = {"TimeTracking"};
    const std::set<std::string_view> linked = {"Invoice", "CreditMemo", "Estimate", "Bill"};
    std::string fields = plain.contains(kind.name) ? "" : "<IncludeLineItems>true</IncludeLineItems>";
    if (linked.contains(kind.name)) fields += "<IncludeLinkedTxns>true</IncludeLinkedTxns>";
    answers[std::string(kind.name)] = ask(kind.name, fields);
  }
  return answers;
}

void ExpectSameAnswers(FirmHouse& house, const std::string& tag, const std::string& copy) {
  const auto were = AnswersOf(house.Path("company.twq"), tag, house.machine);
  const auto are = AnswersOf(copy, tag, house.machine);
  std::size_t records = 0;
  for (const auto& [kind, answer] : were) {
    EXPECT_EQ(answer, are.at(kind)) << kind;
    EXPECT_EQ(answer.find("statusSeverity=\"Error\""), std::string::npos) << kind << answer.substr(0, 500);
    records += answer.size();
  }
  EXPECT_GT(records, 10000U);
}

void SnapshotCompany(FirmHouse& house, const std::string& path) {
  const auto session = house.quickbooks->CreateTransport();
  session->OpenConnection("TEST", "Test");
  session->BeginSession("", OpenMode::DoNotCare);
  snapshot::ReadCompany(*session, path, house.machine, kUnwatched);
  session->EndSession();
  session->CloseConnection();
}

// Which is attached as "copy" then.
void SnapshotBilling(FirmHouse& house) {
  const auto source = house.database.CreateConnection();
  source->SetConnectionString(house.ConnectString());
  source->Open();
  snapshot::ReadBilling(*source, house.Path("copy.db"), cli::SplitStatements(cli::BillingSchema()), kUnwatched);
  source->Close();
  house.Sql(fmt::format("ATTACH DATABASE '{}' AS copy", house.Path("copy.db")));
}

struct Edition {
  Country country;
  const char* tag;  // in which it takes documents
};
constexpr std::array kEditions = {Edition{Country::US, "3.0"}, Edition{Country::CA, "CA3.0"},
                                  Edition{Country::UK, "UK3.0"}, Edition{Country::AU, "3.0"}};

class Snapshot : public testing::TestWithParam<unsigned> {};

TEST_P(Snapshot, Of_a_company_answers_as_the_company_does_in_each_edition) {
  for (const auto& [country, tag] : kEditions) {
    SCOPED_TRACE(tag);
    const std::string form = tag;
    FirmHouse house(TinyFirm(GetParam()), HouseOptions{.company = {.country = country}});
    house.Send();
    house.Get();
    SnapshotCompany(house, house.Path("copy.twq"));
    ExpectSameAnswers(house, tag, house.Path("copy.twq"));
    EXPECT_EQ(company::CompanyFile(house.Path("copy.twq"), house.machine).Summary().options.country, country);
    // And gives out the same identifiers and numbers next.
    const auto add = [&](const std::string& file) {
      return company::CompanyFile(house.Path(file), house.machine)
          .Process(fmt::format("<?xml version=\"1.0\"?>\n<?qbxml version=\"{}\"?>\n<QBXML><QBXMLMsgsRq "
                               "onError=\"stopOnError\"><CustomerAddRq><CustomerAdd><Name>Next One</Name></CustomerAdd>"
                               "</CustomerAddRq></QBXMLMsgsRq></QBXML>",
                               form));
    };
    EXPECT_EQ(add("company.twq"), add("copy.twq"));
  }
}

TEST_P(Snapshot, Of_BillingDb_has_its_tables_columns_and_rows) {
  FirmHouse house(TinyFirm(GetParam()));
  house.Send();
  house.Get();
  // What is no date stays none.
  house.Sql("UPDATE Client SET ClientSince = 'last spring'");
  SnapshotBilling(house);
  const auto made = [&](const std::string& side) {
    const auto tables =
        house.Scalar(ReplaceAll("SELECT group_concat(m.name || c.name || c.type || c.pk || ifnull(c.dflt_value, '-'), "
                                "'|') FROM {0}.sqlite_master "
                                "AS m, pragma_table_info(m.name, '{0}') AS c WHERE m.type = 'table'",
                                "{0}", side));
    return tables +
           house.Scalar(ReplaceAll("SELECT group_concat(name, '|') FROM (SELECT name FROM {0}.sqlite_master WHERE "
                                   "type <> 'table' ORDER BY name)",
                                   "{0}", side));
  };
  EXPECT_EQ(made("copy"), made("main"));
  EXPECT_NE(made("copy").find("ClientCompanyVARCHAR(80)"), std::string::npos);
  std::int64_t rows = 0;
  for (const auto& [table, count] : house.CountRows()) {
    rows += count;
    for (const auto* order : {"SELECT * FROM main.{0} EXCEPT SELECT * FROM copy.{0}",
                              "SELECT * FROM copy.{0} EXCEPT SELECT * FROM main.{0}"}) {
      EXPECT_EQ(house.Scalar(fmt::format("SELECT count(*) FROM ({})", ReplaceAll(order, "{0}", table))), "0") << table;
    }
    EXPECT_EQ(house.Scalar("SELECT count(*) FROM copy." + table), std::to_string(count)) << table;
  }
  EXPECT_GT(rows, 10);
}

TEST_P(Snapshot, Of_BillingDb_lacks_what_it_lacks_and_has_what_it_has_more) {
  FirmHouse house(TinyFirm(GetParam()));
  for (const auto* statement :
       {"DROP TABLE Budget", "ALTER TABLE Client DROP COLUMN ClientMI",
        "ALTER TABLE Client ADD COLUMN Motto VARCHAR(12)", "ALTER TABLE Client ADD COLUMN Met DATETIME",
        "UPDATE Client SET Motto = 'onward', Met = '2001-02-03 00:00:00'"}) {
    house.Sql(statement);
  }
  SnapshotBilling(house);
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM copy.sqlite_master WHERE name = 'Budget'"), "0");
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM (SELECT * FROM main.Client EXCEPT SELECT * FROM copy.Client)"), "0");
  const auto columns = [&](const std::string& side) {
    return house.Scalar(
        fmt::format("SELECT group_concat(name || type || pk) FROM pragma_table_info('Client', '{}')", side));
  };
  EXPECT_EQ(columns("copy"), columns("main"));
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM copy.sqlite_master WHERE name = 'IX_Client_QBLinkID'"), "1");
}

INSTANTIATE_TEST_SUITE_P(Firm, Snapshot, testing::Range(0U, 6U));

}  // namespace
}  // namespace twqb
