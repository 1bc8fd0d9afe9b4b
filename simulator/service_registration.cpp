#include "simulator/service_registration.h"

#include <atomic>

namespace mixdecks::simulator {
namespace {

// A service class is a plain function, which finds its simulator here.
std::atomic<SwitcherSimulator*> registeredSimulator = nullptr;

HResult CreateDiscovery(ITMKSwitcherDiscovery** discovery) {
  return registeredSimulator.load()->CreateDiscovery(discovery);
}

}  // namespace

ScopedServiceRegistration::ScopedServiceRegistration(SwitcherSimulator& simulator) noexcept
    : formerSimulator_(registeredSimulator.exchange(&simulator)) {
  formerFactory_ = RegisterServiceClass(&CreateDiscovery);
}

ScopedServiceRegistration::~ScopedServiceRegistration() {
  RegisterServiceClass(formerFactory_);
  registeredSimulator = formerSimulator_;
}

}  // namespace mixdecks::simulator
