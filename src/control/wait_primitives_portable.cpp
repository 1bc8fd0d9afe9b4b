// Mutexes and events on the standard library, threads on POSIX (for their error numbers).

#include <pthread.h>

#include <atomic>
#include <bit>
#include <condition_variable>
#include <mutex>
#include <new>
#include <utility>

#include "control/wait_primitives.h"
#include "platform/heap.h"

namespace mixdecks {
namespace {

/// A lock that knows its owner: taking it again counts, giving it back is the owner's alone.
struct MutexRecord {
  std::mutex gate;  ///< held by the owner from its first lock to its last unlock
  std::atomic<std::uint32_t> owner{0};  ///< a thread's id, or 0
  std::uint32_t depth = 0;              ///< the owner's locks that are still to be undone
  MutexRecord* nextOwned = nullptr;     ///< the next mutex of the same owner
};

/// The mutexes that a thread owns. What is left when the thread ends is let go, so that the next
/// thread can lock it.
class OwnedMutexes {
 public:
  ~OwnedMutexes() {
    while (first_ != nullptr)
      LetGo(*first_);
  }

  void Add(MutexRecord& mutex) { mutex.nextOwned = std::exchange(first_, &mutex); }

  void LetGo(MutexRecord& mutex) {
    MutexRecord** link = &first_;
    while (*link != &mutex)
      link = &(*link)->nextOwned;
    *link = std::exchange(mutex.nextOwned, nullptr);
    mutex.depth = 0;
    mutex.owner = 0;
    mutex.gate.unlock();
  }

 private:
  MutexRecord* first_ = nullptr;
};

thread_local OwnedMutexes ownedMutexes;

MutexRecord* RecordOf(const WaitMutex& mutex) {
  return static_cast<MutexRecord*>(mutex.handle);
}

/// An event that is remembered until somebody waits. It has no broadcast half: nothing sets that.
struct EventRecord {
  std::mutex gate;
  std::condition_variable changed;
  bool signalled = false;
};

EventRecord* RecordOf(const WaitEventPair& pair) {
  return static_cast<EventRecord*>(pair.record);
}

void WaitForSignal(EventRecord& event) {
  std::unique_lock lock(event.gate);
  event.changed.wait(lock, [&event] { return event.signalled; });
  event.signalled = false;
}

struct WaitThreadStart {
  WaitThreadFunction function;
  void* argument;
};

void* RunWaitThread(void* parameter) {
  const WaitThreadStart start = *static_cast<WaitThreadStart*>(parameter);
  HeapRelease(parameter);
  const auto exitCode = static_cast<std::uint32_t>(start.function(start.argument));
  return std::bit_cast<void*>(std::uintptr_t{exitCode});
}

}  // namespace

int CreateWaitMutex(WaitMutex& mutex) noexcept {
  mutex.handle = new (std::nothrow) MutexRecord;
  return mutex.handle == nullptr ? 1 : 0;
}

int DestroyWaitMutex(WaitMutex& mutex) noexcept {
  delete RecordOf(mutex);
  mutex.handle = nullptr;
  return 0;
}

int LockWaitMutex(WaitMutex& mutex) noexcept {
  MutexRecord* record = RecordOf(mutex);
  if (record == nullptr) return 1;
  const std::uint32_t self = CurrentWaitThreadId();
  if (record->owner != self) {
    record->gate.lock();
    record->owner = self;
    ownedMutexes.Add(*record);
  }
  ++record->depth;
  return 0;
}

int UnlockWaitMutex(WaitMutex& mutex) noexcept {
  MutexRecord* record = RecordOf(mutex);
  if (record == nullptr || record->owner != CurrentWaitThreadId()) return 1;
  if (--record->depth == 0) ownedMutexes.LetGo(*record);
  return 0;
}

int CreateWaitEventPair(WaitEventPair& pair) noexcept {
  void* block = HeapAllocate(sizeof(EventRecord));
  if (block == nullptr) return 1;
  pair.record = new (block) EventRecord;
  return 0;
}

int DestroyWaitEventPair(WaitEventPair& pair) noexcept {
  if (pair.record == nullptr) return 0;
  RecordOf(pair)->~EventRecord();
  HeapRelease(std::exchange(pair.record, nullptr));
  return 0;
}

int SignalWaitEvent(WaitEventPair& pair) noexcept {
  EventRecord* event = RecordOf(pair);
  if (event == nullptr) return 1;
  const std::lock_guard lock(event->gate);
  event->signalled = true;
  event->changed.notify_one();
  return 0;
}

int WaitEventReleasing(WaitEventPair& pair, WaitMutex& mutex) noexcept {
  if (pair.record == nullptr || UnlockWaitMutex(mutex) != 0) return 1;
  WaitForSignal(*RecordOf(pair));
  return LockWaitMutex(mutex);
}

std::uint32_t StartWaitThread(WaitThread& thread, std::uintptr_t /*attributes*/,
                              WaitThreadFunction function, void* argument) noexcept {
  thread.handle = nullptr;
  auto* start = static_cast<WaitThreadStart*>(HeapAllocate(sizeof(WaitThreadStart)));
  if (start == nullptr) return kNoMemoryForThread;
  *start = {function, argument};
  pthread_t id{};
  const int error = pthread_create(&id, nullptr, RunWaitThread, start);
  if (error != 0) {
    HeapRelease(start);
    return static_cast<std::uint32_t>(error);
  }
  thread.handle = std::bit_cast<void*>(id);
  return 0;
}

int JoinWaitThread(WaitThread thread, std::uintptr_t* exitCode) noexcept {
  void* result = nullptr;
  pthread_join(std::bit_cast<pthread_t>(thread.handle), &result);
  if (exitCode != nullptr) *exitCode = std::bit_cast<std::uintptr_t>(result);
  return 0;
}

int JoinWaitThreadUnlessSelf(WaitThread thread, std::uintptr_t* exitCode,
                             std::uint32_t threadId) noexcept {
  if (CurrentWaitThreadId() != threadId) return JoinWaitThread(thread, exitCode);
  pthread_detach(std::bit_cast<pthread_t>(thread.handle));
  if (exitCode != nullptr) *exitCode = 0;
  return 0;
}

std::uint32_t CurrentWaitThreadId() noexcept {
  static std::atomic<std::uint32_t> lastId{0};
  thread_local const std::uint32_t id = ++lastId;
  return id;
}

}  // namespace mixdecks
