#include "pixelconvert/converter_rows.h"
#include "pixelconvert/layout_2vuy.h"
#include "pixelconvert/layout_rgb10.h"
#include "pixelconvert/layout_v210.h"
#include "pixelconvert/rgb_to_rgb.h"
#include "pixelconvert/rgb_to_yuv.h"

namespace mixdecks {

ConverterRow RowFromR10LittleFull() {
  using namespace layout;
  static constexpr ConverterCell kCells[] = {
      Cell<MoveFields<R10Little, Argb>>(kArgb32),
      Cell<MoveFields<R10Little, Bgra>>(kBgra),
      Cell<MoveFields<R10Little, Rgba>>(kRgba),
      Cell<MoveFields<R10Little, Rgb3>>(kRgb3),
      Cell<CutToVideo<R10Little, R210>>(kR210Video),
      Cell<CutToVideo<R10Little, R10Big>>(kR10BigVideo),
      Cell<CutToVideo<R10Little, R10Little>>(kR10LittleVideo),
      Cell<MoveFields<R10Little, R210>>(kR210Full),
      Cell<MoveFields<R10Little, R10Big>>(kR10BigFull),
      Cell<MoveFields<R10Little, R10Alpha>>(kR10Alpha),
      CrossingCell<RgbToYuv, Rgb10Source<R10Little, SampleRange::kFull>, TwoVuyDestination>(k2vuy),
      CrossingCell<RgbToYuv, Rgb10Source<R10Little, SampleRange::kFull>, V210Destination>(kV210),
  };
  return kCells;
}

}  // namespace mixdecks
