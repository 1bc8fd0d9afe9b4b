// The handle that keeps the plug-in's data when the host offers no usable handle procedures: a
// small header in movable memory that points at the block with the data.
//
// The handle is the header's address. Runs on the host's main thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mixdecks {

/// A handle to `size` zero bytes, or 0 when there is no memory.
std::intptr_t NewFallbackHandle(std::size_t size) noexcept;

/// The address of at least `size` bytes behind `handle`: the data of a fallback handle, or what
/// the system's lock gives for any other word. Null when there are no such bytes.
void* LockWithoutHost(std::intptr_t handle, std::size_t size) noexcept;

/// Takes that lock back. The data of a fallback handle stay where they are.
void UnlockWithoutHost(std::intptr_t handle) noexcept;

/// Frees header and data. A word that is no fallback handle belongs to somebody else and is left
/// alone.
void DisposeFallbackHandle(std::intptr_t handle) noexcept;

inline constexpr std::int16_t kHandleErrorNone = 0;
inline constexpr std::int16_t kHandleErrorNoMemory = -108;
inline constexpr std::int16_t kHandleErrorNoHandle = -109;

/// The outcome of the last fallback handle made or disposed of, kept for a debugger.
std::int16_t LastHandleError() noexcept;

}  // namespace mixdecks
