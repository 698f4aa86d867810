#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Events.h"
#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// A client that stands on both sides.
class DeletionCommands : public testing::Test {
 protected:
  DeletionCommands() {
    folder_.Done({"init"});
    folder_.Write("yes.txt", "default yes\n");
    folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID, ClientCompany) VALUES ('ACME', 'Acme')"});
    folder_.Done({"send", "clients", "--answers", "yes.txt"});
    id_ = folder_.Scalar("SELECT QBLinkID FROM Client");
  }
  [[nodiscard]] std::string Clients() const { return folder_.Scalar("SELECT COUNT(*) FROM Client"); }
  void ExpectInQuickBooks(std::string_view customers) const {
    EXPECT_THAT(folder_.Done({"company", "show"}),
                testing::ContainsRegex("\nCustomer +" + std::string(customers) + "\n"));
  }

  WorkFolder folder_;
  std::string id_;
};

TEST_F(DeletionCommands, Delete_the_row_of_BillingDb_after_a_Yes) {
  EXPECT_EQ(folder_.Done({"delete-billing", "clients", id_, "--answers", "yes.txt"}),
            "delete-billing clients " + id_ + ": done\n");
  EXPECT_EQ(Clients(), "0");
  ExpectInQuickBooks("1");
}

TEST_F(DeletionCommands, Delete_the_record_in_QuickBooks_after_a_Yes) {
  EXPECT_EQ(folder_.Done({"delete-quickbooks", "enClients", id_, "--answers", "yes.txt"}),
            "delete-quickbooks clients " + id_ + ": done\n");
  ExpectInQuickBooks("0");
  EXPECT_EQ(Clients(), "1");
}

TEST_F(DeletionCommands, End_with_1_when_nobody_says_Yes) {
  for (const std::string command : {"delete-billing", "delete-quickbooks"}) {
    const auto ended = folder_.Twqb({command, "clients", id_});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, command + " clients " + id_ + ": not done\n");
    EXPECT_THAT(ended.err, HasSubstr("Do you want to delete the corresponding record"));
  }
  EXPECT_EQ(Clients(), "1");
  ExpectInQuickBooks("1");
}

TEST_F(DeletionCommands, End_with_3_when_the_question_has_no_answer) {
  folder_.Write("none.txt", "");
  const auto ended = folder_.Twqb({"delete-quickbooks", "clients", id_, "--answers", "none.txt"},
                                  {.unanswered = Unanswered::Expected});
  EXPECT_EQ(ended.status, 3);
  EXPECT_THAT(ended.err, HasSubstr("Do you want to delete the corresponding record"));
}

TEST_F(DeletionCommands, End_with_1_when_QuickBooks_refuses) {
  folder_.Done({"delete-quickbooks", "clients", id_, "--answers", "yes.txt"});
  const auto ended = folder_.Twqb({"delete-quickbooks", "clients", id_, "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("Error Code: 3120"));
}

TEST_F(DeletionCommands, Stand_in_the_transcript_with_their_operation) {
  folder_.Done({"delete-billing", "clients", id_, "--answers", "yes.txt", "--transcript", "run.jsonl"});
  const auto calls = EventsOf(folder_.Read("run.jsonl"), "call");
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].at("operation"), "DeleteTWRecord");
  EXPECT_EQ(calls[0].at("arguments"), R"(["enClients",")" + id_ + R"("])");
}

TEST_F(DeletionCommands, Refuse_all_tables_and_an_empty_identifier) {
  folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID, QBLinkID) VALUES ('NEW', '')"});
  for (const std::string command : {"delete-billing", "delete-quickbooks"}) {
    const auto all = folder_.Twqb({command, "all", id_, "--answers", "yes.txt"});
    EXPECT_EQ(all.status, 2);
    EXPECT_THAT(all.err, HasSubstr("name the table"));
    const auto empty = folder_.Twqb({command, "clients", "", "--answers", "yes.txt"});
    EXPECT_EQ(empty.status, 2);
    EXPECT_THAT(empty.err, HasSubstr("can't be empty"));
  }
  EXPECT_EQ(Clients(), "2");
}

TEST_F(DeletionCommands, Delete_nothing_for_an_identifier_that_would_read_as_a_condition) {
  const auto ended = folder_.Twqb({"delete-billing", "clients", "x' OR '1'='1", "--answers", "yes.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "delete-billing clients x' OR '1'='1: not done; 1 error was told: see the log\n");
  EXPECT_EQ(Clients(), "1");
}

TEST_F(DeletionCommands, Have_a_help_that_names_the_tables_but_not_all_of_them_at_once) {
  for (const std::string command : {"delete-billing", "delete-quickbooks"}) {
    const auto help = folder_.Done({command, "--help"});
    EXPECT_THAT(help, AllOf(HasSubstr("Usage: twqb " + command), HasSubstr("expensecodes"), Not(HasSubstr(", all\n"))));
    EXPECT_THAT(folder_.Done({"--help"}), HasSubstr("  " + command + " TABLE ID"));
  }
  EXPECT_THAT(folder_.Done({"send", "--help"}), HasSubstr(", all\n"));
}

TEST_F(DeletionCommands, Need_a_table_and_an_identifier) {
  EXPECT_EQ(folder_.Twqb({"delete-billing", "clients"}).status, 2);
  const auto ended = folder_.Twqb({"delete-billing", "cleints", id_});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("Did you mean \"clients\"?"));
  EXPECT_THAT(ended.out, IsEmpty());
}

}  // namespace
}  // namespace twqb::cli
