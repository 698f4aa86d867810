#include "cli/links/LinkedRows.h"

#include <fmt/core.h>

#include <algorithm>
#include <pugixml.hpp>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/companyfile/QueryForAll.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "bridge/Tables.h"
#include "cli/workplace/CompanyAnswer.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"

namespace twqb::cli {

namespace {

std::vector<std::string> KeyColumns(ado::Connection& billing, std::string_view table) {
  std::vector<std::string> columns;
  const auto rows =
      billing.Execute(fmt::format("SELECT name FROM pragma_table_info('{}') WHERE pk > 0 ORDER BY pk", table), nullptr);
  for (; !rows->Eof(); rows->MoveNext()) columns.push_back(ToText(rows->FieldAt(0)));
  return columns;
}

void ReadTable(ado::Connection& billing, const Table& table, std::vector<LinkedRow>& found) {
  const auto keys = KeyColumns(billing, table.rows.table);
  const auto rows = billing.Execute(
      fmt::format("SELECT * FROM {} WHERE {} AND QBLinkID <> ''", table.rows.table, table.rows.condition), nullptr);
  for (; !rows->Eof(); rows->MoveNext()) {
    std::vector<std::string> key;
    key.reserve(keys.size());
    for (const auto& column : keys) key.push_back(ToText(rows->Field(column)));
    found.push_back({.table = table.number, .key = Join(key, ","), .identifier = ToText(rows->Field("QBLinkID"))});
  }
}

void AddIdentifiers(pugi::xml_node record, std::set<std::string, std::less<>>& found) {
  for (const auto field : record.children()) {
    const std::string_view name = field.name();
    if (name == "ListID" || name == "TxnID" || name == "TxnLineID") found.insert(field.child_value());
    if (name.ends_with("Ret")) AddIdentifiers(field, found);
  }
}

// Hours may be linked to the lines of a bill; an employee who has become a vendor, to a record of either.
bool MayBeLinkedTo(const Table& table, const Table& other) {
  const auto& lines = other.lostLink.lines;
  return table.rows.table == other.rows.table ||
         std::ranges::find(lines, table.rows.table, &KeyPlace::table) != lines.end();
}

bool Reads(const Table& table, std::string_view query) {
  return std::ranges::any_of(
      table.reads, [&](const auto& read) { return std::ranges::find(read.requests, query) != read.requests.end(); });
}

}  // namespace

std::vector<LinkedRow> ReadLinkedRows(const Workplace& place, std::span<const std::int32_t> tables) {
  const auto billing = SqliteProvider().CreateConnection();
  billing->SetConnectionString(place.billing + ";Mode=Read");
  billing->Open();
  std::vector<LinkedRow> found;
  for (const auto number : tables) {
    try {
      ReadTable(*billing, *FindTable(number), found);
    } catch (const PlatformError&) {
      continue;
    }
  }
  billing->Close();
  return found;
}

IdentifiersThere ReadIdentifiers(const Workplace& place, Machine& machine) {
  company::CompanyFile file(place.company, machine);
  const auto form = FormOf(file);
  IdentifiersThere found;
  for (const auto& kind : file.Summary().kinds) {
    const auto question = company::QueryForAll(kind.name, form);
    if (question.empty()) continue;
    try {
      const CompanyAnswer answer(company::CompanyFile(place.company, machine), form, question);
      for (const auto record : answer.Response().children()) AddIdentifiers(record, found.known);
    } catch (const RefusedByQuickBooks& refused) {
      found.closed.push_back({.kind = kind.name, .code = refused.Code(), .answer = refused.Words()});
    }
  }
  return found;
}

const ClosedKind* ClosedTo(std::int32_t table, std::span<const ClosedKind> closed) {
  for (const auto& kind : closed) {
    const auto query = kind.kind + "QueryRq";
    const auto& own = *FindTable(table);
    const bool isOne = std::ranges::any_of(
        Tables(), [&](const Table* other) { return MayBeLinkedTo(own, *other) && Reads(*other, query); });
    if (isOne) return &kind;
  }
  return nullptr;
}

}  // namespace twqb::cli
