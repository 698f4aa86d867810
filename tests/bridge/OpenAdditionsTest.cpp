// Additions of which nobody can tell at once what became, and sends without the search for lost links.

#include <regex>

#include "tests/bridge/LostLinksHouse.h"

namespace twqb {
namespace {

using When = WireBreak::When;

constexpr std::string_view kLater = "2008-03-05T11:30:00";
constexpr std::string_view kStillLater = "2008-03-05T12:00:00";

std::set<std::string> Entries(TestHouse& house) { return LostLinksFirm::AllOf(house, "TimeTracking", "TxnID"); }
std::string EntryLink(TestHouse& house, std::string_view key = "{E1}") {
  return house.Scalar(fmt::format("SELECT QBLinkID FROM TimeEntry WHERE TEID = '{}'", key));
}

// The answer to a set of which QuickBooks can tell that code alone.
std::string Coded(int code) {
  return fmt::format("<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs messageSetStatusCode=\"{}\"></QBXMLMsgsRs></QBXML>",
                     code);
}
std::string WithoutIdentifiers(const std::string& document) {
  static const std::regex kIdentifier(R"re( (new|old)MessageSetID="[^"]*")re");
  return std::regex_replace(document, kIdentifier, "");
}

class OpenAdditions : public testing::TestWithParam<const char*> {
 protected:
  LostLinksFirm firm{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Readings, OpenAdditions, testing::Values("strict", "lenient"),
                         [](const auto& test) { return std::string(test.param); });

// --- Two alike -------------------------------------------------------------------------------------------------------

TEST(TwoAlike, Are_held_and_told_and_settled_once_one_of_them_is_gone) {
  LostLinksFirm firm;
  {
    Process first(firm.Folder());
    LostLinksFirm::AddEntry(first, "{E1}");
    first.wire.breaks = {.at = "<TimeTrackingAddRq", .alsoFailing = kForGood};
    static_cast<void>(first.Send(enTimeEntries));
  }
  std::string stranger;
  {
    Process second(firm.Folder(), {.now = kLater});
    stranger = LostLinksFirm::AddEntryThere(second);
    LostLinksFirm::AddEntry(second, "{E2}");
    second.Sql("UPDATE TimeEntry SET TEDescription = 'Sections' WHERE TEID = '{E2}'");
    static_cast<void>(second.Send(enTimeEntries));
    EXPECT_TRUE(second.told.found.empty());
    ASSERT_EQ(second.told.open.size(), 1U);
    EXPECT_NE(second.told.open[0].find("The time entry {E1} may be in QuickBooks already"), std::string::npos);
    EXPECT_EQ(LinesWith(second.Log(), second.told.open[0]).size(), 1U);
    EXPECT_EQ(EntryLink(second), "NULL");
    EXPECT_NE(EntryLink(second, "{E2}"), "NULL") << "the others go, though without identifiers";
    EXPECT_EQ(Entries(second).size(), 3U);
    const auto sent = second.DocumentsWith("<TimeTrackingAddRq");
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].find("MessageSetID"), std::string::npos);
    EXPECT_NE(sent[0].find("requestID=\"1\""), std::string::npos);
  }
  Process third(firm.Folder(), {.now = kStillLater});
  third.Company(fmt::format("<TxnDelRq><TxnDelType>TimeTracking</TxnDelType><TxnID>{}</TxnID></TxnDelRq>", stranger));
  EXPECT_EQ(Entries(third).size(), 2U);
  EXPECT_TRUE(third.Send(enTimeEntries));
  EXPECT_EQ(third.told.found.size(), 1U);
  EXPECT_EQ(Entries(third), (std::set{EntryLink(third), EntryLink(third, "{E2}")}));
  EXPECT_TRUE(third.UsesIdentifiers());
}

// --- Others ----------------------------------------------------------------------------------------------------------

class DeadProcess : public OpenAdditions {
 protected:
  // It had two entries to send, which say the same, and died at the n-th.
  void DieAt(int nth) {
    Process first(firm.Folder());
    LostLinksFirm::AddEntry(first, "{E1}");
    LostLinksFirm::AddEntry(first, "{E2}");
    first.wire.breaks = {.at = "<TimeTrackingAddRq", .nth = nth, .alsoFailing = kForGood};
    static_cast<void>(first.Send(enTimeEntries));
  }
  static void ExpectBothOnce(Process& process) {
    EXPECT_EQ(Entries(process).size(), 2U);
    EXPECT_EQ(Entries(process), (std::set{EntryLink(process), EntryLink(process, "{E2}")}));
  }
};

INSTANTIATE_TEST_SUITE_P(Readings, DeadProcess, testing::Values("strict", "lenient"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(DeadProcess, What_another_row_is_linked_to_is_not_taken) {
  DieAt(2);
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.Send(enTimeEntries));
  EXPECT_EQ(second.told.found.size(), 1U);
  ExpectBothOnce(second);
}

TEST_P(DeadProcess, A_process_that_dies_while_it_asks_and_one_that_dies_behind_leave_nothing_doubled) {
  DieAt(1);
  {
    Process second(firm.Folder(), {.now = kLater});
    second.wire.breaks = {.at = "newMessageSetID", .when = When::BehindTheAnswer, .alsoFailing = kForGood};
    EXPECT_FALSE(second.Send(enTimeEntries));
    EXPECT_EQ(EntryLink(second), "NULL");
  }
  {
    Process third(firm.Folder(), {.now = kLater});
    third.wire.breaks = {.at = "<TimeTrackingAddRq", .alsoFailing = kForGood};
    static_cast<void>(third.Send(enTimeEntries));
    EXPECT_EQ(third.told.found.size(), 1U);
  }
  Process last(firm.Folder(), {.now = kStillLater});
  EXPECT_TRUE(last.Send(enTimeEntries));
  EXPECT_EQ(last.told.found.size(), 1U);
  ExpectBothOnce(last);
}

TEST_P(DeadProcess, A_sender_from_another_BillingDb_does_not_take_its_outcome) {
  DieAt(2);
  {
    Process other(firm.Folder(), {.now = kLater});
    other.bridge->SetConnectString(other.ConnectString() + ";");
    LostLinksFirm::AddClient(other, "NEW", "New Company");
    EXPECT_TRUE(other.Send(enClients));
    EXPECT_NE(other.ColumnOf("NEW", "QBLinkID"), "NULL");
    EXPECT_TRUE(other.told.found.empty());
  }
  Process same(firm.Folder(), {.now = kStillLater});
  EXPECT_TRUE(same.Send(enTimeEntries));
  EXPECT_EQ(same.told.found.size(), 1U);
  ExpectBothOnce(same);
}

// --- Codes -----------------------------------------------------------------------------------------------------------

TEST_P(OpenAdditions, An_addition_that_never_went_goes_in_the_next_send_without_a_word) {
  Process process(firm.Folder());
  LostLinksFirm::AddEntry(process, "{E1}");
  process.wire.breaks = {.at = "<TimeTrackingAddRq", .when = When::NeverGoes};
  static_cast<void>(process.Send(enTimeEntries));
  EXPECT_TRUE(Entries(process).empty());
  EXPECT_TRUE(process.Send(enTimeEntries));
  EXPECT_EQ(Entries(process), std::set{EntryLink(process)});
  EXPECT_TRUE(process.told.found.empty());
  EXPECT_TRUE(process.told.open.empty());
}

TEST_P(OpenAdditions, An_addition_that_never_went_before_its_process_died_goes_with_the_next_one) {
  {
    Process first(firm.Folder());
    LostLinksFirm::AddEntry(first, "{E1}");
    first.wire.breaks = {.at = "<TimeTrackingAddRq", .when = When::NeverGoes, .alsoFailing = kForGood};
    static_cast<void>(first.Send(enTimeEntries));
  }
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.Send(enTimeEntries));
  EXPECT_EQ(Entries(second), std::set{EntryLink(second)});
  EXPECT_TRUE(second.told.open.empty());
}

TEST_P(OpenAdditions, An_identifier_that_has_other_content_already_is_done_without_and_the_log_tells) {
  Process process(firm.Folder());
  LostLinksFirm::AddClient(process, "NEW", "New Company");
  LostLinksFirm::AddClient(process, "LATER", "Later Company");
  bool isFirst = true;
  process.wire.answers = [&](const std::string& document, const SendOn& sendOn) -> std::optional<std::string> {
    if (document.find("<CustomerAddRq") == std::string::npos || !std::exchange(isFirst, false)) return std::nullopt;
    // Another process sends under the same identifiers.
    auto other = document;
    const auto at = other.find("New Company");
    other.replace(at, std::string_view("New Company").size(), "Another One");
    static_cast<void>(sendOn(other));
    return std::nullopt;
  };
  EXPECT_TRUE(process.Send(enClients));
  EXPECT_NE(process.ColumnOf("NEW", "QBLinkID"), "NULL");
  EXPECT_NE(process.ColumnOf("LATER", "QBLinkID"), "NULL");
  EXPECT_EQ(LinesWith(process.Log(), "(code 9001)").size(), 1U);
  EXPECT_EQ(process.DocumentsWith("<CustomerAddRq").size(), 3U);
  EXPECT_EQ(process.DocumentsWith("<CustomerAddRq").back().find("MessageSetID"), std::string::npos);
}

// QuickBooks carries the set out, or not, and has no place for its answer.
enum class Work : std::uint8_t { IsDone, IsNotDone };
void LetNoAnswerBeStored(Process& process, std::string_view request, Work work = Work::IsDone) {
  process.wire.answers = [request = std::string(request), work, isPast = false](
                             const std::string& document, const SendOn& sendOn) mutable -> std::optional<std::string> {
    if (isPast || document.find(request) == std::string::npos) return std::nullopt;
    isPast = true;
    if (work == Work::IsDone) static_cast<void>(sendOn(WithoutIdentifiers(document)));
    return Coded(9005);
  };
}

TEST_P(OpenAdditions, An_addition_whose_answer_could_not_be_stored_is_found_by_what_it_says) {
  Process process(firm.Folder());
  LostLinksFirm::AddEntry(process, "{E1}");
  LetNoAnswerBeStored(process, "<TimeTrackingAddRq");
  static_cast<void>(process.Send(enTimeEntries));
  EXPECT_TRUE(process.Send(enTimeEntries));
  EXPECT_EQ(Entries(process), std::set{EntryLink(process)});
  EXPECT_EQ(process.told.found.size(), 1U);
  EXPECT_TRUE(process.told.open.empty());
}

TEST_P(OpenAdditions, An_older_record_that_says_the_same_is_a_stranger) {
  std::string stranger;
  {
    Process before(firm.Folder(), {.now = "2008-03-05T10:30:00"});
    stranger = LostLinksFirm::AddEntryThere(before);
  }
  for (const auto work : {Work::IsNotDone, Work::IsDone}) {
    Process process(firm.Folder());
    const std::string key = work == Work::IsDone ? "{E1}" : "{E0}";
    LostLinksFirm::AddEntry(process, key);
    if (work == Work::IsDone) process.Sql("UPDATE TimeEntry SET TEHours = 2.0 WHERE TEID = '{E1}'");
    LetNoAnswerBeStored(process, "<TimeTrackingAddRq", work);
    static_cast<void>(process.Send(enTimeEntries));
    EXPECT_EQ(process.told.found.size(), work == Work::IsDone ? 1U : 0U);
    EXPECT_TRUE(process.told.open.empty());
    EXPECT_TRUE(process.Send(enTimeEntries));
    EXPECT_NE(EntryLink(process, key), stranger);
    EXPECT_TRUE(Entries(process).contains(EntryLink(process, key)));
  }
  Process last(firm.Folder(), {.now = kLater});
  EXPECT_EQ(Entries(last).size(), 3U);
}

TEST_P(OpenAdditions, An_older_customer_of_the_same_name_is_not_taken_for_the_one_that_was_added) {
  {
    Process before(firm.Folder(), {.now = "2008-03-05T10:30:00"});
    LostLinksFirm::AddNamed(before, "Customer", "New Company (NEW)");
  }
  Process process(firm.Folder());
  LostLinksFirm::AddClient(process, "NEW", "New Company");
  LetNoAnswerBeStored(process, "<CustomerAddRq", Work::IsNotDone);
  static_cast<void>(process.Send(enClients));
  EXPECT_EQ(process.ColumnOf("NEW", "QBLinkID"), "NULL");
  EXPECT_TRUE(process.Send(enClients));
  EXPECT_EQ(process.ColumnOf("NEW", "QBLinkID"), process.ListIdOf("New Company (NEW)1"));
}

TEST(LateAnswers, What_is_carried_out_by_a_process_that_dies_before_its_answer_is_stored_is_not_known_to_the_next) {
  LostLinksFirm firm("late");
  {
    Process first(firm.Folder());
    LostLinksFirm::AddClient(first, "NEW", "New Company");
    LetNoAnswerBeStored(first, "<CustomerAddRq");
    first.wire.breaks = {.at = "<CustomerAddRq", .when = When::BehindTheAnswer, .alsoFailing = kForGood};
    static_cast<void>(first.Send(enClients));
    EXPECT_EQ(first.ColumnOf("NEW", "QBLinkID"), "NULL");
  }
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.Send(enClients));
  EXPECT_TRUE(second.told.found.empty());
  EXPECT_NE(second.ColumnOf("NEW", "QBLinkID"), "NULL");
}

// --- One session -----------------------------------------------------------------------------------------------------

TEST_P(OpenAdditions, A_second_send_of_the_session_settles_what_the_first_could_not) {
  Process process(firm.Folder());
  LostLinksFirm::AddEntry(process, "{E1}");
  process.wire.breaks = {.at = "<TimeTrackingAddRq", .alsoFailing = 1};
  static_cast<void>(process.Send(enTimeEntries));
  EXPECT_EQ(EntryLink(process), "NULL");
  EXPECT_EQ(LinesWith(process.Log(), "The next send asks again").size(), 1U);
  EXPECT_TRUE(process.Send(enTimeEntries));
  EXPECT_EQ(Entries(process), std::set{EntryLink(process)});
  EXPECT_EQ(process.told.found.size(), 1U);
}

TEST_P(OpenAdditions, A_send_of_another_table_in_the_session_settles_it_with_its_own_table) {
  Process process(firm.Folder());
  process.Sql("INSERT INTO Activity (ActivityID, ActivityDescription) VALUES ('SAME:', 'Same')");
  process.Sql("INSERT INTO Expense (ExpID, ExpDescription) VALUES ('SAME:', 'Same')");
  process.wire.breaks = {.at = "<ItemServiceAddRq", .alsoFailing = 1};
  static_cast<void>(process.Send(enActivities));
  EXPECT_EQ(process.Scalar("SELECT QBLinkID FROM Activity WHERE ActivityID = 'SAME:'"), "NULL");
  static_cast<void>(process.Send(enExpenseCodes));
  const auto activity = process.Scalar("SELECT QBLinkID FROM Activity WHERE ActivityID = 'SAME:'");
  const auto expense = process.Scalar("SELECT QBLinkID FROM Expense WHERE ExpID = 'SAME:'");
  EXPECT_TRUE(LostLinksFirm::AllOf(process, "ItemService", "ListID").contains(activity)) << activity;
  EXPECT_NE(expense, activity);
  EXPECT_EQ(process.told.found.size(), 1U);
}

TEST_P(OpenAdditions, In_a_run_over_all_tables_an_addition_is_settled_with_its_own_table) {
  for (const int alsoFailing : {0, 1}) {
    LostLinksFirm own(GetParam());
    {
      Process first(own.Folder());
      first.Sql("INSERT INTO Activity (ActivityID, ActivityDescription) VALUES ('SAME:', 'Same')");
      first.Sql("INSERT INTO Expense (ExpID, ExpDescription) VALUES ('SAME:', 'Same')");
      first.wire.breaks = {.at = "<ItemServiceAddRq", .alsoFailing = alsoFailing};
      static_cast<void>(first.Send(enAll));
    }
    Process second(own.Folder(), {.now = kLater});
    static_cast<void>(second.Send(enAll));
    const auto activity = second.Scalar("SELECT QBLinkID FROM Activity WHERE ActivityID = 'SAME:'");
    const auto expense = second.Scalar("SELECT QBLinkID FROM Expense WHERE ExpID = 'SAME:'");
    EXPECT_TRUE(LostLinksFirm::AllOf(second, "ItemService", "ListID").contains(activity)) << activity;
    EXPECT_EQ(LostLinksFirm::AllOf(second, "ItemService", "ListID").size(), 2U);
    EXPECT_NE(expense, "NULL");
    EXPECT_EQ(LinesWith(second.Log(), "Found again: activity SAME:").size(), 1U);
  }
}

// --- Payments of several invoices ------------------------------------------------------------------------------------

void AddSplitPayment(TestHouse& house) {
  LostLinksFirm::AddLinkedInvoice(house, "I-1");
  LostLinksFirm::AddLinkedInvoice(house, "I-2");
  LostLinksFirm::AddPayment(house, "P", false);
  LostLinksFirm::AddPart(house, "P", "I-1");
  LostLinksFirm::AddPart(house, "P", "I-2");
}

void ExpectBothPaidOnce(Process& process) {
  const auto payments = LostLinksFirm::AllOf(process, "ReceivePayment", "TxnID");
  EXPECT_EQ(payments.size(), 2U);
  std::set<std::string> links;
  for (const auto* part : {"P to I-1", "P to I-2"}) {
    links.insert(process.Scalar(fmt::format("SELECT QBLinkID FROM TransactionTable WHERE TransactionID = '{}'", part)));
  }
  EXPECT_EQ(links, payments);
}

struct Broken {
  std::string name;
  When when;
  int nth;
};

class SplitPayments : public testing::TestWithParam<std::tuple<const char*, Broken>> {};

INSTANTIATE_TEST_SUITE_P(All, SplitPayments,
                         testing::Combine(testing::Values("strict", "lenient"),
                                          testing::Values(Broken{"answer_1", When::AnswerIsLost, 1},
                                                          Broken{"between", When::BehindTheAnswer, 1},
                                                          Broken{"never_2", When::NeverGoes, 2},
                                                          Broken{"answer_2", When::AnswerIsLost, 2})),
                         [](const auto& test) { return std::get<1>(test.param).name + "_" + std::get<0>(test.param); });

TEST_P(SplitPayments, Of_one_that_was_broken_off_the_rest_goes_with_the_next_process) {
  const auto& [reading, broken] = GetParam();
  LostLinksFirm firm(reading);
  {
    Process first(firm.Folder());
    AddSplitPayment(first);
    first.wire.breaks = {.at = "<ReceivePaymentAddRq", .when = broken.when, .nth = broken.nth, .alsoFailing = kForGood};
    static_cast<void>(first.Send(enPayments));
  }
  {
    Process second(firm.Folder(), {.now = kLater});
    EXPECT_TRUE(second.Send(enPayments));
    EXPECT_TRUE(second.told.open.empty()) << second.told.open[0];
    ExpectBothPaidOnce(second);
  }
  Process third(firm.Folder(), {.now = kStillLater});
  EXPECT_TRUE(third.Send(enPayments));
  ExpectBothPaidOnce(third);
}

TEST_P(OpenAdditions, A_payment_whose_last_part_was_found_again_in_its_run_never_goes_twice) {
  Process process(firm.Folder());
  AddSplitPayment(process);
  process.wire.breaks = {.at = "<ReceivePaymentAddRq", .nth = 2};
  static_cast<void>(process.Send(enPayments));
  EXPECT_EQ(process.told.found.size(), 1U);
  ExpectBothPaidOnce(process);
  EXPECT_TRUE(process.Send(enPayments));
  ExpectBothPaidOnce(process);
}

TEST_P(SplitPayments, Of_one_that_was_broken_off_the_rest_goes_with_the_next_send_of_the_session) {
  const auto& [reading, broken] = GetParam();
  LostLinksFirm firm(reading);
  Process process(firm.Folder());
  AddSplitPayment(process);
  // Behind an answer the call that breaks is the next one.
  process.wire.breaks = {.at = "<ReceivePaymentAddRq",
                         .when = broken.when,
                         .nth = broken.nth,
                         .alsoFailing = broken.when == When::BehindTheAnswer ? 1 : 0};
  static_cast<void>(process.Send(enPayments));
  EXPECT_TRUE(process.Send(enPayments));
  EXPECT_TRUE(process.told.open.empty()) << process.told.open[0];
  ExpectBothPaidOnce(process);
  EXPECT_TRUE(process.Send(enPayments));
  ExpectBothPaidOnce(process);
}

TEST_P(OpenAdditions, Of_a_payment_that_was_found_again_in_its_run_the_rest_goes_with_the_next_process) {
  {
    Process first(firm.Folder());
    AddSplitPayment(first);
    first.wire.breaks = {.at = "<ReceivePaymentAddRq"};
    static_cast<void>(first.Send(enPayments));
    EXPECT_EQ(first.told.found.size(), 1U);
  }
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.Send(enPayments));
  ExpectBothPaidOnce(second);
}

}  // namespace
}  // namespace twqb
