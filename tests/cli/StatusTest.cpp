#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "Firm.h"
#include "Program.h"

namespace twqb::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Words = std::vector<std::string>;

Words WordsOf(const std::string& line) {
  Words words;
  std::istringstream stream(line);
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

class Status : public testing::Test {
 protected:
  Status() { folder_.Done({"init", "--clock", "2008-03-05T10:00:00"}); }

  void Sql(const std::string& statements) const { folder_.Done({"billing", "run", "-e", statements}); }
  // The words behind a table's name.
  Words LineOf(const std::string& table, const Words& options = {}) const {
    Words command = {"status"};
    command.insert(command.end(), options.begin(), options.end());
    return LineIn(folder_.Twqb(command).out, table);
  }
  static Words LineIn(const std::string& output, const std::string& table) {
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
      auto words = WordsOf(line);
      if (words.front() != table) continue;
      words.erase(words.begin());
      return words;
    }
    return {};
  }
  void Transfer(const std::string& verb, const std::string& clock, const Words& options = {}) const {
    folder_.Write("no.txt", "default no\n");
    Words command = {verb, "clients", "--answers", "no.txt", "--clock", clock};
    command.insert(command.end(), options.begin(), options.end());
    folder_.Done(command);
  }

  WorkFolder folder_;
};

TEST_F(Status, Names_every_table_once_below_its_columns) {
  std::istringstream lines(folder_.Done({"status", "--clock", "2008-03-05T10:00:00"}));
  std::string header;
  std::getline(lines, header);
  EXPECT_THAT(WordsOf(header),
              ElementsAre("TABLE", "ROWS", "LINKED", "UNLINKED", "CHANGED", "ORPHANS", "LAST", "SEND", "LAST", "GET"));
  Words tables;
  for (std::string line; std::getline(lines, line);) {
    const auto words = WordsOf(line);
    tables.push_back(words.at(0));
    EXPECT_THAT(Words(words.begin() + 1, words.end()), ElementsAre("0", "0", "0", "-", "0", "never", "never"));
  }
  EXPECT_THAT(tables,
              ElementsAre("employees", "vendors", "clients", "projects", "activities", "expensecodes", "accounts",
                          "expenselog", "timeentries", "invoices", "payments", "vendorbill", "estimates"));
}

TEST_F(Status, Counts_rows_by_their_links_and_tells_employees_from_vendors) {
  Sql("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('E1', 0, '1-1');"
      "INSERT INTO Employee (EmployeeID, IsSub) VALUES ('E2', 0);"
      "INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('E3', 0, '');"
      "INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('V1', -1, '2-1');");
  EXPECT_THAT(LineOf("employees"), ElementsAre("3", "1", "2", "-", "0", "never", "never"));
  EXPECT_THAT(LineOf("vendors"), ElementsAre("1", "1", "0", "-", "0", "never", "never"));
}

TEST_F(Status, Tells_when_each_table_went_last_and_what_changed_since_its_send) {
  Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('A', '2008-03-05 09:00:00');"
      "INSERT INTO Client (ClientID, LastUpdated) VALUES ('B', '2008-03-05 09:00:00');");
  Transfer("send", "2008-03-05T10:30:00");
  EXPECT_THAT(LineOf("clients"), ElementsAre("2", "2", "0", "0", "0", "3/5/2008", "10:30:00", "AM", "never"));
  Sql("UPDATE Client SET ClientCity = 'Bath', LastUpdated = '2008-03-05 10:31:00' WHERE ClientID = 'A';"
      "INSERT INTO Client (ClientID, LastUpdated) VALUES ('C', '2008-03-05 10:31:00');");
  EXPECT_THAT(LineOf("clients"), ElementsAre("3", "2", "1", "1", "0", "3/5/2008", "10:30:00", "AM", "never"));
  Transfer("send", "2008-03-05T10:45:00");
  Transfer("get", "2008-03-05T11:00:00");
  // What a get takes over is a change behind the last send.
  EXPECT_THAT(LineOf("clients"),
              ElementsAre("3", "3", "0", "3", "0", "3/5/2008", "10:45:00", "AM", "3/5/2008", "11:00:00", "AM"));
}

TEST_F(Status, Comes_as_JSON_for_other_programs) {
  Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('A', '2008-03-05 09:00:00');");
  Transfer("send", "2008-03-05T10:30:00");
  std::istringstream lines(folder_.Done({"status", "--json"}));
  std::vector<std::string> tables;
  for (std::string line; std::getline(lines, line);) tables.push_back(line);
  ASSERT_EQ(tables.size(), 13U);
  EXPECT_EQ(tables[0], R"({"table":"employees","rows":0,"linked":0,"neverLinked":0,"changed":null,"withoutParent":0,)"
                       R"("deadLinks":null,"lastSend":null,)"
                       R"("lastGet":null})");
  EXPECT_EQ(tables[2], R"({"table":"clients","rows":1,"linked":1,"neverLinked":0,"changed":0,"withoutParent":0,)"
                       R"("deadLinks":null,)"
                       R"("lastSend":"2008-03-05T10:30:00","lastGet":null})");
}

