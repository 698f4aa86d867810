// What --transcript may be given, and what stays as it is.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

class OutputFile : public testing::Test {
 protected:
  OutputFile() {
    folder_.Done({"init", "--sample"});
    folder_.Write("yes.txt", "default yes\n");
    folder_.Write("faults.txt", "# none\n");
    folder_.Done({"send", "clients", "--answers", "yes.txt", "--clock", "2008-03-05T10:00:00"});
  }

  [[nodiscard]] Ended RecordInto(const std::string& path) const {
    return folder_.Twqb({"get", "clients", "--answers", "yes.txt", "--faults", "faults.txt", "--clock",
                         "2008-03-05T12:00:00", "--transcript", path});
  }
  void ExpectRefused(const std::string& path, const std::string& told) const {
    const auto ended = RecordInto(path);
    EXPECT_EQ(ended.status, 2) << path;
    EXPECT_THAT(ended.err, AllOf(StartsWith("twqb: " + path + " "), HasSubstr(told), HasSubstr("--transcript")));
  }

  WorkFolder folder_;
};

TEST_F(OutputFile, Is_no_file_of_the_run) {
  for (const std::string name : {"billing.db", "company.twq", "twqb.ini", "registry.ini", "yes.txt", "faults.txt",
                                 "TWQBLog20083.txt", "billing.db_TWB.bak", "company.twq.lock"}) {
    const auto before = folder_.Read(name);
    ExpectRefused(name, "the transcript would overwrite it");
    EXPECT_EQ(folder_.Read(name), before) << name;
  }
}

TEST_F(OutputFile, Is_no_file_of_the_run_by_another_spelling_or_link) {
  const auto before = folder_.Read("billing.db");
  fs::create_hard_link(folder_.Path() / "billing.db", folder_.Path() / "hard.jsonl");
  fs::create_symlink("billing.db", folder_.Path() / "soft.jsonl");
  fs::create_directory(folder_.Path() / "below");
  EXPECT_THAT(folder_.Twqb({"status", "--transcript", "hard.jsonl"}).err, HasSubstr("hard.jsonl is BillingDb"));
  fs::remove(folder_.Path() / "hard.jsonl");  // with which no transfer begins
  for (const std::string name : {"./billing.db", "below/../billing.db", "soft.jsonl"}) {
    ExpectRefused(name, "is BillingDb");
  }
  ExpectRefused((folder_.Path() / "billing.db").string(), "is BillingDb");
  EXPECT_EQ(folder_.Read("billing.db"), before);
}

TEST_F(OutputFile, Is_no_file_that_the_run_is_about_to_make) {
  fs::create_symlink("later.ini", folder_.Path() / "link.jsonl");
  for (const std::string name : {"billing.db-journal", "company.twq-wal", "billing.db.transfer"}) {
    ExpectRefused(name, "belongs to");
    EXPECT_THAT(folder_.Names(), Not(Contains(name)));
  }
  ExpectRefused("link.jsonl", "leads nowhere");
  EXPECT_THAT(folder_.Names(), Not(Contains("later.ini")));
}

TEST_F(OutputFile, Replaces_nothing_but_a_transcript) {
  for (const std::string text :
       {"notes of mine\n", "{", "{\"seq\":2,\"kind\":\"call\"}\n", "{\"table\":\"clients\"}\n"}) {
    folder_.Write("other.txt", text);
    ExpectRefused("other.txt", "is no transcript");
    EXPECT_EQ(folder_.Read("other.txt"), text);
  }
  folder_.Write("empty.jsonl", "");
  EXPECT_EQ(RecordInto("empty.jsonl").status, 0);
  EXPECT_TRUE(folder_.Read("empty.jsonl").starts_with("{\"seq\":1,\"kind\":\""));
  folder_.Write("older.jsonl", "{\"seq\":1,\"kind\":\"of another time\"}\n" + std::string(1 << 20, ' '));
  EXPECT_EQ(RecordInto("older.jsonl").status, 0);
  EXPECT_EQ(folder_.Read("older.jsonl").find("of another time"), std::string::npos);
  EXPECT_LT(folder_.Read("older.jsonl").size(), std::size_t{1} << 20);
  EXPECT_EQ(RecordInto("older.jsonl").status, 0) << "what it made is one itself";
}

