// The switcher's video modes: the size of a still and the colour space of its conversion.
#pragma once

#include <cstdint>
#include <span>

namespace mixdecks {

struct VideoModeInfo {
  std::uint32_t code;  ///< four-character code as the service reports it
  std::uint32_t width;
  std::uint32_t height;
  std::uint32_t aspectNumerator;
  std::uint32_t aspectDenominator;
  std::uint32_t colourSpace;      ///< ColourSpaceIndex: 0 Rec. 601, 1 Rec. 709
  std::uint32_t frameRateFamily;  ///< 25 or 30
};
static_assert(sizeof(VideoModeInfo) == 28);

/// The row of `code`; for an unknown code a 1920 x 1080 row with colour space 1. Never null.
const VideoModeInfo* FindVideoMode(std::uint32_t code) noexcept;

/// All known modes, without the fallback row.
std::span<const VideoModeInfo> VideoModes() noexcept;

}  // namespace mixdecks
