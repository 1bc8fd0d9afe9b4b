#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb10.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromR210Full() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<MoveFields<R210, Argb>>(kArgb32),
      Cell<MoveFields<R210, Bgra>>(kBgra),
      Cell<MoveFields<R210, Rgba>>(kRgba),
      Cell<MoveFields<R210, Rgb3>>(kRgb3),
      Cell<CutToVideo<R210, R210>>(kR210Video),
      Cell<CutToVideo<R210, R10Big>>(kR10BigVideo),
      Cell<CutToVideo<R210, R10Little>>(kR10LittleVideo),
      Cell<MoveFields<R210, R10Big>>(kR10BigFull),
      Cell<MoveFields<R210, R10Little>>(kR10LittleFull),
      Cell<MoveFields<R210, R10Alpha>>(kR10Alpha),
      CrossingCell<RgbToYuv, Rgb10Source<R210, SampleRange::kFull>, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, Rgb10Source<R210, SampleRange::kFull>, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
