#include "adapters/companyfile/CompanyStore.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "adapters/companyfile/CompanyErrors.h"
#include "adapters/companyfile/CompanyFormat.h"
#include "adapters/companyfile/Presets.h"
#include "adapters/storage/NewFile.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

constexpr std::string_view kSelect =
    "SELECT r.list_id, r.parent_id, p.full_name, r.name, r.full_name, r.full_key, r.sublevel, r.active, r.created, "
    "r.modified, r.edit_sequence, r.balance, r.total_balance, r.type, r.number, r.body, "
    "r.kind "
    // Where there is no parent, none is looked for.
    "FROM record AS r LEFT JOIN record AS p ON p.list_id = nullif(r.parent_id, '') ";

ListRecord ReadRecord(const SqliteRows& row) {
  int column = 0;
  ListRecord record;
  record.listId = row.Text(column++);
  record.parentId = row.Text(column++);
  record.parentFullName = row.Text(column++);
  record.name = row.Text(column++);
  record.fullName = row.Text(column++);
  record.fullKey = row.Text(column++);
  record.sublevel = static_cast<int>(row.Integer(column++));
  record.active = row.Integer(column++) != 0;
  record.created = row.Integer(column++);
  record.modified = row.Integer(column++);
  record.editSequence = row.Integer(column++);
  record.balance = Currency::FromTenThousandths(row.Integer(column++));
  record.totalBalance = Currency::FromTenThousandths(row.Integer(column++));
  record.type = row.Text(column++);
  record.number = row.Text(column++);
  record.body = row.Text(column++);
  return record;
}
constexpr int kKindColumn = 16;
constexpr std::string_view kRefused = "refused ";                 // ahead of the kind, in a setting
constexpr std::string_view kUnknownAmounts = "amounts unknown ";  // ahead of the identifier of a transaction

std::optional<ListRecord> FirstRecord(SqliteRows rows) {
  if (!rows.Next()) return std::nullopt;
  return ReadRecord(rows);
}

// Where a name has to be unique: among the children of a parent, or at the top of a name space. An identifier has a
// "-" in it and no name space has, so the two never meet.
std::string_view ScopeOf(std::string_view nameSpace, std::string_view parentId) {
  return parentId.empty() ? nameSpace : parentId;
}
std::string_view ScopeOf(const ListKind& kind, std::string_view parentId) { return ScopeOf(kind.nameSpace, parentId); }

// The engine would say no more of a missing file than that it can't open it.
const std::string& RequireFile(const std::string& path) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) Raise(kCannotOpenFile, "There is no such file.");
  return path;
}

std::string AcceptsText(const CompanyOptions& options) {
  std::string text;
  for (const auto country : options.accepts) {
    text.append(text.empty() ? "" : ",").append(messages::CountryName(country));
  }
  return text;
}

void InsertRecord(SqliteDatabase& database, std::string_view kind, std::string_view scope, std::string_view nameKey,
                  const ListRecord& record) {
  database.Execute(
      "INSERT INTO record VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {std::string_view(record.listId), kind, std::string_view(record.parentId), scope, std::string_view(record.name),
       nameKey, std::string_view(record.fullName), std::string_view(record.fullKey), std::int64_t{record.sublevel},
       std::int64_t{record.active}, record.created, record.modified, record.editSequence,
       record.balance.TenThousandths(), record.totalBalance.TenThousandths(), std::string_view(record.body),
       std::string_view(record.type), std::string_view(record.number)});
}

void InsertRecord(SqliteDatabase& database, const ListKind& kind, const ListRecord& record) {
  InsertRecord(database, kind.name, ScopeOf(kind, record.parentId), NameKey(record.name), record);
}

// Those that a file of `format` does not have.
void InsertPresets(SqliteDatabase& database, const CompanyOptions& options, std::int64_t made, std::int64_t format) {
  for (const auto& [kind, record] : Presets(options.country, made, format)) InsertRecord(database, *kind, record);
}

}  // namespace

