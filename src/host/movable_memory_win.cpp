#include <windows.h>

#include "host/movable_memory.h"

namespace mixdecks {

MovableHandle AllocateMovable(std::size_t bytes) noexcept {
  return GlobalAlloc(GHND, bytes);
}

void* LockMovable(MovableHandle handle) noexcept {
  return GlobalLock(handle);
}

void UnlockMovable(MovableHandle handle) noexcept {
  GlobalUnlock(handle);
}

MovableHandle MovableHandleOf(const void* address) noexcept {
  return address == nullptr ? nullptr : GlobalHandle(address);
}

std::size_t MovableSize(MovableHandle handle) noexcept {
  return handle == nullptr ? 0 : GlobalSize(handle);
}

void FreeMovable(MovableHandle handle) noexcept {
  if (handle != nullptr) GlobalFree(handle);
}

}  // namespace mixdecks
