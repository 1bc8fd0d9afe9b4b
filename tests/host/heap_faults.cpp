#include "tests/host/heap_faults.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/heap.h"

namespace mixdecks {
namespace {

class FreshHeapForEveryTest : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { Heap() = {}; }
  void OnTestEnd(const testing::TestInfo&) override { EXPECT_EQ(Heap().live, 0); }
};

// GoogleTest owns its listeners.
[[maybe_unused]] const bool registered = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new FreshHeapForEveryTest);
  return true;
}();

}  // namespace

HeapFaults& Heap() {
  static HeapFaults heap;
  return heap;
}

void* HeapAllocate(std::size_t bytes) noexcept {
  HeapFaults& heap = Heap();
  heap.requests.push_back(bytes);
  if (static_cast<int>(heap.requests.size()) == heap.failAt || bytes > heap.limit) return nullptr;
  ++heap.live;
  return std::malloc(bytes);
}

void HeapRelease(void* block) noexcept {
  if (block == nullptr) return;
  --Heap().live;
  std::free(block);
}

}  // namespace mixdecks
