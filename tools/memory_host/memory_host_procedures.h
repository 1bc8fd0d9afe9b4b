// The procedures that a `MemoryHost` puts into its tables.
#pragma once

#include "tools/memory_host/memory_host.h"

namespace mixdecks {

/// Static, since the host's tables hold plain functions. Those without a channel port among their
/// arguments find their host in `active`.
struct MemoryHost::Procedures {
  static inline MemoryHost* active = nullptr;

  static std::int32_t AcquireSuite(const char* name, std::int32_t version, const void** suite);
  static std::int32_t ReleaseSuite(const char* name, std::int32_t version);

  static std::int32_t CountLevels(void* port, std::int32_t* count);
  static std::int32_t GetDepth(void* port, std::int32_t level, std::int32_t* depth);
  static std::int32_t GetBounds(void* port, std::int32_t level, HostRect32* bounds);
  static std::int32_t ReadPixels(void* port, std::int32_t level, HostRect32* bounds,
                                 PixelDescription* pixels);

  static std::intptr_t NewHandle(std::int32_t size);
  static void DisposeHandle(std::intptr_t handle);
  static std::int32_t GetHandleSize(std::intptr_t handle);
  static std::int16_t SetHandleSize(std::intptr_t handle, std::int32_t size);
  static void* LockHandle(std::intptr_t handle, std::uint8_t moveHigh);
  static void UnlockHandle(std::intptr_t handle);
};

}  // namespace mixdecks
