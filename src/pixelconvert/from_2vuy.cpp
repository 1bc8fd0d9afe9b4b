#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/rgb_destinations.h"
#include "pixelconvert/yuv_to_rgb.h"
#include "pixelconvert/yuv_to_yuv.h"

namespace mixdecks {
namespace {

template <PixelFormatCode kCode, class Destination>
constexpr ConverterCell RgbCell() {
  return CrossingCell<YuvToRgb, TwoVuySource, Destination, WholeBlocksRepeat<k2vuy, kCode>>(kCode);
}

}  // namespace

ConverterRow RowFrom2vuy() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      RgbCell<kArgb32, ArgbDestination>(),
      RgbCell<kBgra, BgraDestination>(),
      RgbCell<kRgba, RgbaDestination>(),
      RgbCell<kRgb3, Rgb3Destination>(),
      RgbCell<kR210Video, Rgb10Destination<R210, SampleRange::kVideo>>(),
      RgbCell<kR10BigVideo, Rgb10Destination<R10Big, SampleRange::kVideo>>(),
      RgbCell<kR10LittleVideo, Rgb10Destination<R10Little, SampleRange::kVideo>>(),
      RgbCell<kR210Full, Rgb10Destination<R210, SampleRange::kFull>>(),
      RgbCell<kR10BigFull, Rgb10Destination<R10Big, SampleRange::kFull>>(),
      RgbCell<kR10LittleFull, Rgb10Destination<R10Little, SampleRange::kFull>>(),
      RgbCell<kR10Alpha, Rgb10Destination<R10Alpha, SampleRange::kFull>>(),
      Cell<TwoVuyToV210>(kV210),
      Cell<TwoVuyToAy10>(kAy10),
  };
  return kCells;
}

}  // namespace mixdecks
