// Counts the service's callbacks that are inside an object, so that its end can wait for them, and
// turns away those that come later.
#pragma once

#include <atomic>
#include <cstdint>

#include "control/wait_primitives.h"

namespace mixdecks {

/// Callbacks pass through it on any thread of the service; one thread closes it. A callback that
/// passes holds no lock on its way in or out. A closed gate holds nothing of the system's.
class CallbackGate {
 public:
  CallbackGate() noexcept;
  ~CallbackGate();
  CallbackGate(const CallbackGate&) = delete;
  CallbackGate& operator=(const CallbackGate&) = delete;

  /// Whether the system gave what the gate needs.
  bool Usable() const noexcept { return usable_; }

  /// Lets no callback in any more and returns when none is inside. Once.
  void Close() noexcept;

  /// Held by a callback from its first step to its last; false when the gate was closed.
  class Pass {
   public:
    explicit Pass(CallbackGate& gate) noexcept : gate_(gate), granted_(gate.Enter()) {}
    ~Pass() {
      if (granted_) gate_.Leave();
    }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;
    explicit operator bool() const noexcept { return granted_; }

   private:
    CallbackGate& gate_;
    bool granted_;
  };

 private:
  static constexpr std::uint32_t kClosed = 0x80000000;

  bool Enter() noexcept;
  void Leave() noexcept;
  void DestroyWaitingObjects() noexcept;

  std::atomic<std::uint32_t> state_{0};  ///< callbacks inside; with `kClosed` once it is closed
  WaitMutex mutex_;                      ///< guards the next two; nothing is taken while it is held
  bool emptied_ = false;                 ///< the last callback left a closed gate
  WaitEventPair emptiedEvent_;
  bool usable_;
};

}  // namespace mixdecks
