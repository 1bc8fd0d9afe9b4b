// The objects of one connected switcher and the mutex that guards them.
#pragma once

#include "control/wait_primitives.h"
#include "transfer/service_pointer.h"

namespace mixdecks {

/// All three objects are null unless a switcher is connected. The mutex is held over field updates
/// and short service calls; never while scaling, converting, connecting or posting a result.
struct SwitcherConnection {
  SwitcherConnection() noexcept { CreateWaitMutex(transferMutex); }
  ~SwitcherConnection() { DestroyMutex(); }
  SwitcherConnection(const SwitcherConnection&) = delete;
  SwitcherConnection& operator=(const SwitcherConnection&) = delete;

  /// Whether the system gave a mutex.
  bool Usable() const noexcept { return transferMutex.handle != nullptr; }
  /// Gives the mutex back to the system; nobody may use it any more.
  void DestroyMutex() noexcept {
    if (Usable()) DestroyWaitMutex(transferMutex);
    transferMutex = {};
  }

  WaitMutex transferMutex;
  ServicePointer<ITMKSwitcher> switcher;
  ServicePointer<ITMKSwitcherMediaPool> mediaPool;
  ServicePointer<ITMKSwitcherStills> stills;
};

}  // namespace mixdecks
