// What an invoice says in QuickBooks: header, lines in detail and in summary, the amounts below them, by country.

#include <gtest/gtest.h>

#include "tests/transactions/InvoicesHouse.h"
#include "transactions/InvoiceLines.h"

namespace twqb {
namespace {

std::string Hours(std::string_view id, std::string_view quantity, std::string_view rate) {
  return fmt::format("{}<Quantity>{}</Quantity><Rate>{}</Rate>{}", ById(id), quantity, rate, kNon);
}
std::string Adjustment(std::string_view rate) {
  return fmt::format("{}<Desc>Write Up / Down Adjustment</Desc><Quantity>1</Quantity><Rate>{}</Rate>{}",
                     ByName("GEN WUD"), rate, kNon);
}
std::string Cost(std::string_view id, std::string_view units, std::string_view amount) {
  return fmt::format("{}<Quantity>{}</Quantity><Amount>{}</Amount>{}", ById(id), units, amount, kNon);
}
std::string ClassRef(std::string_view id) { return fmt::format("<ClassRef><ListID>{}</ListID></ClassRef>", id); }

// --- Header ----------------------------------------------------------------------------------------------------------

TEST(InvoiceHeader, Has_project_dates_number_and_the_client_s_address) {
  InvoicesHouse house;
  house.Sql(
      "UPDATE Client SET ClientCompany = 'Acme Ltd', ClientStreet = '1 Road', ClientStreet2 = 'Floor 2', ClientCity = "
      "'Town', ClientState = 'NY', ClientZip = '10001'");
  house.Invoice("I1", {{"InvoiceDate", "'2008-02-29'"}});
  house.Send();
  EXPECT_EQ(house.Header(),
            "<CustomerRef><ListID>" + house.job +
                "</ListID></CustomerRef><TxnDate>2008-02-29</TxnDate><RefNumber>I1</RefNumber><BillAddress><Addr1>Acme "
                "Ltd</Addr1><Addr2>1 Road</Addr2><Addr3>Floor 2</Addr3><City>Town</City><State>NY</State><PostalCode>"
                "10001</PostalCode></BillAddress><DueDate>2008-03-30</DueDate>");
}

struct StateField {
  std::string country;
  std::string element;
};

class StateFields : public testing::TestWithParam<StateField> {};

TEST_P(StateFields, Go_by_the_name_that_the_country_has_for_them) {
  InvoicesHouse house({}, {}, GetParam().country);
  house.Sql("UPDATE Client SET ClientState = 'XY'");
  house.Invoice("I1");
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(), GetParam().element), "XY");
  EXPECT_TRUE(house.IsSent("I1"));
}

INSTANTIATE_TEST_SUITE_P(InvoiceHeader, StateFields,
                         testing::Values(StateField{"US", "State"}, StateField{"CA", "Province"},
                                         StateField{"UK", "County"}),
                         [](const auto& test) { return test.param.country; });

TEST(InvoiceHeader, Long_texts_are_cut_to_what_QuickBooks_takes_and_the_invoice_goes) {
  InvoicesHouse house;
  const std::string name(60, 'x');
  house.Sql("UPDATE Client SET ClientCompany = '" + name + "'");
  house.Invoice("I1", {{"TransactionInvNum", "'1234567890123456'"}});
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(), "Addr1"), name.substr(0, 41));
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(), "RefNumber"), "12345678901");
  EXPECT_TRUE(house.IsSent("I1"));
}

TEST(InvoiceHeader, Dates_before_1901_are_the_first_day_of_1901) {
  InvoicesHouse house;
  house.Invoice("I1", {{"InvoiceDate", "'1899-12-30'"}});
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(), "TxnDate"), "1901-01-01");
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(), "DueDate"), "1901-01-01");
}

