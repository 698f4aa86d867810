#include "transactions/VendorBillsIn.h"

#include <fmt/format.h>

#include <array>
#include <span>
#include <utility>

#include "engine/DependentPull.h"
#include "engine/Mapping.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/CostGet.h"
#include "transactions/CostLines.h"
#include "transactions/NewRow.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

// --- The bill --------------------------------------------------------------------------------------------------------

constexpr CostTable kBills = {.table = "VendorBill",
                              .keyColumn = "VendorBillID",
                              .routine = "MoveVendorBillToTW",
                              .shown = "Getting Vendor Bills from QuickBooks...",
                              .numbers = "Vendor Bill No. "};

// What is known of the bill in hand beside the document.
struct Bill {
  std::string vendor;
  std::string number;
  Date date;
};

struct BillRow {
  const CostDocument& document;
  const Bill& bill;
};

// When something happened, or else when QuickBooks heard of the bill.
Date DateOr(const Record& bill, std::string_view field) {
  const auto date = bill[field];
  return date.IsNothing() ? bill["TimeCreated"].GetDate() : date.GetDate();
}

using HeaderColumn = NewColumn<BillRow>;
constexpr std::array kHeaderColumns = {
    HeaderColumn{"BillNumber", [](const BillRow& row) -> Given { return row.bill.number; }},
    HeaderColumn{"BillDate", [](const BillRow& row) -> Given { return row.bill.date; }},
    HeaderColumn{"VendorID", [](const BillRow& row) -> Given { return row.bill.vendor; }},
    HeaderColumn{"BillMemo", [](const BillRow& row) { return TextOf(row.document.record["Memo"]); }},
    HeaderColumn{"BillDueDate", [](const BillRow& row) -> Given { return DateOr(row.document.record, "DueDate"); }},
    HeaderColumn{"BillRef", [](const BillRow& /*row*/) -> Given { return std::string("From QuickBooks"); }},
    HeaderColumn{"QBLinkID", [](const BillRow& row) -> Given { return row.document.txnId; }},
    HeaderColumn{"LastUpdated", [](const BillRow& /*row*/) { return PresentMoment(); }},
};

// --- Its lines -------------------------------------------------------------------------------------------------------

struct BillLine {
  const CostDocument& document;
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
Given BillKey(const BillLine& line) { return line.document.key; }

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

class VendorBillGet final : public CostGet {
 public:
  explicit VendorBillGet(const GetCall& call) : CostGet(kBills, call) {}

  void Summarise() override {
    if (failed_ == 0) return;
    TheDesk().ShowMessageBox({.text = fmt::format("There were {} bills that did not transfer properly. Please\r\n"
                                                  "review the log file for additional details or try resending.",
                                                  failed_),
                              .title = "Message",
                              .icon = BoxIcon::Information});
  }

 private:
  // A bill of nobody here is passed over.
  bool Begin(CostDocument& document) override {
    bill_ = {};
    IgnoreErrors([&] {
      bill_.vendor = LookUp(document.connection, Sql("SELECT EmployeeID FROM Employee WHERE QBLINKID = '{}';",
                                                     document.record["VendorRef"]["ListID"].GetValue()));
    });
    if (bill_.vendor.empty()) NoteFate(Fate::PassedOver, "its vendor is not here");
    return !bill_.vendor.empty();
  }

  void FillHeader(ado::Recordset& row, const CostDocument& document) override {
    if (document.before == Before::New) row.SetField(kBills.keyColumn, GenerateGUID());
    bill_.number = NumberOfDocument(document.record);
    bill_.date = DateOr(document.record, "TxnDate");
    WriteColumns<BillRow>(row, kHeaderColumns, {.document = document, .bill = bill_});
  }

  void TakeLines(CostDocument& document) override {
    TakeLines(document, document.record["ORItemLineRetList"], "ItemLineRet", LineForm::Item);
    TakeLines(document, document.record["ExpenseLineRetList"], "", LineForm::Account);
  }

  // An error leaves the rest of them, and the bill goes on with what is behind.
  void TakeLines(CostDocument& document, const Record& lines, std::string_view branch, LineForm form) {
    int number = 0;
    const auto raised = CatchError([&] {
      ForEachLine(lines, branch, [&](const Record& line) {
        ++number;
        AsPart(Standing::Line, "", [&] { TakeLine(document, line, form); });
      });
    });
    if (!raised) return;
    LogError(kBills.routine,
             fmt::format("Error getting Bill No. {} and row number {} to QB. Vendor = {} BIll Date {} Error Number = "
                         "{} Error Description = {}",
                         bill_.number, number, bill_.vendor, ToText(Value(bill_.date)), SignedNumber(raised->number()),
                         raised->description()),
             raised->number());
    ++failed_;
  }

  void TakeLine(CostDocument& document, const Record& record, LineForm form) const {
    auto code = form == LineForm::Item ? CodeOfItem(document.connection, record)
                                       : LineCode{.kind = CodeKind::Expense, .code = std::string(kFromQuickBooks)};
    if (code.code.empty()) return NoteFate(Fate::PassedOver, "its item is not here");
    const auto& rows = RowsOf(code.kind);
    const auto link = record["TxnLineID"].GetValue();
    NoteIdentifier(link);
    const LineRow place(document.connection, rows.table, link);
    if (!place.IsNew()) {
      // Whatever becomes of the line, and of hours, too, where it finds no row.
      static_cast<void>(GetScalarFromSQL(
          Sql("UPDATE EXPENSELOG SET VendorBillID = '{}' WHERE QBLinkID = '{}';", document.key, link)));
      document.hasLines = true;
      if (!place.MayBeChanged(Rule(), document.record)) return;
    }
    BillLine line = {.document = document, .bill = bill_, .row = place.Row(), .code = std::move(code), .link = link};
    line.project = ProjectOf(document.connection, record["CustomerRef"]);
    if (line.project.empty()) return NoteFate(Fate::PassedOver, "its job is not here");
    ReadValues(document.connection, record, form, line);
    if (place.IsNew()) {
      place.Add();
      WriteColumns<BillLine>(place.Row(), rows.ofNew, line);
    } else if (IsBilled(StatusOf(document.connection, rows, place.Row()))) {
      return NoteFate(Fate::LeftAsItWas, kBilledAlready);
    }
    if (&rows == &kHoursRows) {
      line.projectName =
          LookUp(document.connection, Sql("SELECT ProjectName FROM Project WHERE ProjectID = '{}';", line.project));
    }
    WriteColumns<BillLine>(place.Row(), rows.columns, line);
    // Only an observer hears of a row that can't be written.
    if (const auto raised = CatchError([&] { place.Row().Update(); })) {
      TellErrorToObserver(kBills.routine, raised->number(), raised->description(), ToldBy::Nobody);
      NoteFate(Fate::Failed, [&] { return raised->description(); });
      return;
    }
    NoteFate(place.IsNew() ? Fate::Added : Fate::Changed);
    document.hasLines = true;
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

  Bill bill_;
  int failed_ = 0;
};

}  // namespace

void MoveVendorBillToTW(const GetCall& call) { VendorBillGet(call).TakeAll(); }

double TaxPercent(Currency tax, Currency amount) {
  constexpr auto kOne = Currency::FromTenThousandths(10'000);
  constexpr int kHundred = 100;
  if (tax < kOne || amount < kOne) return 0;
  const auto percent = Decimal::FromCurrency(tax) * Decimal(kHundred) / Decimal::FromCurrency(amount);
  return percent.ToCents().ToDouble();
}

}  // namespace twqb
