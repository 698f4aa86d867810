#include "transactions/VendorBillsIn.h"

#include <fmt/format.h>

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <utility>

#include "engine/DependentPull.h"
#include "engine/Mapping.h"
#include "engine/RecordWalk.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/CostLines.h"
#include "transactions/NewRow.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

// --- The bill --------------------------------------------------------------------------------------------------------

constexpr std::string_view kRoutine = "MoveVendorBillToTW";
constexpr std::string_view kTable = "VendorBill";
constexpr std::string_view kKeyColumn = "VendorBillID";

// The record in hand.
struct Bill {
  const Record& record;
  ado::Connection& connection;
  std::string txnId;
  std::string vendor;
  Before before = Before::New;
  std::string key = {};
  std::string number = {};
  Date date = {};
  bool hasLines = false;  // that were stored, or were there beforehand
};

// When something happened, or else when QuickBooks heard of the bill.
Date DateOr(const Record& bill, std::string_view field) {
  const auto date = bill[field];
  return date.IsNothing() ? bill["TimeCreated"].GetDate() : date.GetDate();
}

using HeaderColumn = NewColumn<Bill>;
constexpr std::array kHeaderColumns = {
    HeaderColumn{"BillNumber", [](const Bill& bill) -> Given { return bill.number; }},
    HeaderColumn{"BillDate", [](const Bill& bill) -> Given { return bill.date; }},
    HeaderColumn{"VendorID", [](const Bill& bill) -> Given { return bill.vendor; }},
    HeaderColumn{"BillMemo", [](const Bill& bill) { return TextOf(bill.record["Memo"]); }},
    HeaderColumn{"BillDueDate", [](const Bill& bill) -> Given { return DateOr(bill.record, "DueDate"); }},
    HeaderColumn{"BillRef", [](const Bill& /*bill*/) -> Given { return std::string("From QuickBooks"); }},
    HeaderColumn{"QBLinkID", [](const Bill& bill) -> Given { return bill.txnId; }},
    HeaderColumn{"LastUpdated", [](const Bill& /*bill*/) { return PresentMoment(); }},
};

// --- Its lines -------------------------------------------------------------------------------------------------------

struct BillLine {
  const Bill& bill;
  const ado::Recordset& row;
  LineCode code;
  std::string link;
  std::string project = {};
  std::string projectName = {};
  std::string description = {};
  Currency amount = {};
  Decimal quantity = {};
  Decimal cost = Decimal(1);
  double tax = 0;
};

Given Yes(const BillLine& /*line*/) { return true; }
Given Zero(const BillLine& /*line*/) { return std::int64_t{0}; }
Given NotBilled(const BillLine& /*line*/) { return std::string("N"); }
Given Supervisor(const BillLine& /*line*/) { return std::string("SUPERVISOR"); }
Given Approved(const BillLine& /*line*/) {
  constexpr std::int64_t kApproved = 2;
  return kApproved;
}

Given Now(const BillLine& /*line*/) { return PresentMoment(); }
Given Vendor(const BillLine& line) { return line.bill.vendor; }
Given Project(const BillLine& line) { return line.project; }
Given ProjectName(const BillLine& line) { return line.projectName; }
Given Code(const BillLine& line) { return line.code.code; }
Given Amount(const BillLine& line) { return line.amount; }
Given Cost(const BillLine& line) { return line.cost.ToCurrency(); }
Given Quantity(const BillLine& line) { return line.quantity.ToDouble(); }
Given Tax(const BillLine& line) { return line.tax; }
Given BillDate(const BillLine& line) { return line.bill.date; }
Given Link(const BillLine& line) { return line.link; }
Given BillKey(const BillLine& line) { return line.bill.key; }

