// Who puts a file in order when something comes between, and what is told of a log that can't be read.

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "WrittenAhead.h"
#include "adapters/storage/EndingTurn.h"
#include "adapters/storage/Opening.h"
#include "adapters/storage/Replaceable.h"
#include "adapters/storage/StillDatabase.h"
#include "adapters/storage/WriteAhead.h"
#include "tests/support/WatchedFiles.h"

namespace twqb::sqlite {
namespace {

class AtTheEnd : public WriteAhead {
 protected:
  // A handle of another program's, which knows nothing of logs and order.
  struct OthersCloser {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  using Other = std::unique_ptr<sqlite3, OthersCloser>;
  [[nodiscard]] Other OpenedByAnother() const {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(File().c_str(), &opened), SQLITE_OK);
    return Other(opened);
  }
  static int Run(const Other& other, const char* sql) {
    return sqlite3_exec(other.get(), sql, nullptr, nullptr, nullptr);
  }
  // Whether it can be done so fast: a machine that is busy may take longer at times, but not each time.
  static bool IsDoneWithin(std::chrono::steady_clock::duration limit, const std::function<void()>& body) {
    constexpr int kAttempts = 3;
    for (int i = 0; i < kAttempts; ++i) {
      const auto begin = std::chrono::steady_clock::now();
      body();
      if (std::chrono::steady_clock::now() - begin < limit) return true;
    }
    return false;
  }
  // A program that was killed has left a row in the log.
  void LeaveALog() {
    ASSERT_EQ(InAnotherProcess([&] {
                const auto connection = Connect();
                Add(*connection);
                std::raise(SIGKILL);
              }),
              SIGKILL);
    ASSERT_TRUE(HasLog());
  }
};

TEST_F(AtTheEnd, A_file_is_in_order_wherever_the_memory_for_the_index_began_to_lack) {
  constexpr int kMostCalls = 12;
  int calls = 0;
  int last = 0;
  for (int lacking = 1; lacking <= kMostCalls; ++lacking) {
    SCOPED_TRACE(lacking);
    int rows = 0;
    {
      const WatchedFiles files([&](FileCall call, std::string_view) {
        return call == FileCall::MapIndex && ++calls >= lacking ? SQLITE_IOERR_SHMMAP : SQLITE_OK;
      });
      calls = 0;
      const auto connection = Connect();
      for (int i = 0; i < 3; ++i) {
        try {
          Add(*connection);
          ++rows;
        } catch (const PlatformError&) {
          // It was refused; what was not is there.
        }
      }
      last = calls;
    }
    EXPECT_TRUE(IsPlain());
    EXPECT_EQ(RowsOfACopy(), std::to_string(rows));
    connection_->Open();
    Execute("DELETE FROM Kept");
    connection_->Close();
  }
  EXPECT_LT(last, kMostCalls) << "the last rounds lacked nothing";
}

TEST_F(AtTheEnd, Who_only_looked_before_another_died_in_the_file_puts_it_in_order) {
  connection_->Open();
  EXPECT_EQ(Count(*connection_), "0");
  LeaveALog();
  connection_->Close();
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "1");
}

TEST_F(AtTheEnd, Who_is_kept_from_looking_looks_again) {
  auto other = OpenedByAnother();
  ASSERT_EQ(Run(other, "PRAGMA journal_mode = WAL"), SQLITE_OK);
  other.reset();
  ASSERT_FALSE(IsPlain()) << "so that program leaves it";
  sqlite3* idle = nullptr;
  ASSERT_EQ(storage::Open(File(), SQLITE_OPEN_READWRITE, &idle), SQLITE_OK);
  // A process that is putting the file in order, and dies of it.
  std::array<int, 2> ready{};
  ASSERT_EQ(pipe(ready.data()), 0);
  const pid_t child = fork();
  if (child == 0) {
    constexpr off_t kEnginesLocks = 0x40000000;
    constexpr off_t kHowMany = 512;
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kEnginesLocks;
    lock.l_len = kHowMany;
    const char mark = '+';
    if (fcntl(open(File().c_str(), O_RDWR), F_SETLK, &lock) != 0 || write(ready[1], &mark, 1) != 1) _exit(1);
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    _exit(0);
  }
  char mark = 0;
  ASSERT_EQ(read(ready[0], &mark, 1), 1);
  storage::CloseInOrder(idle);
  EXPECT_TRUE(IsPlain());
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST_F(AtTheEnd, Nobody_waits_for_one_that_is_suspended_in_its_turn_where_there_is_nothing_to_end) {
  const storage::EndingTurn suspended(File());
  EXPECT_TRUE(IsDoneWithin(std::chrono::milliseconds(500), [&] {
    connection_->Open();
    EXPECT_EQ(Count(*connection_), "0");
    connection_->Close();
  }));
}

TEST_F(AtTheEnd, Who_has_waited_for_one_that_is_suspended_in_its_turn_does_not_wait_again) {
  connection_->Open();
  Add(*connection_);
  {
    const storage::EndingTurn suspended(File());
    // The turn is waited for a second, and was for another with each look behind.
    EXPECT_TRUE(IsDoneWithin(std::chrono::seconds(2), [&] {
      sqlite3* closing = nullptr;
      EXPECT_EQ(storage::Open(File(), SQLITE_OPEN_READWRITE, &closing), SQLITE_OK);
      storage::CloseInOrder(closing);
    }));
  }
  connection_->Close();
  EXPECT_TRUE(IsPlain());
}

TEST_F(AtTheEnd, A_log_is_taken_into_the_file_where_no_memory_is_shared) {
  connection_.reset();
  LeaveALog();
  {
    const WatchedFiles files([](FileCall, std::string_view) { return SQLITE_OK; }, SharedMemory::No);
    const auto connection = Connect();
    EXPECT_EQ(Count(*connection), "1");
  }
  EXPECT_TRUE(IsPlain());
}

TEST_F(AtTheEnd, A_log_that_others_write_to_is_not_read_where_no_memory_is_shared) {
  connection_.reset();
  std::array<int, 2> ready{};
  std::array<int, 2> gate{};
  ASSERT_EQ(pipe(ready.data()), 0);
  ASSERT_EQ(pipe(gate.data()), 0);
  const pid_t child = fork();
  if (child == 0) {
    alarm(60);
    close(gate[1]);
    char mark = '+';
    const auto connection = Connect();
    Add(*connection);
    if (write(ready[1], &mark, 1) != 1 || read(gate[0], &mark, 1) != 0) _exit(1);
    connection->Close();
    _exit(0);
  }
  close(gate[0]);
  char mark = 0;
  ASSERT_EQ(read(ready[0], &mark, 1), 1);
  {
    const WatchedFiles files([](FileCall, std::string_view) { return SQLITE_OK; }, SharedMemory::No);
    const auto told = Description([&] { (void)Connect(); });
    EXPECT_NE(told.find("open it on the machine on whose disk it stands"), std::string::npos) << told;
  }
  EXPECT_TRUE(HasLog());
  // Where write-ahead is not to be had, files are opened by a layer that has the same done to it.
  sqlite3* unshared = nullptr;
  ASSERT_EQ(storage::Open(File(), SQLITE_OPEN_READWRITE, storage::SharedMemory::No, &unshared), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(unshared, "SELECT count(*) FROM Kept", nullptr, nullptr, nullptr), SQLITE_CANTOPEN);
  close(gate[1]);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(sqlite3_exec(unshared, "SELECT count(*) FROM Kept; INSERT INTO Kept VALUES (2)", nullptr, nullptr, nullptr),
            SQLITE_OK)
      << "in its ordinary form it serves";
  sqlite3_close_v2(unshared);
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "2");
}

TEST_F(AtTheEnd, Of_a_log_where_nothing_can_be_written_it_is_told_what_to_do) {
  connection_.reset();
  LeaveALog();
  std::filesystem::remove(File() + "-shm");
  // In a process of its own, which may be anybody's: an administrator may write everywhere.
  EXPECT_EQ(InAnotherProcess([&] {
              for (const auto& file : std::filesystem::directory_iterator(folder_)) ::chmod(file.path().c_str(), 0444);
              ::chmod(folder_.c_str(), 0555);
              constexpr uid_t kNobody = 65534;
              if (::geteuid() == 0 && ::setuid(kNobody) != 0) _exit(2);
              const auto told = Description([&] { (void)Connect(); });
              _exit(told.find("into a folder that can be written, and open the copy") != std::string::npos ? 0 : 1);
            }),
            0);
  ::chmod(folder_.c_str(), 0755);
  for (const auto& file : std::filesystem::directory_iterator(folder_)) ::chmod(file.path().c_str(), 0644);
  EXPECT_TRUE(HasLog());
  EXPECT_EQ(Count(*Connect()), "1");
}

class Copies : public AtTheEnd {
 protected:
  [[nodiscard]] std::string Copy() const {
    auto path = PathTo("copy.db");
    std::ofstream(path, std::ios::binary).flush();
    return path;
  }
};

TEST_F(Copies, Are_whole_while_others_write) {
  EXPECT_FALSE(storage::StillDatabase(File()).HasLog()) << "at rest its bytes are all of it";
  connection_->Open();
  for (int i = 0; i < 30; ++i) Add(*connection_);
  {
    const storage::StillDatabase still(File());
    Add(*connection_);  // nobody waits for the copy
    ASSERT_TRUE(still.HasLog());
    ASSERT_TRUE(still.CopyTo(Copy()));
    EXPECT_TRUE(SaysPlain(PathTo("copy.db")));
    EXPECT_EQ(RowsOf(PathTo("copy.db")), "30");
  }
  EXPECT_EQ(Count(*connection_), "31");
  connection_->Close();
  EXPECT_TRUE(IsPlain());
}

TEST_F(Copies, Are_made_where_no_memory_is_shared_though_a_dead_process_left_a_log) {
  connection_.reset();
  LeaveALog();
  {
    const WatchedFiles files([](FileCall, std::string_view) { return SQLITE_OK; }, SharedMemory::No);
    const storage::StillDatabase still(File());
    EXPECT_FALSE(still.CouldNotBeHeld());
    ASSERT_TRUE(still.IsHeld());
    EXPECT_FALSE(still.HasLog());
    EXPECT_EQ(RowsOfACopy(), "1");
  }
  EXPECT_TRUE(IsPlain());
}

TEST_F(Copies, Find_all_of_the_file_that_they_replace_in_the_one_file_before_it_is_replaced) {
  connection_.reset();
  LeaveALog();
  EXPECT_TRUE(storage::MakeReplaceable(File()));
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "1");
}

