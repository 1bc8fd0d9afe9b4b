// Makes a simulator the process's switcher service, where there is no COM.
#pragma once

#include "simulator/switcher_simulator.h"
#include "transfer/service_activation.h"

namespace mixdecks::simulator {

/// While it lives, `CreateSwitcherDiscovery` creates objects of the given simulator. One at a time
/// counts: a later one takes over and gives back on its end. Made and ended on one thread, while
/// no other thread creates discovery objects.
class ScopedServiceRegistration {
 public:
  explicit ScopedServiceRegistration(SwitcherSimulator& simulator) noexcept;
  ScopedServiceRegistration(const ScopedServiceRegistration&) = delete;
  ScopedServiceRegistration& operator=(const ScopedServiceRegistration&) = delete;
  ~ScopedServiceRegistration();

 private:
  ServiceClassFactory formerFactory_;
  SwitcherSimulator* formerSimulator_;
};

}  // namespace mixdecks::simulator
