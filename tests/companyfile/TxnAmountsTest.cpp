#include "TxnTest.h"
#include "adapters/companyfile/TxnAmounts.h"

namespace twqb::company {

namespace {

using testing::ElementsAre;

Decimal D(std::string_view text) { return Decimal::Parse(text).value(); }
Currency Money(double value) { return Currency::FromDouble(value); }

struct Parsed {
  std::string text;
  std::string shown;  // empty: it is none
};
class DecimalText : public testing::TestWithParam<Parsed> {};

TEST_P(DecimalText, Is_read_exactly_or_not_at_all) {
  const auto value = Decimal::Parse(GetParam().text);
  EXPECT_EQ(value ? value->Text() : std::string{}, GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Texts, DecimalText,
                         testing::Values(Parsed{"0", "0"}, Parsed{"12", "12"}, Parsed{"12.50000", "12.5"},
                                         Parsed{"-.5", "-0.5"}, Parsed{"+3.", "3"}, Parsed{"0.00001", "0.00001"},
                                         Parsed{"-0.00", "0"}, Parsed{"0009999999999999.99999", "9999999999999.99999"},
                                         Parsed{"10000000000000", ""}, Parsed{"1.000001", ""}, Parsed{"", ""},
                                         Parsed{".", ""}, Parsed{"-", ""}, Parsed{"1,5", ""}, Parsed{"1.2.3", ""}));

TEST(Rounding, Goes_away_from_zero_at_half_a_cent) {
  EXPECT_EQ(AmountOf(D("1"), D("0.005")), Money(0.01));
  EXPECT_EQ(AmountOf(D("1"), D("-0.005")), Money(-0.01));
  EXPECT_EQ(AmountOf(D("1"), D("0.00499")), Money(0));
  EXPECT_EQ(AmountOf(D("7.75"), D("33.33333")), Money(258.33));
  EXPECT_EQ(AmountOf(D("0.00001"), D("999999.99999")), Money(10.00));
  EXPECT_EQ(PercentOf(Money(10.10), D("8.25")), Money(0.83));
  EXPECT_EQ(PercentOf(Money(-1.00), D("0.5")), Money(-0.01));
}

TEST(Rounding, A_rate_has_five_decimals) {
  EXPECT_EQ(RateOf(Money(100), D("3"))->Text(), "33.33333");
  EXPECT_EQ(RateOf(Money(200), D("3"))->Text(), "66.66667");
  EXPECT_EQ(RateOf(Money(-200), D("3"))->Text(), "-66.66667");
  EXPECT_EQ(RateOf(Money(1), D("0")), std::nullopt);
}

TEST(Rounding, What_is_too_great_is_no_amount) {
  EXPECT_EQ(AmountOf(D("9999999999999"), D("1.1")), std::nullopt);
  EXPECT_EQ(AmountOf(D("-9999999999999"), D("1.1")), std::nullopt);
  EXPECT_NE(AmountOf(D("9999999999999.99"), D("1")), std::nullopt);
  EXPECT_EQ(Product(D("9999999999999"), D("9")), std::nullopt);
}

// What a line of an invoice says, and what it comes to.
struct LineCase {
  std::string name;
  std::string given;
  std::string quantity;
  std::string rate;
  std::string amount;
};
class SalesLine : public TxnTest, public testing::WithParamInterface<LineCase> {};

TEST_P(SalesLine, Is_completed_from_what_is_given) {
  const auto& line = GetParam();
  // The line before, of 50.00, is what a percentage is of; the one behind keeps the total above 0.
  const auto fixed = [](std::string_view amount) {
    return Tag("InvoiceLineAdd", Named("ItemRef", "Print") + Tag("Amount", amount));
  };
  const auto added = AddTxn(
      "Invoice", Named("CustomerRef", "Acme") + fixed("50.00") + Tag("InvoiceLineAdd", line.given) + fixed("1000.00"));
  ASSERT_EQ(added.code, 0) << added.message;
  const auto answered = added.node.first_child().child("InvoiceLineRet").next_sibling();
  EXPECT_EQ(answered.child("Quantity").text().get(), line.quantity);
  EXPECT_EQ(answered.child("Rate").text().get(), line.rate);
  EXPECT_EQ(answered.child("Amount").text().get(), line.amount);
  const auto amount = line.amount.empty() ? 0.0 : std::stod(line.amount);
  EXPECT_EQ(added.Value("Subtotal"), MoneyText(Money(1050 + amount)));
  EXPECT_EQ(added.Value("BalanceRemaining"), added.Value("Subtotal"));
}

std::string DesignLine(std::string_view rest) { return Named("ItemRef", "Design").append(rest); }

INSTANTIATE_TEST_SUITE_P(
    Terms, SalesLine,
    testing::Values(LineCase{"Nothing", "", "", "", ""},
                    LineCase{"The_item_alone", DesignLine(""), "", "100.00", "100.00"},
                    LineCase{"Quantity", DesignLine(Tag("Quantity", "2.5")), "2.5", "100.00", "250.00"},
                    LineCase{"Rate", DesignLine(Tag("Rate", "33.335")), "", "33.335", "33.34"},
                    LineCase{"Quantity_and_rate", DesignLine(Tag("Quantity", "7.75") + Tag("Rate", "33.33333")), "7.75",
                             "33.33333", "258.33"},
                    LineCase{"Amount", DesignLine(Tag("Amount", "97.50")), "", "", "97.50"},
                    LineCase{"Quantity_and_amount", DesignLine(Tag("Quantity", "3") + Tag("Amount", "100.00")), "3",
                             "33.33333", "100.00"},
                    LineCase{"No_quantity_and_amount", DesignLine(Tag("Quantity", "0") + Tag("Amount", "100.00")), "0",
                             "", "100.00"},
                    LineCase{"All", DesignLine(Tag("Quantity", "3") + Tag("Rate", "33.00") + Tag("Amount", "100.00")),
                             "3", "33.00", "100.00"},
                    LineCase{"No_quantity", DesignLine(Tag("Quantity", "0")), "0", "100.00", "0.00"},
                    LineCase{"Less_than_nothing", DesignLine(Tag("Quantity", "1") + Tag("Rate", "-12.00")), "1",
                             "-12.00", "-12.00"},
                    LineCase{"A_percentage", DesignLine(Tag("RatePercent", "12.5")), "", "", "6.25"},
                    LineCase{"The_price_of_the_sales_side", Named("ItemRef", "Print"), "", "12.00", "12.00"},
                    LineCase{"A_payment", Named("ItemRef", "Paid") + Tag("Amount", "30.00"), "", "", "-30.00"},
                    LineCase{"A_payment_by_rate", Named("ItemRef", "Paid") + Tag("Rate", "30.00"), "", "30.00",
                             "-30.00"},
                    LineCase{"A_description", Tag("Desc", "Thank you"), "", "", ""}),
    [](const auto& test) { return test.param.name; });

class Amounts : public TxnTest {};

TEST_F(Amounts, A_purchase_takes_the_cost_and_the_description_of_the_purchase_side) {
  const auto added =
      AddTxn("Bill", Named("VendorRef", "Vic") + Tag("ItemLineAdd", Named("ItemRef", "Print") + Tag("Quantity", "3")) +
                         Tag("ItemLineAdd", Named("ItemRef", "Print") + Tag("Quantity", "4") + Tag("Amount", "10.00")));
  EXPECT_EQ(added.Value("ItemLineRet/Cost"), "8.00");
  EXPECT_EQ(added.Value("ItemLineRet/Amount"), "24.00");
  EXPECT_EQ(added.Value("ItemLineRet/Desc"), "Printing");
  EXPECT_STREQ(added.node.first_child().last_child().previous_sibling().child("Cost").text().get(), "2.50");
  EXPECT_EQ(added.Value("AmountDue"), "34.00");
  EXPECT_EQ(added.Value("OpenAmount"), "34.00");
}

TEST_F(Amounts, A_retainer_comes_to_nothing_and_is_taken) {
  const auto added = AddTxn("Invoice", Named("CustomerRef", "Acme") +
                                           Tag("InvoiceLineAdd", Named("ItemRef", "Print") + Tag("Amount", "500.00")) +
                                           Tag("InvoiceLineAdd", Named("ItemRef", "Paid") + Tag("Amount", "500.00")));
  EXPECT_EQ(added.code, 0);
  EXPECT_EQ(added.Value("Subtotal"), "0.00");
  EXPECT_EQ(added.Value("BalanceRemaining"), "0.00");
  EXPECT_EQ(added.Value("IsPaid"), "true");
  EXPECT_EQ(Balance("Customer", "Acme"), "0.00");
}

TEST_F(Amounts, A_group_brings_its_items_each_as_often_as_it_has_them) {
  const auto added =
      AddTxn("Invoice", Named("CustomerRef", "Acme") +
                            Tag("InvoiceLineAdd", Named("ItemRef", "Print") + Tag("Amount", "1.00")) +
                            Tag("InvoiceLineGroupAdd", Named("ItemGroupRef", "Kit") + Tag("Quantity", "1.5")) +
                            Tag("InvoiceLineAdd", Named("ItemRef", "Print") + Tag("Amount", "2.00")));
  ASSERT_EQ(added.code, 0) << added.message;
  std::vector<std::string> order;
  for (const auto node : added.node.first_child().children()) {
    if (std::string_view(node.name()).starts_with("InvoiceLine")) order.emplace_back(node.name());
  }
  EXPECT_THAT(order, ElementsAre("InvoiceLineRet", "InvoiceLineGroupRet", "InvoiceLineRet"));
  EXPECT_EQ(added.Value("InvoiceLineGroupRet/Desc"), "The kit");
  EXPECT_EQ(added.Value("InvoiceLineGroupRet/TotalAmount"), "318.00");
  EXPECT_EQ(added.Value("InvoiceLineGroupRet/IsPrintItemsInGroup"), "false");
  EXPECT_EQ(added.Value("InvoiceLineGroupRet/TxnLineID"), "3-1204729200");
  EXPECT_EQ(added.Value("InvoiceLineGroupRet/InvoiceLineRet/TxnLineID"), "4-1204729200");
  EXPECT_EQ(added.Value("InvoiceLineGroupRet/InvoiceLineRet/Quantity"), "3");
  EXPECT_EQ(added.Value("InvoiceLineGroupRet/InvoiceLineRet/Amount"), "300.00");
  EXPECT_EQ(added.Value("Subtotal"), "321.00");
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "Kit"))).code,
            3140);
}

