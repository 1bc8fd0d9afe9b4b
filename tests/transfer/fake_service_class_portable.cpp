#include "tests/transfer/fake_service.h"
#include "transfer/service_activation.h"

namespace mixdecks {

void RegisterFakeServiceClass() {
  RegisterServiceClass(CreateFakeDiscovery);
}

void UnregisterFakeServiceClass() {
  RegisterServiceClass(nullptr);
}

}  // namespace mixdecks
