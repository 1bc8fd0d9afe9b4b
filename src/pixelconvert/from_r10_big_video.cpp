#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb10.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromR10BigVideo() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<StretchToFull<R10Big, Argb>>(kArgb32),
      Cell<StretchToFull<R10Big, Bgra>>(kBgra),
      Cell<StretchToFull<R10Big, Rgba>>(kRgba),
      Cell<StretchToFull<R10Big, Rgb3>>(kRgb3),
      Cell<MoveFields<R10Big, R210>>(kR210Video),
      Cell<MoveFields<R10Big, R10Little>>(kR10LittleVideo),
      Cell<StretchToFull<R10Big, R210>>(kR210Full),
      Cell<StretchToFull<R10Big, R10Big>>(kR10BigFull),
      Cell<StretchToFull<R10Big, R10Little>>(kR10LittleFull),
      Cell<StretchToFull<R10Big, R10Alpha>>(kR10Alpha),
      CrossingCell<RgbToYuv, Rgb10Source<R10Big, SampleRange::kVideo>, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, Rgb10Source<R10Big, SampleRange::kVideo>, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
