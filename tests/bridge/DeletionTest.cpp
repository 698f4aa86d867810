// Deletion of a record's twin: in BillingDb and in QuickBooks.

#include <algorithm>

#include "bridge/Deletion.h"
#include "tests/bridge/DeletionHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;
using Events = std::vector<CallbackEvent>;

constexpr std::string_view kAskBilling = "Do you want to delete the corresponding record of Tallywick?";
constexpr std::string_view kAskQuickBooks = "Do you want to delete the corresponding record of QuickBooks?";
const enTables kOtherTables[] = {enAccounts, enVendorBill, enEstimates, enAll, enCreditMemo};

// The boxes behind the question.
Texts BoxesAfterQuestion(const DeletionHouse& house) {
  auto texts = house.BoxTexts();
  texts.erase(texts.begin());
  return texts;
}

std::string NotFoundText(std::string_view id) {
  return RefusalText(
      "Object \"" + std::string(id) +
          "\" specified in the request cannot be found.  QuickBooks error message: Invalid argument.  The "
          "specified record does not exist in the list.",
      3120, "Error");
}

// --- The question ----------------------------------------------------------------------------------------------------

struct Side {
  std::string name;
  bool (CTWQBBridge::*run)(enTables table, const std::string& id);
  std::string_view question;
};

class EitherDeletion : public testing::TestWithParam<Side> {};

TEST_P(EitherDeletion, Answered_No_returns_False_with_no_session_opened) {
  DeletionHouse house({}, "no");
  EXPECT_FALSE((*house.bridge.*GetParam().run)(enClients, "1-1"));
  EXPECT_FALSE(Vars().g_QBSession);
  EXPECT_EQ(house.BoxTexts(), Texts{std::string(GetParam().question)});
  EXPECT_TRUE(house.traffic.documents.empty());
  EXPECT_TRUE(house.traffic.statements.empty());
}

TEST_P(EitherDeletion, Asks_ahead_of_every_other_program) {
  DeletionHouse house({}, "no");
  (void)(*house.bridge.*GetParam().run)(enClients, "1-1");
  const auto& box = house.desk.Boxes().at(0).box;
  EXPECT_EQ(box.title, "Confirm");
  EXPECT_EQ(box.icon, BoxIcon::Question);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(box.modality, BoxModality::System);
}

TEST_P(EitherDeletion, Is_False_without_a_further_word_when_no_session_can_be_had) {
  DeletionHouse house("OpenConnection 1 raise 0x80040408 \"Not running\"");
  EXPECT_FALSE((*house.bridge.*GetParam().run)(enClients, "1-1"));
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_NE(house.BoxTexts()[1].find("procedure: StartQBSession. "), std::string::npos);
}

TEST_P(EitherDeletion, Opens_the_file_in_the_mode_of_the_object) {
  for (const bool single : {false, true}) {
    DeletionHouse house;
    house.bridge->SetIsQBSingleMode(single);
    (void)(*house.bridge.*GetParam().run)(enClients, "1-1");
    EXPECT_EQ(OthersCanOpenTheFile(house), !single);
  }
}

TEST_P(EitherDeletion, Reports_a_question_that_can_not_be_asked_under_its_name) {
  DeletionHouse house("box 1 raise 75 \"No desk\"");
  EXPECT_FALSE((*house.bridge.*GetParam().run)(enClients, "1-1"));
  EXPECT_EQ(house.BoxTexts(), Texts{"Error #: 75(4B) -- \r\n\r\nNo desk" + ErrorBoxEnd(GetParam().name)});
}

INSTANTIATE_TEST_SUITE_P(Deletion, EitherDeletion,
                         testing::Values(Side{"DeleteTWRecord", &CTWQBBridge::DeleteTWRecord, kAskBilling},
                                         Side{"DeleteQBRecord", &CTWQBBridge::DeleteQBRecord, kAskQuickBooks}),
                         [](const auto& suite) { return suite.param.name; });

// --- In BillingDb ----------------------------------------------------------------------------------------------------

