#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"
#include "pixelconvert/yuv_to_yuv.h"

namespace mixdecks {
namespace {

template <class Destination, class RowEnd = WholeBlocksRepeat<8>>
constexpr ConverterCell RgbCell(PixelFormatCode destination) {
  return CrossingCell<YuvToRgb, TwoVuySource, Destination, RowEnd>(destination);
}

}  // namespace

ConverterRow RowFrom2vuy() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      RgbCell<ArgbDestination>(kArgb32),
      RgbCell<BgraDestination>(kBgra),
      RgbCell<RgbaDestination>(kRgba),
      RgbCell<Rgb3Destination, WholeBlocksRepeat<16>>(kRgb3),
      RgbCell<Rgb10Destination<R210, SampleRange::kVideo>>(kR210Video),
      RgbCell<Rgb10Destination<R10Big, SampleRange::kVideo>>(kR10BigVideo),
      RgbCell<Rgb10Destination<R10Little, SampleRange::kVideo>>(kR10LittleVideo),
      RgbCell<Rgb10Destination<R210, SampleRange::kFull>>(kR210Full),
      RgbCell<Rgb10Destination<R10Big, SampleRange::kFull>>(kR10BigFull),
      RgbCell<Rgb10Destination<R10Little, SampleRange::kFull>>(kR10LittleFull),
      RgbCell<Rgb10Destination<R10Alpha, SampleRange::kFull>>(kR10Alpha),
      Cell<TwoVuyToV210>(kV210),
      Cell<TwoVuyToAy10>(kAy10),
  };
  return kCells;
}

}  // namespace mixdecks
