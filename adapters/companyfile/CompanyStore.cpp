#include "adapters/companyfile/CompanyStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

#include "adapters/companyfile/CompanyErrors.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

// "TWCO", where other programs look for what kind of file this is.
constexpr std::int64_t kApplicationId = 0x5457434F;
constexpr std::int64_t kFormatVersion = 1;
constexpr std::uint32_t kFirstListNumber = 0x80000001;

constexpr std::string_view kSchema = R"(
CREATE TABLE setting (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE counter (name TEXT PRIMARY KEY, next INTEGER NOT NULL) WITHOUT ROWID;
CREATE TABLE record (
  list_id TEXT PRIMARY KEY,
  kind TEXT NOT NULL,
  parent_id TEXT NOT NULL,
  scope TEXT NOT NULL,
  name TEXT NOT NULL,
  name_key TEXT NOT NULL,
  full_name TEXT NOT NULL,
  full_key TEXT NOT NULL,
  sublevel INTEGER NOT NULL,
  active INTEGER NOT NULL,
  created INTEGER NOT NULL,
  modified INTEGER NOT NULL,
  edit_sequence INTEGER NOT NULL,
  balance INTEGER NOT NULL,
  total_balance INTEGER NOT NULL,
  body TEXT NOT NULL,
  UNIQUE (scope, name_key)
);
CREATE INDEX record_order ON record (kind, full_key);
CREATE TABLE subscription (subscriber_id TEXT NOT NULL, kind TEXT NOT NULL, body TEXT NOT NULL,
                           PRIMARY KEY (subscriber_id, kind)) WITHOUT ROWID;
)";

constexpr std::string_view kSelect =
    "SELECT r.list_id, r.parent_id, p.full_name, r.name, r.full_name, r.full_key, r.sublevel, r.active, r.created, "
    "r.modified, r.edit_sequence, r.balance, r.total_balance, r.body "
    "FROM record AS r LEFT JOIN record AS p ON p.list_id = r.parent_id ";

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
  record.body = row.Text(column++);
  return record;
}

std::optional<ListRecord> FirstRecord(SqliteRows rows) {
  if (!rows.Next()) return std::nullopt;
  return ReadRecord(rows);
}

// Where a name has to be unique: among the children of a parent, or at the top of a name space. An identifier has a
// "-" in it and no name space has, so the two never meet.
std::string_view ScopeOf(const ListKind& kind, std::string_view parentId) {
  return parentId.empty() ? kind.nameSpace : parentId;
}

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

// The statement of a filter, put together from the conditions that are set.
class FilterStatement {
 public:
  FilterStatement(const ListKind& kind, const RecordFilter& filter) : sql_(kSelect) {
    sql_ += "WHERE r.kind = ?";
    values_.emplace_back(kind.name);
    if (filter.activeStatus != ActiveStatus::All) {
      Add(" AND r.active = ?", std::int64_t{filter.activeStatus == ActiveStatus::ActiveOnly});
    }
    if (filter.modifiedFrom) Add(" AND r.modified >= ?", *filter.modifiedFrom);
    if (filter.modifiedTo) Add(" AND r.modified <= ?", *filter.modifiedTo);
    if (filter.nameFrom) Add(" AND r.name_key >= ?", std::string_view(*filter.nameFrom));
    if (filter.nameTo) Add(" AND r.name_key <= ?", std::string_view(*filter.nameTo));
    if (filter.nameMatch) AddNameMatch(*filter.nameMatch);
    if (filter.totalBalance) {
      constexpr std::array<std::string_view, 5> kOperators = {"<", "<=", "=", ">", ">="};
      const auto comparison = static_cast<std::size_t>(filter.totalBalance->comparison);
      Add(fmt::format(" AND r.total_balance {} ?", kOperators[comparison]),
          filter.totalBalance->amount.TenThousandths());
    }
    sql_ += " ORDER BY r.full_key";
    if (filter.maxReturned) Add(" LIMIT ?", *filter.maxReturned);
  }

  [[nodiscard]] SqliteRows Run(SqliteDatabase& database) const { return database.Query(sql_, values_); }

 private:
  void Add(std::string_view condition, SqlValue value) {
    sql_ += condition;
    values_.push_back(value);
  }

