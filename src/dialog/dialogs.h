// The two dialogs as the host's selectors run them. The host's main thread.
#pragma once

#include "dialog/export_dialog.h"
#include "dialog/headless_dialog.h"
#include "host/plugin_entry.h"

namespace mixdecks {

/// What the export dialog keeps as long as the library stays loaded.
ExportDialogState& ModuleDialogState();

/// The real switcher side, document reader and preferences.
const ExportDialogServices& SystemDialogServices();

/// The dialogs as the user sees them: the system's windows on Windows, those of `HeadlessDialogs`
/// where there is no window system.
HostDialogs SystemDialogs();

/// The dialogs in memory, operated by the user that was installed last.
HostDialogs HeadlessDialogs();

/// Installs who operates dialogs in memory; an empty one makes them close at once. Returns the
/// one installed before.
HeadlessUser SetHeadlessUser(HeadlessUser user);

}  // namespace mixdecks
