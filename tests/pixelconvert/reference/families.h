// The families of pairs, each one row conversion; `ConvertRow` chooses among them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "pixelconvert/pixel_format.h"

namespace mixdecks::reference {

using Bytes = std::vector<std::uint8_t>;
using Row = std::span<const std::uint8_t>;

/// Among the RGB formats of 8 and 10 bits.
Bytes RgbToRgb(PixelFormatCode source, PixelFormatCode destination, std::size_t width, Row row);

/// From RGB of 8 and 10 bits to 4:2:2.
Bytes RgbToYuv(PixelFormatCode source, PixelFormatCode destination, ColourSpaceIndex colourSpace,
               std::size_t width, Row row);

/// From 4:2:2 to RGB of 8 and 10 bits.
Bytes YuvToRgb(PixelFormatCode source, PixelFormatCode destination, ColourSpaceIndex colourSpace,
               std::size_t width, Row row);

/// 4:2:2 to 4:2:2, without any matrix.
Bytes YuvToYuv(PixelFormatCode source, PixelFormatCode destination, std::size_t width, Row row);

/// `BGRA` to 12 bits and back to 8 bits, in single precision.
Bytes BgraToTwelveBit(PixelFormatCode destination, std::size_t width, Row row);
Bytes TwelveBitToRgb8(PixelFormatCode source, std::size_t width, Row row);

/// 12-bit RGB to `2vuy` and `v210`, in single precision.
Bytes TwelveBitTo2vuy(PixelFormatCode source, ColourSpaceIndex colourSpace, std::size_t width,
                      Row row);
Bytes TwelveBitToV210(PixelFormatCode source, ColourSpaceIndex colourSpace, std::size_t width,
                      Row row);

}  // namespace mixdecks::reference