TEST_F(Status, Compares_in_UTC) {
  Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('A', '1-1', '2008-03-05 14:00:00');");
  folder_.Done({"settings", "set", "QBSEND_", "Clients_LastSendAt", "3/5/2008 10:00:00 AM"});
  EXPECT_EQ(LineOf("clients", {"--clock", "2008-03-05T12:00:00", "--bias", "300"}).at(3), "0");
  EXPECT_EQ(LineOf("clients", {"--clock", "2008-03-05T12:00:00", "--bias", "180"}).at(3), "1");
}

TEST_F(Status, A_run_that_a_filter_narrowed_leaves_no_mark) {
  folder_.Done({"settings", "set", "QBSEND_", "Clients_OptFilter1b", "True"});
  folder_.Done({"settings", "set", "QBSEND_", "Clients_cmbFilter1a", "A"});
  folder_.Done({"settings", "set", "QBSEND_", "Clients_cmbFilter1b", "M"});
  Sql("INSERT INTO Client (ClientID) VALUES ('A');");
  Transfer("send", "2008-03-05T10:30:00");
  EXPECT_THAT(LineOf("clients"), ElementsAre("1", "1", "0", "-", "0", "never", "never"));
}

TEST_F(Status, A_last_send_that_is_no_date_is_shown_and_nothing_is_compared_with_it) {
  folder_.Done({"settings", "set", "QBSEND_", "Clients_LastSendAt", "lately", "--force"});
  EXPECT_THAT(LineOf("clients"), ElementsAre("0", "0", "0", "-", "0", "lately", "never"));
}

TEST_F(Status, Goes_by_the_settings_in_use) {
  folder_.Done({"settings", "set", "QBSEND_", "Clients_LastSendAt", "3/4/2008", "--settings-table"});
  EXPECT_THAT(LineOf("clients"), ElementsAre("0", "0", "0", "-", "0", "never", "never"));
  EXPECT_THAT(LineOf("clients", {"--settings-table"}), ElementsAre("0", "0", "0", "0", "0", "3/4/2008", "never"));
}

TEST_F(Status, Speaks_the_other_dialect_too) {
  const Words jet = {"--billing", "Provider=JETLITE;Data Source=billing.db"};
  Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('A', '2008-03-05 09:00:00');");
  Transfer("send", "2008-03-05T10:30:00", jet);
  Sql("UPDATE Client SET LastUpdated = '2008-03-05 10:31:00' WHERE ClientID = 'A';");
  EXPECT_THAT(LineOf("clients", jet), ElementsAre("1", "1", "0", "1", "0", "3/5/2008", "10:30:00", "AM", "never"));
}

