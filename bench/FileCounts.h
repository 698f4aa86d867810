// What a run asks of the file system for its two databases, counted below the engine: what became durable, what was
// opened, and the calls about locks.
//
// Unlike times, these do not depend on the machine or on what else it does. Settings and the log are not counted.
#pragma once

#include "tests/support/WatchedFiles.h"

namespace twqb {

struct FileCounts {
  long durable = 0;  // writes that the disk has confirmed, those of a folder's entry too
  long opens = 0;
  long locks = 0;
};

// How the databases are kept while they are written.
enum class Journal : bool { WrittenAhead, Rollback };

// Counts for as long as it lives. All databases are opened and closed within that time.
class CountedFiles {
 public:
  explicit CountedFiles(Journal journal)
      : watched_([this](FileCall call, std::string_view) { return Count(call); },
                 journal == Journal::WrittenAhead ? SharedMemory::Yes : SharedMemory::No) {}

  // From here on.
  void Begin() { counts_ = {}; }
  [[nodiscard]] const FileCounts& Counts() const { return counts_; }

 private:
  int Count(FileCall call) {
    if (call == FileCall::Sync || call == FileCall::SyncDirectory) ++counts_.durable;
    if (call == FileCall::Open) ++counts_.opens;
    if (call == FileCall::Lock) ++counts_.locks;
    return 0;
  }

  FileCounts counts_;
  WatchedFiles watched_;
};

}  // namespace twqb
