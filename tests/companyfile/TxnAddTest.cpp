#include <map>
#include <tuple>

#include "TxnTest.h"

namespace twqb::company {

namespace {

using messages::Country;
using testing::ElementsAre;
using testing::HasSubstr;

// One kind with a request that is right, and what makes it wrong.
struct KindCase {
  std::string kind;
  std::string fields;  // right in every form
  std::string entity;  // the field of the entity, and whom it names
  std::string name;
  std::string line;    // the element of a line; empty: there are none
  std::string amount;  // where the record says its amount, and how much that is
  std::string sum;
};

std::vector<KindCase> Kinds() {
  const auto customer = Named("CustomerRef", "Acme:Roof");
  const auto date = Tag("TxnDate", "2008-02-29");
  const auto sale = [](const std::string& line) {
    return Tag(line, Named("ItemRef", "Design") + Tag("Quantity", "2.5") + Tag("Rate", "80.00"));
  };
  const auto expense = Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "150.00") +
                                                 Tag("Memo", "March") + Named("CustomerRef", "Acme:Roof")) +
                       Tag("ItemLineAdd", Named("ItemRef", "Print") + Tag("Quantity", "5") + Tag("Cost", "10.00"));
  return {
      {"TimeTracking",
       date + Named("EntityRef", "Ann Lee") + customer + Named("ItemServiceRef", "Design") +
           Tag("Duration", "PT7H45M0S") + Named("PayrollItemWageRef", "Regular Pay") + Tag("Notes", "Plans") +
           Tag("IsBillable", "true"),
       "EntityRef", "Ann Lee", "", "Duration", "PT7H45M0S"},
      {"Invoice", customer + date + Tag("RefNumber", "17") + sale("InvoiceLineAdd"), "CustomerRef", "Acme:Roof",
       "InvoiceLine", "BalanceRemaining", "200.00"},
      {"CreditMemo", customer + date + Tag("RefNumber", "17") + sale("CreditMemoLineAdd"), "CustomerRef", "Acme:Roof",
       "CreditMemoLine", "TotalAmount", "200.00"},
      {"Estimate", customer + date + Tag("RefNumber", "17") + sale("EstimateLineAdd"), "CustomerRef", "Acme:Roof",
       "EstimateLine", "TotalAmount", "200.00"},
      {"ReceivePayment",
       customer + date + Tag("RefNumber", "17") + Tag("TotalAmount", "200.00") + Tag("IsAutoApply", "false"),
       "CustomerRef", "Acme:Roof", "", "TotalAmount", "200.00"},
      {"Bill", Named("VendorRef", "Vic") + date + Tag("RefNumber", "17") + expense, "VendorRef", "Vic", "ExpenseLine",
       "AmountDue", "200.00"},
      {"Check",
       Named("AccountRef", "Checking") + Named("PayeeEntityRef", "Vic") + Tag("RefNumber", "17") + date + expense,
       "PayeeEntityRef", "Vic", "ExpenseLine", "Amount", "200.00"},
      {"CreditCardCharge",
       Named("AccountRef", "Visa") + Named("PayeeEntityRef", "Vic") + date + Tag("RefNumber", "17") + expense,
       "PayeeEntityRef", "Vic", "ExpenseLine", "Amount", "200.00"},
  };
}

struct FormCase {
  Country country;
  messages::Version version;
};

class EveryKind : public TxnTest, public testing::WithParamInterface<std::tuple<KindCase, FormCase>> {
 protected:
  void SetUp() override { MakeFirm({.country = Form().country, .accepts = {Form().country}}); }
  static const KindCase& Kind() { return std::get<0>(GetParam()); }
  static const FormCase& Form() { return std::get<1>(GetParam()); }
  static std::string FormTag() { return messages::FormTag({Form().country, Form().version}); }

  Answer AddRight() { return AddTxn(Kind().kind, Kind().fields, FormTag()); }
  Answer AddWith(std::string_view from, std::string_view to) {
    auto fields = Kind().fields;
    const auto at = fields.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return AddTxn(Kind().kind, fields.replace(at, from.size(), to), FormTag());
  }
  void ExpectNothingKept() { EXPECT_EQ(QueryTxn(Kind().kind, "", FormTag()).code, 1); }
  static std::string TextOf(pugi::xml_node node) {
    struct Writer : pugi::xml_writer {
      std::string text;
      void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
    } writer;
    node.print(writer, "", pugi::format_raw);
    return writer.text;
  }
};

