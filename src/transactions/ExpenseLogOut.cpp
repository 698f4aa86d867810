#include "transactions/ExpenseLogOut.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engine/AddedRecords.h"
#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/RecordReader.h"
#include "engine/RowLook.h"
#include "engine/RowWalk.h"
#include "engine/SelectionQueries.h"
#include "engine/WriteBack.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "transactions/BillsOut.h"
#include "transactions/PickVendor.h"
#include "transactions/TxnRow.h"
#include "transactions/TxnTable.h"
#include "transactions/modExpenseLog.h"

namespace twqb {

namespace {

constexpr SendTexts kSendTexts = {
    .routine = "MoveExpenseLogToQB", .shown = "Sending Expenses to QuickBooks...", .errors = ErrorReport::OwnBox};

constexpr CostColumns kColumns = {.key = "ELID",
                                  .code = "ExpID",
                                  .description = "ELDescription",
                                  .quantity = "ELUnits",
                                  .cost = "ELCost",
                                  .billable = "ELBillable"};

// Of a bill none of whose rows has one.
Date NoDate() { return Date::FromCivil({.year = 1990, .month = 1, .day = 1}); }

// By their places: a line that was left empty shifts those behind it.
void WriteLineLinks(std::span<const Sql> keys, std::span<const std::string> lines, ado::Connection& connection) {
  for (std::size_t i = 0; i < lines.size() && i < keys.size(); ++i) {
    WriteLink(connection, {.table = "ExpenseLog", .condition = Sql("ELID = {}", keys[i])}, lines[i]);
  }
}

void WriteLineStamps(const Sql& keys, ado::Connection& connection) {
  WriteStamp(connection, {.table = "ExpenseLog", .condition = Sql("(ELID IN({}))", keys)});
}

class ExpenseSend final : public RowWork {
 public:
  ExpenseSend(QBSessionManager& session, Run& run) : session_(session), run_(run) {}

  [[nodiscard]] bool ClosesWithoutRows() const override { return false; }
  [[nodiscard]] std::string RowInHand() const override { return record_.key; }

  RowEnd TakeRow(RowWalk& walk) override {
    const auto& row = walk.Row();
    walk.BeginRow(kCallbackRecord);
    record_.key = ColumnText(row, "ELID");
    if (IsNull(row.Field("LastUpdated"))) stampsRows_ = true;
    walk.CountRow([&] { return fmt::format("{}, {}", ColumnText(row, "ELDate"), ColumnText(row, "EmployeeID")); });
    // Whoever named the row could not know that its bill is found again.
    if (WasTakenUp(kExpenseLogTable, record_.key, session_)) {
      NoteFate(Fate::LeftAsItWas, "its bill was found again");
      return RowEnd::Done;
    }
    if (const auto link = ColumnText(row, "QBLinkID"); !Trim(link).empty() && IsCheckOrCharge(link)) {
      NoteFate(Fate::LeftAsItWas, "QuickBooks has it, and it never goes twice");
      return RowEnd::Done;
    }
    if (const auto person = ColumnText(row, "EmployeeID"); !bill_ || person != person_) {
      bill_.emplace(session_);
      isTold_ = false;
      person_ = person;
      if (!AssignVendor(row)) {
        NoteFateAtLast(Fate::PassedOver, "there is no vendor to bill it for");
        return RowEnd::Done;
      }
    }
    if (!bill_->AppendLine(row, kColumns, kExpenseCodes)) return RowEnd::Done;
    DropRecordInHand();
    if (const auto date = row.Field("ELDate"); !IsNull(date)) date_ = DateFloor(ToDate(date));
    return RowEnd::Done;
  }

  // The bill is complete where the next row is somebody else's.
  RowEnd BehindRow(RowWalk& walk) override {
    const auto next = walk.IsBehindLastRow() ? std::string() : ColumnText(walk.Row(), "EmployeeID");
    if (person_ == next || !bill_ || !bill_->HasLines()) return RowEnd::Done;
    bill_->Request()["TxnDate"].SetValue(date_);
    bill_->Request()["DueDate"].SetValue(date_.PlusDays(kDaysToPay));
    const auto sent = Send(walk.Row());
    if (sent.end == SentBill::End::LeaveTable) {
      left_ = true;
      bill_.reset();
      return RowEnd::LeaveTable;
    }
    if (sent.end == SentBill::End::NotSent) failed_ = true;
    if (sent.end == SentBill::End::Added) WriteBack(sent, walk.Connection());
    bill_.reset();
    date_ = NoDate();
    return RowEnd::Done;
  }