void CompanyStore::Create(const std::string& path, const CompanyOptions& options, std::int64_t now, Content content) {
  storage::NewFile made(path);
  if (const auto failure = made.Failure()) {
    throw PlatformError(failure == std::errc::no_such_file_or_directory ? error::kPathNotFound : error::kFileAccess,
                        fmt::format("The company data file \"{}\" can't be made: {}.", path, failure.message()));
  }
  SqliteDatabase database(path);
  database.SetUp();
  // One transaction is all: to write ahead for it would cost more.
  database.RunScript("BEGIN");
  TakeSteps(database, kNoFormat);
  const auto hostVersion = std::to_string(options.hostVersion);
  const auto accepts = AcceptsText(options);
  const auto created = std::to_string(now);
  constexpr std::string_view kInsert = "INSERT INTO setting VALUES (?, ?)";
  database.Execute(kInsert, {"country", messages::CountryName(options.country)});
  database.Execute(kInsert, {"host_version", std::string_view(hostVersion)});
  database.Execute(kInsert, {"accepts", std::string_view(accepts)});
  database.Execute(kInsert, {"created", std::string_view(created)});
  if (content == Content::Presets) InsertPresets(database, options, now, kNoFormat);
  database.RunScript("COMMIT");
  made.Keep();
}

CompanyStore::CompanyStore(const std::string& path) try : database_(RequireFile(path)) {
  static_cast<void>(ReadFormat(database_));
  database_.SetUp();
  ReadOptions();
  ReadRefusals();
  Upgrade();
} catch (const PlatformError& failure) {
  if (failure.number() == kCannotOpenFile) {
    throw PlatformError(failure.number(), fmt::format("{} File: \"{}\".", failure.description(), path));
  }
  Raise(kCannotOpenFile, fmt::format("The storage: {}. File: \"{}\".", DetailOf(failure), path));
}

void CompanyStore::Upgrade() {
  if (ReadFormat(database_) == kFormatVersion) return;
  SqliteTransaction transaction(database_, SqliteTransaction::Purpose::Write);
  // Another process may have been faster.
  const auto format = ReadFormat(database_);
  if (format == kFormatVersion) return;
  TakeSteps(database_, format);
  InsertPresets(database_, options_, created_, format);
  transaction.Commit();
}

std::optional<std::string> CompanyStore::ReadSetting(std::string_view key) {
  auto rows = database_.Query("SELECT value FROM setting WHERE key = ?", {key});
  if (!rows.Next()) return std::nullopt;
  return rows.Text(0);
}

void CompanyStore::WriteSetting(std::string_view key, std::string_view value) {
  database_.Execute("INSERT OR REPLACE INTO setting VALUES (?, ?)", {key, value});
}

std::string CompanyStore::RequireSetting(std::string_view key) {
  auto value = ReadSetting(key);
  if (!value) Raise(kCannotOpenFile, fmt::format("It has no {}.", key));
  return *value;
}

void CompanyStore::ReadOptions() {
  options_.country = messages::CountryFromName(RequireSetting("country")).value_or(messages::Country::US);
  const auto version = RequireSetting("host_version");
  std::from_chars(version.data(), version.data() + version.size(), options_.hostVersion);
  const auto created = RequireSetting("created");
  std::from_chars(created.data(), created.data() + created.size(), created_);
  for (const auto& name : Split(RequireSetting("accepts"), ',')) {
    if (const auto country = messages::CountryFromName(name)) options_.accepts.push_back(*country);
  }
}

CompanyConditions CompanyStore::ReadConditions() {
  CompanyConditions conditions;
  for (const auto& condition : Conditions()) {
    if (const auto value = ReadSetting(condition.name)) condition.set(conditions, *value);
  }
  return conditions;
}

void CompanyStore::WriteConditions(const CompanyConditions& conditions) {
  for (const auto& condition : Conditions()) {
    const auto text = condition.text(conditions);
    // A file in which all is as in a new one holds nothing about it, and so reads the same to every version.
    if (text == condition.text({})) {
      database_.Execute("DELETE FROM setting WHERE key = ?", {condition.name});
    } else {
      WriteSetting(condition.name, text);
    }
  }
}

