// Counts the service's callbacks that are inside an object, so that its end can wait for them.
#pragma once

#include "control/wait_primitives.h"

namespace mixdecks {

/// Callbacks pass through it on any thread of the service; one thread waits for them, once no
/// further callback can begin. A callback that passes holds no lock on its way in or out.
class CallbackGate {
 public:
  CallbackGate() noexcept;
  ~CallbackGate();
  CallbackGate(const CallbackGate&) = delete;
  CallbackGate& operator=(const CallbackGate&) = delete;

  /// Whether the system gave what the gate needs.
  bool Usable() const noexcept { return usable_; }

  /// Returns when no callback is inside.
  void WaitUntilEmpty() noexcept;

  /// Held by a callback from its first step to its last.
  class Pass {
   public:
    explicit Pass(CallbackGate& gate) noexcept : gate_(gate) { gate_.Enter(); }
    ~Pass() { gate_.Leave(); }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

   private:
    CallbackGate& gate_;
  };

 private:
  void Enter() noexcept;
  void Leave() noexcept;

  WaitMutex mutex_;  ///< guards the count; nothing else is taken while it is held
  WaitEventPair emptied_;
  int inside_ = 0;
  bool usable_;
};

}  // namespace mixdecks