class KindWithLines : public EveryKind {};
class KindWithForm : public EveryKind {};  // that QuickBooks can show

TEST_P(EveryKind, Is_added_and_read_back_as_it_was_answered) {
  const auto added = AddRight();
  ASSERT_EQ(added.code, 0) << added.message;
  EXPECT_EQ(added.Value("TxnDate"), "2008-02-29");
  EXPECT_EQ(added.Value((Kind().entity + "/FullName").c_str()), Kind().name);
  EXPECT_EQ(added.Value(Kind().amount.c_str()), Kind().sum);
  EXPECT_EQ(added.Value("TxnNumber"), "1");
  const auto text = TextOf(added.node.first_child());
  const auto id = added.Value("TxnID");
  const std::string withLines = Kind().kind == "TimeTracking" ? "" : Tag("IncludeLineItems", "true");
  EXPECT_EQ(TextOf(QueryTxn(Kind().kind, withLines, FormTag()).node.first_child()), text);
  EXPECT_EQ(TextOf(QueryTxn(Kind().kind, Tag("TxnID", id) + withLines, FormTag()).node.first_child()), text);
}

TEST_P(KindWithLines, Has_its_lines_in_a_query_only_when_they_are_asked_for) {
  const auto line = Kind().line + "Ret";
  EXPECT_TRUE(AddRight().Has(line.c_str()));
  EXPECT_FALSE(QueryTxn(Kind().kind, "", FormTag()).Has(line.c_str()));
  EXPECT_FALSE(QueryTxn(Kind().kind, Tag("IncludeLineItems", "false"), FormTag()).Has(line.c_str()));
}

TEST_P(EveryKind, Needs_an_entity_that_is_there_and_of_the_right_kind) {
  const auto right = Named(Kind().entity, Kind().name);
  const auto unknown = AddWith(right, Named(Kind().entity, "Nobody"));
  EXPECT_EQ(unknown.code, 3140);
  EXPECT_THAT(unknown.message, HasSubstr("\"Nobody\""));
  EXPECT_EQ(AddWith(right, Tag(Kind().entity, Tag("ListID", "80000999-1"))).code, 3140);
  const auto classId = Send(QueryOf("Class", ""), FormTag()).Value("ListID");
  EXPECT_EQ(AddWith(right, Tag(Kind().entity, Tag("ListID", classId))).code, 3240);
  const bool optional = Kind().entity == "PayeeEntityRef";
  EXPECT_EQ(AddWith(right, Tag(Kind().entity, "")).code, optional ? 0 : 3150);
  if (!optional) {
    EXPECT_EQ(AddWith(right, "").code, 3150);
    ExpectNothingKept();
  }
}

TEST_P(KindWithLines, Needs_lines_that_name_what_is_there) {
  const bool purchase = Kind().line == "ExpenseLine";
  const auto unknown = purchase ? AddWith(Named("AccountRef", "Rent"), Named("AccountRef", "Nothing"))
                                : AddWith(Named("ItemRef", "Design"), Named("ItemRef", "Nothing"));
  EXPECT_EQ(unknown.code, 3140);
  const std::map<std::string, std::string> spoken = {{"InvoiceLine", "Item \"Nothing\" in the invoice line."},
                                                     {"CreditMemoLine", "Item \"Nothing\" in the credit memo line."},
                                                     {"EstimateLine", "Item \"Nothing\" in the estimate line."},
                                                     {"ExpenseLine", "Account \"Nothing\" in the expense line."}};
  EXPECT_EQ(unknown.message,
            "There is an invalid reference to QuickBooks " + spoken.at(Kind().line) +
                "  QuickBooks error message: Invalid argument.  The specified record does not exist in "
                "the list.");
  ExpectNothingKept();
}

