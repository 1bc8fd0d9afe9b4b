#include "dialog/preferences.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace mixdecks {
namespace {

constexpr std::size_t kLongestStoredAddress = 32;  // UTF-16 units, with or without a terminator

/// Room for the longest value and a terminator behind it.
using AddressBuffer = std::array<char16_t, kLongestStoredAddress + 1>;

void ReadAddress(PreferencesStore& store, AddressBuffer& address) {
  const std::span<char16_t> readable(address.data(), kLongestStoredAddress);
  const std::optional<std::size_t> bytes =
      store.Read(kAddressPreference, std::as_writable_bytes(readable));
  // Saved without a terminator, and anybody may have written anything there. Nothing at all leaves
  // the default.
  if (bytes && *bytes > 0) address[*bytes / sizeof(char16_t)] = u'\0';
}

void ReadStillIndex(PreferencesStore& store, std::int32_t& index) {
  store.Read(kStillIndexPreference, std::as_writable_bytes(std::span(&index, 1)));
}

}  // namespace

void LoadPreferences(PreferencesStore& store, ExportDialogState& state) {
  AddressBuffer address{};
  std::ranges::copy(std::u16string_view(kDefaultAddress), address.begin());
  std::int32_t index = 0;
  if (store.Open()) {
    ReadAddress(store, address);
    ReadStillIndex(store, index);
    store.Close();
  }
  state.switcherAddress = Text::CopyOf(address.data());
  state.stillIndex = index;
}

void SavePreferences(PreferencesStore& store, const ExportDialogState& state) {
  if (!store.Open()) return;
  if (state.switcherAddress) {
    store.Write(kAddressPreference, PreferenceType::kText,
                std::as_bytes(std::span(state.switcherAddress.View())));
  }
  store.Write(kStillIndexPreference, PreferenceType::kNumber,
              std::as_bytes(std::span(&state.stillIndex, 1)));
  store.Close();
}

}  // namespace mixdecks
