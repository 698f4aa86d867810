#include "engine/Template.h"

#include <fmt/format.h>

#include "services/Conversions.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

template <typename ReadRowDate>
bool PairMovesByDates(Direction direction, TwinRule rule, const Record& twin, ReadRowDate readRowDate) {
  if (rule != TwinRule::NewerWins) return rule == TwinRule::Overwrite;
  const auto quickBooksTime = twin["TimeModified"].GetDate();
  const auto clock = IsDaylightTime() ? TimeZoneState::Daylight : TimeZoneState::Standard;
  const std::optional<Date> billingTime = readRowDate();
  return billingTime && RecordMoves({.direction = direction,
                                     .rule = rule,
                                     .quickBooksTime = quickBooksTime,
                                     .clock = clock,
                                     .billingTime = *billingTime});
}

}  // namespace

bool PairMoves(const TableDescription& table, Direction direction, TwinRule rule, const Record& twin,
               const ado::Recordset& row) {
  return PairMovesByDates(direction, rule, twin,
                          [&] { return GetTWDateOfUpdation(row, "LastUpdated", table.fallbackDateColumn); });
}

bool PairMoves(Direction direction, TwinRule rule, const Record& twin, std::optional<Date> rowDate) {
  return PairMovesByDates(direction, rule, twin, [rowDate] { return rowDate; });
}

void EndCancelled() {
  Vars().g_Cancelled = false;
  TheDesk().SetPointer(Pointer::Default);
  TheDesk().ShowMessageBox({.text = "Operation cancelled!"});
  Vars().g_TableOk = TableOk::False;
}

Filling AssignFields(const TableDescription& table, const RequestField& request, const ado::Recordset& row,
                     RequestKind kind, const SendRecord& record) {
  if (table.assign != nullptr) return table.assign(request, row, kind, record);
  SendFields(request, row, table.sendFields);
  if (kind == RequestKind::Add) SetCut(request["Name"], record.qbName);
  return Filling::Filled;
}

void WriteFields(const TableDescription& table, ado::Recordset& row, const Record& record) {
  if (table.writeFields != nullptr) {
    table.writeFields(row, record);
    return;
  }
  for (const auto column : table.blankedColumns) row.SetField(column, std::string());
  GetFields(row, record, table.getFields);
}

std::string NameOf(const TableDescription& table, const RequestField& request) {
  return table.nameOf != nullptr ? table.nameOf(request) : request["Name"].GetValue();
}

Refusal OnRefusal(const TableDescription& table, const RefusedRequest& refused) {
  if (table.onRefusal != nullptr) return table.onRefusal(refused);
  const bool nameInUse = refused.kind == RequestKind::Add && refused.response.StatusCode() == kStatusNameInUse;
  return nameInUse ? Refusal::TryNextName : Refusal::AskUser;
}

std::string LastUpdatedStatement(const TableDescription& table, std::string_view key, Date utc) {
  if (table.lastUpdatedStatement != nullptr) return table.lastUpdatedStatement(key, utc);
  return fmt::format("UPDATE {} SET LastUpdated = '{}' WHERE {} = '{}';", table.tableName,
                     FormatSQLDate(utc, DateForm::WithTime), table.keyColumn, key);
}

std::string RecordLine(const TableDescription& table, const ado::Recordset& row, const SendRecord& record) {
  if (table.recordLine != nullptr) return table.recordLine(row, record);
  return table.recordLabel.empty() ? "" : fmt::format("[{} = \"{}\"]", table.recordLabel, record.key);
}

void TellLacking(std::string_view text) {
  TheDesk().ShowMessageBox({.text = std::string(text), .title = "Error", .icon = BoxIcon::Information});
}

}  // namespace twqb
