#include <objbase.h>
#include <windows.h>

#include "tests/transfer/fake_service.h"

namespace mixdecks {
namespace {

/// A class object with the life of the program.
class FakeClassFactory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (id != IID_IUnknown && id != IID_IClassFactory) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = this;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void** object) override {
    ITMKSwitcherDiscovery* discovery = nullptr;
    const HRESULT result = CreateFakeDiscovery(&discovery);
    *object = discovery;
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

FakeClassFactory classFactory;
DWORD registration = 0;

}  // namespace

void RegisterFakeServiceClass() {
  CoInitialize(nullptr);
  CoRegisterClassObject(reinterpret_cast<const GUID&>(kSwitcherDiscoveryClass), &classFactory,
                        CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration);
}

void UnregisterFakeServiceClass() {
  CoRevokeClassObject(registration);
  CoUninitialize();
}

}  // namespace mixdecks
