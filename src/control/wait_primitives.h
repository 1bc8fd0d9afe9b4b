// The port to the system's waiting objects: a mutex, a condition made of an event pair, a thread.
//
// All logic is written against these operations alone. Each returns a plain integer, 0 for
// success; none throws. Any thread may call any of them. The Windows adapter uses kernel objects,
// the portable one gives the same table of operations and results. Locking, unlocking, signalling
// and waiting fail on an object that was not created; destroying it does nothing.
#pragma once

#include <cstdint>

namespace mixdecks {

/// A mutex, recursive on the thread that owns it. A mutex whose owner thread ended without
/// unlocking can be locked by the next.
struct WaitMutex {
  void* handle = nullptr;
};

/// A condition: an event that wakes one waiter and is remembered until somebody waits. Its
/// broadcast half exists and is waited on but never set. Used with a single waiter.
struct WaitEventPair {
  void* record = nullptr;
};

/// A running or ended thread that has not been joined.
struct WaitThread {
  void* handle = nullptr;
};

using WaitThreadFunction = int (*)(void* argument);

/// Error of `StartWaitThread` when there is no memory for its start record.
inline constexpr std::uint32_t kNoMemoryForThread = 0xC0000017;

/// Makes a mutex that nobody owns. 0, or 1 on failure; the handle is stored either way.
int CreateWaitMutex(WaitMutex& mutex) noexcept;
/// Always 0. Nobody may own or wait for the mutex.
int DestroyWaitMutex(WaitMutex& mutex) noexcept;
/// Waits without time limit. 0, or 1 if the wait failed; an abandoned mutex counts as success.
int LockWaitMutex(WaitMutex& mutex) noexcept;
/// 0, or 1 if the calling thread does not own the mutex.
int UnlockWaitMutex(WaitMutex& mutex) noexcept;

/// Makes both events, unsignalled. 0, or 1 on failure, with `pair` unchanged.
int CreateWaitEventPair(WaitEventPair& pair) noexcept;
/// Always 0. Nobody may wait for the pair.
int DestroyWaitEventPair(WaitEventPair& pair) noexcept;
/// Wakes the waiter, or the next one to wait. Two signals before a wait count as one. 0, or 1.
int SignalWaitEvent(WaitEventPair& pair) noexcept;
/// Releases the mutex, waits for a signal without time limit and takes the mutex again. Returns 1
/// without waiting if the calling thread does not own the mutex, and 1 if it could not be taken
/// again; else 0. A wake-up may be spurious: callers check their condition again.
int WaitEventReleasing(WaitEventPair& pair, WaitMutex& mutex) noexcept;

/// Starts a thread that runs `function(argument)`; the result becomes its exit code. `attributes`
/// is always 0 and ignored. 0, or an error number, and then `thread` is null. The record that
/// carries function and argument belongs to the new thread and is gone when `function` begins.
std::uint32_t StartWaitThread(WaitThread& thread, std::uintptr_t attributes,
                              WaitThreadFunction function, void* argument) noexcept;
/// Waits for the thread's end without time limit, stores its exit code (32 bits, widened without
/// sign) where `exitCode` points, if anywhere, and closes the handle. Always 0. Once per thread.
int JoinWaitThread(WaitThread thread, std::uintptr_t* exitCode) noexcept;
/// The same, unless the calling thread's id is `threadId`: then it does not wait, and stores 0.
int JoinWaitThreadUnlessSelf(WaitThread thread, std::uintptr_t* exitCode,
                             std::uint32_t threadId) noexcept;

/// The id of the calling thread, never 0.
std::uint32_t CurrentWaitThreadId() noexcept;

/// Holds a `WaitMutex` from its construction to its end.
class WaitLock {
 public:
  explicit WaitLock(WaitMutex& mutex) noexcept : mutex_(mutex) { LockWaitMutex(mutex_); }
  ~WaitLock() { UnlockWaitMutex(mutex_); }
  WaitLock(const WaitLock&) = delete;
  WaitLock& operator=(const WaitLock&) = delete;

 private:
  WaitMutex& mutex_;
};

}  // namespace mixdecks
