// The identifiers of sets that add, and what is done about QuickBooks' codes.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <regex>
#include <set>

#include "platform/PlatformError.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Recovery.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const Date kNow = TextToDate("2008-03-05T11:00:00");

std::string Answer(std::string_view attributes, std::string_view inside = "") {
  return fmt::format("<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs{}>{}</QBXMLMsgsRs></QBXML>", attributes, inside);
}
std::string Coded(int code) { return Answer(fmt::format(" messageSetStatusCode=\"{}\"", code)); }
const std::string kAdded = Answer(
    "", "<CustomerAddRs requestID=\"2:A\" statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\"/>");

// A session with a QuickBooks that answers what a test says.
class AskedHouse : public NotingHouse {
 public:
  AskedHouse()
      : NotingHouse({}, {},
                    std::make_unique<CannedQuickBooks>(Canned{.answer =
                                                                  [this](std::string_view document) {
                                                                    documents.emplace_back(document);
                                                                    return answer(documents.back());
                                                                  }})),
        session(Vars().platform.quickbooks->CreateTransport(), TheMachine()) {}

  MsgSetResponse Send(std::string_view row = "2:A") {
    auto set = session.CreateMsgSetRequest("US", 3, 0);
    set.Append("CustomerAddRq")["Name"].SetValue("A");
    set.NameLast(std::string(row));
    return recovery.Send(session, set, {.row = std::string(row), .request = "CustomerAdd"});
  }
  void Begin(std::string_view owner = "OWNER") {
    recovery.Begin(owner, kNow);
    static_cast<void>(recovery.Ask(session));
    documents.clear();
  }
  [[nodiscard]] std::string Attribute(std::string_view name, std::size_t document) const {
    std::smatch found;
    const std::regex pattern(fmt::format(" {}=\"([^\"]*)\"", name));
    return std::regex_search(documents.at(document), found, pattern) ? found[1].str() : "(none)";
  }

  Texts documents;
  // As of a QuickBooks that has nothing stored and carries out what comes.
  std::function<std::string(const std::string& document)> answer = [](const std::string& document) {
    return document.find("requestID=") == std::string::npos ? Coded(600) : kAdded;
  };
  QBSessionManager session;
  Recovery recovery;
};

TEST(RecoveryIds, Have_at_most_23_letters_and_digits) {
  AskedHouse house;
  const auto owner = Recovery::OwnerOf("TWCLIENT", std::string(200, 'W'), "Data Source=C:\\a b\\\xC3\xBC.mdb;\"'<&");
  house.recovery.Begin(owner, kNow);
  static_cast<void>(house.recovery.Ask(house.session));
  ASSERT_EQ(house.documents.size(), 2U);
  for (std::size_t i = 0; i < 2; ++i) {
    const auto id = house.Attribute("newMessageSetID", i);
    EXPECT_GT(id.size(), 15U);
    EXPECT_LE(id.size(), 23U);
    EXPECT_TRUE(std::ranges::all_of(id, [](unsigned char c) { return std::isalnum(c) != 0 && c < 128; })) << id;
    EXPECT_EQ(house.Attribute("oldMessageSetID", i), id) << "that is how QuickBooks is asked";
  }
}

TEST(RecoveryIds, Differ_by_program_by_workstation_and_by_BillingDb_and_are_the_same_each_time) {
  const std::set<std::string> owners = {
      Recovery::OwnerOf("TWCLIENT", "DESK1", "Data Source=a"), Recovery::OwnerOf("TWCLIENT", "DESK2", "Data Source=a"),
      Recovery::OwnerOf("TWCLIENT", "DESK1", "Data Source=b"), Recovery::OwnerOf("OTHER", "DESK1", "Data Source=a"),
      Recovery::OwnerOf("TWCLIENT", "DESK1D", "ata Source=a"), Recovery::OwnerOf("TWCLIENT", "", "")};
  EXPECT_EQ(owners.size(), 6U);
  EXPECT_TRUE(owners.contains(Recovery::OwnerOf("TWCLIENT", "DESK1", "Data Source=a")));
}

