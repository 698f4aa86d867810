// Terms, types of customers and vendors, and templates: what a new file has of them, the one query for terms of either
// kind, and what transactions take from them.

#include <gmock/gmock.h>

#include "TxnTest.h"
#include "messages/Validation.h"

namespace twqb::company {

namespace {

using messages::Country;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ReferredLists : public TxnTest {
 protected:
  std::string AddDateDriven(const std::string& name, const std::string& fields) {
    const auto added = Send(AddOf("DateDrivenTerms", Tag("Name", name) + fields));
    EXPECT_EQ(added.code, 0) << added.message;
    return added.Value("ListID");
  }
  std::vector<std::string> Terms(const std::string& conditions = {}) {
    return Send(QueryOf("Terms", conditions)).All("Name");
  }
  // The day on which an invoice of that day is due.
  std::string DueOn(const std::string& date, const std::string& terms) {
    const auto added =
        AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("TxnDate", date) + Named("TermsRef", terms) + line_);
    EXPECT_EQ(added.code, 0) << added.message;
    EXPECT_EQ(added.Value("TermsRef/FullName"), terms);
    return added.Value("DueDate");
  }
  const std::string line_ = Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", "10.00"));
};

TEST_F(ReferredLists, Of_a_new_file_have_a_few_records_in_every_country) {
  for (const auto country : {Country::US, Country::CA, Country::UK, Country::AU}) {
    MakeFile({.country = country});
    const auto form = country == Country::AU ? Country::US : country;
    const auto tag = messages::FormTag({.country = form, .version = {3, 0}});
    const auto names = [&](const std::string& kind) { return Send(QueryOf(kind, ""), tag).All("Name"); };
    EXPECT_THAT(names("Terms"),
                ElementsAre("1% 10 Net 30", "2% 10 Net 30", "Due on receipt", "Net 15", "Net 30", "Net 60"));
    EXPECT_THAT(names("CustomerType"), ElementsAre("From advertisement", "Referral", "Retail", "Wholesale"));
    EXPECT_THAT(names("VendorType"), ElementsAre("Consultant", "Service Providers", "Suppliers", "Tax agency"));
    EXPECT_THAT(names("Template"), ElementsAre("Custom Credit Memo", "Custom Estimate", "Intuit Product Invoice",
                                               "Intuit Professional Invoice", "Intuit Service Invoice"));
  }
}

TEST_F(ReferredLists, A_template_tells_what_it_is_for_and_is_asked_for_among_all) {
  const auto all = Send("<TemplateQueryRq/>");
  EXPECT_THAT(all.All("TemplateType"), ElementsAre("CreditMemo", "Estimate", "Invoice", "Invoice", "Invoice"));
  EXPECT_EQ(RefusalOfRequest(QueryOf("Template", Tag("ActiveStatus", "All"))), kRefused);
  EXPECT_EQ(RefusalOfRequest(AddOf("Template", Tag("Name", "Mine"))), kRefused);
}

TEST_F(ReferredLists, One_query_answers_with_the_terms_of_either_kind_in_the_order_of_names) {
  const auto tenth = AddDateDriven("Net 10th", Tag("DayOfMonthDue", "10"));
  const auto all = Send(QueryOf("Terms", ""));
  EXPECT_THAT(all.All("Name"),
              ElementsAre("1% 10 Net 30", "2% 10 Net 30", "Due on receipt", "Net 10th", "Net 15", "Net 30", "Net 60"));
  std::vector<std::string> records;
  for (const auto node : all.node.children()) records.emplace_back(node.name());
  EXPECT_EQ(records[3], "DateDrivenTermsRet");
  EXPECT_EQ(records[4], "StandardTermsRet");
  for (const auto node : all.node.children()) {
    const auto& row = messages::FindMessage("TermsQuery")->response.front();
    const auto* record = messages::FindChild(row.Children(), node.name());
    EXPECT_THAT(messages::Validate(node, record->Children(), {}), IsEmpty()) << node.name();
  }
  const auto named = Send(QueryOf("Terms", Tag("FullName", "NET 30") + Tag("FullName", "net 10TH")));
  EXPECT_EQ(named.code, 0);
  EXPECT_THAT(named.All("Name"), ElementsAre("Net 10th", "Net 30"));
  EXPECT_EQ(Send(QueryOf("Terms", Tag("ListID", tenth))).Value("DayOfMonthDue"), "10");
  const auto incomplete = Send(QueryOf("Terms", Tag("FullName", "Net 15") + Tag("FullName", "Net 90")));
  EXPECT_EQ(incomplete.code, 500);
  EXPECT_THAT(incomplete.message, HasSubstr("\"Net 90\""));
  EXPECT_THAT(incomplete.All("Name"), ElementsAre("Net 15"));
}

TEST_F(ReferredLists, The_conditions_of_the_one_query_go_over_both_kinds) {
  AddDateDriven("Net 10th", Tag("IsActive", "false") + Tag("DayOfMonthDue", "10"));
  AddDateDriven("Net 20th", Tag("DayOfMonthDue", "20"));
  EXPECT_THAT(Terms(Tag("MaxReturned", "4")), ElementsAre("1% 10 Net 30", "2% 10 Net 30", "Due on receipt", "Net 15"));
  EXPECT_THAT(
      Terms(Tag("MaxReturned", "9") + Tag("NameFilter", Tag("MatchCriterion", "StartsWith") + Tag("Name", "net"))),
      ElementsAre("Net 15", "Net 20th", "Net 30", "Net 60"));
  EXPECT_THAT(Terms(Tag("ActiveStatus", "InactiveOnly")), ElementsAre("Net 10th"));
  EXPECT_EQ(Send(QueryOf("Terms", Tag("NameFilter", Tag("MatchCriterion", "Contains") + Tag("Name", "weeks")))).code,
            1);
}

TEST_F(ReferredLists, Terms_of_both_kinds_share_their_names) {
  EXPECT_EQ(Send(AddOf("DateDrivenTerms", Tag("Name", "net 30") + Tag("DayOfMonthDue", "10"))).code, 3100);
}

TEST_F(ReferredLists, Terms_that_no_calendar_has_are_refused) {
  const auto standard = [&](const std::string& fields) {
    return Send(AddOf("StandardTerms", Tag("Name", "Odd") + fields)).code;
  };
  EXPECT_EQ(standard(Tag("StdDueDays", "-1")), 3210);
  EXPECT_EQ(standard(Tag("StdDueDays", "30") + Tag("StdDiscountDays", "-5")), 3210);
  EXPECT_EQ(standard(Tag("StdDueDays", "30") + Tag("DiscountPct", "100.5")), 3210);
  const auto driven = [&](const std::string& day, const std::string& fields = {}) {
    return Send(AddOf("DateDrivenTerms", Tag("Name", "Odd") + Tag("DayOfMonthDue", day) + fields)).code;
  };
  EXPECT_EQ(driven("0"), 3210);
  EXPECT_EQ(driven("32"), 3210);
  EXPECT_EQ(driven("10", Tag("DueNextMonthDays", "-1")), 3210);
  EXPECT_EQ(driven("10", Tag("DiscountDayOfMonth", "32")), 3210);
  EXPECT_EQ(driven("31", Tag("DueNextMonthDays", "0") + Tag("DiscountDayOfMonth", "1") + Tag("DiscountPct", "100")), 0);
}

TEST_F(ReferredLists, A_due_date_behind_all_dates_is_refused) {
  EXPECT_EQ(DueOn("9999-11-01", "Net 60"), "9999-12-31");
  EXPECT_EQ(Send(AddOf("Invoice", Named("CustomerRef", "Acme") + Tag("TxnDate", "9999-11-02") +
                                      Named("TermsRef", "Net 60") + line_))
                .code,
            3180);
}

TEST_F(ReferredLists, A_record_that_is_referred_to_is_in_use) {
  const auto type = Send(QueryOf("CustomerType", Tag("FullName", "Retail"))).Value("ListID");
  const auto customer = Send(AddOf("Customer", Tag("Name", "Shop") + Named("CustomerTypeRef", "retail")));
  EXPECT_EQ(customer.Value("CustomerTypeRef/ListID"), type);
  EXPECT_EQ(customer.Value("CustomerTypeRef/FullName"), "Retail");
  const auto erase = [&] { return Send(Tag("ListDelRq", Tag("ListDelType", "CustomerType") + Tag("ListID", type))); };
  const auto id = customer.Value("ListID");
  EXPECT_EQ(erase().code, 3160);
  ASSERT_EQ(Modify(id, Named("CustomerTypeRef", "Referral")).code, 0);
  EXPECT_EQ(erase().code, 0);
  EXPECT_EQ(Modify(id, Tag("CustomerTypeRef", Tag("ListID", type))).code, 3240) << "it was there once";
}

TEST_F(ReferredLists, Standard_terms_make_an_invoice_due_days_behind_its_date) {
  EXPECT_EQ(DueOn("2008-02-20", "Net 15"), "2008-03-06");
  EXPECT_EQ(DueOn("2008-02-20", "Due on receipt"), "2008-02-20");
  EXPECT_EQ(DueOn("2008-02-20", "2% 10 Net 30"), "2008-03-21");
}

TEST_F(ReferredLists, Date_driven_terms_make_it_due_on_the_next_such_day_of_a_month) {
  AddDateDriven("10th", Tag("DayOfMonthDue", "10"));
  EXPECT_EQ(DueOn("2008-02-09", "10th"), "2008-02-10");
  EXPECT_EQ(DueOn("2008-02-10", "10th"), "2008-02-10");
  EXPECT_EQ(DueOn("2008-02-11", "10th"), "2008-03-10");
  EXPECT_EQ(DueOn("2008-12-11", "10th"), "2009-01-10");
  AddDateDriven("Last", Tag("DayOfMonthDue", "31"));
  EXPECT_EQ(DueOn("2008-02-03", "Last"), "2008-02-29");
  AddDateDriven("Not at once", Tag("DayOfMonthDue", "10") + Tag("DueNextMonthDays", "5"));
  EXPECT_EQ(DueOn("2008-02-04", "Not at once"), "2008-02-10");
  EXPECT_EQ(DueOn("2008-02-05", "Not at once"), "2008-03-10");
}

TEST_F(ReferredLists, A_due_date_that_is_given_stays_and_one_without_terms_is_the_day_itself) {
  const auto given = AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("TxnDate", "2008-02-20") +
                                           Named("TermsRef", "Net 15") + Tag("DueDate", "2008-02-25") + line_);
  EXPECT_EQ(given.Value("DueDate"), "2008-02-25");
  const auto none = AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("TxnDate", "2008-02-20") + line_);
  EXPECT_EQ(none.Value("DueDate"), "2008-02-20");
  EXPECT_FALSE(none.Has("TermsRef"));
}

