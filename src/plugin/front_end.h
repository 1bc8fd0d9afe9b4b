// The front end that a program joins to the plug-in's entry. Whoever links the entry defines this
// operation: the Windows library with real dialogs, the companion command with its own.
#pragma once

#include "host/plugin_entry.h"

namespace mixdecks {

/// Both dialogs; neither operation is null. Called at every selector, on the host's main thread.
HostDialogs FrontEndDialogs();

}  // namespace mixdecks
