#include "adapters/companyfile/TxnStore.h"

#include <fmt/core.h>

#include <algorithm>
#include <memory>

#include "adapters/companyfile/CompanyErrors.h"
#include "adapters/companyfile/RefNumbers.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

// The same columns in the same order whatever is read, so that one reader serves.
constexpr std::string_view kColumns =
    "SELECT txn_id, kind, number, txn_date, ref_number, entity_id, account_id, created, modified, edit_sequence, "
    "amount, open, posted, body, ";
constexpr std::string_view kOrder = " ORDER BY txn_date, number";
// A record of a list and everything below it; takes its identifier twice.
constexpr std::string_view kWithChildren =
    "(SELECT list_id FROM record WHERE list_id = ? UNION ALL SELECT child.list_id FROM record AS top JOIN record AS "
    "child ON child.kind = top.kind AND child.full_key > top.full_key || char(1) AND child.full_key < top.full_key || "
    "char(2) WHERE top.list_id = ?)";

std::string Select(TxnParts parts) {
  return std::string(kColumns) + (parts == TxnParts::HeaderAndLines ? "lines" : "''") + " FROM txn ";
}

TxnRecord ReadTxn(const SqliteRows& row) {
  int column = 0;
  TxnRecord record;
  record.txnId = row.Text(column++);
  record.kind = FindTxnKind(row.Text(column++));
  record.number = row.Integer(column++);
  record.date = row.Text(column++);
  record.refNumber = row.Text(column++);
  record.entityId = row.Text(column++);
  record.accountId = row.Text(column++);
  record.created = row.Integer(column++);
  record.modified = row.Integer(column++);
  record.editSequence = row.Integer(column++);
  record.amount = Currency::FromTenThousandths(row.Integer(column++));
  record.open = Currency::FromTenThousandths(row.Integer(column++));
  record.posted = row.Integer(column++) != 0;
  record.body = row.Text(column++);
  record.lines = row.Text(column++);
  if (record.kind == nullptr) Raise(kUnexpected, "It holds a transaction of an unknown kind.");
  return record;
}

std::vector<TxnRecord> ReadAll(SqliteRows rows) {
  std::vector<TxnRecord> records;
  while (rows.Next()) records.push_back(ReadTxn(rows));
  return records;
}

std::vector<Application> ReadApplications(SqliteRows rows) {
  std::vector<Application> applications;
  while (rows.Next()) {
    applications.push_back({.paymentId = rows.Text(0),
                            .sourceId = rows.Text(1),
                            .targetId = rows.Text(2),
                            .amount = Currency::FromTenThousandths(rows.Integer(3)),
                            .discount = Currency::FromTenThousandths(rows.Integer(4)),
                            .discountAccountId = rows.Text(5)});
  }
  return applications;
}

std::vector<BilledLine> ReadBilledLines(SqliteRows rows) {
  std::vector<BilledLine> lines;
  while (rows.Next()) lines.push_back({.lineId = rows.Text(0), .txnId = rows.Text(1), .invoiceId = rows.Text(2)});
  return lines;
}

// Identifiers as the text that the engine takes apart again; nothing in them needs escaping.
std::string IdArray(const std::vector<std::string>& ids) {
  std::string text = "[";
  for (const auto& id : ids) text.append(text.size() > 1 ? ",\"" : "\"").append(id).append("\"");
  return text + "]";
}

// The statement of a filter, put together from the conditions that are set.
class TxnStatement {
 public:
  TxnStatement(const TxnKind& kind, const TxnFilter& filter, TxnParts parts) : sql_(Select(parts)) {
    sql_ += "WHERE kind = ?";
    values_.emplace_back(kind.name);
    if (filter.modifiedFrom) Add(" AND modified >= ?", *filter.modifiedFrom);
    if (filter.modifiedTo) Add(" AND modified <= ?", *filter.modifiedTo);
    if (filter.dateFrom) Add(" AND txn_date >= ?", Keep(*filter.dateFrom));
    if (filter.dateTo) Add(" AND txn_date <= ?", Keep(*filter.dateTo));
    if (filter.entities) AddRecords("entity_id", *filter.entities);
    if (filter.accounts) AddRecords("account_id", *filter.accounts);
    if (filter.refMatch) AddRefMatch(*filter.refMatch, FoldCase(filter.refText));
    if (filter.refFrom) Add(" AND ref_order >= ?", Keep(RefOrderKey(*filter.refFrom)));
    if (filter.refTo) Add(" AND ref_order <= ?", Keep(RefOrderKey(*filter.refTo)));
    if (filter.paid == TxnFilter::Paid::PaidOnly) sql_ += " AND open = 0";
    if (filter.paid == TxnFilter::Paid::NotPaidOnly) sql_ += " AND open <> 0";
    sql_ += kOrder;
    if (filter.maxReturned) Add(" LIMIT ?", *filter.maxReturned);
  }

