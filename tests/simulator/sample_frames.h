// Frames for pools and uploads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/four_character_code.h"
#include "transfer/video_modes.h"

namespace mixdecks::test {

inline constexpr std::uint32_t kSmallMode = FourCharacterCode("ntsc");
inline constexpr std::uint32_t kSmallWidth = 720;
inline constexpr std::uint32_t kSmallHeight = 486;
inline constexpr std::uint32_t kOtherSmallMode = FourCharacterCode("palA");

inline void AppendPixel(std::vector<std::uint8_t>& frame, std::uint32_t alpha, std::uint32_t chroma,
                        std::uint32_t luma) {
  const std::uint32_t word = alpha << 20 | chroma << 10 | luma;
  for (int shift = 24; shift >= 0; shift -= 8) {
    frame.push_back(static_cast<std::uint8_t>(word >> shift));
  }
}

/// A frame of a mode in one colour.
inline std::vector<std::uint8_t> SolidFrame(std::uint32_t mode, std::uint32_t alpha,
                                            std::uint32_t cb, std::uint32_t cr,
                                            std::uint32_t luma) {
  const VideoModeInfo& info = *FindVideoMode(mode);
  std::vector<std::uint8_t> pair;
  AppendPixel(pair, alpha, cb, luma);
  AppendPixel(pair, alpha, cr, luma);
  std::vector<std::uint8_t> frame(std::size_t{4} * info.width * info.height);
  for (std::size_t at = 0; at < frame.size(); at += pair.size()) {
    std::memcpy(frame.data() + at, pair.data(), pair.size());
  }
  return frame;
}

/// An opaque frame whose luma tells it from others.
inline std::vector<std::uint8_t> GreyFrame(std::uint32_t mode, std::uint32_t luma) {
  return SolidFrame(mode, 940, 512, 512, luma);
}

}  // namespace mixdecks::test