TEST_F(Amounts, Tax_is_on_the_taxable_lines_at_the_rate_of_the_tax_item) {
  const auto line = [](std::string_view amount, std::string_view code) {
    return Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Amount", amount) + Named("SalesTaxCodeRef", code));
  };
  const auto taxed = AddTxn("Invoice", Named("CustomerRef", "Acme") + Named("ItemSalesTaxRef", "County") +
                                           line("10.10", "Tax") + line("50.00", "Non"));
  ASSERT_EQ(taxed.code, 0) << taxed.message;
  EXPECT_EQ(taxed.Value("Subtotal"), "60.10");
  EXPECT_EQ(taxed.Value("SalesTaxPercentage"), "8.25");
  EXPECT_EQ(taxed.Value("SalesTaxTotal"), "0.83");
  EXPECT_EQ(taxed.Value("BalanceRemaining"), "60.93");
  const auto untaxed = AddTxn("Invoice", Named("CustomerRef", "Acme") + line("10.10", "Tax"));
  EXPECT_EQ(untaxed.Value("SalesTaxTotal"), "0.00");
  EXPECT_EQ(untaxed.Value("BalanceRemaining"), "10.10");
  const auto exempt = AddTxn("Invoice", Named("CustomerRef", "Acme") + Named("ItemSalesTaxRef", "County") +
                                            Named("CustomerSalesTaxCodeRef", "Non") + line("10.10", "Tax"));
  EXPECT_EQ(exempt.Value("BalanceRemaining"), "10.10");
}

