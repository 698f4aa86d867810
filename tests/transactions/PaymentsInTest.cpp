// The get of payments: money, discounts, allocations, retainers, what is passed over, errors.

#include <gtest/gtest.h>

#include "tests/transactions/ArrivalsHouse.h"
#include "transactions/PaymentMethods.h"

namespace twqb {
namespace {

constexpr auto kTested = Got(enPayments, "Payment", "PayID", MovePaymentsToTW);

// What a payment was applied to; an empty element is left out.
struct Applied {
  std::string txnId = "I-1";
  std::string number = "1044";
  std::string amount = "95.00";
  std::string discount = {};

  [[nodiscard]] std::string Text() const {
    const auto given = [](std::string_view name, const std::string& text) {
      return text.empty() ? std::string() : Element(name, text);
    };
    return Element("AppliedToTxnRet", given("TxnID", txnId) + "<TxnType>Invoice</TxnType>" +
                                          given("RefNumber", number) + given("Amount", amount) +
                                          given("DiscountAmount", discount));
  }
};

// A payment of 95.00 by check.
std::string Payment(const Changes& changes = {}, const std::vector<Applied>& applied = {}) {
  auto text = RecordOf("ReceivePayment",
                       {{"TxnID", "1-1"},
                        {"CustomerRef", kJobRef},
                        {"TxnDate", "2008-03-04"},
                        {"RefNumber", "20771"},
                        {"TotalAmount", "95.00"},
                        {"PaymentMethodRef", "<FullName>Check</FullName>"}},
                       changes);
  std::string entries;
  for (const auto& entry : applied) entries += entry.Text();
  return text.insert(text.rfind("</ReceivePaymentRet>"), entries);
}

class PaymentsHouse : public ArrivalsHouse {
 public:
  explicit PaymentsHouse(HouseOptions options = {}, std::string_view faults = {})
      : ArrivalsHouse(kTested, "ReceivePayment", std::move(options), faults) {}
  // An invoice that is here: of the project, with the link I-1 and the number 1044.
  void Invoice(std::string_view link = "I-1", std::string_view project = "'ROOF:'", std::string_view number = "1044") {
    Sql(
        fmt::format("INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, QBLinkID) "
                    "VALUES ('{{{0}}}', '{2}', 'ACME', {1}, '{0}')",
                    link, project, number));
  }
  [[nodiscard]] std::string Paid(std::string_view column, std::string_view method = "1") {
    return Scalar(fmt::format("SELECT {} FROM Payment WHERE PayMethod = '{}'", column, method));
  }
  [[nodiscard]] std::string Payments() { return RowsOf("PayMethod,PayAmt,QBLinkID", "Payment"); }
  // The rows that say where payments go: method of the payment, number, project and amount.
  [[nodiscard]] std::string Allocations() {
    return RowsOf(
        "PayMethod,TransactionInvNum,ProjectID,TransactionPayAmtApplied",
        "(SELECT t.*, p.PayMethod, t.rowid AS rowid FROM TransactionTable t JOIN Payment p ON p.PayID = t.PayID)");
  }
};

// --- The money -------------------------------------------------------------------------------------------------------

TEST(PaymentsIn, A_payment_becomes_a_row_with_every_column) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({{"Memo", "Thanks"}}, {Applied{}})});
  const std::pair<std::string_view, std::string_view> columns[] = {{"QBLinkID", "1-1"},
                                                                   {"PayDate", "3/4/2008"},
                                                                   {"PayAmt", "95"},
                                                                   {"PayMethod", "1"},
                                                                   {"PayMemo", "Thanks"},
                                                                   {"ClientID", "ACME"},
                                                                   {"PayRef", "20771"},
                                                                   {"PayEnteredBy", "TWQB"},
                                                                   {"PayLastModifiedOn", "3/5/2008 10:00:00 AM"},
                                                                   {"LastUpdated", "3/5/2008 3:00:00 PM"},
                                                                   {"PayRetainer", "0"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Paid(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Paid("PayID")));
  EXPECT_EQ(house.Count("Payment"), "1");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(PaymentsIn, The_allocation_has_every_column) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({}, {Applied{}})});
  const std::pair<std::string_view, std::string> columns[] = {{"PayID", house.Paid("PayID")},
                                                              {"ProjectID", "ROOF:"},
                                                              {"ClientID", "ACME"},
                                                              {"TransactionInvSendBillFlag", "B"},
                                                              {"TransactionJointInv", "0"},
                                                              {"TransactionManInv", "0"},
                                                              {"TransactionPayLateFeeRecd", "0"},
                                                              {"TransactionDate", "3/4/2008"},
                                                              {"InvoiceDate", "3/4/2008"},
                                                              {"TransactionInvNum", "1044"},
                                                              {"TransactionPayAmtApplied", "95"},
                                                              {"LastUpdated", "3/5/2008 3:00:00 PM"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Got(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Got("TransactionID")));
}

