#include <windows.h>

#include <algorithm>
#include <array>

#include "dialog/preferences_store.h"

namespace mixdecks {
namespace {

constexpr wchar_t kKeyPath[] =
    L"Software\\Tollenmark Design\\Mixdecks Photoshop Exporter\\Preferences";

const wchar_t* Wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}

class RegistryPreferences final : public PreferencesStore {
 public:
  bool Open() override {
    wchar_t noClass[] = L"";
    return RegCreateKeyExW(HKEY_CURRENT_USER, kKeyPath, 0, noClass, REG_OPTION_NON_VOLATILE,
                           KEY_ALL_ACCESS, nullptr, &key_, nullptr) == ERROR_SUCCESS;
  }

  void Close() override { RegCloseKey(key_); }

  std::optional<std::size_t> Read(const char16_t* name, std::span<std::byte> buffer) override {
    // A value that does not fit may leave anything behind, so it gets a buffer of its own.
    std::array<std::byte, kLargestValue> value;
    DWORD size = static_cast<DWORD>(std::min(buffer.size(), value.size()));
    const LSTATUS status = RegQueryValueExW(key_, Wide(name), nullptr, nullptr,
                                            reinterpret_cast<BYTE*>(value.data()), &size);
    if (status != ERROR_SUCCESS) return std::nullopt;
    std::copy_n(value.begin(), size, buffer.begin());
    return size;
  }

  void Write(const char16_t* name, PreferenceType type, std::span<const std::byte> value) override {
    if (value.size() > kLargestValue) return;
    // The system would count a zero unit behind a text into it, so another one stands there.
    std::array<std::byte, kLargestValue + sizeof(wchar_t)> bytes;
    bytes.fill(std::byte{0xFF});
    std::ranges::copy(value, bytes.begin());
    RegSetValueExW(key_, Wide(name), 0, static_cast<DWORD>(type),
                   reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(value.size()));
  }

 private:
  static constexpr std::size_t kLargestValue = 256;  // bytes; both preferences are far smaller

  HKEY key_ = nullptr;
};

}  // namespace

PreferencesStore& SystemPreferences() {
  static RegistryPreferences preferences;
  return preferences;
}

}  // namespace mixdecks
