#include "adapters/storage/NewFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace twqb::storage {

NewFile::NewFile(std::string path) : path_(std::move(path)) {
  constexpr mode_t kRights = 0666;
  const int made = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kRights);
  if (made < 0) {
    failure_ = std::error_code(errno, std::generic_category());
    path_.clear();
    return;
  }
  ::close(made);
}

NewFile::~NewFile() {
  if (!path_.empty()) ::unlink(path_.c_str());
}

}  // namespace twqb::storage
