// The storage of transactions: their headers with what queries look at, their bodies and lines as text, and which of
// them settle which.
//
// It keeps what it is told; amounts, references and statuses stand with the requests. It works inside the transaction
// that the caller opened. Failures raise `kUnexpected`.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/RecordFilter.h"
#include "adapters/companyfile/Sqlite.h"
#include "adapters/companyfile/TxnKind.h"
#include "platform/Currency.h"

namespace twqb::company {

struct TxnRecord {
  const TxnKind* kind = nullptr;
  std::string txnId;
  std::int64_t number = 0;  // of its entry, over all kinds
  std::string date;         // yyyy-mm-dd
  std::string refNumber;
  std::string entityId;       // ListIDs; empty where there is none
  std::string accountId;      //
  std::int64_t created = 0;   // Unix seconds
  std::int64_t modified = 0;  // Unix seconds
  std::int64_t editSequence = 0;
  Currency amount;
  Currency open;       // see Settlement
  bool posted = true;  // false: it waits, and no balance has it yet
  std::string body;    // all other fields, as a list record's
  std::string lines;   // the line records, in the order in which they are answered; only when they were asked for
};

// One step of settling: `amount` of `sourceId`, and a discount that nobody pays, are set against `targetId`.
struct Application {
  std::string paymentId;  // the transaction that made it; goes with it
  std::string sourceId;   // that transaction, or the credit that it used
  std::string targetId;
  Currency amount;
  Currency discount;
  std::string discountAccountId;
};

// A line of a check, charge or bill that an invoice has taken up.
struct BilledLine {
  std::string lineId;
  std::string txnId;  // what it is a line of
  std::string invoiceId;
};

// Which transactions of a kind are meant; a condition that is not set holds for all.
struct TxnFilter {
  // The records of a list that are meant: those named, or one and everything below it.
  struct Records {
    enum class Reach : std::uint8_t { Named, WithChildren };
    Reach reach = Reach::Named;
    std::vector<std::string> ids;  // ListIDs; none: no record, so no transaction
  };
  enum class Paid : std::uint8_t { All = 0, PaidOnly = 1, NotPaidOnly = 2 };  // numbers of the message table

  std::optional<std::int64_t> modifiedFrom;  // Unix seconds, inclusive, as all bounds
  std::optional<std::int64_t> modifiedTo;
  std::optional<std::string> dateFrom;  // yyyy-mm-dd
  std::optional<std::string> dateTo;
  std::optional<Records> entities;
  std::optional<Records> accounts;
  std::optional<MatchCriterion> refMatch;
  std::string refText;
  std::optional<std::string> refFrom;
  std::optional<std::string> refTo;
  Paid paid = Paid::All;
  std::optional<std::int64_t> maxReturned;
};

// What is read of a transaction.
enum class TxnParts : std::uint8_t { Header, HeaderAndLines };

class TxnStore {
 public:
  // The tables, for a file that has none of them.
  static constexpr std::string_view kSchema = R"(
CREATE TABLE txn (
  txn_id TEXT PRIMARY KEY,
  kind TEXT NOT NULL,
  number INTEGER NOT NULL,
  txn_date TEXT NOT NULL,
  ref_number TEXT NOT NULL,
  ref_key TEXT NOT NULL,
  ref_order TEXT NOT NULL,
  entity_id TEXT NOT NULL,
  account_id TEXT NOT NULL,
  created INTEGER NOT NULL,
  modified INTEGER NOT NULL,
  edit_sequence INTEGER NOT NULL,
  amount INTEGER NOT NULL,
  open INTEGER NOT NULL,
  posted INTEGER NOT NULL,
  body TEXT NOT NULL,
  lines TEXT NOT NULL
);
CREATE INDEX txn_order ON txn (kind, txn_date, number);
CREATE INDEX txn_modified ON txn (kind, modified);
CREATE INDEX txn_ref ON txn (kind, ref_key);
CREATE INDEX txn_entity ON txn (entity_id, kind);
CREATE INDEX txn_open ON txn (entity_id, kind) WHERE open <> 0 AND posted;
CREATE TABLE application (
  id INTEGER PRIMARY KEY,
  payment_id TEXT NOT NULL,
  source_id TEXT NOT NULL,
  target_id TEXT NOT NULL,
  amount INTEGER NOT NULL,
  discount INTEGER NOT NULL,
  discount_account_id TEXT NOT NULL
);
CREATE INDEX application_payment ON application (payment_id);
CREATE INDEX application_source ON application (source_id);
CREATE INDEX application_target ON application (target_id);
INSERT INTO counter VALUES ('txn_number', 1);
)";