TEST(PaymentsIn, A_payment_without_a_date_is_of_today) {
  PaymentsHouse house;
  house.Take({Payment({{"TxnDate", {}}})});
  EXPECT_EQ(house.Paid("PayDate"), "3/5/2008");
  EXPECT_EQ(house.Got("TransactionDate"), "3/5/2008");
}

TEST(PaymentsIn, What_quickbooks_leaves_out_is_not_written) {
  PaymentsHouse house;
  house.Take({Payment({{"RefNumber", {}}, {"TotalAmount", {}}})});
  for (const std::string column : {"PayAmt", "PayMemo", "PayRef"}) EXPECT_EQ(house.Paid(column), "NULL") << column;
  EXPECT_EQ(house.Got("TransactionPayAmtApplied"), "0");
}

TEST(PaymentsIn, A_long_memo_keeps_its_first_characters) {
  PaymentsHouse house;
  house.Take({Payment({{"Memo", "A" + std::string(300, 'b')}})});
  EXPECT_EQ(house.Paid("PayMemo"), "A" + std::string(254, 'b'));
}

TEST(PaymentsIn, A_payer_without_a_name_is_not_written_with_the_payment) {
  PaymentsHouse house;
  house.Take({Payment({{"CustomerRef", "<ListID>P-1</ListID>"}})});
  EXPECT_EQ(house.Paid("ClientID"), "NULL");
  EXPECT_EQ(house.Got("ClientID"), "ACME");
}

// --- Methods ---------------------------------------------------------------------------------------------------------

class MethodOfAPayment : public testing::TestWithParam<std::pair<std::string, std::int16_t>> {};

TEST_P(MethodOfAPayment, Has_a_code_by_its_name) { EXPECT_EQ(PaymentMethodCode(GetParam().first), GetParam().second); }

INSTANTIATE_TEST_SUITE_P(PaymentsIn, MethodOfAPayment,
                         testing::Values(std::pair{"Check", 1}, std::pair{"Cheque", 1}, std::pair{"Cash", 2},
                                         std::pair{"Credit", 3}, std::pair{"WriteOff", 4}, std::pair{"Other", 5},
                                         std::pair{"Debit", 6}, std::pair{"Credit Card", 7}, std::pair{"EFT", 8},
                                         std::pair{"Money Order", 9}, std::pair{"money order", 9}, std::pair{"CASH", 2},
                                         std::pair{"Barter", 1}, std::pair{"", 1}, std::pair{"Cash ", 1}),
                         [](const auto& test) { return "Case" + std::to_string(test.index); });

TEST(PaymentsIn, A_method_arrives_as_its_code_and_an_unknown_or_missing_one_as_a_check) {
  PaymentsHouse house;
  house.Take({Payment({{"PaymentMethodRef", "<FullName>eft</FullName>"}}),
              Payment({{"TxnID", "2-1"}, {"PaymentMethodRef", "<FullName>Barter</FullName>"}}),
              Payment({{"TxnID", "3-1"}, {"PaymentMethodRef", {}}})});
  EXPECT_EQ(house.Payments(), "8|95|1-1\n1|95|2-1\n1|95|3-1");
}

