#include "adapters/backup/PieceStore.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <mutex>
#include <set>
#include <string_view>
#include <system_error>
#include <thread>

#include "adapters/backup/BackupError.h"
#include "adapters/backup/Sha256.h"
#include "adapters/system/FileReplacement.h"

namespace twqb::backup {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPieceSize = std::size_t{256} * 1024;
constexpr std::size_t kFolderLength = 2;  // digits of a digest that name the folder of its piece
constexpr std::string_view kUnfinished = ".new";
constexpr mode_t kOwnersAlone = 0600;
// From here on the whole disk is told to write, once: each file by itself would wait for it as often.
constexpr std::size_t kMany = 16;

std::size_t CountOf(std::uint64_t size) { return static_cast<std::size_t>((size + kPieceSize - 1) / kPieceSize); }

bool ReadAt(const FileDescriptor& file, std::string& piece, std::uint64_t from) {
  std::size_t got = 0;
  while (got < piece.size()) {
    const auto count =
        ::pread(file.Get(), piece.data() + got, piece.size() - got, static_cast<std::int64_t>(from + got));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      if (count == 0) errno = EIO;  // it has become shorter
      return false;
    }
    got += static_cast<std::size_t>(count);
  }
  return true;
}

// Whether the file has these bytes: one that was damaged since is written anew while they are at hand.
bool Holds(const std::string& path, std::string_view bytes) {
  const auto file = OpenForReading(path);
  struct stat status = {};
  if (!file || ::fstat(file.Get(), &status) != 0 || static_cast<std::uint64_t>(status.st_size) != bytes.size()) {
    return false;
  }
  // A little at a time: the memory for a piece would cost more than what is done with it.
  std::array<char, std::size_t{16}* 1024> held = {};
  while (!bytes.empty()) {
    const auto count = ::read(file.Get(), held.data(), std::min(held.size(), bytes.size()));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0 || !bytes.starts_with(std::string_view(held.data(), static_cast<std::size_t>(count)))) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool SynchroniseFile(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
  return file && ::fsync(file.Get()) == 0;
}

// False where it has to be done file by file.
bool SynchroniseDisk(const std::string& folder) {
#ifdef __linux__
  const FileDescriptor handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return handle && ::syncfs(handle.Get()) == 0;
#else
  static_cast<void>(folder);
  return false;
#endif
}

// What several threads do with the pieces of a file: each takes the next one, until one of them fails.
class SharedWork {
 public:
  SharedWork(std::size_t pieces, const std::function<bool()>& goOn) : pieces_(pieces), goOn_(goOn) {}

  template <typename Body>
  void Run(Body body) {
    const auto helpers = pieces_ < kMany ? 0U : std::min(std::thread::hardware_concurrency(), kMostThreads) - 1U;
    {
      std::vector<std::jthread> threads;
      for (unsigned i = 0; i < helpers; ++i) threads.emplace_back([&] { Take(body); });
      Take(body);
    }
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  static constexpr unsigned kMostThreads = 4;

  template <typename Body>
  void Take(Body& body) {
    try {
      for (auto piece = next_++; piece < pieces_ && !ended_; piece = next_++) {
        if (!goOn_()) throw BackupEnded();
        body(piece);
      }
    } catch (...) {
      const std::lock_guard lock(mutex_);
      if (!failure_) failure_ = std::current_exception();
      ended_ = true;
    }
  }

  std::size_t pieces_;
  const std::function<bool()>& goOn_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> ended_ = false;
  std::mutex mutex_;
  std::exception_ptr failure_;
};

}  // namespace

std::string Content::Digest() const { return Sha256Of(pieces); }

Content PieceStore::Keep(const std::string& file, const std::function<bool()>& goOn) {
  const auto source = OpenForReading(file);
  struct stat status = {};
  if (!source || ::fstat(source.Get(), &status) != 0) RaiseForFile(file, "read");
  Content content{.size = static_cast<std::uint64_t>(status.st_size)};
  const auto count = CountOf(content.size);
  content.pieces.resize(count * kDigestLength);
  std::mutex mutex;
  SharedWork(count, goOn).Run([&](std::size_t index) {
    const auto from = std::uint64_t{index} * kPieceSize;
    std::string piece(static_cast<std::size_t>(std::min<std::uint64_t>(kPieceSize, content.size - from)), '\0');
    if (!ReadAt(source, piece, from)) RaiseForFile(file, "read");
    const auto digest = Sha256Of(piece);
    digest.copy(content.pieces.data() + index * kDigestLength, kDigestLength);
    if (Holds(PathOf(digest), piece)) return;
    const auto number = [&] {
      const std::lock_guard lock(mutex);
      return counter_++;
    }();
    auto fresh = Write(digest, piece, number);
    const std::lock_guard lock(mutex);
    fresh_.push_back(std::move(fresh));
  });
  return content;
}

void PieceStore::Settle() {
  const auto fresh = std::exchange(fresh_, {});
  if (fresh.empty()) return;
  const bool atOnce = fresh.size() >= kMany && SynchroniseDisk(folder_);
  std::set<std::string> folders;
  for (const auto& piece : fresh) {
    if (!atOnce && !SynchroniseFile(piece.temporary)) RaiseForFile(piece.temporary, "written");
    std::error_code failure;
    fs::rename(piece.temporary, piece.path, failure);
    if (failure) RaiseForFile(piece.path, "written", failure.value());
    folders.insert(piece.path);
  }
  if (atOnce && SynchroniseDisk(folder_)) return;
  for (const auto& path : folders) SynchroniseFolderOf(path);
  SynchroniseFolderOf(folder_ + "/.");
}

void PieceStore::Read(const Content& content, const std::function<void(std::string_view)>& take) const {
  const auto count = CountOf(content.size);
  if (content.pieces.size() != count * kDigestLength) throw BackupError("A manifest does not tell its pieces.");
  std::string piece;
  for (std::size_t index = 0; index < count; ++index) {
    const auto digest = std::string_view(content.pieces).substr(index * kDigestLength, kDigestLength);
    const auto path = PathOf(digest);
    const auto file = OpenForReading(path);
    piece.clear();
    if (!file || !ReadRest(file, piece)) RaiseForFile(path, "read");
    const auto size = std::min<std::uint64_t>(kPieceSize, content.size - std::uint64_t{index} * kPieceSize);
    if (piece.size() != size || Sha256Of(piece) != digest) {
      throw BackupError(fmt::format("{} is damaged: it is not what was kept in it.", path));
    }
    take(piece);
  }
}

bool PieceStore::IsMadeOf(const std::string& file, const Content& content, const std::function<bool()>& goOn) {
  const auto source = OpenForReading(file);
  struct stat status = {};
  const auto count = CountOf(content.size);
  if (!source || ::fstat(source.Get(), &status) != 0 || static_cast<std::uint64_t>(status.st_size) != content.size ||
      content.pieces.size() != count * kDigestLength) {
    return false;
  }
  std::atomic<bool> isLike = true;
  SharedWork(count, goOn).Run([&](std::size_t index) {
    if (!isLike) return;
    const auto from = std::uint64_t{index} * kPieceSize;
    std::string piece(static_cast<std::size_t>(std::min<std::uint64_t>(kPieceSize, content.size - from)), '\0');
    const auto digest = std::string_view(content.pieces).substr(index * kDigestLength, kDigestLength);
    if (!ReadAt(source, piece, from) || Sha256Of(piece) != digest) isLike = false;
  });
  return isLike;
}

void PieceStore::RemoveAllBut(const std::unordered_set<std::string_view>& digests) const {
  std::error_code failure;
  for (const auto& folder : fs::directory_iterator(folder_, failure)) {
    std::error_code inner;
    for (const auto& entry : fs::directory_iterator(folder.path(), inner)) {
      const auto digest = folder.path().filename().string() + entry.path().filename().string();
      std::error_code ignored;
      if (!digests.contains(digest)) fs::remove(entry.path(), ignored);
    }
  }
}

std::string PieceStore::PathOf(std::string_view digest) const {
  return fmt::format("{}/{}/{}", folder_, digest.substr(0, kFolderLength), digest.substr(kFolderLength));
}

PieceStore::Fresh PieceStore::Write(std::string_view digest, std::string_view bytes, unsigned number) const {
  Fresh fresh{.path = PathOf(digest)};
  fresh.temporary = fmt::format("{}.{}-{}{}", fresh.path, ::getpid(), number, kUnfinished);
  std::error_code failure;
  const auto folder = fs::path(fresh.path).parent_path();
  fs::create_directories(folder, failure);
  if (failure) RaiseForFile(folder.string(), "made", failure.value());
  FileDescriptor file(::open(fresh.temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kOwnersAlone));
  if (!file || !WriteAll(file, bytes) || !file.Close()) {
    const int reason = errno;
    ::unlink(fresh.temporary.c_str());
    RaiseForFile(fresh.temporary, "written", reason);
  }
  return fresh;
}

}  // namespace twqb::backup
