#include "simulator/service_threads.h"

#include <system_error>
#include <utility>

namespace mixdecks::simulator {
namespace {

void Join(std::list<std::thread>& threads) {
  for (std::thread& thread : threads)
    thread.join();
  threads.clear();
}

}  // namespace

bool ServiceThreads::Start(std::function<void()> task) {
  const std::lock_guard lock(mutex_);
  if (stopped_) return false;
  Join(ended_);
  const auto self = running_.emplace(running_.end());
  try {
    // The thread waits for this lock before it touches its place in the list.
    *self = std::thread([this, self, task = std::move(task)] { Run(self, task); });
  } catch (const std::system_error&) {
    running_.erase(self);
    return false;
  }
  return true;
}

void ServiceThreads::Run(Threads::iterator self, const std::function<void()>& task) {
  task();
  const std::lock_guard lock(mutex_);
  ended_.splice(ended_.end(), running_, self);
  if (running_.empty()) idle_.notify_all();
}

void ServiceThreads::WaitUntilIdle() {
  std::unique_lock lock(mutex_);
  idle_.wait(lock, [this] { return running_.empty(); });
}

void ServiceThreads::Stop() {
  std::unique_lock lock(mutex_);
  stopped_ = true;
  idle_.wait(lock, [this] { return running_.empty(); });
  Join(ended_);
}

}  // namespace mixdecks::simulator
