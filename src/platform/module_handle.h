// The instance handle of the loaded library, from which dialogs take their resources.
//
// Written by the load notification before any other code of the library runs, read by every
// dialog and message box on the host's main thread.
#pragma once

namespace mixdecks {

/// The handle given last to `SetModuleHandle`; null before that.
void* ModuleHandle() noexcept;
void SetModuleHandle(void* instance) noexcept;

}  // namespace mixdecks