class BillFlags : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(BillFlags, Switch_printing_off_and_never_on) {
  InvoicesHouse house;
  house.Invoice("I1", {{"TransactionInvSendBillFlag", GetParam().first}});
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(), "IsToBePrinted"), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(InvoiceHeader, BillFlags,
                         testing::Values(std::pair{"'B'", "false"}, std::pair{"'b'", "(none)"},
                                         std::pair{"'P'", "(none)"}, std::pair{"NULL", "(none)"}),
                         [](const auto& test) { return std::string("Flag") + std::to_string(test.index); });

// --- Hours -----------------------------------------------------------------------------------------------------------

TEST(InvoiceHours, Are_a_line_each_and_what_they_come_to_is_the_total) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "176.28"}, {"TransactionInvBillAmt", "176.28"}});
  house.Hour("I1", {{"TEHours", "2.5"}, {"TEBillRate", "50.5125"}, {"TEDescription", "'Drawing'"}});
  house.Hour("I1", {{"TEHours", "1"}});
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{fmt::format("{}<Desc>Drawing</Desc><Quantity>2.5</Quantity><Rate>50.51</Rate>{}",
                                              ById(house.activity), kNon),
                                  Hours(house.activity, "1", "50")}));
  EXPECT_EQ(SpiedHouse::TextOf(house.InQuickBooks("I1"), "BalanceRemaining"), "176.28");
}

TEST(InvoiceHours, Keep_an_empty_description_and_leave_a_missing_one_out) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "50"}});
  house.Hour("I1", {{"TEDescription", "''"}});
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Lines()[0], "Desc"), "");
}

struct Factor {
  std::string name;
  std::string hours;
  std::string factor;
  std::string quantity;
};

class Factors : public testing::TestWithParam<Factor> {};

TEST_P(Factors, Write_the_hours_up_or_down) {
  InvoicesHouse house;
  house.Invoice("I1");
  house.Hour("I1", {{"TEHours", GetParam().hours}, {"WUD", GetParam().factor}});
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Lines().at(0), "Quantity"), GetParam().quantity);
}

INSTANTIATE_TEST_SUITE_P(InvoiceHours, Factors,
                         testing::Values(Factor{"Null", "1.5", "NULL", "1.5"}, Factor{"Up", "1.5", "1.1", "1.65"},
                                         Factor{"Down", "8", "0.33", "2.64"}, Factor{"Negative", "8", "-0.5", "0"},
                                         Factor{"Zero", "8", "0", "0"}, Factor{"HalfOfACent", "1.005", "1", "1.01"},
                                         Factor{"HalfInBinary", "1.15", "0.9", "1.04"}),
                         [](const auto& test) { return test.param.name; });

TEST(InvoiceHours, That_are_none_or_fewer_have_no_line) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "50"}});
  house.Hour("I1", {{"TEHours", "0"}});
  house.Hour("I1", {{"TEHours", "-2"}});
  house.Hour("I1", {{"TEHours", "NULL"}});
  house.Hour("I1");
  house.Send();
  EXPECT_EQ(house.Lines(), Texts{Hours(house.activity, "1", "50")});
}

TEST(InvoiceHours, That_all_are_none_leave_the_total_to_the_adjustment) {
  InvoicesHouse house;
  house.Invoice("I1");
  house.Hour("I1", {{"TEHours", "0"}});
  house.Hour("I1", {{"TEHours", "-2"}});
  house.Send();
  EXPECT_EQ(house.Lines(), Texts{Adjustment("100")});
  EXPECT_EQ(SpiedHouse::TextOf(house.InQuickBooks("I1"), "BalanceRemaining"), "100.00");
}

TEST(InvoiceHours, That_are_not_billable_have_a_rate_of_nothing_and_what_was_counted_of_them_is_adjusted) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "150"}});
  house.Hour("I1", {{"TEBill", "0"}});
  house.Hour("I1", {{"TEBill", "1"}});
  house.Hour("I1", {{"TEBill", "NULL"}});
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{Hours(house.activity, "1", "0"), Hours(house.activity, "1", "0"),
                                  Hours(house.activity, "1", "50"), Adjustment("100")}));
}

struct Total {
  std::string name;
  std::string services;
  std::string adjustment;  // "" for none
};

class Totals : public testing::TestWithParam<Total> {};

