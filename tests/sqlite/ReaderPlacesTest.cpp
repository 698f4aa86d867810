// That a connection keeps its place among the readers of a log from one statement to the next: what it saves, that it
// hides nothing, and that nobody is kept from carrying the log over.

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "WrittenAhead.h"
#include "adapters/storage/ReaderPlace.h"
#include "tests/support/WatchedFiles.h"

namespace twqb::sqlite {
namespace {

// A process of its own that does what it is asked, one thing after the other, until this goes. To be made while no
// database is open: a process must not take open ones along.
class Helper {
 public:
  explicit Helper(const std::function<int(char)>& answer) {
    std::array<int, 2> questions{};
    std::array<int, 2> answers{};
    if (pipe(questions.data()) != 0 || pipe(answers.data()) != 0) throw std::runtime_error("no pipe");
    child_ = fork();
    if (child_ == 0) {
      alarm(120);
      close(questions[1]);
      char question = 0;
      while (read(questions[0], &question, 1) == 1) {
        const int number = answer(question);
        if (write(answers[1], &number, sizeof number) != sizeof number) _exit(1);
      }
      _exit(0);
    }
    close(questions[0]);
    close(answers[1]);
    questions_ = questions[1];
    answers_ = answers[0];
  }
  ~Helper() {
    close(questions_);
    close(answers_);
    waitpid(child_, nullptr, 0);
  }
  Helper(const Helper&) = delete;
  Helper& operator=(const Helper&) = delete;

  // What it answers; -1 when it is gone.
  [[nodiscard]] int Ask(char question) const {
    int number = -1;
    if (write(questions_, &question, 1) != 1 || read(answers_, &number, sizeof number) != sizeof number) return -1;
    return number;
  }
  // The signal that it died of.
  [[nodiscard]] int Kill() const {
    int status = 0;
    kill(child_, SIGKILL);
    waitpid(child_, &status, 0);
    return WTERMSIG(status);
  }

 private:
  pid_t child_ = -1;
  int questions_ = -1;
  int answers_ = -1;
};

class ReaderPlaces : public WriteAhead {
 protected:
  // A connection to the file in a process of its own, which opens it with the first question.
  [[nodiscard]] std::unique_ptr<Helper> Other() const {
    return std::make_unique<Helper>([this, connection = std::shared_ptr<ado::Connection>()](char question) mutable {
      if (!connection) connection = Hasty();
      if (question == 'a') Add(*connection);
      if (question == 'b') connection->Execute("BEGIN", nullptr);
      if (question == 'e') connection->Execute("COMMIT", nullptr);
      if (question == 'g') storage::GiveBackKeptPlaces();
      if (question == 'x') connection->Close();
      return question == 'g' || question == 'x' ? 0 : std::stoi(Count(*connection));
    });
  }
  // A connection that does not wait for the disk: many rows are written here.
  [[nodiscard]] std::unique_ptr<ado::Connection> Hasty() const {
    auto connection = Connect();
    connection->Execute("PRAGMA synchronous = OFF", nullptr);
    return connection;
  }
  // What another program in this process, which knows nothing of places that are kept, is answered when it wants the
  // whole log in the file.
  [[nodiscard]] int CarriesOver(int how = SQLITE_CHECKPOINT_TRUNCATE, int patience = 0) const {
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open(File().c_str(), &handle), SQLITE_OK);
    sqlite3_busy_timeout(handle, patience);
    EXPECT_EQ(sqlite3_exec(handle, "SELECT count(*) FROM Kept", nullptr, nullptr, nullptr), SQLITE_OK);
    const int code = sqlite3_wal_checkpoint_v2(handle, "main", how, nullptr, nullptr);
    sqlite3_close(handle);
    return code;
  }
  [[nodiscard]] std::uintmax_t SizeOfLog() const {
    std::error_code none;
    const auto size = std::filesystem::file_size(File() + "-wal", none);
    return none ? 0 : size;
  }
  static constexpr int kMany = 20'000;
  // Of two logs that are as long as they may get; many rows written come to ten times that, or more.
  static constexpr std::uintmax_t kTwoLogs = 2ULL * storage::kLongLog * 4'120;
};

TEST_F(ReaderPlaces, Cost_a_reading_no_call_and_a_writing_those_of_the_writer) {
  connection_.reset();
  CountedFiles files;
  const auto connection = Connect();
  Add(*connection);
  Add(*connection);
  EXPECT_EQ(Count(*connection), "2");
  files.CountFromZero();
  constexpr int kStatements = 20;
  for (int i = 0; i < kStatements; ++i) EXPECT_EQ(Count(*connection), "2");
  EXPECT_EQ(files.Count(FileCall::Lock), 0);
  for (int i = 0; i < kStatements; ++i) Add(*connection);
  EXPECT_EQ(files.Count(FileCall::Lock), 2 * kStatements);
}

TEST_F(ReaderPlaces, Are_moved_now_and_then) {
  connection_.reset();
  CountedFiles files;
  const auto connection = Connect();
  Add(*connection);
  files.CountFromZero();
  constexpr int kStatements = 200;
  for (int i = 0; i < kStatements; ++i) Add(*connection);
  EXPECT_GT(files.Count(FileCall::Lock), 2 * kStatements);
  EXPECT_LT(files.Count(FileCall::Lock), 2 * kStatements + 20);
}

TEST_F(ReaderPlaces, Hide_nothing_that_another_process_writes) {
  const auto other = Other();
  connection_->Open();
  int rows = 0;
  for (int turn = 0; turn < 300; ++turn) {
    Add(*connection_);
    ASSERT_EQ(other->Ask('c'), ++rows);
    ASSERT_EQ(other->Ask('a'), ++rows);
    ASSERT_EQ(Count(*connection_), std::to_string(rows));
  }
  connection_->Close();
  EXPECT_TRUE(HasLog());
  EXPECT_EQ(other->Ask('x'), 0);
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), std::to_string(rows));
}

