// A table opened for writing, while another program changes which columns it has.

#include "TemporaryDatabase.h"

namespace twqb::sqlite {
namespace {

class ChangedTable : public TemporaryDatabase {
 protected:
  ChangedTable() {
    Execute("CREATE TABLE Part (A TEXT, B TEXT, C VARCHAR(3), D TEXT)");
    Execute("INSERT INTO Part VALUES ('a1', 'b1', 'c1', 'd1')");
    Execute("INSERT INTO Part VALUES ('a2', 'b2', 'c2', 'd2')");
    rows_ = OpenTable("Part");
    other_ = Connect();
  }

  // By the other program.
  void Change(const std::string& how) { other_->Execute("ALTER TABLE Part " + how, nullptr); }
  [[nodiscard]] std::string Text(std::string_view column) const { return ToText(rows_->Field(column)); }
  // The columns of the first row, each with its name in front.
  [[nodiscard]] std::string FirstRow() {
    std::string all;
    const auto row = Query("SELECT * FROM Part ORDER BY rowid");
    for (int i = 0; i < row->FieldCount(); ++i) {
      const auto value = row->FieldAt(i);
      all.append(all.empty() ? "" : " ").append(row->FieldName(i)).append("=");
      all.append(IsNull(value) ? "NULL" : ToText(value));
    }
    return all;
  }

  std::unique_ptr<ado::Recordset> rows_;
  std::unique_ptr<ado::Connection> other_;
};

TEST_F(ChangedTable, Is_found_to_have_a_column_that_was_added) {
  Change("ADD COLUMN Colour VARCHAR(7)");
  other_->Execute("UPDATE Part SET Colour = 'red'", nullptr);
  EXPECT_EQ(rows_->DefinedSize("Colour"), 7);
  EXPECT_EQ(Text("Colour"), "red");
  EXPECT_EQ(rows_->FieldCount(), 5);
  EXPECT_EQ(OpenTable("Part")->FieldCount(), 5);
}

TEST_F(ChangedTable, Is_read_by_the_columns_that_it_has) {
  EXPECT_EQ(Text("C"), "c1");
  Change("DROP COLUMN A");
  Change("RENAME COLUMN D TO E");
  rows_->MoveFirst();
  EXPECT_EQ(Text("B"), "b1") << "the first to be asked for, and not the first of the row";
  rows_->MoveNext();
  EXPECT_EQ(Text("E"), "d2");
  EXPECT_EQ(Raised([&] { (void)Text("A"); }), error::kNoSuchField);
  EXPECT_EQ(Raised([&] { (void)Text("D"); }), error::kNoSuchField);
}

TEST_F(ChangedTable, Has_no_field_behind_its_last_column) {
  EXPECT_EQ(ToText(rows_->FieldAt(3)), "d1");
  Change("DROP COLUMN A");
  rows_->MoveNext();
  EXPECT_EQ(Raised([&] { (void)rows_->FieldAt(3); }), error::kNoSuchField);
  EXPECT_EQ(ToText(rows_->FieldAt(2)), "d2");
}

TEST_F(ChangedTable, Is_written_to_the_column_of_the_name) {
  EXPECT_EQ(Text("C"), "c1");
  Change("DROP COLUMN B");
  rows_->MoveFirst();
  rows_->SetField("C", std::string("NEW"));
  EXPECT_EQ(Text("C"), "NEW");
  rows_->Update();
  EXPECT_EQ(FirstRow(), "A=a1 C=NEW D=d1");
}

TEST_F(ChangedTable, Is_searched_by_the_column_of_the_name) {
  EXPECT_EQ(Text("C"), "c1");
  Change("DROP COLUMN B");
  rows_->Find("C = 'c2'");
  EXPECT_EQ(Text("D"), "d2");
}

TEST_F(ChangedTable, Takes_what_is_pending_into_its_columns_wherever_they_stand_by_now) {
  rows_->SetField("C", std::string("c3"));
  Change("DROP COLUMN B");
  Change("ADD COLUMN Colour VARCHAR(7)");
  EXPECT_EQ(Text("C"), "c3");
  rows_->SetField("Colour", std::string("blue"));
  EXPECT_EQ(Text("C"), "c3");
  EXPECT_EQ(Text("D"), "d1");
  rows_->Update();
  EXPECT_EQ(FirstRow(), "A=a1 C=c3 D=d1 Colour=blue");
}

TEST_F(ChangedTable, Takes_nothing_when_a_column_that_was_assigned_is_gone) {
  for (const bool isAdding : {false, true}) {
    SCOPED_TRACE(isAdding);
    const std::string gone = isAdding ? "A" : "B";
    if (isAdding) rows_->AddNew();
    rows_->SetField(gone, std::string("lost"));
    rows_->SetField("C", std::string("c3"));
    Change("DROP COLUMN " + gone);
    Change("ADD COLUMN Colour" + gone);
    rows_->SetField("colour" + gone, std::string("blue"));
    const auto update = [&] { rows_->Update(); };
    EXPECT_EQ(Raised(update), error::kNoSuchField);
    EXPECT_NE(Description(update).find("(" + gone + ")"), std::string::npos) << Description(update);
    EXPECT_EQ(Text("C"), "c3") << "it is pending still";
    rows_->CancelUpdate();
    EXPECT_EQ(Text("C"), "c1");
  }
  EXPECT_EQ(rows_->RecordCount(), 2);
  EXPECT_EQ(FirstRow(), "C=c1 D=d1 ColourB=NULL ColourA=NULL");
}

TEST_F(ChangedTable, Takes_nothing_by_a_statement_that_is_known_when_a_column_is_gone) {
  const auto assign = [&] { rows_->SetField("B", std::string("b3")); };
  assign();
  rows_->Update();
  assign();
  Change("DROP COLUMN B");
  EXPECT_EQ(Raised([&] { rows_->Update(); }), error::kNoSuchField);
}

}  // namespace
}  // namespace twqb::sqlite