TEST_F(Amounts, Tax_is_the_customer_s_where_the_sale_says_nothing) {
  for (const char* code : {"Tax", "Non"}) {
    Send(AddOf("Customer", Tag("Name", code) + Named("SalesTaxCodeRef", code) + Named("ItemSalesTaxRef", "County")));
    const auto added =
        AddTxn("Invoice", Named("CustomerRef", code) +
                              Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Named("SalesTaxCodeRef", "Tax")));
    EXPECT_EQ(added.Value("ItemSalesTaxRef/FullName"), "County");
    EXPECT_EQ(added.Value("CustomerSalesTaxCodeRef/FullName"), code);
    EXPECT_EQ(added.Value("SalesTaxTotal"), std::string_view(code) == "Tax" ? "8.25" : "0.00");
  }
}

TEST_F(Amounts, A_group_in_a_bill_brings_its_items_at_their_cost) {
  const auto added = AddTxn(
      "Bill", Named("VendorRef", "Vic") + Tag("ItemGroupLineAdd", Named("ItemGroupRef", "Kit") + Tag("Quantity", "2")));
  ASSERT_EQ(added.code, 0) << added.message;
  EXPECT_EQ(added.Value("ItemGroupLineRet/TotalAmount"), "416.00");
  EXPECT_EQ(added.Value("AmountDue"), "416.00");
  EXPECT_FALSE(added.Has("ItemGroupLineRet/IsPrintItemsInGroup"));
}

TEST_F(Amounts, A_tax_item_in_a_line_is_a_line_like_others) {
  const auto given =
      AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", Named("ItemRef", "Design")) +
                            Tag("InvoiceLineAdd", Named("ItemRef", "County") + Tag("Amount", "5.00")));
  EXPECT_EQ(given.Value("Subtotal"), "105.00");
  const auto reckoned =
      AddTxn("Invoice", Named("CustomerRef", "Acme") +
                            Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Named("SalesTaxCodeRef", "Tax")) +
                            Tag("InvoiceLineAdd", Named("ItemRef", "Design")) +
                            Tag("InvoiceLineAdd", Named("ItemRef", "County")));
  EXPECT_EQ(reckoned.Value("Subtotal"), "208.25");
}

