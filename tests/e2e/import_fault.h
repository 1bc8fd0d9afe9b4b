// Makes something fail that a loaded library asks of the system: puts another function into the
// library's import table.
#pragma once

#include <windows.h>

namespace mixdecks::e2e {

class ImportFault {
 public:
  /// Until it is destroyed, `library` calls `substitute`, which has the same signature, in place of
  /// the system's `function`. Fails the test when the library imports no such function. The library
  /// outlives it.
  template <class Function>
  ImportFault(HMODULE library, const char* function, Function* substitute)
      : ImportFault(library, function, reinterpret_cast<void*>(substitute)) {}
  ImportFault(HMODULE library, const char* function, void* substitute);
  ~ImportFault();
  ImportFault(const ImportFault&) = delete;
  ImportFault& operator=(const ImportFault&) = delete;

 private:
  void** slot_;
  void* original_ = nullptr;
};

}  // namespace mixdecks::e2e
