#include "simulator/com_registration_win.h"

#include <olectl.h>

#include <array>
#include <string_view>

namespace mixdecks::simulator {
namespace {

constexpr wchar_t kClassKey[] = L"Software\\Classes\\CLSID\\{49895038-FB6D-4AF7-A637-7A92F09F8655}";
constexpr wchar_t kServerKey[] =
    L"Software\\Classes\\CLSID\\{49895038-FB6D-4AF7-A637-7A92F09F8655}\\InprocServer32";

LSTATUS SetText(HKEY root, const wchar_t* key, const wchar_t* value, std::wstring_view text) {
  // The text's terminator is stored with it.
  return RegSetKeyValueW(root, key, value, REG_SZ, text.data(),
                         static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

LSTATUS EnterUnder(HKEY root, std::wstring_view libraryPath) {
  LSTATUS status = SetText(root, kClassKey, nullptr, L"Mixdecks switcher simulator");
  if (status == ERROR_SUCCESS) status = SetText(root, kServerKey, nullptr, libraryPath);
  // Its objects may be called on any thread, so they are never wrapped.
  if (status == ERROR_SUCCESS) status = SetText(root, kServerKey, L"ThreadingModel", L"Both");
  return status;
}

bool RemoveUnder(HKEY root) {
  const LSTATUS status = RegDeleteTreeW(root, kClassKey);
  if (status == ERROR_FILE_NOT_FOUND) return true;
  return status == ERROR_SUCCESS;
}

}  // namespace

HRESULT RegisterClassEntries(HMODULE library) noexcept {
  std::array<wchar_t, 32768> path;
  const DWORD length = GetModuleFileNameW(library, path.data(), static_cast<DWORD>(path.size()));
  if (length == 0 || length >= path.size()) return SELFREG_E_CLASS;
  const std::wstring_view libraryPath(path.data(), length);
  if (EnterUnder(HKEY_LOCAL_MACHINE, libraryPath) == ERROR_SUCCESS) return S_OK;
  return EnterUnder(HKEY_CURRENT_USER, libraryPath) == ERROR_SUCCESS ? S_OK : SELFREG_E_CLASS;
}

HRESULT UnregisterClassEntries() noexcept {
  const bool user = RemoveUnder(HKEY_CURRENT_USER);
  const bool machine = RemoveUnder(HKEY_LOCAL_MACHINE);
  return user && machine ? S_OK : SELFREG_E_CLASS;
}

}  // namespace mixdecks::simulator
