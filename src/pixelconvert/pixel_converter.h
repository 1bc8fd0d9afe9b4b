// The one door of the pixel conversion library.
#pragma once

#include <cstdint>

#include "pixelconvert/conversion_grid.h"
#include "pixelconvert/pixel_format.h"

namespace mixdecks {

/// Converts `height` rows of `width` pixels from `src` to `dst`.
///
/// Strides are bytes from one row to the next, signed: a negative stride walks the image bottom
/// up, from the row the pointer names. Nothing has to be aligned. A height below 1 touches
/// nothing. Source and destination must not overlap. A converter cannot fail and reports nothing;
/// a width below the pair's smallest legal width is the caller's fault. It takes no lock, keeps no
/// state and allocates nothing, so any number may run at once on separate memory.
using PixelConverter = void (*)(std::uint32_t width, std::int32_t height, std::uint8_t* dst,
                                std::int32_t dstStride, const std::uint8_t* src,
                                std::int32_t srcStride);

/// The converter of a pair, or null when the pair is not supported. A pair that crosses between
/// RGB and YUV needs a colour space of 0 or 1 and gives null for any other; every other pair
/// ignores the colour space. May be called from any thread.
PixelConverter GetPixelConverter(PixelFormatCode source, PixelFormatCode destination,
                                 ColourSpaceIndex colourSpace) noexcept;

}  // namespace mixdecks
