// The memory of a test program, which can be made to lack. To be included in one source file of a program: it takes the
// place of the operators for the whole of it. What the storage engine takes is its own, and not meant.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace twqb {

inline bool memoryLacks = false;

// For as long as this lives nothing can be allocated.
class LackingMemory {
 public:
  LackingMemory() { memoryLacks = true; }
  ~LackingMemory() { memoryLacks = false; }
  LackingMemory(const LackingMemory&) = delete;
  LackingMemory& operator=(const LackingMemory&) = delete;
};

}  // namespace twqb

void* operator new(std::size_t size) {
  if (twqb::memoryLacks) throw std::bad_alloc();
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
