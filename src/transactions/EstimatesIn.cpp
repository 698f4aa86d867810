#include "transactions/EstimatesIn.h"

#include <array>
#include <span>
#include <utility>

#include "engine/Mapping.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/CostGet.h"
#include "transactions/CostLines.h"
#include "transactions/NewRow.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

// --- The budget ------------------------------------------------------------------------------------------------------

constexpr CostTable kBudgets = {.table = "Budget",
                                .keyColumn = "BudgetID",
                                // Support knows the box of an error by the name of another table's routine.
                                .routine = "MoveVendorBillToTW",
                                .shown = "Getting Estimates from QuickBooks...",
                                .numbers = "Estimate No. "};

using BudgetColumn = NewColumn<CostDocument>;
constexpr std::array kNewBudget = {
    BudgetColumn{"BudgetGroupDesc",
                 [](const CostDocument& /*estimate*/) -> Given { return std::string("From QuickBooks"); }},
    BudgetColumn{"BudgetMiscAmt", [](const CostDocument& /*estimate*/) -> Given { return Currency(); }},
    BudgetColumn{"IsLocked", [](const CostDocument& /*estimate*/) -> Given { return std::int64_t{0}; }},
};
// Without a date: the row of a budget is never the later side.
constexpr std::array kBudget = {
    BudgetColumn{"IsEstimate", [](const CostDocument& /*estimate*/) -> Given { return true; }},
    BudgetColumn{"QBLinkID", [](const CostDocument& estimate) -> Given { return estimate.txnId; }},
};

// --- Its lines -------------------------------------------------------------------------------------------------------

struct EstimateLine {
  const CostDocument& estimate;
  const ado::Recordset& row;
  const LineCode& code;
  std::string link;
  std::string description;
  Decimal amount;
  Decimal quantity;
};

Given OrNone(const std::string& text) { return text.empty() ? Given() : Given(text); }
Given OrNone(Decimal number) { return number.IsZero() ? Given() : Given(number.ToDouble()); }

// Where there is no quantity, the whole is the rate.
Given RateOf(const EstimateLine& line) {
  const auto rate = line.quantity.IsZero() ? line.amount : line.amount / line.quantity;
  return rate.IsZero() ? Given() : Given(rate.ToCurrency());
}
// An amount without a quantity has no unit: division by zero.
Given UnitAmountOf(const EstimateLine& line) {
  return line.amount.IsZero() ? Given() : Given((line.amount / line.quantity).ToCurrency());
}

template <const std::string_view& kColumn>
Given DescriptionFor(const EstimateLine& line) {
  return line.description.empty() ? Given() : Given(CutTo(line.row, kColumn, line.description));
}
constexpr std::string_view kActivityDescription = "BADescription";
constexpr std::string_view kExpenseDescription = "BEDescription";

Given Zero(const EstimateLine& /*line*/) { return std::int64_t{0}; }
Given Now(const EstimateLine& /*line*/) { return PresentMoment(); }
Given BudgetKey(const EstimateLine& line) { return line.estimate.key; }
Given Code(const EstimateLine& line) { return OrNone(line.code.code); }
Given Quantity(const EstimateLine& line) { return OrNone(line.quantity); }
Given Link(const EstimateLine& line) { return line.link; }

using Column = NewColumn<EstimateLine>;
constexpr std::array kNewActivity = {Column{"BudgetID", BudgetKey}};
constexpr std::array kActivity = {
    Column{"BADescription", DescriptionFor<kActivityDescription>},
    Column{"LastUpdated", Now},
    Column{"ActivityID", Code},
    Column{"BARate", RateOf},
    Column{"BAHours", Quantity},
    Column{"QBLinkID", Link},
};
constexpr std::array kNewExpense = {
    Column{"BudgetID", BudgetKey}, Column{"BEMarkup", Zero},    Column{"BETax1_Rate", Zero},
    Column{"BETax2_Rate", Zero},   Column{"BETax3_Rate", Zero}, Column{"PercentComplete", Zero},
};
constexpr std::array kExpense = {
    Column{"LastUpdated", Now},
    Column{"ExpID", Code},
    Column{"BEDescription", DescriptionFor<kExpenseDescription>},
    Column{"BEAmt", UnitAmountOf},
    Column{"BEUnits", Quantity},
    Column{"QBLinkID", Link},
};