TEST_F(ReaderPlaces, Hide_nothing_that_another_connection_of_the_process_writes) {
  const std::array all = {Hasty(), Hasty(), Hasty(), Hasty(), Hasty(), Hasty()};
  int rows = 0;
  for (int turn = 0; turn < 300; ++turn) {
    for (const auto& connection : all) {
      Add(*connection);
      ++rows;
      for (const auto& reading : all) ASSERT_EQ(Count(*reading), std::to_string(rows));
    }
  }
  for (const auto& connection : all) connection->Close();
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), std::to_string(rows));
}

TEST_F(ReaderPlaces, Do_not_move_under_a_transaction_that_reads_in_another_process) {
  const auto other = Other();
  connection_->Open();
  Add(*connection_);
  EXPECT_EQ(other->Ask('c'), 1);
  EXPECT_EQ(other->Ask('b'), 1);
  for (int i = 0; i < 200; ++i) Add(*connection_);
  EXPECT_EQ(CarriesOver(SQLITE_CHECKPOINT_FULL), SQLITE_BUSY) << "what the transaction reads stays what it was";
  EXPECT_EQ(other->Ask('c'), 1);
  EXPECT_EQ(Count(*connection_), "201");
  EXPECT_EQ(other->Ask('e'), 201);
  EXPECT_EQ(other->Ask('a'), 202);
  EXPECT_EQ(Count(*connection_), "202");
}

TEST_F(ReaderPlaces, Of_an_idle_connection_are_given_back_to_one_of_the_process_that_carries_over) {
  connection_->Open();
  const auto idle = Hasty();
  const auto writing = Hasty();
  Add(*writing);
  EXPECT_EQ(Count(*idle), "1");
  Add(*writing);
  const auto rows = writing->Execute("PRAGMA wal_checkpoint(TRUNCATE)", nullptr);
  EXPECT_EQ(ToText(rows->FieldAt(0)), "0") << "nobody was in the way";
  EXPECT_EQ(SizeOfLog(), 0U);
  EXPECT_EQ(Count(*idle), "2");
  Add(*idle);
  EXPECT_EQ(Count(*writing), "3");
}