TEST_F(ReferredLists, A_transaction_without_terms_has_those_of_its_customer_or_vendor) {
  Send(AddOf("Customer", Tag("Name", "Slow") + Named("TermsRef", "Net 60")));
  const auto sold = AddTxn("Invoice", Named("CustomerRef", "Slow") + Tag("TxnDate", "2008-02-01") + line_);
  EXPECT_EQ(sold.Value("TermsRef/FullName"), "Net 60");
  EXPECT_EQ(sold.Value("DueDate"), "2008-04-01");
  Send(AddOf("Vendor", Tag("Name", "Quick") + Named("TermsRef", "Net 15")));
  const auto bought = AddTxn("Bill", Named("VendorRef", "Quick") + Tag("TxnDate", "2008-02-01") +
                                         Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "5.00")));
  EXPECT_EQ(bought.Value("TermsRef/FullName"), "Net 15");
  EXPECT_EQ(bought.Value("DueDate"), "2008-02-16");
}

TEST_F(ReferredLists, A_template_is_for_transactions_of_its_kind) {
  const auto invoice = [&](const std::string& name) {
    return AddTxn("Invoice", Named("CustomerRef", "Acme") + Named("TemplateRef", name) + line_);
  };
  EXPECT_EQ(invoice("intuit service invoice").Value("TemplateRef/FullName"), "Intuit Service Invoice");
  const auto dead = invoice("Nobody's");
  EXPECT_EQ(dead.code, 3140);
  EXPECT_THAT(dead.message, HasSubstr("QuickBooks Template \"Nobody's\" in the invoice."));
  EXPECT_EQ(invoice("Custom Estimate").code, 3240);
  const auto line = Tag("EstimateLineAdd", Named("ItemRef", "Design") + Tag("Amount", "10.00"));
  EXPECT_EQ(AddTxn("Estimate", Named("CustomerRef", "Acme") + Named("TemplateRef", "Custom Estimate") + line).code, 0);
}

TEST_F(ReferredLists, Of_vendors_and_bills_are_looked_up_too) {
  EXPECT_EQ(Send(AddOf("Vendor", Tag("Name", "A") + Named("VendorTypeRef", "Suppliers"))).code, 0);
  EXPECT_EQ(Send(AddOf("Vendor", Tag("Name", "B") + Named("VendorTypeRef", "Retail"))).code, 3140);
  const auto bill = [&](const std::string& terms) {
    return AddTxn("Bill", Named("VendorRef", "Vic") + Named("TermsRef", terms) +
                              Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "5.00")));
  };
  EXPECT_EQ(bill("Net 30").code, 0);
  EXPECT_EQ(bill("Net 31").code, 3140);
}

}  // namespace

}  // namespace twqb::company
