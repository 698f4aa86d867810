#include "Snapshot.h"

#include <fmt/core.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>

#include "adapters/sqlite/Collations.h"

namespace twqb::sweep {

namespace {

// What a record is, identifiers and the forms of its name aside. Of its balances that which its transactions don't come
// to, so that one that is missing or doubled is found as such alone, and a balance that does not tell the same at its
// record.
constexpr std::string_view kRecords =
    "WITH effect (id, amount) AS ("
    "SELECT entity_id, amount FROM txn WHERE kind <> 'ReceivePayment' UNION ALL "
    "SELECT account_id, amount FROM txn WHERE kind <> 'ReceivePayment' UNION ALL "
    // What a payment does not go to an invoice with stays with the payer.
    "SELECT entity_id, -open FROM txn WHERE kind = 'ReceivePayment' UNION ALL "
    "SELECT account_id, -open FROM txn WHERE kind = 'ReceivePayment' UNION ALL "
    "SELECT entity_id, -application.amount - discount FROM application JOIN txn ON txn_id = target_id UNION ALL "
    "SELECT account_id, -application.amount - discount FROM application JOIN txn ON txn_id = payment_id UNION ALL "
    "SELECT list_id, amount FROM record JOIN txn ON txn.body LIKE '%<DepositToAccountRef><ListID>' || list_id || '<%') "
    "SELECT list_id, kind || '/' || full_name AS name, sublevel, active, "
    "balance - (SELECT total(amount) FROM effect WHERE id = record.list_id) AS balance, "
    "total_balance - (SELECT total(amount) FROM effect JOIN record AS own ON own.list_id = id WHERE "
    "own.kind = record.kind AND (own.list_id = record.list_id OR (own.full_key > record.full_key || char(1) AND "
    "own.full_key < record.full_key || char(2)))) AS total_balance, body, created, modified, edit_sequence FROM record";
// The notes stand in the body.
constexpr std::string_view kTransactions =
    "SELECT txn_id, kind, txn_date, ref_number, amount, open, posted, body, lines, created, modified, edit_sequence "
    "FROM txn ORDER BY number";
constexpr std::string_view kLeftBehind = " was left behind.";
constexpr std::string_view kNull = "\\N";
constexpr std::array<std::string_view, 5> kTimes = {"LastUpdated", "PayLastModifiedOn", "created", "modified",
                                                    "edit_sequence"};

// Opened when something is asked of it that was not asked of such a file before.
class RawFile {
 public:
  explicit RawFile(const std::string& path) : path_(path), readings_(path) {}

  void ForEachRow(std::string_view sql, const std::function<void(Fields)>& take) {
    auto rows = readings_.Find(sql);
    if (!rows) {
      rows = Read(sql);
      readings_.Keep(sql, *rows);
    }
    for (auto& row : *rows) take(std::move(row));
  }

