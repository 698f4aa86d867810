// A QuickBooks bill in the making: the lines that expenses and hours of vendors become, and what becomes of the bill.
//
// The expense log and the vendor bills send through here; which rows are of one bill is theirs. Each line keeps its
// place, by which it is linked when the bill comes back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/LostAdditions.h"
#include "engine/SendRecord.h"
#include "engine/StatusRules.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"
#include "services/Run.h"
#include "services/Sql.h"

namespace twqb {

// Where a row of costs says what, and what its item is.
struct CostColumns {
  std::string_view key;
  std::string_view code;
  std::string_view description;
  std::string_view quantity;
  std::string_view cost;  // of one
  std::string_view billable;
};

// What the code of a row is of: its table and key column.
struct CostCodes {
  std::string_view table;
  std::string_view keyColumn;
};
inline constexpr CostCodes kActivityCodes = {.table = "Activity", .keyColumn = "ActivityID"};
inline constexpr CostCodes kExpenseCodes = {.table = "Expense", .keyColumn = "ExpID"};

// The link of a person who can be billed for; "" without one.
[[nodiscard]] std::string LinkOfPerson(std::string_view employeeId);

inline constexpr std::string_view kBillRequest = "BillAddRq";

class BillInHand {
 public:
  explicit BillInHand(QBSessionManager& session);

  [[nodiscard]] const RequestField& Request() const { return request_; }
  [[nodiscard]] bool HasLines() const { return !keys_.empty(); }
  // Appends the line of a row. False: something of it has no link, and it is as far as it got, which may be an empty
  // line.
  [[nodiscard]] bool AppendLine(const ado::Recordset& row, const CostColumns& columns, const CostCodes& codes);
  // The keys of the rows that became lines, quoted, for a list of a statement.
  [[nodiscard]] const Sql& Keys() const { return list_; }
  [[nodiscard]] const std::vector<Sql>& QuotedKeys() const { return keys_; }
  // The line of that place, of rows that did not become one too.
  [[nodiscard]] std::size_t LineCount() const { return request_["ORItemLineAddList"].Count(); }
  [[nodiscard]] RequestField LineAt(std::size_t place) const;
  [[nodiscard]] const MsgSetRequest& MessageSet() const { return messageSet_; }
  // The row that it is told by where its outcome gets lost.
  void Name(const Table& table, std::string_view key) { NameAddition(messageSet_, table, key); }

 private:
  MsgSetRequest messageSet_;
  RequestField request_;
  std::vector<Sql> keys_;
  Sql list_;
};

// The key of a row out of QuotedKeys.
[[nodiscard]] std::string Unquoted(const Sql& key);

// Whether a line of a request has a text of its own.
[[nodiscard]] bool HasText(const RequestField& line);
// Whether a line of QuickBooks says what one of a request says; and all lines of a bill what those in hand say.
[[nodiscard]] bool IsSameLine(const Record& line, const RequestField& request);
[[nodiscard]] bool HasLinesOf(const Record& record, const BillInHand& bill);

// What became of a bill that was sent.
struct SentBill {
  enum class End : std::uint8_t { Added, NotSent, Refused, LeaveTable };

  End end = End::NotSent;
  std::string txnId;
  std::vector<std::string> lines;  // the TxnLineID of each place; "" where QuickBooks has none
};

// The lines of a bill as QuickBooks has it, by their places.
[[nodiscard]] std::vector<std::string> LinesOfBill(const Record& bill);

// Sends it, which has the name of that row. What went wrong has been told, or logged where the call failed: a bill
// without anything to pay is refused ahead of QuickBooks. No to the question is a wish to stop, and leaves the table.
[[nodiscard]] SentBill SendBill(const BillInHand& bill, const Table& table, std::string_view key,
                                const SendRecord& record, const ado::Recordset& row, QBSessionManager& session,
                                Run& run);

// What the end of a run tells when a bill could not be sent: the lines in between name what must be there.
[[nodiscard]] std::string ProblemWithBills(std::string_view what);

}  // namespace twqb
