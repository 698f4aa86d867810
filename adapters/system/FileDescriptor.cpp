#include "adapters/system/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>

namespace twqb {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  if (this != &other) {
    Close();
    descriptor_ = std::exchange(other.descriptor_, -1);
  }
  return *this;
}

bool FileDescriptor::Close() {
  if (descriptor_ < 0) return true;
  return ::close(std::exchange(descriptor_, -1)) == 0;
}

FileDescriptor OpenForReading(const std::string& path) {
  // Without O_NONBLOCK a pipe would wait for its writer before it can be refused.
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status = {};
  if (!file || ::fstat(file.Get(), &status) != 0) return {};
  if (!S_ISREG(status.st_mode)) {
    file.Close();
    errno = EACCES;
    return {};
  }
  return file;
}

bool ReadRest(const FileDescriptor& file, std::string& text) {
  std::array<char, std::size_t{16} * 1024> buffer;
  for (;;) {
    const auto count = ::read(file.Get(), buffer.data(), buffer.size());
    if (count == 0) return true;
    if (count > 0) {
      text.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return false;
    }
  }
}

bool WriteAll(const FileDescriptor& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(file.Get(), bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace twqb