TEST_F(ReaderPlaces, Of_another_process_are_in_the_way_until_it_reads_on_or_gives_them_back) {
  const auto other = Other();
  connection_->Open();
  Add(*connection_);
  EXPECT_EQ(other->Ask('c'), 1);
  Add(*connection_);
  storage::GiveBackKeptPlaces();
  ASSERT_EQ(CarriesOver(), SQLITE_BUSY);
  int asked = 0;
  int code = SQLITE_BUSY;
  for (; code == SQLITE_BUSY && asked < 100; ++asked) {
    EXPECT_EQ(other->Ask('c'), 2);
    code = CarriesOver(SQLITE_CHECKPOINT_FULL);
  }
  EXPECT_EQ(code, SQLITE_OK) << "the place moves with what is read";
  EXPECT_EQ(other->Ask('c'), 2);
  EXPECT_EQ(CarriesOver(), SQLITE_OK);

  Add(*connection_);
  EXPECT_EQ(other->Ask('c'), 3);
  Add(*connection_);
  storage::GiveBackKeptPlaces();
  ASSERT_EQ(CarriesOver(), SQLITE_BUSY);
  EXPECT_EQ(other->Ask('g'), 0);
  EXPECT_EQ(CarriesOver(), SQLITE_OK);
}

TEST_F(ReaderPlaces, Of_an_idle_connection_are_given_back_when_one_of_the_process_waits_for_who_waits_for_them) {
  constexpr int kPatience = 20'000;  // milliseconds
  connection_->Open();
  const auto idle = Hasty();
  Add(*connection_);
  EXPECT_EQ(Count(*idle), "1");
  Add(*connection_);
  int rows = 2;
  std::atomic<bool> hasEnded = false;
  int code = SQLITE_BUSY;
  // It has the writer's right while it waits for the place of the idle one.
  std::thread other([&] {
    code = CarriesOver(SQLITE_CHECKPOINT_TRUNCATE, kPatience);
    hasEnded = true;
  });
  while (!hasEnded) {
    Add(*connection_);
    ++rows;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  other.join();
  EXPECT_EQ(code, SQLITE_OK);
  EXPECT_EQ(Count(*idle), std::to_string(rows));
}

TEST_F(ReaderPlaces, Go_with_the_process_that_is_killed) {
  const auto other = Other();
  connection_->Open();
  Add(*connection_);
  EXPECT_EQ(other->Ask('a'), 2);
  Add(*connection_);
  storage::GiveBackKeptPlaces();
  ASSERT_EQ(CarriesOver(), SQLITE_BUSY);
  EXPECT_EQ(other->Kill(), SIGKILL);
  EXPECT_EQ(CarriesOver(), SQLITE_OK);
  EXPECT_EQ(Count(*connection_), "3");
  connection_->Close();
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), "3");
}

TEST_F(ReaderPlaces, Let_a_log_be_begun_anew_that_two_processes_write) {
  const auto other = Other();
  const auto connection = Hasty();
  std::uintmax_t longest = 0;
  for (int i = 0; i < kMany; ++i) {
    Add(*connection);
    ASSERT_GT(other->Ask('a'), 0);
    longest = std::max(longest, SizeOfLog());
  }
  EXPECT_LT(longest, kTwoLogs);
  EXPECT_EQ(Count(*connection), std::to_string(2 * kMany));
  EXPECT_EQ(other->Ask('x'), 0);
  connection->Close();
  EXPECT_TRUE(IsPlain());
  EXPECT_EQ(RowsOfACopy(), std::to_string(2 * kMany));
}

TEST_F(ReaderPlaces, Let_a_log_be_begun_anew_that_one_process_writes_and_another_reads) {
  const auto other = Other();
  const auto connection = Hasty();
  std::uintmax_t longest = 0;
  for (int i = 1; i <= kMany; ++i) {
    Add(*connection);
    if (i % 7 == 0) {
      ASSERT_EQ(other->Ask('c'), i);
    }
    longest = std::max(longest, SizeOfLog());
  }
  EXPECT_LT(longest, kTwoLogs);
}

TEST_F(ReaderPlaces, Let_a_log_be_begun_anew_beside_an_idle_connection_of_the_process) {
  connection_->Open();
  const auto connection = Hasty();
  Add(*connection);
  EXPECT_EQ(Count(*connection_), "1");
  std::uintmax_t longest = 0;
  for (int i = 1; i < kMany; ++i) {
    Add(*connection);
    longest = std::max(longest, SizeOfLog());
  }
  EXPECT_LT(longest, kTwoLogs);
  EXPECT_EQ(Count(*connection_), std::to_string(kMany));
}

}  // namespace
}  // namespace twqb::sqlite