using Column = NewColumn<BillLine>;
constexpr std::array kNewHours = {
    Column{"TEBill", Yes},
    Column{"TEBillStatus", NotBilled},
    Column{"TEMemoExists", Zero},
    Column{"TEPosted", Yes},
    Column{"TEFlag1", Zero},
    Column{"TEFlag2", Zero},
    Column{"TEFlag3", Zero},
    Column{"TETax2", Zero},
    Column{"TETax3", Zero},
    Column{"TEXtraWork", Zero},
    Column{"TEOT", Zero},
    Column{"TECompTime", Zero},
    Column{"isSub", Yes},
    Column{"ApprovalStatus", Approved},
    Column{"ApprovedBy", Supervisor},
    Column{"WUD", Zero},
    Column{"ShowMemoOnInvoice", Yes},
    Column{"ShowMemoOnJournal", Zero},
};
constexpr std::array kHours = {
    Column{"LastUpdated", Now},
    Column{"EmployeeID", Vendor},
    Column{"ProjectID", Project},
    Column{"ProjectName", ProjectName},
    Column{"ActivityID", Code},
    Column{"TEDescription",
           [](const BillLine& line) -> Given { return CutTo(line.row, "TEDescription", line.description); }},
    Column{"TECostRate", Cost},
    Column{"TEBillRate", Cost},
    Column{"TEDate", BillDate},
    Column{"TEHours", Quantity},
    Column{"aHours", Quantity},
    Column{"TETax1", Tax},
    Column{"QBLinkID", Link},
    Column{"VendorBillID", BillKey},
};

constexpr std::array kNewExpense = {
    Column{"ELBillable", Yes},         Column{"ELBilled", NotBilled}, Column{"ELMemoFlag", Zero},
    Column{"ELPosted", Yes},           Column{"ELFlag1", Zero},       Column{"ELFlag2", Zero},
    Column{"ELFlag3", Zero},           Column{"ELTax2", Zero},        Column{"ELTax3", Zero},
    Column{"Reimbursable", Zero},      Column{"ELPaid", Zero},        Column{"isProduct", Zero},
    Column{"ELMarkup", Zero},          Column{"isSub", Yes},          Column{"ApprovalStatus", Approved},
    Column{"ApprovedBy", Supervisor},  Column{"WUD", Zero},           Column{"ShowMemoOnInvoice", Yes},
    Column{"ShowMemoOnJournal", Zero}, Column{"ExpType", Zero},
};
constexpr std::array kExpense = {
    Column{"LastUpdated", Now},
    Column{"EmployeeID", Vendor},
    Column{"ProjectID", Project},
    Column{"ExpID", Code},
    Column{"ELDescription",
           [](const BillLine& line) -> Given { return CutTo(line.row, "ELDescription", line.description); }},
    Column{"ELCost", Cost},
    Column{"ELChgAmt", Amount},
    Column{"ELDate", BillDate},
    Column{"ELUnits", Quantity},
    Column{"ELTax1", Tax},
    Column{"QBLinkID", Link},
    Column{"VendorBillID", BillKey},
};

// Where lines of either kind become rows, and what those hold.
struct Rows {
  LineTable table;
  std::string_view statusColumn;
  std::span<const Column> ofNew;
  std::span<const Column> columns;
};
constexpr Rows kHoursRows = {
    .table = {.table = "TimeEntry", .opened = "TimeEntry WHERE QBLINKID IS NOT NULL", .keyColumn = "TEID"},
    .statusColumn = "TEBillStatus",
    .ofNew = kNewHours,
    .columns = kHours};
constexpr Rows kExpenseRows = {
    .table = {.table = "ExpenseLog", .opened = "ExpenseLog WHERE QBLINKID IS NOT NULL", .keyColumn = "ELID"},
    .statusColumn = "ELBilled",
    .ofNew = kNewExpense,
    .columns = kExpense};

const Rows& RowsOf(CodeKind kind) { return kind == CodeKind::Activity ? kHoursRows : kExpenseRows; }

// The status of the row in hand. Each dialect has its own way to write an identifier.
std::string StatusOf(ado::Connection& connection, const Rows& rows, const ado::Recordset& row) {
  const auto id = ReplaceAll(ReplaceAll(ColumnText(row, rows.table.keyColumn), "{", ""), "}", "");
  const auto literal = Vars().g_DbKind == "SQL" ? Sql("'{{{}}}'", id) : Sql("{{guid {{{}}}}}", Sql::Name(id));
  return LookUp(connection, Sql("SELECT {} FROM {} WHERE {}={};", rows.statusColumn, rows.table.table,
                                rows.table.keyColumn, literal));
}

constexpr std::string_view kNoWords = "From QuickBooks";

