#include "host/data_handle.h"

#include "host/fallback_handle.h"

namespace mixdecks {
namespace {

constexpr std::uint16_t kProcsVersion = 1;
constexpr std::int16_t kTooFewProcs = 7;  // counts from 0 up to here belong to incomplete tables
constexpr std::uint8_t kMoveHigh = 1;

}  // namespace

bool HandleProcsUsable(const HostHandleProcs* procs) noexcept {
  if (procs == nullptr || procs->version != kProcsVersion) return false;
  if (procs->count >= 0 && procs->count <= kTooFewProcs) return false;
  return procs->newHandle != nullptr && procs->disposeHandle != nullptr &&
         procs->getSize != nullptr && procs->setSize != nullptr;
}

std::intptr_t NewDataHandle(const HostHandleProcs* procs, std::int32_t size) {
  if (HandleProcsUsable(procs)) return procs->newHandle(size);
  return NewFallbackHandle(static_cast<std::size_t>(size));
}

void* LockDataHandle(const HostHandleProcs* procs, std::intptr_t handle, std::int32_t size) {
  if (!HandleProcsUsable(procs)) return LockWithoutHost(handle, static_cast<std::size_t>(size));
  return procs->lock == nullptr ? nullptr : procs->lock(handle, kMoveHigh);
}

void UnlockDataHandle(const HostHandleProcs* procs, std::intptr_t handle) {
  if (!HandleProcsUsable(procs)) {
    UnlockWithoutHost(handle);
  } else if (procs->unlock != nullptr) {
    procs->unlock(handle);
  }
}

void DisposeDataHandle(const HostHandleProcs* procs, std::intptr_t handle) {
  if (HandleProcsUsable(procs)) {
    procs->disposeHandle(handle);
  } else {
    DisposeFallbackHandle(handle);
  }
}

}  // namespace mixdecks
