// How the worker wakes the command's thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "control/export_control_listener.h"

namespace mixdecks {

class WakeUp final : public ExportControlListener {
 public:
  using Clock = std::chrono::steady_clock;

  void WakeUIThread() override {
    const std::lock_guard lock(mutex_);
    awake_ = true;
    changed_.notify_one();
  }

  /// Waits until somebody wakes this thread, or until `limit`. Whether somebody did; wake-ups
  /// before the call count, and several of them as one.
  bool WaitUntil(Clock::time_point limit) {
    std::unique_lock lock(mutex_);
    changed_.wait_until(lock, limit, [this] { return awake_; });
    return std::exchange(awake_, false);
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool awake_ = false;
};

}  // namespace mixdecks
