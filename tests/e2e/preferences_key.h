// The user's registry key of the plug-in, as anybody may read and write it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace mixdecks::e2e {

struct RegistryValue {
  DWORD type;
  std::vector<std::uint8_t> bytes;
  bool operator==(const RegistryValue&) const = default;
};
std::ostream& operator<<(std::ostream& output, const RegistryValue& value);

void DeletePreferencesKey();
bool PreferencesKeyExists();
std::optional<RegistryValue> ReadPreference(const wchar_t* name);
void WritePreference(const wchar_t* name, const RegistryValue& value);

RegistryValue TextValue(const std::u16string& text);
/// A text of the preferences. The system stores a terminator that happens to stand behind the
/// bytes it is given, so one is not looked at.
std::optional<std::u16string> ReadTextPreference(const wchar_t* name);
RegistryValue NumberValue(std::uint32_t number);

}  // namespace mixdecks::e2e
