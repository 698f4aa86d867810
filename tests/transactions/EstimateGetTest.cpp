// The get of estimates: the budget, its lines in two tables, rates and words, the first estimate of a project.

#include <gtest/gtest.h>

#include "tests/transactions/CostsHouse.h"
#include "transactions/EstimatesIn.h"

namespace twqb {
namespace {

constexpr TestedTable kTested = Got(enEstimates, "Budget", "BudgetID", MoveEstimatesToTW);

// Four hours for 100.
std::string Design(const Changes& changes = {}) {
  return Line("EstimateLine",
              {{"TxnLineID", "L-1"},
               {"ItemRef", kDesignRef},
               {"Desc", "Drawings"},
               {"Quantity", "4"},
               {"Rate", "25"},
               {"Amount", "100.00"}},
              changes);
}
std::string Travel(const Changes& changes = {}) {
  auto all = changes;
  all.emplace("TxnLineID", "X-9");
  all.emplace("ItemRef", kTravelRef);
  return Design(all);
}
std::string Estimate(const Texts& lines, const Changes& changes = {}) {
  return With(RecordOf("Estimate",
                       {{"TxnID", "1-1"},
                        {"TimeModified", std::string(kModified)},
                        {"CustomerRef", kJobRef},
                        {"TxnDate", "2008-03-03"},
                        {"RefNumber", "E-12"}},
                       changes),
              lines);
}

class EstimatesHouse : public CostsHouse {
 public:
  explicit EstimatesHouse(HouseOptions options = {}, std::string_view faults = {})
      : CostsHouse(kTested, std::move(options), faults) {}
  void Estimates(const std::string& text, MoveFlags flags = {}) { TakeAnswer("Estimate", text, flags); }

  [[nodiscard]] std::string Budget(std::string_view column, std::string_view link = "1-1") {
    return Scalar(fmt::format("SELECT {} FROM Budget WHERE QBLinkID = '{}'", column, link));
  }
  [[nodiscard]] std::string Activity(std::string_view column, std::string_view link = "L-1") {
    return Scalar(fmt::format("SELECT {} FROM BudgetActivity WHERE QBLinkID = '{}'", column, link));
  }
  [[nodiscard]] std::string Expense(std::string_view column, std::string_view link = "X-9") {
    return Scalar(fmt::format("SELECT {} FROM BudgetExpense WHERE QBLinkID = '{}'", column, link));
  }
  [[nodiscard]] std::string EstimateOfProject() { return Scalar("SELECT EstimateID FROM Project"); }
};

// --- The budget ------------------------------------------------------------------------------------------------------

TEST(EstimatesIn, An_estimate_becomes_a_budget_with_every_column) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design()}));
  const std::pair<std::string_view, std::string_view> columns[] = {
      {"BudgetID", "E-12"},   {"BudgetGroupDesc", "From QuickBooks"},
      {"BudgetMiscAmt", "0"}, {"IsLocked", "0"},
      {"IsEstimate", "-1"},   {"LastUpdated", "NULL"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Budget(column), value) << column;
  EXPECT_EQ(house.EstimateOfProject(), "E-12");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.ShownRecords().back(), "Estimate No. E-12");
}

TEST(EstimatesIn, An_estimate_without_a_number_gets_one_that_is_made_up) {
  for (const auto& number : {std::optional<std::string>(), std::optional<std::string>(" ")}) {
    EstimatesHouse house({.now = TextToDate("2008-11-05T10:07:09")});
    house.Estimates(Estimate({Design()}, {{"RefNumber", number}}));
    EXPECT_TRUE(house.Budget("BudgetID").starts_with("200811790.")) << house.Budget("BudgetID");
    EXPECT_EQ(house.Activity("BudgetID"), house.Budget("BudgetID"));
  }
}

TEST(EstimatesIn, An_estimate_of_a_subtotal_alone_leaves_no_budget) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design({{"Desc", "Subtotal"}})}));
  EXPECT_EQ(house.Count("Budget"), "0");
  EXPECT_EQ(house.Count("BudgetActivity"), "0");
  EXPECT_EQ(house.Statements("DELETE FROM Budget"), Texts{"DELETE FROM Budget WHERE BudgetID = 'E-12';"});
}

// What the project names is not there then, and no later estimate takes its place.
TEST(EstimatesIn, An_estimate_of_a_subtotal_alone_is_named_in_its_project_all_the_same) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design({{"Desc", "Subtotal"}})}) +
                  Estimate({Design({{"TxnLineID", "L-2"}})}, {{"TxnID", "2-1"}, {"RefNumber", "E-13"}}));
  EXPECT_EQ(house.EstimateOfProject(), "E-12");
  EXPECT_EQ(house.RowsOf("BudgetID", "Budget"), "E-13");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(EstimatesIn, A_project_keeps_the_first_estimate_that_it_got) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design()}) +
                  Estimate({Design({{"TxnLineID", "L-2"}})}, {{"TxnID", "2-1"}, {"RefNumber", "E-13"}}));
  EXPECT_EQ(house.Count("Budget"), "2");
  EXPECT_EQ(house.EstimateOfProject(), "E-12");
  EXPECT_TRUE(house.Asked("UPDATE Project SET EstimateID = 'E-13' WHERE ProjectID = 'ROOF:' AND EstimateID IS NULL;"));
}

