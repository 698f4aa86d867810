// The form of an invoice in QuickBooks: detail or summary, the amounts below, sales taxes, countries.

#include <gtest/gtest.h>

#include "tests/transactions/InvoicesHouse.h"
#include "transactions/InvoiceLines.h"

namespace twqb {
namespace {

std::string Hours(std::string_view id, std::string_view quantity, std::string_view rate) {
  return fmt::format("{}<Quantity>{}</Quantity><Rate>{}</Rate>{}", ById(id), quantity, rate, kNon);
}
std::string Cost(std::string_view id, std::string_view units, std::string_view amount) {
  return fmt::format("{}<Quantity>{}</Quantity><Amount>{}</Amount>{}", ById(id), units, amount, kNon);
}

// --- Detail or summary -----------------------------------------------------------------------------------------------

TEST(InvoiceForms, A_manual_invoice_is_told_in_summary_whatever_its_rows) {
  InvoicesHouse house;
  house.Invoice("I1", {{"TransactionManInv", "-1"}, {"ExpAmt", "20"}});
  house.Hour("I1");
  house.Cost("I1");
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{AmountLine("TWServiceAmt", "100.00"), AmountLine("TWExpenseAmt", "20.00")}));
  EXPECT_TRUE(house.Statements("SELECT ProjectConType").empty());
}

struct Contract {
  std::string type;
  std::string key;
};

class Contracts : public testing::TestWithParam<Contract> {};

TEST_P(Contracts, Are_told_in_summary_where_the_settings_say_so_of_their_kind) {
  for (const auto* value : {"1", "0", "True", "2"}) {
    InvoicesHouse house;
    house.Sql("UPDATE Project SET ProjectConType = '" + GetParam().type + "'");
    house.General(GetParam().key, value);
    house.Invoice("I1", {{"ExpAmt", "20"}});
    house.Hour("I1", {{"TEHours", "2"}});
    house.Cost("I1");
    house.Send();
    const auto summary = Texts{AmountLine("TWServiceAmt", "100.00"), AmountLine("TWExpenseAmt", "20.00")};
    const auto detail = Texts{Hours(house.activity, "2", "50"), Cost(house.expense, "1", "20.00")};
    EXPECT_EQ(house.Lines(), std::string_view(value) == "1" ? summary : detail) << value;
  }
}

INSTANTIATE_TEST_SUITE_P(InvoiceForms, Contracts,
                         testing::Values(Contract{"Hourly", "_chkHourly"}, Contract{"HOURLY NOT TO EXCEED", "_chkHNTE"},
                                         Contract{"Fixed", "_chkFixed"}, Contract{"Percentage", "_chkPerc"},
                                         Contract{"Recurring", "_chkRecur"},
                                         Contract{"Recurring with Cap", "_chkRecurCap"},
                                         Contract{"RECURRING + EXPENSE", "_chkRecurExp"}),
                         [](const auto& test) { return test.param.key.substr(1); });

class UnknownContracts : public testing::TestWithParam<std::string> {};

TEST_P(UnknownContracts, Are_told_in_detail_and_read_no_setting) {
  InvoicesHouse house;
  for (const auto* key :
       {"_chkHourly", "_chkHNTE", "_chkFixed", "_chkPerc", "_chkRecur", "_chkRecurCap", "_chkRecurExp"}) {
    house.General(key, "1");
  }
  house.Sql("UPDATE Project SET ProjectConType = " + GetParam());
  house.Invoice("I1");
  house.Hour("I1", {{"TEHours", "2"}});
  // The settings are in a table of the database, so that reading one shows.
  Vars().g_UseTWSTable = true;
  house.Clear();
  house.Send();
  EXPECT_EQ(house.Lines(), Texts{Hours(house.activity, "2", "50")});
  for (const auto& statement : house.traffic.statements) {
    EXPECT_EQ(statement.find("_chk"), std::string::npos) << statement;
  }
}

INSTANTIATE_TEST_SUITE_P(InvoiceForms, UnknownContracts, testing::Values("NULL", "''", "'Marketing'", "'Hourly '"),
                         [](const auto& test) { return "Type" + std::to_string(test.index); });

// --- Amounts below ---------------------------------------------------------------------------------------------------

const Columns kAllAmounts = {{"ServiceAmt", "0"},
                             {"TransactionManInvMiscAmt", "1.005"},
                             {"ServiceTaxAmt", "2"},
                             {"ExpTaxAmt", "3"},
                             {"MainServiceTaxAmt", "4"},
                             {"MainExpenseTaxAmt", "5"},
                             {"TransactionInvDiscount", "6.005"},
                             {"InvRetainerAmtApplied", "7"}};

