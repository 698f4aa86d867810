// What a preview looks like, takes and leaves alone. That it says what the transfer does, tests/firm shows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "HeldTransfer.h"
#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::vector<std::string> Later(std::vector<std::string> words) {
  words.insert(words.end(), {"--no-progress", "--clock", "2008-03-06T10:00:00"});
  return words;
}

std::vector<nlohmann::json> Lines(const std::string& out) {
  std::vector<nlohmann::json> lines;
  std::istringstream text(out);
  for (std::string line; std::getline(text, line);) lines.push_back(nlohmann::json::parse(line));
  return lines;
}

// Clients that are linked, two of which were changed at the desk since.
class Previewed : public testing::Test {
 protected:
  Previewed() {
    folder_.Done({"init", "--sample", "--clock", "2008-03-05T09:00:00"});
    folder_.Write("yes.txt", "default yes\n");
    folder_.Write("none.txt", "");
    folder_.Done({"send", "clients", "--answers", "yes.txt", "--clock", "2008-03-05T10:00:00"});
    folder_.Done({"billing", "run", "-e",
                  "UPDATE Client SET ClientEmail = 'new@abbott.example', LastUpdated = #3/5/2008 20:00:00# WHERE "
                  "ClientID IN ('ABBOTT', 'BAYVIEW')"});
  }

  [[nodiscard]] std::map<std::string, std::string> Bytes() const {
    std::map<std::string, std::string> bytes;
    for (const auto& name : folder_.Names()) bytes[name] = folder_.Read(name);
    return bytes;
  }

  WorkFolder folder_;
};

TEST_F(Previewed, Shows_a_change_field_by_field_and_why_it_goes) {
  const auto out = folder_.Done(Later({"send", "clients", "--id", "ABBOTT", "--preview"}));
  EXPECT_THAT(out,
              testing::MatchesRegex("clients ABBOTT would be changed: it goes, whichever side is newer\n"
                                    "  QuickBooks: Customer Abbott Land Survey .ABBOTT. .[0-9A-F]+-[0-9]+.\n"
                                    "    Email: kabbott@abbottland.example -> new@abbott.example\n"
                                    "\n"
                                    "Settings that would be written:\n"
                                    "  .QBSEND_. Clients_LastSendAt: 3/5/2008 10:00:00 AM -> 3/6/2008 10:00:00 AM\n"
                                    "\n"
                                    "clients: 1 changed\n"
                                    "preview of send clients: it would be done; nothing has been changed\n"));
}

TEST_F(Previewed, Says_why_a_record_would_stay) {
  const auto out = folder_.Done(Later({"send", "clients", "--sync", "--preview"}));
  EXPECT_THAT(out, AllOf(HasSubstr("clients ABBOTT would be changed: BillingDb is newer by 10 h\n"),
                         HasSubstr("clients EASTON would be left as it is: QuickBooks is newer by "),
                         HasSubstr("clients: 2 changed, 33 left as they were\n")));
}

TEST_F(Previewed, Is_an_object_a_line_for_programs) {
  const auto lines = Lines(folder_.Done(Later({"send", "clients", "--id", "ABBOTT", "--preview", "--json"})));
  const auto& record = lines.front();
  EXPECT_EQ(record["preview"], "record");
  EXPECT_EQ(record["table"], "clients");
  EXPECT_EQ(record["direction"], "send");
  EXPECT_EQ(record["key"], "ABBOTT");
  EXPECT_EQ(record["would"], "change");
  EXPECT_EQ(record["done"], "changed");
  ASSERT_EQ(record["changes"].size(), 1U);
  const auto& change = record["changes"][0];
  EXPECT_EQ(change["side"], "quickBooks");
  EXPECT_EQ(change["what"], "changed");
  EXPECT_EQ(change["place"], "Customer");
  EXPECT_EQ(change["identifier"], record["identifier"]);
  EXPECT_EQ(change["fields"],
            nlohmann::json::parse(
                R"([{"field":"Email","before":"kabbott@abbottland.example","after":"new@abbott.example"}])"));
  const auto& end = lines.back();
  EXPECT_EQ(end["preview"], "end");
  EXPECT_EQ(end["transfer"], "send");
  EXPECT_EQ(end["table"], "clients");
  EXPECT_EQ(end["done"], true);
  EXPECT_EQ(end["sums"], nlohmann::json::parse(R"([{"table":"clients","change":1}])"));
}

