#include "transfer/callback_gate.h"

namespace mixdecks {

CallbackGate::CallbackGate() noexcept
    : usable_(CreateWaitMutex(mutex_) == 0 && CreateWaitEventPair(emptiedEvent_) == 0) {}

CallbackGate::~CallbackGate() {
  DestroyWaitingObjects();
}

void CallbackGate::Close() noexcept {
  {
    const WaitLock lock(mutex_);
    const bool busy = state_.fetch_or(kClosed) != 0;
    while (busy && !emptied_ && WaitEventReleasing(emptiedEvent_, mutex_) == 0) {
    }
  }
  DestroyWaitingObjects();
}

bool CallbackGate::Enter() noexcept {
  std::uint32_t state = state_;
  while ((state & kClosed) == 0) {
    if (state_.compare_exchange_weak(state, state + 1)) return true;
  }
  return false;
}

// The last one out of a closed gate signals before it lets the mutex go: whoever closes cannot get
// on, and nothing here can end, until this thread is through with both.
void CallbackGate::Leave() noexcept {
  if (--state_ != kClosed) return;
  const WaitLock lock(mutex_);
  emptied_ = true;
  SignalWaitEvent(emptiedEvent_);
}

void CallbackGate::DestroyWaitingObjects() noexcept {
  if (emptiedEvent_.record != nullptr) DestroyWaitEventPair(emptiedEvent_);
  if (mutex_.handle != nullptr) DestroyWaitMutex(mutex_);
  emptiedEvent_ = {};
  mutex_ = {};
}

}  // namespace mixdecks
