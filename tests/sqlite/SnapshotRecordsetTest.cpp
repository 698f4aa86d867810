#include <limits>

#include "TemporaryDatabase.h"

namespace twqb::sqlite {
namespace {

class SnapshotRecordset : public TemporaryDatabase {
 protected:
  SnapshotRecordset() {
    CreateClient();
    Execute(
        "INSERT INTO Client (ClientID, Memo, Balance, Rate, IsSub, QBLinkID, LastUpdated) "
        "VALUES ('Acme', 'long', 12.5, 3, -1, '80-1', '2008-01-31 10:15:00')");
    Execute("INSERT INTO Client (ClientID, Balance, LastUpdated) VALUES ('Äpfel', 7, '2/29/2008 1:00:00 PM')");
    Execute("INSERT INTO Client (ClientID, LastUpdated) VALUES ('zed', 'soon')");
  }
};

TEST_F(SnapshotRecordset, Fields_have_the_types_that_the_columns_were_declared_with) {
  const auto rows = Query("SELECT * FROM Client ORDER BY ClientID");
  EXPECT_EQ(rows->Field("ClientID"), Value(std::string("Acme")));
  EXPECT_EQ(rows->Field("memo"), Value(std::string("long")));
  EXPECT_EQ(rows->Field("BALANCE"), Value(Currency::FromTenThousandths(125000)));
  EXPECT_EQ(rows->Field("Rate"), Value(3.0));
  EXPECT_EQ(rows->Field("IsSub"), Value(std::int64_t{-1}));
  EXPECT_EQ(rows->Field("LastUpdated"), Value(TextToDate("1/31/2008 10:15:00")));
  rows->MoveNext();  // zed
  EXPECT_EQ(rows->Field("Memo"), Value(Null{}));
  EXPECT_EQ(rows->Field("LastUpdated"), Value(std::string("soon"))) << "what is no date comes out as it is kept";
  rows->MoveNext();  // Äpfel
  EXPECT_EQ(rows->Field("Balance"), Value(Currency::FromTenThousandths(70000))) << "a whole amount is money too";
  EXPECT_EQ(rows->Field("LastUpdated"), Value(TextToDate("2008-02-29 13:00:00")));
}

TEST_F(SnapshotRecordset, Types_come_through_views_and_names_through_aliases) {
  Execute("CREATE VIEW V AS SELECT ClientID AS Code, LastUpdated AS Stamp, Balance AS Amount FROM Client");
  const auto rows = Query("SELECT * FROM V WHERE Code = 'ACME'");
  EXPECT_EQ(rows->FieldName(0), "Code");
  EXPECT_EQ(rows->Field("Stamp"), Value(TextToDate("1/31/2008 10:15:00")));
  EXPECT_EQ(rows->Field("Amount"), Value(Currency::FromTenThousandths(125000)));
  EXPECT_EQ(rows->DefinedSize("Code"), 10);
}

TEST_F(SnapshotRecordset, Types_and_rules_of_comparison_come_through_a_union_of_tables) {
  Execute("CREATE TABLE Log (Code VARCHAR(10), Stamp DATETIME, Amount DECIMAL(19,4))");
  Execute("INSERT INTO Log VALUES ('ACME', '2/29/2008', 3)");
  Execute(
      "CREATE VIEW Both AS SELECT 'C' AS Kind, ClientID AS Code, LastUpdated AS Stamp, Balance AS Amount FROM Client "
      "UNION ALL SELECT 'L' AS Kind, Code AS Code, Stamp AS Stamp, Amount AS Amount FROM Log");
  const auto rows = Query("SELECT * FROM Both WHERE Code ='acme' AND Stamp > '1/1/2008' ORDER BY Stamp DESC");
  ASSERT_EQ(rows->RecordCount(), 2);
  EXPECT_EQ(rows->Field("Kind"), Value(std::string("L")));
  EXPECT_EQ(rows->Field("Stamp"), Value(TextToDate("2/29/2008")));
  EXPECT_EQ(rows->Field("Amount"), Value(Currency::FromTenThousandths(30000)));
}

TEST_F(SnapshotRecordset, Expressions_come_out_as_the_engine_has_them) {
  const auto rows = Query("SELECT count(*) AS n, 1.5 AS r, 'x' AS t, NULL AS u FROM Client");
  EXPECT_EQ(rows->Field("n"), Value(std::int64_t{3}));
  EXPECT_EQ(rows->Field("r"), Value(1.5));
  EXPECT_EQ(rows->Field("t"), Value(std::string("x")));
  EXPECT_EQ(rows->Field("u"), Value(Null{}));
}

TEST_F(SnapshotRecordset, A_qualified_column_goes_by_its_own_name) {
  const auto rows = Query("SELECT Client.ClientID, Client.QBLinkID AS ClientQBLinkID FROM Client");
  EXPECT_EQ(rows->FieldCount(), 2);
  EXPECT_EQ(rows->FieldName(0), "ClientID");
  EXPECT_EQ(rows->FieldName(1), "ClientQBLinkID");
}

TEST_F(SnapshotRecordset, Rows_are_counted_and_walked_to_the_end) {
  const auto rows = Query("SELECT ClientID FROM Client ORDER BY ClientID");
  EXPECT_EQ(rows->RecordCount(), 3);
  EXPECT_FALSE(rows->Eof());
  for (int i = 0; i < 3; ++i) rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(Raised([&] { rows->MoveNext(); }), error::kAtEof);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->FieldAt(0)); }), error::kAtEof);
  rows->MoveFirst();
  EXPECT_EQ(rows->FieldAt(0), Value(std::string("Acme")));
}

