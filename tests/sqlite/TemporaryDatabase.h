// A database file of its own for every test, in a folder that goes with it, and connections to it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/SqliteProvider.h"
#include "platform/PlatformError.h"
#include "platform/ado.h"

namespace twqb::sqlite {

// The number that `body` raises; 0 when it raises nothing.
template <typename Body>
ErrorNumber Raised(Body body) {
  try {
    body();
  } catch (const PlatformError& failure) {
    return failure.number();
  }
  return 0;
}

// The description of what `body` raises; empty when it raises nothing.
template <typename Body>
std::string Description(Body body) {
  try {
    body();
  } catch (const PlatformError& failure) {
    return failure.description();
  }
  return {};
}

class TemporaryDatabase : public ::testing::Test {
 protected:
  TemporaryDatabase() {
    static int count = 0;
    folder_ = std::filesystem::path(::testing::TempDir()) /
              ("twqb-sqlite-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
    std::filesystem::create_directories(folder_);
    CreateSqliteDatabase(File());
    connection_ = Connect();
  }
  ~TemporaryDatabase() override {
    connection_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  [[nodiscard]] std::string PathTo(const std::string& name) const { return (folder_ / name).string(); }
  [[nodiscard]] std::string File() const { return PathTo("billing.db"); }

  // Another open connection to the same file.
  [[nodiscard]] std::unique_ptr<ado::Connection> Connect() const {
    auto connection = Unopened("Provider=SQLITE;Data Source=" + File());
    connection->Open();
    return connection;
  }
  [[nodiscard]] static std::unique_ptr<ado::Connection> Unopened(std::string connectionString) {
    auto connection = SqliteProvider().CreateConnection();
    connection->SetConnectionString(std::move(connectionString));
    return connection;
  }

  std::int64_t Execute(std::string_view statement) {
    std::int64_t rows = 0;
    connection_->Execute(statement, &rows);
    return rows;
  }
  [[nodiscard]] std::unique_ptr<ado::Recordset> Query(std::string_view statement) {
    return connection_->OpenRecordset(statement, ado::CursorType::Static, ado::LockType::ReadOnly);
  }
  [[nodiscard]] std::unique_ptr<ado::Recordset> OpenTable(const std::string& table) {
    return connection_->OpenRecordset("SELECT * FROM " + table + ";", ado::CursorType::Static,
                                      ado::LockType::Optimistic);
  }
  // The first field of every row, as text, "NULL" for NULL.
  [[nodiscard]] std::vector<std::string> Column(std::string_view statement) {
    std::vector<std::string> values;
    const auto rows = Query(statement);
    for (; !rows->Eof(); rows->MoveNext()) {
      const auto value = rows->FieldAt(0);
      values.push_back(IsNull(value) ? "NULL" : ToText(value));
    }
    return values;
  }
  [[nodiscard]] std::string Scalar(std::string_view statement) {
    const auto values = Column(statement);
    return values.empty() ? "(no row)" : values.front();
  }

  // A table with a column of each kind, keyed and indexed as those of BillingDb are.
  void CreateClient() {
    Execute(
        "CREATE TABLE Client (\n"
        "  ClientID    VARCHAR(10) NOT NULL PRIMARY KEY,  -- the key\n"
        "  Memo        TEXT,\n"
        "  Balance     DECIMAL(19,4),\n"
        "  Rate        DOUBLE,\n"
        "  IsSub       SMALLINT DEFAULT 0,\n"
        "  QBLinkID    VARCHAR(40),\n"
        "  LastUpdated DATETIME\n"
        ");");
    Execute("CREATE INDEX IX_Client_QBLinkID ON Client (QBLinkID);");
    Execute("CREATE INDEX IX_Client_LastUpdated ON Client (LastUpdated);");
  }

  using Texts = std::vector<std::string>;

  std::filesystem::path folder_;
  std::unique_ptr<ado::Connection> connection_;
};

}  // namespace twqb::sqlite
