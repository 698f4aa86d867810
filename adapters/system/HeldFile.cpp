#include "adapters/system/HeldFile.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "adapters/system/FileIdentity.h"

namespace twqb {

namespace {

// The first line of a claim. A file that begins otherwise is somebody's own and is not written to.
constexpr std::string_view kFirstLine = "Held by a transfer of twqb";

constexpr mode_t kOwnersAlone = 0600;
constexpr mode_t kReadAndWrite = 0666;

std::string TextOf(const Holder& holder) {
  return fmt::format("{}\nprocess {}\ncommand {}\nhost {}\nsince {}\n", kFirstLine, holder.process, holder.command,
                     holder.host, holder.since);
}

Holder HolderFrom(std::string_view text) {
  Holder holder;
  const auto take = [&](std::string_view name) {
    const auto at = text.find(fmt::format("\n{} ", name));
    if (at == std::string_view::npos) return std::string();
    const auto value = text.substr(at + name.size() + 2);
    return std::string(value.substr(0, value.find('\n')));
  };
  holder.process = take("process");
  holder.command = take("command");
  holder.host = take("host");
  holder.since = take("since");
  return holder;
}

std::string ReadClaim(const FileDescriptor& file) {
  std::string text;
  if (::lseek(file.Get(), 0, SEEK_SET) != 0 || !ReadRest(file, text)) return {};
  return text;
}

bool Write(const FileDescriptor& file, std::string_view text) {
  return ::ftruncate(file.Get(), 0) == 0 && ::lseek(file.Get(), 0, SEEK_SET) == 0 && WriteAll(file, text);
}

FileDescriptor OpenClaim(const std::string& path) {
  return FileDescriptor(
      ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, kOwnersAlone));
}

// Whoever may write the file that is claimed may claim it too.
void GiveRightsOf(const std::string& of, const FileDescriptor& file) {
  struct stat status = {};
  if (::stat(of.c_str(), &status) != 0) return;
  // Where the group or the rights can't be given they stay the owner's: that is no less safe.
  if (::fchown(file.Get(), static_cast<uid_t>(-1), status.st_gid) == 0) {
    static_cast<void>(::fchmod(file.Get(), (status.st_mode & kReadAndWrite) | kOwnersAlone));
  }
}

// Whether `path` still is the name of the open file, and no link to it.
bool StandsAt(const std::string& path, const FileDescriptor& file) {
  struct stat present = {};
  struct stat opened = {};
  return ::lstat(path.c_str(), &present) == 0 && ::fstat(file.Get(), &opened) == 0 &&
         IdentityOf(present) == IdentityOf(opened);
}

// A folder, a link or a socket.
bool IsSomethingElse(int reason) { return reason == EISDIR || reason == ELOOP || reason == ENXIO; }

bool TakesNoFiles(int reason) { return reason == EACCES || reason == EROFS || reason == EPERM || reason == ENOENT; }

}  // namespace

Holder ThisHolder(std::string command, std::string since) {
  std::array<char, 256> host = {};
  if (::gethostname(host.data(), host.size() - 1) != 0) host[0] = '\0';
  return {.process = std::to_string(::getpid()),
          .command = std::move(command),
          .host = host.data(),
          .since = std::move(since)};
}

HeldFile::Answer HeldFile::Claim(const std::string& path, const std::string& of, const Holder& self) {
  for (;;) {
    auto file = OpenClaim(path);
    if (!file) {
      const int reason = errno;
      if (IsSomethingElse(reason)) return {.outcome = Outcome::NotOurs};
      const bool isThere = ::access(path.c_str(), F_OK) == 0;
      errno = reason;
      return {.outcome = !isThere && TakesNoFiles(reason) ? Outcome::NoFileHere : Outcome::Failed};
    }
    struct stat opened = {};
    if (::fstat(file.Get(), &opened) != 0) return {};
    if (!S_ISREG(opened.st_mode)) return {.outcome = Outcome::NotOurs};
    if (::flock(file.Get(), LOCK_EX | LOCK_NB) != 0) {
      if (errno == EINTR) continue;
      if (errno != EWOULDBLOCK) return {};
      return {.outcome = Outcome::HeldByOther, .holder = HolderFrom(ReadClaim(file))};
    }
    // The one before may have removed it between the opening and the lock.
    if (!StandsAt(path, file)) continue;
    if (opened.st_size != 0 && !ReadClaim(file).starts_with(kFirstLine)) return {.outcome = Outcome::NotOurs};
    GiveRightsOf(of, file);
    // On a full disk it holds all the same; others are only not told who does.
    static_cast<void>(Write(file, TextOf(self)));
    return {.outcome = Outcome::Held, .held = HeldFile(path, std::move(file))};
  }
}

HeldFile::~HeldFile() {
  // Ahead of the lock, so that nobody's claim is removed; and never what somebody has put in its place meanwhile.
  if (!path_.empty() && StandsAt(path_, file_)) ::unlink(path_.c_str());
}

}  // namespace twqb
