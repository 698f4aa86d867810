// Statements on the storage under a company file, for tests of what it makes of files that it did not leave so itself.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <vector>

namespace twqb::company {

// Takes out of a new file the records of the lists that came with the fourth format.
inline constexpr auto kWithoutListsOfFourthFormat =
    "DELETE FROM record WHERE kind IN ('StandardTerms', 'CustomerType', 'VendorType', 'Template')";

// Makes the file when it is not there.
inline void RunSql(const std::string& path, const std::string& sql) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
  sqlite3_close(database);
}

// What the file holds: the statements that made its tables, and every row of each.
inline std::string DumpSql(const std::string& path) {
  sqlite3* database = nullptr;
  EXPECT_EQ(sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  using Rows = std::vector<std::string>;
  const auto rowsOf = [&](const std::string& sql) {
    Rows rows;
    const auto keep = [](void* out, int count, char** values, char**) {
      auto& row = static_cast<Rows*>(out)->emplace_back();
      for (int i = 0; i < count; ++i) row.append(values[i] == nullptr ? "NULL" : values[i]).append("|");
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), keep, &rows, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    return rows;
  };
  std::string dump;
  for (const auto& statement : rowsOf("PRAGMA user_version")) dump.append(statement).append("\n");
  for (const auto& statement : rowsOf("SELECT sql FROM sqlite_schema ORDER BY name"))
    dump.append(statement).append("\n");
  for (auto table : rowsOf("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name")) {
    table.pop_back();
    for (const auto& row : rowsOf("SELECT * FROM \"" + table + "\"")) dump.append(row).append("\n");
  }
  sqlite3_close(database);
  return dump;
}

}  // namespace twqb::company
