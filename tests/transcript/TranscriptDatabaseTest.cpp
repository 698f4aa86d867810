// The events of the database seam: connect, disconnect, sql, row.
#include "TranscriptFixture.h"

namespace twqb {
namespace {

using ado::CursorType;
using ado::LockType;

TEST_F(Transcript, Opening_and_closing_a_database_is_written) {
  const auto connection = platform_.database->CreateConnection();
  connection->SetConnectionString("Provider=SQLITE;Data Source=billing.db");
  connection->Open();
  connection->Close();
  const std::vector<std::string> expected = {
      R"({"kind":"connect","connectionString":"Provider=SQLITE;Data Source=billing.db"})", R"({"kind":"disconnect"})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(Transcript, A_database_that_does_not_open_is_written) {
  const auto connection = platform_.database->CreateConnection();
  connection->SetConnectionString("Provider=SQLITE");
  RaiseNext(error::kCannotOpen, "locked");
  EXPECT_THROW(connection->Open(), PlatformError);
  EXPECT_EQ(Line(), R"({"kind":"connect","connectionString":"Provider=SQLITE",)"
                    R"("raised":{"number":"0x80004005","description":"locked"}})");
}

TEST_F(Transcript, A_statement_has_the_rows_that_it_changed) {
  const auto connection = platform_.database->CreateConnection();
  std::int64_t affected = 0;
  connection->Execute("UPDATE Client SET QBLinkID = 'A'  WHERE ClientID = 'B'", &affected);
  EXPECT_EQ(affected, 3);
  EXPECT_EQ(Line(), R"({"kind":"sql","text":"UPDATE Client SET QBLinkID = 'A'  WHERE ClientID = 'B'","rows":3})");
  fakes_.database.rows = 1;
  connection->Execute("DELETE FROM Client", nullptr);
  EXPECT_EQ(Line(), R"({"kind":"sql","text":"DELETE FROM Client","rows":1})");
}

TEST_F(Transcript, A_SELECT_has_the_rows_that_it_fetched) {
  const auto connection = platform_.database->CreateConnection();
  fakes_.database.rows = 12;
  connection->OpenRecordset("SELECT ClientID FROM Client", CursorType::Static, LockType::ReadOnly);
  EXPECT_EQ(Line(), R"({"kind":"sql","text":"SELECT ClientID FROM Client","rows":12})");
  connection->Execute("SELECT 1", nullptr);
  EXPECT_EQ(Line(), R"({"kind":"sql","text":"SELECT 1","rows":12})");
}

TEST_F(Transcript, A_statement_that_fails_is_written) {
  const auto connection = platform_.database->CreateConnection();
  RaiseNext(error::kNoSuchTable, "no table");
  EXPECT_THROW(connection->Execute("DELETE FROM Nowhere", nullptr), PlatformError);
  EXPECT_EQ(Line(),
            R"({"kind":"sql","text":"DELETE FROM Nowhere","raised":{"number":"0x80040E37","description":"no table"}})");
}

class OpenTable : public Transcript {
 protected:
  OpenTable() {
    table_ = connection_->OpenRecordset("SELECT * FROM Client;", CursorType::Static, LockType::Optimistic);
    opened_ = Line();
  }
  std::unique_ptr<ado::Connection> connection_ = platform_.database->CreateConnection();
  std::unique_ptr<ado::Recordset> table_;
  std::string opened_;
};

TEST_F(OpenTable, A_table_opened_for_writing_has_no_count_of_rows) {
  EXPECT_EQ(opened_, R"({"kind":"sql","text":"SELECT * FROM Client;","rows":null})");
}

TEST_F(OpenTable, A_row_added_has_its_values_in_the_order_of_their_first_assignment) {
  table_->AddNew();
  table_->SetField("QBLinkID", Null{});
  table_->SetField("ClientID", std::string("Acme"));
  table_->SetField("IsSub", true);
  table_->SetField("Rank", std::int64_t{7});
  table_->SetField("Rate", 1.5);
  table_->SetField("Balance", Currency::FromTenThousandths(-1234500));
  table_->SetField("LastUpdated", Date::FromCivil({.year = 2008, .month = 3, .day = 5, .hour = 10}));
  table_->SetField("qblinkid", std::string("A-1"));
  table_->SetField("Notes", std::string("one\r\ntwo"));
  table_->Update();
  EXPECT_EQ(Line(), R"({"kind":"row","table":"Client","action":"insert","values":{"QBLinkID":"A-1","ClientID":"Acme",)"
                    R"("IsSub":true,"Rank":7,"Rate":1.5,"Balance":-123.45,"LastUpdated":"2008-03-05T10:00:00",)"
                    R"("Notes":"one\r\ntwo"}})");
}

TEST_F(OpenTable, NULL_is_null) {
  table_->AddNew();
  table_->SetField("QBLinkID", Null{});
  table_->Update();
  EXPECT_EQ(Line(), R"({"kind":"row","table":"Client","action":"insert","values":{"QBLinkID":null}})");
}

TEST_F(OpenTable, A_row_changed_has_the_fields_that_were_assigned) {
  table_->SetField("City", std::string("Ulm"));
  table_->Update();
  EXPECT_EQ(Line(), R"({"kind":"row","table":"Client","action":"update","values":{"City":"Ulm"}})");
  table_->SetField("State", std::string("CA"));
  table_->Update();
  EXPECT_EQ(Line(), R"({"kind":"row","table":"Client","action":"update","values":{"State":"CA"}})");
}

TEST_F(OpenTable, A_row_that_could_not_be_written_stays_pending) {
  table_->AddNew();
  table_->SetField("ClientID", std::string("Acme"));
  RaiseNext(error::kConstraint, "twice");
  EXPECT_THROW(table_->Update(), PlatformError);
  table_->Update();
  const std::vector<std::string> expected = {
      R"({"kind":"row","table":"Client","action":"insert","values":{"ClientID":"Acme"},)"
      R"("raised":{"number":"0x80040E2F","description":"twice"}})",
      R"({"kind":"row","table":"Client","action":"insert","values":{"ClientID":"Acme"}})"};
  EXPECT_EQ(Lines(), expected);
}

TEST_F(OpenTable, A_field_that_refuses_its_value_is_not_in_the_row) {
  table_->AddNew();
  RaiseNext(error::kNoSuchField, "no field");
  EXPECT_THROW(table_->SetField("Nothing", true), PlatformError);
  table_->Update();
  EXPECT_EQ(Line(), R"({"kind":"row","table":"Client","action":"insert","values":{}})");
}

TEST_F(OpenTable, A_cancelled_edit_leaves_no_event) {
  table_->AddNew();
  table_->SetField("ClientID", std::string("Acme"));
  table_->CancelUpdate();
  table_->Update();
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(fakes_.notes.calls.back(), "Update");
}

}  // namespace
}  // namespace twqb
