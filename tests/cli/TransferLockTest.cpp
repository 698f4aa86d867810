// Two transfers on the same files, as two processes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "HeldTransfer.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;

const std::vector<std::string> kSend = {"send", "clients", "--answers", "yes.txt", "--no-progress"};
constexpr std::string_view kAtWork = "CustomerAddRq";

class TransferLock : public testing::Test {
 protected:
  TransferLock() {
    folder_.Done({"init", "--sample"});
    folder_.Write("yes.txt", "default yes\n");
  }

  static std::vector<std::string> With(std::vector<std::string> words, const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }
  [[nodiscard]] std::string CustomersTwice() const {
    folder_.Done({"get", "clients", "--answers", "yes.txt", "--no-progress"});
    return folder_.Scalar("SELECT COUNT(*) - COUNT(DISTINCT QBLinkID) FROM Client");
  }
  void ExpectNoLockLeft() const {
    EXPECT_THAT(folder_.Names(), AllOf(testing::Not(testing::Contains("billing.db.transfer")),
                                       testing::Not(testing::Contains("company.twq.transfer"))));
  }

  WorkFolder folder_;
};

TEST_F(TransferLock, A_second_transfer_is_refused_at_once_with_who_is_at_work) {
  HeldTransfer first(folder_, kSend, kAtWork);
  const auto second = folder_.Twqb(kSend);
  EXPECT_EQ(second.status, 1);
  EXPECT_THAT(second.out, testing::IsEmpty());
  EXPECT_THAT(second.err,
              AllOf(HasSubstr((folder_.Path() / "billing.db").string()), HasSubstr("\"twqb send\""),
                    HasSubstr("process " + std::to_string(first.Process().Id()) + " on "), HasSubstr("--wait"),
                    testing::ContainsRegex("since [0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}")));
  EXPECT_EQ(first.Finish().exitStatus, 0);
  ExpectNoLockLeft();
  EXPECT_EQ(CustomersTwice(), "0");
}

TEST_F(TransferLock, A_refused_transfer_leaves_the_record_of_the_one_at_work_alone) {
  folder_.Write("run.jsonl", "{\"seq\":1,\"kind\":\"call\"}\n");
  HeldTransfer first(folder_, kSend, kAtWork);
  EXPECT_EQ(folder_.Twqb(With(kSend, {"--transcript", "run.jsonl"})).status, 1);
  EXPECT_EQ(folder_.Read("run.jsonl"), "{\"seq\":1,\"kind\":\"call\"}\n");
}

TEST_F(TransferLock, What_only_reads_goes_on) {
  HeldTransfer first(folder_, kSend, kAtWork);
  folder_.Write("query.xml",
                "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
                "<HostQueryRq></HostQueryRq></QBXMLMsgsRq></QBXML>");
  folder_.Done({"status"});
  folder_.Done({"balances"});
  folder_.Done({"list", "customers", "--answers", "yes.txt"});
  folder_.Done({"company", "run", "query.xml"});
  EXPECT_EQ(first.Finish().exitStatus, 0);
}

TEST_F(TransferLock, Every_command_that_writes_both_sides_is_refused) {
  HeldTransfer first(folder_, kSend, kAtWork);
  const std::vector<std::vector<std::string>> commands = {{"get", "clients"},
                                                          {"delete-billing", "clients", "80000001-1204731000"},
                                                          {"delete-quickbooks", "clients", "80000001-1204731000"},
                                                          {"events", "on"},
                                                          {"events", "off"}};
  for (const auto& command : commands) {
    const auto ended = folder_.Twqb(With(command, {"--answers", "yes.txt"}));
    EXPECT_EQ(ended.status, 1) << command.front();
    EXPECT_THAT(ended.err, HasSubstr("A transfer is at work")) << command.front();
  }
}

TEST_F(TransferLock, A_killed_transfer_is_in_nobodys_way) {
  {
    HeldTransfer first(folder_, kSend, kAtWork);
    first.Process().Signal(SIGKILL);
    EXPECT_EQ(first.Process().Wait().signal, SIGKILL);
  }
  EXPECT_THAT(folder_.Names(), testing::Contains("billing.db.transfer"))
      << "a kill leaves the file, which locks nothing";
  EXPECT_EQ(folder_.Twqb(kSend).status, 0);
  ExpectNoLockLeft();
}

TEST_F(TransferLock, With_wait_it_waits_and_says_for_whom) {
  HeldTransfer first(folder_, kSend, kAtWork);
  const auto second = folder_.Start(With(kSend, {"--wait", "60"}));
  while (second->Errors().find("Waiting for it, up to 60 s.") == std::string::npos) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_THAT(second->Errors(), HasSubstr("process " + std::to_string(first.Process().Id())));
  EXPECT_EQ(first.Finish().exitStatus, 0);
  const auto ended = second->Wait();
  EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
  EXPECT_THAT(ended.output, testing::EndsWith("send clients: done\n"));
  EXPECT_EQ(CustomersTwice(), "0");
}

TEST_F(TransferLock, With_wait_it_gives_up_when_the_time_is_over) {
  HeldTransfer first(folder_, kSend, kAtWork);
  const auto second = folder_.Twqb(With(kSend, {"--wait", "1"}));
  EXPECT_EQ(second.status, 1);
  EXPECT_THAT(second.err, AllOf(HasSubstr("Waiting for it, up to 1 s."), HasSubstr("It still is after 1 s.")));
}

