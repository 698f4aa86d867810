#include <gtest/gtest.h>

#include <string>

#include "adapters/sqlite/SqlTokens.h"
#include "adapters/sqlite/SqlTranslator.h"

namespace twqb::sqlite {
namespace {

struct Case {
  std::string name;
  std::string statement;
  std::string translation;
};

class SqlTranslator : public ::testing::TestWithParam<Case> {};

TEST_P(SqlTranslator, Writes_what_the_engine_reads) {
  EXPECT_EQ(TranslateSql(GetParam().statement), GetParam().translation);
}

const Case kDates[] = {
    {"Date", "LastUpdated > #01/31/2008 10:15:00#", "LastUpdated > '01/31/2008 10:15:00'"},
    {"DateAlone", "d BETWEEN #1/31/2008# AND #2/1/2008#", "d BETWEEN '1/31/2008' AND '2/1/2008'"},
    {"IsoDate", "d = #2008-01-31 10:15:00#", "d = '2008-01-31 10:15:00'"},
    {"SignsAroundNoDate", "a = #x# AND #", "a = #x# AND #"},
    {"DayOutsideTheCalendar", "d = #2/30/2008#", "d = #2/30/2008#"},
};
INSTANTIATE_TEST_SUITE_P(Dates, SqlTranslator, ::testing::ValuesIn(kDates), [](const auto& i) { return i.param.name; });

const Case kGuids[] = {
    {"Guid", "WHERE TEID={guid {AB-12}};", "WHERE TEID='{AB-12}';"},
    {"InAnyCaseAndSpacing", "x = {GUID  {ab} }", "x = '{ab}'"},
    {"WithoutInnerBraces", "x = {guid ab}", "x = {guid ab}"},
    {"QuoteInside", "x = {guid {a'b}}", "x = '{a''b}'"},
    {"OtherBraces", "x = {d {ab}}", "x = {d {ab}}"},
};
INSTANTIATE_TEST_SUITE_P(Guids, SqlTranslator, ::testing::ValuesIn(kGuids), [](const auto& i) { return i.param.name; });

const Case kBooleans[] = {
    {"True", "SET PayRetainer = True WHERE x", "SET PayRetainer = -1 WHERE x"},
    {"FalseInAnyCase", "a=FALSE OR b=true", "a=0 OR b=-1"},
    {"PartOfAName", "TrueName, IsFalse, True_1", "TrueName, IsFalse, True_1"},
    {"QualifiedColumn", "t.True", "t.True"},
    {"BehindAMinus", "x -True", "x - -1"},
};
INSTANTIATE_TEST_SUITE_P(Booleans, SqlTranslator, ::testing::ValuesIn(kBooleans),
                         [](const auto& i) { return i.param.name; });

const Case kConcatenations[] = {
    {"Names", "(EmpFName + ' ' + EmpLName) as EmpName", "(EmpFName || ' ' || EmpLName) as EmpName"},
    {"LiteralBehind", "a+'b'", "a||'b'"},
    {"LiteralInFront", "'b'+[a c]", "'b'||[a c]"},
    {"CommentBetween", "'b' /* and */ + a", "'b' /* and */ || a"},
    {"BehindBrackets", "(a) + 'b'", "(a) || 'b'"},
    {"Numbers", "a + 1 + b", "a + 1 + b"},
    {"SignOfAnOperand", "a = +'1'", "a = +'1'"},
    {"Exponent", "1e+5 + 2E-3", "1e+5 + 2E-3"},
    {"DateIsNoText", "#1/31/2008# + 1", "'1/31/2008' + 1"},
};
INSTANTIATE_TEST_SUITE_P(Concatenations, SqlTranslator, ::testing::ValuesIn(kConcatenations),
                         [](const auto& i) { return i.param.name; });

const Case kUntouched[] = {
    {"Literal", "'#1/31/2008# {guid {x}} True + ''a'' -- \"'", "'#1/31/2008# {guid {x}} True + ''a'' -- \"'"},
    {"QuotedName", "\"True #1/31/2008#\" [False + {guid {x}}] `True`",
     "\"True #1/31/2008#\" [False + {guid {x}}] `True`"},
    {"LineComment", "a -- True '\n + 1", "a -- True '\n + 1"},
    {"BlockComment", "a /* True ' #1/31/2008# */ + 1", "a /* True ' #1/31/2008# */ + 1"},
    {"UnfinishedLiteral", "a = 'True + True", "a = 'True + True"},
    {"UnfinishedName", "a = \"True + True", "a = \"True + True"},
    {"UnfinishedComment", "a /* True", "a /* True"},
    {"BeyondAscii", "Straße = 'ß' AND 青葉 = ' '", "Straße = 'ß' AND 青葉 = ' '"},
    {"Empty", "", ""},
};
INSTANTIATE_TEST_SUITE_P(Untouched, SqlTranslator, ::testing::ValuesIn(kUntouched),
                         [](const auto& i) { return i.param.name; });

const Case kColumns[] = {
    {"Varchar", "CREATE TABLE t (a VARCHAR(65) NOT NULL PRIMARY KEY)",
     "CREATE TABLE t (a VARCHAR(65) COLLATE TWTEXT CHECK (length(a) <= 65) NOT NULL PRIMARY KEY)"},
    {"TextAndDate", "create table t (a text, b datetime DEFAULT NULL)",
     "create table t (a text COLLATE TWTEXT, b datetime COLLATE TWDATE DEFAULT NULL)"},
    {"QuotedNameAndComment", "CREATE TABLE IF NOT EXISTS [t] (\n  [a b] VARCHAR ( 5 ), -- TEXT\n  \"c\" TEXT\n)",
     "CREATE TABLE IF NOT EXISTS [t] (\n  [a b] VARCHAR ( 5 ) COLLATE TWTEXT CHECK (length([a b]) <= 5), -- TEXT\n"
     "  \"c\" TEXT COLLATE TWTEXT\n)"},
    {"Temporary", "CREATE TEMP TABLE t (a TEXT)", "CREATE TEMP TABLE t (a TEXT COLLATE TWTEXT)"},
    {"TextWithLength", "CREATE TABLE t (a TEXT(5))",
     "CREATE TABLE t (a TEXT(5) COLLATE TWTEXT CHECK (length(a) <= 5))"},
    {"OtherTypes", "CREATE TABLE t (a DOUBLE, b DECIMAL(19,4), c SMALLINT DEFAULT True, PRIMARY KEY (a, b))",
     "CREATE TABLE t (a DOUBLE, b DECIMAL(19,4), c SMALLINT DEFAULT -1, PRIMARY KEY (a, b))"},
    {"ColumnNamedText", "CREATE TABLE t (TEXT DOUBLE, CHECK (TEXT > 1))",
     "CREATE TABLE t (TEXT DOUBLE, CHECK (TEXT > 1))"},
    {"FromASelect", "CREATE TABLE t AS SELECT CAST(a AS TEXT) FROM (SELECT b TEXT)",
     "CREATE TABLE t AS SELECT CAST(a AS TEXT) FROM (SELECT b TEXT)"},
    {"OtherStatement", "SELECT (a TEXT), b DATETIME", "SELECT (a TEXT), b DATETIME"},
    {"CutOff", "CREATE TABLE t (a VARCHAR(", "CREATE TABLE t (a VARCHAR("},
};
INSTANTIATE_TEST_SUITE_P(Columns, SqlTranslator, ::testing::ValuesIn(kColumns),
                         [](const auto& i) { return i.param.name; });

TEST(SqlTokens, Tokens_joined_are_the_statement) {
  const std::string statement =
      "SELECT [a], \"b\"\"c\", `d`, 'e''f', #1/2/2008#, {guid {x}}, 1.5e+3, .5, 0x1E+1 -- end\n FROM t /* x */; 'open";
  std::string joined;
  for (const auto& token : Tokenize(statement)) joined += token.text;
  EXPECT_EQ(joined, statement);
}

TEST(SqlTokens, A_quote_inside_a_name_or_text_is_doubled) {
  EXPECT_EQ(QuoteName("a\"b"), "\"a\"\"b\"");
  EXPECT_EQ(QuoteText("O'Hara"), "'O''Hara'");
  EXPECT_EQ(NameOf(SignificantTokens("\"a\"\"b\"").front()), "a\"b");
  EXPECT_EQ(TextOf(SignificantTokens("'O''Hara'").front()), "O'Hara");
}

}  // namespace
}  // namespace twqb::sqlite
