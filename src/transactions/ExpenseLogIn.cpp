#include "transactions/ExpenseLogIn.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <utility>

#include "engine/Mapping.h"
#include "engine/RecordWalk.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/CostLines.h"
#include "transactions/NewRow.h"
#include "transactions/TxnTable.h"
#include "transactions/modExpenseLog.h"

namespace twqb {

namespace {

// --- What the three kinds differ in ----------------------------------------------------------------------------------

constexpr std::string_view kTable = "ExpenseLog";
constexpr std::string_view kRoutine = "MoveExpenseLogToTW";

enum class PaidBy : std::uint8_t { CheckOrCard, Bill };

struct CostKind {
  std::string_view shown;
  std::string_view payee;
  PaidBy paidBy;
};

constexpr std::array kKinds = {
    CostKind{.shown = "Getting Checks from QuickBooks...", .payee = "PayeeEntityRef", .paidBy = PaidBy::CheckOrCard},
    CostKind{.shown = "Getting Credit Card Charges from QuickBooks...",
             .payee = "PayeeEntityRef",
             .paidBy = PaidBy::CheckOrCard},
    CostKind{.shown = "Getting Bills from QuickBooks...", .payee = "VendorRef", .paidBy = PaidBy::Bill},
};

// The two forms of lines.
struct LineForm {
  std::string_view code;  // what is looked up as the code
  std::string_view words;
  bool hasQuantity;
};

constexpr LineForm kItemLine = {.code = "ItemRef", .words = "Desc", .hasQuantity = true};
// Of an account: the class stands for the item, and its identifier is looked for among those of items.
constexpr LineForm kAccountLine = {.code = "ClassRef", .words = "Memo", .hasQuantity = false};

// Money that was received ahead is no cost.
constexpr std::string_view kRetainerAccount = "TWUnearnedRetAccount";

// --- The row ---------------------------------------------------------------------------------------------------------

struct Expense {
  const ado::Recordset& row;
  std::string link;
  std::string employee = {};
  std::string project = {};
  std::string code = std::string(kFromQuickBooks);
  std::string description = {};
  Currency charge = {};
  Currency cost = {};
  double units = 0;
  std::optional<std::string_view> billed = {};  // what is left out is not written
  std::optional<double> markup = {};
  std::optional<Date> date = {};
};

template <typename T>
Given Optional(const std::optional<T>& value) {
  return value ? Given(*value) : Given();
}

using Column = NewColumn<Expense>;
constexpr std::array kColumns = {
    Column{"EmployeeID", [](const Expense& expense) -> Given { return expense.employee; }},
    Column{"ProjectID", [](const Expense& expense) -> Given { return expense.project; }},
    Column{"ExpID", [](const Expense& expense) -> Given { return CutTo(expense.row, "ExpID", expense.code); }},
    Column{"ELDescription",
           [](const Expense& expense) -> Given { return CutTo(expense.row, "ELDescription", expense.description); }},
    Column{"ELChgAmt", [](const Expense& expense) -> Given { return expense.charge; }},
    Column{"ELCost", [](const Expense& expense) -> Given { return expense.cost; }},
    Column{"ELUnits", [](const Expense& expense) -> Given { return expense.units; }},
    Column{"ELMarkup", [](const Expense& expense) { return Optional(expense.markup); }},
    Column{"QBLinkID", [](const Expense& expense) -> Given { return expense.link; }},
    Column{"LastUpdated", [](const Expense& /*expense*/) { return PresentMoment(); }},
    Column{"ELDate", [](const Expense& expense) { return Optional(expense.date); }},
    // Whatever QuickBooks says: what is not billable comes with a charge of nothing.
    Column{"ELBillable", [](const Expense& /*expense*/) -> Given { return true; }},
    Column{"ELBilled",
           [](const Expense& expense) { return expense.billed ? Given(std::string(*expense.billed)) : Given(); }},
};

// What QuickBooks says of a line's billing.
enum class Billable : std::int64_t { Yes = 0, No = 1, HasBeenBilled = 2 };

Billable BillableOf(const Record& line) {
  const auto status = line["BillableStatus"];
  return status.IsNothing() ? Billable::Yes : static_cast<Billable>(status.GetInteger());
}

Decimal ColumnOrNothing(const ado::Recordset& row, std::string_view column) {
  const auto value = row.Field(column);
  return IsNull(value) ? Decimal() : ToDecimal(value);
}

// What the row of an expense that is here keeps, and its charge is worked out with.
struct Kept {
  std::string billed;
  Decimal markup;
  Decimal taxes;
};

Kept KeptBy(ado::Connection& connection, std::string_view link) {
  const auto row = connection.OpenRecordset(
      Sql("SELECT ELBilled, ELMarkup, ELTax1, ELTax2, ELTax3 from {} WHERE QBLinkID = '{}';", kTable, link),
      ado::CursorType::Static, ado::LockType::ReadOnly);
  return {.billed = ColumnText(*row, "ELBilled"),
          .markup = ColumnOrNothing(*row, "ELMarkup"),
          .taxes = ColumnOrNothing(*row, "ELTax1") + ColumnOrNothing(*row, "ELTax2") + ColumnOrNothing(*row, "ELTax3")};
}

Currency ChargeOf(Decimal cost, Decimal units, const Kept& kept) {
  const Decimal one(1);
  return (cost * units * (one + kept.markup.PerCent()) * (kept.taxes.PerCent() + one)).ToCurrency();
}

// --- The get ---------------------------------------------------------------------------------------------------------

// The record in hand.
struct Document {
  const Record& record;
  ado::Connection& connection;
  ado::Recordset& rows;
  std::string person = {};      // "" where the payee is nobody here
  bool isStored = false;        // a line of it was written,
  bool hasRowsAlready = false;  // or was there beforehand
  bool isTold = false;          // an observer hears of its lines
};

class ExpenseGet final : public RecordWork {
 public:
  ExpenseGet(const CostKind& kind, TwinRule rule) : kind_(kind), rule_(rule) {}

