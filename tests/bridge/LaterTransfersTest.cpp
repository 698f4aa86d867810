// What becomes of a lost link where other work comes between: another transfer of the session, an edit on either side,
// another process that sends meanwhile.

#include "tests/bridge/LostLinksHouse.h"

namespace twqb {
namespace {

using When = WireBreak::When;

constexpr std::string_view kLater = "2008-03-05T11:30:00";

class LaterTransfers : public testing::TestWithParam<const char*> {
 protected:
  // A process that loses QuickBooks for good at its first request of that kind: with the answer, whose links it writes,
  // or without.
  void BreakOff(When when, std::string_view request, void (*prepare)(Process&), enTables table) {
    Process first(firm.Folder());
    prepare(first);
    first.wire.breaks = {.at = std::string(request), .when = when, .alsoFailing = kForGood};
    static_cast<void>(first.Send(table));
  }
  void LoseEntry() {
    BreakOff(
        When::AnswerIsLost, "<TimeTrackingAddRq", [](Process& first) { LostLinksFirm::AddEntry(first, "{E1}"); },
        enTimeEntries);
  }
  static void ExpectEntryFound(Process& process) {
    EXPECT_EQ(process.told.found.size(), 1U);
    EXPECT_EQ(LostLinksFirm::AllOf(process, "TimeTracking", "TxnID"),
              std::set{process.Scalar("SELECT QBLinkID FROM TimeEntry WHERE TEID = '{E1}'")});
  }
  LostLinksFirm firm{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Readings, LaterTransfers, testing::Values("strict", "lenient"),
                         [](const auto& test) { return std::string(test.param); });

void AddSplitPayment(Process& process) {
  for (const auto* invoice : {"I-1", "I-2"}) LostLinksFirm::AddLinkedInvoice(process, invoice);
  LostLinksFirm::AddPayment(process, "P", false);
  for (const auto* invoice : {"I-1", "I-2"}) LostLinksFirm::AddPart(process, "P", invoice);
}

void ExpectBothPaidOnce(Process& process) {
  EXPECT_EQ(LostLinksFirm::AllOf(process, "ReceivePayment", "TxnID").size(), 2U);
  EXPECT_EQ(process.Scalar("SELECT COUNT(DISTINCT QBLinkID) FROM TransactionTable WHERE PayID = 'P'"), "2");
}

TEST_P(LaterTransfers, The_rest_of_a_payment_goes_behind_a_get_and_a_send_that_adds_nothing) {
  BreakOff(When::BehindTheAnswer, "<ReceivePaymentAddRq", AddSplitPayment, enPayments);
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.bridge->GetDataFromQB(enVendors));
  EXPECT_TRUE(second.Send(enVendors));
  EXPECT_TRUE(second.Send(enPayments));
  EXPECT_TRUE(LinesWith(second.Log(), "no table here").empty());
  ExpectBothPaidOnce(second);
}

TEST_P(LaterTransfers, A_payment_of_which_nothing_went_leaves_nothing_to_settle) {
  Process process(firm.Folder());
  LostLinksFirm::AddClient(process, "NEW", "New Company");
  EXPECT_TRUE(process.Send(enClients));
  AddSplitPayment(process);
  // Its first invoice can't be looked up.
  process.wire.answers = [](const std::string& document, const SendOn&) -> std::optional<std::string> {
    if (document.find("<InvoiceQueryRq") != std::string::npos) throw PlatformError(0x80040408, "The wire is broken.");
    return std::nullopt;
  };
  static_cast<void>(process.Send(enPayments));
  EXPECT_TRUE(LostLinksFirm::AllOf(process, "ReceivePayment", "TxnID").empty());
  process.wire.answers = nullptr;
  LostLinksFirm::AddClient(process, "LATER", "Later Company");
  EXPECT_TRUE(process.Send(enClients));
  EXPECT_NE(process.ColumnOf("LATER", "QBLinkID"), "NULL");
  EXPECT_TRUE(process.told.found.empty());
}

TEST_P(LaterTransfers, The_rest_of_a_payment_is_not_given_up_for_another_one_that_does_not_go) {
  {
    Process first(firm.Folder());
    AddSplitPayment(first);
    // Behind it in the table, and its invoice is not in QuickBooks.
    LostLinksFirm::AddPayment(first, "Q", false);
    LostLinksFirm::AddPart(first, "Q", "I-3");
    int asked = 0;
    first.wire.answers = [&](const std::string& document, const SendOn&) -> std::optional<std::string> {
      const bool breaks = document.find("<InvoiceQueryRq") != std::string::npos && ++asked == 2;
      if (breaks) throw PlatformError(0x80040408, "The wire is broken.");
      return std::nullopt;
    };
    static_cast<void>(first.Send(enPayments));
    EXPECT_EQ(LostLinksFirm::AllOf(first, "ReceivePayment", "TxnID").size(), 1U);
  }
  Process second(firm.Folder(), {.now = kLater});
  static_cast<void>(second.Send(enPayments));
  ExpectBothPaidOnce(second);
}

TEST_P(LaterTransfers, A_client_that_was_edited_behind_the_written_link_goes_like_any_other) {
  BreakOff(
      When::BehindTheAnswer, "<CustomerAddRq",
      [](Process& first) {
        LostLinksFirm::AddClient(first, "NEW", "New Company");
        first.Sql("UPDATE Client SET LastUpdated = '2008-03-01 00:00:00' WHERE ClientID = 'NEW'");
      },
      enClients);
  Process second(firm.Folder(), {.now = "2008-03-07T11:00:00"});
  EXPECT_NE(second.ColumnOf("NEW", "QBLinkID"), "NULL");
  second.Sql(
      "UPDATE Client SET ClientCity = 'Springfield', LastUpdated = '2008-03-07 10:00:00' WHERE ClientID = 'NEW'");
  EXPECT_TRUE(second.Send(enClients));
  EXPECT_TRUE(second.told.found.empty());
  EXPECT_EQ(second.DocumentsWith("<City>Springfield</City>").size(), 1U);
}

TEST_P(LaterTransfers, What_another_process_lost_meanwhile_is_found_by_a_session_that_stays_open) {
  LoseEntry();
  Process host(firm.Folder(), {.now = kLater});
  // Its first transfer comes ahead of the loss: nothing is kept yet.
  bool isAhead = true;
  host.wire.answers = [&](const std::string& document, const SendOn&) -> std::optional<std::string> {
    const bool asks = document.find("MessageSetID") != std::string::npos;
    if (!isAhead || !asks) return std::nullopt;
    return "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs messageSetStatusCode=\"600\"></QBXMLMsgsRs></QBXML>";
  };
  EXPECT_TRUE(host.Send(enVendors));
  isAhead = false;
  EXPECT_TRUE(host.Send(enTimeEntries));
  ExpectEntryFound(host);
}

TEST_P(LaterTransfers, An_outcome_whose_record_can_not_be_read_is_looked_for_in_QuickBooks) {
  LoseEntry();
  Process second(firm.Folder(), {.now = kLater});
  second.wire.answers = [](const std::string& document, const SendOn& sendOn) -> std::optional<std::string> {
    auto answer = sendOn(document);
    if (document.find("MessageSetID") == std::string::npos) return answer;
    if (const auto at = answer.find("<TimeTrackingRet>"); at != std::string::npos) {
      answer.insert(at, "<OfALaterVersion>1</OfALaterVersion>");
    }
    return answer;
  };
  EXPECT_TRUE(second.Send(enTimeEntries));
  EXPECT_FALSE(second.DocumentsWith("<TimeTrackingQueryRq").empty());
  ExpectEntryFound(second);
}

struct BillKind {
  std::string name;
  enTables table;
  void (*addRow)(TestHouse& house, std::string_view key);
};

// Of which QuickBooks tells the record. Where it tells the status alone, one that was changed is held.
class WrittenBills : public testing::TestWithParam<BillKind> {
 protected:
  static bool Send(Process& process, std::string_view key) {
    const auto table = GetParam().table;
    return table == enExpenseLog ? process.SendNamed(table, fmt::format("'{}'", key)) : process.Send(table);
  }
  // Dies with all written and nothing dropped.
  void SendAndDie(std::string_view key) {
    Process first(firm.Folder());
    GetParam().addRow(first, key);
    bool isSent = false;
    first.wire.answers = [&](const std::string& document, const SendOn&) -> std::optional<std::string> {
      const bool drops = isSent && document.find("oldMessageSetID") != std::string::npos;
      isSent = isSent || document.find("<BillAddRq") != std::string::npos;
      if (drops) throw PlatformError(0x80040408, "The wire is broken.");
      return std::nullopt;
    };
    EXPECT_TRUE(Send(first, key));
  }
  void ExpectTheNextIsProtected(Process& process) {
    EXPECT_TRUE(process.told.open.empty()) << process.told.open[0];
    EXPECT_TRUE(process.told.found.empty());
    LostLinksFirm::AddClient(process, "NEW", "New Company");
    EXPECT_TRUE(process.Send(enClients));
    const auto sent = process.DocumentsWith("<CustomerAddRq");
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_NE(sent[0].find("newMessageSetID"), std::string::npos);
  }
  LostLinksFirm firm{"lenient"};
};

INSTANTIATE_TEST_SUITE_P(
    All, WrittenBills,
    testing::Values(BillKind{"vendor_bill", enVendorBill,
                             [](TestHouse& house, std::string_view key) { LostLinksFirm::AddVendorBill(house, key); }},
                    BillKind{"expense", enExpenseLog,
                             [](TestHouse& house, std::string_view key) { LostLinksFirm::AddExpense(house, key); }}),
    [](const auto& test) { return test.param.name; });

TEST_P(WrittenBills, Whose_rows_were_changed_since_hold_nothing_up) {
  SendAndDie("B");
  Process second(firm.Folder(), {.now = kLater});
  second.Sql("UPDATE ExpenseLog SET ELCost = 25");
  EXPECT_TRUE(Send(second, "B"));
  EXPECT_EQ(LostLinksFirm::AllOf(second, "Bill", "TxnID").size(), 1U);
  ExpectTheNextIsProtected(second);
}

TEST_P(WrittenBills, That_were_deleted_in_QuickBooks_since_hold_nothing_up) {
  SendAndDie("B");
  Process second(firm.Folder(), {.now = kLater});
  second.Company(fmt::format("<TxnDelRq><TxnDelType>Bill</TxnDelType><TxnID>{}</TxnID></TxnDelRq>",
                             *LostLinksFirm::AllOf(second, "Bill", "TxnID").begin()));
  static_cast<void>(second.Send(enVendors));
  ExpectTheNextIsProtected(second);
}

TEST(BillsInPart, Whose_other_rows_lost_their_links_are_held_though_one_that_has_its_own_was_changed_since) {
  LostLinksFirm firm("lenient");
  {
    Process first(firm.Folder());
    for (const auto* key : {"train", "taxi"}) LostLinksFirm::AddExpense(first, key);
    first.wire.answers = [&](const std::string& document, const SendOn& sendOn) -> std::optional<std::string> {
      auto answer = sendOn(document);
      const bool adds = document.find("<BillAddRq") != std::string::npos;
      if (adds) first.wire.failing = kForGood;
      return answer;
    };
    static_cast<void>(first.SendNamed(enExpenseLog, "'train','taxi'"));
    first.Sql("UPDATE ExpenseLog SET QBLinkID = NULL WHERE ELID = 'taxi'");
    first.Sql("UPDATE ExpenseLog SET ELCost = 25 WHERE ELID = 'train'");
  }
  Process second(firm.Folder(), {.now = kLater});
  static_cast<void>(second.SendNamed(enExpenseLog, "'train','taxi'"));
  EXPECT_EQ(second.told.open.size(), 1U);
  EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM ExpenseLog WHERE ELID = 'taxi'"), "NULL");
}

TEST(BillsInPart, A_row_without_a_text_does_not_take_the_line_of_one_that_has_it) {
  LostLinksFirm firm("lenient");
  {
    Process first(firm.Folder());
    // Ahead in the table, and not in the bill.
    LostLinksFirm::AddExpense(first, "nameless");
    first.Sql("UPDATE ExpenseLog SET ELDescription = NULL");
    for (const auto* key : {"train", "taxi"}) LostLinksFirm::AddExpense(first, key);
    first.wire.breaks = {.at = "<BillAddRq", .alsoFailing = kForGood};
    static_cast<void>(first.SendNamed(enExpenseLog, "'train','taxi'"));
  }
  Process second(firm.Folder(), {.now = kLater});
  EXPECT_TRUE(second.Send(enVendors));
  EXPECT_EQ(second.told.found.size(), 1U);
  EXPECT_EQ(second.Scalar("SELECT QBLinkID FROM ExpenseLog WHERE ELID = 'nameless'"), "NULL");
  EXPECT_NE(second.Scalar("SELECT QBLinkID FROM ExpenseLog WHERE ELID = 'taxi'"), "NULL");
}

}  // namespace
}  // namespace twqb