std::optional<Status> CompanyStore::FindRefusal(std::string_view kind) const {
  const auto refusal = refusals_.find(kind);
  return refusal == refusals_.end() ? std::nullopt : std::optional(refusal->second);
}

void CompanyStore::WriteRefusal(std::string_view kind, const Status& refusal) {
  WriteSetting(fmt::format("{}{}", kRefused, kind), fmt::format("{} {}", refusal.code, refusal.message));
  refusals_.insert_or_assign(std::string(kind), refusal);
}

void CompanyStore::NoteUnknownAmounts(std::string_view txnId) {
  WriteSetting(fmt::format("{}{}", kUnknownAmounts, txnId), "unknown");
}

std::vector<std::string> CompanyStore::UnknownAmounts() {
  std::vector<std::string> found;
  auto rows = database_.Query("SELECT key FROM setting WHERE substr(key, 1, ?) = ?",
                              {static_cast<std::int64_t>(kUnknownAmounts.size()), kUnknownAmounts});
  while (rows.Next()) found.push_back(rows.Text(0).substr(kUnknownAmounts.size()));
  return found;
}

void CompanyStore::ReadRefusals() {
  auto rows = database_.Query("SELECT key, value FROM setting WHERE substr(key, 1, ?) = ?",
                              {static_cast<std::int64_t>(kRefused.size()), kRefused});
  while (rows.Next()) {
    const auto text = rows.Text(1);
    const auto blank = text.find(' ');
    Status refusal{.message = text.substr(blank + 1)};
    std::from_chars(text.data(), text.data() + blank, refusal.code);
    refusals_.insert_or_assign(rows.Text(0).substr(kRefused.size()), std::move(refusal));
  }
}

std::string CompanyStore::NewId(std::string_view counter, std::int64_t now) {
  auto rows = database_.Query("UPDATE counter SET next = next + 1 WHERE name = ? RETURNING next - 1", {counter});
  if (!rows.Next()) Raise(kUnexpected, "It has no counter.");
  auto id = fmt::format("{:X}-{}", rows.Integer(0), now);
  while (rows.Next()) {
  }
  return id;
}

std::optional<ListRecord> CompanyStore::FindById(const ListKind& kind, std::string_view listId) {
  static const std::string sql = std::string(kSelect) + "WHERE r.list_id = ? AND r.kind = ?";
  if (auto record = FirstRecord(database_.Query(sql, {listId, kind.name}))) return record;
  const auto ofKind = fmt::format("{}{}{}", listId, kIdOfKind, kind.name);
  return FirstRecord(database_.Query(sql, {std::string_view(ofKind), kind.name}));
}

std::optional<FoundRecord> CompanyStore::FindById(std::string_view listId) {
  static const std::string sql = std::string(kSelect) + "WHERE r.list_id = ?";
  auto rows = database_.Query(sql, {listId});
  if (!rows.Next()) return std::nullopt;
  const auto* kind = FindListKind(rows.Text(kKindColumn));
  if (kind == nullptr) return std::nullopt;
  return FoundRecord{.kind = kind, .record = ReadRecord(rows)};
}

std::optional<ListRecord> CompanyStore::FindFirstOfType(const ListKind& kind, std::string_view type) {
  static const std::string sql =
      std::string(kSelect) + "WHERE r.kind = ? AND r.type = ? AND r.type <> '' ORDER BY r.full_key LIMIT 1";
  return FirstRecord(database_.Query(sql, {kind.name, type}));
}

std::string CompanyStore::FullNameOf(std::string_view listId) {
  auto rows = database_.Query("SELECT full_name FROM record WHERE list_id = ?", {listId});
  return rows.Next() ? rows.Text(0) : std::string{};
}

