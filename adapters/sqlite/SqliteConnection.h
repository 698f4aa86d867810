// A connection to one database file.
//
// It reads the connection string, translates statements and hands them to the engine. Connect mode and cursor location
// make no difference here: the file is opened for writing and every recordset is on the client's side.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "adapters/sqlite/Database.h"
#include "platform/ado.h"

namespace twqb::sqlite {

class SqliteConnection : public ado::Connection {
 public:
  explicit SqliteConnection(std::shared_ptr<EnginePool> pool) : pool_(std::move(pool)) {}
  ~SqliteConnection() override;
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  [[nodiscard]] ado::ObjectState State() const override;
  void SetMode(ado::ConnectMode mode) override;
  void SetCursorLocation(ado::CursorLocation location) override;
  // How long Open waits for a file that another program is writing; 0 is without end.
  void SetConnectionTimeout(int seconds) override;
  [[nodiscard]] std::string ConnectionString() const override;
  // Counts from the next Open on.
  void SetConnectionString(std::string text) override;
  // Empty when the connection string names none.
  [[nodiscard]] std::string Provider() const override;

  // A connection that was closed a moment ago is open again at little cost.
  void Open() override;
  void Close() override;

  // Exactly one statement, with a semicolon or without. `rowsAffected` counts the rows that it inserted, updated or
  // deleted itself, 0 for any other statement.
  std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override;
  // Read-only, it must be a statement that answers rows, else it is not run and `kBadSyntax` raised.
  std::unique_ptr<ado::Recordset> OpenRecordset(std::string_view statement, ado::CursorType cursor,
                                                ado::LockType lock) override;

 private:
  void RequireOpen() const;

  std::shared_ptr<EnginePool> pool_;
  std::string connectionString_;
  int timeoutSeconds_ = ado::kDefaultConnectionTimeout;
  std::shared_ptr<Database> database_;
};

}  // namespace twqb::sqlite
