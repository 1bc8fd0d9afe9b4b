#include "dialog/preferences_store.h"

#include <algorithm>

namespace mixdecks {

bool MemoryPreferences::Open() {
  exists = exists || canOpen;
  return canOpen;
}

std::optional<std::size_t> MemoryPreferences::Read(const char16_t* name,
                                                   std::span<std::byte> buffer) {
  const auto value = values.find(name);
  if (value == values.end() || value->second.bytes.size() > buffer.size()) return std::nullopt;
  std::ranges::copy(value->second.bytes, buffer.begin());
  return value->second.bytes.size();
}

void MemoryPreferences::Write(const char16_t* name, PreferenceType type,
                              std::span<const std::byte> value) {
  values[name] = {type, {value.begin(), value.end()}};
}

}  // namespace mixdecks