std::optional<ListRecord> CompanyStore::FindByFullKey(const ListKind& kind, std::string_view fullKey) {
  static const std::string sql = std::string(kSelect) + "WHERE r.kind = ? AND r.full_key = ?";
  return FirstRecord(database_.Query(sql, {kind.name, fullKey}));
}

std::optional<std::string> CompanyStore::KindUsingName(const ListKind& kind, std::string_view parentId,
                                                       std::string_view nameKey, std::string_view exceptId) {
  auto rows = database_.Query("SELECT kind FROM record WHERE scope = ? AND name_key = ? AND list_id <> ?",
                              {ScopeOf(kind, parentId), nameKey, exceptId});
  if (!rows.Next()) return std::nullopt;
  return rows.Text(0);
}

bool CompanyStore::IsNumberInUse(const ListKind& kind, std::string_view number, std::string_view exceptId) {
  return database_
      .Query("SELECT 1 FROM record WHERE kind = ? AND number = ? AND number <> '' AND list_id <> ?",
             {kind.name, number, exceptId})
      .Next();
}

int CompanyStore::DeepestSublevel(const ListKind& kind, const ListRecord& record) {
  const auto below = KeysBelow(record.fullKey);
  auto rows = database_.Query("SELECT max(sublevel) FROM record WHERE kind = ? AND full_key > ? AND full_key < ?",
                              {kind.name, std::string_view(below.from), std::string_view(below.to)});
  const auto deepest = rows.Next() ? static_cast<int>(rows.Integer(0)) : 0;
  return std::max(deepest, record.sublevel);
}

void CompanyStore::ForEach(const ListKind& kind, const RecordFilter& filter,
                           const std::function<void(const ListRecord&)>& visit) {
  const FilterStatement statement(kSelect, kind, filter);
  auto rows = statement.Run(database_);
  while (rows.Next()) visit(ReadRecord(rows));
}

std::vector<CompanyStore::TypeTotal> CompanyStore::Totals(const ListKind& kind) {
  std::vector<TypeTotal> totals;
  auto rows = database_.Query(
      "SELECT type, count(*), sum(balance) FROM record WHERE kind = ? GROUP BY type ORDER BY type", {kind.name});
  while (rows.Next()) {
    totals.push_back(
        {.type = rows.Text(0), .records = rows.Integer(1), .balance = Currency::FromTenThousandths(rows.Integer(2))});
  }
  return totals;
}

void CompanyStore::Insert(const ListKind& kind, const ListRecord& record) {
  InsertRecord(database_, kind, record);
  AddToTotals(record.parentId, record.totalBalance);
}

void CompanyStore::Lay(std::string_view kind, std::string_view nameSpace, ListRecord record) {
  const auto scope = ScopeOf(nameSpace, record.parentId);
  auto nameKey = NameKey(record.name);
  // No name has a line break.
  const auto isTaken =
      database_.Query("SELECT 1 FROM record WHERE scope = ? AND name_key = ?", {scope, std::string_view(nameKey)})
          .Next();
  if (isTaken) nameKey.append("\n").append(record.listId);
  const auto isNumbered =
      !record.number.empty() && database_
                                    .Query("SELECT 1 FROM record WHERE kind = ? AND number = ? AND number <> ''",
                                           {kind, std::string_view(record.number)})
                                    .Next();
  if (isNumbered) record.number.clear();
  InsertRecord(database_, kind, scope, nameKey, record);
}

void CompanyStore::RaiseCounters(const Highest& highest) {
  constexpr std::string_view kRaise = "UPDATE counter SET next = max(next, ? + 1) WHERE name = ?";
  database_.Execute(kRaise, {highest.list, std::string_view("list")});
  database_.Execute(kRaise, {highest.txn, std::string_view("txn")});
  database_.Execute(kRaise, {highest.txnNumber, std::string_view("txn_number")});
}