TEST_F(OutputFile, Of_every_command_is_guarded) {
  const auto before = folder_.Read("billing.db");
  const std::vector<std::vector<std::string>> commands = {
      {"status"},         {"balances"},         {"list", "customers"},
      {"events", "on"},   {"settings", "list"}, {"billing", "run", "-e", "SELECT 1"},
      {"send", "clients"}};
  for (auto command : commands) {
    command.insert(command.end(), {"--answers", "yes.txt", "--transcript", "billing.db"});
    EXPECT_EQ(folder_.Twqb(command).status, 2) << command.front();
  }
  EXPECT_EQ(folder_.Read("billing.db"), before);
}

TEST_F(OutputFile, The_log_is_none_of_the_others_by_a_link) {
  const auto before = folder_.Read("billing.db");
  fs::remove(folder_.Path() / "TWQBLog20083.txt");
  fs::create_symlink("billing.db", folder_.Path() / "TWQBLog20083.txt");
  const auto ended = RecordInto("run.jsonl");
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("TWQBLog20083.txt leads to"), HasSubstr("Move the log away.")));
  EXPECT_EQ(folder_.Read("billing.db"), before);
}

TEST_F(OutputFile, Is_no_answers_and_no_faults_that_the_log_leads_to) {
  for (const std::string name : {"yes.txt", "faults.txt"}) {
    const auto before = folder_.Read(name);
    fs::remove(folder_.Path() / "TWQBLog20083.txt");
    fs::create_symlink(name, folder_.Path() / "TWQBLog20083.txt");
    const auto ended = RecordInto("run.jsonl");
    EXPECT_EQ(ended.status, 2) << name;
    EXPECT_THAT(ended.err, HasSubstr("TWQBLog20083.txt leads to " + name));
    EXPECT_EQ(folder_.Read(name), before);
  }
}

TEST_F(OutputFile, That_is_a_stream_of_the_run_itself_goes_into_it_in_turn) {
  folder_.Write("all.txt", "my heading\n");
  fs::permissions(folder_.Path() / "all.txt", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  const std::string get =
      "\"$0\" get clients --no-progress --answers yes.txt --clock 2008-03-05T12:00:00 --transcript ";
  const auto ended = folder_.Shell(get + "/dev/stdout >>all.txt 2>/dev/null");
  EXPECT_EQ(ended.status, 0) << ended.err;
  const auto all = folder_.Read("all.txt");
  EXPECT_THAT(all, AllOf(StartsWith("my heading\n{\"seq\":1,"), testing::EndsWith("\nget clients: done\n")));
  EXPECT_NE(fs::status(folder_.Path() / "all.txt").permissions() & fs::perms::group_read, fs::perms::none);
  // One that it is not to be appended to: no line comes over another one.
  EXPECT_EQ(folder_.Shell(get + "/dev/stdout >new.txt 2>/dev/null").status, 0);
  EXPECT_THAT(folder_.Read("new.txt"), AllOf(StartsWith("{\"seq\":1,"), testing::EndsWith("\nget clients: done\n")));
  EXPECT_EQ(folder_.Shell(get + "/dev/stderr 2>told.txt").status, 0);
  EXPECT_THAT(folder_.Read("told.txt"), HasSubstr("{\"seq\":1,"));
  const auto before = folder_.Read("billing.db");
  EXPECT_EQ(folder_.Shell(get + "/dev/stdout >>billing.db").status, 2) << "what it goes to is looked at all the same";
  EXPECT_EQ(folder_.Read("billing.db"), before);
}

TEST_F(OutputFile, Without_a_name_is_refused) {
  for (const std::string option : {"--transcript", "--report"}) {
    const auto ended = folder_.Twqb({"get", "clients", "--answers", "yes.txt", option, ""});
    EXPECT_EQ(ended.status, 2) << option;
    EXPECT_THAT(ended.err, AllOf(HasSubstr(option), HasSubstr("needs the name of a file"))) << option;
  }
}

TEST_F(OutputFile, May_be_a_device) { EXPECT_EQ(RecordInto("/dev/null").status, 0); }

TEST_F(OutputFile, That_cannot_take_the_whole_record_ends_with_2) { EXPECT_EQ(RecordInto("/dev/full").status, 2); }

}  // namespace
}  // namespace twqb::cli
