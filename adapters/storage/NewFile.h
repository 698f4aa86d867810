// A file that is made to become a database, by the call that fails when it is there: so no file is ever overwritten,
// whoever makes one at the same moment.
//
// Unless it is kept it goes again, and nobody finds an empty one where the database could not be made. What is written
// into it is the business of who makes it; its handle must be closed before this goes.
#pragma once

#include <string>
#include <system_error>

namespace twqb::storage {

class NewFile {
 public:
  // With the rights of any new file: less what the process masks out.
  explicit NewFile(std::string path);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  // Why it could not be made; nothing when it is there now.
  [[nodiscard]] std::error_code Failure() const { return failure_; }
  void Keep() { path_.clear(); }

 private:
  std::string path_;  // empty when nothing is to be removed
  std::error_code failure_;
};

}  // namespace twqb::storage
