// Runs code that may fault and comes back all the same.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace mixdecks::proof {

enum class FaultKind { kAccess, kIllegalInstruction };

struct Fault {
  FaultKind kind = FaultKind::kAccess;
  /// The address that was touched, or the instruction that the processor refused.
  std::uintptr_t address = 0;
};

/// Calls `code` and gives nothing if it returned. If it faulted, the rest of it is abandoned
/// without unwinding, so it must hold nothing that needs releasing. One thread at a time, and not
/// from within trapped code.
std::optional<Fault> RunTrapped(const std::function<void()>& code);

}  // namespace mixdecks::proof