TEST_P(EveryKind, Does_not_fit_into_closed_books) {
  Set("closing-date", "2008-02-28");
  const auto id = AddRight().Value("TxnID");
  EXPECT_FALSE(id.empty());
  Set("closing-date", "2008-02-29");
  const auto refused = AddRight();
  EXPECT_EQ(refused.code, 3171);
  EXPECT_FALSE(refused.node.first_child());
  const auto kept = Send(Tag("TxnDelRq", Tag("TxnDelType", Kind().kind) + Tag("TxnID", id)), FormTag());
  EXPECT_EQ(kept.code, 3171);
  EXPECT_EQ(QueryTxn(Kind().kind, "", FormTag()).All("TxnID"), std::vector{id});
}

TEST_P(EveryKind, Is_deleted_once_and_only_under_its_own_type) {
  const auto id = AddRight().Value("TxnID");
  const auto del = [&](std::string_view kind) {
    return Send(Tag("TxnDelRq", Tag("TxnDelType", kind) + Tag("TxnID", id)), FormTag());
  };
  EXPECT_EQ(del(Kind().kind == "Bill" ? "Check" : "Bill").code, 3120);
  EXPECT_EQ(del("Deposit").code, 3120);
  const auto deleted = del(Kind().kind);
  EXPECT_EQ(deleted.code, 0);
  EXPECT_STREQ(deleted.node.child("TxnDelType").text().get(), Kind().kind.c_str());
  EXPECT_STREQ(deleted.node.child("TxnID").text().get(), id.c_str());
  EXPECT_STREQ(deleted.node.child("TimeDeleted").text().get(), "2008-03-05T10:00:00-05:00");
  EXPECT_STREQ(deleted.node.child("RefNumber").text().get(), Kind().kind == "TimeTracking" ? "" : "17");
  const auto again = del(Kind().kind);
  EXPECT_EQ(again.code, 3120);
  EXPECT_EQ(
      again.message,
      "Object \"" + id +
          "\" specified in the request cannot be found.  QuickBooks error message: Invalid argument.  The specified "
          "record does not exist in the list.");
  ExpectNothingKept();
}

TEST_P(EveryKind, Keeps_what_it_refers_to_from_being_deleted_as_long_as_it_is_there) {
  const auto id = AddRight().Value("TxnID");
  const std::string list = Kind().name == "Vic" ? "Vendor" : Kind().name == "Ann Lee" ? "Employee" : "Customer";
  const auto key = list == "Employee" ? Tag("FullName", Kind().name) : Tag("FullName", Kind().name);
  const auto listId = Send(QueryOf(list, key), FormTag()).Value("ListID");
  const auto del = [&] { return Send(Tag("ListDelRq", Tag("ListDelType", list) + Tag("ListID", listId)), FormTag()); };
  // The vendor is used by a tax item too, where there is one.
  const bool usedOtherwise = list == "Vendor" && Form().country == Country::US;
  EXPECT_EQ(del().code, 3160);
  Send(Tag("TxnDelRq", Tag("TxnDelType", Kind().kind) + Tag("TxnID", id)), FormTag());
  EXPECT_EQ(del().code, usedOtherwise ? 3160 : 0);
}

TEST_P(KindWithForm, Is_shown_when_it_is_there) {
  const auto id = AddRight().Value("TxnID");
  // Earlier versions can't ask for it.
  const auto tag = messages::FormTag({.country = std::get<1>(GetParam()).country, .version = {3, 0}});
  const auto show = [&](std::string_view kind, std::string_view txnId) {
    return Send(Tag("TxnDisplayModRq", Tag("TxnDisplayModType", kind) + Tag("TxnID", txnId)), tag);
  };
  EXPECT_EQ(show(Kind().kind, id).code, 0);
  EXPECT_EQ(show(Kind().kind == "Bill" ? "Check" : "Bill", id).code, 3120);
  EXPECT_EQ(show(Kind().kind, "FFFF-1").code, 3120);
}

template <typename Condition>
std::vector<KindCase> KindsWhere(const Condition& condition) {
  auto kinds = Kinds();
  std::erase_if(kinds, [&](const KindCase& kind) { return !condition(kind); });
  return kinds;
}
constexpr FormCase kForms[] = {
    {Country::US, {3, 0}}, {Country::US, {2, 1}}, {Country::CA, {3, 0}}, {Country::UK, {3, 0}}};
