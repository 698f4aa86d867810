#include <limits>

#include "TemporaryDatabase.h"

namespace twqb::sqlite {
namespace {

using ado::EditMode;

Value Text(std::string text) { return {std::move(text)}; }

class TableRecordset : public TemporaryDatabase {
 protected:
  TableRecordset() {
    CreateClient();
    Insert("Acme", "80-1");
    Insert("Bolt", "80-2");
    Insert("Cove", "80-3");
    table_ = OpenTable("Client");
  }

  void Insert(const std::string& key, const std::string& link) {
    Execute("INSERT INTO Client (ClientID, QBLinkID) VALUES ('" + key + "', '" + link + "')");
  }
  // What a column of a row was really written as.
  std::string Stored(const std::string& column, const std::string& key = "Acme") {
    return Scalar("SELECT CAST(" + column + " AS TEXT) FROM Client WHERE ClientID = '" + key + "'");
  }

  std::unique_ptr<ado::Recordset> table_;
};

// ---------------------------------------------------------------------------------------------------------------------
// Opening
// ---------------------------------------------------------------------------------------------------------------------

TEST_F(TableRecordset, The_statement_is_free_in_spacing_case_and_semicolon) {
  const auto opened = [&](std::string_view statement) {
    return Raised([&] { connection_->OpenRecordset(statement, ado::CursorType::Static, ado::LockType::Optimistic); });
  };
  EXPECT_EQ(opened("select  *\nfrom client"), 0U);
  EXPECT_EQ(opened(" SELECT * FROM [Client] ; "), 0U);
  EXPECT_EQ(opened("SELECT ClientID FROM Client;"), error::kBadSyntax);
  EXPECT_EQ(opened("SELECT * FROM Client WHERE ClientID = 'x'"), error::kBadSyntax);
  EXPECT_EQ(opened("SELECT * FROM ;"), error::kBadSyntax);
  EXPECT_EQ(opened("SELECT * FROM 'Client'"), error::kBadSyntax);
  EXPECT_EQ(opened("SELECT * FROM Nonesuch;"), error::kNoSuchTable);
}

TEST_F(TableRecordset, It_may_be_opened_for_the_rows_that_have_a_value_in_some_column) {
  Execute("UPDATE Client SET QBLinkID = NULL WHERE ClientID IN ('Acme', 'Cove')");
  Insert("Dawn", "");
  const auto linked = connection_->OpenRecordset("SELECT * FROM Client  WHERE qblinkid IS NOT NULL;",
                                                 ado::CursorType::Static, ado::LockType::Optimistic);
  EXPECT_EQ(linked->RecordCount(), 2);
  std::string keys;
  for (; !linked->Eof(); linked->MoveNext()) keys += ToText(linked->FieldAt(0)) + " ";
  EXPECT_EQ(keys, "Bolt Dawn ");
  linked->MoveFirst();
  linked->Find("ClientID = 'Cove'");
  EXPECT_TRUE(linked->Eof());
  linked->AddNew();
  linked->SetField("ClientID", Text("Eddy"));
  linked->Update();
  EXPECT_EQ(linked->Field("ClientID"), Text("Eddy")) << "what was added stays in hand";
}

TEST_F(TableRecordset, No_other_condition_opens_a_table) {
  const auto opened = [&](std::string_view statement) {
    return Raised([&] { connection_->OpenRecordset(statement, ado::CursorType::Static, ado::LockType::Optimistic); });
  };
  EXPECT_EQ(opened("SELECT * FROM Client WHERE QBLinkID IS NULL"), error::kBadSyntax);
  EXPECT_EQ(opened("SELECT * FROM Client WHERE QBLinkID IS NOT NULL OR 1"), error::kBadSyntax);
  EXPECT_EQ(opened("SELECT * FROM Client WHERE 'QBLinkID' IS NOT NULL"), error::kBadSyntax);
  EXPECT_EQ(opened("SELECT * FROM Client WHERE Nonesuch IS NOT NULL"), error::kBadSyntax);
}

TEST_F(TableRecordset, It_knows_the_columns_and_their_sizes) {
  EXPECT_EQ(table_->FieldCount(), 7);
  EXPECT_EQ(table_->FieldName(0), "ClientID");
  EXPECT_EQ(table_->FieldName(6), "LastUpdated");
  EXPECT_EQ(table_->DefinedSize("clientid"), 10);
  EXPECT_EQ(table_->DefinedSize("QBLinkID"), 40);
  EXPECT_EQ(table_->DefinedSize("Memo"), 0);
  EXPECT_EQ(table_->DefinedSize("Balance"), 0) << "its digits are no length";
  EXPECT_EQ(Raised([&] { static_cast<void>(table_->DefinedSize("Nonesuch")); }), error::kNoSuchField);
}

TEST_F(TableRecordset, No_row_is_read_ahead) {
  Execute("DELETE FROM Client");
  Insert("Dawn", "80-4");
  EXPECT_EQ(table_->Field("ClientID"), Text("Dawn"));
}

// ---------------------------------------------------------------------------------------------------------------------
// Moving
// ---------------------------------------------------------------------------------------------------------------------

TEST_F(TableRecordset, It_walks_the_rows_in_the_order_of_their_insertion) {
  EXPECT_EQ(table_->RecordCount(), 3);
  std::string keys;
  for (; !table_->Eof(); table_->MoveNext()) keys += ToText(table_->FieldAt(0)) + " ";
  EXPECT_EQ(keys, "Acme Bolt Cove ");
  EXPECT_EQ(Raised([&] { table_->MoveNext(); }), error::kAtEof);
  table_->MoveFirst();
  EXPECT_EQ(table_->Field("CLIENTID"), Text("Acme"));
}

TEST_F(TableRecordset, A_row_with_the_last_rowid_of_all_is_followed_by_Eof) {
  Execute("INSERT INTO Client (rowid, ClientID, QBLinkID) VALUES (" +
          std::to_string(std::numeric_limits<std::int64_t>::max()) + ", 'Last', 'last')");
  table_->Find("QBLinkID = 'last'");
  table_->MoveNext();
  EXPECT_TRUE(table_->Eof());
}

TEST_F(TableRecordset, An_empty_table_is_at_Eof_until_a_row_is_there) {
  Execute("DELETE FROM Client");
  table_->MoveFirst();
  EXPECT_TRUE(table_->Eof());
  EXPECT_EQ(Raised([&] { static_cast<void>(table_->Field("ClientID")); }), error::kAtEof);
  EXPECT_EQ(Raised([&] { table_->SetField("ClientID", Text("x")); }), error::kAtEof);
  Insert("Dawn", "80-4");
  table_->MoveFirst();
  EXPECT_EQ(table_->Field("ClientID"), Text("Dawn"));
}

TEST_F(TableRecordset, Find_stands_on_the_row_with_the_link) {
  table_->MoveFirst();
  table_->Find("QBLinkID = '80-2'");
  EXPECT_FALSE(table_->Eof());
  EXPECT_EQ(table_->Field("ClientID"), Text("Bolt"));
}

TEST_F(TableRecordset, A_miss_of_Find_leaves_Eof) {
  table_->Find("QBLinkID = 'none'");
  EXPECT_TRUE(table_->Eof());
  EXPECT_EQ(Raised([&] { static_cast<void>(table_->Field("ClientID")); }), error::kAtEof);
  EXPECT_EQ(Raised([&] { table_->SetField("Memo", Text("x")); }), error::kAtEof);
  EXPECT_EQ(table_->EditState(), EditMode::None);
  table_->Find("QBLinkID = '80-1'");
  EXPECT_TRUE(table_->Eof()) << "nothing is behind the end";
}

TEST_F(TableRecordset, Find_begins_at_the_current_row) {
  table_->Find("QBLinkID = '80-2'");
  table_->Find("QBLinkID = '80-2'");
  EXPECT_EQ(table_->Field("ClientID"), Text("Bolt")) << "the current row counts";
  table_->Find("QBLinkID = '80-1'");
  EXPECT_TRUE(table_->Eof()) << "a row in front does not";
}

TEST_F(TableRecordset, Find_takes_the_first_of_several) {
  Insert("Dawn", "80-2");
  table_->Find("QBLinkID = '80-2'");
  EXPECT_EQ(table_->Field("ClientID"), Text("Bolt"));
  table_->MoveNext();
  table_->Find("QBLinkID = '80-2'");
  EXPECT_EQ(table_->Field("ClientID"), Text("Dawn"));
}

TEST_F(TableRecordset, Find_sees_rows_added_since_by_anyone) {
  EXPECT_EQ(table_->Field("ClientID"), Text("Acme"));
  Insert("Dawn", "80-4");
  const auto other = Connect();
  other->Execute("INSERT INTO Client (ClientID, QBLinkID) VALUES ('Echo', '80-5')", nullptr);
  table_->Find("QBLinkID = '80-4'");
  EXPECT_EQ(table_->Field("ClientID"), Text("Dawn"));
  table_->Find("QBLinkID = '80-5'");
  EXPECT_EQ(table_->Field("ClientID"), Text("Echo"));
}

TEST_F(TableRecordset, Find_compares_as_the_column_does) {
  Execute("UPDATE Client SET LastUpdated = '2008-01-31 10:15:00', Rate = 2.5 WHERE ClientID = 'Bolt'");
  Insert("O''Hara Ä", "80-9");
  table_->Find("[clientid] = 'BOLT  '");
  EXPECT_EQ(table_->Field("QBLinkID"), Text("80-2"));
  table_->MoveFirst();
  table_->Find("LastUpdated='1/31/2008 10:15:00 AM'");
  EXPECT_EQ(table_->Field("QBLinkID"), Text("80-2"));
  table_->MoveFirst();
  table_->Find("Rate = '2.50'");
  EXPECT_EQ(table_->Field("QBLinkID"), Text("80-2"));
  table_->MoveFirst();
  table_->Find("ClientID = 'o''hara ä'");
  EXPECT_EQ(table_->Field("QBLinkID"), Text("80-9"));
}

TEST_F(TableRecordset, Find_costs_an_indexed_lookup) {
  EXPECT_EQ(Query("EXPLAIN QUERY PLAN SELECT rowid, * FROM \"Client\" WHERE \"QBLinkID\" = ?1 AND rowid >= ?2 "
                  "ORDER BY rowid LIMIT 1")
                ->Field("detail"),
            Text("SEARCH Client USING INDEX IX_Client_QBLinkID (QBLinkID=? AND rowid>?)"));
}

TEST_F(TableRecordset, A_criterion_of_another_form_is_refused) {
  const auto found = [&](std::string_view criterion) { return Raised([&] { table_->Find(criterion); }); };
  EXPECT_EQ(found(""), error::kBadArgument);
  EXPECT_EQ(found("QBLinkID"), error::kBadArgument);
  EXPECT_EQ(found("QBLinkID = 80"), error::kBadArgument);
  EXPECT_EQ(found("QBLinkID > '80'"), error::kBadArgument);
  EXPECT_EQ(found("QBLinkID = '80' OR 1"), error::kBadArgument);
  EXPECT_EQ(found("QBLinkID = 'O'Hara'"), error::kBadArgument);
  EXPECT_EQ(found("QBLinkID = 'open"), error::kBadArgument);
  EXPECT_EQ(found("Nonesuch = 'x'"), error::kNoSuchField);
  EXPECT_EQ(table_->Field("ClientID"), Text("Acme")) << "the current row stays";
}

// ---------------------------------------------------------------------------------------------------------------------
// Edits
// ---------------------------------------------------------------------------------------------------------------------

TEST_F(TableRecordset, An_update_writes_the_row_found_whatever_becomes_of_its_key) {
  table_->Find("QBLinkID = '80-2'");
  table_->SetField("ClientID", Text("Brook"));
  table_->SetField("QBLinkID", Text("80-22"));
  EXPECT_EQ(table_->EditState(), EditMode::InProgress);
  EXPECT_EQ(table_->Field("ClientID"), Text("Brook")) << "pending changes show";
  EXPECT_EQ(Column("SELECT ClientID FROM Client ORDER BY rowid"), (Texts{"Acme", "Bolt", "Cove"}));
  table_->Update();
  EXPECT_EQ(table_->EditState(), EditMode::None);
  EXPECT_EQ(Column("SELECT ClientID FROM Client ORDER BY rowid"), (Texts{"Acme", "Brook", "Cove"}));
  EXPECT_EQ(table_->Field("QBLinkID"), Text("80-22")) << "it is still the current row";
}

TEST_F(TableRecordset, An_update_writes_the_assigned_columns_alone) {
  EXPECT_EQ(table_->Field("Memo"), Value(Null{}));
  Execute("UPDATE Client SET Memo = 'by another', Rate = 4");
  table_->SetField("Rate", Value(5.0));
  table_->Update();
  EXPECT_EQ(Stored("Memo"), "by another");
  EXPECT_EQ(Stored("Rate"), "5.0");
  EXPECT_EQ(Stored("Rate", "Bolt"), "4.0");
}

TEST_F(TableRecordset, The_last_assignment_to_a_column_counts) {
  table_->SetField("Memo", Text("first"));
  table_->SetField("Rate", Value(1.0));
  table_->SetField("memo", Text("second"));
  table_->Update();
  EXPECT_EQ(Stored("Memo"), "second");
}

TEST_F(TableRecordset, An_update_without_a_pending_edit_does_nothing) {
  table_->Update();
  EXPECT_EQ(table_->RecordCount(), 3);
  EXPECT_EQ(table_->Field("ClientID"), Text("Acme"));
}

TEST_F(TableRecordset, A_row_added_is_the_current_row_with_the_defaults_of_the_table) {
  table_->Find("QBLinkID = 'none'");
  table_->AddNew();
  EXPECT_EQ(table_->EditState(), EditMode::Add);
  EXPECT_FALSE(table_->Eof());
  table_->SetField("ClientID", Text("Dawn"));
  table_->SetField("QBLinkID", Text("80-4"));
  EXPECT_EQ(table_->Field("ClientID"), Text("Dawn"));
  EXPECT_EQ(table_->Field("IsSub"), Value(Null{}));
  EXPECT_EQ(table_->RecordCount(), 3);
  table_->Update();
  EXPECT_EQ(table_->RecordCount(), 4);
  EXPECT_FALSE(table_->Eof());
  EXPECT_EQ(table_->Field("ClientID"), Text("Dawn"));
  EXPECT_EQ(table_->Field("IsSub"), Value(std::int64_t{0}));
  table_->SetField("Memo", Text("and on"));
  table_->Update();
  EXPECT_EQ(Stored("Memo", "Dawn"), "and on");
}

TEST_F(TableRecordset, A_row_may_be_added_with_nothing_assigned) {
  Execute("CREATE TABLE Log (Line TEXT, Kind SMALLINT DEFAULT 3)");
  const auto log = OpenTable("Log");
  log->AddNew();
  log->Update();
  EXPECT_EQ(log->Field("Kind"), Value(std::int64_t{3}));
}

TEST_F(TableRecordset, Rows_with_different_columns_are_added_one_after_the_other) {
  for (const auto* key : {"D1", "D2", "D3"}) {
    table_->AddNew();
    table_->SetField("ClientID", Text(key));
    if (std::string_view(key) == "D2") table_->SetField("Memo", Text("m"));
    table_->Update();
  }
  EXPECT_EQ(Column("SELECT Memo FROM Client WHERE ClientID LIKE 'D%' ORDER BY ClientID"), (Texts{"NULL", "m", "NULL"}));
}

TEST_F(TableRecordset, Moving_finding_adding_and_closing_with_an_edit_pending_raise_and_write_nothing) {
  for (const bool isAdding : {false, true}) {
    if (isAdding) table_->AddNew();
    table_->SetField("Memo", Text("pending"));
    EXPECT_EQ(Raised([&] { table_->MoveFirst(); }), error::kEditPending);
    EXPECT_EQ(Raised([&] { table_->MoveNext(); }), error::kEditPending);
    EXPECT_EQ(Raised([&] { table_->Find("QBLinkID = '80-2'"); }), error::kEditPending);
    EXPECT_EQ(Raised([&] { table_->AddNew(); }), error::kEditPending);
    EXPECT_EQ(Raised([&] { table_->Close(); }), error::kEditPending);
    EXPECT_EQ(table_->State(), ado::ObjectState::Open);
    EXPECT_EQ(table_->Field("Memo"), Text("pending"));
    table_->CancelUpdate();
    EXPECT_EQ(table_->EditState(), EditMode::None);
  }
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE Memo IS NOT NULL"), Texts{});
  table_->Close();
  EXPECT_EQ(table_->State(), ado::ObjectState::Closed);
}

TEST_F(TableRecordset, A_cancelled_edit_leaves_the_row_that_was_current) {
  table_->Find("QBLinkID = '80-2'");
  table_->SetField("ClientID", Text("Brook"));
  table_->CancelUpdate();
  EXPECT_EQ(table_->Field("ClientID"), Text("Bolt"));
  table_->AddNew();
  table_->CancelUpdate();
  EXPECT_EQ(table_->Field("ClientID"), Text("Bolt"));
}

TEST_F(TableRecordset, A_dropped_recordset_writes_nothing) {
  table_->SetField("Memo", Text("pending"));
  table_.reset();
  EXPECT_EQ(Stored("Memo"), "NULL");
}

TEST_F(TableRecordset, A_text_longer_than_its_column_is_refused_by_Update_and_stays_pending) {
  table_->SetField("ClientID", Text("12345678901"));
  EXPECT_EQ(Raised([&] { table_->Update(); }), error::kConstraint);
  EXPECT_EQ(table_->EditState(), EditMode::InProgress);
  table_->SetField("ClientID", Text("ÄÖÜ4567890"));
  table_->Update();
  EXPECT_EQ(table_->Field("ClientID"), Text("ÄÖÜ4567890"));
}

TEST_F(TableRecordset, A_key_in_use_is_refused_and_another_may_be_tried) {
  table_->AddNew();
  table_->SetField("ClientID", Text("ACME"));
  EXPECT_EQ(Raised([&] { table_->Update(); }), error::kConstraint);
  EXPECT_EQ(table_->EditState(), EditMode::Add);
  table_->SetField("ClientID", Text("ACME1"));
  table_->Update();
  EXPECT_EQ(table_->RecordCount(), 4);
}

TEST_F(TableRecordset, An_update_of_a_row_that_someone_deleted_raises) {
  table_->SetField("Memo", Text("x"));
  Execute("DELETE FROM Client WHERE ClientID = 'Acme'");
  EXPECT_EQ(Raised([&] { table_->Update(); }), error::kAtEof);
  table_->CancelUpdate();
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE Memo IS NOT NULL"), Texts{});
}

TEST_F(TableRecordset, An_unknown_field_begins_no_edit) {
  EXPECT_EQ(Raised([&] { table_->SetField("Nonesuch", Text("x")); }), error::kNoSuchField);
  EXPECT_EQ(table_->EditState(), EditMode::None);
}

TEST_F(TableRecordset, Closed_it_raises) {
  table_->Close();
  EXPECT_EQ(Raised([&] { table_->Close(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { table_->MoveFirst(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { table_->Find("QBLinkID = 'x'"); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { table_->AddNew(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { table_->SetField("Memo", Text("x")); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { table_->Update(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { table_->CancelUpdate(); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { static_cast<void>(table_->EditState()); }), error::kObjectClosed);
  EXPECT_EQ(Raised([&] { static_cast<void>(table_->RecordCount()); }), error::kObjectClosed);
}

// ---------------------------------------------------------------------------------------------------------------------
// Two connections
// ---------------------------------------------------------------------------------------------------------------------

TEST_F(TableRecordset, Two_connections_used_in_turn_see_each_others_changes) {
  const auto other = Connect();
  const auto theirs = other->OpenRecordset("SELECT * FROM Client;", ado::CursorType::Static, ado::LockType::Optimistic);
  EXPECT_EQ(theirs->Field("Memo"), Value(Null{}));

  table_->SetField("Memo", Text("mine"));
  table_->Update();
  theirs->MoveFirst();
  EXPECT_EQ(theirs->Field("Memo"), Text("mine"));

  theirs->AddNew();
  theirs->SetField("ClientID", Text("Dawn"));
  theirs->SetField("QBLinkID", Text("80-4"));
  theirs->Update();
  table_->Find("QBLinkID = '80-4'");
  EXPECT_EQ(table_->Field("ClientID"), Text("Dawn"));
  EXPECT_EQ(theirs->RecordCount(), 4);
  EXPECT_EQ(table_->RecordCount(), 4);
}

}  // namespace
}  // namespace twqb::sqlite
