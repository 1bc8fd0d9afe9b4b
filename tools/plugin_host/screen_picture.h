// Pictures of what stands on the screen.
#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <vector>

namespace mixdecks {

/// A rectangle of the screen as rows of red, green, blue.
struct ScreenPicture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgb;
  bool operator==(const ScreenPicture&) const = default;
};

ScreenPicture TakeScreenPicture(const RECT& rectangle);

/// Has the windows draw themselves and takes the picture once it stays the same.
ScreenPicture TakeSettledPicture(const std::vector<HWND>& windows);

/// Throws `std::runtime_error` when the file cannot be written.
void WritePng(const std::filesystem::path& file, const ScreenPicture& picture);

}  // namespace mixdecks