TEST_F(Amounts, Canadian_taxes_count_as_they_are_given) {
  MakeFirm({.country = messages::Country::CA, .accepts = {messages::Country::CA}});
  const auto added = AddTxn("Invoice",
                            Named("CustomerRef", "Acme") +
                                Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Named("TaxCodeRef", "E")) +
                                Tag("Tax1Total", "5.00") + Tag("Tax2Total", "8.00"),
                            "CA3.0");
  ASSERT_EQ(added.code, 0) << added.message;
  EXPECT_EQ(added.Value("Subtotal"), "100.00");
  EXPECT_EQ(added.Value("Tax1Total"), "5.00");
  EXPECT_EQ(added.Value("BalanceRemaining"), "113.00");
  EXPECT_FALSE(added.Has("SalesTaxTotal"));
}

TEST_F(Amounts, Balances_follow_what_customers_and_vendors_owe) {
  Invoice("Acme", "100.00");
  const auto job = Invoice("Acme:Roof", "40.00");
  const auto memo = CreditMemo("Acme", "15.00");
  EXPECT_EQ(CustomerField("Acme", "Balance"), "85.00");
  EXPECT_EQ(CustomerField("Acme", "TotalBalance"), "125.00");
  EXPECT_EQ(CustomerField("Acme:Roof", "Balance"), "40.00");
  EXPECT_EQ(Balance("Account", "Accounts Receivable"), "125.00");
  Delete("Invoice", job);
  Delete("CreditMemo", memo);
  EXPECT_EQ(CustomerField("Acme", "TotalBalance"), "100.00");
  EXPECT_EQ(Balance("Account", "Accounts Receivable"), "100.00");

  const auto expense = Tag("ExpenseLineAdd", Named("AccountRef", "Rent") + Tag("Amount", "70.00"));
  const auto bill = IdOf(AddTxn("Bill", Named("VendorRef", "Vic") + expense));
  EXPECT_EQ(Balance("Vendor", "Vic"), "70.00");
  Delete("Bill", bill);
  EXPECT_EQ(Balance("Vendor", "Vic"), "0.00");
  AddTxn("Check", Named("AccountRef", "Checking") + Named("PayeeEntityRef", "Vic") + expense);
  AddTxn("CreditCardCharge", Named("AccountRef", "Visa") + expense);
  EXPECT_EQ(Balance("Vendor", "Vic"), "0.00");
  EXPECT_EQ(Balance("Account", "Checking"), "-70.00");
  EXPECT_EQ(Balance("Account", "Visa"), "70.00");
}

TEST_F(Amounts, A_pending_invoice_is_owed_by_nobody) {
  const auto id = Invoice("Acme", "100.00", Tag("IsPending", "true"));
  EXPECT_EQ(Field("Invoice", id, "IsPending"), "true");
  EXPECT_EQ(CustomerField("Acme", "Balance"), "0.00");
  EXPECT_EQ(Delete("Invoice", id).code, 0);
  EXPECT_EQ(CustomerField("Acme", "Balance"), "0.00");
}

TEST_F(Amounts, An_estimate_is_owed_by_nobody) {
  AddTxn("Estimate", Named("CustomerRef", "Acme") + Tag("EstimateLineAdd", Named("ItemRef", "Design")));
  EXPECT_EQ(CustomerField("Acme", "Balance"), "0.00");
}

TEST_F(Amounts, Of_no_transaction_may_be_negative) {
  const auto negative = Named("ItemRef", "Design") + Tag("Amount", "-1.00");
  EXPECT_EQ(AddTxn("Invoice", Named("CustomerRef", "Acme") + Tag("InvoiceLineAdd", negative)).code, 3180);
  EXPECT_EQ(AddTxn("CreditMemo", Named("CustomerRef", "Acme") + Tag("CreditMemoLineAdd", negative)).code, 3180);
  EXPECT_EQ(AddTxn("Bill", Named("VendorRef", "Vic") + Tag("ItemLineAdd", negative)).code, 3180);
}

TEST_F(Amounts, A_number_that_is_too_great_does_not_convert) {
  const auto invoice = [this](std::string_view quantity, std::string_view rate) {
    return AddTxn("Invoice",
                  Named("CustomerRef", "Acme") +
                      Tag("InvoiceLineAdd", Named("ItemRef", "Design") + Tag("Quantity", quantity) + Tag("Rate", rate)))
        .code;
  };
  EXPECT_EQ(invoice("99999999999999", "1"), 3040);
  EXPECT_EQ(invoice("9999999999999", "2"), 3040);
  EXPECT_EQ(invoice("9999999999999", "1"), 0);
}

}  // namespace

}  // namespace twqb::company
