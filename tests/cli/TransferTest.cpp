#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Events.h"
#include "LockedFile.h"
#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::vector<std::string> kMorning = {"--clock", "2008-03-05T10:00:00"};
const std::vector<std::string> kEvening = {"--clock", "2008-03-05T20:00:00"};

std::vector<std::string> operator+(std::vector<std::string> words, const std::vector<std::string>& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

class SampleFirm : public testing::Test {
 protected:
  SampleFirm() {
    folder_.Done(std::vector<std::string>{"init", "--sample"} + kMorning);
    folder_.Write("yes.txt", "default yes\n");
  }

  std::vector<Event> Events(std::string_view transcript, std::string_view kind) const {
    return EventsOf(folder_.Read(transcript), kind);
  }

  WorkFolder folder_;
};

TEST_F(SampleFirm, A_send_and_a_get_link_every_client) {
  EXPECT_EQ(folder_.Done(std::vector<std::string>{"send", "clients", "--answers", "yes.txt"} + kMorning),
            "clients: 64 added\nsend clients: done\n");
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "64");
  EXPECT_THAT(folder_.Done({"company", "show"}), testing::ContainsRegex("Customer +79\n"));

  EXPECT_EQ(folder_.Done(std::vector<std::string>{"get", "enClients"} + kEvening),
            "clients: 11 added, 64 changed\nget clients: done\n");
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client"), "75");
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(DISTINCT QBLinkID) FROM Client"), "75");
}

TEST_F(SampleFirm, The_first_transfer_backs_up_both_files_when_the_answer_is_yes) {
  const auto ended = folder_.Twqb(std::vector<std::string>{"send", "clients", "--answers", "yes.txt"} + kMorning);
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, HasSubstr("Backup completed!"));
  EXPECT_THAT(folder_.Names(),
              AllOf(testing::Contains("billing.db_TWB.bak"), testing::Contains("company.twq_TWB.bak")));
  EXPECT_EQ(folder_.Done({"settings", "get", "QBSEND_", "Clients_LastSendAt"}), "3/5/2008 10:00:00 AM\n");
}

TEST_F(SampleFirm, A_backup_that_fails_is_told_and_logged_beside_its_closing_box) {
  folder_.Write("faults.txt", "copy 1 raise 75\n");
  const auto ended = folder_.Twqb(
      std::vector<std::string>{"send", "clients", "--answers", "yes.txt", "--faults", "faults.txt"} + kMorning);
  EXPECT_EQ(ended.status, 0);
  const auto company = (folder_.Path() / "company.twq").string();
  EXPECT_THAT(ended.err, AllOf(HasSubstr("twqb: There is no backup of " + company + ": "),
                               HasSubstr("Backup completed! File Locations:")));
  EXPECT_THAT(folder_.Read("TWQBLog20083.txt"), HasSubstr("There is no backup of the company file \"" + company));
}

TEST_F(SampleFirm, A_registry_file_that_names_no_Database_is_told_of_in_place_of_a_backup) {
  folder_.Write("registry.ini", "");
  const auto ended = folder_.Twqb(std::vector<std::string>{"send", "clients", "--answers", "yes.txt"} + kMorning);
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, HasSubstr("twqb: There is no backup of BillingDb: the registry file names no Database."));
}

TEST_F(SampleFirm, A_backup_does_not_follow_a_link_in_its_place) {
  folder_.Write("precious.txt", "mine");
  std::filesystem::create_symlink("precious.txt", folder_.Path() / "billing.db_TWB.bak");
  folder_.Done(std::vector<std::string>{"send", "clients", "--answers", "yes.txt"} + kMorning);
  EXPECT_EQ(folder_.Read("precious.txt"), "mine");
  EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(folder_.Path() / "billing.db_TWB.bak")));
}

TEST_F(SampleFirm, What_a_killed_backup_has_left_goes_with_the_next_transfer) {
  constexpr auto kDeadProcess = "4194305";  // above the greatest number that a process can have
  const auto left = std::string("billing.db_TWB.bak.") + kDeadProcess + "-0.tmp";
  folder_.Write(left, "half a copy");
  folder_.Write("billing.db_TWB.bak.mine-0.tmp", "somebody's own");
  folder_.Done(std::vector<std::string>{"send", "clients", "--id", "ABBOTT"} + kMorning);
  EXPECT_THAT(folder_.Names(), AllOf(Not(testing::Contains(left)), testing::Contains("billing.db_TWB.bak.mine-0.tmp")));
}

