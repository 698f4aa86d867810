// How a transfer ends by a signal, as a process of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "HeldTransfer.h"
#include "tests/support/TerminalSession.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;

struct Ending {
  std::string name;
  int signal;
  std::vector<std::string> options;
};

class EndBySignal : public testing::TestWithParam<Ending> {
 protected:
  EndBySignal() {
    folder_.Done({"init", "--sample"});
    folder_.Write("yes.txt", "default yes\n");
  }

  [[nodiscard]] std::string Count(const std::string& condition) const {
    return folder_.Scalar("SELECT COUNT(*) FROM Client WHERE " + condition);
  }
  // Customers of QuickBooks that BillingDb knows nothing of: those of the sample alone, unless a record was torn.
  void ExpectNothingTorn(const std::string& linked) const {
    const auto listed = folder_.Done({"list", "customers", "--all", "--answers", "yes.txt", "--json"});
    const auto customers = std::count(listed.begin(), listed.end(), '\n');
    EXPECT_EQ(customers, kOfTheSample + std::stol(linked));
  }

  static constexpr long kOfTheSample = 15;
  static constexpr int kClientsOfQuickBooks = 11;  // of those, the ones that are no jobs
  WorkFolder folder_;
};

TEST_P(EndBySignal, Finishes_the_record_in_hand_and_ends_with_128_and_its_number) {
  std::vector<std::string> command = {"send", "clients"};
  command.insert(command.end(), GetParam().options.begin(), GetParam().options.end());
  HeldTransfer transfer(folder_, command, "CustomerAddRs");
  transfer.Process().Signal(GetParam().signal);
  // Its handler runs before it reads on; the record in hand waits for the pipe.
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  const auto ended = transfer.Finish();
  EXPECT_EQ(ended.exitStatus, 128 + GetParam().signal) << ended.errors;
  EXPECT_EQ(ended.signal, 0);
  EXPECT_THAT(ended.output, HasSubstr("send clients: failed\n"));
  EXPECT_THAT(ended.errors, AllOf(HasSubstr(GetParam().name.substr(0, GetParam().name.find('_'))),
                                  HasSubstr("the record in hand is finished")));
  const auto linked = Count("QBLinkID <> ''");
  EXPECT_THAT(std::stoi(linked), AllOf(testing::Ge(1), testing::Lt(60))) << "it ends early, and behind a record";
  EXPECT_THAT(transfer.Transcript(), AllOf(HasSubstr("EndSession"), HasSubstr("CloseConnection")));
  ExpectNothingTorn(linked);
  EXPECT_EQ(folder_.Twqb({"send", "clients", "--answers", "yes.txt"}).status, 0) << "the next one takes up the rest";
  EXPECT_EQ(Count("QBLinkID <> ''"), "64");
}

INSTANTIATE_TEST_SUITE_P(
    Transfer, EndBySignal,
    testing::Values(Ending{"SIGINT_answered", SIGINT, {"--answers", "yes.txt"}},
                    Ending{"SIGTERM_answered", SIGTERM, {"--answers", "yes.txt"}},
                    Ending{"SIGHUP_answered", SIGHUP, {"--answers", "yes.txt"}},
                    Ending{"SIGINT_unattended", SIGINT, {}}, Ending{"SIGTERM_unattended", SIGTERM, {}},
                    Ending{"SIGHUP_unattended", SIGHUP, {}},
                    Ending{"SIGTERM_without_a_form", SIGTERM, {"--no-progress", "--answers", "yes.txt"}}),
    [](const auto& suite) { return suite.param.name; });

class EndOfAll : public EndBySignal {};

TEST_F(EndOfAll, Leaves_the_tables_behind_the_one_in_hand) {
  HeldTransfer transfer(folder_, {"send", "all", "--answers", "yes.txt"}, "VendorAddRs");
  transfer.Process().Signal(SIGTERM);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_EQ(transfer.Finish().exitStatus, 128 + SIGTERM);
  EXPECT_EQ(Count("QBLinkID <> ''"), "0");
}

TEST_F(EndOfAll, At_a_second_signal_the_process_is_gone_at_once) {
  HeldTransfer transfer(folder_, {"send", "clients", "--answers", "yes.txt"}, "CustomerAddRq");
  transfer.Process().Signal(SIGTERM);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  transfer.Process().Signal(SIGINT);
  // Nobody reads its record any more: it could not finish anything.
  const auto ended = transfer.Process().Wait();
  EXPECT_EQ(ended.exitStatus, 128 + SIGTERM);
  EXPECT_EQ(folder_.Scalar("PRAGMA integrity_check"), "ok");
}

TEST_F(EndOfAll, A_get_ends_behind_its_record_too) {
  HeldTransfer transfer(folder_, {"get", "clients", "--answers", "yes.txt"}, "\"kind\":\"row\"");
  transfer.Process().Signal(SIGTERM);
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  const auto ended = transfer.Finish();
  EXPECT_EQ(ended.exitStatus, 128 + SIGTERM) << ended.errors;
  EXPECT_THAT(ended.output, HasSubstr("get clients: failed\n"));
  // Rows of QuickBooks are finished ones: what is written last is there.
  const auto linked = Count("QBLinkID <> ''");
  EXPECT_THAT(std::stoi(linked), AllOf(testing::Ge(1), testing::Lt(kClientsOfQuickBooks))) << ended.output;
  EXPECT_EQ(Count("QBLinkID <> '' AND ClientID <> '' AND Status <> ''"), linked);
  EXPECT_EQ(Count("1 = 1"), std::to_string(64 + std::stoi(linked)));
}

