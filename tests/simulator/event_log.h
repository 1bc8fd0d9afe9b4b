// What happened, in order, on whatever threads; and waiting for it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace mixdecks::test {

/// A wait that lasts this long has failed; nothing is timed by it.
inline constexpr std::chrono::seconds kPatience{60};

class EventLog {
 public:
  void Add(std::string event) {
    const std::lock_guard lock(mutex_);
    events_.push_back(std::move(event));
    added_.notify_all();
  }

  /// Waits until the event has happened `times` times.
  void Await(const std::string& event, long times = 1) {
    std::unique_lock lock(mutex_);
    const bool came = added_.wait_for(lock, kPatience,
                                      [&] { return std::ranges::count(events_, event) >= times; });
    EXPECT_TRUE(came) << "waited in vain for " << event;
  }

  std::vector<std::string> All() const {
    const std::lock_guard lock(mutex_);
    return events_;
  }

  bool Has(const std::string& event) const {
    const std::lock_guard lock(mutex_);
    return std::ranges::find(events_, event) != events_.end();
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable added_;
  std::vector<std::string> events_;
};

/// A door that threads wait at until it is opened for good.
class Gate {
 public:
  void Open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    opened_.notify_all();
  }
  void Pass() {
    std::unique_lock lock(mutex_);
    EXPECT_TRUE(opened_.wait_for(lock, kPatience, [this] { return open_; }))
        << "a gate stayed shut";
  }

 private:
  std::mutex mutex_;
  std::condition_variable opened_;
  bool open_ = false;
};

}  // namespace mixdecks::test
