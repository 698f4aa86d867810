#include "adapters/storage/ReaderPlace.h"

#include <mutex>
#include <string_view>

namespace twqb::storage {

namespace {

// Which lock is which is the same for all versions of the engine: they share the files. Behind the writer's, the one of
// who carries over and the one of who repairs the index stands the place of those who read the file alone; it is not
// kept, for nothing is carried over while it is taken.
constexpr int kWriter = 0;
constexpr int kFirstPlace = 4;
constexpr int kBehindPlaces = SQLITE_SHM_NLOCK;

// After so many beginnings the place moves to the newest page: who waits for that does not wait for long.
constexpr int kMostStays = 64;

bool IsPlace(int offset) { return offset >= kFirstPlace && offset < kBehindPlaces; }

// The handles of this process, and who of them keeps what: one that waits for a lock gives back what the others keep.
// Neither is taken down at the process's end, when a handle may still be closed.
std::mutex& TheMutex() {
  static std::mutex mutex;
  return mutex;
}
constinit ReaderPlace* theFirst = nullptr;

}  // namespace

void GiveBackKeptPlaces() {
  const std::lock_guard lock(TheMutex());
  for (auto* place = theFirst; place != nullptr; place = place->next_) place->GiveBack();
}

ReaderPlace::ReaderPlace(const char* path, sqlite3_file* file) : path_(path), file_(file) {
  const std::lock_guard lock(TheMutex());
  next_ = theFirst;
  toThis_ = &theFirst;
  if (next_ != nullptr) next_->toThis_ = &next_;
  theFirst = this;
}

ReaderPlace::~ReaderPlace() {
  const std::lock_guard lock(TheMutex());
  GiveBack();
  *toThis_ = next_;
  if (next_ != nullptr) next_->toThis_ = toThis_;
}

void ReaderPlace::GiveBack() {
  if (kept_ == kNone) return;
  Call(kept_, 1, SQLITE_SHM_UNLOCK | SQLITE_SHM_SHARED);
  kept_ = kNone;
}

void ReaderPlace::GiveBackAll(int offset, int count) {
  for (auto* place = theFirst; place != nullptr; place = place->next_) {
    const bool isAskedFor = place->kept_ >= offset && place->kept_ < offset + count;
    if (isAskedFor && std::string_view(place->path_) == path_) place->GiveBack();
  }
}

bool ReaderPlace::IsLogShort() const {
  constexpr int kLastPage = 4;  // the fifth number of the index's head
  return index_ != nullptr && index_[kLastPage] < kLongLog;
}

int ReaderPlace::LockIndex(int offset, int count, int flags) {
  const std::lock_guard lock(TheMutex());
  const bool isShared = (flags & SQLITE_SHM_SHARED) != 0;
  if ((flags & SQLITE_SHM_LOCK) != 0) return isShared ? TakePlace(offset) : TakeAlone(offset, count);
  if (isShared) return LeavePlace(offset);
  if (offset < kFirstPlace) alone_ &= ~(((1U << count) - 1) << offset);
  return Call(offset, count, flags);
}

int ReaderPlace::TakePlace(int offset) {
  if (kept_ != kNone && kept_ == offset) {
    kept_ = kNone;
    isWithoutPlace_ = false;
    return SQLITE_OK;
  }
  GiveBack();
  const int code = Call(offset, 1, SQLITE_SHM_LOCK | SQLITE_SHM_SHARED);
  if (code == SQLITE_OK) isWithoutPlace_ = false;
  return code;
}

int ReaderPlace::LeavePlace(int offset) {
  if (IsPlace(offset) && kept_ == kNone && !isAlone_ && IsLogShort()) {
    kept_ = offset;
    return SQLITE_OK;
  }
  return Call(offset, 1, SQLITE_SHM_UNLOCK | SQLITE_SHM_SHARED);
}

bool ReaderPlace::StaysAtBeginning() {
  const bool stays = kept_ != kNone && !isWithoutPlace_ && stays_ < kMostStays && IsLogShort();
  stays_ = stays ? stays_ + 1 : 0;
  return stays;
}

// Who neither writes nor carries over nor repairs and wants one place alone begins to read: he asks place after place
// whether he may move it to the newest page, and reads at an older one when none can be had. The index says all the
// same how much of the log he reads.
int ReaderPlace::TakeAlone(int offset, int count) {
  constexpr int kHow = SQLITE_SHM_LOCK | SQLITE_SHM_EXCLUSIVE;
  if (offset + count <= kFirstPlace) {
    const int code = Call(offset, count, kHow);
    if (code == SQLITE_OK) alone_ |= ((1U << count) - 1) << offset;
    // The one who has it may be waiting for the places of this process, before whose writer this one will wait.
    if (code == SQLITE_BUSY && offset == kWriter) {
      stays_ = kMostStays;
      GiveBackAll(kFirstPlace, kBehindPlaces - kFirstPlace);
    }
    return code;
  }
  if (alone_ == 0 && count == 1) {
    if (offset == kFirstPlace) isStaying_ = StaysAtBeginning();
    if (isStaying_ && kept_ != kNone) {
      isWithoutPlace_ = true;
      return SQLITE_BUSY;
    }
    GiveBack();
    return Call(offset, count, kHow);
  }
  GiveBackAll(offset, count);
  return Call(offset, count, kHow);
}

int ReaderPlace::MapIndex(int page, int size, int extend, void volatile** memory) {
  const int code = file_->pMethods->xShmMap(file_, page, size, extend, memory);
  if (page == 0 && code == SQLITE_OK) index_ = static_cast<const volatile std::uint32_t*>(*memory);
  return code;
}

int ReaderPlace::UnmapIndex(int remove) {
  const std::lock_guard lock(TheMutex());
  GiveBack();
  index_ = nullptr;
  alone_ = 0;
  stays_ = 0;
  isStaying_ = false;
  isWithoutPlace_ = false;
  return file_->pMethods->xShmUnmap(file_, remove);
}

int ReaderPlace::Lock(int level) {
  if (level == SQLITE_LOCK_EXCLUSIVE) {
    const std::lock_guard lock(TheMutex());
    GiveBack();
  }
  const int code = file_->pMethods->xLock(file_, level);
  if (code == SQLITE_OK && level == SQLITE_LOCK_EXCLUSIVE) isAlone_ = true;
  return code;
}

int ReaderPlace::Unlock(int level) {
  isAlone_ = false;
  return file_->pMethods->xUnlock(file_, level);
}

}  // namespace twqb::storage
