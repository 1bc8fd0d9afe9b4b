#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"

namespace mixdecks {
namespace {

template <class Destination, std::uint32_t kBlock = 8>
constexpr ConverterCell RgbCell(PixelFormatCode destination) {
  return CrossingCell<YuvToRgb, TwoVuySource, Destination, WholeBlocksRepeat<kBlock>>(destination);
}

}  // namespace

ConverterRow RowFrom2vuy() {
  static constexpr ConverterCell kCells[] = {
      RgbCell<ArgbDestination>(kArgb32),
      RgbCell<BgraDestination>(kBgra),
      RgbCell<RgbaDestination>(kRgba),
      RgbCell<Rgb3Destination, 16>(kRgb3),
  };
  return kCells;
}

}  // namespace mixdecks
