#include "host/fallback_handle.h"

#include <cstring>

#include "host/movable_memory.h"

namespace mixdecks {
namespace {

// The header: a pointer to the data, and the mark by which the header is known again.
constexpr char kMark[4] = {'O', 'T', 'O', 'F'};
constexpr std::size_t kMarkOffset = 8;
constexpr std::size_t kHeaderBytes = kMarkOffset + sizeof(kMark);
static_assert(sizeof(void*) == kMarkOffset);

std::int16_t lastHandleError = kHandleErrorNone;

void* ToPointer(std::intptr_t word) noexcept {
  return reinterpret_cast<void*>(word);
}

void* AllocateLocked(std::size_t bytes) noexcept {
  const MovableHandle handle = AllocateMovable(bytes);
  if (handle == nullptr) return nullptr;
  void* address = LockMovable(handle);
  if (address == nullptr) FreeMovable(handle);
  return address;
}

void FreeLocked(void* address) noexcept {
  const MovableHandle handle = MovableHandleOf(address);
  UnlockMovable(handle);
  FreeMovable(handle);
}

std::size_t SizeAt(const void* address) noexcept {
  return MovableSize(MovableHandleOf(address));
}

bool IsHeader(const void* address) noexcept {
  return SizeAt(address) >= kHeaderBytes &&
         std::memcmp(static_cast<const char*>(address) + kMarkOffset, kMark, sizeof(kMark)) == 0;
}

void* DataOf(const void* header) noexcept {
  void* data = nullptr;
  std::memcpy(&data, header, sizeof(data));
  return data;
}

void* MakeHeader(void* data) noexcept {
  void* header = AllocateLocked(kHeaderBytes);
  if (header == nullptr) return nullptr;
  std::memcpy(header, &data, sizeof(data));
  std::memcpy(static_cast<char*>(header) + kMarkOffset, kMark, sizeof(kMark));
  return header;
}

}  // namespace

std::intptr_t NewFallbackHandle(std::size_t size) noexcept {
  lastHandleError = kHandleErrorNoMemory;
  void* data = AllocateLocked(size);
  if (data == nullptr) return 0;
  void* header = MakeHeader(data);
  if (header == nullptr) {
    FreeLocked(data);
    return 0;
  }
  lastHandleError = kHandleErrorNone;
  return reinterpret_cast<std::intptr_t>(header);
}

void* LockWithoutHost(std::intptr_t handle, std::size_t size) noexcept {
  void* address = LockMovable(ToPointer(handle));
  if (address == nullptr) return nullptr;
  // The data were locked when the handle was made; the header's address takes no lock of its own.
  if (IsHeader(address)) return DataOf(address);
  if (SizeAt(address) >= size) return address;
  UnlockMovable(ToPointer(handle));
  return nullptr;
}

void UnlockWithoutHost(std::intptr_t handle) noexcept {
  UnlockMovable(ToPointer(handle));
}

void DisposeFallbackHandle(std::intptr_t handle) noexcept {
  void* header = ToPointer(handle);
  if (header == nullptr || !IsHeader(header)) {
    lastHandleError = kHandleErrorNoHandle;
    return;
  }
  if (void* data = DataOf(header)) FreeLocked(data);
  FreeLocked(header);
  lastHandleError = kHandleErrorNone;
}

std::int16_t LastHandleError() noexcept {
  return lastHandleError;
}

}  // namespace mixdecks
