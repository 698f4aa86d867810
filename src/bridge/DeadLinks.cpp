#include "bridge/DeadLinks.h"

#include "bridge/Tables.h"
#include "engine/RecordReader.h"
#include "platform/Value.h"
#include "services/Database.h"

namespace twqb {

std::optional<Identifiers> ReadIdentifiers(QBSessionManager& session, Run& run) {
  Identifiers known;
  for (const auto* table : Tables()) {
    for (const auto& several : table->reads) {
      for (const auto& read : EachKindOf(several)) {
        RecordList records;
        const bool went = ApplyQBFiltersAndReadRecords(*table, read, records, session, {}, run);
        if (!went && !run.g_NoQBRecords) return std::nullopt;
        for (const auto& record : records) {
          for (auto& identifier : record.Identifiers()) known.insert(std::move(identifier));
        }
      }
    }
  }
  return known;
}

std::int64_t CountDeadLinks(const Table& table, const Identifiers& known) {
  const auto rows = GlobalConnection().OpenRecordset(
      Sql("SELECT QBLinkID FROM {} WHERE {} AND QBLinkID <> ''", table.rows.table, Sql::Own(table.rows.condition)),
      ado::CursorType::Static, ado::LockType::ReadOnly);
  std::int64_t dead = 0;
  for (; !rows->Eof(); rows->MoveNext()) {
    if (!known.contains(ToText(rows->FieldAt(0)))) ++dead;
  }
  return dead;
}

}  // namespace twqb
