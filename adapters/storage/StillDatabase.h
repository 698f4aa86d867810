// A SQLite file held still while it is copied, so that the copy is one state of it, whoever writes to it meanwhile.
//
// What was written ahead is not in the file itself: then the copy is made from what this hands out. A file that is no
// database is none of its business, and is copied as any other. Copies are made page by page, whatever the size.
#pragma once

#include <memory>
#include <string>

struct sqlite3;

namespace twqb::storage {

class StillDatabase {
 public:
  // Waits a little for who is writing.
  explicit StillDatabase(const std::string& path);

  // It is a database, and could not be held: no copy would be one state of it.
  [[nodiscard]] bool CouldNotBeHeld() const { return couldNotBeHeld_; }
  [[nodiscard]] bool IsHeld() const { return handle_ != nullptr; }

  // Whether its own bytes are not all of it: then they are of no use, and CopyTo makes the copy. While it is held in
  // that form, no one in this process may open the file but through the engine: closing it would drop the engine's
  // locks.
  [[nodiscard]] bool HasLog() const;
  // Writes the whole of it, in its ordinary form, into the empty file at `path`. False, and what is in that file is of
  // no use, when a page can't be read or written. Whether it has reached the disk is the caller's to see to.
  [[nodiscard]] bool CopyTo(const std::string& path) const;

 private:
  struct Closer {
    void operator()(sqlite3* handle) const;
  };
  std::unique_ptr<sqlite3, Closer> handle_;  // in a transaction that reads; nothing when the file is not held
  bool couldNotBeHeld_ = false;
};

}  // namespace twqb::storage
