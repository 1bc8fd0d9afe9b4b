#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"

namespace mixdecks {
namespace {

template <PixelFormatCode kCode, class Destination,
          template <PixelFormatCode, PixelFormatCode> class RowEnd = CommonRowsRepeatToo>
constexpr ConverterCell RgbCell() {
  return CrossingCell<YuvToRgb, V210Source, Destination, RowEnd<kV210, kCode>>(kCode);
}

}  // namespace

ConverterRow RowFromV210ToRgb8() {
  static constexpr ConverterCell kCells[] = {
      RgbCell<kArgb32, ArgbDestination>(),
      RgbCell<kBgra, BgraDestination>(),
      RgbCell<kRgba, RgbaDestination>(),
      RgbCell<kRgb3, Rgb3Destination, WholeBlocksRepeat>(),
  };
  return kCells;
}

}  // namespace mixdecks
