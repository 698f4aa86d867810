// Names for identities to come.

#include "TxnTest.h"

namespace twqb::company {

namespace {

using testing::HasSubstr;

class Macro : public TxnTest {
 protected:
  // An Add of a kind under a macro.
  static std::string Defining(const std::string& macro, const std::string& kind, const std::string& fields) {
    return "<" + kind + "AddRq><" + kind + "Add defMacro=\"" + macro + "\">" + fields + "</" + kind + "Add></" + kind +
           "AddRq>";
  }
  static std::string InvoiceAs(const std::string& macro, const std::string& amount = "50.00") {
    return Defining(
        macro, "Invoice",
        Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", amount)));
  }
  static std::string Using(const std::string& macro, const std::string& content = {}) {
    return "<TxnID useMacro=\"" + macro + "\">" + content + "</TxnID>";
  }
  static std::string PaymentOf(const std::string& txnId, const std::string& more = Tag("PaymentAmount", "20.00")) {
    return AddOf("ReceivePayment",
                 Named("CustomerRef", "Acme") + Tag("TotalAmount", "20.00") + Tag("AppliedToTxnAdd", txnId + more));
  }
  std::string OpenOf(const std::string& txnId) {
    return QueryTxn("Invoice", Tag("TxnID", txnId)).Value("BalanceRemaining");
  }
};

TEST_F(Macro, An_identity_is_used_later_in_the_set_under_the_name_that_its_Add_gave_it) {
  const auto answers = SendAll(InvoiceAs("TxnID:bill") + PaymentOf(Using("TxnID:bill")));
  ASSERT_EQ(answers[0].code, 0) << answers[0].message;
  ASSERT_EQ(answers[1].code, 0) << answers[1].message;
  EXPECT_EQ(answers[1].Value("AppliedToTxnRet/TxnID"), answers[0].Value("TxnID"));
  EXPECT_EQ(OpenOf(answers[0].Value("TxnID")), "30.00");
}

TEST_F(Macro, White_space_in_an_element_that_uses_one_is_nothing_and_anything_else_is_no_document) {
  const auto invoice = IdOf(Send(InvoiceAs("TxnID:bill")));
  for (const auto* content : {" ", "\n\t  \n", "<!-- one -->", " <!-- one --> ", "<![CDATA[ ]]>"}) {
    const auto paid = Send(PaymentOf(Using("TxnID:bill", content), Tag("PaymentAmount", "5.00")));
    EXPECT_EQ(paid.code, 0) << content << paid.message;
    EXPECT_EQ(paid.Value("AppliedToTxnRet/TxnID"), invoice);
  }
  EXPECT_EQ(OpenOf(invoice), "25.00");
  for (const auto* content : {"x", " 1A-1204731000 ", "<Shoe/>", " <Shoe> </Shoe> ", "<![CDATA[ ]]>1", "<!-- one -->1",
                              "<![CDATA[ ]]>1A-1", " <![CDATA[x]]>"}) {
    EXPECT_EQ(RefusalOfRequest(PaymentOf(Using("TxnID:bill", content))), kRefused) << content;
  }
}

TEST_F(Macro, A_name_lasts_as_long_as_the_session) {
  const auto invoice = IdOf(Send(InvoiceAs("TxnID:1")));
  EXPECT_EQ(Send(PaymentOf(Using("TxnID:1"))).Value("AppliedToTxnRet/TxnID"), invoice);
  file_.emplace(path_, machine_);
  const auto refused = Send(PaymentOf(Using("TxnID:1")));
  EXPECT_EQ(refused.code, 9100);
  EXPECT_EQ(refused.message, "The macro \"TxnID:1\" has not been defined.");
}

TEST_F(Macro, A_credit_is_used_by_its_name_too) {
  const auto credit = Defining(
      "TxnID:credit", "CreditMemo",
      Named("CustomerRef", "Acme") + Tag("CreditMemoLineAdd", Named("ItemRef", "Design") + Tag("Amount", "10.00")));
  const auto answers =
      SendAll(InvoiceAs("TxnID:bill") + credit +
              PaymentOf(Using("TxnID:bill"), Tag("SetCredit", "<CreditTxnID useMacro=\"TxnID:credit\"></CreditTxnID>" +
                                                                  Tag("AppliedAmount", "10.00"))));
  ASSERT_EQ(answers[2].code, 0) << answers[2].message;
  EXPECT_EQ(OpenOf(answers[0].Value("TxnID")), "40.00");
}

TEST_F(Macro, An_Add_that_is_refused_defines_nothing) {
  const auto answers = SendAll(Defining("TxnID:a", "Invoice", Named("CustomerRef", "Nobody")) +
                               PaymentOf(Using("TxnID:a")) + InvoiceAs("TxnID:a") + PaymentOf(Using("TxnID:a")));
  EXPECT_EQ(answers[0].code, 3150);
  EXPECT_EQ(answers[1].code, 9100);
  EXPECT_EQ(answers[2].code, 0);
  EXPECT_EQ(answers[3].code, 0);
}

TEST_F(Macro, A_name_is_given_once_in_a_session_and_a_second_Add_under_it_does_nothing) {
  const auto answers = SendAll(InvoiceAs("TxnID:a") + InvoiceAs("TxnID:a"));
  EXPECT_EQ(answers[0].code, 0);
  EXPECT_EQ(answers[1].code, 9101);
  EXPECT_THAT(answers[1].message, HasSubstr("TxnID:a"));
  EXPECT_EQ(QueryTxn("Invoice", "").All("TxnID").size(), 1U);
}

TEST_F(Macro, A_name_of_a_document_that_failed_as_a_whole_is_not_known) {
  const auto nothing = AddOf(
      "Bill", Named("VendorRef", "Vic") + Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "0.00")));
  EXPECT_EQ(RefusalOfRequest(InvoiceAs("TxnID:a") + nothing), error::kRequestIncomplete);
  EXPECT_EQ(Send(PaymentOf(Using("TxnID:a"))).code, 9100);
  EXPECT_EQ(Send(InvoiceAs("TxnID:a")).code, 0);
}

TEST_F(Macro, Lines_may_be_named) {
  for (const auto* line : {"TxnLineID:1", "TxnLineID:2"}) {
    EXPECT_EQ(Send(AddOf("Invoice", Named("CustomerRef", "Acme") + "<InvoiceLineAdd defMacro=\"" + line + "\">" +
                                        Named("ItemRef", "Design") + Tag("Amount", "5.00") + "</InvoiceLineAdd>"))
                  .code,
              0);
  }
}

TEST_F(Macro, A_set_that_comes_again_defines_nothing_twice) {
  const auto document =
      "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\" "
      "newMessageSetID=\"X\">" +
      InvoiceAs("TxnID:a") + PaymentOf(Using("TxnID:a")) + "</QBXMLMsgsRq></QBXML>";
  for (int i = 0; i < 2; ++i) {
    text_ = file_->Process(document);
    for (const auto& answer : ReadAnswers("QBXMLMsgsRs")) EXPECT_EQ(answer.code, 0) << answer.message;
  }
  EXPECT_EQ(QueryTxn("Invoice", "").All("TxnID").size(), 1U);
}

TEST_F(Macro, Elsewhere_and_before_version_2_0_such_an_attribute_refuses_the_document) {
  EXPECT_EQ(RefusalOfRequest(InvoiceAs("TxnID:a"), "1.1"), kRefused);
  EXPECT_EQ(RefusalOfRequest(PaymentOf(Using("TxnID:a", "1-1"))), kRefused) << "a name and an identifier";
  EXPECT_EQ(RefusalOfRequest(InvoiceAs("")), kRefused);
  EXPECT_EQ(RefusalOfRequest("<CustomerAddRq><CustomerAdd defMacro=\"ListID:a\"><Name>A</Name></CustomerAdd>"
                             "</CustomerAddRq>"),
            kRefused);
  EXPECT_EQ(RefusalOfRequest(QueryOf("Invoice", Using("TxnID:a"))), kRefused);
  EXPECT_EQ(RefusalOfRequest("<TxnDelRq><TxnDelType>Invoice</TxnDelType>" + Using("TxnID:a") + "</TxnDelRq>"),
            kRefused);
  EXPECT_EQ(RefusalOfRequest("<InvoiceAddRq defMacro=\"TxnID:a\"/>"), kRefused);
}

}  // namespace

}  // namespace twqb::company
