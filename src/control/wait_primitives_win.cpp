#include <windows.h>

#include "control/wait_primitives.h"
#include "platform/heap.h"

namespace mixdecks {
namespace {

struct EventPairRecord {
  HANDLE manualReset;  ///< the broadcast half: waited on, never set
  HANDLE autoReset;
};

EventPairRecord* RecordOf(const WaitEventPair& pair) {
  return static_cast<EventPairRecord*>(pair.record);
}

void DestroyRecord(EventPairRecord* record) {
  if (record->autoReset != nullptr) CloseHandle(record->autoReset);
  if (record->manualReset != nullptr) CloseHandle(record->manualReset);
  HeapRelease(record);
}

struct WaitThreadStart {
  WaitThreadFunction function;
  void* argument;
};

DWORD WINAPI RunWaitThread(void* parameter) {
  const WaitThreadStart start = *static_cast<WaitThreadStart*>(parameter);
  HeapRelease(parameter);
  return static_cast<DWORD>(start.function(start.argument));
}

}  // namespace

int CreateWaitMutex(WaitMutex& mutex) noexcept {
  mutex.handle = CreateMutexA(nullptr, FALSE, nullptr);
  return mutex.handle == nullptr ? 1 : 0;
}

int DestroyWaitMutex(WaitMutex& mutex) noexcept {
  if (mutex.handle != nullptr) CloseHandle(mutex.handle);
  mutex.handle = nullptr;
  return 0;
}

int LockWaitMutex(WaitMutex& mutex) noexcept {
  return WaitForSingleObject(mutex.handle, INFINITE) == WAIT_FAILED ? 1 : 0;
}

int UnlockWaitMutex(WaitMutex& mutex) noexcept {
  return ReleaseMutex(mutex.handle) ? 0 : 1;
}

int CreateWaitEventPair(WaitEventPair& pair) noexcept {
  auto* record = static_cast<EventPairRecord*>(HeapAllocate(sizeof(EventPairRecord)));
  if (record == nullptr) return 1;
  record->autoReset = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  record->manualReset = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  if (record->autoReset == nullptr || record->manualReset == nullptr) {
    DestroyRecord(record);
    return 1;
  }
  pair.record = record;
  return 0;
}

int DestroyWaitEventPair(WaitEventPair& pair) noexcept {
  if (pair.record != nullptr) DestroyRecord(RecordOf(pair));
  pair.record = nullptr;
  return 0;
}

int SignalWaitEvent(WaitEventPair& pair) noexcept {
  if (pair.record == nullptr) return 1;
  return SetEvent(RecordOf(pair)->autoReset) ? 0 : 1;
}

int WaitEventReleasing(WaitEventPair& pair, WaitMutex& mutex) noexcept {
  if (pair.record == nullptr) return 1;
  const HANDLE events[] = {RecordOf(pair)->autoReset, RecordOf(pair)->manualReset};
  if (!ReleaseMutex(mutex.handle)) return 1;
  WaitForMultipleObjects(2, events, FALSE, INFINITE);
  return LockWaitMutex(mutex);
}

std::uint32_t StartWaitThread(WaitThread& thread, std::uintptr_t /*attributes*/,
                              WaitThreadFunction function, void* argument) noexcept {
  thread.handle = nullptr;
  auto* start = static_cast<WaitThreadStart*>(HeapAllocate(sizeof(WaitThreadStart)));
  if (start == nullptr) return kNoMemoryForThread;
  *start = {function, argument};
  thread.handle = CreateThread(nullptr, 0, RunWaitThread, start, 0, nullptr);
  if (thread.handle != nullptr) return 0;
  const DWORD error = GetLastError();
  HeapRelease(start);
  // 0 would mean that the thread runs, and somebody would wait for it for ever.
  return error != 0 ? error : kNoMemoryForThread;
}

int JoinWaitThread(WaitThread thread, std::uintptr_t* exitCode) noexcept {
  WaitForSingleObject(thread.handle, INFINITE);
  if (exitCode != nullptr) {
    DWORD code = 0;
    GetExitCodeThread(thread.handle, &code);
    *exitCode = code;
  }
  CloseHandle(thread.handle);
  return 0;
}

int JoinWaitThreadUnlessSelf(WaitThread thread, std::uintptr_t* exitCode,
                             std::uint32_t threadId) noexcept {
  if (CurrentWaitThreadId() != threadId) return JoinWaitThread(thread, exitCode);
  CloseHandle(thread.handle);
  if (exitCode != nullptr) *exitCode = 0;
  return 0;
}

std::uint32_t CurrentWaitThreadId() noexcept {
  return GetCurrentThreadId();
}

}  // namespace mixdecks