  void SummariseBroken(Run& /*run*/) override { TellUnsent(); }
  void Summarise(Run& run) override {
    TellUnsent();
    TheDesk().SetPointer(Pointer::Default);
    if (failed_) {
      TellLacking({.text = ProblemWithBills("Vendors, Expense Codes and Projects"), .failsTheTable = true}, run);
    } else if (left_) {
      run.g_TableOk = TableOk::True;
    }
  }

 private:
  // Sends the bill. Its rows are told with it, each as a record.
  SentBill Send(const ado::Recordset& row) {
    const auto key = Unquoted(bill_->QuotedKeys().front());
    bill_->Name(kExpenseLogTable, key);
    if (!IsObserved()) return SendBill(*bill_, kExpenseLogTable, key, record_, row, session_, run_);
    RecordInHand bill(Standing::Record, [this] { return bill_->Keys().Text(); });
    bill.Drop();
    auto sent = SendBill(*bill_, kExpenseLogTable, key, record_, row, session_, run_);
    TellRows(bill.Account(), sent.lines);
    isTold_ = true;
    return sent;
  }

  void TellRows(RecordAccount account, std::span<const std::string> lines) const {
    const auto& keys = bill_->QuotedKeys();
    for (std::size_t i = 0; i < keys.size(); ++i) {
      account.key = Unquoted(keys[i]);
      account.identifier = i < lines.size() ? lines[i] : std::string();
      TellRecord(account);
    }
  }

  // Rows of a bill that the end of the run came ahead of.
  void TellUnsent() const {
    if (bill_ && !isTold_) TellRows({.why = "the run ended ahead of its bill"}, {});
  }

  // A link to anything else is stale, and the row is billed.
  bool IsCheckOrCharge(const std::string& link) {
    constexpr std::size_t kCharges = 1;
    for (std::size_t kind = 0; kind <= kCharges; ++kind) {
      RecordList found;
      if (ApplyQBFiltersAndReadRecords(kExpenseLogTable, kExpenseLogTable.reads[kind], found, session_, {.strID = link},
                                       run_)) {
        return true;
      }
    }
    return false;
  }

  // False: the bill has no vendor.
  bool AssignVendor(const ado::Recordset& row) {
    bool assigned = false;
    IgnoreErrors([&] {
      const auto person = IsTrueFlag(row, "isSub") ? person_ : VendorInPlaceOf(person_);
      if (person.empty()) return;
      const auto link = LinkOfPerson(person);
      if (link.empty()) return;
      bill_->Request()["VendorRef"]["ListID"].SetValue(link);
      assigned = true;
    });
    return assigned;
  }

  // "" where there is no vendor to pick, or none was.
  static std::string VendorInPlaceOf(std::string_view employeeId) {
    const auto vendors = GetScalarFromSQL("SELECT COUNT(*) FROM Employee WHERE IsSub = -1 and QBLINKID IS NOT NULL;");
    if (vendors.empty() || vendors == "0") return {};
    return PickVendorFor(employeeId);
  }

  void WriteBack(const SentBill& sent, ado::Connection& connection) {
    WriteLineLinks(bill_->QuotedKeys(), sent.lines, connection);
    auto& bills = Vars().g_PassedID;
    bills += fmt::format("{}'{}'", bills.empty() ? "" : ",", sent.txnId);
    if (stampsRows_) WriteLineStamps(bill_->Keys(), connection);
    stampsRows_ = false;
    CloseAddition(session_);
  }