// Two lines of 0.25 at 85.55, which QuickBooks takes for 21.39 each.
TEST_P(Totals, Are_met_by_an_adjustment_of_what_QuickBooks_makes_of_the_lines) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", GetParam().services}});
  house.Hour("I1", {{"TEHours", "0.25"}, {"TEBillRate", "85.55"}});
  house.Hour("I1", {{"TEHours", "0.25"}, {"TEBillRate", "85.55"}});
  house.Send();
  const auto lines = house.Lines();
  if (GetParam().adjustment.empty()) {
    EXPECT_EQ(lines.size(), 2U);
  } else {
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[2], Adjustment(GetParam().adjustment));
  }
}

INSTANTIATE_TEST_SUITE_P(InvoiceHours, Totals,
                         testing::Values(Total{"Equal", "42.78", ""}, Total{"CentMore", "42.79", "0.01"},
                                         Total{"Less", "40", "-2.78"}, Total{"FractionOfACent", "42.7801", "0"},
                                         Total{"HalfACentLess", "42.775", "-0.01"}),
                         [](const auto& test) { return test.param.name; });

TEST(InvoiceHours, Of_an_activity_without_a_link_go_on_the_catch_all_item) {
  InvoicesHouse house;
  house.Sql("UPDATE Activity SET QBLinkID = NULL, QBClassID = '8-8'");
  house.Invoice("I1", {{"ServiceAmt", "150"}});
  house.Hour("I1");
  house.Hour("I1", {{"ActivityID", "'NONE:'"}});
  house.Hour("I1", {{"ActivityID", "NULL"}});
  house.Send();
  for (const auto& line : house.Lines()) {
    EXPECT_EQ(line, fmt::format("{}<Quantity>1</Quantity><Rate>50</Rate>{}", ByName("From Tallywick"), kNon));
  }
  EXPECT_TRUE(house.IsSent("I1"));
  EXPECT_TRUE(house.Statements("SELECT QBClassID FROM Activity").empty());
}

TEST(InvoiceHours, Are_not_looked_at_where_the_services_come_to_nothing) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "0"}, {"TransactionManInvMiscAmt", "5"}});
  house.Hour("I1");
  house.Send();
  EXPECT_TRUE(house.Statements("SELECT ActivityID, TEHours").empty());
  EXPECT_EQ(house.Lines(), Texts{AmountLine("TWManInvMiscAmt", "5.00")});
}

TEST(InvoiceHours, Look_everything_up_again_for_each_line) {
  InvoicesHouse house;
  house.Invoice("I1");
  house.Hour("I1");
  house.Hour("I1");
  house.Clear();
  house.Send();
  const Texts line = {"SELECT QBLinkID, ActivityID FROM Activity WHERE ActivityID = 'DESIGN:';",
                      "SELECT QBClassID FROM Project WHERE QBLinkID = '" + house.job + "';",
                      "SELECT QBClassID FROM Activity WHERE QBLinkID = '" + house.activity + "';"};
  Texts expected = {
      "SELECT ProjectConType FROM Project WHERE ProjectID = 'ROOF:';",
      "SELECT ActivityID, TEHours, TEDescription, TEBillRate, WUD, TEBill FROM TimeEntry WHERE TransactionID = 'I1';"};
  expected.insert(expected.end(), line.begin(), line.end());
  expected.insert(expected.end(), line.begin(), line.end());
  Texts asked;
  for (const auto& statement : house.Statements("SELECT ")) {
    if (!statement.starts_with("SELECT TransactionID") && !statement.starts_with("SELECT Param")) {
      asked.push_back(statement);
    }
  }
  EXPECT_EQ(asked, expected);
}

// --- Classes ---------------------------------------------------------------------------------------------------------

class Classes : public testing::Test {
 protected:
  Classes() {
    east = house.Add("Class", "<Name>East</Name>");
    west = house.Add("Class", "<Name>West</Name>");
  }
  InvoicesHouse house;
  std::string east;
  std::string west;
};

