#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class Billing : public testing::Test {
 protected:
  Billing() { folder_.Done({"init"}); }
  std::string Run(const std::string& statements) const { return folder_.Done({"billing", "run", "-e", statements}); }
  WorkFolder folder_;
};

TEST_F(Billing, Rows_are_tab_separated_behind_a_header) {
  Run("INSERT INTO Client (ClientID, ClientCompany) VALUES ('A', 'One'); INSERT INTO Client (ClientID) VALUES ('B')");
  EXPECT_EQ(Run("SELECT ClientID, ClientCompany FROM Client ORDER BY ClientID"),
            "ClientID\tClientCompany\nA\tOne\nB\t\\N\n");
}

TEST_F(Billing, A_query_without_rows_prints_its_header_alone) {
  EXPECT_EQ(Run("SELECT ClientID FROM Client"), "ClientID\n");
}

TEST_F(Billing, Line_ends_tabs_and_backslashes_are_escaped) {
  EXPECT_EQ(Run("SELECT 'a' || char(13) || char(10) || 'b' || char(9) || 'c\\d' AS text"), "text\na\\r\\nb\\tc\\\\d\n");
}

TEST_F(Billing, Dates_are_ISO_and_money_is_exact) {
  Run("INSERT INTO Client (ClientID, LastUpdated) VALUES ('A', #3/5/2008 4:30:00 PM#)");
  EXPECT_EQ(Run("SELECT LastUpdated FROM Client"), "LastUpdated\n2008-03-05T16:30:00\n");
  Run("INSERT INTO Payment (PayID, PayAmt) VALUES ('P', 12.5)");
  EXPECT_EQ(Run("SELECT PayAmt FROM Payment"), "PayAmt\n12.5\n");
}

TEST_F(Billing, Json_is_one_object_a_line) {
  const auto out = folder_.Done(
      {"billing", "run", "--json", "-e", "SELECT 1 AS n, 'a\"b' AS t, NULL AS z UNION ALL SELECT 2, 'ü', 1.5"});
  EXPECT_EQ(out, "{\"n\":1,\"t\":\"a\\\"b\",\"z\":null}\n{\"n\":2,\"t\":\"ü\",\"z\":1.5}\n");
}

TEST_F(Billing, A_semicolon_in_a_literal_or_a_comment_ends_nothing) {
  EXPECT_EQ(Run("SELECT 'a;b' AS x; -- no; end\nSELECT \"name\" FROM (SELECT 1 AS \"name\") /* ; */;"),
            "x\na;b\n\nname\n1\n");
}

TEST_F(Billing, A_file_and_standard_input_hold_statements_too) {
  folder_.Write("script.sql",
                "INSERT INTO Client (ClientID)\r\nVALUES ('A');\r\n\r\nSELECT COUNT(*) AS n FROM Client;\r\n");
  EXPECT_EQ(folder_.Done({"billing", "run", "script.sql"}), "n\n1\n");
  EXPECT_EQ(folder_.Done({"billing", "run", "-"}, {.input = "SELECT 1 AS n"}), "n\n1\n");
}

TEST_F(Billing, Changes_are_counted_on_standard_error) {
  const auto ended = folder_.Twqb(
      {"billing", "run", "-e", "INSERT INTO Client (ClientID) VALUES ('A'); UPDATE Client SET Status = 'Active'"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "");
  EXPECT_THAT(ended.err, HasSubstr("2 statements, 2 rows changed"));
}

TEST_F(Billing, The_first_statement_that_fails_ends_the_run_and_is_named) {
  const auto ended = folder_.Twqb({"billing", "run", "-e",
                                   "INSERT INTO Client (ClientID) VALUES ('A'); SELECT Bogus FROM Client; "
                                   "INSERT INTO Client (ClientID) VALUES ('B')"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("Statement 2 of 3"), HasSubstr("0x80040E14"), HasSubstr("Bogus")));
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client"), "1");
}

TEST_F(Billing, A_transaction_that_is_not_committed_leaves_nothing) {
  EXPECT_EQ(
      folder_.Twqb({"billing", "run", "-e", "BEGIN; INSERT INTO Client (ClientID) VALUES ('A'); nonsense"}).status, 1);
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client"), "0");
}

TEST_F(Billing, Show_counts_the_rows_of_every_table) {
  Run("INSERT INTO Client (ClientID) VALUES ('A')");
  EXPECT_THAT(folder_.Done({"billing", "show"}),
              AllOf(testing::ContainsRegex("Client +1\n"), testing::ContainsRegex("TWSTable +0\n")));
}

TEST_F(Billing, A_missing_database_gives_2) {
  const auto ended = folder_.Twqb({"billing", "show", "--billing", "Provider=SQLITE;Data Source=none.db"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("none.db"));
}

}  // namespace
}  // namespace twqb::cli