std::string CaseName(const testing::TestParamInfo<std::tuple<KindCase, FormCase>>& test) {
  const auto& form = std::get<1>(test.param);
  return std::get<0>(test.param).kind + "_" + std::string(messages::CountryName(form.country)) +
         std::to_string(form.version.major);
}

INSTANTIATE_TEST_SUITE_P(Txn, EveryKind, testing::Combine(testing::ValuesIn(Kinds()), testing::ValuesIn(kForms)),
                         CaseName);
INSTANTIATE_TEST_SUITE_P(Txn, KindWithLines,
                         testing::Combine(testing::ValuesIn(KindsWhere([](const auto& k) { return !k.line.empty(); })),
                                          testing::ValuesIn(kForms)),
                         CaseName);
INSTANTIATE_TEST_SUITE_P(Txn, KindWithForm,
                         testing::Combine(testing::ValuesIn(KindsWhere([](const auto& k) {
                                            return k.kind != "TimeTracking";
                                          })),
                                          testing::ValuesIn(kForms)),
                         CaseName);

class Txn : public TxnTest {};

TEST_F(Txn, Identifiers_of_transactions_and_lines_come_from_one_upper_case_counter) {
  const auto line = Tag("InvoiceLineAdd", Named("ItemRef", "Design"));
  std::string lines;
  for (int i = 0; i < 9; ++i) lines += line;
  const auto added = AddTxn("Invoice", Named("CustomerRef", "Acme") + lines);
  EXPECT_EQ(added.Value("TxnID"), "1-1204729200");
  EXPECT_STREQ(added.node.first_child().last_child().child("TxnLineID").text().get(), "A-1204729200");
  const auto next = AddTxn("Invoice", Named("CustomerRef", "Acme") + line);
  EXPECT_EQ(next.Value("TxnID"), "B-1204729200");
  EXPECT_EQ(next.Value("TxnNumber"), "2");
}

TEST_F(Txn, Without_a_date_it_is_of_the_day_on_the_wall) {
  machine_.now = Date::FromCivil({.year = 2008, .month = 7, .day = 1, .minute = 30});
  machine_.zone.state = TimeZoneState::Daylight;
  const auto added =
      AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "Design")));
  EXPECT_EQ(added.Value("TxnDate"), "2008-07-01");
  EXPECT_EQ(added.Value("TimeCreated"), "2008-07-01T00:30:00-05:00");
}

TEST_F(Txn, Is_answered_with_the_names_of_today) {
  const auto id = Invoice("Acme:Roof", "10.00");
  const auto acme = Send(QueryOf("Customer", Tag("FullName", "Acme")));
  Send(ModRequest(Tag("ListID", acme.Value("ListID")) + Tag("EditSequence", acme.Value("EditSequence")) +
                  Tag("Name", "Apex")));
  EXPECT_EQ(Field("Invoice", id, "CustomerRef/FullName"), "Apex:Roof");
}

TEST_F(Txn, An_identifier_wins_over_a_name) {
  const auto roof = Send(QueryOf("Customer", Tag("FullName", "Acme:Roof"))).Value("ListID");
  const auto added = AddTxn("Invoice", Tag("CustomerRef", Tag("ListID", roof) + Tag("FullName", "Beta")) +
                                           Tag("InvoiceLineAdd", Named("ItemRef", "dESIGN")));
  EXPECT_EQ(added.Value("CustomerRef/FullName"), "Acme:Roof");
  EXPECT_EQ(added.Value("InvoiceLineRet/ItemRef/FullName"), "Design");
}

TEST_F(Txn, A_sale_takes_address_and_dates_from_what_there_is) {
  const auto added = AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("TxnDate", "2008-02-01") +
                                           Tag("InvoiceLineAdd", Named("ItemRef", "Design")));
  EXPECT_EQ(added.Value("BillAddress/City"), "Springfield");
  EXPECT_EQ(added.Value("DueDate"), "2008-02-01");
  EXPECT_EQ(added.Value("IsPending"), "false");
  EXPECT_EQ(added.Value("InvoiceLineRet/Desc"), "Design work");
  const auto own = AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("BillAddress", Tag("City", "Shelbyville")) +
                                         Tag("DueDate", "2008-03-02") +
                                         Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Desc", "Mine")));
  EXPECT_EQ(own.Value("BillAddress/City"), "Shelbyville");
  EXPECT_FALSE(own.Has("BillAddress/Addr1"));
  EXPECT_EQ(own.Value("DueDate"), "2008-03-02");
  EXPECT_EQ(own.Value("InvoiceLineRet/Desc"), "Mine");
}

