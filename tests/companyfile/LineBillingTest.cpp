// Lines of checks, charges and bills that an invoice takes up, and what Canadian lines and bills leave out.

#include "TxnTest.h"
#include "adapters/companyfile/LineBilling.h"

namespace twqb::company {

namespace {

using messages::Country;
using testing::ElementsAre;

// A transaction of that kind, of two billable lines for Beta and one that is not billable.
class BilledLines : public TxnTest, public testing::WithParamInterface<std::string> {
 protected:
  static std::string Line(std::string_view element, std::string_view what, std::string_view status) {
    return Tag(element, std::string(what) + Tag("Amount", "5.00") + Named("CustomerRef", "Beta") +
                            Tag("BillableStatus", status));
  }
  static std::string Fields(const std::string& kind) {
    const std::string head = kind == "Bill"    ? Named("VendorRef", "Vic")
                             : kind == "Check" ? Named("AccountRef", "Checking")
                                               : Named("AccountRef", "Visa");
    return head + Line("ExpenseLineAdd", Named("AccountRef", "Rent"), "Billable") +
           Line("ItemLineAdd", Named("ItemRef", "Print"), "Billable") +
           Line("ItemLineAdd", Named("ItemRef", "Design"), "NotBillable");
  }
  std::string Cost(const std::string& kind = "Bill") { return IdOf(AddTxn(kind, Fields(kind))); }

  Answer Read(const std::string& kind = "Bill") { return QueryTxn(kind, Tag("IncludeLineItems", "true")); }
  std::string LineId(std::size_t nth, const std::string& kind = "Bill") {
    return Leaves(Read(kind), "TxnLineID").at(nth);
  }
  std::vector<std::string> Statuses(const std::string& kind = "Bill") { return Leaves(Read(kind), "BillableStatus"); }
  static std::vector<std::string> Leaves(const Answer& answer, const char* field) {
    std::vector<std::string> found;
    for (const auto part : answer.node.first_child().children()) {
      if (const auto leaf = part.child(field)) found.emplace_back(leaf.text().get());
    }
    return found;
  }
};

TEST_P(BilledLines, Are_answered_as_billed_once_an_invoice_took_them_up) {
  const auto& kind = GetParam();
  Cost(kind);
  const auto invoice = Invoice("Beta", "5.00");
  const auto line = LineId(0, kind);
  EXPECT_THAT(Statuses(kind), ElementsAre("Billable", "Billable", "NotBillable"));
  EXPECT_EQ(file_->BillLine(invoice, line), LineBilling::Done);
  EXPECT_THAT(Statuses(kind), ElementsAre("HasBeenBilled", "Billable", "NotBillable"));
  EXPECT_EQ(file_->BillLine(invoice, LineId(1, kind)), LineBilling::Done);
  EXPECT_THAT(Statuses(kind), ElementsAre("HasBeenBilled", "HasBeenBilled", "NotBillable"));
}

TEST_P(BilledLines, Keep_what_they_stand_in_until_the_invoice_is_deleted) {
  const auto& kind = GetParam();
  const auto cost = Cost(kind);
  const auto invoice = Invoice("Beta", "5.00");
  const auto line = LineId(0, kind);
  ASSERT_EQ(file_->BillLine(invoice, line), LineBilling::Done);
  EXPECT_EQ(Delete(kind, cost).code, 3160);
  EXPECT_THAT(Statuses(kind), ElementsAre("HasBeenBilled", "Billable", "NotBillable"));
  EXPECT_EQ(Delete("Invoice", invoice).code, 0);
  EXPECT_THAT(Statuses(kind), ElementsAre("Billable", "Billable", "NotBillable"));
  EXPECT_EQ(Delete(kind, cost).code, 0);
}

INSTANTIATE_TEST_SUITE_P(Txn, BilledLines, testing::Values("Check", "CreditCardCharge", "Bill"),
                         [](const auto& param) { return param.param; });

class LineBillingTest : public BilledLines {};

TEST_F(LineBillingTest, What_has_the_line_has_changed_when_it_was_billed_and_when_it_was_given_back) {
  const auto bill = Cost();
  const auto invoice = Invoice("Beta", "5.00");
  const auto added = Field("Bill", bill, "TimeModified");
  machine_.Pass(60);
  ASSERT_EQ(file_->BillLine(invoice, LineId(0)), LineBilling::Done);
  const auto billed = Field("Bill", bill, "TimeModified");
  EXPECT_GT(billed, added);
  machine_.Pass(60);
  ASSERT_EQ(Delete("Invoice", invoice).code, 0);
  EXPECT_GT(Field("Bill", bill, "TimeModified"), billed);
}

TEST_F(LineBillingTest, Nothing_is_billed_that_can_not_be) {
  Cost();
  const auto invoice = Invoice("Beta", "5.00");
  const auto credit = CreditMemo("Beta", "5.00");
  const auto line = LineId(0);
  EXPECT_EQ(file_->BillLine("99-1", line), LineBilling::NoSuchInvoice);
  EXPECT_EQ(file_->BillLine(credit, line), LineBilling::NoSuchInvoice);
  EXPECT_EQ(file_->BillLine(invoice, "99-1"), LineBilling::NoSuchLine);
  EXPECT_EQ(file_->BillLine(invoice, ""), LineBilling::NoSuchLine);
  EXPECT_EQ(file_->BillLine(invoice, LineId(2)), LineBilling::NotBillable);
  EXPECT_EQ(file_->BillLine(Invoice("Acme:Roof", "5.00"), line), LineBilling::OtherCustomer);
  EXPECT_THAT(Statuses(), ElementsAre("Billable", "Billable", "NotBillable"));
  ASSERT_EQ(file_->BillLine(invoice, line), LineBilling::Done);
  EXPECT_EQ(file_->BillLine(invoice, line), LineBilling::AlreadyBilled);
}

TEST_F(LineBillingTest, An_invoice_of_the_same_item_and_amount_takes_nothing_up_by_itself) {
  Cost();
  EXPECT_EQ(
      AddTxn("Invoice", Named("CustomerRef", "Beta") +
                            Tag("InvoiceLineAdd", Named("ItemRef", "Print") + Tag("Quantity", "1") + Tag("Rate", "5")))
          .code,
      0);
  EXPECT_THAT(Statuses(), ElementsAre("Billable", "Billable", "NotBillable"));
}

TEST_F(LineBillingTest, A_bill_without_a_due_date_is_due_on_its_day_and_an_empty_one_is_no_date) {
  const auto due = [this](std::string_view given) {
    return AddTxn("Bill", Named("VendorRef", "Vic") + Tag("TxnDate", "2008-02-20") + std::string(given) +
                              Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "5.00")));
  };
  EXPECT_EQ(due(Tag("DueDate", "")).code, 3020);
  EXPECT_EQ(due(Tag("DueDate", "2008-03-01")).Value("DueDate"), "2008-03-01");
  const auto added = due({});
  EXPECT_EQ(added.Value("DueDate"), "2008-02-20");
  const auto id = added.Value("TxnID");
  EXPECT_EQ(Field("Bill", id, "DueDate"), "2008-02-20");
}

