#include "tests/e2e/com_class.h"

#include <objbase.h>

#include <stdexcept>

namespace mixdecks::e2e {
namespace {

simulator::SwitcherSimulator* current = nullptr;

const GUID& AsGuid(const ServiceId& id) {
  return reinterpret_cast<const GUID&>(id);
}

class Factory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& id, void** object) override {
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, const GUID& id,
                                           void** object) override {
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    if (id != AsGuid(kSwitcherDiscoveryId)) return E_NOINTERFACE;
    ITMKSwitcherDiscovery* discovery = nullptr;
    const HRESULT result = current->CreateDiscovery(&discovery);
    *object = discovery;
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

Factory factory;

}  // namespace

ScopedComClass::ScopedComClass(simulator::SwitcherSimulator& simulator) {
  current = &simulator;
  CoInitialize(nullptr);
  const HRESULT result = CoRegisterClassObject(AsGuid(kSwitcherDiscoveryClass), &factory,
                                               CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
  if (FAILED(result)) throw std::runtime_error("the switcher's class cannot be registered");
}

ScopedComClass::~ScopedComClass() {
  CoRevokeClassObject(cookie_);
  CoUninitialize();
  current = nullptr;
}

}  // namespace mixdecks::e2e
