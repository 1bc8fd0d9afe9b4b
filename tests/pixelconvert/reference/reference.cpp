#include "tests/pixelconvert/reference/reference.h"

#include "tests/pixelconvert/reference/families.h"
#include "tests/pixelconvert/reference/formats.h"

namespace mixdecks::reference {

std::vector<std::uint8_t> ConvertRow(PixelFormatCode source, PixelFormatCode destination,
                                     ColourSpaceIndex colourSpace, std::size_t width,
                                     std::span<const std::uint8_t> row) {
  const Kind from = FormatOf(source).kind;
  const Kind to = FormatOf(destination).kind;
  if (from == Kind::kYuv && to == Kind::kYuv) return YuvToYuv(source, destination, width, row);
  if (from == Kind::kYuv) return YuvToRgb(source, destination, colourSpace, width, row);
  if (from == Kind::kRgb12) {
    if (destination == k2vuy) return TwelveBitTo2vuy(source, colourSpace, width, row);
    if (destination == kV210) return TwelveBitToV210(source, colourSpace, width, row);
    return TwelveBitToRgb8(source, width, row);
  }
  if (to == Kind::kYuv) return RgbToYuv(source, destination, colourSpace, width, row);
  if (to == Kind::kRgb12) return BgraToTwelveBit(destination, width, row);
  return RgbToRgb(source, destination, width, row);
}

}  // namespace mixdecks::reference
