// What is taken back when it goes without being kept, whatever is lacking then.

#include "CompanyTest.h"
#include "adapters/companyfile/Sqlite.h"
#include "tests/support/LackingMemory.h"

namespace twqb::company {
namespace {

class TakenBack : public CompanyTest {
 protected:
  static bool Has(SqliteDatabase& database, std::string_view key) {
    return database.Query("SELECT 1 FROM setting WHERE key = ?", {key}).Next();
  }
};

TEST_F(TakenBack, A_transaction_is_though_there_is_no_memory) {
  file_.reset();
  SqliteDatabase database(path_);
  database.SetUp();
  {
    auto transaction = std::make_unique<SqliteTransaction>(database, SqliteTransaction::Purpose::Write);
    database.Execute("INSERT INTO setting VALUES ('gone', '1')");
    const LackingMemory lacking;
    transaction.reset();
  }
  EXPECT_FALSE(database.InTransaction());
  EXPECT_FALSE(Has(database, "gone"));
}

TEST_F(TakenBack, A_part_of_a_transaction_is_though_there_is_no_memory) {
  file_.reset();
  SqliteDatabase database(path_);
  database.SetUp();
  SqliteTransaction transaction(database, SqliteTransaction::Purpose::Write);
  database.Execute("INSERT INTO setting VALUES ('whole', '1')");
  {
    auto part = std::make_unique<SqliteSavepoint>(database);
    database.Execute("INSERT INTO setting VALUES ('part', '1')");
    const LackingMemory lacking;
    part.reset();
  }
  transaction.Commit();
  EXPECT_TRUE(Has(database, "whole"));
  EXPECT_FALSE(Has(database, "part"));
}

}  // namespace
}  // namespace twqb::company
