// What stays behind the seam of a connection that was closed, and what must not.

#include <sqlite3.h>

#include <functional>
#include <utility>

#include "WrittenAhead.h"
#include "tests/support/LackingMemory.h"
#include "tests/support/WatchedFiles.h"

namespace twqb::sqlite {
namespace {

class KeptConnections : public WriteAhead {
 protected:
  // An open connection of the one provider.
  [[nodiscard]] std::unique_ptr<ado::Connection> Opened() { return Opened(provider_); }
  [[nodiscard]] std::unique_ptr<ado::Connection> Opened(SqliteProvider& provider) const {
    auto connection = Unopened(provider, "Provider=SQLITE;Data Source=" + File());
    connection->Open();
    return connection;
  }
  [[nodiscard]] static std::unique_ptr<ado::Connection> Unopened(SqliteProvider& provider, std::string text) {
    auto connection = provider.CreateConnection();
    connection->SetConnectionString(std::move(text));
    return connection;
  }
  static std::string ScalarOf(ado::Connection& connection, std::string_view statement) {
    return ToText(connection.Execute(statement, nullptr)->FieldAt(0));
  }

  SqliteProvider provider_;
};

TEST_F(KeptConnections, A_connection_that_is_opened_for_each_row_opens_the_file_once) {
  connection_.reset();
  {
    CountedFiles files;
    SqliteProvider provider;
    const auto shared = Opened(provider);
    Add(*shared);
    const auto addRow = [&] {
      const auto own = Opened(provider);
      const auto rows = own->OpenRecordset("SELECT * FROM Kept;", ado::CursorType::Static, ado::LockType::Optimistic);
      rows->AddNew();
      rows->SetField("a", std::int64_t{1});
      rows->Update();
    };
    const int opens = WithinASecond([&] {
      shared->Execute("DELETE FROM Kept", nullptr);
      addRow();
      files.CountFromZero();
      for (int i = 0; i < 19; ++i) addRow();
      return files.Count(FileCall::Open);
    });
    EXPECT_EQ(opens, 0);
    EXPECT_EQ(Count(*shared), "20");
  }
  EXPECT_TRUE(IsPlain());
}

TEST_F(KeptConnections, Read_tables_as_others_have_changed_them) {
  const auto shared = Opened();
  const auto own = Opened();
  const auto fields = [&] {
    return own->OpenRecordset("SELECT * FROM Kept;", ado::CursorType::Static, ado::LockType::Optimistic)->FieldCount();
  };
  EXPECT_EQ(fields(), 1);
  own->Close();
  shared->Execute("ALTER TABLE Kept ADD COLUMN b TEXT", nullptr);
  own->Open();
  EXPECT_EQ(fields(), 2);
}

TEST_F(KeptConnections, Read_tables_as_they_are_once_a_change_is_done) {
  connection_.reset();
  std::function<void()> amid = [] {};
  const WatchedFiles files([&](FileCall call, std::string_view) {
    if (call == FileCall::Write) std::exchange(amid, [] {})();
    return 0;
  });
  SqliteProvider provider;
  const auto shared = Opened(provider);
  const auto own = Opened(provider);
  const auto fields = [&] {
    return own->OpenRecordset("SELECT * FROM Kept;", ado::CursorType::Static, ado::LockType::Optimistic)->FieldCount();
  };
  Add(*shared);
  EXPECT_EQ(fields(), 1);
  int meanwhile = 0;
  amid = [&] { meanwhile = fields(); };
  shared->Execute("ALTER TABLE Kept ADD COLUMN b TEXT", nullptr);
  EXPECT_EQ(meanwhile, 1) << "it was looked at while the change was being written";
  EXPECT_EQ(fields(), 2);

  shared->Execute("BEGIN", nullptr);
  shared->Execute("ALTER TABLE Kept ADD COLUMN c TEXT", nullptr);
  EXPECT_EQ(fields(), 2);
  shared->Execute("INSERT INTO Kept VALUES (1, 'b', 'c')", nullptr);
  EXPECT_EQ(fields(), 2);
  shared->Execute("END", nullptr);
  EXPECT_EQ(fields(), 3);
}

TEST_F(KeptConnections, Are_opened_without_a_lock_once_the_file_is_written_ahead) {
  connection_.reset();
  {
    CountedFiles files;
    SqliteProvider provider;
    const auto shared = Opened(provider);
    Add(*shared);
    std::unique_ptr<ado::Connection> own;
    const int locks = WithinASecond([&] {
      for (int i = 0; i < 2; ++i) {
        own = Opened(provider);
        EXPECT_EQ(Count(*own), "1");
        own->Close();
      }
      files.CountFromZero();
      own = Opened(provider);
      return files.Count(FileCall::Lock);
    });
    EXPECT_EQ(locks, 0);
    shared->Execute("ALTER TABLE Kept ADD COLUMN b TEXT", nullptr);
    const auto rows = own->OpenRecordset("SELECT * FROM Kept;", ado::CursorType::Static, ado::LockType::Optimistic);
    EXPECT_EQ(rows->FieldCount(), 2) << "what has changed shows all the same";
    own->Close();
    shared->Close();
  }
  EXPECT_TRUE(IsPlain());
}

TEST_F(KeptConnections, Cost_the_one_that_stays_in_the_file_nothing_when_they_go) {
  connection_.reset();
  // The files that are opened when the last of some connections closes, the first of which wrote.
  const auto opensAtTheEnd = [&](int connections) {
    CountedFiles files;
    SqliteProvider provider;
    std::vector<std::unique_ptr<ado::Connection>> opened;
    for (int i = 0; i < connections; ++i) opened.push_back(Opened(provider));
    Add(*opened.front());
    for (auto& connection : opened) EXPECT_NE(Count(*connection), "0");
    for (; opened.size() > 1; opened.pop_back()) opened.back()->Close();
    files.CountFromZero();
    opened.front()->Close();
    return files.Count(FileCall::Open);
  };
  const int ofOne = opensAtTheEnd(1);
  constexpr int kMoreThanAreKept = 7;
  for (const int connections : {2, 5, kMoreThanAreKept}) {
    EXPECT_EQ(opensAtTheEnd(connections), ofOne) << connections;
    EXPECT_TRUE(IsPlain());
  }
  EXPECT_EQ(RowsOfACopy(), "4");
}

TEST_F(KeptConnections, That_are_of_no_use_any_more_are_let_go_without_a_look_behind_them) {
  connection_.reset();
  {
    CountedFiles files;
    SqliteProvider provider;
    const auto shared = Opened(provider);
    Add(*shared);
    Opened(provider)->Close();
    const auto opens = [&](const std::function<void()>& body) {
      files.CountFromZero();
      body();
      return files.Count(FileCall::Open);
    };
    auto reading = Unopened(provider, "Provider=SQLITE;Data Source=" + File() + ";Mode=Read");
    EXPECT_LE(opens([&] { reading->Open(); }), 2) << "the file and its log, by itself";
    reading->Execute("PRAGMA cache_size = 10", nullptr);
    EXPECT_EQ(opens([&] { reading->Close(); }), 0);
  }
  EXPECT_TRUE(IsPlain());
}

TEST_F(KeptConnections, Have_nothing_on_them_of_what_their_last_user_set) {
  const auto shared = Opened();
  const auto fresh = ScalarOf(*shared, "PRAGMA busy_timeout");
  for (const char* statement :
       {"PRAGMA busy_timeout = 7", "PRAGMA query_only = 1", " pragma recursive_triggers = 1",
        "ATTACH DATABASE ':memory:' AS other", "CREATE TEMP TABLE Own (a INTEGER)",
        "CREATE TEMPORARY VIEW Mine AS SELECT 1", "/* kept */ PRAGMA case_sensitive_like = 1"}) {
    SCOPED_TRACE(statement);
    auto own = Opened();
    own->Execute(statement, nullptr);
    own->Close();
    own = Opened();
    EXPECT_EQ(ScalarOf(*own, "PRAGMA busy_timeout"), fresh);
    EXPECT_EQ(ScalarOf(*own, "PRAGMA query_only"), "0");
    EXPECT_EQ(ScalarOf(*own, "PRAGMA recursive_triggers"), "0");
    EXPECT_EQ(ScalarOf(*own, "SELECT 'a' LIKE 'A'"), "1");
    EXPECT_EQ(ScalarOf(*own, "SELECT count(*) FROM pragma_database_list WHERE name NOT IN ('main', 'temp')"), "0");
    EXPECT_EQ(ScalarOf(*own, "SELECT count(*) FROM sqlite_temp_schema"), "0");
  }
}

TEST_F(KeptConnections, Are_closed_though_there_is_no_memory) {
  for (const bool another : {false, true}) {
    auto shared = another ? Opened() : nullptr;
    auto own = Opened();
    Add(*own);
    {
      const LackingMemory lacking;
      own.reset();
    }
    shared.reset();
    Opened()->Close();
    EXPECT_TRUE(IsPlain());
  }
  EXPECT_EQ(RowsOfACopy(), "2");
}

}  // namespace
}  // namespace twqb::sqlite
