// The built library, loaded as the host loads it.
#pragma once

#include <windows.h>

#include <filesystem>
#include <stdexcept>

#include "tools/memory_host/memory_host.h"

namespace mixdecks {

/// A file that cannot be loaded as the plug-in. The text says why, without the file's name.
class PluginLibraryError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Loaded while it lives.
class PluginLibrary {
 public:
  /// Throws `PluginLibraryError` when the file cannot be loaded or is no export plug-in of ours.
  explicit PluginLibrary(const std::filesystem::path& file);
  ~PluginLibrary() { FreeLibrary(library_); }
  PluginLibrary(const PluginLibrary&) = delete;
  PluginLibrary& operator=(const PluginLibrary&) = delete;

  PluginEntry Entry() const noexcept { return entry_; }

 private:
  HMODULE library_;
  PluginEntry entry_;
};

}  // namespace mixdecks
