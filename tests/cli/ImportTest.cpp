// Rows of CSV files in BillingDb: what is read, what is refused, and that all of it is there or nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <iterator>
#include <sstream>

#include "Program.h"
#include "cli/import/ImportColumns.h"
#include "cli/screen/CsvText.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "tests/support/Chance.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// --- The text --------------------------------------------------------------------------------------------------------

std::vector<std::vector<std::string>> FieldsOf(std::string_view text) {
  std::vector<std::vector<std::string>> all;
  for (auto& record : ReadCsv(text)) {
    EXPECT_EQ(record.trouble, "");
    all.push_back(std::move(record.fields));
  }
  return all;
}

TEST(CsvText, Has_commas_between_fields_and_quotes_around_what_holds_them) {
  EXPECT_THAT(FieldsOf("a,b\r\n\"x,y\",\"say \"\"no\"\"\"\r\n\"two\r\nlines\",\r\n"),
              ElementsAre(ElementsAre("a", "b"), ElementsAre("x,y", "say \"no\""), ElementsAre("two\r\nlines", "")));
}

TEST(CsvText, Ends_its_lines_in_each_way_and_its_last_one_or_not) {
  for (const std::string end : {"\r\n", "\n", "\r"}) {
    EXPECT_THAT(FieldsOf("a,b" + end + end + "1,2"), ElementsAre(ElementsAre("a", "b"), ElementsAre("1", "2")));
    EXPECT_THAT(FieldsOf("a,b" + end + "1,2" + end), ElementsAre(ElementsAre("a", "b"), ElementsAre("1", "2")));
  }
}

TEST(CsvText, May_begin_with_a_byte_order_mark) {
  EXPECT_THAT(FieldsOf("\xEF\xBB\xBF\"a\",b\n"), ElementsAre(ElementsAre("a", "b")));
}

TEST(CsvText, Names_the_line_that_a_record_begins_in) {
  const auto records = ReadCsv("a\n\"1\n2\n3\"\n\nx\n");
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[1].line, 2U);
  EXPECT_EQ(records[2].line, 6U);
}

TEST(CsvText, Tells_what_is_wrong_with_quotes_and_goes_on_behind_it) {
  const auto records = ReadCsv("a\n5\" pipe\n\"x\"y\nfine\n\"open\nto the end");
  ASSERT_EQ(records.size(), 5U);
  EXPECT_THAT(records[1].trouble, HasSubstr("inside of a field"));
  EXPECT_THAT(records[2].trouble, HasSubstr("behind a closing quote"));
  EXPECT_EQ(records[3].trouble, "");
  EXPECT_THAT(records[4].trouble, HasSubstr("not closed"));
}

// Whatever stands in a field.
TEST(CsvText, Reads_back_what_was_written_by_its_rules) {
  constexpr std::string_view kPieces[] = {"a", ",", "\"", "\r\n", "\n", "\r", " ", "\u00EB", "\u6771", ";", "\t", "0"};
  Chance chance(7);
  for (int round = 0; round < 300; ++round) {
    std::vector<std::vector<std::string>> written;
    std::string text;
    const auto columns = chance.Of(2, 5);
    for (auto records = chance.Of(1, 6); records > 0; --records) {
      auto& record = written.emplace_back();
      for (std::int64_t column = 0; column < columns; ++column) {
        auto& field = record.emplace_back();
        for (auto pieces = chance.Of(0, 6); pieces > 0; --pieces) field += kPieces[chance.Place(std::size(kPieces))];
        const bool needsQuotes = field.find_first_of(",\"\r\n") != std::string::npos;
        const bool isQuoted = needsQuotes || chance.OnceIn(3);
        const auto quoted = "\"" + ReplaceAll(field, "\"", "\"\"") + "\"";
        text += (column == 0 ? "" : ",") + (isQuoted ? quoted : field);
      }
      text += chance.OnceIn(2) ? "\r\n" : "\n";
    }
    EXPECT_EQ(FieldsOf(text), written) << text;
  }
}

