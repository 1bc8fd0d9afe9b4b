#include <objbase.h>
#include <windows.h>

#include "transfer/service_activation.h"

namespace mixdecks {
namespace {

// Wherever the class lives: in process, in a local server or in a remote one.
constexpr DWORD kAnyServer =
    CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;
static_assert(kAnyServer == 23);

const GUID& AsGuid(const ServiceId& id) {
  return reinterpret_cast<const GUID&>(id);
}
static_assert(sizeof(GUID) == sizeof(ServiceId));

}  // namespace

HResult EnterService() noexcept {
  return CoInitialize(nullptr);
}

void LeaveService() noexcept {
  CoUninitialize();
}

HResult CreateSwitcherDiscovery(ITMKSwitcherDiscovery** discovery) noexcept {
  void* created = nullptr;
  const HResult result = CoCreateInstance(AsGuid(kSwitcherDiscoveryClass), nullptr, kAnyServer,
                                          AsGuid(kSwitcherDiscoveryId), &created);
  *discovery = static_cast<ITMKSwitcherDiscovery*>(created);
  return result;
}

}  // namespace mixdecks
