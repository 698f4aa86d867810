// What is gone on one side alone: found, named, and settled as its user says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Deletions : public testing::Test {
 protected:
  Deletions() {
    folder_.Done({"init"});
    folder_.Write("yes.txt", "default yes\n");
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
    Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ACME', 'Acme'), ('BOLT', 'Bolt'), ('CORK', 'Cork')");
    folder_.Done({"send", "clients", "--answers", "yes.txt"});
  }

  void Sql(const std::string& statements) const { folder_.Done({"billing", "run", "-e", statements}); }
  [[nodiscard]] std::string LinkOf(const std::string& client) const {
    return folder_.Scalar("SELECT QBLinkID FROM Client WHERE ClientID = '" + client + "'");
  }
  void DeleteInQuickBooks(const std::string& client) const {
    folder_.Done({"delete-quickbooks", "clients", LinkOf(client), "--answers", "yes.txt"});
  }
  [[nodiscard]] std::vector<nlohmann::json> Listed(const std::string& table = "all") const {
    std::istringstream lines(folder_.Done({"deletions", table, "--list", "--json"}));
    std::vector<nlohmann::json> found;
    for (std::string line; std::getline(lines, line);) found.push_back(nlohmann::json::parse(line));
    return found;
  }

  WorkFolder folder_;
};

TEST_F(Deletions, None_are_found_where_both_sides_have_all) {
  const auto ended = folder_.Twqb({"deletions", "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(ended.err, HasSubstr("Nothing is gone"));
}

TEST_F(Deletions, None_are_found_in_the_sample_firm_that_went_both_ways) {
  const WorkFolder sample;
  sample.Done({"init", "--sample"});
  sample.Write("yes.txt", "default yes\n");
  for (const auto* verb : {"send", "get", "send"}) {
    static_cast<void>(sample.Twqb({verb, "all", "--answers", "yes.txt"}, {.unanswered = Unanswered::Expected}));
  }
  EXPECT_EQ(sample.Done({"deletions", "--list", "--json"}), "");
}

TEST_F(Deletions, A_row_whose_record_stands_in_another_list_by_now_is_not_told) {
  Sql("INSERT INTO Employee (EmployeeID, EmpFName, EmpLName, IsSub) VALUES ('LEE', 'Ann', 'Lee', 0)");
  folder_.Done({"send", "employees", "--answers", "yes.txt"});
  Sql("UPDATE Employee SET IsSub = -1");
  EXPECT_THAT(Listed("vendors"), IsEmpty());
}

TEST_F(Deletions, A_row_whose_key_was_written_anew_is_not_told_as_gone) {
  folder_.Done({"send", "clients", "--answers", "yes.txt"});
  Sql("UPDATE Client SET ClientID = 'acme', QBLinkID = NULL WHERE ClientID = 'ACME'");
  EXPECT_THAT(Listed("clients"), IsEmpty());
}

TEST_F(Deletions, A_row_of_the_second_list_of_its_table_is_not_told_where_the_first_list_is_empty) {
  folder_.Write(
      "item.xml",
      "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
      "<AccountAddRq><AccountAdd><Name>Sales</Name><AccountType>Income</AccountType></AccountAdd></AccountAddRq>"
      "<ItemNonInventoryAddRq><ItemNonInventoryAdd><Name>Paper</Name><SalesOrPurchase><AccountRef>"
      "<FullName>Sales</FullName></AccountRef></SalesOrPurchase></ItemNonInventoryAdd></ItemNonInventoryAddRq>"
      "</QBXMLMsgsRq></QBXML>");
  const auto answer = folder_.Done({"company", "run", "item.xml"});
  const auto item = answer.substr(answer.find("<ItemNonInventoryRet>"));
  const auto from = item.find("<ListID>") + std::string_view("<ListID>").size();
  const auto link = item.substr(from, item.find('<', from) - from);
  Sql("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('PAPER:', '" + link + "'), ('GLUE:', 'FFFF-1')");
  const auto found = Listed("expensecodes");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].at("id"), "FFFF-1");
  // Nor does a deep status count it.
  std::istringstream lines(folder_.Done({"status", "--deep", "--json"}));
  for (std::string line; std::getline(lines, line);) {
    const auto table = nlohmann::json::parse(line);
    if (table.at("table") != "expensecodes") continue;
    EXPECT_EQ(table.at("deadLinks"), 1);
  }
}

TEST_F(Deletions, What_was_done_ahead_of_a_question_without_an_answer_is_told) {
  for (const auto* client : {"ACME", "BOLT"}) DeleteInQuickBooks(client);
  folder_.Write("one.txt", "yes\n");
  const auto ended =
      folder_.Twqb({"deletions", "--json", "--answers", "one.txt"}, {.unanswered = Unanswered::Expected});
  EXPECT_EQ(ended.status, 3);
  EXPECT_THAT(ended.out, HasSubstr("\"deleted\""));
}

