#include "cli/ProcessMemory.h"

#include <sqlite3.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <pugixml.hpp>

namespace twqb::cli {

namespace {

// Blocks of one thread, of the size that a document's pages have. Without an end, so that documents may live as long as
// the process does; what it holds goes with that.
class PageCache {
 public:
  void* Take() { return count_ > 0 ? free_[--count_] : std::malloc(kSize); }
  void Give(void* block) {
    if (count_ < free_.size()) {
      free_[count_++] = block;
    } else {
      std::free(block);
    }
  }

  // A page of the library's own size, what it keeps ahead of it, and ours.
  static constexpr std::size_t kSize = std::size_t{33} * 1024;

 private:
  static constexpr std::size_t kKept = 8;
  std::array<void*, kKept> free_{};
  std::size_t count_ = 0;
};

thread_local PageCache pages;

// Stands ahead of what is handed out, and keeps its alignment.
struct alignas(std::max_align_t) Head {
  bool isPage;
};

bool IsOfAPage(std::size_t size) { return size > PageCache::kSize / 2 && size + sizeof(Head) <= PageCache::kSize; }

void* Allocate(std::size_t size) {
  const bool isPage = IsOfAPage(size);
  auto* block = isPage ? pages.Take() : std::malloc(size + sizeof(Head));
  if (block == nullptr) return nullptr;
  return new (block) Head{isPage} + 1;
}

void Free(void* memory) {
  if (memory == nullptr) return;
  auto* head = static_cast<Head*>(memory) - 1;
  if (head->isPage) {
    pages.Give(head);
  } else {
    std::free(head);
  }
}

}  // namespace

void PrepareMemory() {
  pugi::set_memory_management_functions(&Allocate, &Free);
  // The engine counts what it has under a lock, each time; nobody asks for the sum.
  sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

}  // namespace twqb::cli