TEST_F(Status, Shows_what_it_can_of_a_database_that_lacks_tables_and_names_them) {
  Sql("DROP TABLE Employee; DROP TABLE Project;");
  folder_.Done({"settings", "set", "QBSEND_", "Projects_LastSendAt", "3/4/2008"});
  const auto ended = folder_.Twqb({"status"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(LineIn(ended.out, "vendors"), ElementsAre("-", "-", "-", "-", "-", "never", "never"));
  EXPECT_THAT(LineIn(ended.out, "projects"), ElementsAre("-", "-", "-", "-", "-", "3/4/2008", "never"));
  EXPECT_THAT(LineIn(ended.out, "clients"), ElementsAre("0", "0", "0", "-", "0", "never", "never"));
  EXPECT_THAT(ended.err, HasSubstr("no table Employee, Project. \"twqb init\" makes one"));
}

TEST_F(Status, A_database_without_a_table_for_the_settings_is_refused_where_they_should_be_in_it) {
  Sql("DROP TABLE TWSTable;");
  for (const auto& command : {Words{"status"}, Words{"settings", "list"}, Words{"settings", "get", "A", "b"}}) {
    auto inTable = command;
    inTable.emplace_back("--settings-table");
    const auto ended = folder_.Twqb(inTable);
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.out, IsEmpty());
    EXPECT_THAT(ended.err, HasSubstr("no table TWSTable"));
  }
  EXPECT_EQ(folder_.Twqb({"status"}).status, 0) << "the file is in use";
}

TEST_F(Status, A_missing_database_gives_2) {
  const auto ended = folder_.Twqb({"status", "--billing", "Provider=SQLITE;Data Source=none.db"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(ended.err, HasSubstr("none.db"));
}

TEST_F(Status, Says_in_which_zone_its_times_are) {
  const auto shownAt = [&](const Words& zone) {
    Words command = {"status", "--clock", "2008-07-05T10:00:00"};
    command.insert(command.end(), zone.begin(), zone.end());
    return folder_.Done(command);
  };
  EXPECT_THAT(shownAt({}), testing::Not(HasSubstr("Times")));
  folder_.Done({"settings", "set", "QBGET_", "Customers_LastSendAt", "3/5/2008 10:00:00 AM"});
  EXPECT_THAT(shownAt({}), HasSubstr("Times are those of UTC.\n"));
  EXPECT_THAT(shownAt({"--bias", "300"}), HasSubstr("Times are those of UTC-5.\n"));
  EXPECT_THAT(shownAt({"--bias", "300", "--daylight"}), HasSubstr("Times are those of UTC-4.\n"));
  EXPECT_THAT(shownAt({"--bias", "-330"}), HasSubstr("Times are those of UTC+5:30.\n"));
}

TEST_F(Status, Counts_the_rows_whose_parents_are_not_there) {
  Sql("INSERT INTO Client (ClientID) VALUES ('ACME');"
      "INSERT INTO Project (ProjectID, ClientID) VALUES ('A:', 'acme');"
      "INSERT INTO Project (ProjectID, ClientID) VALUES ('B:', 'GONE');"
      "INSERT INTO Project (ProjectID, ClientID, ParentProjectID) VALUES ('C:1', 'GONE', 'C:');"
      "INSERT INTO Project (ProjectID, ClientID) VALUES ('D:', '');"
      "INSERT INTO TimeEntry (TEID, ProjectID, EmployeeID) VALUES ('{1}', 'A:', 'NOBODY');"
      "INSERT INTO TimeEntry (TEID, ProjectID) VALUES ('{2}', 'B:');"
      "INSERT INTO AccountList (AccountID, ParentAccountID) VALUES ('1', '2');"
      "INSERT INTO VendorBill (VendorBillID, VendorID) VALUES ('{3}', 'NOBODY');");
  EXPECT_EQ(LineOf("projects").at(4), "2");
  EXPECT_EQ(LineOf("timeentries").at(4), "1");
  EXPECT_EQ(LineOf("accounts").at(4), "1");
  EXPECT_EQ(LineOf("vendorbill").at(4), "1");
  EXPECT_EQ(LineOf("clients").at(4), "0");
}

TEST_F(Status, Looks_and_writes_nothing) {
  const auto settings = folder_.Read("twqb.ini");
  folder_.Done({"status"});
  EXPECT_EQ(folder_.Read("twqb.ini"), settings);
  EXPECT_THAT(folder_.Names(), ElementsAre("billing.db", "company.twq", "registry.ini", "twqb.ini"));
}

// The sample firm, sent and got.
class DeepStatus : public Firm {
 protected:
  DeepStatus() {
    Transfer("send", 11);
    Transfer("get", 12);
  }
  std::map<std::string, std::int64_t> DeadLinks() const {
    std::map<std::string, std::int64_t> dead;
    std::istringstream lines(folder_.Done({"status", "--deep", "--json"}));
    for (std::string line; std::getline(lines, line);) {
      const auto table = nlohmann::json::parse(line);
      dead[table.at("table")] = table.at("deadLinks");
    }
    return dead;
  }
};

TEST_F(DeepStatus, Finds_no_dead_link_behind_a_transfer_and_each_one_that_dies) {
  auto expected = DeadLinks();
  EXPECT_EQ(expected.size(), 13U);
  for (const auto& [table, dead] : expected) EXPECT_EQ(dead, 0) << table;
  Sql("UPDATE Client SET QBLinkID = '1-1' WHERE ClientID = 'ABBOTT';"
      "UPDATE TimeEntry SET QBLinkID = '2-2' WHERE TEID IN (SELECT TEID FROM TimeEntry WHERE QBLinkID <> '' LIMIT 3);");
  expected["clients"] = 1;
  expected["timeentries"] = 3;
  EXPECT_EQ(DeadLinks(), expected);
  const auto shown = folder_.Twqb({"status", "--deep"});
  EXPECT_THAT(shown.out, HasSubstr("DEAD LINKS"));
  EXPECT_THAT(shown.err, IsEmpty());
}

TEST_F(DeepStatus, Gives_1_where_QuickBooks_can_not_be_asked) {
  folder_.Done({"company", "set", "permission", "withheld"});
  const auto ended = folder_.Twqb({"status", "--deep"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, IsEmpty());
}

TEST(StatusLimit, A_view_that_never_ends_ends_with_1_and_is_named) {
  const WorkFolder folder;
  folder.Done({"init"});
  folder.Done({"billing", "run", "-e",
               "DROP TABLE Client; CREATE VIEW Client AS WITH RECURSIVE n(ClientID, QBLinkID) AS "
               "(SELECT 1, '' UNION ALL SELECT ClientID + 1, '' FROM n) SELECT * FROM n"});
  const auto ended = folder.Twqb({"status", "--limit", "1"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, testing::AllOf(testing::HasSubstr("The rows of clients could not be counted in 1 s"),
                                        testing::HasSubstr("--limit")));
}

}  // namespace
}  // namespace twqb::cli