TEST_F(Classes, Of_lines_are_those_of_the_project) {
  house.Sql("UPDATE Project SET QBClassID = '" + east + "'");
  house.Sql("UPDATE Activity SET QBClassID = '" + west + "'");
  house.Sql("UPDATE Expense SET QBClassID = '" + west + "'");
  house.Invoice("I1", {{"ExpAmt", "20"}});
  house.Hour("I1");
  house.Cost("I1");
  house.Send();
  const auto lines = house.Lines();
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(SpiedHouse::TextOf(lines[0], "ClassRef"), "");
  EXPECT_TRUE(lines[0].find(ClassRef(east)) != std::string::npos) << lines[0];
  EXPECT_EQ(lines[1], Adjustment("50"));
  EXPECT_TRUE(lines[2].find(ClassRef(east)) != std::string::npos) << lines[2];
  EXPECT_EQ(house.Header().find("ClassRef"), std::string::npos);
}

TEST_F(Classes, Of_lines_are_those_of_activity_and_expense_code_where_the_project_has_none) {
  house.Sql("UPDATE Activity SET QBClassID = '" + west + "'");
  house.Sql("UPDATE Expense SET QBClassID = '" + east + "'");
  house.Invoice("I1", {{"ExpAmt", "20"}, {"ServiceAmt", "50"}});
  house.Hour("I1");
  house.Cost("I1");
  house.Send();
  const auto lines = house.Lines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_TRUE(lines[0].find(ClassRef(west)) != std::string::npos) << lines[0];
  EXPECT_TRUE(lines[1].find(ClassRef(east)) != std::string::npos) << lines[1];
}

TEST_F(Classes, Of_a_summary_stand_on_the_invoice_and_on_all_lines_but_two) {
  house.Sql("UPDATE Project SET QBClassID = '" + east + "'");
  house.Invoice("I1", {{"ExpAmt", "20"},
                       {"TransactionManInvMiscAmt", "1"},
                       {"ServiceTaxAmt", "2"},
                       {"ExpTaxAmt", "3"},
                       {"MainServiceTaxAmt", "4"},
                       {"MainExpenseTaxAmt", "5"},
                       {"TransactionInvDiscount", "6"},
                       {"InvRetainerAmtApplied", "7"}});
  house.Send();
  EXPECT_TRUE(house.Header().find(ClassRef(east)) != std::string::npos);
  std::vector<bool> has;
  for (const auto& line : house.Lines()) has.push_back(line.find(ClassRef(east)) != std::string::npos);
  EXPECT_EQ(has, (std::vector<bool>{true, true, false, false, true, true, true, true, true}));
}

TEST_F(Classes, Are_on_no_summary_line_of_an_invoice_without_services) {
  house.Sql("UPDATE Project SET QBClassID = '" + east + "'");
  house.Invoice("I1", {{"ServiceAmt", "0"}, {"ExpAmt", "20"}, {"TransactionInvDiscount", "6"}});
  house.Send();
  EXPECT_EQ(house.Requests("InvoiceAddRq")[0].find("ClassRef"), std::string::npos);
  EXPECT_TRUE(house.Statements("SELECT QBClassID").empty());
}

TEST(InvoiceClasses, That_can_not_be_read_are_left_out) {
  InvoicesHouse house({}, Breaks("SELECT QBClassID FROM Project"));
  house.Invoice("I1");
  house.Send();
  EXPECT_EQ(house.Lines(), Texts{AmountLine("TWServiceAmt", "100.00")});
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- Expenses --------------------------------------------------------------------------------------------------------

struct Charge {
  std::string name;
  Columns columns;
  std::string quantity;
  std::string amount;
};

class Charges : public testing::TestWithParam<Charge> {};

TEST_P(Charges, Are_worked_out_again_of_units_cost_and_markup) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ExpAmt", "20"}});
  auto columns = GetParam().columns;
  columns["ELChgAmt"] = "777";
  house.Cost("I1", columns);
  house.Send();
  ASSERT_EQ(house.Lines().size(), 2U);
  EXPECT_EQ(house.Lines()[1], Cost(house.expense, GetParam().quantity, GetParam().amount));
  EXPECT_TRUE(house.IsSent("I1"));
}

