// The TABLE of a command line: a name of enTables.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "twqb/enTables.h"

namespace twqb::cli {

// The table of that name, written with or without "en", in any case. Raises UsageError, with the names that there are.
[[nodiscard]] enTables TableFromName(std::string_view name);
// As it is typed: "expensecodes".
[[nodiscard]] std::string TypedName(enTables table);
// As it is declared: "enExpenseCodes".
[[nodiscard]] std::string DeclaredName(enTables table);
// A record of it for people: "clients ABBOTT"; the table alone where the record has no name.
[[nodiscard]] std::string RecordName(enTables table, std::string_view name);
// The tables of BillingDb that its rows stand in: one, or for all tables every one.
[[nodiscard]] std::vector<std::string_view> BillingTablesOf(enTables table);
// Every typed name, in the order of their numbers, between commas.
[[nodiscard]] std::string TableNameList();

// Whether a command takes all tables in a row.
enum class AllTables : bool { No, Yes };
// The names as a paragraph of a command's help.
[[nodiscard]] std::string TableHelpText(AllTables allTables);

}  // namespace twqb::cli
