// The simulator's own threads: one for each thing under way, so that a client which holds up one
// callback holds up nothing else.
//
// Any thread may call, but for waiting and stopping: those must not be called on a thread that was
// started here.
#pragma once

#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

namespace mixdecks::simulator {

class ServiceThreads {
 public:
  ServiceThreads() = default;
  ServiceThreads(const ServiceThreads&) = delete;
  ServiceThreads& operator=(const ServiceThreads&) = delete;
  ~ServiceThreads() { Stop(); }

  /// Runs `task` on a thread of its own. False after the stop, or when the system has no thread.
  bool Start(std::function<void()> task);

  /// Returns when no task runs.
  void WaitUntilIdle();

  /// Lets no task start any more and waits for those that run.
  void Stop();

 private:
  using Threads = std::list<std::thread>;

  void Run(Threads::iterator self, const std::function<void()>& task);

  std::mutex mutex_;
  std::condition_variable idle_;
  Threads running_;
  Threads ended_;  ///< to be joined, which takes no time
  bool stopped_ = false;
};

}  // namespace mixdecks::simulator