TEST(EstimatesIn, An_estimate_for_a_customer_is_stored_without_a_project) {
  EstimatesHouse house;
  house.Sql("INSERT INTO Project (ProjectID, QBLinkID) VALUES ('ACME:', 'C-1')");
  house.Estimates(Estimate({Design()}, {{"CustomerRef", kCustomerRef}}));
  EXPECT_EQ(house.Count("Budget"), "1");
  EXPECT_TRUE(house.Statements("UPDATE Project").empty());
  EXPECT_TRUE(house.Statements("SELECT ProjectID FROM Project").empty());
}

TEST(EstimatesIn, A_project_that_can_not_be_told_of_its_estimate_is_not_told_about) {
  EstimatesHouse house({}, Breaks("UPDATE Project SET EstimateID"));
  house.Estimates(Estimate({Design()}));
  EXPECT_EQ(house.EstimateOfProject(), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- Lines -----------------------------------------------------------------------------------------------------------

TEST(EstimatesIn, A_line_on_an_activity_becomes_hours_at_a_rate) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design()}));
  const std::pair<std::string_view, std::string_view> columns[] = {
      {"BudgetID", "E-12"}, {"ActivityID", "DESIGN:"}, {"BADescription", "Drawings"},
      {"BARate", "25"},     {"BAHours", "4"},          {"LastUpdated", "3/5/2008 3:00:00 PM"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Activity(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Activity("BAID")));
  EXPECT_EQ(house.Count("BudgetExpense"), "0");
}

TEST(EstimatesIn, An_amount_without_a_quantity_is_the_rate_of_no_hours) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design({{"Quantity", {}}})}));
  EXPECT_EQ(house.Activity("BARate"), "100");
  EXPECT_EQ(house.Activity("BAHours"), "NULL");
}

TEST(EstimatesIn, Neither_amount_nor_quantity_leaves_both_columns) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design({{"Quantity", {}}, {"Amount", {}}}), Travel({{"Quantity", {}}, {"Amount", {}}})}));
  EXPECT_EQ(house.Activity("BARate"), "NULL");
  EXPECT_EQ(house.Activity("BAHours"), "NULL");
  EXPECT_EQ(house.Expense("BEAmt"), "NULL");
  EXPECT_EQ(house.Expense("BEUnits"), "NULL");
}

TEST(EstimatesIn, A_line_on_an_expense_becomes_units_of_an_amount) {
  EstimatesHouse house;
  house.Estimates(Estimate({Travel({{"Quantity", "3"}})}));
  const std::pair<std::string_view, std::string_view> columns[] = {{"BudgetID", "E-12"},
                                                                   {"ExpID", "TRAVEL:"},
                                                                   {"BEDescription", "Drawings"},
                                                                   {"BEAmt", "33.3333"},
                                                                   {"BEUnits", "3"},
                                                                   {"BEMarkup", "0"},
                                                                   {"BETax1_Rate", "0"},
                                                                   {"BETax2_Rate", "0"},
                                                                   {"BETax3_Rate", "0"},
                                                                   {"PercentComplete", "0"},
                                                                   {"LastUpdated", "3/5/2008 3:00:00 PM"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Expense(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Expense("BEID")));
  EXPECT_EQ(house.Count("BudgetActivity"), "0");
}

TEST(EstimatesIn, A_line_on_an_unknown_item_is_an_expense_without_a_code) {
  EstimatesHouse house;
  house.Estimates(
      Estimate({Travel({{"ItemRef", kUnknownRef}}), Travel({{"TxnLineID", "X-8"}, {"ItemRef", {}}, {"Desc", {}}})}));
  EXPECT_EQ(house.Expense("ExpID"), "NULL");
  EXPECT_EQ(house.Expense("BEAmt"), "25");
  EXPECT_EQ(house.Expense("ExpID", "X-8"), "NULL");
  EXPECT_EQ(house.Expense("BEDescription", "X-8"), "NULL");
}

TEST(EstimatesIn, A_description_is_stored_on_one_line_with_its_quotes_doubled) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design({{"Desc", "Owner's\nroof&#13;and yard"}})}));
  EXPECT_EQ(house.Activity("BADescription"), "Owner''s roof and yard");
}

TEST(EstimatesIn, A_line_without_words_takes_those_of_its_code) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design({{"Desc", {}}}), Travel({{"Desc", {}}})}));
  EXPECT_EQ(house.Activity("BADescription"), "Design work");
  EXPECT_EQ(house.Expense("BEDescription"), "Travel by rail");
}

