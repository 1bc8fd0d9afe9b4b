// Pictures for exports, and the frames that must come of them.
#pragma once

#include <cstdint>
#include <vector>

#include "pixelconvert/pixel_format.h"
#include "tools/memory_host/host_document.h"

namespace mixdecks::e2e {

/// Samples of width x height pixels: red, green, blue, alpha.
struct Picture {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<std::uint8_t> rgba;
};

/// Saturated, asymmetric, without two equal neighbours; alpha takes every value.
Picture BusyPicture(std::int32_t width, std::int32_t height);
/// Ramps that change by little from pixel to pixel, alpha included.
Picture SmoothPicture(std::int32_t width, std::int32_t height);

HostDocument DocumentOf(const Picture& picture, bool withAlpha);

inline constexpr ColourSpaceIndex kRec601 = 0;
inline constexpr ColourSpaceIndex kRec709 = 1;

/// The frame (10-bit YUVA, rows without gaps) of a picture that has the frame's size already, made
/// by plain scalar steps.
std::vector<std::uint8_t> ExpectedFrame(const Picture& picture, bool withAlpha, bool premultiply,
                                        ColourSpaceIndex colourSpace = kRec709);

/// The frame with each pixel weighted by its alpha.
std::vector<std::uint8_t> Premultiplied(std::vector<std::uint8_t> frame);

/// One pixel of a frame.
struct FramePixel {
  int alpha, chroma, luma;
};
FramePixel PixelAt(const std::vector<std::uint8_t>& frame, std::int32_t width, std::int32_t x,
                   std::int32_t y);

}  // namespace mixdecks::e2e
