#include "simulator/com_registration_win.h"

#include <objbase.h>
#include <olectl.h>

#include <array>
#include <string>
#include <system_error>

namespace mixdecks::simulator {
namespace {

namespace fs = std::filesystem;

struct ClassKeys {
  std::wstring top;
  std::wstring server;
};

ClassKeys KeysOf(const GUID& id) {
  std::array<wchar_t, 39> text;  // braces and terminator included
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  const std::wstring top = std::wstring(L"Software\\Classes\\CLSID\\") + text.data();
  return {top, top + L"\\InprocServer32"};
}

bool SetText(HKEY root, const std::wstring& key, const wchar_t* value, const std::wstring& text) {
  // The text's terminator is stored with it.
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(root, key.c_str(), value, REG_SZ, text.c_str(), bytes) == ERROR_SUCCESS;
}

/// The library that COM loads for the class; empty when there is none.
fs::path EnteredLibrary(HKEY root, const ClassKeys& keys) {
  std::wstring text(32768, L'\0');
  auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (RegGetValueW(root, keys.server.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(),
                   &bytes) != ERROR_SUCCESS) {
    return {};
  }
  text.resize(wcslen(text.c_str()));
  const bool quoted = text.size() >= 2 && text.front() == L'"' && text.back() == L'"';
  return quoted ? text.substr(1, text.size() - 2) : text;
}

/// A library may be entered by its name alone, as LoadLibrary finds it.
bool CanBeFound(const fs::path& library) {
  return SearchPathW(nullptr, library.c_str(), L".dll", 0, nullptr, nullptr) != 0;
}

bool IsCopyOf(const fs::path& library, const fs::path& other) {
  return _wcsicmp(library.filename().c_str(), other.filename().c_str()) == 0;
}

bool HasAnotherServer(HKEY root, const ClassKeys& keys, const fs::path& library) {
  const fs::path entered = EnteredLibrary(root, keys);
  return !entered.empty() && !IsCopyOf(entered, library) && CanBeFound(entered);
}

bool HasEntriesOf(HKEY root, const ClassKeys& keys, const fs::path& library) {
  // The same file may be named in several ways.
  std::error_code notFound;
  return fs::equivalent(EnteredLibrary(root, keys), library, notFound);
}

bool Enter(HKEY root, const ClassKeys& keys, const fs::path& library) {
  // The library first: by it the entries are known as ours, should the others fail.
  return SetText(root, keys.server, nullptr, library.wstring()) &&
         // Its objects may be called on any thread, so they are never wrapped.
         SetText(root, keys.server, L"ThreadingModel", L"Both") &&
         SetText(root, keys.top, nullptr, L"Mixdecks switcher simulator");
}

}  // namespace

HRESULT RegisterClassEntries(const ServedClass& served) {
  const ClassKeys keys = KeysOf(served.id);
  for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    if (HasAnotherServer(root, keys, served.library)) continue;
    if (Enter(root, keys, served.library)) return S_OK;
  }
  return SELFREG_E_CLASS;
}

HRESULT UnregisterClassEntries(const ServedClass& served) {
  const ClassKeys keys = KeysOf(served.id);
  HRESULT result = S_OK;
  for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
    if (!HasEntriesOf(root, keys, served.library)) continue;
    if (RegDeleteTreeW(root, keys.top.c_str()) != ERROR_SUCCESS) result = SELFREG_E_CLASS;
  }
  return result;
}

}  // namespace mixdecks::simulator
