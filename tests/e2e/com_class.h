// The switcher's class as COM finds it in this process: each creation asks a simulator.
#pragma once

#include <windows.h>

#include "simulator/switcher_simulator.h"

namespace mixdecks::e2e {

/// Registers the class on this thread while it lives; the simulator outlives it. The thread is
/// prepared for COM meanwhile.
class ScopedComClass {
 public:
  explicit ScopedComClass(simulator::SwitcherSimulator& simulator);
  ~ScopedComClass();
  ScopedComClass(const ScopedComClass&) = delete;
  ScopedComClass& operator=(const ScopedComClass&) = delete;

 private:
  DWORD cookie_ = 0;
};

}  // namespace mixdecks::e2e
