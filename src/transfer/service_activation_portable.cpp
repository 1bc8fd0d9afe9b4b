#include <atomic>

#include "transfer/service_activation.h"

namespace mixdecks {
namespace {

std::atomic<ServiceClassFactory> serviceClass = nullptr;

}  // namespace

HResult EnterService() noexcept {
  return kResultOk;
}

void LeaveService() noexcept {}

HResult CreateSwitcherDiscovery(ITMKSwitcherDiscovery** discovery) noexcept {
  *discovery = nullptr;
  const ServiceClassFactory create = serviceClass;
  return create == nullptr ? kClassNotRegistered : create(discovery);
}

ServiceClassFactory RegisterServiceClass(ServiceClassFactory factory) noexcept {
  return serviceClass.exchange(factory);
}

}  // namespace mixdecks