  [[nodiscard]] SqliteRows Run(SqliteDatabase& database) const { return database.Query(sql_, values_); }

 private:
  void Add(std::string_view condition, SqlValue value) {
    sql_ += condition;
    values_.push_back(value);
  }
  // Texts that are made here live as long as the statement.
  std::string_view Keep(std::string text) {
    kept_.push_back(std::make_unique<std::string>(std::move(text)));
    return *kept_.back();
  }

  void AddRecords(std::string_view column, const TxnFilter::Records& records) {
    if (records.reach == TxnFilter::Records::Reach::Named) {
      return Add(fmt::format(" AND {} IN (SELECT value FROM json_each(?))", column), Keep(IdArray(records.ids)));
    }
    const auto id = Keep(records.ids.empty() ? std::string{} : records.ids.front());
    Add(fmt::format(" AND {} IN {}", column, kWithChildren), id);
    values_.emplace_back(id);
  }

  void AddRefMatch(MatchCriterion match, std::string folded) {
    const auto length = static_cast<std::int64_t>(CharacterCount(folded));
    const auto text = Keep(std::move(folded));
    switch (match) {
      case MatchCriterion::StartsWith:
        Add(" AND substr(ref_key, 1, ?)", length);
        return Add(" = ?", text);
      case MatchCriterion::Contains:
        return Add(" AND instr(ref_key, ?) > 0", text);
      case MatchCriterion::EndsWith:
        Add(" AND length(ref_key) >= ?", length);
        Add(" AND substr(ref_key, length(ref_key) - ? + 1)", length);
        return Add(" = ?", text);
    }
  }

  std::string sql_;
  std::vector<SqlValue> values_;
  std::vector<std::unique_ptr<std::string>> kept_;
};

}  // namespace

std::string TxnStore::LastRefNumber(std::string_view sequence) {
  auto rows = database_.Query("SELECT last FROM ref_number WHERE sequence = ?", {sequence});
  return rows.Next() ? rows.Text(0) : std::string{};
}

void TxnStore::NoteRefNumber(std::string_view sequence, std::string_view refNumber) {
  database_.Execute("INSERT OR REPLACE INTO ref_number VALUES (?, ?)", {sequence, refNumber});
}

Currency TxnStore::OpenCredit(std::string_view entityId) {
  Currency credit;
  for (const auto& kind : TxnKinds()) {
    if (kind.settlement != Settlement::Credit) continue;
    auto rows = database_.Query("SELECT sum(open) FROM txn WHERE entity_id = ? AND kind = ? AND open <> 0 AND posted",
                                {entityId, kind.name});
    if (rows.Next()) credit = credit + Currency::FromTenThousandths(rows.Integer(0));
  }
  return credit;
}

std::int64_t TxnStore::NewNumber() {
  auto rows = database_.Query("UPDATE counter SET next = next + 1 WHERE name = 'txn_number' RETURNING next - 1");
  if (!rows.Next()) Raise(kUnexpected, "It has no counter.");
  const auto number = rows.Integer(0);
  while (rows.Next()) {
  }
  return number;
}

std::optional<TxnRecord> TxnStore::Find(std::string_view txnId, TxnParts parts) {
  auto rows = database_.Query(Select(parts) + "WHERE txn_id = ?", {txnId});
  if (!rows.Next()) return std::nullopt;
  return ReadTxn(rows);
}

std::optional<TxnRecord> TxnStore::FindByLine(std::string_view lineId) {
  const auto line = fmt::format("<TxnLineID>{}</TxnLineID>", lineId);
  auto rows = database_.Query(Select(TxnParts::HeaderAndLines) + "WHERE instr(lines, ?) > 0", {std::string_view(line)});
  if (!rows.Next()) return std::nullopt;
  return ReadTxn(rows);
}

std::vector<TxnRecord> TxnStore::FindByRefNumber(const TxnKind& kind, std::string_view refNumber, TxnParts parts) {
  const auto key = FoldCase(refNumber);
  return ReadAll(database_.Query(Select(parts).append("WHERE kind = ? AND ref_key = ?").append(kOrder),
                                 {kind.name, std::string_view(key)}));
}

void TxnStore::ForEach(const TxnKind& kind, const TxnFilter& filter, TxnParts parts,
                       const std::function<void(const TxnRecord&)>& visit) {
  const TxnStatement statement(kind, filter, parts);
  auto rows = statement.Run(database_);
  while (rows.Next()) visit(ReadTxn(rows));
}