TEST_F(SampleFirm, Without_a_terminal_and_answers_a_question_is_printed_and_taken_as_No) {
  const auto ended = folder_.Twqb({"send", "clients", "--no-progress"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, HasSubstr("Would you like to backup"));
  EXPECT_THAT(folder_.Names(), Not(testing::Contains("billing.db_TWB.bak")));
}

TEST_F(SampleFirm, With_an_identifier_that_record_alone_is_sent) {
  folder_.Done({"send", "CLIENTS", "--id", "ABBOTT"});
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "1");
  EXPECT_THAT(folder_.Scalar("SELECT QBLinkID FROM Client WHERE ClientID = 'ABBOTT'"), Not(IsEmpty()));
}

TEST_F(SampleFirm, A_key_that_would_read_as_a_condition_gives_no_other_row_its_link) {
  folder_.Done(
      {"billing", "run", "-e", "INSERT INTO Client (ClientID, ClientCompany) VALUES ('!'' OR ''1''=''1', '!')"});
  EXPECT_EQ(folder_.Twqb(std::vector<std::string>{"send", "clients", "--answers", "yes.txt"} + kMorning).status, 1);
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM (SELECT QBLinkID FROM Client WHERE QBLinkID <> '' GROUP BY QBLinkID "
                           "HAVING COUNT(*) > 1)"),
            "0");
}

TEST_F(SampleFirm, A_saved_filter_that_skips_the_table_leaves_it_alone) {
  folder_.Done({"settings", "set", "QBSEND_", "Clients_ChkSkip", "True"});
  EXPECT_EQ(folder_.Done({"send", "clients"}), "clients: the settings skip this table\nsend clients: done\n");
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "0");
}

TEST_F(SampleFirm, Sync_lets_the_newer_record_win_over_saved_settings) {
  folder_.Done(std::vector<std::string>{"send", "clients", "--id", "ABBOTT"} + kMorning);
  folder_.Done({"settings", "set", "QBGET_", "Customers_OptMostRecent", "False"});
  const std::string change =
      "UPDATE Client SET ClientCity = 'Newport', LastUpdated = '2008-03-05 15:00:00' WHERE ClientID = 'ABBOTT'";
  folder_.Done({"billing", "run", "-e", change});
  folder_.Done(std::vector<std::string>{"get", "clients", "--sync"} + kEvening);
  EXPECT_EQ(folder_.Scalar("SELECT ClientCity FROM Client WHERE ClientID = 'ABBOTT'"), "Newport");
  folder_.Done(std::vector<std::string>{"get", "clients"} + kEvening);
  EXPECT_EQ(folder_.Scalar("SELECT ClientCity FROM Client WHERE ClientID = 'ABBOTT'"), "Portland");
}

TEST_F(SampleFirm, A_question_without_an_answer_ends_with_3_and_names_it) {
  folder_.Write("none.txt", "");
  const auto ended = folder_.Twqb({"send", "clients", "--answers", "none.txt"}, {.unanswered = Unanswered::Expected});
  EXPECT_EQ(ended.status, 3);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("Would you like to backup your data files Now?"),
                               HasSubstr("(title \"Backup QB Data file?\")"), HasSubstr("It offers yes, no.")));
  EXPECT_THAT(ended.out, IsEmpty());
}

TEST_F(SampleFirm, A_question_that_does_not_offer_the_answer_ends_with_3_too) {
  folder_.Write("retry.txt", "retry\n");
  const auto ended = folder_.Twqb({"send", "clients", "--answers", "retry.txt"}, {.unanswered = Unanswered::Expected});
  EXPECT_EQ(ended.status, 3);
  EXPECT_THAT(ended.err, HasSubstr("\"retry\""));
}

