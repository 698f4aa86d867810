// What restore and undo refuse, what they see of a change, and where files of a set are written to.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>

#include "Backups.h"
#include "adapters/companyfile/FileLock.h"
#include "tests/support/TerminalSession.h"

namespace twqb::cli {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

using Restores = Backups;

TEST_F(Restores, Are_refused_while_a_program_has_a_session_open_in_the_company_file) {
  Send();
  const auto after = Bytes();
  {
    const auto session =
        company::FileLock::TryTake((folder_.Path() / "company.twq.lock").string(), company::LockKind::Shared);
    ASSERT_TRUE(session);
    const auto refused = folder_.Twqb({"restore", "--answers", "yes.txt"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, AllOf(HasSubstr("Nothing has been put back"), HasSubstr("has a session open")));
    EXPECT_EQ(folder_.Twqb({"undo"}).status, 2);
  }
  EXPECT_EQ(Bytes(), after);
  ExpectNothingLeftBehind();
  folder_.Done({"undo"});
}

TEST_F(Restores, Are_refused_when_something_changes_while_they_ask_and_nothing_is_put_back) {
  Send();
  std::vector<std::string> words = {TWQB_PROGRAM, "restore"};
  TerminalSession session([&] {
    std::vector<char*> argv;
    for (auto& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    if (::chdir(folder_.Path().c_str()) == 0) ::execv(argv[0], argv.data());
    return 127;
  });
  ASSERT_TRUE(session.See("Do you want to put back the set"));
  ASSERT_TRUE(session.See("[Y]es / [N]o: "));
  // What only reads goes on meanwhile; what does not is told what is in its way.
  for (const auto& reading :
       std::vector<std::vector<std::string>>{{"check"}, {"link"}, {"diff"}, {"list", "customers"}, {"status"}}) {
    const auto ended = folder_.Twqb(reading);
    EXPECT_NE(ended.status, 2) << reading.front() << ": " << ended.err;
    EXPECT_THAT(ended.err, Not(HasSubstr("at work"))) << reading.front();
    EXPECT_THAT(ended.err, Not(HasSubstr("connection"))) << reading.front();
  }
  for (const auto& [word, nothing] : std::vector<std::pair<std::string, std::string>>{
           {"undo", "Nothing has been taken back"}, {"backup", "No backup has been made"}}) {
    const auto refused = folder_.Twqb({word});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, AllOf(HasSubstr("A restore is at work on "), HasSubstr("\"twqb restore\" (process"),
                                   HasSubstr(nothing)));
  }
  folder_.Write("twqb.ini", folder_.Read("twqb.ini") + "[QBSEND_]\nClients_OptNever=True\n");
  const auto changed = Bytes();
  ASSERT_TRUE(session.Type("y\n"));
  EXPECT_EQ(session.ExitStatus(), 2);
  EXPECT_THAT(session.All(), AllOf(HasSubstr("Nothing has been put back"), HasSubstr("has changed since")));
  EXPECT_EQ(Bytes(), changed);
  EXPECT_EQ(Sets().size(), 1U) << "nothing was put back, and nothing has to be taken back";
  ExpectNothingLeftBehind();
}

TEST_F(Restores, Answer_No_in_the_form_that_was_asked_for) {
  folder_.Done({"backup"});
  Send();
  folder_.Write("no.txt", "default no\n");
  const auto refused = folder_.Twqb({"restore", Sets().front().at("set"), "--json", "--answers", "no.txt"});
  EXPECT_EQ(refused.status, 1);
  std::istringstream lines(refused.out);
  std::vector<nlohmann::json> all;
  for (std::string line; std::getline(lines, line);) all.push_back(nlohmann::json::parse(line));
  ASSERT_FALSE(all.empty());
  EXPECT_TRUE(all.back().at("done").is_null());
  EXPECT_EQ(all.back().at("set"), Sets().front().at("set"));
}

TEST_F(Restores, Write_files_of_one_name_beside_each_other_and_none_over_another) {
  fs::create_directories(folder_.Path() / "a");
  fs::create_directories(folder_.Path() / "b");
  fs::create_directories(folder_.Path() / "out");
  fs::copy(folder_.Path() / "billing.db", folder_.Path() / "a" / "firm");
  fs::copy(folder_.Path() / "company.twq", folder_.Path() / "b" / "firm");
  folder_.Done({"backup", "--billing", "Provider=SQLITE;Data Source=a/firm", "--company", "b/firm"});
  const auto told = folder_.Done({"restore", "--to", "out", "--json"});
  const auto first = nlohmann::json::parse(told.substr(0, told.find('\n')));
  EXPECT_EQ(first.at("what"), "billing");
  EXPECT_EQ(first.at("file"), "out/billing-firm");
  EXPECT_EQ(Mark(folder_.Read("out/billing-firm")), Mark(folder_.Read("a/firm")));
  EXPECT_EQ(Mark(folder_.Read("out/company-firm")), Mark(folder_.Read("b/firm")));

  fs::remove(folder_.Path() / "out" / "billing-firm");
  folder_.Write("out/company-firm", "somebody's own");
  const auto refused = folder_.Twqb({"restore", "--to", "out"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, AllOf(HasSubstr("Nothing has been copied"), HasSubstr("out/company-firm is there already")));
  EXPECT_FALSE(fs::exists(folder_.Path() / "out" / "billing-firm"));
  EXPECT_EQ(folder_.Read("out/company-firm"), "somebody's own");
}

TEST_F(Restores, Of_a_transfer_see_views_tables_without_rows_and_comments_that_came_since) {
  Send();
  const std::vector<std::pair<std::string, std::string>> kStatements = {
      {"CREATE VIEW Somebody AS SELECT ClientID FROM Client", "DROP VIEW Somebody"},
      {"CREATE TABLE Somebody (Was TEXT)", "DROP TABLE Somebody"}};
  for (const auto& [made, dropped] : kStatements) {
    Sql(made);
    const auto refused = folder_.Twqb({"undo"});
    EXPECT_EQ(refused.status, 2) << made;
    EXPECT_THAT(refused.out, testing::ContainsRegex("billing +structure +[0-9]+ +[0-9]+ +1 +0 +0\n"));
    Sql(dropped);
  }
  const auto settings = folder_.Read("twqb.ini");
  folder_.Write("twqb.ini", "; ask Mary ahead of changing this\n" + settings);
  const auto refused = folder_.Twqb({"undo"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.out, testing::ContainsRegex("settings +comments +[0-9]+ +[0-9]+ +1 +0 +0\n"));
  folder_.Write("twqb.ini", settings);
  // Whole on a narrow screen: it can't be asked for again.
  EXPECT_THAT(folder_.OnTerminal({"undo"}, {.columns = 40}), AllOf(HasSubstr("GONE"), Not(HasSubstr("--wide"))));
}

TEST_F(Restores, Of_a_database_whose_file_differs_and_no_row_say_so_and_put_it_back) {
  folder_.Done({"backup"});
  const auto set = Newest();
  const auto before = Bytes();
  // A page of an index, which no count of rows reads.
  const auto at = folder_.Scalar("SELECT rootpage FROM sqlite_schema WHERE type = 'index' AND tbl_name = 'TimeEntry'");
  constexpr std::size_t kHalf = 2048;
  auto bytes = folder_.Read("billing.db");
  bytes.replace((std::stoul(at) - 1) * 2 * kHalf + kHalf, kHalf, kHalf, 'X');
  folder_.Write("billing.db", bytes);
  folder_.Write("no.txt", "default no\n");
  const auto asked = folder_.Twqb({"restore", "--answers", "no.txt"});
  EXPECT_EQ(asked.status, 1);
  EXPECT_THAT(asked.out, testing::ContainsRegex("billing +no row, but the file +- +-"));
  EXPECT_THAT(asked.err, HasSubstr("No row of BillingDb differs from the set, but the file does."));
  const auto lines = folder_.Twqb({"restore", "--json", "--answers", "no.txt"}).out;
  EXPECT_THAT(lines, HasSubstr("{\"where\":\"billing\",\"what\":\"no row, but the file\",\"then\":null"));
  folder_.Done({"restore", "--answers", "yes.txt"});
  EXPECT_EQ(Bytes(), before);
  EXPECT_THAT(folder_.Twqb({"restore", set, "--answers", "yes.txt"}).err, Not(HasSubstr("differs from the set")));
}

TEST_F(Restores, Count_each_table_of_BillingDb_as_one_whatever_its_columns_are_called) {
  Sql("CREATE TABLE Somebody (Was TEXT, kind TEXT); INSERT INTO Somebody VALUES ('a', 'Client'), ('b', 'Client')");
  Sql("CREATE TABLE Widened (Was TEXT); INSERT INTO Widened VALUES ('c')");
  folder_.Done({"backup"});
  Sql("DELETE FROM Client; DELETE FROM Somebody; ALTER TABLE Widened ADD COLUMN kind TEXT");
  folder_.Write("no.txt", "default no\n");
  const auto asked = folder_.Twqb({"restore", "--answers", "no.txt"});
  EXPECT_THAT(asked.out, AllOf(testing::ContainsRegex("billing +Client +2 +0 +0 +0 +2\n"),
                               testing::ContainsRegex("billing +Somebody +2 +0 +0 +0 +2\n"),
                               testing::ContainsRegex("billing +Widened +1 +1 +0 +1 +0\n")));
}

// Other users have these files only where the tests may give them any.
TEST_F(Restores, Give_each_file_the_rights_and_as_far_as_they_may_the_owner_that_it_had) {
  Send();
  constexpr uid_t kSomebody = 65534;
  const bool mayGive = ::geteuid() == 0;
  const auto owner = mayGive ? kSomebody : ::geteuid();
  const auto billing = folder_.Path() / "billing.db";
  const auto ownerOf = [](const fs::path& file) {
    struct stat status = {};
    EXPECT_EQ(::stat(file.c_str(), &status), 0);
    return status.st_uid;
  };
  fs::permissions(billing, static_cast<fs::perms>(0664));
  ASSERT_EQ(::chown(billing.c_str(), owner, static_cast<gid_t>(-1)), 0);
  const auto undone = folder_.Twqb({"undo"});
  EXPECT_EQ(undone.status, 0) << undone.err;
  EXPECT_THAT(undone.err, Not(HasSubstr("another owner")));
  EXPECT_EQ(ownerOf(billing), owner);
  EXPECT_EQ(fs::status(billing).permissions(), static_cast<fs::perms>(0664));
  if (!mayGive) return;
  // The same the other way round: the user is somebody, and the file another's.
  Send();
  fs::permissions(folder_.Path(), static_cast<fs::perms>(0777));
  fs::permissions(billing, static_cast<fs::perms>(0666));
  for (const auto& entry : fs::recursive_directory_iterator(folder_.Path())) {
    ASSERT_EQ(::chown(entry.path().c_str(), entry.path() == billing ? 0 : kSomebody, static_cast<gid_t>(-1)), 0);
  }
  const auto other = folder_.Shell("setpriv --reuid 65534 --regid 0 --clear-groups \"$0\" undo");
  EXPECT_EQ(other.status, 0) << other.err;
  EXPECT_THAT(other.err, HasSubstr("billing.db has another owner or group than before"));
  EXPECT_EQ(ownerOf(billing), kSomebody);
}

TEST_F(Restores, Into_a_folder_say_so_when_the_set_has_nothing_of_the_part) {
  fs::remove(folder_.Path() / "company.twq");
  folder_.Done({"backup"});
  fs::create_directory(folder_.Path() / "out");
  const auto refused = folder_.Twqb({"restore", "--only", "quickbooks", "--to", "out"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("has not kept the company file"));
}

TEST_F(Restores, Tell_of_a_set_that_can_t_be_read) {
  folder_.Done({"backup"});
  const auto set = Newest();
  folder_.Write("backups/" + set + "/manifest.json", "{\"format\": 2}");
  const auto listed = folder_.Twqb({"backup", "--list"});
  EXPECT_EQ(listed.status, 0);
  EXPECT_THAT(listed.err, AllOf(HasSubstr("The set " + set + " can't be read"), HasSubstr("gives its room back")));
}

TEST_F(Restores, Take_no_folder_for_a_set_that_has_a_manifest_of_another_kind) {
  fs::create_directories(folder_.Path() / "backups" / "a page");
  folder_.Write("backups/a page/manifest.json", R"({"name": "a page", "icons": []})");
  folder_.Done({"backup"});
  const auto listed = folder_.Twqb({"backup", "--list"});
  EXPECT_EQ(listed.status, 0);
  EXPECT_EQ(listed.err, "");
  EXPECT_EQ(folder_.Read("backups/a page/manifest.json"), R"({"name": "a page", "icons": []})");
  // One that was copied and then damaged is told all the same.
  fs::copy(folder_.Path() / "backups" / Newest(), folder_.Path() / "backups" / "ahead of all");
  const auto manifest = folder_.Read("backups/ahead of all/manifest.json");
  folder_.Write("backups/ahead of all/manifest.json", manifest.substr(0, manifest.size() / 2));
  EXPECT_THAT(folder_.Twqb({"backup", "--list"}).err, HasSubstr("The set ahead of all can't be read"));
}

// The digests that the sets' manifests and their notes of the end name.
void CollectPieces(const nlohmann::json& json, std::set<std::string>& pieces) {
  constexpr std::size_t kDigestLength = 64;
  for (const auto& [key, value] : json.items()) {
    if (value.is_structured()) CollectPieces(value, pieces);
    if (key != "pieces") continue;
    const auto digests = value.get<std::string>();
    for (std::size_t at = 0; at < digests.size(); at += kDigestLength) pieces.insert(digests.substr(at, kDigestLength));
  }
}

TEST_F(Restores, Leave_no_room_to_a_set_whose_folder_was_removed) {
  folder_.Done({"backup"});
  fs::create_directories(folder_.Path() / "backups" / "a page");
  folder_.Write("backups/a page/manifest.json", R"({"name": "somebody's own"})");
  const auto byHand = Newest();
  Send();
  fs::remove_all(folder_.Path() / "backups" / byHand);
  fs::remove_all(folder_.Path() / "backups" / Newest());
  Sql("UPDATE Client SET ClientCity = 'Moved', LastUpdated = '2030-01-01'");
  Send();
  std::set<std::string> used;
  std::set<std::string> kept;
  for (const auto& entry : fs::recursive_directory_iterator(folder_.Path() / "backups")) {
    if (entry.path().extension() == ".json") {
      CollectPieces(nlohmann::json::parse(ReadWholeFile(entry.path().string())), used);
    }
    if (entry.is_regular_file() && entry.path().string().find("/pieces/") != std::string::npos) {
      kept.insert(entry.path().filename().string());
    }
  }
  EXPECT_FALSE(kept.empty());
  EXPECT_EQ(kept.size(), used.size());
}

}  // namespace
}  // namespace twqb::cli