// What an item says, or its code, or neither.
std::string WordsOfItem(ado::Connection& connection, const Record& line, const LineCode& code) {
  auto words = TextOr(line, "Desc", "");
  if (words.empty()) IgnoreErrors([&] { words = DescriptionOf(connection, code); });
  return words.empty() ? std::string(kNoWords) : words;
}

std::string WordsOfAccount(const Record& line) {
  constexpr std::size_t kMost = 100;
  const auto words = Left(TextOr(line, "Memo", ""), kMost);
  return words.empty() ? std::string(kNoWords) : words;
}

// The two forms of lines: one says how much of what, the other an account and an amount.
enum class LineForm : std::uint8_t { Item, Account };

class VendorBillGet final : public RecordWork {
 public:
  explicit VendorBillGet(TwinRule rule) : rule_(rule) {}

  [[nodiscard]] std::optional<std::string> ShownOf(const Record& record) const override {
    return ShownNumber("Vendor Bill No. ", record);
  }

  RecordEnd TakeRecord(RecordWalk& walk, const Record& record) override {
    Bill bill = {.record = record,
                 .connection = walk.Connection(),
                 .txnId = record["TxnID"].GetValue(),
                 .vendor = VendorOf(walk.Connection(), record)};
    NoteIdentifier(bill.txnId);
    if (bill.vendor.empty()) NoteFate(Fate::PassedOver, "its vendor is not here");
    if (bill.vendor.empty() || !WriteHeader(walk.Rows(), bill)) return RecordEnd::Done;
    NoteFate(bill.before == Before::New ? Fate::Added : Fate::Changed);
    NoteKey(bill.key);
    TakeLines(bill, record["ORItemLineRetList"], "ItemLineRet", LineForm::Item);
    TakeLines(bill, record["ExpenseLineRetList"], "", LineForm::Account);
    if (bill.before == Before::New && !bill.hasLines) NoteFate(Fate::PassedOver, kWithoutLines);
    if (bill.before == Before::New && !bill.hasLines) DeleteDocument(bill.connection, kTable, kKeyColumn, bill.key);
    return RecordEnd::Done;
  }

  void Summarise() override {
    if (failed_ == 0) return;
    TheDesk().ShowMessageBox({.text = fmt::format("There were {} bills that did not transfer properly. Please\r\n"
                                                  "review the log file for additional details or try resending.",
                                                  failed_),
                              .title = "Message",
                              .icon = BoxIcon::Information});
  }

 private:
  static std::string VendorOf(ado::Connection& connection, const Record& record) {
    std::string vendor;
    IgnoreErrors([&] {
      vendor = LookUp(connection, Sql("SELECT EmployeeID FROM Employee WHERE QBLINKID = '{}';",
                                      record["VendorRef"]["ListID"].GetValue()));
    });
    return vendor;
  }

  // False: the bill is here and stays as it is, with all its lines.
  bool WriteHeader(ado::Recordset& rows, Bill& bill) const {
    if (IsLinkedTo(bill.connection, kTable, bill.txnId)) {
      bill.before = Before::Known;
      if (!MayBeChanged(rows, kKeyColumn, bill.txnId, rule_, bill.record)) return false;
    } else {
      rows.AddNew();
      rows.SetField(kKeyColumn, GenerateGUID());
    }
    bill.number = NumberOfDocument(bill.record);
    bill.date = DateOr(bill.record, "TxnDate");
    WriteColumns<Bill>(rows, kHeaderColumns, bill);
    rows.Update();
    bill.key = ColumnText(rows, kKeyColumn);
    return true;
  }

  // An error leaves the rest of them, and the bill goes on with what is behind.
  void TakeLines(Bill& bill, const Record& lines, std::string_view branch, LineForm form) {
    int number = 0;
    const auto raised = CatchError([&] {
      ForEachLine(lines, branch, [&](const Record& line) {
        ++number;
        AsPart(Standing::Line, "", [&] { TakeLine(bill, line, form); });
      });
    });
    if (!raised) return;
    LogError(kRoutine,
             fmt::format("Error getting Bill No. {} and row number {} to QB. Vendor = {} BIll Date {} Error Number = "
                         "{} Error Description = {}",
                         bill.number, number, bill.vendor, ToText(Value(bill.date)), SignedNumber(raised->number()),
                         raised->description()),
             raised->number());
    ++failed_;
  }