// --- Discounts -------------------------------------------------------------------------------------------------------

TEST(PaymentsIn, A_discount_is_a_payment_of_its_own_with_its_own_allocation) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({{"Memo", "Early"}, {"PaymentMethodRef", "<FullName>Cash</FullName>"}}, {{.discount = "5.00"}})});
  EXPECT_EQ(house.Payments(), "2|95|1-1\n3|5|1-1");
  EXPECT_EQ(house.Allocations(), "2|1044|ROOF:|95\n3|1044|ROOF:|5");
  for (const std::string column :
       {"PayDate", "PayMemo", "ClientID", "PayRef", "PayEnteredBy", "PayLastModifiedOn", "LastUpdated"}) {
    EXPECT_EQ(house.Paid(column, "3"), house.Paid(column, "2")) << column;
  }
  EXPECT_NE(house.Paid("PayID", "3"), house.Paid("PayID", "2"));
}

TEST(PaymentsIn, Discounts_of_several_invoices_are_one_payment_with_an_allocation_for_each) {
  PaymentsHouse house;
  house.Invoice();
  house.Invoice("I-2", "'ROOF:'", "1045");
  house.Invoice("I-3", "'ROOF:'", "1046");
  house.Take({Payment({}, {{.amount = "50.00", .discount = "5.10"},
                           {.txnId = "I-2", .number = "1045", .amount = "30.00"},
                           {.txnId = "I-3", .number = "1046", .amount = "15.00", .discount = "0.20"}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1\n3|5.3|1-1");
  EXPECT_EQ(house.Allocations(),
            "1|1044|ROOF:|50\n3|1044|ROOF:|5.1\n1|1045|ROOF:|30\n1|1046|ROOF:|15\n3|1046|ROOF:|0.2");
}

TEST(PaymentsIn, Discounts_that_come_to_nothing_are_no_payment) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({}, {{.amount = "50.00", .discount = "5.00"}, {.amount = "45.00", .discount = "-5.00"}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1");
  EXPECT_EQ(house.Allocations(), "1|1044|ROOF:|50\n1|1044|ROOF:|45");
}

TEST(PaymentsIn, A_discount_of_an_unknown_invoice_counts_into_the_payment) {
  PaymentsHouse house;
  house.Take({Payment({}, {{.discount = "5.00"}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1\n3|5|1-1");
  EXPECT_EQ(house.Allocations(), "NULL");
}

// --- Allocations -----------------------------------------------------------------------------------------------------

TEST(PaymentsIn, Looks_for_each_invoice_and_its_project) {
  PaymentsHouse house;
  house.Invoice();
  house.Clear();
  house.Take({Payment({}, {Applied{}, {.txnId = "I-2"}})});
  EXPECT_EQ(house.Statements("SELECT "),
            (Texts{"SELECT * FROM Payment;", "SELECT ProjectID FROM Project WHERE QBLINKID = 'P-1';",
                   "SELECT ClientID FROM Project WHERE QBLINKID = 'P-1';",
                   "SELECT QBLinkID from TransactionTable WHERE QBLinkID = '1-1';", "SELECT * FROM TransactionTable;",
                   "SELECT TransactionInvNum FROM TransactionTable WHERE QBLinkID = 'I-1';",
                   "SELECT ProjectID FROM TransactionTable WHERE QBLinkID = 'I-1';",
                   "SELECT TransactionInvNum FROM TransactionTable WHERE QBLinkID = 'I-2';"}));
}

TEST(PaymentsIn, What_goes_to_an_invoice_that_is_not_here_has_no_row) {
  PaymentsHouse house;
  house.Invoice();
  house.Invoice("I-3", "'ROOF:'", "");
  house.Take({Payment({}, {{.txnId = "I-2", .number = "7", .amount = "10.00"},
                           {.txnId = "", .amount = "11.00"},
                           {.txnId = "I-3", .amount = "12.00"},
                           {.amount = "62.00"}})});
  EXPECT_EQ(house.Allocations(), "1|1044|ROOF:|62");
  EXPECT_EQ(house.Paid("PayAmt"), "95");
  EXPECT_EQ(house.Paid("PayRetainer"), "0");
}

TEST(PaymentsIn, The_number_and_the_amount_are_those_that_quickbooks_tells) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({}, {{.number = "77", .amount = ""}, {.number = "", .amount = "1.00"}})});
  EXPECT_EQ(house.Allocations(), "1|77|ROOF:|0\n1|NULL|ROOF:|1");
}

TEST(PaymentsIn, A_look_for_the_invoice_that_fails_counts_as_none) {
  PaymentsHouse house({}, Breaks("SELECT TransactionInvNum FROM TransactionTable"));
  house.Invoice();
  house.Take({Payment({}, {Applied{}})});
  EXPECT_EQ(house.Allocations(), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(PaymentsIn, An_invoice_without_a_project_takes_that_of_the_payer) {
  PaymentsHouse house;
  house.Invoice("I-1", "NULL");
  house.Take({Payment({}, {Applied{}})});
  EXPECT_EQ(house.Requests("CustomerQueryRq"), Texts{"<ListID>P-1</ListID>"});
  EXPECT_EQ(house.Allocations(), "1|1044|ROOF:|95");
}

TEST(PaymentsIn, Without_any_project_the_rest_of_the_payment_is_left) {
  PaymentsHouse house;
  house.Invoice("I-1", "NULL");
  house.Invoice("I-2", "'ROOF:'", "1045");
  house.Take({Payment({{"CustomerRef", kCustomerRef}}, {Applied{}, {.txnId = "I-2"}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1");
  EXPECT_EQ(house.Allocations(), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(PaymentsIn, A_payment_of_a_customer_finds_its_client_and_the_project_of_its_invoice) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({{"CustomerRef", kCustomerRef}}, {Applied{}})});
  EXPECT_TRUE(house.Asked("SELECT ClientID FROM Client WHERE QBLINKID = 'C-1';"));
  EXPECT_FALSE(house.Asked("SELECT ClientID FROM Project WHERE QBLINKID = 'C-1';"));
  EXPECT_EQ(house.Paid("ClientID"), "ACME");
  EXPECT_EQ(house.Allocations(), "1|1044|ROOF:|95");
  EXPECT_EQ(house.Got("ClientID"), "ACME");
}

TEST(PaymentsIn, Money_that_is_not_applied_beside_some_that_is_has_no_row) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({{"UnusedPayment", "35.00"}}, {{.amount = "60.00"}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1");
  EXPECT_EQ(house.Allocations(), "1|1044|ROOF:|60");
  EXPECT_EQ(house.Paid("PayRetainer"), "0");
}

// --- Retainers -------------------------------------------------------------------------------------------------------

TEST(PaymentsIn, A_payment_that_is_applied_to_nothing_is_a_retainer) {
  PaymentsHouse house;
  house.Take({Payment()});
  EXPECT_EQ(house.Allocations(), "1|0|ROOF:|95");
  EXPECT_EQ(house.Paid("PayRetainer"), "-1");
  EXPECT_EQ(house.Got("TransactionInvSendBillFlag"), "B");
  EXPECT_TRUE(house.Asked("UPDATE Payment SET PayRetainer = True WHERE PayID = '" + house.Paid("PayID") + "';"));
}

TEST(PaymentsIn, A_retainer_of_a_customer_makes_the_customer_a_project) {
  PaymentsHouse house;
  const auto customer = house.AddCustomer("<Name>Barnes</Name>");
  house.Take({Payment({{"CustomerRef", Element("ListID", customer) + "<FullName>Barnes</FullName>"}})});
  const auto project = house.Scalar("SELECT ProjectID FROM Project WHERE QBLinkID = '" + customer + "'");
  EXPECT_NE(project, "(no row)");
  EXPECT_EQ(house.Allocations(), "1|0|" + project + "|95");
  EXPECT_EQ(house.Paid("PayRetainer"), "-1");
  EXPECT_EQ(house.Paid("ClientID"), house.Scalar("SELECT ClientID FROM Client WHERE QBLinkID = '" + customer + "'"));
}

TEST(PaymentsIn, A_retainer_without_a_project_leaves_the_payment_alone) {
  PaymentsHouse house;
  house.Take({Payment({{"CustomerRef", kCustomerRef}}), Payment({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1\n1|95|2-1");
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "2-1") << "the row that was begun is dropped";
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(PaymentsIn, A_retainer_that_can_not_be_marked_is_not_told) {
  PaymentsHouse house({}, Breaks("UPDATE Payment SET PayRetainer"));
  house.Take({Payment()});
  EXPECT_EQ(house.Paid("PayRetainer"), "0");
  EXPECT_EQ(house.Allocations(), "1|0|ROOF:|95");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- What comes ------------------------------------------------------------------------------------------------------

TEST(PaymentsIn, A_payment_that_is_here_is_left_as_it_is) {
  PaymentsHouse house;
  house.Invoice();
  house.Take({Payment({}, {Applied{}})});
  house.Take({Payment({{"TotalAmount", "7.00"}}, {{.amount = "7.00"}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(PaymentsIn, A_payment_of_unknown_invoices_alone_is_not_found_and_comes_once_more) {
  PaymentsHouse house;
  house.Take({Payment({}, {Applied{}})});
  house.Take({Payment({}, {Applied{}})});
  EXPECT_EQ(house.Payments(), "1|95|1-1\n1|95|1-1");
}

TEST(PaymentsIn, A_payment_of_nobody_here_is_passed_over_without_a_word) {
  PaymentsHouse house;
  house.Take({Payment({{"CustomerRef", "<ListID>P-9</ListID><FullName>Acme:Barn</FullName>"}})});
  EXPECT_TRUE(house.Asked("SELECT ClientID FROM Client WHERE QBLINKID = 'P-9';"));
  EXPECT_FALSE(house.Asked("SELECT QBLinkID from TransactionTable WHERE QBLinkID = '1-1';"));
  EXPECT_EQ(house.Count("Payment"), "0");
  EXPECT_TRUE(house.Requests("CustomerQueryRq").empty());
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(PaymentsIn, A_look_for_the_project_that_fails_counts_as_none) {
  PaymentsHouse house({}, Breaks("SELECT ProjectID FROM Project"));
  house.Sql("UPDATE Client SET QBLinkID = 'P-1'");
  house.Invoice();
  house.Take({Payment({}, {Applied{}})});
  EXPECT_EQ(house.Allocations(), "1|1044|ROOF:|95");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(PaymentsIn, A_customer_comes_in_as_a_client_first) {
  PaymentsHouse house;
  house.Invoice();
  const auto customer = house.AddCustomer("<Name>Barnes</Name>");
  house.Take({Payment({{"CustomerRef", Element("ListID", customer) + "<FullName>Barnes</FullName>"}}, {Applied{}})});
  EXPECT_EQ(house.Requests("CustomerQueryRq"), Texts{Element("ListID", customer)});
  EXPECT_EQ(house.Paid("ClientID"), "Barnes");
  EXPECT_EQ(house.Scalar("SELECT ProjectID FROM Project WHERE QBLinkID = '" + customer + "'"), "(no row)");
}

// --- On the way ------------------------------------------------------------------------------------------------------

TEST(PaymentsIn, The_form_shows_the_payers) {
  PaymentsHouse house;
  house.Take({Payment(), Payment({{"TxnID", "2-1"}, {"CustomerRef", "<ListID>P-9</ListID><FullName>B:C</FullName>"}})});
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Payments from QuickBooks..."});
  EXPECT_EQ(house.ShownRecords(), (Texts{"Label1", "Acme:Roof", "B:C"}));
}

TEST(PaymentsIn, A_payment_that_gets_no_key_is_told_and_the_run_goes_on) {
  PaymentsHouse house({}, "guid 1 raise 0x80004005\n");
  house.Invoice();
  house.Take({Payment({}, {Applied{}}), Payment({{"TxnID", "2-1"}}, {Applied{}})});
  EXPECT_EQ(house.BoxTexts(), (Texts{"Could Not Generate A GUID", "Problem in collecting PayID for QBLink = 1-1"}));
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[1].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.Got("PayID"), "");
  EXPECT_EQ(house.Count("Payment"), "2");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(PaymentsIn, A_discount_that_gets_no_key_is_allocated_all_the_same) {
  PaymentsHouse house({}, "guid 2 raise 0x80004005\n");
  house.Invoice();
  house.Take({Payment({}, {{.discount = "5.00"}})});
  EXPECT_EQ(house.BoxTexts(), Texts{"Could Not Generate A GUID"});
  EXPECT_EQ(house.Allocations(), "1|1044|ROOF:|95\n3|1044|ROOF:|5");
}

TEST(PaymentsIn, Cancel_ends_the_run_behind_the_record_in_hand) {
  PaymentsHouse house({.answers = "cancel after 1\nyes"});
  house.Take({Payment(), Payment({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.RowsOf("QBLinkID", "Payment"), "1-1");
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(PaymentsIn, Yes_after_an_error_goes_on_with_the_next_record) {
  PaymentsHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" Payment");
  house.Take({Payment(), Payment({{"TxnID", "2-1"}})});
  EXPECT_EQ(
      house.BoxTexts(),
      (Texts{"Error #: -2147217873(80040E2F) -- \r\n\r\nRefused." + ErrorBoxEnd("MovePaymentsToTW"), kKeepGoing}));
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "Question");
  EXPECT_EQ(house.Log(), Texts{"Error transfering Payment to Tallywick. Customer = Acme:Roof"});
  EXPECT_EQ(house.Payments(), "1|95|2-1");
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "2-1");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(PaymentsIn, An_allocation_that_is_refused_is_dropped_and_the_next_payment_comes_whole) {
  PaymentsHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" TransactionTable");
  house.Invoice();
  house.Take({Payment({}, {Applied{}}), Payment({{"TxnID", "2-1"}}, {Applied{}})});
  EXPECT_EQ(house.RowsOf("QBLinkID", "Payment"), "1-1\n2-1");
  EXPECT_EQ(house.Got("TransactionPayAmtApplied", "1-1"), "(no row)");
  EXPECT_EQ(house.Got("TransactionPayAmtApplied", "2-1"), "95");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(PaymentsIn, No_after_an_error_ends_the_run) {
  PaymentsHouse house({.answers = "no"}, Breaks("SELECT QBLinkID from TransactionTable"));
  house.Take({Payment(), Payment({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.BoxTexts(), (Texts{BrokenBox("MovePaymentsToTW"), kKeepGoing, kOperationCancelled}));
  EXPECT_EQ(house.desk.Boxes()[1].box.icon, BoxIcon::Question);
  EXPECT_EQ(house.Count("Payment"), "0");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_TRUE(Vars().g_Cancelled) << "the wish stays for whatever runs next";
}

TEST(PaymentsIn, A_payment_of_no_customer_is_told) {
  PaymentsHouse house({.answers = "yes"});
  house.Take({Payment({{"CustomerRef", {}}}), Payment({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.BoxTexts().back(), kKeepGoing);
  EXPECT_EQ(house.RowsOf("QBLinkID", "Payment"), "2-1");
}

TEST(PaymentsIn, Looks_that_are_not_excused_are_told) {
  for (const std::string look : {"SELECT ClientID FROM Project", "SELECT ProjectID FROM TransactionTable"}) {
    PaymentsHouse house({.answers = "yes"}, Breaks(look));
    house.Invoice();
    house.Take({Payment({}, {Applied{}})});
    EXPECT_EQ(house.BoxTexts(), (Texts{BrokenBox("MovePaymentsToTW"), kKeepGoing})) << look;
    EXPECT_EQ(Outcome(), TableOk::GoOn) << look;
  }
}

}  // namespace
}  // namespace twqb
