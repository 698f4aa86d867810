// Texts and fields as captured answers have them: what messages call a field, numbers that nobody gave, what is left of
// credits.

#include "FileSql.h"
#include "TxnTest.h"
#include "adapters/companyfile/RefNumbers.h"

namespace twqb::company {

namespace {

class Captured : public TxnTest {
 protected:
  // The reference number of an Add without one.
  std::string Numbered(const std::string& kind, const std::string& more = {}) {
    const auto line = Tag(kind + "LineAdd", Named("ItemRef", "Design") + Tag("Amount", "5.00"));
    const auto answer = AddTxn(kind, Named("CustomerRef", "Acme") + more + line);
    EXPECT_EQ(answer.code, 0) << answer.message;
    return answer.Value("RefNumber");
  }
  static std::string Number(const std::string& text) { return Tag("RefNumber", text); }
};

TEST_F(Captured, Two_blanks_stand_between_the_sentences_of_a_message) {
  EXPECT_EQ(Send(QueryOf("Customer", Tag("FullName", "Nobody"))).message,
            "The query request has not been fully completed.  There was a required element (\"Nobody\") that could not "
            "be found in QuickBooks.");
  EXPECT_EQ(Send("<ListDelRq><ListDelType>Customer</ListDelType><ListID>8000FFFF-1</ListID></ListDelRq>").message,
            "Object \"8000FFFF-1\" specified in the request cannot be found.  QuickBooks error message: Invalid "
            "argument.  The specified record does not exist in the list.");
}

TEST_F(Captured, Identifiers_and_names_are_called_by_words) {
  EXPECT_EQ(Send(QueryOf("Invoice", Tag("TxnID", "x"))).message,
            "The given object ID \"x\" in the field \"txn id\" is invalid.");
  EXPECT_EQ(Send(AddOf("Vendor", Tag("Name", "A:B"))).message,
            "There was an error when storing \"A:B\" in the \"vendor name\" field.  QuickBooks error message: Names in "
            "this list cannot contain a colon.");
}

TEST_F(Captured, A_reference_in_a_line_is_told_by_the_name_of_the_line) {
  const auto expected = [](const std::string& line) {
    return "There is an invalid reference to QuickBooks Item \"X\" in the " + line +
           ".  QuickBooks error message: Invalid argument.  The specified record does not exist in the list.";
  };
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "X"))).message,
            expected("invoice line"));
  EXPECT_EQ(Send(AddOf("ItemGroup", Tag("Name", "Set") + Tag("ItemGroupLine", Named("ItemRef", "X")))).message,
            expected("item group line"));
}

