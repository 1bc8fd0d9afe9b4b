#include "tools/memory_host/memory_host_procedures.h"

#include <cstring>

namespace mixdecks {
namespace {

constexpr std::int32_t kFailed = -1;
constexpr std::intptr_t kFirstHandle = 0x1000;
constexpr std::intptr_t kHandleStep = 0x10;

bool SameRect(const HostRect32& a, const HostRect32& b) noexcept {
  return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

bool IsChannelPortsSuite(const char* name, std::int32_t version) noexcept {
  return std::strcmp(name, kChannelPortsSuiteName) == 0 && version == kChannelPortsSuiteVersion;
}

/// Bytes of `samples` samples of `bits` bits, the last byte filled up.
std::size_t BytesOfBits(std::int64_t samples, std::int64_t bits) noexcept {
  return static_cast<std::size_t>((samples * bits + 7) / 8);
}

void CopyRows(const HostChannel& channel, const PixelDescription& pixels) {
  const std::int64_t columns = std::int64_t{channel.bounds.right} - channel.bounds.left;
  const std::int64_t rows = std::int64_t{channel.bounds.bottom} - channel.bounds.top;
  if (columns <= 0 || rows <= 0) return;
  const std::size_t rowBytes = BytesOfBits(columns, channel.depth);
  const std::size_t rowStep = BytesOfBits(pixels.rowBits, 1);
  auto* out = static_cast<std::byte*>(pixels.data);
  for (std::size_t row = 0; row < static_cast<std::size_t>(rows); ++row, out += rowStep) {
    if (channel.samples.empty()) {
      std::memset(out, 0, rowBytes);
    } else {
      std::memcpy(out, channel.samples.data() + row * rowBytes, rowBytes);
    }
  }
}

}  // namespace

bool MemoryHost::FailsNow(HostCall call, std::int32_t& result) {
  if (std::this_thread::get_id() != thread_) Complain(call, "not on the host's thread");
  const auto index = static_cast<std::size_t>(call);
  const int number = ++calls_[index];
  const Fault& fault = faults_[index];
  result = fault.result;
  return fault.nth == 0 || fault.nth == number;
}

void MemoryHost::Complain(HostCall call, std::string_view what) {
  violations_.push_back(std::string(HostCallName(call)).append(": ").append(what));
}

MemoryHost::HandleBlock* MemoryHost::FindHandle(HostCall call, std::intptr_t handle) {
  const auto found = handles_.find(handle);
  if (found != handles_.end()) return &found->second;
  Complain(call, "no such handle");
  return nullptr;
}

std::int32_t MemoryHost::Procedures::AcquireSuite(const char* name, std::int32_t version,
                                                  const void** suite) {
  std::int32_t result = 0;
  if (active->FailsNow(HostCall::kAcquireSuite, result)) return result;
  if (!active->suitePresent_ || !IsChannelPortsSuite(name, version)) return kFailed;
  ++active->suiteReferences_;
  *suite = &active->suite_;
  return 0;
}

// Releasing what could not be acquired is refused, and no violation.
std::int32_t MemoryHost::Procedures::ReleaseSuite(const char* name, std::int32_t version) {
  std::int32_t result = 0;
  const bool fails = active->FailsNow(HostCall::kReleaseSuite, result);
  if (!IsChannelPortsSuite(name, version)) {
    active->Complain(HostCall::kReleaseSuite, "no such suite");
    return kFailed;
  }
  if (active->suiteReferences_ == 0) return kFailed;
  --active->suiteReferences_;
  return fails ? result : 0;
}

std::int32_t MemoryHost::Procedures::CountLevels(void* port, std::int32_t* count) {
  const Port& self = *static_cast<Port*>(port);
  std::int32_t result = 0;
  if (self.host->FailsNow(HostCall::kCountLevels, result)) return result;
  *count = self.channel->levels;
  return 0;
}

std::int32_t MemoryHost::Procedures::GetDepth(void* port, std::int32_t level, std::int32_t* depth) {
  const Port& self = *static_cast<Port*>(port);
  std::int32_t result = 0;
  if (self.host->FailsNow(HostCall::kGetDepth, result)) return result;
  if (level != 0) self.host->Complain(HostCall::kGetDepth, "not level 0");
  *depth = self.channel->depth;
  return 0;
}

std::int32_t MemoryHost::Procedures::GetBounds(void* port, std::int32_t level, HostRect32* bounds) {
  const Port& self = *static_cast<Port*>(port);
  std::int32_t result = 0;
  if (self.host->FailsNow(HostCall::kGetBounds, result)) return result;
  if (level != 0) self.host->Complain(HostCall::kGetBounds, "not level 0");
  *bounds = self.channel->bounds;
  return 0;
}

std::int32_t MemoryHost::Procedures::ReadPixels(void* port, std::int32_t level, HostRect32* bounds,
                                                PixelDescription* pixels) {
  const Port& self = *static_cast<Port*>(port);
  const HostChannel& channel = *self.channel;
  MemoryHost& host = *self.host;
  std::int32_t result = 0;
  if (host.FailsNow(HostCall::kReadPixels, result)) return result;

  const std::int64_t rowBits =
      (std::int64_t{channel.bounds.right} - channel.bounds.left) * channel.depth;
  const auto refuse = [&host](std::string_view what) {
    host.Complain(HostCall::kReadPixels, what);
    return kFailed;
  };
  if (host.suiteReferences_ == 0) return refuse("the suite is not acquired");
  if (level != 0) return refuse("not level 0");
  if (!SameRect(*bounds, channel.bounds)) return refuse("not the channel's bounds");
  if (pixels->depth != channel.depth) return refuse("not the channel's depth");
  if (pixels->columnBits != channel.depth) return refuse("samples with gaps");
  if (pixels->bitOffset != 0) return refuse("samples with an offset");
  if (pixels->rowBits != rowBits) return refuse("rows of another width");
  CopyRows(channel, *pixels);
  return 0;
}

std::intptr_t MemoryHost::Procedures::NewHandle(std::int32_t size) {
  std::int32_t result = 0;
  if (active->FailsNow(HostCall::kNewHandle, result)) return 0;
  const std::intptr_t handle = kFirstHandle + kHandleStep * active->Calls(HostCall::kNewHandle);
  active->handles_[handle].bytes.resize(static_cast<std::size_t>(size));
  return handle;
}

void MemoryHost::Procedures::DisposeHandle(std::intptr_t handle) {
  std::int32_t result = 0;
  active->FailsNow(HostCall::kDisposeHandle, result);
  const HandleBlock* block = active->FindHandle(HostCall::kDisposeHandle, handle);
  if (block == nullptr) return;
  if (block->locks != 0) active->Complain(HostCall::kDisposeHandle, "still locked");
  active->handles_.erase(handle);
}

std::int32_t MemoryHost::Procedures::GetHandleSize(std::intptr_t handle) {
  std::int32_t result = 0;
  if (active->FailsNow(HostCall::kGetHandleSize, result)) return 0;
  const HandleBlock* block = active->FindHandle(HostCall::kGetHandleSize, handle);
  return block == nullptr ? 0 : static_cast<std::int32_t>(block->bytes.size());
}

std::int16_t MemoryHost::Procedures::SetHandleSize(std::intptr_t handle, std::int32_t size) {
  std::int32_t result = 0;
  if (active->FailsNow(HostCall::kSetHandleSize, result)) return static_cast<std::int16_t>(result);
  HandleBlock* block = active->FindHandle(HostCall::kSetHandleSize, handle);
  if (block == nullptr) return kHostResultNoMemory;
  block->bytes.resize(static_cast<std::size_t>(size));
  return 0;
}

void* MemoryHost::Procedures::LockHandle(std::intptr_t handle, std::uint8_t moveHigh) {
  std::int32_t result = 0;
  if (active->FailsNow(HostCall::kLockHandle, result)) return nullptr;
  HandleBlock* block = active->FindHandle(HostCall::kLockHandle, handle);
  if (block == nullptr) return nullptr;
  if (moveHigh != 1) active->Complain(HostCall::kLockHandle, "not moved high");
  ++block->locks;
  return block->bytes.data();
}

void MemoryHost::Procedures::UnlockHandle(std::intptr_t handle) {
  std::int32_t result = 0;
  active->FailsNow(HostCall::kUnlockHandle, result);
  HandleBlock* block = active->FindHandle(HostCall::kUnlockHandle, handle);
  if (block == nullptr) return;
  if (block->locks == 0) {
    active->Complain(HostCall::kUnlockHandle, "not locked");
    return;
  }
  --block->locks;
}

}  // namespace mixdecks
