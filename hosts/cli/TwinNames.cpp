#include "cli/TwinNames.h"

#include <fmt/core.h>

#include <exception>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/CompanyAnswer.h"
#include "cli/SystemSides.h"
#include "cli/TableArgument.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "services/Conversions.h"

namespace twqb::cli {

namespace {

// An identifier that could be read as something else is none.
bool IsIdentifier(std::string_view id) {
  return !id.empty() && id.find_first_not_of("0123456789ABCDEFabcdef-") == std::string_view::npos;
}

std::string NameIn(const pugi::xml_node& record) {
  for (const auto* name : {"FullName", "Name", "RefNumber", "TxnDate"}) {
    if (const auto value = record.child(name)) return value.child_value();
  }
  return {};
}

}  // namespace

std::string WordForRow(const Table& table) {
  return table.lostLink.row.empty() ? TypedName(table.number) : std::string(table.lostLink.row);
}

std::string WordsOfRow(const ado::Recordset& row) {
  constexpr std::size_t kWords = 3;
  const auto key = ToText(row.FieldAt(0));
  if (!key.starts_with('{')) return key;
  std::vector<std::string> words;
  for (int i = 1; i < row.FieldCount() && words.size() < kWords; ++i) {
    if (row.FieldName(i) == "QBLinkID" || IsNull(row.FieldAt(i))) continue;
    auto word = ToText(row.FieldAt(i));
    if (!word.empty() && !word.starts_with('{')) words.push_back(std::move(word));
  }
  return words.empty() ? key : Join(words, ", ");
}

std::string NameOfLinkedRow(const Workplace& place, const Table& table, std::string_view id) {
  if (!IsIdentifier(id)) return {};
  try {
    const auto provider = MakeBillingProvider();
    const auto connection = provider->CreateConnection();
    connection->SetConnectionString(place.billing);
    connection->Open();
    const auto rows = connection->Execute(
        Sql("SELECT * FROM {} WHERE {} AND QBLinkID = '{}'", table.rows.table, Sql::Own(table.rows.condition), id),
        nullptr);
    return rows->Eof() ? std::string() : WordsOfRow(*rows);
  } catch (const PlatformError&) {
    return {};
  }
}

std::string NameOfRecord(const Workplace& place, Machine& machine, const Table& table, std::string_view id) {
  std::error_code failure;
  if (!IsIdentifier(id) || !std::filesystem::exists(place.company, failure)) return {};
  for (const auto& read : table.reads) {
    for (const auto request : read.requests) {
      if (request.empty()) continue;
      try {
        const CompanyAnswer answer(
            place.company, machine,
            fmt::format("<{0}><{1}>{2}</{1}></{0}>", request, read.transaction ? "TxnID" : "ListID", id));
        if (const auto record = answer.Response().first_child()) return NameIn(record);
      } catch (const std::exception&) {
        continue;  // a file that answers in another form, or that has no such record
      }
    }
  }
  return {};
}

}  // namespace twqb::cli
