// What the switcher must get for a picture of the frame's own size, in plain scalar steps.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace mixdecks::test {

/// One pixel of a frame: ten bits each.
struct FramePixel {
  std::uint32_t alpha;
  std::uint32_t chroma;  ///< blue difference in even columns, red difference in odd ones
  std::uint32_t luma;
  friend bool operator==(const FramePixel&, const FramePixel&) = default;
};

/// The frame's bytes for `rgba` (red, green, blue, alpha; width x height x 4), whose width is even.
/// `rec709` selects the matrix.
std::vector<std::uint8_t> ReferenceFrame(std::span<const std::uint8_t> rgba, std::size_t width,
                                         bool rec709, bool premultiply);

FramePixel PixelAt(std::span<const std::uint8_t> frame, std::size_t width, std::size_t x,
                   std::size_t y);

}  // namespace mixdecks::test
