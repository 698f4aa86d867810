#include "engine/WriteBack.h"

#include <fmt/format.h>

#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"

namespace twqb {

Sql KeyCondition(std::string_view keyColumn, std::string_view key) { return Sql("{} = '{}'", keyColumn, key); }

void WriteLink(ado::Connection& connection, const RowPlace& place, std::string_view link, Linked linked) {
  std::int64_t rows = 0;
  connection.Execute(Sql("UPDATE {} SET QBLinkID = '{}' WHERE {};", place.table, link, place.condition), &rows);
  // A server that was told not to count answers less than none.
  if (linked == Linked::AnyRows || rows == 1 || rows < 0) return;
  LogError("WriteLink", fmt::format("The link {} was written to {} rows of {} in the place of one: {}", link, rows,
                                    place.table, place.condition.Text()));
}

void WriteStamp(ado::Connection& connection, const RowPlace& place) {
  WriteStamp(connection, place, LocalToUTC(TheMachine().Now()));
}

void WriteStamp(ado::Connection& connection, const RowPlace& place, Date utc) {
  const auto moment = FormatSQLDate(utc, DateForm::WithTime);
  connection.Execute(Sql("UPDATE {} SET LastUpdated = '{}' WHERE {};", place.table, moment, place.condition), nullptr);
}

}  // namespace twqb
