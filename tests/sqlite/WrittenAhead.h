// A database with a table and what the tests ask about its files: whether a log is beside it, whether it is one plain
// file, what is in a copy of it.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <map>

#include "TemporaryDatabase.h"
#include "tests/support/WatchedFiles.h"

namespace twqb::sqlite {

// Carries `body` out in a process of its own. The signal that it died of, or its exit status.
inline int InAnotherProcess(const std::function<void()>& body) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(60);
    body();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
}

// What the engine asks of the system while this lives, counted.
class CountedFiles {
 public:
  [[nodiscard]] int Count(FileCall call) const {
    const auto found = counts_.find(call);
    return found == counts_.end() ? 0 : found->second;
  }
  void CountFromZero() { counts_.clear(); }

 private:
  std::map<FileCall, int> counts_;
  WatchedFiles files_{[this](FileCall call, std::string_view) {
    ++counts_[call];
    return 0;
  }};
};

// What a round answers that took less than a second: for what holds within moments alone. A machine that is busy may
// take longer at times, and then the round tells nothing.
template <typename Round>
[[nodiscard]] auto WithinASecond(Round round) {
  for (;;) {
    const auto begin = std::chrono::steady_clock::now();
    const auto answer = round();
    if (std::chrono::steady_clock::now() - begin < std::chrono::seconds(1)) return answer;
  }
}

class WriteAhead : public TemporaryDatabase {
 protected:
  WriteAhead() {
    Execute("CREATE TABLE Kept (a INTEGER)");
    connection_->Close();
  }

  [[nodiscard]] bool HasLog() const { return std::filesystem::exists(File() + "-wal"); }
  // Whether the file alone is all there is, and says so of itself.
  [[nodiscard]] bool IsPlain() const {
    for (const char* suffix : {"-wal", "-shm", "-journal"}) {
      if (std::filesystem::exists(File() + suffix)) return false;
    }
    return SaysPlain(File());
  }
  [[nodiscard]] static bool SaysPlain(const std::string& path) {
    constexpr std::size_t kVersions = 18;  // to write it and to read it
    std::ifstream file(path, std::ios::binary);
    std::array<char, kVersions + 2> head{};
    file.read(head.data(), head.size());
    return head[kVersions] == 1 && head[kVersions + 1] == 1;
  }
  // The rows of a copy of the one file, which goes again.
  [[nodiscard]] std::string RowsOfACopy() const {
    const auto copy = PathTo("copy.db");
    std::filesystem::copy_file(File(), copy);
    return RowsOf(copy);
  }
  // The rows of a file that is a copy, which goes.
  [[nodiscard]] static std::string RowsOf(const std::string& copy) {
    const auto connection = Unopened("Provider=SQLITE;Data Source=" + copy);
    connection->Open();
    const auto integrity = ToText(connection->Execute("PRAGMA integrity_check", nullptr)->FieldAt(0));
    auto rows = ToText(connection->Execute("SELECT count(*) FROM Kept", nullptr)->FieldAt(0));
    connection->Close();
    std::filesystem::remove(copy);
    return integrity == "ok" ? rows : integrity;
  }
  static void Add(ado::Connection& connection) { connection.Execute("INSERT INTO Kept VALUES (1)", nullptr); }
  static std::string Count(ado::Connection& connection) {
    return ToText(connection.Execute("SELECT count(*) FROM Kept", nullptr)->FieldAt(0));
  }
};

}  // namespace twqb::sqlite
