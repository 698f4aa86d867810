// How BillingDb stands on the disk: written ahead while somebody writes to it, one plain file at rest, and whole for
// whoever comes next, however the one before ended.

#include <sqlite3.h>

#include <array>
#include <chrono>
#include <csignal>
#include <thread>

#include "WrittenAhead.h"
#include "tests/support/WatchedFiles.h"

namespace twqb::sqlite {
namespace {

TEST_F(WriteAhead, Begins_with_the_first_write_and_ends_with_the_last_close) {
  EXPECT_TRUE(IsPlain());
  connection_->Open();
  EXPECT_EQ(Count(*connection_), "0");
  EXPECT_TRUE(IsPlain()) << "who only reads changes nothing";
  Add(*connection_);
  EXPECT_TRUE(HasLog());
  EXPECT_EQ(Scalar("PRAGMA synchronous"), "3") << "every statement is durable";
  connection_->Close();
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "1");
}

TEST_F(WriteAhead, Begins_with_a_row_that_a_recordset_writes) {
  connection_->Open();
  const auto rows = OpenTable("Kept");
  EXPECT_TRUE(IsPlain());
  rows->AddNew();
  rows->SetField("a", std::int64_t{7});
  rows->Update();
  EXPECT_TRUE(HasLog());
  connection_->Close();
  EXPECT_TRUE(IsPlain()) << "though the recordset is still there";
}

TEST_F(WriteAhead, Is_left_alone_by_one_transaction_of_the_caller) {
  connection_->Open();
  Execute("BEGIN");
  Add(*connection_);
  Execute("COMMIT");
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "1");
}

TEST_F(WriteAhead, Ends_with_the_last_of_several_connections_whoever_made_them) {
  connection_->Open();
  const auto other = Connect();  // of a provider of its own
  SqliteProvider provider;
  const auto first = provider.CreateConnection();
  const auto second = provider.CreateConnection();
  for (auto* connection : {first.get(), second.get()}) {
    connection->SetConnectionString("Provider=SQLITE;Data Source=" + File());
    connection->Open();
  }
  for (auto* connection : {connection_.get(), other.get(), first.get(), second.get()}) Add(*connection);
  for (auto* connection : {second.get(), connection_.get(), first.get()}) {
    connection->Close();
    EXPECT_TRUE(HasLog());
  }
  EXPECT_EQ(Count(*other), "4");
  other->Close();
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "4");
}

TEST_F(WriteAhead, Ends_with_one_that_only_reads_when_that_is_the_last) {
  connection_->Open();
  Add(*connection_);
  const auto reading = Unopened("Provider=SQLITE;Data Source=" + File() + ";Mode=Read");
  reading->Open();
  EXPECT_EQ(Count(*reading), "1");
  connection_->Close();
  EXPECT_TRUE(HasLog());
  EXPECT_NE(Raised([&] { Add(*reading); }), 0);
  reading->Close();
  EXPECT_TRUE(IsPlain());
}

TEST_F(WriteAhead, Ends_though_a_connection_goes_without_being_closed) {
  connection_->Open();
  Add(*connection_);
  connection_.reset();
  EXPECT_TRUE(IsPlain());
}

TEST_F(WriteAhead, Is_taken_up_whole_from_a_process_that_was_killed) {
  for (const char* mode : {"", ";Mode=Read"}) {
    std::filesystem::remove(File());
    CreateSqliteDatabase(File());
    ASSERT_EQ(InAnotherProcess([&] {
                const auto connection = Connect();
                connection->Execute("CREATE TABLE Kept (a INTEGER)", nullptr);
                for (int i = 0; i < 50; ++i) Add(*connection);
                std::raise(SIGKILL);
              }),
              SIGKILL);
    ASSERT_TRUE(HasLog());
    const auto next = Unopened("Provider=SQLITE;Data Source=" + File() + mode);
    next->Open();
    EXPECT_TRUE(IsPlain()) << "alone in the file, the next one puts it in order at once";
    EXPECT_EQ(Count(*next), "50");
    next->Close();
    EXPECT_EQ(RowsOfACopy(), "50");
  }
}

TEST_F(WriteAhead, Of_a_file_that_was_put_in_its_place_leaves_the_log_to_that_one) {
  auto old = Unopened("Provider=SQLITE;Data Source=" + File());
  old->Open();
  old->Execute("INSERT INTO Kept VALUES (1)", nullptr);
  for (const char* suffix : {"", "-wal", "-shm"}) {
    std::filesystem::rename(File() + suffix, PathTo("gone.db") + suffix);
  }
  std::filesystem::copy_file(PathTo("gone.db"), File());
  EXPECT_EQ(InAnotherProcess([&] {
              auto other = Unopened("Provider=SQLITE;Data Source=" + File());
              other->Open();
              other->Execute("CREATE TABLE IF NOT EXISTS Kept (a INTEGER)", nullptr);
              other->Execute("INSERT INTO Kept VALUES (77)", nullptr);
              std::raise(SIGKILL);
            }),
            SIGKILL);
  ASSERT_TRUE(HasLog());
  old->Close();
  EXPECT_TRUE(HasLog());
  connection_->Open();
  EXPECT_EQ(Scalar("SELECT count(*) FROM Kept WHERE a = 77"), "1");
}