TEST(EstimatesIn, A_long_description_is_cut) {
  EstimatesHouse house;
  const std::string text = "A" + std::string(300, 'b');
  house.Estimates(Estimate({Design({{"Desc", text}}), Travel({{"Desc", text}})}));
  EXPECT_EQ(house.Activity("BADescription"), text.substr(0, 255));
  EXPECT_EQ(house.Expense("BEDescription"), text.substr(0, 255));
}

TEST(EstimatesIn, Groups_are_no_lines) {
  EstimatesHouse house;
  house.Estimates(Estimate(
      {"<EstimateLineGroupRet><TxnLineID>G-1</TxnLineID><TotalAmount>5.00</TotalAmount></EstimateLineGroupRet>",
       Design()}));
  EXPECT_EQ(house.Count("BudgetActivity"), "1");
  EXPECT_EQ(house.Count("BudgetExpense"), "0");
}

TEST(EstimatesIn, Tables_of_lines_are_opened_for_the_rows_that_are_linked) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design(), Travel()}));
  EXPECT_TRUE(house.Asked("SELECT * FROM BudgetActivity  WHERE QBLINKID IS NOT NULL;"));
  EXPECT_TRUE(house.Asked("SELECT * FROM BudgetExpense  WHERE QBLINKID IS NOT NULL;"));
}

// --- What is here already --------------------------------------------------------------------------------------------

class EstimateTwice : public testing::TestWithParam<std::pair<MoveFlags, std::string>> {};

TEST_P(EstimateTwice, Moves_its_lines_as_the_rule_says) {
  const auto& [flags, rate] = GetParam();
  EstimatesHouse house;
  house.Estimates(Estimate({Design(), Travel()}));
  const auto keys = house.RowsOf("BAID", "BudgetActivity") + house.RowsOf("BEID", "BudgetExpense");
  house.Estimates(Estimate({Design({{"Amount", "200.00"}}), Travel({{"Amount", "200.00"}})}), flags);
  EXPECT_EQ(house.Activity("BARate"), rate);
  EXPECT_EQ(house.Expense("BEAmt"), rate);
  EXPECT_EQ(house.RowsOf("BAID", "BudgetActivity") + house.RowsOf("BEID", "BudgetExpense"), keys);
  EXPECT_EQ(house.Count("Budget"), "1");
}

INSTANTIATE_TEST_SUITE_P(EstimatesIn, EstimateTwice,
                         testing::Values(std::pair(MoveFlags{}, "50"), std::pair(kMostRecent, "25"),
                                         std::pair(kNever, "25")),
                         [](const auto& test) {
                           return test.param.first.never        ? "LeaveAlone"
                                  : test.param.first.mostRecent ? "NewerWins"
                                                                : "Overwrite";
                         });

TEST(EstimatesIn, A_budget_has_no_date_and_takes_lines_that_are_new_by_any_rule_but_never) {
  for (const auto& [flags, lines] : {std::pair(kMostRecent, "2"), std::pair(kNever, "1")}) {
    EstimatesHouse house;
    house.Estimates(Estimate({Design()}));
    house.Estimates(Estimate({Design(), Design({{"TxnLineID", "L-2"}})}, {{"RefNumber", "E-99"}}), flags);
    EXPECT_EQ(house.Count("BudgetActivity"), lines);
    EXPECT_EQ(house.Budget("BudgetID"), "E-12");
  }
}

TEST(EstimatesIn, A_budget_that_is_here_is_never_deleted) {
  EstimatesHouse house;
  house.Sql("INSERT INTO Budget (BudgetID, QBLinkID) VALUES ('OLD', '1-1')");
  house.Estimates(Estimate({}));
  EXPECT_EQ(house.Budget("BudgetID"), "OLD");
  EXPECT_EQ(house.EstimateOfProject(), "NULL") << "only a new budget is named in its project";
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(EstimatesIn, An_expense_of_no_quantity_ends_the_run_under_the_name_of_another_routine) {
  EstimatesHouse house;
  house.Estimates(Estimate({Design(), Travel({{"Quantity", {}}})}) +
                  Estimate({Design()}, {{"TxnID", "2-1"}, {"RefNumber", "E-13"}}));
  EXPECT_EQ(house.BoxTexts(), Texts{OwnBox("MoveVendorBillToTW", "Division by zero", 11)});
  EXPECT_EQ(house.Count("BudgetExpense"), "0");
  EXPECT_EQ(house.RowsOf("BudgetID", "Budget"), "E-12") << "what was written stays";
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(EstimatesIn, A_code_that_can_not_be_looked_up_is_none) {
  EstimatesHouse house({}, Breaks("SELECT ExpID FROM Expense"));
  house.Estimates(Estimate({Travel()}));
  EXPECT_EQ(house.Expense("ExpID"), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(EstimatesIn, Nothing_to_take_is_a_good_end) {
  EstimatesHouse house;
  house.Take({});
  EXPECT_EQ(Outcome(), TableOk::True);
}

}  // namespace
}  // namespace twqb
