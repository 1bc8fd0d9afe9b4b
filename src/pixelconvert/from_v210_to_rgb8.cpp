#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"

namespace mixdecks {
namespace {

template <class Destination, class RowEnd = CommonRowsRepeatToo>
constexpr ConverterCell RgbCell(PixelFormatCode destination) {
  return CrossingCell<YuvToRgb, V210Source, Destination, RowEnd>(destination);
}

}  // namespace

ConverterRow RowFromV210ToRgb8() {
  static constexpr ConverterCell kCells[] = {
      RgbCell<ArgbDestination>(kArgb32),
      RgbCell<BgraDestination>(kBgra),
      RgbCell<RgbaDestination>(kRgba),
      RgbCell<Rgb3Destination, WholeBlocksRepeat<48>>(kRgb3),
  };
  return kCells;
}

}  // namespace mixdecks
