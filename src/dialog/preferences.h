// The two values that the export dialog keeps from one run to the next. The dialog's thread.
#pragma once

#include "dialog/export_dialog_state.h"
#include "dialog/preferences_store.h"

namespace mixdecks {

inline constexpr char16_t kAddressPreference[] = u"Address";
inline constexpr char16_t kStillIndexPreference[] = u"StillIndex";
inline constexpr char16_t kDefaultAddress[] = u"192.168.10.240";

/// Sets the address and the slot of `state`; what is missing or cannot be read is the default.
void LoadPreferences(PreferencesStore& store, ExportDialogState& state);
/// Keeps the last valid address, if there is one, and the slot.
void SavePreferences(PreferencesStore& store, const ExportDialogState& state);

}  // namespace mixdecks
