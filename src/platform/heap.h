// Raw memory blocks for pixels: the process heap on Windows, the C heap elsewhere.
//
// Any thread may call; a block may be freed on another thread than it was allocated on.
#pragma once

#include <cstddef>
#include <utility>

namespace mixdecks {

/// Allocates `bytes` bytes, not cleared and aligned for any type. Null when there is no memory.
void* HeapAllocate(std::size_t bytes) noexcept;

/// Frees what `HeapAllocate` gave. Null is ignored.
void HeapRelease(void* block) noexcept;

/// The one owner of a heap block.
class HeapBlock {
 public:
  HeapBlock() = default;
  explicit HeapBlock(std::size_t bytes) noexcept : block_(HeapAllocate(bytes)) {}
  HeapBlock(HeapBlock&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  HeapBlock& operator=(HeapBlock&& other) noexcept {
    if (this != &other) Reset(std::exchange(other.block_, nullptr));
    return *this;
  }
  ~HeapBlock() { HeapRelease(block_); }

  /// Whether there is a block: false after a failed allocation.
  explicit operator bool() const noexcept { return block_ != nullptr; }
  std::byte* Bytes() const noexcept { return static_cast<std::byte*>(block_); }
  unsigned char* Data() const noexcept { return static_cast<unsigned char*>(block_); }

  /// Gives the block away: the caller frees it with `HeapRelease`.
  [[nodiscard]] void* Detach() noexcept { return std::exchange(block_, nullptr); }
  /// Frees the block held and takes `block`, which came from `HeapAllocate` or is null.
  void Reset(void* block = nullptr) noexcept { HeapRelease(std::exchange(block_, block)); }

 private:
  void* block_ = nullptr;
};

}  // namespace mixdecks
