// The storage of what became of message sets that carry an identifier: for each application and identifier a checksum
// of the set and its answer.
//
// It keeps what it is told; what a set that comes again is answered stands with MessageSetMemory. It works inside the
// transaction that the caller opened. Failures raise `kUnexpected`.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/companyfile/Sqlite.h"

namespace twqb::company {

struct StoredSet {
  std::string checksum;
  std::optional<std::string> answer;  // nothing: the identifier is taken, but no set was carried out under it
};

class MessageSetStore {
 public:
  // The table, for a file that has none.
  static constexpr std::string_view kSchema = R"(
CREATE TABLE message_set (
  application TEXT NOT NULL,
  id TEXT NOT NULL,
  checksum TEXT NOT NULL,
  answered INTEGER NOT NULL,
  answer TEXT NOT NULL,
  made INTEGER NOT NULL,
  PRIMARY KEY (application, id)
);
)";

  // `database` must outlive the store.
  MessageSetStore(SqliteDatabase& database, std::string application)
      : database_(database), application_(std::move(application)) {}

  [[nodiscard]] std::optional<StoredSet> Find(std::string_view id);
  // Raises when the identifier is there already. `now` is in Unix seconds.
  void Put(std::string_view id, const StoredSet& set, std::int64_t now);
  void Remove(std::string_view id);
  // Removes all of the application.
  void Clear();

 private:
  SqliteDatabase& database_;
  std::string application_;
};

}  // namespace twqb::company