  void Secure(RecordWalk& walk) override { SecureReservedCode(walk.Connection()); }
  [[nodiscard]] std::optional<std::string> ShownOf(const Record& /*record*/) const override { return std::nullopt; }

  RecordEnd TakeRecord(RecordWalk& walk, const Record& record) override {
    Document document = {.record = record, .connection = walk.Connection(), .rows = walk.Rows()};
    if (IsObserved()) NoteIdentifier(record["TxnID"].GetValueOrEmpty());
    NoteFate(Fate::PassedOver, "no line of it is for a project");
    document.person = PersonOf(document);
    ForEachLine(record["ORItemLineRetList"], "ItemLineRet", [&](const Record& line) {
      if (!line["CustomerRef"].IsNothing()) TakeLine(document, line, kItemLine);
    });
    ForEachLine(record["ExpenseLineRetList"], "", [&](const Record& line) {
      if (FieldAtPath(line, "CustomerRef.FullName").IsNothing()) return;
      if (FieldAtPath(line, "AccountRef.FullName").GetValueOrEmpty() == kRetainerAccount) return;
      TakeLine(document, line, kAccountLine);
    });
    if (kind_.paidBy == PaidBy::CheckOrCard && !document.isStored) {
      if (!FieldAtPath(record, "PayeeEntityRef.FullName").IsNothing()) TakeWhole(document);
    }
    return RecordEnd::Done;
  }

 private:
  // Expenses of no known code go under this one.
  static void SecureReservedCode(ado::Connection& connection) {
    const auto raised = CatchError([&] {
      const auto count =
          LookUp(connection, Sql("SELECT COUNT(ExpID) FROM Expense WHERE ExpID = '{}'", kFromQuickBooks));
      if (LeadingNumber(count) >= 1) return;
      connection.Execute(
          Sql("INSERT INTO Expense(ExpID,ExpCode,ExpSub,ExpDescription,ExpCost,ExpMarkup,ExpBillable,Tax1_Rate,"
              "Tax2_Rate,Tax3_Rate,Reimbursable,Exp_Memo,QBLinkID,LastUpdated) VALUES('{}','FROMQB','','From "
              "QuickBooks',0,0,-1,0,0,0,-1,'',NULL,NULL);",
              kFromQuickBooks),
          nullptr);
    });
    if (!raised) return;
    WriteLog(fmt::format("Could not add a record with ExpID = \"{}\" to the Expense table.", kFromQuickBooks));
    WriteLog("The following error occured: -");
    WriteLog(fmt::format("Error Number = {}", SignedNumber(raised->number())));
    WriteLog("Error Description: -" + raised->description());
    TellErrorToObserver(kRoutine, raised->number(), raised->description(), ToldBy::Log);
  }

