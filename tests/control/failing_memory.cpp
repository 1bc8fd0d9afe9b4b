#include "tests/control/failing_memory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

#include "platform/heap.h"

namespace {

/// How many more allocations succeed on this thread; negative: all.
thread_local int newsLeft = -1;

void* Allocate(std::size_t bytes) noexcept {
  if (newsLeft == 0) return nullptr;
  if (newsLeft > 0) --newsLeft;
  return std::malloc(bytes == 0 ? 1 : bytes);
}

}  // namespace

void* operator new(std::size_t bytes) {
  if (void* block = Allocate(bytes)) return block;
  throw std::bad_alloc();
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
  return Allocate(bytes);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}

namespace mixdecks {

void* HeapAllocate(std::size_t bytes) noexcept {
  if (++testing::blocksAsked == testing::failingBlock) return nullptr;
  ++testing::heapBlocks;
  return std::malloc(bytes == 0 ? 1 : bytes);
}

void HeapRelease(void* block) noexcept {
  if (block != nullptr) --testing::heapBlocks;
  std::free(block);
}

namespace testing {

FailNew::FailNew(int number) {
  newsLeft = number - 1;
}
FailNew::~FailNew() {
  newsLeft = -1;
}

}  // namespace testing
}  // namespace mixdecks
