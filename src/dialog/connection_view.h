// How the export dialog shows whether it reaches the switcher, and how it asks for a connection.
// The dialog's thread.
#pragma once

#include "dialog/export_dialog_state.h"
#include "dialog/window_operations.h"

namespace mixdecks {

/// All but the address is disabled and the caption says so.
void SetControlsDisconnected(WindowOperations& window);
/// Everything is enabled, and the slot list shows `state.stillIndex`.
void SetControlsConnected(WindowOperations& window, const ExportDialogState& state);
/// Disables everything that could change the export that has just been started.
void SetControlsExporting(WindowOperations& window);

/// Pushes the connect that is wanted, unless one is in progress: its result asks again.
void TryConnect(WindowOperations& window, ExportDialogState& state);

}  // namespace mixdecks