TEST_F(Captured, A_percentage_of_tax_has_two_decimals) {
  const auto sale = [this](const std::string& more) {
    return AddTxn("Invoice", Named("CustomerRef", "Acme") + more +
                                 Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", "5.00")))
        .Value("SalesTaxPercentage");
  };
  EXPECT_EQ(sale(""), "0.00");
  EXPECT_EQ(sale(Named("ItemSalesTaxRef", "County")), "8.25");
  AddTxn("ItemSalesTax", Tag("Name", "Round") + Tag("TaxRate", "7"));
  AddTxn("ItemSalesTax", Tag("Name", "Fine") + Tag("TaxRate", "7.125"));
  EXPECT_EQ(sale(Named("ItemSalesTaxRef", "Round")), "7.00");
  EXPECT_EQ(sale(Named("ItemSalesTaxRef", "Fine")), "7.125");
}

TEST_F(Captured, A_payment_tells_what_is_left_of_the_payer_s_credits) {
  const auto invoice = Invoice("Acme", "50.00");
  const auto pay = [&] {
    return AddTxn("ReceivePayment", Named("CustomerRef", "Acme") + Tag("TotalAmount", "5.00") +
                                        Tag("AppliedToTxnAdd", Tag("TxnID", invoice) + Tag("PaymentAmount", "5.00")));
  };
  EXPECT_EQ(pay().Value("UnusedCredits"), "0.00");
  CreditMemo("Acme", "20.00");
  CreditMemo("Beta", "7.00");
  const auto payment = pay();
  EXPECT_EQ(payment.Value("UnusedCredits"), "20.00");
  EXPECT_EQ(QueryTxn("ReceivePayment", Tag("TxnID", payment.Value("TxnID"))).Value("UnusedCredits"), "20.00");
}

// --- Reference numbers -----------------------------------------------------------------------------------------------

TEST_F(Captured, A_number_that_is_left_out_is_the_one_behind_the_last) {
  EXPECT_EQ(Numbered("Invoice"), "1");
  EXPECT_EQ(Numbered("Invoice"), "2");
  EXPECT_EQ(Numbered("Invoice", Number("A-099")), "A-099");
  EXPECT_EQ(Numbered("Invoice"), "A-100");
}

TEST_F(Captured, Invoices_and_credit_memos_are_numbered_together_and_estimates_by_themselves) {
  EXPECT_EQ(Numbered("Invoice"), "1");
  EXPECT_EQ(Numbered("CreditMemo"), "2");
  EXPECT_EQ(Numbered("Estimate"), "1");
  EXPECT_EQ(Numbered("Invoice"), "3");
}

TEST_F(Captured, A_number_that_is_given_empty_stays_so_and_is_not_counted) {
  EXPECT_EQ(Numbered("Invoice", Number("7")), "7");
  EXPECT_EQ(Numbered("Invoice", Number("")), "");
  EXPECT_EQ(Numbered("Invoice"), "8");
}

TEST_F(Captured, An_invoice_that_is_refused_uses_up_no_number) {
  EXPECT_EQ(Numbered("Invoice"), "1");
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme") +
                                  Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", "-5.00")))
                .code,
            3180);
  EXPECT_EQ(Numbered("Invoice"), "2");
}

TEST_F(Captured, A_file_of_the_second_format_goes_on_with_the_numbers_that_were_given_in_it) {
  Numbered("Invoice", Number("17"));
  Numbered("Estimate", Number("E-4"));
  Numbered("CreditMemo", Number("18"));
  Numbered("CreditMemo", Number(""));
  const auto methods = Send(QueryOf("PaymentMethod", "")).All("Name");
  file_.reset();
  RunSql(path_, kWithoutListsOfFourthFormat);
  RunSql(path_, "DROP TABLE ref_number; DROP TABLE message_set; DROP TABLE billed_line; PRAGMA user_version = 2");
  file_.emplace(path_, machine_);
  EXPECT_EQ(Numbered("Invoice"), "19");
  EXPECT_EQ(Numbered("Estimate"), "E-5");
  EXPECT_EQ(Send(QueryOf("PaymentMethod", "")).All("Name"), methods);
}

TEST_F(Captured, Payments_bills_and_time_have_no_number_of_their_own) {
  EXPECT_EQ(
      AddTxn("ReceivePayment", Named("CustomerRef", "Acme") + Tag("TotalAmount", "5.00") + Tag("IsAutoApply", "false"))
          .Value("RefNumber"),
      "");
  EXPECT_EQ(AddTxn("Bill", Named("VendorRef", "Vic") +
                               Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "5.00")))
                .Value("RefNumber"),
            "");
}

TEST(RefNumbers, The_next_one_counts_the_digits_at_the_end) {
  EXPECT_EQ(NextRefNumber(""), "1");
  EXPECT_EQ(NextRefNumber("7"), "8");
  EXPECT_EQ(NextRefNumber("9"), "10");
  EXPECT_EQ(NextRefNumber("007"), "008");
  EXPECT_EQ(NextRefNumber("A-9"), "A-10");
  EXPECT_EQ(NextRefNumber("9A"), "1");
  EXPECT_EQ(NextRefNumber("9999999999"), "10000000000");
  EXPECT_EQ(NextRefNumber("99999999999"), "") << "it has no room";
}

}  // namespace

}  // namespace twqb::company
