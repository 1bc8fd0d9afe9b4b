// A latch of a mutex and a condition: the cross compiler's std::latch now and then loses the
// wake-up when it counts down just as a thread starts to wait.

#pragma once

#include <condition_variable>
#include <mutex>

namespace mixdecks {

class Latch {
 public:
  explicit Latch(int count) : count_(count) {}

  void CountDown() {
    const std::lock_guard guard(mutex_);
    --count_;
    reached_.notify_all();
  }

  void ArriveAndWait() {
    CountDown();
    Wait();
  }

  void Wait() {
    std::unique_lock lock(mutex_);
    reached_.wait(lock, [this] { return count_ <= 0; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable reached_;
  int count_;
};

}  // namespace mixdecks
