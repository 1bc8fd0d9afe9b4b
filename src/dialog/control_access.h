// Short forms of the messages to controls that the dialogs send most. The dialog's thread.
#pragma once

#include <cstdint>
#include <span>

#include "dialog/window_messages.h"
#include "dialog/window_operations.h"

namespace mixdecks {

/// Replaces a control's text. An edit reports the change before this returns.
void SetControlText(WindowOperations& window, int control, const char16_t* text);

/// Reads a control's text and terminates it. `limit` counts the terminator, as `kWmGetText` does,
/// and is less than the buffer's size; longer text is cut. The length in units.
std::size_t ReadControlText(WindowOperations& window, int control, std::span<char16_t> buffer,
                            std::size_t limit);

bool IsChecked(WindowOperations& window, int control);
void SetChecked(WindowOperations& window, int control, bool checked);

/// Index of the list's selected item, from 0; -1 when nothing is selected.
std::int32_t SelectedIndex(WindowOperations& window, int list);
void SelectIndex(WindowOperations& window, int list, std::int32_t index);

void EnableControls(WindowOperations& window, std::span<const int> controls, bool enabled);

}  // namespace mixdecks
