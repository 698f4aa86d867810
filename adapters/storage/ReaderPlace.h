// A handle's place among the readers of a log, kept from one statement to the next.
//
// The engine takes a place (a shared lock on one of four) for each statement that reads, and gives it back: calls to
// the system that say nothing new while the same handle reads next. What others have written it sees in the log's
// index, which it looks at for each statement all the same; the place only tells those who carry the log over, or begin
// it anew, how far they may go. Stands between the engine and its file layer (KeepingLayer.cpp); opens and reads
// nothing. Nothing else in the process may open the index's file ("-shm"): to close it again would take the places of
// all handles away unseen, as it would the engine's own locks.
#pragma once

#include <sqlite3.h>

#include <cstdint>

namespace twqb::storage {

// So many pages of a log are carried over into the file. Of a log that has come to that nobody keeps a place, so that
// it can be begun anew.
inline constexpr int kLongLog = 4000;

// Gives back the places that handles of this process keep. What they are in the middle of stays as it is.
void GiveBackKeptPlaces();

// One handle's file. Used by the handle's thread; others of the process may give its place back meanwhile.
class ReaderPlace {
 public:
  // `path` and `file` must outlive it. `file` may not have shared memory.
  ReaderPlace(const char* path, sqlite3_file* file);
  ~ReaderPlace();
  ReaderPlace(const ReaderPlace&) = delete;
  ReaderPlace& operator=(const ReaderPlace&) = delete;

  // The methods of a file that have to do with places, with the engine's parameters and codes.
  int LockIndex(int offset, int count, int flags);
  int MapIndex(int page, int size, int extend, void volatile** memory);
  int UnmapIndex(int remove);
  int Lock(int level);
  int Unlock(int level);

 private:
  friend void GiveBackKeptPlaces();

  int Call(int offset, int count, int flags) const { return file_->pMethods->xShmLock(file_, offset, count, flags); }
  int TakePlace(int offset);
  int LeavePlace(int offset);
  int TakeAlone(int offset, int count);
  // Those of the process that are kept on this one's file, of some locks.
  void GiveBackAll(int offset, int count);
  // Whether the place that is kept is to be kept on, when the engine asks to move it at the beginning of a read.
  bool StaysAtBeginning();
  [[nodiscard]] bool IsLogShort() const;
  void GiveBack();

  static constexpr int kNone = -1;

  // The places of the process, one behind the other.
  ReaderPlace* next_ = nullptr;
  ReaderPlace** toThis_ = nullptr;  // what leads to this one

  const char* path_;
  sqlite3_file* file_;
  const volatile std::uint32_t* index_ = nullptr;  // of the log, its head
  int kept_ = kNone;                               // the place, as the lock's offset
  unsigned alone_ = 0;           // what is held alone, of the locks that are not places: a bit for each
  int stays_ = 0;                // beginnings since the place was moved last
  bool isStaying_ = false;       // in the beginning at hand
  bool isWithoutPlace_ = false;  // the last one that was told to stay has not come to a place yet
  bool isAlone_ = false;         // nobody else may use the file
};

}  // namespace twqb::storage