// The program at a terminal of its own, where it may ask.
class EndAtTheTerminal : public EndBySignal {
 protected:
  // In the child.
  int Become(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words = {TWQB_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (auto& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    if (chdir(folder_.Path().c_str()) == 0) execv(argv[0], argv.data());
    return 127;
  }
  // Presses Ctrl-C in the middle of a send, and answers the question that comes.
  int AnswerCtrlC(std::string_view keys) {
    folder_.Done({"send", "clients", "--id", "ABBOTT", "--answers", "yes.txt"});
    RecordPipe record(folder_);
    TerminalSession session([&] { return Become({"send", "clients", "--transcript", record.Path()}); });
    EXPECT_TRUE(record.ReadTo("CustomerAddRs"));
    EXPECT_TRUE(session.Type(kCtrlC));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    std::thread reader([&] { record.ReadToTheEnd(); });
    EXPECT_TRUE(session.See("Are you sure you want to Cancel?"));
    EXPECT_TRUE(session.See("[Y]es / [N]o: "));
    EXPECT_TRUE(session.Type(keys));
    // The box that says so, or that there was nothing else to do.
    static_cast<void>(session.Type("\n"));
    const int status = session.ExitStatus();
    reader.join();
    return status;
  }
};

TEST_F(EndAtTheTerminal, A_question_that_waits_is_answered_No_and_the_run_ends) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    TerminalSession session([&] { return Become({"send", "clients"}); });
    ASSERT_TRUE(session.See("Would you like to backup"));
    ASSERT_TRUE(session.See("[Y]es / [N]o: "));
    session.Signal(signal);
    EXPECT_EQ(session.ExitStatus(), 128 + signal);
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "True"});
  }
  EXPECT_THAT(folder_.Names(), testing::Not(testing::Contains("billing.db_TWB.bak")));
}

TEST_F(EndAtTheTerminal, Ctrl_C_asks_and_Yes_ends_with_130) {
  EXPECT_EQ(AnswerCtrlC("y\n"), 128 + SIGINT);
  EXPECT_THAT(std::stoi(Count("QBLinkID <> ''")), testing::Lt(60));
}

TEST_F(EndAtTheTerminal, Ctrl_C_asks_and_No_goes_on_to_the_end) {
  EXPECT_EQ(AnswerCtrlC("n\n"), 0);
  EXPECT_EQ(Count("QBLinkID <> ''"), "64");
}

TEST_F(EndAtTheTerminal, Ctrl_C_at_its_own_question_ends_at_once) { EXPECT_EQ(AnswerCtrlC(kCtrlC), 128 + SIGINT); }

class EndOfLinks : public EndAtTheTerminal {
 protected:
  // Two vendors that are nearly the same on both sides, and behind them a client that is exactly so.
  EndOfLinks() {
    folder_.Done({"billing", "run", "-e",
                  "DELETE FROM Client; DELETE FROM Employee;"
                  "INSERT INTO Employee (EmployeeID, EmpFName, EmpLName, IsSub, EmpCompany) VALUES "
                  "('BELL', 'Ann', 'Lee', -1, 'Bell Bakery'), ('DUNN', 'Jo', 'Dunn', -1, 'Dunn Paving');"
                  "INSERT INTO Client (ClientID, ClientCompany) VALUES ('OAK', 'Oak Street Foods')"});
    std::string requests;
    for (const std::string name : {"BELL BAKERY", "DUNN PAVING"}) {
      requests += "<VendorAddRq><VendorAdd><Name>" + name + "</Name></VendorAdd></VendorAddRq>";
    }
    folder_.Write("add.xml",
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" +
                      requests +
                      "<CustomerAddRq><CustomerAdd><Name>Oak Street Foods</Name></CustomerAdd></CustomerAddRq>"
                      "</QBXMLMsgsRq></QBXML>");
    folder_.Done({"company", "run", "add.xml"});
    folder_.Done({"settings", "set", "GENERAL", "FIRST_TIME", "False"});
  }
};

TEST_F(EndOfLinks, Ctrl_C_at_a_question_links_nothing_more_and_declines_nothing) {
  TerminalSession session([&] { return Become({"link", "all", "--apply"}); });
  ASSERT_TRUE(session.See("Are they the same"));
  ASSERT_TRUE(session.See("[Y]es / [N]o: "));
  EXPECT_TRUE(session.Type(kCtrlC));
  EXPECT_EQ(session.ExitStatus(), 128 + SIGINT);
  const auto& screen = session.All();
  EXPECT_EQ(screen.find("Are they the same"), screen.rfind("Are they the same")) << "one question, and no other";
  EXPECT_THAT(screen,
              AllOf(HasSubstr("link: ended by SIGINT"), HasSubstr("vendors: 2 without a link; 2 pairs not come"),
                    testing::Not(HasSubstr("declined")), testing::Not(HasSubstr("link: done"))));
  EXPECT_EQ(Count("QBLinkID <> ''"), "0") << "of the table behind it";
}

TEST_F(EndOfLinks, What_was_answered_ahead_of_Ctrl_C_is_as_it_was_answered) {
  TerminalSession session([&] { return Become({"link", "all", "--apply"}); });
  ASSERT_TRUE(session.See("[Y]es / [N]o: "));
  EXPECT_TRUE(session.Type("n\n"));
  ASSERT_TRUE(session.See("[Y]es / [N]o: "));
  EXPECT_TRUE(session.Type(kCtrlC));
  EXPECT_EQ(session.ExitStatus(), 128 + SIGINT);
  EXPECT_THAT(session.All(), HasSubstr("1 pair declined, 1 pair not come to"));
  EXPECT_EQ(Count("QBLinkID <> ''"), "0");
}

}  // namespace
}  // namespace twqb::cli