  void AddNameMatch(const RecordFilter::NameMatch& match) {
    const std::string_view text = match.text;
    const auto length = static_cast<std::int64_t>(CharacterCount(text));
    switch (match.criterion) {
      case MatchCriterion::StartsWith:
        Add(" AND substr(r.name_key, 1, ?)", length);
        return Add(" = ?", text);
      case MatchCriterion::Contains:
        return Add(" AND instr(r.name_key, ?) > 0", text);
      case MatchCriterion::EndsWith:
        Add(" AND length(r.name_key) >= ?", length);
        Add(" AND substr(r.name_key, length(r.name_key) - ? + 1)", length);
        return Add(" = ?", text);
    }
  }

  std::string sql_;
  std::vector<SqlValue> values_;
};

}  // namespace

void CompanyStore::Create(const std::string& path, const CompanyOptions& options, std::int64_t now) {
  // Made by the system call that fails when it is there, so that no file is ever overwritten.
  std::FILE* made = std::fopen(path.c_str(), "wbx");
  if (made == nullptr) {
    const int reason = errno;
    throw PlatformError(
        reason == ENOENT ? error::kPathNotFound : error::kFileAccess,
        fmt::format("The company data file \"{}\" can't be made: {}.", path, std::generic_category().message(reason)));
  }
  std::fclose(made);
  try {
    SqliteDatabase database(path);
    database.RunScript("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL");
    SqliteTransaction transaction(database, SqliteTransaction::Purpose::Write);
    database.RunScript(std::string(kSchema));
    database.RunScript(
        fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {}", kApplicationId, kFormatVersion));
    const auto hostVersion = std::to_string(options.hostVersion);
    const auto accepts = AcceptsText(options);
    const auto created = std::to_string(now);
    constexpr std::string_view kInsert = "INSERT INTO setting VALUES (?, ?)";
    database.Execute(kInsert, {"country", messages::CountryName(options.country)});
    database.Execute(kInsert, {"host_version", std::string_view(hostVersion)});
    database.Execute(kInsert, {"accepts", std::string_view(accepts)});
    database.Execute(kInsert, {"created", std::string_view(created)});
    database.Execute("INSERT INTO counter VALUES ('list', ?)", {std::int64_t{kFirstListNumber}});
    transaction.Commit();
  } catch (...) {
    std::remove(path.c_str());
    throw;
  }
}

CompanyStore::CompanyStore(const std::string& path) try : database_(RequireFile(path)) {
  const auto pragma = [this](std::string_view statement) {
    auto rows = database_.Query(statement);
    return rows.Next() ? rows.Integer(0) : 0;
  };
  if (pragma("PRAGMA application_id") != kApplicationId) Raise(kCannotOpenFile, "It is not a company data file.");
  if (const auto version = pragma("PRAGMA user_version"); version != kFormatVersion) {
    Raise(kCannotOpenFile, fmt::format("It has format {}; this program knows format {}.", version, kFormatVersion));
  }
  database_.RunScript("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL");
  ReadOptions();
} catch (const PlatformError& failure) {
  if (failure.number() == kCannotOpenFile) {
    throw PlatformError(failure.number(), fmt::format("{} File: \"{}\".", failure.description(), path));
  }
  Raise(kCannotOpenFile, fmt::format("The storage: {}. File: \"{}\".", DetailOf(failure), path));
}

std::string CompanyStore::Setting(std::string_view key) {
  auto rows = database_.Query("SELECT value FROM setting WHERE key = ?", {key});
  if (!rows.Next()) Raise(kCannotOpenFile, fmt::format("It has no {}.", key));
  return rows.Text(0);
}

void CompanyStore::ReadOptions() {
  options_.country = messages::CountryFromName(Setting("country")).value_or(messages::Country::US);
  const auto version = Setting("host_version");
  std::from_chars(version.data(), version.data() + version.size(), options_.hostVersion);
  const auto created = Setting("created");
  std::from_chars(created.data(), created.data() + created.size(), created_);
  for (const auto& name : Split(Setting("accepts"), ',')) {
    if (const auto country = messages::CountryFromName(name)) options_.accepts.push_back(*country);
  }
}

CompanyConditions CompanyStore::ReadConditions() {
  CompanyConditions conditions;
  for (const auto& condition : Conditions()) {
    auto rows = database_.Query("SELECT value FROM setting WHERE key = ?", {condition.name});
    if (rows.Next()) condition.set(conditions, rows.Text(0));
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
      database_.Execute("INSERT OR REPLACE INTO setting VALUES (?, ?)", {condition.name, std::string_view(text)});
    }
  }
}