  [[nodiscard]] std::string PersonOf(const Document& document) const {
    const auto payee = document.record[kind_.payee];
    std::string person;
    if (payee.IsNothing()) return person;
    IgnoreErrors([&] {
      person = Trim(LookUp(document.connection,
                           Sql("SELECT EmployeeID FROM Employee WHERE QBLinkID = '{}';", payee["ListID"].GetValue())));
    });
    return person;
  }

  // Each line is told as a record, and the document by its lines.
  void TakeLine(Document& document, const Record& line, const LineForm& form) const {
    DropRecordInHand();
    document.isTold = true;
    AsPart(Standing::Record, "", [&] {
      if (WriteLine(document, line, form)) document.isStored = true;
    });
    DropUnwritten(document.rows);
  }

  // False: the line is passed over; a row that was begun for it is still to be dropped.
  bool WriteLine(Document& document, const Record& line, const LineForm& form) const {
    auto& rows = document.rows;
    Expense expense = {.row = rows, .link = line["TxnLineID"].GetValue()};
    NoteIdentifier(expense.link);
    const bool isNew = !IsLinkedTo(document.connection, kTable, expense.link);
    Kept kept;
    if (isNew) {
      BeginRow(rows);
    } else {
      document.hasRowsAlready = true;
      if (!MayBeChanged(rows, "ELID", expense.link, rule_, document.record)) return false;
      kept = KeptBy(document.connection, expense.link);
      if (IsBilled(kept.billed)) return LeavesBilled();
    }
    if (!FindCode(document.connection, line, form, expense)) return false;
    if (!FindProject(document, line["CustomerRef"], expense)) return false;
    const auto words = line[form.words];
    if (!words.IsNothing()) expense.description = words.GetValue();
    const auto number = [&](std::string_view field) {
      return form.hasQuantity && !line[field].IsNothing() ? Decimal::FromDouble(line[field].GetNumber()) : Decimal();
    };
    const auto cost = number("Cost");
    const auto units = number("Quantity");
    const auto billable = BillableOf(line);
    const auto amount = billable == Billable::No ? Currency() : AmountOf(line["Amount"]).value_or(Currency());
    expense.charge = isNew ? amount : ChargeOf(cost, units, kept);
    expense.cost = cost.ToCurrency();
    expense.units = units.ToDouble();
    expense.billed = billable == Billable::HasBeenBilled ? "P" : "N";
    if (isNew) {
      expense.markup = 0;
      expense.date = document.record["TxnDate"].GetDate();
    }
    Write(rows, expense, isNew);
    return true;
  }

  // False: a bill's line on an item that is not here.
  [[nodiscard]] bool FindCode(ado::Connection& connection, const Record& line, const LineForm& form,
                              Expense& expense) const {
    const auto reference = line[form.code];
    const bool isItem = form.hasQuantity;
    if (reference.IsNothing() || (!isItem && reference["FullName"].IsNothing())) return true;
    const auto found = connection.OpenRecordset(
        Sql("SELECT ExpID, ExpDescription FROM Expense WHERE QBLinkID = '{}';", reference["ListID"].GetValue()),
        ado::CursorType::Static, ado::LockType::ReadOnly);
    if (found->Eof()) {
      const bool comes = !isItem || kind_.paidBy == PaidBy::CheckOrCard;
      if (!comes) NoteFate(Fate::PassedOver, "its item is not here");
      return comes;
    }
    expense.code = ColumnText(*found, "ExpID");
    if (const auto description = found->Field("ExpDescription"); !IsNull(description)) {
      expense.description = ToText(description);
    }
    return true;
  }