TEST(CsvText, Of_another_encoding_is_refused) {
  const auto told = [](std::string_view text) -> std::string {
    try {
      static_cast<void>(ReadCsv(text));
    } catch (const CsvError& failure) {
      return failure.what();
    }
    return {};
  };
  EXPECT_THAT(told("\xFF\xFE"
                   "a"),
              HasSubstr("UTF-16"));
  EXPECT_THAT(told("a\nMu\xF1oz\n"), AllOf(HasSubstr("Line 2"), HasSubstr("CSV UTF-8")));
  EXPECT_THAT(told(std::string_view("a\nb\0c", 5)), HasSubstr("Line 2"));
}

// --- Fields ----------------------------------------------------------------------------------------------------------

struct FieldCase {
  ColumnType type;
  std::string text;
  std::string value;  // empty: refused
  DayFirst others = DayFirst::No;
};

TEST(ImportField, Is_read_by_the_rules_of_its_column_or_refused) {
  const std::vector<FieldCase> cases = {
      {ColumnType::Money, "1234.5", "1234.5"},
      {ColumnType::Money, " -0.0001 ", "-0.0001"},
      {ColumnType::Money, "007", "7"},
      {ColumnType::Money, "922337203685.4775", "922337203685.4775"},
      {ColumnType::Money, "1,234.50", ""},
      {ColumnType::Money, "12,5", ""},
      {ColumnType::Money, "$12", ""},
      {ColumnType::Money, "1.23456", ""},
      {ColumnType::Money, "1e3", ""},
      {ColumnType::Money, ".", ""},
      {ColumnType::Money, "99999999999999999999", ""},
      {ColumnType::Floating, "7.75", "7.75"},
      {ColumnType::Floating, "seven", ""},
      {ColumnType::Floating, "inf", ""},
      {ColumnType::Whole, "-1", "-1"},
      {ColumnType::Whole, "Yes", "-1"},
      {ColumnType::Whole, "FALSE", "0"},
      {ColumnType::Whole, "32768", ""},
      {ColumnType::Whole, "1.0", ""},
      {ColumnType::Date, "2008-03-05", "3/5/2008"},
      {ColumnType::Date, "2008-03-05T16:30:00", "3/5/2008 4:30:00 PM"},
      {ColumnType::Date, "3/5/2008", "3/5/2008"},
      {ColumnType::Date, "12/31/2008 4:30 PM", "12/31/2008 4:30:00 PM"},
      {ColumnType::Date, "3/5/08", ""},
      {ColumnType::Date, "31/12/2008", ""},
      {ColumnType::Date, "2/30/2008", ""},
      {ColumnType::Date, "5.3.2008", ""},
      {ColumnType::Date, "16:30", ""},
      {ColumnType::Date, "20080305", ""},
      {ColumnType::Date, "3/5/2008", "", DayFirst::Yes},
      {ColumnType::Date, "5/5/2008", "5/5/2008", DayFirst::Yes},
      {ColumnType::Date, "2008-03-05", "3/5/2008", DayFirst::Yes},
  };
  for (const auto& field : cases) {
    const auto read = ReadField({.name = "C", .type = field.type}, field.text, field.others);
    EXPECT_EQ(ToText(read.value), field.value) << field.text;
    EXPECT_EQ(read.refused.empty(), !field.value.empty()) << field.text << " " << read.refused;
  }
}

TEST(ImportField, Of_text_has_the_length_of_its_column_in_characters) {
  const ImportColumn column{.name = "C", .type = ColumnType::Text, .length = 4};
  EXPECT_EQ(ReadField(column, "Zo\u00EB\u6771", DayFirst::No).refused, "");
  EXPECT_THAT(ReadField(column, "Zo\u00EB\u6771!", DayFirst::No).refused,
              HasSubstr("has 5 characters, and the column 4"));
  EXPECT_THAT(ReadField(column, "a\x1b", DayFirst::No).refused, HasSubstr("control character"));
  EXPECT_TRUE(IsNull(ReadField(column, "  ", DayFirst::No).value));
}

// --- The command -----------------------------------------------------------------------------------------------------

class Import : public testing::Test {
 protected:
  Import() { folder_.Done({"init"}); }
  Ended Run(const std::string& table, const std::string& csv, const std::vector<std::string>& options = {}) const {
    folder_.Write("rows.csv", csv);
    std::vector<std::string> command = {"import", table, "rows.csv", "--clock", "2008-03-05T10:00:00", "--bias", "300"};
    command.insert(command.end(), options.begin(), options.end());
    return folder_.Twqb(command);
  }
  std::string Count(const std::string& table) const { return folder_.Scalar("SELECT COUNT(*) FROM " + table); }