void CompanyStore::Update(const ListKind& kind, const ListRecord& before, const ListRecord& after) {
  if (before.parentId != after.parentId) {
    AddToTotals(before.parentId, Currency{} - before.totalBalance);
    AddToTotals(after.parentId, after.totalBalance);
  }
  const auto nameKey = NameKey(after.name);
  database_.Execute(
      "UPDATE record SET parent_id = ?, scope = ?, name = ?, name_key = ?, full_name = ?, full_key = ?, sublevel = ?, "
      "active = ?, modified = ?, edit_sequence = ?, body = ?, type = ?, number = ? WHERE list_id = ?",
      {std::string_view(after.parentId), ScopeOf(kind, after.parentId), std::string_view(after.name),
       std::string_view(nameKey), std::string_view(after.fullName), std::string_view(after.fullKey),
       std::int64_t{after.sublevel}, std::int64_t{after.active}, after.modified, after.editSequence,
       std::string_view(after.body), std::string_view(after.type), std::string_view(after.number),
       std::string_view(after.listId)});
  if (before.fullName == after.fullName) return;

  const auto below = KeysBelow(before.fullKey);
  database_.Execute(
      "UPDATE record SET full_name = ? || substr(full_name, ?), full_key = ? || substr(full_key, ?), "
      "sublevel = sublevel + ? WHERE kind = ? AND full_key > ? AND full_key < ?",
      {std::string_view(after.fullName), static_cast<std::int64_t>(CharacterCount(before.fullName)) + 1,
       std::string_view(after.fullKey), static_cast<std::int64_t>(CharacterCount(before.fullKey)) + 1,
       std::int64_t{after.sublevel} - before.sublevel, kind.name, std::string_view(below.from),
       std::string_view(below.to)});
}

void CompanyStore::AddToTotals(std::string parentId, Currency amount) {
  if (amount == Currency{}) return;
  while (!parentId.empty()) {
    auto rows =
        database_.Query("UPDATE record SET total_balance = total_balance + ? WHERE list_id = ? RETURNING parent_id",
                        {amount.TenThousandths(), std::string_view(parentId)});
    parentId = rows.Next() ? rows.Text(0) : std::string{};
    while (rows.Next()) {
    }
  }
}

void CompanyStore::AddToBalance(std::string_view listId, Currency amount) {
  if (amount == Currency{}) return;
  database_.Execute("UPDATE record SET balance = balance + ? WHERE list_id = ?", {amount.TenThousandths(), listId});
  AddToTotals(std::string(listId), amount);
}

void CompanyStore::Remove(const ListKind& kind, const ListRecord& record, std::int64_t now) {
  AddToTotals(record.parentId, Currency{} - record.totalBalance);
  SetUses(record.listId, {});
  database_.Execute("DELETE FROM record WHERE list_id = ?", {std::string_view(record.listId)});
  NoteDeletion(record.listId, kind.name, record.fullName, now);
}

bool CompanyStore::WasDeleted(std::string_view id) {
  return database_.Query("SELECT 1 FROM deleted WHERE id = ?", {id}).Next();
}

void CompanyStore::NoteDeletion(std::string_view id, std::string_view kind, std::string_view name, std::int64_t now) {
  database_.Execute("INSERT OR REPLACE INTO deleted VALUES (?, ?, ?, ?)", {id, kind, name, now});
}

void CompanyStore::SetUses(std::string_view ownerId, std::span<const std::string> targetIds) {
  database_.Execute("DELETE FROM uses WHERE owner_id = ?", {ownerId});
  for (const auto& target : targetIds) {
    database_.Execute("INSERT OR IGNORE INTO uses VALUES (?, ?)", {ownerId, std::string_view(target)});
  }
}

bool CompanyStore::IsUsed(std::string_view targetId) {
  return database_.Query("SELECT 1 FROM uses WHERE target_id = ? LIMIT 1", {targetId}).Next();
}

bool CompanyStore::HasChildren(std::string_view listId) {
  return database_.Query("SELECT 1 FROM record WHERE scope = ? LIMIT 1", {listId}).Next();
}

}  // namespace twqb::company