void TxnStore::ForEachOpen(const TxnKind& kind, std::string_view entityId,
                           const std::function<Visit(const TxnRecord&)>& visit) {
  static const std::string sql =
      Select(TxnParts::Header) +
      fmt::format("WHERE entity_id IN {} AND kind = ? AND open <> 0 AND posted{}", kWithChildren, kOrder);
  auto rows = database_.Query(sql, {entityId, entityId, kind.name});
  while (rows.Next() && visit(ReadTxn(rows)) == Visit::GoOn) {
  }
}

std::int64_t TxnStore::Count(const TxnKind& kind) {
  auto rows = database_.Query("SELECT count(*) FROM txn WHERE kind = ?", {kind.name});
  return rows.Next() ? rows.Integer(0) : 0;
}

void TxnStore::Insert(const TxnRecord& record) {
  const auto key = FoldCase(record.refNumber);
  const auto order = RefOrderKey(record.refNumber);
  database_.Execute("INSERT INTO txn VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                    {std::string_view(record.txnId), record.kind->name, record.number, std::string_view(record.date),
                     std::string_view(record.refNumber), std::string_view(key), std::string_view(order),
                     std::string_view(record.entityId), std::string_view(record.accountId), record.created,
                     record.modified, record.editSequence, record.amount.TenThousandths(), record.open.TenThousandths(),
                     std::int64_t{record.posted}, std::string_view(record.body), std::string_view(record.lines)});
}

void TxnStore::UpdateOpen(const TxnRecord& record) {
  database_.Execute(
      "UPDATE txn SET open = ?, modified = ?, edit_sequence = ? WHERE txn_id = ?",
      {record.open.TenThousandths(), record.modified, record.editSequence, std::string_view(record.txnId)});
}

void TxnStore::AppendToBody(std::string_view txnId, std::string_view elements) {
  database_.Execute("UPDATE txn SET body = body || ? WHERE txn_id = ?", {elements, txnId});
}

void TxnStore::AppendToLines(std::string_view txnId, std::string_view lines) {
  database_.Execute("UPDATE txn SET lines = lines || ? WHERE txn_id = ?", {lines, txnId});
}

void TxnStore::Delete(std::string_view txnId) {
  database_.Execute("DELETE FROM application WHERE payment_id = ?", {txnId});
  database_.Execute("DELETE FROM billed_line WHERE invoice_id = ?", {txnId});
  database_.Execute("DELETE FROM txn WHERE txn_id = ?", {txnId});
}

void TxnStore::AddApplication(const Application& application) {
  database_.Execute(
      "INSERT INTO application (payment_id, source_id, target_id, amount, discount, discount_account_id) VALUES (?, ?, "
      "?, ?, ?, ?)",
      {std::string_view(application.paymentId), std::string_view(application.sourceId),
       std::string_view(application.targetId), application.amount.TenThousandths(),
       application.discount.TenThousandths(), std::string_view(application.discountAccountId)});
}

std::vector<Application> TxnStore::ApplicationsMadeBy(std::string_view paymentId) {
  return ReadApplications(
      database_.Query("SELECT payment_id, source_id, target_id, amount, discount, discount_account_id FROM application "
                      "WHERE payment_id = ? ORDER BY id",
                      {paymentId}));
}

std::vector<Application> TxnStore::ApplicationsOf(std::string_view txnId) {
  return ReadApplications(
      database_.Query("SELECT payment_id, source_id, target_id, amount, discount, discount_account_id FROM application "
                      "WHERE source_id = ? OR target_id = ? ORDER BY id",
                      {txnId, txnId}));
}

void TxnStore::AddBilledLine(const BilledLine& line) {
  database_.Execute("INSERT INTO billed_line VALUES (?, ?, ?)",
                    {std::string_view(line.lineId), std::string_view(line.txnId), std::string_view(line.invoiceId)});
}

bool TxnStore::IsBilledLine(std::string_view lineId) {
  return database_.Query("SELECT 1 FROM billed_line WHERE line_id = ?", {lineId}).Next();
}

std::vector<BilledLine> TxnStore::LinesBilledBy(std::string_view invoiceId) {
  return ReadBilledLines(
      database_.Query("SELECT line_id, txn_id, invoice_id FROM billed_line WHERE invoice_id = ?", {invoiceId}));
}

std::vector<BilledLine> TxnStore::BilledLinesOf(std::string_view txnId) {
  return ReadBilledLines(
      database_.Query("SELECT line_id, txn_id, invoice_id FROM billed_line WHERE txn_id = ?", {txnId}));
}

}  // namespace twqb::company
