#include "LockedFile.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace twqb::cli {

namespace {

// Where the engine of the databases locks a file: one byte that says pending, one reserved, and those of readers.
constexpr off_t kPendingByte = 0x40000000;
constexpr off_t kBytes = 2 + 510;

}  // namespace

LockedFile::LockedFile(const std::filesystem::path& path) {
  int ready[2] = {};
  if (pipe(ready) != 0) throw std::runtime_error("no pipe");
  holder_ = fork();
  if (holder_ == 0) {
    const int file = open(path.c_str(), O_RDWR);
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kPendingByte;
    lock.l_len = kBytes;
    const char answer = fcntl(file, F_SETLK, &lock) == 0 ? 'y' : 'n';
    if (write(ready[1], &answer, 1) != 1) _exit(1);
    for (;;) pause();
  }
  char answer = 'n';
  const bool read = ::read(ready[0], &answer, 1) == 1;
  close(ready[0]);
  close(ready[1]);
  if (!read || answer != 'y') throw std::runtime_error("the file could not be locked");
}

LockedFile::~LockedFile() {
  kill(holder_, SIGKILL);
  waitpid(holder_, nullptr, 0);
}

}  // namespace twqb::cli
