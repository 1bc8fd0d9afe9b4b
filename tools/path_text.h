// Paths as users type them.
#pragma once

#include <filesystem>
#include <string>

namespace mixdecks {

/// The path that a text in UTF-8 names, whatever the system's own encoding.
inline std::filesystem::path PathOf(const std::string& text) {
  return std::u8string(text.begin(), text.end());
}

}  // namespace mixdecks