TEST(RecoveryIds, Alternate_and_each_set_drops_the_one_before_it) {
  AskedHouse house;
  house.Begin();
  for (int i = 0; i < 3; ++i) {
    static_cast<void>(house.Send());
    house.recovery.Settle();
  }
  EXPECT_EQ(house.Attribute("newMessageSetID", 0), "OWNERA");
  EXPECT_EQ(house.Attribute("oldMessageSetID", 0), "OWNERB");
  EXPECT_EQ(house.Attribute("newMessageSetID", 1), "OWNERB");
  EXPECT_EQ(house.Attribute("oldMessageSetID", 1), "OWNERA");
  EXPECT_EQ(house.Attribute("newMessageSetID", 2), "OWNERA");
  EXPECT_EQ(house.Attribute("requestID", 2), "2:A");
}

TEST(RecoveryIds, A_set_that_does_not_go_through_it_has_none_and_numbers_its_requests) {
  AskedHouse house;
  house.Begin();
  auto set = house.session.CreateMsgSetRequest("US", 3, 0);
  set.Append("CustomerAddRq")["Name"].SetValue("A");
  set.NameLast("2:A");
  set.Append("CustomerQueryRq");
  static_cast<void>(house.session.DoRequests(set));
  EXPECT_EQ(house.documents[0].find("MessageSetID"), std::string::npos);
  EXPECT_NE(house.documents[0].find("<CustomerAddRq requestID=\"1\">"), std::string::npos);
  EXPECT_NE(house.documents[0].find("<CustomerQueryRq requestID=\"2\">"), std::string::npos);
}

TEST(RecoveryIds, The_name_of_a_row_is_written_as_XML_has_it) {
  AskedHouse house;
  house.Begin();
  static_cast<void>(house.Send("2:A&B <\"C\">"));
  EXPECT_EQ(house.Attribute("requestID", 0), "2:A&amp;B &lt;&quot;C&quot;&gt;");
}

TEST(RecoveryCodes, What_is_kept_is_asked_for_by_each_transfer_and_dropped_behind_it_when_it_is_settled) {
  AskedHouse house;
  house.Begin();
  EXPECT_TRUE(house.recovery.Ask(house.session).empty());
  EXPECT_EQ(house.documents.size(), 2U) << "between two transfers others may send";
  house.documents.clear();
  static_cast<void>(house.Send());
  house.recovery.Drop(house.session);
  EXPECT_EQ(house.documents.size(), 1U) << "not while its row is open";
  house.recovery.Settle();
  house.recovery.Drop(house.session);
  ASSERT_EQ(house.documents.size(), 2U);
  EXPECT_EQ(house.Attribute("newMessageSetID", 1), "(none)");
  EXPECT_EQ(house.Attribute("oldMessageSetID", 1), "OWNERA");
  house.recovery.Drop(house.session);
  EXPECT_EQ(house.documents.size(), 2U) << "not twice";
}

TEST(RecoveryCodes, An_identifier_that_QuickBooks_stores_by_being_asked_is_free_again_before_it_is_used) {
  for (const auto& answer : {Coded(9002), Coded(9005), Coded(0), Answer("")}) {
    AskedHouse house;
    house.recovery.Begin("OWNER", kNow);
    house.answer = [&](const std::string&) { return answer; };
    EXPECT_TRUE(house.recovery.Ask(house.session).empty());
    ASSERT_EQ(house.documents.size(), 4U) << answer;
    EXPECT_EQ(house.Attribute("oldMessageSetID", 1), "OWNERA");
    EXPECT_EQ(house.Attribute("newMessageSetID", 1), "(none)");
    EXPECT_EQ(house.Attribute("oldMessageSetID", 3), "OWNERB");
  }
}

class RefusedIdentifiers : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Codes, RefusedIdentifiers, testing::Values(9001, 9004));

TEST_P(RefusedIdentifiers, Are_left_off_and_the_set_goes_without) {
  AskedHouse house;
  house.Begin();
  house.answer = [](const std::string& document) {
    return document.find("MessageSetID") == std::string::npos ? kAdded : Coded(GetParam());
  };
  EXPECT_EQ(house.Send().Count(), 1U);
  EXPECT_FALSE(house.recovery.IsOn());
  EXPECT_FALSE(house.recovery.IsOpen());
  EXPECT_EQ(house.documents.size(), 2U);
  EXPECT_EQ(house.documents[1].find("MessageSetID"), std::string::npos);
}

class DoubtfulAnswers : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Codes, DoubtfulAnswers, testing::Values(0, 600, 9002, 9005));