TEST_F(SampleFirm, A_failed_transfer_ends_with_1) {
  folder_.Write("faults.txt", "sql 1 raise 0x80040E14 \"scripted\" UPDATE Client\n");
  const auto ended = folder_.Twqb({"send", "clients", "--answers", "yes.txt", "--faults", "faults.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "clients: 1 added, 63 not reached\nsend clients: failed; 1 error was told: see the log\n");
  EXPECT_THAT(ended.err, AllOf(HasSubstr("scripted"), HasSubstr("MoveClientsToQB")));
}

TEST_F(SampleFirm, Without_an_open_company_file_one_is_asked_for) {
  std::filesystem::rename(folder_.Path() / "company.twq", folder_.Path() / "closed.twq");
  folder_.Write("open.txt", "file closed.twq\nno\n");
  folder_.Done({"send", "clients", "--id", "ABBOTT", "--answers", "open.txt"});
  EXPECT_THAT(folder_.Scalar("SELECT QBLinkID FROM Client WHERE ClientID = 'ABBOTT'"), Not(IsEmpty()));
  folder_.Write("cancel.txt", "cancel\n");
  folder_.Done({"settings", "set", "GENERAL", "QBDBPath", ""});
  EXPECT_EQ(folder_.Twqb({"send", "clients", "--answers", "cancel.txt"}).status, 1);
}

TEST_F(SampleFirm, The_transcript_holds_the_call_the_faults_and_the_result) {
  folder_.Write("faults.txt", "CustomerAddRq 1 status 3110 Error \"scripted\"\n");
  folder_.Done({"send", "clients", "--id", "ABBOTT", "--answers", "yes.txt", "--faults", "faults.txt", "--transcript",
                "run.jsonl"});
  const auto calls = Events("run.jsonl", "call");
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].at("operation"), "SendDataToQB");
  EXPECT_EQ(calls[0].at("arguments"), R"(["enClients"])");
  const auto returns = Events("run.jsonl", "return");
  ASSERT_EQ(returns.size(), 1U);
  EXPECT_EQ(returns[0].at("value"), "true");
  const auto responses = Events("run.jsonl", "response");
  EXPECT_TRUE(std::ranges::any_of(
      responses, [](const auto& response) { return response.at("xml").find("scripted") != std::string::npos; }));
}

TEST_F(SampleFirm, Two_runs_of_one_clock_and_seed_give_one_transcript) {
  const auto before = folder_.Read("billing.db");
  const auto company = folder_.Read("company.twq");
  const auto settings = folder_.Read("twqb.ini");
  const auto run = [&](const std::string& transcript) {
    folder_.Done(
        std::vector<std::string>{"send", "clients", "--answers", "yes.txt", "--seed", "7", "--transcript", transcript} +
        kMorning);
  };
  run("one.jsonl");
  folder_.Write("billing.db", before);
  folder_.Write("company.twq", company);
  folder_.Write("twqb.ini", settings);
  run("two.jsonl");
  EXPECT_EQ(folder_.Read("one.jsonl"), folder_.Read("two.jsonl"));
}

TEST_F(SampleFirm, The_log_goes_to_the_working_folder) {
  folder_.Done(std::vector<std::string>{"send", "clients", "--id", "ABBOTT"} + kMorning);
  EXPECT_THAT(folder_.Read("TWQBLog20083.txt"), HasSubstr("TWTWClient Initialized on 3/5/2008 10:00:00 AM"));
}

TEST_F(SampleFirm, A_database_without_the_table_ends_with_1_and_a_hint) {
  folder_.Done({"billing", "run", "-e", "DROP TABLE Client"});
  const auto ended = folder_.Twqb({"send", "clients"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("no table Client"));
}

struct BadFile {
  std::string name;
  std::vector<std::string> arguments;
  std::string told;
};

class UnusableFile : public SampleFirm, public testing::WithParamInterface<BadFile> {};

TEST_P(UnusableFile, Ends_with_2_before_anything_is_sent) {
  folder_.Write("garbage.bin", std::string(4096, 'x'));
  folder_.Write("binary.bin", std::string(16, '\0'));
  folder_.Write("maybe.txt", "yes\nmaybe\n");
  folder_.Write("badfault.txt", "# none\nCustomerAddRq one status 3110 Error\n");
  const auto ended = folder_.Twqb(std::vector<std::string>{"send", "clients"} + GetParam().arguments);
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(StartsWith("twqb: "), HasSubstr(GetParam().told)));
  EXPECT_THAT(ended.out, IsEmpty());
  EXPECT_THAT(folder_.Names(), Not(testing::Contains("company.twq.lock")));
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "0");
}

