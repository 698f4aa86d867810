#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "CompanyTest.h"
#include "adapters/companyfile/CompanyTransport.h"

namespace twqb::company {

namespace {

constexpr ErrorNumber kCannotOpen = 0x80040403;
constexpr ErrorNumber kCannotOpenNamed = 0x80040406;
constexpr ErrorNumber kOtherOpen = 0x8004040A;
constexpr ErrorNumber kOutOfOrder = 0x8004040D;
constexpr ErrorNumber kOtherMode = 0x80040410;
constexpr ErrorNumber kNameNeeded = 0x80040416;

class Transport : public CompanyTest {
 protected:
  std::unique_ptr<twqb::Transport> Connect(const std::string& openFile) {
    auto transport = CompanyTransportFactory(openFile, machine_).CreateTransport();
    transport->OpenConnection("ID", "Name");
    return transport;
  }
  static ErrorNumber Begin(twqb::Transport& transport, std::string_view name, OpenMode mode = OpenMode::DoNotCare) {
    return NumberRaised([&] { transport.BeginSession(name, mode); });
  }
  std::string missing_ = folder_ / "missing.twq";
};

TEST_F(Transport, A_session_answers_documents) {
  const auto transport = Connect(path_);
  transport->BeginSession("", OpenMode::DoNotCare);
  text_ = transport->ProcessDocument(Document(AddRequest("<Name>Acme</Name>")));
  EXPECT_EQ(ReadAnswers("QBXMLMsgsRs").front().code, 0);
  text_ = transport->ProcessSubscription(
      SubscriptionDocument("<SubscriptionQueryRq><SubscriberID>0</SubscriberID></SubscriptionQueryRq>"));
  EXPECT_EQ(ReadAnswers("QBXMLSubscriptionMsgsRs").front().code, 1);
  EXPECT_EQ(ByName("Acme").code, 0);
}

TEST_F(Transport, The_interface_is_version_five) {
  const auto version = CompanyTransportFactory(path_, machine_).CreateTransport()->GetVersion();
  EXPECT_EQ(version.major, 5);
  EXPECT_EQ(version.minor, 0);
}

TEST_F(Transport, The_current_file_is_told_by_its_full_path) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(std::filesystem::path(path_).parent_path());
  const auto transport = Connect("./company.twq");
  transport->BeginSession("", OpenMode::DoNotCare);
  EXPECT_EQ(transport->GetCurrentCompanyFileName(), path_);
  std::filesystem::current_path(before);
}

TEST_F(Transport, Without_an_open_file_a_name_is_needed) {
  const auto transport = Connect(missing_);
  EXPECT_EQ(Begin(*transport, ""), kNameNeeded);
  EXPECT_EQ(Begin(*Connect(""), ""), kNameNeeded);
  EXPECT_EQ(Begin(*transport, path_), 0U);
  EXPECT_EQ(transport->GetCurrentCompanyFileName(), path_);
}

TEST_F(Transport, The_open_file_may_be_named_and_another_may_not) {
  const auto other = folder_ / "other.twq";
  CreateCompanyFile(other, {}, machine_);
  const auto transport = Connect(path_);
  EXPECT_EQ(Begin(*transport, other), kOtherOpen);
  EXPECT_EQ(Begin(*transport, folder_ / "./company.twq"), 0U);
}

TEST_F(Transport, A_name_that_can_not_be_opened_leaves_no_session_and_no_lock) {
  const auto text = folder_ / "text.twq";
  std::ofstream(text) << "not a company file, though long enough to look at";
  for (const auto& open : {std::string(), path_}) {
    const auto transport = Connect(open);
    EXPECT_EQ(Begin(*transport, missing_), kCannotOpenNamed);
    EXPECT_EQ(Begin(*transport, text, OpenMode::SingleUser), kCannotOpenNamed);
    EXPECT_FALSE(std::filesystem::exists(missing_ + ".lock"));
    EXPECT_FALSE(std::filesystem::exists(text + ".lock"));
    EXPECT_EQ(Begin(*transport, path_), 0U);
  }
}

TEST_F(Transport, The_cause_why_a_name_can_not_be_opened_is_told_with_the_file) {
  try {
    Connect("")->BeginSession(missing_, OpenMode::DoNotCare);
    FAIL() << "a missing file was opened";
  } catch (const PlatformError& raised) {
    EXPECT_EQ(raised.description(),
              "QuickBooks could not open the previously used company data file. There is no such file. File: \"" +
                  missing_ + "\".");
  }
}

TEST_F(Transport, An_open_file_that_is_no_company_file_is_told_apart_by_whether_it_was_named) {
  const auto text = folder_ / "text.twq";
  std::ofstream(text) << "not a company file, though long enough to look at";
  const auto transport = Connect(text);
  EXPECT_EQ(transport->GetVersion().major, 5);
  EXPECT_EQ(Begin(*transport, ""), kCannotOpen);
  EXPECT_EQ(Begin(*transport, text), kCannotOpenNamed);
}

TEST_F(Transport, Calls_out_of_order_are_refused) {
  const auto transport = CompanyTransportFactory(path_, machine_).CreateTransport();
  const auto raised = [](const auto& call) { return NumberRaised(call); };
  EXPECT_EQ(Begin(*transport, ""), kOutOfOrder);
  EXPECT_EQ(raised([&] { transport->EndSession(); }), kOutOfOrder);
  transport->OpenConnection("", "");
  EXPECT_EQ(raised([&] { transport->OpenConnection("", ""); }), kOutOfOrder);
  EXPECT_EQ(raised([&] { static_cast<void>(transport->GetCurrentCompanyFileName()); }), kOutOfOrder);
  EXPECT_EQ(raised([&] { static_cast<void>(transport->ProcessDocument("")); }), kOutOfOrder);
  EXPECT_EQ(raised([&] { static_cast<void>(transport->ProcessSubscription("")); }), kOutOfOrder);
  EXPECT_EQ(raised([&] { transport->EndSession(); }), kOutOfOrder);
  transport->BeginSession("", OpenMode::DoNotCare);
  EXPECT_EQ(Begin(*transport, ""), kOutOfOrder);
  transport->EndSession();
  EXPECT_EQ(raised([&] { static_cast<void>(transport->GetCurrentCompanyFileName()); }), kOutOfOrder);
  transport->CloseConnection();
  EXPECT_EQ(Begin(*transport, ""), kOutOfOrder);
}

TEST_F(Transport, Closing_without_a_connection_does_nothing) {
  const auto transport = CompanyTransportFactory(path_, machine_).CreateTransport();
  EXPECT_EQ(NumberRaised([&] { transport->CloseConnection(); }), 0U);
  transport->OpenConnection("", "");
  EXPECT_EQ(Begin(*transport, ""), 0U);
}

struct Modes {
  const char* name;
  OpenMode first;
  OpenMode second;
  ErrorNumber expected;
};
void PrintTo(const Modes& modes, std::ostream* out) { *out << modes.name; }

class OpenModes : public Transport, public testing::WithParamInterface<Modes> {};

TEST_P(OpenModes, Of_two_sessions_of_one_file) {
  const auto first = Connect(path_);
  const auto second = Connect(path_);
  ASSERT_EQ(Begin(*first, "", GetParam().first), 0U);
  EXPECT_EQ(Begin(*second, "", GetParam().second), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Matrix, OpenModes,
    testing::Values(Modes{"Single_then_single", OpenMode::SingleUser, OpenMode::SingleUser, kOtherMode},
                    Modes{"Single_then_multi", OpenMode::SingleUser, OpenMode::MultiUser, kOtherMode},
                    Modes{"Single_then_any", OpenMode::SingleUser, OpenMode::DoNotCare, kOtherMode},
                    Modes{"Multi_then_single", OpenMode::MultiUser, OpenMode::SingleUser, kOtherMode},
                    Modes{"Multi_then_multi", OpenMode::MultiUser, OpenMode::MultiUser, 0},
                    Modes{"Multi_then_any", OpenMode::MultiUser, OpenMode::DoNotCare, 0},
                    Modes{"Any_then_single", OpenMode::DoNotCare, OpenMode::SingleUser, kOtherMode},
                    Modes{"Any_then_any", OpenMode::DoNotCare, OpenMode::DoNotCare, 0}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(Transport, A_session_lets_go_of_its_file_when_it_ends_or_its_connection_closes) {
  const auto first = Connect(path_);
  const auto second = Connect(path_);
  ASSERT_EQ(Begin(*first, "", OpenMode::SingleUser), 0U);
  first->EndSession();
  ASSERT_EQ(Begin(*second, "", OpenMode::SingleUser), 0U);
  second->CloseConnection();
  EXPECT_EQ(Begin(*first, "", OpenMode::SingleUser), 0U);
}

TEST_F(Transport, The_host_record_tells_the_mode_of_the_session) {
  const auto transport = Connect(path_);
  transport->BeginSession("", OpenMode::SingleUser);
  EXPECT_NE(transport->ProcessDocument(Document("<HostQueryRq/>")).find("<QBFileMode>SingleUser<"), std::string::npos);
  transport->EndSession();
  transport->BeginSession("", OpenMode::DoNotCare);
  EXPECT_NE(transport->ProcessDocument(Document("<HostQueryRq/>")).find("<QBFileMode>MultiUser<"), std::string::npos);
}

TEST_F(Transport, A_process_that_dies_in_single_user_mode_does_not_leave_the_file_locked) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const auto transport = Connect(path_);
    transport->BeginSession("", OpenMode::SingleUser);
    const ssize_t written = write(ready[1], "x", 1);
    while (written == 1) pause();
    _exit(1);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  const auto transport = Connect(path_);
  EXPECT_EQ(Begin(*transport, ""), kOtherMode);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  close(ready[0]);
  close(ready[1]);
  EXPECT_EQ(Begin(*transport, "", OpenMode::SingleUser), 0U);
}

}  // namespace

}  // namespace twqb::company
