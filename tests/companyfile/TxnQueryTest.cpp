#include "TxnTest.h"

namespace twqb::company {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Numbers = std::vector<std::string>;

class TxnQuery : public TxnTest {
 protected:
  std::string Add(std::string_view refNumber, std::string_view customer, std::string_view date) {
    return IdOf(AddTxn("Invoice", Named("CustomerRef", customer) + Tag("TxnDate", date) + Tag("RefNumber", refNumber) +
                                      Tag("InvoiceLineAdd", Named("ItemRef", "Design"))));
  }
  Numbers Found(std::string_view conditions) { return QueryTxn("Invoice", conditions).All("RefNumber"); }
  Numbers FoundBetween(std::string_view from, std::string_view to) {
    return Found(Tag("RefNumberRangeFilter", Tag("FromRefNumber", from) + Tag("ToRefNumber", to)));
  }
};

TEST_F(TxnQuery, Of_an_empty_file_finds_nothing) {
  const auto answer = QueryTxn("Invoice", "");
  EXPECT_EQ(answer.code, 1);
  EXPECT_EQ(answer.severity, "Info");
  EXPECT_EQ(answer.message, "A query request did not find a matching object in QuickBooks");
}

TEST_F(TxnQuery, Answers_in_the_order_of_dates_and_on_one_day_of_entry) {
  Add("3", "Acme", "2008-03-02");
  Add("1", "Beta", "2008-03-01");
  Add("2", "Acme", "2008-03-01");
  Add("0", "Acme", "2007-12-31");
  EXPECT_THAT(Found(""), ElementsAre("0", "1", "2", "3"));
  EXPECT_THAT(Found(Tag("MaxReturned", "2")), ElementsAre("0", "1"));
  EXPECT_THAT(Found(Tag("MaxReturned", "0")), IsEmpty());
}

TEST_F(TxnQuery, By_identifier_finds_each_once_and_tells_the_first_that_is_not_there) {
  const auto late = Add("2", "Acme", "2008-03-02");
  const auto early = Add("1", "Acme", "2008-03-01");
  const auto memo = CreditMemo("Acme", "1.00");
  const auto ids = [](std::initializer_list<std::string> list) {
    std::string text;
    for (const auto& id : list) text += Tag("TxnID", id);
    return text;
  };
  EXPECT_THAT(Found(ids({late, early, late})), ElementsAre("1", "2"));
  const auto partly = QueryTxn("Invoice", ids({"FFFF-1", late, memo}));
  EXPECT_EQ(partly.code, 500);
  EXPECT_EQ(partly.severity, "Warn");
  EXPECT_EQ(
      partly.message,
      "The query request has not been fully completed.  There was a required element (\"FFFF-1\") that could not be "
      "found in QuickBooks.");
  EXPECT_THAT(partly.All("RefNumber"), ElementsAre("2"));
  EXPECT_EQ(QueryTxn("Invoice", ids({memo})).code, 500);
}

TEST_F(TxnQuery, By_reference_number_finds_all_that_have_it_without_case) {
  Add("A-1", "Acme", "2008-03-02");
  Add("a-1", "Beta", "2008-03-01");
  Add("A-2", "Beta", "2008-03-01");
  EXPECT_THAT(Found(Tag("RefNumber", "A-1")), ElementsAre("a-1", "A-1"));
  const auto partly = QueryTxn("Invoice", Tag("RefNumber", "A-2") + Tag("RefNumber", "A-3"));
  EXPECT_EQ(partly.code, 500);
  EXPECT_THAT(partly.All("RefNumber"), ElementsAre("A-2"));
}

TEST_F(TxnQuery, Matches_reference_numbers_at_their_start_their_end_or_anywhere) {
  for (const char* number : {"INV-10", "inv-11", "X10", "10"}) Add(number, "Acme", "2008-03-01");
  const auto match = [this](std::string_view criterion, std::string_view text) {
    return Found(Tag("RefNumberFilter", Tag("MatchCriterion", criterion) + Tag("RefNumber", text)));
  };
  EXPECT_THAT(match("StartsWith", "Inv"), ElementsAre("INV-10", "inv-11"));
  EXPECT_THAT(match("EndsWith", "10"), ElementsAre("INV-10", "X10", "10"));
  EXPECT_THAT(match("Contains", "V-1"), ElementsAre("INV-10", "inv-11"));
  EXPECT_THAT(match("EndsWith", "a longer text than any"), IsEmpty());
}

TEST_F(TxnQuery, Ranges_of_reference_numbers_count_and_are_inclusive) {
  for (const char* number : {"9", "10", "100", "A9", "A10"}) Add(number, "Acme", "2008-03-01");
  EXPECT_THAT(FoundBetween("9", "10"), ElementsAre("9", "10"));
  EXPECT_THAT(FoundBetween("a9", "A10"), ElementsAre("A9", "A10"));
  EXPECT_THAT(Found(Tag("RefNumberRangeFilter", Tag("FromRefNumber", "100"))), ElementsAre("100", "A9", "A10"));
  EXPECT_THAT(Found(Tag("RefNumberRangeFilter", Tag("ToRefNumber", "10"))), ElementsAre("9", "10"));
}

TEST_F(TxnQuery, Ranges_of_dates_are_inclusive_and_may_be_open_or_named) {
  Add("1", "Acme", "2008-02-29");
  Add("2", "Acme", "2008-03-01");
  Add("3", "Acme", "2008-03-31");
  Add("4", "Acme", "2008-04-01");
  const auto between = [this](std::string_view sides) { return Found(Tag("TxnDateRangeFilter", sides)); };
  EXPECT_THAT(between(Tag("FromTxnDate", "2008-03-01") + Tag("ToTxnDate", "2008-03-31")), ElementsAre("2", "3"));
  EXPECT_THAT(between(Tag("FromTxnDate", "2008-03-31")), ElementsAre("3", "4"));
  EXPECT_THAT(between(Tag("ToTxnDate", "2008-02-29")), ElementsAre("1"));
  EXPECT_THAT(between(Tag("DateMacro", "ThisMonth")), ElementsAre("2", "3"));
  EXPECT_THAT(between(Tag("DateMacro", "LastMonth")), ElementsAre("1"));
  EXPECT_THAT(between(Tag("DateMacro", "All")), ElementsAre("1", "2", "3", "4"));
}

TEST_F(TxnQuery, Times_of_change_are_standard_time_and_inclusive) {
  Add("1", "Acme", "2008-03-01");
  machine_.Pass(60);
  Add("2", "Acme", "2008-03-01");
  const auto modified = [this](std::string_view sides) { return Found(Tag("ModifiedDateRangeFilter", sides)); };
  EXPECT_THAT(modified(Tag("FromModifiedDate", "2008-03-05T10:01:00")), ElementsAre("2"));
  EXPECT_THAT(modified(Tag("FromModifiedDate", "2008-03-05T10:00:00+09:00")), ElementsAre("1", "2"));
  EXPECT_THAT(modified(Tag("ToModifiedDate", "2008-03-05T10:00:59")), ElementsAre("1"));
  EXPECT_THAT(modified(Tag("FromModifiedDate", "2008-03-05") + Tag("ToModifiedDate", "2008-03-05")),
              ElementsAre("1", "2"));
  EXPECT_THAT(modified(Tag("FromModifiedDate", "2008-03-06")), IsEmpty());
}

TEST_F(TxnQuery, Entities_are_named_one_by_one_or_with_everything_below) {
  Add("1", "Acme", "2008-03-01");
  Add("2", "Acme:Roof", "2008-03-01");
  Add("3", "Beta", "2008-03-01");
  const auto of = [this](std::string_view entities) { return Found(Tag("EntityFilter", entities)); };
  const auto acme = Send(QueryOf("Customer", Tag("FullName", "Acme"))).Value("ListID");
  const auto beta = Send(QueryOf("Customer", Tag("FullName", "Beta"))).Value("ListID");
  EXPECT_THAT(of(Tag("FullName", "acme")), ElementsAre("1"));
  EXPECT_THAT(of(Tag("FullName", "Acme") + Tag("FullName", "Beta")), ElementsAre("1", "3"));
  EXPECT_THAT(of(Tag("ListID", beta)), ElementsAre("3"));
  EXPECT_THAT(of(Tag("FullNameWithChildren", "Acme")), ElementsAre("1", "2"));
  EXPECT_THAT(of(Tag("ListIDWithChildren", acme)), ElementsAre("1", "2"));
  EXPECT_THAT(of(Tag("FullNameWithChildren", "Acme:Roof")), ElementsAre("2"));
  EXPECT_EQ(QueryTxn("Invoice", Tag("EntityFilter", Tag("FullName", "Nobody"))).code, 1);
  EXPECT_EQ(QueryTxn("Invoice", Tag("EntityFilter", Tag("FullNameWithChildren", "Nobody"))).code, 1);
}

TEST_F(TxnQuery, Time_is_found_by_who_worked) {
  for (const char* name : {"Ann Lee", "Vic", "Bob Ray"}) {
    IdOf(AddTxn("TimeTracking", Named("EntityRef", name) + Tag("Duration", "PT1H0M0S")));
  }
  const auto of = [this](std::string_view entities) {
    std::vector<std::string> names;
    const auto answer = QueryTxn("TimeTracking", Tag("TimeTrackingEntityFilter", entities));
    for (const auto record : answer.node.children()) {
      names.emplace_back(record.child("EntityRef").child("FullName").text().get());
    }
    return names;
  };
  EXPECT_THAT(of(Tag("FullName", "Vic") + Tag("FullName", "ann lee")), ElementsAre("Ann Lee", "Vic"));
}

TEST_F(TxnQuery, Accounts_are_those_that_a_transaction_stands_on) {
  const auto expense = Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "1.00"));
  AddTxn("Check", Named("AccountRef", "Checking") + Tag("RefNumber", "1") + expense);
  const auto on = [this](std::string_view account) {
    return QueryTxn("Check", Tag("AccountFilter", Tag("FullName", account))).All("RefNumber");
  };
  EXPECT_THAT(on("Checking"), ElementsAre("1"));
  EXPECT_THAT(on("Rent"), IsEmpty());
}

