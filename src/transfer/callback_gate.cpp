#include "transfer/callback_gate.h"

namespace mixdecks {

CallbackGate::CallbackGate() noexcept
    : usable_(CreateWaitMutex(mutex_) == 0 && CreateWaitEventPair(emptied_) == 0) {}

CallbackGate::~CallbackGate() {
  DestroyWaitEventPair(emptied_);
  if (mutex_.handle != nullptr) DestroyWaitMutex(mutex_);
}

void CallbackGate::WaitUntilEmpty() noexcept {
  const WaitLock lock(mutex_);
  while (inside_ > 0 && WaitEventReleasing(emptied_, mutex_) == 0) {
  }
}

void CallbackGate::Enter() noexcept {
  const WaitLock lock(mutex_);
  ++inside_;
}

// Signals before the mutex is let go: the waiter cannot get on, and the gate cannot end, until
// this thread is through with both.
void CallbackGate::Leave() noexcept {
  const WaitLock lock(mutex_);
  if (--inside_ == 0) SignalWaitEvent(emptied_);
}

}  // namespace mixdecks
