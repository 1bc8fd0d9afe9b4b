// The one door of the pixel conversion library.
#pragma once

#include <cstdint>

#include "pixelconvert/conversion_grid.h"
#include "pixelconvert/pixel_format.h"

namespace mixdecks {

/// Converts `height` rows of `width` pixels from `src` to `dst`.
///
/// Size: `width` must be at least SmallestWidth() of the pair, or 0, and a height below 1 counts as
/// 0; nothing is touched then.
///
/// Memory: of every row exactly SourceRowBytes() are read and DestinationRowBytes() written.
/// Strides are bytes from one row to the next, signed: a negative stride walks the image bottom up,
/// from the row the pointer names. Nothing has to be aligned. Source and destination must not
/// overlap.
///
/// Padding: `v210`, `ay10`, 12-bit and, as a destination, `2vuy` rows end with a whole unit. What a
/// source has behind its last pixel must be readable; from `ay10` and `v210` to RGB it may decide
/// the last odd pixel's chroma. What is written there follows from the source row alone: it is
/// computed of the source's padding, or of zeros where the source has none.
///
/// Alpha: `32` and `BGRA` give theirs to each other, and `BGRA` and `ay10` do, which has 64 for
/// clear and 940 for opaque. Every other destination with alpha becomes opaque: 255, 3 in `R10A`,
/// 940 in `ay10` from `BGRX` and 1023 from `2vuy`.
///
/// An oddity to know: 12-bit RGB to `BGRA` writes its bytes in the order of `32`, A R G B. Readers
/// of 12-bit pictures have always got them so.
///
/// Errors: none; a converter cannot fail and reports nothing, and a call outside this contract is
/// undefined. Threads: it takes no lock, keeps no state and allocates nothing, so any number may
/// run at once on separate memory.
using PixelConverter = void (*)(std::uint32_t width, std::int32_t height, std::uint8_t* dst,
                                std::int32_t dstStride, const std::uint8_t* src,
                                std::int32_t srcStride);

/// The converter of a pair, or null when the pair is not supported. A pair that crosses between
/// RGB and YUV needs a colour space of 0 or 1 and gives null for any other; every other pair
/// ignores the colour space. May be called from any thread.
PixelConverter GetPixelConverter(PixelFormatCode source, PixelFormatCode destination,
                                 ColourSpaceIndex colourSpace) noexcept;

}  // namespace mixdecks
