// The port to the system's movable global memory, in which the plug-in keeps its data when the
// host offers no handle procedures of its own.
//
// A block is known by a handle and has an address only while it is locked. Where a handle is
// expected, the address of a locked block may stand as well: it locks to itself, uncounted. Call on
// the host's main thread. Nothing throws; words that are no handle are refused.
#pragma once

#include <cstddef>

namespace mixdecks {

using MovableHandle = void*;

/// A block of `bytes` zero bytes, not locked. Null when there is no memory.
MovableHandle AllocateMovable(std::size_t bytes) noexcept;

/// The block's address, valid until as many unlocks; null for what is no handle.
void* LockMovable(MovableHandle handle) noexcept;

/// Takes one lock back. Does nothing to an address or to what is no handle.
void UnlockMovable(MovableHandle handle) noexcept;

/// The handle of the block that begins at `address`; null when there is none.
MovableHandle MovableHandleOf(const void* address) noexcept;

/// Bytes of the block, at least as many as were asked for; 0 for what is no handle.
std::size_t MovableSize(MovableHandle handle) noexcept;

/// Frees the block, locked or not. Does nothing to null or to what is no handle.
void FreeMovable(MovableHandle handle) noexcept;

}  // namespace mixdecks
