// Blocks that never move, behind handles that are not their addresses.
#include <cstring>
#include <new>

#include "host/movable_memory.h"
#include "platform/heap.h"

namespace mixdecks {
namespace {

/// Stands before the bytes of a block; its address is the block's handle.
struct alignas(std::max_align_t) Block {
  Block* next;
  std::size_t bytes;
  int locks;

  void* Address() noexcept { return this + 1; }
};

Block* blocks = nullptr;

/// The link that points at the first block for which `matches` holds, or the last, null one.
template <typename Matches>
Block** FindLink(Matches matches) noexcept {
  Block** link = &blocks;
  while (*link != nullptr && !matches(**link)) {
    link = &(*link)->next;
  }
  return link;
}

Block** LinkOfHandle(const void* handle) noexcept {
  return FindLink([handle](Block& block) { return &block == handle; });
}

Block** LinkOfAddress(const void* address) noexcept {
  return FindLink([address](Block& block) { return block.Address() == address; });
}

bool IsLockedAddress(const void* address) noexcept {
  const Block* block = *LinkOfAddress(address);
  return block != nullptr && block->locks > 0;
}

}  // namespace

MovableHandle AllocateMovable(std::size_t bytes) noexcept {
  void* memory = HeapAllocate(sizeof(Block) + bytes);
  if (memory == nullptr) return nullptr;
  blocks = new (memory) Block{blocks, bytes, 0};
  std::memset(blocks->Address(), 0, bytes);
  return blocks;
}

void* LockMovable(MovableHandle handle) noexcept {
  if (Block* block = *LinkOfHandle(handle)) {
    ++block->locks;
    return block->Address();
  }
  return IsLockedAddress(handle) ? handle : nullptr;
}

void UnlockMovable(MovableHandle handle) noexcept {
  Block* block = *LinkOfHandle(handle);
  if (block != nullptr && block->locks > 0) --block->locks;
}

MovableHandle MovableHandleOf(const void* address) noexcept {
  return *LinkOfAddress(address);
}

std::size_t MovableSize(MovableHandle handle) noexcept {
  const Block* block = *LinkOfHandle(handle);
  return block == nullptr ? 0 : block->bytes;
}

void FreeMovable(MovableHandle handle) noexcept {
  Block** link = LinkOfHandle(handle);
  Block* block = *link;
  if (block == nullptr) return;
  *link = block->next;
  HeapRelease(block);
}

}  // namespace mixdecks