  WorkFolder folder_;
};

constexpr const char* kClients =
    "ClientID,ClientCompany,ClientSince\r\nABBOTT,\"Abbott, Hale & Co\",3/5/2008\r\nBIRCH,Birch,\r\n";

TEST_F(Import, Shows_first_what_would_be_added_and_writes_nothing) {
  const auto ended = Run("clients", kClients);
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.out,
            "LINE  ClientID  ClientCompany      ClientSince  LastUpdated\n"
            "   2  ABBOTT    Abbott, Hale & Co  3/5/2008     3/5/2008 3:00:00 PM\n"
            "   3  BIRCH     Birch                           3/5/2008 3:00:00 PM\n"
            "\n"
            "2 rows would be added to clients. Nothing has been written; --apply writes.\n");
  EXPECT_EQ(Count("Client"), "0");
}

TEST_F(Import, Adds_the_rows_as_the_next_send_takes_them) {
  const auto ended = Run("clients", kClients, {"--apply"});
  EXPECT_EQ(ended.out, "2 rows added to clients.\n");
  EXPECT_EQ(folder_.Done({"billing", "run", "--json", "-e",
                          "SELECT ClientID, ClientCompany, ClientSince, QBLinkID, LastUpdated FROM Client"}),
            "{\"ClientID\":\"ABBOTT\",\"ClientCompany\":\"Abbott, Hale & Co\",\"ClientSince\":\"2008-03-05T00:00:00\","
            "\"QBLinkID\":null,\"LastUpdated\":\"2008-03-05T15:00:00\"}\n"
            "{\"ClientID\":\"BIRCH\",\"ClientCompany\":\"Birch\",\"ClientSince\":null,\"QBLinkID\":null,"
            "\"LastUpdated\":\"2008-03-05T15:00:00\"}\n");
  folder_.Write("no.txt", "default no\n");
  folder_.Done({"send", "clients", "--answers", "no.txt"});
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "2");
}

TEST_F(Import, Takes_a_file_as_a_spreadsheet_writes_it) {
  // A byte order mark, CR LF, a line end within a field, and none behind the last line.
  const auto ended = Run("clients",
                         "\xEF\xBB\xBF"
                         "ClientID,ClientCompany,ClientStreet\r\nABBOTT,\"Abbott \"\"& Co\"\"\",\"1 Main St\r\nFloor "
                         "2\"\r\nBIRCH,M\u00FCller,",
                         {"--apply"});
  EXPECT_EQ(ended.out, "2 rows added to clients.\n") << ended.err;
  EXPECT_EQ(
      folder_.Done({"billing", "run", "--json", "-e", "SELECT ClientID, ClientCompany, ClientStreet FROM Client"}),
      "{\"ClientID\":\"ABBOTT\",\"ClientCompany\":\"Abbott \\\"& Co\\\"\",\"ClientStreet\":\"1 Main "
      "St\\r\\nFloor 2\"}\n"
      "{\"ClientID\":\"BIRCH\",\"ClientCompany\":\"M\u00FCller\",\"ClientStreet\":null}\n");
}

TEST_F(Import, Of_rows_that_are_in_says_so_though_its_output_can_not_be_written) {
  folder_.Write("rows.csv", kClients);
  for (const bool isJson : {false, true}) {
    folder_.Done({"billing", "run", "-e", "DELETE FROM Client"});
    std::vector<std::string> command = {"import", "clients", "rows.csv"};
    if (isJson) command.emplace_back("--json");
    const auto shown = folder_.Twqb(command, {.out = Stdout::FullDisk});
    EXPECT_EQ(shown.status, 2);
    EXPECT_THAT(shown.err, AllOf(HasSubstr("Standard output can't be written"), Not(HasSubstr("added"))));
    command.emplace_back("--apply");
    const auto ended = folder_.Twqb(command, {.out = Stdout::FullDisk});
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.err, AllOf(HasSubstr("2 rows added to clients."), HasSubstr("Standard output can't be written")));
    EXPECT_EQ(Count("Client"), "2");
  }
}