TEST_F(WriteAhead, Of_two_processes_ends_with_the_last) {
  connection_->Open();
  Add(*connection_);
  EXPECT_EQ(InAnotherProcess([&] {
              const auto other = Connect();
              Add(*other);
              if (Count(*other) != "2") _exit(1);
              other->Close();
            }),
            0);
  EXPECT_TRUE(HasLog());
  EXPECT_EQ(Count(*connection_), "2");
  connection_->Close();
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "2");
}

TEST_F(WriteAhead, Ends_when_several_processes_close_at_the_same_moment) {
  constexpr int kRounds = 25;
  constexpr int kProcesses = 3;
  for (int round = 1; round <= kRounds; ++round) {
    std::array<int, 2> ready{};
    std::array<int, 2> gate{};
    ASSERT_EQ(pipe(ready.data()), 0);
    ASSERT_EQ(pipe(gate.data()), 0);
    std::array<pid_t, kProcesses> children{};
    for (auto& child : children) {
      child = fork();
      if (child != 0) continue;
      alarm(60);
      close(gate[1]);
      const auto connection = Connect();
      Add(*connection);
      char mark = '+';
      if (write(ready[1], &mark, 1) != 1) _exit(1);
      if (read(gate[0], &mark, 1) != 0) _exit(1);  // its end
      connection->Close();
      _exit(0);
    }
    close(gate[0]);
    char mark = 0;
    for (int i = 0; i < kProcesses; ++i) ASSERT_EQ(read(ready[0], &mark, 1), 1);
    close(gate[1]);
    for (const auto child : children) {
      int status = 0;
      waitpid(child, &status, 0);
      EXPECT_EQ(status, 0);
    }
    close(ready[0]);
    close(ready[1]);
    ASSERT_TRUE(IsPlain()) << "round " << round;
    ASSERT_EQ(RowsOfACopy(), std::to_string(round * kProcesses));
  }
}

TEST_F(WriteAhead, Waits_while_another_program_reads_the_ordinary_form) {
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(File().c_str(), &other), SQLITE_OK);
  const auto run = [&](const char* sql) { return sqlite3_exec(other, sql, nullptr, nullptr, nullptr); };
  int added = 0;
  const auto add = [&] {
    Add(*connection_);
    ++added;
    return IsPlain();
  };
  using Plain = std::array<bool, 2>;
  const auto plain = WithinASecond([&]() -> Plain {
    if (connection_->State() == ado::ObjectState::Open) connection_->Close();
    EXPECT_EQ(run("BEGIN; SELECT count(*) FROM Kept"), SQLITE_OK);
    std::thread reader([&] {
      // It waits for the reader as it always did, with all that it will write in its journal.
      while (!std::filesystem::exists(File() + "-journal")) std::this_thread::yield();
      EXPECT_EQ(run("COMMIT"), SQLITE_OK);
    });
    connection_->Open();
    const bool first = add();
    reader.join();
    return {first, add()};
  });
  EXPECT_EQ(plain, (Plain{true, true})) << "it is not tried at each statement";
  std::this_thread::sleep_for(std::chrono::milliseconds(1050));
  Add(*connection_);
  EXPECT_TRUE(HasLog()) << "but again after a while";
  EXPECT_EQ(run("INSERT INTO Kept VALUES (2)"), SQLITE_OK) << "the other one comes along";
  const auto rows = std::to_string(added + 2);
  EXPECT_EQ(Count(*connection_), rows);
  connection_->Close();
  sqlite3_close(other);
  connection_->Open();
  connection_->Close();
  EXPECT_TRUE(IsPlain()) << "what the other program left so, the next one puts in order";
  EXPECT_EQ(RowsOfACopy(), rows);
}

TEST_F(WriteAhead, Is_given_up_without_a_word_where_its_index_cannot_be_shared) {
  connection_.reset();
  {
    const WatchedFiles files(
        [](FileCall call, std::string_view) { return call == FileCall::MapIndex ? SQLITE_IOERR_SHMMAP : SQLITE_OK; });
    const auto connection = Connect();
    Add(*connection);
    Add(*connection);
    EXPECT_TRUE(IsPlain());
    EXPECT_EQ(Count(*connection), "2");
  }
  EXPECT_EQ(RowsOfACopy(), "2");
}

TEST_F(WriteAhead, Is_not_begun_where_files_have_no_shared_memory) {
  connection_.reset();
  {
    const WatchedFiles files([](FileCall, std::string_view) { return SQLITE_OK; }, SharedMemory::No);
    const auto connection = Connect();
    Add(*connection);
    EXPECT_TRUE(IsPlain());
  }
  EXPECT_EQ(RowsOfACopy(), "1");
}

TEST_F(WriteAhead, Costs_a_statement_one_durable_write_and_opens_nothing) {
  connection_.reset();
  {
    CountedFiles files;
    const auto connection = Connect();
    Add(*connection);
    files.CountFromZero();
    constexpr int kStatements = 20;
    for (int i = 0; i < kStatements; ++i) Add(*connection);
    EXPECT_EQ(files.Count(FileCall::Sync) + files.Count(FileCall::SyncDirectory), kStatements);
    EXPECT_EQ(files.Count(FileCall::Open), 0);
    EXPECT_LE(files.Count(FileCall::Lock), 2 * kStatements);
  }
}

}  // namespace
}  // namespace twqb::sqlite