// Where lines of either kind become rows, and what those hold. The two blanks show in logs and traces of the database.
struct Rows {
  LineTable table;
  std::span<const Column> ofNew;
  std::span<const Column> columns;
};
constexpr Rows kActivityRows = {
    .table = {.table = "BudgetActivity", .opened = "BudgetActivity  WHERE QBLINKID IS NOT NULL", .keyColumn = "BAID"},
    .ofNew = kNewActivity,
    .columns = kActivity};
constexpr Rows kExpenseRows = {
    .table = {.table = "BudgetExpense", .opened = "BudgetExpense  WHERE QBLINKID IS NOT NULL", .keyColumn = "BEID"},
    .ofNew = kNewExpense,
    .columns = kExpense};

// On one line, its quotes doubled, as the host's own statements want it.
std::string OnOneLine(std::string_view text) {
  return DoubleQuotes(ReplaceAll(ReplaceAll(text, "\n", " "), "\r", " "));
}

class EstimateGet final : public CostGet {
 public:
  explicit EstimateGet(const GetCall& call) : CostGet(kBudgets, call) {}

 private:
  // A customer alone is no project, and the estimate has none.
  bool Begin(CostDocument& estimate) override {
    const auto& record = estimate.record;
    project_ = CustomerName(record).find(':') == std::string::npos
                   ? std::string()
                   : LookUp(estimate.connection, Sql("SELECT ProjectID FROM Project WHERE QBLinkID = '{}';",
                                                     record["CustomerRef"]["ListID"].GetValue()));
    return true;
  }

  void FillHeader(ado::Recordset& row, const CostDocument& estimate) override {
    if (estimate.before == Before::New) {
      row.SetField(kBudgets.keyColumn, NumberOfDocument(estimate.record));
      WriteColumns<CostDocument>(row, kNewBudget, estimate);
    }
    WriteColumns<CostDocument>(row, kBudget, estimate);
  }

  void TakeLines(CostDocument& estimate) override {
    ForEachLine(estimate.record["OREstimateLineRetList"], "EstimateLineRet",
                [&](const Record& line) { AsPart(Standing::Line, "", [&] { TakeLine(estimate, line); }); });
  }

  void TakeLine(CostDocument& estimate, const Record& record) const {
    const auto code = CodeOfItem(estimate.connection, record);
    const auto& rows = code.kind == CodeKind::Activity ? kActivityRows : kExpenseRows;
    auto link = record["TxnLineID"].GetValue();
    NoteIdentifier(link);
    const LineRow place(estimate.connection, rows.table, link);
    if (!place.IsNew() && !place.MayBeChanged(Rule(), estimate.record)) return;
    auto description = TextOr(record, "Desc", "");
    if (UpperCase(description) == "SUBTOTAL") return NoteFate(Fate::PassedOver, "it is a subtotal");
    description = OnOneLine(description);
    if (description.empty()) description = DescriptionOf(estimate.connection, code);
    const EstimateLine line = {.estimate = estimate,
                               .row = place.Row(),
                               .code = code,
                               .link = std::move(link),
                               .description = std::move(description),
                               .amount = Decimal::FromCurrency(AmountOr(record, "Amount", Currency())),
                               .quantity = NumberOr(record, "Quantity", Decimal())};
    if (place.IsNew()) {
      place.Add();
      WriteColumns<EstimateLine>(place.Row(), rows.ofNew, line);
    }
    WriteColumns<EstimateLine>(place.Row(), rows.columns, line);
    place.Row().Update();
    NoteFate(place.IsNew() ? Fate::Added : Fate::Changed);
    estimate.hasLines = true;
  }

  // A project keeps the first estimate that it got.
  void EndNew(const CostDocument& estimate) override {
    if (project_.empty()) return;
    IgnoreErrors([&] {
      estimate.connection.Execute(
          Sql("UPDATE Project SET EstimateID = '{}' WHERE ProjectID = '{}' AND EstimateID IS NULL;", estimate.key,
              project_),
          nullptr);
    });
  }

  std::string project_;  // of the estimate in hand
};

}  // namespace

void MoveEstimatesToTW(const GetCall& call) { EstimateGet(call).TakeAll(); }

}  // namespace twqb
