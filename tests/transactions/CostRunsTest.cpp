// What the gets of expenses, vendor bills and estimates have in common as runs: the form, and Cancel.

#include <gtest/gtest.h>

#include "services/msgForm.h"
#include "tests/transactions/CostsHouse.h"
#include "transactions/EstimatesIn.h"
#include "transactions/ExpenseLogIn.h"
#include "transactions/VendorBillsIn.h"

namespace twqb {
namespace {

struct CostRun {
  TestedTable table;
  std::string query;  // the kind of its documents, each with a line
  std::string line;
};

const Elements kTravelLine = {
    {"TxnLineID", "L"}, {"ItemRef", kTravelRef}, {"Quantity", "2"}, {"Amount", "25.00"}, {"CustomerRef", kJobRef}};

const CostRun kRuns[] = {
    {Got(enExpenseLog, "ExpenseLog", "ELID", MoveExpenseLogToTW), "Check", "ItemLine"},
    {Got(enVendorBill, "VendorBill", "VendorBillID", MoveVendorBillToTW), "Bill", "ItemLine"},
    {Got(enEstimates, "Budget", "BudgetID", MoveEstimatesToTW), "Estimate", "EstimateLine"},
};

class CostRuns : public testing::TestWithParam<CostRun> {
 protected:
  // Two documents, whose lines are linked to L-1 and L-2.
  [[nodiscard]] static std::string Two() { return DocumentOf("1") + DocumentOf("2"); }
  // The lines that became rows.
  [[nodiscard]] static std::string Stored(CostsHouse& house) {
    return house.RowsOf("QBLinkID", GetParam().query == "Estimate" ? "BudgetExpense" : "ExpenseLog");
  }

 private:
  static std::string DocumentOf(const std::string& number) {
    const Elements head = {{"TxnID", number + "-1"},
                           {"TimeCreated", std::string(kModified)},
                           {"TimeModified", std::string(kModified)},
                           {"TxnDate", "2008-03-03"},
                           {"RefNumber", "N-" + number}};
    const auto& query = GetParam().query;
    const auto line = Line(GetParam().line, kTravelLine, {{"TxnLineID", "L-" + number}});
    const auto payee = query == "Check" ? "PayeeEntityRef" : query == "Bill" ? "VendorRef" : "CustomerRef";
    return With(RecordOf(query, head, {{payee, query == "Estimate" ? kJobRef : kVendorRef}}), {line});
  }
};

TEST_P(CostRuns, Show_their_form_as_they_go) {
  CostsHouse house(GetParam().table);
  house.TakeAnswer(GetParam().query, Two());
  EXPECT_EQ(Stored(house), "L-1\nL-2");
  EXPECT_EQ(house.FormTexts().size(), 1U);
}

TEST_P(CostRuns, Without_a_bar_show_nothing_and_take_no_form_down) {
  CostsHouse house(GetParam().table);
  ShowMsgForm("Somebody else's");
  const auto events = house.desk.FormEvents().size();
  Vars().g_NoProgressBar = true;
  house.TakeAnswer(GetParam().query, Two());
  EXPECT_EQ(Stored(house), "L-1\nL-2");
  EXPECT_EQ(house.desk.FormEvents().size(), events);
  EXPECT_TRUE(house.desk.Form());
}

TEST_P(CostRuns, That_are_cancelled_end_behind_the_document_in_hand) {
  CostsHouse house(GetParam().table, {.answers = "cancel after 1\nyes"});
  house.TakeAnswer(GetParam().query, Two());
  EXPECT_EQ(Stored(house), "L-1");
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST_P(CostRuns, That_are_not_to_be_cancelled_after_all_go_on) {
  CostsHouse house(GetParam().table, {.answers = "cancel after 1\nno"});
  house.TakeAnswer(GetParam().query, Two());
  EXPECT_EQ(Stored(house), "L-1\nL-2");
  EXPECT_EQ(house.BoxTexts(), Texts{kSureToCancel});
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(Gets, CostRuns, testing::ValuesIn(kRuns),
                         [](const auto& test) { return std::string(test.param.table.name); });

}  // namespace
}  // namespace twqb
