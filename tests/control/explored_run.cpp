#include "tests/control/explored_run.h"

#include <algorithm>
#include <utility>

namespace mixdecks::testing {
namespace {

thread_local ExploredRun* currentRun = nullptr;
thread_local ExploredThread* currentThread = nullptr;

}  // namespace

std::size_t Decisions::Take(std::size_t options) {
  if (options == 1) return 0;
  if (depth_ == path_.size()) path_.push_back({0, options});
  return path_[depth_++].taken;
}

bool Decisions::Next() {
  depth_ = 0;
  while (!path_.empty() && ++path_.back().taken == path_.back().options)
    path_.pop_back();
  return !path_.empty();
}

std::string Decisions::Describe() const {
  std::string text;
  for (const Decision& decision : path_)
    text += std::to_string(decision.taken) + " ";
  return text;
}

ExploredRun::ExploredRun(Decisions& decisions, int interruptions)
    : decisions_(decisions), interruptionsLeft_(interruptions) {}

ExploredRun& ExploredRun::Current() {
  return *currentRun;
}

ExploredThread& ExploredRun::Self() {
  return *currentThread;
}

void ExploredRun::Run(const std::function<void()>& scenario) {
  std::unique_lock lock(gate_);
  threads_.push_back(std::make_unique<ExploredThread>());
  ExploredThread& first = *threads_.back();
  first.body = [&scenario] {
    scenario();
    return 0;
  };
  Launch(first);
  PassTurn();
  over_.wait(lock, [this] { return isOver_; });
  lock.unlock();
  for (const auto& thread : threads_) {
    if (!standsStill_) {
      thread->thread.join();
    } else {
      thread->thread.detach();
    }
  }
  if (!standsStill_ && !objects_.empty()) Fail("waiting objects were left behind");
}

ExploredThread* ExploredRun::StartThread(std::function<int()> body) {
  const std::lock_guard lock(gate_);
  threads_.push_back(std::make_unique<ExploredThread>());
  threads_.back()->body = std::move(body);
  Launch(*threads_.back());
  return threads_.back().get();
}

void ExploredRun::Launch(ExploredThread& thread) {
  thread.canGoOn = [] { return true; };
  thread.id = static_cast<std::uint32_t>(threads_.size());
  thread.thread = std::thread([this, &thread] { RunThread(thread); });
}

void ExploredRun::RunThread(ExploredThread& thread) {
  currentRun = this;
  currentThread = &thread;
  {
    std::unique_lock lock(gate_);
    thread.turn.wait(lock, [&] { return running_ == &thread; });
  }
  thread.exitCode = static_cast<std::uint32_t>(thread.body());
  const std::lock_guard lock(gate_);
  thread.ended = true;
  PassTurn();
}

void ExploredRun::Pause(std::function<bool()> canGoOn) {
  ExploredThread& self = Self();
  std::unique_lock lock(gate_);
  self.canGoOn = std::move(canGoOn);
  PassTurn();
  self.turn.wait(lock, [&] { return running_ == &self; });
}

void ExploredRun::PauseUntilIdle() {
  Self().waitsForIdle = true;
  Pause([] { return false; });
  Self().waitsForIdle = false;
}

/// The threads that can go on, first the one that runs now.
std::vector<ExploredThread*> ExploredRun::Ready() const {
  std::vector<ExploredThread*> ready;
  for (const auto& thread : threads_) {
    if (thread->ended || !thread->canGoOn()) continue;
    ready.insert(thread.get() == running_ ? ready.begin() : ready.end(), thread.get());
  }
  if (!ready.empty()) return ready;
  for (const auto& thread : threads_) {
    if (thread->waitsForIdle) return {thread.get()};
  }
  return {};
}

void ExploredRun::PassTurn() {
  const std::vector<ExploredThread*> ready = Ready();
  if (ready.empty()) {
    running_ = nullptr;
    standsStill_ = std::any_of(threads_.begin(), threads_.end(),
                               [](const auto& thread) { return !thread->ended; });
    if (standsStill_) Fail("no thread can go on");
    isOver_ = true;
    over_.notify_all();
    return;
  }
  const bool stays = ready.front() == running_;
  const std::size_t choice = stays && interruptionsLeft_ == 0 ? 0 : decisions_.Take(ready.size());
  if (stays && choice != 0) --interruptionsLeft_;
  running_ = ready[choice];
  running_->turn.notify_all();
}

void ExploredRun::Fail(const std::string& what) {
  if (failure_.empty()) failure_ = what;
}

bool ExploredRun::CreationFails() {
  return ++creations_ == failingCreation_;
}

}  // namespace mixdecks::testing