  // False: the job is not here, or has nobody who could have spent the money; the log tells of it.
  static bool FindProject(const Document& document, const Record& job, Expense& expense) {
    const auto listId = job["ListID"].GetValue();
    const auto found = document.connection.OpenRecordset(
        Sql("SELECT ProjectID, EmployeeID FROM Project WHERE QBLinkID = '{}';", listId), ado::CursorType::Static,
        ado::LockType::ReadOnly);
    if (found->Eof()) {
      NoteFate(Fate::PassedOver, "its job is not here");
      WriteLog(
          fmt::format("Move Expenses to TW: Skipping the record, because the job with List ID = '{} - {}' has not "
                      "been transferred from QuickBooks to Tallywick",
                      listId, job["FullName"].GetValueOrEmpty()));
      return false;
    }
    if (IsNull(found->Field("EmployeeID"))) {
      NoteFate(Fate::PassedOver, "its project has no employee");
      WriteLog(
          fmt::format("Skipping the record, because Employee ID not found in the Projects table where QBLinkID = "
                      "'{}'",
                      listId));
      return false;
    }
    expense.project = ColumnText(*found, "ProjectID");
    expense.employee = document.person.empty() ? ColumnText(*found, "EmployeeID") : document.person;
    return true;
  }

  // One row for all of it, for the project that the payee is.
  void TakeWhole(Document& document) const {
    DropRecordInHand();
    AsPart(Standing::Record, "", [&] {
      if (!WriteWhole(document) && document.isTold) DropRecordInHand();
    });
    DropUnwritten(document.rows);
  }

  // False: it does not come.
  bool WriteWhole(Document& document) const {
    auto& rows = document.rows;
    const auto& record = document.record;
    Expense expense = {.row = rows, .link = record["TxnID"].GetValue(), .description = "From QB"};
    NoteIdentifier(expense.link);
    const bool isNew = !IsLinkedTo(document.connection, kTable, expense.link);
    if (isNew) {
      BeginRow(rows);
    } else if (!MayBeChanged(rows, "ELID", expense.link, rule_, record)) {
      return false;
    } else if (IsBilled(ColumnText(rows, "ELBilled"))) {
      return LeavesBilled();
    }
    if (!FindProject(document, record["PayeeEntityRef"], expense)) return false;
    // Its lines are here, if unchanged: the whole beside them would be the same money twice.
    if (isNew && document.hasRowsAlready) return false;
    const auto amount = AmountOf(record["Amount"]).value_or(Currency());
    const auto memo = record["Memo"];
    if (!memo.IsNothing()) expense.description = memo.GetValue();
    expense.charge = amount;
    expense.cost = amount;
    expense.units = 1;
    expense.markup = 0;
    expense.date = record["TxnDate"].GetDate();
    Write(rows, expense, isNew);
    return true;
  }

  static bool LeavesBilled() {
    NoteFate(Fate::LeftAsItWas, kBilledAlready);
    return false;
  }

  static void BeginRow(ado::Recordset& rows) {
    rows.AddNew();
    rows.SetField("ELID", GenerateGUID());
  }
  static void Write(ado::Recordset& rows, const Expense& expense, bool isNew) {
    WriteColumns<Expense>(rows, kColumns, expense);
    rows.Update();
    NoteFate(isNew ? Fate::Added : Fate::Changed);
    NoteKeyOf(rows, "ELID");
  }
  static void DropUnwritten(ado::Recordset& rows) {
    if (rows.EditState() != ado::EditMode::None) rows.CancelUpdate();
  }

  const CostKind& kind_;
  const TwinRule rule_;
};

}  // namespace

void MoveExpenseLogToTW(const GetCall& call) {
  constexpr int kTooOld = 1;
  if (Vars().g_QBMajorVer == kTooOld) {
    TheDesk().ShowMessageBox(
        {.text = std::string(kNoExpensesInVersion1), .title = "Error", .icon = BoxIcon::Information});
    // A run over all tables goes on.
    call.run.g_TableOk = TableOk::True;
    return;
  }
  const auto& kind = kKinds.at(static_cast<std::size_t>(call.part));
  const GetTexts texts = {.routine = kRoutine,
                          .shown = kind.shown,
                          .errors = ErrorReport::OwnBox,
                          .afterError = AfterError::EndsTheRun,
                          .form = FormToo::Unload};
  ExpenseGet work(kind, call.rule);
  constexpr std::size_t kAlways = 1;
  RecordWalk(texts, kTable, call).Walk(kAlways, work);
}

}  // namespace twqb
