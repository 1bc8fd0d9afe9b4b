#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"

namespace mixdecks {
namespace {

template <class Destination>
constexpr ConverterCell RgbCell(PixelFormatCode destination) {
  return CrossingCell<YuvToRgb, V210Source, Destination, CommonRowsRepeatToo>(destination);
}

}  // namespace

ConverterRow RowFromV210ToRgb10() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      RgbCell<Rgb10Destination<R210, SampleRange::kVideo>>(kR210Video),
      RgbCell<Rgb10Destination<R10Big, SampleRange::kVideo>>(kR10BigVideo),
      RgbCell<Rgb10Destination<R10Little, SampleRange::kVideo>>(kR10LittleVideo),
      RgbCell<Rgb10Destination<R210, SampleRange::kFull>>(kR210Full),
      RgbCell<Rgb10Destination<R10Big, SampleRange::kFull>>(kR10BigFull),
      RgbCell<Rgb10Destination<R10Little, SampleRange::kFull>>(kR10LittleFull),
      RgbCell<Rgb10Destination<R10Alpha, SampleRange::kFull>>(kR10Alpha),
  };
  return kCells;
}

}  // namespace mixdecks
