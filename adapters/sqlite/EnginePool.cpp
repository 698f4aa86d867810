#include <utility>

#include "adapters/sqlite/Engine.h"

namespace twqb::sqlite {

namespace {

constexpr std::size_t kMostKept = 4;          // handles of one file
constexpr std::size_t kMostStatements = 200;  // of one handle

// Whether the file of the handle is still the one at its path. False, too, where the system can't tell: there a file
// that is open can't be moved or removed, and no handle may be kept.
bool IsInPlace(sqlite3* handle) {
  int moved = 0;
  return sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved == 0;
}

// Within moments nobody brings back a backup in place of the file, which the handle might not notice.
bool IsFresh(const Engine& engine) {
  constexpr auto kMoments = std::chrono::seconds(1);
  return std::chrono::steady_clock::now() - engine.closed < kMoments;
}

// A statement of a recordset that was not closed would come back with the handle.
bool HasOthersStatements(const Engine& engine) {
  std::size_t statements = 0;
  sqlite3_stmt* statement = nullptr;
  while ((statement = sqlite3_next_stmt(engine.handle.get(), statement)) != nullptr) ++statements;
  return statements != engine.statements.size();
}

// Closes a handle while another stays in its file, or is about to open it, and leaves it in order when it goes: were
// this one to see to that, it would find the other there, and look behind it for nothing.
void Release(Engine& engine) {
  engine.statements.clear();
  sqlite3_close_v2(engine.handle.release());
}

}  // namespace

Engine EnginePool::Open(const std::string& path, Access access) {
  const std::lock_guard lock(mutex_);
  auto& file = files_[path];
  file.kept.reserve(kMostKept);  // to close one takes no memory
  ++file.connections;
  while (!file.kept.empty()) {
    auto engine = std::move(file.kept.back());
    file.kept.pop_back();
    if (engine.access == access && IsFresh(engine) && IsInPlace(engine.handle.get())) return engine;
    Release(engine);
  }
  return {.path = path, .access = access};
}

void EnginePool::Close(Engine engine) noexcept {
  std::unique_lock lock(mutex_);
  const auto found = files_.find(engine.path);
  if (found == files_.end()) return;
  auto& file = found->second;
  const bool isLast = --file.connections == 0;
  const bool isInPlace = engine.handle && IsInPlace(engine.handle.get());
  if (isLast && isInPlace) {
    for (auto& kept : file.kept) Release(kept);
  }
  if (isLast) file.kept.clear();  // in order, where the last one is not in the file
  const bool isFit = isInPlace && engine.leaves == Leaves::RowsAlone && !HasOthersStatements(engine);
  if (isFit && engine.statements.size() > kMostStatements) engine.statements.clear();
  if (isFit && !isLast && file.kept.size() < kMostKept) {
    engine.closed = std::chrono::steady_clock::now();
    file.kept.push_back(std::move(engine));
  } else if (isFit && isLast && storage::EndWriteAhead(engine.handle.get()) == storage::Form::Ordinary) {
    engine.writeAhead = {};
    // Pages are read anew: what happens to the file while nobody has it open must show.
    sqlite3_db_release_memory(engine.handle.get());
    engine.closed = std::chrono::steady_clock::now();
    file.kept.push_back(std::move(engine));
  }
  if (isLast && file.kept.empty()) files_.erase(found);
  lock.unlock();
  // The others of the pool have the file open, unless it is another one that stands at the path by now.
  if (!isLast && isInPlace && engine.handle) {
    storage::EndWriteAhead(engine.handle.get());
    Release(engine);
  }
}

}  // namespace twqb::sqlite