TEST_F(Copies, Take_back_what_a_dead_process_had_not_done_in_the_file_that_they_replace) {
  connection_.reset();
  EXPECT_EQ(InAnotherProcess([&] {
              const auto other = OpenedByAnother();
              // A page goes to the file ahead of the end.
              Run(other, "PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN; INSERT INTO Kept VALUES (1)");
              Run(other,
                  "CREATE TABLE Large AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 99)"
                  " SELECT randomblob(4000) FROM n");
              std::raise(SIGKILL);
            }),
            SIGKILL);
  ASSERT_TRUE(std::filesystem::exists(File() + "-journal"));
  EXPECT_TRUE(storage::MakeReplaceable(File()));
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "0");
}

TEST_F(Copies, Do_not_replace_a_file_that_somebody_writes_to) {
  connection_->Open();
  Add(*connection_);
  EXPECT_FALSE(storage::MakeReplaceable(File()));
  EXPECT_TRUE(HasLog());
  EXPECT_EQ(Count(*connection_), "1");
  connection_->Close();
  EXPECT_TRUE(IsPlain());

  const auto other = OpenedByAnother();
  ASSERT_EQ(Run(other, "BEGIN; INSERT INTO Kept VALUES (2)"), SQLITE_OK);
  EXPECT_FALSE(storage::MakeReplaceable(File()));
  ASSERT_EQ(Run(other, "COMMIT; PRAGMA journal_mode = PERSIST; INSERT INTO Kept VALUES (3)"), SQLITE_OK);
  ASSERT_TRUE(std::filesystem::exists(File() + "-journal"));
  EXPECT_TRUE(storage::MakeReplaceable(File())) << "what is beside it has served";
  EXPECT_EQ(RowsOfACopy(), "3");
}

