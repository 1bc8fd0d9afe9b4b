#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"

namespace mixdecks {
namespace {

template <PixelFormatCode kCode, class Destination>
constexpr ConverterCell RgbCell() {
  return CrossingCell<YuvToRgb, V210Source, Destination, CommonRowsRepeatToo<kV210, kCode>>(kCode);
}

}  // namespace

ConverterRow RowFromV210ToRgb10() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      RgbCell<kR210Video, Rgb10Destination<R210, SampleRange::kVideo>>(),
      RgbCell<kR10BigVideo, Rgb10Destination<R10Big, SampleRange::kVideo>>(),
      RgbCell<kR10LittleVideo, Rgb10Destination<R10Little, SampleRange::kVideo>>(),
      RgbCell<kR210Full, Rgb10Destination<R210, SampleRange::kFull>>(),
      RgbCell<kR10BigFull, Rgb10Destination<R10Big, SampleRange::kFull>>(),
      RgbCell<kR10LittleFull, Rgb10Destination<R10Little, SampleRange::kFull>>(),
      RgbCell<kR10Alpha, Rgb10Destination<R10Alpha, SampleRange::kFull>>(),
  };
  return kCells;
}

}  // namespace mixdecks
