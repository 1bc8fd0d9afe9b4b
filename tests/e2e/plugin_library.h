// The built library, loaded as the host loads it.
#pragma once

#include <windows.h>

#include "tools/memory_host/memory_host.h"

namespace mixdecks::e2e {

/// Loaded while it lives. Throws `std::runtime_error` when the file or its export is missing.
class PluginLibrary {
 public:
  PluginLibrary();
  ~PluginLibrary() { FreeLibrary(library_); }
  PluginLibrary(const PluginLibrary&) = delete;
  PluginLibrary& operator=(const PluginLibrary&) = delete;

  PluginEntry Entry() const noexcept { return entry_; }
  static bool IsLoaded() { return GetModuleHandleW(kFileName) != nullptr; }

 private:
  static constexpr const wchar_t* kFileName = L"Mixdecks.8bp";

  HMODULE library_;
  PluginEntry entry_;
};

}  // namespace mixdecks::e2e
