#include <windows.h>

#include "platform/heap.h"

namespace mixdecks {

void* HeapAllocate(std::size_t bytes) noexcept {
  return HeapAlloc(GetProcessHeap(), 0, bytes);
}

void HeapRelease(void* block) noexcept {
  if (block != nullptr) HeapFree(GetProcessHeap(), 0, block);
}

}  // namespace mixdecks