  void TakeLine(Bill& bill, const Record& record, LineForm form) const {
    auto code = form == LineForm::Item ? CodeOfItem(bill.connection, record)
                                       : LineCode{.kind = CodeKind::Expense, .code = std::string(kFromQuickBooks)};
    if (code.code.empty()) return NoteFate(Fate::PassedOver, "its item is not here");
    const auto& rows = RowsOf(code.kind);
    const auto link = record["TxnLineID"].GetValue();
    NoteIdentifier(link);
    const LineRow place(bill.connection, rows.table, link);
    if (!place.IsNew()) {
      // Whatever becomes of the line, and of hours, too, where it finds no row.
      static_cast<void>(
          GetScalarFromSQL(Sql("UPDATE EXPENSELOG SET VendorBillID = '{}' WHERE QBLinkID = '{}';", bill.key, link)));
      bill.hasLines = true;
      if (!place.MayBeChanged(rule_, bill.record)) return;
    }
    BillLine line = {.bill = bill, .row = place.Row(), .code = std::move(code), .link = link};
    line.project = ProjectOf(bill.connection, record["CustomerRef"]);
    if (line.project.empty()) return NoteFate(Fate::PassedOver, "its job is not here");
    ReadValues(bill.connection, record, form, line);
    if (place.IsNew()) {
      place.Add();
      WriteColumns<BillLine>(place.Row(), rows.ofNew, line);
    } else if (IsBilled(StatusOf(bill.connection, rows, place.Row()))) {
      return NoteFate(Fate::LeftAsItWas, kBilledAlready);
    }
    if (&rows == &kHoursRows) {
      line.projectName =
          LookUp(bill.connection, Sql("SELECT ProjectName FROM Project WHERE ProjectID = '{}';", line.project));
    }
    WriteColumns<BillLine>(place.Row(), rows.columns, line);
    // Only an observer hears of a row that can't be written.
    if (const auto raised = CatchError([&] { place.Row().Update(); })) {
      TellErrorToObserver(kRoutine, raised->number(), raised->description());
      NoteFate(Fate::Failed, [&] { return raised->description(); });
      return;
    }
    NoteFate(place.IsNew() ? Fate::Added : Fate::Changed);
    bill.hasLines = true;
  }

  // A customer comes in first, as client and project.
  static std::string ProjectOf(ado::Connection& connection, const Record& customer) {
    if (customer.IsNothing()) return {};
    const auto listId = customer["ListID"].GetValue();
    if (customer["FullName"].GetValueOrEmpty().find(':') == std::string::npos) {
      TransferCustomerOrJobFromQB(listId, &connection, "");
    }
    return LookUp(connection, Sql("SELECT ProjectID FROM Project WHERE QBLinkID = '{}';", listId));
  }

  static void ReadValues(ado::Connection& connection, const Record& record, LineForm form, BillLine& line) {
    line.amount = AmountOr(record, "Amount", Currency());
    if (form == LineForm::Item) {
      line.description = WordsOfItem(connection, record, line.code);
      line.quantity = NumberOr(record, "Quantity", line.quantity);
      line.cost = NumberOr(record, "Cost", line.cost);
    } else {
      line.description = WordsOfAccount(record);
    }
    // In the forms of today lines have none.
    line.tax = TaxPercent(AmountOr(record, "TaxAmount", Currency()), line.amount);
  }

  const TwinRule rule_;
  int failed_ = 0;
};

constexpr GetTexts kTexts = {.routine = kRoutine,
                             .shown = "Getting Vendor Bills from QuickBooks...",
                             .errors = ErrorReport::OwnBox,
                             .afterError = AfterError::EndsTheRun};

}  // namespace

void MoveVendorBillToTW(const GetCall& call) {
  VendorBillGet work(call.rule);
  constexpr std::size_t kAlways = 1;
  RecordWalk(kTexts, kTable, call).Walk(kAlways, work);
}

double TaxPercent(Currency tax, Currency amount) {
  constexpr auto kOne = Currency::FromTenThousandths(10'000);
  constexpr int kHundred = 100;
  if (tax < kOne || amount < kOne) return 0;
  const auto percent = Decimal::FromCurrency(tax) * Decimal(kHundred) / Decimal::FromCurrency(amount);
  return percent.ToCents().ToDouble();
}

}  // namespace twqb
