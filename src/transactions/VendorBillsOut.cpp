#include "transactions/VendorBillsOut.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "engine/AddedRecords.h"
#include "engine/LostAdditions.h"
#include "engine/Mapping.h"
#include "engine/RowLook.h"
#include "engine/RowWalk.h"
#include "engine/SelectionQueries.h"
#include "engine/WriteBack.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Events.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/BillsOut.h"
#include "transactions/TxnRow.h"
#include "transactions/modlVendorBills.h"

namespace twqb {

namespace {

constexpr SendTexts kSendTexts = {.routine = "MoveVendorBillToQB",
                                  .shown = "Sending Bills to QuickBooks...",
                                  .log = "Error tranfering Bill to QB. ID = "};

constexpr CostColumns kColumns = {.key = "TEID",
                                  .code = "ActivityID",
                                  .description = "TEDescription",
                                  .quantity = "TEHours",
                                  .cost = "TECostRate",
                                  .billable = "TEBill"};

// A line is a row of one of the two, and the statement on the other changes nothing.
struct LineTable {
  std::string_view name;
  std::string_view keyColumn;
};
constexpr std::array kLineTables = {LineTable{"TimeEntry", "TEID"}, LineTable{"ExpenseLog", "ELID"}};

constexpr std::string_view kRefusedWithIt = "its bill was refused";

void AssignHeader(const RequestField& request, const ado::Recordset& row) {
  const auto today = TheMachine().Now().Midnight();
  const auto date = row.Field("BillDate");
  request["TxnDate"].SetValue(IsNull(date) ? today : ToDate(date));
  const auto due = row.Field("BillDueDate");
  request["DueDate"].SetValue(IsNull(due) ? today.PlusDays(kDaysToPay) : ToDate(due));
  if (const auto number = row.Field("BillNumber"); !IsNull(number)) request["RefNumber"].SetValue(ToText(number));
}

enum class Lines : bool { InPart, All };

// Up to the first that lacks something.
Lines AppendLines(BillInHand& bill, std::string_view billId, ado::Connection& connection) {
  // Each dialect has its own way to write an identifier.
  const auto id = Vars().g_DbKind == "SQL" ? Sql("'{}'", billId) : Sql("{{guid {}}}", Sql::Name(billId));
  const auto lines = connection.OpenRecordset(Sql("SELECT * FROM TimeExpense WHERE VendorBillID ={};", id),
                                              ado::CursorType::Static, ado::LockType::ReadOnly);
  for (; !lines->Eof(); lines->MoveNext()) {
    const bool isTime = ColumnText(*lines, "DataTbl") == "TE";
    bool isAppended = false;
    AsPart(Standing::Line, "", [&] {
      NoteKeyOf(*lines, kColumns.key);
      isAppended = bill.AppendLine(*lines, kColumns, isTime ? kActivityCodes : kExpenseCodes);
      if (isAppended) DropRecordInHand();
    });
    if (isAppended) continue;
    TellRowsBehind(*lines, kColumns.key);
    lines->Close();
    return Lines::InPart;
  }
  lines->Close();
  return Lines::All;
}

void WriteLinks(const BillInHand& bill, std::string_view billId, const SentBill& sent, ado::Connection& connection) {
  static_cast<void>(
      GetScalarFromSQL(Sql("UPDATE VendorBill SET QBLinkID = '{}' WHERE VendorBillID = '{}';", sent.txnId, billId)));
  const auto& keys = bill.QuotedKeys();
  for (std::size_t i = 0; i < sent.lines.size() && i < keys.size(); ++i) {
    TellRecord(
        {.standing = Standing::Line, .key = Unquoted(keys[i]), .identifier = sent.lines[i], .fate = Fate::Added});
    for (const auto& table : kLineTables) {
      WriteLink(connection, {.table = table.name, .condition = Sql("{} = {}", table.keyColumn, keys[i])}, sent.lines[i],
                Linked::AnyRows);
    }
  }
}

// Whether the bill's own row has its link: where that could not be written nobody is told.
bool KnowsTwin(std::string_view billId, std::string_view txnId) {
  return GetScalarFromSQL(Sql("SELECT QBLinkID FROM VendorBill WHERE VendorBillID = '{}';", billId)) == txnId;
}

// Whether other rows than those of the bill in hand know lines of the record: it is a bill that went before.
bool IsKnownByLines(const Record& record, const BillInHand& bill) {
  return std::ranges::any_of(LinesOfBill(record), [&](const std::string& line) {
    return std::ranges::any_of(kLineTables, [&](const LineTable& table) {
      const auto count = GetScalarFromSQL(Sql("SELECT COUNT(*) FROM {} WHERE QBLinkID = '{}' AND {} NOT IN ({});",
                                              table.name, line, table.keyColumn, bill.Keys()));
      return count != "0";
    });
  });
}

// Whether a row of the bill knows a line of the record, and none is without a link.
bool KnowsLines(const BillInHand& bill, const Record& record) {
  if (!bill.HasLines()) return false;
  const auto lines = LinesOfBill(record);
  bool knowsOne = false;
  for (const auto& table : kLineTables) {
    const auto rows = GlobalConnection().OpenRecordset(
        Sql("SELECT QBLinkID FROM {} WHERE {} IN ({});", table.name, table.keyColumn, bill.Keys()),
        ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
      const auto link = Trim(FirstField(*rows));
      if (link.empty()) return false;
      knowsOne = knowsOne || std::ranges::find(lines, link) != lines.end();
    }
  }
  return knowsOne;
}

void StampLines(const BillInHand& bill, ado::Connection& connection) {
  for (const auto& table : kLineTables) {
    WriteStamp(connection, {.table = table.name, .condition = Sql("({} IN({}))", table.keyColumn, bill.Keys())});
  }
}

class VendorBillSend final : public RowWork {
 public:
  VendorBillSend(QBSessionManager& session, Run& run) : session_(session), run_(run) {}