TEST_F(Import, Passes_over_lines_of_commas_alone) {
  EXPECT_EQ(Run("clients", std::string(kClients) + ",,\r\n,,\r\n", {"--apply"}).out, "2 rows added to clients.\n");
}

TEST_F(Import, Of_a_heading_alone_says_that_there_is_nothing) {
  for (const auto& options : {std::vector<std::string>(), std::vector<std::string>{"--apply"}}) {
    const auto ended = Run("clients", "ClientID,ClientCompany\r\n", options);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.out, "The file has no row below the line that names its columns: there is nothing to add.\n");
  }
  EXPECT_EQ(folder_.Done({"backup", "--list"}), "");
}

TEST_F(Import, Passes_over_columns_of_nothing) {
  EXPECT_EQ(Run("clients", "ClientID,,\r\nABBOTT,, \r\n", {"--apply"}).out, "1 row added to clients.\n");
}

TEST_F(Import, Refuses_a_key_with_a_quotation_mark) {
  const auto ended = Run("clients", "ClientID,ClientCompany\nO'HARA,Hara\n", {"--apply"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out + ended.err, HasSubstr("a key has no quotation mark in it"));
  EXPECT_EQ(Count("Client"), "0");
}

TEST_F(Import, Is_taken_back_by_undo) {
  static_cast<void>(Run("clients", kClients));
  EXPECT_EQ(folder_.Done({"backup", "--list"}), "") << "what only shows makes no set";
  static_cast<void>(Run("clients", kClients, {"--apply"}));
  EXPECT_THAT(folder_.Done({"backup", "--list"}), HasSubstr("before import clients"));
  EXPECT_THAT(folder_.Done({"undo"}), HasSubstr("is taken back"));
  EXPECT_EQ(Count("Client"), "0");
}

TEST_F(Import, Adds_nothing_while_a_row_is_refused_and_tells_each_with_its_line) {
  folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID) VALUES ('OLD')"});
  const auto ended = Run("clients",
                         "ClientID,ClientCompany,ClientSince\n"
                         "GOOD,Good,2008-03-05\n"
                         "old,Again,\n"
                         "TWICE,One,\n"
                         "Twice,Two,\n"
                         ",Nobody,\n"
                         "LONG," +
                             std::string(81, 'x') +
                             ",\n"
                             "DATE,Date,soon\n"
                             "SHORT\n"
                             "QUOTE,5\" pipe,\n",
                         {"--apply"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out,
              AllOf(HasSubstr("7 rows refused:"), HasSubstr("line 3, ClientID: \"old\" is in BillingDb already"),
                    HasSubstr("line 5, ClientID: \"Twice\" stands in the file twice"),
                    HasSubstr("line 6, ClientID: it is empty"), HasSubstr("line 7, ClientCompany:"),
                    HasSubstr("line 8, ClientSince: \"soon\" is no date")));
  EXPECT_THAT(ended.out, AllOf(HasSubstr("line 9: it has 1 field, and the heading 3"),
                               HasSubstr("line 10: a quote stands inside of a field"),
                               HasSubstr("Of the others, 2 rows can be added.")));
  EXPECT_EQ(Count("Client"), "1");
}

TEST_F(Import, Comes_as_JSON_for_other_programs) {
  const auto ended = Run("clients", "ClientID\nA\n\" \"\n", {"--json"});
  EXPECT_EQ(ended.out,
            "{\"line\":2,\"ClientID\":\"A\",\"LastUpdated\":\"2008-03-05T15:00:00\"}\n"
            "{\"refused\":3,\"column\":\"ClientID\",\"reason\":\"it is empty, and no row can do without it\"}\n"
            "{\"table\":\"clients\",\"rows\":1,\"refusedRows\":1,\"written\":false}\n");
  EXPECT_EQ(ended.status, 1);
}

TEST_F(Import, Takes_columns_of_other_names_and_leaves_some_out) {
  const auto ended = Run("clients", "No,Firm,Remarks\nA,Abbott,gone\n",
                         {"--map", "No=ClientID,Firm=clientcompany,Remarks=", "--apply"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(folder_.Scalar("SELECT ClientCompany FROM Client WHERE ClientID = 'A'"), "Abbott");
}

TEST_F(Import, Makes_the_keys_that_the_product_makes) {
  folder_.Done(
      {"billing", "run", "-e",
       "INSERT INTO Project (ProjectID) VALUES ('HARBOR:'); INSERT INTO Employee (EmployeeID) VALUES ('MHALE')"});
  const auto ended = Run("timeentries",
                         "TEDate,EmployeeID,ProjectID,TEHours,TEPosted\n2008-03-04,MHALE,HARBOR:,7.5,Yes\n"
                         "2008-03-05,mhale,harbor:,4,No\n",
                         {"--apply"});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(DISTINCT TEID) FROM TimeEntry WHERE TEID LIKE '{%}' AND length(TEID) = 38"),
            "2");
  EXPECT_EQ(folder_.Scalar("SELECT SUM(TEPosted) FROM TimeEntry"), "-1");
}

TEST_F(Import, Makes_rows_of_the_table_that_was_named) {
  EXPECT_EQ(Run("vendors", "EmployeeID,EmpCompany\nACME,Acme\n", {"--apply"}).status, 0);
  EXPECT_EQ(folder_.Scalar("SELECT IsSub FROM Employee WHERE EmployeeID = 'ACME'"), "-1");
  const auto ended = Run("employees", "EmployeeID,IsSub\nMHALE,-1\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, HasSubstr("line 2, IsSub: \"-1\" makes it no row of this table: it has to be 0"));
}

TEST_F(Import, Refuses_rows_whose_parents_are_not_there_and_takes_those_of_the_file) {
  folder_.Done({"billing", "run", "-e", "INSERT INTO Client (ClientID) VALUES ('ABBOTT')"});
  const std::string heading = "ProjectID,ClientID,ParentProjectID\n";
  const auto ended = Run("projects", heading + "HARBOR:1,ABBOTT,HARBOR:\nHARBOR:,ABBOTT,\nPIER:,NOBODY,\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out,
              AllOf(HasSubstr("1 row refused:"), HasSubstr("line 4, ClientID: there is no Client \"NOBODY\"")));
  EXPECT_EQ(Run("projects", heading + "HARBOR:1,ABBOTT,HARBOR:\nHARBOR:,ABBOTT,\n", {"--apply"}).status, 0);
}

TEST_F(Import, Refuses_dates_that_may_have_the_day_first_where_another_one_has) {
  const auto ended = Run("clients", "ClientID,ClientSince\nA,3/5/2008\nB,31/5/2008\nC,2008-03-05\n");
  EXPECT_THAT(ended.out,
              AllOf(HasSubstr("2 rows refused:"), HasSubstr("line 2, ClientSince: \"3/5/2008\" may have the day first"),
                    HasSubstr("line 3, ClientSince: \"31/5/2008\" has the day first")));
}

struct Unusable {
  std::string name;
  std::string table;
  std::string csv;
  std::vector<std::string> options;
  std::string told;
};

class UnusableCsv : public testing::TestWithParam<Unusable> {};

TEST_P(UnusableCsv, Gives_2_and_says_what_is_wrong) {
  const WorkFolder folder;
  folder.Done({"init"});
  folder.Write("rows.csv", GetParam().csv);
  std::vector<std::string> command = {"import", GetParam().table, "rows.csv", "--apply"};
  command.insert(command.end(), GetParam().options.begin(), GetParam().options.end());
  const auto ended = folder.Twqb(command);
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(ended.err, HasSubstr(GetParam().told));
  EXPECT_EQ(folder.Scalar("SELECT COUNT(*) FROM Client"), "0");
}

INSTANTIATE_TEST_SUITE_P(
    Import, UnusableCsv,
    testing::Values(
        Unusable{"Empty", "clients", "", {}, "The file is empty"},
        Unusable{"UnknownColumn", "clients", "ClientID,ClientCompny\n", {}, "Did you mean \"ClientCompany\"?"},
        Unusable{"NoKey", "clients", "ClientCompany\nA\n", {}, "The file has no column ClientID"},
        Unusable{"Link", "clients", "ClientID,QBLinkID\nA,1\n", {}, "made by the link alone"},
        Unusable{"TwoIntoOne", "clients", "ClientID,clientid\nA,B\n", {}, "Two columns of the file go into"},
        Unusable{"Semicolons", "clients", "ClientID;ClientCompany\n", {}, "semicolons"},
        Unusable{"MarkAlone", "clients", "\xEF\xBB\xBF", {}, "The file is empty"},
        Unusable{"EmptyLines", "clients", "\r\n\r\n", {}, "The file is empty"},
        Unusable{"SameHeadingTwice", "clients", "ClientID,ClientID\nA,B\n", {}, "Two columns of the file go into"},
        Unusable{"NoName", "clients", "ClientID,\nA,\nB,C\n", {}, "Column 2 has no name in the first line, and line 3"},
        Unusable{"BrokenHeading", "clients", "\"ClientID\n", {}, "not closed"},
        Unusable{"Latin1", "clients", "ClientID\nMu\xF1oz\n", {}, "Line 2 holds bytes that are no UTF-8"},
        Unusable{
            "MapOfNothing", "clients", "ClientID\nA\n", {"--map", "Clientid2=ClientID"}, "Did you mean \"ClientID\"?"},
        Unusable{"MapWithoutSign", "clients", "ClientID\nA\n", {"--map", "ClientID"}, "is not FILE-COLUMN=DB-COLUMN"},
        Unusable{"AllTables", "all", "ClientID\nA\n", {}, "all of them"},
        Unusable{"UnknownTable", "cleints", "ClientID\nA\n", {}, "Did you mean \"clients\"?"}),
    [](const auto& suite) { return suite.param.name; });

TEST_F(Import, Of_what_is_no_file_says_what_it_is) {
  std::filesystem::create_directory(folder_.Path() / "rows");
  const auto folder = folder_.Twqb({"import", "clients", "rows"});
  EXPECT_EQ(folder.status, 2);
  EXPECT_THAT(folder.err, AllOf(HasSubstr("rows"), HasSubstr("Is a directory")));
  const auto none = folder_.Twqb({"import", "clients", "none.csv"});
  EXPECT_EQ(none.status, 2);
  EXPECT_THAT(none.err, AllOf(HasSubstr("none.csv"), HasSubstr("No such file")));
}

TEST_F(Import, Reads_every_table_that_moves) {
  std::istringstream tables(folder_.Done({"status", "--json"}));
  int count = 0;
  for (std::string line; std::getline(tables, line); ++count) {
    const auto begin = line.find("\":\"") + 3;
    const auto table = line.substr(begin, line.find('"', begin) - begin);
    const auto ended = Run(table, "Nonsense\nx\n");
    EXPECT_THAT(ended.err, HasSubstr("has no column \"Nonsense\"")) << table;
  }
  EXPECT_EQ(count, 13);
}

TEST_F(Import, Takes_standard_input) {
  const auto ended = folder_.Twqb({"import", "clients", "-", "--apply"}, {.input = "ClientID\nA\n"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(Count("Client"), "1");
}

TEST_F(Import, Is_quick_with_ten_thousand_lines) {
  std::string csv = "ClientID,ClientCompany,ClientSince\n";
  for (int i = 0; i < 10'000; ++i)
    csv += "C" + std::to_string(i) + ",\"Company, no. " + std::to_string(i) + "\",3/5/2008\n";
  const auto begin = std::chrono::steady_clock::now();
  const auto ended = Run("clients", csv, {"--apply"});
  const auto taken = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(Count("Client"), "10000");
  EXPECT_LT(taken, std::chrono::seconds(20));
  RecordProperty("milliseconds",
                 static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(taken).count()));
}

TEST_F(Import, Of_a_file_that_the_database_refuses_adds_no_row) {
  folder_.Done({"billing", "run", "-e", "CREATE UNIQUE INDEX OneOfACity ON Client (ClientCity)"});
  const auto ended = Run("clients", "ClientID,ClientCity\nA,Bath\nB,Wells\nC,bath\n", {"--apply"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("Line 4:"), HasSubstr("No row has been added.")));
  EXPECT_THAT(ended.out, Not(HasSubstr("added to")));
  EXPECT_EQ(Count("Client"), "0");
}

}  // namespace
}  // namespace twqb::cli