TEST_F(Copies, Leave_what_is_beside_the_file_behind_a_link_that_they_replace) {
  const auto link = PathTo("link.db");
  std::filesystem::create_symlink(File(), link);
  connection_->Open();
  Add(*connection_);
  std::ofstream(link + "-wal") << "left by one that is gone";
  EXPECT_TRUE(storage::MakeReplaceable(link));
  EXPECT_FALSE(std::filesystem::exists(link + "-wal"));
  EXPECT_TRUE(HasLog());
}

TEST_F(Copies, Are_not_made_of_pages_that_can_not_be_read_or_written) {
  connection_.reset();
  std::atomic<int> reads = 0;
  int unreadable = 0;  // by its number; none
  bool isFull = false;
  const WatchedFiles files(
      [&](FileCall call, std::string_view path) {
        const bool isCopy = path.find("copy.db") != std::string_view::npos;
        if (call == FileCall::Read && !isCopy && ++reads == unreadable) return SQLITE_IOERR_READ;
        return call == FileCall::Write && isCopy && isFull ? SQLITE_FULL : SQLITE_OK;
      },
      SharedMemory::Yes, Reads::Told);
  const auto connection = Connect();
  for (int i = 0; i < 50; ++i) {
    connection->Execute("INSERT INTO Kept VALUES (randomblob(4000))", nullptr);
  }
  {
    const storage::StillDatabase still(File());
    reads = 0;
    EXPECT_TRUE(still.CopyTo(Copy()));
    EXPECT_GT(reads, 40);
    EXPECT_EQ(RowsOf(PathTo("copy.db")), "50");
  }
  const storage::StillDatabase still(File());
  reads = 0;
  unreadable = 20;
  EXPECT_FALSE(still.CopyTo(Copy()));
  unreadable = 0;
  isFull = true;
  EXPECT_FALSE(still.CopyTo(Copy()));
  isFull = false;
  EXPECT_TRUE(still.CopyTo(Copy()));
  EXPECT_EQ(RowsOf(PathTo("copy.db")), "50");
}

}  // namespace
}  // namespace twqb::sqlite
