#include "tools/plugin_host/plugin_library.h"

#include <string>

namespace mixdecks {
namespace {

std::string WhyNotLoaded(DWORD error) {
  switch (error) {
    case ERROR_MOD_NOT_FOUND:
      return "a library that it needs is missing";
    case ERROR_BAD_EXE_FORMAT:
      return "it is no library for 64-bit Windows";
    case ERROR_DLL_INIT_FAILED:
      return "it refuses to be loaded";
    default:
      return "Windows cannot load it, error " + std::to_string(error);
  }
}

HMODULE Load(const std::filesystem::path& file) {
  // Nothing but the file itself is wanted, so no other folder is searched for it.
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) throw PluginLibraryError("there is no such file");
  if (attributes & FILE_ATTRIBUTE_DIRECTORY) throw PluginLibraryError("it is a folder");
  const HMODULE library = LoadLibraryW(std::filesystem::absolute(file).c_str());
  if (library == nullptr) throw PluginLibraryError(WhyNotLoaded(GetLastError()));
  return library;
}

}  // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& file) : library_(Load(file)) {
  entry_ = reinterpret_cast<PluginEntry>(
      reinterpret_cast<void*>(GetProcAddress(library_, "MixdecksExportMain")));
  if (entry_ != nullptr) return;
  FreeLibrary(library_);
  throw PluginLibraryError("it is a library, but it has no function MixdecksExportMain");
}

}  // namespace mixdecks