std::string CompanyStore::NewListId(std::int64_t now) {
  auto rows = database_.Query("UPDATE counter SET next = next + 1 WHERE name = 'list' RETURNING next - 1");
  if (!rows.Next()) Raise(kUnexpected, "It has no counter.");
  auto id = fmt::format("{:X}-{}", rows.Integer(0), now);
  while (rows.Next()) {
  }
  return id;
}

std::optional<ListRecord> CompanyStore::FindById(const ListKind& kind, std::string_view listId) {
  static const std::string sql = std::string(kSelect) + "WHERE r.list_id = ? AND r.kind = ?";
  return FirstRecord(database_.Query(sql, {listId, kind.name}));
}

std::optional<ListRecord> CompanyStore::FindByFullKey(const ListKind& kind, std::string_view fullKey) {
  static const std::string sql = std::string(kSelect) + "WHERE r.kind = ? AND r.full_key = ?";
  return FirstRecord(database_.Query(sql, {kind.name, fullKey}));
}

bool CompanyStore::IsNameInUse(const ListKind& kind, std::string_view parentId, std::string_view nameKey,
                               std::string_view exceptId) {
  return database_
      .Query("SELECT 1 FROM record WHERE scope = ? AND name_key = ? AND list_id <> ?",
             {ScopeOf(kind, parentId), nameKey, exceptId})
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
  const FilterStatement statement(kind, filter);
  auto rows = statement.Run(database_);
  while (rows.Next()) visit(ReadRecord(rows));
}

std::int64_t CompanyStore::Count(const ListKind& kind) {
  auto rows = database_.Query("SELECT count(*) FROM record WHERE kind = ?", {kind.name});
  return rows.Next() ? rows.Integer(0) : 0;
}

void CompanyStore::Insert(const ListKind& kind, const ListRecord& record) {
  const auto nameKey = NameKey(record.name);
  database_.Execute(
      "INSERT INTO record VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {std::string_view(record.listId), kind.name, std::string_view(record.parentId), ScopeOf(kind, record.parentId),
       std::string_view(record.name), std::string_view(nameKey), std::string_view(record.fullName),
       std::string_view(record.fullKey), std::int64_t{record.sublevel}, std::int64_t{record.active}, record.created,
       record.modified, record.editSequence, record.balance.TenThousandths(), record.totalBalance.TenThousandths(),
       std::string_view(record.body)});
  AddToTotals(record.parentId, record.totalBalance);
}

void CompanyStore::Update(const ListKind& kind, const ListRecord& before, const ListRecord& after) {
  if (before.parentId != after.parentId) {
    AddToTotals(before.parentId, Currency{} - before.totalBalance);
    AddToTotals(after.parentId, after.totalBalance);
  }
  const auto nameKey = NameKey(after.name);
  database_.Execute(
      "UPDATE record SET parent_id = ?, scope = ?, name = ?, name_key = ?, full_name = ?, full_key = ?, sublevel = ?, "
      "active = ?, modified = ?, edit_sequence = ?, body = ? WHERE list_id = ?",
      {std::string_view(after.parentId), ScopeOf(kind, after.parentId), std::string_view(after.name),
       std::string_view(nameKey), std::string_view(after.fullName), std::string_view(after.fullKey),
       std::int64_t{after.sublevel}, std::int64_t{after.active}, after.modified, after.editSequence,
       std::string_view(after.body), std::string_view(after.listId)});
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

bool CompanyStore::HasSubscription(std::string_view subscriberId) {
  return database_.Query("SELECT 1 FROM subscription WHERE subscriber_id = ? COLLATE NOCASE LIMIT 1", {subscriberId})
      .Next();
}

}  // namespace twqb::company
