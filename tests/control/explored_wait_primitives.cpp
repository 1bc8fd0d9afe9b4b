// The wait primitives as an exploration sees them. Linked in place of a system's adapter.

#include <functional>

#include "control/wait_primitives.h"
#include "tests/control/exploration.h"
#include "tests/control/explored_run.h"

namespace mixdecks {
namespace {

using testing::ExploredRun;
using testing::ExploredThread;

struct MutexModel {
  ExploredThread* owner = nullptr;
  int depth = 0;
};

struct EventModel {
  int number = 0;
  bool signalled = false;
};

ExploredRun& Run() {
  return ExploredRun::Current();
}

MutexModel* Find(const WaitMutex& mutex) {
  return Run().Find<MutexModel>(mutex.handle);
}

EventModel* Find(const WaitEventPair& pair) {
  return Run().Find<EventModel>(pair.record);
}

}  // namespace

int CreateWaitMutex(WaitMutex& mutex) noexcept {
  mutex.handle = Run().CreationFails() ? nullptr : Run().Make<MutexModel>();
  return mutex.handle == nullptr ? 1 : 0;
}

// A destroyed object's handle stays, so that whoever still uses it is found out.
int DestroyWaitMutex(WaitMutex& mutex) noexcept {
  if (const MutexModel* model = Find(mutex)) {
    if (model->owner != nullptr) Run().Fail("a mutex was destroyed while somebody owned it");
  }
  Run().Destroy(mutex.handle);
  return 0;
}

int LockWaitMutex(WaitMutex& mutex) noexcept {
  MutexModel* model = Find(mutex);
  if (model == nullptr) return 1;
  ExploredThread* self = &ExploredRun::Self();
  if (model->owner != self) {
    Run().Pause([model] { return model->owner == nullptr; });
    if (Find(mutex) == nullptr) return 1;
  }
  model->owner = self;
  ++model->depth;
  return 0;
}

int UnlockWaitMutex(WaitMutex& mutex) noexcept {
  MutexModel* model = Find(mutex);
  if (model == nullptr || model->owner != &ExploredRun::Self()) return 1;
  if (--model->depth == 0) model->owner = nullptr;
  return 0;
}

int CreateWaitEventPair(WaitEventPair& pair) noexcept {
  const int number = ++Run().eventPairs;
  if (Run().CreationFails()) return 1;
  auto* model = Run().Make<EventModel>();
  model->number = number;
  pair.record = model;
  return 0;
}

int DestroyWaitEventPair(WaitEventPair& pair) noexcept {
  if (const EventModel* model = Find(pair)) {
    if (model->signalled) Run().endedSignalled.insert(model->number);
  }
  Run().Destroy(pair.record);
  return 0;
}

int SignalWaitEvent(WaitEventPair& pair) noexcept {
  EventModel* model = Find(pair);
  if (model == nullptr) return 1;
  model->signalled = true;
  return 0;
}

int WaitEventReleasing(WaitEventPair& pair, WaitMutex& mutex) noexcept {
  EventModel* model = Find(pair);
  if (model == nullptr || UnlockWaitMutex(mutex) != 0) return 1;
  Run().Pause([model] { return model->signalled; });
  model->signalled = false;
  return LockWaitMutex(mutex);
}

std::uint32_t StartWaitThread(WaitThread& thread, std::uintptr_t /*attributes*/,
                              WaitThreadFunction function, void* argument) noexcept {
  thread.handle = nullptr;
  if (Run().CreationFails()) return kNoMemoryForThread;
  thread.handle = Run().StartThread(std::bind_front(function, argument));
  testing::SchedulingPoint();
  return 0;
}

int JoinWaitThread(WaitThread thread, std::uintptr_t* exitCode) noexcept {
  const auto* explored = static_cast<ExploredThread*>(thread.handle);
  Run().Pause([explored] { return explored->ended; });
  if (exitCode != nullptr) *exitCode = explored->exitCode;
  return 0;
}

int JoinWaitThreadUnlessSelf(WaitThread thread, std::uintptr_t* exitCode,
                             std::uint32_t threadId) noexcept {
  if (CurrentWaitThreadId() != threadId) return JoinWaitThread(thread, exitCode);
  if (exitCode != nullptr) *exitCode = 0;
  return 0;
}

std::uint32_t CurrentWaitThreadId() noexcept {
  return ExploredRun::Self().id;
}

}  // namespace mixdecks
