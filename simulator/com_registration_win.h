// The entries in the registry by which COM finds the simulator's class.
#pragma once

#include <windows.h>

namespace mixdecks::simulator {

/// Enters the class with the library's own path: for the machine, or for the user alone where the
/// machine's registry may not be written. A result as self-registration gives it.
HRESULT RegisterClassEntries(HMODULE library) noexcept;
/// Takes the entries out, for the machine and for the user. Entries that are not there are fine.
HRESULT UnregisterClassEntries() noexcept;

}  // namespace mixdecks::simulator
