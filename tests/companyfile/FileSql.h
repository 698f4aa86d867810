// Statements on the storage under a company file, for tests of what it makes of files that it did not leave so itself.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace twqb::company {

// Makes the file when it is not there.
inline void RunSql(const std::string& path, const std::string& sql) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
  sqlite3_close(database);
}

}  // namespace twqb::company