INSTANTIATE_TEST_SUITE_P(
    Transfer, UnusableFile,
    testing::Values(
        BadFile{"MissingDatabase", {"--billing", "Provider=SQLITE;Data Source=none.db"}, "twqb init"},
        BadFile{"DatabaseThatIsNone", {"--billing", "Provider=SQLITE;Data Source=garbage.bin"}, "not a database"},
        BadFile{"UnknownProvider", {"--billing", "Provider=NOSUCH;Data Source=billing.db"}, "NOSUCH"},
        BadFile{"NoConnectionString", {"--billing", "billing.db"}, "names no Provider"},
        BadFile{"CompanyFileThatIsNone", {"--company", "garbage.bin"}, "--company"},
        BadFile{"CompanyFileThatIsTheDatabase", {"--company", "billing.db"}, "--company"},
        BadFile{"MissingCompanyFile", {"--company", "none.twq"}, "There is no company file"},
        BadFile{"SettingsThatAreTheDatabase", {"--settings", "billing.db"}, "would destroy it"},
        BadFile{"SettingsThatAreTheCompanyFile", {"--settings", "./company.twq"}, "would destroy it"},
        BadFile{"SettingsThatAreNoText", {"--settings", "binary.bin"}, "is no text"},
        BadFile{"SettingsInNoFolder", {"--settings", "nowhere/twqb.ini"}, "nowhere/twqb.ini can't be written"},
        BadFile{"SettingsThatAreAFolder", {"--settings", "."}, "can't be read"},
        BadFile{"MissingAnswers", {"--answers", "none.txt"}, "none.txt can't be read"},
        BadFile{"WrongAnswers", {"--answers", "maybe.txt"}, "maybe.txt can't be used: line 2"},
        BadFile{"MissingFaults", {"--faults", "none.txt"}, "none.txt can't be read"},
        BadFile{"WrongFaults", {"--faults", "badfault.txt"}, "badfault.txt can't be used: line 2"},
        BadFile{"TranscriptInNoFolder", {"--transcript", "nowhere/run.jsonl"}, "nowhere/run.jsonl can't be written"}),
    [](const auto& suite) { return suite.param.name; });

class MissingCompany : public SampleFirm, public testing::WithParamInterface<std::vector<std::string>> {};

TEST_P(MissingCompany, Is_told_by_every_command_that_works_on_files) {
  const auto ended = folder_.Twqb(GetParam() + std::vector<std::string>{"--company", "none.twq"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr((folder_.Path() / "none.twq").string()), HasSubstr("--company")));
}

using Command = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(Transfer, MissingCompany,
                         testing::Values(Command{"get", "clients"}, Command{"status"}, Command{"balances"},
                                         Command{"list", "customers"}, Command{"events", "on"},
                                         Command{"settings", "list"}, Command{"company", "show"},
                                         Command{"billing", "show"}),
                         [](const auto& suite) { return suite.param.front(); });

TEST_F(SampleFirm, A_database_that_another_program_writes_to_is_told_as_locked) {
  const LockedFile billing(folder_.Path() / "billing.db");
  const auto ended = folder_.Twqb({"billing", "show", "--billing", "Provider=SQLITE;Data Source=billing.db"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("BillingDb billing.db is locked: another program"), Not(HasSubstr("init"))));
}

TEST_F(SampleFirm, Control_characters_reach_neither_the_log_nor_a_pipe) {
  folder_.Done({"billing", "run", "-e",
                "UPDATE Client SET ClientCity = 'a' || char(27) || '[31m' || char(155) || char(127) WHERE ClientID = "
                "'ABBOTT'"});
  EXPECT_EQ(folder_.Scalar("SELECT ClientCity FROM Client WHERE ClientID = 'ABBOTT'"), "a\\x1b[31m\\x9b\\x7f");
  EXPECT_THAT(
      folder_.Done({"billing", "run", "--json", "-e", "SELECT ClientCity FROM Client WHERE ClientID = 'ABBOTT'"}),
      HasSubstr("a\\u001b[31m\\u009b\\u007f"));
  folder_.Done({"settings", "set", "GENERAL", "QBDBPath", "x\x1b[2J"});
  EXPECT_EQ(folder_.Done({"settings", "get", "GENERAL", "QBDBPath"}), "x?[2J\n");
}

TEST_F(SampleFirm, Log_transcript_and_databases_are_their_owners_alone) {
  folder_.Done(
      {"send", "clients", "--answers", "yes.txt", "--transcript", "run.jsonl", "--clock", "2008-03-05T10:00:00"});
  for (const auto* name :
       {"TWQBLog20083.txt", "run.jsonl", "billing.db", "company.twq", "billing.db_TWB.bak", "company.twq_TWB.bak"}) {
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder_.Path() / name).permissions(), perms::owner_read | perms::owner_write)
        << name;
  }
}

TEST_F(SampleFirm, Passwords_of_a_connection_string_are_not_shown) {
  const auto ended = folder_.Twqb({"send", "clients", "--billing", "Provider=NOSUCH;Password=secret"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, Not(HasSubstr("secret")));
}

}  // namespace
}  // namespace twqb::cli
