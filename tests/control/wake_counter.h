// Wake-ups posted to the front end's thread, as its message queue would hold them.
#pragma once

#include <condition_variable>
#include <mutex>

namespace mixdecks::testing {

class WakeCounter {
 public:
  void Post() {
    const std::lock_guard lock(mutex_);
    ++posted_;
    changed_.notify_all();
  }
  /// Waits for a wake-up and takes it.
  void Take() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return posted_ > taken_; });
    ++taken_;
  }
  /// Takes a wake-up if there is one.
  bool TryTake() {
    const std::lock_guard lock(mutex_);
    if (posted_ == taken_) return false;
    ++taken_;
    return true;
  }
  /// How many there have been.
  int Posted() {
    const std::lock_guard lock(mutex_);
    return posted_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int posted_ = 0;
  int taken_ = 0;
};

}  // namespace mixdecks::testing