INSTANTIATE_TEST_SUITE_P(
    InvoiceExpenses, Charges,
    testing::Values(Charge{"Plain", {}, "1", "20.00"},
                    Charge{"WithMarkup", {{"ELMarkup", "10"}, {"ELUnits", "2.5"}}, "2.5", "55.00"},
                    Charge{"HalfACent", {{"ELUnits", "3"}, {"ELCost", "1.115"}}, "3", "3.35"},
                    Charge{
                        "HalfACentOfMarkup", {{"ELUnits", "1"}, {"ELCost", "10.1"}, {"ELMarkup", "2.5"}}, "1", "10.35"},
                    Charge{"UnitsAreRoundedForThemselves", {{"ELUnits", "0.125"}, {"ELCost", "8"}}, "0.13", "1.00"},
                    Charge{"Negative", {{"ELUnits", "-1"}, {"ELCost", "1.005"}}, "-1", "-1.01"},
                    Charge{"NotBillable", {{"ELBillable", "0"}}, "1", "0.00"},
                    Charge{"OddlyBillable", {{"ELBillable", "1"}}, "1", "0.00"},
                    Charge{"MaybeBillable", {{"ELBillable", "NULL"}}, "1", "20.00"},
                    Charge{"NothingGiven", {{"ELUnits", "NULL"}, {"ELCost", "NULL"}}, "0", "0.00"}),
    [](const auto& test) { return test.param.name; });

TEST(InvoiceExpenses, Keep_what_the_row_before_had_where_one_says_nothing) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "0"}, {"ExpAmt", "20"}});
  house.Cost("I1", {{"ELUnits", "NULL"}});
  house.Cost("I1", {{"ELUnits", "2"}, {"ELMarkup", "50"}});
  house.Cost("I1", {{"ELUnits", "NULL"}, {"ELCost", "10"}, {"ELMarkup", "NULL"}});
  house.Cost("I1", {{"ELUnits", "4"}, {"ELCost", "NULL"}, {"ELMarkup", "0"}});
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{Cost(house.expense, "0", "0.00"), Cost(house.expense, "2", "60.00"),
                                  Cost(house.expense, "2", "30.00"), Cost(house.expense, "4", "40.00")}));
}

TEST(InvoiceExpenses, Have_no_line_that_makes_up_for_a_total_they_do_not_come_to) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ServiceAmt", "0"}, {"ExpAmt", "999"}});
  house.Cost("I1");
  house.Send();
  EXPECT_EQ(house.Lines(), Texts{Cost(house.expense, "1", "20.00")});
}

TEST(InvoiceExpenses, Of_a_code_without_a_link_go_on_the_catch_all_item) {
  InvoicesHouse house;
  house.Sql("UPDATE Expense SET QBLinkID = ''");
  house.Invoice("I1", {{"ServiceAmt", "0"}, {"ExpAmt", "20"}});
  house.Cost("I1", {{"ELDescription", "'Taxi'"}});
  house.Send();
  EXPECT_EQ(house.Lines(), Texts{fmt::format("{}<Desc>Taxi</Desc><Quantity>1</Quantity><Amount>20.00</Amount>{}",
                                             ByName("From Tallywick"), kNon)});
  EXPECT_TRUE(house.Statements("SELECT QBClassID FROM Expense").empty());
}

TEST(InvoiceExpenses, Without_rows_are_a_line_together) {
  InvoicesHouse house;
  house.Invoice("I1", {{"ExpAmt", "20.125"}});
  house.Hour("I1", {{"TEHours", "2"}});
  house.Send();
  EXPECT_EQ(house.Lines(), (Texts{Hours(house.activity, "2", "50"), AmountLine("TWExpenseAmt", "20.13")}));
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
  house.Send();
  EXPECT_EQ(house.Lines(), Texts{Hours(house.activity, "2", "50")});
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