TEST_F(Txn, Stands_on_the_account_that_QuickBooks_makes_for_it) {
  const auto line = Tag("InvoiceLineAdd", Named("ItemRef", "Design"));
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme") + line).Value("ARAccountRef/FullName"),
            "Accounts Receivable");
  EXPECT_EQ(
      AddTxn("ReceivePayment", Named("CustomerRef", "Acme") + Tag("TotalAmount", "1.00") + Tag("IsAutoApply", "false"))
          .Value("DepositToAccountRef/FullName"),
      "Undeposited Funds");
  EXPECT_EQ(AddTxn("Bill", Named("VendorRef", "Vic") +
                               Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "1.00")))
                .Value("APAccountRef/FullName"),
            "Accounts Payable");
}

TEST_F(Txn, Stands_on_no_account_of_another_type) {
  const auto expense = Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "1.00"));
  const auto line = Tag("InvoiceLineAdd", Named("ItemRef", "Design"));
  EXPECT_EQ(AddTxn("Check", Named("AccountRef", "Visa") + expense).code, 3240);
  EXPECT_EQ(AddTxn("CreditCardCharge", Named("AccountRef", "Checking") + expense).code, 3240);
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme") + Named("ARAccountRef", "Sales") + line).code, 3240);
  EXPECT_EQ(AddTxn("Bill", Named("VendorRef", "Vic") + Named("APAccountRef", "Sales") + expense).code, 3240);
}

TEST_F(Txn, A_refused_one_leaves_no_account_behind) {
  const auto refused =
      AddTxn("Invoice",
             Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", "-1.00")));
  EXPECT_EQ(refused.code, 3180);
  EXPECT_EQ(Send(QueryOf("Account", Tag("FullName", "Accounts Receivable"))).code, 500);
  EXPECT_EQ(Invoice("Acme", "1.00"), "1-1204729200");
}

TEST_F(Txn, A_list_that_the_file_does_not_keep_has_nothing_to_refer_to) {
  const auto added = AddTxn("Invoice", Named("CustomerRef", "Acme") + Named("SalesRepRef", "DF") +
                                           Tag("InvoiceLineAdd", Named("ItemRef", "Design")));
  EXPECT_EQ(added.code, 3140);
  EXPECT_THAT(added.message, HasSubstr("QuickBooks SalesRep \"DF\" in the invoice."));
}

TEST_F(Txn, A_dead_tax_code_is_told_with_the_line_or_the_transaction_that_names_it) {
  const auto line = [](const std::string& code) {
    return Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", "1.00") + code);
  };
  const auto acme = Named("CustomerRef", "Acme");
  EXPECT_THAT(AddTxn("Invoice", acme + line(Named("SalesTaxCodeRef", "Zzz"))).message,
              HasSubstr("There is an invalid reference to QuickBooks SalesTaxCode \"Zzz\" in the invoice line."));
  EXPECT_THAT(AddTxn("Invoice", acme + Named("CustomerSalesTaxCodeRef", "Zzz") + line({})).message,
              HasSubstr("There is an invalid reference to QuickBooks CustomerSalesTaxCode \"Zzz\" in the invoice."));
}

TEST_F(Txn, A_transaction_that_can_not_be_saved_has_its_article) {
  const auto refused =
      AddTxn("Invoice",
             Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", "-1.00")));
  EXPECT_THAT(refused.message, HasSubstr("There was an error when saving an invoice."));
}

TEST_F(Txn, An_invoice_without_lines_lacks_an_element) {
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme")).code, 3150);
}

TEST_F(Txn, A_bill_that_comes_to_nothing_fails_the_document_and_nothing_of_it_is_kept) {
  const auto expense = [](std::string_view amount) {
    return Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", amount));
  };
  const auto bill = [](std::string_view lines) {
    return AddOf("Bill", Named("VendorRef", "Vic") + std::string(lines));
  };
  constexpr ErrorNumber kIncomplete = 0x80040307;
  EXPECT_EQ(RefusalOfRequest(bill("")), kIncomplete);
  EXPECT_EQ(RefusalOfRequest(bill(expense("5.00") + expense("-5.00"))), kIncomplete);
  EXPECT_EQ(RefusalOfRequest(bill(expense("5.00")) + bill(Tag("ItemLineAdd", ""))), kIncomplete);
  EXPECT_EQ(QueryTxn("Bill", "").code, 1);
  EXPECT_EQ(Send(bill(expense("5.00") + Tag("ItemLineAdd", ""))).code, 0);
}

TEST_F(Txn, An_empty_line_keeps_its_place) {
  const auto added = AddTxn("Bill", Named("VendorRef", "Vic") + Tag("ItemLineAdd", "") +
                                        Tag("ItemLineAdd", Named("ItemRef", "Print") + Tag("Amount", "5.00")));
  std::vector<std::string> ids;
  for (const auto line : added.node.first_child().children("ItemLineRet")) {
    ids.emplace_back(line.child("TxnLineID").text().get());
  }
  EXPECT_THAT(ids, ElementsAre("2-1204729200", "3-1204729200"));
}

TEST_F(Txn, A_check_or_charge_has_lines) {
  EXPECT_EQ(AddTxn("Check", Named("AccountRef", "Checking")).code, 3180);
  EXPECT_EQ(AddTxn("CreditCardCharge", Named("AccountRef", "Visa")).code, 3180);
}

TEST_F(Txn, A_line_with_an_amount_says_what_it_is_for) {
  EXPECT_THAT(AddTxn("Bill", Named("VendorRef", "Vic") + Tag("ExpenseLineAdd", Tag("Amount", "5.00"))).message,
              HasSubstr("\"AccountRef\""));
  EXPECT_THAT(AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Tag("Amount", "5.00"))).message,
              HasSubstr("\"ItemRef\""));
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Tag("Desc", "Thank you"))).code, 0);
}

