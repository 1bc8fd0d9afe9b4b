// Waiting for something to become so, with a limit.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>

namespace mixdecks::e2e {

/// How long anything may take before a test gives up on it.
inline constexpr std::chrono::seconds kPatience(30);

/// Looks again and again until `condition` holds. False when it does not within the limit.
inline bool WaitFor(const std::function<bool()>& condition,
                    std::chrono::milliseconds limit = kPatience) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    Sleep(2);
  }
  return true;
}

}  // namespace mixdecks::e2e