TEST(InvoiceAmounts, Are_a_line_each_in_their_order_with_discount_and_retainer_taken_off) {
  InvoicesHouse house;
  house.Invoice("I1", kAllAmounts);
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{AmountLine("TWManInvMiscAmt", "1.01"), AmountLine("TWServiceTaxAmt", "2.00"),
                                  AmountLine("TWExpenseTaxAmt", "3.00"), AmountLine("TWMainServiceTaxAmt", "4.00"),
                                  AmountLine("TWMainExpenseTaxAmt", "5.00"), AmountLine("TWInvDiscount", "-6.01"),
                                  AmountLine("TWRetainerChargeItem", "-7.00")}));
  EXPECT_TRUE(house.IsSent("I1"));
}

TEST(InvoiceAmounts, Of_nothing_have_no_line_and_those_taken_off_turn_round) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "0"},
                       {"ExpTaxAmt", "0"},
                       {"TransactionManInvMiscAmt", "-3"},
                       {"TransactionInvDiscount", "-6"},
                       {"InvRetainerAmtApplied", "-7"}});
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{AmountLine("TWManInvMiscAmt", "-3.00"), AmountLine("TWInvDiscount", "6.00"),
                                  AmountLine("TWRetainerChargeItem", "7.00")}));
}

// --- Sales taxes -----------------------------------------------------------------------------------------------------

TEST(InvoiceSalesTaxes, Have_neither_quantity_nor_code_on_their_lines) {
  InvoicesHouse house;
  house.Add("Account", "<Name>Taxes</Name><AccountType>OtherCurrentLiability</AccountType>");
  const auto vendor = house.Add("Vendor", "<Name>Agency</Name>");
  for (const auto* name : {"TWServiceTaxAmt", "TWExpenseTaxAmt", "TWMainServiceTaxAmt", "TWMainExpenseTaxAmt"}) {
    house.Add("ItemSalesTax",
              fmt::format("<Name>{}</Name><TaxRate>0</TaxRate><TaxVendorRef><ListID>{}</ListID></TaxVendorRef>", name,
                          vendor));
  }
  house.Invoice("I1", kAllAmounts);
  house.Send();
  const auto tax = [](std::string_view item, std::string_view amount) {
    return fmt::format("{}<Amount>{}</Amount>", ByName(item), amount);
  };
  EXPECT_EQ(house.Lines(), (Texts{AmountLine("TWManInvMiscAmt", "1.01"), tax("TWServiceTaxAmt", "2.00"),
                                  tax("TWExpenseTaxAmt", "3.00"), tax("TWMainServiceTaxAmt", "4.00"),
                                  tax("TWMainExpenseTaxAmt", "5.00"), AmountLine("TWInvDiscount", "-6.01"),
                                  AmountLine("TWRetainerChargeItem", "-7.00")}));
  EXPECT_TRUE(house.IsSent("I1"));
}

TEST(InvoiceSalesTaxes, Are_known_by_their_exact_names_and_asked_for_with_every_invoice) {
  InvoicesHouse house;
  const auto vendor = house.Add("Vendor", "<Name>Agency</Name>");
  for (const auto* name : {"TWServiceTaxAmt 2", "twExpenseTaxAmt", "TWMainServiceTaxAmt"}) {
    house.Add("ItemSalesTax",
              fmt::format("<Name>{}</Name><TaxRate>0</TaxRate><TaxVendorRef><ListID>{}</ListID></TaxVendorRef>", name,
                          vendor));
  }
  const auto found = CheckTaxItems();
  EXPECT_FALSE(found.g_HasServiceTaxItem || found.g_HasExpenseTaxItem || found.g_HasMainExpenseTaxItem);
  EXPECT_TRUE(found.g_HasMainServiceTaxItem);
  house.Clear();
  house.Invoice("I1");
  house.Invoice("I2");
  house.Send();
  EXPECT_EQ(house.Requests("ItemSalesTaxQueryRq").size(), 2U);
}

class TaxlessCountries : public testing::TestWithParam<std::string> {};

TEST_P(TaxlessCountries, Are_not_asked_for_sales_taxes) {
  InvoicesHouse house({}, {}, GetParam());
  const auto found = CheckTaxItems();
  EXPECT_FALSE(found.g_HasServiceTaxItem);
  EXPECT_TRUE(house.traffic.documents.empty());
}

INSTANTIATE_TEST_SUITE_P(InvoiceSalesTaxes, TaxlessCountries, testing::Values("CA", "UK"),
                         [](const auto& test) { return test.param; });