TEST_F(Previewed, Changes_no_file_and_leaves_none_behind) {
  std::filesystem::create_directory(folder_.Path() / "tmp");
  const auto before = Bytes();
  for (const std::string direction : {"send", "get"}) {
    const auto ended = folder_.Shell("TMPDIR=\"$PWD/tmp\" \"$0\" " + direction + " all --preview");
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_THAT(ended.out, HasSubstr("nothing has been changed"));
    EXPECT_THAT(ended.err, HasSubstr("On copies: "));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path() / "tmp"));
  }
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(Previewed, Shows_what_stands_in_the_table_of_settings_as_rows) {
  const auto before = Bytes();
  const auto out = folder_.Done(Later({"get", "clients", "--preview", "--settings-table"}));
  EXPECT_THAT(out, AllOf(HasSubstr("BillingDb: TWSTable QBGET__Customers_LastSendAt, new\n"),
                         Not(HasSubstr("Settings that would be written"))));
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(Previewed, Passes_views_and_tables_of_others_by) {
  folder_.Done({"billing", "run", "-e",
                "CREATE TABLE Other (A TEXT PRIMARY KEY) WITHOUT ROWID; ALTER TABLE Activity RENAME TO ActivityBase; "
                "CREATE VIEW Activity AS SELECT * FROM ActivityBase"});
  EXPECT_THAT(folder_.Done(Later({"send", "clients", "--id", "ABBOTT", "--preview"})),
              HasSubstr("    Email: kabbott@abbottland.example -> new@abbott.example\n"));
}

TEST_F(Previewed, Tells_of_a_row_without_a_number_by_its_key) {
  folder_.Done({"billing", "run", "-e",
                "ALTER TABLE TWSTable RENAME TO Old; CREATE TABLE TWSTable (ParamName VARCHAR(100) NOT NULL PRIMARY "
                "KEY, ParamValue TEXT) WITHOUT ROWID; DROP TABLE Old"});
  EXPECT_THAT(folder_.Done(Later({"send", "clients", "--preview", "--settings-table"})),
              HasSubstr("BillingDb: TWSTable QBSEND__Clients_LastSendAt, new\n"));
}

TEST_F(Previewed, Tells_of_a_box_and_goes_on) {
  folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "True"});
  const auto ended = folder_.Twqb(Later({"send", "clients", "--id", "ABBOTT", "--preview"}));
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, AllOf(HasSubstr("Boxes that would come:\n  It appears you are using"),
                               HasSubstr("    the preview goes on with Yes\n"), HasSubstr("Backup completed!")));
  EXPECT_THAT(ended.err, Not(HasSubstr("Backup")));
  EXPECT_THAT(folder_.Done(Later({"send", "clients", "--id", "ABBOTT", "--preview", "--answers", "yes.txt"})),
              HasSubstr("    the preview goes on with Yes, from the answers file\n"));
}

TEST_F(Previewed, Ends_where_the_answers_end) {
  folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "True"});
  const auto ended = folder_.Twqb(Later({"send", "clients", "--preview", "--answers", "none.txt"}),
                                  {.unanswered = Unanswered::Expected});
  EXPECT_EQ(ended.status, 3);
  EXPECT_THAT(ended.out, HasSubstr("preview of send clients: it would end at a question without an answer"));
}

TEST_F(Previewed, Tells_a_refusal_as_the_transfer_would_and_ends_with_its_status) {
  folder_.Write("faults.txt", "CustomerModRq 1 status 3170 Error \"scripted\"\n");
  const auto before = Bytes();
  const auto command =
      std::vector<std::string>{"send", "clients", "--id", "ABBOTT", "--preview", "--strict", "--faults", "faults.txt"};
  const auto ended = folder_.Twqb(Later(command));
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, AllOf(HasSubstr("clients ABBOTT would be refused: "), HasSubstr("scripted"),
                               HasSubstr("it would be done, but 1 record was refused; nothing has been changed")));
  EXPECT_TRUE(Bytes() == before);
}

TEST_F(Previewed, Goes_while_a_transfer_is_at_work) {
  HeldTransfer transfer(folder_, {"send", "employees", "--answers", "yes.txt", "--no-progress"}, "SET QBLinkID");
  const auto ended = folder_.Twqb({"send", "vendors", "--preview", "--no-progress"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, HasSubstr("vendors: 14 added\n"));
  EXPECT_EQ(transfer.Finish().exitStatus, 0);
}

TEST_F(Previewed, Names_the_file_itself_when_it_is_no_database) {
  folder_.Write("notes.txt", "This is text.");
  const auto company = folder_.Twqb({"send", "clients", "--preview", "--company", "notes.txt"});
  EXPECT_EQ(company.status, 2);
  EXPECT_THAT(company.err, AllOf(HasSubstr((folder_.Path() / "notes.txt").string() + " can't be used."),
                                 Not(HasSubstr("twqb-preview"))));
  const auto billing =
      folder_.Twqb({"send", "clients", "--preview", "--billing", "Provider=SQLITE;Data Source=nothing.db"});
  EXPECT_EQ(billing.status, 2);
  EXPECT_THAT(billing.err, AllOf(HasSubstr("nothing.db"), Not(HasSubstr("twqb-preview"))));
  EXPECT_THAT(folder_.Names(), Not(testing::Contains("nothing.db")));
}

TEST_F(Previewed, Writes_no_report_and_has_json_to_itself) {
  EXPECT_EQ(folder_.Twqb({"send", "clients", "--preview", "--report", "r.jsonl"}).status, 2);
  EXPECT_THAT(folder_.Names(), Not(testing::Contains("r.jsonl")));
  EXPECT_EQ(folder_.Twqb({"send", "clients", "--json"}).status, 2);
}

}  // namespace
}  // namespace twqb::cli