TEST_F(SnapshotRecordset, A_result_without_rows_is_at_Eof_and_stays_there) {
  const auto rows = Query("SELECT ClientID FROM Client WHERE ClientID = 'none'");
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(rows->RecordCount(), 0);
  rows->MoveFirst();
  EXPECT_TRUE(rows->Eof());
}

TEST_F(SnapshotRecordset, Rows_stay_as_they_were_when_the_statement_ran) {
  const auto rows = Query("SELECT ClientID FROM Client ORDER BY ClientID");
  Execute("DELETE FROM Client");
  EXPECT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(rows->FieldAt(0), Value(std::string("Acme")));
}

TEST_F(SnapshotRecordset, An_open_result_keeps_no_other_connection_from_writing) {
  const auto rows = Query("SELECT * FROM Client");
  const auto other = Connect();
  std::int64_t changed = 0;
  other->Execute("UPDATE Client SET Memo = 'x'", &changed);
  EXPECT_EQ(changed, 3);
}

TEST_F(SnapshotRecordset, Find_goes_by_the_rules_of_the_column_from_the_current_row_on) {
  const auto rows = Query("SELECT * FROM Client ORDER BY ClientID");
  rows->Find("ClientID = 'äPFEL'");
  EXPECT_EQ(rows->Field("ClientID"), Value(std::string("Äpfel")));
  rows->Find("ClientID = 'Acme'");
  EXPECT_TRUE(rows->Eof()) << "it stands in front";
  rows->MoveFirst();
  rows->Find("LastUpdated = '2/29/2008 13:00:00'");
  EXPECT_EQ(rows->Field("ClientID"), Value(std::string("Äpfel")));
  rows->MoveFirst();
  rows->Find("Balance = '7.0'");
  EXPECT_EQ(rows->Field("ClientID"), Value(std::string("Äpfel")));
  rows->MoveFirst();
  rows->Find("Balance = 'seven'");
  EXPECT_TRUE(rows->Eof());
}

TEST_F(SnapshotRecordset, Unknown_fields_are_named) {
  const auto rows = Query("SELECT ClientID FROM Client");
  const auto read = [&] { static_cast<void>(rows->Field("Nonesuch")); };
  EXPECT_EQ(Raised(read), error::kNoSuchField);
  EXPECT_NE(Description(read).find("Nonesuch"), std::string::npos);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->FieldAt(1)); }), error::kNoSuchField);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->FieldAt(-1)); }), error::kNoSuchField);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->FieldName(1)); }), error::kNoSuchField);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->DefinedSize("Nonesuch")); }), error::kNoSuchField);
}

