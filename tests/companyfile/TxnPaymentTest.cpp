#include "TxnTest.h"

namespace twqb::company {

namespace {

using testing::ElementsAre;

class Payment : public TxnTest {
 protected:
  static std::string Applied(std::string_view txnId, std::string_view parts) {
    return Tag("AppliedToTxnAdd", Tag("TxnID", txnId) + std::string(parts));
  }
  static std::string Paid(std::string_view txnId, std::string_view amount) {
    return Applied(txnId, Tag("PaymentAmount", amount));
  }
  static std::string Discount(std::string_view amount) {
    return Tag("DiscountAmount", amount) + Named("DiscountAccountRef", "Rent");
  }
  static std::string Credit(std::string_view txnId, std::string_view amount) {
    return Tag("SetCredit", Tag("CreditTxnID", txnId) + Tag("AppliedAmount", amount));
  }
  Answer Pay(std::string_view customer, std::string_view total, std::string_view rest) {
    return AddTxn("ReceivePayment", Named("CustomerRef", customer) +
                                        (total.empty() ? std::string{} : Tag("TotalAmount", total)) +
                                        std::string(rest));
  }
  std::string Open(std::string_view invoice) { return Field("Invoice", invoice, "BalanceRemaining"); }
  // AppliedAmount, BalanceRemaining and IsPaid of an invoice.
  std::vector<std::string> Settled(std::string_view invoice) {
    const auto answer = QueryTxn("Invoice", Tag("TxnID", invoice));
    return {answer.Value("AppliedAmount"), answer.Value("BalanceRemaining"), answer.Value("IsPaid")};
  }
};

TEST_F(Payment, Lowers_what_is_open_of_the_invoice_that_it_names) {
  const auto invoice = Invoice("Acme:Roof", "100.00", Tag("RefNumber", "17"));
  EXPECT_THAT(Settled(invoice), ElementsAre("0.00", "100.00", "false"));
  const auto first = Pay("Acme:Roof", "30.00", Paid(invoice, "30.00"));
  ASSERT_EQ(first.code, 0) << first.message;
  EXPECT_EQ(first.Value("UnusedPayment"), "0.00");
  EXPECT_EQ(first.Value("AppliedToTxnRet/TxnID"), invoice);
  EXPECT_EQ(first.Value("AppliedToTxnRet/TxnType"), "Invoice");
  EXPECT_EQ(first.Value("AppliedToTxnRet/RefNumber"), "17");
  EXPECT_EQ(first.Value("AppliedToTxnRet/Amount"), "30.00");
  EXPECT_EQ(first.Value("AppliedToTxnRet/BalanceRemaining"), "70.00");
  EXPECT_FALSE(first.Has("AppliedToTxnRet/DiscountAmount"));
  EXPECT_THAT(Settled(invoice), ElementsAre("-30.00", "70.00", "false"));
  EXPECT_EQ(Pay("Acme:Roof", "70.00", Paid(invoice, "70.00")).code, 0);
  EXPECT_THAT(Settled(invoice), ElementsAre("-100.00", "0.00", "true"));
  EXPECT_EQ(CustomerField("Acme:Roof", "Balance"), "0.00");
  EXPECT_EQ(Balance("Account", "Accounts Receivable"), "0.00");
  EXPECT_EQ(Balance("Account", "Undeposited Funds"), "100.00");
}

TEST_F(Payment, Of_more_than_is_due_is_refused_and_changes_nothing) {
  const auto invoice = Invoice("Acme", "129.42");
  const auto refused = Pay("Acme", "129.43", Paid(invoice, "129.43"));
  EXPECT_EQ(refused.code, 3210);
  EXPECT_EQ(refused.severity, "Error");
  EXPECT_EQ(refused.message,
            "The \"AppliedToTxnAdd payment amount\" field has an invalid value \"129.43\".  QuickBooks error message: "
            "You cannot pay more "
            "than the amount due.");
  EXPECT_FALSE(refused.node.first_child());
  EXPECT_EQ(Open(invoice), "129.42");
  EXPECT_EQ(Balance("Customer", "Acme"), "129.42");
  EXPECT_EQ(QueryTxn("ReceivePayment", "").code, 1);
  EXPECT_EQ(Pay("Acme", "129.42", Paid(invoice, "129.42")).code, 0);
}

TEST_F(Payment, Of_more_than_was_received_is_refused) {
  const auto a = Invoice("Acme", "50.00");
  const auto b = Invoice("Acme", "50.00");
  EXPECT_EQ(Pay("Acme", "80.00", Paid(a, "50.00") + Paid(b, "30.01")).code, 3210);
  EXPECT_EQ(Open(a), "50.00");
  EXPECT_EQ(Pay("Acme", "80.00", Paid(a, "50.00") + Paid(b, "30.00")).code, 0);
  EXPECT_EQ(Open(b), "20.00");
}

TEST_F(Payment, Named_twice_for_one_invoice_counts_twice) {
  const auto invoice = Invoice("Acme", "50.00");
  EXPECT_EQ(Pay("Acme", "60.00", Paid(invoice, "30.00") + Paid(invoice, "30.00")).code, 3210);
  EXPECT_EQ(Pay("Acme", "50.00", Paid(invoice, "30.00") + Paid(invoice, "20.00")).code, 0);
  EXPECT_EQ(Open(invoice), "0.00");
}

TEST_F(Payment, Without_a_total_is_as_much_as_it_pays) {
  const auto invoice = Invoice("Acme", "50.00");
  EXPECT_EQ(Pay("Acme", "", Paid(invoice, "30.00")).Value("TotalAmount"), "30.00");
}

TEST_F(Payment, Keeps_what_it_does_not_apply) {
  const auto invoice = Invoice("Acme", "50.00");
  const auto paid = Pay("Acme", "80.00", Paid(invoice, "50.00"));
  EXPECT_EQ(paid.Value("UnusedPayment"), "30.00");
  EXPECT_EQ(Balance("Customer", "Acme"), "-30.00");
}

TEST_F(Payment, By_a_discount_needs_no_money_but_an_account) {
  const auto invoice = Invoice("Acme", "50.00");
  EXPECT_EQ(Pay("Acme", "", Applied(invoice, Tag("DiscountAmount", "5.00"))).code, 3150);
  EXPECT_EQ(Pay("Acme", "", Applied(invoice, Discount("50.01"))).code, 3210);
  const auto paid = Pay("Acme", "", Applied(invoice, Discount("5.00")));
  ASSERT_EQ(paid.code, 0) << paid.message;
  EXPECT_EQ(paid.Value("TotalAmount"), "0.00");
  EXPECT_EQ(paid.Value("AppliedToTxnRet/Amount"), "0.00");
  EXPECT_EQ(paid.Value("AppliedToTxnRet/DiscountAmount"), "5.00");
  EXPECT_EQ(paid.Value("AppliedToTxnRet/DiscountAccountRef/FullName"), "Rent");
  EXPECT_EQ(Open(invoice), "45.00");
  EXPECT_EQ(Balance("Customer", "Acme"), "45.00");
  EXPECT_EQ(Pay("Acme", "40.00", Applied(invoice, Tag("PaymentAmount", "40.00") + Discount("5.01"))).code, 3210);
  EXPECT_EQ(Pay("Acme", "40.00", Applied(invoice, Tag("PaymentAmount", "40.00") + Discount("5.00"))).code, 0);
  EXPECT_EQ(Open(invoice), "0.00");
  const auto rent = Send(QueryOf("Account", Tag("FullName", "Rent"))).Value("ListID");
  EXPECT_EQ(Send(Tag("ListDelRq", Tag("ListDelType", "Account") + Tag("ListID", rent))).code, 3160);
}

TEST_F(Payment, Applied_by_itself_settles_the_oldest_first_for_the_jobs_too) {
  const auto late = Invoice("Acme", "50.00", Tag("TxnDate", "2008-02-03"));
  const auto early = Invoice("Acme:Roof", "20.00", Tag("TxnDate", "2008-02-01"));
  const auto middle = Invoice("Acme", "30.00", Tag("TxnDate", "2008-02-02"));
  const auto other = Invoice("Beta", "30.00", Tag("TxnDate", "2008-01-01"));
  const auto paid = Pay("Acme", "60.00", Tag("IsAutoApply", "true"));
  EXPECT_EQ(paid.Value("UnusedPayment"), "0.00");
  EXPECT_THAT((std::vector{Open(early), Open(middle), Open(late), Open(other)}),
              ElementsAre("0.00", "0.00", "40.00", "30.00"));
  EXPECT_EQ(CustomerField("Acme:Roof", "Balance"), "0.00");
  EXPECT_EQ(CustomerField("Acme", "Balance"), "40.00");
  EXPECT_EQ(Pay("Acme", "100.00", Tag("IsAutoApply", "true")).Value("UnusedPayment"), "60.00");
  EXPECT_EQ(Pay("Acme", "5.00", Tag("IsAutoApply", "true")).Value("UnusedPayment"), "5.00");
}

TEST_F(Payment, Not_applied_leaves_invoices_as_they_are) {
  const auto invoice = Invoice("Acme", "50.00");
  const auto paid = Pay("Acme", "50.00", Tag("IsAutoApply", "false"));
  EXPECT_EQ(paid.Value("UnusedPayment"), "50.00");
  EXPECT_FALSE(paid.Has("AppliedToTxnRet"));
  EXPECT_EQ(Open(invoice), "50.00");
  EXPECT_EQ(Balance("Customer", "Acme"), "0.00");
}

TEST_F(Payment, Says_how_it_is_applied) {
  const auto lacking = Pay("Acme", "50.00", "");
  EXPECT_EQ(lacking.code, 3150);
  EXPECT_EQ(Pay("Acme", "50.00", Applied(Invoice("Acme", "50.00"), "")).code, 3150);
}

TEST_F(Payment, Is_for_an_invoice_that_is_there_and_the_payer_s) {
  const auto job = Invoice("Acme:Roof", "50.00");
  const auto customer = Invoice("Acme", "50.00");
  const auto beta = Invoice("Beta", "50.00");
  const auto pending = Invoice("Acme", "50.00", Tag("IsPending", "true"));
  EXPECT_EQ(Pay("Acme", "5.00", Paid("FFFF-1", "5.00")).code, 3120);
  EXPECT_EQ(Pay("Acme", "5.00", Paid(beta, "5.00")).code, 3120);
  EXPECT_EQ(Pay("Acme:Roof", "5.00", Paid(customer, "5.00")).code, 3120);
  EXPECT_EQ(Pay("Acme", "5.00", Paid(pending, "5.00")).code, 3120);
  EXPECT_EQ(Pay("Acme", "5.00", Paid(CreditMemo("Acme", "9.00"), "5.00")).code, 3240);
  EXPECT_EQ(Pay("Acme", "5.00", Paid(job, "5.00")).code, 0);
  EXPECT_EQ(Open(job), "45.00");
}

TEST_F(Payment, Is_on_the_account_of_its_invoice) {
  Send(AddOf("Account", Tag("Name", "Claims") + Tag("AccountType", "AccountsReceivable")));
  Invoice("Acme", "1.00");
  const auto invoice = Invoice("Acme", "50.00", Named("ARAccountRef", "Claims"));
  Invoice("Acme", "50.00", Named("ARAccountRef", "Claims"));
  const auto on = [&](std::string_view account) {
    return AddTxn("ReceivePayment", Named("CustomerRef", "Acme") + Named("ARAccountRef", account) +
                                        Tag("TotalAmount", "5.00") + Paid(invoice, "5.00"))
        .code;
  };
  Send(AddOf("Account", Tag("Name", "Others") + Tag("AccountType", "AccountsReceivable")));
  EXPECT_EQ(on("Others"), 3120);
  EXPECT_EQ(on("Sales"), 3240);
  EXPECT_EQ(on("Claims"), 0);
}

TEST_F(Payment, Uses_credits_of_the_customer) {
  const auto invoice = Invoice("Acme", "50.00");
  const auto memo = CreditMemo("Acme", "20.00");
  EXPECT_EQ(Pay("Acme", "30.00", Applied(invoice, Tag("PaymentAmount", "30.00") + Credit(memo, "20.01"))).code, 3210);
  EXPECT_EQ(Pay("Acme", "40.00", Applied(invoice, Tag("PaymentAmount", "40.00") + Credit(memo, "10.01"))).code, 3210);
  EXPECT_EQ(Pay("Acme", "0.00", Applied(invoice, Credit(CreditMemo("Beta", "5.00"), "5.00"))).code, 3120);
  EXPECT_EQ(Pay("Acme", "0.00", Applied(invoice, Credit(invoice, "5.00"))).code, 3240);
  const auto id = IdOf(Pay("Acme", "30.00", Applied(invoice, Tag("PaymentAmount", "30.00") + Credit(memo, "15.00"))));
  EXPECT_EQ(Open(invoice), "5.00");
  EXPECT_EQ(Field("CreditMemo", memo, "CreditRemaining"), "5.00");
  EXPECT_EQ(Field("CreditMemo", memo, "TotalAmount"), "20.00");
  EXPECT_EQ(Balance("Customer", "Acme"), "0.00");
  EXPECT_EQ(Delete("CreditMemo", memo).code, 3160);
  EXPECT_EQ(Delete("ReceivePayment", id).code, 0);
  EXPECT_EQ(Field("CreditMemo", memo, "CreditRemaining"), "20.00");
  EXPECT_EQ(Open(invoice), "50.00");
}

TEST_F(Payment, Negative_amounts_are_refused) {
  const auto invoice = Invoice("Acme", "50.00");
  EXPECT_EQ(Pay("Acme", "-5.00", Tag("IsAutoApply", "false")).code, 3210);
  EXPECT_EQ(Pay("Acme", "5.00", Paid(invoice, "-5.00")).code, 3210);
  EXPECT_EQ(Pay("Acme", "5.00", Applied(invoice, Discount("-5.00"))).code, 3210);
}

TEST_F(Payment, Keeps_its_invoice_from_being_deleted_and_gives_everything_back_when_it_goes) {
  const auto invoice = Invoice("Acme:Roof", "50.00");
  const auto id = IdOf(Pay("Acme", "60.00", Applied(invoice, Tag("PaymentAmount", "40.00") + Discount("5.00"))));
  EXPECT_EQ(CustomerField("Acme", "TotalBalance"), "-15.00");
  EXPECT_EQ(CustomerField("Acme:Roof", "Balance"), "5.00");
  const auto refused = Delete("Invoice", invoice);
  EXPECT_EQ(refused.code, 3160);
  EXPECT_EQ(Open(invoice), "5.00");
  EXPECT_EQ(Delete("ReceivePayment", id).code, 0);
  EXPECT_THAT(Settled(invoice), ElementsAre("0.00", "50.00", "false"));
  EXPECT_EQ(CustomerField("Acme", "TotalBalance"), "50.00");
  EXPECT_EQ(Balance("Account", "Accounts Receivable"), "50.00");
  EXPECT_EQ(Balance("Account", "Undeposited Funds"), "0.00");
  EXPECT_EQ(Delete("Invoice", invoice).code, 0);
  EXPECT_EQ(CustomerField("Acme", "TotalBalance"), "0.00");
}

TEST_F(Payment, Changes_the_time_and_the_edit_sequence_of_its_invoice) {
  const auto invoice = Invoice("Acme", "50.00");
  const auto before = Field("Invoice", invoice, "EditSequence");
  machine_.Pass(60);
  Pay("Acme", "5.00", Paid(invoice, "5.00"));
  EXPECT_EQ(Field("Invoice", invoice, "TimeModified"), "2008-03-05T10:01:00-05:00");
  const auto after = Field("Invoice", invoice, "EditSequence");
  EXPECT_EQ(std::stoll(after), std::stoll(before) + 60);
  Pay("Acme", "5.00", Paid(invoice, "5.00"));
  EXPECT_EQ(std::stoll(Field("Invoice", invoice, "EditSequence")), std::stoll(after) + 1);
}

TEST_F(Payment, Is_a_link_of_its_invoice_when_links_are_asked_for) {
  const auto invoice = Invoice("Acme", "50.00");
  const auto id = IdOf(Pay("Acme", "5.00", Paid(invoice, "5.00")));
  EXPECT_FALSE(QueryTxn("Invoice", "").Has("LinkedTxn"));
  const auto linked = QueryTxn("Invoice", Tag("IncludeLinkedTxns", "true"));
  EXPECT_EQ(linked.Value("LinkedTxn/TxnID"), id);
  EXPECT_EQ(linked.Value("LinkedTxn/TxnType"), "ReceivePayment");
  EXPECT_EQ(linked.Value("LinkedTxn/LinkType"), "AMTTYPE");
  EXPECT_EQ(linked.Value("LinkedTxn/Amount"), "-5.00");
}

}  // namespace

}  // namespace twqb::company