TEST_F(TransferLock, A_signal_ends_the_waiting) {
  HeldTransfer first(folder_, kSend, kAtWork);
  const auto second = folder_.Start(With(kSend, {"--wait", "60"}));
  while (second->Errors().find("Waiting") == std::string::npos) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  second->Signal(SIGTERM);
  const auto ended = second->Wait();
  EXPECT_EQ(ended.exitStatus, 128 + SIGTERM);
  EXPECT_THAT(ended.errors, testing::EndsWith("up to 60 s.\ntwqb: Nothing has been transferred.\n"));
  EXPECT_THAT(ended.errors, testing::Not(HasSubstr("It still is")));
}

TEST_F(TransferLock, Two_pairs_with_one_file_in_common_exclude_each_other) {
  const WorkFolder other;
  other.Done({"init", "--sample"});
  HeldTransfer first(folder_, kSend, kAtWork);
  const auto company = folder_.Twqb(With(kSend, {"--company", (other.Path() / "company.twq").string()}));
  EXPECT_EQ(company.status, 1) << "one BillingDb, two company files";
  EXPECT_THAT(company.err, HasSubstr((folder_.Path() / "billing.db").string()));
  const auto billing =
      folder_.Twqb(With(kSend, {"--billing", "Provider=SQLITE;Data Source=" + (other.Path() / "billing.db").string()}));
  EXPECT_EQ(billing.status, 1) << "one company file, two databases";
  EXPECT_THAT(billing.err, HasSubstr((folder_.Path() / "company.twq").string()));
}

TEST_F(TransferLock, A_company_file_that_is_picked_in_the_run_is_held_too) {
  const WorkFolder other;
  other.Done({"init", "--sample"});
  HeldTransfer first(folder_, kSend, kAtWork);
  std::filesystem::remove(other.Path() / "company.twq");
  other.Write("pick.txt", "file " + (folder_.Path() / "company.twq").string() + "\ndefault yes\n");
  const auto second = other.Twqb({"send", "clients", "--answers", "pick.txt", "--no-progress"});
  EXPECT_EQ(second.status, 1) << second.err;
  EXPECT_THAT(second.err, HasSubstr("A transfer is at work on " + (folder_.Path() / "company.twq").string()));
  EXPECT_EQ(other.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "0");
}

TEST_F(TransferLock, Other_spellings_and_links_are_the_same_file) {
  const WorkFolder other;
  std::filesystem::create_symlink(folder_.Path() / "billing.db", other.Path() / "linked.db");
  HeldTransfer first(folder_, kSend, kAtWork);
  for (const auto& path : {(other.Path() / "linked.db").string(), std::string("./x/../billing.db")}) {
    std::filesystem::create_directories(folder_.Path() / "x");
    const auto ended = folder_.Twqb(With(kSend, {"--billing", "Provider=SQLITE;Data Source=" + path}));
    EXPECT_EQ(ended.status, 1) << path;
    EXPECT_THAT(ended.err, HasSubstr("A transfer is at work")) << path;
  }
}

TEST_F(TransferLock, Another_file_of_that_name_is_refused_and_stays) {
  folder_.Write("billing.db.transfer", "my notes\n");
  const auto ended = folder_.Twqb(kSend);
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("billing.db.transfer"), HasSubstr("Move it away")));
  EXPECT_EQ(folder_.Read("billing.db.transfer"), "my notes\n");
}

TEST_F(TransferLock, A_folder_of_that_name_is_refused_likewise) {
  std::filesystem::create_directory(folder_.Path() / "billing.db.transfer");
  const auto ended = folder_.Twqb(kSend);
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("billing.db.transfer"), HasSubstr("Move it away")));
}

TEST_F(TransferLock, A_file_of_several_names_is_refused_by_each_of_them) {
  for (const std::string name : {"billing.db", "company.twq"}) {
    const auto other = folder_.Path() / "other";
    std::filesystem::create_hard_link(folder_.Path() / name, other);
    const auto ended = folder_.Twqb(kSend);
    EXPECT_EQ(ended.status, 2) << name;
    EXPECT_THAT(ended.err, AllOf(HasSubstr((folder_.Path() / name).string() + " has 2 names"), HasSubstr("remove")));
    const auto option = name == "billing.db"
                            ? std::vector<std::string>{"--billing", "Provider=SQLITE;Data Source=other"}
                            : std::vector<std::string>{"--company", "other"};
    EXPECT_EQ(folder_.Twqb(With(kSend, option)).status, 2) << name;
    folder_.Done({"status"});
    std::filesystem::remove(other);
  }
  EXPECT_EQ(folder_.Twqb(kSend).status, 0);
}

TEST_F(TransferLock, A_company_file_of_several_names_that_is_picked_in_the_run_is_refused) {
  std::filesystem::create_directory(folder_.Path() / "books");
  std::filesystem::rename(folder_.Path() / "company.twq", folder_.Path() / "books/one.twq");
  std::filesystem::create_hard_link(folder_.Path() / "books/one.twq", folder_.Path() / "books/two.twq");
  folder_.Write("pick.txt", "file " + (folder_.Path() / "books/one.twq").string() + "\ndefault yes\n");
  const auto ended = folder_.Twqb({"send", "clients", "--answers", "pick.txt", "--no-progress"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("one.twq has 2 names"));
  EXPECT_EQ(folder_.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID <> ''"), "0");
}

TEST_F(TransferLock, Is_let_go_of_by_a_signal_while_nobody_reads_the_record) {
  const RecordPipe unread(folder_);
  const auto transfer = folder_.Start(With(kSend, {"--transcript", unread.Path()}));
  const auto isHeld = [&] { return std::filesystem::exists(folder_.Path() / "company.twq.transfer"); };
  while (!isHeld()) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_TRUE(isHeld()) << "it waits for a reader";
  transfer->Signal(SIGTERM);
  EXPECT_EQ(transfer->Wait().exitStatus, 128 + SIGTERM);
  ExpectNoLockLeft();
}

}  // namespace
}  // namespace twqb::cli
