#include "tests/e2e/preferences_key.h"

#include <cstring>

namespace mixdecks::e2e {
namespace {

constexpr wchar_t kKey[] = L"Software\\Tollenmark Design\\Mixdecks Photoshop Exporter\\Preferences";

}  // namespace

std::ostream& operator<<(std::ostream& output, const RegistryValue& value) {
  output << "type " << value.type << ":";
  for (const std::uint8_t byte : value.bytes)
    output << ' ' << +byte;
  return output;
}

void DeletePreferencesKey() {
  RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Tollenmark Design");
}

bool PreferencesKeyExists() {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

std::optional<RegistryValue> ReadPreference(const wchar_t* name) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
  RegistryValue value{};
  value.bytes.resize(4096);
  auto size = static_cast<DWORD>(value.bytes.size());
  const LSTATUS status =
      RegQueryValueExW(key, name, nullptr, &value.type, value.bytes.data(), &size);
  RegCloseKey(key);
  if (status != ERROR_SUCCESS) return {};
  value.bytes.resize(size);
  return value;
}

std::optional<std::u16string> ReadTextPreference(const wchar_t* name) {
  const std::optional<RegistryValue> value = ReadPreference(name);
  if (!value || value->type != REG_SZ) return {};
  std::u16string text(value->bytes.size() / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), value->bytes.data(), text.size() * sizeof(char16_t));
  if (text.ends_with(u'\0')) text.pop_back();
  return text;
}

void WritePreference(const wchar_t* name, const RegistryValue& value) {
  RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, value.type, value.bytes.data(),
                  static_cast<DWORD>(value.bytes.size()));
}

RegistryValue TextValue(const std::u16string& text) {
  RegistryValue value{REG_SZ, std::vector<std::uint8_t>(text.size() * sizeof(char16_t))};
  std::memcpy(value.bytes.data(), text.data(), value.bytes.size());
  return value;
}

RegistryValue NumberValue(std::uint32_t number) {
  RegistryValue value{REG_DWORD, std::vector<std::uint8_t>(sizeof number)};
  std::memcpy(value.bytes.data(), &number, sizeof number);
  return value;
}

}  // namespace mixdecks::e2e
