#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb10.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromR210Video() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<StretchToFull<R210, Argb>>(kArgb32),
      Cell<StretchToFull<R210, Bgra>>(kBgra),
      Cell<StretchToFull<R210, Rgba>>(kRgba),
      Cell<StretchToFull<R210, Rgb3>>(kRgb3),
      Cell<MoveFields<R210, R10Big>>(kR10BigVideo),
      Cell<MoveFields<R210, R10Little>>(kR10LittleVideo),
      Cell<StretchToFull<R210, R210>>(kR210Full),
      Cell<StretchToFull<R210, R10Big>>(kR10BigFull),
      Cell<StretchToFull<R210, R10Little>>(kR10LittleFull),
      Cell<StretchToFull<R210, R10Alpha>>(kR10Alpha),
      CrossingCell<RgbToYuv, Rgb10Source<R210, SampleRange::kVideo>, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, Rgb10Source<R210, SampleRange::kVideo>, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
