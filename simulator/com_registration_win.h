// The entries in the registry by which COM finds the simulator's class.
//
// The class may be another's too: the real service has the same one. Its entries are never
// touched, as long as the library exists that they name.
#pragma once

#include <windows.h>

#include <filesystem>

namespace mixdecks::simulator {

/// A class, and the library that is to serve it, by its full path.
struct ServedClass {
  GUID id;
  std::filesystem::path library;
};

/// Enters the class for the machine; for the user alone where the machine's registry may not be
/// written, or has another server there. A copy of the library elsewhere is no other server. A
/// result as self-registration gives it: it fails where the user has another server as well.
HRESULT RegisterClassEntries(const ServedClass& served);
/// Takes the library's entries out, for the machine and for the user. Entries that are not there,
/// or are another library's, are fine.
HRESULT UnregisterClassEntries(const ServedClass& served);

}  // namespace mixdecks::simulator