  [[nodiscard]] bool ClosesWithoutRows() const override { return false; }
  [[nodiscard]] std::string RowInHand() const override { return record_.key; }

  RowEnd TakeRow(RowWalk& walk) override {
    const auto& row = walk.Row();
    record_ = {};
    walk.BeginRow(kCallbackRecord);
    record_.key = ColumnText(row, "VendorBillID");
    if (IsNull(row.Field("LastUpdated"))) stampsRows_ = true;
    walk.CountRow([&] { return fmt::format("{}, {}", ColumnText(row, "BillDate"), ColumnText(row, "VendorID")); });
    if (const auto link = ColumnText(row, "QBLinkID"); !Trim(link).empty()) record_.linkId = link;
    if (IsInQuickBooks(kVendorBillTable, record_, session_, run_)) return RowEnd::Done;
    BillInHand bill(session_);
    const auto vendor = LinkOfPerson(ColumnText(row, "VendorID"));
    if (vendor.empty()) {
      NoteFate(Fate::PassedOver, "its vendor has no link");
      return RowEnd::Done;
    }
    bill.Request()["VendorRef"]["ListID"].SetValue(vendor);
    AssignHeader(bill.Request(), row);
    static_cast<void>(AppendLines(bill, record_.key, walk.Connection()));
    if (bill.HasLines()) return Send(bill, walk);
    NoteFateAtLast(Fate::PassedOver, "it has no lines");
    return RowEnd::Done;
  }

  void Summarise(Run& run) override {
    TheDesk().SetPointer(Pointer::Default);
    if (failed_) {
      Tell("Vendors, Expense Codes and Projects", run);
    } else if (left_) {
      run.g_TableOk = TableOk::True;
    }
  }
  void SummariseBroken(Run& run) override {
    if (failed_) Tell("Expense Codes, Vendors and Projects", run);
  }

 private:
  static void Tell(std::string_view what, Run& run) {
    TellLacking({.text = ProblemWithBills(what), .failsTheTable = true}, run);
  }

