// The port's contract, met by both adapters.
#include "host/movable_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace mixdecks {
namespace {

class MovableMemory : public testing::Test {
 protected:
  MovableMemory() : handle_(AllocateMovable(100)) {}
  ~MovableMemory() override { FreeMovable(handle_); }
  MovableHandle handle_;
};

TEST_F(MovableMemory, IsZeroAndOfTheSizeAskedFor) {
  ASSERT_NE(handle_, nullptr);
  EXPECT_GE(MovableSize(handle_), 100u);
  const auto* bytes = static_cast<const std::uint8_t*>(LockMovable(handle_));
  ASSERT_NE(bytes, nullptr);
  EXPECT_EQ(std::count(bytes, bytes + 100, 0), 100);
}

TEST_F(MovableMemory, KeepsItsBytesAndItsAddressWhileLocked) {
  auto* bytes = static_cast<std::uint8_t*>(LockMovable(handle_));
  ASSERT_NE(bytes, nullptr);
  bytes[99] = 7;
  EXPECT_EQ(LockMovable(handle_), bytes);
  UnlockMovable(handle_);
  UnlockMovable(handle_);
  EXPECT_EQ(static_cast<const std::uint8_t*>(LockMovable(handle_))[99], 7);
}

TEST_F(MovableMemory, IsFoundByItsAddress) {
  void* address = LockMovable(handle_);
  EXPECT_NE(address, handle_);
  EXPECT_EQ(MovableHandleOf(address), handle_);
  EXPECT_GE(MovableSize(MovableHandleOf(address)), 100u);
}

TEST_F(MovableMemory, AnAddressLocksToItself) {
  void* address = LockMovable(handle_);
  EXPECT_EQ(LockMovable(address), address);
  UnlockMovable(address);
  EXPECT_EQ(MovableHandleOf(address), handle_);
}

TEST_F(MovableMemory, BlocksAreApart) {
  const MovableHandle other = AllocateMovable(100);
  ASSERT_NE(other, nullptr);
  EXPECT_NE(other, handle_);
  EXPECT_NE(LockMovable(other), LockMovable(handle_));
  FreeMovable(handle_);
  handle_ = nullptr;
  EXPECT_EQ(MovableHandleOf(LockMovable(other)), other);
  FreeMovable(other);
}

TEST(MovableMemoryMisuse, NullIsRefused) {
  EXPECT_EQ(LockMovable(nullptr), nullptr);
  EXPECT_EQ(MovableHandleOf(nullptr), nullptr);
  EXPECT_EQ(MovableSize(nullptr), 0u);
  UnlockMovable(nullptr);
  FreeMovable(nullptr);
}

TEST(MovableMemoryMisuse, AnAddressOfOtherMemoryHasNoHandle) {
  alignas(16) static std::uint8_t own[64] = {};
  EXPECT_EQ(MovableHandleOf(own), nullptr);
  UnlockMovable(own);
}

}  // namespace
}  // namespace mixdecks
