// The get of invoices: what comes, what is passed over, columns, tax, lines and groups, errors.

#include <gtest/gtest.h>

#include "tests/transactions/ArrivalsHouse.h"

namespace twqb {
namespace {

constexpr auto kTested = Got(enInvoices, "TransactionTable", "TransactionID", MoveInvoicesToTW);

std::string Line(std::string_view text, std::string_view amount) {
  return Element("InvoiceLineRet", Element("TxnLineID", "L-1") + (text.empty() ? "" : Element("Desc", text)) +
                                       (amount.empty() ? "" : Element("Amount", amount)));
}
std::string Group(std::string_view text, std::string_view total, std::string_view lines = {}) {
  return Element("InvoiceLineGroupRet",
                 "<TxnLineID>L-2</TxnLineID><ItemGroupRef><FullName>Kit</FullName></ItemGroupRef>" +
                     (text.empty() ? "" : Element("Desc", text)) + Element("IsPrintItemsInGroup", "false") +
                     (total.empty() ? "" : Element("TotalAmount", total)) + std::string(lines));
}

// An invoice of 100.00 that nothing is the matter with. Its lines stand behind.
std::string Invoice(const Changes& changes = {}, std::string_view lines = {}) {
  auto text = RecordOf("Invoice",
                       {{"TxnID", "1-1"},
                        {"TimeCreated", "2008-03-05T09:30:00-05:00"},
                        {"CustomerRef", kJobRef},
                        {"TxnDate", "2008-03-04"},
                        {"RefNumber", "1044"},
                        {"Subtotal", "100.00"},
                        {"AppliedAmount", "0.00"},
                        {"BalanceRemaining", "100.00"}},
                       changes);
  return text.insert(text.rfind("</InvoiceRet>"), lines);
}

class InvoicesHouse : public ArrivalsHouse {
 public:
  explicit InvoicesHouse(HouseOptions options = {}, std::string_view faults = {})
      : ArrivalsHouse(kTested, "Invoice", std::move(options), faults) {}
};

// --- Columns ---------------------------------------------------------------------------------------------------------

TEST(InvoicesIn, An_invoice_becomes_a_manual_invoice_with_every_column) {
  InvoicesHouse house;
  house.Take({Invoice({{"Memo", "Spring"}, {"IsToBePrinted", "true"}, {"BalanceRemaining", "105.00"}})});
  const std::pair<std::string_view, std::string_view> columns[] = {{"TransactionDate", "3/5/2008 9:30:00 AM"},
                                                                   {"InvoiceDate", "3/4/2008"},
                                                                   {"TransactionInvDateFrom", "3/4/2008"},
                                                                   {"TransactionInvDateTo", "3/4/2008"},
                                                                   {"ClientID", "ACME"},
                                                                   {"ProjectID", "ROOF:"},
                                                                   {"TransactionInvNum", "1044"},
                                                                   {"ServiceAmt", "100"},
                                                                   {"ServiceTaxAmt", "0"},
                                                                   {"ExpTaxAmt", "5"},
                                                                   {"ExpAmt", "0"},
                                                                   {"TransactionInvBillAmt", "105"},
                                                                   {"calcAmtOwedToDate", "0"},
                                                                   {"TransactionManInvPaidToday", "0"},
                                                                   {"TransactionInvDiscount", "0"},
                                                                   {"TransactionManInvMiscAmt", "0"},
                                                                   {"TransactionMemo", "Spring"},
                                                                   {"TransactionInvSendBillFlag", "P"},
                                                                   {"TransactionManInv", "-1"},
                                                                   {"LastUpdated", "3/5/2008 3:00:00 PM"},
                                                                   {"TransactionJointInv", "0"},
                                                                   {"PayID", "NULL"},
                                                                   {"IsDraft", "0"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Got(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Got("TransactionID")));
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(InvoicesIn, An_invoice_without_a_date_has_that_of_its_making) {
  InvoicesHouse house;
  house.Take({Invoice({{"TxnDate", {}}})});
  for (const std::string column :
       {"TransactionDate", "InvoiceDate", "TransactionInvDateFrom", "TransactionInvDateTo"}) {
    EXPECT_EQ(house.Got(column), "3/5/2008 9:30:00 AM") << column;
  }
}

TEST(InvoicesIn, What_quickbooks_leaves_out_is_not_written) {
  InvoicesHouse house;
  house.Take({Invoice(
      {{"TimeCreated", {}}, {"TxnDate", {}}, {"Subtotal", {}}, {"AppliedAmount", {}}, {"BalanceRemaining", {}}})});
  for (const std::string column : {"TransactionDate", "InvoiceDate", "TransactionInvDateFrom", "TransactionInvDateTo",
                                   "ServiceAmt", "TransactionMemo", "TransactionInvSendBillFlag"}) {
    EXPECT_EQ(house.Got(column), "NULL") << column;
  }
  EXPECT_EQ(house.Got("TransactionInvBillAmt"), "0");
  EXPECT_EQ(house.Got("ExpTaxAmt"), "0");
  EXPECT_EQ(house.Details(), "Invoice transfered from QuickBooks|0");
}

TEST(InvoicesIn, An_invoice_that_is_not_to_be_printed_says_so) {
  InvoicesHouse house;
  house.Take({Invoice({{"IsToBePrinted", "false"}})});
  EXPECT_EQ(house.Got("TransactionInvSendBillFlag"), "B");
}

TEST(InvoicesIn, A_number_that_is_too_long_keeps_its_last_characters) {
  InvoicesHouse house;
  house.Take({Invoice({{"RefNumber", "A-1234567890-1234567890-12345"}})});
  EXPECT_EQ(house.Got("TransactionInvNum"), "34567890-1234567890-12345");
}

// --- Tax -------------------------------------------------------------------------------------------------------------

struct Taxed {
  std::string name;
  std::string applied;
  std::string open;
  std::string tax;
  std::string billed;
};
class DerivedTax : public testing::TestWithParam<Taxed> {};

TEST_P(DerivedTax, Is_what_was_paid_and_is_open_beyond_the_subtotal) {
  InvoicesHouse house;
  const auto given = [](const std::string& text) {
    return text.empty() ? std::optional<std::string>() : std::optional(text);
  };
  house.Take({Invoice({{"AppliedAmount", given(GetParam().applied)}, {"BalanceRemaining", given(GetParam().open)}},
                      Line("Design", "100.00"))});
  EXPECT_EQ(house.Got("ExpTaxAmt"), GetParam().tax);
  EXPECT_EQ(house.Got("TransactionInvBillAmt"), GetParam().billed);
  EXPECT_EQ(house.Statements("INSERT INTO ManInvDetail").size(), GetParam().tax == "0" ? 1U : 2U);
}

INSTANTIATE_TEST_SUITE_P(InvoicesIn, DerivedTax,
                         testing::Values(Taxed{"None", "0.00", "100.00", "0", "100"},
                                         Taxed{"Of_an_open_invoice", "0.00", "108.25", "8.25", "108.25"},
                                         Taxed{"Of_30_paid_of_105", "-30.00", "75.00", "5", "105"},
                                         Taxed{"Of_a_paid_invoice", "-105.00", "0.00", "5", "105"},
                                         Taxed{"Of_a_cent", "0.00", "100.01", "0.01", "100.01"},
                                         Taxed{"Without_what_was_paid", "", "105.00", "5", "105"},
                                         Taxed{"Without_what_is_open", "-105.00", "", "5", "105"},
                                         Taxed{"Without_both", "", "", "-100", "0"}),
                         [](const auto& test) { return test.param.name; });

TEST(InvoicesIn, The_tax_is_exact_where_binary_fractions_are_not) {
  InvoicesHouse house;
  house.Take(
      {Invoice({{"Subtotal", "9999999999.70"}, {"AppliedAmount", "-0.10"}, {"BalanceRemaining", "9999999999.80"}},
               Line("Design", "9999999999.70"))});
  EXPECT_EQ(house.Got("ExpTaxAmt"), "0.2");
  EXPECT_EQ(
      house.Statements("INSERT INTO ManInvDetail").back().find("'Calculated Taxes',0.2,0,0.2,0);") == std::string::npos,
      false);
}

// --- Details ---------------------------------------------------------------------------------------------------------

TEST(InvoicesIn, Each_line_and_each_group_and_the_tax_become_a_detail_in_order) {
  InvoicesHouse house;
  house.Take({Invoice(
      {{"BalanceRemaining", "105.00"}},
      Line("Design", "40.00") + Group("Kit of parts", "35.50", Line("Inside", "35.50")) + Line("Discount", "-24.50"))});
  EXPECT_EQ(house.Details(), "Design|40\nKit of parts|35.5\nDiscount|-24.5\nCalculated Taxes|5");
  EXPECT_EQ(house.RowsOf("ManInvDetailTot,ManInvDetailTaxAmt,ManInvDetailTaxPerc", "ManInvDetail"),
            "40|0|0.0\n35.5|0|0.0\n-24.5|0|0.0\n5|0|0.0");
  EXPECT_EQ(
      house.Scalar("SELECT COUNT(*) FROM ManInvDetail WHERE TransactionID = '" + house.Got("TransactionID") + "'"),
      "4");
  EXPECT_EQ(house.Scalar("SELECT COUNT(DISTINCT ManInvDetailID) FROM ManInvDetail"), "4");
}

TEST(InvoicesIn, The_statements_of_details_are_these) {
  InvoicesHouse house;
  house.Take(
      {Invoice({{"BalanceRemaining", "105.00"}}, Line("O'Hara's drawing", "99.50")), Invoice({{"TxnID", "2-1"}})});
  const auto inserts = house.Statements("INSERT INTO ManInvDetail");
  ASSERT_EQ(inserts.size(), 3U);
  const auto keys = Split(house.RowsOf("ManInvDetailID", "ManInvDetail"), '\n');
  const auto first = house.Got("TransactionID");
  const std::string columns =
      "ManInvDetailDesc,ManInvDetailAmt, ManInvDetailTaxAmt,ManInvDetailTot,ManInvDetailTaxPerc) VALUES('";
  EXPECT_EQ(inserts[0], "INSERT INTO ManInvDetail(ManInvDetailID, TransactionID," + columns + keys[0] + "', '" + first +
                            "', 'O''Hara''s drawing',99.5,0,99.5,0);");
  EXPECT_EQ(inserts[1], "INSERT INTO ManInvDetail(ManInvDetailID, TransactionID," + columns + keys[1] + "', '" + first +
                            "', 'Calculated Taxes',5,0,5,0);");
  EXPECT_EQ(inserts[2], "INSERT INTO ManInvDetail(ManInvDetailID,TransactionID," + columns + keys[2] + "', '" +
                            house.Got("TransactionID", "2-1") +
                            "', 'Invoice transfered from QuickBooks',100,0,100,0);");
}

struct OneLine {
  std::string name;
  std::string line;
  std::string details;
};
class LinesOfAnInvoice : public testing::TestWithParam<OneLine> {};

TEST_P(LinesOfAnInvoice, Become_details_unless_there_is_nothing_to_say) {
  InvoicesHouse house;
  house.Take({Invoice({}, GetParam().line)});
  EXPECT_EQ(house.Details(), GetParam().details);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(InvoicesIn, LinesOfAnInvoice,
                         testing::Values(OneLine{"Text_and_amount", Line("Design", "12.50"), "Design|12.5"},
                                         OneLine{"Text_alone", Line("Thank you", ""), "Thank you|0"},
                                         OneLine{"Text_and_nothing", Line("Thank you", "0.00"), "Thank you|0"},
                                         OneLine{"Amount_alone", Line("", "12.50"), ".|12.5"},
                                         OneLine{"Neither", Line("", ""), "NULL"},
                                         OneLine{"No_text_and_nothing", Line("", "0.00"), "NULL"},
                                         OneLine{"A_blank_is_a_text", Line(" ", ""), " |0"},
                                         OneLine{"An_amount_that_is_none", Line("Design", "a lot"), "Design|0"},
                                         OneLine{"A_group_without_text", Group("", "12.50"), ".|12.5"},
                                         OneLine{"A_group_without_total", Group("Kit", ""), "Kit|0"},
                                         OneLine{"A_group_of_nothing", Group("", "0.00"), "NULL"},
                                         OneLine{"Lines_inside_a_group",
                                                 Group("Kit", "3.00", Line("A", "1.00") + Line("B", "2.00")), "Kit|3"}),
                         [](const auto& test) { return test.param.name; });

TEST(InvoicesIn, A_line_takes_nothing_from_the_line_before_it) {
  InvoicesHouse house;
  house.Take({Invoice({}, Line("Design", "100.00") + Line("", "") + Line("Thanks", ""))});
  EXPECT_EQ(house.Details(), "Design|100\nThanks|0");
}

TEST(InvoicesIn, An_invoice_that_gets_no_key_has_no_lines) {
  InvoicesHouse house({}, "guid 1 raise 0x80004005\n");
  house.Take({Invoice({}, Line("Design", "100.00"))});
  EXPECT_EQ(house.BoxTexts(), Texts{"Could Not Generate A GUID"});
  EXPECT_EQ(house.Got("TransactionID"), "");
  EXPECT_EQ(house.Count("ManInvDetail"), "0");
}

// --- What comes ------------------------------------------------------------------------------------------------------

TEST(InvoicesIn, An_invoice_without_a_number_is_passed_over) {
  InvoicesHouse house;
  house.Take({Invoice({{"RefNumber", {}}}), Invoice({{"TxnID", "2-1"}, {"RefNumber", "   "}}),
              Invoice({{"TxnID", "3-1"}, {"RefNumber", ""}}), Invoice({{"TxnID", "4-1"}, {"RefNumber", " 7 "}})});
  EXPECT_EQ(house.RowsOf("QBLinkID,TransactionInvNum", "TransactionTable"), "4-1| 7 ");
  EXPECT_EQ(house.Statements("SELECT ProjectID").size(), 1U);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoicesIn, A_pending_invoice_comes_as_soon_as_it_is_none) {
  InvoicesHouse house;
  house.Take({Invoice({{"IsPending", "true"}})});
  EXPECT_EQ(house.Count("TransactionTable"), "0");
  house.Take({Invoice({{"IsPending", "false"}})});
  EXPECT_EQ(house.Count("TransactionTable"), "1");
}

TEST(InvoicesIn, An_invoice_that_is_here_is_left_as_it_is) {
  InvoicesHouse house;
  house.Take({Invoice({}, Line("Design", "100.00"))});
  house.Take({Invoice({{"Subtotal", "200.00"}, {"BalanceRemaining", "200.00"}}, Line("More", "200.00"))});
  EXPECT_EQ(house.Count("TransactionTable"), "1");
  EXPECT_EQ(house.Got("ServiceAmt"), "100");
  EXPECT_EQ(house.Details(), "Design|100");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoicesIn, Looks_for_project_and_client_and_then_for_the_invoice_itself) {
  InvoicesHouse house;
  house.Take({Invoice()});
  EXPECT_EQ(house.Statements("SELECT "),
            (Texts{"SELECT * FROM TransactionTable;", "SELECT ProjectID FROM Project WHERE QBLINKID = 'P-1';",
                   "SELECT ClientID FROM Project WHERE QBLINKID = 'P-1';",
                   "SELECT QBLinkID from TransactionTable WHERE QBLinkID = '1-1';"}));
}

TEST(InvoicesIn, An_invoice_of_an_unknown_job_is_passed_over_without_a_word) {
  InvoicesHouse house;
  house.Take({Invoice({{"CustomerRef", "<ListID>P-2</ListID><FullName>Acme:Barn</FullName>"}})});
  EXPECT_EQ(house.Statements("SELECT ClientID"), Texts{});
  EXPECT_EQ(house.Count("TransactionTable"), "0");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_TRUE(house.Requests("CustomerQueryRq").empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoicesIn, An_invoice_of_a_project_without_a_client_is_passed_over_without_a_word) {
  InvoicesHouse house;
  house.Sql("UPDATE Project SET ClientID = NULL");
  house.Take({Invoice()});
  EXPECT_EQ(house.Count("TransactionTable"), "0");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(InvoicesIn, A_look_for_the_project_that_fails_passes_the_invoice_over) {
  InvoicesHouse house({}, Breaks("SELECT ProjectID FROM Project"));
  house.Take({Invoice(), Invoice({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "2-1");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(InvoicesIn, A_look_for_the_client_that_fails_is_told) {
  InvoicesHouse house({.answers = "yes"}, Breaks("SELECT ClientID FROM Project"));
  house.Take({Invoice(), Invoice({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "2-1");
  EXPECT_EQ(house.BoxTexts(), (Texts{BrokenBox("MoveInvoicesToTW"), kKeepGoing}));
}

TEST(InvoicesIn, An_invoice_of_no_customer_is_told) {
  InvoicesHouse house({.answers = "yes"});
  house.Take({Invoice({{"CustomerRef", {}}}), Invoice({{"TxnID", "2-1"}})});
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.BoxTexts().back(), kKeepGoing);
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "2-1");
}

// --- Customers that are pulled first ---------------------------------------------------------------------------------

TEST(InvoicesIn, An_invoice_of_a_customer_pulls_it_as_client_and_as_project) {
  InvoicesHouse house;
  const auto customer = house.AddCustomer("<Name>Barnes</Name>");
  const auto ref = Element("ListID", customer) + "<FullName>Barnes</FullName>";
  house.Take({Invoice({{"CustomerRef", ref}})});
  EXPECT_EQ(house.Requests("CustomerQueryRq"), (Texts{Element("ListID", customer), Element("ListID", customer)}));
  EXPECT_EQ(house.Got("ClientID"), house.Scalar("SELECT ClientID FROM Client WHERE QBLinkID = '" + customer + "'"));
  EXPECT_EQ(house.Got("ProjectID"), house.Scalar("SELECT ProjectID FROM Project WHERE QBLinkID = '" + customer + "'"));
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoicesIn, An_invoice_of_a_customer_that_does_not_come_in_is_passed_over_without_a_word) {
  InvoicesHouse house;
  house.Take({Invoice({{"CustomerRef", "<ListID>C-9</ListID><FullName>Gone</FullName>"}})});
  EXPECT_EQ(house.Requests("CustomerQueryRq").size(), 2U);
  EXPECT_EQ(house.Count("TransactionTable"), "0");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(InvoicesIn, Invoices_that_do_not_come_anyway_pull_nobody) {
  InvoicesHouse house;
  house.Take({Invoice({{"CustomerRef", kCustomerRef}, {"RefNumber", {}}}),
              Invoice({{"TxnID", "2-1"}, {"CustomerRef", kCustomerRef}, {"IsPending", "true"}})});
  EXPECT_TRUE(house.Requests("CustomerQueryRq").empty());
}

// --- On the way ------------------------------------------------------------------------------------------------------

TEST(InvoicesIn, No_records_are_a_good_end_that_shows_nothing) {
  InvoicesHouse house;
  Vars().g_TableOk = TableOk::False;
  house.ListHouse::Take(RecordList());
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_TRUE(house.traffic.statements.empty());
}

TEST(InvoicesIn, The_form_shows_numbers_also_of_invoices_that_are_passed_over) {
  InvoicesHouse house;
  house.Take({Invoice(), Invoice({{"TxnID", "2-1"}, {"RefNumber", {}}}),
              Invoice({{"TxnID", "3-1"}, {"RefNumber", "1045"}, {"IsPending", "true"}})});
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Invoices from QuickBooks..."});
  EXPECT_EQ(house.ShownRecords(), (Texts{"Label1", "Invoice Number: 1044", "Invoice Number: 1045"}));
}

TEST(InvoicesIn, Without_a_bar_nothing_is_shown) {
  InvoicesHouse house;
  Vars().g_NoProgressBar = true;
  house.Take({Invoice()});
  EXPECT_EQ(house.Count("TransactionTable"), "1");
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(InvoicesIn, Cancel_ends_the_run_behind_the_record_in_hand) {
  InvoicesHouse house({.answers = "cancel after 1\nyes"});
  house.Take({Invoice(), Invoice({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "1-1");
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(InvoicesIn, Yes_after_an_error_goes_on_with_the_next_record) {
  InvoicesHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" TransactionTable");
  house.Take({Invoice(), Invoice({{"TxnID", "2-1"}})});
  EXPECT_EQ(
      house.BoxTexts(),
      (Texts{"Error #: -2147217873(80040E2F) -- \r\n\r\nRefused." + ErrorBoxEnd("MoveInvoicesToTW"), kKeepGoing}));
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "Question");
  EXPECT_EQ(house.desk.Boxes()[1].box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(house.Log(), Texts{"Error transfering Invoice to Tallywick. Customer = Acme:Roof"});
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "2-1");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoicesIn, Yes_after_an_error_in_the_last_record_leaves_the_outcome_that_tells_of_it) {
  InvoicesHouse house({.answers = "yes"}, Breaks("INSERT INTO ManInvDetail"));
  house.Take({Invoice()});
  EXPECT_EQ(Outcome(), TableOk::GoOn);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(house.Count("TransactionTable"), "1") << "the invoice stays without its details";
}

TEST(InvoicesIn, No_after_an_error_ends_the_run) {
  InvoicesHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" TransactionTable");
  house.Take({Invoice(), Invoice({{"TxnID", "2-1"}})});
  ASSERT_EQ(house.BoxTexts().size(), 3U);
  EXPECT_EQ(house.desk.Boxes()[1].box.icon, BoxIcon::Question);
  EXPECT_EQ(house.BoxTexts().back(), kOperationCancelled);
  EXPECT_EQ(house.Count("TransactionTable"), "0");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(InvoicesIn, A_look_for_the_invoice_itself_that_fails_is_told) {
  InvoicesHouse house({.answers = "yes"}, Breaks("SELECT QBLinkID from TransactionTable"));
  house.Take({Invoice(), Invoice({{"TxnID", "2-1"}})});
  EXPECT_EQ(house.BoxTexts(), (Texts{BrokenBox("MoveInvoicesToTW"), kKeepGoing}));
  EXPECT_EQ(house.RowsOf("QBLinkID", "TransactionTable"), "2-1");
}

}  // namespace
}  // namespace twqb
