#include "tests/e2e/plugin_library.h"

#include <stdexcept>

namespace mixdecks::e2e {

PluginLibrary::PluginLibrary() : library_(LoadLibraryW(kFileName)) {
  if (library_ == nullptr) throw std::runtime_error("Mixdecks.8bp cannot be loaded");
  entry_ = reinterpret_cast<PluginEntry>(
      reinterpret_cast<void*>(GetProcAddress(library_, "MixdecksExportMain")));
  if (entry_ == nullptr) throw std::runtime_error("Mixdecks.8bp has no MixdecksExportMain");
}

}  // namespace mixdecks::e2e