  QBSessionManager& session_;
  Run& run_;
  SendRecord record_;
  std::optional<BillInHand> bill_;
  std::string person_;  // whose rows it has
  Date date_ = NoDate();
  bool stampsRows_ = false;  // a row had no date since rows were last stamped
  bool failed_ = false;
  bool left_ = false;
  bool isTold_ = false;  // the rows of the bill were
};

// --- Lost links ------------------------------------------------------------------------------------------------------

const QuickBooksRead& BillRead() { return kExpenseLogTable.reads.back(); }

// A bill names one of its rows alone, its first. The others are rows of the same person; which of them, the lines say.
class BillOfRows {
 public:
  BillOfRows(const LostAddition& lost, std::string_view person) : lost_(lost) {
    const auto rows = lost.connection.OpenRecordset(SelectRows(kExpenseLogTable, "EmployeeID", person),
                                                    ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
      if (IsTrueFlag(*rows, "ELPosted")) rows_.emplace_back(lost.session, *rows);
    }
  }

  // The first and the last day that the bill can have.
  [[nodiscard]] std::pair<Date, Date> Days() const {
    const auto [first, last] = std::ranges::minmax_element(rows_, {}, &Row::day);
    return first == rows_.end() ? std::pair(NoDate(), NoDate()) : std::pair(first->day, last->day);
  }

  // Finds the row of each line. False: the lines are not those of the rows.
  [[nodiscard]] bool Fits(const Record& bill) {
    const auto lines = LinesOfBill(bill);
    const auto entries = bill["ORItemLineRetList"];
    taken_.clear();
    std::vector<const Row*> used;
    for (std::size_t place = 0; place < lines.size(); ++place) {
      const auto* row = RowOf(entries.GetAt(place)["ItemLineRet"], lines, used);
      if (row == nullptr) return false;
      used.push_back(row);
      // A line that broke off is linked to nothing.
      if (row->isWhole) taken_.push_back(row);
    }
    return !taken_.empty() && taken_.front()->key == lost_.key;
  }

  // Whether each line of the bill is known to a row, and one to the row that the bill is named by. Those have gone
  // then.
  [[nodiscard]] bool KnowLinesOf(const Record& bill) const {
    const auto lines = LinesOfBill(bill);
    std::vector<const Row*> known;
    for (const auto& line : lines) {
      const auto row = std::ranges::find(rows_, line, &Row::link);
      if (row == rows_.end()) return false;
      known.push_back(&*row);
    }
    const bool named = std::ranges::find(known, lost_.key, &Row::key) != known.end();
    for (const auto* row : known) {
      if (named) NoteTakenUp(kExpenseLogTable, row->key, lost_.session);
    }
    return named;
  }

  // Writes what is missing to the rows of a bill that fits; answers whether links were.
  bool WriteLinks(const Record& bill) const {
    std::vector<Sql> keys;
    Sql list;
    for (const auto* row : taken_) {
      keys.push_back(Sql("'{}'", row->key));
      list = list.IsEmpty() ? keys.back() : Sql("{},{}", list, keys.back());
      NoteTakenUp(kExpenseLogTable, row->key, lost_.session);
    }
    WriteLineLinks(keys, LinesOfBill(bill), lost_.connection);
    if (std::ranges::any_of(taken_, &Row::lacksDate)) WriteLineStamps(list, lost_.connection);
    return std::ranges::any_of(taken_, [](const Row* row) { return row->link.empty(); });
  }

 private:
  // A row, and the line that the send makes of it.
  struct Row {
    Row(QBSessionManager& session, const ado::Recordset& row)
        : key(ColumnText(row, kColumns.key)),
          link(Trim(ColumnText(row, "QBLinkID"))),
          lacksDate(IsNull(row.Field("LastUpdated"))),
          day(NoDate()),
          bill(session),
          isWhole(bill.AppendLine(row, kColumns, kExpenseCodes)) {
      if (const auto date = row.Field("ELDate"); !IsNull(date)) day = DateFloor(ToDate(date));
    }

    std::string key;
    std::string link;
    bool lacksDate;
    Date day;
    BillInHand bill;
    bool isWhole;
  };

