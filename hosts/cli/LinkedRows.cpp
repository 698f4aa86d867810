#include "cli/LinkedRows.h"

#include <fmt/core.h>

#include <array>
#include <exception>
#include <pugixml.hpp>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "bridge/Tables.h"
#include "cli/CompanyAnswer.h"
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

// What is asked of lists is refused by transactions, and the other way round.
bool AddIdentifiers(company::CompanyFile file, const messages::Form& form, const std::string& kind,
                    std::string_view fields, std::set<std::string, std::less<>>& found) {
  try {
    const CompanyAnswer answer(std::move(file), form, fmt::format("<{0}QueryRq>{1}</{0}QueryRq>", kind, fields));
    for (const auto record : answer.Response().children()) AddIdentifiers(record, found);
    return true;
  } catch (const std::exception&) {
    return false;
  }
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

std::set<std::string, std::less<>> ReadIdentifiers(const Workplace& place, Machine& machine) {
  constexpr std::array<std::string_view, 3> kWays = {"<ActiveStatus>All</ActiveStatus>",
                                                     "<IncludeLineItems>true</IncludeLineItems>", ""};
  company::CompanyFile file(place.company, machine);
  const auto form = FormOf(file);
  std::set<std::string, std::less<>> found;
  for (const auto& kind : file.Summary().kinds) {
    for (const auto way : kWays) {
      if (AddIdentifiers(company::CompanyFile(place.company, machine), form, kind.name, way, found)) break;
    }
  }
  return found;
}

}  // namespace twqb::cli