TEST_F(TxnQuery, Paid_ones_and_those_that_are_not_are_told_apart) {
  const auto paid = Add("1", "Acme", "2008-03-01");
  Add("2", "Acme", "2008-03-01");
  AddTxn("ReceivePayment", Named("CustomerRef", "Acme") + Tag("TotalAmount", "100.00") +
                               Tag("AppliedToTxnAdd", Tag("TxnID", paid) + Tag("PaymentAmount", "100.00")));
  EXPECT_THAT(Found(Tag("PaidStatus", "PaidOnly")), ElementsAre("1"));
  EXPECT_THAT(Found(Tag("PaidStatus", "NotPaidOnly")), ElementsAre("2"));
  EXPECT_THAT(Found(Tag("PaidStatus", "All")), ElementsAre("1", "2"));
}

TEST_F(TxnQuery, All_conditions_of_a_filter_hold_together) {
  Add("10", "Acme", "2008-03-01");
  Add("11", "Beta", "2008-03-01");
  Add("12", "Acme", "2008-02-01");
  Add("20", "Acme", "2008-03-01");
  Add("13", "Acme", "2008-03-02");
  EXPECT_THAT(Found(Tag("MaxReturned", "1") + Tag("TxnDateRangeFilter", Tag("FromTxnDate", "2008-03-01")) +
                    Tag("EntityFilter", Tag("FullName", "Acme")) +
                    Tag("AccountFilter", Tag("FullName", "Accounts Receivable")) +
                    Tag("RefNumberFilter", Tag("MatchCriterion", "StartsWith") + Tag("RefNumber", "1")) +
                    Tag("PaidStatus", "NotPaidOnly")),
              ElementsAre("10"));
}

TEST_F(TxnQuery, A_form_answers_what_it_knows_alone) {
  Add("1", "Acme", "2008-03-01");
  const auto old = QueryTxn("Invoice", Tag("IncludeLineItems", "true"), "1.0");
  EXPECT_EQ(old.code, 0);
  EXPECT_TRUE(old.Has("InvoiceLineRet/ItemRef"));
  EXPECT_TRUE(old.Has("SalesTaxTotal"));
  EXPECT_EQ(RefusalOfRequest(QueryOf("Invoice", Tag("IncludeLinkedTxns", "true")), "1.0"), kRefused);
  EXPECT_EQ(RefusalOfRequest(QueryOf("Invoice", Tag("IncludeLineItems", "true") + Tag("MaxReturned", "1"))), kRefused);
}

TEST_F(TxnQuery, What_was_written_before_the_file_was_opened_again_is_there) {
  const auto id = Add("1", "Acme:Roof", "2008-03-01");
  file_.emplace(path_, machine_);
  EXPECT_EQ(Field("Invoice", id, "CustomerRef/FullName"), "Acme:Roof");
  EXPECT_EQ(Add("2", "Acme", "2008-03-01"), "3-1204729200");
}

}  // namespace

}  // namespace twqb::company
