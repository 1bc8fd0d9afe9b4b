#include "tests/transfer/noted_activation.h"

#include "tests/transfer/fake_service.h"
#include "transfer/service_activation.h"

namespace mixdecks {
namespace {

bool registered = false;

}  // namespace

HResult& ResultOfEntering() {
  static HResult result = kResultOk;
  return result;
}

std::vector<int>& ObjectsAliveAtLeaving() {
  static std::vector<int> objects;
  return objects;
}

void RegisterFakeServiceClass() {
  registered = true;
}

void UnregisterFakeServiceClass() {
  registered = false;
}

HResult EnterService() noexcept {
  return ResultOfEntering();
}

void LeaveService() noexcept {
  ObjectsAliveAtLeaving().push_back(CurrentFakeService().LiveObjects());
}

HResult CreateSwitcherDiscovery(ITMKSwitcherDiscovery** discovery) noexcept {
  *discovery = nullptr;
  return registered ? CreateFakeDiscovery(discovery) : kClassNotRegistered;
}

}  // namespace mixdecks
