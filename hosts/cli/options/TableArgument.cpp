#include "cli/options/TableArgument.h"

#include <fmt/core.h>

#include "bridge/Tables.h"
#include "cli/options/ExitStatus.h"
#include "cli/options/NearestName.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kPrefix = "en";

constexpr std::string_view kAll = "All";

// The names of the tables without the prefix, and that of all of them. The table that is used inside the invoice read
// alone is no name of a command line.
struct NamedTable {
  enTables table;
  std::string_view name;
};
std::vector<NamedTable> NamedTables() {
  std::vector<NamedTable> named;
  for (const auto* table : Tables()) named.push_back({.table = table->number, .name = table->name});
  named.push_back({.table = enAll, .name = kAll});
  return named;
}

std::string_view NameOf(enTables table) {
  const auto* found = FindTable(table);
  return found == nullptr ? kAll : found->name;
}

std::vector<std::string> TypedNames() {
  std::vector<std::string> names;
  for (const auto& entry : NamedTables()) names.push_back(TypedName(entry.table));
  return names;
}

}  // namespace

enTables TableFromName(std::string_view name) {
  for (const auto& entry : NamedTables()) {
    const bool withPrefix = SameName(name.substr(0, kPrefix.size()), kPrefix);
    if (SameName(name, entry.name) || (withPrefix && SameName(name.substr(kPrefix.size()), entry.name))) {
      return entry.table;
    }
  }
  const auto names = TypedNames();
  throw UsageError(
      fmt::format("There is no table \"{}\".{}\nThe tables are: {}.", name, DidYouMean(name, names), TableNameList()));
}

std::string TypedName(enTables table) { return FoldCase(NameOf(table)); }
std::string DeclaredName(enTables table) { return fmt::format("{}{}", kPrefix, NameOf(table)); }

std::string RecordName(enTables table, std::string_view name) {
  return fmt::format("{}{}{}", TypedName(table), name.empty() ? "" : " ", name);
}

std::vector<std::string_view> BillingTablesOf(enTables table) {
  if (table != enAll) return {FindTable(table)->rows.table};
  std::vector<std::string_view> names;
  for (const auto* each : Tables()) names.push_back(each->rows.table);
  return names;
}

std::string TableNameList() { return Join(TypedNames(), ", "); }

std::string TableHelpText(AllTables allTables) {
  auto names = TypedNames();
  if (allTables == AllTables::No) std::erase(names, TypedName(enAll));
  return fmt::format("TABLE is one of\n  {}\n\n", Join(names, ", "));
}

}  // namespace twqb::cli
