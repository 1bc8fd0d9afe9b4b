#include <algorithm>
#include <cstdlib>

#include "platform/heap.h"

namespace mixdecks {

// An empty block is a block too, as on the process heap: null means no memory and nothing else.
void* HeapAllocate(std::size_t bytes) noexcept {
  return std::malloc(std::max(bytes, std::size_t{1}));
}

void HeapRelease(void* block) noexcept {
  std::free(block);
}

}  // namespace mixdecks