TEST_F(SnapshotRecordset, Nothing_in_it_can_be_edited) {
  const auto rows = Query("SELECT ClientID FROM Client");
  EXPECT_EQ(Raised([&] { rows->SetField("ClientID", std::string("x")); }), error::kReadOnly);
  EXPECT_EQ(Raised([&] { rows->AddNew(); }), error::kReadOnly);
  EXPECT_EQ(Raised([&] { rows->Update(); }), error::kReadOnly);
  EXPECT_EQ(rows->EditState(), ado::EditMode::None);
  EXPECT_EQ(Raised([&] { rows->CancelUpdate(); }), 0U) << "there is nothing to cancel";
}

TEST_F(SnapshotRecordset, Gives_back_every_value_as_it_was_in_any_order) {
  Execute("CREATE TABLE Odd (N BIGINT, F DOUBLE, M DECIMAL(19,4), D DATETIME, T TEXT)");
  const std::string rows[] = {
      "(9223372036854775807, 1e308, 900000000000000.25, '9999-12-31 23:59:59', '')",
      "(-9223372036854775807 - 1, -0.1, -900000000000000.25, '0100-01-01 00:00:00', 'é' || char(0) || 'x')",
      "(-1, 0.0, -0.0001, '1899-12-30 00:00:00', NULL)", "(NULL, NULL, NULL, NULL, printf('%.*c', 600000, 'y'))",
      "(127, 1.5, 64, '2008-03-05 10:00:00', printf('%.*c', 128, 'z'))"};
  for (const auto& row : rows) Execute("INSERT INTO Odd VALUES " + row);
  const auto all = Query("SELECT * FROM Odd");
  ASSERT_EQ(all->RecordCount(), 5);
  EXPECT_EQ(all->Field("N"), Value(std::numeric_limits<std::int64_t>::max()));
  EXPECT_EQ(all->Field("F"), Value(1e308));
  EXPECT_EQ(all->Field("T"), Value(std::string()));
  all->MoveNext();
  EXPECT_EQ(all->Field("T"), Value(std::string("é\0x", 4)));
  EXPECT_EQ(all->Field("N"), Value(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(all->Field("M"), Value(Currency::FromDouble(-900000000000000.25)));
  EXPECT_EQ(all->Field("D"), Value(*ParseDate("0100-01-01 00:00:00")));
  all->MoveNext();
  EXPECT_EQ(all->Field("M"), Value(Currency::FromTenThousandths(-1)));
  EXPECT_EQ(all->Field("N"), Value(std::int64_t{-1}));
  EXPECT_TRUE(IsNull(all->Field("T")));
  all->MoveNext();
  EXPECT_EQ(ToText(all->Field("T")).size(), 600'000U) << "a row larger than what is taken at once";
  EXPECT_TRUE(IsNull(all->Field("D")));
  all->MoveNext();
  EXPECT_EQ(ToText(all->Field("T")), std::string(128, 'z'));
  all->MoveFirst();
  EXPECT_EQ(all->Field("M"), Value(Currency::FromDouble(900000000000000.25)));
}

TEST_F(SnapshotRecordset, Closed_it_raises) {
  const auto rows = Query("SELECT ClientID FROM Client");
  rows->Close();
  EXPECT_EQ(rows->State(), ado::ObjectState::Closed);
  EXPECT_EQ(Raised([&] { rows->Close(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->Eof()); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { rows->MoveFirst(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->Field("ClientID")); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { static_cast<void>(rows->RecordCount()); }), error::kObjectClosed);
}

TEST_F(SnapshotRecordset, A_statement_without_rows_is_not_run_as_a_recordset) {
  EXPECT_EQ(Raised([&] { static_cast<void>(Query("DELETE FROM Client")); }), error::kBadSyntax);
  EXPECT_EQ(Scalar("SELECT count(*) FROM Client"), "3");
}

}  // namespace
}  // namespace twqb::sqlite