TEST_F(Txn, A_line_is_billable_to_somebody_and_billed_by_an_invoice_alone) {
  const auto bill = [this](std::string_view status, std::string_view customer) {
    return AddTxn("Bill", Named("VendorRef", "Vic") +
                              Tag("ItemLineAdd", Named("ItemRef", "Print") + Tag("Amount", "5.00") +
                                                     std::string(customer) + Tag("BillableStatus", status)));
  };
  const auto customer = Named("CustomerRef", "Beta");
  EXPECT_EQ(bill("Billable", customer).Value("ItemLineRet/BillableStatus"), "Billable");
  EXPECT_EQ(bill("NotBillable", customer).Value("ItemLineRet/BillableStatus"), "NotBillable");
  EXPECT_EQ(bill("NotBillable", "").code, 0);
  EXPECT_EQ(bill("Billable", "").code, 3180);
  EXPECT_EQ(bill("HasBeenBilled", customer).code, 3210);
}

TEST_F(Txn, Time_is_tracked_while_the_feature_is_enabled) {
  const auto time = Named("EntityRef", "Vic") + Tag("Duration", "PT1H0M0S");
  Set("time-tracking", "disabled");
  EXPECT_EQ(AddTxn("TimeTracking", time).code, 3250);
  EXPECT_EQ(QueryTxn("TimeTracking", "").code, 3250);
  Set("time-tracking", "enabled");
  const auto added = AddTxn("TimeTracking", time);
  EXPECT_EQ(added.code, 0);
  EXPECT_EQ(added.Value("IsBillable"), "false");
  EXPECT_EQ(added.Value("IsBilled"), "false");
}

TEST_F(Txn, The_duration_of_time_is_answered_in_hours_minutes_and_seconds) {
  const auto duration = [this](std::string_view given) {
    return AddTxn("TimeTracking", Named("EntityRef", "Vic") + Tag("Duration", given)).Value("Duration");
  };
  EXPECT_EQ(duration("PT7H45M30S"), "PT7H45M30S");
  EXPECT_EQ(duration("PT8H"), "PT8H0M0S");
  EXPECT_EQ(duration("PT90M"), "PT1H30M0S");
  EXPECT_EQ(duration("PT3661S"), "PT1H1M1S");
  EXPECT_EQ(duration("PT0S"), "PT0H0M0S");
  EXPECT_EQ(AddTxn("TimeTracking", Named("EntityRef", "Vic") + Tag("Duration", "PT99999999999999999999H")).code, 3035);
}

