#include "adapters/storage/StillDatabase.h"

#include <sqlite3.h>

#include <filesystem>
#include <system_error>

#include "adapters/storage/WriteAhead.h"

namespace twqb::storage {

namespace {

constexpr int kPatience = 5'000;  // milliseconds

// Where a database says in which form it is: who may write it, who may read it.
constexpr std::size_t kWriteVersion = 18;
constexpr std::size_t kReadVersion = 19;
constexpr char kOrdinary = 1;

}  // namespace

void StillDatabase::Closer::operator()(sqlite3* handle) const {
  sqlite3_exec(handle, "COMMIT", nullptr, nullptr, nullptr);
  CloseInOrder(handle);
}

StillDatabase::StillDatabase(const std::string& path) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return;
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  handle_.reset(opened);
  if (code == SQLITE_OK) {
    sqlite3_busy_timeout(opened, kPatience);
    constexpr auto kHold = "BEGIN; SELECT count(*) FROM sqlite_schema";
    const int held = sqlite3_exec(opened, kHold, nullptr, nullptr, nullptr);
    if (held == SQLITE_OK) return;
    // What can't be opened at all is told by who copies its bytes.
    const bool hasLog = std::filesystem::exists(path + "-wal", ignored);
    couldNotBeHeld_ = held != SQLITE_NOTADB && (held != SQLITE_CANTOPEN || hasLog);
  }
  handle_.reset();
}

std::optional<std::string> StillDatabase::Image() const {
  if (!handle_ || FormOf(handle_.get()) == Form::Ordinary) return std::nullopt;
  sqlite3_int64 size = 0;
  const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
      sqlite3_serialize(handle_.get(), "main", &size, 0), sqlite3_free);
  if (!bytes) return std::string();
  std::string image(reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size));
  if (image.size() > kReadVersion) image[kWriteVersion] = image[kReadVersion] = kOrdinary;
  return image;
}

}  // namespace twqb::storage
