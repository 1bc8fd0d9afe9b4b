// Sees to it that closing ends.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <utility>

namespace mixdecks {

/// Calls `cut` on a thread of its own unless it is destroyed within `limit`. Not at all when `cut`
/// is empty.
class ClosingLimit {
 public:
  ClosingLimit(std::chrono::milliseconds limit, std::function<void()> cut) {
    if (!cut) return;
    watchdog_ = std::thread([closed = closed_.get_future(), limit, cut = std::move(cut)] {
      if (closed.wait_for(limit) == std::future_status::timeout) cut();
    });
  }
  ~ClosingLimit() {
    closed_.set_value();
    if (watchdog_.joinable()) watchdog_.join();
  }
  ClosingLimit(const ClosingLimit&) = delete;
  ClosingLimit& operator=(const ClosingLimit&) = delete;

 private:
  std::promise<void> closed_;
  std::thread watchdog_;
};

}  // namespace mixdecks
