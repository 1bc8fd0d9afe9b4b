// The handle in the host's data word: made, locked and disposed of by the host's own procedures
// when they are usable, and without the host when they are not. Runs on the host's main thread.
//
// `procs` is the table as the record gives it and may be null. It is judged anew at every call.
#pragma once

#include <cstdint>

#include "host/export_record.h"

namespace mixdecks {

/// Whether the host's procedures can be relied on: version 1, not too few of them, and the four
/// that make and size handles present. A negative count passes.
bool HandleProcsUsable(const HostHandleProcs* procs) noexcept;

/// A handle to `size` bytes, or 0.
std::intptr_t NewDataHandle(const HostHandleProcs* procs, std::int32_t size);

/// The address of the handle's bytes until it is unlocked, or null.
void* LockDataHandle(const HostHandleProcs* procs, std::intptr_t handle, std::int32_t size);
void UnlockDataHandle(const HostHandleProcs* procs, std::intptr_t handle);
void DisposeDataHandle(const HostHandleProcs* procs, std::intptr_t handle);

}  // namespace mixdecks
