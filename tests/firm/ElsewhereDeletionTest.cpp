// The question of a deletion by identifier, where QuickBooks is elsewhere: it names the record, asked for in a session
// that has ended before the deletion begins one.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <fstream>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adapters/terminal/EndSignals.h"
#include "cli/commands/Commands.h"
#include "cli/options/ExitStatus.h"
#include "cli/workplace/CompanyAnswer.h"
#include "tests/firm/ElsewhereOffice.h"

namespace twqb {
namespace {

constexpr std::string_view kHarbour = "Harbour Survey";

struct Ended {
  cli::ExitStatus status = cli::ExitStatus::Failed;
  std::string told;
  bool bySignal = false;
};

// In the current folder, which the office has made its own.
Ended RunCommand(const cli::CommandSyntax& command, cli::Options options, std::string_view answer) {
  std::ofstream("answers.txt") << "default " << answer << "\n";
  options.answers = "answers.txt";
  options.noBackup = true;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  Ended ended;
  std::string raised;
  try {
    ended.status = command.run(options);
  } catch (const cli::EndedBySignal&) {
    ended.bySignal = true;
  } catch (const std::exception& failure) {
    raised = failure.what();
  }
  testing::internal::GetCapturedStdout();
  ended.told = testing::internal::GetCapturedStderr();
  EXPECT_EQ(raised, "");
  return ended;
}

Ended Delete(std::string_view command, const cli::Options& options, const std::string& id, std::string_view answer) {
  auto commands = cli::DeletionCommands();
  const auto found = std::ranges::find(commands, command, &cli::CommandSyntax::name);
  *std::get<std::string*>(found->arguments.at(0).target) = "clients";
  *std::get<std::string*>(found->arguments.at(1).target) = id;
  return RunCommand(*found, options, answer);
}

void Link(const std::string& client, const std::string& id) {
  SqliteProvider provider;
  const auto connection = provider.CreateConnection();
  connection->SetConnectionString("Provider=SQLITE;Data Source=billing.db");
  connection->Open();
  connection->Execute(fmt::format("UPDATE Client SET QBLinkID = '{}' WHERE ClientID = '{}'", id, client), nullptr);
  connection->Close();
}

// A record that the client ABBOTT is linked to.
std::string LinkedRecord(Office& office) {
  auto id = office.AddCustomer(std::string(kHarbour));
  Link("ABBOTT", id);
  return id;
}

// Sessions that were begun there, of which never two stood at a time, and each has ended.
int SessionsOf(Office& office) {
  int begun = 0;
  int open = 0;
  for (const std::string_view call : office.elsewhere->Calls().CallNames()) {
    if (call == "Transport.BeginSession") {
      ++begun;
      EXPECT_EQ(++open, 1);
    } else if (call == "Transport.EndSession") {
      EXPECT_EQ(--open, 0);
    }
  }
  EXPECT_EQ(open, 0);
  return begun;
}

std::vector<std::string> RequestsOf(Office& office) {
  std::vector<std::string> names;
  for (const auto& text : office.elsewhere->documents) {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(text.c_str())) << text;
    for (const auto request : document.child("QBXML").child("QBXMLMsgsRq").children())
      names.emplace_back(request.name());
  }
  return names;
}

cli::Options QuickBooksThere(const Office& office) {
  auto options = office.There();
  options.billing = office.Here().billing;
  return options;
}

std::string Named(const std::string& id, const std::string& row, std::string_view record) {
  return fmt::format("{} belongs to {}, in QuickBooks \"{}\".", id, row, record);
}

void ExpectHas(const std::string& text, const std::string& part) {
  EXPECT_NE(text.find(part), std::string::npos) << text;
}

TEST(ElsewhereDeletions, Name_the_record_and_only_ask_until_somebody_says_Yes) {
  Office office({.content = cli::Content::Sample});
  const auto id = LinkedRecord(office);
  for (const auto* command : {"delete-billing", "delete-quickbooks"}) {
    SCOPED_TRACE(command);
    const auto ended = Delete(command, QuickBooksThere(office), id, "no");
    EXPECT_EQ(ended.status, cli::ExitStatus::Failed);
    ExpectHas(ended.told, Named(id, "the client ABBOTT", kHarbour));
  }
  EXPECT_EQ(SessionsOf(office), 2);
  EXPECT_EQ(RequestsOf(office),
            (std::vector<std::string>{"HostQueryRq", "CustomerQueryRq", "HostQueryRq", "CustomerQueryRq"}));
}

TEST(ElsewhereDeletions, Say_the_same_of_a_company_file_here) {
  Office office({.content = cli::Content::Sample});
  const auto id = LinkedRecord(office);
  EXPECT_EQ(Delete("delete-quickbooks", office.Here(), id, "no").told,
            Delete("delete-quickbooks", QuickBooksThere(office), id, "no").told);
}

TEST(ElsewhereDeletions, Begin_their_session_behind_the_one_that_asks) {
  Office office({.content = cli::Content::Sample});
  const auto id = LinkedRecord(office);
  const auto ended = Delete("delete-billing", QuickBooksThere(office), id, "yes");
  EXPECT_EQ(ended.status, cli::ExitStatus::Done);
  EXPECT_EQ(SessionsOf(office), 2);
}

TEST(ElsewhereDeletions, Ask_in_the_form_of_the_country_that_answers) {
  for (const auto country : {messages::Country::CA, messages::Country::UK, messages::Country::AU}) {
    Office office({.company = {.country = country, .accepts = {country}}});
    const auto id = office.AddCustomer(std::string(kHarbour));
    const auto ended = Delete("delete-quickbooks", QuickBooksThere(office), id, "no");
    ExpectHas(ended.told, Named(id, "no client of BillingDb", kHarbour));
    EXPECT_EQ(SessionsOf(office), 1);
  }
}

TEST(ElsewhereDeletions, Ask_without_the_name_where_QuickBooks_can_t_be_asked) {
  Office office({.content = cli::Content::Sample});
  const auto id = LinkedRecord(office);
  auto& calls = office.elsewhere->Calls();
  const auto first = calls.CallCount();
  ExpectHas(Delete("delete-quickbooks", QuickBooksThere(office), id, "no").told, std::string(kHarbour));
  const std::vector<std::string> names(calls.CallNames().begin() + static_cast<std::ptrdiff_t>(first),
                                       calls.CallNames().end());
  const auto connected =
      static_cast<std::size_t>(std::ranges::find(names, "Transport.OpenConnection") - names.begin()) + 1;
  EXPECT_GT(names.size(), connected + 3);
  for (std::size_t k = 1; k <= names.size(); ++k) {
    SCOPED_TRACE(names[k - 1]);
    constexpr ErrorNumber kFailed = 0x80040402;
    calls.RaiseAt(calls.CallCount() + k, FaultTiming::Before, kFailed);
    const auto ended = Delete("delete-quickbooks", QuickBooksThere(office), id, "no");
    EXPECT_EQ(ended.status, cli::ExitStatus::Failed);
    // Behind the answer nothing can get lost.
    const bool isBehind = names[k - 1] == "Transport.EndSession" || names[k - 1] == "Transport.CloseConnection";
    ExpectHas(ended.told, isBehind ? Named(id, "the client ABBOTT", kHarbour) : id + " belongs to the client ABBOTT.");
    ExpectHas(ended.told, "Do you want to delete the corresponding record of QuickBooks?");
    // And no connection stays open.
    if (k > connected) {
      EXPECT_EQ(calls.CallNames().back(), "Transport.CloseConnection");
    }
  }
}

TEST(ElsewhereDeletions, Delete_nothing_when_a_signal_comes_while_the_record_is_named) {
  Office office({.content = cli::Content::Sample});
  const auto id = LinkedRecord(office);
  auto& calls = office.elsewhere->Calls();
  const auto first = calls.CallCount();
  EXPECT_EQ(Delete("delete-quickbooks", QuickBooksThere(office), id, "no").status, cli::ExitStatus::Failed);
  const std::vector<std::string> names(calls.CallNames().begin() + static_cast<std::ptrdiff_t>(first),
                                       calls.CallNames().end());
  EXPECT_GT(names.size(), 4U);
  for (std::size_t k = 1; k <= names.size(); ++k) {
    SCOPED_TRACE(names[k - 1]);
    for (const auto* command : {"delete-quickbooks", "delete-billing"}) {
      const auto asked = RequestsOf(office).size();
      calls.RunAt(calls.CallCount() + k, FaultTiming::Before, [] { std::raise(SIGTERM); });
      EXPECT_TRUE(Delete(command, QuickBooksThere(office), id, "yes").bySignal);
      EndSignals::Forget();
      EXPECT_EQ(RequestsOf(office).size(), asked + 2);  // the two questions of the naming
    }
  }
  // Both still stand.
  ExpectHas(Delete("delete-quickbooks", QuickBooksThere(office), id, "no").told,
            Named(id, "the client ABBOTT", kHarbour));
}

TEST(ElsewhereDeletions, Of_what_is_gone_begin_with_nothing_more_when_a_signal_comes) {
  Office office({.content = cli::Content::Sample});
  Link("ABBOTT", "8000FFFE-1");
  Link("EASTON", "8000FFFF-1");
  const auto command = cli::DeletionsCommand();
  RunCommand(command, QuickBooksThere(office), "no");  // the folder's first run asks about a backup
  auto& calls = office.elsewhere->Calls();
  const auto first = calls.CallCount();
  const auto left = RunCommand(command, QuickBooksThere(office), "no");
  ExpectHas(left.told, "The client ABBOTT is linked to");
  ExpectHas(left.told, "The client EASTON is linked to");
  const std::vector<std::string> names(calls.CallNames().begin() + static_cast<std::ptrdiff_t>(first),
                                       calls.CallNames().end());
  const auto last = std::ranges::find(names.rbegin(), names.rend(), "Transport.ProcessDocument");
  ASSERT_NE(last, names.rend());
  const auto number = static_cast<std::size_t>(names.rend() - last);
  calls.RunAt(calls.CallCount() + number, FaultTiming::Before, [] { std::raise(SIGTERM); });
  const auto ended = RunCommand(command, QuickBooksThere(office), "yes");
  EndSignals::Forget();
  EXPECT_TRUE(ended.bySignal);
  // Both are still there to be asked for.
  EXPECT_EQ(RunCommand(command, QuickBooksThere(office), "no").told, left.told);
}

TEST(ElsewhereDeletions, Ask_without_the_name_of_a_record_that_QuickBooks_does_not_have) {
  Office office({.content = cli::Content::Sample});
  const auto ended = Delete("delete-quickbooks", QuickBooksThere(office), "8000FFFF-1", "no");
  ExpectHas(ended.told, "8000FFFF-1 belongs to no client of BillingDb.");
}

}  // namespace
}  // namespace twqb
