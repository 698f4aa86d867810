#include "adapters/sqlite/SqliteProvider.h"

#include "adapters/sqlite/Database.h"
#include "adapters/sqlite/SqliteConnection.h"

namespace twqb {

std::unique_ptr<ado::Connection> SqliteProvider::CreateConnection() {
  return std::make_unique<sqlite::SqliteConnection>();
}

void CreateSqliteDatabase(const std::string& file) { sqlite::Database::Create(file); }

}  // namespace twqb