class BillingDeletion : public testing::TestWithParam<Twin> {};

TEST_P(BillingDeletion, Deletes_every_row_with_that_link_and_no_other) {
  const auto& twin = GetParam();
  DeletionHouse house;
  house.AddRow(twin.rows, twin.key, "A", "1-1");
  house.AddRow(twin.rows, twin.key, "B", "1-2");
  house.AddRow(twin.rows, twin.key, "C", "1-1");
  EXPECT_TRUE(house.bridge->DeleteTWRecord(twin.table, "1-1"));
  EXPECT_EQ(house.RowsOf(twin.rows, twin.key), "B");
  EXPECT_EQ(house.traffic.statements.back(), "DELETE FROM " + twin.rows + " WHERE QBLinkID = '1-1';");
  EXPECT_EQ(house.BoxTexts(), Texts{std::string(kAskBilling)});
  EXPECT_TRUE(Vars().g_QBSession) << "nothing is sent, and yet there is a session";
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST_P(BillingDeletion, Of_a_link_that_is_not_there_is_True) {
  DeletionHouse house;
  EXPECT_TRUE(house.bridge->DeleteTWRecord(GetParam().table, "1-1"));
  EXPECT_TRUE(BoxesAfterQuestion(house).empty());
}

INSTANTIATE_TEST_SUITE_P(DeleteTWRecord, BillingDeletion, testing::ValuesIn([] {
                           std::vector<Twin> twins(std::begin(kTwins), std::end(kTwins));
                           std::erase_if(twins, [](const Twin& twin) { return twin.table == enInvoices; });
                           return twins;
                         }()),
                         [](const auto& suite) { return suite.param.name; });

TEST(DeleteTWRecord, Of_accounts_does_nothing_but_returns_True) {
  for (const auto table : kOtherTables) {
    DeletionHouse house;
    house.AddRow("AccountList", "AccountID", "A", "1-1");
    house.AddRow("VendorBill", "VendorBillID", "A", "1-1");
    EXPECT_TRUE(house.bridge->DeleteTWRecord(table, "1-1"));
    EXPECT_TRUE(BoxesAfterQuestion(house).empty());
    EXPECT_EQ(house.traffic.statements, Texts{"DELETE FROM  WHERE QBLinkID = '1-1';"});
    EXPECT_EQ(house.RowsOf("AccountList", "AccountID"), "A");
    EXPECT_EQ(house.RowsOf("VendorBill", "VendorBillID"), "A");
    EXPECT_EQ(Vars().g_CnRefCount, 0);
  }
}

TEST(DeleteTWRecord, Of_invoices_never_touches_the_database_and_says_what_to_do) {
  DeletionHouse house("connect 1 raise 0x80004005 \"Not to be opened\"");
  house.AddRow("TransactionTable", "TransactionID", "A", "1-1");
  EXPECT_TRUE(house.bridge->DeleteTWRecord(enInvoices, "1-1"));
  EXPECT_TRUE(house.traffic.statements.empty());
  EXPECT_EQ(house.RowsOf("TransactionTable", "TransactionID"), "A");
  ASSERT_EQ(house.desk.Boxes().size(), 2U);
  const auto& box = house.desk.Boxes()[1].box;
  EXPECT_EQ(box.text,
            "The associated Invoice in Tallywick can not be automatically\r\n"
            "deleted. Please reverse it from the Invoice Review screen in\r\n"
            "Tallywick\r\n");
  EXPECT_EQ(box.title, "Message");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}

TEST(DeleteTWRecord, Of_payments_takes_the_transaction_first_and_then_the_payment) {
  DeletionHouse house;
  house.AddRow("TransactionTable", "TransactionID", "A", "1-1");
  house.AddRow("Payment", "PayID", "A", "1-1");
  EXPECT_TRUE(house.bridge->DeleteTWRecord(enPayments, "1-1"));
  EXPECT_EQ(house.traffic.statements, (Texts{"DELETE FROM TransactionTable WHERE QBLinkID = '1-1';",
                                             "DELETE FROM Payment WHERE QBLinkID = '1-1';"}));
  EXPECT_EQ(house.RowsOf("TransactionTable", "TransactionID"), "NULL");
  EXPECT_EQ(house.RowsOf("Payment", "PayID"), "NULL");
}

TEST(DeleteTWRecord, Of_payments_takes_the_payment_even_when_the_transaction_can_not_go) {
  DeletionHouse house("sql 1 raise 0x80040E2F \"In use\" DELETE FROM TransactionTable");
  house.AddRow("TransactionTable", "TransactionID", "A", "1-1");
  house.AddRow("Payment", "PayID", "A", "1-1");
  EXPECT_TRUE(house.bridge->DeleteTWRecord(enPayments, "1-1"));
  EXPECT_EQ(house.RowsOf("TransactionTable", "TransactionID"), "A");
  EXPECT_EQ(house.RowsOf("Payment", "PayID"), "NULL");
  EXPECT_TRUE(BoxesAfterQuestion(house).empty());
}

TEST(DeleteTWRecord, Does_not_protect_a_quote_in_the_identifier_and_ignores_that_the_statement_fails) {
  for (const auto* id : {"1'1", "x' OR '1'='1"}) {
    DeletionHouse house;
    house.AddRow("Client", "ClientID", "A", "1''1");
    EXPECT_TRUE(house.bridge->DeleteTWRecord(enClients, id));
    EXPECT_TRUE(house.traffic.statements.empty()) << "it never reaches the database";
    EXPECT_EQ(house.RowsOf("Client", "ClientID"), "A");
    EXPECT_TRUE(BoxesAfterQuestion(house).empty());
  }
}

TEST(DeleteTWRecord, Is_True_even_when_the_database_can_not_be_opened) {
  DeletionHouse house("connect 1 raise 0x80004005 \"Locked\"");
  house.AddRow("Client", "ClientID", "A", "1-1");
  EXPECT_TRUE(house.bridge->DeleteTWRecord(enClients, "1-1"));
  EXPECT_EQ(house.RowsOf("Client", "ClientID"), "A");
  ASSERT_EQ(BoxesAfterQuestion(house).size(), 1U) << "of the one who opens";
  EXPECT_NE(BoxesAfterQuestion(house)[0].find("Locked has occurred"), std::string::npos);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

// --- In QuickBooks ---------------------------------------------------------------------------------------------------

class QuickBooksDeletion : public testing::TestWithParam<Twin> {};

TEST_P(QuickBooksDeletion, Deletes_the_record_by_its_type_and_identifier) {
  const auto& twin = GetParam();
  DeletionHouse house;
  const auto id = house.AddRecord(twin);
  ASSERT_TRUE(house.HasRecord(twin, id));
  EXPECT_TRUE(house.bridge->DeleteQBRecord(twin.table, id));
  EXPECT_FALSE(house.HasRecord(twin, id));
  const auto type = twin.IsTxn() ? "TxnDelType" : "ListDelType";
  EXPECT_EQ(house.Requests(twin.Request()),
            Texts{fmt::format("<{0}>{1}</{0}><{2}>{3}</{2}>", type, twin.wireType, twin.IdField(), id)});
  EXPECT_EQ(house.BoxTexts(), Texts{std::string(kAskQuickBooks)});
  EXPECT_TRUE(house.traffic.statements.empty());
}

TEST_P(QuickBooksDeletion, Of_a_record_that_is_gone_is_an_error_but_for_an_invoice) {
  const auto& twin = GetParam();
  DeletionHouse house;
  const auto id = house.AddRecord(twin);
  EXPECT_TRUE(house.bridge->DeleteQBRecord(twin.table, id));
  const bool isInvoice = twin.table == enInvoices;
  EXPECT_EQ(house.bridge->DeleteQBRecord(twin.table, id), isInvoice);
  const Texts asked(2, std::string(kAskQuickBooks));
  auto boxes = house.BoxTexts();
  if (!isInvoice) {
    EXPECT_EQ(boxes.back(), NotFoundText(id));
    EXPECT_EQ(house.desk.Boxes().back().box.title, "Error");
    EXPECT_EQ(house.desk.Boxes().back().box.icon, BoxIcon::Information);
    boxes.pop_back();
  }
  EXPECT_EQ(boxes, asked);
}

TEST_P(QuickBooksDeletion, Tells_any_other_status_and_is_False) {
  const auto& twin = GetParam();
  DeletionHouse house(twin.Request() + " 1 status 3160 Error \"It is in use.\"");
  const auto id = house.AddRecord(twin);
  EXPECT_FALSE(house.bridge->DeleteQBRecord(twin.table, id));
  EXPECT_TRUE(house.HasRecord(twin, id));
  EXPECT_EQ(BoxesAfterQuestion(house), Texts{RefusalText("It is in use.", 3160, "Error")});
}

INSTANTIATE_TEST_SUITE_P(DeleteQBRecord, QuickBooksDeletion, testing::ValuesIn(kTwins),
                         [](const auto& suite) { return suite.param.name; });

TEST(DeleteQBRecord, Of_the_same_invoice_twice_ends_in_success_and_of_a_payment_in_the_error_box) {
  DeletionHouse house;
  const auto invoice = house.AddRecord(TwinOf(enInvoices));
  const auto payment = house.AddRecord(TwinOf(enPayments));
  EXPECT_TRUE(house.bridge->DeleteQBRecord(enInvoices, invoice));
  EXPECT_TRUE(house.bridge->DeleteQBRecord(enInvoices, invoice));
  EXPECT_TRUE(house.bridge->DeleteQBRecord(enPayments, payment));
  EXPECT_EQ(house.BoxTexts(), Texts(3, std::string(kAskQuickBooks)));
  EXPECT_FALSE(house.bridge->DeleteQBRecord(enPayments, payment));
  EXPECT_EQ(house.BoxTexts().back(), NotFoundText(payment));
}

TEST(DeleteQBRecord, Of_a_record_in_use_is_refused_by_QuickBooks_and_keeps_it) {
  DeletionHouse house;
  (void)house.AddRecord(TwinOf(enInvoices));
  const auto client = house.ListIdOf("Acme");
  EXPECT_FALSE(house.bridge->DeleteQBRecord(enClients, client));
  EXPECT_EQ(house.ListIdOf("Acme"), client);
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_NE(house.BoxTexts()[1].find("\r\nError Code: 3160\r\n"), std::string::npos) << house.BoxTexts()[1];
}

TEST(DeleteQBRecord, Of_accounts_sends_an_empty_set) {
  for (const auto table : kOtherTables) {
    DeletionHouse house;
    EXPECT_FALSE(house.bridge->DeleteQBRecord(table, "1-1"));
    EXPECT_NE(house.traffic.documents.back().find("<QBXMLMsgsRq onError=\"continueOnError\"></QBXMLMsgsRq>"),
              std::string::npos)
        << house.traffic.documents.back();
    // It has no first response.
    EXPECT_EQ(BoxesAfterQuestion(house),
              Texts{"Error #: 91(5B) -- \r\n\r\nObject variable not set" + ErrorBoxEnd("DeleteQBRecord")});
  }
}

TEST(DeleteQBRecord, Reports_a_call_that_fails_under_its_name) {
  DeletionHouse house("DoRequests 2 raise 0x80040400 \"Not understood\"");
  EXPECT_FALSE(house.bridge->DeleteQBRecord(enClients, "1-1"));
  ASSERT_EQ(BoxesAfterQuestion(house).size(), 1U);
  EXPECT_NE(BoxesAfterQuestion(house)[0].find("Not understood" + ErrorBoxEnd("DeleteQBRecord")), std::string::npos);
}

// --- The call-back around a deletion ---------------------------------------------------------------------------------

class CallbackAroundDeletion : public testing::Test {
 protected:
  // As after a transfer, or a read of the property, that found a subscription.
  static void Subscribe(DeletionHouse& house) {
    EXPECT_TRUE(house.bridge->ConnectToQB(true));
    Vars().g_IsSubscribed = true;
    house.callback.Clear();
  }
};

TEST_F(CallbackAroundDeletion, Hears_the_identifier_before_and_is_let_go_after) {
  DeletionHouse house;
  Subscribe(house);
  const auto id = house.AddRecord(TwinOf(enClients));
  EXPECT_TRUE(house.bridge->DeleteQBRecord(enClients, id));
  EXPECT_EQ(house.callback.Events(), (Events{1, id, 0, std::string()}));
}

TEST_F(CallbackAroundDeletion, Keeps_the_identifier_when_QuickBooks_refuses) {
  DeletionHouse house;
  Subscribe(house);
  EXPECT_FALSE(house.bridge->DeleteQBRecord(enPayments, "1A-1204731000"));
  EXPECT_EQ(house.callback.Events(), (Events{1, std::string("1A-1204731000"), 0}));
}

TEST_F(CallbackAroundDeletion, Stays_in_its_mode_when_the_call_fails) {
  DeletionHouse house("DoRequests 2 raise 0x80040400 \"Not understood\"");
  Subscribe(house);
  EXPECT_FALSE(house.bridge->DeleteQBRecord(enClients, "1-1"));
  EXPECT_EQ(house.callback.Events(), (Events{1, std::string("1-1")}));
}

TEST_F(CallbackAroundDeletion, Held_by_a_transfer_that_failed_is_let_go_all_the_same) {
  DeletionHouse house;
  Subscribe(house);
  Vars().g_CallbackHeld = true;
  const auto id = house.AddRecord(TwinOf(enClients));
  EXPECT_TRUE(house.bridge->DeleteQBRecord(enClients, id));
  EXPECT_EQ(house.callback.Events(), (Events{0, std::string()}));
  EXPECT_TRUE(Vars().g_CallbackHeld);
}

TEST_F(CallbackAroundDeletion, Is_left_alone_without_a_subscription_and_before_version_3) {
  for (const bool subscribed : {false, true}) {
    DeletionHouse house;
    Subscribe(house);
    Vars().g_IsSubscribed = subscribed;
    if (subscribed) {
      Vars().g_QBMajorVer = 2;
      Vars().g_QBMinorVer = 1;
    }
    const auto id = house.AddRecord(TwinOf(enClients));
    EXPECT_TRUE(house.bridge->DeleteQBRecord(enClients, id));
    EXPECT_TRUE(house.callback.Events().empty());
    EXPECT_FALSE(Vars().g_QBCallback);
  }
}

TEST_F(CallbackAroundDeletion, Is_not_told_of_a_deletion_in_BillingDb) {
  DeletionHouse house;
  Subscribe(house);
  EXPECT_TRUE(house.bridge->DeleteTWRecord(enClients, "1-1"));
  EXPECT_TRUE(house.callback.Events().empty());
}

TEST_F(CallbackAroundDeletion, That_is_not_there_ends_it_before_anything_is_sent) {
  DeletionHouse house("callback 1 raise 429 create");
  Subscribe(house);
  const auto id = house.AddRecord(TwinOf(enClients));
  EXPECT_FALSE(house.bridge->DeleteQBRecord(enClients, id));
  EXPECT_TRUE(house.HasRecord(TwinOf(enClients), id));
  EXPECT_TRUE(house.Requests("ListDelRq").empty());
  EXPECT_NE(house.BoxTexts().back().find(ErrorBoxEnd("DeleteQBRecord")), std::string::npos);
}

TEST_F(CallbackAroundDeletion, That_fails_afterwards_is_ignored_each_time) {
  DeletionHouse house("callback 2 raise 75 mode");
  Subscribe(house);
  const auto id = house.AddRecord(TwinOf(enClients));
  EXPECT_TRUE(house.bridge->DeleteQBRecord(enClients, id));
  EXPECT_EQ(house.callback.Events(), (Events{1, id, std::string()}));
  EXPECT_TRUE(BoxesAfterQuestion(house).empty());
}

}  // namespace
}  // namespace twqb
