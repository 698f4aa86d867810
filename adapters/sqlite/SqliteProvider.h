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

namespace sqlite {
class EnginePool;
}

// Unless the caller itself begins a transaction, every statement and every Update of a connection is durable when it
// returns, and between statements nobody is kept from reading or writing. From the first write on, a file is written
// ahead, where that can be had: what was written lately stands beside it in files of the same name with "-wal" and
// "-shm" behind. The last connection that closes puts all of it into the one file. Until then a host must not open the
// file but through here or through SQLite, not even to copy it: to close it would drop the locks that this process has.
// Closing a connection closes its recordsets; their pending edits are dropped.
class SqliteProvider : public ado::Provider {
 public:
  SqliteProvider();
  // A connection that is not open yet. Its Open raises `kProviderNotFound` for an unknown or missing provider name, and
  // `kCannotOpen`, with the cause, for a missing Data Source, a missing file or one that is no database.
  [[nodiscard]] std::unique_ptr<ado::Connection> CreateConnection() override;

 private:
  std::shared_ptr<sqlite::EnginePool> pool_;  // goes with the last of its connections
};

// Makes an empty database in `file`. Raises `kCannotOpen` when the file is there already or can't be written.
void CreateSqliteDatabase(const std::string& file);

}  // namespace twqb
