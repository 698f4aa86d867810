// Statements put together from constants and values: what goes in, and what makes a statement unfit.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "platform/PlatformError.h"
#include "services/Conversions.h"
#include "services/Sql.h"

namespace twqb {
namespace {

using testing::HasSubstr;

std::string Fit(const Sql& statement) { return std::string(std::string_view(statement)); }

// The description that an unfit statement raises.
std::string RaisedBy(const Sql& statement) {
  try {
    static_cast<void>(std::string_view(statement));
  } catch (const PlatformError& raised) {
    EXPECT_EQ(raised.number(), error::kBadSyntax);
    return raised.description();
  }
  return "nothing";
}

TEST(Statement, Is_its_text_with_the_values_as_they_are) {
  EXPECT_EQ(Fit("SELECT 'a'"), "SELECT 'a'");
  EXPECT_EQ(Fit(Sql("UPDATE {} SET A = '{}', B = {} WHERE C = {}", "T", std::string("x -- ;"), 5, 'c')),
            "UPDATE T SET A = 'x -- ;', B = 5 WHERE C = c");
  EXPECT_TRUE(Sql().IsEmpty());
}

TEST(Statement, With_a_quote_in_a_value_raises_what_bad_syntax_raises_and_names_the_value) {
  for (const std::string_view value : {"O'Brien", "x' OR '1'='1", "'", "a''b"}) {
    const Sql statement("DELETE FROM Client WHERE QBLinkID = '{}';", value);
    EXPECT_THAT(RaisedBy(statement), HasSubstr(fmt::format("The value \"{}\" can't stand in a statement", value)));
    EXPECT_EQ(statement.Text(), fmt::format("DELETE FROM Client WHERE QBLinkID = '{}';", value)) << "for the log";
  }
}

TEST(Statement, Takes_a_doubled_value_whatever_it_holds) {
  EXPECT_EQ(Fit(Sql("VALUES('{}')", Doubled{FixQuote("x' OR '1'='1")})), "VALUES('x'' OR ''1''=''1')");
}

TEST(Statement, Is_as_unfit_as_the_piece_that_went_into_it) {
  const Sql condition("ClientID = '{}'", "O'Brien");
  EXPECT_NE(RaisedBy(Sql("UPDATE {} SET A = 1 WHERE {};", "T", condition)), "nothing");
  Sql behind = "SELECT 1 WHERE ";
  behind += condition;
  EXPECT_NE(RaisedBy(behind), "nothing");
  EXPECT_NE(RaisedBy(Sql::Own("SELECT 1 WHERE ClientID = 'O'Brien'").HoldTo(condition)), "nothing");
  EXPECT_EQ(Fit(Sql("{} AND B", Sql("A = '{}'", "x"))), "A = 'x' AND B");
}

TEST(Statement, Takes_a_name_without_marks_only_when_it_is_one) {
  EXPECT_EQ(Fit(Sql("A = {{guid {}}}", Sql::Name("{1A2B-3C}"))), "A = {guid {1A2B-3C}}");
  for (const std::string_view name : {"1 OR 1=1", "1;DROP", "a'b", "(SELECT"}) {
    EXPECT_NE(RaisedBy(Sql("A = {}", Sql::Name(name))), "nothing") << name;
  }
}

struct ListCase {
  std::string_view list;
  bool isFit;
};

class Lists : public testing::TestWithParam<ListCase> {};

TEST_P(Lists, Hold_literals_and_commas_and_nothing_else) {
  const auto raised = RaisedBy(Sql("A IN({})", Sql::List(GetParam().list)));
  EXPECT_EQ(raised == "nothing", GetParam().isFit) << GetParam().list << ": " << raised;
}
INSTANTIATE_TEST_SUITE_P(Statement, Lists,
                         testing::Values(ListCase{"'{E-1}'", true}, ListCase{"'{E-1}','{E-2}'", true},
                                         ListCase{" 'a' , 'b c' ", true}, ListCase{"{guid {E-1}}", true},
                                         ListCase{"{E-1}", true}, ListCase{"17,18", true}, ListCase{"''", true},
                                         ListCase{"'O''Brien','b'", true}, ListCase{"'a''", false},
                                         ListCase{"'a' OR '1'='1'", false}, ListCase{"'a') OR ('1'='1'", false},
                                         ListCase{"'a' 'b'", false}, ListCase{"'a',", false}, ListCase{"'a", false},
                                         ListCase{"1=1", false}, ListCase{"SELECT ELID FROM ExpenseLog", false}));

}  // namespace
}  // namespace twqb
