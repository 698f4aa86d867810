// The database seam on SQLite: the embedded default, which needs no server and no installation.
//
// A connection string reads "Provider=SQLITE;Data Source=FILE". The names SQLITE and JETLITE stand for the same engine
// and the same translation of statements; a caller tells from the name which dialect to write. Nothing here makes a
// database but CreateSqliteDatabase: opening a missing file fails.
#pragma once

#include <memory>
#include <string>

#include "platform/ado.h"

namespace twqb {

// Connections of this provider keep a rollback journal with full synchronisation: unless the caller itself begins a
// transaction, every statement and every Update is durable when it returns, and between statements the file is not
// locked and may be copied. Closing a connection closes its recordsets; their pending edits are dropped.
class SqliteProvider : public ado::Provider {
 public:
  // A connection that is not open yet. Its Open raises `kProviderNotFound` for an unknown or missing provider name, and
  // `kCannotOpen`, with the cause, for a missing Data Source, a missing file or one that is no database.
  [[nodiscard]] std::unique_ptr<ado::Connection> CreateConnection() override;
};

// Makes an empty database in `file`. Raises `kCannotOpen` when the file is there already or can't be written.
void CreateSqliteDatabase(const std::string& file);

}  // namespace twqb