  // What a file lacks whose tables are those above, with the numbers that were given in it.
  static constexpr std::string_view kRefNumberSchema = R"(
CREATE TABLE ref_number (sequence TEXT PRIMARY KEY, last TEXT NOT NULL) WITHOUT ROWID;
INSERT INTO ref_number SELECT 'sales', ref_number FROM txn WHERE kind IN ('Invoice', 'CreditMemo') AND ref_number <> ''
  ORDER BY number DESC LIMIT 1;
INSERT INTO ref_number SELECT 'estimates', ref_number FROM txn WHERE kind = 'Estimate' AND ref_number <> ''
  ORDER BY number DESC LIMIT 1;
)";

  // What a file lacks that knew no invoice to take a line up.
  static constexpr std::string_view kBilledLineSchema = R"(
CREATE TABLE billed_line (line_id TEXT PRIMARY KEY, txn_id TEXT NOT NULL, invoice_id TEXT NOT NULL) WITHOUT ROWID;
CREATE INDEX billed_line_txn ON billed_line (txn_id);
CREATE INDEX billed_line_invoice ON billed_line (invoice_id);
)";

  // `database` must outlive the store.
  explicit TxnStore(SqliteDatabase& database) : database_(database) {}

  // The reference number that was last given in a sequence; empty when there is none.
  [[nodiscard]] std::string LastRefNumber(std::string_view sequence);
  void NoteRefNumber(std::string_view sequence, std::string_view refNumber);
  // What is open of the credits of an entity, without what stands below it.
  [[nodiscard]] Currency OpenCredit(std::string_view entityId);

  // The number of the next entry.
  [[nodiscard]] std::int64_t NewNumber();

  [[nodiscard]] std::optional<TxnRecord> Find(std::string_view txnId, TxnParts parts = TxnParts::Header);
  // What has a line of that identifier, with its lines. Reads all there are: lines have no index.
  [[nodiscard]] std::optional<TxnRecord> FindByLine(std::string_view lineId);
  // All of a kind with that reference number, without regard to case, in the order of answers.
  [[nodiscard]] std::vector<TxnRecord> FindByRefNumber(const TxnKind& kind, std::string_view refNumber, TxnParts parts);
  // Calls `visit` with each transaction that `filter` means, in the order of dates and, on one day, of entry.
  void ForEach(const TxnKind& kind, const TxnFilter& filter, TxnParts parts,
               const std::function<void(const TxnRecord&)>& visit);
  // Calls `visit` with what is open of a kind for an entity and everything below it, in the same order, until `visit`
  // answers that it has enough.
  enum class Visit : std::uint8_t { GoOn, Enough };
  void ForEachOpen(const TxnKind& kind, std::string_view entityId, const std::function<Visit(const TxnRecord&)>& visit);
  [[nodiscard]] std::int64_t Count(const TxnKind& kind);

  void Insert(const TxnRecord& record);
  // Writes the open amount, the time of change and the edit sequence.
  void UpdateOpen(const TxnRecord& record);
  // Puts elements behind those of the body, or lines behind the lines.
  void AppendToBody(std::string_view txnId, std::string_view elements);
  void AppendToLines(std::string_view txnId, std::string_view lines);
  // Removes the transaction, what it settled and what it billed.
  void Delete(std::string_view txnId);

  void AddApplication(const Application& application);
  // In the order in which they were made.
  [[nodiscard]] std::vector<Application> ApplicationsMadeBy(std::string_view paymentId);
  // Those in which the transaction pays or is paid.
  [[nodiscard]] std::vector<Application> ApplicationsOf(std::string_view txnId);

  void AddBilledLine(const BilledLine& line);
  [[nodiscard]] bool IsBilledLine(std::string_view lineId);
  [[nodiscard]] std::vector<BilledLine> LinesBilledBy(std::string_view invoiceId);
  // Those of a check, charge or bill.
  [[nodiscard]] std::vector<BilledLine> BilledLinesOf(std::string_view txnId);

 private:
  SqliteDatabase& database_;
};

}  // namespace twqb::company
