#include "platform/heap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <thread>
#include <utility>

namespace mixdecks {
namespace {

TEST(Heap, GivesWritableAlignedBlocks) {
  for (const std::size_t bytes : {std::size_t{1}, std::size_t{17}, std::size_t{1} << 20}) {
    void* block = HeapAllocate(bytes);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U);
    std::memset(block, 0x5A, bytes);
    HeapRelease(block);
  }
}

TEST(Heap, AnEmptyBlockIsABlock) {
  void* block = HeapAllocate(0);
  EXPECT_NE(block, nullptr);
  HeapRelease(block);
}

TEST(Heap, SaysNullWhenThereIsNoMemory) {
  EXPECT_EQ(HeapAllocate(std::numeric_limits<std::size_t>::max() / 4), nullptr);
  EXPECT_FALSE(HeapBlock(std::numeric_limits<std::size_t>::max() / 4));
}

TEST(Heap, IgnoresNull) {
  HeapRelease(nullptr);
}

TEST(Heap, AnotherThreadMayFree) {
  HeapBlock block(64);
  std::thread([owned = std::move(block)]() mutable { owned.Reset(); }).join();
  EXPECT_FALSE(block);
}

TEST(HeapBlock, MovesItsOneBlock) {
  HeapBlock first(8);
  std::byte* bytes = first.Bytes();
  HeapBlock second(std::move(first));
  EXPECT_EQ(second.Bytes(), bytes);
  HeapBlock third(8);
  third = std::move(second);
  EXPECT_EQ(third.Bytes(), bytes);
  EXPECT_FALSE(second);
}

TEST(HeapBlock, StaysWholeWhenMovedIntoItself) {
  HeapBlock block(8);
  HeapBlock& alias = block;
  block = std::move(alias);
  EXPECT_TRUE(block);
}

TEST(HeapBlock, GivesItsBlockAway) {
  HeapBlock block(8);
  void* detached = block.Detach();
  EXPECT_FALSE(block);
  block.Reset(detached);
  EXPECT_EQ(block.Data(), detached);
}

}  // namespace
}  // namespace mixdecks