 private:
  void Open() {
    sqlite3* handle = nullptr;
    const int opened = sqlite3_open_v2(path_.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    handle_.reset(handle);
    if (opened != SQLITE_OK) throw std::runtime_error(path_ + " can't be opened");
    if (sqlite::RegisterCollations(handle) != SQLITE_OK) throw std::runtime_error("no collations");
  }

  std::vector<Fields> Read(std::string_view sql) {
    if (!handle_) Open();
    sqlite3_stmt* made = nullptr;
    const int prepared = sqlite3_prepare_v2(handle_.get(), sql.data(), static_cast<int>(sql.size()), &made, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(made, sqlite3_finalize);
    if (prepared != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(handle_.get()));
    std::vector<Fields> rows;
    int step = 0;
    while ((step = sqlite3_step(made)) == SQLITE_ROW) {
      auto& fields = rows.emplace_back();
      for (int column = 0; column < sqlite3_column_count(made); ++column) {
        const bool isNull = sqlite3_column_type(made, column) == SQLITE_NULL;
        std::string text(kNull);
        if (!isNull) {
          const auto* bytes = static_cast<const char*>(sqlite3_column_blob(made, column));
          text.assign(bytes == nullptr ? "" : bytes, static_cast<std::size_t>(sqlite3_column_bytes(made, column)));
        }
        fields.emplace(sqlite3_column_name(made, column), std::move(text));
      }
    }
    if (step != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(handle_.get()));
    return rows;
  }

  std::string path_;
  Readings readings_;
  std::unique_ptr<sqlite3, decltype(&sqlite3_close)> handle_{nullptr, sqlite3_close};
};

void CheckIntegrity(RawFile& file, std::string_view name, std::vector<std::string>& damage) {
  file.ForEachRow("PRAGMA integrity_check", [&](Fields fields) {
    const auto& verdict = fields.begin()->second;
    if (verdict != "ok") damage.push_back(fmt::format("{}: {}", name, verdict));
  });
}

// Whoever opens a file ends what a dead process began on it: a journal that stays would be a write that never ends.
void CheckJournals(const std::string& folder, std::vector<std::string>& damage) {
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const auto name = entry.path().filename().string();
    if (name.ends_with("-journal")) damage.push_back(name + std::string(kLeftBehind));
  }
}

// The value of the first element of that name; nothing without one.
std::optional<std::string> FirstValue(std::string_view element, const std::string& text) {
  const auto at = text.find(element);
  if (at == std::string::npos) return std::nullopt;
  const auto from = at + element.size();
  return text.substr(from, text.find('<', from) - from);
}

// What stands for the name that a transaction has not: its kind, and its notes, its number or what its first line says.
std::string NameOfTransaction(const Fields& fields) {
  const auto& number = fields.at("ref_number");
  auto name = FirstValue("<Notes>", fields.at("body")).value_or(number == kNull ? std::string() : number);
  if (name.empty()) name = FirstValue("<Desc>", fields.at("lines")).value_or("");
  return fmt::format("{}/{}", fields.at("kind"), name);
}

// The name, with a counter behind it where it is taken.
std::string FreeName(const std::map<std::string, Fields>& taken, const std::string& base) {
  auto name = base;
  for (int i = 1; taken.contains(name); ++i) name = base + std::to_string(i);
  return name;
}

// The text with each value of that element replaced.
std::string WithEach(std::string_view element, std::string text,
                     const std::function<std::string(const std::string& value)>& replaced) {
  for (auto at = text.find(element); at != std::string::npos; at = text.find(element, at + 1)) {
    const auto from = at + element.size();
    const auto length = text.find('<', from) - from;
    text.replace(from, length, replaced(text.substr(from, length)));
  }
  return text;
}

// Identifiers in a text are replaced by what they lead to; those of lines lead nowhere.
std::string Named(std::string text, const std::map<std::string, std::string>& names) {
  text = WithEach("<ListID>", std::move(text), [&](const std::string& id) {
    const auto name = names.find(id);
    return name == names.end() ? id : name->second;
  });
  return WithEach("<TxnLineID>", std::move(text), [](const std::string& /*id*/) { return std::string(); });
}

void TakeTransactions(RawFile& company, Snapshot& snapshot, std::map<std::string, std::string>& names) {
  company.ForEachRow(kTransactions, [&](Fields fields) {
    const auto lines = fields.at("lines");
    for (const std::string part : {"body", "lines"}) fields.at(part) = Named(fields.at(part), names);
    auto name = FreeName(snapshot.records, NameOfTransaction(fields));
    names.emplace(fields.extract("txn_id").mapped(), name);
    int line = 0;
    WithEach("<TxnLineID>", lines, [&](const std::string& id) {
      names.emplace(id, fmt::format("{}{}{}", name, kLine, ++line));
      return id;
    });
    snapshot.records.emplace(std::move(name), std::move(fields));
  });
}

}  // namespace

Snapshot TakeSnapshot(const std::string& folder, const std::vector<LinkedTable>& tables) {
  Snapshot snapshot;
  RawFile company(folder + "/company.twq");
  CheckIntegrity(company, "company.twq", snapshot.damage);
  std::map<std::string, std::string> names;  // by identifier
  company.ForEachRow(kRecords, [&](Fields fields) {
    auto name = fields.extract("name").mapped();
    names.emplace(fields.extract("list_id").mapped(), name);
    snapshot.records.emplace(std::move(name), std::move(fields));
  });
  for (auto& [name, fields] : snapshot.records) fields.at("body") = Named(fields.at("body"), names);
  TakeTransactions(company, snapshot, names);
  RawFile billing(folder + "/billing.db");
  CheckIntegrity(billing, "billing.db", snapshot.damage);
  for (const auto& table : tables) {
    const auto select = table.select.empty() ? fmt::format("SELECT * FROM {}", table.name) : std::string(table.select);
    billing.ForEachRow(select, [&](Fields fields) {
      auto& link = fields.at(std::string(kLinkColumn));
      if (const auto found = names.find(link); found != names.end()) link = std::string(kLeadsTo) + found->second;
      if (!table.madeKeyColumn.empty()) {
        auto& made = fields.at(std::string(table.madeKeyColumn));
        if (!made.empty()) made = kMadeKey;
      }
      const auto key = fmt::format("{}/{}", table.name, fields.at(std::string(table.keyColumn)));
      snapshot.rows.emplace(FreeName(snapshot.rows, key), std::move(fields));
    });
  }
  CheckJournals(folder, snapshot.damage);
  return snapshot;
}

bool TellsOfJournal(std::string_view damage) { return damage.ends_with(kLeftBehind); }

std::string RecordOf(std::string_view link) {
  if (!link.starts_with(kLeadsTo)) return {};
  link.remove_prefix(kLeadsTo.size());
  return std::string(link.substr(0, link.find(kLine)));
}

std::set<std::string> RowsOf(const Snapshot& snapshot, std::string_view record) {
  std::set<std::string> keys;
  for (const auto& [key, fields] : snapshot.rows) {
    if (RecordOf(fields.at(std::string(kLinkColumn))) == record) keys.insert(key);
  }
  return keys;
}

Fields WithoutTimes(Fields fields, const std::vector<LinkedTable>& tables) {
  for (const auto time : kTimes) fields.erase(std::string(time));
  for (const auto& table : tables) fields.erase(std::string(table.stampColumn));
  return fields;
}

}  // namespace twqb::sweep
