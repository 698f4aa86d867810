// What a snapshot makes of answers that the embedded company file never gives: records of kinds that it does not keep,
// names that it would not take twice, kinds that are closed, and a QuickBooks that does not answer.

#include "tests/snapshot/ScriptedQuickBooks.h"

namespace twqb::snapshot {
namespace {

TEST_F(CompanySnapshot, Keeps_identifiers_times_sequences_and_balances_as_they_were_told) {
  session_.records["Customer"] = Customer("A0000-1", "Abbott");
  Read();
  const auto answer = Ask("<CustomerQueryRq/>");
  ExpectHas(answer, "<ListID>A0000-1</ListID>" + std::string(kTimes));
  ExpectHas(answer, "<Balance>12.50</Balance><TotalBalance>40.00</TotalBalance>");
}

TEST_F(CompanySnapshot, Asks_one_question_a_kind) {
  Read();
  std::map<std::string, int> times;
  for (const auto& kind : session_.asked) ++times[kind];
  for (const auto* kind : {"Customer", "Invoice", "TimeTracking", "OtherName", "Preferences", "Host"}) {
    EXPECT_EQ(times[kind], 1) << kind;
  }
  EXPECT_EQ(times["TaxCode"], 0);  // of other countries
}

TEST_F(CompanySnapshot, Tells_references_to_what_it_does_not_keep_by_the_names_that_they_had) {
  session_.records["Customer"] =
      Customer("A0000-1", "Abbott", "<SalesRepRef><ListID>B-1</ListID><FullName>JK</FullName></SalesRepRef>");
  session_.records["Invoice"] =
      "<InvoiceRet><TxnID>1A-1</TxnID>" + std::string(kTimes) +
      "<TxnNumber>31</TxnNumber><CustomerRef><ListID>A0000-1</ListID><FullName>Abbott</FullName></CustomerRef>"
      "<TxnDate>2008-01-02</TxnDate><RefNumber>1041</RefNumber><AppliedAmount>-30.00</AppliedAmount>"
      "<BalanceRemaining>70.00</BalanceRemaining><IsPaid>false</IsPaid>"
      "<LinkedTxn><TxnID>9F-1</TxnID><TxnType>JournalEntry</TxnType><TxnDate>2008-01-03</TxnDate>"
      "<Amount>-30.00</Amount></LinkedTxn>"
      "<InvoiceLineRet><TxnLineID>1B-1</TxnLineID><ItemRef><ListID>D-1</ListID><FullName>Rebate</FullName></ItemRef>"
      "<Amount>100.00</Amount></InvoiceLineRet></InvoiceRet>";
  Read();
  ExpectHas(Ask("<CustomerQueryRq/>"), "<SalesRepRef><ListID>B-1</ListID><FullName>JK</FullName></SalesRepRef>");
  const auto invoice =
      Ask("<InvoiceQueryRq><IncludeLineItems>true</IncludeLineItems><IncludeLinkedTxns>true"
          "</IncludeLinkedTxns></InvoiceQueryRq>");
  ExpectHas(invoice, "<ItemRef><ListID>D-1</ListID><FullName>Rebate</FullName></ItemRef>");
  ExpectHas(invoice, "<TxnID>9F-1</TxnID><TxnType>JournalEntry</TxnType>");
  ExpectHas(invoice, "<AppliedAmount>-30.00</AppliedAmount><BalanceRemaining>70.00</BalanceRemaining>");
  // A change of the record is taken, and keeps them.
  const auto changed =
      Ask("<CustomerModRq><CustomerMod><ListID>A0000-1</ListID><EditSequence>1199261045</EditSequence>"
          "<Name>Abbott &amp; Sons</Name></CustomerMod></CustomerModRq>");
  ExpectHas(changed, "statusCode=\"0\"");
  ExpectHas(changed, "<FullName>JK</FullName>");
}

TEST_F(CompanySnapshot, Keeps_a_payment_for_what_it_does_not_keep) {
  session_.records["Customer"] = Customer("A0000-1", "Abbott");
  session_.records["ReceivePayment"] =
      "<ReceivePaymentRet><TxnID>2A-1</TxnID>" + std::string(kTimes) +
      "<TxnNumber>32</TxnNumber><CustomerRef><ListID>A0000-1</ListID><FullName>Abbott</FullName></CustomerRef>"
      "<TxnDate>2008-01-02</TxnDate><TotalAmount>30.00</TotalAmount><UnusedPayment>0.00</UnusedPayment>"
      "<AppliedToTxnRet><TxnID>9F-1</TxnID><TxnType>JournalEntry</TxnType><TxnDate>2008-01-03</TxnDate>"
      "<BalanceRemaining>0.00</BalanceRemaining><Amount>30.00</Amount></AppliedToTxnRet></ReceivePaymentRet>";
  Read();
  const auto answer = Ask("<ReceivePaymentQueryRq><IncludeLineItems>true</IncludeLineItems></ReceivePaymentQueryRq>");
  ExpectHas(answer, "<AppliedToTxnRet><TxnID>9F-1</TxnID><TxnType>JournalEntry</TxnType>");
  ExpectHas(answer, "<TotalAmount>30.00</TotalAmount>");
}

TEST_F(CompanySnapshot, Refuses_a_name_that_a_record_of_another_kind_has) {
  session_.records["OtherName"] =
      "<OtherNameRet><ListID>E-1</ListID>" + std::string(kTimes) + "<Name>Harbor</Name></OtherNameRet>";
  Read();
  ExpectHas(Ask("<CustomerAddRq><CustomerAdd><Name>HARBOR</Name></CustomerAdd></CustomerAddRq>"),
            "statusCode=\"3100\"");
  ExpectHas(Ask("<CustomerAddRq><CustomerAdd><Name>Pier</Name></CustomerAdd></CustomerAddRq>"), "statusCode=\"0\"");
}

TEST_F(CompanySnapshot, Takes_two_records_of_one_name) {
  session_.records["Customer"] = Customer("A0000-1", "Abbott") + Customer("A0001-1", "ABBOTT");
  Read();
  const auto answer = Ask("<CustomerQueryRq/>");
  ExpectHas(answer, "A0000-1");
  ExpectHas(answer, "A0001-1");
}

TEST_F(CompanySnapshot, Tells_records_of_several_lists_apart_that_have_one_identifier) {
  const auto record = [](const std::string& kind, const std::string& name, const std::string& more = {}) {
    return fmt::format(
        "<{0}Ret><ListID>20000-933272658</ListID>{2}<Name>{1}</Name><IsActive>true</IsActive>{3}</{0}Ret>", kind, name,
        kTimes, more);
  };
  session_.records["StandardTerms"] = record("StandardTerms", "Net 15", "<StdDueDays>15</StdDueDays>");
  session_.records["PaymentMethod"] = record("PaymentMethod", "Cash");
  session_.records["CustomerType"] =
      record("CustomerType", "Retail", "<FullName>Retail</FullName><Sublevel>0</Sublevel>");
  session_.records["Customer"] =
      Customer("20000-933272658", "Abbott",
               "<CustomerTypeRef><ListID>20000-933272658</ListID><FullName>Retail</FullName></CustomerTypeRef>"
               "<TermsRef><ListID>20000-933272658</ListID><FullName>Net 15</FullName></TermsRef>"
               "<SalesRepRef><ListID>20000-933272658</ListID><FullName>JK</FullName></SalesRepRef>");
  Read();
  const auto expectAbbott = [](const std::string& answer) {
    ExpectHas(answer, "<ListID>20000-933272658</ListID><TimeCreated>");
    ExpectHas(answer, "<CustomerTypeRef><ListID>20000-933272658</ListID><FullName>Retail</FullName>");
    ExpectHas(answer, "<TermsRef><ListID>20000-933272658</ListID><FullName>Net 15</FullName>");
    ExpectHas(answer, "<SalesRepRef><ListID>20000-933272658</ListID><FullName>JK</FullName>");
  };
  expectAbbott(Ask("<CustomerQueryRq/>"));
  expectAbbott(Ask("<CustomerQueryRq><ListID>20000-933272658</ListID></CustomerQueryRq>"));
  ExpectHas(Ask("<StandardTermsQueryRq><ListID>20000-933272658</ListID></StandardTermsQueryRq>"),
            "<Name>Net 15</Name>");
  ExpectHas(Ask("<PaymentMethodQueryRq><ListID>20000-933272658</ListID></PaymentMethodQueryRq>"), "<Name>Cash</Name>");
  // And whoever names one of them means that of the list.
  const auto added =
      Ask("<CustomerAddRq><CustomerAdd><Name>Pier</Name><TermsRef><ListID>20000-933272658</ListID></TermsRef>"
          "<PreferredPaymentMethodRef><ListID>20000-933272658</ListID></PreferredPaymentMethodRef>"
          "</CustomerAdd></CustomerAddRq>");
  ExpectHas(added, "<TermsRef><ListID>20000-933272658</ListID><FullName>Net 15</FullName></TermsRef>");
  ExpectHas(added, "<FullName>Cash</FullName></PreferredPaymentMethodRef>");
}

TEST_F(CompanySnapshot, Repeats_what_a_closed_kind_answers_and_takes_the_others) {
  session_.statuses = {{"Estimate", "3250"}, {"Employee", "3260"}};
  session_.records["Customer"] = Customer("A0000-1", "Abbott");
  Read();
  ExpectHas(Ask("<EstimateQueryRq/>"), "statusCode=\"3250\" statusSeverity=\"Error\" statusMessage=\"told 3250\"");
  ExpectHas(Ask("<EmployeeQueryRq/>"), "statusCode=\"3260\"");
  ExpectHas(Ask("<CustomerQueryRq/>"), "A0000-1");
  const auto told = [&](const std::string& request, const std::string& fields) {
    return Ask(fmt::format("<{0}Rq>{1}</{0}Rq>", request, fields));
  };
  ExpectHas(told("TxnDel", "<TxnDelType>Estimate</TxnDelType><TxnID>1-1</TxnID>"), "statusCode=\"3250\"");
  ExpectHas(told("ListDel", "<ListDelType>Employee</ListDelType><ListID>1-1</ListID>"), "statusCode=\"3260\"");
  ExpectHas(told("TxnDisplayMod", "<TxnDisplayModType>Estimate</TxnDisplayModType><TxnID>1-1</TxnID>"),
            "statusCode=\"3250\"");
  ExpectHas(told("ListDel", "<ListDelType>Customer</ListDelType><ListID>1-1</ListID>"), "statusCode=\"3120\"");
}

TEST_F(CompanySnapshot, Answers_a_question_for_several_kinds_as_the_one_that_is_closed) {
  session_.statuses = {{"DateDrivenTerms", "3260"}};
  session_.records["StandardTerms"] =
      "<StandardTermsRet><ListID>20-1</ListID>" + std::string(kTimes) + "<Name>Net 15</Name></StandardTermsRet>";
  Read();
  ExpectHas(Ask("<TermsQueryRq/>"), "statusCode=\"3260\" statusSeverity=\"Error\" statusMessage=\"told 3260\"");
  ExpectHas(Ask("<StandardTermsQueryRq/>"), "<Name>Net 15</Name>");
}

TEST_F(CompanySnapshot, Takes_no_failure_of_a_question_for_what_is_always_answered) {
  session_.statuses = {{"Customer", "1000"}};
  ExpectCantRead("told 1000");
}

TEST_F(CompanySnapshot, Does_without_what_the_form_of_the_edition_has_not) {
  session_.unknown = {"ItemSalesTaxGroup", "Preferences"};
  session_.records["Customer"] = Customer("A0000-1", "Abbott");
  Read();
  ExpectHas(Ask("<CustomerQueryRq/>"), "A0000-1");
  EXPECT_EQ(copy_->GetConditions().closingDate, company::kNeverClosed);
}

TEST_F(CompanySnapshot, Knows_the_day_to_which_the_books_are_closed) {
  session_.records["Preferences"] =
      "<PreferencesRet><AccountingPreferences><ClosingDate>2007-12-31</ClosingDate></AccountingPreferences>"
      "</PreferencesRet>";
  Read();
  EXPECT_EQ(copy_->GetConditions().closingDate, "2007-12-31");
  EXPECT_EQ(copy_->GetConditions().interfaceVersion.major, 13);
  EXPECT_EQ(copy_->Summary().options.hostVersion, 17);
}

TEST_F(CompanySnapshot, Says_what_it_could_not_read) {
  session_.cutAt["Vendor"] = 0;
  ExpectCantRead("Vendor");
}

TEST_F(CompanySnapshot, Takes_no_answer_that_breaks_off_for_a_whole_one) {
  session_.records["Customer"] = Customer("A0000-1", "Abbott") + Customer("A0001-1", "Bayview");
  session_.records["Preferences"] =
      "<PreferencesRet><AccountingPreferences><ClosingDate>2007-12-31</ClosingDate></AccountingPreferences>"
      "</PreferencesRet>";
  session_.records["OtherName"] = "<OtherNameRet><ListID>E-1</ListID><Name>Harbor</Name></OtherNameRet>";
  for (const auto& [kind, text] : session_.records) {
    const auto whole = session_.Whole(kind).size();
    for (const auto end : {whole / 2, whole - std::string_view("</QBXMLMsgsRs></QBXML>").size(), whole - 3}) {
      session_.cutAt = {{kind, end}};
      ExpectCantRead(kind == "Preferences" ? "preferences" : kind);
    }
  }
  session_.cutAt = {{"Host", 300}};
  ExpectCantRead("which edition it is");
}

}  // namespace
}  // namespace twqb::snapshot