TEST_P(DoubtfulAnswers, Raise_and_leave_the_addition_open_as_one_that_may_have_run) {
  AskedHouse house;
  house.Begin();
  house.answer = [](const std::string& document) {
    return document.find("requestID=") == std::string::npos ? Coded(600) : Coded(GetParam());
  };
  EXPECT_THROW(static_cast<void>(house.Send()), PlatformError);
  ASSERT_TRUE(house.recovery.IsOpen());
  EXPECT_EQ(house.recovery.Open().row, "2:A");
  const auto kept = house.recovery.AskAgain(house.session);
  EXPECT_FALSE(kept.answer);
  EXPECT_TRUE(kept.mayHaveRun);
}

TEST(RecoveryCodes, One_whose_call_failed_and_that_QuickBooks_never_saw_has_not_run) {
  for (const int code : {600, 9002}) {
    AskedHouse house;
    house.Begin();
    house.answer = [code](const std::string& document) -> std::string {
      if (document.find("requestID=") != std::string::npos) throw PlatformError(0x80040408, "Broken.");
      return Coded(code);
    };
    EXPECT_THROW(static_cast<void>(house.Send()), PlatformError);
    const auto kept = house.recovery.AskAgain(house.session);
    EXPECT_FALSE(kept.answer);
    EXPECT_EQ(kept.mayHaveRun, code == 9002) << "only 600 speaks for it";
  }
}

TEST(RecoveryCodes, A_QuickBooks_that_can_not_read_the_question_is_left_at_that_and_any_other_failure_is_raised) {
  AskedHouse house;
  house.recovery.Begin("OWNER", kNow);
  house.answer = [](const std::string&) -> std::string { throw PlatformError(0x80040408, "Broken."); };
  EXPECT_THROW(static_cast<void>(house.recovery.Ask(house.session)), PlatformError);
  EXPECT_FALSE(house.recovery.IsOn());
  house.answer = [](const std::string&) -> std::string { return "<QBXML><QBXMLMsgsRs"; };
  EXPECT_THROW(static_cast<void>(house.recovery.Ask(house.session)), PlatformError)
      << "an answer that broke off is none";
  house.answer = [](const std::string&) -> std::string { throw PlatformError(error::kParse); };
  EXPECT_TRUE(house.recovery.Ask(house.session).empty());
  EXPECT_FALSE(house.recovery.IsOn());
  EXPECT_TRUE(house.recovery.HasBegun());
  house.documents.clear();
  EXPECT_TRUE(house.recovery.Ask(house.session).empty());
  EXPECT_TRUE(house.documents.empty()) << "it is not asked again";
}

TEST(RecoveryCodes, Outcomes_of_both_identifiers_are_told_and_the_one_in_hand_is_dropped) {
  AskedHouse house;
  house.recovery.Begin("OWNER", kNow);
  house.answer = [](const std::string&) {
    return Answer(" messageSetStatusCode=\"0\" newMessageSetID=\"X\"",
                  "<CustomerAddRs requestID=\"2:A\" statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"OK\"/>");
  };
  const auto stored = house.recovery.Ask(house.session);
  ASSERT_EQ(stored.size(), 2U);
  EXPECT_EQ(stored[0].answer.GetAt(0).RequestID(), "2:A");
  EXPECT_EQ(stored[0].row, "") << "another session sent it";
  house.documents.clear();
  house.recovery.Drop(house.session);
  EXPECT_TRUE(house.documents.empty()) << "none is settled";
  for (const auto& outcome : stored) {
    house.recovery.TakeInHand(outcome.slot);
    house.recovery.Settle();
    house.recovery.Drop(house.session);
  }
  ASSERT_EQ(house.documents.size(), 2U);
  EXPECT_EQ(house.Attribute("oldMessageSetID", 0), "OWNERA");
  EXPECT_EQ(house.Attribute("newMessageSetID", 0), "(none)");
  EXPECT_EQ(house.Attribute("oldMessageSetID", 1), "OWNERB");
}

TEST(RecoveryCodes, An_outcome_is_that_of_the_row_which_this_session_sent_under_its_identifier) {
  AskedHouse house;
  house.Begin();
  static_cast<void>(house.Send("2:FIRST"));
  house.recovery.Settle();
  static_cast<void>(house.Send("2:SECOND"));
  house.recovery.Settle();
  house.answer = [](const std::string&) { return kAdded; };
  const auto stored = house.recovery.Ask(house.session);
  ASSERT_EQ(stored.size(), 2U);
  EXPECT_EQ(stored[0].row, "") << "the second set dropped it: what is here now is another process's";
  EXPECT_EQ(stored[1].row, "2:SECOND");
}

}  // namespace
}  // namespace twqb