class TaxOfLines : public TxnTest, public testing::WithParamInterface<Country> {
 protected:
  void SetUp() override { MakeFirm({.country = GetParam(), .accepts = {GetParam()}}); }
};

TEST_P(TaxOfLines, Has_no_amount_of_its_own_in_any_form) {
  const auto tag = messages::FormTag({GetParam(), {3, 0}});
  const auto bill = [](std::string_view more) {
    return AddOf("Bill", Named("VendorRef", "Vic") +
                             Tag("ItemLineAdd", Named("ItemRef", "Print") + Tag("Amount", "5.00") + std::string(more)));
  };
  EXPECT_EQ(RefusalOfRequest(bill(Tag("TaxAmount", "0.25")), tag), kRefused);
  const auto taxed = Send(bill(GetParam() == Country::US ? "" : Named("TaxCodeRef", "S")), tag);
  EXPECT_EQ(taxed.code, 0) << taxed.message;
  EXPECT_EQ(taxed.Value("ItemLineRet/TaxCodeRef/FullName"), GetParam() == Country::US ? "" : "S");
  EXPECT_FALSE(taxed.Has("ItemLineRet/TaxAmount"));
}

INSTANTIATE_TEST_SUITE_P(Txn, TaxOfLines, testing::Values(Country::US, Country::CA, Country::UK),
                         [](const auto& param) { return std::string(messages::CountryName(param.param)); });

}  // namespace

}  // namespace twqb::company
