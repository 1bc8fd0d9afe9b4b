// One run of an exploration: its threads, of which one runs at a time, and its waiting objects.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace mixdecks::testing {

/// The decisions of one run, and the way to the next run's.
class Decisions {
 public:
  /// Takes one of `options` ways: the one that this run is to try.
  std::size_t Take(std::size_t options);
  /// Moves on to the next run. False when all ways were tried.
  bool Next();
  std::string Describe() const;

 private:
  struct Decision {
    std::size_t taken;
    std::size_t options;
  };
  std::vector<Decision> path_;
  std::size_t depth_ = 0;
};

struct ExploredThread {
  std::function<bool()> canGoOn;
  std::function<int()> body;
  bool waitsForIdle = false;
  bool ended = false;
  std::uint32_t exitCode = 0;
  std::uint32_t id = 0;
  std::condition_variable turn;
  std::thread thread;
};

class ExploredRun {
 public:
  ExploredRun(Decisions& decisions, int interruptions);

  /// Starts the first thread and returns when all have ended or none can go on.
  void Run(const std::function<void()>& scenario);

  // On one of the run's threads.
  static ExploredRun& Current();
  static ExploredThread& Self();
  /// Lets another thread come in, and returns when `canGoOn` holds and it is this one's turn.
  void Pause(std::function<bool()> canGoOn);
  void PauseUntilIdle();
  ExploredThread* StartThread(std::function<int()> body);
  void Fail(const std::string& what);

  /// Whether the object that is created now is the one that has to fail.
  bool CreationFails();
  void FailCreation(int number) { failingCreation_ = number; }
  /// Makes a waiting object's model. It lives as long as the run, so that late use is noticed.
  template <class Model>
  Model* Make() {
    auto model = std::make_shared<Model>();
    models_.push_back(model);
    objects_.insert(model.get());
    return model.get();
  }
  /// The model behind a handle. Null when there is none; and a failure when it was destroyed.
  template <class Model>
  Model* Find(void* handle) {
    if (objects_.count(handle) != 0) return static_cast<Model*>(handle);
    if (handle != nullptr) Fail("a waiting object was used after its end");
    return nullptr;
  }
  void Destroy(void* model) { objects_.erase(model); }

  bool StandsStill() const { return standsStill_; }
  const std::string& Failure() const { return failure_; }
  int eventPairs = 0;            ///< created so far
  std::set<int> endedSignalled;  ///< numbers of the event pairs that ended with a signal

 private:
  void Launch(ExploredThread& thread);
  void RunThread(ExploredThread& thread);
  void PassTurn();
  std::vector<ExploredThread*> Ready() const;

  Decisions& decisions_;
  int interruptionsLeft_;
  std::mutex gate_;  ///< guards whose turn it is
  std::condition_variable over_;
  std::vector<std::unique_ptr<ExploredThread>> threads_;
  ExploredThread* running_ = nullptr;
  bool isOver_ = false;
  bool standsStill_ = false;
  std::vector<std::shared_ptr<void>> models_;
  std::set<void*> objects_;  ///< the models that were not destroyed
  int creations_ = 0;
  int failingCreation_ = 0;
  std::string failure_;
};

}  // namespace mixdecks::testing
