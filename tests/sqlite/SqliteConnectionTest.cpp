#include <sqlite3.h>

#include "TemporaryDatabase.h"
#include "adapters/sqlite/ConnectionText.h"
#include "tests/support/WatchedFiles.h"

namespace twqb::sqlite {
namespace {

using ado::ObjectState;

// ---------------------------------------------------------------------------------------------------------------------
// Connection strings
// ---------------------------------------------------------------------------------------------------------------------

TEST(ConnectionText, Keys_match_without_case_and_blanks_around_do_not_count) {
  const auto text = ParseConnectionText("  PROVIDER = SqLite ; data source =  my file.db ;");
  EXPECT_EQ(text.provider, "SqLite");
  EXPECT_EQ(text.dataSource, "my file.db");
}

TEST(ConnectionText, A_value_in_double_quotes_may_hold_anything) {
  const auto text = ParseConnectionText("Data Source=\" a;b=\"\"c\"\" \";Provider=\"JETLITE\"");
  EXPECT_EQ(text.dataSource, " a;b=\"c\" ");
  EXPECT_EQ(text.provider, "JETLITE");
}

TEST(ConnectionText, A_value_may_hold_an_equals_sign) {
  EXPECT_EQ(ParseConnectionText("Data Source=a=b.db").dataSource, "a=b.db");
}

TEST(ConnectionText, A_mode_is_none_unless_it_is_named) {
  EXPECT_EQ(ParseConnectionText("Data Source=x;MODE = Read").mode, "Read");
  EXPECT_EQ(ParseConnectionText("Data Source=x").mode, "");
}

TEST(ConnectionText, Other_keys_and_parts_without_a_value_are_passed_over) {
  const auto text = ParseConnectionText("Persist Security Info=False;junk;;Data Source=x;Provider=SQLITE;rest");
  EXPECT_EQ(text.provider, "SQLITE");
  EXPECT_EQ(text.dataSource, "x");
}

TEST(ConnectionText, The_last_of_two_parts_counts) {
  EXPECT_EQ(ParseConnectionText("Data Source=a;Data Source=b").dataSource, "b");
}

TEST(ConnectionText, An_empty_text_has_neither) {
  EXPECT_EQ(ParseConnectionText("").provider, "");
  EXPECT_EQ(ParseConnectionText("Data Source=\"open").dataSource, "open");
}

// ---------------------------------------------------------------------------------------------------------------------
// Open and close
// ---------------------------------------------------------------------------------------------------------------------

class SqliteConnection : public TemporaryDatabase {};

TEST_F(SqliteConnection, The_provider_is_as_typed_before_and_after_Open) {
  const auto connection = Unopened("Provider=JetLite;Data Source=\"" + File() + "\"");
  EXPECT_EQ(connection->Provider(), "JetLite");
  connection->Open();
  EXPECT_EQ(connection->Provider(), "JetLite");
  EXPECT_EQ(connection->State(), ObjectState::Open);
}

TEST_F(SqliteConnection, One_in_mode_Read_reads_and_refuses_to_write) {
  const auto writing = Unopened("Provider=SQLITE;Data Source=" + File());
  writing->Open();
  writing->Execute("CREATE TABLE Kept (a INTEGER)", nullptr);
  writing->Execute("INSERT INTO Kept VALUES (1)", nullptr);
  writing->Close();
  const auto reading = Unopened("Provider=SQLITE;Data Source=" + File() + ";Mode=read");
  reading->Open();
  EXPECT_NE(Raised([&] { reading->Execute("INSERT INTO Kept VALUES (2)", nullptr); }), 0);
  EXPECT_EQ(ToText(reading->Execute("SELECT COUNT(*) FROM Kept", nullptr)->FieldAt(0)), "1");
}

TEST_F(SqliteConnection, An_unknown_provider_is_named) {
  const auto connection = Unopened("Provider=ORACLE;Data Source=" + File());
  EXPECT_EQ(Raised([&] { connection->Open(); }), error::kProviderNotFound);
  EXPECT_NE(Description([&] { connection->Open(); }).find("ORACLE"), std::string::npos);
  EXPECT_EQ(connection->State(), ObjectState::Closed);
}

TEST_F(SqliteConnection, A_missing_provider_is_not_found) {
  EXPECT_EQ(Unopened("Data Source=x")->Provider(), "");
  EXPECT_EQ(Raised([&] { Unopened("Data Source=" + File())->Open(); }), error::kProviderNotFound);
}

TEST_F(SqliteConnection, A_missing_data_source_cannot_be_opened) {
  EXPECT_EQ(Raised([&] { Unopened("Provider=SQLITE")->Open(); }), error::kCannotOpen);
}

TEST_F(SqliteConnection, A_missing_file_is_named_and_not_made) {
  const auto connection = Unopened("Provider=SQLITE;Data Source=" + PathTo("none.db"));
  EXPECT_EQ(Raised([&] { connection->Open(); }), error::kCannotOpen);
  EXPECT_NE(Description([&] { connection->Open(); }).find("none.db"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(PathTo("none.db")));
}

TEST_F(SqliteConnection, A_folder_and_a_file_that_is_no_database_cannot_be_opened) {
  std::ofstream(PathTo("letter.txt")) << std::string(2000, 'x');
  EXPECT_EQ(Raised([&] { Unopened("Provider=SQLITE;Data Source=" + folder_.string())->Open(); }), error::kCannotOpen);
  const auto connection = Unopened("Provider=SQLITE;Data Source=" + PathTo("letter.txt"));
  EXPECT_EQ(Raised([&] { connection->Open(); }), error::kCannotOpen);
  const auto description = Description([&] { connection->Open(); });
  EXPECT_NE(description.find("letter.txt"), std::string::npos) << description;
  EXPECT_NE(description.find("not a database"), std::string::npos) << description;
}

TEST_F(SqliteConnection, The_name_of_the_memory_database_is_a_file_like_any_other) {
  EXPECT_EQ(Raised([&] { Unopened("Provider=SQLITE;Data Source=:memory:")->Open(); }), error::kCannotOpen);
}

TEST_F(SqliteConnection, Creating_a_database_makes_a_file_that_opens_and_is_never_overwritten) {
  EXPECT_GT(std::filesystem::file_size(File()), 0U);
  Execute("CREATE TABLE t (a TEXT)");
  EXPECT_EQ(Raised([&] { CreateSqliteDatabase(File()); }), error::kCannotOpen);
  EXPECT_EQ(Scalar("SELECT count(*) FROM t"), "0");
  EXPECT_EQ(Raised([&] { CreateSqliteDatabase(PathTo("no/such/folder.db")); }), error::kCannotOpen);
}

TEST_F(SqliteConnection, A_database_is_made_under_a_name_that_nothing_has_not_even_a_link_that_leads_nowhere) {
  std::filesystem::create_symlink(PathTo("behind.db"), PathTo("link.db"));
  const auto told = Description([&] { CreateSqliteDatabase(PathTo("link.db")); });
  EXPECT_NE(told.find("the file is there already"), std::string::npos) << told;
  EXPECT_FALSE(std::filesystem::exists(PathTo("behind.db")));
}

TEST_F(SqliteConnection, A_database_that_can_not_be_made_leaves_no_file) {
  connection_.reset();
  const WatchedFiles files(
      [](FileCall call, std::string_view) { return call == FileCall::Write ? SQLITE_FULL : SQLITE_OK; });
  EXPECT_NE(Raised([&] { CreateSqliteDatabase(PathTo("new.db")); }), 0U);
  EXPECT_FALSE(std::filesystem::exists(PathTo("new.db")));
}

TEST_F(SqliteConnection, Opening_twice_is_refused) {
  EXPECT_EQ(Raised([&] { connection_->Open(); }), 0x800A0E79U);
  EXPECT_EQ(connection_->State(), ObjectState::Open);
}

TEST_F(SqliteConnection, A_closed_connection_raises_and_can_be_opened_again) {
  connection_->Close();
  EXPECT_EQ(connection_->State(), ObjectState::Closed);
  EXPECT_EQ(Raised([&] { connection_->Close(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { Execute("SELECT 1"); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { static_cast<void>(Query("SELECT 1")); }), error::kObjectClosed);
  connection_->Open();
  EXPECT_EQ(Scalar("SELECT 1"), "1");
}

TEST_F(SqliteConnection, Opened_again_at_once_it_sees_what_others_made_and_wrote_meanwhile) {
  CreateClient();
  EXPECT_EQ(Scalar("SELECT count(*) FROM Client"), "0");
  connection_->Close();
  const auto other = Connect();
  other->Execute("INSERT INTO Client (ClientID) VALUES ('Acme')", nullptr);
  other->Execute("CREATE TABLE t (a TEXT)", nullptr);
  connection_->Open();
  EXPECT_EQ(Scalar("SELECT ClientID FROM Client"), "Acme");
  EXPECT_EQ(Scalar("SELECT count(*) FROM t"), "0");
}

TEST_F(SqliteConnection, Opened_again_at_once_it_works_on_the_file_that_stands_there_then) {
  CreateClient();
  connection_->Close();
  std::filesystem::rename(File(), PathTo("old.db"));
  EXPECT_EQ(Raised([&] { connection_->Open(); }), error::kCannotOpen);
  CreateSqliteDatabase(File());
  connection_->Open();
  EXPECT_EQ(Raised([&] { (void)Query("SELECT * FROM Client"); }), error::kNoSuchTable);
}

TEST_F(SqliteConnection, Opened_again_at_once_with_another_file_it_works_on_that) {
  CreateClient();
  CreateSqliteDatabase(PathTo("other.db"));
  connection_->Close();
  connection_->SetConnectionString("Provider=SQLITE;Data Source=" + PathTo("other.db"));
  connection_->Open();
  EXPECT_EQ(Raised([&] { (void)Query("SELECT * FROM Client"); }), error::kNoSuchTable);
}

TEST_F(SqliteConnection, A_transaction_that_was_left_open_does_not_come_back) {
  CreateClient();
  Execute("BEGIN");
  Execute("INSERT INTO Client (ClientID) VALUES ('Acme')");
  connection_->Close();
  const auto other = Connect();
  other->Execute("INSERT INTO Client (ClientID) VALUES ('Bolt')", nullptr);
  connection_->Open();
  EXPECT_EQ(Scalar("SELECT ClientID FROM Client"), "Bolt");
}

TEST_F(SqliteConnection, Recordsets_of_a_closed_connection_stay_closed_when_it_is_opened_again) {
  CreateClient();
  const auto table = OpenTable("Client");
  connection_->Close();
  connection_->Open();
  EXPECT_EQ(table->State(), ObjectState::Closed);
  EXPECT_EQ(Raised([&] { table->AddNew(); }), error::kObjectClosed);
  Execute("DROP TABLE Client");
}

TEST_F(SqliteConnection, Closing_a_connection_closes_its_recordsets) {
  CreateClient();
  const auto table = OpenTable("Client");
  const auto rows = Query("SELECT 1");
  table->AddNew();
  connection_->Close();
  EXPECT_EQ(table->State(), ObjectState::Closed);
  EXPECT_EQ(rows->State(), ObjectState::Closed);
  EXPECT_EQ(Raised([&] { table->Update(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->FieldAt(0)); }), error::kObjectClosed);
}

// ---------------------------------------------------------------------------------------------------------------------
// Execute
// ---------------------------------------------------------------------------------------------------------------------

TEST_F(SqliteConnection, Execute_counts_the_rows_of_changes_alone) {
  EXPECT_EQ(Execute("CREATE TABLE t (a TEXT)"), 0);
  EXPECT_EQ(Execute("INSERT INTO t VALUES ('x'), ('y'), ('z');"), 3);
  EXPECT_EQ(Execute("CREATE TABLE u (a TEXT)"), 0);
  EXPECT_EQ(Execute("UPDATE t SET a = 'w' WHERE a <> 'X'; "), 2);
  EXPECT_EQ(Execute("UPDATE t SET a = 'w' WHERE a = 'none'"), 0);
  EXPECT_EQ(Execute("SELECT * FROM t"), 0);
  EXPECT_EQ(Execute("DELETE FROM t;"), 3);
  EXPECT_EQ(Execute("DROP TABLE u"), 0);
}

TEST_F(SqliteConnection, Execute_answers_rows_as_an_open_recordset_and_else_a_closed_one) {
  const auto rows = connection_->Execute("SELECT 7 AS n", nullptr);
  EXPECT_EQ(rows->State(), ObjectState::Open);
  EXPECT_EQ(rows->Field("N"), Value(std::int64_t{7}));
  EXPECT_EQ(Raised([&] { rows->AddNew(); }), error::kReadOnly);
  EXPECT_EQ(connection_->Execute("CREATE TABLE t (a TEXT)", nullptr)->State(), ObjectState::Closed);
}

TEST_F(SqliteConnection, Only_one_statement_is_taken_and_none_of_several_is_run) {
  Execute("CREATE TABLE t (a TEXT)");
  EXPECT_EQ(Raised([&] { Execute("INSERT INTO t VALUES ('x'); DELETE FROM t"); }), error::kBadSyntax);
  EXPECT_EQ(Scalar("SELECT count(*) FROM t"), "0");
  EXPECT_EQ(Raised([&] { Execute(""); }), error::kBadSyntax);
  EXPECT_EQ(Raised([&] { Execute(" -- nothing"); }), error::kBadSyntax);
  EXPECT_EQ(Execute("INSERT INTO t VALUES ('x') ; ;\r\n -- done"), 1);
}

TEST_F(SqliteConnection, Statements_of_both_dialects_are_translated) {
  Execute("CREATE TABLE Pay (PayID VARCHAR(38), Retainer SMALLINT, Done DATETIME, F TEXT, L TEXT)");
  Execute("INSERT INTO Pay VALUES ({guid {AB}}, False, #01/31/2008 10:15:00#, 'Ann', 'Lee')");
  EXPECT_EQ(Execute("UPDATE Pay SET Retainer = True WHERE PayID = {guid {ab}};"), 1);
  const auto rows = Query("SELECT Retainer, PayID, Done, (F + ' ' + L) as Name FROM Pay");
  EXPECT_EQ(rows->Field("Retainer"), Value(std::int64_t{-1}));
  EXPECT_EQ(rows->Field("PayID"), Value(std::string("{AB}")));
  EXPECT_EQ(rows->Field("Done"), Value(TextToDate("1/31/2008 10:15:00")));
  EXPECT_EQ(rows->Field("Name"), Value(std::string("Ann Lee")));
}

// ---------------------------------------------------------------------------------------------------------------------
// Errors
// ---------------------------------------------------------------------------------------------------------------------

struct Refusal {
  std::string name;
  std::string statement;
  ErrorNumber number;
  std::string names;  // what the description tells
};

class Refusals : public TemporaryDatabase, public ::testing::WithParamInterface<Refusal> {
 protected:
  Refusals() {
    CreateClient();
    Execute("INSERT INTO Client (ClientID) VALUES ('Acme')");
  }
};

TEST_P(Refusals, Have_the_published_number_and_name_the_thing) {
  const auto run = [&] { Execute(GetParam().statement); };
  EXPECT_EQ(Raised(run), GetParam().number);
  const auto description = Description(run);
  EXPECT_TRUE(description.starts_with(ErrorText(GetParam().number))) << description;
  EXPECT_NE(description.find(GetParam().names), std::string::npos) << description;
}

const Refusal kRefusals[] = {
    {"BadSyntax", "SELEC 1", error::kBadSyntax, "SELEC"},
    {"EmptyTableName", "DELETE FROM  WHERE QBLinkID = 'x';", error::kBadSyntax, "WHERE"},
    {"UnknownColumn", "SELECT Nonesuch FROM Client", error::kBadSyntax, "Nonesuch"},
    {"QuotedUnknownNameIsNoText", "SELECT * FROM Client WHERE ClientID = \"Acme\"", error::kBadSyntax, "Acme"},
    {"UnfinishedText", "SELECT 'x", error::kBadSyntax, "'x"},
    {"UnknownTable", "SELECT * FROM Nonesuch", error::kNoSuchTable, "Nonesuch"},
    {"UnknownTableToChange", "UPDATE Nonesuch SET a = 1", error::kNoSuchTable, "Nonesuch"},
    {"SameKeyTwice", "INSERT INTO Client (ClientID) VALUES ('ACME')", error::kConstraint, "Client.ClientID"},
    {"KeyLeftOut", "INSERT INTO Client (Memo) VALUES ('x')", error::kConstraint, "Client.ClientID"},
    {"TextTooLong", "UPDATE Client SET QBLinkID = '12345678901234567890123456789012345678901'", error::kConstraint,
     "QBLinkID"},
    {"Extension", "SELECT load_extension('x')", error::kBadSyntax, "not authorized"},
};
INSTANTIATE_TEST_SUITE_P(Sql, Refusals, ::testing::ValuesIn(kRefusals), [](const auto& i) { return i.param.name; });

TEST_F(SqliteConnection, A_text_of_just_the_declared_characters_fits_whatever_its_bytes) {
  CreateClient();
  EXPECT_EQ(Execute("INSERT INTO Client (ClientID) VALUES ('ÄÖÜäöüß青葉é')"), 1);
}

TEST_F(SqliteConnection, A_full_disk_is_told) {
  Execute("CREATE TABLE t (a TEXT)");
  Execute("PRAGMA max_page_count = 2");
  const auto fill = [&] { Execute("INSERT INTO t VALUES (hex(zeroblob(100000)))"); };
  EXPECT_EQ(Raised(fill), error::kCannotOpen);
  const auto description = Description(fill);
  EXPECT_NE(description.find("disk is full"), std::string::npos) << description;
  EXPECT_NE(description.find("billing.db"), std::string::npos) << description;
}

TEST_F(SqliteConnection, A_file_that_another_program_keeps_locked_is_told) {
  Execute("CREATE TABLE t (a TEXT)");
  Execute("PRAGMA busy_timeout = 20");
  const auto other = Connect();
  other->Execute("BEGIN EXCLUSIVE", nullptr);
  const auto write = [&] { Execute("INSERT INTO t VALUES ('x')"); };
  EXPECT_EQ(Raised(write), error::kCannotOpen);
  EXPECT_NE(Description(write).find("locked"), std::string::npos);
  other->Close();
  EXPECT_EQ(Execute("INSERT INTO t VALUES ('x')"), 1) << "a close gives the transaction up";
}

TEST_F(SqliteConnection, A_database_that_may_not_be_written_is_told) {
  Execute("CREATE TABLE t (a TEXT)");
  Execute("PRAGMA query_only = 1");
  const auto write = [&] { Execute("INSERT INTO t VALUES ('x')"); };
  EXPECT_EQ(Raised(write), error::kCannotOpen);
  EXPECT_NE(Description(write).find("readonly"), std::string::npos);
}

TEST_F(SqliteConnection, A_damaged_file_is_told) {
  Execute("CREATE TABLE t (a TEXT)");
  for (int i = 0; i < 3; ++i) Execute("INSERT INTO t VALUES (hex(zeroblob(1000)))");
  connection_->Close();
  {
    constexpr std::streamoff kSecondPage = 4096;
    std::fstream file(File(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(kSecondPage);
    file << std::string(4096, 'x');
  }
  connection_->Open();
  const auto read = [&] { static_cast<void>(Query("SELECT * FROM t")); };
  EXPECT_EQ(Raised(read), error::kCannotOpen);
  EXPECT_NE(Description(read).find("malformed"), std::string::npos);
}

}  // namespace
}  // namespace twqb::sqlite
