// Memory that runs out when a test wants it to: the heap's blocks, and what `new` gives.
//
// A program that links this replaces both. The count runs on all threads together.
#pragma once

#include <atomic>

namespace mixdecks::testing {

/// Heap blocks that exist.
inline std::atomic<int> heapBlocks{0};
/// Allocation number `failingBlock` (from 1) of a heap block fails; 0: none.
inline std::atomic<int> failingBlock{0};
inline std::atomic<int> blocksAsked{0};

/// Lets what the calling thread allocates by `new` fail, from allocation number `number` (from 1)
/// on, for as long as this lives.
class FailNew {
 public:
  explicit FailNew(int number);
  ~FailNew();
  FailNew(const FailNew&) = delete;
  FailNew& operator=(const FailNew&) = delete;
};

}  // namespace mixdecks::testing
