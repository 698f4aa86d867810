#include "adapters/companyfile/CompanyFormat.h"

#include <fmt/core.h>

#include <array>
#include <string>

#include "adapters/companyfile/CompanyErrors.h"
#include "adapters/companyfile/MessageSetStore.h"
#include "adapters/companyfile/TxnStore.h"

namespace twqb::company {

namespace {

// "TWCO", where other programs look for what kind of file this is.
constexpr std::int64_t kApplicationId = 0x5457434F;

// Options, the counter of list identifiers (0x80000001), list records, subscriptions.
constexpr std::string_view kFirstFormat = R"(
CREATE TABLE setting (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE counter (name TEXT PRIMARY KEY, next INTEGER NOT NULL) WITHOUT ROWID;
INSERT INTO counter VALUES ('list', 2147483649);
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

// Every kind of list: the type and the number of an account, what uses what, what was deleted.
constexpr std::string_view kListsOfSecondFormat = R"(
ALTER TABLE record ADD COLUMN type TEXT NOT NULL DEFAULT '';
ALTER TABLE record ADD COLUMN number TEXT NOT NULL DEFAULT '';
CREATE INDEX record_name_order ON record (kind, name_key, full_key);
CREATE INDEX record_type ON record (kind, type, full_key) WHERE type <> '';
CREATE UNIQUE INDEX record_number ON record (kind, number) WHERE number <> '';
CREATE TABLE uses (owner_id TEXT NOT NULL, target_id TEXT NOT NULL, PRIMARY KEY (owner_id, target_id)) WITHOUT ROWID;
CREATE INDEX uses_target ON uses (target_id);
CREATE TABLE deleted (id TEXT PRIMARY KEY, kind TEXT NOT NULL, name TEXT NOT NULL, deleted INTEGER NOT NULL)
  WITHOUT ROWID;
INSERT INTO counter VALUES ('txn', 1);
)";

struct Step {
  std::int64_t format;  // that the script leads to
  std::string_view script;
};
constexpr std::array kSteps = {
    Step{.format = 1, .script = kFirstFormat},
    Step{.format = 2, .script = kListsOfSecondFormat},
    Step{.format = 2, .script = TxnStore::kSchema},
    Step{.format = 3, .script = MessageSetStore::kSchema},
    Step{.format = 3, .script = TxnStore::kRefNumberSchema},
    Step{.format = 5, .script = TxnStore::kBilledLineSchema},
};

std::int64_t Pragma(SqliteDatabase& database, std::string_view statement) {
  auto rows = database.Query(statement);
  return rows.Next() ? rows.Integer(0) : 0;
}

}  // namespace

std::int64_t ReadFormat(SqliteDatabase& database) {
  if (Pragma(database, "PRAGMA application_id") != kApplicationId) {
    Raise(kCannotOpenFile, "It is not a company data file.");
  }
  const auto format = Pragma(database, "PRAGMA user_version");
  if (format <= kNoFormat || format > kFormatVersion) {
    Raise(kCannotOpenFile, fmt::format("It has format {}; this program knows format {}.", format, kFormatVersion));
  }
  return format;
}

void TakeSteps(SqliteDatabase& database, std::int64_t format) {
  for (const auto& step : kSteps) {
    if (step.format > format) database.RunScript(std::string(step.script));
  }
  database.RunScript(
      fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {}", kApplicationId, kFormatVersion));
}

}  // namespace twqb::company
