#include "adapters/sqlite/SqliteProvider.h"

#include "adapters/sqlite/Database.h"
#include "adapters/sqlite/SqliteConnection.h"

namespace twqb {

SqliteProvider::SqliteProvider() : pool_(std::make_shared<sqlite::EnginePool>()) {}

std::unique_ptr<ado::Connection> SqliteProvider::CreateConnection() {
  return std::make_unique<sqlite::SqliteConnection>(pool_);
}

void CreateSqliteDatabase(const std::string& file) { sqlite::Database::Create(file); }

}  // namespace twqb
