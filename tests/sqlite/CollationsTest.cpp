#include "TemporaryDatabase.h"
#include "adapters/sqlite/Collations.h"

namespace twqb::sqlite {
namespace {

constexpr auto kEqual = std::strong_ordering::equal;
constexpr auto kLess = std::strong_ordering::less;
constexpr auto kGreater = std::strong_ordering::greater;

TEST(TextCollation, Case_does_not_count_in_any_script) {
  EXPECT_EQ(CompareTexts("Acme", "aCME"), kEqual);
  EXPECT_EQ(CompareTexts("Äpfel", "äPFEL"), kEqual);
  EXPECT_EQ(CompareTexts("Σίσυφος", "σίσυφοσ"), kEqual);
  EXPECT_EQ(CompareTexts("\u212A", "k"), kEqual) << "the Kelvin sign folds to an ASCII letter";
}

TEST(TextCollation, Folding_is_one_character_to_one) {
  EXPECT_NE(CompareTexts("Straße", "Strasse"), kEqual);
  EXPECT_NE(CompareTexts("é", "e"), kEqual);
}

TEST(TextCollation, Trailing_blanks_do_not_count_but_leading_ones_and_tabs_do) {
  EXPECT_EQ(CompareTexts("Acme  ", "acme"), kEqual);
  EXPECT_EQ(CompareTexts("ÄA ", "äa"), kEqual);
  EXPECT_EQ(CompareTexts("   ", ""), kEqual);
  EXPECT_NE(CompareTexts(" Acme", "Acme"), kEqual);
  EXPECT_NE(CompareTexts("Acme\t", "Acme"), kEqual);
}

TEST(TextCollation, Orders_by_the_folded_characters) {
  EXPECT_EQ(CompareTexts("a", "B"), kLess);
  EXPECT_EQ(CompareTexts("Z", "a"), kGreater);
  EXPECT_EQ(CompareTexts("ab", "abc"), kLess);
  EXPECT_EQ(CompareTexts("z", "Ä"), kLess);
  EXPECT_EQ(CompareTexts("Ä1", "ä2"), kLess);
  EXPECT_EQ(CompareTexts("_", "A"), kLess) << "capitals count as their small letters, which stand behind the underline";
}

TEST(DateCollation, Compares_dates_in_whatever_form) {
  EXPECT_EQ(CompareDates("1/31/2008 10:15:00 AM", "2008-01-31 10:15:00"), kEqual);
  EXPECT_EQ(CompareDates("01/31/2008", "2008-01-31T00:00:00"), kEqual);
  EXPECT_EQ(CompareDates("1/31/2008 1:00:00 PM", "1/31/2008 12:30:00"), kGreater);
  EXPECT_EQ(CompareDates("12/31/2007", "2008-01-01"), kLess);
  EXPECT_EQ(CompareDates("2/1/2008", "10/1/2007"), kGreater);
}

TEST(DateCollation, What_is_no_date_stands_behind_all_dates_as_text) {
  EXPECT_EQ(CompareDates("9999-12-31", "abc"), kLess);
  EXPECT_EQ(CompareDates("", "1/1/2008"), kGreater);
  EXPECT_EQ(CompareDates("ABC", "abd"), kLess);
  EXPECT_EQ(CompareDates("ABC", "abc "), kEqual);
}

class Collations : public TemporaryDatabase {
 protected:
  Collations() {
    CreateClient();
    Execute("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('ÄPFEL', 'b', '2008-01-31 10:15:00')");
    Execute("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('Acme', 'A', '2/1/2008 9:00:00 PM')");
    Execute("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('zed', 'C', '2007-12-31 23:59:59')");
  }
};

TEST_F(Collations, A_key_is_found_without_case_and_trailing_blanks) {
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE ClientID = 'äpfel '"), Texts{"ÄPFEL"});
}

TEST_F(Collations, A_key_that_differs_in_case_alone_is_refused) {
  EXPECT_EQ(Raised([&] { Execute("INSERT INTO Client (ClientID) VALUES ('ACME  ')"); }), error::kConstraint);
}

TEST_F(Collations, Texts_sort_and_range_without_case) {
  EXPECT_EQ(Column("SELECT QBLinkID FROM Client ORDER BY QBLinkID"), (Texts{"A", "b", "C"}));
  EXPECT_EQ(Column("SELECT QBLinkID FROM Client WHERE QBLinkID BETWEEN 'a' AND 'B' ORDER BY 1"), (Texts{"A", "b"}));
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE QBLinkID IN (SELECT 'a')"), Texts{"Acme"});
}

TEST_F(Collations, A_date_in_either_dialect_compares_with_the_dates_kept) {
  const Texts later{"Acme"};
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE LastUpdated > '01/31/2008 10:15:00'"), later);
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE LastUpdated > #01/31/2008 10:15:00#"), later);
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE LastUpdated = '1/31/2008 10:15:00 AM'"), Texts{"ÄPFEL"});
  EXPECT_EQ(Column("SELECT ClientID FROM Client WHERE LastUpdated BETWEEN '01/01/2008' AND '12/01/2008' "
                   "ORDER BY LastUpdated"),
            (Texts{"ÄPFEL", "Acme"}));
}

TEST_F(Collations, Dates_sort_as_dates) {
  EXPECT_EQ(Column("SELECT ClientID FROM Client ORDER BY LastUpdated DESC"), (Texts{"Acme", "ÄPFEL", "zed"}));
}

TEST_F(Collations, Lookups_and_ranges_use_the_indexes) {
  const auto plan = [&](const std::string& statement) {
    const auto rows = Query("EXPLAIN QUERY PLAN " + statement);
    return ToText(rows->Field("detail"));
  };
  EXPECT_EQ(plan("SELECT QBLinkID FROM Client WHERE QBLinkID = 'x'"),
            "SEARCH Client USING COVERING INDEX IX_Client_QBLinkID (QBLinkID=?)");
  EXPECT_EQ(plan("UPDATE Client SET Memo = 'x' WHERE ClientID = 'x'"),
            "SEARCH Client USING INDEX sqlite_autoindex_Client_1 (ClientID=?)");
  EXPECT_EQ(plan("SELECT * FROM Client WHERE LastUpdated > '01/31/2008'"),
            "SEARCH Client USING INDEX IX_Client_LastUpdated (LastUpdated>?)");
}

}  // namespace
}  // namespace twqb::sqlite
