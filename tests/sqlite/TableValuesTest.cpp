#include "TemporaryDatabase.h"

namespace twqb::sqlite {
namespace {

using ado::EditMode;

Value Text(std::string text) { return {std::move(text)}; }

// What becomes of a value that is assigned to a column of one kind or another.
class TableValues : public TemporaryDatabase {
 protected:
  TableValues() {
    CreateClient();
    Execute("INSERT INTO Client (ClientID) VALUES ('Acme')");
    table_ = OpenTable("Client");
  }

  // Writes one value into the row and answers how it is kept.
  std::string StoredAs(const std::string& column, Value value) {
    table_->MoveFirst();
    table_->SetField(column, std::move(value));
    table_->Update();
    return Scalar("SELECT CAST(" + column + " AS TEXT) FROM Client");
  }

  std::unique_ptr<ado::Recordset> table_;
};

TEST_F(TableValues, Dates_are_kept_in_ISO_form_whatever_was_assigned) {
  EXPECT_EQ(StoredAs("LastUpdated", TextToDate("1/31/2008 10:15:00")), "2008-01-31 10:15:00");
  EXPECT_EQ(StoredAs("LastUpdated", TextToDate("1/31/2008").PlusMilliseconds(5)), "2008-01-31 00:00:00.005");
  EXPECT_EQ(StoredAs("LastUpdated", Text("3/5/2008")), "2008-03-05 00:00:00");
  EXPECT_EQ(StoredAs("LastUpdated", Value(39478.5)), "2008-01-31 12:00:00") << "a number is a date serial";
  EXPECT_EQ(table_->Field("LastUpdated"), Value(TextToDate("1/31/2008 12:00:00")));
  EXPECT_EQ(StoredAs("LastUpdated", Value(Null{})), "NULL");
}

TEST_F(TableValues, A_pending_value_reads_as_the_column_will_hold_it) {
  table_->SetField("LastUpdated", Text("3/5/2008"));
  table_->SetField("Balance", Text("12.5"));
  table_->SetField("IsSub", Value(true));
  EXPECT_EQ(table_->Field("LastUpdated"), Value(TextToDate("3/5/2008")));
  EXPECT_EQ(table_->Field("Balance"), Value(Currency::FromTenThousandths(125000)));
  EXPECT_EQ(table_->Field("IsSub"), Value(std::int64_t{-1}));
}

TEST_F(TableValues, Numbers_are_kept_as_numbers) {
  EXPECT_EQ(StoredAs("Balance", Value(Currency::FromTenThousandths(123456))), "12.3456");
  EXPECT_EQ(StoredAs("Balance", Value(Currency::FromTenThousandths(120000))), "12");
  EXPECT_EQ(StoredAs("Balance", Value(0.03125)), "0.0312") << "money has four decimals, halves to even";
  EXPECT_EQ(StoredAs("Rate", Text("2.25")), "2.25");
  EXPECT_EQ(StoredAs("IsSub", Value(true)), "-1");
  EXPECT_EQ(StoredAs("IsSub", Value(false)), "0");
  EXPECT_EQ(StoredAs("IsSub", Value(2.5)), "2");
  EXPECT_EQ(StoredAs("IsSub", Text("7")), "7");
  EXPECT_EQ(Scalar("SELECT typeof(Rate) FROM Client WHERE ClientID = 'Acme'"), "real");
}

TEST_F(TableValues, Money_comes_back_exactly) {
  const auto amount = Currency::FromTenThousandths(12345678901234);
  table_->SetField("Balance", amount);
  table_->Update();
  EXPECT_EQ(table_->Field("Balance"), Value(amount));
}

TEST_F(TableValues, Other_values_become_text_in_a_text_column) {
  EXPECT_EQ(StoredAs("Memo", Value(std::int64_t{42})), "42");
  EXPECT_EQ(StoredAs("Memo", Value(Currency::FromTenThousandths(120000))), "12");
  EXPECT_EQ(StoredAs("Memo", Value(2.50)), "2.5");
  EXPECT_EQ(StoredAs("Memo", Value(true)), "-1");
  EXPECT_EQ(StoredAs("Memo", TextToDate("1/31/2008")), "2008-01-31 00:00:00");
  EXPECT_EQ(StoredAs("Memo", Text("")), "");
}

TEST_F(TableValues, Text_passes_through_byte_for_byte) {
  const std::string text = "l'été {x}\r\n\"#1/1/2008#\" 青葉 ?1 \xF0\x9F\x8F\x97";
  table_->SetField("Memo", Text(text));
  table_->Update();
  EXPECT_EQ(table_->Field("Memo"), Text(text));
}

TEST_F(TableValues, What_a_column_cannot_hold_raises_and_begins_no_edit) {
  const auto assigned = [&](const std::string& column, Value value) {
    return Raised([&] { table_->SetField(column, std::move(value)); });
  };
  for (const auto* column : {"LastUpdated", "Balance", "Rate", "IsSub"}) {
    EXPECT_EQ(assigned(column, Text("")), error::kConversion) << column;
    EXPECT_EQ(assigned(column, Text("abc")), error::kConversion) << column;
  }
  EXPECT_EQ(assigned("LastUpdated", Value(true)), error::kConversion);
  EXPECT_EQ(assigned("IsSub", Value(1e300)), error::kConversion);
  EXPECT_EQ(table_->EditState(), EditMode::None);
  EXPECT_NE(Description([&] { table_->SetField("Rate", Text("123-45-6789")); }).find("Rate"), std::string::npos);
  EXPECT_EQ(Description([&] { table_->SetField("Rate", Text("123-45-6789")); }).find("6789"), std::string::npos)
      << "the value stays out of the text";
}

}  // namespace
}  // namespace twqb::sqlite
