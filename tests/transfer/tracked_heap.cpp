#include "tests/transfer/tracked_heap.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>

#include "platform/heap.h"

namespace mixdecks {
namespace {

struct HeapState {
  std::mutex mutex;
  std::map<void*, std::size_t> blocks;
  int failAt = 0;
  int requests = 0;
  std::size_t held = 0;
  std::size_t peak = 0;
};

HeapState& State() {
  static HeapState state;
  return state;
}

}  // namespace

void RestartHeap(int failAt) {
  HeapState& state = State();
  const std::lock_guard lock(state.mutex);
  state.failAt = failAt;
  state.requests = 0;
  state.peak = state.held;
}

int HeapRequests() {
  const std::lock_guard lock(State().mutex);
  return State().requests;
}

std::size_t HeapBytesHeld() {
  const std::lock_guard lock(State().mutex);
  return State().held;
}

std::size_t HeapBytesAtPeak() {
  const std::lock_guard lock(State().mutex);
  return State().peak;
}

void* HeapAllocate(std::size_t bytes) noexcept {
  HeapState& state = State();
  const std::lock_guard lock(state.mutex);
  if (++state.requests == state.failAt) return nullptr;
  void* block = std::malloc(std::max(bytes, std::size_t{1}));
  if (block == nullptr) return nullptr;
  state.blocks[block] = bytes;
  state.held += bytes;
  state.peak = std::max(state.peak, state.held);
  return block;
}

void HeapRelease(void* block) noexcept {
  if (block == nullptr) return;
  HeapState& state = State();
  const std::lock_guard lock(state.mutex);
  const auto found = state.blocks.find(block);
  state.held -= found->second;
  state.blocks.erase(found);
  std::free(block);
}

}  // namespace mixdecks