TEST_F(Txn, Billable_time_has_a_customer) {
  const auto time = Named("EntityRef", "Vic") + Tag("Duration", "PT1H0M0S") + Tag("IsBillable", "true");
  const auto refused = AddTxn("TimeTracking", time);
  EXPECT_EQ(refused.code, 3180);
  EXPECT_THAT(refused.message, HasSubstr("customer"));
}

TEST_F(Txn, Paid_time_of_an_employee_needs_to_know_whether_it_makes_paychecks) {
  const auto time = [](std::string_view who) {
    return Named("EntityRef", who) + Tag("Duration", "PT1H0M0S") + Named("PayrollItemWageRef", "Regular Pay");
  };
  EXPECT_EQ(AddTxn("TimeTracking", time("Bob Ray")).code, 3310);
  EXPECT_EQ(AddTxn("TimeTracking", time("Ann Lee")).code, 0);
  EXPECT_EQ(AddTxn("TimeTracking", time("Vic")).code, 0);
  EXPECT_EQ(AddTxn("TimeTracking", Named("EntityRef", "Bob Ray") + Tag("Duration", "PT1H0M0S")).code, 0);
}

TEST_F(Txn, A_customer_tracks_no_time) {
  const auto acme = Send(QueryOf("Customer", Tag("FullName", "Acme"))).Value("ListID");
  EXPECT_EQ(AddTxn("TimeTracking", Tag("EntityRef", Tag("ListID", acme)) + Tag("Duration", "PT1H0M0S")).code, 3240);
}

TEST_F(Txn, Each_request_of_a_set_sees_those_before_it) {
  const auto answers = SendAll(
      AddOf("Customer", Tag("Name", "New")) +
      AddOf("Invoice",
            Named("CustomerRef", "New") + Tag("RefNumber", "5") + Tag("InvoiceLineAdd", Named("ItemRef", "Design"))) +
      AddOf("ReceivePayment", Named("CustomerRef", "New") + Tag("TotalAmount", "30.00") + Tag("IsAutoApply", "true")) +
      QueryOf("Invoice", Tag("RefNumber", "5")) + QueryOf("Customer", Tag("FullName", "New")));
  ASSERT_EQ(answers.size(), 5U);
  for (const auto& answer : answers) EXPECT_EQ(answer.code, 0) << answer.message;
  EXPECT_EQ(answers[3].Value("BalanceRemaining"), "70.00");
  EXPECT_EQ(answers[4].Value("Balance"), "70.00");
}

TEST_F(Txn, After_an_error_a_set_goes_on_or_stops_as_it_says) {
  const auto good = AddOf("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "Design")));
  const auto bad = AddOf("Invoice", Named("CustomerRef", "Nobody") + Tag("InvoiceLineAdd", Named("ItemRef", "Design")));
  const auto codes = [&](std::string_view onError) {
    std::vector<int> found;
    for (const auto& answer : SendAll(good + bad + good, "3.0", onError)) found.push_back(answer.code);
    return found;
  };
  EXPECT_THAT(codes("continueOnError"), ElementsAre(0, 3140, 0));
  EXPECT_THAT(codes("stopOnError"), ElementsAre(0, 3140, 3231));
  EXPECT_EQ(QueryTxn("Invoice", "").All("TxnID").size(), 3U);
}

TEST_F(Txn, The_summary_of_the_file_counts_them) {
  Invoice("Acme", "1.00");
  const auto kinds = file_->Summary().kinds;
  EXPECT_THAT(kinds, testing::Contains(
                         testing::Truly([](const auto& kind) { return kind.name == "Invoice" && kind.records == 1; })));
  EXPECT_THAT(kinds, testing::Contains(
                         testing::Truly([](const auto& kind) { return kind.name == "Bill" && kind.records == 0; })));
}

}  // namespace

}  // namespace twqb::company