  // The row of the next line: the one that has its link already, or the one that the bill is named by, or the first
  // that nothing is known of. One without a text comes behind all that have the line's.
  [[nodiscard]] const Row* RowOf(const Record& line, std::span<const std::string> lines,
                                 std::span<const Row* const> used) const {
    const auto& link = lines[taken_.size()];
    const Row* found = nullptr;
    const Row* withoutText = nullptr;
    for (const auto& row : rows_) {
      const bool isOfAnother = !row.link.empty() && row.link != link;
      if (isOfAnother || row.bill.LineCount() == 0 || std::ranges::find(used, &row) != used.end()) continue;
      if (!IsSameLine(line, row.bill.LineAt(0))) continue;
      if (row.link == link || (taken_.empty() && row.key == lost_.key)) return &row;
      auto& first = HasText(row.bill.LineAt(0)) ? found : withoutText;
      if (first == nullptr) first = &row;
    }
    return found != nullptr ? found : withoutText;
  }

  const LostAddition& lost_;
  std::deque<Row> rows_;
  std::vector<const Row*> taken_;  // of the bill that was looked at last, in the order of their links
};

}  // namespace

void MoveExpenseLogToQB(const SendCall& call) {
  Vars().g_PassedID.clear();
  ExpenseSend work(call.session, call.run);
  RowWalk(kSendTexts, call.run).Walk(call.sql, work);
}

namespace {

// Whether it is the twin of a bill of its own.
bool IsOfVendorBill(const Record& bill) {
  const auto count =
      GetScalarFromSQL(Sql("SELECT COUNT(*) FROM VendorBill WHERE QBLinkID = '{}';", bill["TxnID"].GetValue()));
  return count != "0";
}

}  // namespace

TakenUp TakeUpExpenseLinks(const LostAddition& lost) {
  const auto row = lost.connection.OpenRecordset(SelectRows(kExpenseLogTable, "ELID", lost.key),
                                                 ado::CursorType::Static, ado::LockType::ReadOnly);
  if (row->Eof()) return {.end = TakenUp::End::RowGone};
  const auto person = ColumnText(*row, "EmployeeID");
  if (lost.look != nullptr) {
    BillInHand bill(lost.session);
    if (!bill.AppendLine(*row, kColumns, kExpenseCodes)) {
      lost.look->NoteStays(Stays::InPart, "its project or its code has no link yet");
    }
    if (!lost.look->WantsRecords()) return {.end = TakenUp::End::NotAdded};
  }
  BillOfRows rows(lost, person);
  auto bills = std::vector<Record>();
  if (!lost.record.IsNothing()) {
    // An outcome may tell the bill without its lines.
    bills = {RecordOf(BillRead(), lost.record["TxnID"].GetValue(), lost.session)};
    // Deleted since.
    if (bills.front().IsNothing()) return {.end = TakenUp::End::NotAdded};
    // Changed since, on this side or on the other.
    if (!rows.Fits(bills.front()) && rows.KnowLinesOf(bills.front())) {
      return {.end = TakenUp::End::KnewIt, .identifier = bills.front()["TxnID"].GetValue()};
    }
  } else {
    const auto [from, to] = rows.Days();
    bills = lost.look != nullptr ? lost.look->RecordsOfDays(BillRead(), from, to)
                                 : RecordsOfDays(BillRead(), from, to, lost.session);
    // An employee's bill is some vendor's whom the user picked.
    const auto vendor = IsTrueFlag(*row, "isSub") ? LinkOfPerson(person) : std::string();
    std::erase_if(bills, [&](const Record& bill) {
      return (!vendor.empty() && bill["VendorRef"]["ListID"].GetValueOrEmpty() != vendor) || IsOfVendorBill(bill);
    });
  }
  std::erase_if(bills, [&](const Record& bill) { return !rows.Fits(bill); });
  if (lost.look != nullptr) {
    lost.look->Take(std::move(bills));
    return {.end = TakenUp::End::NotAdded};
  }
  if (bills.size() != 1) {
    if (bills.empty() && !lost.isCertain) return {.end = TakenUp::End::NotAdded};
    return {.why = fmt::format("QuickBooks has {} bills with its lines that nothing is linked to", bills.size())};
  }
  const bool wasLost = rows.WriteLinks(bills.front());
  return {.end = wasLost ? TakenUp::End::Linked : TakenUp::End::KnewIt,
          .identifier = bills.front()["TxnID"].GetValue()};
}

}  // namespace twqb