TEST_F(Deletions, Rows_without_their_record_are_deleted_unlinked_or_left) {
  for (const auto* client : {"ACME", "BOLT", "CORK"}) DeleteInQuickBooks(client);
  const auto bolt = LinkOf("BOLT");
  const auto found = Listed("clients");
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[1].at("name"), "BOLT");
  EXPECT_EQ(found[1].at("id"), bolt);
  EXPECT_EQ(found[1].at("gone"), "record");
  EXPECT_TRUE(found[1].at("done").is_null());

  // ACME goes; BOLT loses its link; CORK stays as it is.
  folder_.Write("answers.txt", "yes\nno\nyes\nno\nno\n");
  const auto ended = folder_.Twqb({"deletions", "clients", "--answers", "answers.txt"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, AllOf(testing::ContainsRegex("ACME .*in QuickBooks +deleted\n"),
                               testing::ContainsRegex("BOLT .*in QuickBooks +unlinked\n"),
                               testing::ContainsRegex("CORK .*in QuickBooks +left\n")));
  EXPECT_THAT(ended.err, AllOf(HasSubstr("The client BOLT is linked to " + bolt),
                               HasSubstr("Do you want to delete the corresponding record of Tallywick?"),
                               HasSubstr("Do you want to unlink the client BOLT?")));
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client"), "2");
  EXPECT_EQ(LinkOf("BOLT"), "\\N");
  EXPECT_NE(LinkOf("CORK"), "\\N");
  EXPECT_EQ(Listed("clients").size(), 1U);
  // It is a run like any other: it can be taken back.
  folder_.Done({"undo"});
  EXPECT_EQ(LinkOf("BOLT"), bolt);
}

TEST_F(Deletions, Records_without_their_row_are_told_by_the_sets_and_deleted_or_left) {
  const auto acme = LinkOf("ACME");
  const auto bolt = LinkOf("BOLT");
  Sql("DELETE FROM Client WHERE ClientID IN ('ACME', 'BOLT')");
  Sql("UPDATE Client SET QBLinkID = NULL");  // that one is there, and lost its link alone
  const auto found = Listed();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].at("gone"), "row");
  EXPECT_EQ(found[0].at("record"), "ACME");
  folder_.Write("answers.txt", "yes\nno\n");
  const auto ended = folder_.Twqb({"deletions", "--answers", "answers.txt"});
  EXPECT_THAT(ended.out, AllOf(testing::ContainsRegex("ACME +" + acme + " +in BillingDb +deleted\n"),
                               testing::ContainsRegex("BOLT +" + bolt + " +in BillingDb +left\n")));
  EXPECT_THAT(folder_.Done({"company", "show"}), testing::ContainsRegex("\nCustomer +2\n"));
}

TEST_F(Deletions, That_QuickBooks_refuses_are_told_as_failed_with_1) {
  const auto acme = LinkOf("ACME");
  folder_.Write("job.xml",
                "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
                "<CustomerAddRq><CustomerAdd><Name>Roof</Name><ParentRef><ListID>" +
                    acme + "</ListID></ParentRef></CustomerAdd></CustomerAddRq></QBXMLMsgsRq></QBXML>");
  folder_.Done({"company", "run", "job.xml"});
  Sql("DELETE FROM Client WHERE ClientID = 'ACME'");
  const auto ended = folder_.Twqb({"deletions", "clients", "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, testing::ContainsRegex("ACME +" + acme + " +in BillingDb +failed\n"));
  const auto told = folder_.Twqb({"deletions", "clients", "--json", "--answers", "yes.txt"});
  EXPECT_EQ(told.status, 1);
  EXPECT_EQ(nlohmann::json::parse(told.out).at("done"), "failed");
}

TEST_F(Deletions, That_BillingDb_refuses_are_told_as_failed_with_1) {
  const auto acme = LinkOf("ACME");
  DeleteInQuickBooks("ACME");
  folder_.Write("faults.txt", "sql 1 raise 0x80040E14 \"Broken.\" DELETE FROM Client\n");
  folder_.Write("answers.txt", "yes\nno\n");
  const auto ended = folder_.Twqb({"deletions", "clients", "--answers", "answers.txt", "--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1) << ended.err;
  EXPECT_THAT(ended.out, testing::ContainsRegex("ACME +" + acme + " +in QuickBooks +failed\n"));
}

TEST_F(Deletions, A_deletion_by_identifier_names_the_record_ahead_of_its_question) {
  const auto acme = LinkOf("ACME");
  for (const std::string command : {"delete-billing", "delete-quickbooks"}) {
    const auto ended = folder_.Twqb({command, "clients", acme});
    const auto named = ended.err.find(acme + " belongs to the client ACME, in QuickBooks \"ACME\".");
    const auto asked = ended.err.find("Do you want to delete the corresponding record of ");
    EXPECT_NE(named, std::string::npos) << ended.err;
    EXPECT_LT(named, asked);
  }
}

TEST_F(Deletions, On_a_screen_that_is_narrow_are_cut_but_for_their_identifiers) {
  for (const auto* client : {"ACME", "BOLT"}) DeleteInQuickBooks(client);
  Sql("UPDATE Client SET ClientID = 'ACME of the long and winding road' WHERE ClientID = 'ACME'");
  const auto link = LinkOf("BOLT");
  const auto narrow = folder_.OnTerminal({"deletions", "--list"}, {.columns = 60, .environment = {"NO_COLOR=1"}});
  EXPECT_THAT(narrow, AllOf(HasSubstr("\u2026"), HasSubstr(link), HasSubstr("--wide")));
  EXPECT_THAT(narrow, Not(HasSubstr("winding road")));
  const auto wide =
      folder_.OnTerminal({"deletions", "--list", "--wide"}, {.columns = 60, .environment = {"NO_COLOR=1"}});
  EXPECT_THAT(wide, AllOf(HasSubstr("ACME of the long and winding road"), HasSubstr("in QuickBooks")));
}

TEST_F(Deletions, A_mistyped_table_gets_the_nearest_name) {
  const auto ended = folder_.Twqb({"deletions", "cleints"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("Did you mean \"clients\"?"));
}

}  // namespace
}  // namespace twqb::cli
