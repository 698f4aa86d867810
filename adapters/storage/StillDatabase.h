// A SQLite file held still while it is copied, so that the copy is one state of it, whoever writes to it meanwhile.
//
// What was written ahead is not in the file itself: then the copy is made from what this hands out. A file that is no
// database is none of its business, and is copied as any other.
#pragma once

#include <memory>
#include <optional>
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

  // The whole file in its ordinary form, where its own bytes are not all of it; nothing where they are, or where it is
  // no database; an empty text where there is no room for it. While it hands something out, no one in this process may
  // open the file but through the engine: closing it would drop the engine's locks.
  [[nodiscard]] std::optional<std::string> Image() const;

 private:
  struct Closer {
    void operator()(sqlite3* handle) const;
  };
  std::unique_ptr<sqlite3, Closer> handle_;  // in a transaction that reads; nothing when the file is not held
  bool couldNotBeHeld_ = false;
};

}  // namespace twqb::storage