TEST(InvoiceSalesTaxes, Are_none_where_QuickBooks_has_no_such_item) {
  const InvoicesHouse house;
  const auto found = CheckTaxItems();
  EXPECT_FALSE(found.g_HasServiceTaxItem || found.g_HasExpenseTaxItem || found.g_HasMainServiceTaxItem ||
               found.g_HasMainExpenseTaxItem);
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- Countries -------------------------------------------------------------------------------------------------------

struct Form {
  std::string country;
  std::int16_t version;
  bool limitedCode;  // on the lines of hours, adjustments, services and expenses in detail
};

class Forms : public testing::TestWithParam<Form> {
 protected:
  static std::string Line(std::string_view item, std::string_view rate, bool code) {
    return fmt::format("{}<Quantity>1</Quantity><Rate>{}</Rate>{}", item, rate,
                       code ? "<TaxCodeRef><FullName>E</FullName></TaxCodeRef>" : "");
  }
};

TEST_P(Forms, Other_than_the_American_one_take_money_by_the_rate_and_code_E) {
  InvoicesHouse house({}, {}, GetParam().country);
  Vars().g_QBMajorVer = GetParam().version;
  house.Invoice("I1", {{"ExpAmt", "20"}, {"ServiceTaxAmt", "2.5"}, {"TransactionInvDiscount", "6"}});
  house.Hour("I1");
  house.Cost("I1");
  house.Invoice("I2", {{"ExpAmt", "20"}, {"ServiceTaxAmt", "2.5"}, {"TransactionInvDiscount", "6"}});
  house.Send();
  const bool limited = GetParam().limitedCode;
  const std::string code = limited ? "<TaxCodeRef><FullName>E</FullName></TaxCodeRef>" : "";
  EXPECT_EQ(house.Lines(0),
            (Texts{Line(ById(house.activity), "50", limited),
                   fmt::format("{}<Desc>Write Up / Down Adjustment</Desc><Quantity>1</Quantity><Rate>50</Rate>{}",
                               ByName("GEN WUD"), code),
                   fmt::format("{}<Quantity>1</Quantity><Amount>20.00</Amount>{}", ById(house.expense), code),
                   Line(ByName("TWServiceTaxAmt"), "2.5", true), Line(ByName("TWInvDiscount"), "-6", true)}));
  EXPECT_EQ(house.Lines(1),
            (Texts{Line(ByName("TWServiceAmt"), "100", limited), Line(ByName("TWExpenseAmt"), "20", true),
                   Line(ByName("TWServiceTaxAmt"), "2.5", true), Line(ByName("TWInvDiscount"), "-6", true)}));
  EXPECT_TRUE(house.IsSent("I1") && house.IsSent("I2"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(InvoiceForms, Forms,
                         testing::Values(Form{"CA", 3, false}, Form{"CA", 2, true}, Form{"UK", 3, false},
                                         Form{"UK", 2, true}),
                         [](const auto& test) { return test.param.country + std::to_string(test.param.version); });

// What is a tax in an American file has no code there; elsewhere it loses its quantity alone.
TEST(InvoiceForms, Other_than_the_American_one_keep_the_code_on_sales_taxes) {
  InvoicesHouse house({}, {}, "CA");
  const auto lines = house.LinesOf({{"ServiceTaxAmt", "2.5"}}, {.g_HasServiceTaxItem = true});
  EXPECT_EQ(lines,
            Texts{ByName("TWServiceTaxAmt") + "<Rate>2.5</Rate><TaxCodeRef><FullName>E</FullName></TaxCodeRef>"});
}

TEST(InvoiceForms, A_project_without_a_row_is_told_in_detail) {
  InvoicesHouse house;
  house.Hour("X", {{"TEHours", "2"}});
  const auto lines = house.LinesOf({{"TransactionID", "'X'"}, {"ProjectID", "'GONE:'"}, {"ServiceAmt", "100"}}, {});
  EXPECT_EQ(lines, Texts{Hours(house.activity, "2", "50")});
}

class CanadianHosts : public testing::TestWithParam<std::string> {};

TEST_P(CanadianHosts, Behind_the_American_form_have_code_E) {
  InvoicesHouse house;
  Vars().g_HostCountry = GetParam();
  // What such an edition's own file has.
  house.Add("PaymentMethod", "<Name>Cheque</Name>");
  house.Add("SalesTaxCode", "<Name>E</Name><IsActive>true</IsActive><IsTaxable>false</IsTaxable>");
  house.Invoice("I1");
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Lines()[0].substr(house.Lines()[0].find("<SalesTaxCodeRef>")), "FullName"), "E");
}

INSTANTIATE_TEST_SUITE_P(InvoiceForms, CanadianHosts, testing::Values("CA", "UK"),
                         [](const auto& test) { return test.param; });

// An Australian edition talks in the American form, which knows no code of theirs.
TEST(InvoiceForms, Australian_invoices_take_money_by_the_rate_and_have_no_code) {
  InvoicesHouse house;
  Vars().g_QBCountry = "AU";
  Vars().g_QBMajorVer = 2;
  house.Invoice("I1", {{"ServiceTaxAmt", "2.5"}});
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{ByName("TWServiceAmt") + "<Quantity>1</Quantity><Rate>100</Rate>",
                                  ByName("TWServiceTaxAmt") + "<Quantity>1</Quantity><Rate>2.5</Rate>"}));
  EXPECT_EQ(house.Requests("ItemSalesTaxQueryRq").size(), 1U);
}

}  // namespace
}  // namespace twqb