  RowEnd Send(BillInHand& bill, RowWalk& walk) {
    bill.Name(kVendorBillTable, record_.key);
    const auto sent = SendBill(bill, kVendorBillTable, record_.key, record_, walk.Row(), session_, run_);
    switch (sent.end) {
      case SentBill::End::Added:
        WriteBack(bill, sent, walk.Connection());
        break;
      case SentBill::End::NotSent:
        failed_ = true;
        TellLinesStay(bill, "its bill was not sent");
        break;
      case SentBill::End::Refused:
        TellLinesStay(bill, kRefusedWithIt);
        break;
      case SentBill::End::LeaveTable:
        left_ = true;
        TellLinesStay(bill, kRefusedWithIt);
        return RowEnd::LeaveTable;
    }
    return RowEnd::Done;
  }

  void WriteBack(const BillInHand& bill, const SentBill& sent, ado::Connection& connection) {
    WriteLinks(bill, record_.key, sent, connection);
    if (stampsRows_) StampLines(bill, connection);
    // Otherwise it stays open, and is settled ahead of the next.
    if (!IsAdditionOpen(session_) || KnowsTwin(record_.key, sent.txnId)) CloseAddition(session_);
  }

  static void TellLinesStay(const BillInHand& bill, std::string_view why) {
    for (const auto& key : bill.QuotedKeys()) {
      TellRecord({.standing = Standing::Line, .key = Unquoted(key), .fate = Fate::PassedOver, .why = std::string(why)});
    }
  }

  QBSessionManager& session_;
  Run& run_;
  SendRecord record_;
  bool stampsRows_ = false;  // from the first bill without a date on
  bool failed_ = false;
  bool left_ = false;
};

}  // namespace

void MoveVendorBillToQB(const SendCall& call) {
  Vars().g_PassedID.clear();
  VendorBillSend work(call.session, call.run);
  RowWalk(kSendTexts, call.run).Walk(call.sql, work);
}

TakenUp TakeUpVendorBillLinks(const LostAddition& lost) {
  const auto row = lost.connection.OpenRecordset(SelectRows(kVendorBillTable, "VendorBillID", lost.key),
                                                 ado::CursorType::Static, ado::LockType::ReadOnly);
  if (row->Eof()) return {.end = TakenUp::End::RowGone};
  BillInHand bill(lost.session);
  bill.Request()["VendorRef"]["ListID"].SetValue(LinkOfPerson(ColumnText(*row, "VendorID")));
  AssignHeader(bill.Request(), *row);
  // One without a date was of the day on which it was sent.
  if (IsNull(row->Field("BillDate"))) bill.Request()["TxnDate"].Unset();
  const auto lines = AppendLines(bill, lost.key, lost.connection);
  if (lost.look != nullptr && lines == Lines::InPart) {
    lost.look->NoteStays(Stays::InPart, "the project or the code of one of its lines has no link yet");
  }
  const auto& read = kVendorBillTable.reads.front();
  auto added = FindAdded(lost, ColumnText(*row, "QBLinkID"), read, [&] {
    auto found = UnlinkedRecordsLike(lost, "VendorBill", read, bill.Request());
    // Bills of the expense log are no bills here, but their lines are known.
    std::erase_if(found,
                  [&](const Record& record) { return !HasLinesOf(record, bill) || IsKnownByLines(record, bill); });
    return found;
  });
  const bool isOurs = added.taken.end == TakenUp::End::Linked || added.taken.end == TakenUp::End::KnewIt;
  if (!isOurs) return added.taken;
  // The lines go behind the bill, so that they can be missing alone; and an outcome may tell the bill without them.
  const auto record = RecordOf(read, added.taken.identifier, lost.session);
  // Deleted since.
  if (record.IsNothing()) return {.end = TakenUp::End::NotAdded};
  if (!HasLinesOf(record, bill)) {
    // One whose rows were all written was changed since, on this side or on the other.
    if (added.taken.end == TakenUp::End::KnewIt && KnowsLines(bill, record)) return added.taken;
    return {.why = "the lines of " + added.taken.identifier + " are not what its rows say now"};
  }
  WriteLinks(bill, lost.key, {.txnId = added.taken.identifier, .lines = LinesOfBill(record)}, lost.connection);
  if (!KnowsTwin(lost.key, added.taken.identifier)) return {.why = "its link can't be written"};
  if (IsNull(row->Field("LastUpdated"))) StampLines(bill, lost.connection);
  return added.taken;
}

}  // namespace twqb
