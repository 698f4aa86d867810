// What an invoice says in QuickBooks: its header, and a line for each hour and each expense.

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

}  // namespace
}  // namespace twqb
