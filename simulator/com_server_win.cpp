// The library that COM loads for the switcher's class: its four exports and its class factory.

#include <objbase.h>
#include <olectl.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <new>
#include <stdexcept>
#include <string_view>

#include "simulator/com_registration_win.h"
#include "simulator/com_server_settings_win.h"
#include "simulator/served_discovery.h"

namespace mixdecks::simulator {
namespace {

HMODULE thisLibrary = nullptr;
std::atomic<long> lockCount = 0;

const ServiceId& AsServiceId(const GUID& id) {
  return reinterpret_cast<const ServiceId&>(id);
}

const GUID& AsGuid(const ServiceId& id) {
  return reinterpret_cast<const GUID&>(id);
}

/// Throws when the library's path is longer than any can be.
ServedClass ThisClass() {
  std::array<wchar_t, 32768> path;
  const DWORD length =
      GetModuleFileNameW(thisLibrary, path.data(), static_cast<DWORD>(path.size()));
  if (length == 0 || length >= path.size()) throw std::length_error("the library's path");
  return {AsGuid(kSwitcherDiscoveryClass), std::wstring_view(path.data(), length)};
}

HRESULT ChangeEntries(HRESULT (*change)(const ServedClass&)) noexcept {
  try {
    return change(ThisClass());
  } catch (const std::exception&) {
    return SELFREG_E_CLASS;
  }
}

HRESULT CreateDiscovery(const GUID& id, void** object) {
  ITMKSwitcherDiscovery* discovery = nullptr;
  const HRESULT created =
      CreateServedDiscovery({MakeConfiguredSimulator, ReportViolations}, &discovery);
  // The class may succeed without giving an object: that is one of the things it can play.
  if (discovery == nullptr) return created;
  const HRESULT result = discovery->QueryInterface(AsServiceId(id), object);
  discovery->Release();
  return result;
}

/// The one factory, which needs no count of its own: it lives as long as the library.
class ClassFactory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(const GUID& id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, const GUID& id,
                                           void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    try {
      return CreateDiscovery(id, object);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
      ReportFailure(error.what());
      return E_FAIL;
    }
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    lockCount += lock ? 1 : -1;
    return S_OK;
  }
};

ClassFactory classFactory;

}  // namespace
}  // namespace mixdecks::simulator

using namespace mixdecks::simulator;

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) thisLibrary = instance;
  return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(const GUID& classId, const GUID& id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (AsServiceId(classId) != mixdecks::kSwitcherDiscoveryClass) return CLASS_E_CLASSNOTAVAILABLE;
  return classFactory.QueryInterface(id, object);
}

extern "C" HRESULT WINAPI DllCanUnloadNow() {
  return lockCount == 0 && !IsServing() ? S_OK : S_FALSE;
}

extern "C" HRESULT WINAPI DllRegisterServer() {
  return ChangeEntries(RegisterClassEntries);
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
  return ChangeEntries(UnregisterClassEntries);
}
