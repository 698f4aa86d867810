// A database that another process is writing to, as long as this lives: that process is a copy of the test.
//
// The lock is the one by which the databases' engine keeps writers apart, taken on the file itself.
#pragma once

#include <filesystem>

namespace twqb::cli {

class LockedFile {
 public:
  explicit LockedFile(const std::filesystem::path& path);
  ~LockedFile();
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;

 private:
  int holder_ = -1;
};

}  // namespace twqb::cli
